#include "DxfReal.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace backplot {

namespace {

std::string GeneralForm(double value, int digits)
{
    if (value == 0)
        return "0";
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value < 0 ? "-Inf" : "Inf";

    // 17 significant digits hold a float or double closely enough that rounding them
    // again to 7 or 15 gives the rounding of the value itself.
    char buffer[40];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                         std::chars_format::scientific, 16);
    (void)ec; // the buffer is large enough for any double
    const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
    const std::size_t e = text.find('e');
    std::string mantissa;
    for (char c : text.substr(0, e))
        if (c != '.')
            mantissa.push_back(c);
    int exponent = std::atoi(std::string(text.substr(e + 1)).c_str());

    // Round to `digits`, halves away from zero; 9.99..95 carries into a new leading digit.
    const bool up = mantissa[static_cast<std::size_t>(digits)] >= '5';
    mantissa.resize(static_cast<std::size_t>(digits));
    if (up) {
        int i = digits - 1;
        for (; i >= 0 && mantissa[static_cast<std::size_t>(i)] == '9'; --i)
            mantissa[static_cast<std::size_t>(i)] = '0';
        if (i >= 0) {
            ++mantissa[static_cast<std::size_t>(i)];
        } else {
            mantissa.insert(mantissa.begin(), '1');
            mantissa.pop_back();
            ++exponent;
        }
    }
    while (mantissa.size() > 1 && mantissa.back() == '0')
        mantissa.pop_back();

    std::string out = value < 0 ? "-" : "";
    if (exponent < -4 || exponent >= digits) {
        out += mantissa[0];
        if (mantissa.size() > 1) {
            out += '.';
            out.append(mantissa, 1);
        }
        out += exponent < 0 ? "E-" : "E+";
        const std::string power = std::to_string(std::abs(exponent));
        if (power.size() < 2)
            out += '0';
        out += power;
    } else if (exponent < 0) {
        out += '.';
        out.append(static_cast<std::size_t>(-exponent - 1), '0');
        out += mantissa;
    } else {
        const auto whole = static_cast<std::size_t>(exponent) + 1;
        if (mantissa.size() <= whole) {
            out += mantissa;
            out.append(whole - mantissa.size(), '0');
        } else {
            out.append(mantissa, 0, whole);
            out += '.';
            out.append(mantissa, whole);
        }
    }
    return out;
}

} // namespace

std::string DxfSingle(float value) { return GeneralForm(value, 7); }

std::string DxfDouble(double value) { return GeneralForm(value, 15); }

} // namespace backplot
