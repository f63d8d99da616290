#include "BlockScanner.h"

#include "NumberText.h"
#include "RunTimeError.h"

#include <stdexcept>

namespace backplot {

namespace {

using GWord = BlockScanner::GWord;
using enum BlockScanner::GWord;

// What each byte is to the scanner. Letters are only A-Z; the number characters are the
// digits, the signs, the point and the blank.
enum Class : std::uint8_t { Other, Letter, Digit, Blank, Point, Sign, Comment };

constexpr std::array<std::uint8_t, 256> MakeClasses()
{
    std::array<std::uint8_t, 256> classes{};
    for (int c = 'A'; c <= 'Z'; ++c)
        classes[c] = Letter;
    for (int c = '0'; c <= '9'; ++c)
        classes[c] = Digit;
    classes[' '] = Blank;
    classes['.'] = Point;
    classes['+'] = classes['-'] = Sign;
    for (const char c : std::string_view("(/',"))
        classes[static_cast<unsigned char>(c)] = Comment;
    return classes;
}
constexpr std::array<std::uint8_t, 256> Classes = MakeClasses();

Class ClassOf(char c) { return static_cast<Class>(Classes[static_cast<unsigned char>(c)]); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The G word made of a G and the digits after it, or none.
GWord GWordOf(std::string_view digits)
{
    if (digits.size() == 1 && digits[0] <= '3')
        return static_cast<GWord>(G0 << 2 * (digits[0] - '0'));
    if (digits.size() == 2 && digits[0] == '0' && digits[1] <= '3')
        return static_cast<GWord>(G00 << 2 * (digits[1] - '0'));
    if (digits == "90")
        return G90;
    if (digits == "91")
        return G91;
    return NoGWord;
}

// GWord's bits written out, for the position of a word in a block too long for 16 bits.
std::string_view GWordName(GWord word)
{
    switch (word) {
    case G0: return "G0";
    case G00: return "G00";
    case G1: return "G1";
    case G01: return "G01";
    case G2: return "G2";
    case G02: return "G02";
    case G3: return "G3";
    case G03: return "G03";
    case G90: return "G90";
    case G91: return "G91";
    default: return {};
    }
}

GWord ParseGWord(std::string_view code)
{
    const GWord word = code.size() >= 2 && code[0] == 'G' ? GWordOf(code.substr(1)) : NoGWord;
    if (word == NoGWord)
        throw std::invalid_argument("not an indexed G word: " + std::string(code));
    return word;
}

std::int16_t Position16(std::size_t zeroBased)
{
    if (zeroBased + 1 > static_cast<std::size_t>(INT16_MAX))
        throw RunTimeError("Overflow");
    return static_cast<std::int16_t>(zeroBased + 1);
}

// LeadingValue for a number text without blanks: the sign, then digits with at most one
// point; reading stops at anything else.
double LeadingValueUnspaced(std::string_view text)
{
    const bool negative = TakeSign(text);
    bool point = false;
    std::size_t i = 0;
    for (; i < text.size(); ++i) {
        if (IsDigit(text[i]))
            continue;
        if (text[i] == '.' && !point) {
            point = true;
            continue;
        }
        break;
    }
    const std::string_view digits = text.substr(0, i);
    if (digits == ".")
        return 0;
    const double value = ParseDigits(digits);
    return negative ? -value : value;
}

// LeadingValue(text) where blanks stand only at the ends of the number text, as the blank
// that separates words does; the general reading otherwise.
double Leading(std::string_view text, bool spaced)
{
    if (spaced) {
        const std::size_t first = text.find_first_not_of(' ');
        if (first == std::string_view::npos)
            return 0;
        text = text.substr(first, text.find_last_not_of(' ') - first + 1);
        if (text.find(' ') != std::string_view::npos)
            return LeadingValue(text);
    }
    return LeadingValueUnspaced(text);
}

} // namespace

void StripComment(std::string& block)
{
    for (std::size_t i = 0; i < block.size(); ++i) {
        if (ClassOf(block[i]) == Comment) {
            block.resize(i);
            return;
        }
    }
}

template <bool CutAtComment>
std::size_t BlockScanner::Index(std::string_view text)
{
    seen_ = dotted_ = spaced_ = 0;
    gWords_ = 0;
    m30_ = false;
    trimmedLength_ = SIZE_MAX;

    const char* p = text.data();
    const std::size_t n = text.size();
    std::size_t i = 0;
    int open = -1; // the letter whose number text is being read
    for (; i < n; ++i) {
        const Class k = ClassOf(p[i]);
        if (k == Digit)
            continue; // the commonest character: it neither opens nor closes anything
        if constexpr (CutAtComment) {
            if (k == Comment)
                break;
        }
        switch (k) {
        case Letter: {
            if (open >= 0)
                end_[open] = static_cast<std::uint32_t>(i);
            open = -1;
            const int letter = p[i] - 'A';
            if (!(seen_ >> letter & 1)) {
                seen_ |= 1u << letter;
                first_[letter] = static_cast<std::uint32_t>(i);
                open = letter;
            }
            if (p[i] == 'G') {
                // Its digits, when there are at most two of them (a third ends the loop
                // with j three past them): no G word has more.
                std::size_t j = i + 1;
                while (j < n && j - i <= 3 && IsDigit(p[j]))
                    ++j;
                if (j - i <= 3)
                    gWords_ |= GWordOf(text.substr(i + 1, j - i - 1));
            } else if (p[i] == 'M' && i + 2 < n && p[i + 1] == '3' && p[i + 2] == '0') {
                m30_ = true;
            }
            break;
        }
        case Blank:
            if (open >= 0)
                spaced_ |= 1u << open;
            break;
        case Point:
            if (open >= 0)
                dotted_ |= 1u << open;
            break;
        case Sign:
            break;
        default: // anything else ends a number text
            if (open >= 0)
                end_[open] = static_cast<std::uint32_t>(i);
            open = -1;
            break;
        }
    }
    if (open >= 0)
        end_[open] = static_cast<std::uint32_t>(i);
    block_ = text.substr(0, i);
    return i;
}

template std::size_t BlockScanner::Index<false>(std::string_view);
template std::size_t BlockScanner::Index<true>(std::string_view);

std::int16_t BlockScanner::GWordPos(std::string_view code, std::string_view altCode) const
{
    if (gWords_ & ParseGWord(code))
        return Position16(block_.find(code));
    if (!altCode.empty() && (gWords_ & ParseGWord(altCode)))
        return Position16(block_.find(altCode));
    return 0;
}

void BlockScanner::CheckGWordPosition(GWord code, GWord altCode) const
{
    GWordPos(GWordName(code), GWordName(altCode));
}

std::string_view BlockScanner::NumberText(char letter) const
{
    if (!Seen(letter))
        return {};
    const int index = letter - 'A';
    const std::size_t start = first_[index] + 1;
    return block_.substr(start, end_[index] - start);
}

std::int32_t BlockScanner::ScanLong(char letter) const
{
    const bool spaced = Seen(letter) && (spaced_ >> (letter - 'A') & 1);
    return RoundToInt32(Leading(NumberText(letter), spaced));
}

double BlockScanner::ScanValue(char letter) const
{
    if (!Seen(letter))
        return 0;
    const int index = letter - 'A';
    // A letter standing last (before trailing blanks) reads 0; the test compares the
    // position in the block with the trimmed length, as leading blanks shorten it.
    if (trimmedLength_ == SIZE_MAX) {
        const std::size_t first = block_.find_first_not_of(' ');
        trimmedLength_ = first == std::string_view::npos ? 0 : block_.find_last_not_of(' ') - first + 1;
    }
    if (first_[index] + 2 > trimmedLength_)
        return 0;

    const std::string_view text = NumberText(letter);
    if (text.empty())
        return 0;
    if (dotted_ >> index & 1)
        return Leading(text, spaced_ >> index & 1);
    const std::optional<double> whole = StrictValue(text);
    if (!whole)
        throw RunTimeError("Type mismatch");
    return *whole * 0.0001;
}

} // namespace backplot
