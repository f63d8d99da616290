#pragma once

#include "PlaybackState.h"
#include "Plotter.h"
#include "ProgramGenerator.h"
#include "RecordFile.h"
#include "Settings.h"
#include "TestPaths.h"
#include "Translator.h"
#include "UserDialogs.h"

#include <QImage>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <sstream>
#include <string>

namespace backplot::bench {

// The canvas of the drawing benchmarks: full HD.
constexpr int PictureWidth = 1920;
constexpr int PictureHeight = 1080;

// Answers every message box with OK and counts them, so a benchmark runs without anyone at
// the keyboard and still tells how many errors it met. The open dialog chooses `Program`
// (cancelled while it is empty).
struct QuietDialogs : UserDialogs {
    std::string Program;
    int Messages = 0;
    std::string FirstMessage; // empty when there was none

    MsgAnswer Message(const std::string& text, const std::string&, MsgIcon, MsgButtons) override
    {
        if (Messages++ == 0)
            FirstMessage = text;
        return MsgAnswer::Ok;
    }
    std::optional<std::string> OpenFileName(const std::string&, const std::string&, const std::string&,
                                            const std::string&) override
    {
        return Program.empty() ? std::nullopt : std::optional(Program);
    }
    void SetPointer(MousePointer) override {}
    void Reset() { Messages = 0, FirstMessage.clear(); }
};

// There is no window to keep alive while a benchmark translates.
struct IdleEventPump : EventPump {
    void ProcessEvents() override {}
};

// Ends the benchmark with an error made of the parts, which tell what was found instead.
template <typename... Parts>
void Skip(benchmark::State& state, const Parts&... parts)
{
    std::ostringstream text;
    (text << ... << parts);
    state.SkipWithError(text.str().c_str());
}

// A translator with quiet seams, working in a scratch folder, and a plotter on its records.
struct BenchTranslator {
    test::ScratchDir Folder;
    QuietDialogs Dialogs;
    IdleEventPump Events;
    PlaybackState Playback;
    Translator T{Dialogs, Events, Playback};
    Settings Options;
    Plotter Plot{Options, T.ToolColors(), T.State(), Playback, T.Record(), Dialogs, Events,
                 [this] { return T.RecordFilePath(); }};

    BenchTranslator() { T.SetDataFolder(Folder.Folder()); }

    // The open command's two steps for one program; false when normalising failed.
    bool Translate(const std::string& source)
    {
        T.ResetForNewProgram();
        if (!T.NormaliseFile(source, TempFileName))
            return false;
        T.TranslateProgram();
        return true;
    }
    // The generated program written and translated; false, the benchmark skipped, when the
    // translation reported an error.
    bool TranslateGenerated(const ProgramGenerator& generator, benchmark::State& state)
    {
        Translate(generator.WriteTo(Folder.Path(), "generated.nc"));
        if (Dialogs.Messages != 0)
            Skip(state, "translation reported: ", Dialogs.FirstMessage);
        return Dialogs.Messages == 0;
    }
    // Calls visit(record) for every record of the record file.
    template <typename Visit>
    void ForEachRecord(Visit visit)
    {
        RecordFileReader reader;
        reader.Open(T.RecordFilePath());
        EntityRecord record;
        for (std::int32_t n = 1; n <= reader.RecordTotal(); ++n) {
            reader.Read(n, record);
            visit(record);
        }
    }
};

// Pixels of the picture that are not the white background.
inline std::int64_t DrawnPixels(const QImage& picture)
{
    std::int64_t drawn = 0;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            drawn += (row[x] | 0xFF000000u) != qRgb(255, 255, 255);
    }
    return drawn;
}

} // namespace backplot::bench
