// Playback speed: one single block step and the step details report (each must be far
// below what a person notices, under 1 ms), a tool-to-tool pass over the largest program
// the translator accepts (32,767 lines) onto a full-HD picture, which should cost no more
// than an ordinary plot pass (40 ms), and a slow-motion replay, whose pace must be the
// slow time and which must let the keys in between every two records.

#include "BenchSupport.h"

#include "DetailsReport.h"
#include "ImageSurface.h"
#include "PartialPlots.h"
#include "SlowMotion.h"
#include "Stepper.h"

#include <chrono>

namespace backplot::bench {
namespace {

// The longest report there is: a milling arc, every value with six decimals.
void BM_DetailsReport(benchmark::State& state)
{
    EntityRecord arc;
    arc.MoveType = 2;
    arc.SetBlockText("N1234 G02 X12.3456 Y-7.891 Z-1.25 I-3.5 J4.25 F250.");
    arc.StartX = 1.5f, arc.StartY = -2.25f, arc.StartZ = -1.25f;
    arc.EndX = 12.3456f, arc.EndY = 7.891f, arc.EndZ = -1.25f;
    arc.CenterX = -2, arc.CenterY = -6.5f, arc.Radius = 5.5901699f;
    arc.StartAngle = 233.130102f, arc.EndAngle = 17.25f;
    arc.ToolNum = 12;
    std::size_t lines = 0;
    for (auto _ : state) {
        const std::vector<std::string> report = DetailsReport(arc, true);
        lines = report.size();
        benchmark::DoNotOptimize(report.data());
    }
    if (lines != 21)
        return Skip(state, "the arc report has ", lines, " lines, not 21");
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DetailsReport)->Unit(benchmark::kMicrosecond);

// Tool to tool from the first change to one past the last: every record is read and drawn
// in the colour of its tool change, and the pass ends with its "There is only" message.
void BM_PlotToolToTool(benchmark::State& state)
{
    BenchTranslator bench;
    if (!bench.TranslateGenerated(ProgramGenerator(), state))
        return;
    // The tool changes as the pass counts them, counted here from the records themselves.
    std::int16_t changes = 0;
    std::int32_t tool = 0;
    bench.ForEachRecord([&](const EntityRecord& record) {
        changes = static_cast<std::int16_t>(changes + (record.ToolNum != tool));
        tool = record.ToolNum;
    });

    Plotter& plotter = bench.Plot;
    PartialPlots plots(plotter, bench.T, bench.Playback, bench.Options, bench.Dialogs, bench.Events);
    ImageSurface picture(PictureWidth, PictureHeight);
    plotter.ExtentsWithMargin(picture);
    const auto last = static_cast<std::int16_t>(changes + 1);
    bench.Dialogs.Reset();
    for (auto _ : state)
        plots.PlotToolToTool(picture, 1, last);

    const std::string expected = PartialPlots::ToolChangeMessage(changes);
    const std::int64_t drawn = DrawnPixels(picture.Image());
    if (plotter.ToolChangesSeen != changes || bench.Dialogs.Messages != state.iterations() ||
        bench.Dialogs.FirstMessage != expected || drawn == 0)
        return Skip(state, "expected ", changes, " tool changes and \"", expected, "\" once a pass; the pass counted ",
                    plotter.ToolChangesSeen, " and said \"", bench.Dialogs.FirstMessage, "\" ",
                    bench.Dialogs.Messages, " times");
    state.SetItemsProcessed(state.iterations() * plotter.RecordTotal);
    state.counters["records"] = plotter.RecordTotal;
    state.counters["tool_changes"] = changes;
    state.counters["drawn_pixels"] = static_cast<double>(drawn);
}
BENCHMARK(BM_PlotToolToTool)->Unit(benchmark::kMillisecond)->UseRealTime();

// One step deep into the largest program: the record file opened, record n read and drawn
// alone over a full-HD picture, the block trimmed.
void BM_ElementStep(benchmark::State& state)
{
    BenchTranslator bench;
    if (!bench.TranslateGenerated(ProgramGenerator(), state))
        return;
    Plotter& plotter = bench.Plot;
    ImageSurface picture(PictureWidth, PictureHeight);
    plotter.ExtentsWithMargin(picture);
    PlaybackHost host;
    Stepper stepper(plotter, picture, bench.T, bench.Playback, bench.Dialogs, host);
    stepper.Step();
    plotter.PlotLast = 20000;
    for (auto _ : state) {
        stepper.ElementStep(picture);
        if (plotter.PlotLast >= plotter.RecordTotal)
            plotter.PlotLast = 20000;
    }
    if (bench.Dialogs.Messages != 0 || !bench.Playback.StepMode)
        state.SkipWithError("a step failed or ended the walk");
}
BENCHMARK(BM_ElementStep)->Unit(benchmark::kMicrosecond);

// Slow motion at Slow Time .05 over 100 records: the replay should take 5 s, and the
// longest stretch without event processing is how long a P or Esc can wait.
void BM_SlowMotionReplay(benchmark::State& state)
{
    using Clock = std::chrono::steady_clock;
    struct GapEvents : EventPump {
        Clock::time_point last = Clock::now();
        double longest = 0;
        int calls = 0;
        void ProcessEvents() override
        {
            const Clock::time_point now = Clock::now();
            longest = std::max(longest, std::chrono::duration<double>(now - last).count());
            last = now;
            ++calls;
        }
    } events;
    BenchTranslator bench;
    std::string program;
    for (int i = 0; i < 100; ++i)
        program += "G1 X" + std::to_string(i) + (i % 2 ? ". Y0.\n" : ". Y5.\n");
    bench.Translate(bench.Folder.Write("slow.nc", program));
    bench.Options.SlowTime = 0.05f;
    Translator& t = bench.T;
    Plotter plotter(bench.Options, t.ToolColors(), t.State(), bench.Playback, t.Record(), bench.Dialogs, events,
                    [&t] { return t.RecordFilePath(); });
    ImageSurface picture(PictureWidth, PictureHeight);
    plotter.ExtentsWithMargin(picture);
    PlaybackHost host;
    SlowMotion slow(plotter, picture, bench.Options, bench.Playback, host);
    double replay = 0;
    for (auto _ : state) {
        bench.Playback.SlowMode = true;
        events.longest = 0;
        events.calls = 0;
        const Clock::time_point start = Clock::now();
        events.last = start;
        plotter.GetRecords(picture);
        replay = std::chrono::duration<double>(Clock::now() - start).count();
    }
    if (plotter.RecordTotal != 100 || events.calls != 100 || bench.Playback.SlowMode)
        return state.SkipWithError("the replay did not run through the 100 records");
    state.counters["replay_s"] = replay;
    state.counters["longest_wait_for_keys_ms"] = events.longest * 1000;
}
BENCHMARK(BM_SlowMotionReplay)->Unit(benchmark::kSecond)->Iterations(1)->UseRealTime();

} // namespace
} // namespace backplot::bench
