#include "ViewTransform.h"

#include "RunTimeError.h"

#include <cmath>
#include <limits>
#include <utility>

namespace backplot {

namespace {

// A double stored into a float field: out of range or not a number is an overflow fault.
float Narrow(double value)
{
    if (!std::isfinite(value) || std::fabs(value) > std::numeric_limits<float>::max())
        throw RunTimeError("Overflow");
    return static_cast<float>(value);
}

double Divide(double a, double b)
{
    if (b == 0)
        throw RunTimeError(a == 0 ? "Overflow" : "Division by zero");
    return a / b;
}

void SetScaleLeft(DrawSurface& s, float v) { s.SetScale(v, s.ScaleTop(), s.ScaleWidth(), s.ScaleHeight()); }
void SetScaleTop(DrawSurface& s, float v) { s.SetScale(s.ScaleLeft(), v, s.ScaleWidth(), s.ScaleHeight()); }
void SetScaleWidth(DrawSurface& s, float v) { s.SetScale(s.ScaleLeft(), s.ScaleTop(), v, s.ScaleHeight()); }
void SetScaleHeight(DrawSurface& s, float v) { s.SetScale(s.ScaleLeft(), s.ScaleTop(), s.ScaleWidth(), v); }

} // namespace

void ViewTransform::SetCoords(DrawSurface& canvas)
{
    // A single point has no size to fit.
    if (ViewX1 == ViewX2 && ViewY1 == ViewY2)
        return;

    // Shape of the canvas.
    const double pixelWidth = canvas.PixelWidth();
    const double pixelHeight = canvas.PixelHeight();
    AspectRatio = Narrow(Divide(pixelWidth, pixelHeight));

    // Corners in order.
    if (ViewX1 > ViewX2)
        std::swap(ViewX1, ViewX2);
    if (ViewY1 > ViewY2)
        std::swap(ViewY1, ViewY2);

    // Back to device units before the new scale is built.
    canvas.ResetScale();

    // Canvas width in pixels; becomes the two-pixel span below.
    TwoPixelSpan = Narrow(pixelWidth);

    // Fit by the longer side of the window, compared in plot units only.
    const float dx = Narrow(std::fabs(static_cast<double>(ViewX1) - ViewX2));
    const float dy = Narrow(std::fabs(static_cast<double>(ViewY1) - ViewY2));
    if (dy <= dx) {
        FitSpan = Narrow(Divide(dx, AspectRatio));
        SetScaleLeft(canvas, ViewX1);
        SetScaleTop(canvas, Narrow((dy / 2.0 + ViewY1) - FitSpan / 2.0));
        ViewY1 = canvas.ScaleTop();
        ViewY2 = Narrow(static_cast<double>(ViewY1) + FitSpan);
        SetScaleWidth(canvas, dx);
        // Positive height: stored Y grows downward.
        SetScaleHeight(canvas, FitSpan);
    } else {
        FitSpan = Narrow(static_cast<double>(dy) * AspectRatio);
        SetScaleLeft(canvas, Narrow((dx / 2.0 + ViewX1) - FitSpan / 2.0));
        ViewX1 = canvas.ScaleLeft();
        ViewX2 = Narrow(static_cast<double>(ViewX1) + FitSpan);
        SetScaleTop(canvas, ViewY1);
        SetScaleWidth(canvas, FitSpan);
        // Positive height: stored Y grows downward.
        SetScaleHeight(canvas, dy);
    }

    // Two pixels in plot units.
    TwoPixelSpan = Narrow(2.0 * Divide(canvas.ScaleWidth(), TwoPixelSpan));

    BlipSize = Narrow(FitSpan * 0.01);
}

void ViewTransform::SaveView()
{
    PrevViewX1 = ViewX1;
    PrevViewY1 = ViewY1;
    PrevViewX2 = ViewX2;
    PrevViewY2 = ViewY2;
}

void ViewTransform::ZoomOut()
{
    const double step = 0.3 * FitSpan;
    ViewX1 = static_cast<float>(ViewX1 - step);
    ViewX2 = static_cast<float>(ViewX2 + step);
    ViewY1 = static_cast<float>(ViewY1 - step);
    ViewY2 = static_cast<float>(ViewY2 + step);
}

void ViewTransform::ZoomIn()
{
    const double step = 0.3 * FitSpan;
    ViewX1 = static_cast<float>(ViewX1 + step);
    ViewY1 = static_cast<float>(ViewY1 + step);
    ViewX2 = static_cast<float>(ViewX2 - step);
    ViewY2 = static_cast<float>(ViewY2 - step);
}

} // namespace backplot
