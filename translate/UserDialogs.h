#pragma once

#include <optional>
#include <string>

namespace backplot {

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MsgAnswer { Ok, Cancel, Yes, No };
enum class MousePointer { Default, Hourglass };

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
