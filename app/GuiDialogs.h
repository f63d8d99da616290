#pragma once

#include "UserDialogs.h"

#include <QPointer>
#include <QWidget>

namespace backplot {

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

    // The filter reads `filterDescription` followed by `filterPattern` in parentheses,
    // as "*.nc (*.nc)"; blanks around both are dropped.
    std::optional<std::string> OpenFileName(const std::string& title, const std::string& initialDir,
                                            const std::string& filterDescription,
                                            const std::string& filterPattern) override;

    // The hourglass is an application-wide override cursor; setting it twice or the
    // default twice changes nothing, so overrides never pile up.
    void SetPointer(MousePointer pointer) override;
    MousePointer Pointer() const { return pointer_; }

private:
    QPointer<QWidget> parent_;
    MousePointer pointer_ = MousePointer::Default;
};

} // namespace backplot
