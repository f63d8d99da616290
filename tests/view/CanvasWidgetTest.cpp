#include "CanvasWidget.h"

#include <QApplication>
#include <gtest/gtest.h>

#include <cstdlib>

namespace backplot {
namespace {

class Canvas : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        static int argc = 1;
        static char name[] = "test_view";
        static char* argv[] = {name, nullptr};
        if (!QApplication::instance()) {
            setenv("QT_QPA_PLATFORM", "offscreen", 0);
            new QApplication(argc, argv); // lives for the rest of the run
        }
    }
};

TEST_F(Canvas, PictureSurvivesRepaintAndResize)
{
    CanvasWidget canvas;
    canvas.resize(100, 60);
    canvas.show();
    QApplication::processEvents();
    DrawSurface& s = canvas.Surface();
    s.SetScale(0, 0, 10, 6);
    s.Line(0, 3, 10, 3, 0x0000FF);
    s.PSet(9.9, 5.9, 0xFF0000); // pixel (99, 59), the bottom-right corner
    const QImage shown = canvas.grab().toImage(); // the widget paints the stored picture
    EXPECT_EQ(shown.pixel(0, 30), qRgb(255, 0, 0));
    EXPECT_EQ(shown.pixel(99, 59), qRgb(0, 0, 255));

    canvas.SetBackColor(0x00FFFF);
    canvas.resize(150, 80);
    QApplication::processEvents();
    const QImage picture = canvas.Picture();
    ASSERT_EQ(picture.size(), QSize(150, 80));
    EXPECT_EQ(picture.pixel(99, 30), qRgb(255, 0, 0)); // the old picture, top left
    EXPECT_EQ(picture.pixel(99, 59), qRgb(0, 0, 255));
    EXPECT_EQ(picture.pixel(100, 30), qRgb(255, 255, 0)); // the new area in the back colour
    EXPECT_EQ(picture.pixel(10, 70), qRgb(255, 255, 0));
    canvas.ClearPicture();
    EXPECT_EQ(canvas.Picture().pixel(0, 30), qRgb(255, 255, 0));
}

} // namespace
} // namespace backplot
