#pragma once

// A plotter on a record file of its own, with a recording canvas: the rig of the drawing
// tests.

#include "Plotter.h"
#include "RecordFile.h"
#include "RecordingSurface.h"
#include "TestPaths.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace backplot::test {

using Kind = RecordingSurface::Kind;

// Messages are a test failure unless a test expects them (then it reads `messages`).
struct QuietDialogs : UserDialogs {
    std::vector<MousePointer> pointers;
    std::vector<std::string> messages;
    bool expectMessages = false;
    MsgAnswer Message(const std::string& text, const std::string& title, MsgIcon, MsgButtons) override
    {
        if (!expectMessages)
            ADD_FAILURE() << "unexpected message: " << text;
        messages.push_back(title + ": " + text);
        return MsgAnswer::Ok;
    }
    std::optional<std::string> OpenFileName(const std::string&, const std::string&, const std::string&,
                                            const std::string&) override
    {
        return std::nullopt;
    }
    void SetPointer(MousePointer pointer) override { pointers.push_back(pointer); }
};

struct CountingEvents : EventPump {
    int calls = 0;
    std::function<void(int call)> onCall;
    void ProcessEvents() override { onCall ? onCall(++calls) : void(++calls); }
};

inline EntityRecord Cut(float x1, float y1, float x2, float y2, std::int32_t tool = 0)
{
    EntityRecord r;
    r.MoveType = 1;
    r.StartX = x1;
    r.StartY = y1;
    r.EndX = x2;
    r.EndY = y2;
    r.ToolNum = tool;
    return r;
}

// Cut number i runs from (i, 0) to (i, -1).
inline std::vector<EntityRecord> NumberedCuts(int count)
{
    std::vector<EntityRecord> records;
    for (int i = 1; i <= count; ++i)
        records.push_back(Cut(static_cast<float>(i), 0, static_cast<float>(i), -1));
    return records;
}

// A plotter on a record file of its own and a 400 x 200 recording canvas.
struct Rig {
    ScratchDir dir;
    std::string path = dir.Folder() + "TKZGraph.Dll";
    Settings settings;
    ToolColorTable toolColors;
    TranslationState translation;
    PlaybackState playback;
    EntityRecord record;
    QuietDialogs dialogs;
    CountingEvents events;
    Plotter plotter{settings, toolColors, translation, playback, record, dialogs, events, [this] { return path; }};
    RecordingSurface canvas{400, 200};

    // Writes the records and runs the extents pass, forgetting what it drew.
    void Load(const std::vector<EntityRecord>& records)
    {
        {
            RecordFileWriter writer;
            writer.Open(path);
            for (std::size_t i = 0; i < records.size(); ++i)
                writer.Write(static_cast<std::int32_t>(i + 1), records[i]);
        }
        plotter.ComputeExtents(canvas);
        canvas.ForgetPrimitives();
        dialogs.pointers.clear();
    }
    // Start X of every straight cut drawn (its first half-line), in drawing order.
    std::vector<double> CutsDrawn() const
    {
        std::vector<double> starts;
        const auto& log = canvas.Primitives();
        for (std::size_t i = 0; i + 2 < log.size(); ++i)
            if (log[i].Type == Kind::Line && log[i + 1].Type == Kind::Line && log[i + 2].Type == Kind::PSet) {
                starts.push_back(log[i].X1);
                i += 2;
            }
        return starts;
    }
    int Count(Kind kind) const
    {
        int n = 0;
        for (const auto& p : canvas.Primitives())
            n += p.Type == kind;
        return n;
    }
};

} // namespace backplot::test
