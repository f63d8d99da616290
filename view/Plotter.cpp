#include "Plotter.h"

#include "ExtentsPass.h"
#include "RecordFile.h"
#include "ResumeNext.h"
#include "RunTimeError.h"

#include <algorithm>

namespace backplot {

namespace {

// The hourglass for the length of a pass, back to the arrow however the pass ends.
class PointerScope {
public:
    PointerScope(UserDialogs& dialogs, MousePointer pointer) : dialogs_(dialogs)
    {
        dialogs_.SetPointer(pointer);
    }
    ~PointerScope() { dialogs_.SetPointer(MousePointer::Default); }
    PointerScope(const PointerScope&) = delete;
    PointerScope& operator=(const PointerScope&) = delete;

private:
    UserDialogs& dialogs_;
};

} // namespace

Plotter::Plotter(const Settings& settings, const ToolColorTable& toolColors,
                 const TranslationState& translation, PlaybackState& playback, EntityRecord& record,
                 UserDialogs& dialogs, EventPump& events, std::function<std::string()> recordFilePath)
    : settings_(settings), toolColors_(toolColors), translation_(translation), playback_(playback),
      record_(record), dialogs_(dialogs), events_(events), recordFilePath_(std::move(recordFilePath)),
      renderer_(settings, View)
{
}

void Plotter::ComputeExtents(DrawSurface& canvas)
{
    {
        PointerScope pointer(dialogs_, MousePointer::Hourglass);
        const Extents box = ExtentsPass(recordFilePath_(), record_);
        RecordTotal = box.RecordTotal;
        PlotLast = RecordTotal;
        View.MinX = box.MinX;
        View.MinY = box.MinY;
        View.MaxX = box.MaxX;
        View.MaxY = box.MaxY;
        View.ViewX1 = View.MinX;
        View.ViewY1 = View.MinY;
        View.ViewX2 = View.MaxX;
        View.ViewY2 = View.MaxY;
    }
    CurTool = 0;
    SetCoords(canvas);
}

void Plotter::ExtentsWithMargin(DrawSurface& canvas)
{
    ComputeExtents(canvas);
    SetCoords(canvas);
    View.SaveView();
    View.ZoomOut();
    SetCoords(canvas);
}

void Plotter::SetCoords(DrawSurface& canvas) { View.SetCoords(canvas); }

void Plotter::ChooseColor(std::int32_t toolNum)
{
    CurTool = toolNum;
    if (!settings_.ToolColor) {
        CurrentColor = static_cast<std::uint32_t>(settings_.DefaultColor);
        return;
    }
    const int entries = std::min<int>(translation_.ToolChangeCount, ToolColorTable::Size);
    for (int i = 0; i < entries; ++i) {
        if (toolColors_[i].ToolNumber == CurTool) {
            CurrentColor = toolColors_[i].Color;
            return;
        }
    }
    // No entry for this tool: the colour of the record before stays.
}

void Plotter::DrawEntity(DrawSurface& canvas)
{
    if (playback_.SlowMode && slowMotionHook_)
        ResumeNext(slowMotionHook_);
    renderer_.DrawEntity(canvas, record_, CurrentColor);
}

void Plotter::GetRecords(DrawSurface& canvas)
{
    // The arrow stays while slow motion runs: the user keeps control.
    PointerScope pointer(dialogs_, playback_.SlowMode ? MousePointer::Default : MousePointer::Hourglass);
    if (!playback_.SlowMode)
        ResumeNext([&] { canvas.Clear(); });

    CurTool = 0;
    RecordFileReader reader;
    try {
        reader.Open(recordFilePath_());
    } catch (const RunTimeError&) {
        return;
    }

    // First record: a paused pass keeps its place, a resumed one goes on from it.
    std::int32_t first = 1;
    if (playback_.SlowMode && playback_.SlowResume >= 2) {
        if (playback_.SlowPaused) {
            PlotIndex = playback_.SlowResume;
            return;
        }
        first = playback_.SlowResume;
    } else {
        PlotIndex = 1;
        playback_.SlowResume = 1;
    }

    // At full speed nothing can change the file during the pass, so its records are read
    // in one go; slow motion lets events run between records and reads each when it comes.
    std::int32_t inMemory = -1; // records read in one go, -1 when read one at a time
    if (!playback_.SlowMode) {
        try {
            inMemory = reader.ReadMany(first, PlotLast, bulk_);
        } catch (const RunTimeError&) {
            return;
        }
    }

    for (std::int32_t n = first; n <= PlotLast; ++n) {
        PlotIndex = static_cast<std::int16_t>(n);
        playback_.SlowResume = PlotIndex;
        if (playback_.SlowPaused)
            return;
        if (inMemory >= 0) {
            if (n - first >= inMemory)
                return; // past the file's last whole record: what was drawn so far stays
            record_ = DecodeRecord(std::span<const std::uint8_t, EntityRecord::Size>(
                bulk_.data() + static_cast<std::size_t>(n - first) * EntityRecord::Size, EntityRecord::Size));
        } else {
            try {
                reader.Read(n, record_);
            } catch (const RunTimeError&) {
                return; // what was drawn so far stays
            }
        }
        ChooseColor(record_.ToolNum);
        if (playback_.SlowMode)
            events_.ProcessEvents();
        DrawEntity(canvas);
    }

    reader.Close();
    DrawAxis(canvas);

    // The whole program drawn: playback is over.
    if (PlotLast >= RecordTotal)
        EndOfProgram();
}

void Plotter::EndOfProgram()
{
    CurTool = 0;
    playback_.SlowPaused = false;
    playback_.StepMode = false;
    record_.StartX = record_.StartY = record_.StartZ = 0;
    record_.EndX = record_.EndY = record_.EndZ = 0;
    playback_.SlowResume = 1;
    playback_.SourceLine = 1;
    const bool slowMotionEnded = playback_.SlowMode;
    if (slowMotionEnded) {
        playback_.SlowPaused = false;
        playback_.SlowMode = false;
    }
    if (passEndedHook_)
        passEndedHook_(slowMotionEnded);
}

void Plotter::DrawAxis(DrawSurface& canvas)
{
    if (settings_.ShowAxis) {
        axis_.SetAxisColor(static_cast<std::uint32_t>(settings_.AxisColor));
        axis_.SetDrawStyle(settings_.AxisLine);
        axis_.DrawAxis(canvas);
        axis_.SetDrawStyle(0);
    }
    ResumeNext([&] { canvas.SetDrawStyle(DrawStyle::Solid); });
}

} // namespace backplot
