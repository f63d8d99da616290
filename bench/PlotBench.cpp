// Drawing speed: the extents pass and the plot pass of the largest program the translator
// accepts (32,767 lines) onto a full-HD picture, and the whole open command of the main
// window from the dialog's answer to the finished picture. A plot pass should take under
// 40 ms, an open under 150 ms, so that zooming feels immediate and opening barely waits.

#include "BenchSupport.h"
#include "ProgramGenerator.h"

#include "CanvasWidget.h"
#include "ImageSurface.h"
#include "Plotter.h"
#include "Settings.h"
#include "frmBackplot.h"

#include <QApplication>
#include <QLabel>
#include <benchmark/benchmark.h>

namespace backplot::bench {
namespace {

constexpr int PictureWidth = 1920;
constexpr int PictureHeight = 1080;

// The extents pass, the open command's margin and the plot pass over a record file
// translated once beforehand.
void BM_PlotPass(benchmark::State& state)
{
    BenchTranslator bench;
    const ProgramGenerator generator;
    bench.Translate(generator.WriteTo(bench.Folder.Path(), "generated.nc"));
    if (bench.Dialogs.Messages != 0)
        return state.SkipWithError(("translation reported: " + bench.Dialogs.FirstMessage).c_str());

    const Settings settings;
    Translator& t = bench.T;
    Plotter plotter(settings, t.ToolColors(), t.State(), bench.Playback, t.Record(), bench.Dialogs, bench.Events,
                    [&t] { return t.RecordFilePath(); });
    ImageSurface picture(PictureWidth, PictureHeight);
    for (auto _ : state) {
        plotter.ExtentsWithMargin(picture);
        plotter.GetRecords(picture);
    }

    const int expected = generator.Result().Records;
    const std::int64_t drawn = DrawnPixels(picture.Image());
    if (plotter.RecordTotal != expected || plotter.PlotIndex != expected || drawn == 0 || bench.Dialogs.Messages != 0)
        return state.SkipWithError(("expected " + std::to_string(expected) + " records drawn; the pass saw " +
                                    std::to_string(plotter.RecordTotal) + ", stopped at " +
                                    std::to_string(plotter.PlotIndex) + ", drew " + std::to_string(drawn) +
                                    " pixels, met " + std::to_string(bench.Dialogs.Messages) + " errors")
                                       .c_str());
    state.SetItemsProcessed(state.iterations() * expected);
    state.counters["records"] = expected;
    state.counters["drawn_pixels"] = static_cast<double>(drawn);
}
BENCHMARK(BM_PlotPass)->Unit(benchmark::kMillisecond)->UseRealTime();

// "&Open..." end to end in an offscreen main window whose canvas is 1920 x 1080: normalising,
// translating, the extents pass, the plot pass, the status line and the recent-files list,
// with the window's own event processing in between.
void BM_OpenToPicture(benchmark::State& state)
{
    const ScratchSettings settingsScope;
    test::ScratchDir folder;
    const ProgramGenerator generator;
    QuietDialogs dialogs;
    dialogs.Program = generator.WriteTo(folder.Path(), "generated.nc");

    frmBackplot window(&dialogs);
    window.translator().SetDataFolder(folder.Folder());
    window.show();
    QApplication::processEvents();
    const QSize frame = window.size() - window.canvas().size();
    window.resize(PictureWidth + frame.width(), PictureHeight + frame.height());
    QApplication::processEvents();
    if (window.canvas().Picture().size() != QSize(PictureWidth, PictureHeight))
        return state.SkipWithError("the canvas could not be given the full-HD size");

    for (auto _ : state) {
        dialogs.Reset();
        window.OpenFile();
    }

    const int expected = generator.Result().Records;
    const std::int64_t drawn = DrawnPixels(window.canvas().Picture());
    if (dialogs.Messages != 0)
        return state.SkipWithError(("the open reported: " + dialogs.FirstMessage).c_str());
    if (window.plotter().RecordTotal != expected || window.lblCode()->text() != QStringLiteral(" generated.nc") ||
        drawn == 0)
        return state.SkipWithError("the open did not draw the whole program");
    state.SetItemsProcessed(state.iterations() * generator.Result().Lines);
    state.counters["records"] = expected;
    state.counters["drawn_pixels"] = static_cast<double>(drawn);
}
BENCHMARK(BM_OpenToPicture)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace backplot::bench
