#include "ScratchFolder.h"

#include "Translator.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <unistd.h>

namespace backplot {

namespace {

// What the signal handler removes, prepared beforehand: a handler may only call the few
// functions that are safe there (unlink, rmdir, signal, raise), so the paths of the
// files the pipeline writes are spelled out in advance.
constexpr std::size_t PathCapacity = 4096;
char scratchDir[PathCapacity];
char scratchFiles[2][PathCapacity];
// Batch jobs: their folders, each with the same two working files.
char jobDirs[ScratchFolder::MaxJobs][PathCapacity];
constexpr std::array<int, 4> CleanupSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

void RemoveJobFolder(const char* dir)
{
    char file[PathCapacity + 32];
    for (const char* name : {TempFileName, RecordFileName}) {
        const std::size_t length = std::strlen(dir);
        std::memcpy(file, dir, length);
        file[length] = '/';
        std::memcpy(file + length + 1, name, std::strlen(name) + 1);
        ::unlink(file);
    }
    ::rmdir(dir);
}

void RemoveOnSignal(int signal)
{
    for (const char* dir : jobDirs)
        if (dir[0])
            RemoveJobFolder(dir);
    for (const char* file : scratchFiles)
        if (file[0])
            ::unlink(file);
    if (scratchDir[0])
        ::rmdir(scratchDir);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

bool Copy(char* target, const std::string& text)
{
    if (text.size() + 1 > PathCapacity)
        return false;
    std::memcpy(target, text.c_str(), text.size() + 1);
    return true;
}

} // namespace

ScratchFolder::ScratchFolder()
{
    std::error_code ec;
    std::string pattern = (std::filesystem::temp_directory_path(ec) / "backplot-cli-XXXXXX").string();
    if (ec || !::mkdtemp(pattern.data()))
        return;
    path_ = pattern;
    const std::string folder = path_.string() + "/";
    if (Copy(scratchFiles[0], folder + TempFileName) && Copy(scratchFiles[1], folder + RecordFileName) &&
        Copy(scratchDir, path_.string())) {
        for (const int signal : CleanupSignals)
            std::signal(signal, RemoveOnSignal);
    }
}

ScratchFolder::~ScratchFolder()
{
    for (const int signal : CleanupSignals)
        std::signal(signal, SIG_DFL);
    scratchDir[0] = scratchFiles[0][0] = scratchFiles[1][0] = '\0';
    for (char* dir : jobDirs)
        dir[0] = '\0';
    if (!path_.empty()) {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
}

std::filesystem::path ScratchFolder::JobFolder(int job)
{
    if (path_.empty() || job < 0 || job >= MaxJobs)
        return {};
    const std::filesystem::path folder = path_ / ("job" + std::to_string(job + 1));
    std::error_code ec;
    if (!std::filesystem::create_directory(folder, ec) || !Copy(jobDirs[job], folder.string()))
        return {};
    return folder;
}

} // namespace backplot
