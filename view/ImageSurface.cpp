#include "ImageSurface.h"

#include "ArcAngle.h"
#include "ArcGeometry.h"
#include "ClipSegment.h"
#include "RunTimeError.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace backplot {

struct ImageSurface::Pen {
    std::uint32_t pixel = 0; // 0xFFRRGGBB
    bool invert = false;
    const std::uint8_t* pattern = nullptr; // null for solid
    int period = 0;
};

namespace {

// Far enough outside any picture that clipping there changes no visible pixel, near
// enough that the integer stepping below cannot overflow.
constexpr double ClipBound = 1e7;

std::uint32_t ToPixel(std::uint32_t bgr)
{
    return 0xFF000000u | ((bgr & 0xFFu) << 16) | (bgr & 0xFF00u) | ((bgr >> 16) & 0xFFu);
}

double RoundPixel(double v) { return std::floor(v + 0.5); }

// Not a number counts as outside: the clipping then finds nothing to draw.
bool OutsideBound(QPointF p) { return !(std::fabs(p.x()) <= ClipBound && std::fabs(p.y()) <= ClipBound); }

// Clipped to the bound, the moved ends rounded to whole pixels again.
bool ClipToBound(QPointF& a, QPointF& b)
{
    if (!ClipSegment(a, b, ClipBound))
        return false;
    a = QPointF(RoundPixel(a.x()), RoundPixel(a.y()));
    b = QPointF(RoundPixel(b.x()), RoundPixel(b.y()));
    return true;
}

// Steps i in [0, n) of a coordinate start + sign * i that fall inside [0, size).
void InsideSteps(std::int64_t start, int sign, std::int64_t n, std::int64_t size, std::int64_t& lo,
                 std::int64_t& hi)
{
    if (sign > 0) {
        lo = std::max<std::int64_t>(0, -start);
        hi = std::min(n, size - start);
    } else {
        lo = std::max<std::int64_t>(0, start - (size - 1));
        hi = std::min(n, start + 1);
    }
}

} // namespace

ImageSurface::ImageSurface(int width, int height, std::uint32_t backColor, double devicePixelRatio)
    : backColor_(backColor)
{
    ratio_ = std::isfinite(devicePixelRatio) && devicePixelRatio > 0 ? devicePixelRatio : 1;
    if (width > 0 && height > 0) {
        visibleWidth_ = width;
        visibleHeight_ = height;
        image_ = QImage(ToDevice(width), ToDevice(height), QImage::Format_RGB32);
        image_.setDevicePixelRatio(ratio_);
        image_.fill(ToPixel(backColor_));
    }
    width_ = image_.width();
    height_ = image_.height();
    ResetScale();
}

int ImageSurface::ToDevice(int logical) const
{
    // Rounded up, so the visible part covers every device pixel of a fractional ratio.
    return static_cast<int>(std::ceil(logical * ratio_));
}

void ImageSurface::SetDevicePixelRatio(double ratio)
{
    if (!std::isfinite(ratio) || ratio <= 0)
        ratio = 1;
    if (ratio == ratio_)
        return;
    if (!image_.isNull()) {
        // Nearest pixel keeps exactly the colours that were drawn.
        const double grow = ratio / ratio_;
        const int w = std::max(1, static_cast<int>(std::lround(image_.width() * grow)));
        const int h = std::max(1, static_cast<int>(std::lround(image_.height() * grow)));
        QImage scaled = image_.scaled(w, h, Qt::IgnoreAspectRatio, Qt::FastTransformation)
                            .convertToFormat(QImage::Format_RGB32);
        scaled.setDevicePixelRatio(ratio);
        image_ = scaled;
        bits_ = nullptr;
        width_ = image_.width();
        height_ = image_.height();
    }
    ratio_ = ratio;
    Reserve(ToDevice(visibleWidth_), ToDevice(visibleHeight_));
    UpdateFactors();
    BuildPattern();
    MarkChanged();
}

void ImageSurface::SetScale(float left, float top, float width, float height)
{
    if (!std::isfinite(left) || !std::isfinite(top) || !std::isfinite(width) ||
        !std::isfinite(height) || width == 0 || height == 0)
        throw RunTimeError("Invalid property value");
    pixelScale_ = false;
    scaleLeft_ = left;
    scaleTop_ = top;
    scaleWidth_ = width;
    scaleHeight_ = height;
    UpdateFactors();
}

void ImageSurface::ResetScale()
{
    pixelScale_ = true;
    scaleLeft_ = 0;
    scaleTop_ = 0;
    scaleWidth_ = static_cast<float>(visibleWidth_);
    scaleHeight_ = static_cast<float>(visibleHeight_);
    UpdateFactors();
}

void ImageSurface::UpdateFactors()
{
    factorX_ = scaleWidth_ != 0 ? visibleWidth_ / static_cast<double>(scaleWidth_) : 0;
    factorY_ = scaleHeight_ != 0 ? visibleHeight_ / static_cast<double>(scaleHeight_) : 0;
    deviceFactorX_ = factorX_ * ratio_;
    deviceFactorY_ = factorY_ * ratio_;
}

QPointF ImageSurface::Map(double x, double y) const
{
    const double px = RoundPixel((x - scaleLeft_) * deviceFactorX_);
    const double py = RoundPixel((y - scaleTop_) * deviceFactorY_);
    if (!std::isfinite(px) || !std::isfinite(py))
        throw RunTimeError("Overflow");
    return {px, py};
}

QPointF ImageSurface::ToPlot(double px, double py) const
{
    return {scaleLeft_ + px / factorX_, scaleTop_ + py / factorY_};
}

QPointF ImageSurface::PixelOf(double x, double y) const
{
    const QPointF device = Map(x, y);
    return {device.x() / ratio_, device.y() / ratio_};
}

void ImageSurface::MarkChanged()
{
    if (dirty_)
        return;
    dirty_ = true;
    if (changed_)
        changed_();
}

const QImage& ImageSurface::Image() const
{
    dirty_ = false;
    return image_;
}

QImage ImageSurface::VisibleImage() const
{
    dirty_ = false;
    const int w = ToDevice(visibleWidth_), h = ToDevice(visibleHeight_);
    if (image_.size() == QSize(w, h))
        return image_;
    return image_.copy(0, 0, w, h); // keeps the ratio
}

ImageSurface::Pen ImageSurface::MakePen(std::uint32_t color)
{
    // bits() detaches the image from any copy handed out, so copies stay as they were.
    bits_ = reinterpret_cast<std::uint32_t*>(image_.bits());
    stride_ = image_.bytesPerLine() / 4;
    MarkChanged();
    Pen pen;
    pen.pixel = ToPixel(color);
    pen.invert = mode_ == DrawMode::Invert;
    if (!pattern_.empty()) {
        pen.pattern = pattern_.data();
        pen.period = static_cast<int>(pattern_.size());
    }
    return pen;
}

void ImageSurface::Pixel(const Pen& pen, std::int64_t x, std::int64_t y)
{
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        return;
    std::uint32_t& p = bits_[y * stride_ + x];
    p = pen.invert ? (~p | 0xFF000000u) : pen.pixel;
}

namespace {

// The inner walk of a segment: `count` steps from `index`, each moving `majorStep` pixels
// in memory and, when the error term overflows, `minorStep` more; pixels whose minor
// coordinate falls outside [0, minorSize) are skipped.
struct Walk {
    std::uint32_t* bits;
    std::int64_t index; // of the current pixel in bits; meaningful only while minor is in range
    std::int64_t count;
    std::int64_t majorStep, minorStep;
    std::int64_t minor, minorSize, minorSign;
    std::int64_t error, errorStep, errorWrap; // 0 <= error < errorWrap
    int dash, period;                         // position in the dash pattern
};

// Inside: every pixel of the walk is known to lie in the picture.
template <bool Invert, bool Dashed, bool Inside = false>
void WalkSegment(Walk w, std::uint32_t value, const std::uint8_t* pattern)
{
    for (std::int64_t i = 0; i < w.count; ++i) {
        if ((!Dashed || pattern[w.dash]) && (Inside || (w.minor >= 0 && w.minor < w.minorSize))) {
            std::uint32_t& p = w.bits[w.index];
            p = Invert ? (~p | 0xFF000000u) : value;
        }
        if (Dashed && ++w.dash == w.period)
            w.dash = 0;
        w.index += w.majorStep;
        w.error += w.errorStep;
        if (w.error >= w.errorWrap) {
            w.error -= w.errorWrap;
            w.minor += w.minorSign;
            w.index += w.minorStep;
        }
    }
}

} // namespace

void ImageSurface::Segment(const Pen& pen, QPointF a, QPointF b, std::int64_t& phase)
{
    if ((OutsideBound(a) || OutsideBound(b)) && !ClipToBound(a, b))
        return;
    const auto x0 = static_cast<std::int64_t>(a.x()), y0 = static_cast<std::int64_t>(a.y());
    const std::int64_t dx = static_cast<std::int64_t>(b.x()) - x0;
    const std::int64_t dy = static_cast<std::int64_t>(b.y()) - y0;
    const std::int64_t n = std::max(std::abs(dx), std::abs(dy));
    if (n == 0)
        return;

    // Step i (0 <= i < n) moves one pixel along the longer axis; the other coordinate is
    // start + round(i * delta / n), halves rounded up.
    const bool xMajor = std::abs(dx) >= std::abs(dy);

    // Most segments of a plot lie wholly inside the picture or wholly beyond one of its
    // edges: the first are walked without clipping, the second leave nothing.
    const std::int64_t x1 = x0 + dx, y1 = y0 + dy;
    const bool xInside = x0 >= 0 && x0 < width_ && x1 >= 0 && x1 < width_;
    const bool yInside = y0 >= 0 && y0 < height_ && y1 >= 0 && y1 < height_;
    if (xInside && yInside) {
        const std::int64_t minorDelta = xMajor ? dy : dx;
        const std::int64_t minorSign = minorDelta >= 0 ? 1 : -1;
        const std::int64_t majorSign = (xMajor ? dx : dy) > 0 ? 1 : -1;
        Walk w;
        w.bits = bits_;
        w.index = y0 * stride_ + x0;
        w.count = n;
        w.majorStep = xMajor ? majorSign : majorSign * stride_;
        w.minorStep = xMajor ? minorSign * stride_ : minorSign;
        w.minor = 0;
        w.minorSize = 1;
        w.minorSign = 0;
        w.error = minorDelta >= 0 ? n : n - 1; // the general walk's start at step 0
        w.errorStep = 2 * std::abs(minorDelta);
        w.errorWrap = 2 * n;
        w.period = pen.period;
        w.dash = pen.pattern ? static_cast<int>(phase % pen.period) : 0;
        if (pen.invert)
            pen.pattern ? WalkSegment<true, true, true>(w, pen.pixel, pen.pattern)
                        : WalkSegment<true, false, true>(w, pen.pixel, pen.pattern);
        else
            pen.pattern ? WalkSegment<false, true, true>(w, pen.pixel, pen.pattern)
                        : WalkSegment<false, false, true>(w, pen.pixel, pen.pattern);
        phase += n;
        return;
    }
    if ((x0 < 0 && x1 < 0) || (x0 >= width_ && x1 >= width_) || (y0 < 0 && y1 < 0) ||
        (y0 >= height_ && y1 >= height_)) {
        phase += n;
        return;
    }
    const std::int64_t major0 = xMajor ? x0 : y0, minor0 = xMajor ? y0 : x0;
    const std::int64_t majorDelta = xMajor ? dx : dy, minorDelta = xMajor ? dy : dx;
    const std::int64_t majorSize = xMajor ? width_ : height_;
    const std::int64_t minorSize = xMajor ? height_ : width_;
    const int majorSign = majorDelta > 0 ? 1 : -1;

    // Only the steps that can land inside the picture are walked.
    std::int64_t lo, hi;
    InsideSteps(major0, majorSign, n, majorSize, lo, hi);
    if (minorDelta != 0) {
        const double slope = static_cast<double>(minorDelta) / n;
        double first = (-0.5 - minor0) / slope, last = (minorSize - 0.5 - minor0) / slope;
        if (first > last)
            std::swap(first, last);
        lo = std::max(lo, static_cast<std::int64_t>(std::floor(first)) - 1);
        hi = std::min(hi, static_cast<std::int64_t>(std::ceil(last)) + 2);
    } else if (minor0 < 0 || minor0 >= minorSize) {
        hi = lo;
    }

    if (lo < hi) {
        // minor(i) = minor0 + floor((2 i delta + n) / 2n), kept as a quotient and an error
        // term that grows by 2 |delta| per step.
        const std::int64_t wrap = 2 * n;
        const std::int64_t numerator = 2 * lo * std::abs(minorDelta) + (minorDelta >= 0 ? n : n - 1);
        const std::int64_t minorSign = minorDelta >= 0 ? 1 : -1;
        Walk w;
        w.count = hi - lo;
        w.minor = minor0 + minorSign * (numerator / wrap);
        w.error = numerator % wrap;
        w.errorStep = 2 * std::abs(minorDelta);
        w.errorWrap = wrap;
        w.minorSize = minorSize;
        w.minorSign = minorSign;
        const std::int64_t major = major0 + majorSign * lo;
        const std::int64_t x = xMajor ? major : w.minor, y = xMajor ? w.minor : major;
        w.bits = bits_;
        w.index = y * stride_ + x;
        w.majorStep = xMajor ? majorSign : majorSign * stride_;
        w.minorStep = xMajor ? minorSign * stride_ : minorSign;
        w.period = pen.period;
        w.dash = pen.pattern ? static_cast<int>((phase + lo) % pen.period) : 0;
        if (pen.invert)
            pen.pattern ? WalkSegment<true, true>(w, pen.pixel, pen.pattern)
                        : WalkSegment<true, false>(w, pen.pixel, pen.pattern);
        else
            pen.pattern ? WalkSegment<false, true>(w, pen.pixel, pen.pattern)
                        : WalkSegment<false, false>(w, pen.pixel, pen.pattern);
    }
    phase += n;
}

void ImageSurface::Line(double x1, double y1, double x2, double y2, std::uint32_t color)
{
    const QPointF a = Map(x1, y1);
    const QPointF b = Map(x2, y2);
    currentX_ = x2;
    currentY_ = y2;
    if (!Drawable())
        return;
    std::int64_t phase = 0;
    Segment(MakePen(color), a, b, phase);
}

void ImageSurface::LineTo(double x, double y, std::uint32_t color)
{
    Line(currentX_, currentY_, x, y, color);
}

void ImageSurface::Box(double x1, double y1, double x2, double y2, std::uint32_t color)
{
    QPointF a = Map(x1, y1);
    QPointF b = Map(x2, y2);
    currentX_ = x2;
    currentY_ = y2;
    if (!Drawable())
        return;
    // Clamping the corners far outside the picture keeps every visible edge where it was.
    const auto clamp = [](QPointF p) {
        return QPointF(std::clamp(p.x(), -ClipBound, ClipBound), std::clamp(p.y(), -ClipBound, ClipBound));
    };
    a = clamp(a);
    b = clamp(b);
    const double left = std::min(a.x(), b.x()), right = std::max(a.x(), b.x());
    const double top = std::min(a.y(), b.y()), bottom = std::max(a.y(), b.y());
    const Pen pen = MakePen(color);
    std::int64_t phase = 0;
    if (left == right || top == bottom) {
        // A box without area is one line, its end pixel included, each pixel once.
        Segment(pen, {left, top}, {right, bottom}, phase);
        if (!pen.pattern || pen.pattern[phase % pen.period])
            Pixel(pen, static_cast<std::int64_t>(right), static_cast<std::int64_t>(bottom));
        return;
    }
    // Clockwise from the top-left corner, every side without its last pixel: every pixel
    // of the outline once, so drawing it twice in invert mode restores the picture.
    Segment(pen, {left, top}, {right, top}, phase);
    Segment(pen, {right, top}, {right, bottom}, phase);
    Segment(pen, {right, bottom}, {left, bottom}, phase);
    Segment(pen, {left, bottom}, {left, top}, phase);
}

void ImageSurface::PSet(double x, double y, std::uint32_t color)
{
    const QPointF p = Map(x, y);
    currentX_ = x;
    currentY_ = y;
    if (!Drawable())
        return;
    Pixel(MakePen(color), static_cast<std::int64_t>(std::clamp(p.x(), -1.0, ClipBound)),
          static_cast<std::int64_t>(std::clamp(p.y(), -1.0, ClipBound)));
}

void ImageSurface::Circle(double cx, double cy, double radius, std::uint32_t color, double start,
                          double end)
{
    start = CheckArcAngle(start);
    end = CheckArcAngle(end);
    const double centreX = (cx - scaleLeft_) * deviceFactorX_;
    const double centreY = (cy - scaleTop_) * deviceFactorY_;
    const double r = std::fabs(radius * deviceFactorX_);
    if (!std::isfinite(centreX) || !std::isfinite(centreY) || !std::isfinite(r))
        throw RunTimeError("Overflow");
    currentX_ = cx;
    currentY_ = cy;
    if (!Drawable())
        return;
    const double w = image_.width(), h = image_.height();
    if (centreX + r < -1 || centreX - r > w + 1 || centreY + r < -1 || centreY - r > h + 1)
        return; // wholly outside the picture

    const Pen pen = MakePen(color);
    if (r < 0.5) {
        Pixel(pen, static_cast<std::int64_t>(RoundPixel(centreX)), static_cast<std::int64_t>(RoundPixel(centreY)));
        return;
    }

    // Counter-clockwise on screen from start to end; equal angles make the whole circle.
    double sweep = end - start;
    if (sweep <= 0)
        sweep += 2 * Pi;
    // Chords whose middle stays within a tenth of a pixel of the arc (coarser chords
    // leave visible nubs once their ends are rounded to pixels), a multiple of four of
    // them so that a whole circle has vertices at its top, bottom and sides.
    // Counted in doubles: for a radius beyond 1e15 pixels the step is 0 and the count
    // infinite until clamped.
    const double maxStep = 2 * std::acos(1 - 0.1 / r);
    int count = static_cast<int>(std::clamp(std::ceil(sweep / maxStep), 4.0, 4096.0));
    count = (count + 3) / 4 * 4;
    const double step = sweep / count;

    // Successive rotations instead of a cosine and sine per vertex.
    const double cosStep = std::cos(step), sinStep = std::sin(step);
    double c = std::cos(start), s = std::sin(start);
    chord_.clear();
    for (int i = 0; i <= count; ++i) {
        if (i == count) {
            c = std::cos(start + sweep);
            s = std::sin(start + sweep);
        }
        const QPointF p(RoundPixel(centreX + r * c), RoundPixel(centreY - r * s));
        if (chord_.empty() || chord_.back() != p)
            chord_.push_back(p);
        const double next = c * cosStep - s * sinStep;
        s = s * cosStep + c * sinStep;
        c = next;
    }
    if (chord_.size() == 1) {
        Pixel(pen, static_cast<std::int64_t>(chord_[0].x()), static_cast<std::int64_t>(chord_[0].y()));
        return;
    }
    // Each chord leaves out its last pixel, which the next one starts with; the arc's own
    // end is set at the close unless it is the first pixel again (a whole circle).
    std::int64_t phase = 0;
    for (std::size_t i = 1; i < chord_.size(); ++i)
        Segment(pen, chord_[i - 1], chord_[i], phase);
    if (chord_.back() != chord_.front() && (!pen.pattern || pen.pattern[phase % pen.period]))
        Pixel(pen, static_cast<std::int64_t>(chord_.back().x()), static_cast<std::int64_t>(chord_.back().y()));
}

void ImageSurface::SetDrawStyle(DrawStyle style)
{
    style_ = style;
    BuildPattern();
}

void ImageSurface::BuildPattern()
{
    // On, off, on, off, ... in logical pixels, as the classic display driver draws cosmetic pens.
    static constexpr std::array<int, 2> dash{18, 6};
    static constexpr std::array<int, 2> dot{3, 3};
    static constexpr std::array<int, 4> dashDot{9, 6, 3, 6};
    static constexpr std::array<int, 6> dashDotDot{9, 3, 3, 3, 3, 3};
    std::span<const int> runs;
    switch (style_) {
    case DrawStyle::Dash:
        runs = dash;
        break;
    case DrawStyle::Dot:
        runs = dot;
        break;
    case DrawStyle::DashDot:
        runs = dashDot;
        break;
    case DrawStyle::DashDotDot:
        runs = dashDotDot;
        break;
    case DrawStyle::Solid:
        break;
    }
    pattern_.clear();
    std::uint8_t on = 1;
    for (int run : runs) {
        const long devicePixels = std::max(1L, std::lround(run * ratio_));
        pattern_.insert(pattern_.end(), static_cast<std::size_t>(devicePixels), on);
        on ^= 1;
    }
}

void ImageSurface::Clear()
{
    currentX_ = 0;
    currentY_ = 0;
    if (image_.isNull())
        return;
    image_.fill(ToPixel(backColor_));
    MarkChanged();
}

void ImageSurface::Resize(int width, int height)
{
    visibleWidth_ = std::max(width, 0);
    visibleHeight_ = std::max(height, 0);
    Reserve(ToDevice(visibleWidth_), ToDevice(visibleHeight_));
    if (pixelScale_)
        ResetScale();
    else
        UpdateFactors();
    MarkChanged();
}

void ImageSurface::Reserve(int width, int height)
{
    const int keptWidth = std::max(width, image_.isNull() ? 0 : image_.width());
    const int keptHeight = std::max(height, image_.isNull() ? 0 : image_.height());
    if (keptWidth <= 0 || keptHeight <= 0 || (keptWidth == image_.width() && keptHeight == image_.height()))
        return;
    QImage grown(keptWidth, keptHeight, QImage::Format_RGB32);
    grown.setDevicePixelRatio(ratio_);
    grown.fill(ToPixel(backColor_));
    if (!image_.isNull()) {
        QPainter copy(&grown);
        copy.setCompositionMode(QPainter::CompositionMode_Source);
        copy.drawImage(0, 0, image_);
    }
    image_ = grown;
    bits_ = nullptr;
    width_ = image_.width();
    height_ = image_.height();
    MarkChanged();
}
} // namespace backplot
