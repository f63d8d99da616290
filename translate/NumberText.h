#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace backplot {

// "digits[.digits]" (no sign, no blanks; either part may be empty) as a double; "" reads 0.
// A text of hundreds of digits raises RunTimeError("Overflow").
double ParseDigits(std::string_view digits);

// The leading number of a text, blanks ignored anywhere: " 1 2" reads 12, "1.5X" 1.5,
// "-.25" -0.25; a text that starts with no number reads 0.
double LeadingValue(std::string_view text);

// The whole text as one number, surrounding blanks allowed: "-5" and " 42 " convert,
// "-", "+", "1 2" and "" do not.
std::optional<double> StrictValue(std::string_view text);

// Rounds halves to even and narrows; out of range raises RunTimeError("Overflow").
std::int32_t RoundToInt32(double value);
std::int16_t RoundToInt16(double value);
// Narrows a double to a record float; out of float range raises RunTimeError("Overflow").
float ToSingle(double value);

} // namespace backplot
