#pragma once

#include <optional>
#include <string>
#include <vector>

namespace backplot {

// One view command of `--do`, as the window's commands would apply it. Points are in
// plot units (stored coordinates, Y negated), as the canvas delivers mouse positions.
struct DoCommand {
    enum class Kind { Extents, In, Out, Previous, Redraw, PanLeft, PanRight, PanUp, PanDown, Window, Pan };
    Kind Type = Kind::Redraw;
    std::string Text;                 // as given, for the "# ..." label
    float X1 = 0, Y1 = 0, X2 = 0, Y2 = 0; // window: and pan: only
};

// Parses "extents", "window:X1,Y1,X2,Y2", ...; nothing for a text that is not a command.
std::optional<DoCommand> ParseDoCommand(const std::string& text);

// The command line of backplot-cli, parsed. Settings not named by a flag keep their
// built-in defaults, so results do not depend on who runs the tool.
struct CliOptions {
    std::string Command;
    std::string Program;
    bool Lathe = false;
    bool AbsCenter = false;
    bool Json = false;
    std::optional<std::string> DataDir;
    std::string Output;
    int Width = 800;
    int Height = 600;
    std::optional<int> Steps;
    bool NoRapid = false;
    bool Blips = false;
    bool NoAxis = false;
    bool ToolColors = false;
    bool ZoomExtents = false;
    std::optional<int> Record;
    std::vector<DoCommand> Do;
};

// The largest canvas the tool draws: enough for an 8K screen or a page printed at high
// resolution, small enough that a typing slip cannot ask for gigabytes.
inline constexpr int MaxCanvasSide = 16384;
inline constexpr long long MaxCanvasPixels = 64LL * 1024 * 1024; // 256 MiB at 4 bytes a pixel

// Parses argv (without the program name). On a usage error returns nothing and puts
// the reason into `error`.
std::optional<CliOptions> ParseCliOptions(const std::vector<std::string>& args, std::string& error);

extern const char* const CliUsage;

} // namespace backplot
