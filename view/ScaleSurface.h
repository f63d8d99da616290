#pragma once

#include "DrawSurface.h"

namespace backplot {

// A surface with a pixel size, a user scale and the pen state, that draws nothing: for
// the passes whose only result is the view (the extents of the command-line tool), and
// the base of the recording surface of the tests.
class ScaleSurface : public DrawSurface {
public:
    explicit ScaleSurface(int width = 400, int height = 200) : width_(width), height_(height) { ResetScale(); }

    int PixelWidth() const override { return width_; }
    int PixelHeight() const override { return height_; }

    // Raises RunTimeError("Invalid property value") for a zero or non-finite width or height.
    void SetScale(float left, float top, float width, float height) override;
    void ResetScale() override;
    float ScaleLeft() const override { return left_; }
    float ScaleTop() const override { return top_; }
    float ScaleWidth() const override { return scaleWidth_; }
    float ScaleHeight() const override { return scaleHeight_; }

    void Line(double, double, double, double, std::uint32_t) override {}
    void LineTo(double, double, std::uint32_t) override {}
    void Box(double, double, double, double, std::uint32_t) override {}
    void PSet(double, double, std::uint32_t) override {}
    void Circle(double, double, double, std::uint32_t, double, double) override {}

    void SetDrawStyle(DrawStyle style) override { style_ = style; }
    DrawStyle GetDrawStyle() const override { return style_; }
    void SetDrawMode(DrawMode mode) override { mode_ = mode; }
    DrawMode GetDrawMode() const override { return mode_; }
    void SetForeColor(std::uint32_t color) override { foreColor_ = color; }
    std::uint32_t ForeColor() const override { return foreColor_; }
    void SetBackColor(std::uint32_t color) override { backColor_ = color; }
    std::uint32_t BackColor() const override { return backColor_; }

    void Clear() override {}

private:
    int width_;
    int height_;
    float left_ = 0, top_ = 0, scaleWidth_ = 1, scaleHeight_ = 1;
    DrawStyle style_ = DrawStyle::Solid;
    DrawMode mode_ = DrawMode::CopyPen;
    std::uint32_t foreColor_ = 0;
    std::uint32_t backColor_ = 0xFFFFFF;
};

} // namespace backplot
