#include "DxfReal.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

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
    // again to 7 or 15 gives the rounding of the value itself: "d.dddddddddddddddde+XX".
    char text[40];
    const auto [end, ec] =
        std::to_chars(text, text + sizeof text - 1, std::fabs(value), std::chars_format::scientific, 16);
    (void)ec; // the buffer is large enough for any double
    *end = '\0';
    char mantissa[17];
    mantissa[0] = text[0];
    std::memcpy(mantissa + 1, text + 2, 16);
    int exponent = std::atoi(text + 19);

    // Round to `digits`, halves away from zero; 9.99..95 carries into a new leading digit.
    int length = digits;
    if (mantissa[digits] >= '5') {
        int i = digits - 1;
        for (; i >= 0 && mantissa[i] == '9'; --i)
            mantissa[i] = '0';
        if (i >= 0) {
            ++mantissa[i];
        } else {
            mantissa[0] = '1';
            ++exponent;
        }
    }
    while (length > 1 && mantissa[length - 1] == '0')
        --length;

    char out[40];
    int n = 0;
    if (value < 0)
        out[n++] = '-';
    if (exponent < -4 || exponent >= digits) {
        out[n++] = mantissa[0];
        if (length > 1) {
            out[n++] = '.';
            std::memcpy(out + n, mantissa + 1, static_cast<std::size_t>(length - 1));
            n += length - 1;
        }
        n += std::snprintf(out + n, sizeof out - static_cast<std::size_t>(n), exponent < 0 ? "E-%02d" : "E+%02d",
                           std::abs(exponent));
    } else if (exponent < 0) {
        out[n++] = '.';
        for (int i = -exponent - 1; i > 0; --i)
            out[n++] = '0';
        std::memcpy(out + n, mantissa, static_cast<std::size_t>(length));
        n += length;
    } else {
        const int whole = exponent + 1;
        for (int i = 0; i < whole; ++i)
            out[n++] = i < length ? mantissa[i] : '0';
        if (length > whole) {
            out[n++] = '.';
            std::memcpy(out + n, mantissa + whole, static_cast<std::size_t>(length - whole));
            n += length - whole;
        }
    }
    return std::string(out, static_cast<std::size_t>(n));
}

} // namespace

std::string DxfSingle(float value) { return GeneralForm(value, 7); }

std::string DxfDouble(double value) { return GeneralForm(value, 15); }

} // namespace backplot
