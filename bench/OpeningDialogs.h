#pragma once

#include "QuietDialogs.h"

#include <string>

namespace backplot::bench {

// QuietDialogs whose open dialog always chooses `Program`, so the window's open command
// runs end to end without anyone at the keyboard. Messages are still answered OK and
// counted.
class OpeningDialogs : public QuietDialogs {
public:
    std::optional<std::string> OpenFileName(const std::string&, const std::string&, const std::string&,
                                            const std::string&) override
    {
        return Program;
    }

    std::string Program;
};

} // namespace backplot::bench
