#include "CliOptions.h"
#include "CliSession.h"

#include <iostream>

using namespace backplot;

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> args(argv + 1, argv + argc);
    std::string error;
    const std::optional<CliOptions> options = ParseCliOptions(args, error);
    if (!options) {
        std::cerr << "backplot-cli: " << error << '\n' << CliUsage;
        return 2;
    }
    CliSession session(*options, std::cout, std::cerr);
    int status = 0;
    if (options->Command == "translate")
        status = RunTranslate(session);
    else if (options->Command == "records")
        status = RunRecords(session);
    else if (options->Command == "extents")
        status = RunExtents(session);
    else
        status = RunRender(session);
    std::cout.flush();
    return status;
}
