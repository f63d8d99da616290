#pragma once

#include "DrawSurface.h"
#include "ExportFileName.h"
#include "PrintRenderer.h"
#include "Settings.h"
#include "frmPreview.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <memory>

class QImage;
class QPrinter;

namespace backplot {

class CanvasWidget;
class Plotter;
class Translator;
class UserDialogs;

// Saves `image` to `path` in `format` ("PNG", "BMP") as an OutputFile: whole, or not at
// all. False with "cannot write PATH: REASON" in `error`.
bool SaveImageFile(const QImage& image, const std::string& path, const char* format, std::string& error);

// The main window's output commands: DXF and bitmap export, printing, printer set-up and
// the print preview. Owns what lives between them: the export file name, the printer, the
// page mapping of the last SetPrinter and the one preview window. Each command takes what
// it works on by reference, so the window's handlers are a line or two, and catches every
// error itself: nothing leaves a command.
//
// Printing goes to the default printer. Where no printer is installed, the page goes to
// the PDF file "TKZPrint.pdf" in the data folder instead, and the status callback of
// Print says so; PrintToPdf chooses a PDF file outright (the command-line tool, tests).
class OutputCommands : public QObject {
    Q_OBJECT
public:
    explicit OutputCommands(QObject* parent = nullptr);
    ~OutputCommands() override;


    // "&DXF File": DxfExport::SaveAsDXF with the canvas's user scale as the header and the
    // "Work Dir" setting as the dialog's folder. Silent on every error and on a cancel.
    void SaveAsDXF(Translator& translator, UserDialogs& dialogs, const Settings& settings, const DrawSurface& canvas);

    // "&Windows Bitmap": the dialog "Save As Windows bitmap" in "Work Dir" (filter
    // "Windows bmp (*.bmp)", only existing files), ".bmp" added to a name without a dot, the
    // canvas's visible picture saved as a BMP file, then `redraw`. A cancel or any error
    // ends the command at once, silently, without the redraw.
    void SaveAsBMP(UserDialogs& dialogs, const Settings& settings, const CanvasWidget& canvas,
                   const std::function<void()>& redraw);

    // "&Print": SetPrinter on the printer's page (the plotter's view window becomes the
    // page's window), records 1 to plotter.RecordTotal read into the translator's record
    // buffer and drawn by PrintEntity, then the page is sent. The hourglass meanwhile. On
    // any error: "An error occured while printing" (no icon, "Corvane Backplot") and no
    // page is sent. A page with nothing on it is sent as it is. When the page went to a
    // PDF file in place of a printer, `status` receives a text naming it (status line 1).
    // Returns true when a page was sent.
    bool Print(Plotter& plotter, Translator& translator, const Settings& settings, UserDialogs& dialogs,
               const std::function<void(const QString&)>& status = {});

    // "Printer Set&up...": the printer set-up dialog on this object's printer (the window
    // hands Printer() to its dialogs first). A cancel ends silently.
    void ShowPrinterSetup(UserDialogs& dialogs);

    // "Print Pre&view": makes and shows the preview window if there is none, fits the
    // plotter's view onto its canvas picView (SetCoords: the shared view fields change),
    // clears it and draws records 1 to plotter.RecordTotal with the printer's rules, the
    // short-arc limit and mark size as the last SetPrinter left them; then `redrawMain`.
    // On any error: "Print Preview Error!" (no icon, "Corvane Backplot") and no redraw.
    // The preview's print button and menu item call `print` (the window presses its hidden
    // print button).
    void PrintPreview(Plotter& plotter, Translator& translator, const Settings& settings, UserDialogs& dialogs,
                      const std::function<void()>& redrawMain, std::function<void()> print);

    // The printer, made on first use: the default printer, else a PDF printer.
    QPrinter& Printer();
    // Prints to this PDF file from now on (A4 portrait, 10 mm margins), printer or not.
    void PrintToPdf(const QString& path);
    // The PDF file of the last print that went to one; empty after printing on paper.
    const QString& PdfFile() const { return pdfFile_; }

    const ExportFileName& ExportName() const { return exportFileName_; }
    const PrintMapping& Mapping() const { return mapping_; }
    // The preview window while it is open; null otherwise.
    frmPreview* Preview() const { return preview_; }

private:
    void MakePdfPrinter();

    ExportFileName exportFileName_;
    PrintMapping mapping_;
    std::unique_ptr<QPrinter> printer_;
    bool fallbackPdf_ = false; // no printer installed: print into the data folder
    QString pdfFile_;
    QPointer<frmPreview> preview_;
    std::function<void()> previewPrint_;
};

} // namespace backplot
