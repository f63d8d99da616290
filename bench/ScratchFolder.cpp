#include "ScratchFolder.h"

#include <random>
#include <stdexcept>
#include <system_error>

namespace backplot::bench {

ScratchFolder::ScratchFolder()
{
    const std::filesystem::path base = std::filesystem::temp_directory_path();
    std::random_device entropy;
    for (int attempt = 0; attempt < 100; ++attempt) {
        std::filesystem::path candidate = base / ("backplot-bench-" + std::to_string(entropy()));
        std::error_code error;
        // create_directory is false when the name is taken: another run owns it.
        if (std::filesystem::create_directory(candidate, error)) {
            path_ = std::move(candidate);
            return;
        }
    }
    throw std::runtime_error("cannot create a scratch folder in " + base.string());
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

} // namespace backplot::bench
