#include "QuietDialogs.h"

namespace backplot::bench {

MsgAnswer QuietDialogs::Message(const std::string& text, const std::string&, MsgIcon, MsgButtons)
{
    if (messageCount_++ == 0)
        firstMessage_ = text;
    return MsgAnswer::Ok;
}

std::optional<std::string> QuietDialogs::OpenFileName(const std::string&, const std::string&,
                                                      const std::string&, const std::string&)
{
    return std::nullopt;
}

void QuietDialogs::SetPointer(MousePointer) {}

void QuietDialogs::Reset()
{
    messageCount_ = 0;
    firstMessage_.clear();
}

} // namespace backplot::bench
