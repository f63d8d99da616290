#include "ConsoleDialogs.h"

namespace backplot {

MsgAnswer ConsoleDialogs::Message(const std::string& text, const std::string& title, MsgIcon, MsgButtons buttons)
{
    ++messages_;
    if (most_ >= 0 && messages_ > most_)
        return buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel ? MsgAnswer::Yes : MsgAnswer::Ok;
    // Message texts break lines with CR LF; a terminal wants LF alone.
    std::string line;
    line.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            continue;
        line.push_back(text[i]);
    }
    err_ << title << ": " << line << '\n';
    return buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel ? MsgAnswer::Yes : MsgAnswer::Ok;
}

} // namespace backplot
