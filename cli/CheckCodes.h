#pragma once

#include <array>
#include <string_view>

namespace backplot {

// The kinds of finding of `check`, in the order the help lists them. Each names a rule of
// the translator or the plot that makes the picture differ from what the program's writer
// most likely meant.
enum class CheckCode {
    ImpliedDecimal,
    MalformedNumber,
    LowerCase,
    CommentCut,
    BlockDelete,
    RepeatedAddress,
    Plane,
    IgnoredGCode,
    DecimalGCode,
    Expression,
    SemicolonComment,
    IgnoredAxis,
    ArcWithoutCentre,
    ArcRadiusShort,
    ArcRefit,
    ArcEndOffCircle,
    ExtentsCircle,
    MotionWords,
    LatheY,
    ToolChangeLimit,
    LineLimit,
};

struct CheckCodeInfo {
    CheckCode Code;
    std::string_view Name;    // as printed: "implied-decimal"
    std::string_view Rule;    // when it is reported, one line
    std::string_view Example; // a block that gets it
};

inline constexpr std::array<CheckCodeInfo, 21> CheckCodes{{
    {CheckCode::ImpliedDecimal, "implied-decimal",
     "an X, Y, Z, I, J, K or R number without a point is read in ten-thousandths", "G1 X25 (read as 0.0025)"},
    {CheckCode::MalformedNumber, "malformed-number",
     "a number without a point that is not one number: the line raises the error box", "G1 X1-2"},
    {CheckCode::LowerCase, "lower-case", "a lower-case letter before a number is not read", "g1 x1.5"},
    {CheckCode::CommentCut, "comment-cut",
     "the block ends at the first ( / ' or , and words after it are lost", "G1 X1. (rough) Y2."},
    {CheckCode::BlockDelete, "block-delete", "a line starting with / is skipped whole", "/G1 X5."},
    {CheckCode::RepeatedAddress, "repeated-address",
     "a letter that stands twice: only its first word is read", "G1 X1. X2."},
    {CheckCode::Plane, "plane", "G18 or G19: arcs are still drawn in the X-Y plane", "G18 G2 X10. Z-5. I5."},
    {CheckCode::IgnoredGCode, "ignored-gcode",
     "a G word the plot does not act on although the machine does", "G81 X10. Y5. Z-3. R1."},
    {CheckCode::DecimalGCode, "decimal-gcode", "a G word with a decimal part is read as its whole part",
     "G91.1 (read as G91)"},
    {CheckCode::Expression, "expression",
     "brackets, # parameters, assignments or names where a number belongs are not evaluated",
     "G1 X[#1*2]"},
    {CheckCode::SemicolonComment, "semicolon-comment",
     "; does not start a comment: the words after it are read", "G1 X1. ; G0 to start"},
    {CheckCode::IgnoredAxis, "ignored-axis", "A, C, U, V and W words are not drawn", "G1 A90."},
    {CheckCode::ArcWithoutCentre, "arc-without-centre",
     "an arc move without I, J, K or R draws nothing but moves on", "G2 X10. Y0"},
    {CheckCode::ArcRadiusShort, "arc-radius-short",
     "a radius shorter than half the chord: the arc keeps the previous centre", "G2 X10. Y0 R4."},
    {CheckCode::ArcRefit, "arc-refit",
     "I and J both given and the end off their circle: the centre moves onto the chord's bisector",
     "G2 X10. Y0 I5.1 J0.5"},
    {CheckCode::ArcEndOffCircle, "arc-end-off-circle",
     "I or J zero and the end off the circle: the arc ends elsewhere", "G2 X10. Y1. I5. J0"},
    {CheckCode::ExtentsCircle, "extents-circle",
     "an arc whose whole circle reaches far beyond the drawing: the opened view zooms out to it",
     "G2 X1. Y0.1 R50."},
    {CheckCode::MotionWords, "motion-words", "two motion words in one block: one of them wins", "G0 G1 X5."},
    {CheckCode::LatheY, "lathe-y", "a Y in lathe mode stops translation", "G1 X20. Y5. (with --lathe)"},
    {CheckCode::ToolChangeLimit, "tool-change-limit",
     "the 11th and every later T word raise the error box", "T11 after ten tool changes"},
    {CheckCode::LineLimit, "line-limit",
     "lines past 32,767 non-empty lines each raise the error box", "line 32,768"},
}};

// CheckCodeName() looks a code up by its place: the table must follow the enumeration.
constexpr bool CheckCodesInOrder()
{
    for (std::size_t i = 0; i < CheckCodes.size(); ++i)
        if (static_cast<std::size_t>(CheckCodes[i].Code) != i)
            return false;
    return true;
}
static_assert(CheckCodesInOrder());

inline constexpr std::string_view CheckCodeName(CheckCode code)
{
    return CheckCodes[static_cast<std::size_t>(code)].Name;
}

} // namespace backplot
