#include "frmProperties.h"

#include "AppTexts.h"
#include "Palette.h"
#include "TKZBrowser.h"
#include "TKZColorSelector.h"
#include "TranslationTexts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <exception>
#include <iterator>
#include <optional>

namespace backplot {

namespace {

constexpr int CurrentLineWidth = 150;
constexpr int CurrentLineHeight = 20;
constexpr int TimerInterval = 100; // ms
constexpr int HighestToolNumber = 32767;

// Sets a flag for the life of the object and gives back the value it had.
class FlagScope {
public:
    FlagScope(bool& flag, bool value) : flag_(flag), old_(flag) { flag_ = value; }
    ~FlagScope() { flag_ = old_; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    bool& flag_;
    bool old_;
};

// A tool number box's value: empty counts as 0; otherwise a whole number 0..32767.
std::optional<std::int32_t> ToolNumberOf(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return 0;
    bool ok = false;
    const int value = trimmed.toInt(&ok, 10);
    if (!ok || value < 0 || value > HighestToolNumber)
        return std::nullopt;
    return value;
}

} // namespace

const QStringList& frmProperties::SlowTimeItems()
{
    static const QStringList items = [] {
        QStringList list;
        for (const char* choice : texts::SlowTimeChoices)
            list.append(QString::fromLatin1(choice));
        return list;
    }();
    return items;
}

frmProperties::frmProperties(Settings& settings, ToolColorTable& toolColors, const TranslationState& translation,
                             UserDialogs& dialogs, QWidget* parent)
    : QDialog(parent), settings_(settings), toolColors_(toolColors), translation_(translation), dialogs_(dialogs),
      currentSurface_(CurrentLineWidth, CurrentLineHeight)
{
    setObjectName(QStringLiteral("frmProperties"));
    setWindowTitle(texts::PropertiesCaption);
    setModal(true);

    // The five pages, each with its key.
    TabProp_ = new QTabWidget(this);
    TabProp_->setObjectName(QStringLiteral("TabProp"));
    TabProp_->setAccessibleName(QStringLiteral("Property pages"));
    const struct {
        QWidget* page;
        const char* key;
    } pages[] = {
        {BuildFilesPage(), "Files"},
        {BuildAxisPage(), "Axis"},
        {BuildSlowMotionPage(), "SMotion"},
        {BuildBackgroundPage(), "BackGrd"},
        {BuildToolsPage(), "Tools"},
    };
    static_assert(std::size(pages) == std::size(texts::PropertiesPages));
    for (std::size_t i = 0; i < std::size(pages); ++i) {
        pages[i].page->setObjectName(QString::fromLatin1(pages[i].key));
        const int index = TabProp_->addTab(pages[i].page, QString::fromLatin1(texts::PropertiesPages[i]));
        TabProp_->tabBar()->setTabData(index, QString::fromLatin1(pages[i].key));
    }

    // "OK", "Cancel", "Apply".
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (int i = 0; i < 3; ++i) {
        auto* button = new QPushButton(QString::fromLatin1(texts::PropertiesButtons[i]), this);
        button->setObjectName(QStringLiteral("cmdProperties") + QString::number(i));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, i] { cmdProperties_Click(i); });
        cmdProperties_[static_cast<std::size_t>(i)] = button;
        buttons->addWidget(button);
    }
    cmdProperties_[0]->setDefault(true);
    cmdProperties_[2]->setEnabled(false);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(TabProp_);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    // Values, then the change tracking, then the timer.
    LoadValues();
    ConnectChangeTracking();
    Timer1_ = new QTimer(this);
    Timer1_->setObjectName(QStringLiteral("Timer1"));
    Timer1_->setInterval(TimerInterval);
    connect(Timer1_, &QTimer::timeout, this, &frmProperties::Timer1_Timer);
    quiet_ = false;
    Timer1_->start();
}

frmProperties::~frmProperties() = default;

void frmProperties::ShowModal(Settings& settings, ToolColorTable& toolColors, const TranslationState& translation,
                              UserDialogs& dialogs, QWidget* parent,
                              const std::function<void(bool mill)>& machineTypeApplied,
                              const std::function<void()>& afterClose)
{
    // Busy while the dialog is open.
    dialogs.SetPointer(MousePointer::Hourglass);
    try {
        // The dialog.
        {
            frmProperties dialog(settings, toolColors, translation, dialogs, parent);
            if (machineTypeApplied)
                connect(&dialog, &frmProperties::MachineTypeApplied, &dialog, machineTypeApplied);
            dialog.exec();
        }
        // The window shows what was applied.
        if (afterClose)
            afterClose();
    } catch (const std::exception& error) {
        dialogs.Message(error.what(), texts::MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
    }
    dialogs.SetPointer(MousePointer::Default);
}

// ---- Load and change tracking ----

void frmProperties::LoadValues()
{
    const FlagScope quiet(quiet_, true);

    // Files
    txtExt_->setText(QString::fromStdString(settings_.FileExt));
    txtCurrentDir_->setText(QString::fromStdString(settings_.WorkDir));
    TKZBrowser1_->SetStartFolder(QString::fromStdString(settings_.WorkDir));
    chkOpen_[settings_.Mill ? 0 : 1]->setChecked(true);

    // Slow motion: the item equal to the setting, none when no item is.
    cmbSloMo_->setCurrentIndex(-1);
    for (int i = 0; i < cmbSloMo_->count(); ++i) {
        if (cmbSloMo_->itemText(i).toFloat() == settings_.SlowTime) {
            cmbSloMo_->setCurrentIndex(i);
            break;
        }
    }

    // Axis and background
    DrawCurrentLine();
    piccolor_->SetIndex(settings_.AxisSelectedColor);
    PaintBackSample(static_cast<std::uint32_t>(settings_.Backcolor));
    clrBack_->SetIndex(settings_.BackcolorSelected);

    // Tools: the list holds the tool changes the last translation met.
    lstToolChanges_->clear();
    const int listed = std::min<int>(translation_.ToolChangeCount, static_cast<int>(translation_.ToolChanges.size()) - 1);
    for (int i = 0; i <= listed; ++i)
        lstToolChanges_->addItem(QString::number(translation_.ToolChanges[static_cast<std::size_t>(i)].ToolNumber));
    for (int i = 0; i < ToolRows; ++i) {
        txtToolChangeNumber_[static_cast<std::size_t>(i)]->setText(QString::number(toolColors_[i].ToolNumber));
        clrToolChange_[static_cast<std::size_t>(i)]->SetIndex(toolColors_[i].ColorIndex);
    }
    clrDefaultColor_->SetIndex(settings_.DefaultSeletedColor);
    chkToolColor_->setChecked(settings_.ToolColor);
}

void frmProperties::ConnectChangeTracking()
{
    const auto marks = [this](int page) { return [this, page] { MarkPending(page); }; };

    connect(txtExt_, &QLineEdit::textChanged, this, marks(1));
    connect(TKZBrowser1_, &TKZBrowser::Changed, this, marks(1));
    // Toggled, not clicked: a screen reader or the keyboard toggles the option without a
    // click. Loading the values is quiet (MarkPending), so only the user's choice marks.
    for (QRadioButton* option : chkOpen_)
        connect(option, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                MarkPending(1);
        });

    for (int i = 0; i < 2; ++i)
        connect(picLineStyle_[static_cast<std::size_t>(i)], &QToolButton::clicked, this,
                [this, i] { picLineStyle_Click(i); });
    connect(piccolor_, &TKZColorSelector::Changed, this, marks(2));

    connect(cmbSloMo_, &QComboBox::currentIndexChanged, this, marks(3));

    connect(clrBack_, &TKZColorSelector::Changed, this, &frmProperties::clrBack_Change);

    connect(chkToolColor_, &QCheckBox::toggled, this, [this](bool checked) {
        if (!quiet_)
            chkToolColor_Click(checked);
    });
    for (int i = 0; i < ToolRows; ++i) {
        connect(txtToolChangeNumber_[static_cast<std::size_t>(i)], &QLineEdit::textChanged, this, marks(5));
        connect(clrToolChange_[static_cast<std::size_t>(i)], &TKZColorSelector::Changed, this, marks(5));
    }
    connect(clrDefaultColor_, &TKZColorSelector::Changed, this, marks(5));
    connect(cmdClear_, &QPushButton::clicked, this, &frmProperties::cmdClear_Click);
}

void frmProperties::MarkPending(int page)
{
    if (!quiet_)
        pendingPage_ = static_cast<std::int16_t>(page);
}

void frmProperties::Timer1_Timer()
{
    if (pendingPage_ != NoPage)
        cmdProperties_[2]->setEnabled(true);
}

void frmProperties::ShowPage(int page, QWidget* focus)
{
    TabProp_->setCurrentIndex(page - 1);
    if (focus)
        focus->setFocus();
}

void frmProperties::PaintBackSample(std::uint32_t bgr)
{
    QPalette palette = picBColor_->palette();
    palette.setColor(QPalette::Window, TKZColorSelector::ToQColor(bgr));
    picBColor_->setPalette(palette);
}

void frmProperties::DrawCurrentLine()
{
    const int style = settings_.AxisLine >= 0 && settings_.AxisLine <= 4 ? settings_.AxisLine : 0;
    const auto color = static_cast<std::uint32_t>(settings_.AxisColor);
    currentSurface_.SetDevicePixelRatio(devicePixelRatioF());
    currentSurface_.SetBackColor(static_cast<std::uint32_t>(settings_.Backcolor));
    currentSurface_.Clear();
    currentSurface_.SetDrawStyle(static_cast<DrawStyle>(style));
    currentSurface_.SetForeColor(color);
    const double middle = CurrentLineHeight / 2;
    currentSurface_.Line(0, middle, CurrentLineWidth, middle, color);
    picCurrent_->setPixmap(QPixmap::fromImage(currentSurface_.VisibleImage()));
}

// ---- Applying the pages ----

bool frmProperties::ApplyChanges(int TabIndex)
{
    const FlagScope quiet(quiet_, true);
    switch (TabIndex) {
    case 1:
        return ApplyFiles();
    case 2:
        ApplyAxis();
        return true;
    case 3:
        ApplySlowMotion();
        return true;
    case 4:
        ApplyBackground();
        return true;
    case 5:
        return SetToolColors();
    default:
        return true;
    }
}

bool frmProperties::ApplyFiles()
{
    // The folder is checked first, so a refused page writes nothing.
    const QString folder = TKZBrowser1_->Path().trimmed();
    if (!folder.isEmpty() && !QFileInfo(folder).isDir()) {
        dialogs_.Message("The folder \"" + folder.toStdString() +
                             "\" does not exist.\r\nChoose an existing folder for the work directory.",
                         texts::MessageTitle, MsgIcon::Exclamation, MsgButtons::Ok);
        ShowPage(1, TKZBrowser1_);
        return false;
    }

    const QString ext = txtExt_->text().trimmed();
    settings_.FileExt = ext.isEmpty() ? "*.*" : ext.toStdString();
    txtExt_->setText(QString::fromStdString(settings_.FileExt));
    if (!folder.isEmpty()) {
        settings_.WorkDir = folder.toStdString();
        txtCurrentDir_->setText(folder);
    }
    settings_.Mill = chkOpen_[0]->isChecked();
    emit MachineTypeApplied(settings_.Mill);
    return true;
}

void frmProperties::ApplyAxis()
{
    const int index = piccolor_->Index();
    settings_.AxisSelectedColor = static_cast<std::int16_t>(index);
    settings_.AxisColor = static_cast<std::int32_t>(QBColor(index));
    DrawCurrentLine();
}

void frmProperties::ApplySlowMotion()
{
    if (cmbSloMo_->currentIndex() >= 0)
        settings_.SlowTime = cmbSloMo_->currentText().toFloat();
}

void frmProperties::ApplyBackground()
{
    const int index = clrBack_->Index();
    settings_.Backcolor = static_cast<std::int32_t>(QBColor(index));
    settings_.BackcolorSelected = static_cast<std::int16_t>(index);
    DrawCurrentLine();
}

bool frmProperties::SetToolColors()
{
    const FlagScope quiet(quiet_, true);

    // Every box is read before anything is written.
    std::array<std::int32_t, ToolRows> numbers{};
    for (int i = 0; i < ToolRows; ++i) {
        QLineEdit* box = txtToolChangeNumber_[static_cast<std::size_t>(i)];
        const std::optional<std::int32_t> number = ToolNumberOf(box->text());
        if (!number) {
            dialogs_.Message("Tool " + std::to_string(i + 1) + ": \"" + box->text().toStdString() +
                                 "\" is not a tool number.\r\nEnter a whole number from 0 to " +
                                 std::to_string(HighestToolNumber) + ".",
                             texts::MessageTitle, MsgIcon::Exclamation, MsgButtons::Ok);
            ShowPage(5, box);
            return false;
        }
        numbers[static_cast<std::size_t>(i)] = *number;
    }

    // The rows, an empty box showing the 0 it stands for.
    for (int i = 0; i < ToolRows; ++i) {
        QLineEdit* box = txtToolChangeNumber_[static_cast<std::size_t>(i)];
        if (box->text().trimmed().isEmpty())
            box->setText(QStringLiteral("0"));
        const int index = clrToolChange_[static_cast<std::size_t>(i)]->Index();
        toolColors_[i] = {numbers[static_cast<std::size_t>(i)], QBColor(index), index};
    }

    // The default line colour.
    const int index = clrDefaultColor_->Index();
    settings_.DefaultColor = static_cast<std::int32_t>(QBColor(index));
    settings_.DefaultSeletedColor = static_cast<std::int16_t>(index);
    return true;
}

// ---- Handlers ----

void frmProperties::picLineStyle_Click(int index)
{
    settings_.AxisLine = static_cast<std::int16_t>(index);
    MarkPending(2);
    DrawCurrentLine();
}

void frmProperties::clrBack_Change(int index)
{
    MarkPending(4);
    PaintBackSample(QBColor(index));
}

void frmProperties::chkToolColor_Click(bool checked)
{
    MarkPending(5);
    settings_.ToolColor = checked;
}

void frmProperties::cmdClear_Click()
{
    for (int i = 0; i < ToolRows; ++i) {
        txtToolChangeNumber_[static_cast<std::size_t>(i)]->clear();
        clrToolChange_[static_cast<std::size_t>(i)]->SetIndex(0);
    }
    // The table goes at once, Apply or not.
    for (ToolColor& entry : toolColors_.Entries)
        entry = {};
}

void frmProperties::cmdProperties_Click(int index)
{
    try {
        switch (index) {
        case 0:
            accept();
            break;
        case 1:
            reject();
            break;
        default:
            cmdProperties_[0]->setEnabled(true);
            cmdProperties_[1]->setEnabled(false);
            cmdProperties_[2]->setEnabled(false);
            // A refused page stays pending, so the user can correct it and apply again.
            if (ApplyChanges(pendingPage_))
                pendingPage_ = NoPage;
            break;
        }
    } catch (const std::exception& error) {
        dialogs_.Message(error.what(), texts::MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
    }
}

void frmProperties::done(int result)
{
    Timer1_->stop();
    pendingPage_ = NoPage;
    QDialog::done(result);
}

} // namespace backplot
