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

// Every expected text below is worked out by hand from the stored values: Y negated
// back, zones at column 15. The CLI's golden cases hold a report of each kind on each
// machine (the arcs' layouts and the lathe's D = -2 x stored Y among them); these are the
// cases they do not meet.
TEST(DetailsReport, RapidLineAndUnknownKindTables)
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
        // A start Z just below zero keeps its minus; a negative tool prints its minus in the
        // sign position.
        {"MillLineDownAndLeft", true, Record(1, "N20 G01 X-1. Y-3. Z-.25", -12, {2, -1, -1e-7f}, {-1, 3, -0.25f}),
         {"                  <Line>", Rule, " Last T#      -12 ", Rule, " X start position2.000000",
          " Y start position1.000000", " Z start position-0.000000", Rule, " X end position-1.000000",
          " Y end position-3.000000", " Z end position-0.250000", Rule, " Angle        233.1"}},
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

TEST(frmDetails, ShowsTheReportCentredInAFixedPitchSelectableBoxUntilOk)
{
    QWidget main;
    main.setGeometry(120, 90, 1000, 760);
    main.show();
    EntityRecord record = Record(1, "G01 X1. Y1.", 4, {0, 0, 0}, {1, -1, 0});
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
    // OK closes the window, then redraws with the handler of the latest command.
    int redraws = 0;
    bool visibleDuringRedraw = true;
    EXPECT_EQ(frmDetails::ShowReport(&main, record, true, [&] {
        ++redraws;
        visibleDuringRedraw = window->isVisible();
    }), window);
    EXPECT_TRUE(window->ReportText().contains(QStringLiteral(" Last T#       7 \n")));
    auto* ok = window->findChild<QPushButton*>(QStringLiteral("Command1"));
    ASSERT_NE(ok, nullptr);
    EXPECT_EQ(ok->text(), QStringLiteral("&OK"));
    ok->click();
    EXPECT_EQ(redraws, 1);
    EXPECT_FALSE(visibleDuringRedraw);

    // Closed any other way, the window does not redraw.
    window = frmDetails::ShowReport(&main, record, false, [&] { ++redraws; });
    window->close();
    EXPECT_EQ(redraws, 1);
}

} // namespace
} // namespace backplot
