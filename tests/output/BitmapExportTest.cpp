#include "CanvasWidget.h"
#include "OutputCommands.h"
#include "OutputTestSupport.h"

#include <QApplication>
#include <QImage>
#include <gtest/gtest.h>

#include <filesystem>

namespace backplot {
namespace {

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
    void Export() { output.SaveAsBMP(rig.Dialogs, settings, canvas, [this] { ++redraws; }); }

    test::TranslatorRig rig;
    Settings settings;
    CanvasWidget canvas;
    OutputCommands output;
    int redraws = 0;
};

TEST_F(BitmapExport, SavesTheVisiblePictureThenRedraws)
{
    // The kept picture is larger than what shows once the canvas has been bigger.
    canvas.resize(300, 200);
    QApplication::processEvents();
    canvas.resize(120, 80);
    QApplication::processEvents();

    const std::filesystem::path chosen = rig.Folder.Path() / "shot";
    if (chosen.string().find('.') != std::string::npos)
        GTEST_SKIP() << "the scratch folder's path holds a dot: " << chosen;
    rig.Dialogs.SaveAnswers.push_back(chosen.string());
    Export();

    using Request = test::ScriptedDialogs::SaveRequest;
    ASSERT_EQ(rig.Dialogs.SaveRequests.size(), 1u);
    EXPECT_EQ(rig.Dialogs.SaveRequests[0], (Request{"Save As Windows bitmap", "/work/dir", {{"Windows bmp", "*.bmp"}}, true}));
    EXPECT_EQ(output.ExportName().Name(), chosen.string() + ".bmp");

    const std::string bytes = test::ReadAll(chosen.string() + ".bmp");
    ASSERT_GE(bytes.size(), 2u);
    EXPECT_EQ(bytes.substr(0, 2), "BM");
    QImage saved;
    ASSERT_TRUE(saved.loadFromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size()), "BMP"));
    EXPECT_EQ(saved.size(), QSize(120, 80));
    EXPECT_EQ(saved.pixel(0, 40), qRgb(255, 0, 0));
    EXPECT_EQ(saved.pixel(119, 39), qRgb(255, 255, 255));
    EXPECT_EQ(saved.pixel(60, 40), qRgb(255, 0, 0));
    EXPECT_EQ(saved.pixel(115, 75), qRgb(0, 0, 255));
    EXPECT_EQ(saved.pixel(60, 10), qRgb(255, 255, 255));
    EXPECT_EQ(redraws, 1);
    EXPECT_TRUE(rig.Dialogs.Messages.empty());
}

TEST_F(BitmapExport, CancelOrAFailedSaveEndsSilentlyWithoutRedraw)
{
    Export(); // cancelled
    EXPECT_EQ(redraws, 0);
    EXPECT_EQ(output.ExportName().Name(), "");

    const std::filesystem::path folder = rig.Folder.Path() / "v1.2";
    std::filesystem::create_directory(folder);
    rig.Dialogs.SaveAnswers.push_back(folder.string()); // a folder cannot be written as a file
    Export();
    EXPECT_EQ(redraws, 0);
    EXPECT_EQ(output.ExportName().Name(), folder.string());
    EXPECT_TRUE(std::filesystem::is_directory(folder));
    EXPECT_TRUE(rig.Dialogs.Messages.empty());
}

TEST_F(BitmapExport, BothExportsShareTheLastChosenName)
{
    rig.Translate("G1 X1.\n");
    const std::string dxf = (rig.Folder.Path() / "drawing.dxf").string();
    rig.Dialogs.SaveAnswers.push_back(dxf);
    output.SaveAsDXF(rig.T, rig.Dialogs, settings, canvas.Surface());
    EXPECT_EQ(output.ExportName().Name(), dxf);
    // The DXF header is the canvas's scale.
    const std::string header = test::CrLf({"0", "SECTION", "2", "HEADER", "9", "$EXTMIN", "10", "0", "20", "0", "9",
                                           "$EXTMAX", "10", "12", "20", "8", "0", "ENDSEC"});
    EXPECT_EQ(test::ReadAll(dxf).substr(0, header.size()), header);
    Export(); // cancelled: the DXF's name stays
    EXPECT_EQ(output.ExportName().Name(), dxf);
    ASSERT_EQ(rig.Dialogs.SaveRequests.size(), 2u);
    EXPECT_EQ(rig.Dialogs.SaveRequests[0].Title, "Save As DXF File");
    EXPECT_EQ(rig.Dialogs.SaveRequests[0].InitialDir, "/work/dir");
}

TEST(PrinterSetup, ShowsTheDialogOnceAndACancelSaysNothing)
{
    test::TranslatorRig rig;
    OutputCommands output;
    output.PrintToPdf(QString::fromStdString((rig.Folder.Path() / "page.pdf").string()));
    rig.Dialogs.PrinterSetupAnswer = false;
    output.ShowPrinterSetup(rig.Dialogs);
    EXPECT_EQ(rig.Dialogs.PrinterSetups, 1);
    EXPECT_TRUE(rig.Dialogs.Messages.empty());
}

} // namespace
} // namespace backplot
