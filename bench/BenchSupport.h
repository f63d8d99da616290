#pragma once

#include "PlaybackState.h"
#include "TestPaths.h"
#include "Translator.h"
#include "UserDialogs.h"

#include <QImage>
#include <cstdint>
#include <string>

namespace backplot::bench {

// Answers every message box with OK and counts them, so a benchmark runs without anyone at
// the keyboard and still tells how many errors it met. The open dialog chooses `Program`
// (cancelled while it is empty).
class QuietDialogs : public UserDialogs {
public:
    MsgAnswer Message(const std::string& text, const std::string& title, MsgIcon icon,
                      MsgButtons buttons) override;
    std::optional<std::string> OpenFileName(const std::string& title, const std::string& initialDir,
                                            const std::string& filterDescription,
                                            const std::string& filterPattern) override;
    void SetPointer(MousePointer) override {}
    void Reset();

    std::string Program;
    int Messages = 0;
    std::string FirstMessage; // empty when there was none
};

// There is no window to keep alive while a benchmark translates.
class IdleEventPump : public EventPump {
public:
    void ProcessEvents() override {}
};

// A translator with quiet seams, working in a scratch folder.
struct BenchTranslator {
    test::ScratchDir Folder;
    QuietDialogs Dialogs;
    IdleEventPump Events;
    PlaybackState Playback;
    Translator T{Dialogs, Events, Playback};

    BenchTranslator() { T.SetDataFolder(Folder.Folder()); }
    // The open command's two steps for one program; false when normalising failed.
    bool Translate(const std::string& source);
};

// Points the per-user stores (settings, recent files, application data) at a scratch folder
// for the life of the object, so a benchmark that runs the main window never touches the
// user's own. The paths are not put back: nothing in the process uses the stores afterwards.
class ScratchSettings {
public:
    ScratchSettings();

private:
    test::ScratchDir folder_;
};

// Pixels of the picture that are not the white background.
std::int64_t DrawnPixels(const QImage& picture);

} // namespace backplot::bench
