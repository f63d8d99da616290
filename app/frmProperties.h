#pragma once

#include "ImageSurface.h"
#include "Settings.h"
#include "TranslationState.h"
#include "UserDialogs.h"

#include <QDialog>
#include <QStringList>
#include <array>
#include <cstdint>
#include <functional>

class QCheckBox;
class QComboBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QTabWidget;
class QTimer;
class QToolButton;

namespace backplot {

class TKZBrowser;
class TKZColorSelector;

// The properties dialog: five pages of the tab strip `TabProp` that edit the display and
// file settings in memory (the settings store writes them out when the program saves).
//
//   page  caption              key        edits
//   1     "Files"              "Files"    "File Ext", "Work Dir", "Mill"
//   2     "Axis Lines"         "Axis"     "Axis Line" (at the click), "Axis SelectedColor", "Axis Color"
//   3     "Slow Motion"        "SMotion"  "Slow Time"
//   4     "Back Ground Color"  "BackGrd"  "BackcolorSelected", "Backcolor"
//   5     "Tool Color"         "Tools"    "ToolColor" (at the click), the ToolColors table,
//                                         "DefaultSeletedColor", "DefaultColor"
//
// Every edit marks its page as the pending one (PendingPage); "Apply" (`cmdProperties2`)
// applies that page only. "OK" and "Cancel" just close: what is pending is dropped, while
// the line style, the tool-colour tick and Clear All have already taken effect. The
// dialog works on the live objects it is given, which must outlive it.
class frmProperties : public QDialog {
    Q_OBJECT
public:
    static constexpr std::int16_t NoPage = 999;
    static constexpr int ToolRows = ToolColorTable::Size;

    // `translation` gives the tool numbers of the last translation for the list.
    frmProperties(Settings& settings, ToolColorTable& toolColors, const TranslationState& translation,
                  UserDialogs& dialogs, QWidget* parent = nullptr);
    ~frmProperties() override;

    // Runs the dialog modally over `parent` for the Properties command, in this order:
    //   1. the busy pointer (through `dialogs`), which stays while the dialog is open;
    //   2. the dialog, until OK, Cancel or its close button; each Apply of page 1 calls
    //      `machineTypeApplied` with the "Mill" flag just stored;
    //   3. `afterClose`, where the window takes "Backcolor" for its canvas and redraws;
    //   4. the default pointer.
    // No exception leaves it: one that escapes a step is shown in a message box.
    static void ShowModal(Settings& settings, ToolColorTable& toolColors, const TranslationState& translation,
                          UserDialogs& dialogs, QWidget* parent,
                          const std::function<void(bool mill)>& machineTypeApplied,
                          const std::function<void()>& afterClose);

    // Writes page `TabIndex` (1..5) into the settings; other values do nothing. False
    // when the page was refused (a folder that does not exist, a tool number that is not
    // a whole number): a message says why and nothing of that page is written.
    bool ApplyChanges(int TabIndex);
    // Page 5: an empty tool number box becomes "0"; the ten rows go into ToolColors
    // (tool number, QBColor of the selector, the index), then the default line colour.
    // False, with a message and nothing written, when a box is not a tool number.
    bool SetToolColors();
    // Repaints `picCurrent`: a line across it in "Axis Line" style and "Axis Color" on
    // the canvas colour "Backcolor".
    void DrawCurrentLine();

    // The page waiting for Apply, NoPage for none.
    std::int16_t PendingPage() const { return pendingPage_; }
    // What `Timer1` does on each tick: enables Apply while a page is pending.
    void Timer1_Timer();

    // The items of the slow-motion drop-down, in seconds.
    static const QStringList& SlowTimeItems();

signals:
    // Page 1 was applied: the "Mill" flag now stored (the machine type of the next
    // translation and the letters of the coordinate readout).
    void MachineTypeApplied(bool mill);

protected:
    // Every way of closing: stops Timer1 and drops the pending page.
    void done(int result) override;

private:
    // ---- Layout (frmPropertiesLayout.cpp) ----
    QWidget* BuildFilesPage();
    QWidget* BuildAxisPage();
    QWidget* BuildSlowMotionPage();
    QWidget* BuildBackgroundPage();
    QWidget* BuildToolsPage();
    QGroupBox* Frame(const char* name, const QString& caption, QWidget* parent);
    void DrawLineStyleSample(int index);

    // ---- Load and change tracking ----
    void LoadValues();
    void ConnectChangeTracking();
    void MarkPending(int page);
    void ShowPage(int page, QWidget* focus);
    void PaintBackSample(std::uint32_t bgr);

    // ---- Pages ----
    bool ApplyFiles();
    void ApplyAxis();
    void ApplySlowMotion();
    void ApplyBackground();

    // ---- Handlers ----
    void picLineStyle_Click(int index);
    void clrBack_Change(int index);
    void chkToolColor_Click(bool checked);
    void cmdClear_Click();
    void cmdProperties_Click(int index);

    Settings& settings_;
    ToolColorTable& toolColors_;
    const TranslationState& translation_;
    UserDialogs& dialogs_;

    std::int16_t pendingPage_ = NoPage;
    bool quiet_ = true; // programmatic changes (load, apply) mark no page
    ImageSurface currentSurface_;

    QTabWidget* TabProp_ = nullptr;
    QTimer* Timer1_ = nullptr;
    // Files
    QLineEdit* txtExt_ = nullptr;
    QLineEdit* txtCurrentDir_ = nullptr;
    TKZBrowser* TKZBrowser1_ = nullptr;
    std::array<QRadioButton*, 2> chkOpen_{}; // "Mill", "Lathe"
    std::array<QRadioButton*, 2> optPath_{};
    // Axis Lines
    std::array<QToolButton*, 2> picLineStyle_{}; // "Solid", "Dash"
    QLabel* picCurrent_ = nullptr;
    TKZColorSelector* piccolor_ = nullptr;
    // Slow Motion
    QComboBox* cmbSloMo_ = nullptr;
    // Back Ground Color
    TKZColorSelector* clrBack_ = nullptr;
    QFrame* picBColor_ = nullptr;
    // Tool Color
    QCheckBox* chkToolColor_ = nullptr;
    std::array<QLineEdit*, ToolRows> txtToolChangeNumber_{};
    std::array<TKZColorSelector*, ToolRows> clrToolChange_{};
    TKZColorSelector* clrDefaultColor_ = nullptr;
    QListWidget* lstToolChanges_ = nullptr;
    QPushButton* cmdClear_ = nullptr;
    // "OK", "Cancel", "Apply"
    std::array<QPushButton*, 3> cmdProperties_{};
};

} // namespace backplot
