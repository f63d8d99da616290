#include "PageSurface.h"

#include "RunTimeError.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <vector>

namespace backplot {
namespace {

std::vector<QPointF> Points(std::initializer_list<QPointF> points) { return points; }

TEST(PageSurface, KeepsStrokesInPagePixels)
{
    // 1000 x 500 pixels for 10 x 5 units from (-2, 3): 100 pixels a unit.
    PageSurface page(1000, 500, 2);
    page.SetScale(-2, 3, 10, 5);
    page.Line(-1, 4, 3, 4, 0x0000FF);
    ASSERT_EQ(page.Strokes().size(), 1u);
    EXPECT_EQ(page.Strokes()[0].Points, Points({{100, 100}, {500, 100}}));
    EXPECT_EQ(page.Strokes()[0].Color, 0x0000FFu);
    page.Clear();
    EXPECT_TRUE(page.Empty());
}

TEST(PageSurface, JoinsWhatContinuesAndDropsWhatRepeats)
{
    PageSurface page(100, 100, 1);
    struct Row {
        const char* behaviour;
        std::function<void(PageSurface&)> draw;
        std::size_t strokes;
        std::vector<QPointF> first;
    };
    const Row rows[] = {
        {"a cut drawn from both ends toward its middle is one stroke",
         [](PageSurface& p) {
             p.Line(10, 10, 30, 10, 0);
             p.Line(50, 10, 30, 10, 0);
             p.PSet(30, 10, 0);
         },
         1, {{10, 10}, {30, 10}, {50, 10}}},
        {"the next cut from the end goes on in the same stroke",
         [](PageSurface& p) {
             p.Line(10, 10, 20, 10, 0);
             p.Line(30, 10, 20, 10, 0);
             p.Line(30, 10, 30, 20, 0);
         },
         1, {{10, 10}, {20, 10}, {30, 10}, {30, 20}}},
        {"the same segment again is dropped",
         [](PageSurface& p) {
             p.SetDrawStyle(DrawStyle::DashDotDot);
             p.Line(50, 0, 50, 100, 0);
             p.SetDrawStyle(DrawStyle::Solid);
             p.Line(1, 1, 2, 2, 0);
             p.SetDrawStyle(DrawStyle::DashDotDot);
             p.Line(50, 0, 50, 100, 0);
         },
         2, {{50, 0}, {50, 100}}},
        {"a dotted line met at its end is not joined backwards",
         [](PageSurface& p) {
             p.SetDrawStyle(DrawStyle::Dot);
             p.Line(10, 10, 30, 10, 0);
             p.Line(50, 10, 30, 10, 0);
         },
         2, {{10, 10}, {30, 10}}},
        {"another colour starts a new stroke",
         [](PageSurface& p) {
             p.Line(10, 10, 30, 10, 0);
             p.Line(30, 10, 50, 10, 0xFF);
         },
         2, {{10, 10}, {30, 10}}},
        {"a line of no length draws nothing", [](PageSurface& p) { p.Line(4, 4, 4, 4, 0); }, 0, {}},
    };
    for (const Row& row : rows) {
        page.Clear();
        page.SetDrawStyle(DrawStyle::Solid);
        row.draw(page);
        ASSERT_EQ(page.Strokes().size(), row.strokes) << row.behaviour;
        if (row.strokes) {
            EXPECT_EQ(page.Strokes()[0].Points, row.first) << row.behaviour;
        }
    }
}

TEST(PageSurface, PaintsOntoThePageOnlyInsideItsPrintableArea)
{
    // A page of 200 x 100 pixels on a sheet of 300 x 150: a line across the sheet ends at
    // the page's edge.
    PageSurface page(200, 100, 3);
    page.SetScale(0, 0, 20, 10);
    page.Line(-5, 5, 25, 5, 0x0000FF); // red, 0xBBGGRR
    page.SetDrawStyle(DrawStyle::Dash);
    page.Line(10, -5, 10, 15, 0);
    QImage sheet(300, 150, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    page.Paint(painter);
    painter.end();

    EXPECT_EQ(sheet.pixel(5, 50), qRgb(255, 0, 0));
    EXPECT_EQ(sheet.pixel(150, 50), qRgb(255, 0, 0));
    EXPECT_EQ(sheet.pixel(199, 50), qRgb(255, 0, 0));
    EXPECT_EQ(sheet.pixel(205, 50), qRgb(255, 255, 255));
    EXPECT_EQ(sheet.pixel(100, 120), qRgb(255, 255, 255));
    // The dashed line is dark in places and blank in others.
    int dark = 0;
    for (int y = 0; y < 100; ++y)
        dark += qGray(sheet.pixel(100, y)) < 100;
    EXPECT_GT(dark, 30);
    EXPECT_LT(dark, 90);
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
