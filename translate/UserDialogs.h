#pragma once

#include <optional>
#include <string>
#include <vector>

namespace backplot {

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MsgAnswer { Ok, Cancel, Yes, No };
enum class MousePointer { Default, Hourglass };

// One entry of a file dialog's filter: the text shown and the pattern it matches.
struct FileFilter {
    std::string Description;
    std::string Pattern;
    bool operator==(const FileFilter&) const = default;
};

// Everything the program asks of the user, in one place: the window shows real
// dialogs, tests script the answers, the command-line tool prints to stderr.
class UserDialogs {
public:
    virtual ~UserDialogs() = default;

    // A message box; the text may hold CR LF line breaks.
    virtual MsgAnswer Message(const std::string& text, const std::string& title, MsgIcon icon,
                              MsgButtons buttons) = 0;

    // The file-open dialog. filterPattern is a pattern such as "*.nc"; the description
    // shown for it is given apart. Returns the chosen path, or nothing when cancelled.
    virtual std::optional<std::string> OpenFileName(const std::string& title,
                                                    const std::string& initialDir,
                                                    const std::string& filterDescription,
                                                    const std::string& filterPattern) = 0;

    // The file-save dialog with its filters, the first one chosen. With fileMustExist
    // only the name of an existing file is accepted. Returns the chosen path, or nothing
    // when cancelled. Without anybody to ask, the answer is a cancel.
    virtual std::optional<std::string> SaveFileName(const std::string& /*title*/,
                                                    const std::string& /*initialDir*/,
                                                    const std::vector<FileFilter>& /*filters*/,
                                                    bool /*fileMustExist*/)
    {
        return std::nullopt;
    }

    // A one-line text prompt. Returns the text entered, or an empty text when cancelled
    // (as the classic input box does; an empty answer and a cancel look the same).
    virtual std::string TextPrompt(const std::string& /*prompt*/, const std::string& /*title*/,
                                   const std::string& /*defaultText*/)
    {
        return {};
    }

    // The printer set-up dialog; the choice applies to later printing. False when
    // cancelled.
    virtual bool PrinterSetup() { return false; }

    // The mouse pointer over the main window (an hourglass during long operations).
    virtual void SetPointer(MousePointer pointer) = 0;
};

// "Let pending window events run" from inside a long operation.
class EventPump {
public:
    virtual ~EventPump() = default;
    virtual void ProcessEvents() = 0;
};

} // namespace backplot
