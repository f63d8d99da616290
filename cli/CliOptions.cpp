#include "CliOptions.h"

#include <charconv>
#include <cmath>
#include <map>
#include <set>

namespace backplot {

const char* const CliUsage =
    "usage: backplot-cli translate PROGRAM [--lathe] [--abs-center] [--data-dir DIR]\n"
    "       backplot-cli records   PROGRAM [--lathe] [--abs-center] [--json] [--data-dir DIR]\n"
    "       backplot-cli extents   PROGRAM [--size WxH] [--lathe] [--abs-center] [--data-dir DIR]\n"
    "       backplot-cli render    PROGRAM -o OUT.bmp|OUT.png [--size WxH] [--steps N] [--no-rapid]\n"
    "                              [--blips] [--no-axis] [--tool-colors] [--zoom-extents] [--do CMD]...\n"
    "                              [--lathe] [--abs-center] [--data-dir DIR]\n"
    "       backplot-cli view      PROGRAM [--size WxH] [--do CMD]... [--lathe] [--abs-center] [--data-dir DIR]\n"
    "       backplot-cli dxf       PROGRAM -o OUT.dxf [--size WxH] [--lathe] [--abs-center] [--data-dir DIR]\n"
    "       backplot-cli print     PROGRAM -o OUT.pdf [--size WxH] [--lathe] [--abs-center] [--data-dir DIR]\n"
    "       backplot-cli details   PROGRAM --record N [--lathe] [--abs-center] [--data-dir DIR]\n"
    "CMD: extents, in, out, previous, redraw, pan-left, pan-right, pan-up, pan-down,\n"
    "     window:X1,Y1,X2,Y2 or pan:X1,Y1,X2,Y2 (plot units, Y negated)\n";

namespace {

bool ParseInt(const std::string& text, int& value)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

bool ParseFloat(const std::string& text, float& value)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() && std::isfinite(value);
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

// Which flags each command takes.
enum Flag : unsigned {
    Machine = 1,     // --lathe, --abs-center, --data-dir
    Size = 2,        // --size
    Output = 4,      // -o
    Json = 8,        // --json
    RenderFlags = 16, // --steps, --no-rapid, --blips, --no-axis, --tool-colors, --zoom-extents
    Do = 32,         // --do
    Record = 64,     // --record
};

const std::map<std::string, unsigned>& Commands()
{
    static const std::map<std::string, unsigned> commands = {
        {"translate", Machine},
        {"records", Machine | Json},
        {"extents", Machine | Size},
        {"render", Machine | Size | Output | RenderFlags | Do},
        {"view", Machine | Size | Do},
        {"dxf", Machine | Size | Output},
        {"print", Machine | Size | Output},
        {"details", Machine | Record},
    };
    return commands;
}

} // namespace

std::optional<DoCommand> ParseDoCommand(const std::string& text)
{
    static const std::map<std::string, DoCommand::Kind> plain = {
        {"extents", DoCommand::Kind::Extents},    {"in", DoCommand::Kind::In},
        {"out", DoCommand::Kind::Out},            {"previous", DoCommand::Kind::Previous},
        {"redraw", DoCommand::Kind::Redraw},      {"pan-left", DoCommand::Kind::PanLeft},
        {"pan-right", DoCommand::Kind::PanRight}, {"pan-up", DoCommand::Kind::PanUp},
        {"pan-down", DoCommand::Kind::PanDown},
    };
    DoCommand command;
    command.Text = text;
    if (const auto found = plain.find(text); found != plain.end()) {
        command.Type = found->second;
        return command;
    }
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos)
        return std::nullopt;
    const std::string name = text.substr(0, colon);
    if (name == "window")
        command.Type = DoCommand::Kind::Window;
    else if (name == "pan")
        command.Type = DoCommand::Kind::Pan;
    else
        return std::nullopt;
    float* const values[] = {&command.X1, &command.Y1, &command.X2, &command.Y2};
    std::size_t start = colon + 1;
    for (int i = 0; i < 4; ++i) {
        const std::size_t comma = i < 3 ? text.find(',', start) : text.size();
        if (comma == std::string::npos || !ParseFloat(text.substr(start, comma - start), *values[i]))
            return std::nullopt;
        start = comma + 1;
    }
    return command;
}

std::optional<CliOptions> ParseCliOptions(const std::vector<std::string>& args, std::string& error)
{
    if (args.empty() || !Commands().count(args[0])) {
        error = args.empty() ? "no command given" : "unknown command '" + args[0] + "'";
        return std::nullopt;
    }
    CliOptions o;
    o.Command = args[0];
    const unsigned takes = Commands().at(o.Command);
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& a = args[i];
        std::string text;
        auto value = [&]() {
            if (i + 1 >= args.size()) {
                error = a + " needs a value";
                return false;
            }
            text = args[++i];
            return true;
        };
        const auto takesFlag = [&](unsigned flag) { return (takes & flag) != 0; };
        if (takesFlag(Machine) && a == "--lathe")
            o.Lathe = true;
        else if (takesFlag(Machine) && a == "--abs-center")
            o.AbsCenter = true;
        else if (takesFlag(Machine) && a == "--data-dir") {
            if (!value())
                return std::nullopt;
            o.DataDir = text;
        } else if (takesFlag(Json) && a == "--json")
            o.Json = true;
        else if (takesFlag(Size) && a == "--size") {
            if (!value())
                return std::nullopt;
            if (const auto problem = ParseSize(text, o.Width, o.Height)) {
                error = *problem;
                return std::nullopt;
            }
        } else if (takesFlag(Output) && (a == "-o" || a == "--output")) {
            if (!value())
                return std::nullopt;
            o.Output = text;
        } else if (takesFlag(RenderFlags) && a == "--steps") {
            int steps = 0;
            if (!value())
                return std::nullopt;
            if (!ParseInt(text, steps) || steps < 0) {
                error = "--steps takes a whole number of steps";
                return std::nullopt;
            }
            o.Steps = steps;
        } else if (takesFlag(RenderFlags) && a == "--no-rapid")
            o.NoRapid = true;
        else if (takesFlag(RenderFlags) && a == "--blips")
            o.Blips = true;
        else if (takesFlag(RenderFlags) && a == "--no-axis")
            o.NoAxis = true;
        else if (takesFlag(RenderFlags) && a == "--tool-colors")
            o.ToolColors = true;
        else if (takesFlag(RenderFlags) && a == "--zoom-extents")
            o.ZoomExtents = true;
        else if (takesFlag(Do) && a == "--do") {
            if (!value())
                return std::nullopt;
            const std::optional<DoCommand> command = ParseDoCommand(text);
            if (!command) {
                error = "--do: '" + text + "' is not a view command";
                return std::nullopt;
            }
            o.Do.push_back(*command);
        } else if (takesFlag(Record) && a == "--record") {
            int record = 0;
            if (!value())
                return std::nullopt;
            if (!ParseInt(text, record)) {
                error = "--record takes a record number";
                return std::nullopt;
            }
            o.Record = record;
        } else if (!a.empty() && a[0] == '-') {
            error = "unknown option '" + a + "' for " + o.Command;
            return std::nullopt;
        } else if (o.Program.empty())
            o.Program = a;
        else {
            error = "more than one program given";
            return std::nullopt;
        }
    }
    if (o.Program.empty()) {
        error = "no program given";
        return std::nullopt;
    }
    if ((takes & Output) && o.Output.empty()) {
        error = o.Command + " needs -o OUT" + (o.Command == "render" ? ".bmp or OUT.png"
                                               : o.Command == "dxf"  ? ".dxf"
                                                                     : ".pdf");
        return std::nullopt;
    }
    if ((takes & Record) && !o.Record) {
        error = o.Command + " needs --record N";
        return std::nullopt;
    }
    return o;
}

} // namespace backplot
