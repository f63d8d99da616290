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
constexpr std::array<int, 4> CleanupSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

void RemoveOnSignal(int signal)
{
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
    if (!path_.empty()) {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
}

} // namespace backplot
