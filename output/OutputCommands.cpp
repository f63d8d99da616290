#include "OutputCommands.h"

#include "CanvasWidget.h"
#include "DxfExport.h"
#include "OutputFile.h"
#include "OutputTexts.h"
#include "PageSurface.h"
#include "Plotter.h"
#include "RecordFile.h"
#include "RunTimeError.h"
#include "TranslationTexts.h"
#include "Translator.h"
#include "frmPreview.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScreen>

namespace backplot {

namespace {

constexpr const char* PdfFileName = "TKZPrint.pdf";
constexpr double PenMillimetres = 0.2;

// Twips of one screen pixel: what "two screen pixels' worth of page" is measured in.
double ScreenTwipsPerPixel()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double dpi = screen ? screen->logicalDotsPerInchX() : 96;
    return dpi > 0 ? 1440 / dpi : 15;
}

// The hourglass for the length of a command, the arrow however it ends.
class Hourglass {
public:
    explicit Hourglass(UserDialogs& dialogs) : dialogs_(dialogs) { dialogs_.SetPointer(MousePointer::Hourglass); }
    ~Hourglass() { Release(); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
    void Release()
    {
        if (held_)
            dialogs_.SetPointer(MousePointer::Default);
        held_ = false;
    }

private:
    UserDialogs& dialogs_;
    bool held_ = true;
};

// Draws records 1..total of the record file through `draw`, each read into the record
// buffer with the arc colour set to black first.
template <class Draw>
void ReplayRecords(Translator& translator, std::int16_t total, PrintRenderer& renderer, Draw&& draw)
{
    if (total <= 0)
        return;
    RecordFileReader reader;
    reader.Open(translator.RecordFilePath());
    EntityRecord& record = translator.Record();
    for (std::int32_t n = 1; n <= total; ++n) {
        reader.Read(n, record);
        renderer.ArcColor = 0;
        draw(record);
    }
    reader.Close();
}

// An OutputFile as a device for Qt's image and PDF writers, which otherwise learn of a
// failed write only when a buffer of their own is flushed, if at all. Writes are
// gathered into 64 KiB blocks; the first failure stays the reason.
class OutputDevice : public QIODevice {
public:
    explicit OutputDevice(OutputFile& file) : file_(file) { open(QIODevice::WriteOnly); }
    // Writes what is gathered; false when any write failed.
    bool Finish() { return !failed_ && Drain(); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override
    {
        if (failed_)
            return -1;
        pending_.append(data, static_cast<std::size_t>(size));
        if (pending_.size() >= 1 << 16 && !Drain())
            return -1;
        return size;
    }

private:
    bool Drain()
    {
        failed_ = !file_.Write(pending_.data(), pending_.size());
        pending_.clear();
        return !failed_;
    }

    OutputFile& file_;
    std::string pending_;
    bool failed_ = false;
};

// Sends the drawn page to the printer. A PDF file is written as an OutputFile, on a page
// of the printer's layout and resolution, so that it takes the target's name only once
// it is whole.
void SendPage(QPrinter& printer, const PageSurface& page)
{
    if (printer.outputFormat() != QPrinter::PdfFormat) {
        QPainter painter;
        if (!painter.begin(&printer))
            throw RunTimeError("The printer cannot be opened");
        page.Paint(painter);
        if (!painter.end())
            throw RunTimeError("The page could not be sent");
        return;
    }
    OutputFile out(printer.outputFileName().toStdString());
    if (!out.Open())
        throw RunTimeError(out.Error());
    OutputDevice device(out);
    {
        QPdfWriter pdf(&device);
        pdf.setPageLayout(printer.pageLayout());
        pdf.setResolution(printer.resolution());
        QPainter painter;
        if (!painter.begin(&pdf))
            throw RunTimeError("The printer cannot be opened");
        page.Paint(painter);
        if (!painter.end())
            throw RunTimeError(out.Error().empty() ? "The page could not be sent" : out.Error());
    }
    if (!device.Finish() || !out.Commit())
        throw RunTimeError(out.Error());
}

} // namespace

bool SaveImageFile(const QImage& image, const std::string& path, const char* format, std::string& error)
{
    OutputFile out(path);
    if (!out.Open()) {
        error = out.Error();
        return false;
    }
    OutputDevice device(out);
    QImageWriter writer(&device, format);
    const bool encoded = writer.write(image);
    if (device.Finish() && encoded && out.Commit())
        return true;
    error = out.Error().empty() ? "cannot write " + path + ": " + writer.errorString().toStdString() : out.Error();
    return false;
}

OutputCommands::OutputCommands(QObject* parent) : QObject(parent)
{
    setObjectName(QStringLiteral("OutputCommands"));
}

OutputCommands::~OutputCommands()
{
    if (preview_)
        delete preview_.data();
}

// ---- Exports ----

void OutputCommands::SaveAsDXF(Translator& translator, UserDialogs& dialogs, const Settings& settings,
                               const DrawSurface& canvas)
{
    const DxfCanvasScale scale{canvas.ScaleLeft(), canvas.ScaleTop(), canvas.ScaleWidth(), canvas.ScaleHeight()};
    DxfExport(translator, dialogs).SaveAsDXF(exportFileName_, settings.WorkDir, scale);
}

void OutputCommands::SaveAsBMP(UserDialogs& dialogs, const Settings& settings, const CanvasWidget& canvas,
                               const std::function<void()>& redraw)
{
    try {
        const std::optional<std::string> name =
            exportFileName_.Choose(dialogs, texts::BitmapSaveTitle, settings.WorkDir, {{texts::BitmapFilter, "*.bmp"}}, ".bmp");
        if (!name)
            return;
        // What the canvas shows, at screen resolution.
        std::string error;
        if (!name->empty() && !SaveImageFile(canvas.Picture(), *name, "BMP", error))
            return;
        if (redraw)
            redraw();
    } catch (const std::exception&) {
        // Every failure of this command ends it without a word.
    }
}

// ---- Printing ----

QPrinter& OutputCommands::Printer()
{
    if (!printer_) {
        const QPrinterInfo info = QPrinterInfo::defaultPrinter();
        if (!info.isNull()) {
            printer_ = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
        } else {
            MakePdfPrinter();
            fallbackPdf_ = true;
        }
    }
    return *printer_;
}

void OutputCommands::MakePdfPrinter()
{
    // The same object stays: the set-up dialog may hold on to it.
    if (!printer_)
        printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer_->setOutputFormat(QPrinter::PdfFormat);
    printer_->setPageSize(QPageSize(QPageSize::A4));
    printer_->setPageOrientation(QPageLayout::Portrait);
    printer_->setPageMargins(QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
}

void OutputCommands::PrintToPdf(const QString& path)
{
    MakePdfPrinter();
    fallbackPdf_ = false;
    printer_->setOutputFileName(path);
}

bool OutputCommands::Print(Plotter& plotter, Translator& translator, const Settings& settings, UserDialogs& dialogs,
                           const std::function<void(const QString&)>& status)
{
    Hourglass pointer(dialogs);
    try {
        QPrinter& printer = Printer();
        if (fallbackPdf_)
            printer.setOutputFileName(QDir::toNativeSeparators(QString::fromStdString(translator.DataFolder()) +
                                                               QLatin1String(PdfFileName)));

        // The page's printable area: its size in twips for the mapping, in device
        // pixels for the drawing.
        const QRect twips = printer.pageLayout().paintRectPixels(1440);
        PageSurface page(printer.width(), printer.height(), printer.resolution() * PenMillimetres / 25.4);
        PrintRenderer renderer(settings, plotter.View, mapping_);
        renderer.SetPrinter(page, twips.width(), twips.height(), ScreenTwipsPerPixel());

        // The whole program, whatever part of it the screen shows now.
        ReplayRecords(translator, plotter.RecordTotal, renderer,
                      [&](const EntityRecord& record) { renderer.PrintEntity(page, record); });

        // The document is ended and the page sent even when nothing was drawn on it.
        SendPage(printer, page);
        pointer.Release();
        if (printer.outputFormat() == QPrinter::PdfFormat) {
            pdfFile_ = printer.outputFileName();
            if (status)
                status(QStringLiteral("  No printer here: the page was saved as ") + pdfFile_);
        } else {
            pdfFile_.clear();
        }
        return true;
    } catch (const std::exception&) {
        pointer.Release();
        dialogs.Message(texts::ErrorPrinting, texts::MessageTitle, MsgIcon::None, MsgButtons::Ok);
        return false;
    }
}

void OutputCommands::ShowPrinterSetup(UserDialogs& dialogs)
{
    try {
        Printer();
        dialogs.PrinterSetup(); // a cancel changes nothing
    } catch (const std::exception&) {
    }
}

// ---- Print preview ----

void OutputCommands::PrintPreview(Plotter& plotter, Translator& translator, const Settings& settings,
                                  UserDialogs& dialogs, const std::function<void()>& redrawMain,
                                  std::function<void()> print)
{
    previewPrint_ = std::move(print);
    std::optional<Hourglass> pointer;
    try {
        if (!preview_) {
            preview_ = new frmPreview(qobject_cast<QWidget*>(parent()));
            connect(preview_, &frmPreview::PrintRequested, this, [this] {
                if (previewPrint_)
                    previewPrint_();
            });
        }
        preview_->show();
        preview_->raise();
        CanvasWidget& picView = preview_->picView();
        DrawSurface& surface = picView.Surface();

        // The main view's window on the preview canvas.
        plotter.SetCoords(surface);

        pointer.emplace(dialogs);
        picView.ClearPicture();

        PrintRenderer renderer(settings, plotter.View, mapping_);
        ReplayRecords(translator, plotter.RecordTotal, renderer,
                      [&](const EntityRecord& record) { renderer.PrintPreview(surface, record); });

        pointer.reset();
        if (redrawMain)
            redrawMain();
    } catch (const std::exception&) {
        pointer.reset();
        dialogs.Message(texts::ErrorPreviewing, texts::MessageTitle, MsgIcon::None, MsgButtons::Ok);
    }
}

} // namespace backplot
