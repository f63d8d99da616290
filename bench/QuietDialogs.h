#pragma once

#include "UserDialogs.h"

#include <string>

namespace backplot::bench {

// Answers every message box with OK and counts them, so a benchmark can run a whole
// translation without a window and still tell how many errors it met. File dialogs
// are cancelled.
class QuietDialogs : public UserDialogs {
public:
    MsgAnswer Message(const std::string& text, const std::string& title, MsgIcon icon,
                      MsgButtons buttons) override;
    std::optional<std::string> OpenFileName(const std::string& title, const std::string& initialDir,
                                            const std::string& filterDescription,
                                            const std::string& filterPattern) override;
    void SetPointer(MousePointer pointer) override;

    int MessageCount() const { return messageCount_; }
    // The text of the first message shown, empty when there was none.
    const std::string& FirstMessage() const { return firstMessage_; }
    void Reset();

private:
    int messageCount_ = 0;
    std::string firstMessage_;
};

} // namespace backplot::bench
