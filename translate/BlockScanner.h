#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace backplot {

// Cuts a block at the first comment-start character of "(/'," (block delete and
// comma included): everything from it on is dropped.
void StripComment(std::string& block);

// Reads address words out of one block, case-sensitively: only upper-case letters are
// words, and only the first occurrence of a letter is ever read.
//
// One pass over the block records, for every letter, where it first stands and how far
// the number characters "1234567890-+. " run after it, and which G words stand as words
// of their own (a G, its digits, then anything that is no digit: "G1" is not in "G17",
// but is in "G1.5" and "G1X1."). Every question after that is answered from the index.
//
class BlockScanner {
public:
    // The G words the interpreter asks about, one bit each.
    enum GWord : std::uint16_t {
        NoGWord = 0,
        G0 = 1 << 0, G00 = 1 << 1, G1 = 1 << 2, G01 = 1 << 3, G2 = 1 << 4, G02 = 1 << 5,
        G3 = 1 << 6, G03 = 1 << 7, G90 = 1 << 8, G91 = 1 << 9,
    };

    BlockScanner() = default;
    explicit BlockScanner(std::string_view block) { SetBlock(block); }
    // The index refers to the text it was made from.
    BlockScanner(const BlockScanner&) = delete;
    BlockScanner& operator=(const BlockScanner&) = delete;

    // Indexes a copy of the whole block.
    void SetBlock(std::string_view block)
    {
        own_.assign(block);
        Index<false>(own_);
    }
    // Indexes a line in place, up to its first comment start (StripComment's cut), and
    // gives the length of the block left. No copy is made: the line must stay as it is
    // while the scanner is asked about it.
    std::size_t SetLine(std::string_view line) { return Index<true>(line); }

    std::string_view Block() const { return block_; }
    // The block holds nothing but blanks.
    bool IsBlank() const { return block_.find_first_not_of(' ') == std::string_view::npos; }
    bool Contains(char letter) const { return Seen(letter); }
    // "M30" stands somewhere in the block (M300 too).
    bool ContainsM30() const { return m30_; }

    // 1-based position of the G word `code` (or else `altCode`) when it stands in the
    // block as a word of its own, 0 when absent. The position is that of the plain
    // substring and only serves as a yes/no answer; past 32767 it raises
    // RunTimeError("Overflow"). The codes are those of GWord, written out ("G01").
    std::int16_t GWordPos(std::string_view code, std::string_view altCode) const;
    // GWordPos(code, altCode) != 0, without working out the position where it fits.
    bool HasGWord(GWord code, GWord altCode = NoGWord) const
    {
        if (!(gWords_ & (code | altCode)))
            return false;
        // Only a block this long can hold a position past the 16-bit range.
        if (block_.size() > static_cast<std::size_t>(INT16_MAX))
            CheckGWordPosition(code, altCode);
        return true;
    }

    // The number after `letter` as a whole number, halves rounded to even (S, T, N, P, L).
    std::int32_t ScanLong(char letter) const;

    // The number after `letter` as a real (X, Y, Z, I, J, K, R, F, B). Without a decimal
    // point the digits are implied decimals: "X25" is 0.0025. A letter standing last
    // (before trailing blanks) reads 0. An implied-decimal text that is not one number
    // ("-", "1 2") raises RunTimeError.
    double ScanValue(char letter) const;

    // The characters after the first `letter` that belong to "1234567890-+. ".
    std::string_view NumberText(char letter) const;

private:
    template <bool CutAtComment>
    std::size_t Index(std::string_view text);
    bool Seen(char letter) const
    {
        const unsigned index = static_cast<unsigned>(static_cast<unsigned char>(letter)) - 'A';
        return index < 26 && (seen_ >> index & 1);
    }
    void CheckGWordPosition(GWord code, GWord altCode) const;

    std::string own_; // the copy SetBlock makes
    std::string_view block_;
    std::uint32_t seen_ = 0;      // letters present, bit 0 for A
    std::uint32_t dotted_ = 0;    // letters whose number text holds a point
    std::uint32_t spaced_ = 0;    // letters whose number text holds a blank
    std::uint16_t gWords_ = 0;    // GWord bits
    bool m30_ = false;
    mutable std::size_t trimmedLength_ = SIZE_MAX; // the block without leading and trailing blanks; SIZE_MAX until asked
    std::array<std::uint32_t, 26> first_{}; // position of each letter, valid where seen
    std::array<std::uint32_t, 26> end_{};   // end of its number text
};

} // namespace backplot
