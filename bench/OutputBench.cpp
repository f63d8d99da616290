// Output speed on the largest program the translator accepts (32,767 lines): the DXF export
// (the re-run of every stored block plus the text written to a file) should take under
// 100 ms, and the print of the opened view into a PDF file under 1 s.

#include "BenchSupport.h"

#include "DxfExport.h"
#include "OutputCommands.h"
#include "ScaleSurface.h"

#include <QString>
#include <filesystem>

namespace backplot::bench {
namespace {

void BM_DxfExportGenerated(benchmark::State& state)
{
    BenchTranslator bench;
    if (!bench.TranslateGenerated(ProgramGenerator(), state))
        return;
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

    // Every cut, arc and circle is in the drawing: count its entities against the records
    // that a drawing holds (all but the rapids).
    const std::string text = test::ReadAll(path);
    int entities = 0, expected = 0;
    for (const char* kind : {"\r\nLINE\r\n", "\r\nCIRCLE\r\n", "\r\nARC\r\n"})
        for (std::size_t at = text.find(kind); at != std::string::npos; at = text.find(kind, at + 1))
            ++entities;
    bench.ForEachRecord([&](const EntityRecord& record) { expected += record.MoveType != 0; });
    if (entities != expected || bench.Dialogs.Messages != 0)
        return Skip(state, "expected ", expected, " entities, wrote ", entities, ", met ", bench.Dialogs.Messages,
                    " errors");
    state.counters["entities"] = entities;
    state.counters["bytes"] = static_cast<double>(text.size());
}
BENCHMARK(BM_DxfExportGenerated)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_PrintGeneratedToPdf(benchmark::State& state)
{
    BenchTranslator bench;
    if (!bench.TranslateGenerated(ProgramGenerator(), state))
        return;
    Plotter& plotter = bench.Plot;
    ScaleSurface canvas(PictureWidth, PictureHeight); // the view the window shows right after opening
    plotter.ExtentsWithMargin(canvas);
    const ViewTransform opened = plotter.View;

    OutputCommands output;
    const std::filesystem::path pdf = bench.Folder.Path() / "generated.pdf";
    output.PrintToPdf(QString::fromStdString(pdf.string()));
    for (auto _ : state) {
        plotter.View = opened; // printing makes the page's window the view
        if (!output.Print(plotter, bench.T, bench.Options, bench.Dialogs))
            return state.SkipWithError("nothing printed");
    }
    if (bench.Dialogs.Messages != 0)
        return Skip(state, "printing reported: ", bench.Dialogs.FirstMessage);
    state.counters["records"] = plotter.RecordTotal;
    state.counters["pdf_bytes"] = static_cast<double>(std::filesystem::file_size(pdf));
}
BENCHMARK(BM_PrintGeneratedToPdf)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace backplot::bench
