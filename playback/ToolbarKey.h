#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace backplot {

// The main window's toolbar buttons, in toolbar order. A button is named by its key
// wherever it is built, switched or looked up, so a misspelt button does not compile.
enum class ToolbarKey {
    Exit,
    Open,
    Clear,
    Print,
    Preview,
    Pan,
    ZoomExtends,
    ZWindow,
    ZIn,
    ZOut,
    Refresh,
    Step,
    Slow,
    Pause,
    Stop,
    GCode,
    Rapid,
    Axis,
    Properties,
    ToolColors,
};

inline constexpr std::size_t ToolbarKeyCount = static_cast<std::size_t>(ToolbarKey::ToolColors) + 1;

// Each key's name, the button's objectName (by which the tests and the accessibility bus
// find it) and the name of its picture.
inline constexpr std::array<std::string_view, ToolbarKeyCount> ToolbarKeyNames = {
    "Exit", "Open", "Clear", "Print", "Preview", "Pan", "ZoomExtends", "ZWindow", "ZIn", "ZOut",
    "Refresh", "Step", "Slow", "Pause", "Stop", "GCode", "Rapid", "Axis", "Properties", "ToolColors",
};

constexpr std::size_t IndexOf(ToolbarKey key) { return static_cast<std::size_t>(key); }
constexpr std::string_view NameOf(ToolbarKey key) { return ToolbarKeyNames[IndexOf(key)]; }

// Every key, in toolbar order.
constexpr std::array<ToolbarKey, ToolbarKeyCount> AllToolbarKeys()
{
    std::array<ToolbarKey, ToolbarKeyCount> keys{};
    for (std::size_t i = 0; i < ToolbarKeyCount; ++i)
        keys[i] = static_cast<ToolbarKey>(i);
    return keys;
}

// True when `rows` (anything with a `key` member) hold every key once, in toolbar order:
// a table that leaves a button out or lists one twice does not compile where it is
// checked with this.
template <typename Row, std::size_t N>
constexpr bool EveryToolbarKeyInOrder(const Row (&rows)[N])
{
    if (N != ToolbarKeyCount)
        return false;
    for (std::size_t i = 0; i < N; ++i)
        if (IndexOf(rows[i].key) != i)
            return false;
    return true;
}

} // namespace backplot
