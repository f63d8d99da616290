#pragma once

#include "ScaleSurface.h"

#include <QPointF>
#include <cstdint>
#include <unordered_set>
#include <vector>

class QPainter;

namespace backplot {

// The printed page as a DrawSurface: what is drawn is kept as strokes in page pixels and
// handed to a QPainter on the printer (or a PDF file) by Paint() once the whole page is
// drawn, so a failure half-way never sends half a page.
//
// The size is the printable area in device pixels of the printer; the user scale maps onto
// it as on the canvas (ScaleSurface). Paper takes no invert mode: everything is drawn in
// copy mode, in the colour given, with lines of PenWidth device pixels.
//
// Drawing the same thing twice gives the same page, so the strokes are kept lean for a
// printer and a PDF file: a segment that continues the last stroke in the same colour and
// style extends it (a solid one also when it meets the stroke's end from the other side),
// a single segment that repeats an earlier one is dropped (the axis is drawn with every
// record), and so is a point on the stroke's last corners.
//
// Errors: a non-finite mapped coordinate raises RunTimeError("Overflow"); a circle angle
// outside -2 pi .. 2 pi raises RunTimeError("Invalid procedure call"). Nothing is drawn then.
class PageSurface : public ScaleSurface {
public:
    struct Stroke {
        std::uint32_t Color = 0; // 0xBBGGRR
        DrawStyle Style = DrawStyle::Solid;
        bool Dot = false;            // one point, Points[0]
        std::vector<QPointF> Points; // a polyline in page pixels
    };

    PageSurface(int pixelWidth, int pixelHeight, double penWidth);

    void Line(double x1, double y1, double x2, double y2, std::uint32_t color) override;
    void LineTo(double x, double y, std::uint32_t color) override;
    void Box(double x1, double y1, double x2, double y2, std::uint32_t color) override;
    void PSet(double x, double y, std::uint32_t color) override;
    void Circle(double cx, double cy, double radius, std::uint32_t color, double start, double end) override;
    // Blank paper again.
    void Clear() override;

    const std::vector<Stroke>& Strokes() const { return strokes_; }
    bool Empty() const { return strokes_.empty(); }
    double PenWidth() const { return penWidth_; }

    // Draws the strokes in order with `painter`, whose device is the page, clipped to the
    // printable area. Points go on whole device pixels and corners within half a pixel of
    // the line between their neighbours are left out, which no printer shows but which
    // keeps a PDF file of a large program several times smaller and quicker to write.
    void Paint(QPainter& painter) const;

private:
    QPointF Map(double x, double y) const;
    // Appends the segment a-b in page pixels.
    void Segment(QPointF a, QPointF b, std::uint32_t color);
    Stroke* Current(std::uint32_t color);

    struct SegmentKey {
        double X1, Y1, X2, Y2;
        std::uint32_t Color;
        DrawStyle Style;
        bool operator==(const SegmentKey&) const = default;
    };
    struct SegmentHash {
        std::size_t operator()(const SegmentKey& k) const;
    };

    double penWidth_;
    double currentX_ = 0, currentY_ = 0; // current point, plot units
    std::vector<Stroke> strokes_;
    bool open_ = false; // the last stroke may still be extended
    std::unordered_set<SegmentKey, SegmentHash> singles_;
};

} // namespace backplot
