#pragma once

#include "RecentFiles.h"
#include "ToolbarKey.h"

#include <QObject>
#include <QString>
#include <array>
#include <initializer_list>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;

namespace backplot {

// The menu bar and the toolbar of the main window: every menu item and toolbar button as
// a QAction named as the item ("mnuZIn") or the button's key (NameOf(ToolbarKey::ZIn),
// "ZIn"), hidden items included, and the enabling rules that switch them. Building them
// connects nothing: the window wires each action to its command.
//
// Checkable menu items (Auto Redraw On/Off, Single Block Step, Slow Motion, View GCode
// Source, Show Toolbar Captions) do not flip their own mark: their commands own it, so a menu click and a
// toolbar click run the same code.
class CommandSurface : public QObject {
    Q_OBJECT
public:
    // Builds the menus into `window`'s menu bar and the toolbar `cToolbar1` into the window.
    explicit CommandSurface(QMainWindow* window);

    // The toolbar button of a key.
    QAction* Button(ToolbarKey key) const { return buttons_[IndexOf(key)]; }
    // The buttons of the given keys enabled or not.
    void SetButtons(std::initializer_list<ToolbarKey> keys, bool enabled);

    // Toolbar: "Clear", "Print", "Preview", "Pan", "ZoomExtends", "ZWindow", "ZIn", "ZOut",
    // "Refresh", "Step", "Slow", "GCode", "Rapid", "Axis", "ToolColors" enabled = value;
    // "Pause" and "Stop" always disabled; "Exit", "Open", "Properties" left alone.
    void SetControls(bool value);
    // Menus: the commands that need a loaded program, enabled = value.
    void SetMenus(bool value);
    // Shows every used recent-files entry (and the separator before them); entries that
    // read "Not Used" are left as they are. An entry's path is also its action's data().
    void RefreshRecentMenu(const RecentFiles& recent);
    // Captions under the toolbar icons, or icons alone.
    void ShowCaptions(bool show);
    // The toggle buttons "Rapid", "Axis", "ToolColors" show their setting as pressed.
    void ShowToggles(bool rapid, bool axis, bool toolColors);

    QToolBar* cToolbar1 = nullptr;

    // File
    QMenu* mnuFileMain = nullptr;
    QAction* mnuFileOpen = nullptr;
    QMenu* mnuSaveAs = nullptr;
    QAction* mnuWinbmp = nullptr;
    QAction* mnuDxfFile = nullptr;
    QAction* mnuPrintPreview = nullptr;
    QAction* mnuPrint = nullptr;
    QAction* mnuPrinter = nullptr;
    QAction* mnuExit = nullptr;
    std::array<QAction*, RecentFiles::Count + 1> mnuRecentFile{}; // [0] is the separator
    // Edit (never shown)
    QMenu* mnuEdit = nullptr;
    QAction* mnuDelete = nullptr;
    // View
    QMenu* mnuViewMain = nullptr;
    QAction* mnuClear = nullptr;
    QAction* mnuRedraw = nullptr;
    QMenu* mnuAutoRedraw = nullptr;
    QAction* mnuAutoOn = nullptr;
    QAction* mnuAutoOff = nullptr;
    QMenu* mnuZoomMain = nullptr;
    QAction* mnuZExtents = nullptr;
    QAction* mnuZPrev = nullptr;
    QAction* mnuZWindow = nullptr;
    QAction* mnuZIn = nullptr;
    QAction* mnuZOut = nullptr;
    QMenu* mnuPanMain = nullptr;
    QAction* mnuPoint = nullptr;
    QAction* mnuPanLeft = nullptr;
    QAction* mnuPanRight = nullptr;
    QAction* mnuPanUp = nullptr;
    QAction* mnuPanDown = nullptr;
    QAction* mnuStep = nullptr;
    QAction* mnuDetails = nullptr;
    QAction* mnuSlowMotion = nullptr;
    QMenu* mnuPlotFrom = nullptr;
    QAction* mnuTool1 = nullptr;
    QAction* mnuTool2 = nullptr;
    QAction* mnuVBar6 = nullptr;
    QAction* mnuSource = nullptr;
    // Options
    QMenu* mnuToolsMain = nullptr;
    QAction* mnuDrawAids = nullptr;
    QAction* mnuText = nullptr;
    QAction* mnuCoords = nullptr;
    QAction* mnuPref = nullptr;
    QAction* mnuCaptions = nullptr;
    // Help
    QMenu* mnuHelp = nullptr;
    QAction* mnuHelpFile = nullptr;
    QAction* mnuAbout = nullptr;

private:
    void createActions();
    void createMenus();
    void createToolBar();
    QAction* newAction(const char* name, const QString& caption, bool checkable = false);
    QMenu* topMenu(const char* name, const QString& caption);
    QMenu* subMenu(QMenu* parent, const char* name, const QString& caption);
    QAction* separator(QMenu* menu, const char* name);

    QMainWindow* window_;
    std::array<QAction*, ToolbarKeyCount> buttons_{};
};

} // namespace backplot
