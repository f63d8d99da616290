#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace backplot {

// One entry of the tool colour table: the colour given to the n-th tool change.
struct ToolColor {
    std::int32_t ToolNumber = 0;
    std::uint32_t Color = 0;      // 0xBBGGRR
    std::int32_t ColorIndex = 0;  // index into the 16-colour palette
};

// Ten entries, one per tool change. Entries 0-4 come from the settings, 5-9 start at
// zero; translation overwrites 0-6 with fixed colours at each tool change.
struct ToolColorTable {
    static constexpr int Size = 10;
    std::array<ToolColor, Size> Entries{};

    ToolColorTable() { LoadDefaults(); }
    // The settings defaults: black, blue, green, cyan, red; entries 5-9 zero.
    void LoadDefaults();
    ToolColor& operator[](int i) { return Entries.at(static_cast<std::size_t>(i)); }
    const ToolColor& operator[](int i) const { return Entries.at(static_cast<std::size_t>(i)); }
};

// A T word as met in the program: the tool number and the count of non-empty lines read.
struct ToolChange {
    std::int32_t ToolNumber = 0;
    std::int32_t LineNumber = 0;
};

// Entities collected for a DXF drawing. Coordinates are not negated here.
struct DxfLine {
    float X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
    std::string Layer;
};
struct DxfCircle {
    float CenterX = 0, CenterY = 0, Radius = 0;
    std::string Layer;
};
struct DxfArc {
    float CenterX = 0, CenterY = 0, StartAngle = 0, EndAngle = 0, Radius = 0;
    std::string Layer;
};
struct DxfCollection {
    std::vector<DxfLine> Lines;     // DxfLineCount = Lines.size()
    std::vector<DxfCircle> Circles; // DxfCircleCount = Circles.size()
    std::vector<DxfArc> Arcs;       // DxfArcCount = Arcs.size()
    void Clear()
    {
        Lines.clear();
        Circles.clear();
        Arcs.clear();
    }
};

// The modal machine state carried from block to block. Coordinates are program units
// (doubles); the record writer narrows them to floats and negates Y.
struct TranslationState {
    // Positions
    double CurX = 1e-14, CurY = 1e-14, CurZ = 1e-14; // target of the block {X Y Z}; modal
    double LastX = 0, LastY = 0, LastZ = 0;          // start of the block = previous target

    // Arc values
    double ArcCenterX = 0, ArcCenterY = 0;                  // last arc's centre; survives a new translation
    double ArcRadius = 0, ArcStartAngle = 0, ArcEndAngle = 0; // last arc's radius and angles (degrees)
    double ValI = 0, ValJ = 0, ValK = 0;                    // {I J K} of this block; cleared after each block
    double ValR = 0;                                        // {R} read in G2/G3 mode; not cleared
    double ValROther = 0;                                   // {R} read outside G2/G3 (unused)

    // Modal flags
    bool Absolute = true;       // {G90 true, G91 false}
    std::int16_t MoveMode = 0;  // {G0 0, G1 1, G2 2, G3 3}
    bool HaveArcData = false;   // this block holds I, J, K, or R in arc mode
    bool Helical = false;       // milling: Z word in G2/G3 mode in this block

    // Tools
    std::int16_t ToolNumber = 0;          // {T}; 0 again at each translation
    std::int16_t ToolChangeCount = 0;     // T words met; reset per program
    std::vector<ToolChange> ToolChanges;  // one per T word; reset per program

    // Words read and kept but not used for drawing
    double Feed = 0;           // {F}
    std::int32_t Spindle = 0;  // {S}
    std::int32_t SeqNum = 0;   // {N}
    std::int32_t ValP = 0;     // {P}
    std::int32_t ValL = 0;     // {L}; back to 0 after each block
    float ValB = 0;            // {B}

    // Machine type, from the settings
    bool Mill = true;             // milling (true) or lathe (false) translation
    std::int16_t AbsCenter = 0;   // 1: I and J are absolute centres; else offsets from the start

    // Counters of the driver
    std::int16_t LineCount = 0;       // non-empty lines read
    std::int16_t FirstBlockLine = 0;  // LineCount at the first block left after comments; reset per program
    std::int16_t RecordCount = 0;     // records written; reset only when an old record file existed
    std::int16_t RecordLength = 128;

    std::string CurrentBlock;                 // block being interpreted, copied into BlockText
    std::string LineBuffer = std::string(60, ' '); // last line read
    std::int16_t CommentCharCount = 4;        // length of "(/',"

    bool AbortTranslation = false; // set when the program does not fit the machine type
    bool CollectDxf = false;       // WriteEntity collects DXF entities instead of writing records
};

} // namespace backplot
