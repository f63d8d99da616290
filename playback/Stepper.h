#pragma once

#include "DrawSurface.h"
#include "PlaybackHost.h"
#include "PlaybackState.h"
#include "Plotter.h"
#include "Translator.h"
#include "UserDialogs.h"

namespace backplot {

// Single block step: each step reads the next record and draws it alone over what is
// there, shows its block on the code line and appends it to the step listing.
//
// The current element is the plotter's PlotLast, which is also the plot pass's bound:
// any redraw while stepping shows exactly the elements stepped so far. Stepping past the
// last record ends silently with PlotLast = 1 (so a later redraw shows record 1 alone
// until Full Drawing Extents or an open sets it back to the record total).
class Stepper {
public:
    Stepper(Plotter& plotter, DrawSurface& canvas, Translator& translator, PlaybackState& playback,
            UserDialogs& dialogs, PlaybackHost& host);
    Stepper(const Stepper&) = delete;
    Stepper& operator=(const Stepper&) = delete;

    // "&Single Block Step": starts stepping when it is off, then takes one step.
    void Step();
    // One step on `surface`: PlotLast + 1 and that record drawn, or the end of stepping
    // past the last record (at once when there are no records). "Error opening file!"
    // when a record that should be there cannot be read; PlotLast then stays where it was.
    void ElementStep(DrawSurface& surface);

private:
    void Start();

    Plotter& plotter_;
    DrawSurface& canvas_;
    Translator& translator_;
    PlaybackState& playback_;
    UserDialogs& dialogs_;
    PlaybackHost& host_;
};

} // namespace backplot
