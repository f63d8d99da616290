#include "OutputCommands.h"

#include "CanvasWidget.h"
#include "DxfExport.h"
#include "PageSurface.h"
#include "Plotter.h"
#include "RecordFile.h"
#include "RunTimeError.h"
#include "Translator.h"
#include "frmPreview.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScreen>

namespace backplot {

namespace {

constexpr const char* MessageTitle = "Corvane Backplot";
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

// A PDF file is whole when it ends with its end-of-file mark.
bool CompletePdf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() < 16)
        return false;
    const QByteArray head = file.read(5);
    file.seek(file.size() - 16);
    return head == "%PDF-" && file.read(16).contains("%%EOF");
}

// Sends the drawn page to the printer. A PDF file is first opened here, because a
// painter that cannot open it only warns; one left unfinished is removed again.
void SendPage(QPrinter& printer, const PageSurface& page)
{
    const bool pdf = printer.outputFormat() == QPrinter::PdfFormat;
    const QString path = printer.outputFileName();
    const auto fail = [&](const std::string& why) {
        if (pdf && QFileInfo(path).isFile())
            QFile::remove(path);
        throw RunTimeError(why);
    };
    if (pdf) {
        QFile probe(path);
        if (!probe.open(QIODevice::WriteOnly))
            throw RunTimeError("Cannot write " + path.toStdString());
    }
    QPainter painter;
    if (!painter.begin(&printer))
        fail("The printer cannot be opened");
    page.Paint(painter);
    if (!painter.end() || (pdf && !CompletePdf(path)))
        fail("The page could not be sent");
}

} // namespace

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
            exportFileName_.Choose(dialogs, "Save As Windows bitmap", settings.WorkDir, {{"Windows bmp (*.bmp)", "*.bmp"}}, ".bmp");
        if (!name)
            return;
        // What the canvas shows, at screen resolution.
        if (!name->empty() && !canvas.Picture().save(QString::fromStdString(*name), "BMP"))
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
        dialogs.Message("An error occured while printing", MessageTitle, MsgIcon::None, MsgButtons::Ok);
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
        dialogs.Message("Print Preview Error!", MessageTitle, MsgIcon::None, MsgButtons::Ok);
    }
}

} // namespace backplot
