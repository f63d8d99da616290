#include "Delay.h"

#include <chrono>

namespace backplot {

void Delay(double seconds)
{
    if (!(seconds > 0))
        return;
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    const std::chrono::duration<double> wait(seconds);
    while (Clock::now() - start < wait) {
    }
}

} // namespace backplot
