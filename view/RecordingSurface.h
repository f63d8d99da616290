#pragma once

#include "ScaleSurface.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace backplot {

// A DrawSurface that draws nothing and keeps a log of every primitive, for tests.
class RecordingSurface : public ScaleSurface {
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

    explicit RecordingSurface(int width = 400, int height = 200) : ScaleSurface(width, height) {}

    void Line(double x1, double y1, double x2, double y2, std::uint32_t color) override;
    void LineTo(double x, double y, std::uint32_t color) override;
    void Box(double x1, double y1, double x2, double y2, std::uint32_t color) override;
    void PSet(double x, double y, std::uint32_t color) override;
    void Circle(double cx, double cy, double radius, std::uint32_t color, double start,
                double end) override;

    void Clear() override;

    const std::vector<Primitive>& Primitives() const { return log_; }
    void ForgetPrimitives() { log_.clear(); }

    // Makes every later call of the given kind raise RunTimeError("Invalid procedure call")
    // without being logged, as a failing platform primitive would; nothing to stop that.
    void FailOn(std::optional<Kind> kind) { failing_ = kind; }

private:
    void Log(Primitive p);

    double currentX_ = 0, currentY_ = 0;
    std::optional<Kind> failing_;
    std::vector<Primitive> log_;
};

} // namespace backplot
