#pragma once

#include "DrawSurface.h"
#include "NumberText.h"
#include "PlaybackState.h"
#include "Plotter.h"
#include "Settings.h"
#include "Translator.h"
#include "UserDialogs.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

class QWidget;

namespace backplot {

// The "Plot &From" commands: "Tool To &EOF" and "&Tool To Tool". One instance, owned by
// the main window next to the plotter, for the life of the process.
//
// Both passes read records 1..PlotLast of the translator's record file into the
// translator's record buffer, which must be the buffer the plotter was built with, and
// draw through the plotter (DrawEntity, DrawAxis) so the renderer's rules and the slow
// motion hook apply. They clear the canvas and draw the axis first, let pending events
// run after each record while slow motion is on, and show the hourglass meanwhile. They
// leave the plotter's view alone: the canvas scale is whatever the last SetCoords gave.
//
// A record file that cannot be opened or read shows "Error opening file!" or "Error
// reading file!" with the path and ends the pass there (the canvas keeps the axis and
// what was drawn). Neither pass raises.
class PartialPlots {
public:
    PartialPlots(Plotter& plotter, Translator& translator, PlaybackState& playback, const Settings& settings,
                 UserDialogs& dialogs, EventPump& events);

    PartialPlots(const PartialPlots&) = delete;
    PartialPlots& operator=(const PartialPlots&) = delete;

    std::int16_t FirstTool = 0;  // last tool-change numbers entered in "Plot Tool to Tool"
    std::int16_t SecondTool = 0;
    std::string ToolFromDefault; // default answer of the "Plot from" prompt; empty at start

    // "Tool To &EOF" (mnuTool1_Click): asks "Enter a Tool number value between 1 and 15"
    // (title "Plot from", default ToolFromDefault, "1" while that is empty; the range is
    // not checked); a non-empty answer runs PlotFrom with it as a 32-bit whole number,
    // and ToolFromDefault becomes the answer's numeric value as text ("0" after a cancel).
    // An answer that is not a number shows a message and changes nothing.
    void ToolToEofCommand(DrawSurface& canvas);

    // "&Tool To Tool" (mnuTool2_Click): shows "Plot Tool to Tool" (frmTool1) modally over
    // `mainWindow`. Cancelled: AbortTranslation is cleared and `redraw` (the "&Redraw"
    // command) runs; else PlotToolToTool(FirstTool, SecondTool).
    void ToolToToolCommand(DrawSurface& canvas, QWidget* mainWindow, const std::function<void()>& redraw);

    // Reads every record and colours it as the plot pass does (Plotter::ChooseColor) but
    // draws none of them: the canvas ends with the axis alone. Then, when toolNum exceeds
    // the plotter's ToolChangesSeen (as the last tool-to-tool pass left it; not recounted),
    // the message "There is only N tool change(s) in the program." with the information
    // icon. When PlotLast >= RecordTotal: CurTool = 0, CurrentColor = "DefaultColor",
    // StepMode off and the buffer's six start/end coordinates zeroed.
    void PlotFrom(DrawSurface& canvas, std::int32_t toolNum);

    // Draws from the first record of tool change firstTool up to, not including, the first
    // record of tool change secondTool. A tool change is a record whose ToolNum differs
    // from the record before (the first record counts unless its tool is 0, so T1, T2, T1
    // is three changes). ToolChangesSeen counts them from 0; each change takes the colour
    // ToolChangePalette[count - 1], and after 15 the count wraps to 0, which draws in
    // "DefaultColor". When secondTool exceeds the final count, the same message as PlotFrom
    // without an icon. When PlotLast >= RecordTotal: CurTool = 0, StepMode off and the
    // buffer's six start/end coordinates zeroed (CurrentColor keeps the last change's).
    void PlotToolToTool(DrawSurface& canvas, std::int16_t firstTool, std::int16_t secondTool);

    // "There is only N tool change(s) in the program."
    static std::string ToolChangeMessage(std::int16_t toolChanges);

    // The message for a tool number that could not be read (here and in frmTool1), naming
    // what was typed.
    static std::string ToolNumberFaultMessage(std::string_view typed, ConversionFault fault);

private:
    // Reads records 1 to PlotLast into the translator's buffer and hands each to `each`,
    // which returns false to stop early. False when the record file could not be opened or
    // read; the error has then been shown.
    bool ReadRecords(const std::function<bool(const EntityRecord&)>& each);
    void ZeroStartAndEnd();

    Plotter& plotter_;
    Translator& translator_;
    PlaybackState& playback_;
    const Settings& settings_;
    UserDialogs& dialogs_;
    EventPump& events_;
};

} // namespace backplot
