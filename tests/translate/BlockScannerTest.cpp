#include "BlockScanner.h"
#include "ReferenceScanner.h"
#include "RunTimeError.h"

#include <bit>
#include <gtest/gtest.h>
#include <random>
#include <tuple>

using namespace backplot;

TEST(BlockScanner, StripCommentCutsAtTheFirstCommentStart)
{
    const struct { const char* block; const char* left; } rows[] = {
        {"G01 X1.0 (ROUGH, PASS 1)", "G01 X1.0 "}, {"/G01 X1.", ""}, {"G01 X1. 'note", "G01 X1. "},
        {"G01 X1., Y2.", "G01 X1."}, {"G1 X1. /Y2. (A", "G1 X1. "},
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
        {"G1X1.", "G01", "G1", 1}, {"X1. G1", "G01", "G1", 5}, {"G01 X1.", "G00", "G0", 0}, {"G1.5", "G01", "G1", 1},
        {"g01 x1.", "G01", "G1", 0}, {"G-1 X1.", "G01", "G1", 0},
        {"G17 G1", "G01", "G1", 1}, // position of the plain substring, inside G17
        {"G90G91", "G90", "", 1}, {"G90G91", "G91", "", 4}, {"G901", "G90", "", 0},
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
        {"X1.5", 'X', 1.5}, {"X15000", 'X', 1.5}, {"X15", 'X', 0.0015}, {"Z-5000", 'Z', -0.5}, {"X-.25", 'X', -0.25},
        {"X+5", 'X', 0.0005}, {"X 1.5", 'X', 1.5}, {"X1 .5", 'X', 1.5}, {"X-1 2.", 'X', -12}, {"X1.2.3", 'X', 1.2},
        {"X 25 Y1.", 'X', 0.0025}, {"X1Y2", 'X', 0.0001}, {"X1.5X2.", 'X', 1.5}, {"XY2.", 'X', 0}, {"G1 X  ", 'X', 0},
        {"  X1.5 Y2.", 'Y', 0}, // position 8 against trimmed length 8: counts as last
        {"  X1.5 Y2.", 'X', 1.5},
    };
    for (const auto& row : rows)
        EXPECT_DOUBLE_EQ(BlockScanner(row.block).ScanValue(row.letter), row.value) << row.block;
    // Sixteen digits are one correctly rounded conversion, not digits and a power of ten
    // rounded apart (which gives ...608 here).
    EXPECT_EQ(BlockScanner("X95.74890682883607").ScanValue('X'), 95.74890682883607);
    for (const char* bad : {"G1 X- Y1.", "X1 2", "X+ ", "X-Y"})
        EXPECT_THROW(BlockScanner(bad).ScanValue('X'), RunTimeError) << bad;
}

namespace {

// Every answer a scanner gives about a block, written out: the letters' presence, number
// texts, values (as bit patterns, so -0 differs from 0) and whole numbers, the G words, and
// which questions raise.
// Appends the answer, or what was raised, and a separator.
template <typename Ask>
void Attempt(std::string& out, Ask ask)
{
    try {
        out += ask();
    } catch (const RunTimeError& error) {
        out += std::string("raises ") + error.what();
    }
    out += '|';
}

template <typename Scanner>
std::string Answers(const Scanner& scanner)
{
    std::string out;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        if (!scanner.Contains(letter))
            continue;
        out += letter;
        out.append(scanner.NumberText(letter)).append("|");
        Attempt(out, [&] { return std::to_string(std::bit_cast<std::uint64_t>(scanner.ScanValue(letter))); });
        Attempt(out, [&] { return std::to_string(scanner.ScanLong(letter)); });
    }
    for (const auto& [code, alt] : {std::pair{"G90", ""}, {"G91", ""}, {"G00", "G0"}, {"G01", "G1"}, {"G02", "G2"},
                                    {"G03", "G3"}})
        Attempt(out, [&, code = code, alt = alt] { return std::to_string(scanner.GWordPos(code, alt)); });
    return out;
}

// Blocks as programs hold them, and the characters that upset a scanner.
constexpr std::string_view Seeds[] = {
    "N10 G01 X1.5 Y-2.25 F200.", "G2X3.Y4.I1.J0", "G03 X-1. Y1. R-1.5 Z-.25", "T12 M06", "G90G91 G0 X0Y0",
    "  X 1.5 Y2. ", "G1.5 X25 Y-5000", "M30", "G17 G21 G40 G49 G80 G90", "S1200 M03 T3.5", "G0 X1 2 Y+3 Z-",
    "N5 G01 X1.0 (ROUGH, PASS 1)", "/G1 X1.", "G91 G02 X1. Y1. I.5 J.5 K-.1", "G001 G010 G1G2 G3X", "M300 M3 0",
};
constexpr std::string_view Alphabet = "GXYZIJKRSTFNPLBM0123456789012345678901234.-+  .(/',gx;\t\x7f";

} // namespace

TEST(BlockScanner, OnePassAnswersAsTheRepeatedSearchesDo)
{
    std::mt19937 random(18);
    const auto pick = [&](std::string_view from) { return from[random() % from.size()]; };
    std::vector<std::string> blocks(std::begin(Seeds), std::end(Seeds));
    for (int i = 0; i < 20000; ++i) {
        std::string block;
        if (i % 2 == 0) {
            for (std::size_t n = random() % 24; n > 0; --n)
                block += pick(Alphabet);
        } else {
            block = Seeds[random() % std::size(Seeds)];
            for (int edits = 1 + random() % 3; edits > 0; --edits) {
                const std::size_t at = block.empty() ? 0 : random() % block.size();
                switch (random() % 3) {
                case 0: block.insert(at, 1, pick(Alphabet)); break;
                case 1: block.erase(at, 1); break;
                default: block.insert(at, block.substr(at, random() % 6)); break;
                }
            }
        }
        blocks.push_back(block);
    }
    // Positions past the 16-bit range raise, but only where a position is asked for.
    blocks.push_back(std::string(32767, 'X') + "G1 Y1.");
    blocks.push_back("G1" + std::string(40000, ' ') + "X2.");

    for (const std::string& line : blocks) {
        std::string cut = line;
        ReferenceStripComment(cut);
        BlockScanner fast;
        ASSERT_EQ(fast.SetLine(line), cut.size()) << line;
        ASSERT_EQ(Answers(fast), Answers(ReferenceScanner(cut))) << line;
        EXPECT_EQ(fast.IsBlank(), cut.find_first_not_of(' ') == std::string::npos) << line;
        EXPECT_EQ(fast.ContainsM30(), cut.find("M30") != std::string::npos) << line;
        // The interpreter's yes/no question answers as the position does, raising alike.
        const ReferenceScanner reference(cut);
        using enum BlockScanner::GWord;
        for (const auto& [code, alt, codeName, altName] :
             {std::tuple{G90, NoGWord, "G90", ""}, {G00, G0, "G00", "G0"}, {G01, G1, "G01", "G1"}}) {
            std::string has, position;
            // Named copies: Clang 14 lets no lambda capture a structured binding.
            Attempt(has, [&, code = code, alt = alt] { return fast.HasGWord(code, alt) ? "yes" : "no"; });
            Attempt(position, [&, codeName = codeName, altName = altName] {
                return reference.GWordPos(codeName, altName) != 0 ? "yes" : "no";
            });
            EXPECT_EQ(has, position) << line << " / " << codeName;
        }

        fast.SetBlock(line); // a whole block: comment characters are no cut here
        ASSERT_EQ(Answers(fast), Answers(ReferenceScanner(line))) << line;
    }
}
