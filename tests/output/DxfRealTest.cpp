#include "DxfReal.h"

#include <gtest/gtest.h>


namespace backplot {
namespace {

TEST(DxfReal, SingleValuesInTheShortestGeneralForm)
{
    struct Row {
        const char* behaviour;
        float value;
        const char* text;
    };
    const Row rows[] = {
        {"zero", 0.0f, "0"},
        {"negative zero has no sign", -0.0f, "0"},
        {"no zero before the point", 0.25f, ".25"},
        {"negative below one", -0.5f, "-.5"},
        {"whole value without a point", 3.0f, "3"},
        {"whole negative", -12.0f, "-12"},
        {"float noise cut at 7 digits", 0.1f, ".1"},
        {"seven digits kept", 1.234567f, "1.234567"},
        {"eighth digit rounds up", 3.14159274f, "3.141593"},
        {"trailing zeros dropped", 5.5f, "5.5"},
        {"smallest fixed magnitude", 0.0001f, ".0001"},
        {"exponent below 1E-04", 0.00001f, "1E-05"},
        {"negative exponent form", -0.000025f, "-2.5E-05"},
        {"largest fixed whole value", 1234567.0f, "1234567"},
        {"exponent from 1E+07", 12345678.0f, "1.234568E+07"},
        {"exactly 1E+07", 10000000.0f, "1E+07"},
        {"largest seven nines", 9999999.0f, "9999999"},
        {"rounding carries into a new digit", 1.9999999f, "2"},
        {"leading zeros after the point", 0.09999999403953552f, ".09999999"},
        {"two-digit exponent", 1e-30f, "1E-30"},
        {"a half at the eighth digit goes away from zero", 12345665.0f, "1.234567E+07"},
        {"a negative half too", -12345665.0f, "-1.234567E+07"},
        {"just under one", 0.99999994f, ".9999999"},
        {"canvas edge", -5.675f, "-5.675"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DxfSingle(row.value), row.text) << row.behaviour;
}

TEST(DxfReal, DoubleValuesKeepFifteenDigits)
{
    struct Row {
        const char* behaviour;
        double value;
        const char* text;
    };
    const Row rows[] = {
        // The line-type pattern lengths.
        {"CONTINUOUS pattern", 0.0, "0"},
        {"DASHED pattern", 0.8, ".8"},
        {"DASHED gap", -0.3, "-.3"},
        {"DOT pattern", 0.2, ".2"},
        {"DOT gap", -0.1, "-.1"},
        {"DASHDOT pattern, whole", 1.0, "1"},
        {"CENTER pattern", 1.1, "1.1"},
        {"negative zero", -0.0, "0"},
        {"fifteen digits", 0.123456789012345, ".123456789012345"},
        {"sixteenth digit rounds", 2.0 / 3.0, ".666666666666667"},
        {"a value a float would cut", 1234567.8, "1234567.8"},
        {"whole up to 15 digits", 123456789012345.0, "123456789012345"},
        {"exponent from 1E+15", 1e15, "1E+15"},
        {"exponent below 1E-04", 0.00005, "5E-05"},
        {"three exponent digits", 1e-100, "1E-100"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DxfDouble(row.value), row.text) << row.behaviour;
}

} // namespace
} // namespace backplot
