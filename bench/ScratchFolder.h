#pragma once

#include <filesystem>
#include <string>

namespace backplot::bench {

// A fresh empty folder under the system's temporary folder, removed with everything in
// it when the object goes. Benchmarks keep their programs and working files here so a
// run never touches the source tree. Raises std::runtime_error when it cannot be made.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    // The path as a data folder text, ending in a separator.
    std::string Folder() const { return path_.string() + "/"; }

private:
    std::filesystem::path path_;
};

} // namespace backplot::bench
