#pragma once

// The program's own words in playback and inspection: the status texts of stepping and
// slow motion, the partial plots' prompt, dialog and messages, and the step details
// report. They stand exactly as the program has always shown them, blanks included (the
// status texts start with two, the report's labels with one): they are not slips to
// correct, and the tests hold each of them letter for letter. The title of most messages
// is in TranslationTexts.h.
namespace backplot::texts {

// The status line while stepping and in slow motion
inline constexpr const char* EndSingleStep = "  Press Esc key to end single step.";
inline constexpr const char* EndSlowMotion = "  Press Esc key to end slow motion.";
inline constexpr const char* SlowMotionPaused = "  Paused - Press the P key to continue";

// A record file that cannot be read, while stepping or in a partial plot
inline constexpr const char* ErrorOpeningFile = "Error opening file!";

// Partial plots: "Tool To &EOF" asks, "&Tool To Tool" shows frmTool1
inline constexpr const char* ToolFromPrompt = "Enter a Tool number value between 1 and 15";
inline constexpr const char* ToolFromTitle = "Plot from";
// + the count of tool changes + ToolChangesAfter
inline constexpr const char* ToolChangesBefore = "There is only ";
inline constexpr const char* ToolChangesAfter = " tool change(s) in the program.";
inline constexpr const char* ToolToToolCaption = "Plot Tool to Tool";
inline constexpr const char* ToolToToolFirst = "Enter tool number one:";
inline constexpr const char* ToolToToolSecond = "Enter tool number two:";
inline constexpr const char* ToolToToolOk = "&OK";
inline constexpr const char* ToolToToolCancel = "Cancel";

// Step details (frmDetails) and its report
inline constexpr const char* DetailsCaption = "Details";
inline constexpr const char* DetailsOk = "&OK";
inline constexpr const char* ReportCncCode = " CNC code "; // before the block
inline constexpr const char* ReportRapidHead = "      <Rapid position>";
inline constexpr const char* ReportLineHead = "    <Line>"; // these two start in the second print zone
inline constexpr const char* ReportArcHead = "<Arc>";
inline constexpr const char* ReportLastTool = " Last T#";
inline constexpr const char* ReportAngleFromZero = " Angle from zero";
inline constexpr const char* ReportDistFromZero = " 2-D Dist from zero";
inline constexpr const char* ReportDistFromLast = " 2-D Dist from last point";
inline constexpr const char* ReportAngle = " Angle";
inline constexpr const char* ReportStartAngle = " Start angle";
inline constexpr const char* ReportEndAngle = " End angle";
inline constexpr const char* ReportRadius = " Radius";
// A point's labels: X, Y and Z for milling, Z and the diameter D for a lathe.
struct PointLabels {
    const char* X;
    const char* Y;
    const char* Z;
    const char* D;
};
inline constexpr PointLabels ReportRapidPoint{" X position", " Y position", " Z position", " D position"};
inline constexpr PointLabels ReportStart{" X start position", " Y start position", " Z start position",
                                         " D start position"};
inline constexpr PointLabels ReportEnd{" X end position", " Y end position", " Z end position", " D end position"};
inline constexpr PointLabels ReportCenter{" X center position", " Y center position", " Z center position",
                                          " D center position"};

} // namespace backplot::texts
