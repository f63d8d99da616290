#pragma once

#include "DrawSurface.h"

#include <QWidget>
#include <cstdint>
#include <memory>

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

signals:
    // The mouse over the canvas, in plot units of the canvas's user scale (stored Y).
    void MouseDown(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, float x, float y);
    void MouseMove(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers, float x, float y);
    void MouseUp(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, float x, float y);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    std::unique_ptr<ImageSurface> surface_;
};

} // namespace backplot
