#pragma once

#include "EntityRecord.h"

#include <string>
#include <vector>

namespace backplot {

// The step details report of one entity record: the lines the "Details" window shows,
// without line ends, trailing blanks kept.
//
// Layout: an empty line, " CNC code " followed by the 60-character BlockText as stored
// (untrimmed), an empty line, then the tables of the record's MoveType (0 rapid, 1 line,
// 2/3 arc or full circle; any other value stops after the head) for a milling (`mill`
// true: X, Y, Z) or a lathe program (Z and diameter D). A label and its value are joined
// either at the next 14-column print zone (columns 1, 15, 29, ...) or directly. Values
// are formatted "0.000000", except the line's " Angle" ("0.0") and the tool number,
// which prints as a number: a blank (or the minus) before it and one blank after.
//
// Y is stored negated, so the report negates it back. The lathe rapid's " D position" is
// the stored Y doubled without that negation, while every other D is -2 x the stored Y:
// a rapid and a cut to the same point show D with opposite signs. The lathe arc lists
// its end before its centre, and arc reports have no separator after " Last T#".
// Arithmetic runs on the stored 32-bit values widened to double.
std::vector<std::string> DetailsReport(const EntityRecord& record, bool mill);

// What a single block step does to the buffer after drawing: BlockText loses its
// leading and trailing blanks and is padded again to 60, so a report made after a step
// shows the trimmed block.
void TrimBlockText(EntityRecord& record);

} // namespace backplot
