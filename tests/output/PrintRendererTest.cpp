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

EntityRecord Record(std::int16_t moveType, float sx, float sy, float ex, float ey)
{
    EntityRecord r;
    r.MoveType = moveType;
    r.StartX = sx;
    r.StartY = sy;
    r.EndX = ex;
    r.EndY = ey;
    return r;
}

EntityRecord Arc(std::int16_t moveType, float cx, float cy, float radius, float startDeg, float endDeg)
{
    EntityRecord r;
    r.MoveType = moveType;
    r.CenterX = cx;
    r.CenterY = cy;
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
        view.ViewX1 = -100;
        view.ViewY1 = -100;
        view.ViewX2 = 100;
        view.ViewY2 = 100;
        page.SetScale(-5, -5, 20, 10);
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
    // 10 wide, 4 high, corners given in reverse; a page of 8000 x 10000 twips.
    view.ViewX1 = 10;
    view.ViewY1 = 2;
    view.ViewX2 = 0;
    view.ViewY2 = -2;
    renderer.SetPrinter(page, 8000, 10000, 15);
    EXPECT_FLOAT_EQ(mapping.PageAspect, 0.8f);
    EXPECT_FLOAT_EQ(mapping.PrintHeight, 12.5f); // 10 / 0.8
    // Scale (0, -6.25, 10, 12.5): the 4 high view sits in the middle of 12.5.
    EXPECT_FLOAT_EQ(page.ScaleLeft(), 0);
    EXPECT_FLOAT_EQ(page.ScaleTop(), -6.25f);
    EXPECT_FLOAT_EQ(page.ScaleWidth(), 10);
    EXPECT_FLOAT_EQ(page.ScaleHeight(), 12.5f);
    // The view window becomes the page's window.
    EXPECT_FLOAT_EQ(view.ViewX1, 0);
    EXPECT_FLOAT_EQ(view.ViewX2, 10);
    EXPECT_FLOAT_EQ(view.ViewY1, -6.25f);
    EXPECT_FLOAT_EQ(view.ViewY2, 6.25f);
    // Two screen pixels of 15 twips on a page 10000 twips high spanning 12.5 units.
    EXPECT_FLOAT_EQ(mapping.PrinterPixel, 0.0375f);
    EXPECT_FLOAT_EQ(mapping.MarkSize, 0.125f);
}

TEST_F(PrintRendererTest, TallViewFillsThePageHeightCentredHorizontally)
{
    mapping.PrintHeight = 3; // left as it was by the tall branch
    view.ViewX1 = -1;
    view.ViewY1 = 0;
    view.ViewX2 = 3;
    view.ViewY2 = 20;
    renderer.SetPrinter(page, 8000, 10000, 15);
    EXPECT_FLOAT_EQ(mapping.PageAspect, 0.8f);
    EXPECT_FLOAT_EQ(mapping.PrintHeight, 3);
    // 20 high x 0.8 = 16 wide, about the view's middle x = 1.
    EXPECT_FLOAT_EQ(page.ScaleLeft(), -7);
    EXPECT_FLOAT_EQ(page.ScaleTop(), 0);
    EXPECT_FLOAT_EQ(page.ScaleWidth(), 16);
    EXPECT_FLOAT_EQ(page.ScaleHeight(), 20);
    EXPECT_FLOAT_EQ(view.ViewX1, -7);
    EXPECT_FLOAT_EQ(view.ViewX2, 9);
    EXPECT_FLOAT_EQ(view.ViewY1, 0);
    EXPECT_FLOAT_EQ(view.ViewY2, 20);
    EXPECT_FLOAT_EQ(mapping.PrinterPixel, 0.06f); // 2 x 16 / (8000 / 15)
    EXPECT_FLOAT_EQ(mapping.MarkSize, 0.16f);
}

TEST_F(PrintRendererTest, EmptyViewChangesNothing)
{
    view.ViewX1 = view.ViewX2 = 3;
    view.ViewY1 = view.ViewY2 = -4;
    mapping.PrinterPixel = 7;
    renderer.SetPrinter(page, 8000, 10000, 15);
    EXPECT_EQ(mapping.PageAspect, 0);
    EXPECT_EQ(mapping.PrinterPixel, 7);
    EXPECT_EQ(page.ScaleLeft(), -5);
    EXPECT_EQ(page.ScaleWidth(), 20);
    EXPECT_EQ(view.ViewX1, 3);
}

TEST_F(PrintRendererTest, EachKindAsThePrinterDrawsIt)
{
    const EntityRecord rapid = Record(0, 0, 0, 3, -5);
    const EntityRecord cut = Record(1, 1, 2, 5, -2);
    mapping.MarkSize = 0.5f;

    // A rapid: a dotted dog-leg, 45 degrees for the 3 across, then straight on.
    settings.ShowRapid = true;
    std::vector<Primitive> p = Draw(rapid);
    ASSERT_EQ(p.size(), 2u);
    EXPECT_EQ(p[0].Type, Kind::Line);
    EXPECT_EQ(p[0].Style, DrawStyle::Dot);
    EXPECT_EQ(std::vector<double>({p[0].X1, p[0].Y1, p[0].X2, p[0].Y2}), std::vector<double>({0, 0, 3, -3}));
    EXPECT_EQ(p[1].Type, Kind::LineTo);
    EXPECT_EQ(std::vector<double>({p[1].X2, p[1].Y2}), std::vector<double>({3, -5}));
    EXPECT_EQ(page.GetDrawStyle(), DrawStyle::Solid);

    // Without "Show Rapid" nothing; with "Show Blips" a solid plus of half-size MarkSize.
    settings.ShowRapid = false;
    EXPECT_TRUE(Draw(rapid).empty());
    settings.ShowBlips = true;
    p = Draw(rapid);
    ASSERT_EQ(p.size(), 2u);
    EXPECT_EQ(std::vector<double>({p[0].X1, p[0].Y1, p[0].X2, p[0].Y2}), std::vector<double>({3, -4.5, 3, -5.5}));
    EXPECT_EQ(std::vector<double>({p[1].X1, p[1].Y1, p[1].X2, p[1].Y2}), std::vector<double>({3.5, -5, 2.5, -5}));
    EXPECT_EQ(p[0].Style, DrawStyle::Solid);

    // A cut: both halves toward the middle (3, 0), then the middle point; in black.
    p = Draw(cut);
    ASSERT_EQ(p.size(), 3u);
    EXPECT_EQ(std::vector<double>({p[0].X1, p[0].Y1, p[0].X2, p[0].Y2}), std::vector<double>({1, 2, 3, 0}));
    EXPECT_EQ(std::vector<double>({p[1].X1, p[1].Y1, p[1].X2, p[1].Y2}), std::vector<double>({5, -2, 3, 0}));
    EXPECT_EQ(p[2].Type, Kind::PSet);
    EXPECT_EQ(std::vector<double>({p[2].X1, p[2].Y1}), std::vector<double>({3, 0}));
    for (const Primitive& each : p)
        EXPECT_EQ(each.Color, 0u);
}

TEST_F(PrintRendererTest, AxisAcrossTheWholePageWithEveryRecord)
{
    settings.ShowAxis = true;
    const std::vector<Primitive> p = Draw(Record(1, 1, 1, 2, 1));
    ASSERT_EQ(p.size(), 5u);
    // x = 0 from the top to the bottom of the page window, y = 0 from its left to its right.
    EXPECT_EQ(std::vector<double>({p[0].X1, p[0].Y1, p[0].X2, p[0].Y2}), std::vector<double>({0, -5, 0, 5}));
    EXPECT_EQ(std::vector<double>({p[1].X1, p[1].Y1, p[1].X2, p[1].Y2}), std::vector<double>({-5, 0, 15, 0}));
    EXPECT_EQ(p[0].Style, DrawStyle::DashDotDot);
    EXPECT_EQ(p[1].Style, DrawStyle::DashDotDot);
    EXPECT_EQ(p[2].Style, DrawStyle::Solid);
    // Again with the next record.
    EXPECT_EQ(Draw(Record(0, 0, 0, 0, 0)).size(), 2u);
}

TEST_F(PrintRendererTest, ArcsAsChordChainsCounterClockwiseFromTheirStart)
{
    renderer.ArcColor = 0x123456;
    // Counter-clockwise from 0 to 90 degrees, radius 2 about the origin: 72 chords from
    // (2, 0) up to (0, -2) (stored Y grows downward), each 1.25 degrees.
    std::vector<Primitive> p = Draw(Arc(3, 0, 0, 2, 0, 90));
    ASSERT_EQ(p.size(), 72u);
    EXPECT_DOUBLE_EQ(p[0].X1, 2);
    EXPECT_DOUBLE_EQ(p[0].Y1, 0);
    EXPECT_FLOAT_EQ(static_cast<float>(p[0].X2), static_cast<float>(2 * std::cos(1.25 * std::numbers::pi / 180)));
    EXPECT_FLOAT_EQ(static_cast<float>(p[0].Y2), static_cast<float>(-2 * std::sin(1.25 * std::numbers::pi / 180)));
    EXPECT_NEAR(p[71].X2, 0, 1e-6);
    EXPECT_NEAR(p[71].Y2, -2, 1e-6);
    EXPECT_EQ(p[0].Color, 0x123456u);
    for (std::size_t i = 1; i < p.size(); ++i)
        ASSERT_EQ(std::pair(p[i].X1, p[i].Y1), std::pair(p[i - 1].X2, p[i - 1].Y2)) << "chord " << i;

    // The clockwise arc from 90 to 0 degrees covers the same quarter, from its end.
    const std::vector<Primitive> clockwise = Draw(Arc(2, 0, 0, 2, 90, 0));
    ASSERT_EQ(clockwise.size(), 72u);
    EXPECT_DOUBLE_EQ(clockwise[0].X1, 2);
    EXPECT_NEAR(clockwise[71].Y2, -2, 1e-6);
    EXPECT_FLOAT_EQ(renderer.ArcStartRad, 0);
    EXPECT_FLOAT_EQ(renderer.ArcEndRad, static_cast<float>(std::numbers::pi / 2));
}

TEST_F(PrintRendererTest, ArcsShorterThanPrinterPixelStayOffThePage)
{
    mapping.PrinterPixel = 1;
    struct Row {
        const char* behaviour;
        EntityRecord arc;
        std::size_t chords;
    };
    const Row rows[] = {
        {"a quarter of radius 0.5 is 0.785 long", Arc(3, 0, 0, 0.5f, 0, 90), 0},
        {"a quarter of radius 0.7 is 1.1 long", Arc(3, 0, 0, 0.7f, 0, 90), 72},
        {"counter-clockwise from 90 to 0 runs 270 degrees: 2.36", Arc(3, 0, 0, 0.5f, 90, 0), 72},
        {"clockwise from 0 to 90 runs 270 degrees", Arc(2, 0, 0, 0.5f, 0, 90), 72},
        {"clockwise from 0 to 270 runs 90 degrees: 0.785", Arc(2, 0, 0, 0.5f, 0, 270), 0},
        {"a whole circle runs 360 degrees: 1.26", Arc(2, 0, 0, 0.2f, 45, 45), 72},
        {"more than two radii off the view", Arc(3, 300, 0, 50, 0, 90), 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Draw(row.arc).size(), row.chords) << row.behaviour;
}

} // namespace
} // namespace backplot
