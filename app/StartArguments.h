#pragma once

#include <QString>
#include <QStringList>
#include <string>

namespace backplot {

class frmBackplot;

// The command line of the program: at most one program file, which the window opens once
// it is shown, as if it had been chosen in the open dialog (desktops pass the file of
// "Open With" this way), or --help or --version. It is read before anything needs a
// display, so those two work without one, and before the single-instance rule.
struct StartArguments {
    enum class Kind { Open, Help, Version, UsageError };
    Kind What = Kind::Open;
    QString ProgramPath; // absolute; empty when none was given
    QString Text;        // the help or version text, or the usage error (one line, no line end)

    // `arguments` as main() got them, the program's name first. Qt's own options
    // (-platform NAME, -style NAME, ...) are let through for QApplication. A relative path is
    // taken from `currentFolder`; a file:// URL is taken as its local path; "--" makes the
    // next argument a path even if it starts with "-".
    static StartArguments Parse(const QStringList& arguments, const QString& currentFolder);

    // Opens ProgramPath in `window` when the event loop next runs, so the window is on the
    // screen first. A path that is not a file gets a message box (title "Corvane
    // Backplot") and nothing is opened. Without a path nothing happens.
    void OpenWhenShown(frmBackplot& window) const;

    // The message for a program file that is not there.
    static std::string MissingMessage(const QString& path);
};

} // namespace backplot
