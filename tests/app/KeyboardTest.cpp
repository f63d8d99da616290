#include "CanvasWidget.h"
#include "SourceView.h"
#include "StepListing.h"
#include "ViewCommands.h"
#include "WindowFixture.h"

#include <Qsci/qsciscintilla.h>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QTest>
#include <cmath>

namespace backplot {
namespace {

// Four records: a rapid, a cut, a rapid, and the zero-length rapid of M30.
constexpr const char* Part = "G00 X10. Y-10.\r\nG01 X90.\r\nG00 X110. Y-20.\r\nM30\r\n";

class Keys : public test::WindowFixture {
protected:
    void SetUp() override
    {
        Start().show();
        window->resize(900, 600);
        QApplication::processEvents();
        path = programs.Write("part.nc", Part);
        dialogs.OpenAnswers.push_back(path);
        Button("Open")->trigger();
        ASSERT_EQ(window->plotter().RecordTotal, 4);
        window->settings().SlowTime = 0.001f;
        Canvas()->setFocus();
    }
    QWidget* Canvas() const { return &window->canvas(); }
    void Type(char c) { QTest::keyClicks(Canvas(), QString(QChar(c))); }
    // A key the user presses while a pass lets events run.
    void PressDuringThePass(Qt::Key key, const QString& text)
    {
        QCoreApplication::postEvent(Canvas(), new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
    }
    bool On(const char* key) const { return Button(key)->isEnabled(); }
    QString Code() const { return window->lblCode()->text(); }

    test::ScratchDir programs;
    std::string path;
};

TEST_F(Keys, StepEnterAndEscWalkTheProgram)
{
    QAction* details = Action("mnuDetails");
    Type('s'); // lower case steps too
    EXPECT_TRUE(window->playback().StepMode);
    EXPECT_EQ(window->plotter().PlotLast, 1);
    EXPECT_EQ(Code(), "  Press Esc key to end single step.");
    EXPECT_FALSE(details->isEnabled()); // the first step turns it off
    EXPECT_TRUE(window->stepListing().isVisible());
    // The listing takes a fifth of the room below the canvas, not the canvas's place.
    EXPECT_GT(window->canvas().height(), 3 * window->stepListing().height());
    Type('S');
    EXPECT_TRUE(details->isEnabled()); // S while stepping gives it back
    EXPECT_EQ(window->plotter().PlotLast, 2);
    Type('M'); // no slow motion while stepping
    EXPECT_FALSE(window->playback().SlowMode);

    details->setEnabled(false);
    QTest::keyClick(Canvas(), Qt::Key_Return);
    EXPECT_EQ(window->plotter().PlotLast, 3);
    EXPECT_TRUE(details->isEnabled());
    QTest::keyClick(Canvas(), Qt::Key_Return);
    EXPECT_EQ(window->plotter().PlotLast, 4);
    EXPECT_EQ(window->stepListing().LineCount(), 4);
    EXPECT_EQ(window->stepListing().LineText(3), "G00 X110. Y-20.");
    EXPECT_FALSE(On("Step"));
    // Enter on the last element: the whole program, and the toolbar back.
    QTest::keyClick(Canvas(), Qt::Key_Return);
    EXPECT_FALSE(window->playback().StepMode);
    EXPECT_EQ(window->plotter().PlotLast, 4);
    EXPECT_TRUE(On("Step") && On("Slow") && On("Print") && On("Preview") && On("Open") && On("Exit"));
    EXPECT_FALSE(On("Pause") || On("Stop"));
    // Outside stepping Enter only gives back "Step Details".
    details->setEnabled(false);
    QTest::keyClick(Canvas(), Qt::Key_Enter);
    EXPECT_TRUE(details->isEnabled());
    EXPECT_FALSE(window->playback().StepMode);

    // Esc ends stepping through Full Drawing Extents, from wherever the focus is.
    Type('S');
    Type('S');
    window->stepListing().setFocus();
    QTest::keyClick(&window->stepListing(), Qt::Key_S);
    EXPECT_EQ(window->plotter().PlotLast, 3);
    QTest::keyClick(&window->stepListing(), Qt::Key_Escape);
    EXPECT_FALSE(window->playback().StepMode);
    EXPECT_EQ(window->plotter().PlotLast, 4);
    EXPECT_TRUE(window->view().ExtentsKeyFlag);
    EXPECT_TRUE(On("Step") && !On("Stop"));
}

TEST_F(Keys, TheSourceViewDoesNotKeepTheKeysFromTheWindow)
{
    Action("mnuSource")->trigger();
    QsciScintilla* editor = window->sourceView().Editor();
    ASSERT_TRUE(editor->isVisible());
    EXPECT_GT(window->canvas().width(), window->sourceView().width()); // two fifths beside the plot
    EXPECT_EQ(editor->text(), QString(Part));
    editor->setFocus();
    const float left = window->plotter().View.ViewX1;
    QTest::keyClick(editor, Qt::Key_Right);
    EXPECT_NEAR(window->plotter().View.ViewX1, left - 0.5f, 1e-4);
    QTest::keyClicks(editor, "s");
    EXPECT_EQ(window->plotter().PlotLast, 1);
    EXPECT_EQ(editor->text(), QString(Part)); // nothing typed into the program
}

TEST_F(Keys, SlowMotionPausesResumesAndStopsFromTheKeyboard)
{
    // P reaches the replay between records: it stops at the second, paused.
    PressDuringThePass(Qt::Key_P, "p");
    Type('M');
    EXPECT_TRUE(window->playback().SlowMode && window->playback().SlowPaused);
    EXPECT_EQ(Code(), "  Paused - Press the P key to continue");
    EXPECT_TRUE(Action("mnuSlowMotion")->isChecked());
    EXPECT_TRUE(On("Pause") && On("Stop") && !On("Step") && !On("Open"));
    const QImage paused = window->canvas().Picture();
    Type('R'); // no redraw, no clear while slow motion is paused
    Type('C');
    EXPECT_EQ(window->canvas().Picture(), paused);

    // Esc while paused gives the toolbar back but leaves slow motion paused.
    window->playback().SourceLine = 3;
    QTest::keyClick(Canvas(), Qt::Key_Escape);
    EXPECT_TRUE(window->playback().SlowMode && window->playback().SlowPaused);
    EXPECT_EQ(window->playback().SourceLine, 1);
    EXPECT_TRUE(On("Step") && !On("Pause"));

    Type('P'); // resumes where it stopped and runs to the end
    EXPECT_FALSE(window->playback().SlowMode);
    EXPECT_FALSE(Action("mnuSlowMotion")->isChecked());
    EXPECT_EQ(Code(), QString::fromStdString(path) + "  ");
    EXPECT_TRUE(On("Step") && On("Open") && !On("Pause"));

    // Esc during the replay stops it and draws the rest at full speed.
    PressDuringThePass(Qt::Key_Escape, QString(QChar(27)));
    Type('M');
    EXPECT_FALSE(window->playback().SlowMode);
    EXPECT_FALSE(window->playback().SlowPaused);
    EXPECT_FALSE(Action("mnuSlowMotion")->isChecked());
    EXPECT_EQ(Code(), QString::fromStdString(path) + "  ");
}

TEST_F(Keys, PAndEscHammeredDuringAReplayEndInAPlainPicture)
{
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

} // namespace

TEST(KeysWithoutAProgram, PanAndZoomKeysDoNothingHarmful)
{
    test::ScratchSettings scope;
    test::ScriptedDialogs dialogs;
    frmBackplot window(&dialogs);
    window.show();
    QApplication::processEvents();
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Plus, Qt::Key_Minus,
                              Qt::Key_S, Qt::Key_Return, Qt::Key_Escape, Qt::Key_E, Qt::Key_M, Qt::Key_P})
        QTest::keyClick(&window.canvas(), key);
    EXPECT_FALSE(window.programLoaded());
    EXPECT_FALSE(window.playback().SlowMode);
    for (const float f : {window.plotter().View.ViewX1, window.plotter().View.ViewX2, window.plotter().View.FitSpan})
        EXPECT_TRUE(std::isfinite(f));
}

} // namespace backplot
