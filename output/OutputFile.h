#pragma once

#include <cstddef>
#include <string>

namespace backplot {

// One output file (a picture, a DXF drawing, a PDF page) written whole or not at all. The
// bytes go to a hidden temporary file beside the target, which is renamed over the target
// only once everything is written and on the disk; a failure, a full disk or a signal
// leaves the old file as it was, or none. Used by the window's exports and printing and
// by the command-line tool alike.
//
// A target that exists and is not a regular file (a device such as /dev/full, a pipe)
// cannot be replaced and is written in place. A symbolic link keeps pointing where it
// did: the file it names is replaced. An existing target that the user may not write is
// refused, as writing into it would be. A new file gets the usual permissions (0666
// less the umask), a replaced one keeps its own.
//
// Errors are "cannot write TARGET: REASON" with the system's reason.
class OutputFile {
public:
    explicit OutputFile(std::string target);
    // An uncommitted temporary file is removed.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Creates the temporary file (or opens the device). False with Error() set.
    bool Open();
    // The open file: write to it directly or through Write.
    int Descriptor() const { return fd_; }
    // Where the bytes go until Commit: the temporary file, or the target written in place.
    const std::string& WritePath() const { return writePath_; }
    // Writes all of `size` bytes. False with Error() set; the file is then abandoned.
    bool Write(const void* data, std::size_t size);
    // Puts the file on the disk, closes it and renames it over the target. False with
    // Error() set; the temporary file is gone then and the target untouched.
    bool Commit();
    // Gives the file up: the temporary file is removed, the target untouched.
    void Abandon();

    const std::string& Target() const { return target_; }
    const std::string& Error() const { return error_; }

private:
    bool Fail(int reason);

    std::string target_;
    std::string replaced_; // the regular file the rename replaces (a link's file)
    std::string writePath_;
    std::string error_;
    int fd_ = -1;
    bool inPlace_ = false;
};

// Paths a run is making that must not outlive it: scratch folders and outputs not yet
// complete. OutputFile keeps its temporary files here while they exist.
void TrackLeftover(const std::string& path);
void ForgetLeftover(const std::string& path);
// Removes every tracked path (folders with all they hold) for a run that a signal ends,
// and keeps the list locked, so that nothing new is begun before the process ends.
void RemoveLeftoversForExit();

} // namespace backplot
