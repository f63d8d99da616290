#pragma once

// The program's own words in translating and opening a program: message texts and
// titles, status texts. They stand exactly as the program has always shown them, odd
// spelling and blanks included ("are are", "prossessing", a title ending in a blank):
// they are not slips to correct, and the tests hold each of them letter for letter.
// The other folders keep theirs in ViewTexts.h, PlaybackTexts.h, OutputTexts.h and
// AppTexts.h; texts this version added (its own messages, accessible names) stay with
// their code.
namespace backplot::texts {

// The title of almost every message box, in every part of the program.
inline constexpr const char* MessageTitle = "Corvane Backplot";

// Translating
inline constexpr const char* FileErrorTitle = "Corvane Backplot File error. ";
inline constexpr const char* ProblemWithInputFile = "Problem with input file.";
// + the line number, CR LF CR LF, the block
inline constexpr const char* ErrorAtLine = "An error was encountered while generating file at line ";
inline constexpr const char* MillingFileTitle = "Backplot Error";
inline constexpr const char* MillingFileInLathe = "The NC/CNC file you are are processing appears to be\r\n\r\n"
                                                  "a Milling file. Change the setting using the Options/Properties menu.";

// Opening a program
inline constexpr const char* OpenDialogTitle = "Open File";
inline constexpr const char* EmptyFile = " is an empty file"; // after the path
inline constexpr const char* StatusOpening = " Opening file "; // before the path
inline constexpr const char* StatusTranslating = " Translating file.";
inline constexpr const char* StatusDrawing = " Drawing file.";
inline constexpr const char* OpenFailed = "An error as occurred while prossessing the file "; // nothing follows

// The position readout, before each number: while translating, and under the pointer.
inline constexpr const char* ReadoutX = " X ";
inline constexpr const char* ReadoutY = " Y ";
inline constexpr const char* ReadoutZ = " Z ";

} // namespace backplot::texts
