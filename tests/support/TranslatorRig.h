#pragma once

#include "RecordFile.h"
#include "ScriptedDialogs.h"
#include "TestPaths.h"
#include "Translator.h"

#include <functional>
#include <string>
#include <vector>

namespace backplot::test {

inline const std::string ErrorLead = "An error was encountered while generating file at line ";

// Counts the calls of "let pending events run"; `onCall` plays what the user does meanwhile.
struct CountingEvents : EventPump {
    int calls = 0;
    std::function<void(int call)> onCall;
    void ProcessEvents() override { onCall ? onCall(++calls) : void(++calls); }
};

// A translator working in a scratch data folder, with scripted dialogs, as the window holds it.
struct TranslatorRig {
    ScratchDir dir;
    ScriptedDialogs dialogs;
    CountingEvents events;
    PlaybackState playback;
    Translator translator{dialogs, events, playback};

    explicit TranslatorRig(bool mill = true)
    {
        translator.SetDataFolder(dir.Folder());
        translator.State().Mill = mill;
    }
    TranslationState& state() { return translator.State(); }

    // Opens a program text (LF line ends are fine), or a file, the way the open pipeline
    // does, and returns the record file's records.
    std::vector<EntityRecord> Run(const std::string& program) { return RunFile(dir.Write("program.nc", program)); }
    std::vector<EntityRecord> RunFile(const std::string& source)
    {
        translator.ResetForNewProgram();
        TranslateWithoutReset(source);
        return Records();
    }
    void TranslateWithoutReset(const std::string& source)
    {
        translator.NormaliseFile(source, TempFileName);
        translator.TranslateProgram();
    }
    std::vector<EntityRecord> Records() const
    {
        RecordFileReader reader;
        reader.Open(translator.RecordFilePath());
        std::vector<EntityRecord> records(static_cast<std::size_t>(reader.RecordTotal()));
        for (std::size_t i = 0; i < records.size(); ++i)
            reader.Read(static_cast<std::int32_t>(i + 1), records[i]);
        return records;
    }
    void Write(const std::vector<EntityRecord>& records) const
    {
        RecordFileRewriter writer;
        writer.Open(translator.RecordFilePath());
        for (std::size_t i = 0; i < records.size(); ++i)
            writer.Append(static_cast<std::int32_t>(i + 1), records[i]);
        writer.Finish();
    }
};

inline EntityRecord Move(std::int16_t type, float x1, float y1, float x2, float y2, std::int32_t tool = 0)
{
    EntityRecord r;
    r.MoveType = type;
    r.StartX = x1, r.StartY = y1, r.EndX = x2, r.EndY = y2;
    r.ToolNum = tool;
    return r;
}

inline EntityRecord Cut(float x1, float y1, float x2, float y2, std::int32_t tool = 0)
{
    return Move(1, x1, y1, x2, y2, tool);
}

// Angles in degrees, as stored.
inline EntityRecord Arc(std::int16_t type, float cx, float cy, float radius, float startDeg, float endDeg)
{
    EntityRecord r;
    r.MoveType = type;
    r.CenterX = cx, r.CenterY = cy, r.Radius = radius, r.StartAngle = startDeg, r.EndAngle = endDeg;
    return r;
}

// Cut n (from 1) runs from (n, 0) to (n, -1) in stored units, with tools[n - 1].
inline std::vector<EntityRecord> NumberedCuts(const std::vector<std::int32_t>& tools)
{
    std::vector<EntityRecord> records;
    for (std::size_t i = 0; i < tools.size(); ++i) {
        const float n = static_cast<float>(i + 1);
        records.push_back(Cut(n, 0, n, -1, tools[i]));
    }
    return records;
}
inline std::vector<EntityRecord> NumberedCuts(int count)
{
    return NumberedCuts(std::vector<std::int32_t>(static_cast<std::size_t>(count)));
}

} // namespace backplot::test
