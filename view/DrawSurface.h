#pragma once

#include <cstdint>

namespace backplot {

// Line styles, numbered as the "Axis Line" setting stores them.
enum class DrawStyle : std::int16_t { Solid = 0, Dash = 1, Dot = 2, DashDot = 3, DashDotDot = 4 };
enum class DrawMode { CopyPen, Invert };

// What the renderer draws on: the canvas, the printer page, the preview canvas, an
// off-screen image, or a recording surface in tests.
//
// Coordinates are in the user scale (plot units): the point (ScaleLeft, ScaleTop) is
// the top-left corner of the surface and (ScaleLeft + ScaleWidth, ScaleTop + ScaleHeight)
// the bottom-right, so with a positive ScaleHeight Y grows downward. The scale values
// are kept as 32-bit floats, as they are read back. Colours are 0xBBGGRR. Angles are in
// radians, counter-clockwise on screen; equal start and end angles mean a full circle.
class DrawSurface {
public:
    virtual ~DrawSurface() = default;

    // Size in pixels.
    virtual int PixelWidth() const = 0;
    virtual int PixelHeight() const = 0;

    // The user scale. ResetScale returns to one unit per pixel with the origin top left.
    virtual void SetScale(float left, float top, float width, float height) = 0;
    virtual void ResetScale() = 0;
    virtual float ScaleLeft() const = 0;
    virtual float ScaleTop() const = 0;
    virtual float ScaleWidth() const = 0;
    virtual float ScaleHeight() const = 0;

    // A line from (x1, y1) to (x2, y2), leaving out its last pixel; the end becomes the
    // current point.
    virtual void Line(double x1, double y1, double x2, double y2, std::uint32_t color) = 0;
    // A line from the current point.
    virtual void LineTo(double x, double y, std::uint32_t color) = 0;
    // A box outline with corners (x1, y1) and (x2, y2).
    virtual void Box(double x1, double y1, double x2, double y2, std::uint32_t color) = 0;
    // One pixel.
    virtual void PSet(double x, double y, std::uint32_t color) = 0;
    // A circle arc by centre and radius, counter-clockwise on screen from start to end.
    virtual void Circle(double cx, double cy, double radius, std::uint32_t color, double start,
                        double end) = 0;

    virtual void SetDrawStyle(DrawStyle style) = 0;
    virtual DrawStyle GetDrawStyle() const = 0;
    virtual void SetDrawMode(DrawMode mode) = 0;
    virtual DrawMode GetDrawMode() const = 0;
    virtual void SetForeColor(std::uint32_t color) = 0;
    virtual std::uint32_t ForeColor() const = 0;
    virtual void SetBackColor(std::uint32_t color) = 0;
    virtual std::uint32_t BackColor() const = 0;

    // Fill with the back colour.
    virtual void Clear() = 0;
};

} // namespace backplot
