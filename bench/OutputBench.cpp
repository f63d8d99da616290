// Output speed on the largest program the translator accepts (32,767 lines): the DXF export
// (the re-run of every stored block plus the text written to a file) should take under
// 100 ms, and the print of the opened view into a PDF file under 1 s.

#include "BenchSupport.h"
#include "ProgramGenerator.h"

#include "DxfExport.h"
#include "OutputCommands.h"
#include "Plotter.h"
#include "ScaleSurface.h"
#include "Settings.h"

#include <QString>
#include <benchmark/benchmark.h>
#include <filesystem>

namespace backplot::bench {
namespace {

// The view the window shows right after opening, on a full-HD canvas.
constexpr int CanvasWidth = 1920;
constexpr int CanvasHeight = 1080;

// Records of the generated program that a drawing holds (all but the rapids).
int DrawnRecords(Translator& t)
{
    RecordFileReader reader;
    reader.Open(t.RecordFilePath());
    EntityRecord record;
    int drawn = 0;
    for (std::int32_t n = 1; n <= reader.RecordTotal(); ++n) {
        reader.Read(n, record);
        drawn += record.MoveType != 0;
    }
    return drawn;
}

void BM_DxfExportGenerated(benchmark::State& state)
{
    BenchTranslator bench;
    const ProgramGenerator generator;
    bench.Translate(generator.WriteTo(bench.Folder.Path(), "generated.nc"));
    if (bench.Dialogs.Messages != 0)
        return state.SkipWithError(("translation reported: " + bench.Dialogs.FirstMessage).c_str());
    Translator& t = bench.T;
    const std::string path = (bench.Folder.Path() / "generated.dxf").string();
    const DxfCanvasScale canvas{-12.5f, -262.5f, 425.0f, 239.0625f};

    std::string error;
    for (auto _ : state) {
        // Each export meets the program's tool changes again and the count carries over;
        // from zero, the nine of this program fit the table every time.
        t.State().ToolChangeCount = 0;
        if (!DxfExport(t, bench.Dialogs).ExportTo(path, canvas, error))
            return state.SkipWithError(error.c_str());
    }

    // Every cut, arc and circle is in the drawing: count its entities.
    const std::string text = test::ReadAll(path);
    int entities = 0;
    for (const char* kind : {"\r\nLINE\r\n", "\r\nCIRCLE\r\n", "\r\nARC\r\n"})
        for (std::size_t at = text.find(kind); at != std::string::npos; at = text.find(kind, at + 1))
            ++entities;
    const int expected = DrawnRecords(t);
    if (entities != expected || bench.Dialogs.Messages != 0)
        return state.SkipWithError(("expected " + std::to_string(expected) + " entities, wrote " +
                                    std::to_string(entities) + ", met " + std::to_string(bench.Dialogs.Messages) +
                                    " errors")
                                       .c_str());
    state.counters["entities"] = entities;
    state.counters["bytes"] = static_cast<double>(text.size());
}
BENCHMARK(BM_DxfExportGenerated)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_PrintGeneratedToPdf(benchmark::State& state)
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
    ScaleSurface canvas(CanvasWidth, CanvasHeight);
    plotter.ExtentsWithMargin(canvas);
    const ViewTransform opened = plotter.View;

    OutputCommands output;
    const std::filesystem::path pdf = bench.Folder.Path() / "generated.pdf";
    output.PrintToPdf(QString::fromStdString(pdf.string()));
    for (auto _ : state) {
        plotter.View = opened; // printing makes the page's window the view
        if (!output.Print(plotter, t, settings, bench.Dialogs))
            return state.SkipWithError("nothing printed");
    }
    if (bench.Dialogs.Messages != 0)
        return state.SkipWithError(("printing reported: " + bench.Dialogs.FirstMessage).c_str());
    state.counters["records"] = plotter.RecordTotal;
    state.counters["pdf_bytes"] = static_cast<double>(std::filesystem::file_size(pdf));
}
BENCHMARK(BM_PrintGeneratedToPdf)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace backplot::bench
