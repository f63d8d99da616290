#pragma once

#include <cstdint>

namespace backplot {

// The playback flags, one instance owned by the main window. Translation clears
// StepMode when it stops at "M30"; the plot pass and the playback commands use the rest.
struct PlaybackState {
    bool StepMode = false;       // single block step running
    bool SlowMode = false;       // slow motion running
    bool SlowPaused = false;     // slow motion paused (P key)
    std::int16_t SlowResume = 1; // record where a paused plot pass goes on
    std::int16_t SourceLine = 1; // source-view line counter of slow motion
};

} // namespace backplot
