#pragma once

#include "UserDialogs.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

class QPrinter;

namespace backplot {

// The patterns a file dialog matches for one pattern text of the settings: ";" separates
// several patterns; "*.*" matches every file (on this platform it would hide names
// without a dot, and part programs often have none); a pattern in lower or upper case
// also matches the names in the other case.
QStringList FilterPatterns(const QString& patternText);

// The real dialogs of the window: message boxes, the file-open dialog and the busy
// pointer. Dialogs are modal to `parent` when one is set.
class GuiDialogs : public UserDialogs {
public:
    explicit GuiDialogs(QWidget* parent = nullptr);
    // Gives back the busy pointer if it is still set.
    ~GuiDialogs() override;
    GuiDialogs(const GuiDialogs&) = delete;
    GuiDialogs& operator=(const GuiDialogs&) = delete;

    void SetParent(QWidget* parent) { parent_ = parent; }

    // CR LF and lone CR in `text` become line breaks. The box shows the normal pointer
    // even while the hourglass is up.
    MsgAnswer Message(const std::string& text, const std::string& title, MsgIcon icon,
                      MsgButtons buttons) override;

    // The filter shows `filterDescription` (blanks around it dropped) and matches the
    // FilterPatterns of `filterPattern`.
    std::optional<std::string> OpenFileName(const std::string& title, const std::string& initialDir,
                                            const std::string& filterDescription,
                                            const std::string& filterPattern) override;
    // Each filter shows its description and matches its pattern ("*.dxf"). With
    // fileMustExist a name that is not an existing file is refused with a message and the
    // dialog stays open.
    std::optional<std::string> SaveFileName(const std::string& title, const std::string& initialDir,
                                            const std::vector<FileFilter>& filters,
                                            bool fileMustExist) override;
    std::string TextPrompt(const std::string& prompt, const std::string& title,
                           const std::string& defaultText) override;
    // The page set-up dialog for the printer given with SetPrinter; false without one.
    bool PrinterSetup() override;
    void SetPrinter(QPrinter* printer) { printer_ = printer; }

    // The hourglass is an application-wide override cursor; setting it twice or the
    // default twice changes nothing, so overrides never pile up.
    void SetPointer(MousePointer pointer) override;
    MousePointer Pointer() const { return pointer_; }

private:
    QPointer<QWidget> parent_;
    QPrinter* printer_ = nullptr;
    MousePointer pointer_ = MousePointer::Default;
};

} // namespace backplot
