#include "StartArguments.h"
#include "WindowFixture.h"

#include <QApplication>
#include <QLabel>

namespace backplot {
namespace {

TEST(StartArguments, ParsesOneOptionalProgramFileAndHelp)
{
    using Kind = StartArguments::Kind;
    // text: the usage error, or the start of the help text. An unknown option and --version:
    // the process, in the CLI tests.
    struct Row { const char* name; QStringList arguments; Kind what; const char* path; const char* text; };
    const Row rows[] = {
        {"no argument opens nothing", {}, Kind::Open, "", ""},
        {"a relative path is taken from the current folder", {"parts/a.nc"}, Kind::Open, "/work/shop/parts/a.nc", ""},
        {"an absolute path stays", {"/srv/nc/b.tap"}, Kind::Open, "/srv/nc/b.tap", ""},
        {"dot segments are resolved", {"../c.ngc"}, Kind::Open, "/work/c.ngc", ""},
        {"a file URL from a file manager", {"file:///srv/nc/with%20blank.nc"}, Kind::Open, "/srv/nc/with blank.nc", ""},
        {"after -- a name may start with a dash", {"--", "-odd.nc"}, Kind::Open, "/work/shop/-odd.nc", ""},
        {"Qt's own options pass", {"-platform", "offscreen", "a.nc", "-reverse"}, Kind::Open, "/work/shop/a.nc", ""},
        {"two files are refused", {"a.nc", "b.nc"}, Kind::UsageError, "", "give at most one program file, not 2"},
        {"help wins over a file", {"a.nc", "-h"}, Kind::Help, "", "Usage: backplot [PROGRAM]\n"},
    };
    for (const Row& row : rows) {
        const StartArguments start =
            StartArguments::Parse(QStringList{"backplot"} + row.arguments, QStringLiteral("/work/shop"));
        EXPECT_EQ(start.What, row.what) << row.name;
        EXPECT_EQ(start.ProgramPath, QString::fromLatin1(row.path)) << row.name;
        if (row.what == Kind::UsageError || row.what == Kind::Open)
            EXPECT_EQ(start.Text, QString::fromLatin1(row.text)) << row.name;
        else
            EXPECT_TRUE(start.Text.startsWith(QString::fromLatin1(row.text))) << row.name << ": " << start.Text.toStdString();
    }
}

// A rapid and a cut; the M30 block in linear mode draws nothing: two records.
constexpr const char* TwoRecords = "G00 X10. Y-10.\r\nG01 X90.\r\nM30\r\n";

using StartWindow = test::WindowFixture;

TEST_F(StartWindow, NamedProgramIsOpenedOnceTheWindowRunsAsIfChosenInTheDialog)
{
    const std::string missing = programs.Folder() + "gone.nc";
    const std::string empty = programs.Write("empty.nc", "");
    const std::string part = programs.Write("bracket.nc", TwoRecords);
    const struct { const char* behaviour; std::string path, message; } rows[] = { // message: the error shown, or none
        {"no program given opens nothing", "", ""},
        {"a missing program is named", missing,
         "The program file " + missing + " cannot be opened: there is no such file."},
        {"an empty program gets the open message", empty, empty + " is an empty file"},
        // Last, so that the rows before it find the recent files unused.
        {"a program is opened", part, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.behaviour);
        dialogs.Messages.clear();
        Start().show();
        StartArguments start;
        start.ProgramPath = QString::fromStdString(row.path);
        start.OpenWhenShown(*window);
        EXPECT_FALSE(window->programLoaded()); // not before the window's first events
        QApplication::processEvents();
        const bool opened = row.path == part;
        std::vector<test::ScriptedDialogs::ShownMessage> expected;
        if (!row.message.empty())
            expected.push_back({row.message, "Corvane Backplot", MsgIcon::Critical, MsgButtons::Ok});
        EXPECT_EQ(dialogs.Messages, expected);
        EXPECT_TRUE(dialogs.OpenRequests.empty());
        EXPECT_EQ(window->programLoaded(), opened);
        EXPECT_EQ(Action("mnuStep")->isEnabled(), opened);
        EXPECT_EQ(Button(ToolbarKey::Step)->isEnabled(), opened);
        const std::string first = opened ? part : "Not Used";
        EXPECT_EQ(StoredRecent(), (std::vector<std::string>{first, "Not Used", "Not Used", "Not Used"}));
    }
    EXPECT_EQ(window->FileName(), part);
    EXPECT_EQ(window->plotter().RecordTotal, 2);
    EXPECT_EQ(window->lblCode()->text(), QStringLiteral(" bracket.nc"));
    EXPECT_TRUE(Action("mnuRecentFile1")->isVisible());
    EXPECT_EQ(Action("mnuRecentFile1")->data().toString().toStdString(), part);
}

} // namespace
} // namespace backplot
