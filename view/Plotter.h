#pragma once

#include "CAxis.h"
#include "DrawSurface.h"
#include "EntityRecord.h"
#include "EntityRenderer.h"
#include "PlaybackState.h"
#include "Settings.h"
#include "TranslationState.h"
#include "UserDialogs.h"
#include "ViewTransform.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace backplot {

// The view and the two passes over the record file: the extents pass and the plot pass
// (GetRecords), with the renderer and the axis they use. One instance, owned by the main
// window (or the command-line tool); the window's public operations of the same names
// forward here.
//
// Records are read into the process-wide record buffer, the translator's Record(), given
// at construction: after a pass it holds what the stepping and details commands expect
// to find there. Every referenced object must outlive the plotter; the settings, tool
// colours and translation state are read live, never copied.
//
// Threads: the user-interface thread only. GetRecords is re-entrant through the event
// pump while slow motion runs (the pause and stop keys start passes of their own).
class Plotter {
public:
    Plotter(const Settings& settings, const ToolColorTable& toolColors,
            const TranslationState& translation, PlaybackState& playback, EntityRecord& record,
            UserDialogs& dialogs, EventPump& events, std::function<std::string()> recordFilePath);

    Plotter(const Plotter&) = delete;
    Plotter& operator=(const Plotter&) = delete;

    // The view window and its scale (ViewX1.., PrevViewX1.., MinX.., FitSpan, ...).
    ViewTransform View;

    // Plot-pass fields.
    std::int16_t PlotIndex = 0;   // record being read or drawn
    std::int16_t PlotLast = 0;    // last record the plot pass draws; the extents pass sets it to RecordTotal
    std::int16_t RecordTotal = 0; // records in the file, from the extents pass
    std::int32_t CurTool = 0;     // ToolNum of the record being drawn; 0 outside a pass
    std::uint32_t CurrentColor = 0; // colour of the record being drawn (0xBBGGRR); kept between passes
    std::int16_t ToolChangesSeen = 0; // tool changes counted by the last tool-to-tool pass; stepping clears it

    EntityRenderer& Renderer() { return renderer_; }
    CAxis& Axis() { return axis_; }

    // The extents pass: RecordTotal and the extents from the record file, PlotLast =
    // RecordTotal, the view window = the extents (MinX, MinY, MaxX, MaxY), CurTool = 0,
    // then SetCoords(canvas). Hourglass pointer meanwhile. Raises RunTimeError when the
    // file holds more than 32767 records or SetCoords faults.
    void ComputeExtents(DrawSurface& canvas);

    // The view of a freshly opened program and of Zoom Extents: the extents pass, its fit,
    // then SaveView and ZoomOut, so the drawing gets a margin of 0.3 FitSpan on every side
    // and Zoom Previous shows the tight extents. Raises as ComputeExtents does.
    void ExtentsWithMargin(DrawSurface& canvas);

    // View.SetCoords(canvas).
    void SetCoords(DrawSurface& canvas);

    // The plot pass: draws records 1 (or SlowResume when slow motion resumes) to PlotLast
    // onto `canvas`, then the axis. Clears the canvas first unless slow motion runs.
    // Returns at once, drawing nothing, while slow motion is paused with SlowResume >= 2;
    // stops at the next record when a key pauses it meanwhile. When the pass reaches
    // RecordTotal it ends playback: CurTool = 0, SlowPaused = StepMode = false, the record
    // buffer's start and end coordinates zeroed, SlowResume = SourceLine = 1, slow motion
    // off, and the pass-ended hook runs. A record that cannot be read ends the pass there,
    // keeping what was drawn (no axis, no resets). Never raises.
    void GetRecords(DrawSurface& canvas);

    // Draws the record buffer with CurrentColor; while slow motion runs, the slow-motion
    // hook runs first. Never raises.
    void DrawEntity(DrawSurface& canvas);

    // The colour rule: CurTool = toolNum; with "ToolColor" on, CurrentColor = the colour of
    // the first of ToolColors entries 0 .. ToolChangeCount - 1 (at most 10) whose tool
    // number is toolNum, and unchanged when none is (a record then takes the colour of
    // the one before it, on purpose); with "ToolColor" off, CurrentColor = "DefaultColor".
    void ChooseColor(std::int32_t toolNum);

    // The axis, when "Show Axis" is on, in "Axis Color" and "Axis Line" (the axis object's
    // style goes back to solid afterwards); the canvas line style is solid afterwards in
    // every case. Never raises.
    void DrawAxis(DrawSurface& canvas);

    // Runs before each entity while slow motion is on: marks the source line and waits.
    // A RunTimeError from it is swallowed, like any error inside drawing.
    void SetSlowMotionHook(std::function<void()> hook) { slowMotionHook_ = std::move(hook); }
    // Runs when a pass has drawn the whole program, after the playback flags are reset:
    // clear the check marks of single step and slow motion; when slowMotionEnded, also
    // restore the code label and the toolbar.
    void SetPassEndedHook(std::function<void(bool slowMotionEnded)> hook)
    {
        passEndedHook_ = std::move(hook);
    }

private:
    void EndOfProgram();

    const Settings& settings_;
    const ToolColorTable& toolColors_;
    const TranslationState& translation_;
    PlaybackState& playback_;
    EntityRecord& record_;
    UserDialogs& dialogs_;
    EventPump& events_;
    std::function<std::string()> recordFilePath_;

    EntityRenderer renderer_;
    CAxis axis_;
    std::function<void()> slowMotionHook_;
    std::function<void(bool)> passEndedHook_;
    std::vector<std::uint8_t> bulk_; // the records of a full-speed pass, read in one go
};

} // namespace backplot
