#pragma once

#include <string>

namespace backplot {

// Formats a number the way the display masks do: at least `minDecimals` and at most
// `maxDecimals` decimals, at least one integer digit. Rounding works on the value's
// 15-significant-digit decimal form, halves away from zero ("0.000000" turns 2.6953125
// into "2.695313"). An exact zero of either sign prints without a sign; a negative value
// that rounds to zero keeps its minus.
std::string FormatDecimals(double value, int minDecimals, int maxDecimals);

// The masks by name.
inline std::string FormatMask5(double v) { return FormatDecimals(v, 1, 5); } // "##0.0####"
inline std::string FormatMask6(double v) { return FormatDecimals(v, 1, 6); } // "##0.0#####"
inline std::string FormatFixed6(double v) { return FormatDecimals(v, 6, 6); } // "0.000000"
inline std::string FormatFixed1(double v) { return FormatDecimals(v, 1, 1); } // "0.0"

// The shortest text that reads back as the same 32-bit float ("0.1", "-2.5", "1e-14").
std::string FloatText(float value);

} // namespace backplot
