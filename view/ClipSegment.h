#pragma once

#include <QPointF>
#include <algorithm>
#include <cmath>

namespace backplot {

// Liang-Barsky clipping of the segment a-b to the square -bound..bound on both axes. The
// ends are moved onto the square where the segment leaves it (unrounded); false when no
// part of the segment lies inside, and when an end is not a finite number. Surfaces clip
// far-away ends so that their own integer stepping, or a page description, never meets
// numbers out of its range: whatever comes back true lies within the square.
//
// Ends may lie anywhere up to the largest double. The arithmetic runs on halved values,
// so that the difference of two ends cannot overflow, and an end that moves is measured
// from the nearer of the two given ends: a point 1e20 away carries a rounding error of
// thousands of pixels, which must not tilt the part of a line that is seen.
inline bool ClipSegment(QPointF& a, QPointF& b, double bound)
{
    const double ax = a.x() / 2, ay = a.y() / 2, bx = b.x() / 2, by = b.y() / 2, half = bound / 2;
    if (!std::isfinite(ax) || !std::isfinite(ay) || !std::isfinite(bx) || !std::isfinite(by))
        return false;
    const double dx = bx - ax, dy = by - ay;
    // Side i is crossed at t = q / p from a, and at s = r / p = 1 - t from b.
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {ax + half, half - ax, ay + half, half - ay};
    const double r[4] = {-(bx + half), bx - half, -(by + half), by - half};
    double t0 = 0, t1 = 1, s0 = 1, s1 = 0;
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0)
                return false;
            continue;
        }
        // The entry is the last side crossed, the exit the first, counted either way:
        // near an end, the count from that end tells sides apart that round alike from
        // the other.
        const double t = q[i] / p[i], s = r[i] / p[i];
        if (p[i] < 0) {
            t0 = std::max(t0, t);
            s0 = std::min(s0, s);
        } else {
            t1 = std::min(t1, t);
            s1 = std::max(s1, s);
        }
        // Judged from both ends: a crossing that rounds onto the segment from one end
        // but lies off it from the other is a miss.
        if (t0 > t1 || s0 < s1)
            return false;
    }
    const auto at = [&](double t, double s) {
        return t <= 0.5 ? QPointF(2 * (ax + t * dx), 2 * (ay + t * dy)) : QPointF(2 * (bx - s * dx), 2 * (by - s * dy));
    };
    const QPointF start = t0 > 0 ? at(t0, s0) : a;
    const QPointF end = t1 < 1 ? at(t1, s1) : b;
    // Ends so far apart that even this leaves the result off the square: nothing
    // certain to draw.
    const double slack = bound * (1 + 1e-9) + 1;
    for (const QPointF& e : {start, end})
        if (!(std::fabs(e.x()) <= slack && std::fabs(e.y()) <= slack))
            return false;
    a = start;
    b = end;
    return true;
}

} // namespace backplot
