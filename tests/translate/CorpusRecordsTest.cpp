#include "Checksums.h"
#include "TranslatorRig.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace backplot;
using namespace backplot::test;
namespace fs = std::filesystem;

// The record file of every corpus program is byte for byte what the translator wrote before
// it scanned each block in one pass: with every error box answered OK, and, where there are
// boxes, with the first answered Cancel. The stored checksums come from that translator.
TEST(Corpus, RecordFilesStayByteForByte)
{
    if (CorpusDir().empty())
        GTEST_SKIP() << CorpusMissing();
    ChecksumTable table(SourceDir() / "tests/translate/corpus-records.txt");
    std::size_t compared = 0;
    for (const std::string kind : {"mill", "lathe"}) {
        for (const auto& entry : fs::directory_iterator(CorpusDir() / kind)) {
            for (const MsgAnswer answer : {MsgAnswer::Ok, MsgAnswer::Cancel}) {
                TranslatorRig h(kind == "mill");
                h.dialogs.Answer = answer;
                h.RunFile(entry.path().string());
                const std::string key = kind + "/" + entry.path().filename().string() +
                                        (answer == MsgAnswer::Ok ? ":ok" : ":cancel");
                const std::string records = ReadAll(h.translator.RecordFilePath());
                const std::string found = std::to_string(records.size()) + " " + Checksum(records) + " " +
                                          std::to_string(h.dialogs.Messages.size()) + " boxes";
                EXPECT_EQ(found, table.Expected(key, found)) << key;
                ++compared;
                if (h.dialogs.Messages.empty())
                    break; // nothing to cancel
            }
        }
    }
    if (!table.Writing()) {
        EXPECT_EQ(compared, table.Size()) << "programs came or went since the table was made";
    }
}
