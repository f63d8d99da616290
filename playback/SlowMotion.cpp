#include "SlowMotion.h"

#include "Delay.h"
#include "PlaybackTexts.h"
#include "RunTimeError.h"

namespace backplot {

SlowMotion::SlowMotion(Plotter& plotter, DrawSurface& canvas, const Settings& settings, PlaybackState& playback,
                       PlaybackHost& host)
    : plotter_(plotter), canvas_(canvas), settings_(settings), playback_(playback), host_(host)
{
    plotter_.SetSlowMotionHook([this] { BeforeRecord(); });
}

SlowMotion::~SlowMotion() { plotter_.SetSlowMotionHook({}); }

void SlowMotion::Toggle()
{
    host_.SetSlowMotionChecked(!host_.SlowMotionChecked());
    playback_.SlowMode = host_.SlowMotionChecked();
    playback_.SourceLine = 1;
    // Set in both directions of the toggle, on purpose.
    host_.ToolbarForSlowMotion();
    if (playback_.SlowMode) {
        host_.SetCodeText(texts::EndSlowMotion);
    } else {
        host_.SetCodeText(host_.FileName() + "  ");
        playback_.SlowPaused = false;
    }
    SetEditor2();
    host_.Redraw();
}

void SlowMotion::PauseOrResume()
{
    if (!playback_.SlowMode)
        return;
    playback_.SlowPaused = !playback_.SlowPaused;
    host_.SetCodeText(playback_.SlowPaused ? texts::SlowMotionPaused : texts::EndSlowMotion);
    // A paused pass returns at once; a resumed one goes on from SlowResume without
    // clearing what was drawn.
    plotter_.GetRecords(canvas_);
}

void SlowMotion::SetEditor2()
{
    if (!host_.SourceViewShown())
        return;
    playback_.SourceLine = 1;
    host_.SourceViewToFirstLine();
}

void SlowMotion::BeforeRecord()
{
    // The marking runs whether or not the source view is shown.
    host_.MarkSourceLine(playback_.SourceLine);
    Delay(settings_.SlowTime);
    CheckedIncrement(playback_.SourceLine);
}

} // namespace backplot
