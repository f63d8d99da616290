#pragma once

#include "RecordFile.h"
#include "TestPaths.h"
#include "Translator.h"

#include <ostream>
#include <string>
#include <vector>

namespace backplot::test {

inline const std::string ErrorLead = "An error was encountered while generating file at line ";

// Message boxes are recorded and all answered alike.
class ScriptedDialogs : public UserDialogs {
public:
    struct Box {
        std::string Text, Title;
        MsgIcon Icon = MsgIcon::None;
        MsgButtons Buttons = MsgButtons::Ok;
        bool operator==(const Box&) const = default;
        friend std::ostream& operator<<(std::ostream& out, const Box& box)
        {
            return out << box.Title << " / " << box.Text << " / icon " << static_cast<int>(box.Icon) << " / buttons "
                       << static_cast<int>(box.Buttons);
        }
    };

    std::vector<Box> Boxes;
    MsgAnswer Answer = MsgAnswer::Ok;
    std::optional<MousePointer> Pointer; // the last one set

    MsgAnswer Message(const std::string& text, const std::string& title, MsgIcon icon, MsgButtons buttons) override
    {
        Boxes.push_back({text, title, icon, buttons});
        return Answer;
    }
    std::optional<std::string> OpenFileName(const std::string&, const std::string&, const std::string&,
                                            const std::string&) override
    {
        return std::nullopt;
    }
    void SetPointer(MousePointer pointer) override { Pointer = pointer; }

    std::vector<std::string> Texts() const
    {
        std::vector<std::string> texts;
        for (const Box& box : Boxes)
            texts.push_back(box.Text);
        return texts;
    }
};

using Box = ScriptedDialogs::Box;

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
        RecordFileReader reader;
        reader.Open(T.RecordFilePath());
        std::vector<EntityRecord> records(static_cast<std::size_t>(reader.RecordTotal()));
        for (std::size_t i = 0; i < records.size(); ++i)
            reader.Read(static_cast<std::int32_t>(i + 1), records[i]);
        return records;
    }
};

} // namespace backplot::test
