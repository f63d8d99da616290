#include "CheckedOutput.h"

#include <cerrno>
#include <unistd.h>

namespace backplot {

bool CheckedOutput::Flush()
{
    const char* next = pbase();
    while (!error_ && next < pptr()) {
        const ssize_t written = ::write(fd_, next, static_cast<std::size_t>(pptr() - next));
        if (written < 0) {
            if (errno == EINTR)
                continue;
            error_ = errno;
        } else {
            next += written;
        }
    }
    setp(buffer_.data(), buffer_.data() + buffer_.size());
    return !error_;
}

CheckedOutput::int_type CheckedOutput::overflow(int_type c)
{
    if (!Flush())
        return traits_type::eof();
    if (!traits_type::eq_int_type(c, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(c);
        pbump(1);
    }
    return traits_type::not_eof(c);
}

int CheckedOutput::sync() { return Flush() ? 0 : -1; }

} // namespace backplot
