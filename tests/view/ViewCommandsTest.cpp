#include "ImageSurface.h"
#include "PlotRig.h"
#include "ViewCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
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
// every side, which gives FitSpan 6.5 and the window Extents.
struct ViewRig : PlotRig {
    HostLog host;
    ViewCommands view{plotter, canvas, settings, playback, dialogs, host};
    ViewRig() { Load({Move(0, 0, 0, 0, 0), Cut(0, 0, 10, -5)}); }
};

using Window = std::vector<float>; // x1, y1, x2, y2
const Window Extents{-1.5f, -5.75f, 11.5f, 0.75f};
Window ViewOf(const ViewTransform& v) { return {v.ViewX1, v.ViewY1, v.ViewX2, v.ViewY2}; }
Window PrevOf(const ViewTransform& v) { return {v.PrevViewX1, v.PrevViewY1, v.PrevViewX2, v.PrevViewY2}; }
auto Near(const Window& w) { return ::testing::Pointwise(::testing::FloatNear(1e-5f), w); }

TEST(ViewCommands, PanStepsMoveExactlyHalfAUnitAtAnyZoom)
{
    const struct {
        const char* name;
        void (ViewCommands::*step)();
        float dx, dy; // change of the view window's edges
    } steps[] = {
        {"left: the drawing moves left", &ViewCommands::PanLeft, 0.5f, 0},
        {"right", &ViewCommands::PanRight, -0.5f, 0}, {"up: the drawing moves up", &ViewCommands::PanUp, 0, 0.5f},
        {"down", &ViewCommands::PanDown, 0, -0.5f},
    };
    for (const int zoomIns : {0, 4}) {
        for (const auto& row : steps) {
            SCOPED_TRACE(std::string(row.name) + " after " + std::to_string(zoomIns) + " zoom-ins");
            ViewRig rig;
            rig.view.ZoomExtents();
            for (int i = 0; i < zoomIns; ++i)
                rig.view.ZoomIn();
            const Window b = ViewOf(rig.plotter.View);
            (rig.view.*row.step)();
            EXPECT_THAT(ViewOf(rig.plotter.View), Near({b[0] + row.dx, b[1] + row.dy, b[2] + row.dx, b[3] + row.dy}));
            EXPECT_THAT(PrevOf(rig.plotter.View), Near(b)) << "the view before is the previous one";
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
    EXPECT_THAT(ViewOf(v), Near({-0.2f, -0.1f, 1.2f, 0.6f}));
    EXPECT_THAT(PrevOf(v), Near({0, 0, 1, 0.5f}));
    EXPECT_NEAR(v.FitSpan, 1.4f, 1e-6);
}

TEST(ViewCommands, SlowMotionStopsTheZoomsButNotThePansExtentsEndsItAndOverflowKeepsTheView)
{
    ViewRig rig;
    rig.view.ZoomExtents();
    rig.canvas.ForgetPrimitives();
    rig.playback.SlowMode = rig.playback.StepMode = rig.playback.SlowPaused = true;
    rig.view.ZoomIn();
    rig.view.ZoomOut();
    rig.view.ZoomPrevious();
    rig.view.ZoomWindow();
    EXPECT_THAT(ViewOf(rig.plotter.View), Near(Extents)) << "zooms wait for slow motion";
    EXPECT_FALSE(rig.view.ZoomWindowMode);
    EXPECT_TRUE(rig.canvas.Primitives().empty());

    rig.view.PanRight();
    EXPECT_NEAR(rig.plotter.View.ViewX1, Extents[0] - 0.5f, 1e-5);
    rig.view.Point();
    EXPECT_TRUE(rig.view.PanMode);
    EXPECT_EQ(rig.host.pointers.back(), CanvasPointer::Pan);

    rig.view.ZoomExtents();
    EXPECT_FALSE(rig.playback.SlowMode || rig.playback.StepMode || rig.playback.SlowPaused);
    EXPECT_EQ(rig.host.endPlayback, 2);
    EXPECT_TRUE(rig.view.ExtentsKeyFlag);
    EXPECT_THAT(ViewOf(rig.plotter.View), Near(Extents));
    EXPECT_THAT(PrevOf(rig.plotter.View), Near({0, -5, 10, 0})) << "the tight extents";

    // Float range exceeded: reported, and the view before kept; zooming in stays finite.
    Window before;
    int zoomOuts = 0;
    for (; rig.dialogs.Messages.empty() && zoomOuts < 1000; ++zoomOuts) {
        before = ViewOf(rig.plotter.View);
        rig.view.ZoomOut();
    }
    const ScriptedDialogs::ShownMessage overflow{"Overflow", "Corvane Backplot", MsgIcon::Critical};
    ASSERT_EQ(rig.dialogs.Messages, std::vector{overflow});
    EXPECT_GT(zoomOuts, 300); // each step widens by 30 %: 13 units reach 3.4E+38 after about 340
    EXPECT_EQ(ViewOf(rig.plotter.View), before);
    EXPECT_EQ(rig.canvas.ScaleLeft(), before[0]); // the canvas is fitted to it again
    rig.view.ZoomExtents();
    for (int i = 0; i < 3000; ++i)
        rig.view.ZoomIn();
    EXPECT_TRUE(std::isfinite(rig.canvas.ScaleLeft()) && std::isfinite(rig.canvas.ScaleTop()));
    EXPECT_TRUE(std::isfinite(rig.canvas.ScaleWidth()) && rig.canvas.ScaleWidth() > 0);
    rig.view.ZoomExtents();
    EXPECT_THAT(ViewOf(rig.plotter.View), Near(Extents));
}

TEST(ViewCommands, ReadoutShowsMachineUnitsWithTheMask)
{
    const struct { float x, y; bool mill; std::pair<std::string, std::string> texts; } rows[] = {
        {3, -2.5f, true, {" X 3.0", " Y 2.5"}},           // stored Y is negated back
        {3, -2.5f, false, {" Z 3.0", " X 5.0"}},          // lathe: Z across, X as a diameter
        {0.1234567f, 0, true, {" X 0.123457", " Y 0.0"}}, // at most six decimals, at least one
        {-1.25f, 4, true, {" X -1.25", " Y -4.0"}}, {-1.25f, 4, false, {" Z -1.25", " X -8.0"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ViewCommands::Readout(row.x, row.y, row.mill), row.texts);
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
    EXPECT_EQ(rig.host.readouts, (std::vector<std::pair<std::string, std::string>>{{" X 2.0", " Y 2.0"}}));
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
    EXPECT_THAT(ViewOf(rig.plotter.View), Near({1, -3, 4, -1.5f})) << "the dragged corners, fitted by width";
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
    int outline = 0;
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 100; ++x) {
            const bool onBox = qRed(box.Image().pixel(x, y)) == 0 && !(x == 20 && y == 10);
            const QRgb expected = onBox ? (~original.pixel(x, y) | 0xFF000000u) : original.pixel(x, y);
            ASSERT_EQ(picture.Image().pixel(x, y), expected) << x << "," << y;
            outline += onBox;
        }
    EXPECT_EQ(outline, 4 * 40 - 1);
}

} // namespace
} // namespace backplot
