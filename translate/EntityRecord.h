#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace backplot {

// One drawable element as stored in "TKZGraph.Dll": 128 bytes, little-endian,
// record k at byte offset (k - 1) * 128.
//
//   0  BlockText[60]  blank-padded source block (comments cut, before lathe rewriting)
//  60  Reserved1      zero
//  64  KindName[10]   "LINE", "ARC" (clockwise), "ARC1" (counter-clockwise), "CIRCLE", or blanks (rapid)
//  74  MoveType       int16: 0 rapid, 1 linear, 2 clockwise, 3 counter-clockwise
//  76  StartX StartY StartZ EndX EndY EndZ Radius StartAngle EndAngle CenterX CenterY  (float32)
// 120  ToolNum        int32
// 124  Reserved2      zero
//
// All three Y values are stored negated, so a canvas whose Y grows downward shows
// machine +Y upward. Angles are in degrees. The arc fields are written on every record
// and carry the last arc's values on rapid and linear records.
struct EntityRecord {
    static constexpr std::size_t Size = 128;
    static constexpr std::size_t BlockTextWidth = 60;
    static constexpr std::size_t KindNameWidth = 10;
    // Marks a buffer that no record has filled yet; never reaches the file.
    static constexpr std::int16_t NoMove = 999;

    std::array<char, BlockTextWidth> BlockText{};
    std::array<char, KindNameWidth> KindName{};
    std::int16_t MoveType = 0;
    float StartX = 0, StartY = 0, StartZ = 0;
    float EndX = 0, EndY = 0, EndZ = 0;
    float Radius = 0, StartAngle = 0, EndAngle = 0;
    float CenterX = 0, CenterY = 0;
    std::int32_t ToolNum = 0;

    EntityRecord() { Clear(0); }

    // Texts to blanks, numbers to zero, MoveType to the given value.
    void Clear(std::int16_t moveType);

    // Cut or blank-pad to the field width.
    void SetBlockText(std::string_view text);
    void SetKindName(std::string_view text);

    std::string_view BlockTextView() const { return {BlockText.data(), BlockText.size()}; }
    std::string_view KindNameView() const { return {KindName.data(), KindName.size()}; }
    // KindName without its trailing blanks.
    std::string_view Kind() const;
};

void EncodeRecord(const EntityRecord& record, std::span<std::uint8_t, EntityRecord::Size> out);
EntityRecord DecodeRecord(std::span<const std::uint8_t, EntityRecord::Size> in);

} // namespace backplot
