#include "RecordFile.h"

#include "RunTimeError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace backplot {

namespace {

constexpr long RecordBytes = static_cast<long>(EntityRecord::Size);

std::string OpenFailure(const std::string& path)
{
    return "Cannot open " + path + ": " + std::strerror(errno);
}

} // namespace

RecordFileRewriter::~RecordFileRewriter() { Close(); }

void RecordFileRewriter::Open(const std::string& path)
{
    Close();
    fd_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (fd_ < 0 && errno != ENOENT) {
        // A file we may not write, in a folder we may: the old way of deleting it first.
        ::unlink(path.c_str());
        fd_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    }
    if (fd_ < 0)
        throw RunTimeError(OpenFailure(path));
    first_ = next_ = 0;
    bytes_.clear();
}

void RecordFileRewriter::Append(std::int32_t recordNumber, const EntityRecord& record)
{
    if (fd_ < 0)
        throw RunTimeError("Bad file name or number");
    if (recordNumber < 1 || (first_ != 0 && recordNumber != next_))
        throw RunTimeError("Bad record number");
    if (first_ == 0) {
        first_ = recordNumber;
        // The 16-bit record count bounds a translation's records; one allocation holds them.
        bytes_.reserve(static_cast<std::size_t>(INT16_MAX - first_ + 1) * EntityRecord::Size);
    }
    const std::size_t at = bytes_.size();
    bytes_.resize(at + EntityRecord::Size);
    EncodeRecord(record, std::span<std::uint8_t, EntityRecord::Size>(bytes_.data() + at, EntityRecord::Size));
    next_ = recordNumber + 1;
}

void RecordFileRewriter::Finish()
{
    if (fd_ < 0)
        return;
    const off_t start = first_ == 0 ? 0 : static_cast<off_t>(first_ - 1) * RecordBytes;
    std::size_t done = 0;
    int failure = 0;
    while (done < bytes_.size() && failure == 0) {
        const ssize_t n = ::pwrite(fd_, bytes_.data() + done, bytes_.size() - done, start + static_cast<off_t>(done));
        if (n > 0)
            done += static_cast<std::size_t>(n);
        else if (n == 0)
            failure = EIO;
        else if (errno != EINTR)
            failure = errno;
    }
    if (failure == 0 && ::ftruncate(fd_, start + static_cast<off_t>(bytes_.size())) != 0)
        failure = errno;
    Close();
    if (failure != 0)
        throw RunTimeError("Cannot write the record file: " + std::string(std::strerror(failure)));
}

void RecordFileRewriter::Close()
{
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
    first_ = next_ = 0;
    bytes_.clear();
}

RecordFileReader::~RecordFileReader() { Close(); }

void RecordFileReader::Open(const std::string& path)
{
    Close();
    file_ = std::fopen(path.c_str(), "rb");
    if (!file_)
        throw RunTimeError(OpenFailure(path));
    std::setvbuf(file_, nullptr, _IOFBF, 1 << 16);
    std::fseek(file_, 0, SEEK_END);
    length_ = std::ftell(file_);
    std::fseek(file_, 0, SEEK_SET);
    position_ = 0;
}

void RecordFileReader::Close()
{
    if (file_) {
        std::fclose(file_);
        file_ = nullptr;
    }
    length_ = 0;
    position_ = -1;
}

std::int16_t RecordFileReader::RecordTotal() const
{
    const double total = std::nearbyint(static_cast<double>(length_) / RecordBytes);
    if (total > INT16_MAX)
        throw RunTimeError("Overflow");
    return static_cast<std::int16_t>(total);
}

void RecordFileReader::Read(std::int32_t recordNumber, EntityRecord& record)
{
    if (!file_)
        throw RunTimeError("Bad file name or number");
    const long offset = (static_cast<long>(recordNumber) - 1) * RecordBytes;
    if (recordNumber < 1 || offset + RecordBytes > length_)
        throw RunTimeError("Input past end of file");
    if (offset != position_ && std::fseek(file_, offset, SEEK_SET) != 0) {
        position_ = -1;
        throw RunTimeError("Cannot seek in the record file");
    }
    std::array<std::uint8_t, EntityRecord::Size> bytes;
    if (std::fread(bytes.data(), 1, bytes.size(), file_) != bytes.size()) {
        position_ = -1;
        throw RunTimeError("Input past end of file");
    }
    position_ = offset + RecordBytes;
    record = DecodeRecord(bytes);
}

} // namespace backplot

namespace backplot {

std::int32_t RecordFileReader::ReadMany(std::int32_t first, std::int32_t last, std::vector<std::uint8_t>& bytes)
{
    if (!file_)
        throw RunTimeError("Bad file name or number");
    bytes.clear();
    const std::int64_t whole = length_ / RecordBytes;
    if (first < 1 || first > whole || last < first)
        return 0;
    const std::int64_t count = std::min<std::int64_t>(last, whole) - first + 1;
    bytes.resize(static_cast<std::size_t>(count * RecordBytes));
    position_ = -1;
    if (std::fseek(file_, (static_cast<long>(first) - 1) * RecordBytes, SEEK_SET) != 0)
        return 0;
    const std::size_t got = std::fread(bytes.data(), 1, bytes.size(), file_);
    bytes.resize(got / RecordBytes * RecordBytes);
    return static_cast<std::int32_t>(got / RecordBytes);
}

} // namespace backplot
