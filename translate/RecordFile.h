#pragma once

#include "EntityRecord.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace backplot {

// Collects the records of one translation in memory and writes them over the record file
// in one go: the old file is rewritten in place, not removed and created again, and cut
// to the end of the new records, so it holds exactly them. Records are numbered on from
// the first one appended; a first number past 1 leaves zero-filled records before it.
// Failures raise RunTimeError.
class RecordFileRewriter {
public:
    RecordFileRewriter() = default;
    ~RecordFileRewriter();
    RecordFileRewriter(const RecordFileRewriter&) = delete;
    RecordFileRewriter& operator=(const RecordFileRewriter&) = delete;

    // Opens the file for writing, creating it when it is missing; one that cannot be
    // opened for writing is removed and created anew. Nothing is written yet.
    void Open(const std::string& path);
    bool IsOpen() const { return fd_ >= 0; }
    // Encodes the record as number recordNumber: the number after the last one appended,
    // or any number for the first.
    void Append(std::int32_t recordNumber, const EntityRecord& record);
    // Writes what was appended and cuts the file after it (to nothing when nothing was
    // appended), then closes the file, even when writing fails.
    void Finish();

private:
    void Close();

    int fd_ = -1;
    std::int32_t first_ = 0; // number of the first record appended, 0 before it
    std::int32_t next_ = 0;
    std::vector<std::uint8_t> bytes_; // kept between translations, so it is allocated once
};

// Reads records by number through a handle of its own.
class RecordFileReader {
public:
    RecordFileReader() = default;
    ~RecordFileReader();
    RecordFileReader(const RecordFileReader&) = delete;
    RecordFileReader& operator=(const RecordFileReader&) = delete;

    // Raises RunTimeError when the file cannot be opened.
    void Open(const std::string& path);
    void Close();
    bool IsOpen() const { return file_ != nullptr; }

    // File length in bytes.
    std::int64_t Length() const { return length_; }
    // File length / 128 rounded to the nearest whole number (halves to even), as a
    // 16-bit count; a file of more than 32767 records raises RunTimeError.
    std::int16_t RecordTotal() const;
    // Reads record n (from 1). A record that is not whole in the file raises RunTimeError,
    // so a truncated file is read up to its last whole record.
    void Read(std::int32_t recordNumber, EntityRecord& record);
    // Reads records first..last in one go into `bytes`, 128 bytes each, stopping at the
    // last whole record of the file; gives how many it read (0 when none). The records
    // are then decoded from memory (DecodeRecord) instead of read one at a time.
    std::int32_t ReadMany(std::int32_t first, std::int32_t last, std::vector<std::uint8_t>& bytes);

private:
    std::FILE* file_ = nullptr;
    std::int64_t length_ = 0;
    long position_ = -1;
};

} // namespace backplot
