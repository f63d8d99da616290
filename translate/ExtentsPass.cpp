#include "ExtentsPass.h"

#include "RecordFile.h"
#include "RunTimeError.h"

#include <algorithm>
#include <vector>

namespace backplot {

namespace {

void Widen(Extents& box, float x, float y)
{
    if (x < box.MinX)
        box.MinX = x;
    if (x > box.MaxX)
        box.MaxX = x;
    if (y < box.MinY)
        box.MinY = y;
    if (y > box.MaxY)
        box.MaxY = y;
}

} // namespace

Extents ExtentsPass(const std::string& path, EntityRecord& buffer)
{
    Extents box;
    RecordFileReader reader;
    try {
        reader.Open(path);
    } catch (const RunTimeError&) {
        return box; // no record file yet: nothing to fit
    }
    box.RecordTotal = reader.RecordTotal();

    // Every record in one read; a record cut short by the end of the file is left out.
    std::vector<std::uint8_t> bytes;
    const std::int32_t whole = reader.ReadMany(1, box.RecordTotal, bytes);
    const auto record = [&](std::int32_t n) {
        return std::span<const std::uint8_t, EntityRecord::Size>(bytes.data() + (n - 1) * EntityRecord::Size,
                                                                 EntityRecord::Size);
    };
    if (whole < 1)
        return box;
    EntityRecord r = DecodeRecord(record(1));
    box.MinX = box.MaxX = r.EndX;
    box.MinY = box.MaxY = r.EndY;
    for (std::int32_t n = 1; n <= whole; ++n) {
        r = DecodeRecord(record(n));
        if (r.MoveType == 2 || r.MoveType == 3) {
            // Float arithmetic on purpose: the bounds are single-precision sums.
            const float radius = r.Radius;
            box.MinX = std::min(box.MinX, r.CenterX - radius);
            box.MaxX = std::max(box.MaxX, r.CenterX + radius);
            box.MinY = std::min(box.MinY, r.CenterY - radius);
            box.MaxY = std::max(box.MaxY, r.CenterY + radius);
        }
        Widen(box, r.EndX, r.EndY);
    }
    buffer = r;
    return box;
}

} // namespace backplot
