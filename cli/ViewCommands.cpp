#include "CliSession.h"
#include "ImageSurface.h"
#include "NumberFormat.h"
#include "Plotter.h"
#include "RecordFile.h"
#include "RunTimeError.h"
#include "ScaleSurface.h"

#include <QImage>
#include <QString>
#include <charconv>
#include <ostream>

namespace backplot {

namespace {

Plotter MakePlotter(CliSession& session)
{
    Translator& t = session.Translation();
    return Plotter(session.Config(), t.ToolColors(), t.State(), session.Playback(), t.Record(), session.Dialogs(),
                   session.Events(), [&t] { return t.RecordFilePath(); });
}

void ReportFailure(CliSession& session, const char* what, const RunTimeError& e)
{
    session.Dialogs().Message(std::string(what) + e.what(), "Corvane Backplot", MsgIcon::Critical, MsgButtons::Ok);
}

// Single block steps from the opened picture: the canvas is cleared to the axis, then
// each step draws the next record over what is there.
void Step(CliSession& session, Plotter& plotter, DrawSurface& canvas, int steps)
{
    plotter.SetCoords(canvas);
    plotter.PlotLast = 0;
    canvas.Clear();
    plotter.DrawAxis(canvas);
    session.Playback().StepMode = true;

    RecordFileReader reader;
    reader.Open(session.Translation().RecordFilePath());
    EntityRecord& record = session.Translation().Record();
    for (int i = 0; i < steps; ++i) {
        CheckedIncrement(plotter.PlotLast);
        if (plotter.PlotLast > plotter.RecordTotal) {
            // Past the end stepping stops silently; the picture stays.
            plotter.PlotLast = 1;
            plotter.CurTool = 0;
            session.Playback().StepMode = false;
            break;
        }
        reader.Read(plotter.PlotLast, record);
        plotter.ChooseColor(record.ToolNum);
        plotter.DrawEntity(canvas);
    }
}

} // namespace

int RunExtents(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const CliOptions& o = session.Options();
    // The extents pass only sets the scale: no picture is needed for it.
    ScaleSurface canvas(o.Width, o.Height);
    Plotter plotter = MakePlotter(session);
    try {
        plotter.ComputeExtents(canvas);
    } catch (const RunTimeError& e) {
        ReportFailure(session, "The extents pass failed: ", e);
    }
    const ViewTransform& v = plotter.View;
    std::ostream& out = session.Out();
    out << "RecordTotal " << plotter.RecordTotal << '\n'
        << "Extents " << FloatText(v.MinX) << ' ' << FloatText(v.MinY) << ' ' << FloatText(v.MaxX) << ' '
        << FloatText(v.MaxY) << '\n'
        << "Scale " << FloatText(canvas.ScaleLeft()) << ' ' << FloatText(canvas.ScaleTop()) << ' '
        << FloatText(canvas.ScaleWidth()) << ' ' << FloatText(canvas.ScaleHeight()) << '\n'
        << "FitSpan " << FloatText(v.FitSpan) << '\n'
        << "BlipSize " << FloatText(v.BlipSize) << '\n'
        << "TwoPixelSpan " << FloatText(v.TwoPixelSpan) << '\n';
    return session.ExitCode();
}

int RunRender(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const CliOptions& o = session.Options();
    ImageSurface canvas(o.Width, o.Height, static_cast<std::uint32_t>(session.Config().Backcolor));
    Plotter plotter = MakePlotter(session);
    try {
        plotter.ExtentsWithMargin(canvas);
        plotter.GetRecords(canvas);
        if (o.Steps)
            Step(session, plotter, canvas, *o.Steps);
        if (o.ZoomExtents) {
            session.Playback().StepMode = false;
            if (session.Config().AutoDraw)
                canvas.Clear();
            plotter.ExtentsWithMargin(canvas);
            plotter.GetRecords(canvas);
        }
    } catch (const RunTimeError& e) {
        ReportFailure(session, "The plot failed: ", e);
    }

    const std::string& path = o.Output;
    const bool png = path.size() >= 4 && (path.ends_with(".png") || path.ends_with(".PNG"));
    if (!canvas.VisibleImage().save(QString::fromStdString(path), png ? "PNG" : "BMP")) {
        session.Err() << "backplot-cli: cannot write " << path << '\n';
        return 1;
    }
    return session.ExitCode();
}

} // namespace backplot

namespace backplot {

// Not built yet: the command is parsed so that its options are checked, but it does nothing.
int RunView(CliSession& session)
{
    session.Err() << "backplot-cli: view is not available in this build yet\n";
    return 1;
}

} // namespace backplot
