#pragma once

#include <filesystem>

namespace backplot {

// The temporary data folder of one run, removed on every way out: when the object goes,
// and when SIGINT, SIGTERM, SIGHUP or SIGQUIT ends the process (the signal then ends it as
// it would have). One at a time per process.
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

} // namespace backplot
