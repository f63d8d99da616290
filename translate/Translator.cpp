#include "Translator.h"

#include "ArcGeometry.h"
#include "NumberText.h"
#include "RunTimeError.h"
#include "TranslationTexts.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>

namespace backplot {

namespace {

constexpr const char* CrLf = "\r\n";
constexpr const char* LayerName = "BLACK_LAYER";

// Fixed colours of the first seven tool changes: palette index and 0xBBGGRR value.
struct FixedToolColor {
    std::int32_t Index;
    std::uint32_t Color;
};
constexpr FixedToolColor ToolChangeColors[] = {
    {0, 0x000000}, {9, 0xFF0000}, {10, 0x00FF00}, {11, 0xFFFF00},
    {12, 0x0000FF}, {13, 0xFF00FF}, {14, 0x00FFFF},
};

void ReplaceFirst(std::string& text, char from, char to)
{
    const std::size_t at = text.find(from);
    if (at != std::string::npos)
        text[at] = to;
}

// Lets pending events run a few milliseconds apart: doing so costs more than a line, and
// the window stays as responsive.
class PumpEvery {
public:
    // The clock is read at every `stride`-th call.
    PumpEvery(EventPump& events, unsigned stride) : events_(events), stride_(stride), last_(Clock::now()) {}
    void operator()()
    {
        if (++calls_ % stride_ != 0)
            return;
        const auto now = Clock::now();
        if (now - last_ >= std::chrono::milliseconds(5)) {
            events_.ProcessEvents();
            last_ = now;
        }
    }

private:
    using Clock = std::chrono::steady_clock;
    EventPump& events_;
    unsigned stride_;
    Clock::time_point last_;
    unsigned calls_ = 0;
};

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

} // namespace

// The lines of the normalised program, CR LF ends removed; a last line without its end
// is read too. Either the whole text in memory, or the file read a piece at a time. A
// line stays valid until the next call.
class LineSource {
public:
    explicit LineSource(std::string_view text) : data_(text.data()), end_(text.size()) {}
    explicit LineSource(std::FILE* file) : file_(file), piece_(1 << 20)
    {
        data_ = piece_.data();
    }
    bool InMemory() const { return file_ == nullptr; }

    bool Next(std::string_view& line)
    {
        for (;;) {
            const char* start = data_ + pos_;
            if (const void* lf = pos_ < end_ ? std::memchr(start, '\n', end_ - pos_) : nullptr) {
                std::size_t n = static_cast<const char*>(lf) - start;
                pos_ += n + 1;
                if (n != 0 && start[n - 1] == '\r')
                    --n;
                line = {start, n};
                return true;
            }
            if (!Refill()) {
                if (pos_ == end_)
                    return false;
                line = {data_ + pos_, end_ - pos_};
                pos_ = end_;
                return true;
            }
        }
    }

private:
    // More of the file behind the unread rest; false at its end.
    bool Refill()
    {
        if (!file_)
            return false;
        const std::size_t rest = end_ - pos_;
        if (rest == piece_.size())
            piece_.resize(2 * piece_.size()); // a line longer than a piece
        std::memmove(piece_.data(), piece_.data() + pos_, rest);
        data_ = piece_.data();
        pos_ = 0;
        end_ = rest;
        const std::size_t n = std::fread(piece_.data() + rest, 1, piece_.size() - rest, file_);
        end_ += n;
        if (n == 0 && std::ferror(file_))
            throw RunTimeError("Input past end of file");
        return n != 0;
    }

    std::FILE* file_ = nullptr;
    std::vector<char> piece_;
    const char* data_ = nullptr;
    std::size_t pos_ = 0, end_ = 0;
};

Translator::Translator(UserDialogs& dialogs, EventPump& events, PlaybackState& playback)
    : dialogs_(dialogs), events_(events), playback_(playback)
{
}

void Translator::SetDataFolder(std::string folder)
{
    if (!folder.empty() && folder.back() != '/')
        folder.push_back('/');
    dataFolder_ = std::move(folder);
}

bool Translator::FileExists(const std::string& path)
{
    File file(std::fopen(path.c_str(), "rb"));
    return file != nullptr;
}

bool Translator::NormaliseFile(const std::string& sourcePath, const std::string& tempName)
{
    const std::string tempPath = dataFolder_ + tempName;
    keptTextPath_.clear();
    keptText_.clear();
    bool ok = false;
    bool whole = true; // keptText_ holds the whole text
    {
        File source(std::fopen(sourcePath.c_str(), "rb"));
        File temp(source ? std::fopen(tempPath.c_str(), "wb") : nullptr);
        if (source && temp) {
            std::setvbuf(temp.get(), nullptr, _IONBF, 0); // each fwrite below is one write
            constexpr std::size_t Piece = 1 << 16;
            std::unique_ptr<char[]> in(new char[Piece]);
            std::unique_ptr<char[]> out(new char[2 * Piece]);
            const auto writeKept = [&] {
                return std::fwrite(keptText_.data(), 1, keptText_.size(), temp.get()) == keptText_.size();
            };
            ok = true;
            PumpEvery pump(events_, 1);
            for (;;) {
                pump();
                const std::size_t n = std::fread(in.get(), 1, Piece, source.get());
                std::size_t m = 0;
                for (std::size_t i = 0; i < n; ++i) {
                    const auto c = static_cast<unsigned char>(in[i]);
                    if (c >= 32 && c <= 126) {
                        out[m++] = static_cast<char>(c);
                    } else if (c == '\n') {
                        out[m++] = '\r';
                        out[m++] = '\n';
                    }
                    // CR, tab and everything else are dropped.
                }
                keptText_.append(out.get(), m);
                // A program too long to keep goes to the file a piece at a time.
                if (keptText_.size() > KeptTextLimit) {
                    whole = false;
                    ok = writeKept();
                    keptText_.clear();
                    if (!ok)
                        break;
                }
                if (n < Piece) {
                    ok = !std::ferror(source.get());
                    break;
                }
            }
            if (ok)
                ok = writeKept(); // for a program that is kept, the one write
            if (std::fflush(temp.get()) != 0)
                ok = false;
        }
    }
    if (ok && whole) {
        keptTextPath_ = tempPath;
    } else {
        std::string().swap(keptText_);
    }
    // A stale copy of the previous program must not be translated in its place; where
    // it cannot be deleted, the translation that follows does not read it.
    staleTemp_ = !ok;
    if (!ok) {
        std::remove(tempPath.c_str());
        dialogs_.Message(texts::ProblemWithInputFile, texts::FileErrorTitle, MsgIcon::Critical, MsgButtons::Ok);
    }
    return ok;
}

void Translator::ResetForNewProgram()
{
    state_.FirstBlockLine = 0;
    dxf_.Clear();
    state_.ToolChanges.clear();
    state_.ToolChangeCount = 0;
}

bool Translator::ReportLineError()
{
    return dialogs_.Message(texts::ErrorAtLine + std::to_string(state_.LineCount) + CrLf + CrLf + state_.LineBuffer,
                            texts::MessageTitle, MsgIcon::Exclamation, MsgButtons::OkCancel) == MsgAnswer::Ok;
}

void Translator::TranslateProgram()
{
    TranslationState& s = state_;
    stoppedEarly_ = true; // until the loop reaches the end or "M30"

    // Reset the driver's counters, the record buffer and the modal state. What the last
    // program left must not reach this one: its tool (records before the first T word
    // would carry it), arc words of a block that failed half-way, a DXF collection an
    // error cut short. Kept: the arc centre, the unused words, the tool colours and, until
    // the open resets them, the tool changes.
    s.CommentCharCount = 4;
    s.LineBuffer.assign(60, ' ');
    s.LineCount = 0;
    s.RecordLength = 128;
    s.CurrentBlock.clear();
    record_.Clear(0);
    s.CurX = s.CurY = s.CurZ = 1e-14;
    s.LastX = s.LastY = s.LastZ = 0;
    s.ArcRadius = s.ArcStartAngle = s.ArcEndAngle = 0;
    s.ValI = s.ValJ = s.ValK = s.ValR = s.ValROther = 0;
    s.HaveArcData = s.Helical = false;
    s.Absolute = true;
    s.MoveMode = 0;
    s.ToolNumber = 0;
    s.AbortTranslation = false;
    s.CollectDxf = false;

    // The numbering restarts only when an old record file was there; it is rewritten in
    // place.
    const std::string recordPath = RecordFilePath();
    if (FileExists(recordPath))
        s.RecordCount = 0;

    // Open both files. Without them nothing can go on, whatever the answer.
    File temp;
    try {
        records_.Open(recordPath);
        if (keptTextPath_ != TempFilePath()) {
            temp.reset(staleTemp_ ? nullptr : std::fopen(TempFilePath().c_str(), "rb"));
            if (!temp)
                throw RunTimeError("Cannot open " + TempFilePath());
        }
    } catch (const RunTimeError&) {
        ReportLineError();
        records_.Finish();
        return;
    }

    {
        struct DriverScope {
            Translator& t;
            ~DriverScope() { t.inDriver_ = false, t.driverBlock_ = {}; }
        } scope{*this};
        inDriver_ = true;
        if (temp) {
            LineSource lines(temp.get());
            TranslateLines(lines);
        } else {
            LineSource lines(keptText_);
            TranslateLines(lines);
        }
    }
    try {
        records_.Finish();
    } catch (const RunTimeError&) {
        stoppedEarly_ = true;
        ReportLineError();
    }
}

void Translator::TranslateLines(LineSource& lines)
{
    TranslationState& s = state_;
    // The line as it stands for the error box: whole until it is counted, then the block.
    std::string_view line;
    std::string_view lastBlock;
    PumpEvery pump(events_, 64);
    for (;;) {
        pump();
        try {
            line = {};
            if (!lines.Next(line)) {
                stoppedEarly_ = false;
                break;
            }
            // One pass finds the comment cut and indexes the block before it. A comment
            // start is no blank, so a line cut short is never blank.
            const std::size_t cut = scanner_.SetLine(line);
            const bool blank = scanner_.IsBlank();
            if (cut < line.size() || !blank)
                CheckedIncrement(s.LineCount);
            line = line.substr(0, cut);
            if (blank)
                continue;
            if (s.FirstBlockLine == 0)
                s.FirstBlockLine = s.LineCount;
            const bool m30 = scanner_.ContainsM30();
            driverBlock_ = line;
            if (lines.InMemory())
                lastBlock = line;
            else
                s.CurrentBlock.assign(line); // the piece it lies in is reused
            InterpretIndexed();
            if (s.AbortTranslation) {
                s.AbortTranslation = false;
                break;
            }
            if (m30) {
                stoppedEarly_ = false;
                playback_.StepMode = false;
                break;
            }
        } catch (const RunTimeError&) {
            s.LineBuffer.assign(line);
            if (!ReportLineError())
                break; // Cancel: draw what was written so far
        }
    }
    // What the state holds after a translation: the last line read and the last block.
    s.LineBuffer.assign(line);
    if (lines.InMemory() && !lastBlock.empty())
        s.CurrentBlock.assign(lastBlock);
}

void Translator::InterpretBlock(std::string_view blockText)
{
    scanner_.SetBlock(blockText);
    InterpretIndexed();
}

void Translator::InterpretIndexed()
{
    TranslationState& s = state_;
    // Per-block flags and a record buffer marked as not yet written.
    s.HaveArcData = false;
    s.Helical = false;
    record_.Clear(EntityRecord::NoMove);

    // Lathe: the plot's horizontal axis carries Z, the vertical X; a Y word means the
    // program was written for a mill.
    if (!s.Mill) {
        if (scanner_.Contains('Y')) {
            dialogs_.SetPointer(MousePointer::Default);
            dialogs_.Message(texts::MillingFileInLathe, texts::MillingFileTitle, MsgIcon::Exclamation, MsgButtons::Ok);
            s.AbortTranslation = true;
            return;
        }
        latheBlock_.assign(scanner_.Block());
        ReplaceFirst(latheBlock_, 'X', 'Y');
        ReplaceFirst(latheBlock_, 'Z', 'X');
        ReplaceFirst(latheBlock_, 'I', 'J');
        ReplaceFirst(latheBlock_, 'K', 'I');
        scanner_.SetBlock(latheBlock_);
    }
    const BlockScanner& b = scanner_;
    using enum BlockScanner::GWord;

    // Distance mode; G91 wins when both stand in one block.
    if (b.HasGWord(G90))
        s.Absolute = true;
    if (b.HasGWord(G91))
        s.Absolute = false;

    // Motion mode: linear over clockwise over counter-clockwise, each over rapid.
    if (b.Contains('G')) {
        if (b.HasGWord(G00, G0))
            s.MoveMode = 0;
        if (b.HasGWord(G01, G1))
            s.MoveMode = 1;
        else if (b.HasGWord(G02, G2))
            s.MoveMode = 2;
        else if (b.HasGWord(G03, G3))
            s.MoveMode = 3;
    }
    const bool arcMode = s.MoveMode == 2 || s.MoveMode == 3;

    // Target point.
    if (b.Contains('X')) {
        s.CurX = b.ScanValue('X');
        if (!s.Absolute)
            s.CurX += s.LastX;
    }
    if (b.Contains('Y')) {
        s.CurY = b.ScanValue('Y');
        if (!s.Absolute)
            s.CurY += s.LastY;
        if (!s.Mill)
            s.CurY /= 2; // lathe X words are diameters
    }
    if (b.Contains('Z')) {
        s.CurZ = b.ScanValue('Z');
        if (!s.Absolute)
            s.CurZ += s.LastZ;
        if (s.Mill && arcMode)
            s.Helical = true;
    }

    // Arc words.
    if (b.Contains('I')) {
        s.HaveArcData = true;
        s.ValI = b.ScanValue('I');
    }
    if (b.Contains('J')) {
        s.HaveArcData = true;
        s.ValJ = b.ScanValue('J');
    }
    if (b.Contains('R')) {
        if (arcMode) {
            s.ValR = b.ScanValue('R');
            s.HaveArcData = true;
        } else {
            s.ValROther = b.ScanValue('R');
        }
    }

    // Words kept but not drawn.
    if (b.Contains('S'))
        s.Spindle = b.ScanLong('S');
    if (b.Contains('F'))
        s.Feed = b.ScanValue('F');
    if (b.Contains('B'))
        s.ValB = ToSingle(b.ScanValue('B'));

    // Tool change.
    if (b.Contains('T'))
        ChangeTool();

    if (b.Contains('N'))
        s.SeqNum = b.ScanLong('N');
    if (b.Contains('P'))
        s.ValP = b.ScanLong('P');
    if (b.Contains('L'))
        s.ValL = b.ScanLong('L');
    if (b.Contains('K')) {
        s.HaveArcData = true;
        s.ValK = b.ScanValue('K');
    }

    // At most one record for the block.
    record_.SetKindName("");
    switch (s.MoveMode) {
    case 0:
        // Every block in rapid mode writes one, even a block that moves nothing.
        WriteEntity(s.MoveMode);
        break;
    case 1:
        if (s.CurX != s.LastX || s.CurY != s.LastY || s.CurZ != s.LastZ) {
            record_.SetKindName("LINE");
            WriteEntity(s.MoveMode);
        }
        break;
    case 2:
    case 3:
        if (s.HaveArcData)
            InterpretArc(s.MoveMode == 2);
        break;
    default:
        break;
    }

    // End of block.
    s.ValL = 0;
    s.LastX = s.CurX;
    s.LastY = s.CurY;
    s.LastZ = s.CurZ;
    s.ValI = s.ValJ = s.ValK = 0;
}

void Translator::ChangeTool()
{
    TranslationState& s = state_;
    s.ToolNumber = RoundToInt16(scanner_.ScanLong('T'));
    const auto index = static_cast<std::size_t>(s.ToolChangeCount);
    if (s.ToolChanges.size() < index + 1)
        s.ToolChanges.resize(index + 1);
    s.ToolChanges[index] = {s.ToolNumber, s.LineCount};
    // The table has room for ten tool changes; the eleventh fails here, and so does
    // every one after it, since the count stays at ten.
    if (s.ToolChangeCount >= ToolColorTable::Size)
        throw RunTimeError("Subscript out of range");
    ToolColor& entry = toolColors_[s.ToolChangeCount];
    entry.ToolNumber = s.ToolNumber;
    if (s.ToolChangeCount < static_cast<std::int16_t>(std::size(ToolChangeColors))) {
        entry.ColorIndex = ToolChangeColors[s.ToolChangeCount].Index;
        entry.Color = ToolChangeColors[s.ToolChangeCount].Color;
    } else {
        entry.ColorIndex = 0;
    }
    CheckedIncrement(s.ToolChangeCount);
}

void Translator::InterpretArc(bool clockwise)
{
    TranslationState& s = state_;
    ArcGeometry(s, scanner_.Contains('R'));
    const double sa = s.ArcStartAngle;
    const double ea = s.ArcEndAngle;
    const double turn = std::fabs(sa - ea) / 360;

    // In a helical move K is the lead per full turn, shared out by the swept angle;
    // elsewhere a K word is added to Z whole.
    double advance = s.ValK;
    if (clockwise) {
        if (sa <= ea || !s.Helical) {
            if (sa < ea && s.Helical)
                advance = (1 - turn) * s.ValK;
        } else {
            advance = turn * s.ValK;
        }
    } else {
        if (sa >= ea || !s.Helical) {
            if (sa > ea && s.Helical)
                advance = (1 - turn) * s.ValK;
        } else {
            advance = turn * s.ValK;
        }
    }
    s.CurZ += advance;

    if (sa == ea)
        record_.SetKindName("CIRCLE");
    else
        record_.SetKindName(clockwise ? "ARC" : "ARC1");
    WriteEntity(s.MoveMode);
}

void Translator::WriteEntity(std::int16_t moveType)
{
    const TranslationState& s = state_;
    if (!s.CollectDxf) {
        record_.StartX = ToSingle(s.LastX);
        record_.StartY = ToSingle(-s.LastY);
        record_.StartZ = ToSingle(s.LastZ);
        record_.EndX = ToSingle(s.CurX);
        record_.EndY = ToSingle(-s.CurY);
        record_.EndZ = ToSingle(s.CurZ);
        record_.CenterX = ToSingle(s.ArcCenterX);
        record_.CenterY = ToSingle(-s.ArcCenterY);
        record_.StartAngle = ToSingle(s.ArcStartAngle);
        record_.EndAngle = ToSingle(s.ArcEndAngle);
        record_.Radius = ToSingle(s.ArcRadius);
        record_.SetBlockText(inDriver_ ? driverBlock_ : std::string_view(s.CurrentBlock));
        record_.ToolNum = s.ToolNumber;
        record_.MoveType = moveType;
        CheckedIncrement(state_.RecordCount);
        records_.Append(state_.RecordCount, record_);
        return;
    }

    const std::string_view kind = record_.Kind();
    if (kind == "LINE") {
        dxf_.Lines.push_back({ToSingle(s.LastX), ToSingle(s.LastY), ToSingle(s.CurX), ToSingle(s.CurY), LayerName});
    } else if (kind == "CIRCLE") {
        dxf_.Circles.push_back({ToSingle(s.ArcCenterX), ToSingle(s.ArcCenterY), ToSingle(s.ArcRadius), LayerName});
    } else if (kind == "ARC") {
        // A clockwise arc is stored as the counter-clockwise arc between the same ends.
        dxf_.Arcs.push_back({ToSingle(s.ArcCenterX), ToSingle(s.ArcCenterY), ToSingle(s.ArcEndAngle),
                             ToSingle(s.ArcStartAngle), ToSingle(s.ArcRadius), LayerName});
    } else if (kind == "ARC1") {
        dxf_.Arcs.push_back({ToSingle(s.ArcCenterX), ToSingle(s.ArcCenterY), ToSingle(s.ArcStartAngle),
                             ToSingle(s.ArcEndAngle), ToSingle(s.ArcRadius), LayerName});
    }
}

} // namespace backplot
