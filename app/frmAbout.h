#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace backplot {

// The About box "About Tarvo Backplot": logo, the title line "Tarvo Backplot V5.0", a few
// lines about the program, the version of this build (`lblVersion`), the Qt version in use
// (`lblQtVersion`), the licence (`lblLicence`) and "&OK" (`cmdOK`), which closes it.
class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);

    // "Version 5.0 (commit 1a2b3c4)", or "Version 5.0" when the commit is not known.
    static QString VersionLine(const QString& version, const QString& commit);

private:
    void cmdOK_Click();

    QLabel* imgLogo_ = nullptr;
    QLabel* lblTitle_ = nullptr;
    QLabel* lblDescription_ = nullptr;
    QLabel* lblVersion_ = nullptr;
    QLabel* lblQtVersion_ = nullptr;
    QLabel* lblLicence_ = nullptr;
    QPushButton* cmdOK_ = nullptr;
};

} // namespace backplot
