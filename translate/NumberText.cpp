#include "NumberText.h"

#include "RunTimeError.h"

#include <charconv>
#include <cstdint>
#include <cmath>
#include <string>

namespace backplot {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

} // namespace

double ParseDigits(std::string_view digits)
{
    if (digits.empty())
        return 0;
    // Up to 15 significant digits and 22 decimals: the whole digits and the power of ten
    // are both exact doubles, so one division is the correctly rounded value that the
    // general conversion below would give, at a fraction of its cost.
    if (digits.size() <= 16) {
        std::uint64_t whole = 0;
        int decimals = -1; // digits after the point, -1 before it
        bool plain = true;
        for (const char c : digits) {
            if (c == '.' && decimals < 0) {
                decimals = 0;
            } else if (IsDigit(c)) {
                whole = whole * 10 + static_cast<unsigned>(c - '0');
                decimals += decimals >= 0;
            } else {
                plain = false;
                break;
            }
        }
        if (plain && digits.size() - (decimals >= 0) <= 15) {
            static constexpr double Powers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8,
                                                1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
            const double value = static_cast<double>(whole);
            return decimals > 0 ? value / Powers[decimals] : value;
        }
    }
    double value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value,
                                        std::chars_format::fixed);
    if (result.ec == std::errc::result_out_of_range) {
        // Only a text of hundreds of digits gets here; treat it as the overflow it is.
        throw RunTimeError("Overflow");
    }
    return value;
}

double LeadingValue(std::string_view text)
{
    // Blanks are skipped wherever they stand, so gather the significant characters.
    char small[64];
    std::string large;
    std::size_t n = 0;
    auto push = [&](char c) {
        if (n < sizeof small)
            small[n] = c;
        else {
            if (large.empty())
                large.assign(small, n);
            large.push_back(c);
        }
        ++n;
    };

    std::size_t i = 0;
    auto skipBlanks = [&] {
        while (i < text.size() && text[i] == ' ')
            ++i;
    };
    skipBlanks();
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        negative = text[i] == '-';
        ++i;
    }
    bool point = false;
    for (;; ++i) {
        skipBlanks();
        if (i >= text.size())
            break;
        const char c = text[i];
        if (IsDigit(c))
            push(c);
        else if (c == '.' && !point) {
            point = true;
            push(c);
        } else
            break;
    }
    const std::string_view digits = large.empty() ? std::string_view(small, n) : std::string_view(large);
    if (digits == ".")
        return 0;
    const double value = ParseDigits(digits);
    return negative ? -value : value;
}

std::optional<double> StrictValue(std::string_view text)
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (text.empty())
        return std::nullopt;
    for (const char c : text)
        if (!IsDigit(c))
            return std::nullopt;
    const double value = ParseDigits(text);
    return negative ? -value : value;
}

std::int32_t RoundToInt32(double value)
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= INT32_MIN && rounded <= INT32_MAX))
        throw RunTimeError("Overflow");
    return static_cast<std::int32_t>(rounded);
}

std::int16_t RoundToInt16(double value)
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= INT16_MIN && rounded <= INT16_MAX))
        throw RunTimeError("Overflow");
    return static_cast<std::int16_t>(rounded);
}

float ToSingle(double value)
{
    // Values from 2^128 - 2^103 up round to infinity as floats.
    constexpr double Limit = 0x1p128 - 0x1p103;
    if (std::isnan(value) || std::fabs(value) >= Limit)
        throw RunTimeError("Overflow");
    return static_cast<float>(value);
}

} // namespace backplot
