#pragma once

#include <cstdint>
#include <optional>
#include <string>
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

// `text` without the blanks around it.
std::string_view TrimmedBlanks(std::string_view text);

// Takes a leading '+' or '-' off `text`: true when it was '-'.
inline bool TakeSign(std::string_view& text)
{
    if (text.empty() || (text.front() != '-' && text.front() != '+'))
        return false;
    const bool negative = text.front() == '-';
    text.remove_prefix(1);
    return negative;
}

// The whole text as a number, as the classic conversions read what a user typed or a
// setting holds: blanks around it are ignored, a sign, a decimal point and an exponent
// are allowed ("2.5", "+3", "-.5", "1E1"); nothing for anything else ("", "abc", "3x",
// "inf", "0x10", "1 2").
std::optional<double> ConvertedValue(std::string_view text);

// Why a text gave no whole number.
enum class ConversionFault { None, NotANumber, OutOfRange };

// ConvertedValue rounded halves to even ("2.5" is 2, "3.5" is 4) to a 16-bit or 32-bit
// whole number; `fault` says why there is none.
std::optional<std::int16_t> ConvertedInt16(std::string_view text, ConversionFault& fault);
std::optional<std::int32_t> ConvertedInt32(std::string_view text, ConversionFault& fault);

// The numeric value of `text` written back as text: "7" for " +7", "2.5" for "2.50",
// "0" for an empty text or one that is not a number.
std::string ConvertedValueText(std::string_view text);

// Rounds halves to even and narrows; out of range raises RunTimeError("Overflow").
std::int32_t RoundToInt32(double value);
std::int16_t RoundToInt16(double value);
// Narrows a double to a record float; out of float range raises RunTimeError("Overflow").
float ToSingle(double value);

} // namespace backplot
