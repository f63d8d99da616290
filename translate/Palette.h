#pragma once

#include <array>
#include <cstdint>

namespace backplot {

// The classic 16-colour palette: index 0..15 to a 0xBBGGRR value (red in the low byte).
// Colour settings are kept both as an index into it and as its value.
inline constexpr std::array<std::uint32_t, 16> PaletteColors{
    0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
    0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF,
};

// The value of palette index `index`; an index outside 0..15 gives black.
constexpr std::uint32_t QBColor(int index)
{
    return index >= 0 && index < static_cast<int>(PaletteColors.size()) ? PaletteColors[static_cast<std::size_t>(index)]
                                                                          : 0;
}

} // namespace backplot
