#pragma once

#include "PlaybackState.h"
#include "Plotter.h"
#include "RecentFiles.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "QtEventPump.h"
#include "Translator.h"
#include "UserDialogs.h"

#include <QHash>
#include <QMainWindow>
#include <array>
#include <memory>

class QAction;
class QFrame;
class QLabel;
class QMenu;
class QPushButton;
class QToolBar;

namespace backplot {

class CanvasWidget;

// The main window: the canvas `picCanvas`, the menu bar, the toolbar `cToolbar1` and two
// status lines below the canvas (`picStat1` with the comment label `lblComment`,
// `picStat2` with `lblCode`, `lblXPos` and `lblYPos`). Every menu item and toolbar button
// is a QAction named as the item ("mnuZIn") or the button key ("ZIn").
//
// Construction is the start-up: it loads the settings (into settings(), the translator's
// tool colour table and its Mill/AbsCenter), fixes the data folder, shows "  Ready",
// rebuilds the recent-files entries and disables the commands that need a program.
// Closing the window writes the settings back.
//
// Checkable menu items (Auto Redraw On/Off, Single Block Step, Slow Motion, View GCode
// Source, Show Toolbar Captions): their handlers own the check mark. Choosing one from
// the menu calls the handler with the mark as it was, just as the toolbar does, and the
// handler sets it.
class frmBackplot : public QMainWindow {
    Q_OBJECT
public:
    // `dialogs` is used for every message and file dialog and must outlive the window;
    // without one the window shows real dialogs.
    explicit frmBackplot(UserDialogs* dialogs = nullptr, QWidget* parent = nullptr);
    ~frmBackplot() override;

    Settings& settings() { return settings_; }
    PlaybackState& playback() { return playback_; }
    Translator& translator() { return *translator_; }
    UserDialogs& dialogs() { return *dialogs_; }
    EventPump& events() { return events_; }
    RecentFiles& recentFiles() { return recentFiles_; }
    CanvasWidget& canvas() { return *picCanvas_; }
    // The working files' folder, ending in "/".
    const QString& dataFolder() const { return dataFolder_; }

    Plotter& plotter() { return *plotter_; }

    // The program being shown (full path), and what the open dialog returned last.
    const std::string& FileName() const { return fileName_; }
    const QString& DialogFileTitle() const { return dialogFileTitle_; }

    // Takes a program from the open dialog (or, with the reopen flag set, from
    // FileName) to its picture: normalise, translate, extents, plot, status texts,
    // controls and the recent-files list.
    void OpenFile();
    // The open dialog; sets FileName when a file was chosen.
    void ShowOpenDialog();
    // Opens `path` (a full path) as if it had been chosen in the open dialog, without
    // showing the dialog: the program file named on the command line. Once drawn, it goes
    // to the top of the recent files and the menus for a loaded program are enabled.
    void OpenFileAtStart(const std::string& path);
    // The "&Redraw" command.
    void ReDraw() { mnuRedraw_Click(); }
    void SetCoords() { plotter_->SetCoords(picSurface()); }
    void GetRecords() { plotter_->GetRecords(picSurface()); }
    void DrawAxis() { plotter_->DrawAxis(picSurface()); }

    // A program has been drawn; About and the dialogs redraw only then.
    bool programLoaded() const { return programLoaded_; }
    void setProgramLoaded(bool loaded) { programLoaded_ = loaded; }

    QLabel* lblComment() const { return lblComment_; }
    QLabel* lblCode() const { return lblCode_; }
    QLabel* lblXPos() const { return lblXPos_; }
    QLabel* lblYPos() const { return lblYPos_; }

    // The toolbar button of a key ("Exit", "Open", ...); null for an unknown key.
    QAction* button(const QString& key) const { return buttons_.value(key); }

    // Toolbar: "Clear", "Print", "Preview", "Pan", "ZoomExtends", "ZWindow", "ZIn", "ZOut",
    // "Refresh", "Step", "Slow", "GCode", "Rapid", "Axis", "ToolColors" enabled = value;
    // "Pause" and "Stop" always disabled; "Exit", "Open", "Properties" left alone.
    void SetControls(bool value);
    // Menus: the commands that need a loaded program, enabled = value.
    void SetMenus(bool value);
    // Shows every used recent-files entry (and the separator before them); entries that
    // read "Not Used" are left as they are. An entry's path is also its action's data().
    void RefreshRecentMenu();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void createActions();
    void createMenus();
    void createToolBars();
    void createStatusBar();
    void readSettings();
    void writeSettings();

    QAction* newAction(const char* name, const QString& caption);
    QMenu* topMenu(const char* name, const QString& caption);
    QMenu* subMenu(QMenu* parent, const char* name, const QString& caption);
    QAction* separator(QMenu* menu, const char* name);
    QLabel* statusLabel(const char* name, QWidget* parent);
    DrawSurface& picSurface();
    // Calls `handler` with the check mark as it was before the menu flipped it.
    void connectChecked(QAction* action, void (frmBackplot::*handler)());

    // ---- Commands of this window ----
    void mnuExit_Click();
    void mnuClear_Click();
    void mnuAutoOn_Click();
    void mnuAutoOff_Click();
    void mnuCaptions_Click();
    void mnuAbout_Click();

    // ---- Commands whose work is not wired in yet: each is empty for now ----
    void mnuFileOpen_Click();
    void mnuRecentFile_Click(int index);
    void mnuWinbmp_Click();
    void mnuDxfFile_Click();
    void mnuPrintPreview_Click();
    void mnuPrint_Click();
    void mnuPrinter_Click();
    void mnuRedraw_Click();
    void mnuZExtents_Click();
    void mnuZPrev_Click();
    void mnuZWindow_Click();
    void mnuZIn_Click();
    void mnuZOut_Click();
    void mnuPoint_Click();
    void mnuPanLeft_Click();
    void mnuPanRight_Click();
    void mnuPanUp_Click();
    void mnuPanDown_Click();
    void mnuStep_Click();
    void mnuDetails_Click();
    void mnuSlowMotion_Click();
    void mnuTool1_Click();
    void mnuTool2_Click();
    void mnuSource_Click();
    void mnuDrawAids_Click();
    void mnuPref_Click();
    void mnuHelpFile_Click();
    void tbPause_Click();
    void tbStop_Click();
    void tbRapid_Click();
    void tbAxis_Click();
    void tbToolColors_Click();

    // ---- Owned state ----
    std::unique_ptr<UserDialogs> ownDialogs_;
    UserDialogs* dialogs_ = nullptr;
    QtEventPump events_;
    Settings settings_;
    PlaybackState playback_;
    std::unique_ptr<Translator> translator_;
    std::unique_ptr<Plotter> plotter_;
    std::string fileName_;
    QString dialogFileName_;
    QString dialogFileTitle_;
    bool reopenFlag_ = false;     // OpenFile runs for the recent-files list: no dialog, no list update
    bool fileOperation_ = false;  // an open is in progress: Redraw waits, a second open is refused
    SettingsStore settingsStore_;
    RecentFiles recentFiles_;
    QString dataFolder_;
    bool programLoaded_ = false;

    // ---- Controls ----
    CanvasWidget* picCanvas_ = nullptr;
    QFrame* picStat1_ = nullptr;
    QFrame* picStat2_ = nullptr;
    QLabel* lblComment_ = nullptr;
    QLabel* lblCode_ = nullptr;
    QLabel* lblXPos_ = nullptr;
    QLabel* lblYPos_ = nullptr;
    QToolBar* cToolbar1_ = nullptr;
    QHash<QString, QAction*> buttons_;
    QPushButton* cmdHidden_ = nullptr;

    // File
    QMenu* mnuFileMain_ = nullptr;
    QAction* mnuFileOpen_ = nullptr;
    QMenu* mnuSaveAs_ = nullptr;
    QAction* mnuWinbmp_ = nullptr;
    QAction* mnuDxfFile_ = nullptr;
    QAction* mnuPrintPreview_ = nullptr;
    QAction* mnuPrint_ = nullptr;
    QAction* mnuPrinter_ = nullptr;
    QAction* mnuExit_ = nullptr;
    std::array<QAction*, RecentFiles::Count + 1> mnuRecentFile_{}; // [0] is the separator
    // Edit
    QMenu* mnuEdit_ = nullptr;
    QAction* mnuDelete_ = nullptr;
    // View
    QMenu* mnuViewMain_ = nullptr;
    QAction* mnuClear_ = nullptr;
    QAction* mnuRedraw_ = nullptr;
    QMenu* mnuAutoRedraw_ = nullptr;
    QAction* mnuAutoOn_ = nullptr;
    QAction* mnuAutoOff_ = nullptr;
    QMenu* mnuZoomMain_ = nullptr;
    QAction* mnuZExtents_ = nullptr;
    QAction* mnuZPrev_ = nullptr;
    QAction* mnuZWindow_ = nullptr;
    QAction* mnuZIn_ = nullptr;
    QAction* mnuZOut_ = nullptr;
    QMenu* mnuPanMain_ = nullptr;
    QAction* mnuPoint_ = nullptr;
    QAction* mnuPanLeft_ = nullptr;
    QAction* mnuPanRight_ = nullptr;
    QAction* mnuPanUp_ = nullptr;
    QAction* mnuPanDown_ = nullptr;
    QAction* mnuStep_ = nullptr;
    QAction* mnuDetails_ = nullptr;
    QAction* mnuSlowMotion_ = nullptr;
    QMenu* mnuPlotFrom_ = nullptr;
    QAction* mnuTool1_ = nullptr;
    QAction* mnuTool2_ = nullptr;
    QAction* mnuVBar6_ = nullptr;
    QAction* mnuSource_ = nullptr;
    // Options
    QMenu* mnuToolsMain_ = nullptr;
    QAction* mnuDrawAids_ = nullptr;
    QAction* mnuText_ = nullptr;
    QAction* mnuCoords_ = nullptr;
    QAction* mnuPref_ = nullptr;
    QAction* mnuCaptions_ = nullptr;
    // Help
    QMenu* mnuHelp_ = nullptr;
    QAction* mnuHelpFile_ = nullptr;
    QAction* mnuAbout_ = nullptr;
};

} // namespace backplot
