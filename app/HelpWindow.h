#pragma once

#include <QWidget>
#include <string>

class QTextBrowser;
class QToolButton;

namespace backplot {

class UserDialogs;

// The user guide in a window of its own (`frmHelp`, caption "Tarvo Backplot Help"): a
// browser (`txtHelp`) showing the guide's HTML pages with their links, and the buttons
// `cmdBack`, `cmdForward` and `cmdHome` (the contents page). It is modeless and stays
// beside its owner; an owner has at most one.
class HelpWindow : public QWidget {
    Q_OBJECT
public:
    // Shows the help at its contents page `indexPath`: the owner's help window when it has
    // one (back at the contents page and raised), else a new one. When `indexPath` is not a
    // file, only a message box (title "Corvane Backplot") says so through `dialogs`, and the
    // result is null.
    static HelpWindow* ShowContents(QWidget& owner, UserDialogs& dialogs, const QString& indexPath);

    // The message shown for a missing contents page.
    static std::string MissingMessage(const QString& indexPath);

    QTextBrowser* browser() const { return txtHelp_; }

private:
    HelpWindow(QWidget& owner, const QString& indexPath);

    QTextBrowser* txtHelp_ = nullptr;
    QToolButton* cmdBack_ = nullptr;
    QToolButton* cmdForward_ = nullptr;
    QToolButton* cmdHome_ = nullptr;
};

} // namespace backplot
