#include "SourceView.h"
#include "WindowFixture.h"

#include <Qsci/qsciscintilla.h>
#include <cmath>

// Stepping and slow motion from the keyboard are in CommandStatesTest, with the toolbar
// each leaves.

namespace backplot {
namespace {

using Keys = test::WindowFixture;

TEST_F(Keys, TheSourceViewDoesNotKeepTheKeysFromTheWindow)
{
    StartWithPart();
    Action("mnuSource")->trigger();
    QsciScintilla* editor = window->sourceView().Editor();
    ASSERT_TRUE(editor->isVisible());
    EXPECT_GT(window->canvas().width(), window->sourceView().width()); // two fifths beside the plot
    EXPECT_EQ(editor->text(), QString(test::Part));
    editor->setFocus();
    const float left = window->plotter().View.ViewX1, top = window->plotter().View.ViewY1;
    QTest::keyClick(editor, Qt::Key_Right);
    EXPECT_NEAR(window->plotter().View.ViewX1, left - 0.5f, 1e-4);
    QTest::keyClick(editor, Qt::Key_Up); // the drawing moves up: the window's edges go down
    EXPECT_NEAR(window->plotter().View.ViewY1, top + 0.5f, 1e-4);
    QTest::keyClicks(editor, "s");
    EXPECT_EQ(window->plotter().PlotLast, 1);
    EXPECT_EQ(editor->text(), QString(test::Part)); // nothing typed into the program
}

TEST_F(Keys, PAndEscHammeredDuringAReplayEndInAPlainPicture)
{
    StartWithPart();
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
}

TEST_F(Keys, WithoutAProgramPanAndZoomKeysDoNothingHarmful)
{
    StartShown();
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Plus, Qt::Key_Minus,
                              Qt::Key_S, Qt::Key_Return, Qt::Key_Escape, Qt::Key_E, Qt::Key_M, Qt::Key_P})
        QTest::keyClick(Canvas(), key);
    EXPECT_FALSE(window->programLoaded());
    EXPECT_FALSE(window->playback().SlowMode);
    EXPECT_FALSE(window->playback().StepMode); // S found no records and ended stepping
    EXPECT_TRUE(dialogs.Messages.empty()); // no "Error opening file!" either
    for (const float f : {window->plotter().View.ViewX1, window->plotter().View.ViewX2, window->plotter().View.FitSpan})
        EXPECT_TRUE(std::isfinite(f));
}

} // namespace
} // namespace backplot
