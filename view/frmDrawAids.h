#pragma once

#include "Settings.h"
#include "UserDialogs.h"

#include <QDialog>
#include <array>
#include <functional>

class QCheckBox;

namespace backplot {

// "Drawing Aids": four switches for the axis lines, the rapid lines, the rapid points and
// the cross hairs. OK applies them to the settings in memory; Cancel applies nothing.
// Cross hairs need Auto Redraw on: ticked while it is off, they are refused with a
// message and the other three switches are still applied.
class frmDrawAids : public QDialog {
    Q_OBJECT
public:
    // `hideCrossHairs` takes the cross-hair lines off the canvas.
    frmDrawAids(Settings& settings, bool autoRedrawOn, UserDialogs& dialogs, std::function<void()> hideCrossHairs,
                QWidget* parent = nullptr);

    // The check boxes, index 0 "Cross Hairs", 1 "Rapid Points", 2 "Rapid Lines", 3 "Axis Lines".
    QCheckBox* chkModes(int index) const { return chkModes_.at(static_cast<std::size_t>(index)); }

    void cmdOK_Click();

protected:
    void showEvent(QShowEvent* event) override;

private:
    Settings& settings_;
    bool autoRedrawOn_;
    UserDialogs& dialogs_;
    std::function<void()> hideCrossHairs_;
    std::array<QCheckBox*, 4> chkModes_{};
};

} // namespace backplot
