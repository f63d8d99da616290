#include "CliSession.h"
#include "NumberFormat.h"
#include "RunTimeError.h"
#include "ScaleSurface.h"
#include "TranslationTexts.h"

#include <ostream>

namespace backplot {

// The extents pass and the scale it gives a canvas of --size.
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
        session.Dialogs().Message(std::string("The extents pass failed: ") + e.what(), texts::MessageTitle,
                                  MsgIcon::Critical, MsgButtons::Ok);
    }
    const ViewTransform& v = plotter.View;
    std::ostream& out = session.Out();
    if (o.Json) {
        out << "{\"RecordTotal\":" << plotter.RecordTotal << ",\"Extents\":{\"MinX\":" << FloatText(v.MinX)
            << ",\"MinY\":" << FloatText(v.MinY) << ",\"MaxX\":" << FloatText(v.MaxX)
            << ",\"MaxY\":" << FloatText(v.MaxY) << "},\"Scale\":{\"Left\":" << FloatText(canvas.ScaleLeft())
            << ",\"Top\":" << FloatText(canvas.ScaleTop()) << ",\"Width\":" << FloatText(canvas.ScaleWidth())
            << ",\"Height\":" << FloatText(canvas.ScaleHeight()) << "},\"FitSpan\":" << FloatText(v.FitSpan)
            << ",\"BlipSize\":" << FloatText(v.BlipSize) << ",\"TwoPixelSpan\":" << FloatText(v.TwoPixelSpan)
            << "}\n";
        return session.ExitCode();
    }
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

} // namespace backplot
