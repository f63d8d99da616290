#include "ProgramCheck.h"

#include "ArcGeometry.h"
#include "BlockCheck.h"
#include "BlockScanner.h"
#include "RunTimeError.h"
#include "Translator.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

namespace backplot {

namespace {

// The replay answers every box with OK, as the CLI does; the findings say why they come.
class QuietDialogs : public UserDialogs {
public:
    MsgAnswer Message(const std::string&, const std::string&, MsgIcon, MsgButtons buttons) override
    {
        return buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel ? MsgAnswer::Yes : MsgAnswer::Ok;
    }
    std::optional<std::string> OpenFileName(const std::string&, const std::string&, const std::string&,
                                            const std::string&) override
    {
        return std::nullopt;
    }
    void SetPointer(MousePointer) override {}
};

class NoEvents : public EventPump {
public:
    void ProcessEvents() override {}
};

// The translator can only run out of room in its 16-bit line counter: a block writes at
// most one record, so the record counter never passes the line counter.
constexpr int MostLines = 32767;
// Program units; a hair above, so that ends rounded to 0.001 by their writer stay silent.
constexpr double OffCircle = 0.001 + 1e-9;

bool IsBlank(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }

std::vector<std::string> ReadLines(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw RunTimeError("Cannot open " + path);
    std::vector<std::string> lines;
    std::string line;
    while (std::getline(file, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

std::string LatheLetters(std::string block)
{
    for (const auto& [from, to] : {std::pair{'X', 'Y'}, {'Z', 'X'}, {'I', 'J'}, {'K', 'I'}})
        if (const std::size_t at = block.find(from); at != std::string::npos)
            block[at] = to;
    return block;
}

// A point of the translation state as the writer gives it: milling X Y; lathe Z and the
// X diameter.
std::string Point(double x, double y, bool mill)
{
    return mill ? "X" + Number(x) + " Y" + Number(y) : "Z" + Number(x) + " X" + Number(2 * y);
}

struct Box {
    bool Any = false;
    double MinX = 0, MaxX = 0, MinY = 0, MaxY = 0;
    void Add(double x, double y)
    {
        MinX = Any ? std::min(MinX, x) : x;
        MaxX = Any ? std::max(MaxX, x) : x;
        MinY = Any ? std::min(MinY, y) : y;
        MaxY = Any ? std::max(MaxY, y) : y;
        Any = true;
    }
};

// An arc record, for the extents check once the whole drawing is known.
struct ArcRecord {
    int Line = 0;
    double CenterX = 0, CenterY = 0, Radius = 0;
};

// The points where a drawn arc crosses the axes through its centre: with its ends, they
// bound what the arc covers on the screen.
void AddSweep(Box& box, bool clockwise, double cx, double cy, double r, double start, double end)
{
    const double from = clockwise ? end : start;
    const double span = std::fmod(((clockwise ? start : end) - from) + 720, 360);
    for (int quarter = 0; quarter < 4; ++quarter) {
        const double angle = 90.0 * quarter;
        if (std::fmod(angle - from + 720, 360) <= span)
            box.Add(cx + r * std::cos(angle * Pi / 180), cy + r * std::sin(angle * Pi / 180));
    }
}

class Replay {
public:
    Replay(bool mill, int absCenter) : translator_(dialogs_, events_, playback_), mill_(mill), absCenter_(absCenter)
    {
        TranslationState& s = translator_.State();
        s.Mill = mill;
        s.AbsCenter = static_cast<std::int16_t>(absCenter);
        // Entities go to the DXF arrays instead of a file; they are dropped block by block.
        s.CollectDxf = true;
    }

    // One line as the driver reads it; false when translation stops after it.
    bool Line(int line, const std::string& raw, int nonEmpty);

    std::vector<Finding> Finish(int limitLine, int limitCount);

private:
    void ReadFailure(int line, const std::string& block, const std::string& effective, char failed);
    void Arc(int line, const std::string& block, const std::string& effective, double startX, double startY,
             double centreX, double centreY);
    void Add(int line, CheckCode code, std::string message) { findings_.push_back({line, code, std::move(message)}); }

    QuietDialogs dialogs_;
    NoEvents events_;
    PlaybackState playback_;
    Translator translator_;
    bool mill_;
    int absCenter_;
    WordHistory history_;
    int toolWords_ = 0;        // T words the interpreter reached
    int plane_ = 17;           // the last G17, G18 or G19
    bool positionOff_ = false; // a coordinate read off its meaning since both X and Y were last set
    Box drawing_;
    std::vector<ArcRecord> arcs_;
    std::vector<Finding> findings_;
};

bool Replay::Line(int line, const std::string& raw, int nonEmpty)
{
    TranslationState& s = translator_.State();
    s.LineCount = static_cast<std::int16_t>(nonEmpty);
    std::string block = raw;
    StripComment(block);
    CheckCut(line, raw, findings_);
    if (IsBlank(block))
        return true;
    if (!mill_ && block.find('Y') != std::string::npos) {
        const std::size_t y = block.find('Y');
        Add(line, CheckCode::LatheY,
            "\"" + WordAt(block, y) + "\" in a lathe program: translation stops here with the \"appears to be a "
            "Milling file\" box, and nothing after this line is drawn");
        return false;
    }
    const std::string effective = mill_ ? block : LatheLetters(block);
    plane_ = SelectedPlane(block, plane_);

    // Run the block through the interpreter, as the driver does.
    const double startX = s.LastX, startY = s.LastY, startZ = s.LastZ;
    const double centreX = s.ArcCenterX, centreY = s.ArcCenterY;
    const std::int16_t toolChanges = s.ToolChangeCount;
    s.CurrentBlock = block;
    bool threw = false;
    try {
        translator_.InterpretBlock(block);
    } catch (const RunTimeError&) {
        threw = true;
    }
    translator_.Dxf().Clear();

    BlockFacts facts;
    facts.Line = line;
    facts.Raw = raw;
    facts.Block = block;
    facts.Effective = effective;
    facts.Mill = mill_;
    facts.AbsCenter = absCenter_ == 1;
    facts.ArcMode = s.MoveMode == 2 || s.MoveMode == 3;
    const bool movesXY = s.CurX != startX || s.CurY != startY;
    facts.Moves = movesXY; // the plot is drawn in X and Y
    facts.Target = Point(s.CurX, s.CurY, mill_);
    facts.ModeName = "G" + std::to_string(s.MoveMode);
    facts.Failed = threw ? FirstFailure(effective, toolChanges) : 0;
    CheckWords(facts, history_, findings_);

    if (threw) {
        if (facts.Failed)
            ReadFailure(line, block, effective, facts.Failed);
        return true; // the driver goes on with the next line, M30 or not
    }
    if (BlockScanner(effective).Contains('T'))
        ++toolWords_;

    // What the block drew, for the extents; the arc's own checks.
    const int mode = s.MoveMode;
    const bool written = mode == 0 || (mode == 1 && (movesXY || s.CurZ != startZ)) || (facts.ArcMode && s.HaveArcData);
    if (written)
        drawing_.Add(s.CurX, s.CurY);
    // An arc whose numbers are already known to be off, or that lies in another plane,
    // would only repeat what a finding of its own line, or an earlier one, says.
    const bool wordsOff = std::any_of(findings_.begin(), findings_.end(), [&](const Finding& f) {
        return f.Line == line && (f.Code == CheckCode::ImpliedDecimal || f.Code == CheckCode::Expression);
    });
    const bool explained = wordsOff || positionOff_ || (mill_ && plane_ != 17);
    if (wordsOff)
        positionOff_ = true;
    else if (s.Absolute && effective.find('X') != std::string::npos && effective.find('Y') != std::string::npos)
        positionOff_ = false;
    if (facts.ArcMode && s.HaveArcData) {
        if (!explained)
            Arc(line, block, effective, startX, startY, centreX, centreY);
        if (s.ArcStartAngle == s.ArcEndAngle) {
            drawing_.Add(s.ArcCenterX - s.ArcRadius, s.ArcCenterY - s.ArcRadius);
            drawing_.Add(s.ArcCenterX + s.ArcRadius, s.ArcCenterY + s.ArcRadius);
        } else {
            AddSweep(drawing_, mode == 2, s.ArcCenterX, s.ArcCenterY, s.ArcRadius, s.ArcStartAngle, s.ArcEndAngle);
            arcs_.push_back({line, s.ArcCenterX, s.ArcCenterY, s.ArcRadius});
        }
    } else if (facts.ArcMode && movesXY) {
        Add(line, CheckCode::ArcWithoutCentre,
            "\"" + facts.ModeName + "\" without I, J, K or R: nothing is drawn from " + Point(startX, startY, mill_) +
                " to " + facts.Target + ", but the position moves there (a gap in the picture)");
    }
    return block.find("M30") == std::string::npos;
}

// The block raised the error box: the first word the interpreter could not read, or the
// tool change past the table's ten entries. Expressions are the word check's.
void Replay::ReadFailure(int line, const std::string& block, const std::string& effective, char failed)
{
    const std::size_t at = effective.find(failed);
    if (failed == 'T') {
        ++toolWords_;
        Add(line, CheckCode::ToolChangeLimit,
            "\"" + WordAt(block, at) + "\" is tool change " + std::to_string(toolWords_) +
                ": there is room for 10, so the error box comes and the rest of the block is skipped");
        return;
    }
    if (failed == 'K' && effective.find('T') != std::string::npos)
        ++toolWords_; // read before K
    if (InExpression(block, at))
        return;
    Add(line, CheckCode::MalformedNumber,
        "\"" + WordAt(block, at) + "\" has no decimal point and is not one number: the line raises the error box and "
                                    "the rest of its block is skipped");
}

void Replay::Arc(int line, const std::string& block, const std::string& effective, double startX, double startY,
                 double centreX, double centreY)
{
    const TranslationState& s = translator_.State();
    const BlockScanner scanner(effective);
    const double chord = Distance(startX, startY, s.CurX, s.CurY);
    const auto words = [&](std::string_view letters) {
        std::string text;
        for (const char letter : letters)
            if (const std::size_t at = effective.find(letter); at != std::string::npos)
                text += (text.empty() ? "" : " ") + WordAt(block, at);
        return "\"" + text + "\"";
    };

    if (scanner.Contains('R')) {
        const double r = std::fabs(scanner.ScanValue('R'));
        if (r * r - (chord / 2) * (chord / 2) < 0)
            Add(line, CheckCode::ArcRadiusShort,
                words("R") + " is shorter than half the chord (" + Number(chord / 2) +
                    "): the arc keeps the previous centre " + Point(centreX, centreY, mill_) + " and is drawn around it");
        return;
    }
    if (startX == s.CurX && startY == s.CurY)
        return; // a full circle
    double i = scanner.Contains('I') ? scanner.ScanValue('I') : 0;
    double j = scanner.Contains('J') ? scanner.ScanValue('J') : 0;
    if (absCenter_ == 1) {
        i -= startX;
        j -= startY;
    }
    const double r = std::sqrt(i * i + j * j);
    const double cx = startX + i, cy = startY + j;
    const double off = std::fabs(Distance(s.CurX, s.CurY, cx, cy) - r);
    const std::string end = Point(s.CurX, s.CurY, mill_);
    if (i != 0 && j != 0) {
        if (r * r - (chord / 2) * (chord / 2) < 0)
            Add(line, CheckCode::ArcRadiusShort,
                "the radius of " + words("IJ") + ", " + Number(r) + ", is shorter than half the chord (" +
                    Number(chord / 2) + "): the centre stays at " + Point(cx, cy, mill_) +
                    " and the arc does not reach its end " + end);
        else if (off > OffCircle)
            Add(line, CheckCode::ArcRefit,
                "the end " + end + " lies " + Number(off) + " off the circle of " + words("IJ") + ": the centre moves from " +
                    Point(cx, cy, mill_) + " to " + Point(s.ArcCenterX, s.ArcCenterY, mill_) + " on the chord's bisector");
    } else if (off > OffCircle) {
        Add(line, CheckCode::ArcEndOffCircle,
            "the end " + end + " lies " + Number(off) + " off the circle of " + words("IJ") + " (centre " +
                Point(cx, cy, mill_) + ", radius " + Number(r) +
                "): the arc is drawn on that circle and does not meet the next element");
    }
}

std::vector<Finding> Replay::Finish(int limitLine, int limitCount)
{
    if (limitLine)
        Add(limitLine, CheckCode::LineLimit,
            "the program has more than 32,767 non-empty lines: this line and the " + std::to_string(limitCount - 1) +
                " non-empty lines after it each raise the error box and are not translated");

    // An arc widens the opened view by its whole circle: the arcs whose circles set a side
    // of the view, far beyond the rest of the drawing.
    const double side = std::max(drawing_.MaxX - drawing_.MinX, drawing_.MaxY - drawing_.MinY);
    std::vector<std::pair<std::size_t, double>> widest; // arc, how far beyond
    for (int edge = 0; edge < 4; ++edge) {
        std::size_t best = arcs_.size();
        double reach = side / 4;
        for (std::size_t i = 0; i < arcs_.size(); ++i) {
            const ArcRecord& a = arcs_[i];
            const double beyond = edge == 0   ? drawing_.MinX - (a.CenterX - a.Radius)
                                  : edge == 1 ? a.CenterX + a.Radius - drawing_.MaxX
                                  : edge == 2 ? drawing_.MinY - (a.CenterY - a.Radius)
                                              : a.CenterY + a.Radius - drawing_.MaxY;
            if (beyond > reach) {
                best = i;
                reach = beyond;
            }
        }
        if (best == arcs_.size())
            continue;
        const auto known = std::find_if(widest.begin(), widest.end(), [&](const auto& w) { return w.first == best; });
        if (known == widest.end())
            widest.push_back({best, reach});
        else
            known->second = std::max(known->second, reach);
    }
    for (const auto& [index, beyond] : widest) {
        const ArcRecord& a = arcs_[index];
        Add(a.Line, CheckCode::ExtentsCircle,
            "the whole circle of this arc (radius " + Number(a.Radius) + ", centre " +
                Point(a.CenterX, a.CenterY, mill_) + ") reaches " + Number(beyond) +
                " beyond the rest of the drawing, which is " + Number(side) +
                " across: the opened view is zoomed out to fit that circle");
    }
    std::stable_sort(findings_.begin(), findings_.end(), [](const Finding& a, const Finding& b) {
        return a.Line != b.Line ? a.Line < b.Line : a.Code < b.Code;
    });
    return findings_;
}

} // namespace

std::vector<Finding> CheckProgram(const std::string& normalisedPath, bool mill, int absCenter)
{
    const std::vector<std::string> lines = ReadLines(normalisedPath);
    Replay replay(mill, absCenter);
    int nonEmpty = 0, limitLine = 0, limitCount = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const int line = static_cast<int>(i) + 1;
        if (IsBlank(lines[i]))
            continue;
        // Past the counter's range the driver fails before it looks at the line.
        if (++nonEmpty > MostLines) {
            limitLine = limitLine ? limitLine : line;
            ++limitCount;
            continue;
        }
        if (!replay.Line(line, lines[i], nonEmpty))
            break;
    }
    return replay.Finish(limitLine, limitCount);
}

} // namespace backplot
