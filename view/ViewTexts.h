#pragma once

// The program's own words in the plot view: the drawing aids dialog and the messages
// about the cross hairs. They stand exactly as the program has always shown them, odd
// spelling included ("drawinig"): they are not slips to correct, and the tests hold
// each of them letter for letter. The title of most messages and the readout's texts
// are in TranslationTexts.h.
namespace backplot::texts {

// Auto Redraw "Off" while the cross hairs are on
inline constexpr const char* TurnCrossHairsOff = "Please turn the cross hairs off\r\nbefore using this option.";

// Drawing Aids (frmDrawAids)
inline constexpr const char* DrawAidsCaption = "Drawing Aids";
inline constexpr const char* DrawAidsModes = "&Modes";
// chkModes(0) to chkModes(3)
inline constexpr const char* DrawAidsModeCaptions[] = {"Cross Hairs", "Rapid Points", "Rapid Lines", "Axis Lines"};
inline constexpr const char* DrawAidsOk = "OK";
inline constexpr const char* DrawAidsCancel = "Cancel";
inline constexpr const char* SetAutoRedrawOn = "Please set AutoRedraw to on before using this option.";
inline constexpr const char* DrawAidsErrorTitle = "Corvane Backplot Error";
inline constexpr const char* DrawAidsError = "Error encountered with drawinig aids.";

} // namespace backplot::texts
