#include "ArcGeometry.h"
#include "EntityRenderer.h"
#include "ImageSurface.h"
#include "Plotter.h"
#include "RecordFile.h"
#include "RunTimeError.h"
#include "TestPaths.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace backplot {
namespace {

constexpr std::uint32_t Red = 0x0000FF; // 0xBBGGRR
constexpr std::uint32_t Blue = 0xFF0000;
const QRgb RedPixel = qRgb(255, 0, 0);
const QRgb BluePixel = qRgb(0, 0, 255);
const QRgb WhitePixel = qRgb(255, 255, 255);

int CountNot(const QImage& image, QRgb colour)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += image.pixel(x, y) != colour;
    return n;
}

EntityRecord Record(std::int16_t type, float x1, float y1, float x2, float y2)
{
    EntityRecord r;
    r.MoveType = type;
    r.StartX = x1;
    r.StartY = y1;
    r.EndX = x2;
    r.EndY = y2;
    return r;
}

EntityRecord Circle(std::int16_t type, float cx, float cy, float radius, float startDeg, float endDeg)
{
    EntityRecord r;
    r.MoveType = type;
    r.CenterX = cx;
    r.CenterY = cy;
    r.Radius = radius;
    r.StartAngle = startDeg;
    r.EndAngle = endDeg;
    return r;
}

// A 100 x 100 picture of the window x 0..10, stored y -5..5: ten pixels a unit, the
// origin at pixel (0, 50).
struct Picture {
    ImageSurface surface{100, 100};
    Settings settings;
    ViewTransform view;
    EntityRenderer renderer{settings, view};

    Picture()
    {
        view.ViewX1 = 0;
        view.ViewY1 = -5;
        view.ViewX2 = 10;
        view.ViewY2 = 5;
        view.SetCoords(surface);
    }
    const QImage& Draw(const EntityRecord& r, std::uint32_t colour)
    {
        renderer.DrawEntity(surface, r, colour);
        return surface.Image();
    }
};

TEST(ImageSurface, CutAcrossTheMiddleFillsOneWholeRow)
{
    Picture p;
    ASSERT_EQ(p.surface.ScaleTop(), -5);
    const QImage& image = p.Draw(Record(1, 0, 0, 10, 0), Red);
    // The end at x = 10 maps to pixel 100, just outside: every pixel of row 50 is red.
    for (int x = 0; x < 100; ++x)
        ASSERT_EQ(image.pixel(x, 50), RedPixel) << "x " << x;
    EXPECT_EQ(CountNot(image, WhitePixel), 100);
}

TEST(ImageSurface, ZeroLengthCutSetsOnePixel)
{
    Picture p;
    const QImage& image = p.Draw(Record(1, 2, 2, 2, 2), Red);
    EXPECT_EQ(image.pixel(20, 70), RedPixel);
    EXPECT_EQ(CountNot(image, WhitePixel), 1);
}

TEST(ImageSurface, CircleAndArcsLieWhereTheAnglesSay)
{
    {
        Picture p; // whole circle about (5, 0), radius 20 pixels
        const QImage& image = p.Draw(Circle(3, 5, 0, 2, 30, 30), Blue);
        const int ring[][2] = {{50, 30}, {50, 70}, {30, 50}, {70, 50}};
        for (const auto& xy : ring)
            EXPECT_EQ(image.pixel(xy[0], xy[1]), BluePixel) << xy[0] << "," << xy[1];
        const int clear[][2] = {{50, 29}, {50, 31}, {50, 50}, {69, 50}, {71, 50}};
        for (const auto& xy : clear)
            EXPECT_EQ(image.pixel(xy[0], xy[1]), WhitePixel) << xy[0] << "," << xy[1];
        // An outline, not a disc: about 2 pi r pixels.
        EXPECT_GT(CountNot(image, WhitePixel), 100);
        EXPECT_LT(CountNot(image, WhitePixel), 130);
    }
    {
        Picture p; // counter-clockwise from 0 to 90 degrees: the upper right quarter on screen
        const QImage& image = p.Draw(Circle(3, 5, 0, 2, 0, 90), Blue);
        EXPECT_EQ(image.pixel(50, 30), BluePixel);
        EXPECT_EQ(image.pixel(64, 36), BluePixel);
        EXPECT_EQ(image.pixel(30, 50), WhitePixel);
        EXPECT_EQ(image.pixel(50, 70), WhitePixel);
        EXPECT_EQ(image.pixel(36, 36), WhitePixel);
    }
    {
        Picture p; // clockwise from 90 to 0 degrees: the same quarter
        const QImage& image = p.Draw(Circle(2, 5, 0, 2, 90, 0), Blue);
        EXPECT_EQ(image.pixel(50, 30), BluePixel);
        EXPECT_EQ(image.pixel(64, 36), BluePixel);
        EXPECT_EQ(image.pixel(30, 50), WhitePixel);
        EXPECT_EQ(image.pixel(36, 64), WhitePixel);
    }
}

TEST(ImageSurface, DottedRapidHasGapsAndEndsSolid)
{
    Picture p;
    const QImage& image = p.Draw(Record(0, 0, -3, 10, -3), Red); // along row 20
    // Three on, three off, from the start of the leg.
    const char* expected = "###...###...###...";
    for (int x = 0; expected[x]; ++x)
        EXPECT_EQ(image.pixel(x, 20), expected[x] == '#' ? RedPixel : WhitePixel) << "x " << x;
    EXPECT_EQ(CountNot(image, WhitePixel), 17 * 3); // runs start at 0, 6, ..., 96

    // The style is solid again: a cut drawn next is unbroken.
    const QImage& after = p.Draw(Record(1, 0, 3, 10, 3), Red);
    for (int x = 0; x < 100; ++x)
        ASSERT_EQ(after.pixel(x, 80), RedPixel) << "x " << x;
}

TEST(ImageSurface, MappingRoundsToTheNearestPixel)
{
    ImageSurface s(100, 100);
    s.SetScale(0, 0, 10, 10);
    s.PSet(0.04, 0.06, Red);  // 0.4 and 0.6 pixels
    s.PSet(9.96, 5, Red);     // 99.6: pixel 100, outside
    s.Line(1, 2, 5, 2, Blue); // pixels 10 to 49 of row 20: the last one left out
    const QImage& image = s.Image();
    EXPECT_EQ(image.pixel(0, 1), RedPixel);
    EXPECT_EQ(image.pixel(10, 20), BluePixel);
    EXPECT_EQ(image.pixel(49, 20), BluePixel);
    EXPECT_EQ(image.pixel(50, 20), WhitePixel);
    EXPECT_EQ(CountNot(image, WhitePixel), 1 + 40);

    // A negative scale height turns Y upward; a line far outside on both ends still shows.
    s.Clear();
    s.SetScale(0, 10, 10, -10);
    s.Line(-1e9, 2, 1e9, 2, 0x123456);
    const QImage& up = s.Image();
    EXPECT_EQ(up.pixel(0, 80), qRgb(0x56, 0x34, 0x12));
    EXPECT_EQ(up.pixel(99, 80), qRgb(0x56, 0x34, 0x12));
    EXPECT_EQ(CountNot(up, WhitePixel), 100);
    EXPECT_EQ(s.ToPlot(50, 80), QPointF(5, 2));
}

TEST(ImageSurface, LinesFollowTheStepRuleWhereverTheyAreClipped)
{
    // Lines in every direction with ends up to 50 pixels outside a 100 x 80 picture, solid
    // and dotted, each against its definition: step i of n = max(|dx|, |dy|) lights
    // (x0 + i dx / n, y0 + i dy / n), the shorter axis rounded half up, for i < n;
    // dotted: only steps with i mod 6 < 3.
    std::mt19937 random(7);
    std::uniform_int_distribution<int> coordinate(-50, 150);
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
        const auto roundHalfUp = [](int num, int den) { // den > 0
            return static_cast<int>(std::floor((2.0 * num + den) / (2.0 * den)));
        };
        for (int i = 0; i < n; ++i) {
            if (dotted && i % 6 >= 3)
                continue;
            const int x = std::abs(dx) >= std::abs(dy) ? x0 + (dx > 0 ? i : -i) : x0 + roundHalfUp(i * dx, n);
            const int y = std::abs(dx) >= std::abs(dy) ? y0 + roundHalfUp(i * dy, n) : y0 + (dy > 0 ? i : -i);
            if (x >= 0 && y >= 0 && x < 100 && y < 80)
                expected.setPixel(x, y, RedPixel);
        }
        ASSERT_EQ(s.Image(), expected) << "line " << line << ": (" << x0 << "," << y0 << ")-(" << x1
                                       << "," << y1 << ")" << (dotted ? " dotted" : "");
    }
}

TEST(ImageSurface, InvertModeErasesExactly)
{
    ImageSurface s(40, 40);
    s.Line(0, 10, 40, 10, Red);
    const QImage before = s.Image(); // a snapshot: later drawing must not reach it
    s.SetDrawMode(DrawMode::Invert);
    s.Box(5, 5, 20, 15, 0);
    const QImage& boxed = s.Image();
    EXPECT_EQ(boxed.pixel(5, 5), qRgb(0, 0, 0));      // white inverted
    EXPECT_EQ(boxed.pixel(20, 15), qRgb(0, 0, 0));    // both corners belong to the box
    EXPECT_EQ(boxed.pixel(5, 10), qRgb(0, 255, 255)); // red inverted
    EXPECT_EQ(boxed.pixel(12, 10), RedPixel);         // inside the outline: untouched
    EXPECT_EQ(before.pixel(5, 5), WhitePixel);
    s.Box(5, 5, 20, 15, 0);
    EXPECT_EQ(s.Image(), before);
}

TEST(ImageSurface, ResizeKeepsThePictureTopLeft)
{
    ImageSurface s(100, 60);
    s.PSet(5, 5, Red);
    s.PSet(99, 59, Red);
    s.SetBackColor(0x00FF00);
    s.Resize(80, 120);
    const QImage& image = s.Image();
    ASSERT_EQ(image.size(), QSize(80, 120));
    EXPECT_EQ(image.pixel(5, 5), RedPixel);
    EXPECT_EQ(image.pixel(79, 59), WhitePixel);         // old picture
    EXPECT_EQ(image.pixel(79, 60), qRgb(0, 255, 0));    // new area in the back colour
    EXPECT_EQ(s.ScaleWidth(), 80);                      // the pixel scale follows the size
    EXPECT_EQ(s.ScaleHeight(), 120);

    // A user scale keeps its values.
    s.SetScale(0, 0, 10, 10);
    s.Resize(40, 40);
    EXPECT_EQ(s.ScaleWidth(), 10);
    s.PSet(5, 5, Blue);
    EXPECT_EQ(s.Image().pixel(20, 20), BluePixel);
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
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(message([&] { s.Circle(25, 25, 10, Red, 0, 7); }), "Invalid procedure call");
    EXPECT_EQ(message([&] { s.PSet(nan, 1, Red); }), "Overflow");
    EXPECT_EQ(message([&] { s.Line(0, 0, 1e300 * 1e10, 1, Red); }), "Overflow");
    EXPECT_EQ(message([&] { s.SetScale(0, 0, 0, 10); }), "Invalid property value");
    EXPECT_EQ(s.ScaleWidth(), 50);
    // A full turn stored as a float is still a valid angle; a negative one counts by its size.
    EXPECT_EQ(message([&] { s.Circle(25, 25, 10, Red, static_cast<float>(2 * Pi), -1); }), "no error");
    EXPECT_EQ(CountNot(s.Image(), WhitePixel) > 0, true);
}

TEST(ImageSurface, PlotPassPicture)
{
    test::ScratchDir dir;
    const std::string path = dir.Folder() + "TKZGraph.Dll";
    {
        RecordFileWriter writer;
        writer.Open(path);
        writer.Write(1, Record(0, 0, 0, 0, -5));            // rapid up the left edge
        writer.Write(2, Record(1, 0, 0, 10, 0));            // cut along y = 0
        writer.Write(3, Circle(3, 5, 0, 2, 0, 0));          // circle about (5, 0)
    }
    Settings settings;
    settings.ShowAxis = false;
    settings.DefaultColor = Red;
    ToolColorTable toolColors;
    TranslationState translation;
    PlaybackState playback;
    EntityRecord record;
    struct : UserDialogs {
        MsgAnswer Message(const std::string&, const std::string&, MsgIcon, MsgButtons) override
        {
            return MsgAnswer::Ok;
        }
        std::optional<std::string> OpenFileName(const std::string&, const std::string&,
                                                const std::string&, const std::string&) override
        {
            return std::nullopt;
        }
        void SetPointer(MousePointer) override {}
    } dialogs;
    struct : EventPump {
        void ProcessEvents() override {}
    } events;
    Plotter plotter(settings, toolColors, translation, playback, record, dialogs, events,
                    [&] { return path; });
    ImageSurface canvas(100, 100, 0x00FF00);
    canvas.SetBackColor(0xFFFFFF);

    plotter.ComputeExtents(canvas);
    plotter.GetRecords(canvas);

    // Extents x 0..10, y -5..2 fitted by width: visible y -6.5..3.5, so y = 0 is row 65.
    ASSERT_EQ(canvas.ScaleTop(), -6.5f);
    const QImage& image = canvas.Image();
    EXPECT_EQ(image.pixel(99, 0), WhitePixel); // cleared in the back colour first
    for (int x = 0; x < 100; ++x)
        ASSERT_EQ(image.pixel(x, 65), RedPixel) << "x " << x;
    EXPECT_EQ(image.pixel(50, 45), RedPixel); // top of the circle
    EXPECT_EQ(image.pixel(50, 85), RedPixel); // bottom
    EXPECT_EQ(image.pixel(50, 44), WhitePixel);
    // The rapid runs dotted up column 0 from row 65 to row 15.
    int on = 0;
    for (int y = 16; y < 65; ++y)
        on += image.pixel(0, y) == RedPixel;
    EXPECT_GT(on, 15);
    EXPECT_LT(on, 35);
    EXPECT_EQ(image.pixel(0, 14), WhitePixel);
}

} // namespace
} // namespace backplot
