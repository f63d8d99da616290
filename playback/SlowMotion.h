#pragma once

#include "DrawSurface.h"
#include "PlaybackHost.h"
#include "PlaybackState.h"
#include "Plotter.h"
#include "Settings.h"

namespace backplot {

// Slow motion: the ordinary plot pass with a mark in the source view and a wait of
// "Slow Time" before each record. The pass lets window events run between records, so
// the pause and stop keys reach it; their commands start passes of their own on the same
// thread while the first is still on the stack (a paused pass returns at once and is
// resumed from SlowResume by the next P).
//
// SourceLine counts drawn records, not source lines: on a program whose lines and records
// do not match one to one, the marked line runs ahead or behind. That is how it is meant.
class SlowMotion {
public:
    // Installs the per-record hook on the plotter.
    SlowMotion(Plotter& plotter, DrawSurface& canvas, const Settings& settings, PlaybackState& playback,
               PlaybackHost& host);
    ~SlowMotion();
    SlowMotion(const SlowMotion&) = delete;
    SlowMotion& operator=(const SlowMotion&) = delete;

    // "Slow &Motion Block Step": the check mark inverted and copied into SlowMode, the
    // slow-motion toolbar (in both directions: turning it off from the menu leaves the
    // toolbar so until Esc), the code label, the source view back to line 1, a redraw.
    void Toggle();
    // The P key and the "Pause" button: pause, or resume where the pass stopped.
    // Nothing unless slow motion runs.
    void PauseOrResume();
    // Only when the source view is shown: SourceLine = 1 and the view back to line 1.
    void SetEditor2();

private:
    // Before each record while slow motion runs: mark, wait, advance.
    void BeforeRecord();

    Plotter& plotter_;
    DrawSurface& canvas_;
    const Settings& settings_;
    PlaybackState& playback_;
    PlaybackHost& host_;
};

} // namespace backplot
