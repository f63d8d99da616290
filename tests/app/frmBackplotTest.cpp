#include "CanvasWidget.h"
#include "DrawSurface.h"
#include "ScratchSettings.h"
#include "ScriptedDialogs.h"
#include "frmAbout.h"
#include "frmBackplot.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSettings>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <gtest/gtest.h>

namespace backplot {
namespace {

using test::ScratchSettings;
using test::ScriptedDialogs;

class MainWindow : public ::testing::Test {
protected:
    // Values put in the two stores before the window starts.
    void Store(const char* name, const char* text)
    {
        QSettings(scope.SettingsFile(), QSettings::IniFormat)
            .setValue(QStringLiteral("Settings/") + QLatin1String(name), QString::fromLatin1(text));
    }
    void StoreRecent(int index, const char* text)
    {
        QSettings(scope.RecentFilesFile(), QSettings::IniFormat)
            .setValue(QStringLiteral("RecentFiles/RecentFile%1").arg(index), QString::fromLatin1(text));
    }
    frmBackplot& Start()
    {
        window = std::make_unique<frmBackplot>(&dialogs);
        return *window;
    }
    QAction* Action(const char* name)
    {
        auto* action = window->findChild<QAction*>(QString::fromLatin1(name));
        EXPECT_NE(action, nullptr) << name;
        return action;
    }

    ScratchSettings scope;
    ScriptedDialogs dialogs;
    std::unique_ptr<frmBackplot> window;
};

// The object names of a menu's entries in order, separators included.
QStringList EntryNames(const QList<QAction*>& actions)
{
    QStringList names;
    for (QAction* action : actions)
        names << action->objectName();
    return names;
}

TEST_F(MainWindow, MenuTree)
{
    Start();
    const QKeySequence none;
    struct Row {
        const char* name;
        const char* caption;
        QKeySequence shortcut;
        bool checkable;
        bool checked;
        bool visible;
    };
    const Row rows[] = {
        {"mnuFileMain", "&File", none, false, false, true},
        {"mnuFileOpen", "&Open...", QKeySequence(QStringLiteral("Ctrl+O")), false, false, true},
        {"mnuSaveAs", "Save &As...", none, false, false, true},
        {"mnuWinbmp", "&Windows Bitmap", none, false, false, true},
        {"mnuDxfFile", "&DXF File", none, false, false, true},
        {"mnuPrintPreview", "Print Pre&view", none, false, false, true},
        {"mnuPrint", "&Print", QKeySequence(QStringLiteral("Ctrl+P")), false, false, true},
        {"mnuPrinter", "Printer Set&up...", none, false, false, true},
        {"mnuExit", "E&xit", none, false, false, true},
        {"mnuRecentFile1", "RecentFile1", none, false, false, false},
        {"mnuRecentFile2", "RecentFile2", none, false, false, false},
        {"mnuRecentFile3", "RecentFile3", none, false, false, false},
        {"mnuRecentFile4", "RecentFile4", none, false, false, false},
        {"mnuEdit", "&Edit", none, false, false, false},
        {"mnuDelete", "&Delete", QKeySequence(QStringLiteral("Del")), false, false, true},
        {"mnuViewMain", "&View", none, false, false, true},
        {"mnuClear", "&Clear", none, false, false, true},
        {"mnuRedraw", "&Redraw", none, false, false, true},
        {"mnuAutoRedraw", "&Auto Redraw", none, false, false, true},
        {"mnuAutoOn", "On", none, true, false, true},
        {"mnuAutoOff", "Off", none, true, true, true},
        {"mnuZoomMain", "&Zoom", none, false, false, true},
        {"mnuZExtents", "Full Drawing &Extents", none, false, false, true},
        {"mnuZPrev", "&Previous", none, false, false, true},
        {"mnuZWindow", "&Window", none, false, false, true},
        {"mnuZIn", "&In", none, false, false, true},
        {"mnuZOut", "&Out", none, false, false, true},
        {"mnuPanMain", "&Pan", none, false, false, true},
        {"mnuPoint", "&Point", none, false, false, true},
        {"mnuPanLeft", "&Left", none, false, false, true},
        {"mnuPanRight", "&Right", none, false, false, true},
        {"mnuPanUp", "&Up", none, false, false, true},
        {"mnuPanDown", "&Down", none, false, false, true},
        {"mnuStep", "&Single Block Step", none, true, false, true},
        {"mnuDetails", "Step &Details", none, false, false, true},
        {"mnuSlowMotion", "Slow &Motion Block Step", none, true, false, true},
        {"mnuPlotFrom", "Plot &From", none, false, false, false},
        {"mnuTool1", "Tool To &EOF", none, false, false, true},
        {"mnuTool2", "&Tool To Tool", none, false, false, true},
        {"mnuSource", "&View GCode Source", none, true, false, true},
        {"mnuToolsMain", "&Options", none, false, false, true},
        {"mnuDrawAids", "Drawing &Aids...", none, false, false, true},
        {"mnuText", "&Text...", none, false, false, false},
        {"mnuCoords", "Coordinates", none, false, false, false},
        {"mnuPref", "&Properties...", none, false, false, true},
        {"mnuCaptions", "Show Toolbar Captions", none, true, false, false},
        {"mnuHelp", "&Help", none, false, false, true},
        {"mnuHelpFile", "Tarvo Backplot Help &Topics", none, false, false, true},
        {"mnuAbout", "&About...", none, false, false, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QList<QAction*> found = window->findChildren<QAction*>(QString::fromLatin1(row.name));
        ASSERT_EQ(found.size(), 1);
        const QAction* action = found.front();
        EXPECT_EQ(action->text(), QString::fromLatin1(row.caption));
        EXPECT_EQ(action->shortcut(), row.shortcut);
        EXPECT_EQ(action->isCheckable(), row.checkable);
        EXPECT_EQ(action->isChecked(), row.checked);
        EXPECT_EQ(action->isVisible(), row.visible);
    }

    // Where each entry sits, separators by name.
    EXPECT_EQ(EntryNames(window->menuBar()->actions()),
              QStringList({"mnuFileMain", "mnuEdit", "mnuViewMain", "mnuToolsMain", "mnuHelp"}));
    const std::pair<const char*, QStringList> menus[] = {
        {"mnuFileMain",
         {"mnuFileOpen", "mnuSaveAs", "mnuFbar1", "mnuPrintPreview", "mnuPrint", "mnuPrinter", "mnhFbar2",
          "mnuExit", "mnuRecentFile0", "mnuRecentFile1", "mnuRecentFile2", "mnuRecentFile3", "mnuRecentFile4"}},
        {"mnuSaveAs", {"mnuWinbmp", "mnuDxfFile"}},
        {"mnuEdit", {"mnuDelete"}},
        {"mnuViewMain",
         {"mnuClear", "mnuVBar1", "mnuRedraw", "mnuAutoRedraw", "mnuVBar2", "mnuZoomMain", "mnuPanMain",
          "mnuVBar3", "mnuStep", "mnuDetails", "mnuVBar4", "mnuSlowMotion", "mnuVBar5", "mnuPlotFrom",
          "mnuVBar6", "mnuSource"}},
        {"mnuAutoRedraw", {"mnuAutoOn", "mnuAutoOff"}},
        {"mnuZoomMain", {"mnuZExtents", "mnuZPrev", "mnuZWindow", "mnuZIn", "mnuZOut"}},
        {"mnuPanMain", {"mnuPoint", "mnuPanLeft", "mnuPanRight", "mnuPanUp", "mnuPanDown"}},
        {"mnuPlotFrom", {"mnuTool1", "mnuTool2"}},
        {"mnuToolsMain", {"mnuDrawAids", "mnuText", "mnuCoords", "mnuPref", "mnuCaptions"}},
        {"mnuHelp", {"mnuHelpFile", "mnuHBar1", "mnuAbout"}},
    };
    for (const auto& [name, entries] : menus) {
        SCOPED_TRACE(name);
        const QAction* menuAction = Action(name);
        ASSERT_NE(menuAction, nullptr);
        ASSERT_NE(menuAction->menu(), nullptr);
        EXPECT_EQ(EntryNames(menuAction->menu()->actions()), entries);
    }
    for (const char* name : {"mnuFbar1", "mnhFbar2", "mnuRecentFile0", "mnuVBar1", "mnuVBar2", "mnuVBar3",
                             "mnuVBar4", "mnuVBar5", "mnuVBar6", "mnuHBar1"}) {
        SCOPED_TRACE(name);
        ASSERT_NE(Action(name), nullptr);
        EXPECT_TRUE(Action(name)->isSeparator());
        // Hidden: the one before the unfilled recent files and the one after Plot From.
        const bool hidden = QByteArray(name) == "mnuRecentFile0" || QByteArray(name) == "mnuVBar6";
        EXPECT_EQ(Action(name)->isVisible(), !hidden);
    }
}

TEST_F(MainWindow, Toolbar)
{
    Start();
    auto* toolbar = window->findChild<QToolBar*>(QStringLiteral("cToolbar1"));
    ASSERT_NE(toolbar, nullptr);
    QStringList layout;
    for (QAction* action : toolbar->actions())
        layout << (action->isSeparator() ? QStringLiteral("|") : action->objectName());
    EXPECT_EQ(layout.join(QLatin1Char(' ')),
              QStringLiteral("Exit | Open | Clear | Print Preview | Pan ZoomExtends ZWindow ZIn ZOut Refresh | "
                             "Step Slow Pause Stop | GCode | Rapid Axis | Properties | ToolColors"));

    struct Row {
        const char* key;
        const char* toolTip;
        const char* caption;
    };
    const Row rows[] = {
        {"Exit", "Exit Program", "Exit"},
        {"Open", "Open File to Plot", "Open"},
        {"Clear", "Clear Screen", "Clear"},
        {"Print", "Print", "Print"},
        {"Preview", "Print Preview", "Preview"},
        {"Pan", "Pan", "Pan"},
        {"ZoomExtends", "Zoom Extends", "Extends"},
        {"ZWindow", "Zoom Window", "Window"},
        {"ZIn", "Zoom In", "Z In"},
        {"ZOut", "Zoom Out", "Z Out"},
        {"Refresh", "Refresh Plot", "Refresh"},
        {"Step", "Single Block Step", "Step"},
        {"Slow", "Slow Motion Block Step", "Slow"},
        {"Pause", "Pause", "Pause"},
        {"Stop", "Stop", "Pause"},
        {"GCode", "Show GCode", "GCode"},
        {"Rapid", "Toggle Rapid Lines", "Rapid"},
        {"Axis", "Toggle Axis Lines", "Axis"},
        {"Properties", "BackPlot Properties", "Properties"},
        {"ToolColors", "Toogle Tool Change Colors", "Tool Colors"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        QAction* button = window->button(QString::fromLatin1(row.key));
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->toolTip(), QString::fromLatin1(row.toolTip));
        EXPECT_EQ(button->text(), QString::fromLatin1(row.caption));
        EXPECT_FALSE(button->icon().isNull());
    }

    // Captions are off until "Show Toolbar Captions" turns them on, and off again.
    auto* stop = qobject_cast<QToolButton*>(toolbar->widgetForAction(window->button(QStringLiteral("Stop"))));
    ASSERT_NE(stop, nullptr);
    EXPECT_EQ(toolbar->toolButtonStyle(), Qt::ToolButtonIconOnly);
    EXPECT_EQ(stop->toolButtonStyle(), Qt::ToolButtonIconOnly);
    Action("mnuCaptions")->trigger();
    EXPECT_TRUE(Action("mnuCaptions")->isChecked());
    EXPECT_EQ(stop->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    EXPECT_EQ(stop->text(), QStringLiteral("Pause"));
    Action("mnuCaptions")->trigger();
    EXPECT_FALSE(Action("mnuCaptions")->isChecked());
    EXPECT_EQ(stop->toolButtonStyle(), Qt::ToolButtonIconOnly);
}

TEST_F(MainWindow, SetControlsAndSetMenus)
{
    Start();
    const QStringList controlled = {"Clear", "Print", "Preview", "Pan", "ZoomExtends", "ZWindow", "ZIn", "ZOut",
                                    "Refresh", "Step", "Slow", "GCode", "Rapid", "Axis", "ToolColors"};
    const QStringList untouched = {"Exit", "Open", "Properties"};
    const char* const menuItems[] = {"mnuSaveAs", "mnuPrint",      "mnuPrintPreview", "mnuClear",
                                     "mnuAutoRedraw", "mnuRedraw", "mnuZoomMain",     "mnuPanMain",
                                     "mnuSlowMotion", "mnuDrawAids", "mnuStep",       "mnuText",
                                     "mnuDelete", "mnuPlotFrom",   "mnuSource",       "mnuDetails"};
    const char* const otherItems[] = {"mnuFileOpen", "mnuPrinter", "mnuExit", "mnuPref", "mnuAbout",
                                      "mnuHelpFile", "mnuAutoOn", "mnuZIn", "mnuWinbmp"};

    // Qt reports hidden actions as disabled whatever they were set to; show the two hidden
    // ones so that their own enabled state can be seen.
    Action("mnuText")->setVisible(true);
    Action("mnuPlotFrom")->setVisible(true);

    // At start nothing that needs a program is enabled.
    for (const QString& key : controlled)
        EXPECT_FALSE(window->button(key)->isEnabled()) << key.toStdString();
    for (const QString& key : untouched)
        EXPECT_TRUE(window->button(key)->isEnabled()) << key.toStdString();
    EXPECT_FALSE(window->button(QStringLiteral("Pause"))->isEnabled());
    EXPECT_FALSE(window->button(QStringLiteral("Stop"))->isEnabled());
    for (const char* name : menuItems)
        EXPECT_FALSE(Action(name)->isEnabled()) << name;
    for (const char* name : otherItems)
        EXPECT_TRUE(Action(name)->isEnabled()) << name;

    // Enabling: Pause and Stop are switched off even when they were on; Exit, Open and
    // Properties keep whatever state they had.
    window->button(QStringLiteral("Pause"))->setEnabled(true);
    window->button(QStringLiteral("Stop"))->setEnabled(true);
    for (const QString& key : untouched)
        window->button(key)->setEnabled(false);
    window->SetControls(true);
    for (const QString& key : controlled)
        EXPECT_TRUE(window->button(key)->isEnabled()) << key.toStdString();
    EXPECT_FALSE(window->button(QStringLiteral("Pause"))->isEnabled());
    EXPECT_FALSE(window->button(QStringLiteral("Stop"))->isEnabled());
    for (const QString& key : untouched)
        EXPECT_FALSE(window->button(key)->isEnabled()) << key.toStdString();

    Action("mnuPrinter")->setEnabled(false);
    window->SetMenus(true);
    for (const char* name : menuItems)
        EXPECT_TRUE(Action(name)->isEnabled()) << name;
    EXPECT_FALSE(Action("mnuPrinter")->isEnabled());

    window->SetControls(false);
    window->SetMenus(false);
    for (const QString& key : controlled)
        EXPECT_FALSE(window->button(key)->isEnabled()) << key.toStdString();
    for (const char* name : menuItems)
        EXPECT_FALSE(Action(name)->isEnabled()) << name;
}

TEST_F(MainWindow, AutoRedrawOffIsRefusedWhileCrossHairsAreOn)
{
    Start();
    window->SetMenus(true);
    QAction* on = Action("mnuAutoOn");
    QAction* off = Action("mnuAutoOff");

    on->trigger();
    EXPECT_TRUE(on->isChecked());
    EXPECT_FALSE(off->isChecked());
    EXPECT_TRUE(window->settings().AutoDraw);
    // Choosing the checked entry again keeps it checked.
    on->trigger();
    EXPECT_TRUE(on->isChecked());
    EXPECT_FALSE(off->isChecked());

    window->settings().CrossHairs = true;
    off->trigger();
    ASSERT_EQ(dialogs.Messages.size(), 1u);
    EXPECT_EQ(dialogs.Messages[0].Text, "Please turn the cross hairs off\r\nbefore using this option.");
    EXPECT_EQ(dialogs.Messages[0].Title, "Corvane Backplot");
    EXPECT_TRUE(on->isChecked());
    EXPECT_FALSE(off->isChecked());
    EXPECT_TRUE(window->settings().AutoDraw);

    window->settings().CrossHairs = false;
    off->trigger();
    EXPECT_EQ(dialogs.Messages.size(), 1u);
    EXPECT_FALSE(on->isChecked());
    EXPECT_TRUE(off->isChecked());
    EXPECT_FALSE(window->settings().AutoDraw);
}

TEST_F(MainWindow, StartUpReadsTheStores)
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

    EXPECT_EQ(window->objectName(), QStringLiteral("frmBackplot"));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Tarvo Backplot"));
    EXPECT_EQ(window->lblComment()->text(), QStringLiteral("  Ready"));
    EXPECT_FALSE(window->translator().State().Mill);
    EXPECT_EQ(window->translator().State().AbsCenter, 1);
    EXPECT_EQ(window->translator().ToolColors()[3].Color, 4210752u);
    EXPECT_TRUE(window->dataFolder().endsWith(QLatin1Char('/')));
    EXPECT_EQ(window->translator().DataFolder(), window->dataFolder().toStdString());
    EXPECT_TRUE(dialogs.Messages.empty());

    // The canvas fills the space between toolbar and status lines, on the stored colour.
    auto* canvas = window->findChild<CanvasWidget*>(QStringLiteral("picCanvas"));
    ASSERT_NE(canvas, nullptr);
    EXPECT_EQ(window->centralWidget(), canvas);
    EXPECT_GT(canvas->width(), 600);
    EXPECT_GT(canvas->height(), 300);
    const QImage picture = canvas->Picture();
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(picture.pixelColor(10, 10), QColor(255, 0, 0));
    EXPECT_EQ(picture.pixelColor(picture.width() - 1, picture.height() - 1), QColor(255, 0, 0));

    // Used entries are shown; the one reading "Not Used..." and the missing one are not.
    EXPECT_TRUE(Action("mnuRecentFile0")->isVisible());
    EXPECT_TRUE(Action("mnuRecentFile1")->isVisible());
    EXPECT_EQ(Action("mnuRecentFile1")->text(), QStringLiteral("/parts/a.nc"));
    EXPECT_FALSE(Action("mnuRecentFile2")->isVisible());
    EXPECT_TRUE(Action("mnuRecentFile3")->isVisible());
    EXPECT_EQ(Action("mnuRecentFile3")->text(), QStringLiteral("/parts/R&&D/c.nc"));
    EXPECT_EQ(Action("mnuRecentFile3")->data().toString(), QStringLiteral("/parts/R&D/c.nc"));
    EXPECT_FALSE(Action("mnuRecentFile4")->isVisible());
}

TEST_F(MainWindow, ClosingSavesTheSettings)
{
    Start();
    window->show();
    window->settings().SlowTime = 0.5f;
    window->settings().ShowRapid = false;
    window->translator().ToolColors()[6].Color = 0x00FF00;
    // The toolbar's Exit closes the window.
    window->button(QStringLiteral("Exit"))->trigger();
    EXPECT_FALSE(window->isVisible());

    QSettings stored(scope.SettingsFile(), QSettings::IniFormat);
    EXPECT_EQ(stored.value(QStringLiteral("Settings/Slow Time")).toString(), QStringLiteral("0.5"));
    EXPECT_EQ(stored.value(QStringLiteral("Settings/Show Rapid")).toString(), QStringLiteral("0"));
    EXPECT_EQ(stored.value(QStringLiteral("Settings/ToolColor6")).toString(), QStringLiteral("65280"));
}

TEST_F(MainWindow, ClearWipesTheCanvasOnceEnabled)
{
    Start();
    window->resize(640, 480);
    window->show();
    QApplication::processEvents();
    DrawSurface& surface = window->canvas().Surface();
    surface.ResetScale();
    surface.Line(10, 20, 200, 20, 0x000000);
    ASSERT_EQ(window->canvas().Picture().pixelColor(50, 20), QColor(Qt::black));

    // Disabled until a program is loaded: nothing happens.
    Action("mnuClear")->trigger();
    EXPECT_EQ(window->canvas().Picture().pixelColor(50, 20), QColor(Qt::black));

    window->SetMenus(true);
    Action("mnuClear")->trigger();
    EXPECT_EQ(window->canvas().Picture().pixelColor(50, 20), QColor(Qt::white));
}

TEST_F(MainWindow, StatusLabelsShowTheirWholeText)
{
    Start();
    window->resize(1000, 720);
    window->show();
    const QString block = QStringLiteral("N1234 G02 X-123.4567 Y-98.7654 I12.3456 J-45.6789 F250.0 ").leftJustified(60) +
                          QStringLiteral("  ");
    window->lblComment()->setText(QStringLiteral(" Opening file /home/machinist/parts/bracket-left-side.nc"));
    window->lblCode()->setText(block);
    window->lblXPos()->setText(QStringLiteral(" X -12345.6789"));
    window->lblYPos()->setText(QStringLiteral(" Y -12345.6789"));
    QApplication::processEvents();
    for (QLabel* label : {window->lblComment(), window->lblCode(), window->lblXPos(), window->lblYPos()}) {
        SCOPED_TRACE(label->objectName().toStdString());
        const QFontMetrics metrics(label->font());
        EXPECT_TRUE(label->isVisible());
        EXPECT_GE(label->contentsRect().width(), metrics.horizontalAdvance(label->text()));
        EXPECT_GE(label->contentsRect().height(), metrics.height());
    }
    // The comment line lies above the code line, both below the canvas.
    const int canvasBottom = window->canvas().mapTo(window.get(), QPoint(0, window->canvas().height())).y();
    const int commentTop = window->lblComment()->mapTo(window.get(), QPoint(0, 0)).y();
    const int codeTop = window->lblCode()->mapTo(window.get(), QPoint(0, 0)).y();
    EXPECT_GE(commentTop, canvasBottom);
    EXPECT_GT(codeTop, commentTop);
}

TEST_F(MainWindow, AboutBoxIsShownModally)
{
    Start();
    window->show();
    QString shown;
    QTimer::singleShot(0, [&shown] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        shown = modal->objectName() + QLatin1Char('/') + modal->windowTitle();
        if (auto* ok = modal->findChild<QPushButton*>(QStringLiteral("cmdOK")))
            ok->click();
    });
    Action("mnuAbout")->trigger();
    EXPECT_EQ(shown, QStringLiteral("frmAbout/About Tarvo Backplot"));
}

TEST(AboutBox, LogoTitleAndOk)
{
    frmAbout about;
    EXPECT_EQ(about.windowTitle(), QStringLiteral("About Tarvo Backplot"));
    auto* title = about.findChild<QLabel*>(QStringLiteral("lblTitle"));
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->text(), QStringLiteral("Tarvo Backplot V5.0"));
    auto* logo = about.findChild<QLabel*>(QStringLiteral("imgLogo"));
    ASSERT_NE(logo, nullptr);
    EXPECT_FALSE(logo->pixmap().isNull());
    auto* ok = about.findChild<QPushButton*>(QStringLiteral("cmdOK"));
    ASSERT_NE(ok, nullptr);
    EXPECT_EQ(ok->text(), QStringLiteral("&OK"));
    about.show();
    ok->click();
    EXPECT_FALSE(about.isVisible());
    EXPECT_EQ(about.result(), QDialog::Accepted);
}

} // namespace
} // namespace backplot
