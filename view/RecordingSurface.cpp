#include "RecordingSurface.h"

#include "RunTimeError.h"

namespace backplot {

void RecordingSurface::Log(Primitive p)
{
    if (failing_ && *failing_ == p.Type)
        throw RunTimeError("Invalid procedure call");
    p.Style = GetDrawStyle();
    p.Mode = GetDrawMode();
    log_.push_back(p);
}

void RecordingSurface::Line(double x1, double y1, double x2, double y2, std::uint32_t color)
{
    Log({.Type = Kind::Line, .X1 = x1, .Y1 = y1, .X2 = x2, .Y2 = y2, .Color = color});
    currentX_ = x2;
    currentY_ = y2;
}

void RecordingSurface::LineTo(double x, double y, std::uint32_t color)
{
    Log({.Type = Kind::LineTo, .X1 = currentX_, .Y1 = currentY_, .X2 = x, .Y2 = y, .Color = color});
    currentX_ = x;
    currentY_ = y;
}

void RecordingSurface::Box(double x1, double y1, double x2, double y2, std::uint32_t color)
{
    Log({.Type = Kind::Box, .X1 = x1, .Y1 = y1, .X2 = x2, .Y2 = y2, .Color = color});
    currentX_ = x2;
    currentY_ = y2;
}

void RecordingSurface::PSet(double x, double y, std::uint32_t color)
{
    Log({.Type = Kind::PSet, .X1 = x, .Y1 = y, .Color = color});
    currentX_ = x;
    currentY_ = y;
}

void RecordingSurface::Circle(double cx, double cy, double radius, std::uint32_t color,
                              double start, double end)
{
    Log({.Type = Kind::Circle, .X1 = cx, .Y1 = cy, .Radius = radius, .Start = start, .End = end,
         .Color = color});
    currentX_ = cx;
    currentY_ = cy;
}

void RecordingSurface::Clear()
{
    Log({.Type = Kind::Clear, .Color = ForeColor()});
    currentX_ = 0;
    currentY_ = 0;
}

} // namespace backplot
