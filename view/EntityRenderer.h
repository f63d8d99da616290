#pragma once

#include "ArcGeometry.h"
#include "DrawSurface.h"
#include "EntityRecord.h"
#include "Settings.h"
#include "ViewTransform.h"

#include <cmath>
#include <cstdint>

namespace backplot {

// Draws one entity record on a drawing surface, in the record's own coordinates (stored
// Y, drawn as stored). Reads the view fields (ViewX1..ViewY2, FitSpan, BlipSize,
// TwoPixelSpan) and the settings "Show Rapid" and "Show Blips" live from the objects it
// was given, which must outlive it.
//
// Every surface call runs on its own: a RunTimeError from one primitive leaves that piece
// undrawn and the rest of the entity is still drawn; DrawEntity itself never raises.
class EntityRenderer {
public:
    EntityRenderer(const Settings& settings, const ViewTransform& view)
        : settings_(settings), view_(view)
    {
    }

    // Written by DrawEntity; the only state kept between calls.
    float RapidLeg = 0;                 // length of the 45-degree leg of the last rapid
    float BlipX = 0, BlipY = 0;         // end point of the last rapid
    float ArcStartRad = 0, ArcEndRad = 0; // angles of the last arc, radians

    // Draws `record` in `color` (0xBBGGRR), by MoveType:
    //  0 rapid: a dotted dog-leg (45 degrees until the shorter axis is done, then straight)
    //    when "Show Rapid" is on, and a plus mark of half-size BlipSize at its end when
    //    "Show Blips" is on; the line style is solid afterwards in every case;
    //  1 straight cut: start to middle, end to middle, then the middle pixel;
    //  2/3 clockwise/counter-clockwise arc: skipped when it lies more than two radii off
    //    the view window or is shorter than TwoPixelSpan; drawn with the circle primitive
    //    while Radius <= 5 * FitSpan, else as 72 chords; a clockwise arc is drawn as the
    //    counter-clockwise arc from its end angle to its start angle;
    //  anything else: nothing.
    void DrawEntity(DrawSurface& surface, const EntityRecord& record, std::uint32_t color);

    // An arc as 72 chords, counter-clockwise on screen from startAngle to endAngle
    // (radians; equal angles make the whole circle). Never raises.
    static void DrawArcSegments(DrawSurface& surface, double xCen, double yCen, double radius,
                                std::uint32_t color, double startAngle, double endAngle);

    // The 72 chords of that arc, each handed to chord(x0, y0, x1, y1) with the ends in
    // single precision, as the line primitive takes them. The minus before the sine makes
    // the angle run counter-clockwise with Y growing downward.
    template <class Chord>
    static void ForEachArcChord(double xCen, double yCen, double radius, double startAngle, double endAngle,
                                Chord&& chord)
    {
        constexpr int chords = 72;
        double step;
        if (startAngle < endAngle)
            step = (endAngle - startAngle) / chords;
        else if (startAngle == endAngle)
            step = 2 * Pi / chords;
        else
            step = (endAngle + 2 * Pi - startAngle) / chords;
        for (int i = 1; i <= chords; ++i) {
            const double a0 = step * (i - 1) + startAngle;
            const double a1 = step * i + startAngle;
            chord(static_cast<float>(xCen + radius * std::cos(a0)), static_cast<float>(yCen - radius * std::sin(a0)),
                  static_cast<float>(xCen + radius * std::cos(a1)), static_cast<float>(yCen - radius * std::sin(a1)));
        }
    }

private:
    void DrawRapid(DrawSurface& surface, const EntityRecord& record, std::uint32_t color);
    void DrawCut(DrawSurface& surface, const EntityRecord& record, std::uint32_t color);
    void DrawArc(DrawSurface& surface, const EntityRecord& record, std::uint32_t color,
                 bool clockwise);

    const Settings& settings_;
    const ViewTransform& view_;
};

} // namespace backplot
