#include "StartArguments.h"

#include "UserDialogs.h"
#include "frmBackplot.h"

#include <QDir>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>

namespace backplot {

const char* const StartArguments::Usage = "usage: backplot [PROGRAM]\n";

StartArguments StartArguments::Parse(const QStringList& arguments, const QString& currentFolder)
{
    StartArguments result;
    QStringList paths;
    bool optionsEnded = false;
    for (const QString& argument : arguments) {
        if (!optionsEnded && argument == QLatin1String("--")) {
            optionsEnded = true;
            continue;
        }
        if (!optionsEnded && argument.startsWith(QLatin1Char('-')) && argument != QLatin1String("-")) {
            result.Error = QStringLiteral("unknown option '%1'").arg(argument);
            return result;
        }
        paths << argument;
    }
    if (paths.size() > 1) {
        result.Error = QStringLiteral("give at most one program file, not %1").arg(paths.size());
        return result;
    }
    if (paths.isEmpty())
        return result;

    QString path = paths.front();
    const QUrl url(path);
    if (url.isLocalFile())
        path = url.toLocalFile();
    result.ProgramPath = QDir::cleanPath(QDir(currentFolder).absoluteFilePath(path));
    return result;
}

std::string StartArguments::MissingMessage(const QString& path)
{
    return "The program file " + path.toStdString() + " cannot be opened: there is no such file.";
}

void StartArguments::OpenWhenShown(frmBackplot& window) const
{
    if (ProgramPath.isEmpty())
        return;
    const QString path = ProgramPath;
    frmBackplot* target = &window;
    // The window is the timer's context: gone with the window, the call is dropped.
    QTimer::singleShot(0, &window, [target, path] {
        if (!QFileInfo(path).isFile()) {
            target->dialogs().Message(MissingMessage(path), "Corvane Backplot", MsgIcon::Critical, MsgButtons::Ok);
            return;
        }
        target->OpenFileAtStart(path.toStdString());
    });
}

} // namespace backplot
