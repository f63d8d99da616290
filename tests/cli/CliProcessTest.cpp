#include "TestPaths.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace backplot {
namespace {

TEST(CliProcess, SignalsEndTheRunWithoutLeavingTheScratchFolder)
{
    test::ScratchDir work;
    std::string program;
    for (int i = 0; i < 2000; ++i)
        program += i % 2 ? "G1 X3. Y4.\n" : "G1 X1. Y2.\n";
    const std::string path = work.Write("program.nc", program);
    const std::filesystem::path tmp = work.Path() / "tmp";

    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(signal);
        std::filesystem::create_directory(tmp);
        // backplot-cli writing into a pipe that nobody reads, with its temporary folder in tmp.
        int fds[2];
        ASSERT_EQ(::pipe(fds), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            ::dup2(fds[1], 1);
            ::close(fds[0]);
            ::close(fds[1]);
            ::setenv("TMPDIR", tmp.c_str(), 1);
            ::execl(BACKPLOT_CLI, BACKPLOT_CLI, "records", path.c_str(), "--json", static_cast<char*>(nullptr));
            ::_exit(127);
        }
        ::close(fds[1]);
        ASSERT_GT(child, 0);
        // The first bytes mean translation is over and the listing fills the pipe, so
        // the scratch folder is there and the tool is blocked on its output.
        char first[16];
        ASSERT_EQ(::read(fds[0], first, sizeof first), static_cast<ssize_t>(sizeof first));
        EXPECT_FALSE(std::filesystem::is_empty(tmp));
        ::kill(child, signal);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ::close(fds[0]);
        EXPECT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(WTERMSIG(status), signal);
        EXPECT_TRUE(std::filesystem::is_empty(tmp));
        std::filesystem::remove_all(tmp);
    }
}

} // namespace
} // namespace backplot
