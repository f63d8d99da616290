#include "frmBackplot.h"

#include "AppTexts.h"
#include "CanvasWidget.h"
#include "ExternalOpens.h"
#include "NumberFormat.h"
#include "RunTimeError.h"
#include "SourceView.h"
#include "StatusLines.h"
#include "StepListing.h"
#include "TranslationTexts.h"

#include <QAction>
#include <QFileInfo>
#include <QLabel>

// The open pipeline of the main window, from the chosen file to the drawn program, and
// its three ways in: the Open command, a recent-files entry, and a path handed to the
// window (the program named at start). The pipeline says what it came to; each way in
// acts on that.

namespace backplot {

std::optional<std::string> frmBackplot::ShowOpenDialog()
{
    const std::string& ext = settings_.FileExt;
    const std::optional<std::string> chosen = dialogs_->OpenFileName(texts::OpenDialogTitle, settings_.WorkDir, ext + " ", " " + ext);
    TranslationState& state = translator_->State();
    if (chosen) {
        dialogFileName_ = QString::fromStdString(*chosen);
        dialogFileTitle_ = QFileInfo(dialogFileName_).fileName();
        fileName_ = *chosen;
        state.AbortTranslation = false;
    } else {
        state.AbortTranslation = true;
    }
    events_.ProcessEvents();
    return chosen;
}

OpenOutcome frmBackplot::OpenFile(const OpenRequest& request)
{
    Translator& t = *translator_;
    TranslationState& state = t.State();
    OpenOutcome outcome = OpenOutcome::Failed;

    try {
        // 1. Choose the file: the caller's, or the dialog's after the old name and
        // comment are gone.
        state.AbortTranslation = false;
        std::string path;
        if (request.path) {
            path = *request.path;
            fileName_ = path;
        } else {
            lblComment_->clear();
            fileName_.clear();
            path = ShowOpenDialog().value_or(std::string{});
        }

        // 2. No file: only what is there is drawn again.
        if (path.empty()) {
            mnuRedraw_Click();
            return OpenOutcome::Cancelled;
        }

        // 3. An empty file leaves everything as it was.
        const QFileInfo info(QString::fromStdString(path));
        if (!info.isFile())
            throw RunTimeError("File not found");
        if (info.size() == 0) {
            dialogs_->Message(path + texts::EmptyFile, texts::MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
            return OpenOutcome::EmptyFile;
        }

        // 4. Per-program state; the source view shows the new program, the step
        // listing of the old one goes.
        t.ResetForNewProgram();
        sourceView_->LoadFile(QString::fromStdString(path));
        stepListing_->Clear();
        stepListing_->hide();

        // 5. Status and a clean canvas.
        statusLines_->ShowBoth();
        lblComment_->setText(texts::StatusOpening + QString::fromStdString(path));
        dialogs_->SetPointer(MousePointer::Hourglass);
        picCanvas_->ClearPicture();

        // 6. Normalise and translate.
        events_.ProcessEvents();
        t.NormaliseFile(path, TempFileName);
        events_.ProcessEvents();
        const EntityRecord& at = t.Record();
        lblCode_->setText(texts::StatusTranslating);
        lblXPos_->setText(QString::fromStdString(texts::ReadoutX + FormatMask5(at.EndX)));
        lblYPos_->setText(QString::fromStdString(texts::ReadoutY + FormatMask5(-at.EndY)));
        t.TranslateProgram();
        const bool stoppedEarly = t.StoppedEarly();

        // 7. Extents, fitted with a margin: the same view as Zoom Extents.
        DrawSurface& canvas = canvasSurface();
        plotter_->ExtentsWithMargin(canvas);

        // 8. Draw every record.
        lblCode_->setText(texts::StatusDrawing);
        events_.ProcessEvents();
        plotter_->GetRecords(canvas);

        // 9. A program is loaded.
        programLoaded_ = true;
        commands_->mnuDetails->setEnabled(false);
        lblCode_->setText(QStringLiteral(" ") + info.fileName());
        // The title names it, and a change on disk opens it again.
        setWindowTitle(info.fileName() + QString::fromUtf8(texts::WindowTitleAfterFile));
        externalOpens_->Follow(info.absoluteFilePath());
        SetControls(true);

        // 10. A file from the dialog (or handed in as if from it) goes to the top of the
        // recent files.
        if (request.listAsRecent) {
            recentFiles_.AddRecentFile(path);
            RefreshRecentMenu();
        }
        outcome = stoppedEarly ? OpenOutcome::Aborted : OpenOutcome::Opened;
    } catch (const std::exception&) {
        dialogs_->Message(texts::OpenFailed, texts::MessageTitle, MsgIcon::Critical,
                          MsgButtons::Ok);
        SetControls(programLoaded_);
        outcome = OpenOutcome::Failed;
    }
    dialogs_->SetPointer(MousePointer::Default);
    return outcome;
}

void frmBackplot::StartPlaybackFromFirstRecord()
{
    // Slow motion resumes from SlowResume, so it goes back to 1. Single step keeps its
    // element in PlotLast, which the extents pass has set to the record total so that a
    // redraw shows the whole program; its first step starts from record 1 by itself.
    playback_.SlowResume = 1;
    plotter_->PlotIndex = 1;
}

void frmBackplot::mnuFileOpen_Click()
{
    if (fileOperation_)
        return;
    SetFileOperation(true);
    const OpenOutcome outcome = OpenFile();
    SetFileOperation(false);
    // Whatever came of a file the user chose, a refused or failing one too, the
    // stepping commands start again and the menus are given back; a cancelled dialog
    // changes nothing. The dialog's abort flag goes down either way.
    if (outcome != OpenOutcome::Cancelled) {
        StartPlaybackFromFirstRecord();
        SetMenus(true);
    }
    translator_->State().AbortTranslation = false;
}

OpenOutcome frmBackplot::OpenPath(const std::string& path) { return OpenGiven({.path = path}); }

bool frmBackplot::ReloadProgram()
{
    // Not the user's choice of a file: the program keeps its place in the recent files.
    return programLoaded_ && Drawn(OpenGiven({.path = fileName_, .listAsRecent = false}));
}

OpenOutcome frmBackplot::OpenGiven(const OpenRequest& request)
{
    if (fileOperation_)
        return OpenOutcome::Busy;
    // What the open dialog would have left behind.
    dialogFileName_ = QString::fromStdString(*request.path);
    dialogFileTitle_ = QFileInfo(dialogFileName_).fileName();
    SetFileOperation(true);
    const OpenOutcome outcome = OpenFile(request);
    SetFileOperation(false);
    // Only a drawn program gives the menus: a file refused in a window that shows nothing
    // yet leaves nothing on that needs a program.
    if (Drawn(outcome)) {
        StartPlaybackFromFirstRecord();
        SetMenus(true);
    }
    translator_->State().AbortTranslation = false;
    return outcome;
}

void frmBackplot::mnuRecentFile_Click(int index)
{
    if (fileOperation_)
        return;
    try {
        SetFileOperation(true);
        const std::string path =
            commands_->mnuRecentFile[static_cast<std::size_t>(index)]->data().toString().toStdString();
        OpenFile({.path = path, .listAsRecent = false});
        SetFileOperation(false);
        // Whatever the open came to, the entry names its file and gives the menus back;
        // a failing open has said why.
        lblCode_->setText(QStringLiteral("  ") + QString::fromStdString(path));
        events_.ProcessEvents();
        SetMenus(true);
    } catch (const std::exception&) {
        SetFileOperation(false);
        dialogs_->Message(texts::ErrorLoadingFile, texts::RecentFileErrorTitle, MsgIcon::Critical, MsgButtons::Ok);
    }
}

} // namespace backplot
