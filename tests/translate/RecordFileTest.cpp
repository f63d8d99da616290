#include "RunTimeError.h"
#include "TranslatorRig.h"

#include <gtest/gtest.h>

using namespace backplot;
using namespace backplot::test;

namespace {

// "0000803F 00" -> the bytes 00 00 80 3F 00.
std::string Hex(std::string_view text)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += text[i] == ' ' ? 1 : 2)
        if (text[i] != ' ')
            bytes.push_back(static_cast<char>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16)));
    return bytes;
}

std::string Padded(std::string text, std::size_t width)
{
    text.resize(width, ' ');
    return text;
}

} // namespace

// IEEE single, little-endian: 1 = 3F800000, -1 = BF800000, -2.5 = C0200000, 2 = 40000000, 3 = 40400000,
// 4 = 40800000, 5 = 40A00000, 180 = 43340000.
TEST(RecordFile, FieldsLandAtTheirOffsetsLittleEndian)
{
    TranslatorRig h;
    const std::string longBlock = "G1 X5. " + std::string(53, 'M') + "Q"; // 61 characters
    h.Run("G0 X1. Y2.5 Z-1. T3\nG2 X3. Y2.5 R1.\nG1 X4.\n" + longBlock + "\nG1 X5.\n");

    const std::string file = ReadAll(h.translator.RecordFilePath());
    ASSERT_EQ(file.size(), 4u * 128) << "128 bytes per record, the last block moved nothing";
    const std::string arc = "0000803F 00003443 00000000 00000040 000020C0"; // R1, 180, 0, centre (2, -2.5)
    const struct { const char* what; int record, offset; std::string bytes; } rows[] = {
        {"short block padded with blanks", 1, 0, Padded("G0 X1. Y2.5 Z-1. T3", 60)},
        {"Reserved1 zero, rapid kind blank, MoveType 0", 1, 60, Hex("00000000").append(10, ' ').append(Hex("0000"))},
        {"StartX 0", 1, 76, Hex("00000000")},
        {"StartZ 0, end (1, 2.5, -1) with Y negated", 1, 84, Hex("00000000 0000803F 000020C0 000080BF")},
        {"no arc yet: radius, angles, centre X", 1, 100, Hex("00000000 00000000 00000000 00000000")},
        {"ToolNum 3, Reserved2 zero", 1, 120, Hex("03000000 00000000")},
        {"arc text and kind", 2, 0, Padded("G2 X3. Y2.5 R1.", 60).append(4, '\0') + "ARC       " + Hex("0200")},
        {"arc start and end", 2, 76, Hex("0000803F 000020C0 000080BF 00004040 000020C0 000080BF")},
        {"arc radius, angles, centre", 2, 100, Hex(arc)},
        {"line kind and MoveType", 3, 64, Padded("LINE", 10).append(Hex("0100"))},
        {"line start and end", 3, 76, Hex("00004040 000020C0 000080BF 00008040 000020C0 000080BF")},
        {"line carries the arc's values", 3, 100, Hex(arc)},
        {"61-character block cut to 60", 4, 0, longBlock.substr(0, 60).append(4, '\0')},
        {"fourth record at 384", 4, 88, Hex("0000A040")},
    };
    for (const auto& row : rows)
        EXPECT_EQ(file.substr(static_cast<std::size_t>((row.record - 1) * 128 + row.offset), row.bytes.size()),
                  row.bytes)
            << row.what;
    // The non-moving linear block left the cleared buffer behind; its marker stays in memory.
    EXPECT_EQ(h.translator.Record().MoveType, 999);
    EXPECT_EQ(h.state().RecordCount, 4);
}

TEST(RecordFile, WriterAndReaderAgreeOnRecordNumbers)
{
    ScratchDir dir;
    const std::string path = dir.Folder() + "records.bin";
    {
        RecordFileRewriter writer;
        writer.Open(path);
        EntityRecord r;
        writer.Append(2, r); // a first number past 1 leaves record 1 zero-filled
        r.Clear(2);
        r.SetBlockText("N3");
        r.ToolNum = -3;
        writer.Append(3, r);
        writer.Finish();
    }
    const std::string file = ReadAll(path);
    ASSERT_EQ(file.size(), 3u * 128);
    EXPECT_EQ(file.substr(0, 128), std::string(128, '\0'));
    EXPECT_EQ(file.substr(256, 3), "N3 ");
    EXPECT_EQ(file.substr(256 + 120, 4), Hex("FDFFFFFF")) << "ToolNum -3, two's complement";

    RecordFileReader reader;
    reader.Open(path);
    EXPECT_EQ(reader.RecordTotal(), 3);
    EntityRecord back;
    reader.Read(3, back);
    EXPECT_EQ(back.MoveType, 2);
    EXPECT_EQ(back.ToolNum, -3);
    EXPECT_EQ(back.Kind(), "");
    EXPECT_THROW(reader.Read(4, back), RunTimeError);
}
