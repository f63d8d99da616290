#pragma once

#include <string>
#include <string_view>

namespace backplot {

// `text` as a JSON string, quotes included; control characters as \u00XX.
std::string JsonString(std::string_view text);

// `text` without its trailing blanks: record texts are padded to their width, and JSON
// gives them as they read.
std::string_view TrimRight(std::string_view text);

} // namespace backplot
