#pragma once

#include "EntityRecord.h"

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

class QPlainTextEdit;
class QPushButton;

namespace backplot {

// The "Details" window of "Step &Details": the step details report (DetailsReport) in a
// fixed-pitch, read-only, selectable text box `txtReport`, and the button `Command1`
// ("&OK"), which closes the window and then runs the OK handler (the main window's
// ReDraw). Modeless. The report is a snapshot: later steps do not refresh it.
class frmDetails : public QDialog {
    Q_OBJECT
public:
    explicit frmDetails(QWidget* mainWindow);

    // The whole "Step &Details" command: finds the main window's open "Details" window or
    // makes one (it deletes itself when closed), writes the report of `record` into it,
    // sets `onOk` as its OK handler and shows it (centred over `mainWindow` the first time),
    // raised and active. Returns the window.
    static frmDetails* ShowReport(QWidget* mainWindow, const EntityRecord& record, bool mill,
                                  std::function<void()> onOk);

    // Replaces the text by these lines.
    void SetReport(const std::vector<std::string>& lines);
    // The text as shown, lines joined by "\n".
    QString ReportText() const;
    // Runs after the window has closed through "&OK"; closing it any other way does not.
    void SetOkHandler(std::function<void()> handler) { onOk_ = std::move(handler); }
    // Places the window's centre over the main window's centre.
    void CentreOverMainWindow();

protected:
    // The first showing centres the window over the main window.
    void showEvent(QShowEvent* event) override;

private:
    void Command1_Click();

    QPlainTextEdit* txtReport_ = nullptr;
    QPushButton* Command1_ = nullptr;
    std::function<void()> onOk_;
    bool placed_ = false;
};

} // namespace backplot
