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
// window that shrinks and grows again. The user scale maps onto the visible size.
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

    // The picture as shown (the visible part), for bitmap export and tests.
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
    // The wheel turned: +1 a notch away from the user, -1 toward.
    void Wheel(int notches);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    // The strips of the widget the cross hairs through `pixel` cover.
    QRegion CrossHairRegion(QPoint pixel) const;

    std::unique_ptr<ImageSurface> surface_;
    std::optional<QPoint> crossHairs_; // pixel the cross hairs run through
    int wheelRemainder_ = 0;
};

} // namespace backplot
