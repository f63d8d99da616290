#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace backplot {

// Reading a number that the user typed, as the classic conversions to a whole number do:
// blanks around it are ignored, a sign and a decimal point are allowed ("2.5", "+3",
// "-.5", "1E1"), and the value is rounded to the nearest whole number, halves to even
// ("2.5" is 2, "3.5" is 4).
struct WholeNumber {
    enum class Fault { None, NotANumber, OutOfRange };

    // The value of `text`, or nothing when it is not a number ("", "abc", "3x", "inf").
    static std::optional<double> Value(std::string_view text);

    // `text` as a 16-bit or 32-bit whole number; `fault` says why there is none.
    static std::optional<std::int16_t> ToInt16(std::string_view text, Fault& fault);
    static std::optional<std::int32_t> ToInt32(std::string_view text, Fault& fault);

    // The numeric value of `text` written back as text: "7" for " +7", "2.5" for "2.50",
    // "0" for an empty text or one that is not a number.
    static std::string ValueText(std::string_view text);

    // The message for a tool number that could not be read, naming what was typed.
    static std::string FaultMessage(std::string_view text, Fault fault);
};

} // namespace backplot
