#include "DoCommand.h"

#include "ViewCommands.h"

#include <charconv>
#include <cmath>
#include <map>

namespace backplot {

namespace {

bool ParseFloat(const std::string& text, float& value)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() && std::isfinite(value);
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

void ApplyDoCommand(ViewCommands& view, const DoCommand& command)
{
    using Kind = DoCommand::Kind;
    switch (command.Type) {
    case Kind::Extents:
        return view.ZoomExtents();
    case Kind::In:
        return view.ZoomIn();
    case Kind::Out:
        return view.ZoomOut();
    case Kind::Previous:
        return view.ZoomPrevious();
    case Kind::Redraw:
        return view.Redraw();
    case Kind::PanLeft:
        return view.PanLeft();
    case Kind::PanRight:
        return view.PanRight();
    case Kind::PanUp:
        return view.PanUp();
    case Kind::PanDown:
        return view.PanDown();
    case Kind::Window:
    case Kind::Pan:
        if (command.Type == Kind::Window)
            view.ZoomWindow();
        else
            view.Point();
        view.MouseDown(MouseButton::Left, command.X1, command.Y1);
        view.MouseMove(true, command.X2, command.Y2);
        view.MouseUp(MouseButton::Left, command.X2, command.Y2);
        return;
    }
}

} // namespace backplot
