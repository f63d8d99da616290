#include "CheckCodes.h"
#include "ProgramCheck.h"
#include "TestPaths.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace backplot {
namespace {

// The findings of a program as the translator's normaliser leaves it (CR LF lines). A
// frame of two rapids after it keeps the arcs' circles inside the drawing, unless `framed`
// is false.
std::vector<Finding> Check(const std::string& program, bool mill = true, int absCenter = 0, bool framed = true)
{
    test::ScratchDir folder;
    std::string normalised;
    const std::string frame = !framed ? "" : mill ? "G0 X-40. Y-40.\nG0 X40. Y40.\n" : "G0 X-80. Z-40.\nG0 X80. Z40.\n";
    for (const char c : program + frame)
        normalised += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return CheckProgram(folder.Write("TKZTemp.tmp", normalised), mill, absCenter);
}

using Places = std::vector<std::pair<int, CheckCode>>;

Places PlacesOf(const std::vector<Finding>& findings)
{
    Places places;
    for (const Finding& f : findings)
        places.push_back({f.Line, f.Code});
    return places;
}

// One program per code, each with a line that gets it and lines around it that must not.
TEST(ProgramCheck, EachRuleIsFoundOnItsLineAndNowhereElse)
{
    using C = CheckCode;
    const struct Row { const char* rule; const char* program; bool mill; Places expected; } rows[] = {
        {"implied decimals, zero and pointed numbers fine", "G0 X0 Y0\nG1 X25 Y1.\nG1 X3.\n", true,
         {{2, C::ImpliedDecimal}}},
        {"not one number", "G1 X1.\nG1 X1-2\n", true, {{2, C::MalformedNumber}}},
        {"lower case, F does not matter", "G1 X1.\ng1 x1.5\nG1 X2. f100\n", true, {{2, C::LowerCase}}},
        {"cut by a comment and a comma, closed pairs fine", "G1 X1. (rough) Y2.\nG1 X3. (T1 D10)\nG1 X1., Y4.\n",
         true, {{1, C::CommentCut}, {3, C::CommentCut}}},
        {"block delete of a move, not of a spindle stop", "/M05\n/G1 X5.\nG1 X6.\n", true, {{2, C::BlockDelete}}},
        {"a letter twice", "G1 X1. Y1.\nG1 X6. X7.\n", true, {{2, C::RepeatedAddress}}},
        {"G18 on a mill, not on a lathe", "G18\n", true, {{1, C::Plane}}},
        {"G18 on a lathe", "G18\nG0 X10. Z1.\n", false, {}},
        {"cycle, compensation, a second offset; G40 and G80 fine",
         "G54 G40 G80\nG0 X0. Y0.\nG81 X10. Y5. Z-3. R1.\nG41 D1\nG55\n", true,
         {{3, C::IgnoredGCode}, {4, C::IgnoredGCode}, {5, C::IgnoredGCode}}},
        {"G91.1 read as G91", "G91.1\n", true, {{1, C::DecimalGCode}}},
        {"brackets and a T inside GOTO", "G1 X[#1*2]\nGOTO 10\n", true, {{1, C::Expression}, {2, C::Expression}}},
        {"words after a semicolon, plain text fine", "G1 X1. ; G0 to start\nG0 X2. ; rough\nG0 ; X4.\n", true,
         {{3, C::SemicolonComment}}},
        {"a rotary axis", "G1 A90.\n", true, {{1, C::IgnoredAxis}}},
        {"an arc without centre moves on", "G2 X10. Y0\nG2 Z-1.\n", true, {{1, C::ArcWithoutCentre}}},
        {"R too short", "G2 X10. Y0 R4.\nG0 X0 Y0\nG2 X10. Y0 R5.\n", true, {{1, C::ArcRadiusShort}}},
        {"refit; a consistent centre fine", "G2 X10. Y0 I5.1 J0.5\nG0 X0 Y0\nG2 X10. Y0 I5. J0.5\n", true,
         {{1, C::ArcRefit}}},
        {"end off the circle; within 0.001 fine", "G2 X10. Y1. I5. J0\nG0 X0 Y0\nG2 X10.001 Y0 I5. J0\n", true,
         {{1, C::ArcEndOffCircle}}},
        {"two motion words", "G0 G1 X5.\n", true, {{1, C::MotionWords}}},
        {"Y on a lathe stops the reading", "G1 X20. Y5.\nG1 X1-2\n", false, {{1, C::LatheY}}},
        {"M30 ends the reading", "M30\nG1 X1-2\n", true, {}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(PlacesOf(Check(row.program, row.mill)), row.expected) << row.rule;
}

// The implied-decimal, expression and semicolon messages: the golden check_* cases.
TEST(ProgramCheck, MessagesQuoteTheWordsAndWhatThePlotDoes)
{
    // From (0,0) to (10,0): half the chord is 5; I5.1 J0.5 put the centre at (5.1, 0.5),
    // radius 5.12445, the end 4.92544 from it; the long way round (sweep 191.4 degrees)
    // puts the new centre 1.12250 above the chord's middle.
    const struct { const char* program; std::string message; } rows[] = {
        {"G2 X10. Y0 R4.\n", "\"R4.\" is shorter than half the chord (5): the arc keeps the previous centre X0 Y0 and "
                             "is drawn around it"},
        {"G2 X10. Y0 I5.1 J0.5\n", "the end X10 Y0 lies 0.199 off the circle of \"I5.1 J0.5\": the centre moves from "
                                   "X5.1 Y0.5 to X5 Y1.1225 on the chord's bisector"},
        {"G0 G1 X5.\n", "\"G0\" and \"G1\" stand in one block: G1 wins (G1 over G2 over G3, each over G0)"},
    };
    for (const auto& row : rows) {
        const std::vector<Finding> findings = Check(row.program);
        ASSERT_EQ(findings.size(), 1u) << row.program;
        EXPECT_EQ(findings[0].Message, row.message);
    }
}

TEST(ProgramCheck, CountedLimitsLatheLettersTheViewsCircleAndCleanExamples)
{
    // Ten tool changes fit; the 11th and 12th raise the box.
    std::string tools;
    for (int t = 1; t <= 12; ++t)
        tools.append("T").append(std::to_string(t)).append("\n");
    EXPECT_EQ(PlacesOf(Check(tools)), (Places{{11, CheckCode::ToolChangeLimit}, {12, CheckCode::ToolChangeLimit}}));

    // Blank lines count for the editor's line number, not for the translator's limit.
    std::string lines = "\n";
    for (int i = 0; i < 32770; ++i)
        lines += "G0 X1.\n";
    const std::vector<Finding> past = Check(lines, true, 0, false);
    ASSERT_EQ(past.size(), 1u);
    EXPECT_EQ(past[0].Line, 32769);
    EXPECT_EQ(past[0].Code, CheckCode::LineLimit);
    EXPECT_NE(past[0].Message.find("the 2 non-empty lines after it"), std::string::npos) << past[0].Message;

    // On a lathe the second X is read as the Z word, and G2 with K and I draws in Z-X.
    const std::vector<Finding> lathe = Check("G1 X20. X30.\nG0 X0 Z0\nG2 X20. Z-10. K-10. I0\n", false);
    ASSERT_EQ(lathe.size(), 1u);
    EXPECT_EQ(lathe[0].Message, "\"X\" stands 2 times: \"X20.\" is read, \"X30.\" is read as Z (lathe letters are "
                                "swapped at their first place only) (only a letter's first word is read)");

    // --abs-center: I and J are the centre itself.
    EXPECT_TRUE(Check("G0 X5. Y5.\nG2 X7. Y5. I6. J5.\n", true, 1).empty());
    EXPECT_EQ(PlacesOf(Check("G0 X5. Y5.\nG2 X7. Y5. I6. J5.\n", true, 0)), (Places{{2, CheckCode::ArcRefit}}));

    // Only the circle that sets the view is reported. A flat arc of radius 50, a 10 x 10
    // square and a quarter arc of radius 5 inside it: the quarter's circle reaches 5 beyond
    // the square's left side, the flat arc's 44.5.
    const std::string program = "G2 X1. Y0.1 R50.\nG0 X0 Y0\nG1 X10.\nY10.\nX0\nY0\nG3 X5. Y5. R5.\n";
    EXPECT_EQ(PlacesOf(Check(program, true, 0, false)), (Places{{1, CheckCode::ExtentsCircle}}));

    // Our examples are clean.
    for (const auto& [name, mill] : {std::pair{"mill_pocket_plate.nc", true}, {"mill_incremental.nc", true},
                                     {"lathe_shaft.nc", false}}) {
        const std::string text = test::ReadAll(test::SourceDir() / "examples" / name);
        std::string lf;
        for (const char c : text)
            if (c != '\r')
                lf += c;
        EXPECT_EQ(Check(lf, mill, 0, false), std::vector<Finding>{}) << name;
    }
}

TEST(ProgramCheck, EveryCodeIsDocumentedInTheManualAndTheGuide)
{
    const std::string manual = test::ReadAll(test::SourceDir() / "docs/man/backplot-cli.1");
    const std::string guide = test::ReadAll(test::SourceDir() / "docs/help/cli.html");
    for (const CheckCodeInfo& info : CheckCodes) {
        const std::string name(info.Name);
        EXPECT_NE(manual.find(".B " + name + "\n"), std::string::npos) << name;
        EXPECT_NE(guide.find("<tr><td><code>" + name + "</code></td>"), std::string::npos) << name;
    }
}

} // namespace
} // namespace backplot
