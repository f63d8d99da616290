#pragma once

#include <cstdint>
#include <string>

namespace backplot {

// Every value of the settings store with its default. Colours are 0xBBGGRR; indexes are
// into the 16-colour palette. The tool colours live in the translator's ToolColorTable.
struct Settings {
    std::int32_t AxisColor = 0;             // "Axis Color"
    std::int16_t AxisSelectedColor = 15;    // "Axis SelectedColor"
    std::int16_t AxisLine = 1;              // "Axis Line": 0 solid, 1 dash, 2 dot, 3 dash-dot, 4 dash-dot-dot
    bool ShowAxis = true;                   // "Show Axis"
    bool ShowRapid = true;                  // "Show Rapid"
    bool ShowBlips = false;                 // "Show Blips"
    float SlowTime = 0.1f;                  // "Slow Time", seconds
    std::string FileExt = "*.*";            // "File Ext"
    std::string WorkDir;                    // "Work Dir"; the program's own folder when unset
    std::int32_t Backcolor = 0xFFFFFF;      // "Backcolor"
    std::int16_t BackcolorSelected = 15;    // "BackcolorSelected"
    bool CrossHairs = false;                // "Cross Hairs"
    bool Mill = true;                       // "Mill"
    std::int16_t AbsCenter = 0;             // "AbsCenter": 1 on, anything else off
    bool AutoDraw = false;                  // "AutoDraw"
    bool ToolColor = false;                 // "ToolColor"
    std::int32_t DefaultColor = 0xFF0000;   // "DefaultColor"
    std::int16_t DefaultSeletedColor = 9;   // "DefaultSeletedColor"
};

} // namespace backplot
