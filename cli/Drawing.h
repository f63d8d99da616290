#pragma once

#include <memory>
#include <string>

namespace backplot {

class CliSession;

// What only backplot-cli-draw can do. It links Qt Gui and PrintSupport, which the
// commands that draw nothing never load: backplot-cli reads the command line and hands
// a drawing command over to it (exec), so those start like a plain C++ program.
struct Drawing {
    int (*Render)(CliSession&);
    int (*Print)(CliSession&);
    // The picture and the printed page of the opened program (the view after opening on
    // a canvas of --size), for batch. False with the reason in `error`.
    bool (*WritePng)(CliSession&, const std::string& path, std::string& error);
    bool (*WritePdf)(CliSession&, const std::string& path, std::string& error);
    // What WritePdf needs, made in the main thread and kept while the result lives.
    std::shared_ptr<void> (*StartPages)(const std::string& folder);
};

// backplot-cli's main(); `drawing` is null in the executable that draws nothing.
int RunCli(int argc, char** argv, const Drawing* drawing);

} // namespace backplot
