#include "CanvasWidget.h"
#include "WindowFixture.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTest>
#include <map>

namespace backplot {
namespace {

constexpr const char* Part = "G00 X10. Y-10.\r\nG01 X90.\r\nG00 X110. Y-20.\r\nM30\r\n";

// The toolbar as a string of the buttons that are on, in toolbar order.
const char* const Keys[] = {"Exit", "Open", "Clear", "Print", "Preview", "Pan", "ZoomExtends", "ZWindow", "ZIn",
                            "ZOut", "Refresh", "Step", "Slow", "Pause", "Stop", "GCode", "Rapid", "Axis",
                            "Properties", "ToolColors"};
// The visible menu items SetMenus switches ("Step Details" is looked at on its own; the
// hidden ones, "Plot From" among them, always read disabled while hidden).
const char* const Menus[] = {"mnuSaveAs",     "mnuPrint",     "mnuPrintPreview", "mnuClear", "mnuAutoRedraw",
                             "mnuRedraw",     "mnuZoomMain",  "mnuPanMain",      "mnuSlowMotion",
                             "mnuDrawAids",   "mnuStep",      "mnuSource"};

// Every button on.
constexpr const char* AllOn = "Exit Open Clear Print Preview Pan ZoomExtends ZWindow ZIn ZOut Refresh Step Slow "
                              "GCode Rapid Axis Properties ToolColors";
// No program: SetControls(false) leaves Exit, Open and Properties alone.
constexpr const char* Idle = "Exit Open Properties";
// Stepping: the view buttons and GCode keep their state, Stop is on.
constexpr const char* Stepping = "Pan ZoomExtends ZWindow ZIn ZOut Refresh Stop GCode";
// Slow motion: Pause and Stop on.
constexpr const char* Slow = "Pan ZoomExtends ZWindow ZIn ZOut Refresh Pause Stop GCode";

class CommandStates : public test::WindowFixture {
protected:
    void SetUp() override
    {
        Start().show();
        QApplication::processEvents();
        window->settings().SlowTime = 0.001f;
    }
    std::string Toolbar() const
    {
        std::string on;
        for (const char* key : Keys)
            if (Button(key)->isEnabled()) {
                if (!on.empty())
                    on += ' ';
                on += key;
            }
        return on;
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
    void Open(const std::optional<std::string>& answer)
    {
        dialogs.OpenAnswers.push_back(answer);
        Button("Open")->trigger();
    }
    void Key(int key, const QString& text)
    {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QApplication::sendEvent(&window->canvas(), &press);
    }
    test::ScratchDir programs;
};

TEST_F(CommandStates, FileCommandsSwitchTheToolbarAndMenus)
{
    EXPECT_EQ(Toolbar(), Idle);
    EXPECT_EQ(MenuState(), "off");
    EXPECT_FALSE(Action("mnuDetails")->isEnabled());

    Open(std::nullopt); // cancelled: nothing changes
    EXPECT_EQ(Toolbar(), Idle);
    EXPECT_EQ(MenuState(), "off");

    Open(programs.Write("empty.nc", "")); // refused with its message; the menus are given back
    EXPECT_EQ(Toolbar(), Idle);
    EXPECT_EQ(MenuState(), "on");
    EXPECT_EQ(dialogs.Messages.size(), 1u);

    Open(programs.Write("part.nc", Part));
    EXPECT_EQ(Toolbar(), AllOn);
    EXPECT_EQ(MenuState(), "on");
    EXPECT_TRUE(Action("mnuDetails")->isEnabled());

    Open(std::nullopt); // cancelled with a program loaded: it stays, and so do the commands
    EXPECT_EQ(Toolbar(), AllOn);
    Open(programs.Folder() + "missing.nc"); // an error: the commands stay as they were
    EXPECT_EQ(Toolbar(), AllOn);
    EXPECT_EQ(MenuState(), "on");
    EXPECT_EQ(dialogs.Messages.back().Text, "An error as occurred while prossessing the file ");
}

TEST_F(CommandStates, PlaybackSetsTheToolbarByKeyAndLeavesTheMenus)
{
    Open(programs.Write("part.nc", Part));
    Action("mnuStep")->trigger();
    EXPECT_EQ(Toolbar(), Stepping);
    EXPECT_EQ(MenuState(), "on");
    EXPECT_FALSE(Action("mnuDetails")->isEnabled());
    for (int i = 0; i < 4; ++i)
        Action("mnuStep")->trigger();
    EXPECT_FALSE(window->playback().StepMode); // past the end, silently
    EXPECT_EQ(Toolbar(), Stepping);            // and the toolbar as stepping left it
    Key(Qt::Key_Escape, QString(QChar(27)));
    EXPECT_EQ(Toolbar(), AllOn);

    Action("mnuStep")->trigger();
    Key(Qt::Key_Return, "\r");
    Key(Qt::Key_Return, "\r");
    Key(Qt::Key_Return, "\r");
    EXPECT_EQ(Toolbar(), Stepping);
    Key(Qt::Key_Return, "\r"); // on the last element: the whole program and the toolbar back
    EXPECT_EQ(Toolbar(), AllOn);
    EXPECT_FALSE(window->playback().StepMode);

    // Slow motion to its end gives the toolbar back; turned off from the menu it does not.
    Action("mnuSlowMotion")->trigger();
    EXPECT_EQ(Toolbar(), AllOn);
    EXPECT_FALSE(Action("mnuSlowMotion")->isChecked());
    QCoreApplication::postEvent(&window->canvas(), new QKeyEvent(QEvent::KeyPress, Qt::Key_P, Qt::NoModifier, "p"));
    Action("mnuSlowMotion")->trigger(); // paused by the P on the way
    EXPECT_EQ(Toolbar(), Slow);
    EXPECT_EQ(MenuState(), "on");
    Action("mnuSlowMotion")->trigger(); // off from the menu while paused
    EXPECT_FALSE(window->playback().SlowMode);
    EXPECT_EQ(Toolbar(), Slow);
    Key(Qt::Key_Escape, QString(QChar(27)));
    EXPECT_EQ(Toolbar(), AllOn);
}

} // namespace
} // namespace backplot
