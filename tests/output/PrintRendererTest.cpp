#include "PrintRenderer.h"

#include "RecordingSurface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace backplot {
namespace {

using Kind = RecordingSurface::Kind;
using Primitive = RecordingSurface::Primitive;
using Coords = std::vector<double>;

Coords Of(const Primitive& p) { return {p.X1, p.Y1, p.X2, p.Y2}; }

EntityRecord Move(std::int16_t moveType, float sx, float sy, float ex, float ey)
{
    EntityRecord r;
    r.MoveType = moveType;
    r.StartX = sx;
    r.StartY = sy;
    r.EndX = ex;
    r.EndY = ey;
    return r;
}

EntityRecord Arc(std::int16_t moveType, float radius, float startDeg, float endDeg, float cx = 0)
{
    EntityRecord r;
    r.MoveType = moveType;
    r.CenterX = cx;
    r.Radius = radius;
    r.StartAngle = startDeg;
    r.EndAngle = endDeg;
    return r;
}

class PrintRendererTest : public ::testing::Test {
protected:
    PrintRendererTest()
    {
        settings.ShowAxis = false;
        SetView(-100, -100, 100, 100);
        page.SetScale(-5, -5, 20, 10);
    }
    void SetView(float x1, float y1, float x2, float y2)
    {
        view.ViewX1 = x1;
        view.ViewY1 = y1;
        view.ViewX2 = x2;
        view.ViewY2 = y2;
    }
    std::vector<Primitive> Draw(const EntityRecord& record)
    {
        page.ForgetPrimitives();
        renderer.PrintEntity(page, record);
        return page.Primitives();
    }

    Settings settings;
    ViewTransform view;
    PrintMapping mapping;
    PrintRenderer renderer{settings, view, mapping};
    RecordingSurface page{1000, 500};
};

TEST_F(PrintRendererTest, WideViewFillsThePageWidthCentredVertically)
{
    SetView(10, 2, 0, -2); // 10 wide, 4 high, corners in reverse
    renderer.SetPrinter(page, 8000, 10000, 15);
    EXPECT_FLOAT_EQ(mapping.PageAspect, 0.8f);
    EXPECT_FLOAT_EQ(mapping.PrintHeight, 12.5f); // 10 / 0.8
    // The 4 high view in the middle of 12.5; the view window becomes the page's window.
    EXPECT_EQ(Coords({page.ScaleLeft(), page.ScaleTop(), page.ScaleWidth(), page.ScaleHeight()}),
              Coords({0, -6.25, 10, 12.5}));
    EXPECT_EQ(Coords({view.ViewX1, view.ViewY1, view.ViewX2, view.ViewY2}), Coords({0, -6.25, 10, 6.25}));
    // Two screen pixels of 15 twips on a page 10000 twips high spanning 12.5 units.
    EXPECT_FLOAT_EQ(mapping.PrinterPixel, 0.0375f);
    EXPECT_FLOAT_EQ(mapping.MarkSize, 0.125f);
}

TEST_F(PrintRendererTest, TallViewFillsThePageHeightCentredHorizontally)
{
    mapping.PrintHeight = 3; // not the tall branch's business
    SetView(-1, 0, 3, 20);
    renderer.SetPrinter(page, 8000, 10000, 15);
    EXPECT_FLOAT_EQ(mapping.PrintHeight, 3);
    // 20 high x 0.8 = 16 wide, about the view's middle x = 1.
    EXPECT_EQ(Coords({page.ScaleLeft(), page.ScaleTop(), page.ScaleWidth(), page.ScaleHeight()}),
              Coords({-7, 0, 16, 20}));
    EXPECT_EQ(Coords({view.ViewX1, view.ViewY1, view.ViewX2, view.ViewY2}), Coords({-7, 0, 9, 20}));
    EXPECT_FLOAT_EQ(mapping.PrinterPixel, 0.06f); // 2 x 16 / (8000 / 15)
    EXPECT_FLOAT_EQ(mapping.MarkSize, 0.16f);

    // An empty view changes nothing.
    SetView(3, -4, 3, -4);
    renderer.SetPrinter(page, 5000, 10000, 15);
    EXPECT_FLOAT_EQ(mapping.PageAspect, 0.8f);
    EXPECT_EQ(page.ScaleLeft(), -7);
}

TEST_F(PrintRendererTest, EachKindAsThePrinterDrawsIt)
{
    const EntityRecord rapid = Move(0, 0, 0, 3, -5);
    mapping.MarkSize = 0.5f;
    // A rapid: dotted, 45 degrees for the 3 across, then straight on.
    std::vector<Primitive> p = Draw(rapid);
    ASSERT_EQ(p.size(), 2u);
    EXPECT_EQ(Of(p[0]), Coords({0, 0, 3, -3}));
    EXPECT_EQ(p[1].Type, Kind::LineTo);
    EXPECT_EQ(Coords({p[1].X2, p[1].Y2}), Coords({3, -5}));
    EXPECT_EQ(p[0].Style, DrawStyle::Dot);
    EXPECT_EQ(page.GetDrawStyle(), DrawStyle::Solid);

    // Without "Show Rapid" nothing; with "Show Blips" a solid plus of half-size MarkSize.
    settings.ShowRapid = false;
    EXPECT_TRUE(Draw(rapid).empty());
    settings.ShowBlips = true;
    p = Draw(rapid);
    ASSERT_EQ(p.size(), 2u);
    EXPECT_EQ(Of(p[0]), Coords({3, -4.5, 3, -5.5}));
    EXPECT_EQ(Of(p[1]), Coords({3.5, -5, 2.5, -5}));
    EXPECT_EQ(p[0].Style, DrawStyle::Solid);

    // A cut: both halves toward the middle (3, 0), then the middle point, in black.
    p = Draw(Move(1, 1, 2, 5, -2));
    ASSERT_EQ(p.size(), 3u);
    EXPECT_EQ(Of(p[0]), Coords({1, 2, 3, 0}));
    EXPECT_EQ(Of(p[1]), Coords({5, -2, 3, 0}));
    EXPECT_EQ(p[2].Type, Kind::PSet);
    EXPECT_EQ(Coords({p[2].X1, p[2].Y1}), Coords({3, 0}));
    EXPECT_EQ(p[0].Color | p[1].Color | p[2].Color, 0u);

    // With "Show Axis", every record first draws x = 0 and y = 0 across the page window.
    settings.ShowAxis = true;
    p = Draw(Move(1, 1, 1, 2, 1));
    ASSERT_EQ(p.size(), 5u);
    EXPECT_EQ(Of(p[0]), Coords({0, -5, 0, 5}));
    EXPECT_EQ(Of(p[1]), Coords({-5, 0, 15, 0}));
    EXPECT_EQ(p[0].Style, DrawStyle::DashDotDot);
    EXPECT_EQ(p[1].Style, DrawStyle::DashDotDot);
    EXPECT_EQ(p[2].Style, DrawStyle::Solid);
}

TEST_F(PrintRendererTest, ArcsAsChordChainsCounterClockwiseFromTheirStart)
{
    renderer.ArcColor = 0x123456;
    // Counter-clockwise from 0 to 90 degrees, radius 2: 72 chords of 1.25 degrees from
    // (2, 0) up to (0, -2) (stored Y grows downward), end to end.
    const std::vector<Primitive> p = Draw(Arc(3, 2, 0, 90));
    ASSERT_EQ(p.size(), 72u);
    const double step = 1.25 * std::numbers::pi / 180;
    EXPECT_EQ(Coords({p[0].X1, p[0].Y1}), Coords({2, 0}));
    EXPECT_FLOAT_EQ(static_cast<float>(p[0].X2), static_cast<float>(2 * std::cos(step)));
    EXPECT_FLOAT_EQ(static_cast<float>(p[0].Y2), static_cast<float>(-2 * std::sin(step)));
    EXPECT_NEAR(p[71].X2, 0, 1e-6);
    EXPECT_NEAR(p[71].Y2, -2, 1e-6);
    EXPECT_EQ(p[0].Color, 0x123456u);
    for (std::size_t i = 1; i < p.size(); ++i)
        ASSERT_EQ(Coords({p[i].X1, p[i].Y1}), Coords({p[i - 1].X2, p[i - 1].Y2})) << "chord " << i;
    // The clockwise arc from 90 to 0 degrees is the same quarter.
    const std::vector<Primitive> clockwise = Draw(Arc(2, 2, 90, 0));
    ASSERT_EQ(clockwise.size(), 72u);
    for (std::size_t i = 0; i < p.size(); ++i)
        EXPECT_EQ(Of(clockwise[i]), Of(p[i])) << "chord " << i;
    EXPECT_FLOAT_EQ(renderer.ArcEndRad, static_cast<float>(std::numbers::pi / 2));
}

TEST_F(PrintRendererTest, ArcsShorterThanPrinterPixelStayOffThePage)
{
    mapping.PrinterPixel = 1;
    const std::pair<EntityRecord, std::size_t> rows[] = {
        {Arc(3, 0.5f, 0, 90), 0},     // a quarter of radius 0.5: 0.785 long
        {Arc(3, 0.7f, 0, 90), 72},    // radius 0.7: 1.1
        {Arc(3, 0.5f, 90, 0), 72},    // counter-clockwise from 90 to 0 runs 270 degrees: 2.36
        {Arc(2, 0.5f, 0, 90), 72},    // clockwise from 0 to 90 runs 270 degrees
        {Arc(2, 0.5f, 0, 270), 0},    // clockwise from 0 to 270 runs 90 degrees
        {Arc(2, 0.2f, 45, 45), 72},   // a whole circle runs 360 degrees: 1.26
        {Arc(3, 50, 0, 90, 300), 0},  // more than two radii off the view
    };
    for (const auto& [arc, chords] : rows)
        EXPECT_EQ(Draw(arc).size(), chords) << arc.Radius << " " << arc.StartAngle << " " << arc.EndAngle;
}

} // namespace
} // namespace backplot
