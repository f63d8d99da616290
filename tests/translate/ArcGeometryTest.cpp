#include "ArcGeometry.h"
#include "TranslationState.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace backplot;

TEST(ArcGeometry, AngleOfAndDistance)
{
    const struct { double dx, dy, degrees; } angles[] = {
        {1, 0, 0}, {1, 1, 45}, {0, 1, 90}, {-1, 1, 135}, {-1, 0, 180}, {-1, -1, 225},
        {0, -1, 270}, {1, -1, 315}, {0, 0, 0}, {2, 0, 0}, {0, 2, 90}, {-3, 0, 180}};
    for (const auto& a : angles)
        EXPECT_NEAR(AngleOf(a.dx, a.dy), a.degrees, 1e-12) << a.dx << "," << a.dy;
    EXPECT_DOUBLE_EQ(Distance(1, 1, -2, -3), 5);
    EXPECT_EQ(Distance(2, 7, 2, 7), 0);
}

namespace {

const double A11 = 47.726310993906268; // atan(1.1) in degrees
const double S60 = std::sqrt(60.0);

double Deg(double y, double x) { return std::atan2(y, x) * 180 / Pi; }

} // namespace

TEST(ArcGeometry, CentreRadiusAndAngles)
{
    const struct {
        const char* name; int mode; bool radiusForm; std::int16_t absCenter;
        double lastX, lastY, curX, curY, i, j, r, centreX, centreY, radius, start, end;
    } rows[] = {
        {"G2 R1 half circle", 2, true, 0, 0, 0, 2, 0, 0, 0, 1, 1, 0, 1, 180, 0},
        {"G2 R-1 half circle", 2, true, 0, 0, 0, 2, 0, 0, 0, -1, 1, 0, 1, 180, 0},
        {"G3 R1 quarter turning left", 3, true, 0, 0, 0, 1, 1, 0, 0, 1, 0, 1, 1, 270, 0},
        {"G2 R1 quarter turning right", 2, true, 0, 0, 0, 1, 1, 0, 0, 1, 1, 0, 1, 180, 90},
        {"G3 R-1 long way round", 3, true, 0, 0, 0, 1, 1, 0, 0, -1, 1, 0, 1, 180, 90},
        {"full circle I1 J0", 2, false, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 1, 180, 180},
        {"absolute centre I6 J5 from (5,5)", 2, false, 1, 5, 5, 7, 5, 6, 5, 0, 6, 5, 1, 180, 0},
        // Offsets (6, 5): centre (11, 10), sweep 348.5, refitted on the far side of the chord.
        {"AbsCenter -1 (not 1) takes I6 J5 as offsets", 2, false, -1, 5, 5, 7, 5, 6, 5, 0, 6, 5 + S60,
         std::sqrt(61.0), Deg(-S60, -1) + 360, Deg(-S60, 1) + 360},
        // I and J both non-zero and off the bisector: the centre moves onto it, radius sqrt(2.21) kept.
        {"G3 long sweep refit", 3, false, 0, 0, 0, 2, 0, 1.1, -1, 0, 1, -1.1, std::sqrt(2.21), 180 - A11, A11},
        {"G2 short sweep refit", 2, false, 0, 0, 0, 2, 0, 1.1, -1, 0, 1, -1.1, std::sqrt(2.21), 180 - A11, A11},
        {"G2 long sweep refit", 2, false, 0, 0, 0, 2, 0, 1.1, 1, 0, 1, 1.1, std::sqrt(2.21), 180 + A11, 360 - A11},
        {"G3 short sweep refit", 3, false, 0, 0, 0, 2, 0, 1.1, 1, 0, 1, 1.1, std::sqrt(2.21), 180 + A11, 360 - A11},
        {"centre beside the start is not refitted", 2, false, 0, 0, 0, 2, 0.5, 1, 0, 0, 1, 0, 1, 180, Deg(0.5, 1)},
    };
    for (const auto& row : rows) {
        TranslationState s;
        s.MoveMode = static_cast<std::int16_t>(row.mode);
        s.AbsCenter = row.absCenter;
        s.LastX = row.lastX, s.LastY = row.lastY, s.CurX = row.curX, s.CurY = row.curY;
        s.ValI = row.i, s.ValJ = row.j, s.ValR = row.r;
        ArcGeometry(s, row.radiusForm);
        SCOPED_TRACE(row.name);
        EXPECT_NEAR(s.ArcCenterX, row.centreX, 1e-9);
        EXPECT_NEAR(s.ArcCenterY, row.centreY, 1e-9);
        EXPECT_NEAR(s.ArcRadius, row.radius, 1e-12);
        EXPECT_NEAR(s.ArcStartAngle, row.start, 1e-9);
        EXPECT_NEAR(s.ArcEndAngle, row.end, 1e-9);
    }
}

TEST(ArcGeometry, RadiusTooShortKeepsThePreviousCentre)
{
    TranslationState s;
    s.MoveMode = 2;
    s.CurX = 4, s.CurY = 0; // from (0, 0)
    s.ArcCenterX = 5, s.ArcCenterY = 5; // left by an earlier arc
    s.ValR = 1;                         // chord 4 is longer than the diameter
    ArcGeometry(s, true);
    EXPECT_EQ(s.ArcCenterX, 5);
    EXPECT_EQ(s.ArcCenterY, 5);
    EXPECT_EQ(s.ArcRadius, 1);
    EXPECT_NEAR(s.ArcStartAngle, 225, 1e-9);            // (0,0) seen from (5,5)
    EXPECT_NEAR(s.ArcEndAngle, 180 + Deg(5, 1), 1e-9); // (4,0) seen from (5,5)

    // The centre form with inconsistent I, J goes the same way: centre as computed from I, J.
    s.MoveMode = 3;
    s.ValI = 0.9, s.ValJ = 0.3;
    ArcGeometry(s, false);
    EXPECT_NEAR(s.ArcCenterX, 0.9, 1e-12);
    EXPECT_NEAR(s.ArcCenterY, 0.3, 1e-12);
    EXPECT_NEAR(s.ArcRadius, std::sqrt(0.9), 1e-12);
    EXPECT_NEAR(s.ArcStartAngle, 180 + Deg(1, 3), 1e-9);
}
