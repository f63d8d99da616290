#pragma once

#include "DrawSurface.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace backplot {

// A DrawSurface that draws nothing and keeps a log of every primitive, for tests.
class RecordingSurface : public DrawSurface {
public:
    enum class Kind { Line, LineTo, Box, PSet, Circle, Clear };

    // One primitive call, in plot units as given. Line and Box: (X1, Y1)-(X2, Y2);
    // LineTo: from the current point (X1, Y1) to (X2, Y2); PSet: (X1, Y1); Circle: centre
    // (X1, Y1), Radius, Start, End. Style, Mode and Color are those in force for the call
    // (Color is ForeColor() for Clear, which has no colour of its own).
    struct Primitive {
        Kind Type = Kind::Line;
        double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
        double Radius = 0, Start = 0, End = 0;
        std::uint32_t Color = 0;
        DrawStyle Style = DrawStyle::Solid;
        DrawMode Mode = DrawMode::CopyPen;
    };

    explicit RecordingSurface(int width = 400, int height = 200) : width_(width), height_(height)
    {
        ResetScale();
    }

    int PixelWidth() const override { return width_; }
    int PixelHeight() const override { return height_; }

    // Raises RunTimeError("Invalid property value") for a zero or non-finite width or height.
    void SetScale(float left, float top, float width, float height) override;
    void ResetScale() override;
    float ScaleLeft() const override { return left_; }
    float ScaleTop() const override { return top_; }
    float ScaleWidth() const override { return scaleWidth_; }
    float ScaleHeight() const override { return scaleHeight_; }

    void Line(double x1, double y1, double x2, double y2, std::uint32_t color) override;
    void LineTo(double x, double y, std::uint32_t color) override;
    void Box(double x1, double y1, double x2, double y2, std::uint32_t color) override;
    void PSet(double x, double y, std::uint32_t color) override;
    void Circle(double cx, double cy, double radius, std::uint32_t color, double start,
                double end) override;

    void SetDrawStyle(DrawStyle style) override { style_ = style; }
    DrawStyle GetDrawStyle() const override { return style_; }
    void SetDrawMode(DrawMode mode) override { mode_ = mode; }
    DrawMode GetDrawMode() const override { return mode_; }
    void SetForeColor(std::uint32_t color) override { foreColor_ = color; }
    std::uint32_t ForeColor() const override { return foreColor_; }
    void SetBackColor(std::uint32_t color) override { backColor_ = color; }
    std::uint32_t BackColor() const override { return backColor_; }

    void Clear() override;

    const std::vector<Primitive>& Primitives() const { return log_; }
    void ForgetPrimitives() { log_.clear(); }

    // Makes every later call of the given kind raise RunTimeError("Invalid procedure call")
    // without being logged, as a failing platform primitive would; nothing to stop that.
    void FailOn(std::optional<Kind> kind) { failing_ = kind; }

private:
    void Log(Primitive p);

    int width_;
    int height_;
    float left_ = 0, top_ = 0, scaleWidth_ = 1, scaleHeight_ = 1;
    double currentX_ = 0, currentY_ = 0;
    DrawStyle style_ = DrawStyle::Solid;
    DrawMode mode_ = DrawMode::CopyPen;
    std::uint32_t foreColor_ = 0;
    std::uint32_t backColor_ = 0xFFFFFF;
    std::optional<Kind> failing_;
    std::vector<Primitive> log_;
};

} // namespace backplot
