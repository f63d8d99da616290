#include "EntityRecord.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace backplot {

namespace {

template <std::size_t N>
void SetText(std::array<char, N>& field, std::string_view text)
{
    field.fill(' ');
    std::copy_n(text.begin(), std::min(text.size(), N), field.begin());
}

void PutU16(std::uint8_t* p, std::uint16_t v)
{
    p[0] = static_cast<std::uint8_t>(v);
    p[1] = static_cast<std::uint8_t>(v >> 8);
}

void PutU32(std::uint8_t* p, std::uint32_t v)
{
    for (int i = 0; i < 4; ++i)
        p[i] = static_cast<std::uint8_t>(v >> (8 * i));
}

std::uint16_t GetU16(const std::uint8_t* p)
{
    return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}

std::uint32_t GetU32(const std::uint8_t* p)
{
    std::uint32_t v = 0;
    for (int i = 0; i < 4; ++i)
        v |= static_cast<std::uint32_t>(p[i]) << (8 * i);
    return v;
}

void PutFloat(std::uint8_t* p, float v) { PutU32(p, std::bit_cast<std::uint32_t>(v)); }
float GetFloat(const std::uint8_t* p) { return std::bit_cast<float>(GetU32(p)); }

// Byte offsets of the record fields.
constexpr std::size_t OffBlockText = 0;
constexpr std::size_t OffKindName = 64;
constexpr std::size_t OffMoveType = 74;
constexpr std::size_t OffFloats = 76; // eleven floats in declaration order
constexpr std::size_t OffToolNum = 120;

} // namespace

void EntityRecord::Clear(std::int16_t moveType)
{
    BlockText.fill(' ');
    KindName.fill(' ');
    MoveType = moveType;
    StartX = StartY = StartZ = 0;
    EndX = EndY = EndZ = 0;
    Radius = StartAngle = EndAngle = 0;
    CenterX = CenterY = 0;
    ToolNum = 0;
}

void EntityRecord::SetBlockText(std::string_view text) { SetText(BlockText, text); }
void EntityRecord::SetKindName(std::string_view text) { SetText(KindName, text); }

std::string_view EntityRecord::Kind() const
{
    std::string_view kind = KindNameView();
    while (!kind.empty() && kind.back() == ' ')
        kind.remove_suffix(1);
    return kind;
}

void EncodeRecord(const EntityRecord& r, std::span<std::uint8_t, EntityRecord::Size> out)
{
    std::uint8_t* p = out.data();
    std::memset(p, 0, EntityRecord::Size); // the two reserved fields stay zero
    std::memcpy(p + OffBlockText, r.BlockText.data(), EntityRecord::BlockTextWidth);
    std::memcpy(p + OffKindName, r.KindName.data(), EntityRecord::KindNameWidth);
    PutU16(p + OffMoveType, static_cast<std::uint16_t>(r.MoveType));
    const float floats[] = {r.StartX, r.StartY, r.StartZ, r.EndX,       r.EndY,    r.EndZ,
                            r.Radius, r.StartAngle, r.EndAngle, r.CenterX, r.CenterY};
    for (std::size_t i = 0; i < std::size(floats); ++i)
        PutFloat(p + OffFloats + 4 * i, floats[i]);
    PutU32(p + OffToolNum, static_cast<std::uint32_t>(r.ToolNum));
}

EntityRecord DecodeRecord(std::span<const std::uint8_t, EntityRecord::Size> in)
{
    const std::uint8_t* p = in.data();
    EntityRecord r;
    std::memcpy(r.BlockText.data(), p + OffBlockText, EntityRecord::BlockTextWidth);
    std::memcpy(r.KindName.data(), p + OffKindName, EntityRecord::KindNameWidth);
    r.MoveType = static_cast<std::int16_t>(GetU16(p + OffMoveType));
    float* floats[] = {&r.StartX, &r.StartY, &r.StartZ, &r.EndX,       &r.EndY,    &r.EndZ,
                       &r.Radius, &r.StartAngle, &r.EndAngle, &r.CenterX, &r.CenterY};
    for (std::size_t i = 0; i < std::size(floats); ++i)
        *floats[i] = GetFloat(p + OffFloats + 4 * i);
    r.ToolNum = static_cast<std::int32_t>(GetU32(p + OffToolNum));
    return r;
}

} // namespace backplot
