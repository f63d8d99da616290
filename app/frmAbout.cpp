#include "frmAbout.h"

#include "AppTexts.h"
#include "BuildInfo.h"
#include "Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace backplot {

frmAbout::frmAbout(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(texts::AboutCaption);
    setModal(true);

    imgLogo_ = new QLabel(this);
    imgLogo_->setObjectName(QStringLiteral("imgLogo"));
    imgLogo_->setAccessibleName(QStringLiteral("Tarvo Backplot logo"));
    // Drawn at the screen's density so the logo stays sharp on high-density screens.
    const qreal ratio = devicePixelRatioF();
    QPixmap logo = Icons::Logo(qRound(64 * ratio));
    logo.setDevicePixelRatio(ratio);
    imgLogo_->setPixmap(logo);
    imgLogo_->setAlignment(Qt::AlignTop);

    lblTitle_ = new QLabel(texts::AboutTitleLine, this);
    lblTitle_->setObjectName(QStringLiteral("lblTitle"));
    QFont titleFont = lblTitle_->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.4);
    titleFont.setBold(true);
    lblTitle_->setFont(titleFont);

    lblDescription_ = new QLabel(QStringLiteral("Backplot viewer for CNC part programs.\n"
                                                "Draws the tool path of milling and lathe G-code,\n"
                                                "steps through it block by block and exports it\n"
                                                "as a DXF drawing or a bitmap."),
                                 this);
    lblDescription_->setObjectName(QStringLiteral("lblDescription"));

    lblVersion_ = new QLabel(VersionLine(QString::fromLatin1(BuildVersion), QString::fromLatin1(BuildCommit)), this);
    lblVersion_->setObjectName(QStringLiteral("lblVersion"));
    lblQtVersion_ = new QLabel(QStringLiteral("Qt ") + QString::fromLatin1(qVersion()), this);
    lblQtVersion_->setObjectName(QStringLiteral("lblQtVersion"));
    lblLicence_ = new QLabel(QStringLiteral("GNU General Public License, version 3 or later"), this);
    lblLicence_->setObjectName(QStringLiteral("lblLicence"));
    for (QLabel* label : {lblVersion_, lblQtVersion_, lblLicence_})
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);

    cmdOK_ = new QPushButton(texts::AboutOk, this);
    cmdOK_->setObjectName(QStringLiteral("cmdOK"));
    cmdOK_->setDefault(true);
    connect(cmdOK_, &QPushButton::clicked, this, &frmAbout::cmdOK_Click);

    auto* text = new QVBoxLayout;
    text->addWidget(lblTitle_);
    text->addSpacing(6);
    text->addWidget(lblDescription_);
    text->addSpacing(6);
    text->addWidget(lblVersion_);
    text->addWidget(lblQtVersion_);
    text->addWidget(lblLicence_);
    text->addStretch(1);

    auto* top = new QHBoxLayout;
    top->addWidget(imgLogo_);
    top->addSpacing(12);
    top->addLayout(text, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK_);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addSpacing(12);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QString frmAbout::VersionLine(const QString& version, const QString& commit)
{
    QString line = QStringLiteral("Version ") + version;
    if (!commit.isEmpty())
        line += QStringLiteral(" (commit ") + commit + QLatin1Char(')');
    return line;
}

void frmAbout::cmdOK_Click() { accept(); }

} // namespace backplot
