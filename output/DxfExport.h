#pragma once

#include "DxfWriter.h"
#include "ExportFileName.h"
#include "Translator.h"
#include "UserDialogs.h"

#include <string>

namespace backplot {

// The DXF export: re-runs the block interpreter over the block texts stored in the record
// file with DXF collection on, and writes what it collected. Used by the window's
// "&DXF File" command and by `backplot-cli dxf`, so both write the same bytes.
//
// The re-run starts from the modal state the translation left (motion and distance mode,
// arc centre, tools), so it meets the program's T words again: every export adds them to
// the translator's tool-change count, and a program with many tool changes can overrun
// the tool table there ("Error saving DXF file.").
class DxfExport {
public:
    DxfExport(Translator& translator, UserDialogs& dialogs) : translator_(translator), dialogs_(dialogs) {}

    // Fills the translator's DXF arrays (appending to what they hold) from records 1 up to
    // the record count of the record file; a missing record file counts as empty. Resets
    // the positions (CurX.. to 1e-14, LastX.. to 0) and the arc radius and angles first,
    // nothing else. Each record's 60-character block text, trailing blanks included, goes
    // through InterpretBlock with CollectDxf set.
    //
    // Any error stops the re-run with the message "Error saving DXF file." (critical,
    // "Corvane Backplot") and returns normally with what was collected so far; CollectDxf
    // is then left set, as the error ends the procedure before its clean-up.
    void GetDXFCoords();

    // The window's command: the save dialog "Save As DXF File" in `workDir` ("DXF files (*.dxf)"
    // then "Windows bmps (*.bmp)", the first chosen; only existing files), the name kept in
    // `exportFileName` with ".dxf" added when it holds no dot, GetDXFCoords, the DXF text
    // with `canvas` as its header written to the file, and the arrays emptied. Any error,
    // a cancel included, ends the command silently; a file that cannot be written whole
    // stays as it was. The arrays are emptied and CollectDxf cleared on every way out, so neither
    // a later export nor the next translation finds them left over.
    void SaveAsDXF(ExportFileName& exportFileName, const std::string& workDir, const DxfCanvasScale& canvas);

    // The DXF text SaveAsDXF would write, without the dialog; the arrays are emptied again.
    std::string Document(const DxfCanvasScale& canvas);

    // The command-line tool's export to `path`, used exactly as given (no extension is
    // added). False when the file cannot be written, with the reason in `error`; the file
    // is then as it was before.
    bool ExportTo(const std::string& path, const DxfCanvasScale& canvas, std::string& error);

    // Writes `text` to `path` as an OutputFile: whole, or not at all. False with the
    // reason in `error`.
    static bool WriteTextFile(const std::string& path, const std::string& text, std::string& error);

private:
    // Empties the arrays and clears CollectDxf.
    void Finish();

    Translator& translator_;
    UserDialogs& dialogs_;
};

} // namespace backplot
