#include "BlockScanner.h"
#include "RunTimeError.h"

#include <gtest/gtest.h>

using namespace backplot;

TEST(BlockScanner, StripCommentCutsAtTheFirstCommentStart)
{
    const struct { const char* block; const char* left; } rows[] = {
        {"G01 X1.0 (ROUGH, PASS 1)", "G01 X1.0 "}, {"/G01 X1.", ""}, {"(SETUP)", ""}, {"G01 X1. 'note", "G01 X1. "},
        {"G01 X1., Y2.", "G01 X1."}, {"G1 X1. /Y2. (A", "G1 X1. "}, {"G1 X1.(A/B", "G1 X1."},
        {"G01 X1. ;note", "G01 X1. ;note"}, // a semicolon is no comment start
        {"G01 X1.", "G01 X1."},
    };
    for (const auto& row : rows) {
        std::string block = row.block;
        StripComment(block);
        EXPECT_EQ(block, row.left) << row.block;
    }
}

TEST(BlockScanner, GWordPosFindsWholeWordsOnly)
{
    const struct { const char* block; const char* code; const char* alt; int pos; } rows[] = {
        {"G01 X1", "G01", "G1", 1}, {"N5 G01 X1", "G01", "G1", 4}, {"N5 G17", "G01", "G1", 0},
        {"G21 X1.", "G01", "G1", 0}, {"G1X1.", "G01", "G1", 1}, {"X1. G1", "G01", "G1", 5},
        {"G0X0", "G00", "G0", 1}, {"G01 X1.", "G00", "G0", 0}, {"G1.5", "G01", "G1", 1},
        {"N10G01X1.5", "G01", "G1", 4}, {"g01 x1.", "G01", "G1", 0}, {"G-1 X1.", "G01", "G1", 0},
        {"G17 G1", "G01", "G1", 1}, // position of the plain substring, inside G17
        {"G90G91", "G90", "", 1}, {"G90G91", "G91", "", 4}, {"G901", "G90", "", 0}, {"X1.", "G90", "", 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(BlockScanner(row.block).GWordPos(row.code, row.alt), row.pos)
            << row.block << " / " << row.code << " / " << row.alt;
}

TEST(BlockScanner, ScanLongRoundsHalvesToEven)
{
    const struct { const char* block; char letter; std::int32_t value; } rows[] = {
        {"T 03", 'T', 3}, {"T3.6", 'T', 4}, {"T2.5", 'T', 2}, {"T3.5", 'T', 4}, {"T-2.5", 'T', -2},
        {"S.5", 'S', 0}, {"S1.5", 'S', 2}, {"S1 2", 'S', 12}, {"N10G01", 'N', 10}, {"M6 T12 T5", 'T', 12},
        {"T", 'T', 0}, {"TX1.", 'T', 0}, {"N2147483647", 'N', 2147483647},
    };
    for (const auto& row : rows)
        EXPECT_EQ(BlockScanner(row.block).ScanLong(row.letter), row.value) << row.block;
    EXPECT_THROW(BlockScanner("N2147483648").ScanLong('N'), RunTimeError);
    EXPECT_THROW(BlockScanner("S-99999999999").ScanLong('S'), RunTimeError);
}

TEST(BlockScanner, ScanValueReadsDecimalAndImpliedDecimalForms)
{
    const struct { const char* block; char letter; double value; } rows[] = {
        {"X1.5", 'X', 1.5}, {"X15000", 'X', 1.5}, {"X15", 'X', 0.0015}, {"X10000", 'X', 1.0},
        {"Z-5000", 'Z', -0.5}, {"X-.25", 'X', -0.25}, {"X+5", 'X', 0.0005}, {"X 1.5", 'X', 1.5},
        {"X1 .5", 'X', 1.5}, {"X-1 2.", 'X', -12}, {"X1.2.3", 'X', 1.2}, {"X 25 Y1.", 'X', 0.0025},
        {"X1Y2", 'X', 0.0001}, {"X1.5X2.", 'X', 1.5}, {"XY2.", 'X', 0}, {"G1 X", 'X', 0}, {"G1 X  ", 'X', 0},
        {"  X1.5 Y2.", 'Y', 0}, // position 8 against trimmed length 8: counts as last
        {"  X1.5 Y2.", 'X', 1.5},
    };
    for (const auto& row : rows)
        EXPECT_DOUBLE_EQ(BlockScanner(row.block).ScanValue(row.letter), row.value) << row.block;
    for (const char* bad : {"G1 X- Y1.", "X1 2", "X+ ", "X-Y"})
        EXPECT_THROW(BlockScanner(bad).ScanValue('X'), RunTimeError) << bad;
}
