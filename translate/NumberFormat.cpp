#include "NumberFormat.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace backplot {

std::string FormatDecimals(double value, int minDecimals, int maxDecimals)
{
    if (!std::isfinite(value))
        return std::isnan(value) ? "NaN" : (value < 0 ? "-Inf" : "Inf");
    const bool negative = std::signbit(value) && value != 0;

    // The 15 significant digits d0.d1...d14 and the decimal exponent.
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.14e", std::fabs(value));
    std::string digits;
    for (const char* p = buffer; *p && *p != 'e'; ++p)
        if (*p != '.')
            digits.push_back(*p);
    const int exponent = std::atoi(std::strchr(buffer, 'e') + 1);

    // Lay the digits out as integer and fraction parts: value = 0.<digits> * 10^(exponent+1).
    const int pointAt = exponent + 1; // digits before the decimal point
    std::string integer;
    std::string fraction;
    if (pointAt <= 0) {
        integer = "0";
        fraction = std::string(static_cast<std::size_t>(-pointAt), '0') + digits;
    } else if (pointAt >= static_cast<int>(digits.size())) {
        integer = digits + std::string(static_cast<std::size_t>(pointAt) - digits.size(), '0');
    } else {
        integer = digits.substr(0, static_cast<std::size_t>(pointAt));
        fraction = digits.substr(static_cast<std::size_t>(pointAt));
    }

    // Round halves away from zero at maxDecimals.
    if (static_cast<int>(fraction.size()) > maxDecimals) {
        const bool up = fraction[static_cast<std::size_t>(maxDecimals)] >= '5';
        fraction.resize(static_cast<std::size_t>(maxDecimals));
        if (up) {
            std::string all = integer + fraction;
            int i = static_cast<int>(all.size()) - 1;
            for (; i >= 0; --i) {
                if (all[static_cast<std::size_t>(i)] == '9')
                    all[static_cast<std::size_t>(i)] = '0';
                else {
                    ++all[static_cast<std::size_t>(i)];
                    break;
                }
            }
            if (i < 0)
                all.insert(all.begin(), '1');
            integer = all.substr(0, all.size() - fraction.size());
            fraction = all.substr(all.size() - fraction.size());
        }
    }
    while (static_cast<int>(fraction.size()) > minDecimals && fraction.back() == '0')
        fraction.pop_back();
    while (static_cast<int>(fraction.size()) < minDecimals)
        fraction.push_back('0');
    const std::size_t firstNonZero = integer.find_first_not_of('0');
    integer = firstNonZero == std::string::npos ? "0" : integer.substr(firstNonZero);

    std::string text = negative ? "-" : "";
    text += integer;
    if (!fraction.empty())
        text += "." + fraction;
    return text;
}

std::string FloatText(float value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

} // namespace backplot
