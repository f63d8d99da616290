#pragma once

#include <numbers>

namespace backplot {

struct TranslationState;

inline constexpr double Pi = std::numbers::pi; // 4 * arctan(1)

// Distance of two points.
double Distance(double x1, double y1, double x2, double y2);

// Direction of the vector (dx, dy) in degrees, in [0, 360), counter-clockwise from +X.
double AngleOf(double dx, double dy);

// Turns the start (LastX, LastY), the target (CurX, CurY) and the arc words of a G2/G3
// block into ArcCenterX/Y, ArcRadius, ArcStartAngle and ArcEndAngle.
// radiusForm: the block holds an R word. In the centre form ValI and ValJ are offsets
// from the start, or absolute centres when AbsCenter is 1 (they are then made offsets).
// A radius too short for the chord leaves the previous centre and recomputes the angles.
void ArcGeometry(TranslationState& state, bool radiusForm);

} // namespace backplot
