#pragma once

#include "TestPaths.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>

namespace backplot::test {

// 64-bit FNV-1a, written as 16 hex digits.
inline std::string Checksum(std::string_view bytes)
{
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (const char c : bytes)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
    return text;
}

// A stored table of "key value" lines: what earlier code produced, to be produced again.
// With BACKPLOT_WRITE_CHECKSUMS set to a folder, the values found are written there
// under the table's name instead, to make the table when output changes on purpose.
class ChecksumTable {
public:
    explicit ChecksumTable(std::filesystem::path path) : path_(std::move(path))
    {
        std::ifstream in(path_);
        for (std::string key, value; in >> key && std::getline(in >> std::ws, value);)
            stored_[key] = value;
    }
    ~ChecksumTable()
    {
        if (const char* folder = std::getenv("BACKPLOT_WRITE_CHECKSUMS")) {
            std::ofstream out(std::filesystem::path(folder) / path_.filename());
            for (const auto& [key, value] : found_)
                out << key << ' ' << value << '\n';
        }
    }
    bool Writing() const { return std::getenv("BACKPLOT_WRITE_CHECKSUMS") != nullptr; }
    std::size_t Size() const { return stored_.size(); }
    // The stored value, "(none)" when the key is missing; the found value is remembered.
    std::string Expected(const std::string& key, const std::string& found)
    {
        found_[key] = found;
        const auto at = stored_.find(key);
        return Writing() ? found : at == stored_.end() ? "(none)" : at->second;
    }

private:
    std::filesystem::path path_;
    std::map<std::string, std::string> stored_, found_;
};

} // namespace backplot::test
