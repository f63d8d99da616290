#include "frmBackplot.h"

#include "AppTexts.h"
#include "CanvasWidget.h"
#include "DataFolder.h"
#include "ExternalOpens.h"
#include "GuiDialogs.h"
#include "HelpWindow.h"
#include "Icons.h"
#include "Keyboard.h"
#include "OutputCommands.h"
#include "ProgramFiles.h"
#include "RunTimeError.h"
#include "PartialPlots.h"
#include "SlowMotion.h"
#include "SourceView.h"
#include "StatusLines.h"
#include "StepListing.h"
#include "Stepper.h"
#include "TranslationTexts.h"
#include "ViewCommands.h"
#include "ViewTexts.h"
#include "WindowHost.h"
#include "frmAbout.h"
#include "frmDetails.h"
#include "frmDrawAids.h"
#include "frmProperties.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QLayout>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>

namespace backplot {

namespace {

// The size of a first start, where the screen has room for it.
constexpr QSize FirstSize(1000, 720);

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
    setWindowTitle(QString::fromUtf8(texts::WindowTitle));
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
    statusLines_ = new StatusLines(this);
    statusBar()->addWidget(statusLines_, 1);
    lblComment_ = statusLines_->lblComment;
    lblCode_ = statusLines_->lblCode;
    lblXPos_ = statusLines_->lblXPos;
    lblYPos_ = statusLines_->lblYPos;

    windowHost_ = std::make_unique<WindowHost>(*this);
    viewCommands_ =
        std::make_unique<ViewCommands>(*plotter_, canvasSurface(), settings_, playback_, *dialogs_, *windowHost_);
    stepper_ = std::make_unique<Stepper>(*plotter_, canvasSurface(), *translator_, playback_, *dialogs_, *windowHost_);
    slowMotion_ = std::make_unique<SlowMotion>(*plotter_, canvasSurface(), settings_, playback_, *windowHost_);
    partialPlots_ = std::make_unique<PartialPlots>(*plotter_, *translator_, playback_, settings_, *dialogs_, events_);
    output_ = new OutputCommands(this);
    keyboard_ = std::make_unique<Keyboard>(*this);
    externalOpens_ = new ExternalOpens(*this);
    // A pass that reached the end of the program: playback is over.
    plotter_->SetPassEndedHook([this](bool slowMotionEnded) {
        commands_->mnuStep->setChecked(false);
        commands_->mnuSlowMotion->setChecked(false);
        if (slowMotionEnded) {
            lblCode_->setText(QString::fromStdString(fileName_) + QStringLiteral("  "));
            windowHost_->RestoreToolbar();
        }
    });
    wireCommands();

    // Settings, into this window, the translator's tool colours and its machine type.
    readSettings();
    viewCommands_->MillMode = settings_.Mill;
    ShowToggles();

    // The working files go next to the program unless it is installed or its folder is read-only.
    const DataFolder folder = DataFolder::ForThisProgram();
    dataFolder_ = folder.Folder;
    translator_->SetDataFolder(dataFolder_.toStdString());
    if (folder.Fallback)
        lblCode_->setText(QStringLiteral("  Working files are kept in ") + dataFolder_);

    // Playback stopped.
    playback_ = PlaybackState{};

    // Ready, on the chosen background.
    lblComment_->setText(texts::StatusReady);
    picCanvas_->SetBackColor(static_cast<std::uint32_t>(settings_.Backcolor));
    picCanvas_->ClearPicture();

    // The recent files, and nothing that needs a program until one is drawn.
    RefreshRecentMenu();
    SetControls(false);
    SetMenus(false);
}

frmBackplot::~frmBackplot() = default;

// ---- Construction ----

void frmBackplot::wireCommands()
{
    CommandSurface& c = *commands_;
    // While a program is being opened (translation lets events run) no command starts.
    const auto on = [this](QAction* action, void (frmBackplot::*handler)()) {
        connect(action, &QAction::triggered, this, [this, handler] {
            if (!fileOperation_)
                (this->*handler)();
        });
    };
    // A checkable item's command owns its mark: the one Qt flips is given back first.
    const auto onChecked = [this](QAction* action, void (frmBackplot::*handler)()) {
        connect(action, &QAction::triggered, this, [this, action, handler](bool checked) {
            action->setChecked(!checked);
            if (!fileOperation_)
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
        connect(c.mnuRecentFile[static_cast<std::size_t>(i)], &QAction::triggered, this, [this, i] {
            if (!fileOperation_)
                mnuRecentFile_Click(i);
        });
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

    using K = ToolbarKey;
    const auto button = [&](ToolbarKey key, void (frmBackplot::*handler)()) { on(c.Button(key), handler); };
    button(K::Exit, &frmBackplot::mnuExit_Click);
    button(K::Open, &frmBackplot::mnuFileOpen_Click);
    button(K::Clear, &frmBackplot::mnuClear_Click);
    button(K::Print, &frmBackplot::mnuPrint_Click);
    button(K::Preview, &frmBackplot::mnuPrintPreview_Click);
    button(K::Pan, &frmBackplot::mnuPoint_Click);
    button(K::ZoomExtends, &frmBackplot::mnuZExtents_Click);
    button(K::ZWindow, &frmBackplot::mnuZWindow_Click);
    button(K::ZIn, &frmBackplot::mnuZIn_Click);
    button(K::ZOut, &frmBackplot::mnuZOut_Click);
    button(K::Refresh, &frmBackplot::mnuRedraw_Click);
    button(K::Step, &frmBackplot::mnuStep_Click);
    button(K::Slow, &frmBackplot::mnuSlowMotion_Click);
    button(K::Pause, &frmBackplot::tbPause_Click);
    button(K::Stop, &frmBackplot::tbStop_Click);
    button(K::GCode, &frmBackplot::mnuSource_Click);
    button(K::Properties, &frmBackplot::mnuPref_Click);
    // The three toggles show their setting; a change of the pressed state that the setting
    // does not share yet is the user's, whatever its route (a click, a screen reader's
    // Toggle action), and runs the command, which makes them agree again.
    const auto toggle = [&](ToolbarKey key, bool Settings::*setting, void (frmBackplot::*handler)()) {
        connect(c.Button(key), &QAction::toggled, this, [this, setting, handler](bool pressed) {
            if (pressed == settings_.*setting)
                return;
            if (fileOperation_)
                return ShowToggles();
            (this->*handler)();
        });
    };
    toggle(K::Rapid, &Settings::ShowRapid, &frmBackplot::tbRapid_Click);
    toggle(K::Axis, &Settings::ShowAxis, &frmBackplot::tbAxis_Click);
    toggle(K::ToolColors, &Settings::ToolColor, &frmBackplot::tbToolColors_Click);

    // A button nobody sees; it prints, like "&Print".
    cmdHidden_ = new QPushButton(texts::cmdHidden, this);
    cmdHidden_->setObjectName(QStringLiteral("cmdHidden"));
    cmdHidden_->hide();
    connect(cmdHidden_, &QPushButton::clicked, this, &frmBackplot::mnuPrint_Click);

    // The canvas mouse (a move waits for an open by itself).
    ViewCommands& view = *viewCommands_;
    connect(picCanvas_, &CanvasWidget::MouseDown, this,
            [this, &view](Qt::MouseButton b, Qt::KeyboardModifiers, float x, float y) {
                if (!fileOperation_)
                    view.MouseDown(ButtonOf(b), x, y);
            });
    connect(picCanvas_, &CanvasWidget::MouseMove, this,
            [&view](Qt::MouseButtons b, Qt::KeyboardModifiers, float x, float y) {
                view.MouseMove(b.testFlag(Qt::LeftButton), x, y);
            });
    connect(picCanvas_, &CanvasWidget::MouseUp, this,
            [this, &view](Qt::MouseButton b, Qt::KeyboardModifiers, float x, float y) {
                if (!fileOperation_)
                    view.MouseUp(ButtonOf(b), x, y);
            });
    // The wheel zooms by the step of the + and - keys, about the point under the pointer.
    connect(picCanvas_, &CanvasWidget::Wheel, this, [this](int notches, float x, float y) {
        if (!fileOperation_ && programLoaded_)
            viewCommands_->ZoomAbout(notches > 0, x, y);
    });
}

void frmBackplot::createPanes()
{
    picCanvas_ = new CanvasWidget(this);
    picCanvas_->setObjectName(QStringLiteral("picCanvas"));
    picCanvas_->setAccessibleName(QStringLiteral("Plot"));
    picCanvas_->setFocusPolicy(Qt::StrongFocus);
    sourceView_ = new SourceView(this);
    sourceView_->setAccessibleName(QStringLiteral("G-code source"));
    sourceView_->hide();
    stepListing_ = new StepListing(this);
    stepListing_->setAccessibleName(QStringLiteral("Stepped blocks"));

    // The canvas gives way to the source view on its right and the step listing below.
    splitSource_ = new QSplitter(Qt::Horizontal, this);
    splitSource_->setObjectName(QStringLiteral("splitSource"));
    splitSource_->addWidget(picCanvas_);
    splitSource_->addWidget(sourceView_);
    splitSource_->setChildrenCollapsible(false);
    splitSteps_ = new QSplitter(Qt::Vertical, this);
    splitSteps_->setObjectName(QStringLiteral("splitSteps"));
    splitSteps_->addWidget(splitSource_);
    splitSteps_->addWidget(stepListing_);
    splitSteps_->setChildrenCollapsible(false);
    setCentralWidget(splitSteps_);
    // The room the user drags a pane to is the room it gets when it is shown again.
    connect(splitSource_, &QSplitter::splitterMoved, this, [this] { placement_.SourceWidth = sourceView_->width(); });
    connect(splitSteps_, &QSplitter::splitterMoved, this, [this] { placement_.StepsHeight = stepListing_->height(); });
}

void frmBackplot::RevealPane(QWidget* pane)
{
    if (pane->isVisible())
        return;
    pane->show();
    QSplitter* split = pane == sourceView_ ? splitSource_ : splitSteps_;
    // The room of the two panes, the handle between them left out.
    const int room = (split->orientation() == Qt::Horizontal ? split->width() : split->height()) - split->handleWidth();
    const int remembered = pane == sourceView_ ? placement_.SourceWidth : placement_.StepsHeight;
    const int share = remembered > 0      ? std::min(remembered, room * 4 / 5)
                      : pane == sourceView_ ? room * 2 / 5
                                           : std::max(room / 5, 6 * pane->fontMetrics().height());
    split->setSizes({room - share, share});
    // The splitter settles the shown pane's handle now rather than at the next event
    // loop turn, so the canvas already has the size it keeps when the caller fits the view.
    QCoreApplication::sendPostedEvents(split, QEvent::LayoutRequest);
}

void frmBackplot::readSettings()
{
    settingsStore_.LoadSettings(settings_, translator_->ToolColors(), translator_->State(), *dialogs_,
                                ProgramFiles::ForThisProgram().SamplesFolder().toStdString());
    placement_ = WindowPlacement::Load(settingsStore_.Store());
    placement_.Restore(*this, FirstSize);
}

void frmBackplot::writeSettings()
{
    placement_.Remember(*this, *sourceView_, *stepListing_);
    placement_.Save(settingsStore_.Store());
    settingsStore_.SaveSettings(settings_, translator_->ToolColors());
}

void frmBackplot::closeEvent(QCloseEvent* event)
{
    // A slow-motion pass may be on the stack below this event: let it run out at full
    // speed rather than wait record by record in a window that is going away.
    playback_.SlowMode = false;
    playback_.SlowPaused = false;
    writeSettings();
    event->accept();
}

DrawSurface& frmBackplot::canvasSurface() { return picCanvas_->Surface(); }

PlaybackHost& frmBackplot::playbackHost() { return *windowHost_; }

// ---- Public operations ----

void frmBackplot::SetCoords() { plotter_->SetCoords(canvasSurface()); }
void frmBackplot::GetRecords() { plotter_->GetRecords(canvasSurface()); }
void frmBackplot::DrawAxis() { plotter_->DrawAxis(canvasSurface()); }
void frmBackplot::ZoomIn() { plotter_->View.ZoomIn(); }
void frmBackplot::ElementStep() { stepper_->ElementStep(canvasSurface()); }
void frmBackplot::SetEditor2() { slowMotion_->SetEditor2(); }
void frmBackplot::PlotFrom(std::int32_t toolNum) { partialPlots_->PlotFrom(canvasSurface(), toolNum); }

void frmBackplot::PlotToolToTool(std::int16_t firstTool, std::int16_t secondTool)
{
    partialPlots_->PlotToolToTool(canvasSurface(), firstTool, secondTool);
}

void frmBackplot::DrawRubberLine(float x1, float y1, float x2, float y2, std::uint32_t color)
{
    ViewCommands::DrawRubberLine(canvasSurface(), x1, y1, x2, y2, color);
}

void frmBackplot::SetFileOperation(bool running)
{
    // Commands wait through their connections (wireCommands); the toolbar greys out to
    // show it. The menus are left alone: a disabled menu hands its state down to its
    // submenus when it comes back, undoing what SetMenus chose.
    fileOperation_ = running;
    commands_->cToolbar1->setEnabled(!running);
}

// ---- Small commands of the window ----

void frmBackplot::mnuExit_Click() { close(); }

void frmBackplot::mnuClear_Click() { picCanvas_->ClearPicture(); }

void frmBackplot::mnuRedraw_Click()
{
    if (fileOperation_)
        return;
    mnuClear_Click();
    stepListing_->viewport()->update();
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
        dialogs_->Message(texts::TurnCrossHairsOff, texts::MessageTitle, MsgIcon::None,
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

void frmBackplot::ShowToggles()
{
    commands_->ShowToggles(settings_.ShowRapid, settings_.ShowAxis, settings_.ToolColor);
}

void frmBackplot::tbRapid_Click()
{
    settings_.ShowRapid = !settings_.ShowRapid;
    ShowToggles();
    mnuRedraw_Click();
}

void frmBackplot::tbAxis_Click()
{
    settings_.ShowAxis = !settings_.ShowAxis;
    ShowToggles();
    mnuRedraw_Click();
}

void frmBackplot::tbToolColors_Click()
{
    settings_.ToolColor = !settings_.ToolColor;
    ShowToggles();
    mnuRedraw_Click();
}

void frmBackplot::mnuDrawAids_Click()
{
    try {
        frmDrawAids dialog(settings_, commands_->mnuAutoOn->isChecked(), *dialogs_,
                           [this] { picCanvas_->HideCrossHairs(); }, this);
        dialog.exec();
        ShowToggles();
        // Without Auto Redraw the changed aids show only when the plot is drawn again.
        if (commands_->mnuAutoOff->isChecked() && programLoaded_) {
            SetCoords();
            GetRecords();
            DrawAxis();
        }
    } catch (const std::exception&) {
        dialogs_->Message(texts::DrawAidsError, texts::DrawAidsErrorTitle, MsgIcon::None,
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
    // "Tool Colors" is ticked on the dialog's last page.
    ShowToggles();
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

void frmBackplot::mnuTool1_Click() { partialPlots_->ToolToEofCommand(canvasSurface()); }

void frmBackplot::mnuTool2_Click()
{
    partialPlots_->ToolToToolCommand(canvasSurface(), this, [this] { mnuRedraw_Click(); });
}

void frmBackplot::mnuSource_Click()
{
    QAction* item = commands_->mnuSource;
    item->setChecked(!item->isChecked());
    if (!item->isChecked()) {
        // The canvas grows back; what is drawn stays until the next redraw.
        sourceView_->hide();
        return;
    }
    sourceView_->GoToFirstLine();
    RevealPane(sourceView_);
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

void frmBackplot::mnuDxfFile_Click() { output_->SaveAsDXF(*translator_, *dialogs_, settings_, canvasSurface()); }

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
