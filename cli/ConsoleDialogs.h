#pragma once

#include "UserDialogs.h"

#include <ostream>

namespace backplot {

// The user-dialog seam of the command-line tool: every message goes to stderr as
// "TITLE: TEXT" and is answered OK; there is nobody to pick a file.
class ConsoleDialogs : public UserDialogs {
public:
    explicit ConsoleDialogs(std::ostream& err) : err_(err) {}

    MsgAnswer Message(const std::string& text, const std::string& title, MsgIcon icon,
                      MsgButtons buttons) override;
    std::optional<std::string> OpenFileName(const std::string&, const std::string&, const std::string&,
                                            const std::string&) override
    {
        return std::nullopt;
    }
    void SetPointer(MousePointer) override {}

    int MessageCount() const { return messages_; }
    // Messages past the first `most` are counted, not printed (a batch of long programs).
    void PrintAtMost(int most) { most_ = most; }

private:
    std::ostream& err_;
    int messages_ = 0;
    int most_ = -1;
};

class NoEventPump : public EventPump {
public:
    void ProcessEvents() override {}
};

} // namespace backplot
