#pragma once

#include "BlockScanner.h"
#include "EntityRecord.h"
#include "PlaybackState.h"
#include "RecordFile.h"
#include "TranslationState.h"
#include "UserDialogs.h"

#include <string>
#include <string_view>

namespace backplot {

inline constexpr const char* TempFileName = "TKZTemp.tmp";
inline constexpr const char* RecordFileName = "TKZGraph.Dll";

class LineSource; // the normalised program's lines, from memory or from the file

// Translates part programs into the record file. Owns the translation state, the record
// buffer, the tool colour table and the DXF collection arrays; one instance per process.
class Translator {
public:
    Translator(UserDialogs& dialogs, EventPump& events, PlaybackState& playback);

    TranslationState& State() { return state_; }
    const TranslationState& State() const { return state_; }
    EntityRecord& Record() { return record_; }
    ToolColorTable& ToolColors() { return toolColors_; }
    const ToolColorTable& ToolColors() const { return toolColors_; }
    DxfCollection& Dxf() { return dxf_; }

    // The folder of the working files, ending in a separator.
    void SetDataFolder(std::string folder);
    const std::string& DataFolder() const { return dataFolder_; }
    std::string RecordFilePath() const { return dataFolder_ + RecordFileName; }
    std::string TempFilePath() const { return dataFolder_ + TempFileName; }

    // True if the file can be opened for reading.
    static bool FileExists(const std::string& path);

    // Copies the program into data folder + tempName with CR LF line ends and only the
    // characters 32..126. Shows "Problem with input file." and returns false on failure.
    // The copy is also kept in memory for the next TranslateProgram, up to KeptTextLimit
    // bytes; a longer program is written in pieces and read back from the file.
    bool NormaliseFile(const std::string& sourcePath, const std::string& tempName);
    static constexpr std::size_t KeptTextLimit = 8 << 20;

    // Translates the normalised program into the record file, up to its end, a block
    // holding "M30", an abort or a Cancel in the error box. The records are written when
    // the translation ends, over the old record file, which is cut after them.
    void TranslateProgram();

    // The per-program reset done before a new program is opened.
    void ResetForNewProgram();

    // Advances the state by one comment-free block; writes at most one record.
    void InterpretBlock(std::string_view block);

    // Writes the record buffer as the next record, or collects a DXF entity while
    // CollectDxf is set.
    void WriteEntity(std::int16_t moveType);

    // The last TranslateProgram ended before the program's end and its "M30": its files
    // could not be opened, the program did not fit the machine type, the user chose Cancel
    // in the error box, or its records could not be written. The records translated
    // before the stop are in the record file, as far as it could be written.
    bool StoppedEarly() const { return stoppedEarly_; }

private:
    // InterpretBlock on the block the scanner has just indexed.
    void InterpretIndexed();
    void ChangeTool();
    void InterpretArc(bool clockwise);
    // The error box of a failing line; true when the user chose to go on.
    bool ReportLineError();
    // The lines of the normalised program and the driver's loop over them.
    void TranslateLines(LineSource& lines);

    UserDialogs& dialogs_;
    EventPump& events_;
    PlaybackState& playback_;

    TranslationState state_;
    EntityRecord record_;
    ToolColorTable toolColors_;
    DxfCollection dxf_;
    bool stoppedEarly_ = false;
    BlockScanner scanner_;
    std::string latheBlock_; // the block with its lathe letters rewritten
    RecordFileRewriter records_;
    std::string dataFolder_;

    std::string keptText_;     // the last normalised program, when it is kept whole
    std::string keptTextPath_; // the temporary file it mirrors; empty when none is kept
    // While the driver runs, the block being interpreted, in place of a copy in
    // CurrentBlock; empty otherwise.
    std::string_view driverBlock_;
    bool inDriver_ = false;
    bool staleTemp_ = false; // the last NormaliseFile failed: the temporary file is not this program
};

} // namespace backplot
