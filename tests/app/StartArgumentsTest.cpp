#include "StartArguments.h"
#include "WindowFixture.h"

#include <QApplication>
#include <QLabel>

namespace backplot {
namespace {

using test::ScratchDir;

TEST(StartArguments, ParsesOneOptionalProgramFile)
{
    struct Row {
        const char* name;
        QStringList arguments;
        const char* path;
        const char* error;
    };
    const Row rows[] = {
        {"no argument opens nothing", {}, "", ""},
        {"a relative path is taken from the current folder", {"parts/a.nc"}, "/work/shop/parts/a.nc", ""},
        {"an absolute path stays", {"/srv/nc/b.tap"}, "/srv/nc/b.tap", ""},
        {"dot segments are resolved", {"../c.ngc"}, "/work/c.ngc", ""},
        {"a file URL from a file manager", {"file:///srv/nc/with%20blank.nc"}, "/srv/nc/with blank.nc", ""},
        {"after -- a name may start with a dash", {"--", "-odd.nc"}, "/work/shop/-odd.nc", ""},
        {"an option is refused", {"--lathe"}, "", "unknown option '--lathe'"},
        {"two files are refused", {"a.nc", "b.nc"}, "", "give at most one program file, not 2"},
    };
    for (const Row& row : rows) {
        const StartArguments start = StartArguments::Parse(row.arguments, QStringLiteral("/work/shop"));
        EXPECT_EQ(start.ProgramPath, QString::fromLatin1(row.path)) << row.name;
        EXPECT_EQ(start.Error, QString::fromLatin1(row.error)) << row.name;
    }
}

// A rapid and a cut; the M30 block in linear mode draws nothing: two records.
constexpr const char* Part = "G00 X10. Y-10.\r\nG01 X90.\r\nM30\r\n";

class StartWindow : public test::WindowFixture {
protected:
    void OpenAtStart(const QString& path)
    {
        Start().show();
        StartArguments start;
        start.ProgramPath = path;
        start.OpenWhenShown(*window);
    }
    ScratchDir folder;
};

TEST_F(StartWindow, NoProgramGivenOpensNothing)
{
    OpenAtStart(QString());
    QApplication::processEvents();
    EXPECT_EQ(window->FileName(), "");
    EXPECT_FALSE(window->programLoaded());
    EXPECT_TRUE(dialogs.OpenRequests.empty());
    EXPECT_TRUE(dialogs.Messages.empty());
    EXPECT_FALSE(Action("mnuStep")->isEnabled());
}

TEST_F(StartWindow, GivenProgramIsOpenedOnceTheWindowRunsAsIfChosenInTheDialog)
{
    const std::string path = folder.Write("bracket.nc", Part);
    OpenAtStart(QString::fromStdString(path));
    EXPECT_FALSE(window->programLoaded()) << "opened before the window's first events";

    QApplication::processEvents();
    EXPECT_EQ(window->FileName(), path);
    EXPECT_TRUE(window->programLoaded());
    EXPECT_EQ(window->plotter().RecordTotal, 2);
    EXPECT_TRUE(dialogs.OpenRequests.empty()) << "no open dialog";
    EXPECT_TRUE(dialogs.Messages.empty());
    EXPECT_EQ(window->lblCode()->text(), QStringLiteral(" bracket.nc"));
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{path, "Not Used", "Not Used", "Not Used"}));
    QAction* entry = Action("mnuRecentFile1");
    EXPECT_TRUE(entry->isVisible());
    EXPECT_EQ(entry->data().toString().toStdString(), path);
    EXPECT_TRUE(Action("mnuStep")->isEnabled());
    EXPECT_TRUE(Button(QStringLiteral("Step"))->isEnabled());
}

TEST_F(StartWindow, MissingProgramIsNamedAndNothingIsOpened)
{
    const QString path = QString::fromStdString(folder.Folder()) + QStringLiteral("gone.nc");
    OpenAtStart(path);
    QApplication::processEvents();
    const std::vector<test::ScriptedDialogs::ShownMessage> expected = {
        {"The program file " + path.toStdString() + " cannot be opened: there is no such file.", "Corvane Backplot",
         MsgIcon::Critical, MsgButtons::Ok}};
    EXPECT_EQ(dialogs.Messages, expected);
    EXPECT_FALSE(window->programLoaded());
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{"Not Used", "Not Used", "Not Used", "Not Used"}));
}

TEST_F(StartWindow, EmptyProgramGetsTheOpenMessageAndStaysOutOfTheRecentFiles)
{
    const std::string path = folder.Write("empty.nc", "");
    OpenAtStart(QString::fromStdString(path));
    QApplication::processEvents();
    const std::vector<test::ScriptedDialogs::ShownMessage> expected = {
        {path + " is an empty file", "Corvane Backplot", MsgIcon::Critical, MsgButtons::Ok}};
    EXPECT_EQ(dialogs.Messages, expected);
    EXPECT_FALSE(window->programLoaded());
    EXPECT_FALSE(Action("mnuStep")->isEnabled());
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{"Not Used", "Not Used", "Not Used", "Not Used"}));
}

} // namespace
} // namespace backplot
