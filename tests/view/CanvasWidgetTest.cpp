#include "CanvasWidget.h"

#include <QApplication>
#include <QMouseEvent>
#include <gtest/gtest.h>

#include <cstdlib>

namespace backplot {
namespace {

void EnsureApplication()
{
    static int argc = 1;
    static char name[] = "test_view";
    static char* argv[] = {name, nullptr};
    if (!QApplication::instance()) {
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
        new QApplication(argc, argv); // lives for the rest of the test run
    }
}

TEST(CanvasWidget, PictureSurvivesRepaintAndResize)
{
    EnsureApplication();
    CanvasWidget canvas;
    EXPECT_EQ(canvas.objectName(), "picCanvas");
    canvas.resize(100, 60);
    canvas.show();
    QApplication::processEvents();
    ASSERT_EQ(canvas.Surface().PixelWidth(), 100);

    DrawSurface& s = canvas.Surface();
    s.SetScale(0, 0, 10, 6);
    s.Line(0, 3, 10, 3, 0x0000FF);
    s.PSet(9.9, 5.9, 0xFF0000); // pixel (99, 59), the bottom-right corner

    // What the widget paints is the stored picture.
    const QImage shown = canvas.grab().toImage();
    EXPECT_EQ(shown.pixel(0, 30), qRgb(255, 0, 0));
    EXPECT_EQ(shown.pixel(99, 59), qRgb(0, 0, 255));

    canvas.SetBackColor(0x00FFFF);
    canvas.resize(150, 80);
    QApplication::processEvents();
    const QImage picture = canvas.Picture();
    ASSERT_EQ(picture.size(), QSize(150, 80));
    EXPECT_EQ(picture.pixel(99, 30), qRgb(255, 0, 0));  // old picture, top left
    EXPECT_EQ(picture.pixel(99, 59), qRgb(0, 0, 255));
    EXPECT_EQ(picture.pixel(100, 30), qRgb(255, 255, 0)); // new area: the back colour (yellow)
    EXPECT_EQ(picture.pixel(10, 70), qRgb(255, 255, 0));

    canvas.ClearPicture();
    EXPECT_EQ(canvas.Picture().pixel(0, 30), qRgb(255, 255, 0));
    EXPECT_EQ(picture.pixel(0, 30), qRgb(255, 0, 0)); // an earlier copy stays as it was
}

TEST(CanvasWidget, MouseArrivesInPlotUnits)
{
    EnsureApplication();
    CanvasWidget canvas;
    canvas.resize(200, 100);
    canvas.show();
    QApplication::processEvents();
    canvas.Surface().SetScale(-10, -5, 20, 10);

    float x = 0, y = 0;
    Qt::MouseButton button = Qt::NoButton;
    QObject::connect(&canvas, &CanvasWidget::MouseDown,
                     [&](Qt::MouseButton b, Qt::KeyboardModifiers, float px, float py) {
                         button = b;
                         x = px;
                         y = py;
                     });
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(150, 20), QPointF(150, 20), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&canvas, &press);
    EXPECT_EQ(button, Qt::LeftButton);
    EXPECT_EQ(x, 5);  // -10 + 150 / 10
    EXPECT_EQ(y, -3); // -5 + 20 / 10
}

} // namespace
} // namespace backplot
