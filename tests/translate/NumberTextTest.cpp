#include "NumberText.h"

#include <gtest/gtest.h>

#include <optional>

namespace backplot {
namespace {

using Fault = ConversionFault;

TEST(NumberText, TypedTextBecomesAWholeNumberOrAFault)
{
    struct Case {
        const char* name;
        const char* text;
        std::optional<std::int16_t> int16;
        std::optional<std::int32_t> int32;
        Fault fault16, fault32;
    };
    const Case cases[] = {
        {"Plain", "7", 7, 7, Fault::None, Fault::None},
        {"BlanksAround", "  12 ", 12, 12, Fault::None, Fault::None},
        {"PlusSign", "+3", 3, 3, Fault::None, Fault::None},
        {"MinusSign", "-4", -4, -4, Fault::None, Fault::None},
        {"HalfRoundsToEvenDown", "2.5", 2, 2, Fault::None, Fault::None},
        {"HalfRoundsToEvenUp", "3.5", 4, 4, Fault::None, Fault::None},
        {"LeadingPoint", ".6", 1, 1, Fault::None, Fault::None},
        {"Exponent", "1E1", 10, 10, Fault::None, Fault::None},
        {"Largest16Bit", "32767", 32767, 32767, Fault::None, Fault::None},
        {"Past16Bit", "32768", std::nullopt, 32768, Fault::OutOfRange, Fault::None},
        {"RoundsPast16Bit", "32767.5", std::nullopt, 32768, Fault::OutOfRange, Fault::None},
        {"Past32Bit", "2147483648", std::nullopt, std::nullopt, Fault::OutOfRange, Fault::OutOfRange},
        {"Empty", "", std::nullopt, std::nullopt, Fault::NotANumber, Fault::NotANumber},
        {"Letters", "abc", std::nullopt, std::nullopt, Fault::NotANumber, Fault::NotANumber},
        {"TrailingLetter", "3x", std::nullopt, std::nullopt, Fault::NotANumber, Fault::NotANumber},
        {"Infinity", "inf", std::nullopt, std::nullopt, Fault::NotANumber, Fault::NotANumber},
        {"SecondSign", "+-3", std::nullopt, std::nullopt, Fault::NotANumber, Fault::NotANumber},
        {"InnerBlank", "1 2", std::nullopt, std::nullopt, Fault::NotANumber, Fault::NotANumber},
        {"Hex", "0x10", std::nullopt, std::nullopt, Fault::NotANumber, Fault::NotANumber},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Fault fault16 = Fault::None, fault32 = Fault::None;
        EXPECT_EQ(ConvertedInt16(c.text, fault16), c.int16);
        EXPECT_EQ(fault16, c.fault16);
        EXPECT_EQ(ConvertedInt32(c.text, fault32), c.int32);
        EXPECT_EQ(fault32, c.fault32);
    }

    const std::pair<const char*, const char*> values[] = {
        {" +7", "7"}, {"2.50", "2.5"}, {"", "0"}, {"abc", "0"}, {"-0", "0"}, {"-3", "-3"}, {"1E1", "10"},
    };
    for (const auto& [text, value] : values)
        EXPECT_EQ(ConvertedValueText(text), value) << text;
}

} // namespace
} // namespace backplot
