#include "ImageSurface.h"
#include "PlotRig.h"
#include "ViewCommands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <utility>

namespace backplot {
namespace {

using namespace test;

// What the commands asked of the window.
struct HostLog : ViewHost {
    int steps = 0, toggles = 0, endPlayback = 0, hides = 0;
    std::vector<std::pair<float, float>> crossHairs;
    std::vector<std::pair<std::string, std::string>> readouts;
    std::vector<CanvasPointer> pointers;
    bool busy = false;
    void SetCanvasPointer(CanvasPointer p) override { pointers.push_back(p); }
    void EndPlayback() override { ++endPlayback; }
    void Step() override { ++steps; }
    void SlowMotionToggle() override { ++toggles; }
    bool FileOperation() const override { return busy; }
    void ShowMousePosition(const std::string& x, const std::string& y) override { readouts.emplace_back(x, y); }
    void ShowCrossHairs(float x, float y) override { crossHairs.emplace_back(x, y); }
    void HideCrossHairs() override { ++hides; }
};

// A cut from (0, 0) to machine (10, 5): stored (10, -5). On the 400 x 200 canvas the
// extents fit by width with FitSpan 5, and Full Drawing Extents widens them by 1.5 on
// every side, which gives FitSpan 6.5 and the window (-1.5, -5.75)-(11.5, 0.75).
struct ViewRig : Rig {
    HostLog host;
    ViewCommands view{plotter, canvas, settings, playback, dialogs, host};
    ViewRig()
    {
        EntityRecord start;
        start.MoveType = 0;
        Load({start, Cut(0, 0, 10, -5)});
    }
};

struct Window {
    float x1, y1, x2, y2;
};
Window ViewOf(const ViewTransform& v) { return {v.ViewX1, v.ViewY1, v.ViewX2, v.ViewY2}; }
Window PrevOf(const ViewTransform& v) { return {v.PrevViewX1, v.PrevViewY1, v.PrevViewX2, v.PrevViewY2}; }
void ExpectWindow(const Window& actual, const Window& expected, const char* what)
{
    SCOPED_TRACE(what);
    EXPECT_NEAR(actual.x1, expected.x1, 1e-5);
    EXPECT_NEAR(actual.y1, expected.y1, 1e-5);
    EXPECT_NEAR(actual.x2, expected.x2, 1e-5);
    EXPECT_NEAR(actual.y2, expected.y2, 1e-5);
}

TEST(ViewCommands, PanStepsMoveExactlyHalfAUnitAtAnyZoom)
{
    const struct {
        const char* name;
        void (ViewCommands::*step)();
        float dx, dy; // change of the view window's edges
    } steps[] = {
        {"left: the drawing moves left", &ViewCommands::PanLeft, 0.5f, 0},
        {"right", &ViewCommands::PanRight, -0.5f, 0},
        {"up: the drawing moves up", &ViewCommands::PanUp, 0, 0.5f},
        {"down", &ViewCommands::PanDown, 0, -0.5f},
    };
    for (const int zoomIns : {0, 4}) {
        for (const auto& row : steps) {
            SCOPED_TRACE(std::string(row.name) + " after " + std::to_string(zoomIns) + " zoom-ins");
            ViewRig rig;
            rig.view.ZoomExtents();
            for (int i = 0; i < zoomIns; ++i)
                rig.view.ZoomIn();
            const Window before = ViewOf(rig.plotter.View);
            (rig.view.*row.step)();
            ExpectWindow(ViewOf(rig.plotter.View), {before.x1 + row.dx, before.y1 + row.dy, before.x2 + row.dx,
                                                    before.y2 + row.dy},
                         "moved");
            ExpectWindow(PrevOf(rig.plotter.View), before, "the view before is the previous one");
            EXPECT_FALSE(rig.view.PanMode);
        }
    }
}

TEST(ViewCommands, ZoomInOnAWindowNarrowerThanItsStepTurnsItInsideOutAndWidens)
{
    ViewRig rig;
    ViewTransform& v = rig.plotter.View;
    v.ViewX1 = 0, v.ViewY1 = 0, v.ViewX2 = 1, v.ViewY2 = 0.5f;
    v.FitSpan = 2; // each edge moves 0.6: x 0.6 .. 0.4, y 0.6 .. -0.1
    rig.view.ZoomIn();
    // Put back in order, 0.2 by 0.7, it is fitted by its height: FitSpan 1.4 wide, centred on 0.5.
    ExpectWindow(ViewOf(v), {-0.2f, -0.1f, 1.2f, 0.6f}, "after the zoom");
    ExpectWindow(PrevOf(v), {0, 0, 1, 0.5f}, "saved");
    EXPECT_NEAR(v.FitSpan, 1.4f, 1e-6);
}

TEST(ViewCommands, SlowMotionStopsTheZoomsButNotThePansAndExtentsEndsIt)
{
    ViewRig rig;
    rig.view.ZoomExtents();
    rig.canvas.ForgetPrimitives();
    rig.playback.SlowMode = true;
    rig.playback.StepMode = true;
    rig.playback.SlowPaused = true;
    const Window opened = ViewOf(rig.plotter.View);
    rig.view.ZoomIn();
    rig.view.ZoomOut();
    rig.view.ZoomPrevious();
    rig.view.ZoomWindow();
    ExpectWindow(ViewOf(rig.plotter.View), opened, "zooms wait for slow motion");
    EXPECT_FALSE(rig.view.ZoomWindowMode);
    EXPECT_TRUE(rig.canvas.Primitives().empty());

    rig.view.PanRight();
    EXPECT_NEAR(rig.plotter.View.ViewX1, opened.x1 - 0.5f, 1e-5);
    rig.view.Point();
    EXPECT_TRUE(rig.view.PanMode);
    EXPECT_EQ(rig.host.pointers.back(), CanvasPointer::Pan);

    rig.view.ZoomExtents();
    EXPECT_FALSE(rig.playback.SlowMode);
    EXPECT_FALSE(rig.playback.StepMode);
    EXPECT_FALSE(rig.playback.SlowPaused);
    EXPECT_EQ(rig.host.endPlayback, 2);
    EXPECT_TRUE(rig.view.ExtentsKeyFlag);
    ExpectWindow(ViewOf(rig.plotter.View), {-1.5f, -5.75f, 11.5f, 0.75f}, "extents with margin");
    ExpectWindow(PrevOf(rig.plotter.View), {0, -5, 10, 0}, "the tight extents");
}

TEST(ViewCommands, FloatRangeExceededIsReportedAndTheViewBeforeIsKept)
{
    ViewRig rig;
    rig.dialogs.expectMessages = true;
    rig.view.ZoomExtents();
    Window before{};
    int zoomOuts = 0;
    while (rig.dialogs.messages.empty() && zoomOuts < 1000) {
        before = ViewOf(rig.plotter.View);
        rig.view.ZoomOut();
        ++zoomOuts;
    }
    ASSERT_EQ(rig.dialogs.messages, std::vector<std::string>{"Corvane Backplot: Overflow"});
    EXPECT_GT(zoomOuts, 300); // each step widens by 30 %: 13 units reach 3.4E+38 after about 340
    const ViewTransform& v = rig.plotter.View;
    EXPECT_EQ(v.ViewX1, before.x1);
    EXPECT_EQ(v.ViewX2, before.x2);
    EXPECT_EQ(rig.canvas.ScaleLeft(), before.x1); // the canvas is fitted to it again
    rig.view.ZoomIn();
    rig.view.ZoomExtents();
    EXPECT_EQ(rig.dialogs.messages.size(), 1u);
    ExpectWindow(ViewOf(v), {-1.5f, -5.75f, 11.5f, 0.75f}, "back to the extents");
}

TEST(ViewCommands, ThousandsOfZoomInsLeaveAFiniteScale)
{
    ViewRig rig;
    rig.dialogs.expectMessages = true;
    rig.view.ZoomExtents();
    for (int i = 0; i < 3000; ++i)
        rig.view.ZoomIn();
    const ViewTransform& v = rig.plotter.View;
    for (const float f : {v.ViewX1, v.ViewY1, v.ViewX2, v.ViewY2, v.FitSpan, rig.canvas.ScaleLeft(),
                          rig.canvas.ScaleWidth(), rig.canvas.ScaleHeight()})
        EXPECT_TRUE(std::isfinite(f)) << f;
    EXPECT_GT(rig.canvas.ScaleWidth(), 0);
    rig.view.ZoomExtents();
    ExpectWindow(ViewOf(v), {-1.5f, -5.75f, 11.5f, 0.75f}, "back to the extents");
}

TEST(ViewCommands, ReadoutShowsMachineUnitsWithTheMask)
{
    const struct {
        float x, y;
        bool mill;
        const char *xText, *yText;
    } rows[] = {
        {3, -2.5f, true, " X 3.0", " Y 2.5"},           // stored Y is negated back
        {3, -2.5f, false, " Z 3.0", " X 5.0"},          // lathe: Z across, X as a diameter
        {0.1234567f, 0, true, " X 0.123457", " Y 0.0"}, // at most six decimals, at least one
        {-1.25f, 4, true, " X -1.25", " Y -4.0"},
        {-1.25f, 4, false, " Z -1.25", " X -8.0"},
    };
    for (const auto& row : rows) {
        const auto [x, y] = ViewCommands::Readout(row.x, row.y, row.mill);
        EXPECT_EQ(x, row.xText);
        EXPECT_EQ(y, row.yText);
    }
}

TEST(ViewCommands, MouseStepsStopsSlowMotionAndMovesTheCrossHairsWhenAllowed)
{
    ViewRig rig;
    rig.view.ZoomExtents();
    rig.settings.CrossHairs = true;

    rig.playback.StepMode = true;
    rig.view.MouseDown(MouseButton::Left, 1, -1); // each left click steps
    rig.view.MouseDown(MouseButton::Right, 1, -1);
    EXPECT_EQ(rig.host.steps, 1);
    EXPECT_EQ(rig.host.toggles, 0);
    rig.playback.StepMode = false;
    rig.playback.SlowMode = true;
    rig.view.MouseDown(MouseButton::Right, 1, -1); // the slow-motion command, which ends it
    EXPECT_EQ(rig.host.toggles, 1);
    rig.view.MouseMove(false, 2, -2); // nothing moves while slow motion runs
    rig.playback.SlowMode = false;
    rig.host.busy = true;
    rig.view.MouseMove(false, 2, -2); // nor while a file is opened
    EXPECT_TRUE(rig.host.readouts.empty());
    rig.host.busy = false;

    rig.view.MouseMove(false, 2, -2);
    ASSERT_EQ(rig.host.readouts.size(), 1u);
    EXPECT_EQ(rig.host.readouts[0], std::make_pair(std::string(" X 2.0"), std::string(" Y 2.0")));
    EXPECT_EQ(rig.host.crossHairs, (std::vector<std::pair<float, float>>{{2, -2}}));

    // A box being dragged freezes the cross hairs; the release hides them. An armed tool
    // turns a click during stepping into the drag.
    rig.playback.StepMode = true;
    rig.view.ZoomWindow();
    rig.view.MouseDown(MouseButton::Left, 1, -1);
    rig.view.MouseMove(true, 3, -3);
    rig.view.MouseMove(true, 4, -3.5f);
    EXPECT_EQ(rig.host.crossHairs.size(), 1u);
    EXPECT_EQ(rig.host.steps, 1);
    rig.view.MouseUp(MouseButton::Left, 4, -3.5f);
    EXPECT_EQ(rig.host.hides, 1);
    EXPECT_FALSE(rig.view.RubberBoxActive);
    EXPECT_EQ(rig.host.pointers.back(), CanvasPointer::Default);
    // 3 wide, 2.5 tall: fitted by width to FitSpan 1.5, the height centred on -2.25.
    ExpectWindow(ViewOf(rig.plotter.View), {1, -3, 4, -1.5f}, "the dragged corners, fitted by width");
    rig.view.MouseMove(false, 2, -2);
    EXPECT_EQ(rig.host.crossHairs.size(), 2u);
}

TEST(ViewCommands, ZoomBoxIsDrawnInInvertModeSoErasingItIsExact)
{
    ViewRig rig;
    ImageSurface picture(100, 60);
    picture.SetScale(0, 0, 10, 6);
    for (int i = 0; i < 6; ++i)
        picture.Line(0, i + 0.5, 10, i + 0.5, 0x0000FF);
    picture.Line(3, 0, 3, 6, 0x00FF00);
    const QImage original = picture.Image().copy();
    ViewCommands view(rig.plotter, picture, rig.settings, rig.playback, rig.dialogs, rig.host);

    view.ZoomWindow();
    view.MouseDown(MouseButton::Left, 2, 1);
    view.MouseMove(true, 8.5, 4.5);
    view.MouseMove(true, 6, 5); // the first box erased, this one drawn
    // The outline of (2, 1)-(6, 5) alone differs, each pixel inverted; the press corner is
    // inverted twice (by the empty box the first move erases) and shows as it was.
    ImageSurface box(100, 60);
    box.SetScale(0, 0, 10, 6);
    box.Box(2, 1, 6, 5, 0);
    const QImage shown = picture.Image();
    int outline = 0;
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 100; ++x) {
            const bool onBox = qRed(box.Image().pixel(x, y)) == 0 && !(x == 20 && y == 10);
            const QRgb expected = onBox ? (~original.pixel(x, y) | 0xFF000000u) : original.pixel(x, y);
            ASSERT_EQ(shown.pixel(x, y), expected) << x << "," << y;
            outline += onBox;
        }
    EXPECT_EQ(outline, 4 * 40 - 1);
}

} // namespace
} // namespace backplot
