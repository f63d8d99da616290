#pragma once

#include "UserDialogs.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace backplot::test {

// Dialogs for tests: answers come from queues the test fills, and everything asked is
// recorded. With an empty queue a message box answers with its first button (OK or Yes)
// and the open dialog is cancelled.
class ScriptedDialogs : public UserDialogs {
public:
    struct ShownMessage {
        std::string Text;
        std::string Title;
        MsgIcon Icon = MsgIcon::None;
        MsgButtons Buttons = MsgButtons::Ok;
    };
    struct OpenRequest {
        std::string Title;
        std::string InitialDir;
        std::string FilterDescription;
        std::string FilterPattern;
    };

    MsgAnswer Message(const std::string& text, const std::string& title, MsgIcon icon,
                      MsgButtons buttons) override;
    std::optional<std::string> OpenFileName(const std::string& title, const std::string& initialDir,
                                            const std::string& filterDescription,
                                            const std::string& filterPattern) override;
    void SetPointer(MousePointer pointer) override;

    std::deque<MsgAnswer> Answers;
    std::deque<std::optional<std::string>> OpenAnswers;

    std::vector<ShownMessage> Messages;
    std::vector<OpenRequest> OpenRequests;
    std::vector<MousePointer> Pointers;
};

} // namespace backplot::test
