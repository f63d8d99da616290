#include "TranslateHarness.h"

#include <gtest/gtest.h>

using namespace backplot;
using namespace backplot::test;

namespace {

constexpr float T0 = 1e-14f; // an axis no block has named yet

// A record as stored: Y values already negated.
struct Rec {
    const char* kind;
    int move;
    float sx, sy, sz, ex, ey, ez;
    float radius = 0, cx = 0, cy = 0;
    const char* block = nullptr; // start of BlockText, when checked
};

void ExpectRecords(const std::vector<EntityRecord>& got, const std::vector<Rec>& want, const std::string& name)
{
    ASSERT_EQ(got.size(), want.size()) << name;
    for (std::size_t k = 0; k < want.size(); ++k) {
        const EntityRecord& r = got[k];
        const Rec& w = want[k];
        SCOPED_TRACE(name + ", record " + std::to_string(k + 1));
        EXPECT_EQ(r.Kind(), w.kind);
        EXPECT_EQ(r.MoveType, w.move);
        const float values[] = {r.StartX, r.StartY, r.StartZ, r.EndX, r.EndY, r.EndZ, r.Radius, r.CenterX, r.CenterY};
        const float wanted[] = {w.sx, w.sy, w.sz, w.ex, w.ey, w.ez, w.radius, w.cx, w.cy};
        const char* names[] = {"StartX", "StartY", "StartZ", "EndX", "EndY", "EndZ", "Radius", "CenterX", "CenterY"};
        for (int i = 0; i < 9; ++i)
            EXPECT_NEAR(values[i], wanted[i], 1e-5f) << names[i];
        if (w.block) {
            EXPECT_EQ(r.BlockTextView().substr(0, std::string_view(w.block).size()), w.block);
        }
    }
}

} // namespace

TEST(Translator, ModalStateAndWordPrecedence)
{
    const struct {
        const char* name;
        bool mill;
        const char* program;
        std::vector<Rec> records;
    } cases[] = {
        {"first move starts at the origin", true, "N1 G01 X1. Y1.", {{"LINE", 1, 0, 0, 0, 1, -1, T0}}},
        {"G1X1. is a linear word", true, "G1X1.", {{"LINE", 1, 0, 0, 0, 1, -T0, T0}}},
        {"incremental twice", true, "G0 X0 Y0 Z0\nN2 G91 X1.\nN2 G91 X1.",
         {{"", 0, 0, 0, 0, 0, 0, 0}, {"", 0, 0, 0, 0, 1, 0, 0}, {"", 0, 1, 0, 0, 2, 0, 0}}},
        {"G91 wins over G90 in either order", true, "G0 X5.\nG90 G91 X1.\nG91 G90 X1.",
         {{"", 0, 0, 0, 0, 5, -T0, T0}, {"", 0, 5, -T0, T0, 6, -T0, T0}, {"", 0, 6, -T0, T0, 7, -T0, T0}}},
        {"G00 G01 gives linear", true, "G00 G01 X1.", {{"LINE", 1, 0, 0, 0, 1, -T0, T0}}},
        {"G02 G01 gives linear", true, "G02 G01 X1.", {{"LINE", 1, 0, 0, 0, 1, -T0, T0}}},
        {"G03 G02 gives clockwise", true, "G0 X0 Y0\nG03 G02 X2. Y0 R1.",
         {{"", 0, 0, 0, 0, 0, 0, T0}, {"ARC", 2, 0, 0, T0, 2, 0, T0, 1, 1, 0}}},
        {"G03 wins over G00", true, "G0 X0 Y0\nG00 G03 X2. Y0 R1.",
         {{"", 0, 0, 0, 0, 0, 0, T0}, {"ARC1", 3, 0, 0, T0, 2, 0, T0, 1, 1, 0}}},
        {"G17 and G21 are no G1", true, "G17 G21 X1.", {{"", 0, 0, 0, 0, 1, -T0, T0}}},
        {"lower-case words are not read", true, "g01 x1.", {{"", 0, 0, 0, 0, T0, -T0, T0}}},
        {"coordinates are modal", true, "G1 X1. Y2.\nX3.\nZ-1.",
         {{"LINE", 1, 0, 0, 0, 1, -2, T0}, {"LINE", 1, 1, -2, T0, 3, -2, T0}, {"LINE", 1, 3, -2, T0, 3, -2, -1}}},
        {"rapid mode: a record for every block", true, "G0 X1.\nM03\nS500 M08",
         {{"", 0, 0, 0, 0, 1, -T0, T0}, {"", 0, 1, -T0, T0, 1, -T0, T0}, {"", 0, 1, -T0, T0, 1, -T0, T0}}},
        {"linear mode: nothing for a block that stays", true, "G1 X1.\nM03\nX1.", {{"LINE", 1, 0, 0, 0, 1, -T0, T0}}},
        {"arc block without arc words moves the start", true, "G0 X0 Y0\nG2 X2. Y0\nG1 X3.",
         {{"", 0, 0, 0, 0, 0, 0, T0}, {"LINE", 1, 2, 0, T0, 3, 0, T0}}},
        {"R outside arc mode has no effect", true, "G1 X1. R5.", {{"LINE", 1, 0, 0, 0, 1, -T0, T0}}},
        {"a line after an arc carries its values", true, "G0 X0 Y0\nG2 X2. Y0 R1.\nG1 X3.\nG0 X4.",
         {{"", 0, 0, 0, 0, 0, 0, T0},
          {"ARC", 2, 0, 0, T0, 2, 0, T0, 1, 1, 0},
          {"LINE", 1, 2, 0, T0, 3, 0, T0, 1, 1, 0},
          {"", 0, 3, 0, T0, 4, 0, T0, 1, 1, 0}}},
        // Lathe: X words are vertical diameters, Z horizontal; I and K follow.
        {"lathe letters and diameter", false, "N5 G01 X20. Z-5. (NO Y HERE)",
         {{"LINE", 1, 0, 0, 0, -5, -10, T0, 0, 0, 0, "N5 G01 X20. Z-5. "}}},
        {"lathe incremental halves the added start", false, "G0 X20. Z0\nG91 G01 X4.",
         {{"", 0, 0, 0, 0, 0, -10, T0}, {"LINE", 1, 0, -10, T0, 0, -7, T0}}},
        {"lathe I becomes J", false, "G0 X0 Z0\nG02 X20. Z-10. I10. K0",
         {{"", 0, 0, 0, 0, 0, 0, T0}, {"ARC", 2, 0, 0, T0, -10, -10, T0, 10, 0, -10, "G02 X20. Z-10. I10. K0"}}},
        {"lathe K becomes I", false, "G0 X0 Z0\nG03 X0 Z-20. K-10.",
         {{"", 0, 0, 0, 0, 0, 0, T0}, {"ARC1", 3, 0, 0, T0, -20, 0, T0, 10, -10, 0}}},
    };
    for (const auto& c : cases) {
        Harness h(c.mill);
        ExpectRecords(h.Run(c.program), c.records, c.name);
        EXPECT_TRUE(h.Dialogs.Boxes.empty()) << c.name;
    }

    Harness h;
    h.Run("G1 X1. R5.");
    EXPECT_EQ(h.S().ValR, 0) << "R outside arc mode is no arc radius";
    EXPECT_EQ(h.S().ValROther, 5);
}

TEST(Translator, ArcKindsAndZAdvance)
{
    // From (0,0,0). Exact centres (one of I, J zero): no refit, angles are whole degrees.
    const struct {
        const char* block;
        const char* kind;
        int move;
        double endZ;
    } rows[] = {
        {"G2 X1. Y1. I0 J1. Z-1. K4.", "ARC", 2, -1 + 270.0 / 360 * 4},        // 270 -> 0
        {"G2 X-1. Y1. I-1. J0 Z-1. K8.", "ARC", 2, -1 + (360.0 - 90) / 360 * 8}, // 0 -> 90
        {"G3 X1. Y1. I0 J1. Z-1. K4.", "ARC1", 3, -1 + (360.0 - 270) / 360 * 4}, // 270 -> 0
        {"G3 X-1. Y1. I-1. J0 Z-1. K8.", "ARC1", 3, -1 + 90.0 / 360 * 8},         // 0 -> 90
        {"G2 I1. Z-1. K2.", "CIRCLE", 2, -1 + 2},     // equal angles: the whole lead
        {"G3 J-1. Z-1. K2.", "CIRCLE", 3, -1 + 2},
        {"G2 X-1. Y1. I-1. J0 K4.", "ARC", 2, 4},     // no Z word: K added whole
        {"N8 G03 X1. Y1. R1. Z-1.", "ARC1", 3, -1},   // helical without K
        {"G2 X2. Y0 R1.", "ARC", 2, 0},
    };
    for (const auto& row : rows) {
        Harness h;
        const auto records = h.Run(std::string("G0 X0 Y0 Z0\n") + row.block);
        ASSERT_EQ(records.size(), 2u) << row.block;
        EXPECT_EQ(records[1].Kind(), row.kind) << row.block;
        EXPECT_EQ(records[1].MoveType, row.move) << row.block;
        EXPECT_NEAR(h.S().CurZ, row.endZ, 1e-12) << row.block;
        EXPECT_NEAR(records[1].EndZ, row.endZ, 1e-6) << row.block;
    }

    // In lathe mode there is no helix: the K word has become I.
    Harness lathe(false);
    lathe.Run("G0 X0 Z0\nG02 X0 Z-20. K-10.");
    EXPECT_NEAR(lathe.S().CurZ, 1e-14, 1e-20);
}

TEST(Translator, ToolChangesTakeFixedColoursAndStopAtTen)
{
    Harness h;
    h.T.ToolColors()[7] = {0, 0x123456, 5};
    std::string program = "(TOOLS)\n\n";
    for (int t = 1; t <= 12; ++t)
        program.append("T").append(std::to_string(t)).append("\n");
    program += "G0 X1.\n";
    const auto records = h.Run(program);

    const std::uint32_t colours[] = {0x000000, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF};
    const std::int32_t indexes[] = {0, 9, 10, 11, 12, 13, 14};
    for (int n = 0; n < 10; ++n) {
        const ToolColor& c = h.T.ToolColors()[n];
        EXPECT_EQ(c.ToolNumber, n + 1) << n;
        if (n < 7) {
            EXPECT_EQ(c.Color, colours[n]) << n;
            EXPECT_EQ(c.ColorIndex, indexes[n]) << n;
        } else {
            EXPECT_EQ(c.ColorIndex, 0) << n;
        }
    }
    EXPECT_EQ(h.T.ToolColors()[7].Color, 0x123456u) << "the eighth change keeps the colour";

    // Line numbers count non-empty lines: the comment is line 1, the blank line no line.
    const auto& changes = h.S().ToolChanges;
    ASSERT_EQ(changes.size(), 11u);
    for (int n = 0; n < 10; ++n) {
        EXPECT_EQ(changes[static_cast<std::size_t>(n)].ToolNumber, n + 1);
        EXPECT_EQ(changes[static_cast<std::size_t>(n)].LineNumber, n + 2);
    }
    EXPECT_EQ(changes[10].ToolNumber, 12) << "the twelfth T overwrote the eleventh";
    EXPECT_EQ(changes[10].LineNumber, 13);
    EXPECT_EQ(h.S().ToolChangeCount, 10);

    ASSERT_EQ(h.Dialogs.Boxes.size(), 2u);
    EXPECT_EQ(h.Dialogs.Boxes[0].Text, "An error was encountered while generating file at line 12\r\n\r\nT11");
    EXPECT_EQ(h.Dialogs.Boxes[1].Text, "An error was encountered while generating file at line 13\r\n\r\nT12");

    // T1..T10 wrote rapid records; the failing blocks none; the last block carries tool 12.
    ASSERT_EQ(records.size(), 11u);
    EXPECT_EQ(records[0].ToolNum, 1);
    EXPECT_EQ(records[9].ToolNum, 10);
    EXPECT_EQ(records[10].ToolNum, 12);
}

TEST(Translator, LatheMeetingYWarnsAndStops)
{
    Harness h(false);
    const auto records = h.Run("G0 X20. Z2.\nG1 Z-5.\nG1 X10. Y5.\nG1 X30.\n");
    ASSERT_EQ(h.Dialogs.Boxes.size(), 1u);
    const auto& box = h.Dialogs.Boxes[0];
    EXPECT_EQ(box.Text, "The NC/CNC file you are are processing appears to be\r\n\r\n"
                        "a Milling file. Change the setting using the Options/Properties menu.");
    EXPECT_EQ(box.Title, "Backplot Error");
    EXPECT_EQ(box.Icon, MsgIcon::Exclamation);
    ASSERT_FALSE(h.Dialogs.Pointers.empty());
    EXPECT_EQ(h.Dialogs.Pointers.back(), MousePointer::Default);
    EXPECT_EQ(records.size(), 2u) << "records before the Y block stay";
    EXPECT_EQ(h.S().LineCount, 3) << "nothing after the Y block is read";
    EXPECT_FALSE(h.S().AbortTranslation);
}

TEST(Translator, DxfCollectionInsteadOfRecords)
{
    Harness h;
    h.S().CollectDxf = true;
    for (const char* block : {"G0 X1. Y1.", "G1 X3. Y1.", "G2 X5. Y1. R1.", "G3 X7. Y1. R1.", "G2 I1.", "G0 X0 Y0"})
        h.T.InterpretBlock(block);

    const DxfCollection& d = h.T.Dxf();
    ASSERT_EQ(d.Lines.size(), 1u);
    EXPECT_FLOAT_EQ(d.Lines[0].X1, 1);
    EXPECT_FLOAT_EQ(d.Lines[0].Y1, 1); // Y not negated
    EXPECT_FLOAT_EQ(d.Lines[0].X2, 3);
    EXPECT_FLOAT_EQ(d.Lines[0].Y2, 1);
    EXPECT_EQ(d.Lines[0].Layer, "BLACK_LAYER");

    // Clockwise (4,1) from 180 to 0 is stored as 0 to 180; counter-clockwise (6,1) keeps 180 to 0.
    ASSERT_EQ(d.Arcs.size(), 2u);
    const float arcs[2][5] = {{4, 1, 0, 180, 1}, {6, 1, 180, 0, 1}};
    for (int i = 0; i < 2; ++i) {
        const DxfArc& a = d.Arcs[static_cast<std::size_t>(i)];
        const float got[] = {a.CenterX, a.CenterY, a.StartAngle, a.EndAngle, a.Radius};
        for (int f = 0; f < 5; ++f)
            EXPECT_NEAR(got[f], arcs[i][f], 1e-4f) << "arc " << i << " field " << f;
        EXPECT_EQ(a.Layer, "BLACK_LAYER");
    }
    ASSERT_EQ(d.Circles.size(), 1u);
    EXPECT_FLOAT_EQ(d.Circles[0].CenterX, 8);
    EXPECT_FLOAT_EQ(d.Circles[0].CenterY, 1);
    EXPECT_FLOAT_EQ(d.Circles[0].Radius, 1);
    EXPECT_EQ(d.Circles[0].Layer, "BLACK_LAYER");

    EXPECT_EQ(h.S().RecordCount, 0);
    EXPECT_FALSE(Translator::FileExists(h.T.RecordFilePath()));
}
