#pragma once

#include <filesystem>
#include <string>

namespace backplot::test {

// The source tree, for examples/ and tests/ data.
std::filesystem::path SourceDir();
// The shared corpus of real part programs written by others: the folder named by
// BACKPLOT_CORPUS, else ../shared/corpus beside the checkout. Empty when it is not there
// (a checkout cloned alone); CorpusMissing() then says where it was looked for.
std::filesystem::path CorpusDir();
std::string CorpusMissing();

// A fresh empty folder, removed with the object.
class ScratchDir {
public:
    ScratchDir();
    ~ScratchDir();
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;
    const std::filesystem::path& Path() const { return path_; }
    // Path as a data folder text: ends with a separator.
    std::string Folder() const { return path_.string() + "/"; }
    // Writes a file in the folder and returns its full path.
    std::string Write(const std::string& name, const std::string& bytes) const;

private:
    std::filesystem::path path_;
};

std::string ReadAll(const std::filesystem::path& path);

} // namespace backplot::test
