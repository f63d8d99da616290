#include "TranslationState.h"

namespace backplot {

void ToolColorTable::LoadDefaults()
{
    Entries.fill(ToolColor{});
    Entries[1] = {0, 0xFF0000, 9};  // blue
    Entries[2] = {0, 0x00FF00, 10}; // green
    Entries[3] = {0, 0xFFFF00, 11}; // cyan
    Entries[4] = {0, 0x0000FF, 12}; // red
}

} // namespace backplot
