#include "CliOptions.h"

#include <charconv>
#include <set>

namespace backplot {

const char* const CliUsage =
    "usage: backplot-cli translate PROGRAM [--lathe] [--abs-center] [--data-dir DIR]\n"
    "       backplot-cli records   PROGRAM [--lathe] [--abs-center] [--json] [--data-dir DIR]\n"
    "       backplot-cli extents   PROGRAM [--size WxH] [--lathe] [--abs-center] [--data-dir DIR]\n"
    "       backplot-cli render    PROGRAM -o OUT.bmp|OUT.png [--size WxH] [--steps N] [--no-rapid]\n"
    "                              [--blips] [--no-axis] [--tool-colors] [--zoom-extents] [--lathe]\n"
    "                              [--abs-center] [--data-dir DIR]\n";

namespace {

bool ParseInt(const std::string& text, int& value)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

bool ParseSize(const std::string& text, int& width, int& height)
{
    const std::size_t x = text.find('x');
    if (x == std::string::npos)
        return false;
    return ParseInt(text.substr(0, x), width) && ParseInt(text.substr(x + 1), height) && width > 0 &&
           height > 0 && width <= 20000 && height <= 20000;
}

} // namespace

std::optional<CliOptions> ParseCliOptions(const std::vector<std::string>& args, std::string& error)
{
    static const std::set<std::string> commands = {"translate", "records", "extents", "render"};
    if (args.empty() || !commands.count(args[0])) {
        error = args.empty() ? "no command given" : "unknown command '" + args[0] + "'";
        return std::nullopt;
    }
    CliOptions o;
    o.Command = args[0];
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& a = args[i];
        auto value = [&](std::string& out) {
            if (i + 1 >= args.size()) {
                error = a + " needs a value";
                return false;
            }
            out = args[++i];
            return true;
        };
        std::string text;
        if (a == "--lathe")
            o.Lathe = true;
        else if (a == "--abs-center")
            o.AbsCenter = true;
        else if (a == "--json" && o.Command == "records")
            o.Json = true;
        else if (a == "--data-dir") {
            if (!value(text))
                return std::nullopt;
            o.DataDir = text;
        } else if (a == "--size" && (o.Command == "extents" || o.Command == "render")) {
            if (!value(text))
                return std::nullopt;
            if (!ParseSize(text, o.Width, o.Height)) {
                error = "--size takes WIDTHxHEIGHT in pixels, such as 800x600";
                return std::nullopt;
            }
        } else if (o.Command == "render" && (a == "-o" || a == "--output")) {
            if (!value(o.Output))
                return std::nullopt;
        } else if (o.Command == "render" && a == "--steps") {
            int steps = 0;
            if (!value(text))
                return std::nullopt;
            if (!ParseInt(text, steps) || steps < 0) {
                error = "--steps takes a whole number of steps";
                return std::nullopt;
            }
            o.Steps = steps;
        } else if (o.Command == "render" && a == "--no-rapid")
            o.NoRapid = true;
        else if (o.Command == "render" && a == "--blips")
            o.Blips = true;
        else if (o.Command == "render" && a == "--no-axis")
            o.NoAxis = true;
        else if (o.Command == "render" && a == "--tool-colors")
            o.ToolColors = true;
        else if (o.Command == "render" && a == "--zoom-extents")
            o.ZoomExtents = true;
        else if (!a.empty() && a[0] == '-') {
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
    if (o.Command == "render" && o.Output.empty()) {
        error = "render needs -o OUT.bmp or OUT.png";
        return std::nullopt;
    }
    return o;
}

} // namespace backplot
