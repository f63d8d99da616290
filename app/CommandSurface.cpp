#include "CommandSurface.h"

#include "Icons.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace backplot {

namespace {

// The toolbar, one row per button in toolbar order.
struct ToolbarButton {
    ToolbarKey key;
    const char* toolTip;
    const char* caption;
    bool gapBefore; // a separator stands before the button
};
constexpr ToolbarButton ToolbarButtons[] = {
    {ToolbarKey::Exit, "Exit Program", "Exit", false},
    {ToolbarKey::Open, "Open File to Plot", "Open", true},
    {ToolbarKey::Clear, "Clear Screen", "Clear", true},
    {ToolbarKey::Print, "Print", "Print", true},
    {ToolbarKey::Preview, "Print Preview", "Preview", false},
    {ToolbarKey::Pan, "Pan", "Pan", true},
    {ToolbarKey::ZoomExtends, "Zoom Extends", "Extends", false},
    {ToolbarKey::ZWindow, "Zoom Window", "Window", false},
    {ToolbarKey::ZIn, "Zoom In", "Z In", false},
    {ToolbarKey::ZOut, "Zoom Out", "Z Out", false},
    {ToolbarKey::Refresh, "Refresh Plot", "Refresh", false},
    {ToolbarKey::Step, "Single Block Step", "Step", true},
    {ToolbarKey::Slow, "Slow Motion Block Step", "Slow", false},
    {ToolbarKey::Pause, "Pause", "Pause", false},
    {ToolbarKey::Stop, "Stop", "Pause", false},
    {ToolbarKey::GCode, "Show GCode", "GCode", true},
    {ToolbarKey::Rapid, "Toggle Rapid Lines", "Rapid", true},
    {ToolbarKey::Axis, "Toggle Axis Lines", "Axis", false},
    {ToolbarKey::Properties, "BackPlot Properties", "Properties", true},
    {ToolbarKey::ToolColors, "Toogle Tool Change Colors", "Tool Colors", true},
};
static_assert(EveryToolbarKeyInOrder(ToolbarButtons), "one row per toolbar key, in toolbar order");

// The buttons that show a setting as pressed.
constexpr ToolbarKey Toggles[] = {ToolbarKey::Rapid, ToolbarKey::Axis, ToolbarKey::ToolColors};

// Menu captions with an ampersand in a path must show it, not take it as an access key.
QString MenuCaption(const QString& path)
{
    QString caption = path;
    caption.replace(QLatin1Char('&'), QLatin1String("&&"));
    return caption;
}

} // namespace

CommandSurface::CommandSurface(QMainWindow* window) : QObject(window), window_(window)
{
    createActions();
    createMenus();
    createToolBar();
}

QAction* CommandSurface::newAction(const char* name, const QString& caption, bool checkable)
{
    auto* action = new QAction(caption, window_);
    action->setObjectName(QString::fromLatin1(name));
    action->setCheckable(checkable);
    return action;
}

QMenu* CommandSurface::topMenu(const char* name, const QString& caption)
{
    QMenu* menu = window_->menuBar()->addMenu(caption);
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(QString::fromLatin1(name));
    return menu;
}

QMenu* CommandSurface::subMenu(QMenu* parent, const char* name, const QString& caption)
{
    QMenu* menu = parent->addMenu(caption);
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(QString::fromLatin1(name));
    return menu;
}

QAction* CommandSurface::separator(QMenu* menu, const char* name)
{
    QAction* action = menu->addSeparator();
    action->setObjectName(QString::fromLatin1(name));
    return action;
}

void CommandSurface::createActions()
{
    // File
    mnuFileOpen = newAction("mnuFileOpen", QStringLiteral("&Open..."));
    mnuFileOpen->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    mnuWinbmp = newAction("mnuWinbmp", QStringLiteral("&Windows Bitmap"));
    mnuDxfFile = newAction("mnuDxfFile", QStringLiteral("&DXF File"));
    mnuPrintPreview = newAction("mnuPrintPreview", QStringLiteral("Print Pre&view"));
    mnuPrint = newAction("mnuPrint", QStringLiteral("&Print"));
    mnuPrint->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    mnuPrinter = newAction("mnuPrinter", QStringLiteral("Printer Set&up..."));
    mnuExit = newAction("mnuExit", QStringLiteral("E&xit"));
    for (int i = 1; i <= RecentFiles::Count; ++i) {
        QAction* entry = newAction("", QStringLiteral("RecentFile%1").arg(i));
        entry->setObjectName(QStringLiteral("mnuRecentFile%1").arg(i));
        entry->setVisible(false);
        mnuRecentFile[static_cast<std::size_t>(i)] = entry;
    }

    // Edit (never shown)
    mnuDelete = newAction("mnuDelete", QStringLiteral("&Delete"));
    mnuDelete->setShortcut(QKeySequence(Qt::Key_Delete));

    // View
    mnuClear = newAction("mnuClear", QStringLiteral("&Clear"));
    mnuRedraw = newAction("mnuRedraw", QStringLiteral("&Redraw"));
    mnuAutoOn = newAction("mnuAutoOn", QStringLiteral("On"), true);
    mnuAutoOff = newAction("mnuAutoOff", QStringLiteral("Off"), true);
    mnuAutoOff->setChecked(true);
    mnuZExtents = newAction("mnuZExtents", QStringLiteral("Full Drawing &Extents"));
    mnuZPrev = newAction("mnuZPrev", QStringLiteral("&Previous"));
    mnuZWindow = newAction("mnuZWindow", QStringLiteral("&Window"));
    mnuZIn = newAction("mnuZIn", QStringLiteral("&In"));
    mnuZOut = newAction("mnuZOut", QStringLiteral("&Out"));
    mnuPoint = newAction("mnuPoint", QStringLiteral("&Point"));
    mnuPanLeft = newAction("mnuPanLeft", QStringLiteral("&Left"));
    mnuPanRight = newAction("mnuPanRight", QStringLiteral("&Right"));
    mnuPanUp = newAction("mnuPanUp", QStringLiteral("&Up"));
    mnuPanDown = newAction("mnuPanDown", QStringLiteral("&Down"));
    mnuStep = newAction("mnuStep", QStringLiteral("&Single Block Step"), true);
    mnuDetails = newAction("mnuDetails", QStringLiteral("Step &Details"));
    mnuSlowMotion = newAction("mnuSlowMotion", QStringLiteral("Slow &Motion Block Step"), true);
    mnuTool1 = newAction("mnuTool1", QStringLiteral("Tool To &EOF"));
    mnuTool2 = newAction("mnuTool2", QStringLiteral("&Tool To Tool"));
    mnuSource = newAction("mnuSource", QStringLiteral("&View GCode Source"), true);

    // Options
    mnuDrawAids = newAction("mnuDrawAids", QStringLiteral("Drawing &Aids..."));
    mnuText = newAction("mnuText", QStringLiteral("&Text..."));
    mnuText->setVisible(false);
    mnuCoords = newAction("mnuCoords", QStringLiteral("Coordinates"));
    mnuCoords->setVisible(false);
    mnuPref = newAction("mnuPref", QStringLiteral("&Properties..."));
    mnuCaptions = newAction("mnuCaptions", QStringLiteral("Show Toolbar Captions"), true);
    mnuCaptions->setVisible(false);

    // Help
    mnuHelpFile = newAction("mnuHelpFile", QStringLiteral("Tarvo Backplot Help &Topics"));
    mnuAbout = newAction("mnuAbout", QStringLiteral("&About..."));
}

void CommandSurface::createMenus()
{
    mnuFileMain = topMenu("mnuFileMain", QStringLiteral("&File"));
    mnuFileMain->addAction(mnuFileOpen);
    mnuSaveAs = subMenu(mnuFileMain, "mnuSaveAs", QStringLiteral("Save &As..."));
    mnuSaveAs->addAction(mnuWinbmp);
    mnuSaveAs->addAction(mnuDxfFile);
    separator(mnuFileMain, "mnuFbar1");
    mnuFileMain->addAction(mnuPrintPreview);
    mnuFileMain->addAction(mnuPrint);
    mnuFileMain->addAction(mnuPrinter);
    separator(mnuFileMain, "mnhFbar2");
    mnuFileMain->addAction(mnuExit);
    mnuRecentFile[0] = separator(mnuFileMain, "mnuRecentFile0");
    mnuRecentFile[0]->setVisible(false);
    for (int i = 1; i <= RecentFiles::Count; ++i)
        mnuFileMain->addAction(mnuRecentFile[static_cast<std::size_t>(i)]);

    mnuEdit = topMenu("mnuEdit", QStringLiteral("&Edit"));
    mnuEdit->addAction(mnuDelete);
    mnuEdit->menuAction()->setVisible(false);

    mnuViewMain = topMenu("mnuViewMain", QStringLiteral("&View"));
    mnuViewMain->addAction(mnuClear);
    separator(mnuViewMain, "mnuVBar1");
    mnuViewMain->addAction(mnuRedraw);
    mnuAutoRedraw = subMenu(mnuViewMain, "mnuAutoRedraw", QStringLiteral("&Auto Redraw"));
    mnuAutoRedraw->addAction(mnuAutoOn);
    mnuAutoRedraw->addAction(mnuAutoOff);
    separator(mnuViewMain, "mnuVBar2");
    mnuZoomMain = subMenu(mnuViewMain, "mnuZoomMain", QStringLiteral("&Zoom"));
    mnuZoomMain->addActions({mnuZExtents, mnuZPrev, mnuZWindow, mnuZIn, mnuZOut});
    mnuPanMain = subMenu(mnuViewMain, "mnuPanMain", QStringLiteral("&Pan"));
    mnuPanMain->addActions({mnuPoint, mnuPanLeft, mnuPanRight, mnuPanUp, mnuPanDown});
    separator(mnuViewMain, "mnuVBar3");
    mnuViewMain->addAction(mnuStep);
    mnuViewMain->addAction(mnuDetails);
    separator(mnuViewMain, "mnuVBar4");
    mnuViewMain->addAction(mnuSlowMotion);
    separator(mnuViewMain, "mnuVBar5");
    mnuPlotFrom = subMenu(mnuViewMain, "mnuPlotFrom", QStringLiteral("Plot &From"));
    mnuPlotFrom->addAction(mnuTool1);
    mnuPlotFrom->addAction(mnuTool2);
    mnuPlotFrom->menuAction()->setVisible(false);
    mnuVBar6 = separator(mnuViewMain, "mnuVBar6");
    mnuVBar6->setVisible(false);
    mnuViewMain->addAction(mnuSource);

    mnuToolsMain = topMenu("mnuToolsMain", QStringLiteral("&Options"));
    mnuToolsMain->addActions({mnuDrawAids, mnuText, mnuCoords, mnuPref, mnuCaptions});

    mnuHelp = topMenu("mnuHelp", QStringLiteral("&Help"));
    mnuHelp->addAction(mnuHelpFile);
    separator(mnuHelp, "mnuHBar1");
    mnuHelp->addAction(mnuAbout);
}

void CommandSurface::createToolBar()
{
    cToolbar1 = window_->addToolBar(QStringLiteral("Toolbar"));
    cToolbar1->setObjectName(QStringLiteral("cToolbar1"));
    cToolbar1->setIconSize(QSize(16, 16));
    cToolbar1->setToolButtonStyle(Qt::ToolButtonIconOnly);
    cToolbar1->setMovable(false);
    cToolbar1->toggleViewAction()->setEnabled(false);

    for (const ToolbarButton& entry : ToolbarButtons) {
        if (entry.gapBefore)
            cToolbar1->addSeparator();
        auto* action = new QAction(Icons::ToolbarIcon(entry.key), QString::fromLatin1(entry.caption), window_);
        action->setObjectName(QString::fromLatin1(NameOf(entry.key)));
        action->setToolTip(QString::fromLatin1(entry.toolTip));
        cToolbar1->addAction(action);
        // Announced by its tool tip: two buttons share the caption "Pause".
        if (QWidget* button = cToolbar1->widgetForAction(action))
            button->setAccessibleName(action->toolTip());
        buttons_[IndexOf(entry.key)] = action;
    }
    // The three toggles show their setting as a pressed button; the command, not the
    // button, decides the state.
    for (ToolbarKey key : Toggles)
        Button(key)->setCheckable(true);
}

void CommandSurface::SetButtons(std::initializer_list<ToolbarKey> keys, bool enabled)
{
    for (ToolbarKey key : keys)
        Button(key)->setEnabled(enabled);
}

void CommandSurface::SetControls(bool value)
{
    using K = ToolbarKey;
    SetButtons({K::Clear, K::Print, K::Preview, K::Pan, K::ZoomExtends, K::ZWindow, K::ZIn, K::ZOut, K::Refresh,
                K::Step, K::Slow, K::GCode, K::Rapid, K::Axis, K::ToolColors},
               value);
    // Pause and Stop only make sense while stepping or in slow motion, which enable them.
    SetButtons({K::Pause, K::Stop}, false);
}

void CommandSurface::SetMenus(bool value)
{
    for (QAction* item : {mnuSaveAs->menuAction(), mnuPrint, mnuPrintPreview, mnuClear, mnuAutoRedraw->menuAction(),
                          mnuRedraw, mnuZoomMain->menuAction(), mnuPanMain->menuAction(), mnuSlowMotion, mnuDrawAids,
                          mnuStep, mnuText, mnuDelete, mnuPlotFrom->menuAction(), mnuSource, mnuDetails})
        item->setEnabled(value);
}

void CommandSurface::RefreshRecentMenu(const RecentFiles& recent)
{
    for (int i = 1; i <= RecentFiles::Count; ++i) {
        const std::string entry = recent.Entry(i);
        if (!RecentFiles::IsUsed(entry))
            continue;
        const QString path = QString::fromStdString(entry);
        QAction* item = mnuRecentFile[static_cast<std::size_t>(i)];
        mnuRecentFile[0]->setVisible(true);
        item->setText(MenuCaption(path));
        item->setData(path);
        item->setVisible(true);
    }
}

void CommandSurface::ShowCaptions(bool show)
{
    cToolbar1->setToolButtonStyle(show ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
}

void CommandSurface::ShowToggles(bool rapid, bool axis, bool toolColors)
{
    Button(ToolbarKey::Rapid)->setChecked(rapid);
    Button(ToolbarKey::Axis)->setChecked(axis);
    Button(ToolbarKey::ToolColors)->setChecked(toolColors);
}

} // namespace backplot
