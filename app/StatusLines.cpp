#include "StatusLines.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace backplot {

namespace {

QLabel* StatusLabel(const char* name, const QString& role, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    // A screen reader reads the label's text as its name; what the label is for goes in
    // the description, so the text is never hidden behind a fixed name.
    label->setAccessibleDescription(role);
    label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::NoTextInteraction);
    return label;
}

} // namespace

StatusLines::StatusLines(QWidget* parent) : QWidget(parent)
{
    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(2);

    picStat1 = new QFrame(this);
    picStat1->setObjectName(QStringLiteral("picStat1"));
    auto* line1 = new QHBoxLayout(picStat1);
    line1->setContentsMargins(0, 0, 0, 0);
    lblComment = StatusLabel("lblComment", QStringLiteral("Status"), picStat1);
    lblComment->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    line1->addWidget(lblComment, 1);

    picStat2 = new QFrame(this);
    picStat2->setObjectName(QStringLiteral("picStat2"));
    auto* line2 = new QHBoxLayout(picStat2);
    line2->setContentsMargins(0, 0, 0, 0);
    line2->setSpacing(2);
    lblCode = StatusLabel("lblCode", QStringLiteral("Code"), picStat2);
    lblCode->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblXPos = StatusLabel("lblXPos", QStringLiteral("Horizontal position"), picStat2);
    lblYPos = StatusLabel("lblYPos", QStringLiteral("Vertical position"), picStat2);
    // Room for the widest readout, so the labels do not jump as the mouse moves.
    const int readout = lblXPos->fontMetrics().horizontalAdvance(QStringLiteral(" X -00000.000000 ")) +
                        2 * lblXPos->frameWidth() + 2 * lblXPos->margin();
    lblXPos->setMinimumWidth(readout);
    lblYPos->setMinimumWidth(readout);
    line2->addWidget(lblCode, 1);
    line2->addWidget(lblXPos);
    line2->addWidget(lblYPos);

    lines->addWidget(picStat1);
    lines->addWidget(picStat2);
}

void StatusLines::ShowBoth()
{
    picStat1->show();
    picStat2->show();
}

} // namespace backplot
