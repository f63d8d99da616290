#include "CliOptions.h"

#include "CliHelp.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cctype>
#include <map>

namespace backplot {

namespace {

bool ParseInt(const std::string& text, int& value)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

std::optional<std::string> ParseSize(const std::string& text, int& width, int& height)
{
    const std::size_t x = text.find('x');
    if (x == std::string::npos || !ParseInt(text.substr(0, x), width) || !ParseInt(text.substr(x + 1), height) ||
        width <= 0 || height <= 0)
        return "--size takes WIDTHxHEIGHT in pixels, such as 800x600";
    if (width > MaxCanvasSide || height > MaxCanvasSide ||
        static_cast<long long>(width) * height > MaxCanvasPixels)
        return "--size " + text + " is too large: at most " + std::to_string(MaxCanvasSide) +
               " pixels a side and " + std::to_string(MaxCanvasPixels) + " pixels in all";
    return std::nullopt;
}

// Which options each command takes.
enum Flag : unsigned {
    Machine = 1,      // --lathe, --abs-center, --data-dir
    Size = 2,         // --size
    Output = 4,       // -o
    Json = 8,         // --json
    RenderFlags = 16, // --steps, --no-rapid, --blips, --no-axis, --tool-colors, --zoom-extents
    Do = 32,          // --do
    Record = 64,      // --record
    Batch = 128,      // several inputs, --png, --dxf, --pdf, --check, --jobs
};

const std::map<std::string, unsigned>& Commands()
{
    static const std::map<std::string, unsigned> commands = {
        {"translate", Machine | Json},
        {"records", Machine | Json},
        {"extents", Machine | Size | Json},
        {"render", Machine | Size | Output | RenderFlags | Do},
        {"view", Machine | Size | Do | Json},
        {"dxf", Machine | Size | Output},
        {"print", Machine | Size | Output},
        {"details", Machine | Record | Json},
        {"check", Machine | Json},
        {"batch", Machine | Size | Output | Json | Batch},
    };
    return commands;
}

// The option values as typed; checked after CLI11 has split the line, so that each
// problem gets a message of its own.
struct Typed {
    std::string size, steps, record, jobs;
    std::vector<std::string> doTexts;
};

CLI::App* AddCommand(CLI::App& app, const std::string& name, unsigned takes, CliOptions& o, Typed& typed)
{
    CLI::App* c = app.add_subcommand(name);
    // Unknown options and extra programs are reported by ParseCommandLine in its own words.
    c->allow_extras();
    if (takes & Batch)
        c->add_option("PROGRAM", o.Inputs);
    else
        c->add_option("PROGRAM", o.Program);
    if (takes & Machine) {
        c->add_flag("--lathe", o.Lathe);
        c->add_flag("--abs-center", o.AbsCenter);
        if (!(takes & Batch))
            c->add_option("--data-dir", o.DataDir);
    }
    if (takes & Json)
        c->add_flag("--json", o.Json);
    if (takes & Size)
        c->add_option("--size", typed.size);
    if (takes & Output)
        c->add_option("-o,--output", o.Output);
    if (takes & RenderFlags) {
        c->add_option("--steps", typed.steps);
        c->add_flag("--no-rapid", o.NoRapid);
        c->add_flag("--blips", o.Blips);
        c->add_flag("--no-axis", o.NoAxis);
        c->add_flag("--tool-colors", o.ToolColors);
        c->add_flag("--zoom-extents", o.ZoomExtents);
    }
    if (takes & Do)
        c->add_option("--do", typed.doTexts)->allow_extra_args(false);
    if (takes & Record)
        c->add_option("--record", typed.record);
    if (takes & Batch) {
        c->add_flag("--png", o.Png);
        c->add_flag("--dxf", o.Dxf);
        c->add_flag("--pdf", o.Pdf);
        c->add_flag("--check", o.Check);
        c->add_option("--jobs", typed.jobs);
    }
    return c;
}

// The checks CLI11 leaves to us; the first problem found, if any.
std::optional<std::string> Finish(CliOptions& o, unsigned takes, const Typed& typed)
{
    if (!typed.size.empty())
        if (auto problem = ParseSize(typed.size, o.Width, o.Height))
            return problem;
    if (!typed.steps.empty()) {
        int steps = 0;
        if (!ParseInt(typed.steps, steps) || steps < 0)
            return "--steps takes a whole number of steps";
        o.Steps = steps;
    }
    for (const std::string& text : typed.doTexts) {
        const std::optional<DoCommand> command = ParseDoCommand(text);
        if (!command)
            return "--do: '" + text + "' is not a view command";
        o.Do.push_back(*command);
    }
    if (!typed.record.empty()) {
        int record = 0;
        if (!ParseInt(typed.record, record))
            return "--record takes a record number";
        o.Record = record;
    }
    if (!typed.jobs.empty() && (!ParseInt(typed.jobs, o.Jobs) || o.Jobs < 1))
        return "--jobs takes a number of jobs, 1 or more";

    if (takes & Batch) {
        if (o.Inputs.empty())
            return "no program or folder given";
    } else if (o.Program.empty()) {
        return "no program given";
    }
    if ((takes & Output) && o.Output.empty()) {
        if (o.Command == "render")
            return "render needs -o OUT.png or OUT.bmp";
        if (o.Command == "batch")
            return "batch needs -o OUTDIR";
        return o.Command + " needs -o OUT" + (o.Command == "dxf" ? ".dxf" : ".pdf");
    }
    if (o.Command == "render" && o.Output != "-") {
        const std::string& path = o.Output;
        const std::size_t dot = path.find_last_of("./");
        std::string extension = dot == std::string::npos || path[dot] != '.' ? "" : path.substr(dot);
        for (char& c : extension)
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        if (extension != ".png" && extension != ".bmp")
            return "render writes .png or .bmp files, not '" + path + "'";
    }
    if ((takes & Record) && !o.Record)
        return o.Command + " needs --record N";
    return std::nullopt;
}

CommandLine UsageError(std::string text)
{
    CommandLine line;
    line.What = CommandLine::Kind::UsageError;
    line.Text = std::move(text);
    return line;
}

CommandLine Help(const std::string& command)
{
    CommandLine line;
    line.What = CommandLine::Kind::Help;
    line.Text = CommandHelp(command);
    return line;
}

} // namespace

bool DrawsPictures(const CliOptions& o)
{
    return o.Command == "render" || o.Command == "print" || (o.Command == "batch" && (o.Png || o.Pdf));
}

CommandLine ParseCommandLine(int argc, const char* const* argv)
{
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty())
        return UsageError("no command given");
    const std::string& first = args[0];
    if (first == "-h" || first == "--help")
        return Help("");
    if (first == "--version") {
        CommandLine line;
        line.What = CommandLine::Kind::Version;
        line.Text = VersionText();
        return line;
    }
    if (first == "help") {
        if (args.size() > 1 && !Commands().count(args[1]))
            return UsageError("unknown command '" + args[1] + "'");
        return Help(args.size() > 1 ? args[1] : "");
    }
    if (!first.empty() && first[0] == '-')
        return UsageError("unknown option '" + first + "'; a command comes first");
    const auto found = Commands().find(first);
    if (found == Commands().end())
        return UsageError("unknown command '" + first + "'");
    const unsigned takes = found->second;

    CommandLine line;
    CliOptions& o = line.Options;
    o.Command = first;
    Typed typed;
    CLI::App app{"", "backplot-cli"};
    app.set_help_flag();
    CLI::App* command = AddCommand(app, first, takes, o, typed);
    command->set_help_flag("-h,--help");
    // "--" ends the options: what follows is a program, whatever it looks like.
    std::vector<std::string> options(argv, argv + argc), afterOptions;
    if (const auto end = std::find(options.begin() + 1, options.end(), "--"); end != options.end()) {
        afterOptions.assign(end + 1, options.end());
        options.erase(end, options.end());
    }
    std::vector<const char*> head;
    for (const std::string& option : options)
        head.push_back(option.c_str());
    try {
        app.parse(static_cast<int>(head.size()), head.data());
    } catch (const CLI::CallForHelp&) {
        return Help(first);
    } catch (const CLI::ArgumentMismatch& e) {
        // "--size: 1 required TEXT missing" and the like: the option named, without the type.
        std::string text = e.what();
        return UsageError(text.substr(0, text.find(':')) + " needs a value");
    } catch (const CLI::ParseError& e) {
        return UsageError(e.what());
    }
    for (const std::string& extra : command->remaining())
        if (extra.size() > 1 && extra[0] == '-')
            return UsageError("unknown option '" + extra + "' for " + first);
    std::vector<std::string> programs = command->remaining();
    programs.insert(programs.end(), afterOptions.begin(), afterOptions.end());
    for (const std::string& program : programs) {
        if (takes & Batch)
            o.Inputs.push_back(program);
        else if (o.Program.empty())
            o.Program = program;
        else
            return UsageError("more than one program given ('" + program + "')");
    }
    if (auto problem = Finish(o, takes, typed))
        return UsageError(*problem);
    line.What = CommandLine::Kind::Run;
    return line;
}

} // namespace backplot
