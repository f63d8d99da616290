#pragma once

#include "RecordFile.h"
#include "TestPaths.h"
#include "Translator.h"

#include <deque>
#include <string>
#include <vector>

namespace backplot::test {

// Message boxes are recorded and answered from a script (OK once the script runs out).
class ScriptedDialogs : public UserDialogs {
public:
    struct Box {
        std::string Text, Title;
        MsgIcon Icon = MsgIcon::None;
        MsgButtons Buttons = MsgButtons::Ok;
    };
    std::vector<Box> Boxes;
    std::deque<MsgAnswer> Answers;
    std::vector<MousePointer> Pointers;

    MsgAnswer Message(const std::string& text, const std::string& title, MsgIcon icon, MsgButtons buttons) override
    {
        Boxes.push_back({text, title, icon, buttons});
        if (Answers.empty())
            return MsgAnswer::Ok;
        const MsgAnswer answer = Answers.front();
        Answers.pop_front();
        return answer;
    }
    std::optional<std::string> OpenFileName(const std::string&, const std::string&, const std::string&,
                                            const std::string&) override
    {
        return std::nullopt;
    }
    void SetPointer(MousePointer pointer) override { Pointers.push_back(pointer); }
};

class CountingPump : public EventPump {
public:
    int Calls = 0;
    void ProcessEvents() override { ++Calls; }
};

// A translator working in a scratch data folder, fed with program texts.
struct Harness {
    ScriptedDialogs Dialogs;
    CountingPump Pump;
    PlaybackState Playback;
    Translator T{Dialogs, Pump, Playback};
    ScratchDir Dir;

    explicit Harness(bool mill = true)
    {
        T.SetDataFolder(Dir.Folder());
        T.State().Mill = mill;
    }

    TranslationState& S() { return T.State(); }

    // Opens a new program the way the open pipeline does and returns the record file's records.
    std::vector<EntityRecord> Run(const std::string& program)
    {
        T.ResetForNewProgram();
        Translate(program);
        return Records();
    }

    // Normalise and translate only, without the per-program reset.
    void Translate(const std::string& program) { TranslateFile(Dir.Write("program.nc", program)); }

    void TranslateFile(const std::string& source)
    {
        T.NormaliseFile(source, TempFileName);
        T.TranslateProgram();
    }

    std::vector<EntityRecord> Records() const
    {
        std::vector<EntityRecord> records;
        RecordFileReader reader;
        reader.Open(T.RecordFilePath());
        records.resize(static_cast<std::size_t>(reader.RecordTotal()));
        for (std::size_t i = 0; i < records.size(); ++i)
            reader.Read(static_cast<std::int32_t>(i + 1), records[i]);
        return records;
    }
};

} // namespace backplot::test
