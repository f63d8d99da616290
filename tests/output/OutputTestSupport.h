#pragma once

#include "../app/ScriptedDialogs.h"
#include "TestPaths.h"
#include "Plotter.h"
#include "Settings.h"
#include "Translator.h"

#include <csignal>
#include <initializer_list>
#include <string>
#include <string_view>
#include <sys/resource.h>

namespace backplot::test {

struct IdlePump : EventPump {
    void ProcessEvents() override {}
};

// A rectangle 40 wide and 10 high: stored Y from -10 (machine Y 10) to 0.
constexpr const char* Rectangle = "G0 X0 Y0\nG1 X40.\nG1 Y10.\nG1 X0.\nG1 Y0.\n";

inline void SetView(ViewTransform& view, float x1, float y1, float x2, float y2)
{
    view.ViewX1 = x1, view.ViewY1 = y1, view.ViewX2 = x2, view.ViewY2 = y2;
}

// A translator working in a scratch folder, with scripted dialogs.
struct TranslatorRig {
    ScratchDir Folder;
    ScriptedDialogs Dialogs;
    IdlePump Events;
    PlaybackState Playback;
    Translator T{Dialogs, Events, Playback};

    explicit TranslatorRig(bool mill = true)
    {
        T.SetDataFolder(Folder.Folder());
        T.State().Mill = mill;
    }
    // The open command's translation of `program` (LF line ends are fine).
    void Translate(const std::string& program)
    {
        const std::string path = Folder.Write("program.nc", program);
        T.ResetForNewProgram();
        T.NormaliseFile(path, TempFileName);
        T.TranslateProgram();
    }
};

// A translated program with the plotter of its view, as the window holds them.
struct PlotRig : TranslatorRig {
    Settings Config;
    Plotter View{Config, T.ToolColors(), T.State(), Playback, T.Record(), Dialogs, Events,
                 [this] { return T.RecordFilePath(); }};

    // Translates and counts the records as the extents pass does; the view window is
    // set by the test.
    void Open(const std::string& program)
    {
        Translate(program);
        View.RecordTotal = T.State().RecordCount;
        View.PlotLast = View.RecordTotal;
    }
    void SetView(float x1, float y1, float x2, float y2) { test::SetView(View.View, x1, y1, x2, y2); }
};

// While it lives, a write that would make a file larger than `bytes` fails (EFBIG, "File
// too large"), as a full disk makes it fail part-way.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old_);
        rlimit limit = old_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &old_); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit old_{};
};

// Lines of a DXF text, each ended by CR LF.
inline std::string CrLf(std::initializer_list<std::string_view> lines)
{
    std::string text;
    for (std::string_view line : lines) {
        text += line;
        text += "\r\n";
    }
    return text;
}

// The part of a DXF text from its entities section on.
inline std::string EntitiesPart(const std::string& dxf)
{
    const std::size_t at = dxf.find("ENTITIES\r\n");
    return at == std::string::npos ? std::string() : dxf.substr(at);
}

} // namespace backplot::test
