#include "OutputCommands.h"
#include "OutputTestSupport.h"

#include <QImage>
#include <QPrinter>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <vector>

namespace backplot {
namespace {

using test::Rectangle;

// The printed page as a picture at 100 dots per inch (1.389 pixels a point). The printer
// keeps page sizes in whole points: A4 is 595 x 842 points (827 x 1170 pixels), and inside
// margins of 10 mm (28 points) the printable area is 539 x 786 points.
QImage Rasterise(const std::filesystem::path& pdf)
{
    const std::filesystem::path prefix = pdf.parent_path() / "page";
    const std::string command = "pdftoppm -r 100 -png -singlefile '" + pdf.string() + "' '" + prefix.string() + "'";
    if (std::system(command.c_str()) != 0)
        return {};
    return QImage(QString::fromStdString(prefix.string() + ".png"));
}

bool Dark(const QImage& page, int x, int y) { return qGray(page.pixel(x, y)) < 160; }

// The rows (or columns) along a line of the page where something is drawn, runs of
// neighbours counted once by their middle.
std::vector<int> Marks(const QImage& page, int at, bool alongColumn)
{
    std::vector<int> marks;
    const int n = alongColumn ? page.height() : page.width();
    int start = -1;
    for (int i = 0; i <= n; ++i) {
        const bool dark = i < n && (alongColumn ? Dark(page, at, i) : Dark(page, i, at));
        if (dark && start < 0)
            start = i;
        if (!dark && start >= 0) {
            marks.push_back((start + i - 1) / 2);
            start = -1;
        }
    }
    return marks;
}

// The A4 page with the rectangle's edges, within a pixel, across the page's middle row
// (x 0 and x 40) and down its middle column (stored y -10 and 0).
void ExpectRectangleEdges(const QImage& page, int left, int right, int top, int bottom)
{
    ASSERT_EQ(page.size(), QSize(827, 1170));
    const std::pair<std::vector<int>, std::vector<int>> lines[] = {
        {Marks(page, 585, false), {left, right}}, {Marks(page, 413, true), {top, bottom}}};
    for (const auto& [marks, expected] : lines) {
        ASSERT_EQ(marks.size(), 2u);
        for (int i : {0, 1})
            EXPECT_NEAR(marks[i], expected[i], 1);
    }
}

class PrintTest : public ::testing::Test {
protected:
    PrintTest()
    {
        rig.settings.ShowAxis = false;
        output.PrintToPdf(QString::fromStdString(pdf.string()));
    }
    bool Print()
    {
        return output.Print(rig.plotter, rig.translator, rig.settings, rig.dialogs, [this](const QString& text) { status = text; });
    }

    test::PlotRig rig;
    OutputCommands output;
    std::filesystem::path pdf = rig.dir.Path() / "page.pdf";
    QString status;
};

TEST_F(PrintTest, WideViewFillsThePageWidthCentredVerticallyAndWithoutAPrinterGoesToTheDataFolder)
{
    rig.Open(Rectangle);
    // 60 x 40 units around the rectangle; the screen is mid-step at the first record, the
    // page shows the whole program all the same.
    rig.SetView(-10, -25, 50, 15);
    rig.plotter.PlotLast = 1;
    ASSERT_TRUE(Print());
    EXPECT_TRUE(rig.dialogs.Messages.empty());
    EXPECT_EQ(output.PdfFile(), QString::fromStdString(pdf.string()));
    EXPECT_EQ(status, QStringLiteral("  No printer here: the page was saved as ") + output.PdfFile());

    // 60 units across 539 points: 8.983 points a unit. The page spans 60 / (539 / 786) =
    // 87.495 units down, centred on the view's middle y = -5: from -48.748 to 38.748, which
    // the main view takes over.
    EXPECT_NEAR(rig.plotter.View.ViewY1, -48.748, 0.001);
    EXPECT_NEAR(rig.plotter.View.ViewY2, 38.748, 0.001);
    // Two 15-twip pixels of a page 786 points (15720 twips) high spanning 87.495 units;
    // the blips a hundredth of that height.
    EXPECT_NEAR(output.Mapping().PrinterPixel, 0.16698, 1e-5);
    EXPECT_NEAR(output.Mapping().MarkSize, 0.87495, 1e-5);

    // Edges: x 0 at 28 + 10 x 8.983 = 117.8 points (163.7 px), x 40 at 477.2 points
    // (662.7 px); stored y -10 at 28 + 38.748 x 8.983 = 376.1 points (522.4 px), y 0 at
    // 465.9 points (647.1 px).
    // The drawing's middle, (164 + 663) / 2 and (522 + 647) / 2, is the page's, 28 + 786 / 2 =
    // 421 points (585 px) down.
    ExpectRectangleEdges(Rasterise(pdf), 164, 663, 522, 647);

    // Without a printer and without a file of its own, the page goes to the PDF file in
    // the data folder.
    OutputCommands fallback;
    if (fallback.Printer().outputFormat() != QPrinter::PdfFormat)
        GTEST_SKIP() << "this machine has a printer";
    ASSERT_TRUE(fallback.Print(rig.plotter, rig.translator, rig.settings, rig.dialogs,
                               [this](const QString& s) { status = s; }));
    const std::filesystem::path expected = rig.dir.Path() / "TKZPrint.pdf";
    EXPECT_EQ(fallback.PdfFile().toStdString(), expected.string());
    EXPECT_EQ(status.toStdString(), "  No printer here: the page was saved as " + expected.string());
    EXPECT_EQ(test::ReadAll(expected).substr(0, 5), "%PDF-");
}

TEST_F(PrintTest, FailuresShowTheMessageAndSendNoPageAndNoProgramSendsABlankOne)
{
    // Printer setup cancelled: the dialog once, nothing said.
    rig.dialogs.PrinterSetupAnswer = false;
    output.ShowPrinterSetup(rig.dialogs);
    EXPECT_EQ(rig.dialogs.PrinterSetups, 1);
    // Nothing opened: an empty view, no records; the document still ends with its page,
    // blank, and nothing is said.
    EXPECT_TRUE(Print());
    EXPECT_TRUE(rig.dialogs.Messages.empty());
    const QImage blank = Rasterise(pdf);
    ASSERT_EQ(blank.size(), QSize(827, 1170));
    EXPECT_EQ(blank.convertToFormat(QImage::Format_RGB32), [&] {
        QImage white(blank.size(), QImage::Format_RGB32);
        white.fill(Qt::white);
        return white;
    }());
    EXPECT_EQ(rig.plotter.View.ViewX1, 0);
    std::filesystem::remove(pdf);
    status.clear();

    using Message = test::ScriptedDialogs::ShownMessage;
    const Message printError{"An error occured while printing", "Corvane Backplot", MsgIcon::None, MsgButtons::Ok};
    // The record file gone since the program was opened.
    rig.Open(Rectangle);
    rig.SetView(-10, -25, 50, 15);
    std::filesystem::remove(rig.translator.RecordFilePath());
    rig.dialogs.Pointers.clear();
    EXPECT_FALSE(Print());
    EXPECT_EQ(rig.dialogs.Messages, std::vector<Message>{printError});
    EXPECT_FALSE(std::filesystem::exists(pdf));
    EXPECT_EQ(rig.dialogs.Pointers, (std::vector<MousePointer>{MousePointer::Hourglass, MousePointer::Default}));

    // A file that cannot be written.
    rig.Open(Rectangle);
    rig.SetView(-10, -25, 50, 15);
    const std::filesystem::path missing = rig.dir.Path() / "missing" / "page.pdf";
    output.PrintToPdf(QString::fromStdString(missing.string()));
    EXPECT_FALSE(Print());
    EXPECT_EQ(rig.dialogs.Messages, (std::vector<Message>{printError, printError}));
    EXPECT_FALSE(std::filesystem::exists(missing.parent_path()));

    // A disk that fills part-way: the page printed before stays, whole.
    output.PrintToPdf(QString::fromStdString(pdf.string()));
    rig.dir.Write("page.pdf", "the page printed before");
    {
        const test::FileSizeLimit full(1000);
        EXPECT_FALSE(Print());
    }
    EXPECT_EQ(rig.dialogs.Messages, (std::vector<Message>{printError, printError, printError}));
    EXPECT_EQ(test::ReadAll(pdf), "the page printed before");
    for (const auto& entry : std::filesystem::directory_iterator(rig.dir.Path()))
        EXPECT_NE(entry.path().filename().string().front(), '.') << entry.path();
    EXPECT_TRUE(status.isEmpty());
}

TEST(CliPrint, WritesThePageTheWindowWouldPrintAfterOpening)
{
    test::ScratchDir work;
    const std::string program = work.Write("rectangle.nc", Rectangle);
    const std::filesystem::path pdf = work.Path() / "page.pdf";
    const std::filesystem::path tmp = work.Path() / "tmp";
    std::filesystem::create_directory(tmp);
    const std::string command = "TMPDIR='" + tmp.string() + "' '" BACKPLOT_CLI "' print '" + program + "' -o '" +
                                pdf.string() + "' --size 400x200 2>'" + (work.Path() / "stderr").string() + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(test::ReadAll(work.Path() / "stderr"), "");
    EXPECT_TRUE(std::filesystem::is_empty(tmp));

    // Opened on 400 x 200: extents 40 x 10, fitted and widened by 6 on every side to the
    // view (-6, -18)-(46, 8). On the page: 52 units across 539 points, 10.365 points a
    // unit, centred on y = -5. x 0 at 28 + 6 x 10.365 = 90.2 points (125 px), x 40 at
    // 504.8 points (701 px); stored y -10 at 28 + 32.91 x 10.365 = 369.2 points (513 px),
    // y 0 at 472.8 points (657 px). The axis lies on the edges x 0 and y 0.
    ExpectRectangleEdges(Rasterise(pdf), 125, 701, 513, 657);
}

} // namespace
} // namespace backplot
