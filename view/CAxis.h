#pragma once

#include "DrawSurface.h"

#include <cstdint>

namespace backplot {

// The two axis lines through the plot origin, each across the whole visible surface.
class CAxis {
public:
    std::uint32_t AxisColor() const { return axisColor_; }
    void SetAxisColor(std::uint32_t color) { axisColor_ = color; }

    // Line style as the "Axis Line" setting stores it: 0 solid, 1 dash, 2 dot, 3 dash-dot,
    // 4 dash-dot-dot. Other values are kept but cannot be drawn with (see DrawAxis).
    std::int16_t DrawStyle() const { return drawStyle_; }
    void SetDrawStyle(std::int16_t style) { drawStyle_ = style; }

    // Sets the surface's fore colour to AxisColor and its line style to DrawStyle, draws
    // x = 0 from ScaleTop to ScaleTop + ScaleHeight and y = 0 from ScaleLeft to ScaleLeft +
    // ScaleWidth in the fore colour, then sets the line style back to solid. Each step
    // that fails (an undrawable style, a failing primitive) is skipped and the rest runs;
    // never raises.
    void DrawAxis(DrawSurface& canvas) const;

private:
    std::uint32_t axisColor_ = 0;
    std::int16_t drawStyle_ = 0;
};

} // namespace backplot
