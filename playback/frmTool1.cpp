#include "frmTool1.h"

#include "PartialPlots.h"
#include "PlaybackTexts.h"
#include "TranslationTexts.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <optional>

namespace backplot {

frmTool1::frmTool1(QWidget* parent, std::int16_t& firstTool, std::int16_t& secondTool, bool& cancelled,
                   UserDialogs& dialogs)
    : QDialog(parent), firstTool_(firstTool), secondTool_(secondTool), cancelled_(cancelled), dialogs_(dialogs)
{
    setObjectName(QStringLiteral("frmTool1"));
    setWindowTitle(texts::ToolToToolCaption);
    setModal(true);

    txtTool1_ = new QLineEdit(QString::number(firstTool), this);
    txtTool1_->setObjectName(QStringLiteral("txtTool1"));
    txtTool1_->setAccessibleName(QStringLiteral("Tool number one"));
    txtTool2_ = new QLineEdit(QString::number(secondTool), this);
    txtTool2_->setObjectName(QStringLiteral("txtTool2"));
    txtTool2_->setAccessibleName(QStringLiteral("Tool number two"));
    lblTool1_ = new QLabel(texts::ToolToToolFirst, this);
    lblTool1_->setObjectName(QStringLiteral("lblTool1"));
    lblTool1_->setBuddy(txtTool1_);
    lblTool2_ = new QLabel(texts::ToolToToolSecond, this);
    lblTool2_->setObjectName(QStringLiteral("lblTool2"));
    lblTool2_->setBuddy(txtTool2_);
    for (QLineEdit* box : {txtTool1_, txtTool2_}) {
        box->installEventFilter(this);
        box->setMaxLength(20);
    }

    cmdOk_ = new QPushButton(texts::ToolToToolOk, this);
    cmdOk_->setObjectName(QStringLiteral("cmdOk"));
    cmdOk_->setAccessibleName(QStringLiteral("OK"));
    cmdOk_->setDefault(true);
    cmdCancel_ = new QPushButton(texts::ToolToToolCancel, this);
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel_->setAccessibleName(QStringLiteral("Cancel"));
    connect(cmdOk_, &QPushButton::clicked, this, &frmTool1::cmdOk_Click);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmTool1::cmdCancel_Click);

    auto* fields = new QGridLayout;
    fields->addWidget(lblTool1_, 0, 0);
    fields->addWidget(txtTool1_, 0, 1);
    fields->addWidget(lblTool2_, 1, 0);
    fields->addWidget(txtTool2_, 1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOk_);
    buttons->addWidget(cmdCancel_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    setTabOrder(txtTool1_, txtTool2_);
    setTabOrder(txtTool2_, cmdOk_);
    setTabOrder(cmdOk_, cmdCancel_);
    txtTool1_->setFocus();
}

void frmTool1::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (const QWidget* main = parentWidget()) {
        QRect frame = frameGeometry();
        frame.moveCenter(main->frameGeometry().center());
        move(frame.topLeft());
    }
}

bool frmTool1::eventFilter(QObject* watched, QEvent* event)
{
    auto* box = qobject_cast<QLineEdit*>(watched);
    if (box && event->type() == QEvent::FocusIn) {
        // A mouse click places the cursor after the focus arrives, so the selection is
        // made once that click is done.
        QTimer::singleShot(0, box, &QLineEdit::selectAll);
        box->selectAll();
    }
    if (box == txtTool1_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            txtTool2_->setFocus(Qt::TabFocusReason);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmTool1::cmdOk_Click()
{
    // Both boxes are checked before either value is stored.
    std::optional<std::int16_t> values[2];
    QLineEdit* const boxes[2] = {txtTool1_, txtTool2_};
    for (int i = 0; i < 2; ++i) {
        const std::string text = boxes[i]->text().toStdString();
        if (text.empty())
            continue;
        ConversionFault fault = ConversionFault::None;
        values[i] = ConvertedInt16(text, fault);
        if (!values[i]) {
            dialogs_.Message(PartialPlots::ToolNumberFaultMessage(text, fault), texts::MessageTitle, MsgIcon::Exclamation,
                             MsgButtons::Ok);
            boxes[i]->setFocus(Qt::OtherFocusReason);
            boxes[i]->selectAll();
            return;
        }
    }
    if (values[0])
        firstTool_ = *values[0];
    if (values[1])
        secondTool_ = *values[1];
    accept();
}

void frmTool1::cmdCancel_Click() { reject(); }

void frmTool1::reject()
{
    cancelled_ = true;
    QDialog::reject();
}

} // namespace backplot
