#include "DxfExport.h"
#include "DxfReal.h"
#include "ExportFileName.h"
#include "OutputTestSupport.h"
#include "Plotter.h"
#include "ScaleSurface.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace backplot {
namespace {

using test::CrLf;
using test::EntitiesPart;
using test::ReadAll;
using Message = test::ScriptedDialogs::ShownMessage;

TEST(DxfReal, ShortestGeneralFormOfSevenOrFifteenDigits)
{
    // Singles keep seven digits, halves away from zero; no zero before the point, no sign on
    // zero; the exponent form below 1E-04 and from 1E+07.
    const std::pair<float, const char*> singles[] = {
        {-0.0f, "0"}, {0.25f, ".25"}, {-0.5f, "-.5"}, {-12.0f, "-12"}, {0.1f, ".1"}, {3.14159274f, "3.141593"},
        {0.0001f, ".0001"}, {0.00001f, "1E-05"}, {-0.000025f, "-2.5E-05"}, {9999999.0f, "9999999"},
        {10000000.0f, "1E+07"}, {1.9999999f, "2"}, {0.09999999403953552f, ".09999999"}, {1e-30f, "1E-30"},
        {12345665.0f, "1.234567E+07"}, {-12345665.0f, "-1.234567E+07"}, {0.99999994f, ".9999999"},
        {-5.675f, "-5.675"}};
    for (const auto& [value, text] : singles)
        EXPECT_EQ(DxfSingle(value), text) << text;
    // Doubles (the line-type patterns) keep fifteen, up to the exponent form from 1E+15.
    const std::pair<double, const char*> doubles[] = {
        {-0.0, "0"}, {-0.3, "-.3"}, {1.1, "1.1"}, {2.0 / 3.0, ".666666666666667"}, {1234567.8, "1234567.8"},
        {123456789012345.0, "123456789012345"}, {1e15, "1E+15"}, {0.00005, "5E-05"}, {1e-100, "1E-100"}};
    for (const auto& [value, text] : doubles)
        EXPECT_EQ(DxfDouble(value), text) << text;
}

const std::string FileEnd = CrLf({"0", "ENDSEC", "0", "EOF"});

std::string Header(const char* left, const char* top, const char* width, const char* bottom)
{
    return CrLf({"0", "SECTION", "2", "HEADER", "9", "$EXTMIN", "10", left, "20", top, "9", "$EXTMAX", "10", width,
                 "20", bottom, "0", "ENDSEC"});
}
std::string Line(const char* x1, const char* y1, const char* x2, const char* y2)
{
    return CrLf({"0", "LINE", "8", "BLACK_LAYER", "10", x1, "20", y1, "30", "0", "11", x2, "21", y2, "31", "0"});
}
// The entities section of a file holding `entities`.
std::string Entities(const std::string& entities) { return "ENTITIES\r\n" + entities + FileEnd; }

// A canvas of 20 x 12.5 plot units whose top-left corner is (-1.5, -8.25).
constexpr DxfCanvasScale Canvas{-1.5f, -8.25f, 20.0f, 12.5f};
const std::string CanvasHeader = Header("-1.5", "-8.25", "20", "4.25");

class DxfExportTest : public ::testing::Test {
protected:
    // Exports to out.dxf in the scratch folder and returns the file's bytes.
    std::string Export(const DxfCanvasScale& canvas = Canvas)
    {
        const std::string path = (rig.dir.Path() / "out.dxf").string();
        std::string error;
        EXPECT_TRUE(DxfExport(rig.translator, rig.dialogs).ExportTo(path, canvas, error)) << error;
        return ReadAll(path);
    }
    test::PlotRig rig;
};

TEST_F(DxfExportTest, WhatTheRerunWrites)
{
    // Rapids alone and lathe blocks: the golden files dxf_rapids_only and dxf_lathe.
    struct Row { const char* behaviour; const char* program; std::string entities; };
    const Row rows[] = {
        {"lines, then circles, then arcs, whatever the program's order; machine Y",
         "G0 X2. Y0.\nG3 X0. Y2. I-2. J0.\nG1 X0. Y-3.\nG2 X0. Y-3. I0. J1.5\nG1 X-4.25 Y-3.\n",
         Line("0", "2", "0", "-3") + Line("0", "-3", "-4.25", "-3") +
             CrLf({"0", "CIRCLE", "8", "BLACK_LAYER", "10", "0", "20", "-1.5", "30", "0", "40", "1.5"}) +
             CrLf({"0", "ARC", "8", "BLACK_LAYER", "10", "0", "20", "0", "30", "0", "40", "2", "50", "0", "51", "90"})},
        {"a clockwise arc is the counter-clockwise arc between the same ends",
         "G0 X0. Y2.\nG2 X2. Y0. I0. J-2.\n",
         CrLf({"0", "ARC", "8", "BLACK_LAYER", "10", "0", "20", "0", "30", "0", "40", "2", "50", "0", "51", "90"})},
        {"a program that ends incremental re-reads its first blocks incrementally", "G1 X5. Y5.\nG1 X6.\nG91\n",
         Line("0", "0", "5", "5") + Line("5", "5", "11", "5")},
        {"a first block without a motion word takes the last motion mode", "X5. Y5.\nG1 X6.\n",
         Line("0", "0", "5", "5") + Line("5", "5", "6", "5")},
        // Translated: (0,0)-(1,0), then in G91 (1,0)-(2,0). The G91 block wrote no record, so
        // the re-run reads the second "G1 X1." absolute: no move. Y never given: 1E-14.
        {"a block that wrote no record is not seen again", "G1 X1.\nG91\nG1 X1.\nG90\n", Line("0", "0", "1", "1E-14")},
    };
    for (const Row& row : rows) {
        rig.Run(row.program);
        EXPECT_EQ(EntitiesPart(Export()), Entities(row.entities)) << row.behaviour;
    }
}

TEST_F(DxfExportTest, EveryExportMeetsTheToolChangesAgainUntilTheTableOverruns)
{
    // One tool change, in the third of four cuts. The translation counts it once; each
    // export counts it again, and the tenth export finds the table of ten full.
    rig.Run("G1 X1. Y0.\nG1 X2.\nG1 X3. T7\nG1 X4.\n");
    for (int exportNumber = 1; exportNumber <= 9; ++exportNumber) {
        EXPECT_NE(Export().find(Line("3", "0", "4", "0")), std::string::npos) << "export " << exportNumber;
        EXPECT_EQ(rig.translator.State().ToolChangeCount, 1 + exportNumber);
    }
    EXPECT_TRUE(rig.dialogs.Messages.empty());

    // The tenth: the message, and the file holds the two cuts collected before the error.
    EXPECT_EQ(EntitiesPart(Export()), Entities(Line("0", "0", "1", "0") + Line("1", "0", "2", "0")));
    EXPECT_EQ(rig.dialogs.Messages,
              (std::vector<Message>{{"Error saving DXF file.", "Corvane Backplot", MsgIcon::Critical, MsgButtons::Ok}}));

    // GetDXFCoords alone leaves collection on after its error; the export ends it, so the
    // next program is translated into records again.
    DxfExport(rig.translator, rig.dialogs).GetDXFCoords();
    EXPECT_TRUE(rig.translator.State().CollectDxf);
    EXPECT_EQ(rig.translator.Dxf().Lines.size(), 2u);
    Export();
    EXPECT_FALSE(rig.translator.State().CollectDxf);
    rig.Run("G1 X1.\n");
    EXPECT_EQ(std::filesystem::file_size(rig.translator.RecordFilePath()), 128u);
}

// The tables between the header and the entities are the same in every file; the CLI's
// golden DXF files hold them byte for byte.
TEST_F(DxfExportTest, HeaderFollowsTheCanvasAfterAZoomWhileEntitiesStay)
{
    // No program opened, no record file at all: still the header and an empty entities section.
    const std::string empty = Export();
    EXPECT_EQ(empty.substr(0, CanvasHeader.size()), CanvasHeader);
    EXPECT_EQ(EntitiesPart(empty), Entities(""));
    rig.Run("G0 X0 Y0\nG1 X10.\n");
    Plotter& plotter = rig.plotter;
    ScaleSurface canvas(400, 200);
    const auto headerOf = [](const std::string& dxf) { return dxf.substr(0, dxf.find("0\r\nSECTION\r\n2\r\nTABLES")); };
    const auto scale = [&] {
        return DxfCanvasScale{canvas.ScaleLeft(), canvas.ScaleTop(), canvas.ScaleWidth(), canvas.ScaleHeight()};
    };
    // Opened: extents 0..10 by 0, fitted (5 high), 1.5 of margin on every side, fitted
    // again: 13 wide, 6.5 high about Y 0.
    plotter.ExtentsWithMargin(canvas);
    const std::string opened = Export(scale());
    EXPECT_EQ(headerOf(opened), Header("-1.5", "-3.25", "13", "3.25"));
    // Zoom in: every edge 0.3 x 6.5 = 1.95 inward, then fitted: 9.1 wide, 4.55 high.
    plotter.View.ZoomIn();
    plotter.SetCoords(canvas);
    const std::string zoomed = Export(scale());
    EXPECT_EQ(headerOf(zoomed), Header(".45", "-2.275", "9.1", "2.275"));
    EXPECT_EQ(EntitiesPart(zoomed), EntitiesPart(opened));
    EXPECT_EQ(EntitiesPart(zoomed), Entities(Line("0", "0", "10", "0")));
    EXPECT_EQ(rig.Records().size(), 2u) << "the re-run adds no records";
    // Consumed: nothing is left for the next export.
    EXPECT_TRUE(rig.translator.Dxf().Lines.empty() && rig.translator.Dxf().Arcs.empty());
    EXPECT_FALSE(rig.translator.State().CollectDxf);
}

TEST(ExportFileName, ExtensionOnlyWhenThereIsNoDotAnywhere)
{
    EXPECT_EQ(WithDefaultExtension("/out/part", ".dxf"), "/out/part.dxf");
    EXPECT_EQ(WithDefaultExtension("/out/part.txt", ".dxf"), "/out/part.txt");
    EXPECT_EQ(WithDefaultExtension("/v1.2/part", ".dxf"), "/v1.2/part"); // a dot in a folder counts
    EXPECT_EQ(WithDefaultExtension("/out/part.", ".bmp"), "/out/part.");
    EXPECT_EQ(WithDefaultExtension("part", ".bmp"), "part.bmp");
}

TEST_F(DxfExportTest, SaveAsDXFNamesTheFileByTheRuleOrEndsSilentlyAndBadTargetsSayWhy)
{
    rig.Run("G1 X1. T1\n");
    const std::filesystem::path folder = rig.dir.Path();
    if (folder.string().find('.') != std::string::npos)
        GTEST_SKIP() << "the scratch folder's path holds a dot: " << folder;
    ExportFileName name;
    // Cancel: no re-run, nothing written, the name kept.
    DxfExport(rig.translator, rig.dialogs).SaveAsDXF(name, "", Canvas);
    EXPECT_EQ(rig.translator.State().ToolChangeCount, 1);
    EXPECT_EQ(name.Name(), "");

    const std::pair<std::filesystem::path, std::filesystem::path> rows[] = {
        {folder / "part", folder / "part.dxf"},           // no dot: ".dxf" added
        {folder / "drawing.bmp", folder / "drawing.bmp"}, // the bitmap entry still writes DXF
    };
    for (const auto& [chosen, written] : rows) {
        rig.dialogs.SaveAnswers.push_back(chosen.string());
        DxfExport(rig.translator, rig.dialogs).SaveAsDXF(name, "/work/dir", Canvas);
        EXPECT_EQ(name.Name(), written.string());
        EXPECT_EQ(ReadAll(written).substr(0, CanvasHeader.size()), CanvasHeader) << written;
    }
    // Only names of existing files, as the dialog has always been set up.
    using Request = test::ScriptedDialogs::SaveRequest;
    EXPECT_EQ(rig.dialogs.SaveRequests.back(),
              (Request{"Save As DXF File", "/work/dir", {{"DXF files (*.dxf)", "*.dxf"}, {"Windows bmps (*.bmp)", "*.bmp"}}, true}));

    // A folder chosen as the file: the re-run happens, the write fails, nothing is said.
    std::filesystem::create_directory(folder / "v1.2");
    rig.dialogs.SaveAnswers.push_back((folder / "v1.2").string());
    DxfExport(rig.translator, rig.dialogs).SaveAsDXF(name, "", Canvas);
    EXPECT_EQ(name.Name(), (folder / "v1.2").string());
    EXPECT_EQ(rig.translator.State().ToolChangeCount, 4);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "v1.2"));
    EXPECT_TRUE(rig.dialogs.Messages.empty());
    EXPECT_TRUE(rig.translator.Dxf().Lines.empty());
    EXPECT_FALSE(rig.translator.State().CollectDxf);

    // Targets that cannot be written fail with their reason and leave nothing. (A full
    // device: the golden dxf_full_device.)
    rig.dir.Write("plain.txt", "a file, not a folder");
    const std::pair<std::string, const char*> targets[] = {
        {(folder / "v1.2").string(), "Is a directory"},
        {(folder / "missing" / "part.dxf").string(), "No such file or directory"},
        {(folder / "plain.txt" / "part.dxf").string(), "Not a directory"},
    };
    for (const auto& [path, reason] : targets) {
        std::string error;
        EXPECT_FALSE(DxfExport(rig.translator, rig.dialogs).ExportTo(path, Canvas, error));
        EXPECT_EQ(error, "cannot write " + path + ": " + reason);
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
}

} // namespace
} // namespace backplot
