#include "SourceSearchBar.h"
#include "SourceView.h"
#include "WindowFixture.h"

#include <QLineEdit>
#include <QMenu>
#include <Qsci/qsciscintilla.h>
#include <filesystem>

// Stepping and slow motion from the keyboard are in CommandStatesTest, with the toolbar
// each leaves.

namespace backplot {
namespace {

using Keys = test::WindowFixture;

TEST_F(Keys, WithoutAProgramTheKeysDoNothingHarmfulWithOneFindAndGoToLineLeaveTheWindowKeys)
{
    // Without a program the view keys and stepping leave the canvas empty and ask nothing.
    StartShown();
    std::filesystem::remove(window->translator().RecordFilePath()); // no records from a test before
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Plus, Qt::Key_Minus,
                              Qt::Key_S, Qt::Key_Return, Qt::Key_Escape, Qt::Key_E})
        QTest::keyClick(Canvas(), key);
    EXPECT_FALSE(window->programLoaded());
    EXPECT_FALSE(window->playback().StepMode); // S found no records and ended stepping
    EXPECT_TRUE(dialogs.Messages.empty()); // no "Error opening file!" either
    EXPECT_EQ(test::CountOf(Picture(), Qt::white), Picture().width() * Picture().height());

    // Part's lines: "G00 X10. Y-10.", "G01 X90.", "G00 X110. Y-20.", "M30": "x1" (any case)
    // is at line 1 and line 3, from the fifth character. The bar's field takes every key
    // typed into it; on the canvas the window's keys work as ever, bar open or not.
    StartWithPart();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    SourceView& source = window->sourceView();
    SourceSearchBar& bar = source.SearchBar();
    QsciScintilla* editor = source.Editor();
    const auto at = [editor] {
        int line = 0, index = 0;
        editor->getCursorPosition(&line, &index);
        return std::pair(line + 1, index);
    };
    QTest::keyClick(Canvas(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_FALSE(bar.isVisible()); // not while the view is hidden

    // The source view shown beside the plot does not keep the window's keys.
    Action("mnuSource")->trigger();
    ASSERT_TRUE(editor->isVisible());
    EXPECT_GT(window->canvas().width(), source.width()); // two fifths beside the plot
    editor->setFocus();
    const float left = window->plotter().View.ViewX1, top = window->plotter().View.ViewY1;
    QTest::keyClick(editor, Qt::Key_Right);
    EXPECT_NEAR(window->plotter().View.ViewX1, left - 0.5f, 1e-4);
    QTest::keyClick(editor, Qt::Key_Up); // the drawing moves up: the window's edges go down
    EXPECT_NEAR(window->plotter().View.ViewY1, top + 0.5f, 1e-4);
    QTest::keyClicks(editor, "s"); // stepping, record 1
    ASSERT_TRUE(window->playback().StepMode);
    EXPECT_EQ(window->plotter().PlotLast, 1);
    EXPECT_EQ(editor->text(), QString(test::Part)); // nothing typed into the program
    QTest::keyClick(Canvas(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(bar.isVisible());
    ASSERT_EQ(QApplication::focusWidget(), bar.Field());
    QTest::keyClicks(bar.Field(), "x1");
    EXPECT_EQ(editor->selectedText(), "X1");
    EXPECT_EQ(at(), std::pair(1, 6));
    QTest::keyClick(bar.Field(), Qt::Key_Return);
    EXPECT_EQ(at(), std::pair(3, 6));
    QTest::keyClick(bar.Field(), Qt::Key_Return); // round to the top
    EXPECT_EQ(at(), std::pair(1, 6));
    QTest::keyClick(bar.Field(), Qt::Key_Return, Qt::ShiftModifier); // and back round
    EXPECT_EQ(at(), std::pair(3, 6));
    const ViewTransform view = window->plotter().View;
    QTest::keyClicks(bar.Field(), "se"); // "x1se" is nowhere; S and E are letters here
    EXPECT_EQ(bar.Note(), "Not found");
    EXPECT_EQ(at(), std::pair(3, 6));
    QTest::keyClick(bar.Field(), Qt::Key_Up);
    QTest::keyClick(bar.Field(), Qt::Key_Escape);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(window->plotter().PlotLast, 1); // no step, no pan, stepping goes on
    EXPECT_TRUE(window->playback().StepMode);
    EXPECT_EQ(window->plotter().View.ViewY1, view.ViewY1);

    // Go to a line, from the keyboard and from the text's context menu.
    QTest::keyClick(Canvas(), Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(bar.CurrentMode(), SourceSearchBar::Mode::GoToLine);
    EXPECT_EQ(bar.Field()->text(), "3"); // where the cursor is
    bar.Field()->clear();
    QTest::keyClicks(bar.Field(), "2");
    QTest::keyClick(bar.Field(), Qt::Key_Enter);
    EXPECT_EQ(at(), std::pair(2, 0));
    EXPECT_FALSE(bar.isVisible());
    std::unique_ptr<QMenu> menu(source.CreateContextMenu());
    QStringList items;
    for (QAction* item : menu->actions())
        if (!item->isSeparator())
            items << item->text() + " " + item->shortcut().toString();
    EXPECT_EQ(items.mid(items.size() - 2), QStringList({"&Find... Ctrl+F", "&Go to Line... Ctrl+G"}));
    EXPECT_TRUE(items.size() > 2); // the editor's own items first
    menu->actions().back()->trigger();
    EXPECT_EQ(bar.CurrentMode(), SourceSearchBar::Mode::GoToLine);

    // With the bar open the canvas keys still step and end stepping.
    Canvas()->setFocus();
    QTest::keyClicks(Canvas(), "s");
    EXPECT_EQ(window->plotter().PlotLast, 2);
    QTest::keyClick(Canvas(), Qt::Key_Escape);
    EXPECT_FALSE(window->playback().StepMode);
    EXPECT_TRUE(bar.isVisible());
    QTest::keyClick(Canvas(), Qt::Key_F3); // finds "x1se", the last text looked for: nowhere
    EXPECT_EQ(at(), std::pair(2, 0));
    EXPECT_EQ(bar.Note(), "Not found");
    QTest::keyClick(Canvas(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(bar.CurrentMode(), SourceSearchBar::Mode::Find);
    EXPECT_EQ(bar.Field()->text(), "x1se");
    QTest::keyClick(bar.Field(), Qt::Key_End); // the text comes selected
    QTest::keyClick(bar.Field(), Qt::Key_Backspace);
    QTest::keyClick(bar.Field(), Qt::Key_Backspace); // "x1" again, from line 2 onward
    EXPECT_EQ(at(), std::pair(3, 6));
}

TEST_F(Keys, PAndEscHammeredDuringAReplayEndInAPlainPicture)
{
    StartWithPart();
    const QImage opened = Picture();
    Canvas()->setFocus();
    for (int i = 0; i < 60; ++i) {
        PressDuringThePass(Qt::Key_P, "p");
        PressDuringThePass(i % 3 ? Qt::Key_P : Qt::Key_Escape, i % 3 ? "p" : QString(QChar(27)));
    }
    Type('M');
    QApplication::processEvents();
    if (window->playback().SlowPaused)
        Type('P');
    if (window->playback().SlowMode)
        QTest::keyClick(Canvas(), Qt::Key_Escape);
    EXPECT_FALSE(window->playback().SlowMode);
    EXPECT_FALSE(Action("mnuSlowMotion")->isChecked());
    EXPECT_TRUE(dialogs.Messages.empty());
    EXPECT_EQ(test::Differences(Picture(), opened), 0); // the whole program, as the open drew it
}

} // namespace
} // namespace backplot
