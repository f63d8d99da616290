#pragma once

#include <optional>
#include <string>
#include <vector>

namespace backplot {

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
};

// Parses argv (without the program name). On a usage error returns nothing and puts
// the reason into `error`.
std::optional<CliOptions> ParseCliOptions(const std::vector<std::string>& args, std::string& error);

extern const char* const CliUsage;

} // namespace backplot
