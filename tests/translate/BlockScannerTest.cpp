#include "BlockScanner.h"
#include "NumberText.h"
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

// Cuts a block at the first comment-start character of "(/'," (block delete and comma
// included): everything from it on is dropped.
void ReferenceStripComment(std::string& block)
{
    const std::size_t cut = block.find_first_of("(/',");
    if (cut != std::string::npos)
        block.resize(cut);
}

// True when `word` followed by a blank stands somewhere in `text`.
bool ContainsWordThenBlank(std::string_view text, std::string_view word)
{
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        const std::size_t next = at + word.size();
        if (next < text.size() && text[next] == ' ')
            return true;
    }
    return false;
}

std::int16_t Position16(std::size_t zeroBased)
{
    if (zeroBased + 1 > static_cast<std::size_t>(INT16_MAX))
        throw RunTimeError("Overflow");
    return static_cast<std::int16_t>(zeroBased + 1);
}

// The block scanner written the plain way: every question searches the block again from
// its start, as the rules are stated. The translator's BlockScanner answers the same
// questions from one pass; the test below holds the two against each other.
class ReferenceScanner {
public:
    explicit ReferenceScanner(std::string_view block) : block_(block) {}
    bool Contains(char letter) const { return block_.find(letter) != std::string::npos; }

    // 1-based position of the G word `code` (or else `altCode`) when it stands in the
    // block as a word of its own ("G1" is not found in "G17"), 0 when absent. The
    // position is that of the plain substring and only serves as a yes/no answer.
    std::int16_t GWordPos(std::string_view code, std::string_view altCode) const
    {
        const std::size_t codeAt = block_.find(code);
        const std::size_t altAt = altCode.empty() ? std::string::npos : block_.find(altCode);
        if (codeAt == std::string::npos && altAt == std::string::npos)
            return 0;
        const std::string spaced = Spaced();
        if (ContainsWordThenBlank(spaced, code))
            return Position16(codeAt);
        if (!altCode.empty() && ContainsWordThenBlank(spaced, altCode))
            return Position16(altAt);
        return 0;
    }

    // The characters after the first `letter` that belong to "1234567890-+. ".
    std::string_view NumberText(char letter) const
    {
        const std::size_t at = block_.find(letter);
        if (at == std::string::npos)
            return {};
        const std::size_t start = at + 1;
        std::size_t end = start;
        while (end < block_.size() && std::string_view("1234567890-+. ").find(block_[end]) != std::string_view::npos)
            ++end;
        return std::string_view(block_).substr(start, end - start);
    }

    // The number after `letter` as a whole number, halves rounded to even (S, T, N, P, L).
    std::int32_t ScanLong(char letter) const { return RoundToInt32(LeadingValue(NumberText(letter))); }

    // The number after `letter` as a real (X, Y, Z, I, J, K, R, F, B). Without a decimal
    // point the digits are implied decimals: "X25" is 0.0025. An implied-decimal text
    // that is not one number ("-", "1 2") raises RunTimeError.
    double ScanValue(char letter) const
    {
        const std::size_t at = block_.find(letter);
        if (at == std::string::npos)
            return 0;
        // A letter standing last (before trailing blanks) reads 0; the test compares the
        // position in the block with the trimmed length, as leading blanks shorten it.
        const std::size_t first = block_.find_first_not_of(' ');
        const std::size_t last = block_.find_last_not_of(' ');
        const std::size_t trimmedLength = first == std::string::npos ? 0 : last - first + 1;
        if (at + 2 > trimmedLength)
            return 0;
        const std::string_view text = NumberText(letter);
        if (text.empty())
            return 0;
        if (text.find('.') != std::string_view::npos)
            return LeadingValue(text);
        const std::optional<double> whole = StrictValue(text);
        if (!whole)
            throw RunTimeError("Type mismatch");
        return *whole * 0.0001;
    }

private:
    // Every upper-case letter gets a blank before it, digits are kept, anything else turns
    // into a blank: "N10G01X1.5" becomes "N10 G01 X1 5" and trailing blanks. A word is then
    // a code followed by a blank.
    std::string Spaced() const
    {
        std::string spaced(2 * block_.size(), ' ');
        std::size_t letters = 0;
        for (std::size_t i = 0; i < block_.size(); ++i) {
            const char c = block_[i];
            if (c >= 'A' && c <= 'Z') {
                ++letters;
                spaced[i + letters] = c;
            } else if (c >= '0' && c <= '9') {
                spaced[i + letters] = c;
            }
        }
        const std::size_t first = spaced.find_first_not_of(' ');
        return spaced.erase(0, first == std::string::npos ? spaced.size() : first);
    }

    std::string block_;
};

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
