#include "NumberFormat.h"

#include <gtest/gtest.h>

using namespace backplot;

TEST(NumberFormat, MasksRoundOnFifteenDigitsHalvesAwayFromZero)
{
    const struct { double value; int minDecimals, maxDecimals; const char* expected; } rows[] = {
        {3, 1, 6, "3.0"}, {0.1234567, 1, 6, "0.123457"},
        {2.6953125, 6, 6, "2.695313"}, {-2.6953125, 6, 6, "-2.695313"}, // printf would give 2.695312
        {0.5, 1, 5, "0.5"}, {12345.25, 1, 5, "12345.25"},
        {0.000004, 1, 5, "0.0"},     // rounds down to the one required decimal
        {0.000005, 1, 5, "0.00001"}, // half goes up
        {9.999996, 1, 5, "10.0"},    // carry into the integer part
        {-0.0, 1, 5, "0.0"},         // an exact zero has no sign
        {0.0, 6, 6, "0.000000"},
        {-0.000001, 1, 5, "-0.0"},   // rounds to zero but keeps its minus
        {1e-14, 1, 5, "0.0"}, {2.5, 1, 1, "2.5"}, {0.25, 1, 1, "0.3"}, {-0.25, 1, 1, "-0.3"},
        {1.15, 1, 1, "1.2"}, // 1.1499999999999999 on seventeen digits
        {1.0 / 3.0, 6, 6, "0.333333"}, {123456789.0, 1, 5, "123456789.0"}, {1e20, 1, 1, "100000000000000000000.0"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FormatDecimals(row.value, row.minDecimals, row.maxDecimals), row.expected)
            << row.value << " with " << row.minDecimals << ".." << row.maxDecimals;
    EXPECT_EQ(FormatMask5(-12.5), "-12.5");
    EXPECT_EQ(FormatMask6(0.1234565), "0.123457"); // the 15-digit form is 0.123456500000000
}
