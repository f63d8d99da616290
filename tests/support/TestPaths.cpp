#include "TestPaths.h"

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace backplot::test {

std::filesystem::path SourceDir() { return BACKPLOT_SOURCE_DIR; }

namespace {

std::filesystem::path CorpusPlace()
{
    const char* named = std::getenv("BACKPLOT_CORPUS");
    return named && *named ? std::filesystem::path(named) : SourceDir().parent_path() / "shared" / "corpus";
}

} // namespace

std::filesystem::path CorpusDir()
{
    const auto place = CorpusPlace();
    return std::filesystem::is_directory(place) ? place : std::filesystem::path();
}

std::string CorpusMissing()
{
    return "no corpus at " + CorpusPlace().string() +
           ": set BACKPLOT_CORPUS to its folder, or put the shared folder beside the checkout as ../shared/corpus";
}

ScratchDir::ScratchDir()
{
    static std::atomic<int> counter{0};
    path_ = std::filesystem::temp_directory_path() /
            ("backplot-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
}

ScratchDir::~ScratchDir()
{
    std::error_code ec;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ec);
    std::filesystem::remove_all(path_, ec);
}

std::string ScratchDir::Write(const std::string& name, const std::string& bytes) const
{
    const auto file = path_ / name;
    std::ofstream out(file, std::ios::binary);
    out << bytes;
    return file.string();
}

std::string ReadAll(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace backplot::test
