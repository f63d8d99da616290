#include "CommandSurface.h"

#include "AppTexts.h"
#include "Icons.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <algorithm>
#include <iterator>

namespace backplot {

namespace {

// The buttons that a separator stands before.
constexpr ToolbarKey GapBefore[] = {ToolbarKey::Open, ToolbarKey::Clear, ToolbarKey::Print,
                                    ToolbarKey::Pan, ToolbarKey::Step, ToolbarKey::GCode,
                                    ToolbarKey::Rapid, ToolbarKey::Properties, ToolbarKey::ToolColors};

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
    mnuFileOpen = newAction("mnuFileOpen", texts::mnuFileOpen);
    mnuFileOpen->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    mnuWinbmp = newAction("mnuWinbmp", texts::mnuWinbmp);
    mnuDxfFile = newAction("mnuDxfFile", texts::mnuDxfFile);
    mnuPrintPreview = newAction("mnuPrintPreview", texts::mnuPrintPreview);
    mnuPrint = newAction("mnuPrint", texts::mnuPrint);
    mnuPrint->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    mnuPrinter = newAction("mnuPrinter", texts::mnuPrinter);
    mnuExit = newAction("mnuExit", texts::mnuExit);
    for (int i = 1; i <= RecentFiles::Count; ++i) {
        QAction* entry = newAction("", QStringLiteral("RecentFile%1").arg(i));
        entry->setObjectName(QStringLiteral("mnuRecentFile%1").arg(i));
        entry->setVisible(false);
        mnuRecentFile[static_cast<std::size_t>(i)] = entry;
    }

    // Edit (never shown)
    mnuDelete = newAction("mnuDelete", texts::mnuDelete);
    mnuDelete->setShortcut(QKeySequence(Qt::Key_Delete));

    // View
    mnuClear = newAction("mnuClear", texts::mnuClear);
    mnuRedraw = newAction("mnuRedraw", texts::mnuRedraw);
    mnuAutoOn = newAction("mnuAutoOn", texts::mnuAutoOn, true);
    mnuAutoOff = newAction("mnuAutoOff", texts::mnuAutoOff, true);
    mnuAutoOff->setChecked(true);
    mnuZExtents = newAction("mnuZExtents", texts::mnuZExtents);
    mnuZPrev = newAction("mnuZPrev", texts::mnuZPrev);
    mnuZWindow = newAction("mnuZWindow", texts::mnuZWindow);
    mnuZIn = newAction("mnuZIn", texts::mnuZIn);
    mnuZOut = newAction("mnuZOut", texts::mnuZOut);
    mnuPoint = newAction("mnuPoint", texts::mnuPoint);
    mnuPanLeft = newAction("mnuPanLeft", texts::mnuPanLeft);
    mnuPanRight = newAction("mnuPanRight", texts::mnuPanRight);
    mnuPanUp = newAction("mnuPanUp", texts::mnuPanUp);
    mnuPanDown = newAction("mnuPanDown", texts::mnuPanDown);
    mnuStep = newAction("mnuStep", texts::mnuStep, true);
    mnuDetails = newAction("mnuDetails", texts::mnuDetails);
    mnuSlowMotion = newAction("mnuSlowMotion", texts::mnuSlowMotion, true);
    mnuTool1 = newAction("mnuTool1", texts::mnuTool1);
    mnuTool2 = newAction("mnuTool2", texts::mnuTool2);
    mnuSource = newAction("mnuSource", texts::mnuSource, true);

    // Options
    mnuDrawAids = newAction("mnuDrawAids", texts::mnuDrawAids);
    mnuText = newAction("mnuText", texts::mnuText);
    mnuText->setVisible(false);
    mnuCoords = newAction("mnuCoords", texts::mnuCoords);
    mnuCoords->setVisible(false);
    mnuPref = newAction("mnuPref", texts::mnuPref);
    mnuCaptions = newAction("mnuCaptions", texts::mnuCaptions, true);
    mnuCaptions->setVisible(false);

    // Help
    mnuHelpFile = newAction("mnuHelpFile", texts::mnuHelpFile);
    mnuAbout = newAction("mnuAbout", texts::mnuAbout);
}

void CommandSurface::createMenus()
{
    mnuFileMain = topMenu("mnuFileMain", texts::mnuFileMain);
    mnuFileMain->addAction(mnuFileOpen);
    mnuSaveAs = subMenu(mnuFileMain, "mnuSaveAs", texts::mnuSaveAs);
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

    mnuEdit = topMenu("mnuEdit", texts::mnuEdit);
    mnuEdit->addAction(mnuDelete);
    mnuEdit->menuAction()->setVisible(false);

    mnuViewMain = topMenu("mnuViewMain", texts::mnuViewMain);
    mnuViewMain->addAction(mnuClear);
    separator(mnuViewMain, "mnuVBar1");
    mnuViewMain->addAction(mnuRedraw);
    mnuAutoRedraw = subMenu(mnuViewMain, "mnuAutoRedraw", texts::mnuAutoRedraw);
    mnuAutoRedraw->addAction(mnuAutoOn);
    mnuAutoRedraw->addAction(mnuAutoOff);
    separator(mnuViewMain, "mnuVBar2");
    mnuZoomMain = subMenu(mnuViewMain, "mnuZoomMain", texts::mnuZoomMain);
    mnuZoomMain->addActions({mnuZExtents, mnuZPrev, mnuZWindow, mnuZIn, mnuZOut});
    mnuPanMain = subMenu(mnuViewMain, "mnuPanMain", texts::mnuPanMain);
    mnuPanMain->addActions({mnuPoint, mnuPanLeft, mnuPanRight, mnuPanUp, mnuPanDown});
    separator(mnuViewMain, "mnuVBar3");
    mnuViewMain->addAction(mnuStep);
    mnuViewMain->addAction(mnuDetails);
    separator(mnuViewMain, "mnuVBar4");
    mnuViewMain->addAction(mnuSlowMotion);
    separator(mnuViewMain, "mnuVBar5");
    mnuPlotFrom = subMenu(mnuViewMain, "mnuPlotFrom", texts::mnuPlotFrom);
    mnuPlotFrom->addAction(mnuTool1);
    mnuPlotFrom->addAction(mnuTool2);
    mnuPlotFrom->menuAction()->setVisible(false);
    mnuVBar6 = separator(mnuViewMain, "mnuVBar6");
    mnuVBar6->setVisible(false);
    mnuViewMain->addAction(mnuSource);

    mnuToolsMain = topMenu("mnuToolsMain", texts::mnuToolsMain);
    mnuToolsMain->addActions({mnuDrawAids, mnuText, mnuCoords, mnuPref, mnuCaptions});

    mnuHelp = topMenu("mnuHelp", texts::mnuHelp);
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

    for (const texts::ToolbarText& entry : texts::ToolbarTexts) {
        if (std::find(std::begin(GapBefore), std::end(GapBefore), entry.key) != std::end(GapBefore))
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
