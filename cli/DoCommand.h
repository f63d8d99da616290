#pragma once

#include <optional>
#include <string>

namespace backplot {

class ViewCommands;

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

// Applies the command as the window's command, menu item or mouse drag would.
void ApplyDoCommand(ViewCommands& view, const DoCommand& command);

} // namespace backplot
