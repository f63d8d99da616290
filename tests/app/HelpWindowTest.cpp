#include "HelpWindow.h"
#include "ScriptedDialogs.h"
#include "TestPaths.h"
#include "WindowFixture.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMouseEvent>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QToolButton>

namespace backplot {
namespace {

using test::ScriptedDialogs;

QString GuidePage(const char* name)
{
    return QString::fromStdString((test::SourceDir() / "docs" / "help" / name).string());
}

QToolButton* Button(HelpWindow* help, const char* name)
{
    auto* button = help->findChild<QToolButton*>(QString::fromLatin1(name));
    EXPECT_NE(button, nullptr) << name;
    return button;
}

// Clicks the middle of the first text `text` in the page, as a user clicks a link.
void ClickText(QTextBrowser* browser, const QString& text)
{
    const QTextCursor found = browser->document()->find(text);
    ASSERT_FALSE(found.isNull()) << text.toStdString();
    QTextCursor middle(browser->document());
    middle.setPosition((found.selectionStart() + found.selectionEnd()) / 2);
    const QPoint at = browser->cursorRect(middle).center();
    QWidget* surface = browser->viewport();
    const QPointF global = surface->mapToGlobal(QPointF(at));
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(at), global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(at), global, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(surface, &press);
    QApplication::sendEvent(surface, &release);
    QApplication::processEvents();
}

QString Page(HelpWindow* help) { return help->browser()->source().fileName(); }

TEST(HelpWindow, OpensAtTheContentsFollowsLinksAndComesBackToTheContents)
{
    QWidget owner;
    ScriptedDialogs dialogs;
    HelpWindow* help = HelpWindow::ShowContents(owner, dialogs, GuidePage("index.html"));
    ASSERT_NE(help, nullptr);
    QApplication::processEvents();

    // A window of its own beside the owner, not a modal dialog.
    EXPECT_TRUE(help->isVisible());
    EXPECT_TRUE(help->isWindow());
    EXPECT_EQ(help->parentWidget(), &owner);
    EXPECT_FALSE(help->isModal());
    EXPECT_EQ(help->windowTitle(), QStringLiteral("Tarvo Backplot Help"));
    EXPECT_EQ(Page(help), QStringLiteral("index.html"));
    EXPECT_EQ(help->browser()->documentTitle(), QStringLiteral("Tarvo Backplot Help"));
    EXPECT_FALSE(Button(help, "cmdBack")->isEnabled());
    EXPECT_FALSE(Button(help, "cmdForward")->isEnabled());

    ClickText(help->browser(), QStringLiteral("Opening a program"));
    EXPECT_EQ(Page(help), QStringLiteral("opening.html"));
    EXPECT_EQ(help->browser()->documentTitle(), QStringLiteral("Opening a program"));
    EXPECT_TRUE(Button(help, "cmdBack")->isEnabled());

    // A link to a section of another page.
    ClickText(help->browser(), QStringLiteral("Files page"));
    EXPECT_EQ(Page(help), QStringLiteral("properties.html"));
    EXPECT_EQ(help->browser()->source().fragment(), QStringLiteral("files"));

    Button(help, "cmdBack")->click();
    EXPECT_EQ(Page(help), QStringLiteral("opening.html"));
    EXPECT_TRUE(Button(help, "cmdForward")->isEnabled());
    Button(help, "cmdForward")->click();
    EXPECT_EQ(Page(help), QStringLiteral("properties.html"));
    Button(help, "cmdHome")->click();
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

TEST(HelpWindow, MissingContentsPageOnlySaysSo)
{
    QWidget owner;
    ScriptedDialogs dialogs;
    const QString missing = QStringLiteral("/nonexistent/tarvo/help/index.html");
    EXPECT_EQ(HelpWindow::ShowContents(owner, dialogs, missing), nullptr);
    const std::vector<ScriptedDialogs::ShownMessage> expected = {
        {"The help cannot be shown: the file /nonexistent/tarvo/help/index.html is missing. Reinstall Tarvo "
         "Backplot or put its help folder back next to the program.",
         "Corvane Backplot", MsgIcon::Exclamation, MsgButtons::Ok}};
    EXPECT_EQ(dialogs.Messages, expected);
    EXPECT_TRUE(owner.findChildren<HelpWindow*>().isEmpty());
}

// The menu command looks beside the program: here the test program, which has no help of
// its own until the test puts one there.
class HelpCommand : public test::WindowFixture {
protected:
    QString HelpFolder() const { return QCoreApplication::applicationDirPath() + QStringLiteral("/help"); }
    void TearDown() override { QDir(HelpFolder()).removeRecursively(); }
};

TEST_F(HelpCommand, WithHelpBesideTheProgramOpensItsContents)
{
    ASSERT_TRUE(QDir().mkpath(HelpFolder()));
    ASSERT_TRUE(QFile::copy(GuidePage("index.html"), HelpFolder() + QStringLiteral("/index.html")));
    Start();
    Action("mnuHelpFile")->trigger();
    Action("mnuHelpFile")->trigger();
    EXPECT_TRUE(dialogs.Messages.empty());
    const auto helps = window->findChildren<HelpWindow*>();
    ASSERT_EQ(helps.size(), 1);
    EXPECT_TRUE(helps[0]->isVisible());
    EXPECT_EQ(helps[0]->browser()->source().toLocalFile(), HelpFolder() + QStringLiteral("/index.html"));
}

} // namespace
} // namespace backplot
