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

// The visible items of a menu as a user sees them: caption, "=shortcut", a submenu's items in
// braces, "|" for a separator; hidden ones left out.
std::string Shown(const QList<QAction*>& actions)
{
    QStringList items;
    for (const QAction* action : actions)
        if (action->isVisible())
            items << (action->isSeparator() ? QStringLiteral("|")
                      : action->menu()     ? action->text() + "{" + QString::fromStdString(Shown(action->menu()->actions())) + "}"
                      : action->shortcut().isEmpty() ? action->text()
                                                     : action->text() + "=" + action->shortcut().toString());
    return items.join(QLatin1Char(' ')).toStdString();
}

// The program's own words on the menus and the toolbar: captions with their access keys,
// shortcuts, tool tips and button captions (each button with its own picture).
TEST_F(MainWindow, MenusAndToolbarSayTheProgramsOwnWords)
{
    Start();
    EXPECT_EQ(Shown(window->menuBar()->actions()),
              "&File{&Open...=Ctrl+O Save &As...{&Windows Bitmap &DXF File} | Print Pre&view &Print=Ctrl+P Printer "
              "Set&up... | E&xit} &View{&Clear | &Redraw &Auto Redraw{On Off} | &Zoom{Full Drawing &Extents &Previous "
              "&Window &In &Out} &Pan{&Point &Left &Right &Up &Down} | &Single Block Step Step &Details | Slow &Motion "
              "Block Step | &View GCode Source} &Options{Drawing &Aids... &Properties...} &Help{Tarvo Backplot Help "
              "&Topics | &About...}");
    EXPECT_EQ(Action("mnuDelete")->shortcut(), QKeySequence(Qt::Key_Delete)); // on the hidden Edit menu
    auto* toolbar = window->findChild<QToolBar*>(QStringLiteral("cToolbar1"));
    ASSERT_NE(toolbar, nullptr);
    QStringList buttons;
    for (QAction* action : toolbar->actions())
        buttons << (action->isSeparator() ? QStringLiteral("|") : action->toolTip() + "/" + action->text());
    for (ToolbarKey key : AllToolbarKeys())
        EXPECT_EQ(Button(key)->icon().pixmap(16).toImage(), Icons::ToolbarIcon(key).pixmap(16).toImage()) << NameOf(key);
    EXPECT_EQ(buttons.join(QLatin1Char(' ')),
              "Exit Program/Exit | Open File to Plot/Open | Clear Screen/Clear | Print/Print Print Preview/Preview | "
              "Pan/Pan Zoom Extends/Extends Zoom Window/Window Zoom In/Z In Zoom Out/Z Out Refresh Plot/Refresh | "
              "Single Block Step/Step Slow Motion Block Step/Slow Pause/Pause Stop/Pause | Show GCode/GCode | Toggle "
              "Rapid Lines/Rapid Toggle Axis Lines/Axis | BackPlot Properties/Properties | Toogle Tool Change "
              "Colors/Tool Colors");

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
