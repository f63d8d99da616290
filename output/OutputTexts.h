#pragma once

// The program's own words in the outputs: the save dialogs of the DXF and bitmap
// exports, the print preview window and the messages of printing. They stand exactly as
// the program has always shown them, odd spelling included ("occured"): they are not
// slips to correct, and the tests hold each of them letter for letter. The title of the
// messages is in TranslationTexts.h.
namespace backplot::texts {

// Save As > DXF File: the dialog and its two filters (the second still writes DXF)
inline constexpr const char* DxfSaveTitle = "Save As DXF File";
inline constexpr const char* DxfFilterDxf = "DXF files (*.dxf)";
inline constexpr const char* DxfFilterBmp = "Windows bmps (*.bmp)";
inline constexpr const char* ErrorSavingDxf = "Error saving DXF file.";

// Save As > Windows Bitmap
inline constexpr const char* BitmapSaveTitle = "Save As Windows bitmap";
inline constexpr const char* BitmapFilter = "Windows bmp (*.bmp)";

// Printing
inline constexpr const char* ErrorPrinting = "An error occured while printing";

// Print Preview (frmPreview)
inline constexpr const char* PreviewCaption = "Print Preview";
inline constexpr const char* PreviewExitTip = "Exit print preview";
inline constexpr const char* PreviewPrintTip = "Send to printer";
inline constexpr const char* PreviewFileMenu = "&File";
inline constexpr const char* PreviewPrintItem = "&Print";
inline constexpr const char* PreviewExitItem = "E&xit";
inline constexpr const char* ErrorPreviewing = "Print Preview Error!";

} // namespace backplot::texts
