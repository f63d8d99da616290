#include "DxfExport.h"
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

// Everything from the tables to the opening of the entities section, spelled out.
const std::string FixedMiddle = CrLf({
    "0", "SECTION", "2", "TABLES",
    "0", "TABLE", "2", "LTYPE", "70", "4",
    "0", "LTYPE", "2", "CONTINUOUS", "70", "64", "3", "Solid Line", "72", "65", "73", "0", "40", "0",
    "0", "LTYPE", "2", "DASHED", "70", "64", "3", "Dashed Line", "72", "65", "73", "2", "40", ".8",
    "49", ".5", "49", "-.3",
    "0", "LTYPE", "2", "DOT", "70", "64", "3", "dotted Line", "72", "65", "73", "2", "40", ".2",
    "49", ".1", "49", "-.1",
    "0", "LTYPE", "2", "DASHDOT", "70", "64", "3", "dotted Line", "72", "65", "73", "4", "40", "1",
    "49", ".5", "49", "-.2", "49", ".1", "49", "-.2",
    "0", "LTYPE", "2", "SMALLDOT", "70", "64", "3", "Small dotted", "72", "65", "73", "2", "40", ".1",
    "49", "0", "49", "-.1",
    "0", "LTYPE", "2", "CENTER", "70", "64", "3", "Centerline", "72", "65", "73", "4", "40", "1.1",
    "49", ".8", "49", "-.1", "49", ".1", "49", "-.1",
    "0", "ENDTAB",
    "0", "TABLE", "2", "LAYER", "70", "6",
    "0", "LAYER", "2", "BLACK_LAYER", "70", "0", "62", "7", "6", "CONTINUOUS",
    "0", "LAYER", "2", "RED_LAYER", "70", "0", "62", "1", "6", "CONTINUOUS",
    "0", "LAYER", "2", "BLUE_LAYER", "70", "0", "62", "5", "6", "CONTINUOUS",
    "0", "LAYER", "2", "GREEN_LAYER", "70", "0", "62", "3", "6", "CONTINUOUS",
    "0", "LAYER", "2", "YELLOW_LAYER", "70", "0", "62", "2", "6", "CONTINUOUS",
    "0", "LAYER", "2", "CYAN_LAYER", "70", "0", "62", "5", "6", "CONTINUOUS",
    "0", "ENDTAB",
    "0", "TABLE", "2", "VIEW", "70", "0", "0", "ENDTAB",
    "0", "ENDSEC",
    "0", "SECTION", "2", "BLOCKS", "0", "ENDSEC",
    "0", "SECTION", "2", "ENTITIES",
});

const std::string FileEnd = CrLf({"0", "ENDSEC", "0", "EOF"});

// A canvas of 20 x 12.5 plot units whose top-left corner is (-1.5, -8.25).
constexpr DxfCanvasScale Canvas{-1.5f, -8.25f, 20.0f, 12.5f};
const std::string CanvasHeader = CrLf({"0", "SECTION", "2", "HEADER", "9", "$EXTMIN", "10", "-1.5", "20", "-8.25",
                                       "9", "$EXTMAX", "10", "20", "20", "4.25", "0", "ENDSEC"});

class DxfExportTest : public ::testing::Test {
protected:
    // Exports to out.dxf in the scratch folder and returns the file's bytes.
    std::string Export(const DxfCanvasScale& canvas = Canvas)
    {
        const std::string path = (rig.Folder.Path() / "out.dxf").string();
        std::string error;
        EXPECT_TRUE(DxfExport(rig.T, rig.Dialogs).ExportTo(path, canvas, error)) << error;
        return ReadAll(path);
    }
    test::TranslatorRig rig;
};

TEST_F(DxfExportTest, ExampleProgramComesOutByteForByte)
{
    // A cut from (0, 0) to (10, 5.5), then a clockwise quarter arc of radius 2 about
    // (10, 3.5) from 90 to 0 degrees.
    rig.Translate("G1 X10. Y5.5\nG2 X12. Y3.5 I0. J-2.\n");
    const std::string expected =
        CanvasHeader + FixedMiddle +
        CrLf({"0", "LINE", "8", "BLACK_LAYER", "10", "0", "20", "0", "30", "0", "11", "10", "21", "5.5", "31", "0"}) +
        CrLf({"0", "ARC", "8", "BLACK_LAYER", "10", "10", "20", "3.5", "30", "0", "40", "2", "50", "0", "51", "90"}) +
        FileEnd;
    EXPECT_EQ(Export(), expected);
    EXPECT_TRUE(rig.Dialogs.Messages.empty());
    // Consumed: nothing is left for the next export.
    EXPECT_TRUE(rig.T.Dxf().Lines.empty());
    EXPECT_TRUE(rig.T.Dxf().Arcs.empty());
    EXPECT_FALSE(rig.T.State().CollectDxf);
}

TEST_F(DxfExportTest, NothingToExportStillGivesHeaderTablesAndEmptyEntities)
{
    const std::string empty = CanvasHeader + FixedMiddle + FileEnd;
    // No program opened: there is no record file at all.
    EXPECT_EQ(Export(), empty);
    // Rapid moves only: records, but nothing a drawing holds.
    rig.Translate("G0 X1. Y1.\nG0 X5.\nX7. Y-2.\n");
    EXPECT_EQ(rig.T.State().RecordCount, 3);
    EXPECT_EQ(Export(), empty);
    EXPECT_TRUE(rig.Dialogs.Messages.empty());
}

TEST_F(DxfExportTest, EntitiesGroupedLinesCirclesArcsWithMachineY)
{
    // Program order: arc, line, circle, line. Y is not negated in the drawing.
    rig.Translate("G0 X2. Y0.\n"
                  "G3 X0. Y2. I-2. J0.\n"  // counter-clockwise, 0 to 90 degrees about (0, 0)
                  "G1 X0. Y-3.\n"
                  "G2 X0. Y-3. I0. J1.5\n" // a whole circle about (0, -1.5)
                  "G1 X-4.25 Y-3.\n");
    const std::string entities = CrLf({
        "ENTITIES",
        "0", "LINE", "8", "BLACK_LAYER", "10", "0", "20", "2", "30", "0", "11", "0", "21", "-3", "31", "0",
        "0", "LINE", "8", "BLACK_LAYER", "10", "0", "20", "-3", "30", "0", "11", "-4.25", "21", "-3", "31", "0",
        "0", "CIRCLE", "8", "BLACK_LAYER", "10", "0", "20", "-1.5", "30", "0", "40", "1.5",
        "0", "ARC", "8", "BLACK_LAYER", "10", "0", "20", "0", "30", "0", "40", "2", "50", "0", "51", "90",
        "0", "ENDSEC", "0", "EOF",
    });
    EXPECT_EQ(EntitiesPart(Export()), entities);
}

TEST_F(DxfExportTest, ClockwiseArcIsWrittenAsTheCounterClockwiseArcBetweenTheSameEnds)
{
    rig.Translate("G0 X2. Y0.\nG3 X0. Y2. I-2. J0.\n");
    const std::string counterClockwise = EntitiesPart(Export());
    rig.Translate("G0 X0. Y2.\nG2 X2. Y0. I0. J-2.\n");
    const std::string clockwise = EntitiesPart(Export());
    EXPECT_EQ(clockwise, counterClockwise);
    EXPECT_NE(clockwise.find(CrLf({"50", "0", "51", "90"})), std::string::npos) << clockwise;
}

TEST_F(DxfExportTest, RerunStartsFromTheModalStateTheTranslationLeft)
{
    struct Row {
        const char* behaviour;
        const char* program;
        std::string entities;
    };
    const Row rows[] = {
        {"a program that ends incremental re-reads its first blocks incrementally",
         "G1 X5. Y5.\nG1 X6.\nG91\n",
         CrLf({"ENTITIES", "0", "LINE", "8", "BLACK_LAYER", "10", "0", "20", "0", "30", "0", "11", "5", "21", "5",
               "31", "0", "0", "LINE", "8", "BLACK_LAYER", "10", "5", "20", "5", "30", "0", "11", "11", "21", "5",
               "31", "0"})},
        {"a first block without a motion word takes the last motion mode",
         "X5. Y5.\nG1 X6.\n",
         CrLf({"ENTITIES", "0", "LINE", "8", "BLACK_LAYER", "10", "0", "20", "0", "30", "0", "11", "5", "21", "5",
               "31", "0", "0", "LINE", "8", "BLACK_LAYER", "10", "5", "20", "5", "30", "0", "11", "6", "21", "5",
               "31", "0"})},
        {"a block that wrote no record is not seen again",
         "G1 X1.\nG91\nG1 X1.\nG90\n",
         // Translated: (0,0)-(1,0), then in G91 (1,0)-(2,0). The G91 block wrote no record,
         // so the re-run reads the second "G1 X1." absolute: no move, no line. Y was never
         // given: the line ends at the reset position's 1E-14.
         CrLf({"ENTITIES", "0", "LINE", "8", "BLACK_LAYER", "10", "0", "20", "0", "30", "0", "11", "1", "21",
               "1E-14", "31", "0"})},
    };
    for (const Row& row : rows) {
        rig.Translate(row.program);
        EXPECT_EQ(EntitiesPart(Export()), row.entities + FileEnd) << row.behaviour;
    }
}

TEST_F(DxfExportTest, EveryExportMeetsTheToolChangesAgainUntilTheTableOverruns)
{
    // One tool change, in the third of four cuts. The translation counts it once; each
    // export counts it again, and the tenth export finds the table of ten full.
    rig.Translate("G1 X1. Y0.\nG1 X2.\nG1 X3. T7\nG1 X4.\n");
    ASSERT_EQ(rig.T.State().ToolChangeCount, 1);
    for (int exportNumber = 1; exportNumber <= 9; ++exportNumber) {
        const std::string dxf = Export();
        EXPECT_EQ(rig.T.State().ToolChangeCount, 1 + exportNumber);
        EXPECT_NE(dxf.find(CrLf({"11", "4", "21", "0"})), std::string::npos) << "export " << exportNumber;
    }
    EXPECT_TRUE(rig.Dialogs.Messages.empty());

    const std::string tenth = Export();
    using Message = test::ScriptedDialogs::ShownMessage;
    EXPECT_EQ(rig.Dialogs.Messages,
              (std::vector<Message>{{"Error saving DXF file.", "Corvane Backplot", MsgIcon::Critical, MsgButtons::Ok}}));
    // The file still holds the two cuts collected before the error.
    const std::string twoCuts =
        CrLf({"ENTITIES", "0", "LINE", "8", "BLACK_LAYER", "10", "0", "20", "0", "30", "0", "11", "1", "21", "0",
              "31", "0", "0", "LINE", "8", "BLACK_LAYER", "10", "1", "20", "0", "30", "0", "11", "2", "21", "0",
              "31", "0"}) +
        FileEnd;
    EXPECT_EQ(EntitiesPart(tenth), twoCuts);

    // Collection ends with the export: the next program is translated into records again.
    EXPECT_FALSE(rig.T.State().CollectDxf);
    rig.Translate("G1 X1.\n");
    EXPECT_EQ(std::filesystem::file_size(rig.T.RecordFilePath()), 128u);
}

TEST_F(DxfExportTest, GetDXFCoordsLeavesCollectionOnAfterAnError)
{
    // The procedure alone, as the window's export calls it: the error ends it before its
    // clean-up, and what it collected stays in the arrays for the writer.
    rig.Translate("G1 X1.\nG1 X2. T1\n");
    rig.T.State().ToolChangeCount = 10;
    DxfExport(rig.T, rig.Dialogs).GetDXFCoords();
    EXPECT_TRUE(rig.T.State().CollectDxf);
    ASSERT_EQ(rig.T.Dxf().Lines.size(), 1u);
    EXPECT_EQ(rig.T.Dxf().Lines[0].X2, 1.0f);
    EXPECT_EQ(rig.Dialogs.Messages.size(), 1u);
}

TEST_F(DxfExportTest, HeaderFollowsTheCanvasAfterAZoomWhileEntitiesStay)
{
    rig.Translate("G0 X0 Y0\nG1 X10.\n");
    Settings settings;
    Translator& t = rig.T;
    Plotter plotter(settings, t.ToolColors(), t.State(), rig.Playback, t.Record(), rig.Dialogs, rig.Events,
                    [&t] { return t.RecordFilePath(); });
    ScaleSurface canvas(400, 200);
    const auto scaleOf = [&] {
        return DxfCanvasScale{canvas.ScaleLeft(), canvas.ScaleTop(), canvas.ScaleWidth(), canvas.ScaleHeight()};
    };

    // Opened: extents 0..10 by 0, fitted (height 5), then 1.5 of margin on every side and
    // fitted again: 13 wide, 6.5 high about Y 0.
    plotter.ExtentsWithMargin(canvas);
    const std::string opened = Export(scaleOf());
    const std::string openedHeader = CrLf({"0", "SECTION", "2", "HEADER", "9", "$EXTMIN", "10", "-1.5", "20", "-3.25",
                                           "9", "$EXTMAX", "10", "13", "20", "3.25", "0", "ENDSEC"});
    EXPECT_EQ(opened.substr(0, openedHeader.size()), openedHeader);

    // Zoom in: every edge 0.3 x 6.5 = 1.95 inward, then fitted: 9.1 wide, 4.55 high.
    plotter.View.ZoomIn();
    plotter.SetCoords(canvas);
    const std::string zoomed = Export(scaleOf());
    const std::string zoomedHeader = CrLf({"0", "SECTION", "2", "HEADER", "9", "$EXTMIN", "10", ".45", "20", "-2.275",
                                           "9", "$EXTMAX", "10", "9.1", "20", "2.275", "0", "ENDSEC"});
    EXPECT_EQ(zoomed.substr(0, zoomedHeader.size()), zoomedHeader);
    EXPECT_EQ(EntitiesPart(zoomed), EntitiesPart(opened));
    EXPECT_NE(EntitiesPart(zoomed).find(CrLf({"11", "10", "21", "0"})), std::string::npos);
}

TEST_F(DxfExportTest, LatheBlocksAreRewrittenAgainInTheRerun)
{
    test::TranslatorRig lathe(false);
    // Z is the plot's X, X (a diameter) its Y: a face cut from X20 Z0 to X20 Z-15.
    lathe.Translate("G0 X20. Z0.\nG1 Z-15.\n");
    const std::string path = (lathe.Folder.Path() / "lathe.dxf").string();
    std::string error;
    ASSERT_TRUE(DxfExport(lathe.T, lathe.Dialogs).ExportTo(path, Canvas, error)) << error;
    EXPECT_EQ(EntitiesPart(ReadAll(path)),
              CrLf({"ENTITIES", "0", "LINE", "8", "BLACK_LAYER", "10", "0", "20", "10", "30", "0", "11", "-15", "21",
                    "10", "31", "0"}) +
                  FileEnd);
}

TEST_F(DxfExportTest, TargetsThatCannotBeWrittenFailWithTheirReasonAndLeaveNothing)
{
    rig.Translate("G1 X1.\n");
    const std::filesystem::path folder = rig.Folder.Path();
    std::filesystem::create_directory(folder / "v1.2");
    rig.Folder.Write("plain.txt", "a file, not a folder");
    struct Row {
        const char* behaviour;
        std::string path;
        const char* reason;
    };
    const Row rows[] = {
        {"a folder in the way", (folder / "v1.2").string(), "Is a directory"},
        {"a missing folder", (folder / "missing" / "part.dxf").string(), "No such file or directory"},
        {"a file where a folder should be", (folder / "plain.txt" / "part.dxf").string(), "Not a directory"},
        {"a full device", "/dev/./full", "No space left on device"},
    };
    for (const Row& row : rows) {
        std::string error;
        EXPECT_FALSE(DxfExport(rig.T, rig.Dialogs).ExportTo(row.path, Canvas, error)) << row.behaviour;
        EXPECT_EQ(error, "cannot write " + row.path + ": " + row.reason) << row.behaviour;
        EXPECT_TRUE(rig.T.Dxf().Lines.empty()) << row.behaviour;
        EXPECT_FALSE(rig.T.State().CollectDxf) << row.behaviour;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

// ---- The window's command, through its dialog ----

TEST_F(DxfExportTest, SaveDialogAsksForAnExistingFileInTheWorkFolder)
{
    rig.Translate("G1 X1.\n");
    ExportFileName name;
    DxfExport(rig.T, rig.Dialogs).SaveAsDXF(name, "/work/dir", Canvas);
    using Request = test::ScriptedDialogs::SaveRequest;
    ASSERT_EQ(rig.Dialogs.SaveRequests.size(), 1u);
    EXPECT_EQ(rig.Dialogs.SaveRequests[0],
              (Request{"Save As DXF File", "/work/dir", {{"DXF files", "*.dxf"}, {"Windows bmps", "*.bmp"}}, true}));
}

TEST_F(DxfExportTest, SaveAsDXFNamesTheFileByTheExtensionRule)
{
    rig.Translate("G1 X1.\n");
    const std::filesystem::path folder = rig.Folder.Path();
    std::filesystem::create_directory(folder / "v1.2");
    if (folder.string().find('.') != std::string::npos)
        GTEST_SKIP() << "the scratch folder's path holds a dot: " << folder;
    struct Row {
        const char* behaviour;
        std::string chosen;
        std::string written;
    };
    const Row rows[] = {
        {"no dot: .dxf added", (folder / "part").string(), (folder / "part.dxf").string()},
        {"a dot in a folder: used as it stands", (folder / "v1.2" / "part").string(), (folder / "v1.2" / "part").string()},
        {"the bitmap entry still writes DXF text", (folder / "drawing.bmp").string(), (folder / "drawing.bmp").string()},
    };
    ExportFileName name;
    for (const Row& row : rows) {
        rig.Dialogs.SaveAnswers.push_back(row.chosen);
        DxfExport(rig.T, rig.Dialogs).SaveAsDXF(name, folder.string(), Canvas);
        EXPECT_EQ(name.Name(), row.written) << row.behaviour;
        EXPECT_EQ(ReadAll(row.written).substr(0, CanvasHeader.size()), CanvasHeader) << row.behaviour;
    }
}

TEST_F(DxfExportTest, SaveAsDXFEndsSilentlyOnCancelOrAnUnwritableFile)
{
    rig.Translate("G1 X1. T1\n");
    ExportFileName name;

    // Cancel: no re-run, nothing written, the name kept.
    DxfExport(rig.T, rig.Dialogs).SaveAsDXF(name, "", Canvas);
    EXPECT_EQ(rig.T.State().ToolChangeCount, 1);
    EXPECT_EQ(name.Name(), "");

    // A folder chosen as the file: the re-run happens, the write fails, nothing is said.
    const std::filesystem::path folder = rig.Folder.Path() / "v1.2";
    std::filesystem::create_directory(folder);
    rig.Dialogs.SaveAnswers.push_back(folder.string());
    DxfExport(rig.T, rig.Dialogs).SaveAsDXF(name, "", Canvas);
    EXPECT_EQ(name.Name(), folder.string());
    EXPECT_EQ(rig.T.State().ToolChangeCount, 2);
    EXPECT_TRUE(std::filesystem::is_directory(folder));
    EXPECT_TRUE(rig.Dialogs.Messages.empty());
    EXPECT_TRUE(rig.T.Dxf().Lines.empty());
    EXPECT_FALSE(rig.T.State().CollectDxf);
}

} // namespace
} // namespace backplot
