#include "Delay.h"

#include <chrono>
#include <gtest/gtest.h>

namespace backplot {
namespace {

TEST(Delay, WaitsAtLeastTheTimeAskedAndNothingForNonsense)
{
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    Delay(0.05);
    const double waited = std::chrono::duration<double>(Clock::now() - start).count();
    EXPECT_GE(waited, 0.05);
    EXPECT_LT(waited, 0.5);

    const auto again = Clock::now();
    Delay(0);
    Delay(-3);
    Delay(std::numeric_limits<double>::quiet_NaN());
    EXPECT_LT(std::chrono::duration<double>(Clock::now() - again).count(), 0.01);
}

} // namespace
} // namespace backplot
