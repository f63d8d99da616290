#pragma once

#include "ToolbarKey.h"

#include <initializer_list>
#include <string>

namespace backplot {

// What single block step and slow motion ask of the window around the canvas: toolbar
// buttons, the code label, the step listing pane, the source view. Everything
// does nothing by default, which is all the command-line tool needs.
class PlaybackHost {
public:
    virtual ~PlaybackHost() = default;

    // Toolbar buttons enabled or not.
    virtual void SetButtons(std::initializer_list<ToolbarKey> /*keys*/, bool /*enabled*/) {}
    // The status label lblCode.
    virtual void SetCodeText(const std::string& /*text*/) {}
    // The loaded program's full path (FileName).
    virtual std::string FileName() const { return {}; }
    // "Step &Details".
    virtual void SetDetailsEnabled(bool /*enabled*/) {}
    // The check mark of "&Single Block Step", set while stepping.
    virtual void SetStepChecked(bool /*checked*/) {}
    // The check mark of "Slow &Motion Block Step", which holds the slow-motion state.
    virtual bool SlowMotionChecked() const { return false; }
    virtual void SetSlowMotionChecked(bool /*checked*/) {}
    // The step listing pane: emptied, at line 1 and shown, the canvas already at the size
    // it keeps beside it; a block written at its current line, which then advances.
    virtual void StartStepListing() {}
    virtual void WriteStepListing(const std::string& /*block*/) {}
    // The keyboard focus to the canvas, so the playback keys reach the window.
    virtual void FocusCanvas() {}
    // The source view: go to a line, scroll it into view and mark it; back to line 1.
    virtual void MarkSourceLine(int /*line*/) {}
    virtual bool SourceViewShown() const { return false; }
    virtual void SourceViewToFirstLine() {}
    // The "&Redraw" command.
    virtual void Redraw() {}

    // The toolbar while stepping: "Stop" the only playback button left; the commands
    // that would disturb the walk are off. The view buttons keep their state.
    void ToolbarForStepping()
    {
        SetButtons({K::Step, K::Slow, K::Pause, K::Rapid, K::Axis, K::Properties, K::ToolColors, K::Exit, K::Open,
                    K::Clear, K::Print, K::Preview},
                   false);
        SetButtons({K::Stop}, true);
    }
    // The toolbar while slow motion runs: "Pause" and "Stop" on.
    void ToolbarForSlowMotion()
    {
        SetButtons({K::Step, K::Slow, K::Rapid, K::Axis, K::Properties, K::ToolColors, K::Exit, K::Open, K::Clear,
                    K::Print, K::Preview},
                   false);
        SetButtons({K::Pause, K::Stop}, true);
    }
    // The toolbar given back (Enter at the end, Esc, the end of a slow-motion pass).
    void RestoreToolbar()
    {
        SetButtons({K::Step, K::Slow, K::Rapid, K::Axis, K::Properties, K::ToolColors, K::Exit, K::Open, K::Clear,
                    K::Print, K::Preview},
                   true);
        SetButtons({K::Pause, K::Stop}, false);
    }

private:
    using K = ToolbarKey;
};

} // namespace backplot
