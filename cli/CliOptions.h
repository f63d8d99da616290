#pragma once

#include "DoCommand.h"

#include <optional>
#include <string>
#include <vector>

namespace backplot {

// The command line of backplot-cli, parsed. Settings not named by a flag keep their
// built-in defaults, so results do not depend on who runs the tool.
struct CliOptions {
    std::string Command;
    std::string Program;             // "-" is standard input
    std::vector<std::string> Inputs; // batch: programs and folders
    bool Lathe = false;
    bool AbsCenter = false;
    bool Json = false;
    std::optional<std::string> DataDir;
    std::string Output; // "-" is standard output
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
    // batch
    bool Png = false;
    bool Dxf = false;
    bool Pdf = false;
    bool Check = false;
    int Jobs = 0; // 0: one per core
};

// The largest canvas the tool draws: enough for an 8K screen or a page printed at high
// resolution, small enough that a typing slip cannot ask for gigabytes.
inline constexpr int MaxCanvasSide = 16384;
inline constexpr long long MaxCanvasPixels = 64LL * 1024 * 1024; // 256 MiB at 4 bytes a pixel

// What the command line asks for: a command to run, a help or version text to print
// (stdout, exit 0), or a usage error (one line, exit 2).
struct CommandLine {
    enum class Kind { Run, Help, Version, UsageError };
    Kind What = Kind::UsageError;
    CliOptions Options;
    std::string Text; // the help or version text, or the usage error without a line end
};

// Parses argv as given to main().
CommandLine ParseCommandLine(int argc, const char* const* argv);

// The commands that draw (render, print, batch with pictures) need Qt Gui; the rest do not.
bool DrawsPictures(const CliOptions& options);

} // namespace backplot
