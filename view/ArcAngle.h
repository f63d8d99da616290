#pragma once

#include "ArcGeometry.h"
#include "RunTimeError.h"

#include <cmath>

namespace backplot {

// An arc angle as the surfaces take it: its magnitude, or "Invalid procedure call" beyond
// 2 pi. The limit is 2 pi as a float holds it, so an angle stored as a float stays valid.
inline double CheckArcAngle(double angle)
{
    constexpr double limit = static_cast<double>(static_cast<float>(2 * Pi));
    if (!(std::fabs(angle) <= limit))
        throw RunTimeError("Invalid procedure call");
    return std::fabs(angle);
}

} // namespace backplot
