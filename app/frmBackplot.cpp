#include "frmBackplot.h"

#include "CanvasWidget.h"
#include "DataFolder.h"
#include "GuiDialogs.h"
#include "Icons.h"
#include "NumberFormat.h"
#include "OutputCommands.h"
#include "RunTimeError.h"
#include "frmAbout.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFileInfo>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace backplot {

namespace {

constexpr const char* MessageTitle = "Corvane Backplot";

// Toolbar buttons in order; an empty key is a separator.
struct ToolbarButton {
    const char* key;
    const char* toolTip;
    const char* caption;
};
constexpr ToolbarButton ToolbarButtons[] = {
    {"Exit", "Exit Program", "Exit"},
    {"", "", ""},
    {"Open", "Open File to Plot", "Open"},
    {"", "", ""},
    {"Clear", "Clear Screen", "Clear"},
    {"", "", ""},
    {"Print", "Print", "Print"},
    {"Preview", "Print Preview", "Preview"},
    {"", "", ""},
    {"Pan", "Pan", "Pan"},
    {"ZoomExtends", "Zoom Extends", "Extends"},
    {"ZWindow", "Zoom Window", "Window"},
    {"ZIn", "Zoom In", "Z In"},
    {"ZOut", "Zoom Out", "Z Out"},
    {"Refresh", "Refresh Plot", "Refresh"},
    {"", "", ""},
    {"Step", "Single Block Step", "Step"},
    {"Slow", "Slow Motion Block Step", "Slow"},
    {"Pause", "Pause", "Pause"},
    {"Stop", "Stop", "Pause"},
    {"", "", ""},
    {"GCode", "Show GCode", "GCode"},
    {"", "", ""},
    {"Rapid", "Toggle Rapid Lines", "Rapid"},
    {"Axis", "Toggle Axis Lines", "Axis"},
    {"", "", ""},
    {"Properties", "BackPlot Properties", "Properties"},
    {"", "", ""},
    {"ToolColors", "Toogle Tool Change Colors", "Tool Colors"},
};

// Menu captions with an ampersand in a path must show it, not take it as an access key.
QString MenuCaption(const QString& path)
{
    QString caption = path;
    caption.replace(QLatin1Char('&'), QLatin1String("&&"));
    return caption;
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
    plotter_->SetPassEndedHook([this](bool) {
        mnuSlowMotion_->setChecked(false);
        mnuStep_->setChecked(false);
    });

    picCanvas_ = new CanvasWidget(this);
    picCanvas_->setObjectName(QStringLiteral("picCanvas"));
    setCentralWidget(picCanvas_);

    createActions();
    createMenus();
    createToolBars();
    createStatusBar();

    // 1. Settings, into this window, the translator's tool colours and its machine type.
    readSettings();

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

QAction* frmBackplot::newAction(const char* name, const QString& caption)
{
    auto* action = new QAction(caption, this);
    action->setObjectName(QString::fromLatin1(name));
    return action;
}

QMenu* frmBackplot::topMenu(const char* name, const QString& caption)
{
    QMenu* menu = menuBar()->addMenu(caption);
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(QString::fromLatin1(name));
    return menu;
}

QMenu* frmBackplot::subMenu(QMenu* parent, const char* name, const QString& caption)
{
    QMenu* menu = parent->addMenu(caption);
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(QString::fromLatin1(name));
    return menu;
}

QAction* frmBackplot::separator(QMenu* menu, const char* name)
{
    QAction* action = menu->addSeparator();
    action->setObjectName(QString::fromLatin1(name));
    return action;
}

void frmBackplot::connectChecked(QAction* action, void (frmBackplot::*handler)())
{
    action->setCheckable(true);
    connect(action, &QAction::triggered, this, [this, action, handler](bool checked) {
        // Qt has already flipped the mark; give it back so the handler decides.
        action->setChecked(!checked);
        (this->*handler)();
    });
}

void frmBackplot::createActions()
{
    // File
    mnuFileOpen_ = newAction("mnuFileOpen", QStringLiteral("&Open..."));
    mnuFileOpen_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    connect(mnuFileOpen_, &QAction::triggered, this, &frmBackplot::mnuFileOpen_Click);
    mnuWinbmp_ = newAction("mnuWinbmp", QStringLiteral("&Windows Bitmap"));
    connect(mnuWinbmp_, &QAction::triggered, this, &frmBackplot::mnuWinbmp_Click);
    mnuDxfFile_ = newAction("mnuDxfFile", QStringLiteral("&DXF File"));
    connect(mnuDxfFile_, &QAction::triggered, this, &frmBackplot::mnuDxfFile_Click);
    mnuPrintPreview_ = newAction("mnuPrintPreview", QStringLiteral("Print Pre&view"));
    connect(mnuPrintPreview_, &QAction::triggered, this, &frmBackplot::mnuPrintPreview_Click);
    mnuPrint_ = newAction("mnuPrint", QStringLiteral("&Print"));
    mnuPrint_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    connect(mnuPrint_, &QAction::triggered, this, &frmBackplot::mnuPrint_Click);
    mnuPrinter_ = newAction("mnuPrinter", QStringLiteral("Printer Set&up..."));
    connect(mnuPrinter_, &QAction::triggered, this, &frmBackplot::mnuPrinter_Click);
    mnuExit_ = newAction("mnuExit", QStringLiteral("E&xit"));
    connect(mnuExit_, &QAction::triggered, this, &frmBackplot::mnuExit_Click);
    for (int i = 1; i <= RecentFiles::Count; ++i) {
        QAction* entry = newAction("", QStringLiteral("RecentFile%1").arg(i));
        entry->setObjectName(QStringLiteral("mnuRecentFile%1").arg(i));
        entry->setVisible(false);
        connect(entry, &QAction::triggered, this, [this, i] { mnuRecentFile_Click(i); });
        mnuRecentFile_[static_cast<std::size_t>(i)] = entry;
    }

    // Edit (never shown)
    mnuDelete_ = newAction("mnuDelete", QStringLiteral("&Delete"));
    mnuDelete_->setShortcut(QKeySequence(Qt::Key_Delete));

    // View
    mnuClear_ = newAction("mnuClear", QStringLiteral("&Clear"));
    connect(mnuClear_, &QAction::triggered, this, &frmBackplot::mnuClear_Click);
    mnuRedraw_ = newAction("mnuRedraw", QStringLiteral("&Redraw"));
    connect(mnuRedraw_, &QAction::triggered, this, &frmBackplot::mnuRedraw_Click);
    mnuAutoOn_ = newAction("mnuAutoOn", QStringLiteral("On"));
    connectChecked(mnuAutoOn_, &frmBackplot::mnuAutoOn_Click);
    mnuAutoOff_ = newAction("mnuAutoOff", QStringLiteral("Off"));
    connectChecked(mnuAutoOff_, &frmBackplot::mnuAutoOff_Click);
    mnuAutoOff_->setChecked(true);
    mnuZExtents_ = newAction("mnuZExtents", QStringLiteral("Full Drawing &Extents"));
    connect(mnuZExtents_, &QAction::triggered, this, &frmBackplot::mnuZExtents_Click);
    mnuZPrev_ = newAction("mnuZPrev", QStringLiteral("&Previous"));
    connect(mnuZPrev_, &QAction::triggered, this, &frmBackplot::mnuZPrev_Click);
    mnuZWindow_ = newAction("mnuZWindow", QStringLiteral("&Window"));
    connect(mnuZWindow_, &QAction::triggered, this, &frmBackplot::mnuZWindow_Click);
    mnuZIn_ = newAction("mnuZIn", QStringLiteral("&In"));
    connect(mnuZIn_, &QAction::triggered, this, &frmBackplot::mnuZIn_Click);
    mnuZOut_ = newAction("mnuZOut", QStringLiteral("&Out"));
    connect(mnuZOut_, &QAction::triggered, this, &frmBackplot::mnuZOut_Click);
    mnuPoint_ = newAction("mnuPoint", QStringLiteral("&Point"));
    connect(mnuPoint_, &QAction::triggered, this, &frmBackplot::mnuPoint_Click);
    mnuPanLeft_ = newAction("mnuPanLeft", QStringLiteral("&Left"));
    connect(mnuPanLeft_, &QAction::triggered, this, &frmBackplot::mnuPanLeft_Click);
    mnuPanRight_ = newAction("mnuPanRight", QStringLiteral("&Right"));
    connect(mnuPanRight_, &QAction::triggered, this, &frmBackplot::mnuPanRight_Click);
    mnuPanUp_ = newAction("mnuPanUp", QStringLiteral("&Up"));
    connect(mnuPanUp_, &QAction::triggered, this, &frmBackplot::mnuPanUp_Click);
    mnuPanDown_ = newAction("mnuPanDown", QStringLiteral("&Down"));
    connect(mnuPanDown_, &QAction::triggered, this, &frmBackplot::mnuPanDown_Click);
    mnuStep_ = newAction("mnuStep", QStringLiteral("&Single Block Step"));
    connectChecked(mnuStep_, &frmBackplot::mnuStep_Click);
    mnuDetails_ = newAction("mnuDetails", QStringLiteral("Step &Details"));
    connect(mnuDetails_, &QAction::triggered, this, &frmBackplot::mnuDetails_Click);
    mnuSlowMotion_ = newAction("mnuSlowMotion", QStringLiteral("Slow &Motion Block Step"));
    connectChecked(mnuSlowMotion_, &frmBackplot::mnuSlowMotion_Click);
    mnuTool1_ = newAction("mnuTool1", QStringLiteral("Tool To &EOF"));
    connect(mnuTool1_, &QAction::triggered, this, &frmBackplot::mnuTool1_Click);
    mnuTool2_ = newAction("mnuTool2", QStringLiteral("&Tool To Tool"));
    connect(mnuTool2_, &QAction::triggered, this, &frmBackplot::mnuTool2_Click);
    mnuSource_ = newAction("mnuSource", QStringLiteral("&View GCode Source"));
    connectChecked(mnuSource_, &frmBackplot::mnuSource_Click);

    // Options
    mnuDrawAids_ = newAction("mnuDrawAids", QStringLiteral("Drawing &Aids..."));
    connect(mnuDrawAids_, &QAction::triggered, this, &frmBackplot::mnuDrawAids_Click);
    mnuText_ = newAction("mnuText", QStringLiteral("&Text..."));
    mnuText_->setVisible(false);
    mnuCoords_ = newAction("mnuCoords", QStringLiteral("Coordinates"));
    mnuCoords_->setVisible(false);
    mnuPref_ = newAction("mnuPref", QStringLiteral("&Properties..."));
    connect(mnuPref_, &QAction::triggered, this, &frmBackplot::mnuPref_Click);
    mnuCaptions_ = newAction("mnuCaptions", QStringLiteral("Show Toolbar Captions"));
    connectChecked(mnuCaptions_, &frmBackplot::mnuCaptions_Click);
    mnuCaptions_->setVisible(false);

    // Help
    mnuHelpFile_ = newAction("mnuHelpFile", QStringLiteral("Tarvo Backplot Help &Topics"));
    connect(mnuHelpFile_, &QAction::triggered, this, &frmBackplot::mnuHelpFile_Click);
    mnuAbout_ = newAction("mnuAbout", QStringLiteral("&About..."));
    connect(mnuAbout_, &QAction::triggered, this, &frmBackplot::mnuAbout_Click);

    // A button nobody sees; it prints, like "&Print".
    cmdHidden_ = new QPushButton(QStringLiteral("Hidden"), this);
    cmdHidden_->setObjectName(QStringLiteral("cmdHidden"));
    cmdHidden_->hide();
    connect(cmdHidden_, &QPushButton::clicked, this, &frmBackplot::mnuPrint_Click);
}

void frmBackplot::createMenus()
{
    mnuFileMain_ = topMenu("mnuFileMain", QStringLiteral("&File"));
    mnuFileMain_->addAction(mnuFileOpen_);
    mnuSaveAs_ = subMenu(mnuFileMain_, "mnuSaveAs", QStringLiteral("Save &As..."));
    mnuSaveAs_->addAction(mnuWinbmp_);
    mnuSaveAs_->addAction(mnuDxfFile_);
    separator(mnuFileMain_, "mnuFbar1");
    mnuFileMain_->addAction(mnuPrintPreview_);
    mnuFileMain_->addAction(mnuPrint_);
    mnuFileMain_->addAction(mnuPrinter_);
    separator(mnuFileMain_, "mnhFbar2");
    mnuFileMain_->addAction(mnuExit_);
    mnuRecentFile_[0] = separator(mnuFileMain_, "mnuRecentFile0");
    mnuRecentFile_[0]->setVisible(false);
    for (int i = 1; i <= RecentFiles::Count; ++i)
        mnuFileMain_->addAction(mnuRecentFile_[static_cast<std::size_t>(i)]);

    mnuEdit_ = topMenu("mnuEdit", QStringLiteral("&Edit"));
    mnuEdit_->addAction(mnuDelete_);
    mnuEdit_->menuAction()->setVisible(false);

    mnuViewMain_ = topMenu("mnuViewMain", QStringLiteral("&View"));
    mnuViewMain_->addAction(mnuClear_);
    separator(mnuViewMain_, "mnuVBar1");
    mnuViewMain_->addAction(mnuRedraw_);
    mnuAutoRedraw_ = subMenu(mnuViewMain_, "mnuAutoRedraw", QStringLiteral("&Auto Redraw"));
    mnuAutoRedraw_->addAction(mnuAutoOn_);
    mnuAutoRedraw_->addAction(mnuAutoOff_);
    separator(mnuViewMain_, "mnuVBar2");
    mnuZoomMain_ = subMenu(mnuViewMain_, "mnuZoomMain", QStringLiteral("&Zoom"));
    mnuZoomMain_->addActions({mnuZExtents_, mnuZPrev_, mnuZWindow_, mnuZIn_, mnuZOut_});
    mnuPanMain_ = subMenu(mnuViewMain_, "mnuPanMain", QStringLiteral("&Pan"));
    mnuPanMain_->addActions({mnuPoint_, mnuPanLeft_, mnuPanRight_, mnuPanUp_, mnuPanDown_});
    separator(mnuViewMain_, "mnuVBar3");
    mnuViewMain_->addAction(mnuStep_);
    mnuViewMain_->addAction(mnuDetails_);
    separator(mnuViewMain_, "mnuVBar4");
    mnuViewMain_->addAction(mnuSlowMotion_);
    separator(mnuViewMain_, "mnuVBar5");
    mnuPlotFrom_ = subMenu(mnuViewMain_, "mnuPlotFrom", QStringLiteral("Plot &From"));
    mnuPlotFrom_->addAction(mnuTool1_);
    mnuPlotFrom_->addAction(mnuTool2_);
    mnuPlotFrom_->menuAction()->setVisible(false);
    mnuVBar6_ = separator(mnuViewMain_, "mnuVBar6");
    mnuVBar6_->setVisible(false);
    mnuViewMain_->addAction(mnuSource_);

    mnuToolsMain_ = topMenu("mnuToolsMain", QStringLiteral("&Options"));
    mnuToolsMain_->addActions({mnuDrawAids_, mnuText_, mnuCoords_, mnuPref_, mnuCaptions_});

    mnuHelp_ = topMenu("mnuHelp", QStringLiteral("&Help"));
    mnuHelp_->addAction(mnuHelpFile_);
    separator(mnuHelp_, "mnuHBar1");
    mnuHelp_->addAction(mnuAbout_);
}

void frmBackplot::createToolBars()
{
    cToolbar1_ = addToolBar(QStringLiteral("Toolbar"));
    cToolbar1_->setObjectName(QStringLiteral("cToolbar1"));
    cToolbar1_->setIconSize(QSize(16, 16));
    cToolbar1_->setToolButtonStyle(Qt::ToolButtonIconOnly);
    cToolbar1_->setMovable(false);
    cToolbar1_->toggleViewAction()->setEnabled(false);

    for (const ToolbarButton& entry : ToolbarButtons) {
        const QString key = QString::fromLatin1(entry.key);
        if (key.isEmpty()) {
            cToolbar1_->addSeparator();
            continue;
        }
        auto* action = new QAction(Icons::ToolbarIcon(key), QString::fromLatin1(entry.caption), this);
        action->setObjectName(key);
        action->setToolTip(QString::fromLatin1(entry.toolTip));
        cToolbar1_->addAction(action);
        buttons_.insert(key, action);
    }

    const auto wire = [this](const char* key, void (frmBackplot::*handler)()) {
        connect(buttons_.value(QString::fromLatin1(key)), &QAction::triggered, this, handler);
    };
    wire("Exit", &frmBackplot::mnuExit_Click);
    wire("Open", &frmBackplot::mnuFileOpen_Click);
    wire("Clear", &frmBackplot::mnuClear_Click);
    wire("Print", &frmBackplot::mnuPrint_Click);
    wire("Preview", &frmBackplot::mnuPrintPreview_Click);
    wire("Pan", &frmBackplot::mnuPoint_Click);
    wire("ZoomExtends", &frmBackplot::mnuZExtents_Click);
    wire("ZWindow", &frmBackplot::mnuZWindow_Click);
    wire("ZIn", &frmBackplot::mnuZIn_Click);
    wire("ZOut", &frmBackplot::mnuZOut_Click);
    wire("Refresh", &frmBackplot::mnuRedraw_Click);
    wire("Step", &frmBackplot::mnuStep_Click);
    wire("Slow", &frmBackplot::mnuSlowMotion_Click);
    wire("Pause", &frmBackplot::tbPause_Click);
    wire("Stop", &frmBackplot::tbStop_Click);
    wire("GCode", &frmBackplot::mnuSource_Click);
    wire("Rapid", &frmBackplot::tbRapid_Click);
    wire("Axis", &frmBackplot::tbAxis_Click);
    wire("Properties", &frmBackplot::mnuPref_Click);
    wire("ToolColors", &frmBackplot::tbToolColors_Click);
}

QLabel* frmBackplot::statusLabel(const char* name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::NoTextInteraction);
    return label;
}

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
    lblComment_ = statusLabel("lblComment", picStat1_);
    // Long paths must not widen the window; the label takes what the line offers.
    lblComment_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    line1->addWidget(lblComment_, 1);

    picStat2_ = new QFrame(panel);
    picStat2_->setObjectName(QStringLiteral("picStat2"));
    auto* line2 = new QHBoxLayout(picStat2_);
    line2->setContentsMargins(0, 0, 0, 0);
    line2->setSpacing(2);
    lblCode_ = statusLabel("lblCode", picStat2_);
    lblCode_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblXPos_ = statusLabel("lblXPos", picStat2_);
    lblYPos_ = statusLabel("lblYPos", picStat2_);
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
                                QCoreApplication::applicationDirPath().toStdString());
}

void frmBackplot::writeSettings() { settingsStore_.SaveSettings(settings_, translator_->ToolColors()); }

void frmBackplot::closeEvent(QCloseEvent* event)
{
    writeSettings();
    event->accept();
}

// ---- Public operations ----

void frmBackplot::SetControls(bool value)
{
    for (const char* key : {"Clear", "Print", "Preview", "Pan", "ZoomExtends", "ZWindow", "ZIn", "ZOut",
                            "Refresh", "Step", "Slow", "GCode", "Rapid", "Axis", "ToolColors"})
        buttons_.value(QString::fromLatin1(key))->setEnabled(value);
    // Pause and Stop only make sense while stepping or in slow motion, which enable them.
    buttons_.value(QStringLiteral("Pause"))->setEnabled(false);
    buttons_.value(QStringLiteral("Stop"))->setEnabled(false);
}

void frmBackplot::SetMenus(bool value)
{
    for (QAction* item : {mnuSaveAs_->menuAction(), mnuPrint_, mnuPrintPreview_, mnuClear_,
                          mnuAutoRedraw_->menuAction(), mnuRedraw_, mnuZoomMain_->menuAction(),
                          mnuPanMain_->menuAction(), mnuSlowMotion_, mnuDrawAids_, mnuStep_, mnuText_,
                          mnuDelete_, mnuPlotFrom_->menuAction(), mnuSource_, mnuDetails_})
        item->setEnabled(value);
}

void frmBackplot::RefreshRecentMenu()
{
    for (int i = 1; i <= RecentFiles::Count; ++i) {
        const std::string entry = recentFiles_.Entry(i);
        if (!RecentFiles::IsUsed(entry))
            continue;
        const QString path = QString::fromStdString(entry);
        QAction* item = mnuRecentFile_[static_cast<std::size_t>(i)];
        mnuRecentFile_[0]->setVisible(true);
        item->setText(MenuCaption(path));
        item->setData(path);
        item->setVisible(true);
    }
}

// ---- Commands of this window ----

void frmBackplot::mnuExit_Click() { close(); }

void frmBackplot::mnuClear_Click() { picCanvas_->ClearPicture(); }

void frmBackplot::mnuAutoOn_Click()
{
    mnuAutoOn_->setChecked(true);
    mnuAutoOff_->setChecked(false);
    // The canvas always keeps its picture; the setting decides whether zoom and pan
    // clear it before plotting again.
    settings_.AutoDraw = true;
    picCanvas_->ClearPicture();
    mnuRedraw_Click();
}

void frmBackplot::mnuAutoOff_Click()
{
    if (settings_.CrossHairs) {
        dialogs_->Message("Please turn the cross hairs off\r\nbefore using this option.", MessageTitle,
                          MsgIcon::None, MsgButtons::Ok);
        return;
    }
    mnuAutoOn_->setChecked(false);
    mnuAutoOff_->setChecked(true);
    settings_.AutoDraw = false;
    picCanvas_->ClearPicture();
    mnuRedraw_Click();
}

void frmBackplot::mnuCaptions_Click()
{
    mnuCaptions_->setChecked(!mnuCaptions_->isChecked());
    cToolbar1_->setToolButtonStyle(mnuCaptions_->isChecked() ? Qt::ToolButtonTextUnderIcon
                                                             : Qt::ToolButtonIconOnly);
}

void frmBackplot::mnuAbout_Click()
{
    frmAbout about(this);
    about.exec();
    if (mnuAutoOff_->isChecked() && programLoaded_)
        mnuRedraw_Click();
}

// ---- Opening a program ----

DrawSurface& frmBackplot::picSurface() { return picCanvas_->Surface(); }

void frmBackplot::ShowOpenDialog()
{
    // The filter holds the one pattern of the "File Ext" setting.
    const std::string& ext = settings_.FileExt;
    const std::optional<std::string> chosen =
        dialogs_->OpenFileName("Open File", settings_.WorkDir, ext + " ", " " + ext);
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
        // 1-3. Choose the file; a cancelled dialog only redraws what is there.
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

        // 5. Per-program state.
        t.ResetForNewProgram();

        // 7. Status and a clean canvas.
        picStat1_->show();
        picStat2_->show();
        lblComment_->setText(QStringLiteral(" Opening file ") + QString::fromStdString(fileName_));
        dialogs_->SetPointer(MousePointer::Hourglass);
        picCanvas_->ClearPicture();

        // 8-10. Normalise and translate.
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

        // 12-13. Draw every record.
        lblCode_->setText(QStringLiteral(" Drawing file."));
        events_.ProcessEvents();
        plotter_->GetRecords(canvas);

        // 14-15. A program is loaded.
        programLoaded_ = true;
        mnuDetails_->setEnabled(false);
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
    fileOperation_ = true;
    OpenFile();
    fileOperation_ = false;
    // Stepping starts from the first record by itself (its first step resets the
    // current element), so PlotLast keeps the RecordTotal the extents pass gave it and a
    // redraw shows the whole program.
    if (!translator_->State().AbortTranslation)
        SetMenus(true);
    translator_->State().AbortTranslation = false;
}

void frmBackplot::mnuRecentFile_Click(int index)
{
    if (fileOperation_)
        return;
    try {
        fileOperation_ = true;
        reopenFlag_ = true;
        fileName_ = mnuRecentFile_[static_cast<std::size_t>(index)]->data().toString().toStdString();
        OpenFile();
        fileOperation_ = false;
        lblCode_->setText(QStringLiteral("  ") + QString::fromStdString(fileName_));
        events_.ProcessEvents();
        SetMenus(true);
    } catch (const std::exception&) {
        fileOperation_ = false;
        dialogs_->Message("Error loading file.", "Corvane BackPlot", MsgIcon::Critical, MsgButtons::Ok);
    }
}

// ---- Drawing commands ----

void frmBackplot::mnuRedraw_Click()
{
    if (fileOperation_)
        return;
    mnuClear_Click();
    DrawSurface& canvas = picSurface();
    try {
        plotter_->SetCoords(canvas);
    } catch (const RunTimeError&) {
        // A view that cannot be fitted keeps the scale it had; the plot still runs.
    }
    plotter_->GetRecords(canvas);
}

void frmBackplot::tbRapid_Click()
{
    settings_.ShowRapid = !settings_.ShowRapid;
    mnuRedraw_Click();
}

void frmBackplot::tbAxis_Click()
{
    settings_.ShowAxis = !settings_.ShowAxis;
    mnuRedraw_Click();
}

void frmBackplot::tbToolColors_Click()
{
    settings_.ToolColor = !settings_.ToolColor;
    mnuRedraw_Click();
}

// ---- Commands whose work is not wired in yet ----

void frmBackplot::mnuWinbmp_Click()
{
    // A fresh full redraw is what gets saved.
    mnuAutoOn_Click();
    events_.ProcessEvents();
    OutputCommands::Of(this).SaveAsBMP(*dialogs_, settings_, *picCanvas_, [this] { mnuRedraw_Click(); });
    mnuAutoOff_Click();
}
void frmBackplot::mnuDxfFile_Click()
{
    OutputCommands::Of(this).SaveAsDXF(*translator_, *dialogs_, settings_, picSurface());
}
void frmBackplot::mnuPrintPreview_Click()
{
    OutputCommands::Of(this).PrintPreview(*plotter_, *translator_, settings_, *dialogs_, [this] { mnuRedraw_Click(); },
                                          [this] { cmdHidden_->click(); });
}
void frmBackplot::mnuPrint_Click()
{
    OutputCommands::Of(this).Print(*plotter_, *translator_, settings_, *dialogs_,
                                   [this](const QString& text) { lblComment_->setText(text); });
}
void frmBackplot::mnuPrinter_Click()
{
    OutputCommands& output = OutputCommands::Of(this);
    if (auto* gui = dynamic_cast<GuiDialogs*>(dialogs_))
        gui->SetPrinter(&output.Printer());
    output.ShowPrinterSetup(*dialogs_);
    mnuRedraw_Click();
}
void frmBackplot::mnuZExtents_Click() {}
void frmBackplot::mnuZPrev_Click() {}
void frmBackplot::mnuZWindow_Click() {}
void frmBackplot::mnuZIn_Click() {}
void frmBackplot::mnuZOut_Click() {}
void frmBackplot::mnuPoint_Click() {}
void frmBackplot::mnuPanLeft_Click() {}
void frmBackplot::mnuPanRight_Click() {}
void frmBackplot::mnuPanUp_Click() {}
void frmBackplot::mnuPanDown_Click() {}
void frmBackplot::mnuStep_Click() {}
void frmBackplot::mnuDetails_Click() {}
void frmBackplot::mnuSlowMotion_Click() {}
void frmBackplot::mnuTool1_Click() {}
void frmBackplot::mnuTool2_Click() {}
void frmBackplot::mnuSource_Click() {}
void frmBackplot::mnuDrawAids_Click() {}
void frmBackplot::mnuPref_Click() {}
void frmBackplot::mnuHelpFile_Click() {}
void frmBackplot::tbPause_Click() {}
void frmBackplot::tbStop_Click() {}

} // namespace backplot
