#include "ArcGeometry.h"
#include "EntityRenderer.h"
#include "RecordingSurface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <string>
#include <vector>

namespace backplot {
namespace {

using Kind = RecordingSurface::Kind;
constexpr std::uint32_t Red = 0x0000FF;

EntityRecord Move(std::int16_t type, float x1, float y1, float x2, float y2)
{
    EntityRecord r;
    r.MoveType = type;
    r.StartX = x1;
    r.StartY = y1;
    r.EndX = x2;
    r.EndY = y2;
    return r;
}

EntityRecord Arc(std::int16_t type, float cx, float cy, float radius, float startDeg, float endDeg)
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

// A view 20 x 20 around the origin with two pixels of 0.05.
ViewTransform TestView()
{
    ViewTransform v;
    v.ViewX1 = -10;
    v.ViewY1 = -10;
    v.ViewX2 = 10;
    v.ViewY2 = 10;
    v.FitSpan = 20;
    v.BlipSize = 0.5f;
    v.TwoPixelSpan = 0.05f;
    return v;
}

struct Fixture {
    Settings settings;
    ViewTransform view = TestView();
    EntityRenderer renderer{settings, view};
    RecordingSurface surface;

    const std::vector<RecordingSurface::Primitive>& Draw(const EntityRecord& r)
    {
        surface.ForgetPrimitives();
        renderer.DrawEntity(surface, r, Red);
        return surface.Primitives();
    }
};

struct Leg {
    Kind kind;
    double x1, y1, x2, y2;
};

struct RapidCase {
    const char* name;
    float x1, y1, x2, y2;
    float rapidLeg;
    std::vector<Leg> legs;
};

void PrintTo(const RapidCase& c, std::ostream* os) { *os << c.name; }

const RapidCase rapidCases[] = {
    {"LongInYDownward", 0, 0, 3, -10, 3, {{Kind::Line, 0, 0, 3, -3}, {Kind::LineTo, 3, -3, 3, -10}}},
    {"LongInYUpward", 0, 0, 3, 10, 3, {{Kind::Line, 0, 0, 3, 3}, {Kind::LineTo, 3, 3, 3, 10}}},
    {"LongInXRightward", 0, 0, 10, -2, 2, {{Kind::Line, 0, 0, 2, -2}, {Kind::LineTo, 2, -2, 10, -2}}},
    {"LongInXLeftward", 10, -2, 0, 0, 2, {{Kind::Line, 10, -2, 8, 0}, {Kind::LineTo, 8, 0, 0, 0}}},
    {"DiagonalEndsOnTheKnee", 0, 0, 5, 5, 5, {{Kind::Line, 0, 0, 5, 5}, {Kind::LineTo, 5, 5, 5, 5}}},
    {"StraightAlongX", 1, 4, -6, 4, 0, {{Kind::Line, 1, 4, 1, 4}, {Kind::LineTo, 1, 4, -6, 4}}},
    {"NoMoveDrawsNothing", 1, 1, 1, 1, 0, {}},
};

class RapidDogLeg : public testing::TestWithParam<RapidCase> {};

TEST_P(RapidDogLeg, DottedLegsThenSolid)
{
    const RapidCase& c = GetParam();
    Fixture f;
    const auto& drawn = f.Draw(Move(0, c.x1, c.y1, c.x2, c.y2));

    ASSERT_EQ(drawn.size(), c.legs.size());
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(drawn[i].Type, c.legs[i].kind);
        EXPECT_EQ(drawn[i].X1, c.legs[i].x1);
        EXPECT_EQ(drawn[i].Y1, c.legs[i].y1);
        EXPECT_EQ(drawn[i].X2, c.legs[i].x2);
        EXPECT_EQ(drawn[i].Y2, c.legs[i].y2);
        EXPECT_EQ(drawn[i].Style, DrawStyle::Dot);
        EXPECT_EQ(drawn[i].Color, Red);
    }
    EXPECT_EQ(f.renderer.RapidLeg, c.rapidLeg);
    EXPECT_EQ(f.renderer.BlipX, c.x2);
    EXPECT_EQ(f.renderer.BlipY, c.y2);
    EXPECT_EQ(f.surface.GetDrawStyle(), DrawStyle::Solid);
}

INSTANTIATE_TEST_SUITE_P(EntityRenderer, RapidDogLeg, testing::ValuesIn(rapidCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(EntityRenderer, BlipsWithoutRapidsLeaveOnlyTheCross)
{
    Fixture f;
    f.settings.ShowRapid = false;
    f.settings.ShowBlips = true;
    f.surface.SetDrawStyle(DrawStyle::Dash);
    const auto& drawn = f.Draw(Move(0, 0, 0, 3, -10));

    ASSERT_EQ(drawn.size(), 2u);
    EXPECT_EQ(drawn[0].Type, Kind::Line);
    EXPECT_EQ(drawn[0].X1, 3);
    EXPECT_EQ(drawn[0].Y1, -9.5);
    EXPECT_EQ(drawn[0].X2, 3);
    EXPECT_EQ(drawn[0].Y2, -10.5);
    EXPECT_EQ(drawn[1].X1, 3.5);
    EXPECT_EQ(drawn[1].Y1, -10);
    EXPECT_EQ(drawn[1].X2, 2.5);
    EXPECT_EQ(drawn[1].Y2, -10);
    for (const auto& p : drawn) {
        EXPECT_EQ(p.Style, DrawStyle::Solid); // solid even though the rapid was not drawn
        EXPECT_EQ(p.Color, Red);
    }

    // Both on: the dotted legs come first, the cross after them.
    f.settings.ShowRapid = true;
    EXPECT_EQ(f.Draw(Move(0, 0, 0, 3, -10)).size(), 4u);
}

TEST(EntityRenderer, StraightCutDrawsBothHalvesTowardTheMiddle)
{
    Fixture f;
    const auto& drawn = f.Draw(Move(1, 0, 0, 4, -2));
    ASSERT_EQ(drawn.size(), 3u);
    EXPECT_EQ(drawn[0].Type, Kind::Line);
    EXPECT_EQ((std::vector<double>{drawn[0].X1, drawn[0].Y1, drawn[0].X2, drawn[0].Y2}),
              (std::vector<double>{0, 0, 2, -1}));
    EXPECT_EQ(drawn[1].Type, Kind::Line);
    EXPECT_EQ((std::vector<double>{drawn[1].X1, drawn[1].Y1, drawn[1].X2, drawn[1].Y2}),
              (std::vector<double>{4, -2, 2, -1}));
    EXPECT_EQ(drawn[2].Type, Kind::PSet);
    EXPECT_EQ(drawn[2].X1, 2);
    EXPECT_EQ(drawn[2].Y1, -1);

    // The middle is a single-precision value: (0.1f + 0.3f) / 2 rounded to a float.
    const auto& fine = f.Draw(Move(1, 0.1f, 0, 0.3f, 0));
    EXPECT_EQ(fine[2].X1, static_cast<double>(0.2f));
}

TEST(EntityRenderer, FailingPrimitiveLeavesOnlyThatPieceUndrawn)
{
    Fixture f;
    f.surface.FailOn(Kind::Line);
    const auto& cut = f.Draw(Move(1, 0, 0, 4, -2));
    ASSERT_EQ(cut.size(), 1u);
    EXPECT_EQ(cut[0].Type, Kind::PSet);

    const auto& rapid = f.Draw(Move(0, 0, 0, 3, -10));
    ASSERT_EQ(rapid.size(), 1u);
    EXPECT_EQ(rapid[0].Type, Kind::LineTo);
    EXPECT_EQ(f.surface.GetDrawStyle(), DrawStyle::Solid);

    f.surface.FailOn(Kind::Circle);
    EXPECT_NO_THROW(f.Draw(Arc(3, 0, 0, 1, 0, 90)));
}

TEST(EntityRenderer, UnknownMoveTypeDrawsNothing)
{
    Fixture f;
    EXPECT_TRUE(f.Draw(Move(EntityRecord::NoMove, 0, 0, 4, 4)).empty());
    EXPECT_TRUE(f.Draw(Move(4, 0, 0, 4, 4)).empty());
}

struct CullCase {
    const char* name;
    std::int16_t moveType;
    float cx, cy, radius, startDeg, endDeg;
    bool drawn;
};

void PrintTo(const CullCase& c, std::ostream* os) { *os << c.name; }

// View -10..10 both ways, TwoPixelSpan 0.05.
const CullCase cullCases[] = {
    {"LeftAt1_5Radii", 3, -11.5f, 0, 1, 0, 90, true},
    {"LeftAt2_5Radii", 3, -12.5f, 0, 1, 0, 90, false},
    {"RightAt2_5Radii", 3, 12.5f, 0, 1, 0, 90, false},
    {"AboveAt2_5Radii", 2, 0, -12.5f, 1, 90, 0, false},
    {"BelowAt2_5Radii", 2, 0, 12.5f, 1, 90, 0, false},
    {"BelowAt1_5Radii", 2, 0, 11.5f, 1, 90, 0, true},
    // 2 degrees of radius 1 is 0.0349 long, under two pixels; 3 degrees is 0.0524.
    {"CcwTwoDegrees", 3, 0, 0, 1, 10, 12, false},
    {"CcwThreeDegrees", 3, 0, 0, 1, 10, 13, true},
    {"CcwAcrossZeroTwoDegrees", 3, 0, 0, 1, 359, 1, false},
    {"CwTwoDegrees", 2, 0, 0, 1, 12, 10, false},
    {"CwAcrossZeroTwoDegrees", 2, 0, 0, 1, 1, 359, false},
    {"CwTheLongWayRound", 2, 0, 0, 1, 10, 12, true},
    {"CcwTheLongWayRound", 3, 0, 0, 1, 12, 10, true},
    {"TinyFullCircleIsNeverTooShort", 3, 0, 0, 0.001f, 45, 45, true},
};

class ArcCulling : public testing::TestWithParam<CullCase> {};

TEST_P(ArcCulling, DrawnOrSkipped)
{
    const CullCase& c = GetParam();
    Fixture f;
    const auto& drawn = f.Draw(Arc(c.moveType, c.cx, c.cy, c.radius, c.startDeg, c.endDeg));
    EXPECT_EQ(drawn.size(), c.drawn ? 1u : 0u);
}

INSTANTIATE_TEST_SUITE_P(EntityRenderer, ArcCulling, testing::ValuesIn(cullCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(EntityRenderer, ArcsUseTheCirclePrimitiveCwSwapped)
{
    Fixture f;
    const double quarter = static_cast<float>(90 * (Pi / 180)); // stored as a float
    const double half = static_cast<float>(180 * (Pi / 180));

    const auto& ccw = f.Draw(Arc(3, 1, -2, 3, 90, 180));
    ASSERT_EQ(ccw.size(), 1u);
    EXPECT_EQ(ccw[0].Type, Kind::Circle);
    EXPECT_EQ(ccw[0].X1, 1);
    EXPECT_EQ(ccw[0].Y1, -2);
    EXPECT_EQ(ccw[0].Radius, 3);
    EXPECT_EQ(ccw[0].Start, quarter);
    EXPECT_EQ(ccw[0].End, half);
    EXPECT_EQ(ccw[0].Color, Red);

    // Clockwise from 180 to 90 degrees is drawn counter-clockwise from 90 to 180.
    const auto& cw = f.Draw(Arc(2, 1, -2, 3, 180, 90));
    ASSERT_EQ(cw.size(), 1u);
    EXPECT_EQ(cw[0].Start, quarter);
    EXPECT_EQ(cw[0].End, half);
    EXPECT_EQ(f.renderer.ArcStartRad, static_cast<float>(half));
    EXPECT_EQ(f.renderer.ArcEndRad, static_cast<float>(quarter));
}

TEST(EntityRenderer, LargeRadiusTurnsIntoSeventyTwoChords)
{
    Fixture f;
    f.view.ViewX1 = f.view.ViewY1 = -1;
    f.view.ViewX2 = f.view.ViewY2 = 1;

    f.view.FitSpan = 2; // radius 1 <= 10: the primitive
    EXPECT_EQ(f.Draw(Arc(3, 0, 0, 1, 0, 0))[0].Type, Kind::Circle);
    f.view.FitSpan = 0.25f; // 5 * 0.25 = 1.25: still the primitive at exactly that radius
    EXPECT_EQ(f.Draw(Arc(3, 0, 0, 1.25f, 0, 0))[0].Type, Kind::Circle);

    f.view.FitSpan = 0.1f; // radius 1 > 0.5: 72 chords of 5 degrees, counter-clockwise on screen
    const auto& chords = f.Draw(Arc(3, 0, 0, 1, 0, 0));
    ASSERT_EQ(chords.size(), 72u);
    for (const auto& c : chords)
        EXPECT_EQ(c.Type, Kind::Line);
    const double s5 = static_cast<float>(std::sin(5 * Pi / 180));
    const double c5 = static_cast<float>(std::cos(5 * Pi / 180));
    EXPECT_EQ(chords[0].X1, 1);
    EXPECT_EQ(chords[0].Y1, 0);
    EXPECT_EQ(chords[0].X2, c5);
    EXPECT_EQ(chords[0].Y2, -s5); // up the screen: stored Y decreases
    EXPECT_NEAR(chords[18].X1, 0, 1e-7);
    EXPECT_EQ(chords[18].Y1, -1);
    EXPECT_NEAR(chords[71].X2, 1, 1e-7);
    EXPECT_NEAR(chords[71].Y2, 0, 1e-7);

    // A clockwise arc from 90 to 0 degrees: chords from 0 up to 90, 1.25 degrees each.
    const auto& cw = f.Draw(Arc(2, 0, 0, 1, 90, 0));
    ASSERT_EQ(cw.size(), 72u);
    EXPECT_EQ(cw[0].X1, 1);
    EXPECT_FLOAT_EQ(static_cast<float>(cw[0].X2), static_cast<float>(std::cos(1.25 * Pi / 180)));
    EXPECT_NEAR(cw[71].X2, 0, 1e-7);
    EXPECT_NEAR(cw[71].Y2, -1, 1e-7);
}

TEST(EntityRenderer, ArcSegmentsWrapPastZero)
{
    RecordingSurface s;
    const double from = 350 * Pi / 180, to = 10 * Pi / 180;
    EntityRenderer::DrawArcSegments(s, 2, 3, 4, Red, from, to);
    const auto& chords = s.Primitives();
    ASSERT_EQ(chords.size(), 72u);
    EXPECT_EQ(chords[0].X1, static_cast<float>(2 + 4 * std::cos(from)));
    EXPECT_EQ(chords[0].Y1, static_cast<float>(3 - 4 * std::sin(from)));
    // 20 degrees in 72 steps: the middle chord starts at 360 degrees.
    EXPECT_NEAR(chords[36].X1, 6, 1e-6);
    EXPECT_NEAR(chords[36].Y1, 3, 1e-6);
    EXPECT_NEAR(chords[71].X2, 2 + 4 * std::cos(to), 1e-6);
    EXPECT_NEAR(chords[71].Y2, 3 - 4 * std::sin(to), 1e-6);
}

} // namespace
} // namespace backplot
