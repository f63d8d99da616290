#include "RecordingSurface.h"
#include "RunTimeError.h"
#include "ViewTransform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace backplot {
namespace {

std::vector<float> ScaleOf(const DrawSurface& s)
{
    return {s.ScaleLeft(), s.ScaleTop(), s.ScaleWidth(), s.ScaleHeight()};
}

TEST(ViewTransform, SetCoordsFitsTheLongerSide)
{
    struct Case {
        const char* name;
        int width, height;
        std::vector<float> window;   // ViewX1, ViewY1, ViewX2, ViewY2 given
        std::vector<float> scale;    // ScaleLeft, ScaleTop, ScaleWidth, ScaleHeight
        std::vector<float> view;     // ViewX1, ViewY1, ViewX2, ViewY2 afterwards
        std::vector<float> spans;    // FitSpan, TwoPixelSpan, BlipSize, AspectRatio
    };
    // Worked out by hand from the fitting rule.
    const Case cases[] = {
        // dy = 0 <= dx = 10: by width; height 10 / 2 = 5 centred on y = 0.
        {"HorizontalLineByWidth", 400, 200, {0, 0, 10, 0}, {0, -2.5f, 10, 5}, {0, -2.5f, 10, 2.5f},
         {5, 0.05f, 0.05f, 2}},
        // Stored y from 0 to -10, given reversed: by height; width 10 * 2 = 20 centred on x = 0.
        {"VerticalLineByHeight", 400, 200, {0, 0, 0, -10}, {-10, -10, 20, 10}, {-10, -10, 10, 0},
         {20, 0.1f, 0.2f, 2}},
        // 10 x 8 on 2:1: by width, visible height 5 centred on -4.
        {"WideWindowCutsHeight", 400, 200, {0, -8, 10, 0}, {0, -6.5f, 10, 5}, {0, -6.5f, 10, -1.5f},
         {5, 0.05f, 0.05f, 2}},
        // The same window, both pairs of corners reversed.
        {"ReversedCorners", 400, 200, {10, 0, 0, -8}, {0, -6.5f, 10, 5}, {0, -6.5f, 10, -1.5f}, {5, 0.05f, 0.05f, 2}},
        // Wider than tall in plot units on a tall canvas: still by width (40 high).
        {"TallCanvasStillByWidth", 100, 400, {0, 0, 10, 2}, {0, -19, 10, 40}, {0, -19, 10, 21},
         {40, 0.2f, 0.4f, 0.25f}},
        // Square window: dy <= dx picks the width; 800 x 400 gives height 2 / 2 = 1.
        {"SquareWindowByWidth", 800, 400, {-1, -1, 1, 1}, {-1, -0.5f, 2, 1}, {-1, -0.5f, 1, 0.5f},
         {1, 0.005f, 0.01f, 2}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        RecordingSurface canvas(c.width, c.height);
        ViewTransform v;
        std::tie(v.ViewX1, v.ViewY1, v.ViewX2, v.ViewY2) = std::tie(c.window[0], c.window[1], c.window[2], c.window[3]);
        v.SetCoords(canvas);
        EXPECT_EQ(ScaleOf(canvas), c.scale);
        EXPECT_EQ((std::vector<float>{v.ViewX1, v.ViewY1, v.ViewX2, v.ViewY2}), c.view);
        EXPECT_EQ((std::vector<float>{v.FitSpan, v.TwoPixelSpan, v.BlipSize, v.AspectRatio}), c.spans);
    }
}

TEST(ViewTransform, SinglePointWindowChangesNothing)
{
    RecordingSurface canvas(400, 200);
    canvas.SetScale(1, 2, 3, 4);
    ViewTransform v;
    v.ViewX1 = v.ViewX2 = 3;
    v.ViewY1 = v.ViewY2 = -4;
    v.FitSpan = 7;
    v.SetCoords(canvas);
    EXPECT_EQ(ScaleOf(canvas), (std::vector<float>{1, 2, 3, 4}));
    EXPECT_EQ((std::vector<float>{v.AspectRatio, v.FitSpan, v.TwoPixelSpan}), (std::vector<float>{0, 7, 0}));
}

TEST(ViewTransform, FaultsRaiseAndKeepWhatWasWritten)
{
    using ::testing::ThrowsMessage;
    // Zero canvas height: the aspect ratio fails before anything is written, even the
    // reversed corners are left as they are.
    RecordingSurface flat(400, 0);
    ViewTransform v;
    v.ViewX1 = 10;
    EXPECT_THAT([&] { v.SetCoords(flat); }, ThrowsMessage<RunTimeError>("Division by zero"));
    EXPECT_EQ((std::vector<float>{v.ViewX1, v.AspectRatio}), (std::vector<float>{10, 0}));

    // A window wider than a float can hold: dx overflows after the corners are sorted and
    // the scale reset; the pixel width is not yet turned into two pixels.
    RecordingSurface canvas(400, 200);
    ViewTransform wide;
    wide.ViewX1 = 3e38f;
    wide.ViewX2 = -3e38f;
    EXPECT_THAT([&] { wide.SetCoords(canvas); }, ThrowsMessage<RunTimeError>("Overflow"));
    EXPECT_EQ((std::vector<float>{wide.AspectRatio, wide.ViewX1, wide.TwoPixelSpan, wide.FitSpan, canvas.ScaleWidth()}),
              (std::vector<float>{2, -3e38f, 400, 0, 400}));
}

} // namespace
} // namespace backplot
