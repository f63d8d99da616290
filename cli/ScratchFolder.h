#pragma once

#include <filesystem>

namespace backplot {

// The temporary data folder of one run, removed with everything in it on every way out:
// when the object goes, and when a signal ends the process (see WatchSignals).
class ScratchFolder {
public:
    // Creates backplot-cli-XXXXXX in the temporary folder ($TMPDIR); Path() is empty when
    // that fails.
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

    // A folder of its own inside this one for a batch job ("job1", ...), whose working
    // files go on the same ways out. At most MaxJobs; empty when it cannot be made.
    static constexpr int MaxJobs = 64;
    std::filesystem::path JobFolder(int job);

private:
    std::filesystem::path path_;
};

// Lets SIGINT, SIGTERM, SIGHUP and SIGQUIT end the run without leaving anything behind:
// they are taken by a thread of their own, which removes the scratch folders and the
// outputs not yet complete (RemoveLeftoversForExit) and then lets the signal end the
// process as it would have. Call first thing in main, before any other thread exists,
// since every later thread inherits the blocked signals.
void WatchSignals();

} // namespace backplot
