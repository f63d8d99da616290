#include "frmDrawAids.h"

#include "TranslationTexts.h"
#include "ViewTexts.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace backplot {

namespace {

enum Mode { CrossHairs = 0, RapidPoints = 1, RapidLines = 2, AxisLines = 3 }; // as texts::DrawAidsModeCaptions

} // namespace

frmDrawAids::frmDrawAids(Settings& settings, bool autoRedrawOn, UserDialogs& dialogs,
                         std::function<void()> hideCrossHairs, QWidget* parent)
    : QDialog(parent), settings_(settings), autoRedrawOn_(autoRedrawOn), dialogs_(dialogs),
      hideCrossHairs_(std::move(hideCrossHairs))
{
    setObjectName(QStringLiteral("frmDrawAids"));
    setWindowTitle(texts::DrawAidsCaption);

    auto* modes = new QGroupBox(texts::DrawAidsModes, this);
    modes->setObjectName(QStringLiteral("fraModes"));
    auto* modeList = new QVBoxLayout(modes);
    for (int i = 0; i < 4; ++i) {
        auto* box = new QCheckBox(texts::DrawAidsModeCaptions[i], modes);
        box->setObjectName(QStringLiteral("chkModes%1").arg(i));
        modeList->addWidget(box);
        chkModes_[static_cast<std::size_t>(i)] = box;
    }
    // The grid of the classic dialog was never drawn; its inert frame is left out
    // rather than offering switches that do nothing.

    auto* ok = new QPushButton(texts::DrawAidsOk, this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(texts::DrawAidsCancel, this);
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
            dialogs_.Message(texts::SetAutoRedrawOn, texts::MessageTitle, MsgIcon::None, MsgButtons::Ok);
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
