#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace backplot {

// Cuts a block at the first comment-start character of "(/'," (block delete and
// comma included): everything from it on is dropped.
void ReferenceStripComment(std::string& block);

// The block scanner written the plain way: every question searches the block again from
// its start, as the rules are stated. The translator's BlockScanner answers the same
// questions from one pass; the scanner tests hold the two against each other.
class ReferenceScanner {
public:
    ReferenceScanner() = default;
    explicit ReferenceScanner(std::string_view block) { SetBlock(block); }

    void SetBlock(std::string_view block);
    const std::string& Block() const { return block_; }

    bool Contains(char letter) const { return block_.find(letter) != std::string::npos; }
    bool Contains(std::string_view text) const { return block_.find(text) != std::string::npos; }

    // 1-based position of the G word `code` (or else `altCode`) when it stands in the
    // block as a word of its own ("G1" is not found in "G17"), 0 when absent. The
    // position is that of the plain substring and only serves as a yes/no answer.
    std::int16_t GWordPos(std::string_view code, std::string_view altCode) const;

    // The number after `letter` as a whole number, halves rounded to even (S, T, N, P, L).
    std::int32_t ScanLong(char letter) const;

    // The number after `letter` as a real (X, Y, Z, I, J, K, R, F, B). Without a decimal
    // point the digits are implied decimals: "X25" is 0.0025. An implied-decimal text
    // that is not one number ("-", "1 2") raises RunTimeError.
    double ScanValue(char letter) const;

    // The characters after the first `letter` that belong to "1234567890-+. ".
    std::string_view NumberText(char letter) const;

private:
    const std::string& Spaced() const;

    std::string block_;
    mutable std::string spaced_;
    mutable bool spacedReady_ = false;
};

} // namespace backplot
