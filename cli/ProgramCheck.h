#pragma once

#include "CheckCodes.h"

#include <string>
#include <vector>

namespace backplot {

// One place where the program's rules will draw something its writer most likely did not
// mean. Line numbers count the lines of the file as an editor does, blank lines included.
struct Finding {
    int Line = 0;
    CheckCode Code = CheckCode::ImpliedDecimal;
    std::string Message;

    bool operator==(const Finding&) const = default;
};

// Reads the normalised program at `normalisedPath` (the translator's TKZTemp.tmp) and
// replays its translation block by block with an interpreter of its own, as the window
// translates it (the error boxes answered OK), comparing what each block says with what
// the interpreter, the arc geometry and the extents pass make of it. `absCenter` is the
// AbsCenter setting (1: I and J are absolute centres). Sorted by line, then by code.
// Raises RunTimeError when the file cannot be read.
std::vector<Finding> CheckProgram(const std::string& normalisedPath, bool mill, int absCenter);

} // namespace backplot
