#pragma once

#include "ProgramCheck.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace backplot {

// What the replay knows about one line when its words are looked at.
struct BlockFacts {
    int Line = 0;
    std::string_view Raw;       // the normalised line
    std::string_view Block;     // what StripComment left of it
    std::string_view Effective; // Block with the lathe letters swapped (Block when milling)
    bool Mill = true;
    bool AbsCenter = false;     // --abs-center given
    bool ArcMode = false;       // the motion mode after the block's G words is 2 or 3
    bool Moves = false;         // the block's target differs from its start
    std::string Target;         // the target as the writer gives it ("X10. Y5.", lathe "Z-5. X20.")
    std::string ModeName;       // the motion mode after the block ("G1")
    char Failed = 0;            // the letter whose reading raised the error box ('T': an 11th tool change)
};

// What the word checks carry from line to line: the last units and work offset words.
struct WordHistory {
    int Units = 0, UnitsLine = 0;   // 1 inches (G20, a mill's G70), 2 millimetres (G21, G71)
    std::string UnitsWord;
    int Offset = 0, OffsetLine = 0; // 54..59
};

// The checks of the line's text: the cut (comment-cut, block-delete), which need only
// `Raw`; and, when the block is interpreted, the words (implied-decimal, lower-case,
// repeated-address, plane, ignored-gcode, decimal-gcode, expression, semicolon-comment,
// ignored-axis, motion-words). Letters whose reading raises the error box are left to the
// caller (malformed-number), except where an expression explains them.
void CheckCut(int line, std::string_view raw, std::vector<Finding>& out);
void CheckWords(const BlockFacts& facts, WordHistory& history, std::vector<Finding>& out);

// The letter of the effective block whose reading raises the error box, in the order the
// interpreter reads them (X Y Z I J R F B, then T past ten tool changes, then K); 0 when
// none does. `toolChanges` is the count before the block.
char FirstFailure(std::string_view effective, std::int16_t toolChanges);

// A letter whose number is an expression or a name instead: "X[#1*2]", "X#3", "X=FLAN",
// "R1=10", or the letter inside a name such as "GOTO".
bool InExpression(std::string_view block, std::size_t position);

// The plane after the block's G17, G18 and G19 words (those before a ";"), `current`
// when it has none.
int SelectedPlane(std::string_view block, int current);

// The letter, in the writer's terms, of a letter of the effective block: lathe blocks
// read their X word as Y, Z as X, I as J and K as I.
char WriterLetter(char effective, bool mill);

// The word at `position` of `block` as written: the letter and its number text, trailing
// blanks removed ("X25", "X 1.5").
std::string WordAt(std::string_view block, std::size_t position);

// A number for a message: at most `decimals` places, no trailing zeros, no "-0".
std::string Number(double value, int decimals = 4);

} // namespace backplot
