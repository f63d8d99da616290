#pragma once

#include "RunTimeError.h"

#include <utility>

namespace backplot {

// Runs one drawing statement; a RunTimeError leaves that statement undone and the caller
// goes on with the next one, so one failing primitive never stops a plot.
template <class Statement>
void ResumeNext(Statement&& statement)
{
    try {
        std::forward<Statement>(statement)();
    } catch (const RunTimeError&) {
    }
}

} // namespace backplot
