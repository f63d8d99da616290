#pragma once

#include "EntityRecord.h"

#include <cstdint>
#include <string>

namespace backplot {

// What the extents pass finds in a record file. Coordinates are record coordinates
// (stored Y, that is negated).
struct Extents {
    std::int16_t RecordTotal = 0; // file length / 128, rounded (halves to even)
    float MinX = 0, MinY = 0, MaxX = 0, MaxY = 0;
};

// The extents pass over the record file at `path`. The box is seeded with record 1's end
// point and widened by every record's end point and, for MoveType 2 and 3, by the whole
// circle of the arc (each bound computed in single precision). Start points are not
// looked at.
//
// Records are read into `buffer`, the process-wide record buffer, which is left holding
// the last record read. A missing or empty file gives zeros; a file that ends inside a
// record is read up to its last whole record. Raises RunTimeError only when the file
// holds more than 32767 records.
Extents ExtentsPass(const std::string& path, EntityRecord& buffer);

} // namespace backplot
