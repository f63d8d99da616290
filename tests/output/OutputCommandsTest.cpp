#include "CanvasWidget.h"
#include "OutputCommands.h"
#include "OutputTestSupport.h"
#include "Widgets.h"
#include "frmPreview.h"

#include <QAction>
#include <QApplication>
#include <QFrame>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>
#include <gtest/gtest.h>

#include <filesystem>

namespace backplot {
namespace {

using test::Rectangle;

using test::Child;

// Gives the preview window the size at which its canvas is `width` x `height`.
void SizeCanvas(frmPreview& window, int width, int height)
{
    window.resize(width, window.menuBar()->height() + frmPreview::StripHeight + height);
    QApplication::processEvents();
}

TEST(frmPreview, ControlsAndACanvasThatTakesWhatTheStripLeavesEvenBelowItsHeight)
{
    frmPreview window;
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Print Preview"));
    for (const auto& [name, tip] : {std::pair{"cmdExit", "Exit print preview"}, {"cmdPrint", "Send to printer"}}) {
        auto* button = Child<QToolButton>(window, name);
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->toolTip(), QString::fromLatin1(tip));
        EXPECT_EQ(button->accessibleName(), QString::fromLatin1(tip));
        EXPECT_FALSE(button->icon().isNull()) << name;
    }
    auto* file = Child<QMenu>(window, "mnuFilemain");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->title(), QStringLiteral("&File"));
    QStringList items;
    for (const QAction* item : file->actions())
        items << item->objectName() + QLatin1Char(' ') + (item->isSeparator() ? QStringLiteral("-") : item->text());
    EXPECT_EQ(items, QStringList({"mnuPrint &Print", "mnuFBar1 -", "mnuExit E&xit"}));

    window.show();
    SizeCanvas(window, 500, 120);
    auto* strip = Child<QFrame>(window, "picTBar");
    ASSERT_NE(strip, nullptr);
    EXPECT_EQ(strip->geometry(), QRect(0, 0, 500, frmPreview::StripHeight));
    EXPECT_EQ(Child<CanvasWidget>(window, "picView"), &window.picView());
    EXPECT_EQ(window.picView().geometry(), QRect(0, frmPreview::StripHeight, 500, 120));
    EXPECT_EQ(window.picView().Surface().PixelHeight(), 120);

    // Lower than the strip: the canvas keeps its place with no height; nothing fails.
    window.resize(300, window.menuBar()->height() + 10);
    QApplication::processEvents();
    EXPECT_EQ(window.picView().geometry(), QRect(0, frmPreview::StripHeight, 300, 0));
    EXPECT_FALSE(window.grab().isNull());

    SizeCanvas(window, 400, 200);
    EXPECT_EQ(window.picView().geometry(), QRect(0, frmPreview::StripHeight, 400, 200));
}

class PreviewCommand : public ::testing::Test {
protected:
    PreviewCommand() { rig.settings.ShowAxis = false; }
    void Preview()
    {
        output.PrintPreview(rig.plotter, rig.translator, rig.settings, rig.dialogs, [this] { ++redraws; }, [this] { ++prints; });
    }

    test::PlotRig rig;
    OutputCommands output;
    int redraws = 0;
    int prints = 0;
};

TEST_F(PreviewCommand, DrawsTheMainViewWithThePrintersRulesThenPrintsOrCloses)
{
    rig.Open(Rectangle);
    rig.SetView(-10, -25, 50, 15);
    Preview(); // makes the window
    ASSERT_NE(output.Preview(), nullptr);
    EXPECT_TRUE(output.Preview()->isVisible());
    SizeCanvas(*output.Preview(), 400, 200);
    rig.SetView(-10, -25, 50, 15);
    Preview();
    EXPECT_EQ(redraws, 2);
    EXPECT_TRUE(rig.dialogs.Messages.empty());
    EXPECT_EQ(rig.dialogs.Pointers.back(), MousePointer::Default);

    // 60 x 40 units on 400 x 200 pixels: fitted by the width, 6.67 pixels a unit, 30 units
    // high about y = -5 (SetCoords wrote that back into the shared view).
    EXPECT_FLOAT_EQ(rig.plotter.View.ViewY1, -20);
    EXPECT_FLOAT_EQ(rig.plotter.View.ViewY2, 10);
    const QImage picture = output.Preview()->picView().Picture();
    ASSERT_EQ(picture.size(), QSize(400, 200));
    // The rectangle's edges: x 0 and 40 at pixels 67 and 333, stored y -10 and 0 at 67 and
    // 133; white inside and just outside.
    const QRgb black = qRgb(0, 0, 0), white = qRgb(255, 255, 255);
    for (const auto& [x, y, colour] : {std::tuple{200, 67, black}, {200, 133, black}, {67, 100, black},
                                       {333, 100, black}, {200, 100, white}, {200, 66, white}, {334, 100, white}})
        EXPECT_EQ(picture.pixel(x, y), colour) << x << ", " << y;
    // Print asks the main window; Exit closes the window.
    frmPreview* window = output.Preview();
    Child<QToolButton>(*window, "cmdPrint")->click();
    Child<QAction>(*window, "mnuPrint")->trigger();
    EXPECT_EQ(prints, 2);
    Preview(); // the same window is used again
    EXPECT_EQ(output.Preview(), window);

    Child<QToolButton>(*window, "cmdExit")->click();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(output.Preview(), nullptr);
    // A new one the next time; "E&xit" closes it as well.
    Preview();
    ASSERT_NE(output.Preview(), nullptr);
    Child<QAction>(*output.Preview(), "mnuExit")->trigger();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(output.Preview(), nullptr);
    EXPECT_EQ(prints, 2);
}

TEST_F(PreviewCommand, AnEmptyProgramShowsAWhiteCanvasAndAFailureTheMessageWithoutRedraw)
{
    rig.settings.ShowAxis = true;
    rig.Open("(nothing but a comment)\n");
    ASSERT_EQ(rig.plotter.RecordTotal, 0);
    Preview();
    QImage white(output.Preview()->picView().Picture().size(), QImage::Format_RGB32);
    white.fill(Qt::white);
    EXPECT_EQ(output.Preview()->picView().Picture().convertToFormat(QImage::Format_RGB32), white);
    EXPECT_TRUE(rig.dialogs.Messages.empty());

    rig.Open(Rectangle);
    rig.SetView(-10, -25, 50, 15);
    Preview();
    ASSERT_EQ(redraws, 2);
    // A window lower than its strip leaves a canvas of no height to fit the view to.
    output.Preview()->resize(300, output.Preview()->menuBar()->height() + 10);
    QApplication::processEvents();
    Preview();
    using Message = test::ScriptedDialogs::ShownMessage;
    EXPECT_EQ(rig.dialogs.Messages,
              (std::vector<Message>{{"Print Preview Error!", "Corvane Backplot", MsgIcon::None, MsgButtons::Ok}}));
    EXPECT_EQ(redraws, 2);
    EXPECT_EQ(rig.dialogs.Pointers.back(), MousePointer::Default);
}

class BitmapExport : public ::testing::Test {
protected:
    BitmapExport()
    {
        canvas.resize(120, 80);
        canvas.show();
        QApplication::processEvents();
        // 10 pixels a unit: a red line across the middle, a blue point in the far corner.
        DrawSurface& s = canvas.Surface();
        s.SetScale(0, 0, 12, 8);
        s.Line(0, 4, 12, 4, 0x0000FF);
        s.PSet(11.5, 7.5, 0xFF0000);
        settings.WorkDir = "/work/dir";
    }
    void Export() { output.SaveAsBMP(rig.dialogs, settings, canvas, [this] { ++redraws; }); }

    test::TranslatorRig rig;
    Settings settings;
    CanvasWidget canvas;
    OutputCommands output;
    int redraws = 0;
};

TEST_F(BitmapExport, CancelOrAFailedSaveEndsSilentlyWithoutRedrawAndASaveTakesTheVisiblePicture)
{
    const std::filesystem::path chosen = rig.dir.Path() / "shot";
    if (chosen.string().find('.') != std::string::npos)
        GTEST_SKIP() << "the scratch folder's path holds a dot: " << chosen;
    Export(); // cancelled
    EXPECT_EQ(redraws, 0);
    EXPECT_EQ(output.ExportName().Name(), "");

    const std::filesystem::path folder = rig.dir.Path() / "v1.2";
    std::filesystem::create_directory(folder);
    rig.dialogs.SaveAnswers.push_back(folder.string()); // a folder cannot be written as a file
    Export();
    EXPECT_EQ(redraws, 0);
    EXPECT_EQ(output.ExportName().Name(), folder.string());
    EXPECT_TRUE(std::filesystem::is_directory(folder));

    // A disk that fills part-way: the old picture stays, whole, and no half of a new one.
    const std::string old = rig.dir.Write("old.bmp", "old picture");
    rig.dialogs.SaveAnswers.push_back(old);
    {
        const test::FileSizeLimit full(1000);
        Export();
    }
    EXPECT_EQ(redraws, 0);
    EXPECT_EQ(test::ReadAll(old), "old picture");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(rig.dir.Path()), {}), 2) << "v1.2 and old.bmp";

    // Saved: the visible picture, then a redraw. The kept picture is larger than what shows
    // once the canvas has been bigger.
    canvas.resize(300, 200);
    QApplication::processEvents();
    canvas.resize(120, 80);
    QApplication::processEvents();

    rig.dialogs.SaveAnswers.push_back(chosen.string());
    Export();

    using Request = test::ScriptedDialogs::SaveRequest;
    EXPECT_EQ(rig.dialogs.SaveRequests.back(),
              (Request{"Save As Windows bitmap", "/work/dir", {{"Windows bmp (*.bmp)", "*.bmp"}}, true}));
    EXPECT_EQ(output.ExportName().Name(), chosen.string() + ".bmp");
    const std::string bytes = test::ReadAll(chosen.string() + ".bmp");
    ASSERT_EQ(bytes.substr(0, 2), "BM");
    QImage saved;
    ASSERT_TRUE(saved.loadFromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size()), "BMP"));
    EXPECT_EQ(saved.size(), QSize(120, 80));
    const QRgb red = qRgb(255, 0, 0), white = qRgb(255, 255, 255);
    for (const auto& [x, y, colour] :
         {std::tuple{0, 40, red}, {119, 39, white}, {60, 40, red}, {115, 75, qRgb(0, 0, 255)}, {60, 10, white}})
        EXPECT_EQ(saved.pixel(x, y), colour) << x << ", " << y;
    EXPECT_EQ(redraws, 1);
    EXPECT_TRUE(rig.dialogs.Messages.empty());
}


TEST_F(BitmapExport, BothExportsShareTheLastChosenName)
{
    rig.Run("G1 X1.\n");
    const std::string dxf = (rig.dir.Path() / "drawing.dxf").string();
    rig.dialogs.SaveAnswers.push_back(dxf);
    output.SaveAsDXF(rig.translator, rig.dialogs, settings, canvas.Surface());
    EXPECT_EQ(output.ExportName().Name(), dxf);
    // The DXF header is the canvas's scale.
    const std::string header = test::CrLf({"0", "SECTION", "2", "HEADER", "9", "$EXTMIN", "10", "0", "20", "0", "9",
                                           "$EXTMAX", "10", "12", "20", "8", "0", "ENDSEC"});
    EXPECT_EQ(test::ReadAll(dxf).substr(0, header.size()), header);
    Export(); // cancelled: the DXF's name stays
    EXPECT_EQ(output.ExportName().Name(), dxf);
    ASSERT_EQ(rig.dialogs.SaveRequests.size(), 2u);
    EXPECT_EQ(rig.dialogs.SaveRequests[0].Title, "Save As DXF File");
    EXPECT_EQ(rig.dialogs.SaveRequests[0].InitialDir, "/work/dir");
}

} // namespace
} // namespace backplot
