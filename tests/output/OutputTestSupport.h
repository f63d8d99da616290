#pragma once

#include "../app/ScriptedDialogs.h"
#include "TestPaths.h"
#include "Plotter.h"
#include "Settings.h"
#include "Translator.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace backplot::test {

class IdlePump : public EventPump {
public:
    void ProcessEvents() override {}
};

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
    void SetView(float x1, float y1, float x2, float y2)
    {
        View.View.ViewX1 = x1;
        View.View.ViewY1 = y1;
        View.View.ViewX2 = x2;
        View.View.ViewY2 = y2;
    }
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
