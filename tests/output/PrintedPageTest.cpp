#include "PageSurface.h"
#include "PrintRenderer.h"

#include "OutputTestSupport.h"
#include "RecordingSurface.h"
#include "RunTimeError.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <limits>
#include <numbers>
#include <sstream>
#include <vector>

namespace backplot {
namespace {

using Primitive = RecordingSurface::Primitive;
using Coords = std::vector<double>;
using Texts = std::vector<std::string>;

Coords Of(const Primitive& p) { return {p.X1, p.Y1, p.X2, p.Y2}; }

// Each primitive as "kind style: points" (LineTo its end, PSet its point), with its
// colour when that is not black.
Texts TextsOf(const std::vector<Primitive>& primitives)
{
    Texts texts;
    for (const Primitive& p : primitives) {
        std::ostringstream s;
        s.precision(17);
        s << std::vector{"Line", "LineTo", "Box", "PSet", "Circle", "Clear"}[int(p.Type)] << ' '
          << std::vector{"solid", "dash", "dot", "dashdot", "dashdotdot"}[int(p.Style)] << ':';
        const Coords points = p.Type == RecordingSurface::Kind::LineTo ? Coords{p.X2, p.Y2}
                              : p.Type == RecordingSurface::Kind::PSet ? Coords{p.X1, p.Y1}
                                                                       : Of(p);
        for (double v : points)
            s << ' ' << v;
        if (p.Color != 0)
            s << " #" << std::hex << p.Color;
        texts.push_back(s.str());
    }
    return texts;
}

using test::Move;

// A stored arc about (cx, 0).
EntityRecord Arc(std::int16_t type, float radius, float startDeg, float endDeg, float cx = 0)
{
    return test::Arc(type, cx, 0, radius, startDeg, endDeg);
}

class PrintRendererTest : public ::testing::Test {
protected:
    PrintRendererTest()
    {
        settings.ShowAxis = false;
        test::SetView(view, -100, -100, 100, 100);
        page.SetScale(-5, -5, 20, 10);
    }
    std::vector<Primitive> Draw(const EntityRecord& record)
    {
        page.ForgetPrimitives();
        renderer.PrintEntity(page, record);
        return page.Primitives();
    }
    Coords PageWindow() const { return {page.ScaleLeft(), page.ScaleTop(), page.ScaleWidth(), page.ScaleHeight()}; }
    Coords ViewWindow() const { return {view.ViewX1, view.ViewY1, view.ViewX2, view.ViewY2}; }

    Settings settings;
    ViewTransform view;
    PrintMapping mapping;
    PrintRenderer renderer{settings, view, mapping};
    RecordingSurface page{1000, 500};
};

TEST_F(PrintRendererTest, TallViewFillsThePageHeightCentredHorizontally)
{
    // The wide branch is the printed page's test (PrintTest).
    mapping.PrintHeight = 3; // not the tall branch's business
    test::SetView(view, 3, 20, -1, 0); // corners in reverse
    renderer.SetPrinter(page, 8000, 10000, 15);
    EXPECT_FLOAT_EQ(mapping.PageAspect, 0.8f);
    EXPECT_FLOAT_EQ(mapping.PrintHeight, 3);
    // 20 high x 0.8 = 16 wide, about the view's middle x = 1.
    EXPECT_EQ(PageWindow(), Coords({-7, 0, 16, 20}));
    EXPECT_EQ(ViewWindow(), Coords({-7, 0, 9, 20}));
    EXPECT_FLOAT_EQ(mapping.PrinterPixel, 0.06f); // 2 x 16 / (8000 / 15)
    EXPECT_FLOAT_EQ(mapping.MarkSize, 0.16f);

    // An empty view changes nothing.
    test::SetView(view, 3, -4, 3, -4);
    renderer.SetPrinter(page, 5000, 10000, 15);
    EXPECT_FLOAT_EQ(mapping.PageAspect, 0.8f);
    EXPECT_EQ(page.ScaleLeft(), -7);
}

TEST_F(PrintRendererTest, EachKindAsThePrinterDrawsIt)
{
    const EntityRecord rapid = Move(0, 0, 0, 3, -5);
    mapping.MarkSize = 0.5f;
    // A rapid: dotted, 45 degrees for the 3 across, then straight on; the page left solid.
    EXPECT_EQ(TextsOf(Draw(rapid)), Texts({"Line dot: 0 0 3 -3", "LineTo dot: 3 -5"}));
    EXPECT_EQ(page.GetDrawStyle(), DrawStyle::Solid);

    // Without "Show Rapid" nothing; with "Show Blips" a solid plus of half-size MarkSize.
    settings.ShowRapid = false;
    EXPECT_TRUE(Draw(rapid).empty());
    settings.ShowBlips = true;
    EXPECT_EQ(TextsOf(Draw(rapid)), Texts({"Line solid: 3 -4.5 3 -5.5", "Line solid: 3.5 -5 2.5 -5"}));

    // A cut: both halves toward the middle (3, 0), then the middle point, in black.
    EXPECT_EQ(TextsOf(Draw(Move(1, 1, 2, 5, -2))),
              Texts({"Line solid: 1 2 3 0", "Line solid: 5 -2 3 0", "PSet solid: 3 0"}));

    // With "Show Axis", every record first draws x = 0 and y = 0 across the page window.
    settings.ShowAxis = true;
    EXPECT_EQ(TextsOf(Draw(Move(1, 1, 1, 2, 1))),
              Texts({"Line dashdotdot: 0 -5 0 5", "Line dashdotdot: -5 0 15 0", "Line solid: 1 1 1.5 1",
                     "Line solid: 2 1 1.5 1", "PSet solid: 1.5 1"}));
}

TEST_F(PrintRendererTest, ArcsAsChordChainsCounterClockwiseUnlessShorterThanAPrinterPixel)
{
    renderer.ArcColor = 0x123456;
    // Counter-clockwise from 0 to 90 degrees, radius 2: 72 chords from (2, 0) up to
    // (0, -2) (stored Y grows downward). The chords themselves are the screen's, held by
    // the entity renderer's test.
    const std::vector<Primitive> p = Draw(Arc(3, 2, 0, 90));
    ASSERT_EQ(p.size(), 72u);
    EXPECT_EQ(Coords({p[0].X1, p[0].Y1}), Coords({2, 0}));
    EXPECT_NEAR(p[71].X2, 0, 1e-6);
    EXPECT_NEAR(p[71].Y2, -2, 1e-6);
    EXPECT_EQ(p[0].Color, 0x123456u);
    // The clockwise arc from 90 to 0 degrees is the same quarter.
    EXPECT_EQ(TextsOf(Draw(Arc(2, 2, 90, 0))), TextsOf(p));
    EXPECT_FLOAT_EQ(renderer.ArcEndRad, static_cast<float>(std::numbers::pi / 2));

    // Arcs shorter than a printer pixel stay off the page.
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

TEST(PageSurface, JoinsWhatContinuesAndDropsWhatRepeats)
{
    // Lines (or a point) in page pixels, each in its colour and style.
    struct Draw {
        double x1, y1, x2, y2;
        std::uint32_t colour = 0;
        DrawStyle style = DrawStyle::Solid;
        bool point = false;
    };
    constexpr DrawStyle Axis = DrawStyle::DashDotDot, Dot = DrawStyle::Dot;
    const struct { const char* behaviour; std::vector<Draw> draws; std::size_t strokes; std::vector<QPointF> first; }
        rows[] = {
            {"a cut drawn from both ends toward its middle is one stroke",
             {{10, 10, 30, 10}, {50, 10, 30, 10}, {30, 10, 30, 10, 0, DrawStyle::Solid, true}}, 1,
             {{10, 10}, {30, 10}, {50, 10}}},
            {"the next cut from the end goes on in the same stroke",
             {{10, 10, 20, 10}, {30, 10, 20, 10}, {30, 10, 30, 20}}, 1, {{10, 10}, {20, 10}, {30, 10}, {30, 20}}},
            {"the same segment again is dropped", {{50, 0, 50, 100, 0, Axis}, {1, 1, 2, 2}, {50, 0, 50, 100, 0, Axis}},
             2, {{50, 0}, {50, 100}}},
            {"a dotted line met at its end is not joined backwards",
             {{10, 10, 30, 10, 0, Dot}, {50, 10, 30, 10, 0, Dot}}, 2, {{10, 10}, {30, 10}}},
            {"another colour starts a new stroke", {{10, 10, 30, 10}, {30, 10, 50, 10, 0xFF}}, 2, {{10, 10}, {30, 10}}},
            {"a line of no length draws nothing", {{4, 4, 4, 4}}, 0, {}},
        };
    PageSurface page(100, 100, 1);
    for (const auto& row : rows) {
        page.Clear();
        page.SetDrawStyle(DrawStyle::Solid);
        for (const Draw& d : row.draws) {
            if (d.style != page.GetDrawStyle())
                page.SetDrawStyle(d.style);
            d.point ? page.PSet(d.x1, d.y1, d.colour) : page.Line(d.x1, d.y1, d.x2, d.y2, d.colour);
        }
        ASSERT_EQ(page.Strokes().size(), row.strokes) << row.behaviour;
        if (row.strokes) {
            EXPECT_EQ(page.Strokes()[0].Points, row.first) << row.behaviour;
        }
    }
    // Lines are kept in page pixels: 10 x 5 units from (-2, 3) are 10 pixels a unit across, 20 down.
    page.Clear();
    page.SetScale(-2, 3, 10, 5);
    page.Line(-1, 4, 3, 4, 0x0000FF);
    ASSERT_EQ(page.Strokes().size(), 1u);
    EXPECT_EQ(page.Strokes()[0].Points, (std::vector<QPointF>{{10, 20}, {50, 20}}));
}

TEST(PageSurface, EachDrawStyleHasItsOwnRunsOfInkAndPaperInsideThePrintableArea)
{
    // A line 4 pixels wide per style, on its own band, read along its middle row. The
    // printer's patterns in line widths, with square-cut ends: dash 4 on 2 off, dot 1 on
    // 2 off, dash-dot 4 2 1 2, dash-dot-dot 4 2 1 2 1 2; so at a width of 4 pixels, runs
    // of 16, 8 and 4 pixels from the line's start. The rapid moves are dotted, the axis
    // dash-dot-dot. The page is 120 pixels wide on a sheet of 160: the solid line, red
    // (0xBBGGRR) and drawn across the sheet, ends at the page's edge.
    using Runs = std::vector<int>;
    const std::pair<DrawStyle, Runs> styles[] = {
        {DrawStyle::Solid, {96}}, {DrawStyle::Dash, {16, 8, 16, 8, 16, 8, 16, 8}},
        {DrawStyle::Dot, {4, 8, 4, 8, 4, 8, 4, 8, 4, 8, 4, 8, 4, 8, 4, 8}},
        {DrawStyle::DashDot, {16, 8, 4, 8, 16, 8, 4, 8, 16, 8}},
        {DrawStyle::DashDotDot, {16, 8, 4, 8, 4, 8, 16, 8, 4, 8, 4, 8}},
    };
    PageSurface page(120, 100, 4);
    page.SetScale(0, 0, 120, 100);
    for (std::size_t i = 0; i < std::size(styles); ++i) {
        page.SetDrawStyle(styles[i].first);
        page.Line(i == 0 ? -20 : 0, 10 + 20.0 * i, i == 0 ? 150 : 120, 10 + 20.0 * i, i == 0 ? 0x0000FF : 0);
    }
    QImage sheet(160, 100, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    page.Paint(painter);
    painter.end();

    for (std::size_t i = 0; i < std::size(styles); ++i) {
        const int y = 10 + 20 * static_cast<int>(i);
        Runs runs{0};
        bool ink = true;
        for (int x = 0; x < 96; ++x) {
            if ((qGray(sheet.pixel(x, y)) < 128) != ink) {
                runs.push_back(0);
                ink = !ink;
            }
            ++runs.back();
        }
        EXPECT_EQ(runs, styles[i].second) << "style " << static_cast<int>(styles[i].first);
    }
    for (const auto& [x, colour] : {std::pair{0, qRgb(255, 0, 0)}, {119, qRgb(255, 0, 0)}, {120, qRgb(255, 255, 255)}})
        EXPECT_EQ(sheet.pixel(x, 10), colour) << x;
}

TEST(PageSurface, UnmappablePointsRaiseOverflow)
{
    PageSurface page(100, 100, 1);
    page.SetScale(0, 0, 10, 10);
    EXPECT_THROW(page.Line(0, 0, std::numeric_limits<double>::infinity(), 0, 0), RunTimeError);
    EXPECT_THROW(page.PSet(std::numeric_limits<double>::quiet_NaN(), 0, 0), RunTimeError);
    EXPECT_THROW(page.Circle(5, 5, 1, 0, 0, 7), RunTimeError);
    EXPECT_TRUE(page.Empty());
    // Far but finite: kept, cut at a bound a printer still takes.
    page.Line(0, 5, 1e30, 5, 0);
    ASSERT_EQ(page.Strokes().size(), 1u);
    EXPECT_NEAR(page.Strokes()[0].Points[1].x(), 1e6, 1e-3);
    EXPECT_EQ(page.Strokes()[0].Points[1].y(), 50);
}

} // namespace
} // namespace backplot
