#pragma once

#include "../app/ScriptedDialogs.h"
#include "PartialPlots.h"
#include "RecordFile.h"
#include "RecordingSurface.h"
#include "TestPaths.h"

#include <functional>
#include <ostream>
#include <vector>

namespace backplot::test {

// Counts the calls of "let pending events run"; `onCall` plays the keys a user presses
// meanwhile.
struct CountingEvents : EventPump {
    int calls = 0;
    std::function<void(int call)> onCall;
    void ProcessEvents() override { onCall ? onCall(++calls) : void(++calls); }
};

// Cut n (from 1) runs from (n, 0) to (n, -1) in stored units, with the given tool.
inline EntityRecord Cut(int n, std::int32_t tool)
{
    EntityRecord r;
    r.MoveType = 1;
    r.StartX = r.EndX = static_cast<float>(n);
    r.EndY = -1;
    r.ToolNum = tool;
    return r;
}

// One straight cut as drawn: its X and its colour.
struct Drawn {
    double x;
    std::uint32_t color;
    bool operator==(const Drawn&) const = default;
    friend void PrintTo(const Drawn& d, std::ostream* os) { *os << "cut " << d.x << " colour " << std::hex << d.color; }
};

// The translator, plotter and partial plots of a window, on a scratch data folder: the
// rig of the playback tests.
struct Rig {
    ScratchDir dir;
    ScriptedDialogs dialogs;
    CountingEvents events;
    PlaybackState playback;
    Settings settings;
    Translator translator{dialogs, events, playback};
    Plotter plotter{settings,         translator.ToolColors(), translator.State(), playback, translator.Record(),
                    dialogs,          events,                  [this] { return translator.RecordFilePath(); }};
    PartialPlots plots{plotter, translator, playback, settings, dialogs, events};
    RecordingSurface canvas{400, 200};

    Rig() { translator.SetDataFolder(dir.Folder()); }

    // Writes cut n with tools[n - 1], fits the view with its margin (so the axis shows) and
    // forgets what that drew and asked.
    void Load(const std::vector<std::int32_t>& tools, DrawSurface* surface = nullptr)
    {
        {
            RecordFileWriter writer;
            writer.Open(translator.RecordFilePath());
            for (std::size_t i = 0; i < tools.size(); ++i)
                writer.Write(static_cast<std::int32_t>(i + 1), Cut(static_cast<int>(i + 1), tools[i]));
        }
        plotter.ExtentsWithMargin(surface ? *surface : canvas);
        canvas.ForgetPrimitives();
        dialogs.Pointers.clear();
    }
    // The cuts drawn, by their first half-line (from the start toward the middle).
    std::vector<Drawn> CutsDrawn() const
    {
        std::vector<Drawn> cuts;
        for (const auto& p : canvas.Primitives())
            if (p.Type == RecordingSurface::Kind::Line && p.X1 == p.X2 && p.Y1 == 0 && p.Y2 == -0.5)
                cuts.push_back({p.X1, p.Color});
        return cuts;
    }
};

} // namespace backplot::test
