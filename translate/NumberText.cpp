#include "NumberText.h"

#include "RunTimeError.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace backplot {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The value rounded halves to even (the default rounding mode), when it fits an Int.
template <class Int>
std::optional<Int> RoundedToFit(double value)
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<Int>::min() && rounded <= std::numeric_limits<Int>::max()))
        return std::nullopt;
    return static_cast<Int>(rounded);
}

template <class Int>
std::optional<Int> ConvertedWhole(std::string_view text, ConversionFault& fault)
{
    const std::optional<double> value = ConvertedValue(text);
    const std::optional<Int> whole = value ? RoundedToFit<Int>(*value) : std::nullopt;
    fault = !value ? ConversionFault::NotANumber : !whole ? ConversionFault::OutOfRange : ConversionFault::None;
    return whole;
}

} // namespace

std::string_view TrimmedBlanks(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

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
    text.remove_prefix(i);
    i = 0;
    const bool negative = TakeSign(text);
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
    text = TrimmedBlanks(text);
    const bool negative = TakeSign(text);
    if (text.empty())
        return std::nullopt;
    for (const char c : text)
        if (!IsDigit(c))
            return std::nullopt;
    const double value = ParseDigits(text);
    return negative ? -value : value;
}

std::optional<double> ConvertedValue(std::string_view text)
{
    text = TrimmedBlanks(text);
    const bool negative = TakeSign(text);
    // from_chars would also take "inf", "nan" and a second sign; only digits, one point
    // and an exponent make a number here.
    if (text.empty() || !(IsDigit(text.front()) || text.front() == '.'))
        return std::nullopt;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return negative ? -value : value;
}

std::optional<std::int16_t> ConvertedInt16(std::string_view text, ConversionFault& fault)
{
    return ConvertedWhole<std::int16_t>(text, fault);
}

std::optional<std::int32_t> ConvertedInt32(std::string_view text, ConversionFault& fault)
{
    return ConvertedWhole<std::int32_t>(text, fault);
}

std::string ConvertedValueText(std::string_view text)
{
    const double value = ConvertedValue(text).value_or(0);
    if (value == 0)
        return "0"; // no "-0"
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::int32_t RoundToInt32(double value)
{
    if (const auto whole = RoundedToFit<std::int32_t>(value))
        return *whole;
    throw RunTimeError("Overflow");
}

std::int16_t RoundToInt16(double value)
{
    if (const auto whole = RoundedToFit<std::int16_t>(value))
        return *whole;
    throw RunTimeError("Overflow");
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
