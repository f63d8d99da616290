#include "Icons.h"
#include "WindowFixture.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace backplot {
namespace {

using MainWindow = test::WindowFixture;

// One line per menu entry, indented by depth: name|caption (--- for a separator), then
// the shortcut, [ ] or [x] when checkable, and "hidden" when not visible.
std::string MenuDump(const QList<QAction*>& actions, int depth = 0)
{
    std::string dump;
    for (const QAction* action : actions) {
        QStringList parts{QString(depth * 2, QLatin1Char(' ')) + action->objectName(),
                          action->isSeparator() ? QStringLiteral("---") : action->text()};
        if (!action->shortcut().isEmpty())
            parts << action->shortcut().toString();
        if (action->isCheckable())
            parts << (action->isChecked() ? "[x]" : "[ ]");
        if (!action->isVisible())
            parts << "hidden";
        dump += parts.join(QLatin1Char('|')).toStdString() + '\n';
        if (action->menu())
            dump += MenuDump(action->menu()->actions(), depth + 1);
    }
    return dump;
}

TEST_F(MainWindow, MenuTree)
{
    Start();
    EXPECT_EQ(MenuDump(window->menuBar()->actions()), R"(mnuFileMain|&File
  mnuFileOpen|&Open...|Ctrl+O
  mnuSaveAs|Save &As...
    mnuWinbmp|&Windows Bitmap
    mnuDxfFile|&DXF File
  mnuFbar1|---
  mnuPrintPreview|Print Pre&view
  mnuPrint|&Print|Ctrl+P
  mnuPrinter|Printer Set&up...
  mnhFbar2|---
  mnuExit|E&xit
  mnuRecentFile0|---|hidden
  mnuRecentFile1|RecentFile1|hidden
  mnuRecentFile2|RecentFile2|hidden
  mnuRecentFile3|RecentFile3|hidden
  mnuRecentFile4|RecentFile4|hidden
mnuEdit|&Edit|hidden
  mnuDelete|&Delete|Del
mnuViewMain|&View
  mnuClear|&Clear
  mnuVBar1|---
  mnuRedraw|&Redraw
  mnuAutoRedraw|&Auto Redraw
    mnuAutoOn|On|[ ]
    mnuAutoOff|Off|[x]
  mnuVBar2|---
  mnuZoomMain|&Zoom
    mnuZExtents|Full Drawing &Extents
    mnuZPrev|&Previous
    mnuZWindow|&Window
    mnuZIn|&In
    mnuZOut|&Out
  mnuPanMain|&Pan
    mnuPoint|&Point
    mnuPanLeft|&Left
    mnuPanRight|&Right
    mnuPanUp|&Up
    mnuPanDown|&Down
  mnuVBar3|---
  mnuStep|&Single Block Step|[ ]
  mnuDetails|Step &Details
  mnuVBar4|---
  mnuSlowMotion|Slow &Motion Block Step|[ ]
  mnuVBar5|---
  mnuPlotFrom|Plot &From|hidden
    mnuTool1|Tool To &EOF
    mnuTool2|&Tool To Tool
  mnuVBar6|---|hidden
  mnuSource|&View GCode Source|[ ]
mnuToolsMain|&Options
  mnuDrawAids|Drawing &Aids...
  mnuText|&Text...|hidden
  mnuCoords|Coordinates|hidden
  mnuPref|&Properties...
  mnuCaptions|Show Toolbar Captions|[ ]|hidden
mnuHelp|&Help
  mnuHelpFile|Tarvo Backplot Help &Topics
  mnuHBar1|---
  mnuAbout|&About...
)");
}

TEST_F(MainWindow, ToolbarButtonsAndCaptions)
{
    Start();
    auto* toolbar = window->findChild<QToolBar*>(QStringLiteral("cToolbar1"));
    ASSERT_NE(toolbar, nullptr);
    QStringList layout;
    for (QAction* action : toolbar->actions())
        layout << (action->isSeparator() ? QStringLiteral("|") : action->objectName());
    EXPECT_EQ(layout.join(QLatin1Char(' ')), "Exit | Open | Clear | Print Preview | Pan ZoomExtends ZWindow ZIn "
                                             "ZOut Refresh | Step Slow Pause Stop | GCode | Rapid Axis | "
                                             "Properties | ToolColors");
    using K = ToolbarKey;
    const struct {
        ToolbarKey key;
        const char* toolTip;
        const char* caption;
    } rows[] = {
        {K::Exit, "Exit Program", "Exit"},          {K::Open, "Open File to Plot", "Open"},
        {K::Clear, "Clear Screen", "Clear"},        {K::Print, "Print", "Print"},
        {K::Preview, "Print Preview", "Preview"},   {K::Pan, "Pan", "Pan"},
        {K::ZoomExtends, "Zoom Extends", "Extends"}, {K::ZWindow, "Zoom Window", "Window"},
        {K::ZIn, "Zoom In", "Z In"},                {K::ZOut, "Zoom Out", "Z Out"},
        {K::Refresh, "Refresh Plot", "Refresh"},    {K::Step, "Single Block Step", "Step"},
        {K::Slow, "Slow Motion Block Step", "Slow"}, {K::Pause, "Pause", "Pause"},
        {K::Stop, "Stop", "Pause"},                 {K::GCode, "Show GCode", "GCode"},
        {K::Rapid, "Toggle Rapid Lines", "Rapid"},  {K::Axis, "Toggle Axis Lines", "Axis"},
        {K::Properties, "BackPlot Properties", "Properties"},
        {K::ToolColors, "Toogle Tool Change Colors", "Tool Colors"},
    };
    for (const auto& [key, toolTip, caption] : rows) {
        SCOPED_TRACE(std::string(NameOf(key)));
        const QAction* button = Button(key);
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->toolTip(), toolTip);
        EXPECT_EQ(button->text(), caption);
        // Its own picture at each size; the Icons tests look at the pictures themselves.
        for (int size : {16, 32})
            EXPECT_EQ(button->icon().pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32),
                      Icons::ToolbarIcon(key).pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32))
                << size;
    }

    // Captions show only while "Show Toolbar Captions" is checked.
    auto* stop = qobject_cast<QToolButton*>(toolbar->widgetForAction(Button(ToolbarKey::Stop)));
    ASSERT_NE(stop, nullptr);
    EXPECT_EQ(stop->toolButtonStyle(), Qt::ToolButtonIconOnly);
    Action("mnuCaptions")->trigger();
    EXPECT_TRUE(Action("mnuCaptions")->isChecked());
    EXPECT_EQ(stop->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    Action("mnuCaptions")->trigger();
    EXPECT_EQ(stop->toolButtonStyle(), Qt::ToolButtonIconOnly);
}

TEST_F(MainWindow, SetControlsAndSetMenus)
{
    Start();
    const QStringList controlled = {"Clear", "Print", "Preview", "Pan", "ZoomExtends", "ZWindow", "ZIn", "ZOut",
                                    "Refresh", "Step", "Slow", "GCode", "Rapid", "Axis", "ToolColors"};
    const QStringList untouched = {"Exit", "Open", "Properties"};
    const QStringList pauseStop = {"Pause", "Stop"};
    const QStringList menuItems = {"mnuSaveAs", "mnuPrint", "mnuPrintPreview", "mnuClear", "mnuAutoRedraw",
                                   "mnuRedraw", "mnuZoomMain", "mnuPanMain", "mnuSlowMotion", "mnuDrawAids",
                                   "mnuStep", "mnuText", "mnuDelete", "mnuPlotFrom", "mnuSource", "mnuDetails"};
    const QStringList otherItems = {"mnuFileOpen", "mnuPrinter", "mnuExit", "mnuPref", "mnuAbout",
                                    "mnuHelpFile", "mnuAutoOn", "mnuZIn", "mnuWinbmp"};
    // Buttons and menu items alike are actions named after their key or item.
    const auto expectEnabled = [&](const QStringList& names, bool enabled) {
        for (const QString& name : names)
            EXPECT_EQ(Action(name.toLatin1().constData())->isEnabled(), enabled) << name.toStdString();
    };
    // Qt reports hidden actions as disabled; show the two hidden ones to see their own state.
    Action("mnuText")->setVisible(true);
    Action("mnuPlotFrom")->setVisible(true);

    expectEnabled(controlled + pauseStop + menuItems, false);
    expectEnabled(untouched + otherItems, true);

    // Pause and Stop go off even when on; Exit, Open and Properties keep their state.
    for (const QString& key : pauseStop + untouched)
        Action(key.toLatin1().constData())->setEnabled(pauseStop.contains(key));
    window->SetControls(true);
    expectEnabled(controlled, true);
    expectEnabled(pauseStop + untouched, false);

    Action("mnuPrinter")->setEnabled(false);
    window->SetMenus(true);
    expectEnabled(menuItems, true);
    EXPECT_FALSE(Action("mnuPrinter")->isEnabled());

    window->SetControls(false);
    window->SetMenus(false);
    expectEnabled(controlled + menuItems, false);
}

TEST_F(MainWindow, AutoRedrawOffIsRefusedWhileCrossHairsAreOn)
{
    Start();
    window->SetMenus(true);
    QAction* on = Action("mnuAutoOn");
    QAction* off = Action("mnuAutoOff");
    on->trigger();
    on->trigger(); // the checked entry again stays checked
    EXPECT_TRUE(on->isChecked() && !off->isChecked() && window->settings().AutoDraw);

    window->settings().CrossHairs = true;
    off->trigger();
    ASSERT_EQ(dialogs.Messages.size(), 1u);
    EXPECT_EQ(dialogs.Messages[0].Text, "Please turn the cross hairs off\r\nbefore using this option.");
    EXPECT_EQ(dialogs.Messages[0].Title, "Corvane Backplot");
    EXPECT_TRUE(on->isChecked() && !off->isChecked() && window->settings().AutoDraw);

    window->settings().CrossHairs = false;
    off->trigger();
    EXPECT_EQ(dialogs.Messages.size(), 1u);
    EXPECT_TRUE(!on->isChecked() && off->isChecked() && !window->settings().AutoDraw);
}

TEST_F(MainWindow, StartUpReadsTheStoresAndClosingWritesThem)
{
    Store("Backcolor", "255"); // red, as 0xBBGGRR
    Store("Mill", "0");
    Store("AbsCenter", "1");
    Store("ToolColor3", "4210752");
    StoreRecent(1, "/parts/a.nc");
    StoreRecent(2, "Not Used yet");
    StoreRecent(3, "/parts/R&D/c.nc");
    Start();
    window->resize(640, 480);
    window->show();
    QApplication::processEvents();

    EXPECT_EQ(window->windowTitle(), "Tarvo Backplot");
    EXPECT_EQ(window->lblComment()->text(), "  Ready");
    EXPECT_FALSE(window->translator().State().Mill);
    EXPECT_EQ(window->translator().State().AbsCenter, 1);
    EXPECT_EQ(window->translator().ToolColors()[3].Color, 4210752u);
    EXPECT_TRUE(dialogs.Messages.empty());
    // The canvas fills the window's middle while the source view and the step listing
    // are hidden, on the stored colour.
    EXPECT_EQ(window->canvas().size(), window->centralWidget()->size());
    const QImage picture = window->canvas().Picture();
    ASSERT_GT(picture.width(), 600);
    EXPECT_EQ(picture.pixelColor(10, 10), QColor(255, 0, 0));
    EXPECT_EQ(picture.pixelColor(picture.width() - 1, picture.height() - 1), QColor(255, 0, 0));
    // Used entries are shown, "&" doubled in the caption; "Not Used..." and missing ones are not.
    EXPECT_TRUE(Action("mnuRecentFile0")->isVisible());
    EXPECT_EQ(Action("mnuRecentFile1")->text(), "/parts/a.nc");
    EXPECT_FALSE(Action("mnuRecentFile2")->isVisible());
    EXPECT_EQ(Action("mnuRecentFile3")->text(), "/parts/R&&D/c.nc");
    EXPECT_EQ(Action("mnuRecentFile3")->data().toString(), "/parts/R&D/c.nc");
    EXPECT_TRUE(Action("mnuRecentFile1")->isVisible() && Action("mnuRecentFile3")->isVisible());
    EXPECT_FALSE(Action("mnuRecentFile4")->isVisible());

    window->settings().SlowTime = 0.5f;
    window->translator().ToolColors()[6].Color = 0x00FF00;
    Button(ToolbarKey::Exit)->trigger();
    EXPECT_FALSE(window->isVisible());
    QSettings stored(scope.SettingsFile(), QSettings::IniFormat);
    EXPECT_EQ(stored.value("Settings/Slow Time").toString(), "0.5");
    EXPECT_EQ(stored.value("Settings/Mill").toString(), "0");
    EXPECT_EQ(stored.value("Settings/ToolColor6").toString(), "65280");
}

} // namespace
} // namespace backplot
