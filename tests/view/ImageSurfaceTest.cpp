#include "ArcGeometry.h"
#include "ImageSurface.h"
#include "RunTimeError.h"
#include "ViewTransform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

namespace backplot {
namespace {

constexpr std::uint32_t Red = 0x0000FF; // 0xBBGGRR
const QRgb RedPixel = qRgb(255, 0, 0);
const QRgb WhitePixel = qRgb(255, 255, 255);

using Pixels = std::set<std::pair<int, int>>;

Pixels RedPixels(const QImage& image)
{
    Pixels red;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == RedPixel)
                red.emplace(x, y);
    return red;
}

// Row y, x in [0, width), lit where x mod period < on.
Pixels Dashes(int y, int width, int on, int period)
{
    Pixels p;
    for (int x = 0; x < width; ++x)
        if (x % period < on)
            p.emplace(x, y);
    return p;
}

TEST(ImageSurface, LinesFollowTheStepRuleWhereverTheyAreClipped)
{
    // Lines in every direction, ends up to 50 pixels outside a 100 x 80 picture, solid and
    // dotted, each against the rule: step i of n = max(|dx|, |dy|) lights
    // (x0 + i dx / n, y0 + i dy / n), the shorter axis rounded half up, for i < n (the
    // last pixel is left out); dotted lights only steps with i mod 6 < 3.
    std::mt19937 random(7);
    std::uniform_int_distribution<int> coordinate(-50, 150);
    const auto roundHalfUp = [](int num, int den) {
        return static_cast<int>(std::floor((2.0 * num + den) / (2.0 * den)));
    };
    for (int line = 0; line < 400; ++line) {
        const int x0 = coordinate(random), y0 = coordinate(random) - 10;
        const int x1 = coordinate(random), y1 = coordinate(random) - 10;
        const bool dotted = line % 2 == 1;
        ImageSurface s(100, 80);
        s.SetDrawStyle(dotted ? DrawStyle::Dot : DrawStyle::Solid);
        s.Line(x0, y0, x1, y1, Red);

        QImage expected(100, 80, QImage::Format_RGB32);
        expected.fill(WhitePixel);
        const int dx = x1 - x0, dy = y1 - y0, n = std::max(std::abs(dx), std::abs(dy));
        const bool alongX = std::abs(dx) >= std::abs(dy);
        for (int i = 0; i < n; ++i) {
            const int x = alongX ? x0 + (dx > 0 ? i : -i) : x0 + roundHalfUp(i * dx, n);
            const int y = alongX ? y0 + roundHalfUp(i * dy, n) : y0 + (dy > 0 ? i : -i);
            if (!(dotted && i % 6 >= 3) && x >= 0 && y >= 0 && x < 100 && y < 80)
                expected.setPixel(x, y, RedPixel);
        }
        ASSERT_EQ(s.Image(), expected) << "line " << line << ": (" << x0 << "," << y0 << ")-(" << x1 << "," << y1
                                       << ")" << (dotted ? " dotted" : "");
    }
}

TEST(ImageSurface, PlotUnitsRoundToTheNearestPixelArcsLieWhereTheAnglesSayAndFaultsDrawNothing)
{
    ImageSurface s(100, 100);
    s.SetScale(0, -5, 10, 10); // ten pixels a unit, stored y = 0 on row 50
    s.PSet(0.04, -4.94, Red);  // 0.4 and 0.6 pixels: (0, 1)
    s.PSet(9.96, 0, Red);      // 99.6: pixel 100, outside
    EXPECT_EQ(RedPixels(s.Image()), (Pixels{{0, 1}}));
    // Equal angles: a whole circle about (5, 0) of 20 pixels, an outline, not a disc.
    s.Circle(5, 0, 2, Red, Pi / 6, Pi / 6);
    for (const auto& [x, y, colour] : {std::tuple{50, 30, RedPixel}, {50, 70, RedPixel}, {30, 50, RedPixel},
                                       {70, 50, RedPixel}, {50, 29, WhitePixel}, {50, 31, WhitePixel},
                                       {50, 50, WhitePixel}, {71, 50, WhitePixel}})
        EXPECT_EQ(s.Image().pixel(x, y), colour) << x << "," << y;

    // Counter-clockwise from 0 to 90 degrees: the upper right quarter on screen.
    s.Clear();
    s.Circle(5, 0, 2, Red, 0, Pi / 2);
    for (const auto& [x, y, colour] : {std::tuple{50, 30, RedPixel}, {64, 36, RedPixel}, {30, 50, WhitePixel},
                                       {50, 70, WhitePixel}, {36, 36, WhitePixel}})
        EXPECT_EQ(s.Image().pixel(x, y), colour) << x << "," << y;

    // Faults raise and draw nothing.
    using ::testing::ThrowsMessage;
    s.Clear();
    EXPECT_THAT([&] { s.Circle(5, 0, 2, Red, 0, 7); }, ThrowsMessage<RunTimeError>("Invalid procedure call"));
    EXPECT_THAT([&] { s.PSet(std::nan(""), 1, Red); }, ThrowsMessage<RunTimeError>("Overflow"));
    EXPECT_THAT([&] { s.Line(0, 0, 1e300 * 1e10, 1, Red); }, ThrowsMessage<RunTimeError>("Overflow"));
    EXPECT_THAT([&] { s.SetScale(0, 0, 0, 10); }, ThrowsMessage<RunTimeError>("Invalid property value"));
    EXPECT_EQ(s.ScaleWidth(), 10);
    EXPECT_EQ(RedPixels(s.Image()), Pixels{});
}

TEST(ImageSurface, FarAwayEndsDrawOnlyWhatIsSeen)
{
    // 100 x 80 pixels. A point 1e22 pixels away is rounded by far more than the picture's
    // size, yet the part of a line that is seen runs where its near end and its direction
    // put it; a line far outside draws nothing. None of it may overflow on the way.
    Pixels third, diagonal;
    for (int k = 1; k <= 90; ++k)
        third.emplace(90 - k, (k + 1) / 3); // k / 3 rounded: never a half
    for (int k = 5; k < 80; ++k)
        diagonal.emplace(k, k);
    const struct { const char* name; double x1, y1, x2, y2; Pixels red; } rows[] = {
        {"from 3e22 across and 1e22 down in to (90, 0), which is left out", 90 - 3e22, 1e22, 90, 0, third},
        {"from (5, 5) out to 1e22", 5, 5, 5 + 1e22, 5 + 1e22, diagonal},
        {"far outside, nearly along the edge", 3.4e39, 1e21, 1e21, 0, {}},
        {"both ends beyond the largest float", -1e300, 1e300, 1e300, 1e300, {}},
    };
    for (const auto& row : rows) {
        ImageSurface s(100, 80);
        s.Line(row.x1, row.y1, row.x2, row.y2, Red);
        EXPECT_EQ(RedPixels(s.Image()), row.red) << row.name;
    }
    // A circle of radius 1e20 about the middle passes nowhere near the picture.
    ImageSurface s(100, 80);
    s.Circle(50, 40, 1e20, Red, 0, 0);
    s.Circle(50, 40, 1e20, Red, 1, 2);
    EXPECT_EQ(RedPixels(s.Image()), Pixels{});
}

// At device pixel ratios other than 1: figures in logical pixels, pixels drawn in device
// pixels.

TEST(DevicePixelRatio, SetCoordsGivesTheSameFiguresAtEveryRatio)
{
    const std::vector<std::vector<float>> cases = {
        // width, height (logical), ViewX1, ViewY1, ViewX2, ViewY2
        {400, 200, 0, 0, 10, 0}, {400, 200, 0, 0, 0, -10}, {781, 393, -12.5f, -40.25f, 33.1f, 7.7f}, {100, 400, 0, 0, 10, 2}};
    for (const auto& c : cases) {
        std::vector<std::vector<float>> figures;
        for (double ratio : {1.0, 2.0, 1.5, 3.0}) {
            // Once at the size it was made with, once grown to it, as the canvas is.
            for (bool resized : {false, true}) {
                ImageSurface s(resized ? 10 : int(c[0]), resized ? 10 : int(c[1]), 0xFFFFFF, ratio);
                s.Resize(int(c[0]), int(c[1]));
                ViewTransform v;
                v.ViewX1 = c[2], v.ViewY1 = c[3], v.ViewX2 = c[4], v.ViewY2 = c[5];
                v.SetCoords(s);
                figures.push_back({v.ViewX1, v.ViewY1, v.ViewX2, v.ViewY2, v.AspectRatio, v.FitSpan, v.BlipSize,
                                   v.TwoPixelSpan, s.ScaleLeft(), s.ScaleTop(), s.ScaleWidth(), s.ScaleHeight(),
                                   float(s.PixelWidth()), float(s.PixelHeight())});
                EXPECT_EQ(figures.back(), figures.front()) << c[0] << "x" << c[1] << " at " << ratio;
            }
        }
    }
}

TEST(DevicePixelRatio, PrimitivesAreDrawnInDevicePixels)
{
    struct Case {
        const char* name;
        double ratio;
        void (*draw)(ImageSurface&);
        Pixels expected; // device pixels
        DrawStyle style = DrawStyle::Solid;
    };
    // A 20 x 10 logical surface in pixel scale: one plot unit is one logical pixel.
    const Case cases[] = {
        {"OneUnitCoversTwoDevicePixels", 2, [](ImageSurface& s) { s.Line(10, 5, 11, 5, Red); }, {{20, 10}, {21, 10}}},
        // Device (0, 0) to (4, 2): y = round(i / 2), halves up, for i < 4.
        {"DiagonalStepsAtDeviceResolution", 2, [](ImageSurface& s) { s.Line(0, 0, 2, 1, Red); },
         {{0, 0}, {1, 1}, {2, 1}, {3, 2}}},
        // round(2 * 3.4) = 7, round(2 * 2.2) = 4: one device pixel, not a 2 x 2 block.
        {"PointRoundsAtDeviceResolution", 2, [](ImageSurface& s) { s.PSet(3.4, 2.2, Red); }, {{7, 4}}},
        {"PointHalvesRoundUp", 2, [](ImageSurface& s) { s.PSet(3.25, 0.75, Red); }, {{7, 2}}},
        // round(1.5 * 3.4) = round(5.1) = 5, round(1.5 * 3) = round(4.5) = 5.
        {"PointAtAFractionalRatio", 1.5, [](ImageSurface& s) { s.PSet(3.4, 3, Red); }, {{5, 5}}},
        // Device corners (2, 2) and (6, 4): 4 + 2 + 4 + 2 outline pixels.
        {"BoxOutline", 2, [](ImageSurface& s) { s.Box(1, 1, 3, 2, Red); },
         {{2, 2}, {3, 2}, {4, 2}, {5, 2}, {6, 2}, {6, 3}, {6, 4}, {5, 4}, {4, 4}, {3, 4}, {2, 4}, {2, 3}}},
        // Dots of 3 on 3 off become 6 on 6 off across the 40 device pixels.
        {"DotsKeepTheirLengthOnScreen", 2, [](ImageSurface& s) { s.Line(0, 1, 20, 1, Red); }, Dashes(2, 40, 6, 12),
         DrawStyle::Dot},
        // Dashes of 18 on 6 off at 1.5: 27 on 9 off.
        {"DashesAtAFractionalRatio", 1.5, [](ImageSurface& s) { s.Line(0, 2, 20, 2, Red); }, Dashes(3, 30, 27, 36),
         DrawStyle::Dash},
        {"PatternFollowsARatioChange", 1,
         [](ImageSurface& s) {
             s.SetDevicePixelRatio(3);
             s.Line(0, 1, 20, 1, Red);
         },
         Dashes(3, 60, 9, 18), DrawStyle::Dot},
    };
    for (const Case& c : cases) {
        ImageSurface s(20, 10, 0xFFFFFF, c.ratio);
        s.SetDrawStyle(c.style);
        c.draw(s);
        EXPECT_EQ(RedPixels(s.Image()), c.expected) << c.name;
    }

    // Radius 10 logical about (25, 20): radius 20 device pixels about (50, 40).
    ImageSurface s(50, 40, 0xFFFFFF, 2);
    s.Circle(25, 20, 10, Red, 0, 0);
    for (const auto& [x, y] : Pixels{{50, 20}, {50, 60}, {30, 40}, {70, 40}})
        EXPECT_EQ(s.Image().pixel(x, y), RedPixel) << x << "," << y;
    for (const auto& [x, y] : RedPixels(s.Image())) // pixel-rounded vertices on chords within 0.1
        EXPECT_NEAR(std::hypot(x - 50.0, y - 40.0), 20, 0.81) << x << "," << y;
}

TEST(DevicePixelRatio, PositionsStayLogicalAndThePictureFollowsTheRatio)
{
    // 50 x 40 logical showing plot x -5..20, y 2..22: two logical pixels a unit.
    for (double ratio : {1.0, 2.0, 1.5}) {
        ImageSurface s(50, 40, 0xFFFFFF, ratio);
        s.SetScale(-5, 2, 25, 20);
        EXPECT_EQ(s.ToPlot(10, 8), QPointF(0, 6)) << ratio;
        EXPECT_EQ(s.ToPlot(49, 39), QPointF(19.5, 21.5)) << ratio;
        EXPECT_EQ(s.PixelOf(0, 6), QPointF(10, 8)) << ratio;
        EXPECT_EQ(s.Image().size(), QSize(int(std::ceil(50 * ratio)), int(40 * ratio))) << ratio;
        EXPECT_EQ(s.Image().devicePixelRatio(), ratio);
    }
    // At ratio 2 a point between two logical pixels has a device pixel of its own:
    // device (21, 19), and round(20.8) = 21.
    ImageSurface s(50, 40, 0xFFFFFF, 2);
    s.SetScale(-5, 2, 25, 20);
    EXPECT_EQ(s.PixelOf(0.25, 6.75), QPointF(10.5, 9.5));
    EXPECT_EQ(s.PixelOf(0.2, 6), QPointF(10.5, 8));

    // The visible part is the logical size in device pixels; Reserve counts device pixels.
    s.Resize(10, 5);
    EXPECT_EQ(s.VisibleImage().size(), QSize(20, 10));
    EXPECT_EQ(s.VisibleImage().deviceIndependentSize(), QSizeF(10, 5));
    s.Reserve(120, 50);
    EXPECT_EQ(s.Image().size(), QSize(120, 80));
    EXPECT_EQ(ImageSurface(21, 11, 0xFFFFFF, 1.5).VisibleImage().size(), QSize(32, 17)); // rounded up

    // A new ratio keeps the picture, doubled, and the user scale: the HiDPI canvas test.
    for (double nonsense : {0.0, -2.0, std::nan("")}) {
        s.SetDevicePixelRatio(nonsense);
        EXPECT_EQ(s.DevicePixelRatio(), 1) << nonsense;
        s.SetDevicePixelRatio(2);
    }
}

} // namespace
} // namespace backplot
