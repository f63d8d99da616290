#include "ReferenceScanner.h"

#include "NumberText.h"
#include "RunTimeError.h"

namespace backplot {

namespace {

constexpr std::string_view CommentStarts = "(/',";
constexpr std::string_view NumberChars = "1234567890-+. ";

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

} // namespace

void ReferenceStripComment(std::string& block)
{
    const std::size_t cut = block.find_first_of(CommentStarts);
    if (cut != std::string::npos)
        block.resize(cut);
}

void ReferenceScanner::SetBlock(std::string_view block)
{
    block_.assign(block);
    spacedReady_ = false;
}

// Every upper-case letter gets a blank before it, digits are kept, anything else turns
// into a blank: "N10G01X1.5" becomes "N10 G01 X1 5" and trailing blanks. A word is then
// a code followed by a blank.
const std::string& ReferenceScanner::Spaced() const
{
    if (!spacedReady_) {
        const std::size_t length = block_.size();
        spaced_.assign(2 * length, ' ');
        std::size_t letters = 0;
        for (std::size_t i = 0; i < length; ++i) {
            const char c = block_[i];
            if (c >= 'A' && c <= 'Z') {
                ++letters;
                spaced_[i + letters] = c;
            } else if (c >= '0' && c <= '9') {
                spaced_[i + letters] = c;
            }
        }
        const std::size_t first = spaced_.find_first_not_of(' ');
        spaced_.erase(0, first == std::string::npos ? spaced_.size() : first);
        spacedReady_ = true;
    }
    return spaced_;
}

std::int16_t ReferenceScanner::GWordPos(std::string_view code, std::string_view altCode) const
{
    const std::size_t codeAt = block_.find(code);
    const std::size_t altAt = altCode.empty() ? std::string::npos : block_.find(altCode);
    if (codeAt == std::string::npos && altAt == std::string::npos)
        return 0;

    const std::string& spaced = Spaced();
    if (ContainsWordThenBlank(spaced, code))
        return Position16(codeAt);
    if (!altCode.empty() && ContainsWordThenBlank(spaced, altCode))
        return Position16(altAt);
    return 0;
}

std::string_view ReferenceScanner::NumberText(char letter) const
{
    const std::size_t at = block_.find(letter);
    if (at == std::string::npos)
        return {};
    const std::size_t start = at + 1;
    std::size_t end = start;
    while (end < block_.size() && NumberChars.find(block_[end]) != std::string_view::npos)
        ++end;
    return std::string_view(block_).substr(start, end - start);
}

std::int32_t ReferenceScanner::ScanLong(char letter) const
{
    return RoundToInt32(LeadingValue(NumberText(letter)));
}

double ReferenceScanner::ScanValue(char letter) const
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

} // namespace backplot
