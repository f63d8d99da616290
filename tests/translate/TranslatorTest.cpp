#include "TranslatorRig.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <sstream>

using namespace backplot;
using namespace backplot::test;

namespace {

// "1,-2.5,0": the values to 1e-5, without the sign of a zero.
std::string Joined(std::initializer_list<float> values)
{
    std::ostringstream text;
    for (const float v : values)
        text << (text.tellp() > 0 ? "," : "") << std::round(v * 1e5) / 1e5 + 0.0;
    return text.str();
}

// "MoveType Kind start > end", then " r<radius> c<centre>" when the arc fields are set; Y as stored, negated.
std::string Describe(const EntityRecord& r)
{
    std::ostringstream text;
    text << r.MoveType << (r.Kind().empty() ? "" : " ") << r.Kind() << ' ' << Joined({r.StartX, r.StartY, r.StartZ})
         << " > " << Joined({r.EndX, r.EndY, r.EndZ});
    if (r.Radius != 0 || r.CenterX != 0 || r.CenterY != 0)
        text << " r" << Joined({r.Radius}) << " c" << Joined({r.CenterX, r.CenterY});
    return text.str();
}

} // namespace

TEST(Translator, ModalStateAndWordPrecedence)
{
    const struct {
        const char* name; bool mill; const char* program; std::vector<std::string> records;
        const char* lastBlock = nullptr; // how the last record's BlockText starts, when checked
    } cases[] = {
        {"first move starts at the origin", true, "N1 G01 X1. Y1.", {"1 LINE 0,0,0 > 1,-1,0"}},
        {"incremental twice", true, "G0 X0 Y0 Z0\nN2 G91 X1.\nN2 G91 X1.",
         {"0 0,0,0 > 0,0,0", "0 0,0,0 > 1,0,0", "0 1,0,0 > 2,0,0"}},
        {"G91 wins over G90 in either order", true, "G0 X5.\nG90 G91 X1.\nG91 G90 X1.",
         {"0 0,0,0 > 5,0,0", "0 5,0,0 > 6,0,0", "0 6,0,0 > 7,0,0"}},
        {"G00 G01 gives linear", true, "G00 G01 X1.", {"1 LINE 0,0,0 > 1,0,0"}},
        {"G02 G01 gives linear", true, "G02 G01 X1.", {"1 LINE 0,0,0 > 1,0,0"}},
        {"G03 G02 gives clockwise", true, "G0 X0 Y0\nG03 G02 X2. Y0 R1.",
         {"0 0,0,0 > 0,0,0", "2 ARC 0,0,0 > 2,0,0 r1 c1,0"}},
        {"G03 wins over G00", true, "G0 X0 Y0\nG00 G03 X2. Y0 R1.",
         {"0 0,0,0 > 0,0,0", "3 ARC1 0,0,0 > 2,0,0 r1 c1,0"}},
        {"coordinates are modal", true, "G1 X1. Y2.\nX3.\nZ-1.",
         {"1 LINE 0,0,0 > 1,-2,0", "1 LINE 1,-2,0 > 3,-2,0", "1 LINE 3,-2,0 > 3,-2,-1"}},
        {"rapid mode: a record for every block", true, "G0 X1.\nM03\nS500 M08",
         {"0 0,0,0 > 1,0,0", "0 1,0,0 > 1,0,0", "0 1,0,0 > 1,0,0"}},
        {"linear mode: nothing for a block that stays", true, "G1 X1.\nM03\nX1.", {"1 LINE 0,0,0 > 1,0,0"}},
        {"arc block without arc words moves the start", true, "G0 X0 Y0\nG2 X2. Y0\nG1 X3.",
         {"0 0,0,0 > 0,0,0", "1 LINE 2,0,0 > 3,0,0"}},
        {"a line after an arc carries its values", true, "G0 X0 Y0\nG2 X2. Y0 R1.\nG1 X3.\nG0 X4.",
         {"0 0,0,0 > 0,0,0", "2 ARC 0,0,0 > 2,0,0 r1 c1,0", "1 LINE 2,0,0 > 3,0,0 r1 c1,0",
          "0 3,0,0 > 4,0,0 r1 c1,0"}},
        // Lathe: X words are vertical diameters, Z horizontal; I and K follow.
        {"lathe letters and diameter", false, "N5 G01 X20. Z-5. (NO Y HERE)", {"1 LINE 0,0,0 > -5,-10,0"},
         "N5 G01 X20. Z-5.  "},
        {"lathe incremental halves the added start", false, "G0 X20. Z0\nG91 G01 X4.",
         {"0 0,0,0 > 0,-10,0", "1 LINE 0,-10,0 > 0,-7,0"}},
        {"lathe I becomes J", false, "G0 X0 Z0\nG02 X20. Z-10. I10. K0",
         {"0 0,0,0 > 0,0,0", "2 ARC 0,0,0 > -10,-10,0 r10 c0,-10"}, "G02 X20. Z-10. I10. K0 "},
        {"lathe K becomes I", false, "G0 X0 Z0\nG03 X0 Z-20. K-10.",
         {"0 0,0,0 > 0,0,0", "3 ARC1 0,0,0 > -20,0,0 r10 c-10,0"}},
    };
    for (const auto& c : cases) {
        TranslatorRig h(c.mill);
        const auto records = h.Run(c.program);
        std::vector<std::string> described;
        for (const EntityRecord& r : records)
            described.push_back(Describe(r));
        EXPECT_EQ(described, c.records) << c.name;
        EXPECT_TRUE(h.dialogs.Messages.empty()) << c.name;
        if (c.lastBlock && !records.empty()) {
            EXPECT_EQ(records.back().BlockTextView().substr(0, std::strlen(c.lastBlock)), c.lastBlock) << c.name;
        }
    }
    TranslatorRig h;
    h.Run("G1 X1. R5.");
    EXPECT_EQ(h.state().ValR, 0) << "R outside arc mode is no arc radius";
    EXPECT_EQ(h.state().ValROther, 5);
}

TEST(Translator, ArcKindsAndZAdvance)
{
    // From (0,0,0). Exact centres (one of I, J zero): no refit, angles are whole degrees.
    const struct { const char* block; const char* kind; int move; double endZ; } rows[] = {
        {"G2 X1. Y1. I0 J1. Z-1. K4.", "ARC", 2, -1 + 270.0 / 360 * 4},          // 270 -> 0
        {"G2 X-1. Y1. I-1. J0 Z-1. K8.", "ARC", 2, -1 + (360.0 - 90) / 360 * 8},  // 0 -> 90
        {"G3 X1. Y1. I0 J1. Z-1. K4.", "ARC1", 3, -1 + (360.0 - 270) / 360 * 4}, // 270 -> 0
        {"G3 X-1. Y1. I-1. J0 Z-1. K8.", "ARC1", 3, -1 + 90.0 / 360 * 8},         // 0 -> 90
        {"G2 I1. Z-1. K2.", "CIRCLE", 2, -1 + 2}, // equal angles: the whole lead
        {"G3 J-1. Z-1. K2.", "CIRCLE", 3, -1 + 2},
        {"G2 X-1. Y1. I-1. J0 K4.", "ARC", 2, 4},   // no Z word: K added whole
        {"N8 G03 X1. Y1. R1. Z-1.", "ARC1", 3, -1}, // helical without K
        {"G2 X2. Y0 R1.", "ARC", 2, 0},
    };
    for (const auto& row : rows) {
        TranslatorRig h;
        const auto records = h.Run(std::string("G0 X0 Y0 Z0\n") + row.block);
        SCOPED_TRACE(row.block);
        ASSERT_EQ(records.size(), 2u);
        EXPECT_EQ(records[1].Kind(), row.kind);
        EXPECT_EQ(records[1].MoveType, row.move);
        EXPECT_NEAR(h.state().CurZ, row.endZ, 1e-12);
        EXPECT_NEAR(records[1].EndZ, row.endZ, 1e-6);
    }
    // In lathe mode there is no helix: the K word has become I.
    TranslatorRig lathe(false);
    lathe.Run("G0 X0 Z0\nG02 X0 Z-20. K-10.");
    EXPECT_NEAR(lathe.state().CurZ, 1e-14, 1e-20);
}

TEST(Translator, ToolChangesTakeFixedColoursAndStopAtTen)
{
    TranslatorRig h;
    h.translator.ToolColors()[7] = {0, 0x123456, 5};
    std::string program = "(TOOLS)\n\n";
    for (int t = 1; t <= 12; ++t)
        program.append("T").append(std::to_string(t)).append("\n");
    const auto records = h.Run(program + "G0 X1.\n");

    // The eighth change keeps the colour it had; from it on only the index is cleared.
    const std::uint32_t colours[] = {0x000000, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0x123456};
    const std::int32_t indexes[] = {0, 9, 10, 11, 12, 13, 14, 0, 0, 0};
    for (int n = 0; n < 10; ++n) {
        const ToolColor& c = h.translator.ToolColors()[n];
        EXPECT_EQ(c.ToolNumber, n + 1) << n;
        EXPECT_EQ(c.ColorIndex, indexes[n]) << n;
        if (n < 8) {
            EXPECT_EQ(c.Color, colours[n]) << n;
        }
    }
    // (tool, line): the comment is line 1, the blank line no line; the twelfth T overwrote the eleventh.
    std::vector<std::pair<int, int>> changes;
    for (const ToolChange& c : h.state().ToolChanges)
        changes.emplace_back(c.ToolNumber, c.LineNumber);
    const std::vector<std::pair<int, int>> wanted{{1, 2}, {2, 3}, {3, 4}, {4, 5},   {5, 6},  {6, 7},
                                                  {7, 8}, {8, 9}, {9, 10}, {10, 11}, {12, 13}};
    EXPECT_EQ(changes, wanted);
    EXPECT_EQ(h.state().ToolChangeCount, 10);
    EXPECT_EQ(h.dialogs.Texts(),
              (std::vector<std::string>{ErrorLead + "12\r\n\r\nT11", ErrorLead + "13\r\n\r\nT12"}));
    // T1..T10 wrote rapid records, the failing blocks none; the last block carries tool 12.
    std::vector<int> tools;
    for (const EntityRecord& r : records)
        tools.push_back(r.ToolNum);
    EXPECT_EQ(tools, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12}));
}

TEST(Translator, LatheMeetingYWarnsAndStops)
{
    TranslatorRig h(false);
    const auto records = h.Run("G0 X20. Z2.\nG1 Z-5.\nG1 X10. Y5.\nG1 X30.\n");
    const ScriptedDialogs::ShownMessage box{"The NC/CNC file you are are processing appears to be\r\n\r\n"
                                            "a Milling file. Change the setting using the Options/Properties menu.",
                                            "Backplot Error", MsgIcon::Exclamation};
    EXPECT_EQ(h.dialogs.Messages, std::vector{box});
    EXPECT_EQ(h.dialogs.Pointers, std::vector{MousePointer::Default});
    EXPECT_EQ(records.size(), 2u) << "records before the Y block stay";
    EXPECT_EQ(h.state().LineCount, 3) << "nothing after the Y block is read";
    EXPECT_FALSE(h.state().AbortTranslation);
    EXPECT_TRUE(h.translator.StoppedEarly());
}
