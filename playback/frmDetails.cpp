#include "frmDetails.h"

#include "DetailsReport.h"
#include "FixedPitchFont.h"
#include "PlaybackTexts.h"

#include <QFontMetricsF>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <cmath>

namespace backplot {

namespace {

// Room for the longest line (" CNC code " and 60 characters of block text) and a whole
// arc report without scrolling.
constexpr int ReportColumns = 72;
constexpr int ReportLines = 24;

} // namespace

frmDetails::frmDetails(QWidget* mainWindow) : QDialog(mainWindow)
{
    setObjectName(QStringLiteral("frmDetails"));
    setWindowTitle(texts::DetailsCaption);
    setModal(false);

    txtReport_ = new QPlainTextEdit(this);
    txtReport_->setObjectName(QStringLiteral("txtReport"));
    txtReport_->setAccessibleName(QStringLiteral("Step details report"));
    txtReport_->setReadOnly(true);
    txtReport_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    txtReport_->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtReport_->setFont(FixedPitchFont());
    // Measured on a whole line: character advances are fractional, and rounding one of
    // them would leave the longest line a few pixels short.
    const QFontMetricsF metrics(txtReport_->font());
    const double frame = 2.0 * txtReport_->frameWidth() + 2.0 * txtReport_->document()->documentMargin();
    txtReport_->setMinimumSize(
        static_cast<int>(std::ceil(metrics.horizontalAdvance(QString(ReportColumns, QLatin1Char('0'))) + frame)),
        static_cast<int>(std::ceil(metrics.lineSpacing() * ReportLines + frame)));

    Command1_ = new QPushButton(texts::DetailsOk, this);
    Command1_->setObjectName(QStringLiteral("Command1"));
    Command1_->setAccessibleName(QStringLiteral("OK"));
    Command1_->setDefault(true);
    connect(Command1_, &QPushButton::clicked, this, &frmDetails::Command1_Click);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(Command1_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(txtReport_, 1);
    layout->addLayout(buttons);
}

frmDetails* frmDetails::ShowReport(QWidget* mainWindow, const EntityRecord& record, bool mill,
                                   std::function<void()> onOk)
{
    // A closed window deletes itself later; only a visible one is reused.
    frmDetails* window = nullptr;
    for (frmDetails* open : mainWindow->findChildren<frmDetails*>(QString(), Qt::FindDirectChildrenOnly))
        if (open->isVisible())
            window = open;
    if (!window) {
        window = new frmDetails(mainWindow);
        window->setAttribute(Qt::WA_DeleteOnClose);
    }
    window->SetReport(DetailsReport(record, mill));
    window->SetOkHandler(std::move(onOk));
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

void frmDetails::SetReport(const std::vector<std::string>& lines)
{
    QStringList text;
    for (const std::string& line : lines)
        text.append(QString::fromStdString(line));
    txtReport_->setPlainText(text.join(QLatin1Char('\n')));
}

QString frmDetails::ReportText() const { return txtReport_->toPlainText(); }

void frmDetails::CentreOverMainWindow()
{
    const QWidget* main = parentWidget();
    if (!main)
        return;
    QRect frame = frameGeometry();
    frame.moveCenter(main->frameGeometry().center());
    move(frame.topLeft());
}

void frmDetails::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!placed_) {
        placed_ = true;
        CentreOverMainWindow();
    }
}

void frmDetails::Command1_Click()
{
    const std::function<void()> handler = onOk_;
    close();
    if (!handler)
        return;
    try {
        handler();
    } catch (const std::exception&) {
        // The redraw shows its own messages; nothing may escape into the event loop.
    }
}

} // namespace backplot
