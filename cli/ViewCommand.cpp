#include "CliSession.h"
#include "JsonText.h"
#include "NumberFormat.h"
#include "ScaleSurface.h"
#include "ViewCommands.h"

#include <ostream>

namespace backplot {

namespace {

std::string Four(float a, float b, float c, float d, char separator)
{
    return FloatText(a) + separator + FloatText(b) + separator + FloatText(c) + separator + FloatText(d);
}

void PrintView(std::ostream& out, const std::string& label, const ViewTransform& v, const DrawSurface& canvas,
               bool json)
{
    const std::string view = Four(v.ViewX1, v.ViewY1, v.ViewX2, v.ViewY2, json ? ',' : ' ');
    const std::string previous = Four(v.PrevViewX1, v.PrevViewY1, v.PrevViewX2, v.PrevViewY2, json ? ',' : ' ');
    const std::string scale =
        Four(canvas.ScaleLeft(), canvas.ScaleTop(), canvas.ScaleWidth(), canvas.ScaleHeight(), json ? ',' : ' ');
    if (json) {
        out << "{\"Command\":" << JsonString(label) << ",\"View\":[" << view << "],\"PrevView\":[" << previous
            << "],\"Scale\":[" << scale << "],\"FitSpan\":" << FloatText(v.FitSpan)
            << ",\"BlipSize\":" << FloatText(v.BlipSize) << ",\"TwoPixelSpan\":" << FloatText(v.TwoPixelSpan)
            << "}\n";
        return;
    }
    out << "# " << label << '\n'
        << "View " << view << '\n'
        << "PrevView " << previous << '\n'
        << "Scale " << scale << '\n'
        << "FitSpan " << FloatText(v.FitSpan) << '\n'
        << "BlipSize " << FloatText(v.BlipSize) << '\n'
        << "TwoPixelSpan " << FloatText(v.TwoPixelSpan) << '\n';
}

} // namespace

// The view after opening and after each --do command.
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
    PrintView(out, "open", plotter.View, canvas, o.Json);
    for (const DoCommand& command : o.Do) {
        ApplyDoCommand(view, command);
        PrintView(out, command.Text, plotter.View, canvas, o.Json);
    }
    return session.ExitCode();
}

} // namespace backplot
