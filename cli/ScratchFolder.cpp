#include "ScratchFolder.h"

#include "OutputFile.h"

#include <csignal>
#include <cstdlib>
#include <pthread.h>
#include <string>
#include <system_error>
#include <thread>

namespace backplot {

namespace {

sigset_t WatchedSignals()
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT})
        sigaddset(&set, signal);
    return set;
}

} // namespace

ScratchFolder::ScratchFolder()
{
    std::error_code ec;
    std::string pattern = (std::filesystem::temp_directory_path(ec) / "backplot-cli-XXXXXX").string();
    if (ec || !::mkdtemp(pattern.data()))
        return;
    path_ = pattern;
    TrackLeftover(path_.string());
}

ScratchFolder::~ScratchFolder()
{
    if (path_.empty())
        return;
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
    ForgetLeftover(path_.string());
}

std::filesystem::path ScratchFolder::JobFolder(int job)
{
    if (path_.empty() || job < 0 || job >= MaxJobs)
        return {};
    // Inside this folder, so it goes with it.
    const std::filesystem::path folder = path_ / ("job" + std::to_string(job + 1));
    std::error_code ec;
    if (!std::filesystem::create_directory(folder, ec))
        return {};
    return folder;
}

void WatchSignals()
{
    // A handler could call only the few functions safe in one, and could not empty a
    // folder Qt has filled; a thread waiting for the signal can do anything.
    static const sigset_t watched = WatchedSignals();
    pthread_sigmask(SIG_BLOCK, &watched, nullptr);
    std::thread([] {
        int signal = 0;
        while (sigwait(&watched, &signal) != 0) {
        }
        RemoveLeftoversForExit();
        std::signal(signal, SIG_DFL);
        sigset_t only;
        sigemptyset(&only);
        sigaddset(&only, signal);
        pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
        std::raise(signal);
    }).detach();
}

} // namespace backplot
