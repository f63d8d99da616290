#include "RecordingSurface.h"
#include "RunTimeError.h"
#include "ViewTransform.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace backplot {
namespace {

struct FitCase {
    const char* name;
    int width, height;
    float x1, y1, x2, y2;                        // view window given
    float fitSpan, left, top, scaleW, scaleH;    // expected scale
    float viewX1, viewY1, viewX2, viewY2;        // expected view window afterwards
    float twoPixelSpan, blipSize, aspectRatio;
};

void PrintTo(const FitCase& c, std::ostream* os) { *os << c.name; }

// Every number worked out by hand from the fitting rule.
const FitCase fitCases[] = {
    // dy = 0 <= dx = 10: by width; height 10 / 2 = 5 centred on y = 0.
    {"HorizontalLineByWidth", 400, 200, 0, 0, 10, 0, 5, 0, -2.5f, 10, 5, 0, -2.5f, 10, 2.5f, 0.05f, 0.05f, 2},
    // Stored y from 0 to -10 (given reversed): by height; width 10 * 2 = 20 centred on x = 0.
    {"VerticalLineByHeight", 400, 200, 0, 0, 0, -10, 20, -10, -10, 20, 10, -10, -10, 10, 0, 0.1f, 0.2f, 2},
    // 10 x 8 on 2:1: by width, visible height 5 centred on -4, 1.5 lost top and bottom.
    {"WideWindowCutsHeight", 400, 200, 0, -8, 10, 0, 5, 0, -6.5f, 10, 5, 0, -6.5f, 10, -1.5f, 0.05f, 0.05f, 2},
    // The same window with both pairs of corners reversed.
    {"ReversedCorners", 400, 200, 10, 0, 0, -8, 5, 0, -6.5f, 10, 5, 0, -6.5f, 10, -1.5f, 0.05f, 0.05f, 2},
    // Wider than tall in plot units on a tall canvas: still by width (40 high).
    {"TallCanvasStillByWidth", 100, 400, 0, 0, 10, 2, 40, 0, -19, 10, 40, 0, -19, 10, 21, 0.2f, 0.4f, 0.25f},
    // Square window: dy <= dx picks the width; 800 x 400 gives height 2 / 2 = 1.
    {"SquareWindowByWidth", 800, 400, -1, -1, 1, 1, 1, -1, -0.5f, 2, 1, -1, -0.5f, 1, 0.5f, 0.005f, 0.01f, 2},
};

class SetCoordsFit : public testing::TestWithParam<FitCase> {};

TEST_P(SetCoordsFit, ScaleAndViewFields)
{
    const FitCase& c = GetParam();
    RecordingSurface canvas(c.width, c.height);
    ViewTransform view;
    view.ViewX1 = c.x1;
    view.ViewY1 = c.y1;
    view.ViewX2 = c.x2;
    view.ViewY2 = c.y2;

    view.SetCoords(canvas);

    EXPECT_EQ(view.AspectRatio, c.aspectRatio);
    EXPECT_EQ(view.FitSpan, c.fitSpan);
    EXPECT_EQ(canvas.ScaleLeft(), c.left);
    EXPECT_EQ(canvas.ScaleTop(), c.top);
    EXPECT_EQ(canvas.ScaleWidth(), c.scaleW);
    EXPECT_EQ(canvas.ScaleHeight(), c.scaleH);
    EXPECT_EQ(view.ViewX1, c.viewX1);
    EXPECT_EQ(view.ViewY1, c.viewY1);
    EXPECT_EQ(view.ViewX2, c.viewX2);
    EXPECT_EQ(view.ViewY2, c.viewY2);
    EXPECT_EQ(view.TwoPixelSpan, c.twoPixelSpan);
    EXPECT_EQ(view.BlipSize, c.blipSize);
}

INSTANTIATE_TEST_SUITE_P(ViewTransform, SetCoordsFit, testing::ValuesIn(fitCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ViewTransform, SinglePointWindowChangesNothing)
{
    RecordingSurface canvas(400, 200);
    canvas.SetScale(1, 2, 3, 4);
    ViewTransform view;
    view.ViewX1 = view.ViewX2 = 3;
    view.ViewY1 = view.ViewY2 = -4;
    view.FitSpan = 7;

    view.SetCoords(canvas);

    EXPECT_EQ(canvas.ScaleLeft(), 1);
    EXPECT_EQ(canvas.ScaleTop(), 2);
    EXPECT_EQ(canvas.ScaleWidth(), 3);
    EXPECT_EQ(canvas.ScaleHeight(), 4);
    EXPECT_EQ(view.AspectRatio, 0);
    EXPECT_EQ(view.FitSpan, 7);
    EXPECT_EQ(view.TwoPixelSpan, 0);
}

TEST(ViewTransform, FaultsRaiseAndKeepWhatWasWritten)
{
    // Zero canvas height: the aspect ratio divides by zero before anything is written,
    // so the reversed corners are not even put in order.
    {
        RecordingSurface canvas(400, 0);
        ViewTransform view;
        view.ViewX1 = 10;
        view.ViewX2 = 0;
        try {
            view.SetCoords(canvas);
            FAIL() << "no error";
        } catch (const RunTimeError& e) {
            EXPECT_EQ(std::string(e.what()), "Division by zero");
        }
        EXPECT_EQ(view.ViewX1, 10);
        EXPECT_EQ(view.AspectRatio, 0);
    }
    // A window wider than a float can hold: dx overflows after steps 2-5 are done.
    {
        RecordingSurface canvas(400, 200);
        ViewTransform view;
        view.ViewX1 = 3e38f;
        view.ViewX2 = -3e38f;
        try {
            view.SetCoords(canvas);
            FAIL() << "no error";
        } catch (const RunTimeError& e) {
            EXPECT_EQ(std::string(e.what()), "Overflow");
        }
        EXPECT_EQ(view.AspectRatio, 2);
        EXPECT_EQ(view.ViewX1, -3e38f);
        EXPECT_EQ(view.TwoPixelSpan, 400); // the pixel width, not yet turned into two pixels
        EXPECT_EQ(view.FitSpan, 0);
        EXPECT_EQ(canvas.ScaleWidth(), 400); // reset to pixels, no user scale yet
    }
}

} // namespace
} // namespace backplot
