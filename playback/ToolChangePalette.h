#pragma once

#include <array>
#include <cstdint>

namespace backplot {

// The colours of the tool-to-tool plot: the n-th tool change of the pass is drawn in
// entry n - 1 (0xBBGGRR, red in the low byte). The pass counts 1..15 and then starts
// again at 0, which draws in the default colour, so entry 15 is never reached; it is
// kept so the table has the palette's 16 entries.
//
// Chosen for the white default background: every entry has a contrast ratio of at least
// 2 against white, no two entries lie closer than 60 apart in RGB, and none is the
// default drawing colour (pure blue), so one tool change never looks like the next or
// like the default-coloured 16th. The first entries are the most distinct hues, as most
// programs change tools only a few times.
inline constexpr std::array<std::uint32_t, 16> ToolChangePalette{
    0x3C14DC, // 1  crimson        (220, 20, 60)
    0x008000, // 2  green          (0, 128, 0)
    0xDC9600, // 3  sky blue       (0, 150, 220)
    0x008CFF, // 4  orange         (255, 140, 0)
    0x800080, // 5  purple         (128, 0, 128)
    0x808000, // 6  teal           (0, 128, 128)
    0xFF00FF, // 7  magenta        (255, 0, 255)
    0x008080, // 8  olive          (128, 128, 0)
    0x13458B, // 9  brown          (139, 69, 19)
    0x800000, // 10 navy           (0, 0, 128)
    0x32CD32, // 11 lime green     (50, 205, 50)
    0xCD5A6A, // 12 slate blue     (106, 90, 205)
    0x9314FF, // 13 deep pink      (255, 20, 147)
    0x808080, // 14 grey           (128, 128, 128)
    0x000080, // 15 maroon         (128, 0, 0)
    0x000000, // 16 black          (0, 0, 0), never drawn with
};

} // namespace backplot
