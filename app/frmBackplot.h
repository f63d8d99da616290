#pragma once

#include "CommandSurface.h"
#include "OpenOutcome.h"
#include "PlaybackState.h"
#include "Plotter.h"
#include "QtEventPump.h"
#include "RecentFiles.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "Translator.h"
#include "UserDialogs.h"
#include "WindowPlacement.h"

#include <QMainWindow>
#include <memory>

class QLabel;
class QPushButton;
class QSplitter;

namespace backplot {

class CanvasWidget;
class ExternalOpens;
class Keyboard;
class OutputCommands;
class PartialPlots;
class SourceView;
class StatusLines;
class StepListing;
class PlaybackHost;
class SlowMotion;
class Stepper;
class ViewCommands;
class WindowHost;

// The main window: the canvas `picCanvas` with the source view `picEditor` beside it and
// the step listing `Editor1` below them (splitters the user can drag), the menu bar and
// the toolbar `cToolbar1` (CommandSurface), and two status lines below (`picStat1` with
// the comment label `lblComment`, `picStat2` with `lblCode`, `lblXPos` and `lblYPos`).
//
// A switchboard: each command's handler is a line or two that calls the object doing the
// work: the plotter (view, extents and plot passes), ViewCommands (zoom, pan, the canvas
// mouse), Stepper and SlowMotion (playback), Keyboard (the keys). WindowHost is the
// window as those objects see it.
//
// Construction is the start-up: it loads the settings (into settings(), the translator's
// tool colour table and its Mill/AbsCenter), fixes the data folder, shows "  Ready",
// rebuilds the recent-files entries and disables the commands that need a program.
// Closing the window writes the settings back.
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
    Plotter& plotter() { return *plotter_; }
    ViewCommands& view() { return *viewCommands_; }
    UserDialogs& dialogs() { return *dialogs_; }
    EventPump& events() { return events_; }
    RecentFiles& recentFiles() { return recentFiles_; }
    CommandSurface& commands() { return *commands_; }
    // Files from a later start, dropped files, and the program shown changing on disk.
    ExternalOpens& externalOpens() { return *externalOpens_; }
    // The window as the playback objects see it (toolbar states, code label, panes).
    PlaybackHost& playbackHost();
    CanvasWidget& canvas() { return *picCanvas_; }
    // The working files' folder, ending in "/".
    const QString& dataFolder() const { return dataFolder_; }

    // The program being shown (full path), and what the open dialog returned last.
    const std::string& FileName() const { return fileName_; }
    const QString& DialogFileTitle() const { return dialogFileTitle_; }
    // A program has been drawn; About and the dialogs redraw only then.
    bool programLoaded() const { return programLoaded_; }
    // An open is in progress: redraw, keys and the canvas mouse wait.
    bool fileOperation() const { return fileOperation_; }

    QLabel* lblComment() const { return lblComment_; }
    QLabel* lblCode() const { return lblCode_; }
    QLabel* lblXPos() const { return lblXPos_; }
    QLabel* lblYPos() const { return lblYPos_; }
    SourceView& sourceView() { return *sourceView_; }
    StepListing& stepListing() { return *stepListing_; }
    QAction* button(ToolbarKey key) const { return commands_->Button(key); }

    // ---- Public operations ----
    // The open pipeline: takes the requested program, or the one the open dialog gives, to
    // its picture: normalise, translate, extents, plot, status texts, controls and, unless
    // the request says otherwise, the recent-files list. The dialog's cancel leaves the
    // translation's abort flag up, as the Open command expects. The menus and the stepping
    // commands are left to the caller, which acts on the outcome.
    OpenOutcome OpenFile(const OpenRequest& request = {});
    // The open dialog; the chosen path, also put in FileName and the dialog's name and title.
    std::optional<std::string> ShowOpenDialog();
    // Opens `path` (a full path) as File > Open does with that file chosen in its dialog:
    // to the top of the recent files, the stepping commands from record 1, the menus on,
    // except that a file refused or failing leaves the menus as they were. Busy, and
    // nothing done, while another open runs. The program named at start comes this way.
    OpenOutcome OpenPath(const std::string& path);
    // Opens the program shown again, as it is on disk now, keeping its place in the recent
    // files; the stepping commands start from record 1. False when nothing was drawn (no
    // program shown, an open running, or the file refused).
    bool ReloadProgram();
    void ReDraw() { mnuRedraw_Click(); }
    // The plotter's passes on the canvas: fit the view window to it, plot records 1 to
    // PlotLast, and the axis alone (drawn when "Show Axis" is on; Plotter::DrawAxis hands
    // it to CAxis::DrawAxis).
    void SetCoords();
    void GetRecords();
    void DrawAxis();
    void ZoomIn();
    void ElementStep();
    void SetEditor2();
    void PlotFrom(std::int32_t toolNum);
    void PlotToolToTool(std::int16_t firstTool, std::int16_t secondTool);
    void DrawRubberLine(float x1, float y1, float x2, float y2, std::uint32_t color);
    void SetControls(bool value) { commands_->SetControls(value); }
    void SetMenus(bool value) { commands_->SetMenus(value); }
    void RefreshRecentMenu() { commands_->RefreshRecentMenu(recentFiles_); }

    // ---- Commands (menu items, toolbar buttons, keys) ----
    void mnuFileOpen_Click();
    void mnuRecentFile_Click(int index);
    void mnuWinbmp_Click();
    void mnuDxfFile_Click();
    void mnuPrintPreview_Click();
    void mnuPrint_Click();
    void mnuPrinter_Click();
    void mnuExit_Click();
    void mnuClear_Click();
    void mnuRedraw_Click();
    void mnuAutoOn_Click();
    void mnuAutoOff_Click();
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
    void mnuCaptions_Click();
    void mnuHelpFile_Click();
    void mnuAbout_Click();
    void tbPause_Click();
    void tbStop_Click();
    void tbRapid_Click();
    void tbAxis_Click();
    void tbToolColors_Click();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    friend class WindowHost;

    void createPanes();
    // Shows the source view or the step listing beside the canvas with the room the user
    // last gave it (at most four fifths), else a share (two fifths of the width, a fifth of
    // the height); the canvas keeps the rest, and has its new size when this returns.
    void RevealPane(QWidget* pane);
    void wireCommands();
    void readSettings();
    void writeSettings();
    // The canvas as the passes draw on it.
    DrawSurface& canvasSurface();
    // The toolbar's Rapid, Axis and Tool Colors buttons pressed as their settings are,
    // whatever changed them.
    void ShowToggles();
    // While an open runs, the menus and the toolbar wait.
    void SetFileOperation(bool running);
    // A path handed to the window (OpenPath, ReloadProgram): opened without the dialog as
    // if chosen in it, the stepping commands from record 1 and the menus on once drawn.
    OpenOutcome OpenGiven(const OpenRequest& request);
    // After an open: single step and slow motion start from the first record.
    void StartPlaybackFromFirstRecord();

    // ---- Owned state ----
    std::unique_ptr<UserDialogs> ownDialogs_;
    UserDialogs* dialogs_ = nullptr;
    QtEventPump events_;
    Settings settings_;
    PlaybackState playback_;
    std::unique_ptr<Translator> translator_;
    std::unique_ptr<Plotter> plotter_;
    std::unique_ptr<WindowHost> windowHost_;
    std::unique_ptr<ViewCommands> viewCommands_;
    std::unique_ptr<Stepper> stepper_;
    std::unique_ptr<SlowMotion> slowMotion_;
    std::unique_ptr<PartialPlots> partialPlots_;
    std::unique_ptr<Keyboard> keyboard_;
    std::string fileName_;
    QString dialogFileName_;
    QString dialogFileTitle_;
    bool fileOperation_ = false;  // an open is in progress
    SettingsStore settingsStore_;
    WindowPlacement placement_; // where the window was left, and its panes' room
    RecentFiles recentFiles_;
    QString dataFolder_;
    bool programLoaded_ = false;

    // ---- Controls ----
    // Where a control has a classic name, it is its objectName: the tests and the
    // accessibility bus find it by that.
    CommandSurface* commands_ = nullptr;    // the menus and the toolbar `cToolbar1`
    OutputCommands* output_ = nullptr;      // exports, printing and the preview
    ExternalOpens* externalOpens_ = nullptr; // files from a later start, dropped, changed on disk
    CanvasWidget* picCanvas_ = nullptr;     // the plot
    SourceView* sourceView_ = nullptr;      // `picEditor`: the program's text beside the plot
    StepListing* stepListing_ = nullptr;    // `Editor1`: the blocks stepped so far, below
    QSplitter* splitSource_ = nullptr;      // canvas | source view
    QSplitter* splitSteps_ = nullptr;       // the two above | step listing
    StatusLines* statusLines_ = nullptr;    // `picStat1` and `picStat2`, with the labels below
    QLabel* lblComment_ = nullptr;
    QLabel* lblCode_ = nullptr;
    QLabel* lblXPos_ = nullptr;
    QLabel* lblYPos_ = nullptr;
    QPushButton* cmdHidden_ = nullptr;      // never shown; prints
};

} // namespace backplot
