#pragma once

#include <string>

namespace backplot {

// Real values of the DXF text, in the shortest general form: "." as the decimal separator
// whatever the locale, no blanks, no trailing zeros, no point for whole values ("0", "12"),
// no zero before the point below 1 (".8", "-.3"), an exact zero of either sign as "0".
// Rounded to 7 (32-bit) or 15 (64-bit) significant digits, halves away from zero; the
// exponent form is used below 1E-04 and from 1E+07 (1E+15) up, with a sign and at least two
// exponent digits: "1E-05", "1.234568E+07".
std::string DxfSingle(float value);
std::string DxfDouble(double value);

} // namespace backplot
