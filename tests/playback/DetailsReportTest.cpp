#include "DetailsReport.h"
#include "frmDetails.h"

#include <QApplication>
#include <QFontInfo>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace backplot {
namespace {

using Lines = std::vector<std::string>;

const std::string Rule(50, '-');

struct Point { float x, storedY, z; };

EntityRecord Record(std::int16_t moveType, const char* text, std::int32_t tool, Point start, Point end)
{
    EntityRecord r;
    r.MoveType = moveType;
    r.SetBlockText(text);
    r.ToolNum = tool;
    r.StartX = start.x, r.StartY = start.storedY, r.StartZ = start.z;
    r.EndX = end.x, r.EndY = end.storedY, r.EndZ = end.z;
    return r;
}

EntityRecord Arc(EntityRecord r, float centerX, float centerStoredY, float radius, float startAngle, float endAngle)
{
    r.CenterX = centerX, r.CenterY = centerStoredY, r.Radius = radius;
    r.StartAngle = startAngle, r.EndAngle = endAngle;
    return r;
}

// Every expected text below is worked out by hand from the stored values: Y negated
// back, lathe D = -2 x stored Y, zones at column 15. The CLI's golden cases hold a report of
// each kind on each machine; these are the cases they do not meet.
TEST(DetailsReport, EachKindAndMachineGivesItsTable)
{
    struct Case {
        const char* name;
        bool mill;
        EntityRecord record;
        Lines body; // after the head: an empty line, the block, an empty line
    };
    const EntityRecord unknown = Record(7, "G04 P1.", 9, {0, 0, 0}, {1, 1, 1});
    const Case cases[] = {
        // Machine (1, 1, 2) to (3, 4, .5): from zero 53.130102 degrees and 5 long; from
        // the last point sqrt(2^2 + 3^2) = sqrt(13) = 3.6055512...
        {"MillRapidToX3Y4", true, Record(0, "  G00 X3. Y4. Z.5 T5", 5, {1, -1, 2}, {3, -4, 0.5f}),
         {"      <Rapid position>", Rule, " Last T#       5 ", Rule, " X position   3.000000", " Y position   4.000000",
          " Z position   0.500000", Rule, " Angle from zero53.130102", " 2-D Dist from zero5.000000",
          " 2-D Dist from last point3.605551"}},
        // Machine (2, 1, 0) to (-1, -3, -.25): direction of (-3, -4) is 180 + 53.13 = 233.1.
        // A start Z just below zero keeps its minus.
        {"MillLineDownAndLeft", true, Record(1, "N20 G01 X-1. Y-3. Z-.25", 12, {2, -1, -1e-7f}, {-1, 3, -0.25f}),
         {"                  <Line>", Rule, " Last T#       12 ", Rule, " X start position2.000000",
          " Y start position1.000000", " Z start position-0.000000", Rule, " X end position-1.000000",
          " Y end position-3.000000", " Z end position-0.250000", Rule, " Angle        233.1"}},
        // Start (1.5, 2.25), centre (4.5, 6.25): a 3-4-5 triangle. The start angle is the
        // float nearest 233.1301023..., which is 233.13009643..., so it reads 233.130096;
        // the radius 2.6953125 rounds its half up to 2.695313.
        {"MillArcHasNoRuleAfterTheTool", true,
         Arc(Record(2, "G02 X9.5 Y6.25 I3. J4.", 3, {1.5f, -2.25f, -1}, {9.5f, -6.25f, -1}), 4.5f, -6.25f, 2.6953125f,
             static_cast<float>(233.13010235415598), 0),
         {"              <Arc>", Rule, " Last T#       3 ", " X start position1.500000", " Y start position2.250000",
          " Z start position-1.000000", Rule, " X center position4.500000", " Y center position6.250000", Rule,
          " X end position9.500000", " Y end position6.250000", " Z end position-1.000000", Rule,
          " Start angle  233.130096", " End angle    0.000000", Rule, " Radius       2.695313"}},
        // The lathe arc lists the end before the centre; a negative tool prints its minus
        // in the sign position.
        {"LatheArcGivesTheEndBeforeTheCentre", false,
         Arc(Record(2, "G02 X30. Z-25. K-5.", -2, {-15, -15, 1e-14f}, {-25, -15, 1e-14f}), -20, -15, 5, 0, 180),
         {"              <Arc>", Rule, " Last T#      -2 ", " Z start position-15.000000", " D start position30.000000",
          Rule, " Z end position-25.000000", " D end position30.000000", Rule, " Z center position-20.000000",
          " D center position30.000000", Rule, " Start angle  0.000000", " End angle    180.000000", Rule,
          " Radius       5.000000"}},
        {"UnknownKindShowsTheHeadOnly", true, unknown, {}}, {"UnknownKindOnALatheToo", false, unknown, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        // The block as stored, all 60 characters.
        Lines expected{"", " CNC code " + std::string(c.record.BlockTextView()), ""};
        ASSERT_EQ(expected[1].size(), 70u);
        expected.insert(expected.end(), c.body.begin(), c.body.end());
        EXPECT_EQ(DetailsReport(c.record, c.mill), expected);
    }
}

TEST(DetailsReport, LineAngleIsRoundedToOneDecimal)
{
    struct Case { const char* name; Point start, end; const char* angle; };
    const Case cases[] = {
        {"DiagonalUpIs45", {0, 0, 0}, {1, -1, 0}, " Angle        45.0"},
        {"SamePointIs0", {4, -2, 0}, {4, -2, 0}, " Angle        0.0"},
        {"StraightDownIs270", {1, -1, 0}, {1, 2, 0}, " Angle        270.0"},
        {"JustBelowTheXAxisIsNearly360", {0, 0, 0}, {100, 0.01f, 0}, " Angle        360.0"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(DetailsReport(Record(1, "G01", 0, c.start, c.end), true).back(), c.angle) << c.name;
}

TEST(DetailsReport, StepTrimsTheBlockTextAndPadsItAgain)
{
    const std::pair<std::string, std::string> cases[] = {
        {"   G01 X1.  ", "G01 X1."},  // blanks on both sides
        {"      ", ""},               // only blanks
        {"  X1.   Y2.", "X1.   Y2."}, // inner blanks stay
        // A block of the full 60 characters with a blank in front loses it and gets one behind.
        {" " + std::string(59, 'X'), std::string(59, 'X')},
    };
    for (const auto& [stored, trimmed] : cases) {
        EntityRecord r;
        r.SetBlockText(stored);
        TrimBlockText(r);
        EXPECT_EQ(std::string(r.BlockTextView()), trimmed + std::string(60 - trimmed.size(), ' ')) << stored;
    }
}

class frmDetailsTest : public ::testing::Test {
protected:
    frmDetailsTest()
    {
        main.setGeometry(120, 90, 1000, 760);
        main.show();
    }
    QWidget main;
    const EntityRecord millLine = Record(1, "G01 X1. Y1.", 4, {0, 0, 0}, {1, -1, 0});
};

TEST_F(frmDetailsTest, ShowsTheReportCentredInAFixedPitchSelectableBox)
{
    EntityRecord record = millLine;
    frmDetails* window = frmDetails::ShowReport(&main, record, true, [] {});
    ASSERT_NE(window, nullptr);
    QApplication::processEvents();

    EXPECT_EQ(window->windowTitle(), QStringLiteral("Details"));
    EXPECT_EQ(window->objectName(), QStringLiteral("frmDetails"));
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->isModal());
    EXPECT_LE((window->frameGeometry().center() - main.frameGeometry().center()).manhattanLength(), 2);
    // The report's own texts are pinned down above; here they must all show.
    QStringList lines;
    for (const std::string& line : DetailsReport(record, true))
        lines.append(QString::fromStdString(line));
    const QString expected = lines.join(QLatin1Char('\n'));
    ASSERT_TRUE(expected.endsWith(QStringLiteral("\n Angle        45.0")));
    EXPECT_EQ(window->ReportText(), expected);

    auto* box = window->findChild<QPlainTextEdit*>(QStringLiteral("txtReport"));
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isReadOnly());
    EXPECT_TRUE(box->textInteractionFlags() & Qt::TextSelectableByMouse);
    EXPECT_TRUE(QFontInfo(box->font()).fixedPitch());
    EXPECT_EQ(box->horizontalScrollBar()->maximum(), 0) << "the longest line fits";
    EXPECT_FALSE(box->accessibleName().isEmpty());

    // A snapshot: a later step does not change it; the command again reuses the window.
    record.ToolNum = 7;
    EXPECT_EQ(window->ReportText(), expected);
    EXPECT_EQ(frmDetails::ShowReport(&main, record, true, [] {}), window);
    EXPECT_TRUE(window->ReportText().contains(QStringLiteral(" Last T#       7 \n")));
    window->close();
}

TEST_F(frmDetailsTest, OkClosesTheWindowThenRedraws)
{
    int redraws = 0;
    bool visibleDuringRedraw = true;
    frmDetails* window = nullptr;
    window = frmDetails::ShowReport(&main, millLine, false, [&] {
        ++redraws;
        visibleDuringRedraw = window->isVisible();
    });
    auto* ok = window->findChild<QPushButton*>(QStringLiteral("Command1"));
    ASSERT_NE(ok, nullptr);
    EXPECT_EQ(ok->text(), QStringLiteral("&OK"));
    ok->click();
    EXPECT_EQ(redraws, 1);
    EXPECT_FALSE(visibleDuringRedraw);

    // Closed any other way, the window does not redraw.
    window = frmDetails::ShowReport(&main, millLine, false, [&] { ++redraws; });
    window->close();
    EXPECT_EQ(redraws, 1);
}

} // namespace
} // namespace backplot
