#include "ArcGeometry.h"
#include "EntityRenderer.h"
#include "PlotRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <vector>

namespace backplot {
namespace {

using namespace test;
constexpr std::uint32_t Red = 0x0000FF;

// A primitive's kind and ends (a PSet's point in X1, Y1).
using Leg = std::tuple<Kind, double, double, double, double>;

// The renderer on a view 20 x 20 around the origin, two pixels being 0.05.
struct Fixture {
    Settings settings;
    ViewTransform view;
    EntityRenderer renderer{settings, view};
    RecordingSurface surface;

    Fixture()
    {
        view.ViewX1 = view.ViewY1 = -10;
        view.ViewX2 = view.ViewY2 = 10;
        view.FitSpan = 20, view.BlipSize = 0.5f, view.TwoPixelSpan = 0.05f;
    }

    const std::vector<RecordingSurface::Primitive>& Draw(const EntityRecord& r)
    {
        surface.ForgetPrimitives();
        renderer.DrawEntity(surface, r, Red);
        return surface.Primitives();
    }
    std::vector<Leg> Legs(const EntityRecord& r)
    {
        std::vector<Leg> legs;
        for (const auto& p : Draw(r))
            legs.emplace_back(p.Type, p.X1, p.Y1, p.X2, p.Y2);
        return legs;
    }
};

TEST(EntityRenderer, RapidIsADottedDogLegThenSolid)
{
    struct Case { const char* name; float x1, y1, x2, y2, rapidLeg; std::vector<Leg> legs; };
    const Case cases[] = {
        {"LongInYDownward", 0, 0, 3, -10, 3, {{Kind::Line, 0, 0, 3, -3}, {Kind::LineTo, 3, -3, 3, -10}}},
        {"LongInYUpward", 0, 0, 3, 10, 3, {{Kind::Line, 0, 0, 3, 3}, {Kind::LineTo, 3, 3, 3, 10}}},
        {"LongInXRightward", 0, 0, 10, -2, 2, {{Kind::Line, 0, 0, 2, -2}, {Kind::LineTo, 2, -2, 10, -2}}},
        {"LongInXLeftward", 10, -2, 0, 0, 2, {{Kind::Line, 10, -2, 8, 0}, {Kind::LineTo, 8, 0, 0, 0}}},
        {"DiagonalEndsOnTheKnee", 0, 0, 5, 5, 5, {{Kind::Line, 0, 0, 5, 5}, {Kind::LineTo, 5, 5, 5, 5}}},
        {"StraightAlongX", 1, 4, -6, 4, 0, {{Kind::Line, 1, 4, 1, 4}, {Kind::LineTo, 1, 4, -6, 4}}},
        {"NoMoveDrawsNothing", 1, 1, 1, 1, 0, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Fixture f;
        EXPECT_EQ(f.Legs(Move(0, c.x1, c.y1, c.x2, c.y2)), c.legs);
        for (const auto& p : f.surface.Primitives())
            EXPECT_TRUE(p.Style == DrawStyle::Dot && p.Color == Red);
        EXPECT_EQ(f.renderer.RapidLeg, c.rapidLeg);
        EXPECT_EQ((std::vector<float>{f.renderer.BlipX, f.renderer.BlipY}), (std::vector<float>{c.x2, c.y2}));
        EXPECT_EQ(f.surface.GetDrawStyle(), DrawStyle::Solid);
    }
}

TEST(EntityRenderer, CutIsTwoHalvesTowardTheMiddleAndItsMidpoint)
{
    Fixture f;
    EXPECT_EQ(f.Legs(Move(1, 0, 0, 4, -2)),
              (std::vector<Leg>{{Kind::Line, 0, 0, 2, -1}, {Kind::Line, 4, -2, 2, -1}, {Kind::PSet, 2, -1, 0, 0}}));
    // The middle is a float: (0.1f + 0.3f) / 2 rounded to single precision.
    EXPECT_EQ(f.Draw(Move(1, 0.1f, 0, 0.3f, 0))[2].X1, static_cast<double>(0.2f));
    EXPECT_TRUE(f.Draw(Move(EntityRecord::NoMove, 0, 0, 4, 4)).empty());
    EXPECT_TRUE(f.Draw(Move(4, 0, 0, 4, 4)).empty());
}

TEST(EntityRenderer, ArcsOffTheViewOrTooShortAreSkipped)
{
    struct Case { const char* name; std::int16_t moveType; float cx, cy, radius, startDeg, endDeg; bool drawn; };
    const Case cases[] = {
        {"LeftAt1_5Radii", 3, -11.5f, 0, 1, 0, 90, true},   {"LeftAt2_5Radii", 3, -12.5f, 0, 1, 0, 90, false},
        {"RightAt2_5Radii", 3, 12.5f, 0, 1, 0, 90, false},  {"AboveAt2_5Radii", 2, 0, -12.5f, 1, 90, 0, false},
        {"BelowAt2_5Radii", 2, 0, 12.5f, 1, 90, 0, false},  {"BelowAt1_5Radii", 2, 0, 11.5f, 1, 90, 0, true},
        // 2 degrees of radius 1 is 0.0349 long, under two pixels; 3 degrees is 0.0524.
        {"CcwTwoDegrees", 3, 0, 0, 1, 10, 12, false},       {"CcwThreeDegrees", 3, 0, 0, 1, 10, 13, true},
        {"CcwAcrossZeroTwoDegrees", 3, 0, 0, 1, 359, 1, false}, {"CwTwoDegrees", 2, 0, 0, 1, 12, 10, false},
        {"CwAcrossZeroTwoDegrees", 2, 0, 0, 1, 1, 359, false},  {"CwTheLongWayRound", 2, 0, 0, 1, 10, 12, true},
        {"CcwTheLongWayRound", 3, 0, 0, 1, 12, 10, true},
        {"TinyFullCircleIsNeverTooShort", 3, 0, 0, 0.001f, 45, 45, true},
    };
    for (const Case& c : cases) {
        Fixture f;
        EXPECT_EQ(f.Draw(Arc(c.moveType, c.cx, c.cy, c.radius, c.startDeg, c.endDeg)).size(), c.drawn ? 1u : 0u)
            << c.name;
    }
}

TEST(EntityRenderer, ArcsRunCounterClockwiseAsACircleOrSeventyTwoChords)
{
    Fixture f;
    const double quarter = static_cast<float>(90 * (Pi / 180)), half = static_cast<float>(180 * (Pi / 180));
    const auto& ccw = f.Draw(Arc(3, 1, -2, 3, 90, 180));
    ASSERT_EQ(ccw.size(), 1u);
    EXPECT_TRUE(ccw[0].Type == Kind::Circle && ccw[0].Color == Red);
    EXPECT_EQ((std::vector<double>{ccw[0].X1, ccw[0].Y1, ccw[0].Radius, ccw[0].Start, ccw[0].End}),
              (std::vector<double>{1, -2, 3, quarter, half}));

    const auto& cw = f.Draw(Arc(2, 1, -2, 3, 180, 90));
    ASSERT_EQ(cw.size(), 1u);
    EXPECT_EQ((std::vector<double>{cw[0].Start, cw[0].End}), (std::vector<double>{quarter, half}));
    EXPECT_EQ((std::vector<float>{f.renderer.ArcStartRad, f.renderer.ArcEndRad}),
              (std::vector<float>{static_cast<float>(half), static_cast<float>(quarter)}));

    // A large radius turns into seventy-two chords.
    f.view.ViewX1 = f.view.ViewY1 = -1;
    f.view.ViewX2 = f.view.ViewY2 = 1;
    f.view.FitSpan = 0.25f; // up to 5 * 0.25 = 1.25 the circle primitive is used
    EXPECT_EQ(f.Draw(Arc(3, 0, 0, 1.25f, 0, 0))[0].Type, Kind::Circle);

    f.view.FitSpan = 0.1f; // radius 1 > 0.5: 72 chords of 5 degrees, counter-clockwise on screen
    const auto& chords = f.Draw(Arc(3, 0, 0, 1, 0, 0));
    ASSERT_EQ(chords.size(), 72u);
    for (const auto& c : chords)
        EXPECT_EQ(c.Type, Kind::Line);
    const double s5 = static_cast<float>(std::sin(5 * Pi / 180)), c5 = static_cast<float>(std::cos(5 * Pi / 180));
    EXPECT_EQ((std::vector<double>{chords[0].X1, chords[0].Y1, chords[0].X2, chords[0].Y2}),
              (std::vector<double>{1, 0, c5, -s5})); // up the screen: stored Y decreases
    EXPECT_NEAR(chords[18].X1, 0, 1e-7);
    EXPECT_EQ(chords[18].Y1, -1);
    EXPECT_NEAR(chords[71].X2, 1, 1e-7);
    EXPECT_NEAR(chords[71].Y2, 0, 1e-7);

    // Clockwise from 90 to 0 degrees: chords from 0 up to 90, 1.25 degrees each.
    const auto& cwChords = f.Draw(Arc(2, 0, 0, 1, 90, 0));
    ASSERT_EQ(cwChords.size(), 72u);
    EXPECT_EQ(cwChords[0].X1, 1);
    EXPECT_FLOAT_EQ(static_cast<float>(cwChords[0].X2), static_cast<float>(std::cos(1.25 * Pi / 180)));
    EXPECT_NEAR(cwChords[71].X2, 0, 1e-7);
    EXPECT_NEAR(cwChords[71].Y2, -1, 1e-7);
}

} // namespace
} // namespace backplot
