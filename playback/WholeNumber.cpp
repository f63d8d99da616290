#include "WholeNumber.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace backplot {

namespace {

std::string_view Trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

template <class Int>
std::optional<Int> ToWhole(std::string_view text, WholeNumber::Fault& fault)
{
    const std::optional<double> value = WholeNumber::Value(text);
    if (!value) {
        fault = WholeNumber::Fault::NotANumber;
        return std::nullopt;
    }
    const double whole = std::nearbyint(*value); // the default rounding mode: halves to even
    if (whole < std::numeric_limits<Int>::min() || whole > std::numeric_limits<Int>::max()) {
        fault = WholeNumber::Fault::OutOfRange;
        return std::nullopt;
    }
    fault = WholeNumber::Fault::None;
    return static_cast<Int>(whole);
}

} // namespace

std::optional<double> WholeNumber::Value(std::string_view text)
{
    text = Trimmed(text);
    bool negative = false;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    // from_chars would also take "inf", "nan" and a second sign; only digits, one point
    // and an exponent make a number here.
    if (text.empty() || !(std::isdigit(static_cast<unsigned char>(text.front())) || text.front() == '.'))
        return std::nullopt;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return negative ? -value : value;
}

std::optional<std::int16_t> WholeNumber::ToInt16(std::string_view text, Fault& fault)
{
    return ToWhole<std::int16_t>(text, fault);
}

std::optional<std::int32_t> WholeNumber::ToInt32(std::string_view text, Fault& fault)
{
    return ToWhole<std::int32_t>(text, fault);
}

std::string WholeNumber::ValueText(std::string_view text)
{
    const double value = Value(text).value_or(0);
    if (value == 0)
        return "0"; // no "-0"
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::string WholeNumber::FaultMessage(std::string_view text, Fault fault)
{
    const std::string typed(Trimmed(text));
    if (fault == Fault::OutOfRange)
        return "The tool number \"" + typed + "\" is out of range. Enter a tool change number such as 1, 2 or 3.";
    return "\"" + typed + "\" is not a number. Enter a tool change number such as 1, 2 or 3.";
}

} // namespace backplot
