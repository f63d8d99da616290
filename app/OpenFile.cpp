#include "frmBackplot.h"

#include "CanvasWidget.h"
#include "NumberFormat.h"
#include "RunTimeError.h"
#include "SourceView.h"
#include "StatusLines.h"
#include "StepListing.h"

#include <QAction>
#include <QFileInfo>
#include <QLabel>

// The open pipeline of the main window: from the open dialog (or a recent file, or the
// command line) to the drawn program.

namespace backplot {

namespace {

constexpr const char* MessageTitle = "Corvane Backplot";

} // namespace

void frmBackplot::ShowOpenDialog()
{
    const std::string& ext = settings_.FileExt;
    const std::optional<std::string> chosen = dialogs_->OpenFileName("Open File", settings_.WorkDir, ext + " ", " " + ext);
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
}

void frmBackplot::OpenFile()
{
    Translator& t = *translator_;
    TranslationState& state = t.State();
    struct ClearReopen {
        bool& flag;
        ~ClearReopen() { flag = false; }
    } clearReopen{reopenFlag_};

    try {
        // Choose the file; a cancelled dialog only redraws what is there.
        state.AbortTranslation = false;
        if (!reopenFlag_) {
            lblComment_->clear();
            fileName_.clear();
            ShowOpenDialog();
        }
        if (fileName_.empty()) {
            mnuRedraw_Click();
            return;
        }

        // An empty file leaves everything as it was.
        const QFileInfo info(QString::fromStdString(fileName_));
        if (!info.isFile())
            throw RunTimeError("File not found");
        if (info.size() == 0) {
            dialogs_->Message(fileName_ + " is an empty file", MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
            return;
        }

        // Per-program state; the source view shows the new program, the step
        // listing of the old one goes.
        t.ResetForNewProgram();
        picEditor_->LoadFile(QString::fromStdString(fileName_));
        Editor1_->Clear();
        Editor1_->hide();

        // Status and a clean canvas.
        status_->ShowBoth();
        lblComment_->setText(QStringLiteral(" Opening file ") + QString::fromStdString(fileName_));
        dialogs_->SetPointer(MousePointer::Hourglass);
        picCanvas_->ClearPicture();

        // Normalise and translate.
        events_.ProcessEvents();
        t.NormaliseFile(fileName_, TempFileName);
        events_.ProcessEvents();
        const EntityRecord& at = t.Record();
        lblCode_->setText(QStringLiteral(" Translating file."));
        lblXPos_->setText(QStringLiteral(" X ") + QString::fromStdString(FormatMask5(at.EndX)));
        lblYPos_->setText(QStringLiteral(" Y ") + QString::fromStdString(FormatMask5(-at.EndY)));
        t.TranslateProgram();

        // Extents, fitted with a margin: the same view as Zoom Extents.
        DrawSurface& canvas = picSurface();
        plotter_->ExtentsWithMargin(canvas);

        // Draw every record.
        lblCode_->setText(QStringLiteral(" Drawing file."));
        events_.ProcessEvents();
        plotter_->GetRecords(canvas);

        // A program is loaded.
        programLoaded_ = true;
        commands_->mnuDetails->setEnabled(false);
        lblCode_->setText(QStringLiteral(" ") + dialogFileTitle_);
        SetControls(true);
        if (!reopenFlag_) {
            recentFiles_.AddRecentFile(fileName_);
            RefreshRecentMenu();
        }
    } catch (const std::exception&) {
        dialogs_->Message("An error as occurred while prossessing the file ", MessageTitle, MsgIcon::Critical,
                          MsgButtons::Ok);
        SetControls(programLoaded_);
    }
    dialogs_->SetPointer(MousePointer::Default);
}

void frmBackplot::mnuFileOpen_Click()
{
    if (fileOperation_)
        return;
    SetFileOperation(true);
    OpenFile();
    SetFileOperation(false);
    if (!translator_->State().AbortTranslation) {
        // The stepping commands start again from the first record: slow motion resumes
        // from SlowResume, so it goes back to 1. Single step keeps its element in
        // PlotLast, which the extents pass has set to the record total so that a redraw
        // shows the whole program; its first step starts from record 1 by itself.
        playback_.SlowResume = 1;
        plotter_->PlotIndex = 1;
        SetMenus(true);
    }
    translator_->State().AbortTranslation = false;
}

void frmBackplot::OpenFileAtStart(const std::string& path)
{
    if (fileOperation_)
        return;
    // What the open dialog would have left behind; the reopen flag then skips the dialog,
    // and with it the recent-files update, which follows here once the program is drawn.
    dialogFileName_ = QString::fromStdString(path);
    dialogFileTitle_ = QFileInfo(dialogFileName_).fileName();
    fileName_ = path;
    reopenFlag_ = true;
    SetFileOperation(true);
    OpenFile();
    SetFileOperation(false);
    if (programLoaded_) {
        recentFiles_.AddRecentFile(path);
        RefreshRecentMenu();
        playback_.SlowResume = 1;
        plotter_->PlotIndex = 1;
        SetMenus(true);
    }
    translator_->State().AbortTranslation = false;
}

void frmBackplot::mnuRecentFile_Click(int index)
{
    if (fileOperation_)
        return;
    try {
        SetFileOperation(true);
        reopenFlag_ = true;
        fileName_ = commands_->mnuRecentFile[static_cast<std::size_t>(index)]->data().toString().toStdString();
        OpenFile();
        SetFileOperation(false);
        lblCode_->setText(QStringLiteral("  ") + QString::fromStdString(fileName_));
        events_.ProcessEvents();
        SetMenus(true);
    } catch (const std::exception&) {
        SetFileOperation(false);
        dialogs_->Message("Error loading file.", "Corvane BackPlot", MsgIcon::Critical, MsgButtons::Ok);
    }
}

} // namespace backplot
