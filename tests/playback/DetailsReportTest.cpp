#include "DetailsReport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace backplot {
namespace {

using Lines = std::vector<std::string>;

const std::string Rule(50, '-');

// The three lines every report starts with, for a block text as stored.
Lines Head(const std::string& storedText)
{
    std::string padded = storedText;
    padded.resize(60, ' ');
    return {"", " CNC code " + padded, ""};
}

Lines Concat(Lines head, const Lines& body)
{
    head.insert(head.end(), body.begin(), body.end());
    return head;
}

EntityRecord Record(std::int16_t moveType, const char* text, std::int32_t tool)
{
    EntityRecord r;
    r.MoveType = moveType;
    r.SetBlockText(text);
    r.ToolNum = tool;
    return r;
}

void SetStart(EntityRecord& r, float x, float storedY, float z)
{
    r.StartX = x;
    r.StartY = storedY;
    r.StartZ = z;
}

void SetEnd(EntityRecord& r, float x, float storedY, float z)
{
    r.EndX = x;
    r.EndY = storedY;
    r.EndZ = z;
}

// Every expected text below is worked out by hand from the stored values: Y negated
// back, lathe D = -2 x stored Y (the rapid's D: stored Y doubled), zones at column 15.
TEST(DetailsReport, EachKindAndMachineGivesItsTable)
{
    struct Case {
        const char* name;
        EntityRecord record;
        bool mill;
        Lines expected;
    };
    std::vector<Case> cases;

    {   // Machine (1, 1, 2) to (3, 4, .5): from zero 53.130102 degrees and 5 long; from
        // the last point sqrt(2^2 + 3^2) = sqrt(13) = 3.6055512...
        EntityRecord r = Record(0, "  G00 X3. Y4. Z.5 T5", 5);
        SetStart(r, 1, -1, 2);
        SetEnd(r, 3, -4, 0.5f);
        cases.push_back({"MillRapidToX3Y4", r, true,
                         Concat(Head("  G00 X3. Y4. Z.5 T5"),
                                {"      <Rapid position>", Rule, " Last T#       5 ", Rule, " X position   3.000000",
                                 " Y position   4.000000", " Z position   0.500000", Rule,
                                 " Angle from zero53.130102", " 2-D Dist from zero5.000000",
                                 " 2-D Dist from last point3.605551"})});
    }
    {   // Stored (5, -4) to (2, -10): D = -10 + -10 without negation; the distance runs
        // between (5, 4) and (2, 10): sqrt(9 + 36) = 6.7082039...
        EntityRecord r = Record(0, "G00 X20. Z2.", 0);
        SetStart(r, 5, -4, 0);
        SetEnd(r, 2, -10, 1e-14f);
        cases.push_back({"LatheRapidKeepsTheStoredSignOfD", r, false,
                         Concat(Head("G00 X20. Z2."),
                                {"      <Rapid position>", Rule, " Last T#       0 ", Rule, " Z position   2.000000",
                                 " D position   -20.000000", Rule, " 2-D Dist from last point6.708204"})});
    }
    {   // Machine (2, 1, 0) to (-1, -3, -.25): direction of (-3, -4) is 180 + 53.13 = 233.1.
        // A start Z just below zero keeps its minus.
        EntityRecord r = Record(1, "N20 G01 X-1. Y-3. Z-.25", 12);
        SetStart(r, 2, -1, -1e-7f);
        SetEnd(r, -1, 3, -0.25f);
        cases.push_back({"MillLineDownAndLeft", r, true,
                         Concat(Head("N20 G01 X-1. Y-3. Z-.25"),
                                {"                  <Line>", Rule, " Last T#       12 ", Rule,
                                 " X start position2.000000", " Y start position1.000000", " Z start position-0.000000",
                                 Rule, " X end position-1.000000", " Y end position-3.000000",
                                 " Z end position-0.250000", Rule, " Angle        233.1"})});
    }
    {   // The same stored points as the lathe rapid: D start 8, D end +20 (the rapid said
        // -20). Direction of (2 - 5, 10 - 4) = (-3, 6): 180 - 63.43 = 116.565... -> 116.6.
        EntityRecord r = Record(1, "G01 X20. Z2.", 0);
        SetStart(r, 5, -4, 0);
        SetEnd(r, 2, -10, 0);
        cases.push_back({"LatheLineShowsDiameters", r, false,
                         Concat(Head("G01 X20. Z2."),
                                {"                  <Line>", Rule, " Last T#       0 ", Rule,
                                 " Z start position5.000000", " D start position8.000000", Rule,
                                 " Z end position2.000000", " D end position20.000000", Rule, " Angle        116.6"})});
    }
    {   // Start (1.5, 2.25), centre (4.5, 6.25): a 3-4-5 triangle. The start angle is the
        // float nearest 233.1301023..., which is 233.13009643..., so it reads 233.130096;
        // the radius 2.6953125 rounds its half up to 2.695313.
        EntityRecord r = Record(2, "G02 X9.5 Y6.25 I3. J4.", 3);
        SetStart(r, 1.5f, -2.25f, -1);
        SetEnd(r, 9.5f, -6.25f, -1);
        r.CenterX = 4.5f;
        r.CenterY = -6.25f;
        r.Radius = 2.6953125f;
        r.StartAngle = static_cast<float>(233.13010235415598);
        r.EndAngle = 0;
        cases.push_back({"MillArcHasNoRuleAfterTheTool", r, true,
                         Concat(Head("G02 X9.5 Y6.25 I3. J4."),
                                {"              <Arc>", Rule, " Last T#       3 ", " X start position1.500000",
                                 " Y start position2.250000", " Z start position-1.000000", Rule,
                                 " X center position4.500000", " Y center position6.250000", Rule,
                                 " X end position9.500000", " Y end position6.250000", " Z end position-1.000000",
                                 Rule, " Start angle  233.130096", " End angle    0.000000", Rule,
                                 " Radius       2.695313"})});
    }
    {   // The lathe arc lists the end before the centre; a negative tool prints its minus
        // in the sign position.
        EntityRecord r = Record(2, "G02 X30. Z-25. K-5.", -2);
        SetStart(r, -15, -15, 1e-14f);
        SetEnd(r, -25, -15, 1e-14f);
        r.CenterX = -20;
        r.CenterY = -15;
        r.Radius = 5;
        r.StartAngle = 0;
        r.EndAngle = 180;
        cases.push_back({"LatheArcGivesTheEndBeforeTheCentre", r, false,
                         Concat(Head("G02 X30. Z-25. K-5."),
                                {"              <Arc>", Rule, " Last T#      -2 ", " Z start position-15.000000",
                                 " D start position30.000000", Rule, " Z end position-25.000000",
                                 " D end position30.000000", Rule, " Z center position-20.000000",
                                 " D center position30.000000", Rule, " Start angle  0.000000",
                                 " End angle    180.000000", Rule, " Radius       5.000000"})});
    }
    {
        EntityRecord r = Record(7, "G04 P1.", 9);
        SetEnd(r, 1, 1, 1);
        cases.push_back({"UnknownKindShowsTheHeadOnly", r, true, Head("G04 P1.")});
        cases.push_back({"UnknownKindOnALatheToo", r, false, Head("G04 P1.")});
    }

    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(DetailsReport(c.record, c.mill), c.expected);
    }
}

TEST(DetailsReport, LineAngleIsRoundedToOneDecimal)
{
    struct Case {
        const char* name;
        float x1, storedY1, x2, storedY2;
        const char* angle;
    };
    const Case cases[] = {
        {"DiagonalUpIs45", 0, 0, 1, -1, " Angle        45.0"},
        {"SamePointIs0", 4, -2, 4, -2, " Angle        0.0"},
        {"StraightDownIs270", 1, -1, 1, 2, " Angle        270.0"},
        {"JustBelowTheXAxisIsNearly360", 0, 0, 100, 0.01f, " Angle        360.0"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EntityRecord r = Record(1, "G01", 0);
        SetStart(r, c.x1, c.storedY1, 0);
        SetEnd(r, c.x2, c.storedY2, 0);
        EXPECT_EQ(DetailsReport(r, true).back(), c.angle);
    }
}

TEST(DetailsReport, StepTrimsTheBlockTextAndPadsItAgain)
{
    struct Case {
        const char* name;
        const char* stored;
        const char* trimmed;
    };
    const Case cases[] = {
        {"BlanksOnBothSides", "   G01 X1.  ", "G01 X1."},
        {"OnlyBlanks", "      ", ""},
        {"InnerBlanksStay", "  X1.   Y2.", "X1.   Y2."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EntityRecord r;
        r.SetBlockText(c.stored);
        TrimBlockText(r);
        std::string expected = c.trimmed;
        expected.resize(60, ' ');
        EXPECT_EQ(std::string(r.BlockTextView()), expected);
    }
    // A block of the full 60 characters with a blank in front loses it and gets one behind.
    EntityRecord r;
    r.SetBlockText(" " + std::string(59, 'X'));
    TrimBlockText(r);
    EXPECT_EQ(std::string(r.BlockTextView()), std::string(59, 'X') + " ");
}

} // namespace
} // namespace backplot
