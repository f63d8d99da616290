#include "PartialPlots.h"

#include "PlaybackTexts.h"
#include "RecordFile.h"
#include "ResumeNext.h"
#include "RunTimeError.h"
#include "ToolChangePalette.h"
#include "TranslationTexts.h"
#include "frmTool1.h"

namespace backplot {

namespace {

// "Error opening file!" or "Error reading file!" and, on a line of its own, the path.
std::string FileMessage(const char* what, const std::string& path)
{
    std::string text = what;
    text += "\r\n";
    text += path;
    return text;
}

// The hourglass for the length of a pass, back to the arrow however it ends.
class Hourglass {
public:
    explicit Hourglass(UserDialogs& dialogs) : dialogs_(dialogs) { dialogs_.SetPointer(MousePointer::Hourglass); }
    ~Hourglass() { dialogs_.SetPointer(MousePointer::Default); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    UserDialogs& dialogs_;
};

} // namespace

PartialPlots::PartialPlots(Plotter& plotter, Translator& translator, PlaybackState& playback,
                           const Settings& settings, UserDialogs& dialogs, EventPump& events)
    : plotter_(plotter), translator_(translator), playback_(playback), settings_(settings), dialogs_(dialogs),
      events_(events)
{
}

std::string PartialPlots::ToolChangeMessage(std::int16_t toolChanges)
{
    std::string text = texts::ToolChangesBefore;
    text += std::to_string(toolChanges);
    text += texts::ToolChangesAfter;
    return text;
}

std::string PartialPlots::ToolNumberFaultMessage(std::string_view typed, ConversionFault fault)
{
    const std::string shown(TrimmedBlanks(typed));
    if (fault == ConversionFault::OutOfRange)
        return "The tool number \"" + shown + "\" is out of range. Enter a tool change number such as 1, 2 or 3.";
    return "\"" + shown + "\" is not a number. Enter a tool change number such as 1, 2 or 3.";
}

void PartialPlots::ZeroStartAndEnd()
{
    EntityRecord& r = translator_.Record();
    r.StartX = r.StartY = r.StartZ = 0;
    r.EndX = r.EndY = r.EndZ = 0;
}

void PartialPlots::ToolToEofCommand(DrawSurface& canvas)
{
    if (ToolFromDefault.empty())
        ToolFromDefault.assign(1, '1'); // not = "1": GCC 12 warns falsely (-Wrestrict) on that
    const std::string answer =
        dialogs_.TextPrompt(texts::ToolFromPrompt, texts::ToolFromTitle, ToolFromDefault);

    // An answer that is no number stops here, keeping the default as it was.
    if (!answer.empty()) {
        ConversionFault fault = ConversionFault::None;
        const std::optional<std::int32_t> tool = ConvertedInt32(answer, fault);
        if (!tool) {
            dialogs_.Message(ToolNumberFaultMessage(answer, fault), texts::MessageTitle, MsgIcon::Exclamation,
                             MsgButtons::Ok);
            return;
        }
        PlotFrom(canvas, *tool);
    }

    ToolFromDefault = ConvertedValueText(answer);
}

void PartialPlots::ToolToToolCommand(DrawSurface& canvas, QWidget* mainWindow, const std::function<void()>& redraw)
{
    TranslationState& state = translator_.State();
    {
        frmTool1 dialog(mainWindow, FirstTool, SecondTool, state.AbortTranslation, dialogs_);
        dialog.exec();
    }
    if (state.AbortTranslation) {
        state.AbortTranslation = false;
        if (redraw)
            redraw();
        return;
    }
    PlotToolToTool(canvas, FirstTool, SecondTool);
}

void PartialPlots::PlotFrom(DrawSurface& canvas, std::int32_t toolNum)
{
    const Hourglass pointer(dialogs_);

    ResumeNext([&] { canvas.Clear(); });
    plotter_.DrawAxis(canvas);
    plotter_.CurTool = 0;

    // Every record is read and coloured, none is drawn.
    const bool read = ReadRecords([&](const EntityRecord& record) {
        plotter_.ChooseColor(record.ToolNum);
        if (playback_.SlowMode)
            events_.ProcessEvents();
        return true;
    });
    if (!read)
        return;

    // The count is the last tool-to-tool pass's.
    if (toolNum > plotter_.ToolChangesSeen)
        dialogs_.Message(ToolChangeMessage(plotter_.ToolChangesSeen), texts::MessageTitle, MsgIcon::Information,
                         MsgButtons::Ok);

    if (plotter_.PlotLast >= plotter_.RecordTotal) {
        plotter_.CurTool = 0;
        plotter_.CurrentColor = static_cast<std::uint32_t>(settings_.DefaultColor);
        playback_.StepMode = false;
        ZeroStartAndEnd();
    }
}

void PartialPlots::PlotToolToTool(DrawSurface& canvas, std::int16_t firstTool, std::int16_t secondTool)
{
    const Hourglass pointer(dialogs_);

    ResumeNext([&] { canvas.Clear(); });
    plotter_.DrawAxis(canvas);
    plotter_.CurTool = 0;
    plotter_.ToolChangesSeen = 0;
    bool drawing = false;

    const bool read = ReadRecords([&](const EntityRecord& record) {
        // A tool change counts, may turn drawing on, and picks the colour by its order.
        std::int16_t& changes = plotter_.ToolChangesSeen;
        if (record.ToolNum != plotter_.CurTool) {
            ++changes;
            if (changes == firstTool)
                drawing = true;
            if (changes > 15)
                changes = 0;
            plotter_.CurrentColor = changes > 0 ? ToolChangePalette[static_cast<std::size_t>(changes - 1)]
                                                : static_cast<std::uint32_t>(settings_.DefaultColor);
        }
        plotter_.CurTool = record.ToolNum;
        if (playback_.SlowMode)
            events_.ProcessEvents();
        // The record that starts tool change secondTool is not drawn.
        if (changes == secondTool)
            return false;
        if (drawing)
            plotter_.DrawEntity(canvas);
        return true;
    });
    if (!read)
        return;

    if (secondTool > plotter_.ToolChangesSeen)
        dialogs_.Message(ToolChangeMessage(plotter_.ToolChangesSeen), texts::MessageTitle, MsgIcon::None, MsgButtons::Ok);

    if (plotter_.PlotLast >= plotter_.RecordTotal) {
        plotter_.CurTool = 0;
        playback_.StepMode = false;
        ZeroStartAndEnd();
    }
}

bool PartialPlots::ReadRecords(const std::function<bool(const EntityRecord&)>& each)
{
    const std::string path = translator_.RecordFilePath();
    EntityRecord& record = translator_.Record();
    RecordFileReader reader;
    try {
        reader.Open(path);
    } catch (const RunTimeError&) {
        dialogs_.Message(FileMessage(texts::ErrorOpeningFile, path), texts::MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
        return false;
    }
    for (std::int32_t n = 1; n <= plotter_.PlotLast; ++n) {
        try {
            reader.Read(n, record);
        } catch (const RunTimeError&) {
            dialogs_.Message(FileMessage("Error reading file!", path), texts::MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
            return false;
        }
        if (!each(record))
            break;
    }
    return true;
}

} // namespace backplot
