#pragma once

#include "UserDialogs.h"

#include <QDialog>
#include <cstdint>

class QLabel;
class QLineEdit;
class QPushButton;

namespace backplot {

// "Plot Tool to Tool": asks for the two tool-change numbers of the tool-to-tool plot.
// Boxes `txtTool1` and `txtTool2` under the labels "Enter tool number one:" and "Enter
// tool number two:", buttons `cmdOk` ("&OK", the default) and `cmdCancel` ("Cancel").
//
// On show it is centred over its parent and the boxes hold firstTool and secondTool.
// Entering a box selects its whole text; Enter in the first box moves to the second.
// "&OK" stores each non-empty box as a 16-bit whole number into firstTool or secondTool
// (an empty box keeps the stored value) and closes; a box that is no such number shows a
// message through `dialogs`, stores nothing and keeps the dialog open on that box.
// "Cancel" (also Esc and the close button) sets `cancelled` and closes.
class frmTool1 : public QDialog {
    Q_OBJECT
public:
    frmTool1(QWidget* parent, std::int16_t& firstTool, std::int16_t& secondTool, bool& cancelled,
             UserDialogs& dialogs);

    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void cmdOk_Click();
    void cmdCancel_Click();

    std::int16_t& firstTool_;
    std::int16_t& secondTool_;
    bool& cancelled_;
    UserDialogs& dialogs_;

    QLabel* lblTool1_ = nullptr;
    QLabel* lblTool2_ = nullptr;
    QLineEdit* txtTool1_ = nullptr;
    QLineEdit* txtTool2_ = nullptr;
    QPushButton* cmdOk_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
};

} // namespace backplot
