#include "ArcGeometry.h"
#include "ImageSurface.h"
#include "RunTimeError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <tuple>

namespace backplot {
namespace {

constexpr std::uint32_t Red = 0x0000FF; // 0xBBGGRR
const QRgb RedPixel = qRgb(255, 0, 0);
const QRgb WhitePixel = qRgb(255, 255, 255);

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

TEST(ImageSurface, PlotUnitsRoundToTheNearestPixelAndArcsLieWhereTheAnglesSay)
{
    ImageSurface s(100, 100);
    s.SetScale(0, -5, 10, 10); // ten pixels a unit, stored y = 0 on row 50
    s.PSet(0.04, -4.94, Red);  // 0.4 and 0.6 pixels: (0, 1)
    s.PSet(9.96, 0, Red);      // 99.6: pixel 100, outside
    EXPECT_EQ(s.Image().pixel(0, 1), RedPixel);
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
}

TEST(ImageSurface, FaultsRaiseAndDrawNothing)
{
    ImageSurface s(50, 50);
    const auto message = [](auto&& call) {
        try {
            call();
        } catch (const RunTimeError& e) {
            return std::string(e.what());
        }
        return std::string("no error");
    };
    EXPECT_EQ(message([&] { s.Circle(25, 25, 10, Red, 0, 7); }), "Invalid procedure call");
    EXPECT_EQ(message([&] { s.PSet(std::nan(""), 1, Red); }), "Overflow");
    EXPECT_EQ(message([&] { s.Line(0, 0, 1e300 * 1e10, 1, Red); }), "Overflow");
    EXPECT_EQ(message([&] { s.SetScale(0, 0, 0, 10); }), "Invalid property value");
    EXPECT_EQ(s.ScaleWidth(), 50);
    EXPECT_EQ(s.Image().pixel(25, 25), WhitePixel);
}

} // namespace
} // namespace backplot
