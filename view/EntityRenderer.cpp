#include "EntityRenderer.h"

#include "ArcGeometry.h"
#include "ResumeNext.h"

#include <cmath>

namespace backplot {

void EntityRenderer::DrawEntity(DrawSurface& surface, const EntityRecord& record, std::uint32_t color)
{
    switch (record.MoveType) {
    case 0:
        DrawRapid(surface, record, color);
        break;
    case 1:
        DrawCut(surface, record, color);
        break;
    case 2:
        DrawArc(surface, record, color, true);
        break;
    case 3:
        DrawArc(surface, record, color, false);
        break;
    default:
        break;
    }
}

void EntityRenderer::DrawRapid(DrawSurface& s, const EntityRecord& r, std::uint32_t color)
{
    // Coordinates are single-precision sums of the record's floats.
    if (settings_.ShowRapid) {
        ResumeNext([&] { s.SetDrawStyle(DrawStyle::Dot); });
        const float dx = std::fabs(r.StartX - r.EndX);
        const float dy = std::fabs(r.StartY - r.EndY);
        if (dy >= dx) {
            RapidLeg = dx;
            if (r.StartY != r.EndY) {
                const float kneeY = r.StartY < r.EndY ? r.StartY + RapidLeg : r.StartY - RapidLeg;
                ResumeNext([&] { s.Line(r.StartX, r.StartY, r.EndX, kneeY, color); });
                ResumeNext([&] { s.LineTo(r.EndX, r.EndY, color); });
            }
        } else {
            RapidLeg = dy;
            const float kneeX = r.StartX < r.EndX ? r.StartX + RapidLeg : r.StartX - RapidLeg;
            ResumeNext([&] { s.Line(r.StartX, r.StartY, kneeX, r.EndY, color); });
            ResumeNext([&] { s.LineTo(r.EndX, r.EndY, color); });
        }
    }
    ResumeNext([&] { s.SetDrawStyle(DrawStyle::Solid); });

    BlipX = r.EndX;
    BlipY = r.EndY;
    if (settings_.ShowBlips) {
        const float size = view_.BlipSize;
        ResumeNext([&] { s.Line(BlipX, BlipY + size, BlipX, BlipY - size, color); });
        ResumeNext([&] { s.Line(BlipX + size, BlipY, BlipX - size, BlipY, color); });
    }
}

void EntityRenderer::DrawCut(DrawSurface& s, const EntityRecord& r, std::uint32_t color)
{
    // Both halves are drawn toward the middle and the middle pixel set last: the line
    // primitive leaves out its last pixel, so this shows both ends and the whole cut.
    const auto midX = static_cast<float>((static_cast<double>(r.EndX) + r.StartX) / 2);
    const auto midY = static_cast<float>((static_cast<double>(r.EndY) + r.StartY) / 2);
    ResumeNext([&] { s.Line(r.StartX, r.StartY, midX, midY, color); });
    ResumeNext([&] { s.Line(r.EndX, r.EndY, midX, midY, color); });
    ResumeNext([&] { s.PSet(midX, midY, color); });
}

void EntityRenderer::DrawArc(DrawSurface& s, const EntityRecord& r, std::uint32_t color,
                             bool clockwise)
{
    const double radius = r.Radius;

    // Off the view, with a generous margin of two radii.
    const auto bound = [&](double centre, double offset) {
        return static_cast<float>(centre + offset * radius);
    };
    if (bound(r.CenterX, 2) < view_.ViewX1 || bound(r.CenterY, 2) < view_.ViewY1 ||
        bound(r.CenterX, -2) > view_.ViewX2 || bound(r.CenterY, -2) > view_.ViewY2)
        return;

    ArcStartRad = static_cast<float>(r.StartAngle * (Pi / 180));
    ArcEndRad = static_cast<float>(r.EndAngle * (Pi / 180));
    const double startRad = ArcStartRad, endRad = ArcEndRad;

    // Shorter than two pixels along the arc; a whole circle (equal angles) never is.
    double length = 0;
    bool measured = true;
    if (startRad < endRad)
        length = clockwise ? (startRad + 2 * Pi - endRad) * radius : (endRad - startRad) * radius;
    else if (startRad > endRad)
        length = clockwise ? (startRad - endRad) * radius : radius * (endRad + 2 * Pi - startRad);
    else
        measured = false;
    if (measured && length < view_.TwoPixelSpan)
        return;

    // The platform's arc is unreliable for radii far beyond the view: use chords.
    const double from = clockwise ? endRad : startRad;
    const double to = clockwise ? startRad : endRad;
    if (static_cast<double>(view_.FitSpan) * 5 >= radius)
        ResumeNext([&] { s.Circle(r.CenterX, r.CenterY, radius, color, from, to); });
    else
        DrawArcSegments(s, r.CenterX, r.CenterY, radius, color, from, to);
}

void EntityRenderer::DrawArcSegments(DrawSurface& surface, double xCen, double yCen, double radius,
                                     std::uint32_t color, double startAngle, double endAngle)
{
    ForEachArcChord(xCen, yCen, radius, startAngle, endAngle, [&](float x0, float y0, float x1, float y1) {
        ResumeNext([&] { surface.Line(x0, y0, x1, y1, color); });
    });
}

} // namespace backplot
