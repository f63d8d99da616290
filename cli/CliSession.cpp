#include "CliSession.h"

#include "RunTimeError.h"

#include <filesystem>
#include <ostream>
#include <system_error>

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

bool CliSession::Translate()
{
    const std::string& program = options_.Program;
    std::error_code ec;
    const auto status = std::filesystem::status(program, ec);
    if (ec || !std::filesystem::is_regular_file(status)) {
        dialogs_.Message(program + " cannot be opened: no such file", "Corvane Backplot", MsgIcon::Critical,
                         MsgButtons::Ok);
        return false;
    }
    if (std::filesystem::file_size(program, ec) == 0 && !ec) {
        dialogs_.Message(program + " is an empty file", "Corvane Backplot", MsgIcon::Critical, MsgButtons::Ok);
        return false;
    }
    translator_.ResetForNewProgram();
    translator_.NormaliseFile(program, TempFileName);
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
        dialogs_.Message(std::string("The view could not be fitted: ") + e.what(), "Corvane Backplot",
                         MsgIcon::Critical, MsgButtons::Ok);
    }
}

int RunTranslate(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const TranslationState& s = session.Translation().State();
    session.Out() << "Records " << s.RecordCount << "\nLines " << s.LineCount << "\nToolChanges "
                  << s.ToolChangeCount << "\nRecordFile " << session.Translation().RecordFilePath() << "\n";
    return session.ExitCode();
}

} // namespace backplot
