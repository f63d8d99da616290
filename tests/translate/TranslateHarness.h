#pragma once

#include "../app/ScriptedDialogs.h"
#include "RecordFile.h"
#include "TestPaths.h"
#include "Translator.h"

#include <string>
#include <vector>

namespace backplot::test {

inline const std::string ErrorLead = "An error was encountered while generating file at line ";

using Box = ScriptedDialogs::ShownMessage;

// Every message box is recorded and answered alike.
struct AnsweringDialogs : ScriptedDialogs {
    MsgAnswer Answer = MsgAnswer::Ok;
    MsgAnswer Message(const std::string& text, const std::string& title, MsgIcon icon, MsgButtons buttons) override
    {
        ScriptedDialogs::Message(text, title, icon, buttons);
        return Answer;
    }
    std::vector<std::string> Texts() const
    {
        std::vector<std::string> texts;
        for (const Box& box : Messages)
            texts.push_back(box.Text);
        return texts;
    }
};

struct CountingPump : EventPump {
    int Calls = 0;
    void ProcessEvents() override { ++Calls; }
};

// A translator working in a scratch data folder, fed with program texts.
struct Harness {
    AnsweringDialogs Dialogs;
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
        RecordFileReader reader;
        reader.Open(T.RecordFilePath());
        std::vector<EntityRecord> records(static_cast<std::size_t>(reader.RecordTotal()));
        for (std::size_t i = 0; i < records.size(); ++i)
            reader.Read(static_cast<std::int32_t>(i + 1), records[i]);
        return records;
    }
};

} // namespace backplot::test
