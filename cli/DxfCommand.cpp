#include "CliSession.h"
#include "DxfExport.h"
#include "Plotter.h"
#include "RunTimeError.h"
#include "ScaleSurface.h"

#include <ostream>

namespace backplot {

// The DXF the window writes right after opening the program on a canvas of --size: the
// header carries that canvas's scale, the entities come from the re-run of the blocks.
// "-" writes it to stdout; any other name is used as given.
int RunDxf(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const CliOptions& o = session.Options();
    Translator& t = session.Translation();

    // Only the scale of the opened view is needed: no picture.
    ScaleSurface canvas(o.Width, o.Height);
    Plotter plotter = session.MakePlotter();
    session.OpenView(plotter, canvas);

    const DxfCanvasScale scale{canvas.ScaleLeft(), canvas.ScaleTop(), canvas.ScaleWidth(), canvas.ScaleHeight()};
    DxfExport exporter(t, session.Dialogs());
    if (o.Output == "-") {
        session.Out() << exporter.Document(scale);
        return session.ExitCode();
    }
    std::string error;
    if (!exporter.ExportTo(o.Output, scale, error)) {
        session.Err() << "backplot-cli: " << error << '\n';
        return 1;
    }
    return session.ExitCode();
}

} // namespace backplot
