#include "CheckedOutput.h"
#include "CliOptions.h"
#include "CliSession.h"

#include <csignal>
#include <cstring>
#include <iostream>
#include <map>

using namespace backplot;

int main(int argc, char** argv)
{
    // A reader that goes away (`| head`) is the end of the output, not a reason to die
    // with the scratch folder left behind: writes then fail with EPIPE instead.
    std::signal(SIGPIPE, SIG_IGN);
    std::ios::sync_with_stdio(false);

    const std::vector<std::string> args(argv + 1, argv + argc);
    std::string error;
    const std::optional<CliOptions> options = ParseCliOptions(args, error);
    if (!options) {
        std::cerr << "backplot-cli: " << error << '\n' << CliUsage;
        return 2;
    }

    static const std::map<std::string, int (*)(CliSession&)> commands = {
        {"translate", RunTranslate}, {"records", RunRecords}, {"extents", RunExtents},
        {"render", RunRender},       {"view", RunView},       {"dxf", RunDxf},
        {"print", RunPrint},         {"details", RunDetails},
    };
    CheckedOutput stdoutBuffer(1);
    std::ostream out(&stdoutBuffer);
    int status = 0;
    try {
        CliSession session(*options, out, std::cerr);
        status = commands.at(options->Command)(session);
        out.flush();
    } catch (const std::exception& e) {
        out.flush();
        std::cerr << "backplot-cli: " << e.what() << '\n';
        status = 1;
    }
    if (stdoutBuffer.Error() && stdoutBuffer.Error() != EPIPE) {
        std::cerr << "backplot-cli: cannot write the output: " << std::strerror(stdoutBuffer.Error()) << '\n';
        return 1;
    }
    return status;
}
