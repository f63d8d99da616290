#pragma once

#include "UserDialogs.h"

#include <deque>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace backplot::test {

// Dialogs for tests: everything asked is recorded; a message box answers with Answer when
// set, else with its first button (OK or Yes); the open dialog with the next of OpenAnswers,
// cancelled when none is left.
class ScriptedDialogs : public UserDialogs {
public:
    struct ShownMessage {
        std::string Text, Title;
        MsgIcon Icon = MsgIcon::None;
        MsgButtons Buttons = MsgButtons::Ok;
        bool operator==(const ShownMessage&) const = default;
        friend void PrintTo(const ShownMessage& m, std::ostream* os)
        {
            *os << '"' << m.Text << "\" \"" << m.Title << "\" icon " << int(m.Icon) << " buttons " << int(m.Buttons);
        }
    };
    struct OpenRequest {
        std::string Title, InitialDir, FilterDescription, FilterPattern;
        bool operator==(const OpenRequest&) const = default;
        friend void PrintTo(const OpenRequest& r, std::ostream* os)
        {
            *os << '"' << r.Title << "\" \"" << r.InitialDir << "\" \"" << r.FilterDescription << "\" \""
                << r.FilterPattern << '"';
        }
    };

    MsgAnswer Message(const std::string& text, const std::string& title, MsgIcon icon, MsgButtons buttons) override
    {
        Messages.push_back({text, title, icon, buttons});
        if (Answer)
            return *Answer;
        return buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel ? MsgAnswer::Yes : MsgAnswer::Ok;
    }
    std::vector<std::string> Texts() const
    {
        std::vector<std::string> texts;
        for (const ShownMessage& box : Messages)
            texts.push_back(box.Text);
        return texts;
    }
    std::optional<std::string> OpenFileName(const std::string& title, const std::string& initialDir,
                                            const std::string& filterDescription,
                                            const std::string& filterPattern) override
    {
        OpenRequests.push_back({title, initialDir, filterDescription, filterPattern});
        return Next(OpenAnswers);
    }
    struct SaveRequest {
        std::string Title, InitialDir;
        std::vector<FileFilter> Filters;
        bool FileMustExist = false;
        bool operator==(const SaveRequest&) const = default;
    };
    std::optional<std::string> SaveFileName(const std::string& title, const std::string& initialDir,
                                            const std::vector<FileFilter>& filters, bool fileMustExist) override
    {
        SaveRequests.push_back({title, initialDir, filters, fileMustExist});
        return Next(SaveAnswers);
    }
    // The prompt answers with the next of PromptAnswers; an empty text (a cancel) when none is left.
    std::string TextPrompt(const std::string& prompt, const std::string& title, const std::string& defaultText) override
    {
        Prompts.push_back({prompt, title, defaultText});
        return Next(PromptAnswers);
    }
    // The next scripted answer; none (a cancel) once the script has run out.
    template <typename T>
    static T Next(std::deque<T>& answers)
    {
        if (answers.empty())
            return T();
        T answer = std::move(answers.front());
        answers.pop_front();
        return answer;
    }
    bool PrinterSetup() override
    {
        ++PrinterSetups;
        return PrinterSetupAnswer;
    }

    // A long command changes the pointer around each phase, so OnPointer is where a test
    // can watch the status lines while the command runs.
    void SetPointer(MousePointer pointer) override
    {
        Pointers.push_back(pointer);
        if (OnPointer)
            OnPointer(pointer);
    }

    std::optional<MsgAnswer> Answer;
    std::deque<std::optional<std::string>> OpenAnswers;
    std::deque<std::optional<std::string>> SaveAnswers;
    std::deque<std::string> PromptAnswers;
    bool PrinterSetupAnswer = false;
    std::function<void(MousePointer)> OnPointer;

    std::vector<ShownMessage> Messages;
    std::vector<OpenRequest> OpenRequests;
    std::vector<SaveRequest> SaveRequests;
    struct PromptRequest {
        std::string Prompt, Title, Default;
        bool operator==(const PromptRequest&) const = default;
    };
    std::vector<PromptRequest> Prompts;
    int PrinterSetups = 0;
    std::vector<MousePointer> Pointers;
};

} // namespace backplot::test
