#include "CanvasWidget.h"

#include "ImageSurface.h"
#include "RunTimeError.h"

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
    : QWidget(parent), surface_(std::make_unique<ImageSurface>(width(), height()))
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

void CanvasWidget::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const QRect area = event->rect();
    painter.drawImage(area.topLeft(), surface_->Image(), area);
    if (crossHairs_) {
        painter.setPen(QPen(Qt::black, 0));
        painter.drawLine(crossHairs_->x(), 0, crossHairs_->x(), height() - 1);
        painter.drawLine(0, crossHairs_->y(), width() - 1, crossHairs_->y());
    }
}

QRegion CanvasWidget::CrossHairRegion(QPoint pixel) const
{
    return QRegion(pixel.x(), 0, 1, height()) + QRegion(0, pixel.y(), width(), 1);
}

void CanvasWidget::ShowCrossHairs(float x, float y)
{
    QPoint pixel;
    try {
        const QPointF p = surface_->PixelOf(x, y);
        // Far outside the canvas a line cannot be seen; keep the integer conversion sane.
        pixel = QPoint(static_cast<int>(std::clamp(p.x(), -1.0, 1e6)), static_cast<int>(std::clamp(p.y(), -1.0, 1e6)));
    } catch (const RunTimeError&) {
        return HideCrossHairs();
    }
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

void CanvasWidget::resizeEvent(QResizeEvent* event)
{
    // The kept picture covers the whole screen, so a window that shrinks and grows again
    // shows the drawing that was cut off, without a redraw.
    if (const QScreen* screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen())
        surface_->Reserve(screen->size().width(), screen->size().height());
    surface_->Resize(width(), height());
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
    while (std::abs(wheelRemainder_) >= 120) {
        const int notch = wheelRemainder_ > 0 ? 1 : -1;
        wheelRemainder_ -= notch * 120;
        emit Wheel(notch);
    }
    event->accept();
}

} // namespace backplot
