#include "CliSession.h"
#include "ImageSurface.h"
#include "NumberFormat.h"
#include "Plotter.h"
#include "RecordFile.h"
#include "RunTimeError.h"
#include "ScaleSurface.h"
#include "Stepper.h"
#include "ViewCommands.h"

#include <QImage>
#include <QString>
#include <charconv>
#include <ostream>

namespace backplot {

namespace {

// Applies one `--do` command as the window's command, menu item or mouse drag would.
void Apply(ViewCommands& view, const DoCommand& command)
{
    using Kind = DoCommand::Kind;
    switch (command.Type) {
    case Kind::Extents:
        return view.ZoomExtents();
    case Kind::In:
        return view.ZoomIn();
    case Kind::Out:
        return view.ZoomOut();
    case Kind::Previous:
        return view.ZoomPrevious();
    case Kind::Redraw:
        return view.Redraw();
    case Kind::PanLeft:
        return view.PanLeft();
    case Kind::PanRight:
        return view.PanRight();
    case Kind::PanUp:
        return view.PanUp();
    case Kind::PanDown:
        return view.PanDown();
    case Kind::Window:
    case Kind::Pan:
        if (command.Type == Kind::Window)
            view.ZoomWindow();
        else
            view.Point();
        view.MouseDown(MouseButton::Left, command.X1, command.Y1);
        view.MouseMove(true, command.X2, command.Y2);
        view.MouseUp(MouseButton::Left, command.X2, command.Y2);
        return;
    }
}

void PrintView(std::ostream& out, const std::string& label, const ViewTransform& v, const DrawSurface& canvas)
{
    out << "# " << label << '\n'
        << "View " << FloatText(v.ViewX1) << ' ' << FloatText(v.ViewY1) << ' ' << FloatText(v.ViewX2) << ' '
        << FloatText(v.ViewY2) << '\n'
        << "PrevView " << FloatText(v.PrevViewX1) << ' ' << FloatText(v.PrevViewY1) << ' '
        << FloatText(v.PrevViewX2) << ' ' << FloatText(v.PrevViewY2) << '\n'
        << "Scale " << FloatText(canvas.ScaleLeft()) << ' ' << FloatText(canvas.ScaleTop()) << ' '
        << FloatText(canvas.ScaleWidth()) << ' ' << FloatText(canvas.ScaleHeight()) << '\n'
        << "FitSpan " << FloatText(v.FitSpan) << '\n'
        << "BlipSize " << FloatText(v.BlipSize) << '\n'
        << "TwoPixelSpan " << FloatText(v.TwoPixelSpan) << '\n';
}

} // namespace

int RunExtents(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const CliOptions& o = session.Options();
    // The extents pass only sets the scale: no picture is needed for it.
    ScaleSurface canvas(o.Width, o.Height);
    Plotter plotter = session.MakePlotter();
    try {
        plotter.ComputeExtents(canvas);
    } catch (const RunTimeError& e) {
        session.Dialogs().Message(std::string("The extents pass failed: ") + e.what(), "Corvane Backplot",
                                  MsgIcon::Critical, MsgButtons::Ok);
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
    Plotter plotter = session.MakePlotter();
    ViewHost viewHost;
    ViewCommands view(plotter, canvas, session.Config(), session.Playback(), session.Dialogs(), viewHost);
    session.OpenView(plotter, canvas);
    plotter.GetRecords(canvas);
    if (o.Steps) {
        PlaybackHost playbackHost;
        Stepper stepper(plotter, canvas, session.Translation(), session.Playback(), session.Dialogs(), playbackHost);
        for (int i = 0; i < *o.Steps; ++i)
            stepper.Step();
    }
    for (const DoCommand& command : o.Do)
        Apply(view, command);
    if (o.ZoomExtents)
        view.ZoomExtents();

    const std::string& path = o.Output;
    const bool png = path.size() >= 4 && (path.ends_with(".png") || path.ends_with(".PNG"));
    if (!canvas.VisibleImage().save(QString::fromStdString(path), png ? "PNG" : "BMP")) {
        session.Err() << "backplot-cli: cannot write " << path << '\n';
        return 1;
    }
    return session.ExitCode();
}

int RunView(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const CliOptions& o = session.Options();
    // Only the view is printed: a surface with a size and a scale is enough.
    ScaleSurface canvas(o.Width, o.Height);
    Plotter plotter = session.MakePlotter();
    ViewHost host;
    ViewCommands view(plotter, canvas, session.Config(), session.Playback(), session.Dialogs(), host);
    session.OpenView(plotter, canvas);
    plotter.GetRecords(canvas);
    std::ostream& out = session.Out();
    PrintView(out, "open", plotter.View, canvas);
    for (const DoCommand& command : o.Do) {
        Apply(view, command);
        PrintView(out, command.Text, plotter.View, canvas);
    }
    return session.ExitCode();
}

} // namespace backplot
