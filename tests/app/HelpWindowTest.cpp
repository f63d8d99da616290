#include "HelpWindow.h"
#include "WindowFixture.h"

#include <QDir>
#include <QFile>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QToolButton>
#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>

namespace backplot {
namespace {

using test::ScriptedDialogs;

namespace fs = std::filesystem;

fs::path GuideFolder() { return test::SourceDir() / "docs" / "help"; }
QString GuidePage(const char* name) { return QString::fromStdString((GuideFolder() / name).string()); }

// Clicks the middle of the first text `text` in the page, as a user clicks a link.
void ClickText(QTextBrowser* browser, const QString& text)
{
    const QTextCursor found = browser->document()->find(text);
    ASSERT_FALSE(found.isNull()) << text.toStdString();
    QTextCursor middle(browser->document());
    middle.setPosition((found.selectionStart() + found.selectionEnd()) / 2);
    QTest::mouseClick(browser->viewport(), Qt::LeftButton, {}, browser->cursorRect(middle).center());
    QApplication::processEvents();
}

QString Page(HelpWindow* help) { return help->browser()->source().fileName(); }

TEST(HelpWindow, OpensAtTheContentsFollowsLinksAndComesBackToTheContents)
{
    QWidget owner;
    ScriptedDialogs dialogs;
    HelpWindow* help = HelpWindow::ShowContents(owner, dialogs, GuidePage("index.html"));
    ASSERT_NE(help, nullptr);
    const auto button = [help](const char* name) { return test::Child<QToolButton>(*help, name); };
    QApplication::processEvents();

    // A window of its own beside the owner, not a modal dialog.
    EXPECT_TRUE(help->isVisible());
    EXPECT_TRUE(help->isWindow());
    EXPECT_EQ(help->parentWidget(), &owner);
    EXPECT_FALSE(help->isModal());
    EXPECT_EQ(help->windowTitle(), QStringLiteral("Tarvo Backplot Help"));
    EXPECT_EQ(Page(help), QStringLiteral("index.html"));
    EXPECT_EQ(help->browser()->documentTitle(), QStringLiteral("Tarvo Backplot Help"));
    EXPECT_FALSE(button("cmdBack")->isEnabled());
    EXPECT_FALSE(button("cmdForward")->isEnabled());

    ClickText(help->browser(), QStringLiteral("Opening a program"));
    EXPECT_EQ(Page(help), QStringLiteral("opening.html"));
    EXPECT_EQ(help->browser()->documentTitle(), QStringLiteral("Opening a program"));
    EXPECT_TRUE(button("cmdBack")->isEnabled());

    // A link to a section of another page.
    ClickText(help->browser(), QStringLiteral("Files page"));
    EXPECT_EQ(Page(help), QStringLiteral("properties.html"));
    EXPECT_EQ(help->browser()->source().fragment(), QStringLiteral("files"));

    button("cmdBack")->click();
    EXPECT_EQ(Page(help), QStringLiteral("opening.html"));
    EXPECT_TRUE(button("cmdForward")->isEnabled());
    button("cmdForward")->click();
    EXPECT_EQ(Page(help), QStringLiteral("properties.html"));
    button("cmdHome")->click();
    EXPECT_EQ(Page(help), QStringLiteral("index.html"));

    // Asked again after closing: the same window, at the contents again.
    ClickText(help->browser(), QStringLiteral("Keys and mouse"));
    ASSERT_EQ(Page(help), QStringLiteral("keys.html"));
    help->close();
    EXPECT_FALSE(help->isVisible());
    EXPECT_EQ(HelpWindow::ShowContents(owner, dialogs, GuidePage("index.html")), help);
    EXPECT_TRUE(help->isVisible());
    EXPECT_EQ(Page(help), QStringLiteral("index.html"));
    EXPECT_EQ(owner.findChildren<HelpWindow*>().size(), 1);
    EXPECT_TRUE(dialogs.Messages.empty());
}

// The menu command looks beside the program: here the test program, which has no help of
// its own until the test puts one there.
class HelpCommand : public test::WindowFixture {
protected:
    QString HelpFolder() const { return QCoreApplication::applicationDirPath() + QStringLiteral("/help"); }
    void TearDown() override { QDir(HelpFolder()).removeRecursively(); }
};

TEST_F(HelpCommand, OpensTheContentsBesideTheProgramOrOnlySaysTheyAreMissing)
{
    const QString index = HelpFolder() + QStringLiteral("/index.html");
    Start();
    Action("mnuHelpFile")->trigger();
    const std::vector<ScriptedDialogs::ShownMessage> missing = {
        {"The help cannot be shown: the file " + index.toStdString() +
             " is missing. Reinstall Tarvo Backplot or put its help folder back next to the program.",
         "Corvane Backplot", MsgIcon::Exclamation, MsgButtons::Ok}};
    EXPECT_EQ(dialogs.Messages, missing);
    EXPECT_TRUE(window->findChildren<HelpWindow*>().isEmpty());

    dialogs.Messages.clear();
    ASSERT_TRUE(QDir().mkpath(HelpFolder()));
    ASSERT_TRUE(QFile::copy(GuidePage("index.html"), index));
    Action("mnuHelpFile")->trigger();
    Action("mnuHelpFile")->trigger();
    EXPECT_TRUE(dialogs.Messages.empty());
    const auto helps = window->findChildren<HelpWindow*>();
    ASSERT_EQ(helps.size(), 1);
    EXPECT_TRUE(helps[0]->isVisible());
    EXPECT_EQ(helps[0]->browser()->source().toLocalFile(), index);
}

// The first group of every match of `pattern` in `text`.
std::vector<std::string> All(const std::string& text, const std::regex& pattern)
{
    std::vector<std::string> found;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), pattern); it != std::sregex_iterator(); ++it)
        found.push_back((*it)[1].str());
    return found;
}

TEST(HelpGuide, PagesAreTitledLinkedAndReachableFromTheContents)
{
    const fs::path folder = GuideFolder();
    std::map<std::string, std::string> pages;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".html")
            pages[entry.path().filename().string()] = test::ReadAll(entry.path());
    ASSERT_GE(pages.size(), 14u);

    const std::regex href("href=\"([^\"]*)\""), id("id=\"([^\"]*)\"");
    std::vector<std::string> broken;
    std::map<std::string, std::set<std::string>> linked; // page -> the files it links to
    for (const auto& [name, text] : pages) {
        SCOPED_TRACE(name);
        // Its title as its one heading, the style sheet, and a way back to the contents.
        const auto titles = All(text, std::regex("<title>([^<]+)</title>"));
        EXPECT_EQ(titles.size(), 1u);
        EXPECT_EQ(All(text, std::regex("<h1>([^<]+)</h1>")), titles);
        EXPECT_NE(text.find("href=\"help.css\""), std::string::npos);
        EXPECT_TRUE(name == "index.html" || text.find("href=\"index.html\"") != std::string::npos);
        // Every link within the guide leads to a file, and to a section, that exist.
        for (const std::string& link : All(text, href)) {
            if (link.rfind("http", 0) == 0 || link.rfind("mailto:", 0) == 0)
                continue;
            const std::size_t hash = link.find('#');
            const std::string file = link.substr(0, hash);
            const fs::path target = folder / (file.empty() ? name : file);
            linked[name].insert(file);
            const auto ids = fs::is_regular_file(target) ? All(test::ReadAll(target), id) : std::vector<std::string>{};
            if (!fs::is_regular_file(target) ||
                (hash != std::string::npos && std::ranges::count(ids, link.substr(hash + 1)) == 0))
                broken.push_back(name + " -> " + link);
        }
    }
    EXPECT_EQ(broken, std::vector<std::string>{});

    std::set<std::string> reached = {"index.html"}, all;
    for (std::vector<std::string> open = {"index.html"}; !open.empty();) {
        const std::string page = open.back();
        open.pop_back();
        for (const std::string& file : linked[page])
            if (pages.count(file) && reached.insert(file).second)
                open.push_back(file);
    }
    for (const auto& page : pages)
        all.insert(page.first);
    EXPECT_EQ(reached, all);
}

} // namespace
} // namespace backplot
