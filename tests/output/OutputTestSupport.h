#pragma once

#include "PlotRig.h"

#include <csignal>
#include <initializer_list>
#include <string>
#include <string_view>
#include <sys/resource.h>

namespace backplot::test {

// A rectangle 40 wide and 10 high: stored Y from -10 (machine Y 10) to 0.
constexpr const char* Rectangle = "G0 X0 Y0\nG1 X40.\nG1 Y10.\nG1 X0.\nG1 Y0.\n";

// While it lives, a write that would make a file larger than `bytes` fails (EFBIG, "File
// too large"), as a full disk makes it fail part-way.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old_);
        rlimit limit = old_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &old_); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit old_{};
};

// Lines of a DXF text, each ended by CR LF.
inline std::string CrLf(std::initializer_list<std::string_view> lines)
{
    std::string text;
    for (std::string_view line : lines) {
        text += line;
        text += "\r\n";
    }
    return text;
}

// The part of a DXF text from its entities section on.
inline std::string EntitiesPart(const std::string& dxf)
{
    const std::size_t at = dxf.find("ENTITIES\r\n");
    return at == std::string::npos ? std::string() : dxf.substr(at);
}

} // namespace backplot::test
