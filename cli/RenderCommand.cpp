#include "CliSession.h"
#include "DrawCommands.h"
#include "ImageSurface.h"
#include "OutputCommands.h"
#include "Stepper.h"
#include "ViewCommands.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <cctype>
#include <ostream>

namespace backplot {

namespace {

// The format follows the name's extension (checked with the command line); "-", the
// standard output, gets a PNG.
const char* FormatOf(const std::string& path)
{
    std::string tail = path.size() >= 4 ? path.substr(path.size() - 4) : path;
    for (char& c : tail)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return tail == ".bmp" ? "BMP" : "PNG";
}

bool Save(CliSession& session, const QImage& image, const std::string& path, std::string& error)
{
    if (path == "-") {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        session.Out().write(bytes.constData(), bytes.size());
        return true;
    }
    return SaveImageFile(image, path, FormatOf(path), error);
}

} // namespace

int RunRender(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const CliOptions& o = session.Options();
    ImageSurface canvas(o.Width, o.Height, static_cast<std::uint32_t>(session.Config().Backcolor));
    Plotter plotter = session.MakePlotter();
    ViewHost viewHost;
    ViewCommands view(plotter, canvas, session.Config(), session.Playback(), session.Dialogs(), viewHost);
    session.OpenView(plotter, canvas);
    plotter.GetRecords(canvas);
    if (o.Steps) {
        PlaybackHost playbackHost;
        Stepper stepper(plotter, canvas, session.Translation(), session.Playback(), session.Dialogs(), playbackHost);
        // Past the last record stepping ends, as in the window; a further step would
        // start it again from a cleared canvas.
        for (int i = 0; i < *o.Steps && (i == 0 || session.Playback().StepMode); ++i)
            stepper.Step();
    }
    for (const DoCommand& command : o.Do)
        ApplyDoCommand(view, command);
    if (o.ZoomExtents)
        view.ZoomExtents();

    std::string error;
    if (!Save(session, canvas.VisibleImage(), o.Output, error)) {
        session.Err() << "backplot-cli: " << error << '\n';
        return 1;
    }
    return session.ExitCode();
}

bool WritePng(CliSession& session, const std::string& path, std::string& error)
{
    const CliOptions& o = session.Options();
    ImageSurface canvas(o.Width, o.Height, static_cast<std::uint32_t>(session.Config().Backcolor));
    Plotter plotter = session.MakePlotter();
    session.OpenView(plotter, canvas);
    plotter.GetRecords(canvas);
    return Save(session, canvas.VisibleImage(), path, error);
}

} // namespace backplot
