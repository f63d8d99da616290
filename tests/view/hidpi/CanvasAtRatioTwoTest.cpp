// The canvas on a HiDPI screen: QT_SCALE_FACTOR=2 on two offscreen screens side by side, the
// first at ratio 2 (1 x 2), the second at 4 (2 x 2).

#include "CanvasWidget.h"
#include "ImageSurface.h"

#include <QApplication>
#include <QBackingStore>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <string>

namespace backplot {
namespace {

// Set before main makes the application, which fixes the ratio.
[[maybe_unused]] const bool Screens =
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" BACKPLOT_SOURCE_DIR "/tests/view/hidpi/screens.json") &&
    qputenv("QT_SCALE_FACTOR", "2");

const QRgb Red = qRgb(255, 0, 0);
const QRgb White = qRgb(255, 255, 255);
const QRgb Black = qRgb(0, 0, 0);

class CanvasAtRatioTwo : public ::testing::Test {
protected:
    // A 100 x 60 canvas showing plot x 0..10, y 0..6: ten logical, twenty device pixels a unit.
    void SetUp() override
    {
        canvas.resize(100, 60);
        canvas.show();
        QApplication::processEvents();
        ASSERT_EQ(canvas.devicePixelRatioF(), 2) << "QT_SCALE_FACTOR=2 did not take";
        canvas.Surface().SetScale(0, 0, 10, 6);
    }

    // What the screen shows: the window's backing store, partial repaints included.
    QImage Screen()
    {
        QApplication::processEvents();
        const auto* shown = dynamic_cast<const QImage*>(canvas.backingStore()->paintDevice());
        return shown ? shown->copy(0, 0, 200, 120).convertToFormat(QImage::Format_RGB32) : QImage();
    }

    // Every pixel of `shown` is black where `black` says, else what `picture` holds.
    static void ExpectPicture(const QImage& shown, const QImage& picture, bool (*black)(int x, int y) = nullptr)
    {
        ASSERT_EQ(shown.size(), picture.size());
        for (int y = 0; y < shown.height(); ++y)
            for (int x = 0; x < shown.width(); ++x)
                ASSERT_EQ(shown.pixel(x, y), black && black(x, y) ? Black : picture.pixel(x, y)) << x << "," << y;
    }

    CanvasWidget canvas;
};

TEST_F(CanvasAtRatioTwo, LinesAreOneDevicePixelAndCrossHairsLandOnTheirDevicePixel)
{
    canvas.Surface().Line(0, 3, 10, 3, 0x0000FF);      // device row 60, the whole width
    canvas.Surface().Line(1, 0.5, 3.4, 2.9, 0x0000FF); // device (20, 10) to (67, 57), 48 steps
    const QImage picture = canvas.Picture();
    ASSERT_EQ(picture.size(), QSize(200, 120));
    EXPECT_EQ(picture.devicePixelRatio(), 2);
    // Pixel for pixel the picture at ratio 2 that the image surface's tests hold.
    ImageSurface atTwo(100, 60, 0xFFFFFF, 2);
    atTwo.SetScale(0, 0, 10, 6);
    atTwo.Line(0, 3, 10, 3, 0x0000FF);
    atTwo.Line(1, 0.5, 3.4, 2.9, 0x0000FF);
    ExpectPicture(picture.convertToFormat(QImage::Format_RGB32), atTwo.Image().convertToFormat(QImage::Format_RGB32));

    // Painted 1:1, on the screen and into a grab.
    ExpectPicture(Screen(), picture);
    ExpectPicture(canvas.grab().toImage().convertToFormat(QImage::Format_RGB32), picture);

    // x = 2.53125 is device 50.625 -> 51, y = 1.25 is device 25.
    canvas.ShowCrossHairs(2.53125f, 1.25f);
    ExpectPicture(Screen(), picture, [](int x, int y) { return x == 51 || y == 25; });
    // Moved, only the strips of the old and new lines are repainted, and nothing of the
    // old lines is left: 2.5 * 20 = 50, 4.03125 * 20 = 80.625 -> 81.
    canvas.ShowCrossHairs(2.5f, 4.03125f);
    ExpectPicture(Screen(), picture, [](int x, int y) { return x == 50 || y == 81; });
    canvas.HideCrossHairs();
    ExpectPicture(Screen(), picture);

    // The mouse reports logical positions: (25, 15) is plot (2.5, 1.5) at every ratio.
    QSignalSpy down(&canvas, &CanvasWidget::MouseDown);
    QTest::mousePress(&canvas, Qt::LeftButton, {}, QPoint(25, 15));
    ASSERT_EQ(down.size(), 1);
    EXPECT_EQ(down[0][2].toFloat(), 2.5f);
    EXPECT_EQ(down[0][3].toFloat(), 1.5f);
}

TEST_F(CanvasAtRatioTwo, DrawingWhileSmallReachesTheWholeScreenInDevicePixels)
{
    // A canvas inside a window, as in the program, so it starts small.
    QWidget window;
    auto* small = new CanvasWidget(&window);
    const QSize screen = canvas.screen()->size();
    window.resize(screen);
    small->resize(80, 40);
    window.show();
    QApplication::processEvents();
    // Ten logical pixels inside the screen's far corner, far outside the small canvas.
    small->Surface().SetScale(0, 0, 8, 4);
    const int x = screen.width() - 10, y = screen.height() - 10;
    small->Surface().PSet(x / 10.0, y / 10.0, 0x0000FF);
    small->resize(screen);
    QApplication::processEvents();
    ASSERT_EQ(small->Picture().size(), screen * 2);
    EXPECT_EQ(small->Picture().pixel(2 * x, 2 * y), Red);
    EXPECT_EQ(small->Picture().pixel(2 * x + 1, 2 * y), White);
}

TEST_F(CanvasAtRatioTwo, MovingToAScreenOfAnotherRatioKeepsThePictureAndTheView)
{
    DrawSurface& s = canvas.Surface();
    s.Line(0, 3, 10, 3, 0x0000FF); // device row 60 at ratio 2
    canvas.ShowCrossHairs(2.53125f, 1.25f);
    canvas.move(QApplication::screens().value(1)->geometry().topLeft() + QPoint(5, 5));
    QApplication::processEvents();
    ASSERT_EQ(canvas.devicePixelRatioF(), 4);

    // The view is untouched; the picture is the old one doubled (row 60 becomes rows 120
    // and 121) until the next plot, and new drawing is one device pixel wide.
    EXPECT_EQ(s.PixelWidth(), 100);
    EXPECT_EQ(s.ScaleWidth(), 10);
    s.Line(0, 4, 10, 4, 0x0000FF); // device row 160
    // Cross hairs placed afresh from their plot point: 2.53125 * 40 = 101.25 -> 101,
    // 1.25 * 40 = 50, not the old device pixel doubled (102). The offscreen backing store
    // does not follow a change of ratio, so the widget is grabbed.
    const QImage shown = canvas.grab().toImage().convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(canvas.Picture().size(), QSize(400, 240));
    ExpectPicture(shown, canvas.Picture(), [](int x, int y) { return x == 101 || y == 50; });
    for (const auto& [row, colour] : {std::pair{119, White}, {120, Red}, {121, Red}, {122, White}, {159, White},
                                      {160, Red}, {161, White}})
        EXPECT_EQ(shown.pixel(300, row), colour) << row;

    // And back to ratio 2, the first line where it was.
    canvas.move(QApplication::screens().value(0)->geometry().topLeft() + QPoint(5, 5));
    QApplication::processEvents();
    ASSERT_EQ(canvas.Picture().size(), QSize(200, 120));
    EXPECT_EQ(canvas.Picture().pixel(150, 60), Red);
    EXPECT_EQ(canvas.Picture().pixel(150, 59), White);
}

} // namespace
} // namespace backplot
