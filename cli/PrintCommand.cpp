#include "CliSession.h"
#include "DrawCommands.h"
#include "OutputCommands.h"
#include "Plotter.h"
#include "RunTimeError.h"
#include "ScaleSurface.h"
#include "ScratchFolder.h"

#include <QGuiApplication>
#include <QString>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>

namespace backplot {

namespace {

// Qt's own notes (a missing runtime folder, font set-up) are not the tool's messages;
// only its critical ones reach stderr.
void QuietQt(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "backplot-cli: %s\n", qPrintable(text));
}

// Qt wants a runtime folder; without one of the session's it makes its own in the
// temporary folder and leaves it there. This one always lies in a scratch folder of the
// run, whatever the data folder, so it goes with it however the command ends. Qt's
// temporary folder is that scratch folder too: should a signal remove it while Qt is still
// starting, Qt's fall-back runtime folder then has no place to be made in either.
class RuntimeFolder {
public:
    RuntimeFolder()
    {
        if (scratch_.Path().empty())
            return;
        const std::filesystem::path path = scratch_.Path() / "qt-runtime";
        std::error_code ec;
        std::filesystem::create_directory(path, ec);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all, ec);
        if (ec)
            return;
        qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(path.string()));
        qputenv("TMPDIR", QByteArray::fromStdString(scratch_.Path().string()));
    }

private:
    ScratchFolder scratch_;
};

// The printer needs an application object; the tool has no display, so it gets one of
// the offscreen platform for the length of the command.
std::unique_ptr<QGuiApplication> MakeApplication()
{
    if (QCoreApplication::instance())
        return nullptr;
    qInstallMessageHandler(QuietQt);
    static int argc = 1;
    static char name[] = "backplot-cli";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

std::shared_ptr<void> StartPages(const std::string& /*dataFolder*/)
{
    struct Pages {
        Pages() : Application(MakeApplication()) {}
        RuntimeFolder Runtime;
        std::unique_ptr<QGuiApplication> Application;
    };
    return std::make_shared<Pages>();
}

namespace {

// The page after opening, to `path` ("-": the standard output).
bool PrintPage(CliSession& session, const std::string& path)
{
    const CliOptions& o = session.Options();
    Translator& t = session.Translation();
    // A batch has made the application object beforehand, in the main thread.
    const std::shared_ptr<void> pages = QCoreApplication::instance() ? nullptr : StartPages(t.DataFolder());

    ScaleSurface canvas(o.Width, o.Height);
    Plotter plotter = session.MakePlotter();
    session.OpenView(plotter, canvas);

    // The printer reads its PDF back to see that it is whole, which a pipe does not allow:
    // the page for the standard output is made in the data folder first.
    const std::string file = path == "-" ? t.DataFolder() + "page.pdf" : path;
    OutputCommands output;
    output.PrintToPdf(QString::fromStdString(file));
    const bool printed = output.Print(plotter, t, session.Config(), session.Dialogs());
    if (path == "-") {
        if (printed) {
            std::ifstream page(file, std::ios::binary);
            session.Out() << page.rdbuf();
        }
        std::remove(file.c_str());
    }
    return printed;
}

} // namespace

// The page the window's print command sends right after opening the program on a canvas
// of --size, written as a PDF file.
int RunPrint(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const std::string& path = session.Options().Output;
    session.Out().flush();
    if (!PrintPage(session, path)) {
        session.Err() << "backplot-cli: no page written to " << path << '\n';
        return 1;
    }
    return session.ExitCode();
}

bool WritePdf(CliSession& session, const std::string& path, std::string& error)
{
    if (PrintPage(session, path))
        return true;
    error = "no page written to " + path;
    return false;
}

} // namespace backplot
