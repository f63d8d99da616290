#include "CanvasWidget.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace backplot {
namespace {

class Canvas : public ::testing::Test {
protected:
    void Resize(int width, int height)
    {
        canvas.resize(width, height);
        canvas.show();
        QApplication::processEvents();
    }
    CanvasWidget canvas;
    DrawSurface& s = canvas.Surface();
};

TEST_F(Canvas, PictureSurvivesRepaintAndResize)
{
    Resize(100, 60);
    s.SetScale(0, 0, 10, 6);
    s.Line(0, 3, 10, 3, 0x0000FF);
    s.PSet(9.9, 5.9, 0xFF0000); // pixel (99, 59), the bottom-right corner
    const QImage shown = canvas.grab().toImage(); // the widget paints the stored picture
    EXPECT_EQ(shown.pixel(0, 30), qRgb(255, 0, 0));
    EXPECT_EQ(shown.pixel(99, 59), qRgb(0, 0, 255));

    canvas.SetBackColor(0x00FFFF);
    canvas.ClearPicture();
    EXPECT_EQ(canvas.Picture().pixel(0, 30), qRgb(255, 255, 0));
}

TEST_F(Canvas, ShrinkThenGrowKeepsWhatWasCutOff)
{
    Resize(200, 100);
    s.SetScale(0, 0, 20, 10);
    s.PSet(19.5, 9.5, 0x0000FF); // pixel (195, 95), near the far corner
    s.Line(0, 5, 20, 5, 0xFF0000);

    Resize(80, 40);
    EXPECT_EQ(canvas.Picture().size(), QSize(80, 40)); // only the visible part is the picture
    EXPECT_EQ(s.PixelWidth(), 80);                     // the view is fitted to what is visible
    // A unit stays 10 pixels, so what is drawn next lines up with what is kept.
    EXPECT_EQ(s.ScaleWidth(), 8);
    EXPECT_EQ(s.ScaleHeight(), 4);

    Resize(200, 100);
    const QImage shown = canvas.grab().toImage();
    EXPECT_EQ(shown.pixel(195, 95), qRgb(255, 0, 0));
    EXPECT_EQ(shown.pixel(150, 50), qRgb(0, 0, 255));
    EXPECT_EQ(shown.pixel(150, 49), qRgb(255, 255, 255));
    // Drawing while small reaches the whole screen: the HiDPI canvas test.
}

} // namespace
} // namespace backplot
