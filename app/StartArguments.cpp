#include "StartArguments.h"

#include "BuildInfo.h"
#include "TranslationTexts.h"
#include "UserDialogs.h"
#include "frmBackplot.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>

namespace backplot {

namespace {

constexpr const char* Help = R"(Usage: backplot [PROGRAM]
       backplot --help | --version

Tarvo Backplot draws the tool path of a G-code part program for a mill or a lathe.
With PROGRAM, the window opens it once it is shown, as the Open dialog would.

Options:
  -h, --help   this help
  --version    the name, version and commit of this build
  --           ends the options: a program name after it may start with "-"

Qt's own options (-platform NAME, -style NAME, ...) are passed on to Qt.
Only one copy runs at a time: a second start ends at once, without a word,
and hands PROGRAM to the window that runs, which opens it.
The settings are the Properties of the window; the command-line companion
backplot-cli reads programs without a window.

More: man backplot, and Help Topics in the window.
)";

// Qt's options: QApplication takes them out of the command line itself.
void AddQtOptions(QCommandLineParser& parser)
{
    for (const char* name : {"platform", "platformpluginpath", "platformtheme", "plugin", "qwindowgeometry",
                             "qwindowicon", "qwindowtitle", "session", "display", "geometry", "style", "stylesheet",
                             "title", "qmljsdebugger"}) {
        QCommandLineOption option(QString::fromLatin1(name), QString(), QStringLiteral("value"));
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
    for (const char* name : {"reverse", "widgetcount", "nograb", "dograb", "sync"}) {
        QCommandLineOption option(QString::fromLatin1(name));
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
}

StartArguments UsageError(const QString& text)
{
    StartArguments result;
    result.What = StartArguments::Kind::UsageError;
    result.Text = text;
    return result;
}

} // namespace

StartArguments StartArguments::Parse(const QStringList& arguments, const QString& currentFolder)
{
    QCommandLineParser parser;
    // "-platform offscreen" is one of Qt's; "-h" stays the short help.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption version(QStringLiteral("version"));
    parser.addOption(help);
    parser.addOption(version);
    AddQtOptions(parser);
    if (!parser.parse(arguments))
        return UsageError(parser.errorText().replace(QLatin1String("Unknown option"), QLatin1String("unknown option")));

    StartArguments result;
    if (parser.isSet(help)) {
        result.What = Kind::Help;
        result.Text = QString::fromLatin1(Help);
        return result;
    }
    if (parser.isSet(version)) {
        result.What = Kind::Version;
        result.Text = QStringLiteral("backplot %1").arg(QString::fromLatin1(BuildVersion));
        if (*BuildCommit)
            result.Text += QStringLiteral(" (commit %1)").arg(QString::fromLatin1(BuildCommit));
        result.Text += QLatin1Char('\n');
        return result;
    }
    const QStringList paths = parser.positionalArguments();
    if (paths.size() > 1)
        return UsageError(QStringLiteral("give at most one program file, not %1").arg(paths.size()));
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
            target->dialogs().Message(MissingMessage(path), texts::MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
            return;
        }
        target->OpenPath(path.toStdString());
    });
}

} // namespace backplot
