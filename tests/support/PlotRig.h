#pragma once

// A plotter on a record file of its own, with a recording canvas: the rig of the drawing
// tests.

#include "../app/ScriptedDialogs.h"
#include "Plotter.h"
#include "RecordFile.h"
#include "RecordingSurface.h"
#include "TestPaths.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace backplot::test {

using Kind = RecordingSurface::Kind;

struct CountingEvents : EventPump {
    int calls = 0;
    std::function<void(int call)> onCall;
    void ProcessEvents() override { onCall ? onCall(++calls) : void(++calls); }
};

inline EntityRecord Move(std::int16_t type, float x1, float y1, float x2, float y2, std::int32_t tool = 0)
{
    EntityRecord r;
    r.MoveType = type;
    r.StartX = x1, r.StartY = y1, r.EndX = x2, r.EndY = y2;
    r.ToolNum = tool;
    return r;
}

inline EntityRecord Cut(float x1, float y1, float x2, float y2, std::int32_t tool = 0)
{
    return Move(1, x1, y1, x2, y2, tool);
}

// Angles in degrees, as stored.
inline EntityRecord Arc(std::int16_t type, float cx, float cy, float radius, float startDeg, float endDeg)
{
    EntityRecord r;
    r.MoveType = type;
    r.CenterX = cx, r.CenterY = cy, r.Radius = radius, r.StartAngle = startDeg, r.EndAngle = endDeg;
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

// A plotter on a record file of its own and a 400 x 200 recording canvas. A message box
// fails the test unless it sets expectMessages.
struct Rig {
    ScratchDir dir;
    std::string path = dir.Folder() + "TKZGraph.Dll";
    Settings settings;
    ToolColorTable toolColors;
    TranslationState translation;
    PlaybackState playback;
    EntityRecord record;
    ScriptedDialogs dialogs;
    bool expectMessages = false;
    CountingEvents events;
    Plotter plotter{settings, toolColors, translation, playback, record, dialogs, events, [this] { return path; }};
    RecordingSurface canvas{400, 200};

    ~Rig() { EXPECT_TRUE(expectMessages || dialogs.Messages.empty()) << dialogs.Messages.front().Text; }

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
        dialogs.Pointers.clear();
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
