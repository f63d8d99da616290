#include "CanvasWidget.h"

#include "ImageSurface.h"
#include "RunTimeError.h"

#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QWheelEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace backplot {

namespace {

QPointF PixelOf(const QMouseEvent* event)
{
    const QPointF p = event->position();
    return {std::floor(p.x()), std::floor(p.y())};
}

} // namespace

CanvasWidget::CanvasWidget(QWidget* parent)
    : QWidget(parent),
      surface_(std::make_unique<ImageSurface>(width(), height(), 0xFFFFFF, devicePixelRatioF()))
{
    setObjectName("picCanvas");
    // Every pixel comes from the image: no background erase, no flicker.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    // One repaint per batch of drawing, however many primitives it holds.
    surface_->SetChangedCallback([this] { update(); });
}

CanvasWidget::~CanvasWidget() = default;

DrawSurface& CanvasWidget::Surface() { return *surface_; }

void CanvasWidget::SetBackColor(std::uint32_t bgr) { surface_->SetBackColor(bgr); }

void CanvasWidget::ClearPicture()
{
    surface_->Clear();
    update();
}

QImage CanvasWidget::Picture() const { return surface_->VisibleImage(); }

bool CanvasWidget::event(QEvent* event)
{
    // A move to a screen of another ratio (or the ratio of this screen changing).
    if (event->type() == QEvent::ScreenChangeInternal
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
        || event->type() == QEvent::DevicePixelRatioChange
#endif
    )
        FollowPixelRatio();
    return QWidget::event(event);
}

void CanvasWidget::FollowPixelRatio()
{
    const double ratio = devicePixelRatioF();
    if (ratio != surface_->DevicePixelRatio()) {
        surface_->SetDevicePixelRatio(ratio);
        if (crossHairs_) {
            // Same plot point, new device pixel.
            const QPointF plot = crossHairsPlot_;
            crossHairs_.reset();
            ShowCrossHairs(static_cast<float>(plot.x()), static_cast<float>(plot.y()));
        }
        update();
    }
    // The kept picture covers the whole screen, so a window that shrinks and grows again
    // shows the drawing that was cut off, without a redraw.
    if (const QScreen* screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen())
        surface_->Reserve(static_cast<int>(std::ceil(screen->size().width() * ratio)),
                          static_cast<int>(std::ceil(screen->size().height() * ratio)));
}

void CanvasWidget::paintEvent(QPaintEvent* event)
{
    // Catches a ratio change that came without an event of its own.
    if (devicePixelRatioF() != surface_->DevicePixelRatio())
        FollowPixelRatio();
    QPainter painter(this);
    const QRect area = event->rect();
    const double ratio = surface_->DevicePixelRatio();
    // The image's own ratio equals the painter's, so its pixels land 1:1 on the screen's.
    const QRectF source(area.x() * ratio, area.y() * ratio, area.width() * ratio, area.height() * ratio);
    painter.drawImage(QRectF(area), surface_->Image(), source);
    if (crossHairs_) {
        // One device pixel wide: a rectangle of 1 / ratio logical pixels, aliased.
        const double x = crossHairs_->x() / ratio, y = crossHairs_->y() / ratio;
        painter.fillRect(QRectF(x, 0, 1 / ratio, height()), Qt::black);
        painter.fillRect(QRectF(0, y, width(), 1 / ratio), Qt::black);
    }
}

QRegion CanvasWidget::CrossHairRegion(QPoint pixel) const
{
    // The logical pixels that hold the device pixel's column and row.
    const double ratio = surface_->DevicePixelRatio();
    const int left = static_cast<int>(std::floor(pixel.x() / ratio));
    const int right = static_cast<int>(std::ceil((pixel.x() + 1) / ratio));
    const int top = static_cast<int>(std::floor(pixel.y() / ratio));
    const int bottom = static_cast<int>(std::ceil((pixel.y() + 1) / ratio));
    return QRegion(left, 0, right - left, height()) + QRegion(0, top, width(), bottom - top);
}

void CanvasWidget::ShowCrossHairs(float x, float y)
{
    QPoint pixel;
    try {
        const double ratio = surface_->DevicePixelRatio();
        const QPointF p = surface_->PixelOf(x, y);
        // Far outside the canvas a line cannot be seen; keep the integer conversion sane.
        pixel = QPoint(static_cast<int>(std::lround(std::clamp(p.x() * ratio, -1.0, 1e6))),
                       static_cast<int>(std::lround(std::clamp(p.y() * ratio, -1.0, 1e6))));
    } catch (const RunTimeError&) {
        return HideCrossHairs();
    }
    crossHairsPlot_ = QPointF(x, y);
    if (crossHairs_ == pixel)
        return;
    // Only the strips under the old and the new lines are painted again.
    QRegion dirty = CrossHairRegion(pixel);
    if (crossHairs_)
        dirty += CrossHairRegion(*crossHairs_);
    crossHairs_ = pixel;
    update(dirty);
}

void CanvasWidget::HideCrossHairs()
{
    if (!crossHairs_)
        return;
    const QRegion dirty = CrossHairRegion(*crossHairs_);
    crossHairs_.reset();
    update(dirty);
}

void CanvasWidget::showEvent(QShowEvent* event)
{
    FollowPixelRatio();
    QWidget::showEvent(event);
}

void CanvasWidget::resizeEvent(QResizeEvent* event)
{
    FollowPixelRatio();
    const int oldWidth = surface_->PixelWidth(), oldHeight = surface_->PixelHeight();
    const float left = surface_->ScaleLeft(), top = surface_->ScaleTop();
    const float spanX = surface_->ScaleWidth(), spanY = surface_->ScaleHeight();
    const bool pixelScale = left == 0 && top == 0 && spanX == oldWidth && spanY == oldHeight;
    surface_->Resize(width(), height());
    // The picture stays where it is on screen, so the scale keeps its units per pixel:
    // what is drawn next (a step, the axis after a click) lines up with what is there.
    if (!pixelScale && oldWidth > 0 && oldHeight > 0 && width() > 0 && height() > 0) {
        try {
            surface_->SetScale(left, top, static_cast<float>(double(spanX) * width() / oldWidth),
                               static_cast<float>(double(spanY) * height() / oldHeight));
        } catch (const RunTimeError&) {
            // A span out of float range keeps the stretched scale until the next fit.
        }
    }
    QWidget::resizeEvent(event);
}

void CanvasWidget::mousePressEvent(QMouseEvent* event)
{
    const QPointF pixel = PixelOf(event);
    const QPointF plot = surface_->ToPlot(pixel.x(), pixel.y());
    emit MouseDown(event->button(), event->modifiers(), static_cast<float>(plot.x()),
                   static_cast<float>(plot.y()));
}

void CanvasWidget::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF pixel = PixelOf(event);
    const QPointF plot = surface_->ToPlot(pixel.x(), pixel.y());
    emit MouseMove(event->buttons(), event->modifiers(), static_cast<float>(plot.x()),
                   static_cast<float>(plot.y()));
}

void CanvasWidget::mouseReleaseEvent(QMouseEvent* event)
{
    const QPointF pixel = PixelOf(event);
    const QPointF plot = surface_->ToPlot(pixel.x(), pixel.y());
    emit MouseUp(event->button(), event->modifiers(), static_cast<float>(plot.x()),
                 static_cast<float>(plot.y()));
}

void CanvasWidget::wheelEvent(QWheelEvent* event)
{
    // A notch is 120; touchpads deliver it in smaller pieces.
    wheelRemainder_ += event->angleDelta().y();
    const QPointF pixel(std::floor(event->position().x()), std::floor(event->position().y()));
    while (std::abs(wheelRemainder_) >= 120) {
        const int notch = wheelRemainder_ > 0 ? 1 : -1;
        wheelRemainder_ -= notch * 120;
        // Each notch rescales the canvas, so the pointer's plot point is read afresh.
        const QPointF plot = surface_->ToPlot(pixel.x(), pixel.y());
        emit Wheel(notch, static_cast<float>(plot.x()), static_cast<float>(plot.y()));
    }
    event->accept();
}

} // namespace backplot
