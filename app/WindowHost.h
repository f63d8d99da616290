#pragma once

#include "PlaybackHost.h"
#include "ViewCommands.h"

namespace backplot {

class frmBackplot;

// The main window as the view commands and the playback objects see it: its canvas
// pointer and cross hairs, status lines, toolbar buttons, check marks, step listing and
// source view.
class WindowHost : public ViewHost, public PlaybackHost {
public:
    explicit WindowHost(frmBackplot& window) : window_(window) {}

    // ViewHost
    void SetCanvasPointer(CanvasPointer pointer) override;
    void EndPlayback() override;
    void Step() override;
    void SlowMotionToggle() override;
    bool FileOperation() const override;
    bool ProgramLoaded() const override;
    void ShowMousePosition(const std::string& xText, const std::string& yText) override;
    void ShowCrossHairs(float x, float y) override;
    void HideCrossHairs() override;

    // PlaybackHost
    void SetButtons(std::initializer_list<ToolbarKey> keys, bool enabled) override;
    void SetCodeText(const std::string& text) override;
    std::string FileName() const override;
    void SetDetailsEnabled(bool enabled) override;
    void SetStepChecked(bool checked) override;
    bool SlowMotionChecked() const override;
    void SetSlowMotionChecked(bool checked) override;
    void StartStepListing() override;
    void WriteStepListing(const std::string& block) override;
    void FocusCanvas() override;
    void MarkSourceLine(int line) override;
    bool SourceViewShown() const override;
    void SourceViewToFirstLine() override;
    void Redraw() override;

private:
    frmBackplot& window_;
};

} // namespace backplot
