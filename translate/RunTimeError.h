#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace backplot {

// The one error type of translation and the passes. Each command catches it where
// its error handler sits and shows the message that command owns; the text carried
// here names the fault (as "Overflow" or "Subscript out of range") for logs and tests.
class RunTimeError : public std::runtime_error {
public:
    explicit RunTimeError(const std::string& what) : std::runtime_error(what) {}
};

// 16-bit counters overflow into a run-time error instead of wrapping.
inline void CheckedIncrement(std::int16_t& counter)
{
    if (counter == INT16_MAX)
        throw RunTimeError("Overflow");
    ++counter;
}

} // namespace backplot
