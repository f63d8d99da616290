#include "TranslateHarness.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>

using namespace backplot;
using namespace backplot::test;
namespace fs = std::filesystem;

namespace {

const std::string ErrorLead = "An error was encountered while generating file at line ";

// What every record of every program must satisfy, whatever the program.
void ExpectWellFormed(const std::vector<EntityRecord>& records, const std::string& name)
{
    for (std::size_t k = 0; k < records.size(); ++k) {
        const EntityRecord& r = records[k];
        const std::string_view kind = r.Kind();
        bool fits = false;
        switch (r.MoveType) {
        case 0: fits = kind.empty(); break;
        case 1: fits = kind == "LINE"; break;
        case 2: fits = kind == "ARC" || kind == "CIRCLE"; break;
        case 3: fits = kind == "ARC1" || kind == "CIRCLE"; break;
        default: break;
        }
        if (!fits) {
            ADD_FAILURE() << name << " record " << k + 1 << ": MoveType " << r.MoveType << " kind '" << kind << "'";
            return;
        }
    }
}

} // namespace

TEST(Driver, NormaliseFileKeepsPrintableCharactersAndEndsLinesWithCrLf)
{
    std::string all;
    for (int c = 0; c < 256; ++c)
        all.push_back(static_cast<char>(c));
    std::string printable;
    for (int c = 32; c <= 126; ++c)
        printable.push_back(static_cast<char>(c));

    const struct {
        const char* name;
        std::string in, out;
    } rows[] = {
        {"CR LF", "G1 X1.\r\nG1 X2.\r\n", "G1 X1.\r\nG1 X2.\r\n"},
        {"LF only", "G1 X1.\nG1 X2.\n", "G1 X1.\r\nG1 X2.\r\n"},
        {"CR only is one line", "G1 X1.\rG1 X2.\r", "G1 X1.G1 X2."},
        {"tab dropped without a blank", "G01\tX1.\n", "G01X1.\r\n"},
        {"NUL, DEL and high bytes dropped", std::string("G1\0 X\x7f" "1\x80\xff.\n", 11), "G1 X1.\r\n"},
        {"no final line end", "G1 X1.", "G1 X1."},
        {"every byte value", all, "\r\n" + printable},
    };
    for (const auto& row : rows) {
        Harness h;
        const std::string source = h.Dir.Write("in.nc", row.in);
        EXPECT_TRUE(h.T.NormaliseFile(source, "out.tmp")) << row.name;
        EXPECT_EQ(ReadAll(h.Dir.Path() / "out.tmp"), row.out) << row.name;
        EXPECT_TRUE(h.Dialogs.Boxes.empty()) << row.name;
    }

    Harness h;
    EXPECT_FALSE(h.T.NormaliseFile(h.Dir.Folder() + "missing.nc", TempFileName));
    ASSERT_EQ(h.Dialogs.Boxes.size(), 1u);
    EXPECT_EQ(h.Dialogs.Boxes[0].Text, "Problem with input file.");
    EXPECT_EQ(h.Dialogs.Boxes[0].Title, "Corvane Backplot File error. ");
    EXPECT_EQ(h.Dialogs.Boxes[0].Icon, MsgIcon::Critical);
}

TEST(Driver, BlankAndCommentLinesAndTheFirstBlock)
{
    Harness h;
    const auto records = h.Run("(SETUP)\n\n   \nG0 X1.\n/ G1 X5.\n\tT4 (TOOL)\n");
    EXPECT_EQ(h.S().LineCount, 4) << "comment lines count, blank lines do not";
    EXPECT_EQ(h.S().FirstBlockLine, 2);
    ASSERT_EQ(h.S().ToolChanges.size(), 1u);
    EXPECT_EQ(h.S().ToolChanges[0].ToolNumber, 4);
    EXPECT_EQ(h.S().ToolChanges[0].LineNumber, 4);
    ASSERT_EQ(records.size(), 2u) << "G0 X1. and the tool block in rapid mode";
    EXPECT_EQ(records[1].BlockTextView().substr(0, 4), "T4  ");

    // FirstBlockLine belongs to the program: a translation without the per-program reset keeps it.
    h.Translate("(A)\n(B)\nG0 X2.\n");
    EXPECT_EQ(h.S().FirstBlockLine, 2);
    h.Run("(A)\n(B)\nG0 X2.\n");
    EXPECT_EQ(h.S().FirstBlockLine, 3);
}

TEST(Driver, M30AnywhereInTheBlockEndsTranslation)
{
    const struct {
        const char* program;
        std::size_t records;
        bool stepModeAfter;
    } rows[] = {
        {"G0 X1.\nM300\nG0 X2.\n", 2, false},       // the M30 block itself is interpreted
        {"G1 X1.\nG1 X2. M30\nG1 X3.\n", 2, false},
        {"G1 X1.\nM30\nG1 X3.\n", 1, false},        // linear mode: the M30 block writes nothing
        {"G0 X1. (M30)\nG0 X2.\n", 2, true},        // a comment is no block
    };
    for (const auto& row : rows) {
        Harness h;
        h.Playback.StepMode = true;
        EXPECT_EQ(h.Run(row.program).size(), row.records) << row.program;
        EXPECT_EQ(h.Playback.StepMode, row.stepModeAfter) << row.program;
    }
}

TEST(Driver, RecordNumberingRestartsOnlyWhenTheOldFileExisted)
{
    Harness h;
    h.Run("G0 X1.\nG0 X2.\n");
    EXPECT_EQ(h.S().RecordCount, 2);
    fs::remove(h.T.RecordFilePath());

    auto records = h.Run("G0 X3.\n");
    EXPECT_EQ(h.S().RecordCount, 3);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[2].EndX, 3);
    EXPECT_EQ(fs::file_size(h.T.RecordFilePath()), 3u * 128);

    records = h.Run("G0 X4.\n");
    EXPECT_EQ(h.S().RecordCount, 1);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].EndX, 4);
}

TEST(Driver, ErrorBoxOkGoesOnCancelStops)
{
    const struct {
        MsgAnswer answer;
        std::vector<float> endX;
    } rows[] = {{MsgAnswer::Ok, {1, 3}}, {MsgAnswer::Cancel, {1}}};
    for (const auto& row : rows) {
        Harness h;
        h.Dialogs.Answers.push_back(row.answer);
        const auto records = h.Run("G1 X1.\n\nG1 X- (BAD)\nG1 X3.\n");
        ASSERT_EQ(h.Dialogs.Boxes.size(), 1u);
        const auto& box = h.Dialogs.Boxes[0];
        EXPECT_EQ(box.Text, ErrorLead + "2\r\n\r\nG1 X- ");
        EXPECT_EQ(box.Title, "Corvane Backplot");
        EXPECT_EQ(box.Icon, MsgIcon::Exclamation);
        EXPECT_EQ(box.Buttons, MsgButtons::OkCancel);
        ASSERT_EQ(records.size(), row.endX.size());
        for (std::size_t k = 0; k < records.size(); ++k)
            EXPECT_EQ(records[k].EndX, row.endX[k]);
        if (records.size() == 2) {
            EXPECT_EQ(records[1].StartX, 1) << "the failing block moved nothing";
        }
    }
}

TEST(Driver, LineCounterOverflowReportsEveryLaterLine)
{
    Harness h;
    std::string program;
    for (int k = 1; k <= 40000; ++k)
        program += "G1 X" + std::to_string(k) + ".\n";
    const auto records = h.Run(program);

    // Lines 32768..40000 each fail on the line counter, which stays at 32767.
    ASSERT_EQ(h.Dialogs.Boxes.size(), 40000u - 32767u);
    EXPECT_EQ(h.Dialogs.Boxes.front().Text, ErrorLead + "32767\r\n\r\nG1 X32768.");
    EXPECT_EQ(h.Dialogs.Boxes.back().Text, ErrorLead + "32767\r\n\r\nG1 X40000.");
    EXPECT_EQ(h.S().LineCount, 32767);
    ASSERT_EQ(records.size(), 32767u);
    EXPECT_EQ(records.back().EndX, 32767);
    EXPECT_GT(h.Pump.Calls, 0) << "events are let through during a long translation";
}

TEST(Driver, RecordCounterOverflowReportsTheLine)
{
    Harness h;
    h.S().RecordCount = 32766; // no old file: the count goes on
    h.Translate("G0 X1.\nG0 X2.\nG0 X3.\n");
    EXPECT_EQ(h.S().RecordCount, 32767);
    ASSERT_EQ(h.Dialogs.Boxes.size(), 2u);
    EXPECT_EQ(h.Dialogs.Boxes[0].Text, ErrorLead + "2\r\n\r\nG0 X2.");
    EXPECT_EQ(h.Dialogs.Boxes[1].Text, ErrorLead + "3\r\n\r\nG0 X3.");
    EXPECT_EQ(fs::file_size(h.T.RecordFilePath()), 32767u * 128);
}

TEST(Driver, UnwritableDataFolderIsReportedNotFatal)
{
    ScratchDir outside;
    const std::string source = outside.Write("p.nc", "G0 X1.\n");
    const fs::path readOnly = outside.Path() / "ro";
    fs::create_directory(readOnly);
    fs::permissions(readOnly, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_read |
                                  fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec);
    // Root writes through 0555; a folder path below a plain file stops everybody.
    const bool rootLike = std::ofstream(readOnly / "probe").good();
    const std::string folder = rootLike ? outside.Write("plain", "") + "/" : readOnly.string() + "/";

    Harness h;
    h.T.SetDataFolder(folder);
    h.T.ResetForNewProgram();
    EXPECT_FALSE(h.T.NormaliseFile(source, TempFileName));
    EXPECT_NO_THROW(h.T.TranslateProgram());
    ASSERT_EQ(h.Dialogs.Boxes.size(), 2u);
    EXPECT_EQ(h.Dialogs.Boxes[0].Text, "Problem with input file.");
    EXPECT_EQ(h.Dialogs.Boxes[1].Text, ErrorLead + "0\r\n\r\n" + std::string(60, ' '));
    EXPECT_EQ(h.S().RecordCount, 0);
    fs::permissions(readOnly, fs::perms::owner_all, fs::perm_options::add);
}

TEST(Driver, HostileInputNeitherCrashesNorHangs)
{
    std::mt19937 random(7);
    std::string noise(64 * 1024, '\0');
    for (char& c : noise)
        c = static_cast<char>(random() & 0xFF);
    const std::string longLine = "G1 X1. " + std::string(100000, 'M');

    const struct {
        const char* name;
        std::string program;
        std::size_t records; // SIZE_MAX: any number
        std::size_t boxes;
    } rows[] = {
        {"random bytes", noise, SIZE_MAX, SIZE_MAX},
        {"NUL bytes", std::string("\0G1\0 X1.\0\n\0\0", 12), 1, 0},
        {"one 100,000-character line", longLine + "\n", 1, 0},
        {"100,000 digits overflow", "G1 X" + std::string(100000, '9') + "\n", 0, 1},
        {"only comments", "(A)\n(B)\n/G1 X1.\n", 0, 0},
    };
    for (const auto& row : rows) {
        Harness h;
        std::vector<EntityRecord> records;
        ASSERT_NO_THROW(records = h.Run(row.program)) << row.name;
        ExpectWellFormed(records, row.name);
        if (row.records != SIZE_MAX) {
            EXPECT_EQ(records.size(), row.records) << row.name;
        }
        if (row.boxes != SIZE_MAX) {
            EXPECT_EQ(h.Dialogs.Boxes.size(), row.boxes) << row.name;
        }
        for (const auto& box : h.Dialogs.Boxes)
            EXPECT_EQ(box.Text.rfind(ErrorLead, 0), 0u) << row.name << ": " << box.Text;
    }

    Harness h;
    const auto records = h.Run(longLine);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].BlockTextView(), longLine.substr(0, 60));
    EXPECT_EQ(records[0].EndX, 1);
}

TEST(Corpus, EveryProgramTranslatesIntoWellFormedRecords)
{
    struct Program {
        fs::path path;
        bool mill, ours;
    };
    std::vector<Program> programs;
    const auto collect = [&](const fs::path& folder, int mill, bool ours) {
        if (!fs::is_directory(folder))
            return;
        for (const auto& entry : fs::directory_iterator(folder)) {
            const std::string name = entry.path().filename().string();
            if (!entry.is_regular_file() || name == "MANIFEST.tsv" || name == "CMakeLists.txt" || name[0] == '.')
                continue;
            const bool isMill = mill >= 0 ? mill == 1 : name.find("lathe") == std::string::npos;
            programs.push_back({entry.path(), isMill, ours});
        }
    };
    collect(SourceDir() / "examples", -1, true);
    collect(CorpusDir() / "mill", 1, false);
    collect(CorpusDir() / "lathe", 0, false);
    if (programs.empty())
        GTEST_SKIP() << "no programs found";

    for (const Program& p : programs) {
        const std::string name = p.path.filename().string();
        Harness h(p.mill);
        h.T.ResetForNewProgram();
        h.TranslateFile(p.path.string());
        const auto records = h.Records();
        EXPECT_GT(records.size(), 0u) << name;
        EXPECT_EQ(records.size(), static_cast<std::size_t>(h.S().RecordCount)) << name;
        ExpectWellFormed(records, name);
        for (const auto& box : h.Dialogs.Boxes) {
            EXPECT_NE(box.Title, "Backplot Error") << name << " does not fit its machine type";
            EXPECT_EQ(box.Text.rfind(ErrorLead, 0), 0u) << name << ": " << box.Text;
        }
        // Our own samples are written for this program: they translate without a single error.
        if (p.ours) {
            EXPECT_TRUE(h.Dialogs.Boxes.empty()) << name << ": " << h.Dialogs.Boxes.front().Text;
        }
    }
}
