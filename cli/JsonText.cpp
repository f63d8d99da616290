#include "JsonText.h"

#include <cstdio>

namespace backplot {

std::string JsonString(std::string_view text)
{
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            out.push_back('\\');
        if (static_cast<unsigned char>(c) < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
            out += escaped;
            continue;
        }
        out.push_back(c);
    }
    out.push_back('"');
    return out;
}

std::string_view TrimRight(std::string_view text)
{
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

} // namespace backplot
