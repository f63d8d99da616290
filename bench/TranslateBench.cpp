// Translation speed: normalising a program and translating it into the record file, as the
// open command does, with the files on disk. Read the CPU time, the process's own with the
// kernel's writing included, which a busy machine disturbs least; the wall time is reported
// beside it. The translator should manage at least four million lines a second.

#include "BenchSupport.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace backplot::bench {
namespace {

namespace fs = std::filesystem;

// What a correct translation of the generated program must have left behind, or why not.
std::string Mismatch(BenchTranslator& bench, const ProgramGenerator::Summary& expected)
{
    if (bench.Dialogs.Messages != 0)
        return "translation reported: " + bench.Dialogs.FirstMessage;
    const TranslationState& s = bench.T.State();
    if (s.LineCount != expected.Lines || s.RecordCount != expected.Records || s.ToolChangeCount != expected.ToolChanges)
        return "expected " + std::to_string(expected.Lines) + " lines, " + std::to_string(expected.Records) +
               " records, " + std::to_string(expected.ToolChanges) + " tool changes; got " +
               std::to_string(s.LineCount) + ", " + std::to_string(s.RecordCount) + ", " +
               std::to_string(s.ToolChangeCount);
    int records = 0;
    EntityRecord last;
    bench.ForEachRecord([&](const EntityRecord& record) { ++records, last = record; });
    const auto near = [](double a, double b) { return std::fabs(a - b) <= 1e-3 * (1 + std::fabs(b)); };
    if (records != expected.Records || !near(last.EndX, expected.EndX) || !near(-last.EndY, expected.EndY) ||
        !near(last.EndZ, expected.EndZ))
        return "the record file does not end where the program ends";
    return {};
}

void BM_TranslateGenerated(benchmark::State& state)
{
    BenchTranslator bench;
    const ProgramGenerator generator;
    const std::string source = generator.WriteTo(bench.Folder.Path(), "generated.nc");
    for (auto _ : state) {
        bench.Dialogs.Reset();
        bench.Translate(source);
    }
    if (const std::string why = Mismatch(bench, generator.Result()); !why.empty())
        return state.SkipWithError(why.c_str());
    state.SetItemsProcessed(state.iterations() * generator.Result().Lines);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(generator.Text().size()));
    state.counters["lines"] = generator.Result().Lines;
    state.counters["records"] = generator.Result().Records;
}
BENCHMARK(BM_TranslateGenerated)->Unit(benchmark::kMillisecond)->UseRealTime();

// Normalising alone, to tell its share of the translation time.
void BM_NormaliseGenerated(benchmark::State& state)
{
    BenchTranslator bench;
    const ProgramGenerator generator;
    const std::string source = generator.WriteTo(bench.Folder.Path(), "generated.nc");
    for (auto _ : state)
        if (!bench.T.NormaliseFile(source, TempFileName))
            return state.SkipWithError("the generated program could not be normalised");
    state.SetItemsProcessed(state.iterations() * generator.Result().Lines);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(generator.Text().size()));
}
BENCHMARK(BM_NormaliseGenerated)->Unit(benchmark::kMillisecond)->UseRealTime();

// The largest milling program of the shared corpus. Past 32767 non-empty lines the line
// counter overflows: every later line is reported (answered OK) and skipped, which is part
// of what is timed; the messages are counted.
void BM_TranslateLargestCorpus(benchmark::State& state)
{
    fs::path program;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(test::CorpusDir() / "mill", error))
        if (entry.is_regular_file() && (program.empty() || entry.file_size() > fs::file_size(program)))
            program = entry.path();
    if (program.empty())
        return state.SkipWithError("the corpus has no milling programs");
    std::int64_t lines = 0;
    std::ifstream in(program, std::ios::binary);
    for (std::string line; std::getline(in, line);)
        ++lines;

    BenchTranslator bench;
    for (auto _ : state) {
        bench.Dialogs.Reset();
        if (!bench.Translate(program.string()))
            return state.SkipWithError("the corpus program could not be normalised");
    }
    state.SetLabel(program.filename().string());
    state.SetItemsProcessed(state.iterations() * lines);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(fs::file_size(program)));
    state.counters["lines"] = static_cast<double>(lines);
    state.counters["records"] = bench.T.State().RecordCount;
    state.counters["errors"] = bench.Dialogs.Messages;
}
// A checkout cloned alone has no corpus: then the benchmark is left out, with a word on
// stderr (this version of Google Benchmark knows only skips that count as errors).
const bool LargestCorpusRegistered = [] {
    if (test::CorpusDir().empty()) {
        std::fprintf(stderr, "BM_TranslateLargestCorpus skipped: %s\n", test::CorpusMissing().c_str());
        return false;
    }
    benchmark::RegisterBenchmark("BM_TranslateLargestCorpus", BM_TranslateLargestCorpus)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    return true;
}();

} // namespace
} // namespace backplot::bench
