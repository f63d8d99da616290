#pragma once

#include "DrawSurface.h"

#include <QWidget>
#include <cstdint>
#include <memory>
#include <optional>

namespace backplot {

class ImageSurface;

// The plot canvas `picCanvas`. Everything is drawn into a persistent image at least the
// size of the screen, so the picture survives repaints, windows passing over it, and a
// window that shrinks and grows again. The user scale maps onto the visible size; when the
// canvas is resized it keeps its plot units per pixel (the left and top edges stay, the
// spans follow the size), so drawing after a resize lines up with the picture kept.
//
// The image is kept in device pixels at the widget's device pixel ratio (see ImageSurface)
// and painted one image pixel per screen pixel, so the plot stays sharp on a HiDPI screen;
// sizes, mouse positions and the view arithmetic stay in logical pixels. When the window
// moves to a screen of another ratio the picture is scaled once to the new resolution
// and stays until the next plot draws it afresh.
class CanvasWidget : public QWidget {
    Q_OBJECT
public:
    explicit CanvasWidget(QWidget* parent = nullptr);
    ~CanvasWidget() override;

    // The drawing surface of the persistent image. Drawing through it schedules a repaint.
    DrawSurface& Surface();

    void SetBackColor(std::uint32_t bgr);
    // Clears the canvas to the back colour and drops the stored picture.
    void ClearPicture();

    // The picture as shown (the visible part), in device pixels with its devicePixelRatio()
    // set, for bitmap export and tests.
    QImage Picture() const;

    // The cross hairs: a vertical and a horizontal line through a point in plot units,
    // across the whole canvas, painted over the picture and never into it.
    void ShowCrossHairs(float x, float y);
    void HideCrossHairs();
    bool CrossHairsVisible() const { return crossHairs_.has_value(); }

signals:
    // The mouse over the canvas, in plot units of the canvas's user scale (stored Y).
    void MouseDown(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, float x, float y);
    void MouseMove(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers, float x, float y);
    void MouseUp(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, float x, float y);
    // The wheel turned over the point (x, y) in plot units: +1 a notch away from the
    // user, -1 toward.
    void Wheel(int notches, float x, float y);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    // Takes on the widget's device pixel ratio and keeps the picture as large as the
    // screen in device pixels.
    void FollowPixelRatio();
    // The strips of the widget (logical pixels) the cross hairs through the device pixel
    // `pixel` cover.
    QRegion CrossHairRegion(QPoint pixel) const;

    std::unique_ptr<ImageSurface> surface_;
    std::optional<QPoint> crossHairs_; // device pixel the cross hairs run through
    QPointF crossHairsPlot_;           // the point they were asked for, in plot units
    int wheelRemainder_ = 0;
};

} // namespace backplot
