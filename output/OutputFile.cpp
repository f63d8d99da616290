#include "OutputFile.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace backplot {

namespace {

struct Leftovers {
    std::mutex Lock;
    std::vector<std::string> Paths;
};

Leftovers& TheLeftovers()
{
    static Leftovers leftovers;
    return leftovers;
}

void Forget(std::vector<std::string>& paths, const std::string& path)
{
    const auto at = std::find(paths.begin(), paths.end(), path);
    if (at != paths.end())
        paths.erase(at);
}

mode_t NewFileMode()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

} // namespace

void TrackLeftover(const std::string& path)
{
    Leftovers& l = TheLeftovers();
    const std::lock_guard<std::mutex> lock(l.Lock);
    l.Paths.push_back(path);
}

void ForgetLeftover(const std::string& path)
{
    Leftovers& l = TheLeftovers();
    const std::lock_guard<std::mutex> lock(l.Lock);
    Forget(l.Paths, path);
}

void RemoveLeftoversForExit()
{
    Leftovers& l = TheLeftovers();
    l.Lock.lock(); // held until the process ends
    for (const std::string& path : l.Paths) {
        // The run goes on meanwhile and may add a file to a folder being emptied; once
        // the folder itself is gone, nothing more can be made in it.
        std::error_code ec;
        for (int attempt = 0; attempt < 5 && std::filesystem::exists(path, ec); ++attempt)
            std::filesystem::remove_all(path, ec);
    }
}

OutputFile::OutputFile(std::string target) : target_(std::move(target)) {}

OutputFile::~OutputFile() { Abandon(); }

bool OutputFile::Fail(int reason)
{
    // The first failure is the reason; what fails after it only follows from it.
    if (error_.empty())
        error_ = "cannot write " + target_ + ": " + std::strerror(reason);
    Abandon();
    return false;
}

bool OutputFile::Open()
{
    Abandon();
    error_.clear();
    if (target_.empty())
        return Fail(ENOENT);

    // What is there now decides how it is written.
    struct stat there {};
    mode_t mode = NewFileMode();
    replaced_ = target_;
    if (::stat(target_.c_str(), &there) == 0) {
        if (!S_ISREG(there.st_mode)) {
            fd_ = ::open(target_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
            if (fd_ < 0)
                return Fail(errno);
            inPlace_ = true;
            writePath_ = target_;
            return true;
        }
        if (::access(target_.c_str(), W_OK) != 0)
            return Fail(errno);
        mode = there.st_mode & 07777;
        struct stat link {};
        if (::lstat(target_.c_str(), &link) == 0 && S_ISLNK(link.st_mode)) {
            char resolved[PATH_MAX];
            if (!::realpath(target_.c_str(), resolved))
                return Fail(errno);
            replaced_ = resolved;
        }
    } else if (errno != ENOENT) {
        return Fail(errno);
    }

    // A hidden name beside the file it will replace: the rename stays within one folder.
    const std::filesystem::path replaced(replaced_);
    const std::filesystem::path folder = replaced.has_parent_path() ? replaced.parent_path() : ".";
    std::string hidden(".");
    hidden.append(replaced.filename().string()).append("-XXXXXX");
    std::string pattern = (folder / hidden).string();
    inPlace_ = false;
    int reason = 0;
    {
        // Made and listed at once: a signal's clean-up finds every temporary file.
        Leftovers& l = TheLeftovers();
        const std::lock_guard<std::mutex> lock(l.Lock);
        fd_ = ::mkostemp(pattern.data(), O_CLOEXEC);
        reason = errno;
        if (fd_ >= 0) {
            writePath_ = pattern;
            l.Paths.push_back(writePath_);
        }
    }
    if (fd_ < 0)
        return Fail(reason);
    if (::fchmod(fd_, mode) != 0)
        return Fail(errno);
    return true;
}

bool OutputFile::Write(const void* data, std::size_t size)
{
    if (fd_ < 0)
        return Fail(EBADF);
    const char* next = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t written = ::write(fd_, next, size);
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return Fail(errno);
        }
        next += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool OutputFile::Commit()
{
    if (fd_ < 0)
        return Fail(EBADF);
    // On the disk before it takes the target's name: a file system that reports a full
    // disk only now must not leave a short file in place of the old one.
    if (!inPlace_ && ::fsync(fd_) != 0)
        return Fail(errno);
    const int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0)
        return Fail(errno);
    if (inPlace_) {
        writePath_.clear();
        return true;
    }
    Leftovers& l = TheLeftovers();
    const std::lock_guard<std::mutex> lock(l.Lock);
    if (::rename(writePath_.c_str(), replaced_.c_str()) != 0) {
        const int reason = errno;
        ::unlink(writePath_.c_str());
        Forget(l.Paths, writePath_);
        writePath_.clear();
        error_ = "cannot write " + target_ + ": " + std::strerror(reason);
        return false;
    }
    Forget(l.Paths, writePath_);
    writePath_.clear();
    return true;
}

void OutputFile::Abandon()
{
    if (fd_ >= 0) {
        ::close(fd_);
        fd_ = -1;
    }
    if (!inPlace_ && !writePath_.empty()) {
        Leftovers& l = TheLeftovers();
        const std::lock_guard<std::mutex> lock(l.Lock);
        ::unlink(writePath_.c_str());
        Forget(l.Paths, writePath_);
    }
    writePath_.clear();
    inPlace_ = false;
}

} // namespace backplot
