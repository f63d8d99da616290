#include "PageSurface.h"

#include "ArcAngle.h"
#include "ArcGeometry.h"
#include "ClipSegment.h"
#include "RunTimeError.h"

#include <QPainter>
#include <QPen>
#include <algorithm>
#include <cmath>
#include <functional>

namespace backplot {

namespace {

// Far outside any page, near enough that a printer or a PDF reader still takes the number.
constexpr double ClipBound = 1e6;

QColor ToColor(std::uint32_t bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

Qt::PenStyle ToPenStyle(DrawStyle style)
{
    switch (style) {
    case DrawStyle::Dash:
        return Qt::DashLine;
    case DrawStyle::Dot:
        return Qt::DotLine;
    case DrawStyle::DashDot:
        return Qt::DashDotLine;
    case DrawStyle::DashDotDot:
        return Qt::DashDotDotLine;
    case DrawStyle::Solid:
        break;
    }
    return Qt::SolidLine;
}

// Clipped to the bound; a segment wholly inside is left exactly as it is.
bool Clip(QPointF& a, QPointF& b)
{
    if (std::fabs(a.x()) <= ClipBound && std::fabs(a.y()) <= ClipBound && std::fabs(b.x()) <= ClipBound &&
        std::fabs(b.y()) <= ClipBound)
        return true;
    return ClipSegment(a, b, ClipBound);
}

// Squared distance of p from the segment a-b.
double SquaredDistanceToSegment(QPointF p, QPointF a, QPointF b)
{
    const double dx = b.x() - a.x(), dy = b.y() - a.y();
    const double length2 = dx * dx + dy * dy;
    double t = length2 > 0 ? ((p.x() - a.x()) * dx + (p.y() - a.y()) * dy) / length2 : 0;
    t = std::clamp(t, 0.0, 1.0);
    const double ex = p.x() - (a.x() + t * dx), ey = p.y() - (a.y() + t * dy);
    return ex * ex + ey * ey;
}

// The polyline as it goes to the printer: without the corners that lie within 0.75 of a
// device pixel of the line between their neighbours (Douglas-Peucker), then on whole
// device pixels without repeated points. A printer pixel is a few hundredths of a
// millimetre, so nobody sees the difference, but a page of thousands of 72-chord arcs and
// halved cuts shrinks several times over.
std::vector<QPointF> PrinterPolyline(const std::vector<QPointF>& points)
{
    constexpr double tolerance2 = 0.75 * 0.75;
    std::vector<char> keep(points.size(), 0);
    keep.front() = keep.back() = 1;
    std::vector<std::pair<std::size_t, std::size_t>> spans;
    if (points.size() > 2)
        spans.push_back({0, points.size() - 1});
    while (!spans.empty()) {
        const auto [first, last] = spans.back();
        spans.pop_back();
        double farthest = 0;
        std::size_t at = first;
        for (std::size_t i = first + 1; i < last; ++i) {
            const double d = SquaredDistanceToSegment(points[i], points[first], points[last]);
            if (d > farthest) {
                farthest = d;
                at = i;
            }
        }
        if (farthest > tolerance2) {
            keep[at] = 1;
            spans.push_back({first, at});
            spans.push_back({at, last});
        }
    }
    std::vector<QPointF> kept;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!keep[i])
            continue;
        const QPointF q(std::round(points[i].x()), std::round(points[i].y()));
        if (kept.empty() || kept.back() != q)
            kept.push_back(q);
    }
    return kept;
}

} // namespace

std::size_t PageSurface::SegmentHash::operator()(const SegmentKey& k) const
{
    std::size_t h = std::hash<double>()(k.X1);
    for (double v : {k.Y1, k.X2, k.Y2})
        h = h * 1000003u ^ std::hash<double>()(v);
    return h * 31u + k.Color * 7u + static_cast<std::size_t>(k.Style);
}

PageSurface::PageSurface(int pixelWidth, int pixelHeight, double penWidth)
    : ScaleSurface(pixelWidth, pixelHeight), penWidth_(penWidth)
{
}

QPointF PageSurface::Map(double x, double y) const
{
    const double px = (x - ScaleLeft()) * PixelWidth() / static_cast<double>(ScaleWidth());
    const double py = (y - ScaleTop()) * PixelHeight() / static_cast<double>(ScaleHeight());
    if (!std::isfinite(px) || !std::isfinite(py))
        throw RunTimeError("Overflow");
    return {px, py};
}

PageSurface::Stroke* PageSurface::Current(std::uint32_t color)
{
    if (!open_ || strokes_.empty())
        return nullptr;
    Stroke& last = strokes_.back();
    return last.Color == color && last.Style == GetDrawStyle() ? &last : nullptr;
}

void PageSurface::Segment(QPointF a, QPointF b, std::uint32_t color)
{
    if (a == b || !Clip(a, b))
        return; // a line of no length draws nothing, as on the screen
    if (Stroke* stroke = Current(color)) {
        if (stroke->Points.back() == a) {
            stroke->Points.push_back(b);
            return;
        }
        // A cut is drawn from both ends toward its middle: the second half meets the
        // first at its end. Only a solid line looks the same drawn either way.
        if (stroke->Style == DrawStyle::Solid && stroke->Points.back() == b) {
            stroke->Points.push_back(a);
            return;
        }
    }
    const SegmentKey key{a.x(), a.y(), b.x(), b.y(), color, GetDrawStyle()};
    if (!singles_.insert(key).second)
        return;
    strokes_.push_back({color, GetDrawStyle(), false, {a, b}});
    open_ = true;
}

void PageSurface::Line(double x1, double y1, double x2, double y2, std::uint32_t color)
{
    const QPointF a = Map(x1, y1);
    const QPointF b = Map(x2, y2);
    currentX_ = x2;
    currentY_ = y2;
    Segment(a, b, color);
}

void PageSurface::LineTo(double x, double y, std::uint32_t color) { Line(currentX_, currentY_, x, y, color); }

void PageSurface::Box(double x1, double y1, double x2, double y2, std::uint32_t color)
{
    const QPointF a = Map(x1, y1);
    const QPointF c = Map(x2, y2);
    currentX_ = x2;
    currentY_ = y2;
    const QPointF b(c.x(), a.y()), d(a.x(), c.y());
    Segment(a, b, color);
    Segment(b, c, color);
    Segment(c, d, color);
    Segment(d, a, color);
}

void PageSurface::PSet(double x, double y, std::uint32_t color)
{
    QPointF p = Map(x, y);
    currentX_ = x;
    currentY_ = y;
    if (const Stroke* stroke = Current(color); stroke && stroke->Style == DrawStyle::Solid) {
        const auto& points = stroke->Points;
        const auto from = points.size() > 3 ? points.end() - 3 : points.begin();
        if (std::find(from, points.end(), p) != points.end())
            return;
    }
    if (std::fabs(p.x()) > ClipBound || std::fabs(p.y()) > ClipBound)
        return;
    strokes_.push_back({color, DrawStyle::Solid, true, {p}});
    open_ = false;
}

void PageSurface::Circle(double cx, double cy, double radius, std::uint32_t color, double start, double end)
{
    start = CheckArcAngle(start);
    end = CheckArcAngle(end);
    const QPointF centre = Map(cx, cy);
    const double r = std::fabs(radius * PixelWidth() / static_cast<double>(ScaleWidth()));
    if (!std::isfinite(r))
        throw RunTimeError("Overflow");
    currentX_ = cx;
    currentY_ = cy;
    // Counter-clockwise from start to end, equal angles the whole circle, in chords of
    // at most one degree.
    double sweep = end - start;
    if (sweep <= 0)
        sweep += 2 * Pi;
    const int count = std::clamp(static_cast<int>(std::ceil(sweep / (Pi / 180))), 4, 360);
    QPointF from(centre.x() + r * std::cos(start), centre.y() - r * std::sin(start));
    for (int i = 1; i <= count; ++i) {
        const double a = start + sweep * i / count;
        const QPointF to(centre.x() + r * std::cos(a), centre.y() - r * std::sin(a));
        Segment(from, to, color);
        from = to;
    }
}

void PageSurface::Clear()
{
    strokes_.clear();
    singles_.clear();
    open_ = false;
}

void PageSurface::Paint(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setBrush(Qt::NoBrush);
    // The page ends at its printable area, as the screen ends at the canvas's edge.
    painter.setClipRect(QRectF(0, 0, PixelWidth(), PixelHeight()));
    QPen pen;
    bool first = true;
    for (const Stroke& stroke : strokes_) {
        const bool solid = stroke.Style == DrawStyle::Solid;
        const QPen wanted(ToColor(stroke.Color), penWidth_, ToPenStyle(stroke.Style),
                          solid || stroke.Dot ? Qt::RoundCap : Qt::FlatCap, Qt::RoundJoin);
        // A pen set again would be written into a PDF again.
        if (first || wanted != pen) {
            painter.setPen(wanted);
            pen = wanted;
            first = false;
        }
        if (stroke.Dot) {
            painter.drawPoint(QPointF(std::round(stroke.Points.front().x()), std::round(stroke.Points.front().y())));
        } else {
            const std::vector<QPointF> line = PrinterPolyline(stroke.Points);
            if (line.size() == 1)
                painter.drawPoint(line.front());
            else
                painter.drawPolyline(line.data(), static_cast<int>(line.size()));
        }
    }
}

} // namespace backplot
