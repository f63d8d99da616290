#include "BatchCommand.h"

#include "CliSession.h"
#include "Drawing.h"
#include "DxfExport.h"
#include "JsonText.h"
#include "NumberFormat.h"
#include "ProgramCheck.h"
#include "RunTimeError.h"
#include "ScaleSurface.h"
#include "ScratchFolder.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <filesystem>
#include <map>
#include <mutex>
#include <ostream>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace backplot {

namespace {

namespace fs = std::filesystem;

// The messages of one program that the report shows; the rest are counted.
constexpr int MessagesShown = 5;

// What one program gave.
struct Result {
    std::string Program;
    bool Read = false; // the program could be read and translated
    int Lines = 0, Records = 0, ToolChanges = 0;
    float MinX = 0, MinY = 0, MaxX = 0, MaxY = 0;
    int ErrorBoxes = 0;
    std::array<int, CheckCodes.size()> Findings{};
    int FindingTotal = 0;
    std::vector<std::string> Outputs;
    bool OutputsWritten = true;
    double Seconds = 0;
    std::string Messages; // as the window's boxes and the tool's own lines, one per line
};

// The programs named: files as given; a folder gives the files directly in it, in name
// order, hidden ones left out.
std::vector<std::string> Programs(const std::vector<std::string>& inputs)
{
    std::vector<std::string> programs;
    for (const std::string& input : inputs) {
        std::error_code ec;
        if (!fs::is_directory(input, ec)) {
            programs.push_back(input);
            continue;
        }
        std::vector<std::string> inFolder;
        for (const fs::directory_entry& entry : fs::directory_iterator(input, ec)) {
            const std::string name = entry.path().filename().string();
            if (!name.starts_with('.') && entry.is_regular_file(ec))
                inFolder.push_back(entry.path().string());
        }
        std::sort(inFolder.begin(), inFolder.end());
        programs.insert(programs.end(), inFolder.begin(), inFolder.end());
    }
    return programs;
}

std::string OutputName(const std::string& program) { return fs::path(program).stem().string(); }

class Batch {
public:
    Batch(const CliOptions& options, const Drawing* drawing, std::mutex& pages)
        : options_(options), drawing_(drawing), pages_(pages)
    {
    }

    Result Run(const std::string& program, const fs::path& folder) const;

private:
    void Write(CliSession& session, const std::string& extension, Result& result) const;

    const CliOptions& options_;
    const Drawing* drawing_;
    std::mutex& pages_;
};

Result Batch::Run(const std::string& program, const fs::path& folder) const
{
    const auto start = std::chrono::steady_clock::now();
    Result result;
    result.Program = program;
    CliOptions options = options_;
    options.Program = program;
    options.DataDir = folder.string();
    std::ostringstream out, err;
    try {
        CliSession session(options, out, err);
        session.Dialogs().PrintAtMost(MessagesShown);
        if (session.Translate()) {
            result.Read = true;
            const TranslationState& s = session.Translation().State();
            result.Lines = s.LineCount;
            result.Records = s.RecordCount;
            result.ToolChanges = s.ToolChangeCount;
            result.ErrorBoxes = session.Dialogs().MessageCount();
            if (result.ErrorBoxes > MessagesShown)
                err << "(" << result.ErrorBoxes - MessagesShown << " more messages)\n";

            ScaleSurface canvas(options.Width, options.Height);
            Plotter plotter = session.MakePlotter();
            try {
                plotter.ComputeExtents(canvas);
            } catch (const RunTimeError&) {
                // The extents stay as far as the pass got; the pictures report it.
            }
            result.MinX = plotter.View.MinX;
            result.MinY = plotter.View.MinY;
            result.MaxX = plotter.View.MaxX;
            result.MaxY = plotter.View.MaxY;

            if (options.Check) {
                for (const Finding& f : CheckProgram(session.Translation().TempFilePath(), !options.Lathe,
                                                     options.AbsCenter ? 1 : 0))
                    ++result.Findings[static_cast<std::size_t>(f.Code)];
                for (const int n : result.Findings)
                    result.FindingTotal += n;
            }
            if (options.Png)
                Write(session, ".png", result);
            if (options.Dxf)
                Write(session, ".dxf", result);
            if (options.Pdf)
                Write(session, ".pdf", result);
        }
    } catch (const std::exception& e) {
        err << "backplot-cli: " << e.what() << '\n';
        result.OutputsWritten = false;
    }
    result.Messages = err.str();
    result.Seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return result;
}

void Batch::Write(CliSession& session, const std::string& extension, Result& result) const
{
    const std::string path = (fs::path(options_.Output) / (OutputName(result.Program) + extension)).string();
    std::string error;
    bool written = false;
    if (extension == ".dxf") {
        ScaleSurface canvas(options_.Width, options_.Height);
        Plotter plotter = session.MakePlotter();
        session.OpenView(plotter, canvas);
        const DxfCanvasScale scale{canvas.ScaleLeft(), canvas.ScaleTop(), canvas.ScaleWidth(), canvas.ScaleHeight()};
        written = DxfExport(session.Translation(), session.Dialogs()).ExportTo(path, scale, error);
    } else if (extension == ".png") {
        written = drawing_->WritePng(session, path, error);
    } else {
        // The page goes through Qt's printing, which is not made for many threads at once.
        const std::lock_guard lock(pages_);
        written = drawing_->WritePdf(session, path, error);
    }
    if (written) {
        result.Outputs.push_back(path);
    } else {
        result.OutputsWritten = false;
        session.Err() << "backplot-cli: " << error << '\n';
    }
}

bool Passed(const Result& r, bool check)
{
    return r.Read && r.ErrorBoxes == 0 && r.OutputsWritten && (!check || r.FindingTotal == 0);
}

void PrintJson(std::ostream& out, const std::vector<Result>& results, const CliOptions& o)
{
    out << "{\"Programs\":[";
    for (std::size_t i = 0; i < results.size(); ++i) {
        const Result& r = results[i];
        out << (i ? "," : "") << "{\"Program\":" << JsonString(r.Program) << ",\"Read\":" << (r.Read ? "true" : "false")
            << ",\"Lines\":" << r.Lines << ",\"Records\":" << r.Records << ",\"ToolChanges\":" << r.ToolChanges
            << ",\"Extents\":{\"MinX\":" << FloatText(r.MinX) << ",\"MinY\":" << FloatText(r.MinY)
            << ",\"MaxX\":" << FloatText(r.MaxX) << ",\"MaxY\":" << FloatText(r.MaxY)
            << "},\"ErrorBoxes\":" << r.ErrorBoxes;
        if (o.Check) {
            out << ",\"Findings\":{";
            bool first = true;
            for (std::size_t c = 0; c < CheckCodes.size(); ++c) {
                if (!r.Findings[c])
                    continue;
                out << (first ? "" : ",") << JsonString(CheckCodes[c].Name) << ":" << r.Findings[c];
                first = false;
            }
            out << "}";
        }
        out << ",\"Outputs\":[";
        for (std::size_t k = 0; k < r.Outputs.size(); ++k)
            out << (k ? "," : "") << JsonString(r.Outputs[k]);
        char seconds[32];
        std::snprintf(seconds, sizeof seconds, "%.3f", r.Seconds);
        out << "],\"Passed\":" << (Passed(r, o.Check) ? "true" : "false") << ",\"Seconds\":" << seconds << "}";
    }
    out << "]}\n";
}

void PrintTable(std::ostream& out, const std::vector<Result>& results, const CliOptions& o)
{
    std::vector<std::vector<std::string>> rows = {
        {"Program", "Lines", "Records", "Tools", "MinX", "MinY", "MaxX", "MaxY", "Errors", "Findings", "Outputs",
         "Seconds"}};
    for (const Result& r : results) {
        std::string outputs;
        for (const std::string& path : r.Outputs)
            outputs += (outputs.empty() ? "" : ",") + fs::path(path).extension().string().substr(1);
        char seconds[32];
        std::snprintf(seconds, sizeof seconds, "%.3f", r.Seconds);
        if (!r.Read) {
            rows.push_back({r.Program, "-", "-", "-", "-", "-", "-", "-", "unread", "-", "-", seconds});
            continue;
        }
        rows.push_back({r.Program, std::to_string(r.Lines), std::to_string(r.Records), std::to_string(r.ToolChanges),
                        FloatText(r.MinX), FloatText(r.MinY), FloatText(r.MaxX), FloatText(r.MaxY),
                        std::to_string(r.ErrorBoxes), o.Check ? std::to_string(r.FindingTotal) : "-",
                        outputs.empty() ? "-" : outputs, seconds});
    }
    std::vector<std::size_t> widths(rows[0].size(), 0);
    for (const auto& row : rows)
        for (std::size_t c = 0; c < row.size(); ++c)
            widths[c] = std::max(widths[c], row[c].size());
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t c = 0; c < row.size(); ++c) {
            const std::string pad(widths[c] - row[c].size(), ' ');
            // Names and outputs read from the left, numbers from the right.
            line += c == 0 || c == 10 ? row[c] + pad : pad + row[c];
            if (c + 1 < row.size())
                line += "  ";
        }
        while (!line.empty() && line.back() == ' ')
            line.pop_back();
        out << line << '\n';
    }
}

} // namespace

int RunBatch(const CliOptions& o, std::ostream& out, std::ostream& err, const Drawing* drawing)
{
    const std::vector<std::string> programs = Programs(o.Inputs);
    if (programs.empty()) {
        err << "backplot-cli: no programs found in " << o.Inputs.front() << '\n';
        return 1;
    }
    std::map<std::string, std::string> names;
    for (const std::string& program : programs) {
        const auto [at, fresh] = names.emplace(OutputName(program), program);
        if (!fresh && (o.Png || o.Dxf || o.Pdf)) {
            err << "backplot-cli: " << at->second << " and " << program << " would both write " << o.Output
                << "/" << at->first << ".*\nTry 'backplot-cli --help'.\n";
            return 2;
        }
    }
    std::error_code ec;
    fs::create_directories(o.Output, ec);
    if (ec) {
        err << "backplot-cli: the output folder " << o.Output << " cannot be made: " << ec.message() << '\n';
        return 1;
    }

    const int cores = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    const int jobs = std::min({o.Jobs ? o.Jobs : cores, static_cast<int>(programs.size()), ScratchFolder::MaxJobs});
    ScratchFolder scratch;
    if (scratch.Path().empty()) {
        err << "backplot-cli: no temporary folder can be made\n";
        return 1;
    }
    std::vector<fs::path> folders;
    for (int j = 0; j < jobs; ++j)
        folders.push_back(scratch.JobFolder(j));
    // Pages need an application object, made here in the main thread.
    const std::shared_ptr<void> pages = o.Pdf ? drawing->StartPages(scratch.Path().string()) : nullptr;

    std::mutex pagesLock, doneLock;
    std::condition_variable doneChanged;
    std::vector<Result> results(programs.size());
    std::atomic<std::size_t> next{0};
    std::size_t done = 0;
    const Batch batch(o, drawing, pagesLock);
    std::vector<std::thread> workers;
    for (int j = 0; j < jobs; ++j)
        workers.emplace_back([&, j] {
            for (std::size_t i = next++; i < programs.size(); i = next++) {
                results[i] = batch.Run(programs[i], folders[static_cast<std::size_t>(j)]);
                const std::lock_guard lock(doneLock);
                ++done;
                doneChanged.notify_one();
            }
        });
    const bool progress = ::isatty(2);
    {
        std::unique_lock lock(doneLock);
        for (std::size_t shown = 0; shown < programs.size();) {
            doneChanged.wait(lock, [&] { return done > shown; });
            shown = done;
            if (progress)
                err << "\rbackplot-cli batch: " << shown << " of " << programs.size() << " programs" << std::flush;
        }
    }
    for (std::thread& worker : workers)
        worker.join();
    if (progress)
        err << "\r\033[K" << std::flush;

    if (o.Json)
        PrintJson(out, results, o);
    else
        PrintTable(out, results, o);
    bool passed = true;
    for (const Result& r : results) {
        passed = passed && Passed(r, o.Check);
        if (!r.Messages.empty())
            err << "== " << r.Program << '\n' << r.Messages;
    }
    return passed ? 0 : 1;
}

} // namespace backplot
