#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace backplot {

// The About box: logo, title line "Tarvo Backplot V5.0", a few lines about the program
// and "&OK" (`cmdOK`), which closes it.
class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);

private:
    void cmdOK_Click();

    QLabel* imgLogo_ = nullptr;
    QLabel* lblTitle_ = nullptr;
    QLabel* lblDescription_ = nullptr;
    QPushButton* cmdOK_ = nullptr;
};

} // namespace backplot
