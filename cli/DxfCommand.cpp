#include "CliSession.h"
#include "DxfExport.h"
#include "Plotter.h"
#include "RunTimeError.h"
#include "ScaleSurface.h"

#include <ostream>

namespace backplot {

// The DXF the window writes right after opening the program on a canvas of --size: the
// header carries that canvas's scale, the entities come from the re-run of the blocks.
int RunDxf(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const CliOptions& o = session.Options();
    Translator& t = session.Translation();

    // Only the scale of the opened view is needed: no picture.
    ScaleSurface canvas(o.Width, o.Height);
    Plotter plotter(session.Config(), t.ToolColors(), t.State(), session.Playback(), t.Record(), session.Dialogs(),
                    session.Events(), [&t] { return t.RecordFilePath(); });
    try {
        plotter.ExtentsWithMargin(canvas);
    } catch (const RunTimeError& e) {
        session.Dialogs().Message(std::string("The extents pass failed: ") + e.what(), "Corvane Backplot",
                                  MsgIcon::Critical, MsgButtons::Ok);
    }

    const DxfCanvasScale scale{canvas.ScaleLeft(), canvas.ScaleTop(), canvas.ScaleWidth(), canvas.ScaleHeight()};
    DxfExport exporter(t, session.Dialogs());
    std::string error;
    if (!exporter.ExportTo(o.Output, scale, error)) {
        session.Err() << "backplot-cli: " << error << '\n';
        return 1;
    }
    return session.ExitCode();
}

} // namespace backplot
