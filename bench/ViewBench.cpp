// Interaction speed: a zoom step on the largest program the translator accepts (32,767
// lines) must redraw a full-HD canvas in under 20 ms of CPU time, and a mouse move with the
// cross hairs on, which never redraws the picture, must take under 1 ms.

#include "BenchSupport.h"

#include "CanvasWidget.h"
#include "ImageSurface.h"
#include "ViewCommands.h"

#include <QApplication>

namespace backplot::bench {
namespace {

// SaveView, ZoomIn, SetCoords and the full plot pass, alternating with a zoom out so the
// view stays the same size from one pair to the next.
void BM_ZoomStep(benchmark::State& state)
{
    BenchTranslator bench;
    const ProgramGenerator generator;
    if (!bench.TranslateGenerated(generator, state))
        return;
    ImageSurface picture(PictureWidth, PictureHeight);
    ViewHost host;
    ViewCommands view(bench.Plot, picture, bench.Options, bench.Playback, bench.Dialogs, host);
    bench.Plot.ExtentsWithMargin(picture);
    bool in = true;
    for (auto _ : state) {
        in ? view.ZoomIn() : view.ZoomOut();
        in = !in;
    }
    if (bench.Dialogs.Messages != 0 || bench.Plot.PlotIndex != generator.Result().Records ||
        DrawnPixels(picture.Image()) == 0)
        return state.SkipWithError("the zoom did not draw the whole program");
    state.counters["records"] = generator.Result().Records;
}
BENCHMARK(BM_ZoomStep)->Unit(benchmark::kMillisecond)->UseRealTime();

// The canvas mouse with the cross hairs on: the readout texts and the two overlay lines,
// not the picture. The repaint of the two thin strips follows when events run.
void BM_CrossHairMouseMove(benchmark::State& state)
{
    BenchTranslator bench;
    bench.Options.CrossHairs = true;
    CanvasWidget canvas;
    canvas.resize(PictureWidth, PictureHeight);
    canvas.Surface().SetScale(0, 0, 192, 108);
    struct Host : ViewHost {
        CanvasWidget& canvas;
        explicit Host(CanvasWidget& c) : canvas(c) {}
        void ShowCrossHairs(float x, float y) override { canvas.ShowCrossHairs(x, y); }
    } host(canvas);
    ViewCommands view(bench.Plot, canvas.Surface(), bench.Options, bench.Playback, bench.Dialogs, host);
    for (int i = 0; auto _ : state) {
        view.MouseMove(false, static_cast<float>(i % 190), static_cast<float>(i % 100));
        ++i;
    }
    if (!canvas.CrossHairsVisible())
        state.SkipWithError("the cross hairs were not shown");
}
BENCHMARK(BM_CrossHairMouseMove)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace backplot::bench
