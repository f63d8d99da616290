// Translation speed: normalising a program and translating it into the record file, as
// the open command does, with the record file written to disk; timed on the wall clock,
// since writing the files is part of the cost. The translator should manage at least a
// million lines a second on a desktop machine.

#include "IdleEventPump.h"
#include "ProgramGenerator.h"
#include "QuietDialogs.h"
#include "ScratchFolder.h"

#include "PlaybackState.h"
#include "RecordFile.h"
#include "Translator.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

namespace backplot::bench {
namespace {

// Lines holding anything but blanks, as the translator counts them, and all lines.
struct LineTally {
    std::int64_t NonEmpty = 0;
    std::int64_t All = 0;
};

LineTally CountLines(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    LineTally tally;
    std::string line;
    while (std::getline(in, line)) {
        ++tally.All;
        for (const char c : line) {
            const auto u = static_cast<unsigned char>(c);
            if (u > 32 && u < 127) {
                ++tally.NonEmpty;
                break;
            }
        }
    }
    return tally;
}

// The largest program of the shared milling corpus, or an empty path.
std::filesystem::path LargestCorpusProgram()
{
    const std::filesystem::path folder = std::filesystem::path(BACKPLOT_SOURCE_DIR) / ".." / "shared" / "corpus" / "mill";
    std::filesystem::path largest;
    std::uintmax_t largestSize = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (!entry.is_regular_file())
            continue;
        const std::uintmax_t size = entry.file_size();
        if (size > largestSize) {
            largestSize = size;
            largest = entry.path();
        }
    }
    return largest;
}

// One translator with its seams, working in a scratch folder.
struct TranslationBench {
    ScratchFolder folder;
    QuietDialogs dialogs;
    IdleEventPump events;
    PlaybackState playback;
    Translator translator{dialogs, events, playback};

    TranslationBench() { translator.SetDataFolder(folder.Folder()); }

    // The open command's two steps for one program. False when normalising failed.
    bool Translate(const std::string& source)
    {
        translator.ResetForNewProgram();
        if (!translator.NormaliseFile(source, TempFileName))
            return false;
        translator.TranslateProgram();
        return true;
    }
};

bool Near(double a, double b) { return std::fabs(a - b) <= 1e-3 * (1 + std::fabs(b)); }

// The generated program checks the translation it times: one record per block, no
// message, and the last record ending where the program ends.
void BM_TranslateGenerated(benchmark::State& state)
{
    TranslationBench bench;
    const ProgramGenerator generator;
    const ProgramGenerator::Summary& expected = generator.Result();
    const std::string source = generator.WriteTo(bench.folder.Path(), "generated.nc");

    for (auto _ : state) {
        bench.dialogs.Reset();
        if (!bench.Translate(source)) {
            state.SkipWithError("the generated program could not be normalised");
            return;
        }
    }

    const TranslationState& s = bench.translator.State();
    if (bench.dialogs.MessageCount() != 0) {
        state.SkipWithError(("translation reported: " + bench.dialogs.FirstMessage()).c_str());
        return;
    }
    if (s.LineCount != expected.Lines || s.RecordCount != expected.Records ||
        s.ToolChangeCount != expected.ToolChanges) {
        const std::string why = "expected " + std::to_string(expected.Lines) + " lines, " +
                                std::to_string(expected.Records) + " records, " +
                                std::to_string(expected.ToolChanges) + " tool changes; got " +
                                std::to_string(s.LineCount) + ", " + std::to_string(s.RecordCount) + ", " +
                                std::to_string(s.ToolChangeCount);
        state.SkipWithError(why.c_str());
        return;
    }
    RecordFileReader reader;
    reader.Open(bench.translator.RecordFilePath());
    EntityRecord last;
    reader.Read(s.RecordCount, last);
    if (reader.RecordTotal() != expected.Records || !Near(last.EndX, expected.EndX) ||
        !Near(-last.EndY, expected.EndY) || !Near(last.EndZ, expected.EndZ)) {
        state.SkipWithError("the record file does not end where the program ends");
        return;
    }

    state.SetItemsProcessed(state.iterations() * expected.Lines);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(generator.Text().size()));
    state.counters["lines"] = expected.Lines;
    state.counters["records"] = expected.Records;
}
BENCHMARK(BM_TranslateGenerated)->Unit(benchmark::kMillisecond)->UseRealTime();

// Normalising alone, to tell its share of the translation time.
void BM_NormaliseGenerated(benchmark::State& state)
{
    TranslationBench bench;
    const ProgramGenerator generator;
    const std::string source = generator.WriteTo(bench.folder.Path(), "generated.nc");
    for (auto _ : state) {
        if (!bench.translator.NormaliseFile(source, TempFileName)) {
            state.SkipWithError("the generated program could not be normalised");
            return;
        }
    }
    state.SetItemsProcessed(state.iterations() * generator.Result().Lines);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(generator.Text().size()));
}
BENCHMARK(BM_NormaliseGenerated)->Unit(benchmark::kMillisecond)->UseRealTime();

// A real program written by others. One with more than 32767 non-empty lines overflows
// the line counter: every line past it is reported through the dialog seam (answered
// OK) and skipped, which is part of what is timed here; the messages are counted.
void BM_TranslateLargestCorpus(benchmark::State& state)
{
    const std::filesystem::path program = LargestCorpusProgram();
    if (program.empty()) {
        state.SkipWithError("no milling corpus beside the source tree");
        return;
    }
    const LineTally lines = CountLines(program);
    TranslationBench bench;

    for (auto _ : state) {
        bench.dialogs.Reset();
        if (!bench.Translate(program.string())) {
            state.SkipWithError("the corpus program could not be normalised");
            return;
        }
    }

    state.SetLabel(program.filename().string());
    state.SetItemsProcessed(state.iterations() * lines.All);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(program)));
    state.counters["lines"] = static_cast<double>(lines.All);
    state.counters["non_empty"] = static_cast<double>(lines.NonEmpty);
    state.counters["records"] = bench.translator.State().RecordCount;
    state.counters["errors"] = bench.dialogs.MessageCount();
}
BENCHMARK(BM_TranslateLargestCorpus)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace backplot::bench
