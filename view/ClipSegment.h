#pragma once

#include <QPointF>

namespace backplot {

// Liang-Barsky clipping of the segment a-b to the square -bound..bound on both axes. The
// ends are moved onto the square where the segment leaves it (unrounded); false when no
// part of the segment lies inside. Surfaces clip far-away ends so that their own integer
// stepping, or a page description, never meets numbers out of its range.
inline bool ClipSegment(QPointF& a, QPointF& b, double bound)
{
    double t0 = 0, t1 = 1;
    const double dx = b.x() - a.x(), dy = b.y() - a.y();
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {a.x() + bound, bound - a.x(), a.y() + bound, bound - a.y()};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0)
                return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0)
            t0 = t > t0 ? t : t0;
        else
            t1 = t < t1 ? t : t1;
        if (t0 > t1)
            return false;
    }
    const QPointF start = a;
    if (t0 > 0)
        a = QPointF(start.x() + t0 * dx, start.y() + t0 * dy);
    if (t1 < 1)
        b = QPointF(start.x() + t1 * dx, start.y() + t1 * dy);
    return true;
}

} // namespace backplot
