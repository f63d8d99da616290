#include "PrintRenderer.h"

#include "ArcGeometry.h"
#include "EntityRenderer.h"
#include "RunTimeError.h"

#include <cmath>
#include <limits>
#include <utility>

namespace backplot {

namespace {

constexpr std::uint32_t Ink = 0x000000;

float Narrow(double value)
{
    if (!std::isfinite(value) || std::fabs(value) > std::numeric_limits<float>::max())
        throw RunTimeError("Overflow");
    return static_cast<float>(value);
}

} // namespace

void PrintRenderer::SetPrinter(DrawSurface& page, int pageWidth, int pageHeight, double screenTwipsPerPixel)
{
    ViewTransform& v = view_;
    PrintMapping& m = mapping_;

    if (v.ViewX1 == v.ViewX2 && v.ViewY1 == v.ViewY2)
        return;

    if (pageWidth <= 0 || pageHeight <= 0)
        throw RunTimeError("Division by zero");
    m.PageAspect = Narrow(static_cast<double>(pageWidth) / pageHeight);

    if (!(v.ViewX1 < v.ViewX2))
        std::swap(v.ViewX1, v.ViewX2);
    if (!(v.ViewY1 < v.ViewY2))
        std::swap(v.ViewY1, v.ViewY2);

    // Printer units again before the custom scale.
    page.ResetScale();

    const float w = Narrow(std::fabs(static_cast<double>(v.ViewX1) - v.ViewX2));
    const float h = Narrow(std::fabs(static_cast<double>(v.ViewY1) - v.ViewY2));
    float fitted = 0;
    int pageExtent = 0;
    if (h <= w) {
        m.PrintHeight = Narrow(w / static_cast<double>(m.PageAspect));
        page.SetScale(v.ViewX1, Narrow(v.ViewY1 + h / 2.0 - m.PrintHeight / 2.0), w, m.PrintHeight);
        v.ViewY1 = page.ScaleTop();
        v.ViewY2 = Narrow(static_cast<double>(v.ViewY1) + m.PrintHeight);
        fitted = m.PrintHeight;
        pageExtent = pageHeight;
    } else {
        const float printWidth = Narrow(static_cast<double>(h) * m.PageAspect);
        page.SetScale(Narrow(v.ViewX1 + w / 2.0 - printWidth / 2.0), v.ViewY1, printWidth, h);
        v.ViewX1 = page.ScaleLeft();
        v.ViewX2 = Narrow(static_cast<double>(v.ViewX1) + printWidth);
        fitted = printWidth;
        pageExtent = pageWidth;
    }
    m.PrinterPixel = Narrow(2.0 * fitted / (pageExtent / screenTwipsPerPixel));
    m.MarkSize = Narrow(0.01 * fitted);
}

void PrintRenderer::PrintEntity(DrawSurface& s, const EntityRecord& r)
{
    if (settings_.ShowAxis) {
        s.SetDrawStyle(DrawStyle::DashDotDot);
        const float top = s.ScaleTop();
        s.Line(0, top, 0, top + s.ScaleHeight(), Ink);
        const float left = s.ScaleLeft();
        s.Line(left, 0, left + s.ScaleWidth(), 0, Ink);
        s.SetDrawStyle(DrawStyle::Solid);
    }
    switch (r.MoveType) {
    case 0:
        PrintRapid(s, r);
        break;
    case 1:
        PrintCut(s, r);
        break;
    case 2:
        PrintArcRecord(s, r, true);
        break;
    case 3:
        PrintArcRecord(s, r, false);
        break;
    default:
        break;
    }
}

void PrintRenderer::PrintRapid(DrawSurface& s, const EntityRecord& r)
{
    // The dog-leg of the screen: 45 degrees until the shorter axis is done, then straight.
    if (settings_.ShowRapid) {
        s.SetDrawStyle(DrawStyle::Dot);
        const float dx = std::fabs(r.StartX - r.EndX);
        const float dy = std::fabs(r.StartY - r.EndY);
        if (dy >= dx) {
            if (r.StartY != r.EndY) {
                const float kneeY = r.StartY < r.EndY ? r.StartY + dx : r.StartY - dx;
                s.Line(r.StartX, r.StartY, r.EndX, kneeY, Ink);
                s.LineTo(r.EndX, r.EndY, Ink);
            }
        } else {
            const float kneeX = r.StartX < r.EndX ? r.StartX + dy : r.StartX - dy;
            s.Line(r.StartX, r.StartY, kneeX, r.EndY, Ink);
            s.LineTo(r.EndX, r.EndY, Ink);
        }
    }
    s.SetDrawStyle(DrawStyle::Solid);
    if (settings_.ShowBlips) {
        const float size = mapping_.MarkSize;
        s.Line(r.EndX, r.EndY + size, r.EndX, r.EndY - size, Ink);
        s.Line(r.EndX + size, r.EndY, r.EndX - size, r.EndY, Ink);
    }
}

void PrintRenderer::PrintCut(DrawSurface& s, const EntityRecord& r)
{
    const auto midX = static_cast<float>((static_cast<double>(r.EndX) + r.StartX) / 2);
    const auto midY = static_cast<float>((static_cast<double>(r.EndY) + r.StartY) / 2);
    s.Line(r.StartX, r.StartY, midX, midY, Ink);
    s.Line(r.EndX, r.EndY, midX, midY, Ink);
    s.PSet(midX, midY, Ink);
}

void PrintRenderer::PrintArcRecord(DrawSurface& s, const EntityRecord& r, bool clockwise)
{
    const double radius = r.Radius;

    // Off the view, with a margin of two radii, as on the screen.
    const auto bound = [&](double centre, double offset) { return static_cast<float>(centre + offset * radius); };
    if (bound(r.CenterX, 2) < view_.ViewX1 || bound(r.CenterY, 2) < view_.ViewY1 ||
        bound(r.CenterX, -2) > view_.ViewX2 || bound(r.CenterY, -2) > view_.ViewY2)
        return;

    // Counter-clockwise from `from` to `to`: a clockwise arc runs from its end back to
    // its start.
    const auto startRad = static_cast<float>(r.StartAngle * (Pi / 180));
    const auto endRad = static_cast<float>(r.EndAngle * (Pi / 180));
    const float from = clockwise ? endRad : startRad;
    const float to = clockwise ? startRad : endRad;

    // Dot-sized arcs stay off the page. Equal angles are a whole circle, never short.
    double sweep = static_cast<double>(to) - from;
    if (to < from)
        sweep += 2 * Pi;
    else if (to == from)
        sweep = 2 * Pi;
    if (radius * sweep < mapping_.PrinterPixel)
        return;

    PrintArc(s, r.CenterX, r.CenterY, radius, ArcColor, from, to);
}

void PrintRenderer::PrintArc(DrawSurface& surface, double xCen, double yCen, double radius, std::uint32_t color,
                             float startAngle, float endAngle)
{
    ArcStartRad = startAngle;
    ArcEndRad = endAngle;
    // Errors are not skipped here: a failing line ends the print with its message.
    EntityRenderer::ForEachArcChord(xCen, yCen, radius, startAngle, endAngle,
                                    [&](float x0, float y0, float x1, float y1) { surface.Line(x0, y0, x1, y1, color); });
}

} // namespace backplot
