#pragma once

#include "CliOptions.h"
#include "ConsoleDialogs.h"
#include "PlaybackState.h"
#include "Plotter.h"
#include "ScratchFolder.h"
#include "Settings.h"
#include "Translator.h"

#include <iosfwd>
#include <optional>

namespace backplot {

// One run of the pipeline without a window: the data folder, the settings from their
// defaults and the flags, the translator, and the messages on `err`.
class CliSession {
public:
    CliSession(const CliOptions& options, std::ostream& out, std::ostream& err);
    ~CliSession();
    CliSession(const CliSession&) = delete;
    CliSession& operator=(const CliSession&) = delete;

    // Makes the data folder given with --data-dir when it is missing and checks that it
    // can be written. False, with the folder named on `err`, when it cannot.
    bool PrepareDataFolder();

    // Normalises and translates the program into the data folder. False when the
    // program could not be read at all (missing, a folder or empty; the message is out).
    bool Translate();

    // A plotter on this session's translator, settings and seams.
    Plotter MakePlotter();
    // The view the window shows right after opening the program, on `canvas`: the
    // extents with their margin. A view that cannot be fitted is reported.
    void OpenView(Plotter& plotter, DrawSurface& canvas);

    // 0 when no message was reported, 1 otherwise.
    int ExitCode() const { return dialogs_.MessageCount() == 0 ? 0 : 1; }

    const CliOptions& Options() const { return options_; }
    std::ostream& Out() { return out_; }
    std::ostream& Err() { return err_; }
    ConsoleDialogs& Dialogs() { return dialogs_; }
    EventPump& Events() { return events_; }
    PlaybackState& Playback() { return playback_; }
    Settings& Config() { return settings_; }
    Translator& Translation() { return translator_; }

private:
    const CliOptions& options_;
    std::ostream& out_;
    std::ostream& err_;
    ConsoleDialogs dialogs_;
    NoEventPump events_;
    PlaybackState playback_;
    Settings settings_;
    Translator translator_;
    std::optional<ScratchFolder> scratch_; // the data folder unless one was given
};

// The subcommands; each returns the exit status.
int RunTranslate(CliSession& session);
int RunRecords(CliSession& session);
int RunExtents(CliSession& session);
int RunView(CliSession& session);
int RunDxf(CliSession& session);
int RunDetails(CliSession& session);
int RunCheck(CliSession& session);

} // namespace backplot
