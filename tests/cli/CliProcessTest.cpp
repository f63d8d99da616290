#include "TestPaths.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace backplot {
namespace {

struct Ran { int Status = -1; std::string Out, Err; };

// Starts `program` with `args` in `folder`, not waited for: stdin, stdout and stderr on the
// given descriptors; `environment` entries ("NAME" unsets, "NAME=VALUE" sets) and writes
// failing beyond `fileLimit` bytes, as on a full disk, apply to the child only.
pid_t Start(const std::string& program, const std::vector<std::string>& args, const std::filesystem::path& folder,
            int in, int out, int err, const std::vector<std::string>& environment = {}, rlim_t fileLimit = RLIM_INFINITY)
{
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    for (const auto& [from, to] : {std::pair{in, 0}, {out, 1}, {err, 2}})
        if (from >= 0)
            ::dup2(from, to);
    if (::chdir(folder.c_str()) != 0)
        ::_exit(126);
    for (const std::string& e : environment)
        e.find('=') == std::string::npos ? ::unsetenv(e.c_str()) : ::putenv(const_cast<char*>(e.c_str()));
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{fileLimit, RLIM_INFINITY};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& a : args)
        argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    ::execv(program.c_str(), argv.data());
    ::_exit(127);
}

// Start, waited for, with `input` written into a pipe on its stdin and its output and
// messages kept in `folder`.
Ran RunProgram(const std::string& program, const std::vector<std::string>& args, const std::string& input,
               const std::filesystem::path& folder, const std::vector<std::string>& environment = {},
               rlim_t fileLimit = RLIM_INFINITY)
{
    const std::filesystem::path out = folder / "stdout", err = folder / "stderr";
    int in[2]; // close-on-exec: the child keeps only its copies on 0, 1 and 2
    EXPECT_EQ(::pipe2(in, O_CLOEXEC), 0);
    const int outFd = ::open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    const int errFd = ::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    const pid_t child = Start(program, args, folder, in[0], outFd, errFd, environment, fileLimit);
    for (const int fd : {in[0], outFd, errFd})
        ::close(fd);
    EXPECT_EQ(::write(in[1], input.data(), input.size()), static_cast<ssize_t>(input.size()));
    ::close(in[1]);
    int status = 0;
    ::waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), test::ReadAll(out), test::ReadAll(err)};
}

std::vector<std::string> Listing(const std::filesystem::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    return names;
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

    // The usage errors themselves are golden cases (bad_usage_*).
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

TEST(CliProcess, OutputsThatCannotBeWrittenWholeLeaveTheOldFile)
{
    // Five records take 640 bytes in the scratch folder; every output of the rectangle
    // takes more than the 1024 bytes a file may grow to here.
    test::ScratchDir work;
    const std::string program = work.Write("rectangle.nc", "G0 X0 Y0\nG1 X40.\nG1 Y10.\nG1 X0.\nG1 Y0.\n");
    const std::filesystem::path out = work.Path() / "out";
    std::filesystem::create_directory(out);
    const struct { std::vector<std::string> args; std::string name; bool print = false; } rows[] = {
        {{"render", program, "--size", "400x300"}, "picture.png"},
        {{"render", program, "--size", "40x30"}, "picture.bmp"}, {{"dxf", program}, "drawing.dxf"},
        {{"print", program}, "page.pdf", true},
    };
    for (const auto& row : rows) {
        const std::string target = (out / row.name).string(), old = "the " + row.name + " written before";
        work.Write("out/" + row.name, old);
        std::vector<std::string> args = row.args;
        args.insert(args.end(), {"-o", target});
        std::filesystem::create_directory(work.Path() / "tmp");
        const Ran ran = RunProgram(BACKPLOT_CLI, args, "", work.Path(), {"TMPDIR=" + (work.Path() / "tmp").string()}, 1024);
        EXPECT_EQ(ran.Status, 1) << row.name;
        EXPECT_EQ(ran.Err, row.print ? "Corvane Backplot: An error occured while printing\n"
                                       "backplot-cli: no page written to " + target + "\n"
                                     : "backplot-cli: cannot write " + target + ": File too large\n");
        EXPECT_EQ(test::ReadAll(target), old);
        EXPECT_EQ(Listing(out), std::vector<std::string>{row.name});
        EXPECT_TRUE(std::filesystem::is_empty(work.Path() / "tmp")) << row.name;
        std::filesystem::remove(target);
    }
}

TEST_F(Cli, StepsPastTheLastRecordStopThere)
{
    // Two cuts: the picture after both, and after any number of steps past them, as in
    // the window, where stepping ends at the end and does not start again by itself.
    const std::string two = work.Write("two.nc", "G1 X10.\nG1 Y10.\n");
    const auto render = [&](int steps) {
        EXPECT_EQ(Cli_({"render", two, "-o", "steps.bmp", "--size", "40x30", "--steps", std::to_string(steps)}).Status, 0);
        return test::ReadAll(work.Path() / "steps.bmp");
    };
    const std::string both = render(2);
    EXPECT_NE(render(1), both);
    for (const int steps : {3, 4, 40000})
        EXPECT_EQ(render(steps), both) << steps;
}

TEST(CliProcess, SignalsEndTheRunWithoutLeavingAnythingBehind)
{
    namespace fs = std::filesystem;
    test::ScratchDir work;
    std::string program;
    for (int i = 0; i < 20000; ++i)
        program += i % 2 ? "G1 X3. Y4.\n" : "G2 X1. Y2. R3.\n";
    const std::string path = work.Write("program.nc", program);
    const fs::path tmp = work.Path() / "tmp", out = work.Path() / "out";
    const int null = ::open("/dev/null", O_WRONLY);

    // Wherever a run is when the signal comes: writing its listing into a pipe nobody
    // reads, setting up the printer (Qt's runtime folder made), or writing the page.
    const auto listingBlocked = [](int fd) {
        char first[16];
        return ::read(fd, first, sizeof first) == static_cast<ssize_t>(sizeof first);
    };
    const auto appears = [](const fs::path& folder, const std::string& name) {
        for (int i = 0; i < 20000; ++i) {
            std::error_code ec; // the run changes the folder while it is read
            for (auto it = fs::recursive_directory_iterator(folder, ec); !ec && it != fs::end(it); it.increment(ec))
                if (it->path().filename().string().find(name) != std::string::npos)
                    return true;
            std::this_thread::sleep_for(std::chrono::microseconds(250));
        }
        return false;
    };
    const struct { const char* stage; std::vector<std::string> args; int signal; } rows[] = {
        {"listing", {"records", path, "--json"}, SIGTERM}, {"listing", {"records", path, "--json"}, SIGINT},
        {"listing", {"records", path, "--json"}, SIGHUP},
        {"qt-runtime", {"print", path, "-o", (out / "page.pdf").string()}, SIGTERM},
        {".page.pdf-", {"print", path, "-o", (out / "page.pdf").string()}, SIGINT},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.stage) + " " + std::to_string(row.signal));
        fs::create_directory(tmp);
        fs::create_directory(out);
        int fds[2];
        ASSERT_EQ(::pipe(fds), 0);
        const pid_t child = Start(BACKPLOT_CLI, row.args, work.Path(), -1, fds[1], null, {"TMPDIR=" + tmp.string()});
        ::close(fds[1]);
        ASSERT_GT(child, 0);
        const bool reached = row.args[0] == "records" ? listingBlocked(fds[0])
                             : std::string(row.stage) == "qt-runtime" ? appears(tmp, row.stage)
                                                                      : appears(out, row.stage);
        EXPECT_TRUE(reached) << "the run never got there";
        ::kill(child, row.signal);
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(fds[0]);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == row.signal) << status;
        EXPECT_EQ(Listing(tmp), std::vector<std::string>{});
        EXPECT_EQ(Listing(out), std::vector<std::string>{});
        fs::remove_all(tmp);
        fs::remove_all(out);
    }
    ::close(null);
}

} // namespace
} // namespace backplot
