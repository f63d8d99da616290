#pragma once

#include <optional>
#include <string>

namespace backplot {

// What the main window's open pipeline (frmBackplot::OpenFile) is asked to open.
struct OpenRequest {
    std::optional<std::string> path; // the program's full path; none: the open dialog asks
    bool listAsRecent = true;        // false for a recent-files entry, which keeps its place
};

// What an open came to. Every outcome has already told the user what there is to tell;
// the caller only decides what follows (the menus, the stepping commands, its own texts).
enum class OpenOutcome {
    Opened,    // the program is translated and drawn
    Aborted,   // the translation stopped early (machine type, Cancel in the error box);
               // what was written before is drawn and the program counts as loaded
    Cancelled, // no file: the dialog was cancelled; the picture was drawn again as it was
    EmptyFile, // refused with " is an empty file"; nothing else changed
    Failed,    // an error ended it, with its message; the commands follow the program
               // loaded before, if any
    Busy,      // another open was running; nothing was done
};

// The outcomes after which the window shows the new program.
constexpr bool Drawn(OpenOutcome outcome) { return outcome == OpenOutcome::Opened || outcome == OpenOutcome::Aborted; }

} // namespace backplot
