#include "CheckedOutput.h"
#include "CliHelp.h"
#include "CliOptions.h"
#include "CliSession.h"
#include "Drawing.h"
#include "ScratchFolder.h"
#include "BatchCommand.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <unistd.h>

namespace backplot {

namespace {

int UsageError(const std::string& text)
{
    std::cerr << "backplot-cli: " << text << "\nTry 'backplot-cli --help'.\n";
    return 2;
}

// backplot-cli-draw beside this executable (a build tree), else where the install
// layout puts it.
std::string DrawingHelper()
{
    std::error_code ec;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", ec);
    const std::filesystem::path folder = self.parent_path();
    const std::filesystem::path beside = folder / "backplot-cli-draw";
    if (std::filesystem::exists(beside, ec))
        return beside.string();
    return (folder / BACKPLOT_DRAW_HELPER_FROM_BIN).lexically_normal().string();
}

int HandOverToDrawingHelper(char** argv)
{
    const std::string helper = DrawingHelper();
    std::cout.flush();
    ::execv(helper.c_str(), argv);
    std::cerr << "backplot-cli: cannot start " << helper << ": " << std::strerror(errno) << '\n';
    return 1;
}

// A picture or a PDF is no text for a terminal.
bool BinaryToTerminal(const CliOptions& o)
{
    return (o.Command == "render" || o.Command == "print") && o.Output == "-" && ::isatty(1);
}

} // namespace

int RunCli(int argc, char** argv, const Drawing* drawing)
{
    // A reader that goes away (`| head`) is the end of the output, not a reason to die
    // with the scratch folder left behind: writes then fail with EPIPE instead.
    std::signal(SIGPIPE, SIG_IGN);
    std::ios::sync_with_stdio(false);

    const CommandLine line = ParseCommandLine(argc, argv);
    CheckedOutput stdoutBuffer(1);
    std::ostream out(&stdoutBuffer);
    int status = 0;
    switch (line.What) {
    case CommandLine::Kind::UsageError:
        return UsageError(line.Text);
    case CommandLine::Kind::Help:
    case CommandLine::Kind::Version:
        out << line.Text;
        break;
    case CommandLine::Kind::Run: {
        const CliOptions& o = line.Options;
        if (BinaryToTerminal(o))
            return UsageError("-o -: standard output is a terminal; name a file or use a pipe");
        if (DrawsPictures(o) && !drawing)
            return HandOverToDrawingHelper(argv);
        // Past the hand-over: the helper must not inherit the blocked signals without
        // the thread that takes them.
        WatchSignals();
        try {
            if (o.Command == "batch") {
                status = RunBatch(o, out, std::cerr, drawing);
            } else {
                CliSession session(o, out, std::cerr);
                if (!session.PrepareDataFolder()) {
                    status = 1;
                } else {
                    static const std::map<std::string, int (*)(CliSession&)> commands = {
                        {"translate", RunTranslate}, {"records", RunRecords}, {"extents", RunExtents},
                        {"view", RunView},           {"dxf", RunDxf},         {"details", RunDetails},
                        {"check", RunCheck},
                    };
                    if (o.Command == "render")
                        status = drawing->Render(session);
                    else if (o.Command == "print")
                        status = drawing->Print(session);
                    else
                        status = commands.at(o.Command)(session);
                }
            }
            out.flush();
        } catch (const std::exception& e) {
            out.flush();
            std::cerr << "backplot-cli: " << e.what() << '\n';
            status = 1;
        }
        break;
    }
    }
    out.flush();
    if (stdoutBuffer.Error() && stdoutBuffer.Error() != EPIPE) {
        std::cerr << "backplot-cli: cannot write the output: " << std::strerror(stdoutBuffer.Error()) << '\n';
        return 1;
    }
    return status;
}

} // namespace backplot
