#include "frmDrawAids.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace backplot {

namespace {

enum Mode { CrossHairs = 0, RapidPoints = 1, RapidLines = 2, AxisLines = 3 };
constexpr const char* ModeCaptions[] = {"Cross Hairs", "Rapid Points", "Rapid Lines", "Axis Lines"};

} // namespace

frmDrawAids::frmDrawAids(Settings& settings, bool autoRedrawOn, UserDialogs& dialogs,
                         std::function<void()> hideCrossHairs, QWidget* parent)
    : QDialog(parent), settings_(settings), autoRedrawOn_(autoRedrawOn), dialogs_(dialogs),
      hideCrossHairs_(std::move(hideCrossHairs))
{
    setObjectName(QStringLiteral("frmDrawAids"));
    setWindowTitle(QStringLiteral("Drawing Aids"));

    auto* modes = new QGroupBox(QStringLiteral("&Modes"), this);
    modes->setObjectName(QStringLiteral("fraModes"));
    auto* modeList = new QVBoxLayout(modes);
    for (int i = 0; i < 4; ++i) {
        auto* box = new QCheckBox(QString::fromLatin1(ModeCaptions[i]), modes);
        box->setObjectName(QStringLiteral("chkModes%1").arg(i));
        modeList->addWidget(box);
        chkModes_[static_cast<std::size_t>(i)] = box;
    }
    // The grid of the classic dialog was never drawn; its inert frame is left out
    // rather than offering switches that do nothing.

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(cancel, QDialogButtonBox::RejectRole);
    connect(ok, &QPushButton::clicked, this, &frmDrawAids::cmdOK_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(modes);
    layout->addWidget(buttons);

    chkModes_[CrossHairs]->setChecked(settings_.CrossHairs);
    chkModes_[RapidPoints]->setChecked(settings_.ShowBlips);
    chkModes_[RapidLines]->setChecked(settings_.ShowRapid);
    chkModes_[AxisLines]->setChecked(settings_.ShowAxis);
}

void frmDrawAids::showEvent(QShowEvent* event)
{
    // Centred over the main window.
    if (QWidget* owner = parentWidget()) {
        adjustSize();
        move(owner->geometry().center() - rect().center());
    }
    QDialog::showEvent(event);
}

void frmDrawAids::cmdOK_Click()
{
    settings_.ShowAxis = chkModes_[AxisLines]->isChecked();
    settings_.ShowRapid = chkModes_[RapidLines]->isChecked();
    settings_.ShowBlips = chkModes_[RapidPoints]->isChecked();
    // Cross hairs are overlays that only stay right while the canvas keeps its picture.
    if (chkModes_[CrossHairs]->isChecked()) {
        if (!autoRedrawOn_)
            dialogs_.Message("Please set AutoRedraw to on before using this option.", "Corvane Backplot",
                             MsgIcon::None, MsgButtons::Ok);
        else
            settings_.CrossHairs = true;
    } else {
        settings_.CrossHairs = false;
        if (hideCrossHairs_)
            hideCrossHairs_();
    }
    accept();
}

} // namespace backplot
