#include "ScaleSurface.h"

#include "RunTimeError.h"

#include <cmath>

namespace backplot {

void ScaleSurface::SetScale(float left, float top, float width, float height)
{
    if (!std::isfinite(left) || !std::isfinite(top) || !std::isfinite(width) || !std::isfinite(height) ||
        width == 0 || height == 0)
        throw RunTimeError("Invalid property value");
    left_ = left;
    top_ = top;
    scaleWidth_ = width;
    scaleHeight_ = height;
}

void ScaleSurface::ResetScale()
{
    left_ = 0;
    top_ = 0;
    scaleWidth_ = static_cast<float>(width_);
    scaleHeight_ = static_cast<float>(height_);
}

} // namespace backplot
