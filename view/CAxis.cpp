#include "CAxis.h"

#include "ResumeNext.h"
#include "RunTimeError.h"

namespace backplot {

namespace {

backplot::DrawStyle ToStyle(std::int16_t value)
{
    if (value < 0 || value > static_cast<std::int16_t>(DrawStyle::DashDotDot))
        throw RunTimeError("Invalid property value");
    return static_cast<backplot::DrawStyle>(value);
}

} // namespace

void CAxis::DrawAxis(DrawSurface& canvas) const
{
    ResumeNext([&] { canvas.SetForeColor(axisColor_); });
    ResumeNext([&] { canvas.SetDrawStyle(ToStyle(drawStyle_)); });
    // Single-precision sums, as the scale is held.
    ResumeNext([&] {
        const float top = canvas.ScaleTop();
        canvas.Line(0, top, 0, top + canvas.ScaleHeight(), canvas.ForeColor());
    });
    ResumeNext([&] {
        const float left = canvas.ScaleLeft();
        canvas.Line(left, 0, left + canvas.ScaleWidth(), 0, canvas.ForeColor());
    });
    ResumeNext([&] { canvas.SetDrawStyle(backplot::DrawStyle::Solid); });
}

} // namespace backplot
