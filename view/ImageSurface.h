#pragma once

#include "DrawSurface.h"

#include <QImage>
#include <QPointF>
#include <cstdint>
#include <functional>
#include <vector>

namespace backplot {

// A DrawSurface over a QImage (RGB32), for the canvas, the off-screen renders of the
// command-line tool and picture tests. Needs no display.
//
// Two kinds of pixel: logical pixels, in which the visible size (PixelWidth, PixelHeight),
// the pixel scale and pixel positions (ToPlot, PixelOf) are given, and device pixels, in
// which the picture is kept and drawn. A logical pixel is DevicePixelRatio() device pixels
// wide (2 on a HiDPI screen), so the view arithmetic sees the same sizes at every ratio
// while lines are drawn at the screen's own resolution. At a ratio of 1 both are the same.
//
// Two sizes: the visible size, which the user scale maps onto, and the kept picture
// (device pixels), which is at least the visible size and never shrinks, so what was
// drawn beyond the visible edge reappears when the surface grows again. Drawing reaches
// every pixel of the kept picture; Clear fills all of it.
//
// Mapping: a point (x, y) in plot units goes to device pixel
//   px = round((x - ScaleLeft) * PixelWidth * ratio / ScaleWidth),
//   py = round((y - ScaleTop) * PixelHeight * ratio / ScaleHeight)   (halves rounded up),
// so (ScaleLeft, ScaleTop) is pixel (0, 0) and the far edge lies one pixel past the last.
//
// Pixels, all of them device pixels, follow the rules of aliased one-pixel cosmetic pens:
// a line covers one pixel per step along its longer axis and leaves out its last pixel; a
// box outline covers both corners, each pixel once; PSet sets one pixel; Circle takes its
// radius in horizontal units, is round in pixels, is drawn as chords between pixel-rounded
// points within a tenth of a pixel of the true arc and covers both ends of an arc. Dash
// styles are pixel patterns starting afresh with every primitive (dash 18 on 6 off, dot
// 3/3, dash-dot 9/6/3/6, dash-dot-dot 9/3/3/3/3/3), each run multiplied by the ratio and
// rounded, so a dash keeps its length on screen. Invert sets each pixel drawn to NOT its
// old value and ignores the colour.
//
// The pixels are written straight into the image rather than through QPainter: a plot of
// 32767 records makes hundreds of thousands of short segments, and the painter's per-call
// cost alone would exceed the time a whole plot may take.
//
// Ends anywhere up to the largest double are clipped (ClipSegment) before any integer
// arithmetic, so the part of a line that is seen keeps its place and slope.
//
// Errors: a non-finite mapped coordinate raises RunTimeError("Overflow"); a circle angle
// outside -2 pi .. 2 pi raises RunTimeError("Invalid procedure call") (a negative angle
// counts by its size); SetScale with a zero or non-finite width or height raises
// RunTimeError("Invalid property value") and keeps the old scale. Nothing is drawn then.
class ImageSurface : public DrawSurface {
public:
    // A surface of the given logical size filled with the back colour (0xBBGGRR), in pixel
    // scale. A size of zero or less gives an empty picture on which nothing is drawn. The
    // ratio is taken as by SetDevicePixelRatio.
    ImageSurface(int width, int height, std::uint32_t backColor = 0xFFFFFF, double devicePixelRatio = 1);
    ImageSurface(const ImageSurface&) = delete;
    ImageSurface& operator=(const ImageSurface&) = delete;

    // The visible size, in logical pixels.
    int PixelWidth() const override { return visibleWidth_; }
    int PixelHeight() const override { return visibleHeight_; }

    void SetScale(float left, float top, float width, float height) override;
    void ResetScale() override;
    float ScaleLeft() const override { return scaleLeft_; }
    float ScaleTop() const override { return scaleTop_; }
    float ScaleWidth() const override { return scaleWidth_; }
    float ScaleHeight() const override { return scaleHeight_; }

    void Line(double x1, double y1, double x2, double y2, std::uint32_t color) override;
    void LineTo(double x, double y, std::uint32_t color) override;
    void Box(double x1, double y1, double x2, double y2, std::uint32_t color) override;
    void PSet(double x, double y, std::uint32_t color) override;
    void Circle(double cx, double cy, double radius, std::uint32_t color, double start,
                double end) override;

    void SetDrawStyle(DrawStyle style) override;
    DrawStyle GetDrawStyle() const override { return style_; }
    void SetDrawMode(DrawMode mode) override { mode_ = mode; }
    DrawMode GetDrawMode() const override { return mode_; }
    void SetForeColor(std::uint32_t color) override { foreColor_ = color; }
    std::uint32_t ForeColor() const override { return foreColor_; }
    void SetBackColor(std::uint32_t color) override { backColor_ = color; }
    std::uint32_t BackColor() const override { return backColor_; }

    void Clear() override;

    // Device pixels per logical pixel. A new ratio scales the kept picture once to the new
    // resolution (nearest pixel, so no new colours appear), so it stays where it was on
    // screen until the next plot draws it afresh; a user scale keeps its values. A ratio
    // that is not a positive finite number counts as 1.
    void SetDevicePixelRatio(double ratio);
    double DevicePixelRatio() const { return ratio_; }

    // The kept picture in device pixels, its devicePixelRatio() set to the ratio; it may be
    // larger than the visible size. Copies taken from it are snapshots: later drawing
    // detaches the surface's own image first. The reference is valid until the next
    // Resize, Reserve or SetDevicePixelRatio.
    const QImage& Image() const;
    // A copy of the visible part of the picture, in device pixels, its devicePixelRatio()
    // set, so that its device-independent size is the visible size.
    QImage VisibleImage() const;

    // A new visible size in logical pixels. The kept picture grows to hold it (the new area
    // in the back colour) and never shrinks. A pixel scale follows the new size; a user
    // scale keeps its values, so its units stretch until the next SetScale.
    void Resize(int width, int height);
    // Makes the kept picture at least this many device pixels, the old picture in its
    // top-left corner.
    void Reserve(int width, int height);

    // Plot units of a logical pixel position (the inverse of the mapping above divided by
    // the ratio, unrounded): the same plot point at every ratio.
    QPointF ToPlot(double px, double py) const;
    // The logical position of the device pixel a point in plot units maps to (the mapping
    // above divided by the ratio): whole pixels at ratio 1, halves at ratio 2. Raises
    // RunTimeError("Overflow") when it is out of reach.
    QPointF PixelOf(double x, double y) const;

    // Called once when the picture changes after the last Image() call, so a widget can
    // schedule one repaint per batch of drawing instead of one per primitive.
    void SetChangedCallback(std::function<void()> callback) { changed_ = std::move(callback); }

private:
    struct Pen; // pixel value, invert flag and dash pattern of one primitive

    // Something is visible to draw on; a surface of zero visible size keeps its picture
    // but draws nothing.
    bool Drawable() const { return !image_.isNull() && visibleWidth_ > 0 && visibleHeight_ > 0; }
    // Device pixels covering a logical length.
    int ToDevice(int logical) const;
    // The device pixel of a point in plot units.
    QPointF Map(double x, double y) const;
    Pen MakePen(std::uint32_t color);
    // Draws from a to b (integer-valued pixel coordinates) without b; `phase` is the dash
    // position at a and is advanced to b.
    void Segment(const Pen& pen, QPointF a, QPointF b, std::int64_t& phase);
    void Pixel(const Pen& pen, std::int64_t x, std::int64_t y);
    void UpdateFactors();
    // The dash pattern of style_ at the current ratio.
    void BuildPattern();
    void MarkChanged();

    QImage image_;
    std::uint32_t* bits_ = nullptr; // image_'s pixels, fetched once per primitive
    std::int64_t stride_ = 0;       // pixels per image row
    std::int64_t width_ = 0, height_ = 0; // image_'s size, read per pixel
    int visibleWidth_ = 0, visibleHeight_ = 0; // logical pixels
    double ratio_ = 1;                          // device pixels per logical pixel
    mutable bool dirty_ = false;    // changed since the last Image()
    std::function<void()> changed_;

    bool pixelScale_ = true;
    float scaleLeft_ = 0, scaleTop_ = 0, scaleWidth_ = 1, scaleHeight_ = 1;
    double factorX_ = 1, factorY_ = 1;             // logical pixels per plot unit
    double deviceFactorX_ = 1, deviceFactorY_ = 1; // device pixels per plot unit

    double currentX_ = 0, currentY_ = 0; // current point, plot units
    DrawStyle style_ = DrawStyle::Solid;
    DrawMode mode_ = DrawMode::CopyPen;
    std::uint32_t foreColor_ = 0;
    std::uint32_t backColor_ = 0xFFFFFF;
    std::vector<std::uint8_t> pattern_; // on/off per device pixel of one period; empty for solid

    std::vector<QPointF> chord_; // circle vertices, kept to avoid an allocation per arc
};

} // namespace backplot
