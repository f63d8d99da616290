#pragma once

#include <QString>
#include <QStringList>
#include <string>

namespace backplot {

class frmBackplot;

// The command line of the program: at most one program file, which the window opens once
// it is shown, as if it had been chosen in the open dialog. Desktops pass the file of
// "Open With" this way.
struct StartArguments {
    QString ProgramPath; // absolute; empty when none was given
    QString Error;       // what is wrong with the command line; empty when it is fine

    // `arguments` without the program's own name, after QApplication has taken its own
    // options out. A relative path is taken from `currentFolder`; a file:// URL is taken
    // as its local path; "--" makes the next argument a path even if it starts with "-".
    static StartArguments Parse(const QStringList& arguments, const QString& currentFolder);

    static const char* const Usage;

    // Opens ProgramPath in `window` when the event loop next runs, so the window is on the
    // screen first. A path that is not a file gets a message box (title "Corvane
    // Backplot") and nothing is opened. Without a path nothing happens.
    void OpenWhenShown(frmBackplot& window) const;

    // The message for a program file that is not there.
    static std::string MissingMessage(const QString& path);
};

} // namespace backplot
