#pragma once

#include "UserDialogs.h"

#include <string>

namespace backplot {

// The program named on the command line, made readable by path for the normaliser: a
// regular file is read where it is; standard input ("-"), a pipe or a device (/dev/stdin,
// a process substitution) is read once, whole, into an anonymous in-memory file, so
// that it can be told empty and read like a file.
class ProgramInput {
public:
    ProgramInput() = default;
    ~ProgramInput();
    ProgramInput(const ProgramInput&) = delete;
    ProgramInput& operator=(const ProgramInput&) = delete;

    // False when there is nothing to translate: the program is missing, a folder, cannot
    // be read or is empty. The reason is shown as the window shows an open problem
    // (title "Corvane Backplot").
    bool Open(const std::string& name, UserDialogs& dialogs);

    // What the normaliser reads.
    const std::string& Path() const { return path_; }

private:
    std::string path_;
    int memoryFd_ = -1;
};

} // namespace backplot
