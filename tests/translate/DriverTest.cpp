#include "TranslatorRig.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <grp.h>
#include <random>
#include <sys/wait.h>
#include <unistd.h>
#include <tuple>
#include <vector>

using namespace backplot;
using namespace backplot::test;
namespace fs = std::filesystem;

namespace {

// Whatever the program, every record's kind fits its MoveType.
void ExpectWellFormed(const std::vector<EntityRecord>& records, const std::string& name)
{
    for (std::size_t k = 0; k < records.size(); ++k) {
        const std::string fit = std::to_string(records[k].MoveType) + " " + std::string(records[k].Kind());
        ASSERT_TRUE(fit == "0 " || fit == "1 LINE" || fit == "2 ARC" || fit == "3 ARC1" || fit == "2 CIRCLE" ||
                    fit == "3 CIRCLE")
            << name << " record " << k + 1 << ": " << fit;
    }
}

} // namespace

TEST(Driver, NormaliseFileKeepsPrintableCharactersAndEndsLinesWithCrLf)
{
    std::string all, printable;
    for (int c = 0; c < 256; ++c) {
        all.push_back(static_cast<char>(c));
        if (c >= 32 && c <= 126)
            printable.push_back(static_cast<char>(c));
    }
    const struct { const char* name; std::string in, out; } rows[] = {
        {"CR LF", "G1 X1.\r\nG1 X2.\r\n", "G1 X1.\r\nG1 X2.\r\n"},
        {"LF only", "G1 X1.\nG1 X2.\n", "G1 X1.\r\nG1 X2.\r\n"},
        {"CR only is one line", "G1 X1.\rG1 X2.\r", "G1 X1.G1 X2."}, {"no final line end", "G1 X1.", "G1 X1."},
        {"every byte value", all, "\r\n" + printable},
    };
    for (const auto& row : rows) {
        TranslatorRig h;
        EXPECT_TRUE(h.translator.NormaliseFile(h.dir.Write("in.nc", row.in), "out.tmp")) << row.name;
        EXPECT_EQ(ReadAll(h.dir.Path() / "out.tmp"), row.out) << row.name;
        EXPECT_TRUE(h.dialogs.Messages.empty()) << row.name;
    }

    TranslatorRig h;
    EXPECT_FALSE(h.translator.NormaliseFile(h.dir.Folder() + "missing.nc", TempFileName));
    EXPECT_EQ(h.dialogs.Messages, (std::vector<ScriptedDialogs::ShownMessage>{
                                      {"Problem with input file.", "Corvane Backplot File error. ", MsgIcon::Critical}}));
}

TEST(Driver, BlankAndCommentLinesAndTheFirstBlock)
{
    TranslatorRig h;
    const auto records = h.Run("(SETUP)\n\n   \nG0 X1.\n/ G1 X5.\n\tT4 (TOOL)\n");
    EXPECT_EQ(h.state().LineCount, 4) << "comment lines count, blank lines do not";
    EXPECT_EQ(h.state().FirstBlockLine, 2);
    ASSERT_EQ(h.state().ToolChanges.size(), 1u);
    EXPECT_EQ(std::pair(h.state().ToolChanges[0].ToolNumber, h.state().ToolChanges[0].LineNumber), std::pair(4, 4));
    ASSERT_EQ(records.size(), 2u) << "G0 X1. and the tool block in rapid mode";
    EXPECT_EQ(records[1].BlockTextView().substr(0, 4), "T4  ");

    // FirstBlockLine belongs to the program: a translation without the per-program reset keeps it.
    h.TranslateWithoutReset(h.dir.Write("b.nc", "(A)\n(B)\nG0 X2.\n"));
    EXPECT_EQ(h.state().FirstBlockLine, 2);
    h.Run("(A)\n(B)\nG0 X2.\n");
    EXPECT_EQ(h.state().FirstBlockLine, 3);
}

TEST(Driver, StopsAtM30OrACancelledError)
{
    using Moves = std::vector<std::pair<float, float>>; // StartX, EndX of each record
    const std::string bad = "G1 X1.\n\nG1 X- (BAD)\nG1 X3.\n";
    using Box = ScriptedDialogs::ShownMessage;
    const Box box{ErrorLead + "2\r\n\r\nG1 X- ", "Corvane Backplot", MsgIcon::Exclamation, MsgButtons::OkCancel};
    // Only a stop at M30 ends single stepping; only a Cancel is a stop before the end.
    const struct { const char* name; std::string program; MsgAnswer answer; Moves moves; bool stepping, early; } rows[] = {
        {"the M300 block itself is interpreted", "G0 X1.\nM300\nG0 X2.\n", MsgAnswer::Ok, {{0, 1}, {1, 1}}, false, false},
        {"M30 after other words", "G1 X1.\nG1 X2. M30\nG1 X3.\n", MsgAnswer::Ok, {{0, 1}, {1, 2}}, false, false},
        {"M30 alone in linear mode", "G1 X1.\nM30\nG1 X3.\n", MsgAnswer::Ok, {{0, 1}}, false, false},
        {"M30 in a comment is no block", "G0 X1. (M30)\nG0 X2.\n", MsgAnswer::Ok, {{0, 1}, {1, 2}}, true, false},
        {"OK goes on; the failing block moved nothing", bad, MsgAnswer::Ok, {{0, 1}, {1, 3}}, true, false},
        {"Cancel stops", bad, MsgAnswer::Cancel, {{0, 1}}, true, true},
    };
    for (const auto& row : rows) {
        TranslatorRig h;
        h.playback.StepMode = true;
        h.dialogs.Answer = row.answer;
        Moves moves;
        for (const EntityRecord& r : h.Run(row.program))
            moves.emplace_back(r.StartX, r.EndX);
        EXPECT_EQ(moves, row.moves) << row.name;
        EXPECT_EQ(h.playback.StepMode, row.stepping) << row.name;
        EXPECT_EQ(h.translator.StoppedEarly(), row.early) << row.name;
        EXPECT_EQ(h.dialogs.Messages, row.program == bad ? std::vector<Box>{box} : std::vector<Box>{}) << row.name;
    }
}

TEST(Driver, ASecondProgramTranslatesAsOnAFreshStart)
{
    // Six tools; it ends in incremental linear mode with T6 in force, after an arc centred
    // at (15, 2), and with a block that fails once its I word is read.
    const std::string sixTools = "(SIX TOOLS)\nG0 X0 Y0 Z5.\nT1 M6\nG1 X10. Y2. Z-1.\nT2 M6\nG2 X20. Y2. R5.\n"
                                 "T3\nG1 X25.\nT4\nT5\nG91 T6 X1.\nG3 X3. I1. J-\n";
    // An arc without I first, then moves before its first T word.
    const std::string twoTools = "G2 X2. Y2. J1.\nG0 X1. Y1.\nG1 X2.\nT7\nG1 Y3.\nT8\nG1 X9.\n";
    const auto changesOf = [](const TranslationState& state) {
        std::vector<std::pair<int, int>> changes;
        for (const ToolChange& c : state.ToolChanges)
            changes.emplace_back(c.ToolNumber, c.LineNumber);
        return changes;
    };
    const struct { const char* name; std::string first, second; std::size_t keptCentre; } rows[] = {
        {"one program twice", sixTools, sixTools, 3}, {"six tools then two", sixTools, twoTools, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TranslatorRig fresh, second;
        const auto expected = fresh.Run(row.second);
        second.Run(row.first);
        ASSERT_EQ(second.state().ArcCenterX, 15);
        ASSERT_EQ(second.state().ArcCenterY, 2);
        second.state().CollectDxf = true; // as a failed DXF export leaves it
        const auto records = second.Run(row.second);

        const TranslationState &s = second.state(), &f = fresh.state();
        EXPECT_EQ(std::make_tuple(s.RecordCount, s.LineCount, s.FirstBlockLine, s.ToolChangeCount),
                  std::make_tuple(f.RecordCount, f.LineCount, f.FirstBlockLine, f.ToolChangeCount));
        EXPECT_EQ(changesOf(s), changesOf(f));
        // The colours the plot pass looks up: one entry per tool change of this program.
        for (int n = 0; n < f.ToolChangeCount; ++n) {
            const ToolColor &c = second.translator.ToolColors()[n], &e = fresh.translator.ToolColors()[n];
            EXPECT_EQ(std::make_tuple(c.ToolNumber, c.Color, c.ColorIndex),
                      std::make_tuple(e.ToolNumber, e.Color, e.ColorIndex)) << n;
        }
        // Byte for byte, but for the arc centre, which the records before the program's own
        // first arc carry over from the translation before (stored Y negated).
        ASSERT_EQ(records.size(), expected.size());
        for (std::size_t k = 0; k < records.size(); ++k) {
            EntityRecord want = expected[k];
            if (k < row.keptCentre) {
                EXPECT_EQ(std::make_pair(want.CenterX, want.CenterY), std::make_pair(0.0f, 0.0f)) << k + 1;
                want.CenterX = 15;
                want.CenterY = -2;
            }
            std::array<std::uint8_t, EntityRecord::Size> got{}, wanted{};
            EncodeRecord(records[k], got);
            EncodeRecord(want, wanted);
            EXPECT_EQ(got, wanted) << "record " << k + 1 << ": " << records[k].BlockTextView();
        }
    }
}

TEST(Driver, SixteenBitCountersReportEveryLineBeyond32767)
{
    TranslatorRig h;
    std::string program;
    for (int k = 1; k <= 40000; ++k)
        program.append("G1 X").append(std::to_string(k)).append(".\n");
    const auto records = h.Run(program);
    // Lines 32768..40000 each fail on the line counter, which stays at 32767.
    ASSERT_EQ(h.dialogs.Messages.size(), 40000u - 32767u);
    EXPECT_EQ(h.dialogs.Messages.front().Text, ErrorLead + "32767\r\n\r\nG1 X32768.");
    EXPECT_EQ(h.dialogs.Messages.back().Text, ErrorLead + "32767\r\n\r\nG1 X40000.");
    EXPECT_EQ(h.state().LineCount, 32767);
    ASSERT_EQ(records.size(), 32767u);
    EXPECT_EQ(records.back().EndX, 32767);
    EXPECT_GT(h.events.calls, 0) << "events are let through during a long translation";

    TranslatorRig full;
    full.state().RecordCount = 32766; // no old file: the count goes on (an old one restarts it)
    full.TranslateWithoutReset(full.dir.Write("p.nc", "G0 X1.\nG0 X2.\nG0 X3.\n"));
    EXPECT_EQ(full.state().RecordCount, 32767);
    EXPECT_EQ(full.dialogs.Texts(),
              (std::vector<std::string>{ErrorLead + "2\r\n\r\nG0 X2.", ErrorLead + "3\r\n\r\nG0 X3."}));
    EXPECT_EQ(fs::file_size(full.translator.RecordFilePath()), 32767u * 128);
}

// Past the size kept in memory the normalised program is read back from its file a piece at a
// time: lines across the pieces' seams, and one longer than a piece, come out whole.
TEST(Driver, AProgramTooLongToKeepIsReadBackFromItsFile)
{
    TranslatorRig h;
    std::string program;
    const std::string comment = "(" + std::string(990, 'C') + ")\n";
    int lines = 0;
    while (program.size() <= Translator::KeptTextLimit + (1 << 20)) {
        program.append("G0 X").append(std::to_string(++lines)).append(". ");
        program.append(lines == 5000 ? "(" + std::string(3 << 19, 'L') + ")\n" : comment);
    }
    const auto records = h.Run(program);
    EXPECT_EQ(h.state().LineCount, lines);
    ASSERT_EQ(records.size(), static_cast<std::size_t>(lines));
    for (int k = 1; k <= lines; ++k)
        ASSERT_EQ(records[k - 1].EndX, static_cast<float>(k)) << "record " << k;
    EXPECT_EQ(fs::file_size(h.dir.Path() / TempFileName), program.size() + lines) << "CR LF line ends";
}

TEST(Driver, UnwritableDataFolderIsReportedNotFatal)
{
    ScratchDir outside;
    TranslatorRig h;
    h.translator.SetDataFolder(outside.Write("plain", "") + "/"); // a folder below a plain file stops even root
    h.translator.ResetForNewProgram();
    EXPECT_FALSE(h.translator.NormaliseFile(outside.Write("p.nc", "G0 X1.\n"), TempFileName));
    EXPECT_NO_THROW(h.translator.TranslateProgram());
    EXPECT_EQ(h.dialogs.Texts(),
              (std::vector<std::string>{"Problem with input file.", ErrorLead + "0\r\n\r\n" + std::string(60, ' ')}));
    EXPECT_EQ(h.state().RecordCount, 0);
}

TEST(Driver, AFolderThatKeepsItsOldFilesGetsNoStaleRecords)
{
    // A longer program's working files, writable, in a folder the user may not write, so
    // neither can be deleted: the next translation holds exactly its own records, and a
    // normalised copy that could not be rewritten is not read as the program. The user is
    // a child process, user nobody when the tests run as root.
    ScratchDir programs;
    std::string longer;
    for (int k = 1; k <= 40; ++k)
        longer += "G0 X" + std::to_string(k) + ".\n";
    const std::string shorter = programs.Write("short.nc", "G1 X1.\nG1 Y1.\n");
    for (const bool tempWritable : {true, false}) {
        TranslatorRig h;
        h.Run(longer);
        fs::permissions(h.translator.RecordFilePath(), fs::perms(0666));
        fs::permissions(h.translator.TempFilePath(), fs::perms(tempWritable ? 0666 : 0444));
        fs::permissions(h.dir.Path(), fs::perms(0555));
        const pid_t child = ::fork();
        if (child == 0) {
            if (::geteuid() == 0 && (::setgroups(0, nullptr) || ::setgid(65534) || ::setuid(65534)))
                ::_exit(126);
            h.RunFile(shorter);
            // Records read back, and 100 for the box of a normalisation that failed.
            ::_exit(static_cast<int>(h.Records().size()) + (h.dialogs.Messages.empty() ? 0 : 100));
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        fs::permissions(h.dir.Path(), fs::perms(0755));
        EXPECT_EQ(WEXITSTATUS(status), tempWritable ? 2 : 100) << (tempWritable ? "writable" : "read-only copy");
        EXPECT_EQ(fs::file_size(h.translator.RecordFilePath()), tempWritable ? 2u * 128 : 0u);
    }
}

TEST(Driver, HostileInputNeitherCrashesNorHangs)
{
    std::mt19937 random(7);
    std::string noise(64 * 1024, '\0');
    for (char& c : noise)
        c = static_cast<char>(random() & 0xFF);
    const std::string longLine = "G1 X1. " + std::string(100000, 'M');
    constexpr std::size_t Any = SIZE_MAX;
    const struct { const char* name; std::string program; std::size_t records, boxes; } rows[] = {
        {"random bytes", noise, Any, Any}, {"NUL bytes", std::string("\0G1\0 X1.\0\n\0\0", 12), 1, 0},
        {"one 100,000-character line without a line end", longLine, 1, 0},
        {"100,000 digits overflow", "G1 X" + std::string(100000, '9') + "\n", 0, 1},
    };
    for (const auto& row : rows) {
        TranslatorRig h;
        std::vector<EntityRecord> records;
        ASSERT_NO_THROW(records = h.Run(row.program)) << row.name;
        ExpectWellFormed(records, row.name);
        EXPECT_TRUE(row.records == Any || records.size() == row.records) << row.name << ": " << records.size();
        EXPECT_TRUE(row.boxes == Any || h.dialogs.Messages.size() == row.boxes) << row.name;
        for (const auto& box : h.dialogs.Messages)
            EXPECT_EQ(box.Text.rfind(ErrorLead, 0), 0u) << row.name << ": " << box.Text;
        if (row.program == longLine && records.size() == 1) {
            EXPECT_EQ(records[0].BlockTextView(), longLine.substr(0, 60));
            EXPECT_EQ(records[0].EndX, 1);
        }
    }
}
