#include "Stepper.h"

#include "DetailsReport.h"
#include "PlaybackTexts.h"
#include "RecordFile.h"
#include "RunTimeError.h"
#include "TranslationTexts.h"

namespace backplot {

Stepper::Stepper(Plotter& plotter, DrawSurface& canvas, Translator& translator, PlaybackState& playback,
                 UserDialogs& dialogs, PlaybackHost& host)
    : plotter_(plotter), canvas_(canvas), translator_(translator), playback_(playback), dialogs_(dialogs), host_(host)
{
}

void Stepper::Start()
{
    // The playback buttons by key; the view buttons keep their state.
    host_.ToolbarForStepping();
    host_.SetStepChecked(true);
    // The listing first: the canvas gives it room, and the scale is set for the canvas
    // the steps will be drawn on, so they land where a redraw would put them.
    host_.StartStepListing();
    try {
        plotter_.SetCoords(canvas_);
    } catch (const RunTimeError&) {
        // A view that cannot be fitted keeps the scale it had; stepping still draws.
    }
    plotter_.PlotLast = 0;
    plotter_.ToolChangesSeen = 0;
    // Given back by the S and Enter keys only.
    host_.SetDetailsEnabled(false);
    // A clean canvas with the axis.
    canvas_.Clear();
    plotter_.DrawAxis(canvas_);
}

void Stepper::Step()
{
    if (!playback_.StepMode)
        Start();
    playback_.StepMode = true;
    host_.SetCodeText("");
    ElementStep(canvas_);
    host_.FocusCanvas();
}

void Stepper::ElementStep(DrawSurface& surface)
{
    const std::int16_t before = plotter_.PlotLast;
    try {
        CheckedIncrement(plotter_.PlotLast);
        // Past the last record stepping ends without a word; the toolbar and menus
        // stay as stepping left them until Enter, Esc or a command restores them. The
        // record file is not needed for that, so with no program loaded (no records,
        // perhaps no file) the first step simply ends stepping again.
        if (plotter_.PlotLast > plotter_.RecordTotal) {
            plotter_.PlotLast = 1;
            plotter_.CurTool = 0;
            plotter_.ToolChangesSeen = 0;
            playback_.StepMode = false;
            EntityRecord& r = translator_.Record();
            r.StartX = r.StartY = r.StartZ = 0;
            r.EndX = r.EndY = r.EndZ = 0;
            return;
        }
        // The record, in its tool's colour (or the one before), over the picture.
        RecordFileReader reader;
        reader.Open(translator_.RecordFilePath());
        EntityRecord& record = translator_.Record();
        reader.Read(plotter_.PlotLast, record);
        plotter_.ChooseColor(record.ToolNum);
        plotter_.DrawEntity(surface);
        // The block as stored, all 60 characters, then two blanks.
        host_.SetCodeText(std::string(record.BlockTextView()) + "  ");
        // The buffer keeps the trimmed block, which the listing shows too.
        TrimBlockText(record);
        std::string_view block = record.BlockTextView();
        while (!block.empty() && block.back() == ' ')
            block.remove_suffix(1);
        host_.WriteStepListing(std::string(block));
    } catch (const RunTimeError&) {
        plotter_.PlotLast = before;
        dialogs_.Message(texts::ErrorOpeningFile, texts::MessageTitle, MsgIcon::None, MsgButtons::Ok);
    }
}

} // namespace backplot
