// Drawing speed: the extents pass and the plot pass of the largest program the translator
// accepts (32,767 lines) onto a full-HD picture, and the whole open command of the main
// window from the dialog's answer to the finished picture. A plot pass should take under
// 20 ms of CPU time, an open under 150 ms, so that zooming feels immediate and opening
// barely waits.

#include "BenchSupport.h"
#include "ScratchSettings.h"

#include "CanvasWidget.h"
#include "ImageSurface.h"
#include "frmBackplot.h"

#include <QApplication>
#include <QLabel>
#include <QStandardPaths>

namespace backplot::bench {
namespace {

// The extents pass, the open command's margin and the plot pass over a record file
// translated once beforehand.
void BM_PlotPass(benchmark::State& state)
{
    BenchTranslator bench;
    const ProgramGenerator generator;
    if (!bench.TranslateGenerated(generator, state))
        return;
    Plotter& plotter = bench.Plot;
    ImageSurface picture(PictureWidth, PictureHeight);
    for (auto _ : state) {
        plotter.ExtentsWithMargin(picture);
        plotter.GetRecords(picture);
    }

    const int expected = generator.Result().Records;
    const std::int64_t drawn = DrawnPixels(picture.Image());
    if (plotter.RecordTotal != expected || plotter.PlotIndex != expected || drawn == 0 || bench.Dialogs.Messages != 0)
        return Skip(state, "expected ", expected, " records drawn; the pass saw ", plotter.RecordTotal, ", stopped at ",
                    plotter.PlotIndex, ", drew ", drawn, " pixels, met ", bench.Dialogs.Messages, " errors");
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
    // The per-user stores (settings, recent files, application data) in scratch folders.
    QStandardPaths::setTestModeEnabled(true);
    const test::ScratchSettings settingsScope;
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
        return Skip(state, "the open reported: ", dialogs.FirstMessage);
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
