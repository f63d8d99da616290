#include "TestPaths.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace backplot {
namespace {

struct Ran {
    int Status = -1;
    std::string Out, Err;
};

// Runs `program` with `args`, `input` written into a pipe on its stdin, in `folder`;
// `environment` entries ("NAME" unsets, "NAME=VALUE" sets) apply to the child only.
Ran RunProgram(const std::string& program, const std::vector<std::string>& args, const std::string& input,
        const std::filesystem::path& folder, const std::vector<std::string>& environment = {})
{
    const std::string out = (folder / "stdout").string(), err = (folder / "stderr").string();
    int in[2];
    EXPECT_EQ(::pipe(in), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(in[0], 0);
        ::close(in[0]);
        ::close(in[1]);
        ::dup2(::open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), 1);
        ::dup2(::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), 2);
        if (::chdir(folder.c_str()) != 0)
            ::_exit(126);
        for (const std::string& e : environment)
            e.find('=') == std::string::npos ? ::unsetenv(e.c_str()) : ::putenv(const_cast<char*>(e.c_str()));
        std::vector<char*> argv{const_cast<char*>(program.c_str())};
        for (const std::string& a : args)
            argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        ::execv(program.c_str(), argv.data());
        ::_exit(127);
    }
    ::close(in[0]);
    EXPECT_EQ(::write(in[1], input.data(), input.size()), static_cast<ssize_t>(input.size()));
    ::close(in[1]);
    int status = 0;
    ::waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), test::ReadAll(out), test::ReadAll(err)};
}

class Cli : public ::testing::Test {
protected:
    Ran Cli_(const std::vector<std::string>& args, const std::string& input = "")
    {
        return RunProgram(BACKPLOT_CLI, args, input, work.Path());
    }
    test::ScratchDir work;
    const std::string program = (test::SourceDir() / "tests/golden/records_mill/program.nc").string();
};

TEST_F(Cli, HelpVersionAndUsageErrors)
{
    const std::string records = Cli_({"records", "--help"}).Out;
    EXPECT_TRUE(records.starts_with("Usage: backplot-cli records PROGRAM")) << records;
    for (const std::vector<std::string>& args : {std::vector<std::string>{"help", "records"}, {"records", "-h"}}) {
        const Ran ran = Cli_(args);
        EXPECT_EQ(ran.Status, 0);
        EXPECT_EQ(ran.Out, records);
    }
    const Ran overview = Cli_({"--help"});
    EXPECT_EQ(overview.Status, 0);
    EXPECT_TRUE(overview.Out.starts_with("Usage: backplot-cli COMMAND PROGRAM [OPTIONS]\n"));
    EXPECT_EQ(Cli_({"-h"}).Out, overview.Out);
    EXPECT_TRUE(std::regex_match(Cli_({"--version"}).Out, std::regex("backplot-cli 5\\.0( \\(commit [0-9a-f]+\\))?\n")));

    const struct {
        std::vector<std::string> args;
        const char* problem;
    } errors[] = {
        {{"frobnicate", program}, "unknown command 'frobnicate'"},
        {{"records", program, "--bogus"}, "unknown option '--bogus' for records"},
        {{"records", program, "other.nc"}, "more than one program given ('other.nc')"},
        {{"records", "--json"}, "no program given"},
        {{"render", program, "-o", "out.jpg"}, "render writes .png or .bmp files, not 'out.jpg'"},
        {{"extents", program, "--size"}, "--size needs a value"},
        {{"details", program}, "details needs --record N"},
        {{"batch", program, "--jobs=0", "-o", "out"}, "--jobs takes a number of jobs, 1 or more"},
    };
    for (const auto& e : errors) {
        const Ran ran = Cli_(e.args);
        EXPECT_EQ(ran.Status, 2) << e.problem;
        EXPECT_EQ(ran.Out, "");
        EXPECT_EQ(ran.Err, std::string("backplot-cli: ") + e.problem + "\nTry 'backplot-cli --help'.\n");
    }
    // Options as --opt=value, and -- before a name that starts with a dash.
    std::filesystem::copy_file(program, work.Path() / "-odd.nc");
    EXPECT_EQ(Cli_({"extents", "--size=400x200", "--", "-odd.nc"}).Out, Cli_({"extents", program, "--size", "400x200"}).Out);
}

TEST_F(Cli, PipesStandardInputAndStandardOutput)
{
    const std::string text = test::ReadAll(program);
    const Ran file = Cli_({"records", program});
    EXPECT_EQ(file.Status, 0);
    for (const char* name : {"-", "/dev/stdin"}) {
        const Ran piped = Cli_({"records", name}, text);
        EXPECT_EQ(piped.Out, file.Out) << name;
        EXPECT_EQ(piped.Status, 0) << name;
    }
    EXPECT_EQ(Cli_({"records", "-"}, "").Err, "Corvane Backplot: standard input is an empty file\n");
    EXPECT_EQ(Cli_({"records", work.Path().string()}).Err,
              "Corvane Backplot: " + work.Path().string() + " cannot be opened: is a directory\n");

    // -o - for text and pictures; any other name is used as given, extension or not.
    ASSERT_EQ(Cli_({"dxf", program, "-o", "part"}).Status, 0);
    EXPECT_FALSE(std::filesystem::exists(work.Path() / "part.dxf"));
    EXPECT_EQ(Cli_({"dxf", program, "-o", "-"}).Out, test::ReadAll(work.Path() / "part"));
    EXPECT_TRUE(Cli_({"render", program, "-o", "-"}).Out.starts_with("\x89PNG\r\n\x1a\n"));
    EXPECT_TRUE(Cli_({"print", program, "-o", "-"}).Out.starts_with("%PDF-"));
    ASSERT_EQ(Cli_({"render", program, "-o", "picture.BMP"}).Status, 0);
    EXPECT_TRUE(test::ReadAll(work.Path() / "picture.BMP").starts_with("BM"));
}

TEST_F(Cli, DataFolderIsMadeOrNamed)
{
    const Ran made = Cli_({"translate", program, "--data-dir", "deep/er/data"});
    EXPECT_EQ(made.Status, 0) << made.Err;
    EXPECT_TRUE(std::filesystem::is_regular_file(work.Path() / "deep/er/data/TKZGraph.Dll"));
    work.Write("blocker", "a file where a folder should be");
    const Ran blocked = Cli_({"translate", program, "--data-dir=blocker/data"});
    EXPECT_EQ(blocked.Status, 1);
    EXPECT_EQ(blocked.Out, "");
    EXPECT_TRUE(blocked.Err.starts_with("backplot-cli: the data folder blocker/data cannot be made: ")) << blocked.Err;
}

TEST_F(Cli, BatchReportDoesNotDependOnTheJobs)
{
    std::filesystem::create_directory(work.Path() / "programs");
    for (const char* name : {"lathe_shaft.nc", "mill_incremental.nc", "mill_pocket_plate.nc"})
        std::filesystem::copy_file(test::SourceDir() / "examples" / name, work.Path() / "programs" / name);
    work.Write("programs/.hidden.nc", "G1 X1-2\n");
    work.Write("programs/broken.nc", "G1 X1.\nG1 X1-2\nG1 X3.\n");
    const auto withoutSeconds = [](const std::string& report) {
        return std::regex_replace(report, std::regex(" +[0-9]+\\.[0-9]{3}\n"), "\n");
    };
    const Ran one = Cli_({"batch", "programs", "-o", "out1", "--dxf", "--check", "--jobs", "1"});
    const Ran three = Cli_({"batch", "programs", "-o", "out3", "--dxf", "--check", "--jobs", "3"});
    EXPECT_EQ(one.Status, 1); // broken.nc raised the error box
    EXPECT_EQ(withoutSeconds(one.Out), withoutSeconds(three.Out));
    EXPECT_EQ(one.Err, three.Err);
    EXPECT_EQ(one.Err, "== programs/broken.nc\nCorvane Backplot: An error was encountered while generating file at "
                       "line 2\n\nG1 X1-2\n");
    const std::string table = withoutSeconds(one.Out);
    // Start points are not in the extents: MinX is the first line's end.
    EXPECT_NE(table.find("programs/broken.nc                 3        2      0     1  -1e-14     3  -1e-14       1"
                         "         1  dxf"),
              std::string::npos)
        << table;
    EXPECT_EQ(test::ReadAll(work.Path() / "out1/mill_incremental.dxf"), test::ReadAll(work.Path() / "out3/mill_incremental.dxf"));
    EXPECT_FALSE(std::filesystem::exists(work.Path() / "out1/.hidden.dxf"));
}

TEST(CliStart, CommandsThatDrawNothingLoadNoQtAndTheWindowAnswersWithoutADisplay)
{
    // The NEEDED entries of the ELF's dynamic section, as the loader reads them.
    test::ScratchDir work;
    const Ran needed = RunProgram("/usr/bin/readelf", {"-d", BACKPLOT_CLI}, "", work.Path());
    ASSERT_EQ(needed.Status, 0);
    EXPECT_NE(needed.Out.find("(NEEDED)"), std::string::npos);
    EXPECT_EQ(needed.Out.find("libQt6"), std::string::npos) << needed.Out;

    const std::vector<std::string> noDisplay{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    const Ran version = RunProgram(BACKPLOT_WINDOW, {"--version"}, "", work.Path(), noDisplay);
    EXPECT_EQ(version.Status, 0);
    EXPECT_TRUE(version.Out.starts_with("backplot 5.0")) << version.Out;
    EXPECT_TRUE(RunProgram(BACKPLOT_WINDOW, {"-h"}, "", work.Path(), noDisplay).Out.starts_with("Usage: backplot [PROGRAM]\n"));
    const Ran wrong = RunProgram(BACKPLOT_WINDOW, {"--lathe"}, "", work.Path(), noDisplay);
    EXPECT_EQ(wrong.Status, 2);
    EXPECT_EQ(wrong.Err, "backplot: unknown option 'lathe'.\nTry 'backplot --help'.\n");
}

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
