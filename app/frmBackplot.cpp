#include "frmBackplot.h"

#include "CanvasWidget.h"
#include "DataFolder.h"
#include "GuiDialogs.h"
#include "HelpWindow.h"
#include "Icons.h"
#include "Keyboard.h"
#include "NumberFormat.h"
#include "OutputCommands.h"
#include "ProgramFiles.h"
#include "RunTimeError.h"
#include "PartialPlots.h"
#include "SlowMotion.h"
#include "SourceView.h"
#include "StepListing.h"
#include "Stepper.h"
#include "ViewCommands.h"
#include "WindowHost.h"
#include "frmAbout.h"
#include "frmDetails.h"
#include "frmDrawAids.h"
#include "frmProperties.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFileInfo>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace backplot {

namespace {

constexpr const char* MessageTitle = "Corvane Backplot";

MouseButton ButtonOf(Qt::MouseButton button)
{
    switch (button) {
    case Qt::RightButton:
        return MouseButton::Right;
    case Qt::LeftButton:
        return MouseButton::Left;
    default:
        return MouseButton::Middle;
    }
}

} // namespace

frmBackplot::frmBackplot(UserDialogs* dialogs, QWidget* parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("frmBackplot"));
    setWindowTitle(QStringLiteral("Tarvo Backplot"));
    setWindowIcon(Icons::AppIcon());

    if (dialogs)
        dialogs_ = dialogs;
    else {
        ownDialogs_ = std::make_unique<GuiDialogs>(this);
        dialogs_ = ownDialogs_.get();
    }
    translator_ = std::make_unique<Translator>(*dialogs_, events_, playback_);
    plotter_ = std::make_unique<Plotter>(settings_, translator_->ToolColors(), translator_->State(), playback_,
                                         translator_->Record(), *dialogs_, events_,
                                         [this] { return translator_->RecordFilePath(); });

    createPanes();
    commands_ = new CommandSurface(this);
    createStatusBar();

    host_ = std::make_unique<WindowHost>(*this);
    viewCommands_ = std::make_unique<ViewCommands>(*plotter_, picSurface(), settings_, playback_, *dialogs_, *host_);
    stepper_ = std::make_unique<Stepper>(*plotter_, picSurface(), *translator_, playback_, *dialogs_, *host_);
    slowMotion_ = std::make_unique<SlowMotion>(*plotter_, picSurface(), settings_, playback_, *host_);
    partialPlots_ = std::make_unique<PartialPlots>(*plotter_, *translator_, playback_, settings_, *dialogs_, events_);
    output_ = new OutputCommands(this);
    keyboard_ = std::make_unique<Keyboard>(*this);
    // A pass that reached the end of the program: playback is over.
    plotter_->SetPassEndedHook([this](bool slowMotionEnded) {
        commands_->mnuStep->setChecked(false);
        commands_->mnuSlowMotion->setChecked(false);
        if (slowMotionEnded) {
            lblCode_->setText(QString::fromStdString(fileName_) + QStringLiteral("  "));
            host_->RestoreToolbar();
        }
    });
    wireCommands();

    // 1. Settings, into this window, the translator's tool colours and its machine type.
    readSettings();
    viewCommands_->MillMode = settings_.Mill;
    commands_->ShowToggles(settings_.ShowRapid, settings_.ShowAxis, settings_.ToolColor);

    // 2. The working files go next to the program unless that folder is read-only.
    const DataFolder folder = DataFolder::ForThisProgram();
    dataFolder_ = folder.Folder;
    translator_->SetDataFolder(dataFolder_.toStdString());
    if (folder.Fallback)
        lblCode_->setText(QStringLiteral("  Working files are kept in ") + dataFolder_);

    // 3. Playback stopped.
    playback_ = PlaybackState{};

    // 4. Ready, on the chosen background.
    lblComment_->setText(QStringLiteral("  Ready"));
    picCanvas_->SetBackColor(static_cast<std::uint32_t>(settings_.Backcolor));
    picCanvas_->ClearPicture();

    // 5. The recent files, and nothing that needs a program until one is drawn.
    RefreshRecentMenu();
    SetControls(false);
    SetMenus(false);
}

frmBackplot::~frmBackplot() = default;

// ---- Construction ----

void frmBackplot::wireCommands()
{
    CommandSurface& c = *commands_;
    const auto on = [this](QAction* action, void (frmBackplot::*handler)()) {
        connect(action, &QAction::triggered, this, handler);
    };
    // A checkable item's command owns its mark: the one Qt flips is given back first.
    const auto onChecked = [this](QAction* action, void (frmBackplot::*handler)()) {
        connect(action, &QAction::triggered, this, [this, action, handler](bool checked) {
            action->setChecked(!checked);
            (this->*handler)();
        });
    };
    on(c.mnuFileOpen, &frmBackplot::mnuFileOpen_Click);
    on(c.mnuWinbmp, &frmBackplot::mnuWinbmp_Click);
    on(c.mnuDxfFile, &frmBackplot::mnuDxfFile_Click);
    on(c.mnuPrintPreview, &frmBackplot::mnuPrintPreview_Click);
    on(c.mnuPrint, &frmBackplot::mnuPrint_Click);
    on(c.mnuPrinter, &frmBackplot::mnuPrinter_Click);
    on(c.mnuExit, &frmBackplot::mnuExit_Click);
    for (int i = 1; i <= RecentFiles::Count; ++i)
        connect(c.mnuRecentFile[static_cast<std::size_t>(i)], &QAction::triggered, this,
                [this, i] { mnuRecentFile_Click(i); });
    on(c.mnuClear, &frmBackplot::mnuClear_Click);
    on(c.mnuRedraw, &frmBackplot::mnuRedraw_Click);
    onChecked(c.mnuAutoOn, &frmBackplot::mnuAutoOn_Click);
    onChecked(c.mnuAutoOff, &frmBackplot::mnuAutoOff_Click);
    on(c.mnuZExtents, &frmBackplot::mnuZExtents_Click);
    on(c.mnuZPrev, &frmBackplot::mnuZPrev_Click);
    on(c.mnuZWindow, &frmBackplot::mnuZWindow_Click);
    on(c.mnuZIn, &frmBackplot::mnuZIn_Click);
    on(c.mnuZOut, &frmBackplot::mnuZOut_Click);
    on(c.mnuPoint, &frmBackplot::mnuPoint_Click);
    on(c.mnuPanLeft, &frmBackplot::mnuPanLeft_Click);
    on(c.mnuPanRight, &frmBackplot::mnuPanRight_Click);
    on(c.mnuPanUp, &frmBackplot::mnuPanUp_Click);
    on(c.mnuPanDown, &frmBackplot::mnuPanDown_Click);
    onChecked(c.mnuStep, &frmBackplot::mnuStep_Click);
    on(c.mnuDetails, &frmBackplot::mnuDetails_Click);
    onChecked(c.mnuSlowMotion, &frmBackplot::mnuSlowMotion_Click);
    on(c.mnuTool1, &frmBackplot::mnuTool1_Click);
    on(c.mnuTool2, &frmBackplot::mnuTool2_Click);
    onChecked(c.mnuSource, &frmBackplot::mnuSource_Click);
    on(c.mnuDrawAids, &frmBackplot::mnuDrawAids_Click);
    on(c.mnuPref, &frmBackplot::mnuPref_Click);
    onChecked(c.mnuCaptions, &frmBackplot::mnuCaptions_Click);
    on(c.mnuHelpFile, &frmBackplot::mnuHelpFile_Click);
    on(c.mnuAbout, &frmBackplot::mnuAbout_Click);

    const auto button = [&](const char* key, void (frmBackplot::*handler)()) {
        on(c.Button(QString::fromLatin1(key)), handler);
    };
    button("Exit", &frmBackplot::mnuExit_Click);
    button("Open", &frmBackplot::mnuFileOpen_Click);
    button("Clear", &frmBackplot::mnuClear_Click);
    button("Print", &frmBackplot::mnuPrint_Click);
    button("Preview", &frmBackplot::mnuPrintPreview_Click);
    button("Pan", &frmBackplot::mnuPoint_Click);
    button("ZoomExtends", &frmBackplot::mnuZExtents_Click);
    button("ZWindow", &frmBackplot::mnuZWindow_Click);
    button("ZIn", &frmBackplot::mnuZIn_Click);
    button("ZOut", &frmBackplot::mnuZOut_Click);
    button("Refresh", &frmBackplot::mnuRedraw_Click);
    button("Step", &frmBackplot::mnuStep_Click);
    button("Slow", &frmBackplot::mnuSlowMotion_Click);
    button("Pause", &frmBackplot::tbPause_Click);
    button("Stop", &frmBackplot::tbStop_Click);
    button("GCode", &frmBackplot::mnuSource_Click);
    button("Rapid", &frmBackplot::tbRapid_Click);
    button("Axis", &frmBackplot::tbAxis_Click);
    button("Properties", &frmBackplot::mnuPref_Click);
    button("ToolColors", &frmBackplot::tbToolColors_Click);

    // A button nobody sees; it prints, like "&Print".
    cmdHidden_ = new QPushButton(QStringLiteral("Hidden"), this);
    cmdHidden_->setObjectName(QStringLiteral("cmdHidden"));
    cmdHidden_->hide();
    connect(cmdHidden_, &QPushButton::clicked, this, &frmBackplot::mnuPrint_Click);

    // The canvas mouse.
    ViewCommands& view = *viewCommands_;
    connect(picCanvas_, &CanvasWidget::MouseDown, this,
            [&view](Qt::MouseButton b, Qt::KeyboardModifiers, float x, float y) { view.MouseDown(ButtonOf(b), x, y); });
    connect(picCanvas_, &CanvasWidget::MouseMove, this,
            [&view](Qt::MouseButtons b, Qt::KeyboardModifiers, float x, float y) {
                view.MouseMove(b.testFlag(Qt::LeftButton), x, y);
            });
    connect(picCanvas_, &CanvasWidget::MouseUp, this,
            [&view](Qt::MouseButton b, Qt::KeyboardModifiers, float x, float y) { view.MouseUp(ButtonOf(b), x, y); });
    // The wheel zooms as the + and - keys do.
    connect(picCanvas_, &CanvasWidget::Wheel, this, [this](int notches) {
        if (fileOperation_ || !programLoaded_)
            return;
        for (int i = 0; i < std::abs(notches); ++i)
            notches > 0 ? mnuZIn_Click() : mnuZOut_Click();
    });
}

void frmBackplot::createPanes()
{
    picCanvas_ = new CanvasWidget(this);
    picCanvas_->setObjectName(QStringLiteral("picCanvas"));
    picCanvas_->setAccessibleName(QStringLiteral("Plot"));
    picCanvas_->setFocusPolicy(Qt::StrongFocus);
    picEditor_ = new SourceView(this);
    picEditor_->setAccessibleName(QStringLiteral("G-code source"));
    picEditor_->hide();
    Editor1_ = new StepListing(this);
    Editor1_->setAccessibleName(QStringLiteral("Stepped blocks"));

    // The canvas gives way to the source view on its right and the step listing below.
    splitSource_ = new QSplitter(Qt::Horizontal, this);
    splitSource_->setObjectName(QStringLiteral("splitSource"));
    splitSource_->addWidget(picCanvas_);
    splitSource_->addWidget(picEditor_);
    splitSource_->setChildrenCollapsible(false);
    splitSteps_ = new QSplitter(Qt::Vertical, this);
    splitSteps_->setObjectName(QStringLiteral("splitSteps"));
    splitSteps_->addWidget(splitSource_);
    splitSteps_->addWidget(Editor1_);
    splitSteps_->setChildrenCollapsible(false);
    setCentralWidget(splitSteps_);
}

void frmBackplot::RevealPane(QWidget* pane)
{
    if (pane->isVisible())
        return;
    pane->show();
    QSplitter* split = pane == picEditor_ ? splitSource_ : splitSteps_;
    const int room = split->orientation() == Qt::Horizontal ? split->width() : split->height();
    const int share = pane == picEditor_ ? room * 2 / 5 : std::max(room / 5, 6 * pane->fontMetrics().height());
    split->setSizes({room - share, share});
}

namespace {

QLabel* StatusLabel(const char* name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setAccessibleName(QString::fromLatin1(name));
    label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::NoTextInteraction);
    return label;
}

} // namespace

void frmBackplot::createStatusBar()
{
    auto* panel = new QWidget(this);
    auto* lines = new QVBoxLayout(panel);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(2);

    picStat1_ = new QFrame(panel);
    picStat1_->setObjectName(QStringLiteral("picStat1"));
    auto* line1 = new QHBoxLayout(picStat1_);
    line1->setContentsMargins(0, 0, 0, 0);
    lblComment_ = StatusLabel("lblComment", picStat1_);
    // Long paths must not widen the window; the label takes what the line offers.
    lblComment_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    line1->addWidget(lblComment_, 1);

    picStat2_ = new QFrame(panel);
    picStat2_->setObjectName(QStringLiteral("picStat2"));
    auto* line2 = new QHBoxLayout(picStat2_);
    line2->setContentsMargins(0, 0, 0, 0);
    line2->setSpacing(2);
    lblCode_ = StatusLabel("lblCode", picStat2_);
    lblCode_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblXPos_ = StatusLabel("lblXPos", picStat2_);
    lblYPos_ = StatusLabel("lblYPos", picStat2_);
    // Room for the widest readout, so the labels do not jump as the mouse moves.
    const int readout = lblXPos_->fontMetrics().horizontalAdvance(QStringLiteral(" X -00000.000000 ")) +
                        2 * lblXPos_->frameWidth() + 2 * lblXPos_->margin();
    lblXPos_->setMinimumWidth(readout);
    lblYPos_->setMinimumWidth(readout);
    line2->addWidget(lblCode_, 1);
    line2->addWidget(lblXPos_);
    line2->addWidget(lblYPos_);

    lines->addWidget(picStat1_);
    lines->addWidget(picStat2_);
    statusBar()->addWidget(panel, 1);
}

void frmBackplot::readSettings()
{
    settingsStore_.LoadSettings(settings_, translator_->ToolColors(), translator_->State(), *dialogs_,
                                ProgramFiles::ForThisProgram().SamplesFolder().toStdString());
}

void frmBackplot::writeSettings() { settingsStore_.SaveSettings(settings_, translator_->ToolColors()); }

void frmBackplot::closeEvent(QCloseEvent* event)
{
    // A slow-motion pass may be on the stack below this event: let it run out at full
    // speed rather than wait record by record in a window that is going away.
    playback_.SlowMode = false;
    playback_.SlowPaused = false;
    writeSettings();
    event->accept();
}

DrawSurface& frmBackplot::picSurface() { return picCanvas_->Surface(); }

PlaybackHost& frmBackplot::playbackHost() { return *host_; }

// ---- Public operations ----

void frmBackplot::SetCoords() { plotter_->SetCoords(picSurface()); }
void frmBackplot::GetRecords() { plotter_->GetRecords(picSurface()); }
void frmBackplot::DrawAxis() { plotter_->DrawAxis(picSurface()); }
void frmBackplot::ZoomIn() { plotter_->View.ZoomIn(); }
void frmBackplot::ElementStep() { stepper_->ElementStep(picSurface()); }
void frmBackplot::SetEditor2() { slowMotion_->SetEditor2(); }
void frmBackplot::PlotFrom(std::int32_t toolNum) { partialPlots_->PlotFrom(picSurface(), toolNum); }

void frmBackplot::PlotToolToTool(std::int16_t firstTool, std::int16_t secondTool)
{
    partialPlots_->PlotToolToTool(picSurface(), firstTool, secondTool);
}

void frmBackplot::DrawRubberLine(float x1, float y1, float x2, float y2, std::uint32_t color)
{
    ViewCommands::DrawRubberLine(picSurface(), x1, y1, x2, y2, color);
}

void frmBackplot::SetFileOperation(bool running)
{
    fileOperation_ = running;
    menuBar()->setEnabled(!running);
    commands_->cToolbar1->setEnabled(!running);
}

// ---- Opening a program ----

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
        // 1.-3. Choose the file; a cancelled dialog only redraws what is there.
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

        // 4. An empty file leaves everything as it was.
        const QFileInfo info(QString::fromStdString(fileName_));
        if (!info.isFile())
            throw RunTimeError("File not found");
        if (info.size() == 0) {
            dialogs_->Message(fileName_ + " is an empty file", MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
            return;
        }

        // 5.-6. Per-program state; the source view shows the new program, the step
        // listing of the old one goes.
        t.ResetForNewProgram();
        picEditor_->LoadFile(QString::fromStdString(fileName_));
        Editor1_->Clear();
        Editor1_->hide();

        // 7. Status and a clean canvas.
        picStat1_->show();
        picStat2_->show();
        lblComment_->setText(QStringLiteral(" Opening file ") + QString::fromStdString(fileName_));
        dialogs_->SetPointer(MousePointer::Hourglass);
        picCanvas_->ClearPicture();

        // 8.-10. Normalise and translate.
        events_.ProcessEvents();
        t.NormaliseFile(fileName_, TempFileName);
        events_.ProcessEvents();
        const EntityRecord& at = t.Record();
        lblCode_->setText(QStringLiteral(" Translating file."));
        lblXPos_->setText(QStringLiteral(" X ") + QString::fromStdString(FormatMask5(at.EndX)));
        lblYPos_->setText(QStringLiteral(" Y ") + QString::fromStdString(FormatMask5(-at.EndY)));
        t.TranslateProgram();

        // 11. Extents, fitted with a margin: the same view as Zoom Extents.
        DrawSurface& canvas = picSurface();
        plotter_->ExtentsWithMargin(canvas);

        // 12.-13. Draw every record.
        lblCode_->setText(QStringLiteral(" Drawing file."));
        events_.ProcessEvents();
        plotter_->GetRecords(canvas);

        // 14.-15. A program is loaded.
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

// ---- Small commands of the window ----

void frmBackplot::mnuExit_Click() { close(); }

void frmBackplot::mnuClear_Click() { picCanvas_->ClearPicture(); }

void frmBackplot::mnuRedraw_Click()
{
    if (fileOperation_)
        return;
    mnuClear_Click();
    Editor1_->viewport()->update();
    SetEditor2();
    viewCommands_->Redraw();
}

void frmBackplot::mnuAutoOn_Click()
{
    commands_->mnuAutoOn->setChecked(true);
    commands_->mnuAutoOff->setChecked(false);
    // The canvas always keeps its picture; the setting decides whether zoom and pan
    // clear it before plotting again.
    settings_.AutoDraw = true;
    picCanvas_->ClearPicture();
    mnuRedraw_Click();
}

void frmBackplot::mnuAutoOff_Click()
{
    if (settings_.CrossHairs) {
        dialogs_->Message("Please turn the cross hairs off\r\nbefore using this option.", MessageTitle, MsgIcon::None,
                          MsgButtons::Ok);
        return;
    }
    commands_->mnuAutoOn->setChecked(false);
    commands_->mnuAutoOff->setChecked(true);
    settings_.AutoDraw = false;
    picCanvas_->ClearPicture();
    mnuRedraw_Click();
}

void frmBackplot::mnuCaptions_Click()
{
    commands_->mnuCaptions->setChecked(!commands_->mnuCaptions->isChecked());
    commands_->ShowCaptions(commands_->mnuCaptions->isChecked());
    // The taller toolbar takes its room from the canvas.
    if (QLayout* frame = layout())
        frame->activate();
}

void frmBackplot::mnuAbout_Click()
{
    frmAbout about(this);
    about.exec();
    if (commands_->mnuAutoOff->isChecked() && programLoaded_)
        mnuRedraw_Click();
}

void frmBackplot::tbRapid_Click()
{
    settings_.ShowRapid = !settings_.ShowRapid;
    commands_->ShowToggles(settings_.ShowRapid, settings_.ShowAxis, settings_.ToolColor);
    mnuRedraw_Click();
}

void frmBackplot::tbAxis_Click()
{
    settings_.ShowAxis = !settings_.ShowAxis;
    commands_->ShowToggles(settings_.ShowRapid, settings_.ShowAxis, settings_.ToolColor);
    mnuRedraw_Click();
}

void frmBackplot::tbToolColors_Click()
{
    settings_.ToolColor = !settings_.ToolColor;
    commands_->ShowToggles(settings_.ShowRapid, settings_.ShowAxis, settings_.ToolColor);
    mnuRedraw_Click();
}

void frmBackplot::mnuDrawAids_Click()
{
    try {
        frmDrawAids dialog(settings_, commands_->mnuAutoOn->isChecked(), *dialogs_,
                           [this] { picCanvas_->HideCrossHairs(); }, this);
        dialog.exec();
        // Without Auto Redraw the changed aids show only when the plot is drawn again.
        if (commands_->mnuAutoOff->isChecked() && programLoaded_) {
            SetCoords();
            GetRecords();
            DrawAxis();
        }
    } catch (const std::exception&) {
        dialogs_->Message("Error encountered with drawinig aids.", "Corvane Backplot Error", MsgIcon::None,
                          MsgButtons::Ok);
    }
}

void frmBackplot::mnuPref_Click()
{
    const std::int32_t oldBack = settings_.Backcolor;
    frmProperties::ShowModal(
        settings_, translator_->ToolColors(), translator_->State(), *dialogs_, this,
        [this](bool mill) {
            // The next translation and the readout's letters follow the machine type.
            translator_->State().Mill = mill;
            viewCommands_->MillMode = mill;
        },
        [this, oldBack] {
            picCanvas_->SetBackColor(static_cast<std::uint32_t>(settings_.Backcolor));
            // A new back colour under a kept picture would leave the old one around the
            // lines, so the plot is drawn again then too.
            if (!programLoaded_)
                mnuClear_Click();
            else if (!settings_.AutoDraw || settings_.Backcolor != oldBack)
                mnuRedraw_Click();
        });
}

// ---- View commands ----

void frmBackplot::mnuZExtents_Click() { viewCommands_->ZoomExtents(); }
void frmBackplot::mnuZPrev_Click() { viewCommands_->ZoomPrevious(); }
void frmBackplot::mnuZWindow_Click() { viewCommands_->ZoomWindow(); }
void frmBackplot::mnuZIn_Click() { viewCommands_->ZoomIn(); }
void frmBackplot::mnuZOut_Click() { viewCommands_->ZoomOut(); }
void frmBackplot::mnuPoint_Click() { viewCommands_->Point(); }
void frmBackplot::mnuPanLeft_Click() { viewCommands_->PanLeft(); }
void frmBackplot::mnuPanRight_Click() { viewCommands_->PanRight(); }
void frmBackplot::mnuPanUp_Click() { viewCommands_->PanUp(); }
void frmBackplot::mnuPanDown_Click() { viewCommands_->PanDown(); }

// ---- Playback ----

void frmBackplot::mnuStep_Click() { stepper_->Step(); }
void frmBackplot::mnuSlowMotion_Click() { slowMotion_->Toggle(); }
void frmBackplot::tbPause_Click() { slowMotion_->PauseOrResume(); }
void frmBackplot::tbStop_Click() { keyboard_->EscapeKey(); }

void frmBackplot::mnuDetails_Click()
{
    frmDetails::ShowReport(this, translator_->Record(), translator_->State().Mill, [this] { ReDraw(); });
}

void frmBackplot::mnuTool1_Click() { partialPlots_->ToolToEofCommand(picSurface()); }

void frmBackplot::mnuTool2_Click()
{
    partialPlots_->ToolToToolCommand(picSurface(), this, [this] { mnuRedraw_Click(); });
}

void frmBackplot::mnuSource_Click()
{
    QAction* item = commands_->mnuSource;
    item->setChecked(!item->isChecked());
    if (!item->isChecked()) {
        // The canvas grows back; what is drawn stays until the next redraw.
        picEditor_->hide();
        return;
    }
    picEditor_->GoToFirstLine();
    RevealPane(picEditor_);
    events_.ProcessEvents();
    // Outside slow motion the plot is fitted again to the narrower canvas, one zoom-out
    // step wider, and that view becomes the one "&Previous" goes back from.
    if (playback_.SlowMode)
        return;
    plotter_->View.SaveView();
    plotter_->View.ZoomOut();
    try {
        SetCoords();
    } catch (const RunTimeError&) {
    }
    GetRecords();
}

// ---- Output ----

void frmBackplot::mnuWinbmp_Click()
{
    // A fresh full redraw is what gets saved; Auto Redraw is off afterwards whatever it was.
    mnuAutoOn_Click();
    events_.ProcessEvents();
    output_->SaveAsBMP(*dialogs_, settings_, *picCanvas_, [this] { mnuRedraw_Click(); });
    mnuAutoOff_Click();
}

void frmBackplot::mnuDxfFile_Click() { output_->SaveAsDXF(*translator_, *dialogs_, settings_, picSurface()); }

void frmBackplot::mnuPrintPreview_Click()
{
    output_->PrintPreview(*plotter_, *translator_, settings_, *dialogs_, [this] { mnuRedraw_Click(); },
                          [this] { cmdHidden_->click(); });
}

void frmBackplot::mnuPrint_Click()
{
    output_->Print(*plotter_, *translator_, settings_, *dialogs_,
                   [this](const QString& text) { lblComment_->setText(text); });
}

void frmBackplot::mnuPrinter_Click()
{
    if (auto* gui = dynamic_cast<GuiDialogs*>(dialogs_))
        gui->SetPrinter(&output_->Printer());
    output_->ShowPrinterSetup(*dialogs_);
    mnuRedraw_Click();
}

// ---- Help ----

void frmBackplot::mnuHelpFile_Click()
{
    HelpWindow::ShowContents(*this, *dialogs_, ProgramFiles::ForThisProgram().HelpIndex());
}

} // namespace backplot
