#include "CanvasWidget.h"

#include "ImageSurface.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <cmath>

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

} // namespace backplot
