#include "ProgramInput.h"

#include "TranslationTexts.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace backplot {

namespace {

void Refuse(UserDialogs& dialogs, const std::string& text)
{
    dialogs.Message(text, texts::MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
}

std::string Reason(int error)
{
    if (error == ENOENT)
        return "no such file";
    std::string text = std::strerror(error);
    if (!text.empty())
        text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
    return text;
}

// Copies everything readable from `from` into `to`; false on a read or write error.
bool CopyAll(int from, int to, bool& any)
{
    char buffer[1 << 16];
    for (;;) {
        const ssize_t n = ::read(from, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return false;
        if (n == 0)
            return true;
        any = true;
        for (ssize_t done = 0; done < n;) {
            const ssize_t written = ::write(to, buffer + done, static_cast<std::size_t>(n - done));
            if (written < 0 && errno == EINTR)
                continue;
            if (written < 0)
                return false;
            done += written;
        }
    }
}

} // namespace

ProgramInput::~ProgramInput()
{
    if (memoryFd_ >= 0)
        ::close(memoryFd_);
}

bool ProgramInput::Open(const std::string& name, UserDialogs& dialogs)
{
    const bool standardInput = name == "-";
    const std::string shown = standardInput ? "standard input" : name;
    int source = 0;
    if (!standardInput) {
        struct stat info {};
        if (::stat(name.c_str(), &info) != 0) {
            Refuse(dialogs, name + " cannot be opened: " + Reason(errno));
            return false;
        }
        if (S_ISDIR(info.st_mode)) {
            Refuse(dialogs, name + " cannot be opened: is a directory");
            return false;
        }
        if (S_ISREG(info.st_mode)) {
            if (::access(name.c_str(), R_OK) != 0) {
                Refuse(dialogs, name + " cannot be opened: " + Reason(errno));
                return false;
            }
            if (info.st_size == 0) {
                Refuse(dialogs, name + texts::EmptyFile);
                return false;
            }
            path_ = name;
            return true;
        }
        source = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
        if (source < 0) {
            Refuse(dialogs, name + " cannot be opened: " + Reason(errno));
            return false;
        }
    }

    // A stream: read it once into memory; the normaliser opens the copy by its /proc path.
    memoryFd_ = ::memfd_create("backplot-program", MFD_CLOEXEC);
    bool any = false;
    const bool copied = memoryFd_ >= 0 && CopyAll(source, memoryFd_, any);
    const int error = errno;
    if (!standardInput)
        ::close(source);
    if (!copied) {
        Refuse(dialogs, shown + " cannot be read: " + Reason(error));
        return false;
    }
    if (!any) {
        Refuse(dialogs, shown + texts::EmptyFile);
        return false;
    }
    path_ = "/proc/self/fd/" + std::to_string(memoryFd_);
    return true;
}

} // namespace backplot
