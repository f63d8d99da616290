#include "SourceView.h"
#include "StepListing.h"
#include "ViewCommands.h"
#include "WindowFixture.h"

#include <QLabel>

namespace backplot {
namespace {

using test::Part;

// The visible menu items SetMenus switches ("Step Details" is looked at on its own; the
// hidden ones, "Plot From" among them, always read disabled while hidden).
const char* const Menus[] = {"mnuSaveAs", "mnuPrint", "mnuPrintPreview", "mnuClear", "mnuAutoRedraw", "mnuRedraw",
                             "mnuZoomMain", "mnuPanMain", "mnuSlowMotion", "mnuDrawAids", "mnuStep", "mnuSource"};

// Every button on.
constexpr const char* AllOn = "Exit Open Clear Print Preview Pan ZoomExtends ZWindow ZIn ZOut Refresh Step Slow "
                              "GCode Rapid Axis Properties ToolColors";
// No program: SetControls(false) leaves Exit, Open and Properties alone.
constexpr const char* Idle = "Exit Open Properties";
// Stepping: the view buttons and GCode keep their state, Stop is on.
constexpr const char* Stepping = "Pan ZoomExtends ZWindow ZIn ZOut Refresh Stop GCode";
// Slow motion: Pause and Stop on.
constexpr const char* Slow = "Pan ZoomExtends ZWindow ZIn ZOut Refresh Pause Stop GCode";

// The commands each state leaves on, and the keys and menu items that walk a program.
class CommandStates : public test::WindowFixture {
protected:
    // The buttons that are on, in toolbar order.
    QString Toolbar() const
    {
        QStringList on;
        for (ToolbarKey key : AllToolbarKeys())
            if (Button(key)->isEnabled())
                on << Button(key)->objectName();
        return on.join(QLatin1Char(' '));
    }
    // "on" when every menu item SetMenus switches is on, "off" when none is, else the list.
    std::string MenuState() const
    {
        int on = 0;
        std::string list;
        for (const char* name : Menus)
            if (Action(name)->isEnabled()) {
                ++on;
                list += name;
                list += ' ';
            }
        return on == static_cast<int>(std::size(Menus)) ? "on" : on == 0 ? "off" : list;
    }
    QString Code() const { return window->lblCode()->text(); }
};

TEST_F(CommandStates, FileCommandsSwitchTheToolbarAndMenus)
{
    StartShown();
    EXPECT_EQ(Toolbar(), Idle);
    EXPECT_EQ(MenuState(), "off");
    EXPECT_FALSE(Action("mnuDetails")->isEnabled());

    OpenCommand(std::nullopt); // cancelled: nothing changes
    EXPECT_EQ(Toolbar(), Idle);
    EXPECT_EQ(MenuState(), "off");

    OpenCommand(programs.Write("empty.nc", "")); // refused with its message; the menus are given back
    EXPECT_EQ(Toolbar(), Idle);
    EXPECT_EQ(MenuState(), "on");
    EXPECT_EQ(dialogs.Messages.size(), 1u);

    OpenCommand(programs.Write("part.nc", Part));
    EXPECT_EQ(Toolbar(), AllOn);
    EXPECT_EQ(MenuState(), "on");
    EXPECT_TRUE(Action("mnuDetails")->isEnabled());

    OpenCommand(std::nullopt); // cancelled with a program loaded: it stays, and so do the commands
    EXPECT_EQ(Toolbar(), AllOn);
    OpenCommand(programs.Folder() + "missing.nc"); // an error: the commands stay as they were
    EXPECT_EQ(Toolbar(), AllOn);
    EXPECT_EQ(MenuState(), "on");
    EXPECT_EQ(dialogs.Messages.back().Text, "An error as occurred while prossessing the file ");
}

TEST_F(CommandStates, StepEnterEscAndSlowMotionWalkTheProgramFromTheKeyboardAndTheMenu)
{
    StartWithPart();
    Canvas()->setFocus();
    QAction* details = Action("mnuDetails");
    Type('s'); // lower case steps too
    EXPECT_TRUE(window->playback().StepMode);
    EXPECT_EQ(window->plotter().PlotLast, 1);
    EXPECT_EQ(Code(), "  Press Esc key to end single step.");
    EXPECT_EQ(Toolbar(), Stepping);
    EXPECT_EQ(MenuState(), "on");
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
    EXPECT_EQ(Toolbar(), Stepping);
    // Enter on the last element: the whole program, and the toolbar back.
    QTest::keyClick(Canvas(), Qt::Key_Return);
    EXPECT_FALSE(window->playback().StepMode);
    EXPECT_EQ(window->plotter().PlotLast, 4);
    EXPECT_EQ(Toolbar(), AllOn);
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
    EXPECT_EQ(Toolbar(), AllOn);

    // Stepped from the menu past the end: silently, with the toolbar as stepping left it.
    for (int i = 0; i < 5; ++i)
        Action("mnuStep")->trigger();
    EXPECT_FALSE(window->playback().StepMode);
    EXPECT_EQ(Toolbar(), Stepping);
    QTest::keyClick(Canvas(), Qt::Key_Escape);
    EXPECT_EQ(Toolbar(), AllOn);

    // An open while stepping gives back what SetControls switches; Esc gives back the rest.
    Type('S');
    dialogs.OpenAnswers.push_back(window->FileName()); // from the menu: the button is grey
    Action("mnuFileOpen")->trigger();
    EXPECT_EQ(Toolbar(), "Clear Print Preview Pan ZoomExtends ZWindow ZIn ZOut Refresh Step Slow GCode Rapid Axis "
                         "ToolColors");
    QTest::keyClick(Canvas(), Qt::Key_Escape);
    EXPECT_EQ(Toolbar(), AllOn);

    // Slow motion pauses, resumes and stops from the keyboard and the menu.
    const QString fileLine = QString::fromStdString(window->FileName()) + "  ";
    Action("mnuSlowMotion")->trigger(); // to its end: the toolbar back
    EXPECT_EQ(Toolbar(), AllOn);
    EXPECT_FALSE(Action("mnuSlowMotion")->isChecked());

    // P reaches the replay between records: it stops at the second, paused.
    PressDuringThePass(Qt::Key_P, "p");
    Type('M');
    EXPECT_TRUE(window->playback().SlowMode && window->playback().SlowPaused);
    EXPECT_EQ(window->sourceView().MarkedLine(), 1); // the line of the one record drawn
    EXPECT_EQ(Code(), "  Paused - Press the P key to continue");
    EXPECT_TRUE(Action("mnuSlowMotion")->isChecked());
    EXPECT_EQ(Toolbar(), Slow);
    EXPECT_EQ(MenuState(), "on");
    const QImage paused = Picture();
    Type('R'); // no redraw, no clear while slow motion is paused
    Type('C');
    EXPECT_EQ(Picture(), paused);

    // Esc while paused gives the toolbar back but leaves slow motion paused.
    window->playback().SourceLine = 3;
    QTest::keyClick(Canvas(), Qt::Key_Escape);
    EXPECT_TRUE(window->playback().SlowMode && window->playback().SlowPaused);
    EXPECT_EQ(window->playback().SourceLine, 1);
    EXPECT_EQ(Toolbar(), AllOn);

    Type('P'); // resumes where it stopped and runs to the end
    // Records 2 to 4 marked lines 1 to 3: the mark counts records since Esc reset it.
    EXPECT_EQ(window->sourceView().MarkedLine(), 3);
    EXPECT_FALSE(window->playback().SlowMode);
    EXPECT_FALSE(Action("mnuSlowMotion")->isChecked());
    EXPECT_EQ(Code(), fileLine);
    EXPECT_EQ(Toolbar(), AllOn);

    // Turned off from the menu while paused: it ends, but the toolbar stays until Esc.
    PressDuringThePass(Qt::Key_P, "p");
    Action("mnuSlowMotion")->trigger();
    ASSERT_TRUE(window->playback().SlowPaused);
    Action("mnuSlowMotion")->trigger();
    EXPECT_FALSE(window->playback().SlowMode);
    EXPECT_EQ(Toolbar(), Slow);
    QTest::keyClick(Canvas(), Qt::Key_Escape);
    EXPECT_EQ(Toolbar(), AllOn);

    // Esc during the replay stops it and draws the rest at full speed.
    PressDuringThePass(Qt::Key_Escape, QString(QChar(27)));
    Type('M');
    EXPECT_FALSE(window->playback().SlowMode);
    EXPECT_FALSE(window->playback().SlowPaused);
    EXPECT_FALSE(Action("mnuSlowMotion")->isChecked());
    EXPECT_EQ(Code(), fileLine);
}

} // namespace
} // namespace backplot
