#include "ArcGeometry.h"

#include "TranslationState.h"

#include <cmath>

namespace backplot {

double Distance(double x1, double y1, double x2, double y2)
{
    if (x1 == x2 && y1 == y2)
        return 0;
    const double dx = std::fabs(x1 - x2);
    const double dy = std::fabs(y1 - y2);
    return std::sqrt(dx * dx + dy * dy);
}

double AngleOf(double dx, double dy)
{
    double a = 0;
    if (dx > 0 && dy >= 0)
        a = std::atan(dy / dx);
    else if (dx < 0)
        a = std::atan(dy / dx) + Pi;
    else if (dx > 0 && dy < 0)
        a = std::atan(dy / dx) + 2 * Pi;
    else if (dy > 0)
        a = Pi / 2;
    else if (dy < 0)
        a = 3 * Pi / 2;
    return a * 180 / Pi;
}

namespace {

void AnglesFromCentre(TranslationState& s)
{
    s.ArcStartAngle = AngleOf(s.LastX - s.ArcCenterX, s.LastY - s.ArcCenterY);
    s.ArcEndAngle = AngleOf(s.CurX - s.ArcCenterX, s.CurY - s.ArcCenterY);
}

// Puts the centre on the perpendicular bisector of the chord, at radius ArcRadius, on
// the side chosen by the offset angle beta (+90 for the short arc, -90 for the long one,
// 0 for a full circle). A radius shorter than half the chord leaves the centre as it was.
void CentreOnBisector(TranslationState& s, double beta)
{
    const double r = s.ArcRadius;
    const double chord = Distance(s.LastX, s.LastY, s.CurX, s.CurY);
    const double square = r * r - (chord / 2) * (chord / 2);
    if (square < 0) {
        AnglesFromCentre(s);
        return;
    }
    const double h = std::sqrt(square);
    const double midX = (s.CurX + s.LastX) / 2;
    const double midY = (s.CurY + s.LastY) / 2;
    const double theta = AngleOf(s.CurX - s.LastX, s.CurY - s.LastY);
    double phi = 0;
    if (s.MoveMode == 3) {
        phi = theta - beta;
        if (phi < 0)
            phi += 360;
    } else {
        phi = theta + beta;
        if (phi > 360)
            phi -= 360;
    }
    s.ArcCenterX = midX - std::cos(phi * Pi / 180) * h;
    s.ArcCenterY = midY - std::sin(phi * Pi / 180) * h;
    AnglesFromCentre(s);
}

} // namespace

void ArcGeometry(TranslationState& s, bool radiusForm)
{
    const bool closed = s.LastX == s.CurX && s.LastY == s.CurY;

    if (radiusForm) {
        double beta = s.ValR < 0 ? -90 : 90;
        if (closed)
            beta = 0;
        s.ArcRadius = std::fabs(s.ValR);
        CentreOnBisector(s, beta);
        return;
    }

    if (s.AbsCenter == 1) {
        s.ValI -= s.LastX;
        s.ValJ -= s.LastY;
    }
    s.ArcRadius = std::sqrt(s.ValI * s.ValI + s.ValJ * s.ValJ);
    s.ArcCenterX = s.ValI + s.LastX;
    s.ArcCenterY = s.ValJ + s.LastY;
    AnglesFromCentre(s);
    if (closed)
        return;

    // A centre off both axes of the start rarely sits exactly on the bisector when the
    // words were rounded; refit it there, keeping the radius.
    if (s.ValI != 0 && s.ValJ != 0) {
        double sweep = 0;
        if (s.MoveMode == 3)
            sweep = s.ArcEndAngle + (s.ArcEndAngle < s.ArcStartAngle ? 360 : 0) - s.ArcStartAngle;
        else
            sweep = s.ArcStartAngle + (s.ArcStartAngle < s.ArcEndAngle ? 360 : 0) - s.ArcEndAngle;
        CentreOnBisector(s, sweep >= 180 ? -90 : 90);
    }
}

} // namespace backplot
