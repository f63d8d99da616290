// Drawing speed: the extents pass and the plot pass of the largest program the translator
// accepts (32,767 lines) onto a full-HD picture, and the whole open command of the main
// window from the dialog's answer to the finished picture. A plot pass should take under
// 40 ms, an open under 150 ms, so that zooming feels immediate and opening barely waits.

#include "IdleEventPump.h"
#include "OpeningDialogs.h"
#include "ProgramGenerator.h"
#include "QuietDialogs.h"
#include "ScratchFolder.h"
#include "ScratchSettings.h"

#include "CanvasWidget.h"
#include "ImageSurface.h"
#include "PlaybackState.h"
#include "Plotter.h"
#include "Settings.h"
#include "Translator.h"
#include "frmBackplot.h"

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

namespace backplot::bench {
namespace {

constexpr int PictureWidth = 1920;
constexpr int PictureHeight = 1080;

// Pixels of the picture that are not the white background.
std::int64_t DrawnPixels(const QImage& picture)
{
    const QRgb white = qRgb(255, 255, 255);
    std::int64_t drawn = 0;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            if ((row[x] | 0xFF000000u) != white)
                ++drawn;
    }
    return drawn;
}

// The extents pass, the open command's margin and the plot pass over a record file
// translated once beforehand.
void BM_PlotPass(benchmark::State& state)
{
    ScratchFolder folder;
    QuietDialogs dialogs;
    IdleEventPump events;
    PlaybackState playback;
    Translator translator(dialogs, events, playback);
    translator.SetDataFolder(folder.Folder());
    const ProgramGenerator generator;
    const std::string source = generator.WriteTo(folder.Path(), "generated.nc");
    translator.ResetForNewProgram();
    if (!translator.NormaliseFile(source, TempFileName)) {
        state.SkipWithError("the generated program could not be normalised");
        return;
    }
    translator.TranslateProgram();
    if (dialogs.MessageCount() != 0) {
        state.SkipWithError(("translation reported: " + dialogs.FirstMessage()).c_str());
        return;
    }

    const Settings settings;
    Plotter plotter(settings, translator.ToolColors(), translator.State(), playback, translator.Record(), dialogs,
                    events, [&translator] { return translator.RecordFilePath(); });
    ImageSurface picture(PictureWidth, PictureHeight);

    for (auto _ : state) {
        plotter.ComputeExtents(picture);
        plotter.View.SaveView();
        plotter.View.ZoomOut();
        plotter.SetCoords(picture);
        plotter.GetRecords(picture);
    }

    const int expected = generator.Result().Records;
    if (plotter.RecordTotal != expected || plotter.PlotIndex != expected) {
        state.SkipWithError(("expected " + std::to_string(expected) + " records drawn, the pass saw " +
                             std::to_string(plotter.RecordTotal) + " and stopped at " +
                             std::to_string(plotter.PlotIndex))
                                .c_str());
        return;
    }
    const std::int64_t drawn = DrawnPixels(picture.Image());
    if (drawn == 0 || dialogs.MessageCount() != 0) {
        state.SkipWithError("the plot pass left no picture or reported an error");
        return;
    }
    state.SetItemsProcessed(state.iterations() * expected);
    state.counters["records"] = expected;
    state.counters["drawn_pixels"] = static_cast<double>(drawn);
}
BENCHMARK(BM_PlotPass)->Unit(benchmark::kMillisecond)->UseRealTime();

// "&Open..." end to end in an offscreen main window whose canvas is 1920 x 1080:
// normalising, translating, the extents pass, the plot pass, the status line and the
// recent-files list, with the window's own event processing in between.
void BM_OpenToPicture(benchmark::State& state)
{
    const ScratchSettings settingsScope;
    ScratchFolder folder;
    const ProgramGenerator generator;
    OpeningDialogs dialogs;
    dialogs.Program = generator.WriteTo(folder.Path(), "generated.nc");

    frmBackplot window(&dialogs);
    window.translator().SetDataFolder(folder.Folder());
    window.show();
    QApplication::processEvents();
    const QSize frame = window.size() - window.canvas().size();
    window.resize(PictureWidth + frame.width(), PictureHeight + frame.height());
    QApplication::processEvents();
    if (window.canvas().Picture().size() != QSize(PictureWidth, PictureHeight)) {
        state.SkipWithError("the canvas could not be given the full-HD size");
        return;
    }

    for (auto _ : state) {
        dialogs.Reset();
        window.OpenFile();
    }

    const int expected = generator.Result().Records;
    if (dialogs.MessageCount() != 0) {
        state.SkipWithError(("the open reported: " + dialogs.FirstMessage()).c_str());
        return;
    }
    if (window.plotter().RecordTotal != expected || window.lblCode()->text() != QStringLiteral(" generated.nc")) {
        state.SkipWithError("the open did not draw the whole program");
        return;
    }
    const std::int64_t drawn = DrawnPixels(window.canvas().Picture());
    if (drawn == 0) {
        state.SkipWithError("the open left no picture");
        return;
    }
    state.SetItemsProcessed(state.iterations() * generator.Result().Lines);
    state.counters["records"] = expected;
    state.counters["drawn_pixels"] = static_cast<double>(drawn);
}
BENCHMARK(BM_OpenToPicture)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace backplot::bench
