#include "CliSession.h"

#include "ProgramInput.h"
#include "RunTimeError.h"
#include "TranslationTexts.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <ostream>
#include <system_error>
#include <unistd.h>

namespace backplot {

CliSession::CliSession(const CliOptions& options, std::ostream& out, std::ostream& err)
    : options_(options), out_(out), err_(err), dialogs_(err), translator_(dialogs_, events_, playback_)
{
    settings_.Mill = !options.Lathe;
    settings_.AbsCenter = options.AbsCenter ? 1 : 0;
    settings_.ShowRapid = !options.NoRapid;
    settings_.ShowBlips = options.Blips;
    settings_.ShowAxis = !options.NoAxis;
    settings_.ToolColor = options.ToolColors;
    translator_.State().Mill = settings_.Mill;
    translator_.State().AbsCenter = settings_.AbsCenter;

    std::string folder;
    if (options.DataDir)
        folder = *options.DataDir;
    else if (options.Command == "translate")
        folder = ".";
    else {
        scratch_.emplace();
        folder = scratch_->Path().empty() ? std::string(".") : scratch_->Path().string();
    }
    translator_.SetDataFolder(folder);
}

CliSession::~CliSession() = default;

bool CliSession::PrepareDataFolder()
{
    if (!options_.DataDir)
        return true;
    const std::string& folder = *options_.DataDir;
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    if (ec) {
        err_ << "backplot-cli: the data folder " << folder << " cannot be made: " << ec.message() << '\n';
        return false;
    }
    // A folder that cannot take a file would otherwise show as a problem of the program.
    std::string probe = (std::filesystem::path(folder) / ".backplot-cli-XXXXXX").string();
    const int fd = ::mkstemp(probe.data());
    bool written = fd >= 0 && ::write(fd, "x", 1) == 1;
    int error = errno;
    if (fd >= 0) {
        if (::close(fd) != 0 && written) {
            written = false;
            error = errno;
        }
        ::unlink(probe.c_str());
    }
    if (!written) {
        err_ << "backplot-cli: the data folder " << folder << " cannot be written: " << std::strerror(error) << '\n';
        return false;
    }
    return true;
}

bool CliSession::Translate()
{
    ProgramInput input;
    if (!input.Open(options_.Program, dialogs_))
        return false;
    translator_.ResetForNewProgram();
    translator_.NormaliseFile(input.Path(), TempFileName);
    translator_.TranslateProgram();
    return true;
}

Plotter CliSession::MakePlotter()
{
    Translator& t = translator_;
    return Plotter(settings_, t.ToolColors(), t.State(), playback_, t.Record(), dialogs_, events_,
                   [&t] { return t.RecordFilePath(); });
}

void CliSession::OpenView(Plotter& plotter, DrawSurface& canvas)
{
    try {
        plotter.ExtentsWithMargin(canvas);
    } catch (const RunTimeError& e) {
        dialogs_.Message(std::string("The view could not be fitted: ") + e.what(), texts::MessageTitle,
                         MsgIcon::Critical, MsgButtons::Ok);
    }
}

} // namespace backplot
