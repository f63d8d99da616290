#include "ScriptedDialogs.h"

namespace backplot::test {

MsgAnswer ScriptedDialogs::Message(const std::string& text, const std::string& title, MsgIcon icon,
                                   MsgButtons buttons)
{
    Messages.push_back({text, title, icon, buttons});
    if (!Answers.empty()) {
        const MsgAnswer answer = Answers.front();
        Answers.pop_front();
        return answer;
    }
    return buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel ? MsgAnswer::Yes : MsgAnswer::Ok;
}

std::optional<std::string> ScriptedDialogs::OpenFileName(const std::string& title, const std::string& initialDir,
                                                         const std::string& filterDescription,
                                                         const std::string& filterPattern)
{
    OpenRequests.push_back({title, initialDir, filterDescription, filterPattern});
    if (OpenAnswers.empty())
        return std::nullopt;
    auto answer = OpenAnswers.front();
    OpenAnswers.pop_front();
    return answer;
}

void ScriptedDialogs::SetPointer(MousePointer pointer) { Pointers.push_back(pointer); }

} // namespace backplot::test
