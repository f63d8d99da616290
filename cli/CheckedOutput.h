#pragma once

#include <array>
#include <streambuf>

namespace backplot {

// A stream buffer over a file descriptor that remembers why a write failed. Standard
// output goes through it so that a full disk or a closed pipe is noticed: after the first
// failure nothing more is written and Error() holds the errno (EPIPE for a reader that
// went away).
class CheckedOutput : public std::streambuf {
public:
    explicit CheckedOutput(int fd) : fd_(fd) { setp(buffer_.data(), buffer_.data() + buffer_.size()); }
    ~CheckedOutput() override { sync(); }
    CheckedOutput(const CheckedOutput&) = delete;
    CheckedOutput& operator=(const CheckedOutput&) = delete;

    int Error() const { return error_; }

protected:
    int_type overflow(int_type c) override;
    int sync() override;

private:
    bool Flush();

    int fd_;
    int error_ = 0;
    std::array<char, 65536> buffer_{};
};

} // namespace backplot
