#include "ExtentsPass.h"

#include "RecordFile.h"
#include "RunTimeError.h"

#include <algorithm>

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

    try {
        reader.Read(1, buffer);
        box.MinX = box.MaxX = buffer.EndX;
        box.MinY = box.MaxY = buffer.EndY;

        for (std::int32_t n = 1; n <= box.RecordTotal; ++n) {
            reader.Read(n, buffer);
            if (buffer.MoveType == 2 || buffer.MoveType == 3) {
                // Float arithmetic on purpose: the bounds are single-precision sums.
                const float r = buffer.Radius;
                box.MinX = std::min(box.MinX, buffer.CenterX - r);
                box.MaxX = std::max(box.MaxX, buffer.CenterX + r);
                box.MinY = std::min(box.MinY, buffer.CenterY - r);
                box.MaxY = std::max(box.MaxY, buffer.CenterY + r);
            }
            Widen(box, buffer.EndX, buffer.EndY);
        }
    } catch (const RunTimeError&) {
        // A record cut short by the end of the file: keep what the whole ones gave.
    }
    return box;
}

} // namespace backplot
