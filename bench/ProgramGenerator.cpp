#include "ProgramGenerator.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace backplot::bench {

namespace {

// The drawing stays inside this window (micrometres), so the picture is a readable
// sheet of small features rather than a random walk.
constexpr std::int64_t WindowWidth = 400'000;
constexpr std::int64_t WindowHeight = 250'000;
constexpr std::int64_t SafeZ = 2'000;
constexpr std::int64_t ClearZ = 10'000;

struct Offset {
    int X;
    int Y;
};

// Integer points on circles of radius 5, 13 and 25: any two points of one circle give
// an arc whose start, end and centre are exact in decimal.
constexpr std::array<Offset, 12> Radius5{{{5, 0}, {4, 3}, {3, 4}, {0, 5}, {-3, 4}, {-4, 3},
                                          {-5, 0}, {-4, -3}, {-3, -4}, {0, -5}, {3, -4}, {4, -3}}};
constexpr std::array<Offset, 12> Radius13{{{13, 0}, {12, 5}, {5, 12}, {0, 13}, {-5, 12}, {-12, 5},
                                           {-13, 0}, {-12, -5}, {-5, -12}, {0, -13}, {5, -12}, {12, -5}}};
constexpr std::array<Offset, 20> Radius25{{{25, 0},   {24, 7},   {20, 15},   {15, 20},  {7, 24},
                                           {0, 25},   {-7, 24},  {-15, 20},  {-20, 15}, {-24, 7},
                                           {-25, 0},  {-24, -7}, {-20, -15}, {-15, -20}, {-7, -24},
                                           {0, -25},  {7, -24},  {15, -20},  {20, -15}, {24, -7}}};
struct Circle {
    int Radius;
    const Offset* Points;
    int Count;
};
constexpr std::array<Circle, 3> Circles{{{5, Radius5.data(), static_cast<int>(Radius5.size())},
                                         {13, Radius13.data(), static_cast<int>(Radius13.size())},
                                         {25, Radius25.data(), static_cast<int>(Radius25.size())}}};
// Micrometres per unit of the tables above: radii from 1.25 mm to 25 mm.
constexpr std::array<std::int64_t, 3> Scales{250, 500, 1000};

constexpr std::array<const char*, 8> FeatureNames{"POCKET", "SLOT", "BOSS", "CONTOUR",
                                                  "ENGRAVING", "CLEANUP", "SPOTFACE", "CHAMFER"};

double Degrees(Offset p) { return std::atan2(p.Y, p.X) * 180.0 / 3.14159265358979323846; }

// Counter-clockwise sweep from a to b in degrees, in [0, 360).
double SweepCcw(Offset a, Offset b)
{
    double s = Degrees(b) - Degrees(a);
    while (s < 0)
        s += 360;
    while (s >= 360)
        s -= 360;
    return s;
}

bool Inside(std::int64_t x, std::int64_t y) { return x >= 0 && x <= WindowWidth && y >= 0 && y <= WindowHeight; }

} // namespace

ProgramGenerator::ProgramGenerator(int lineCount, std::uint32_t seed) : random_(seed)
{
    if (lineCount < 16 || lineCount > MaxLines)
        throw std::invalid_argument("line count out of range");
    Generate(lineCount);
}

std::string ProgramGenerator::WriteTo(const std::filesystem::path& folder, const std::string& name) const
{
    const std::filesystem::path path = folder / name;
    std::ofstream out(path, std::ios::binary);
    out.write(text_.data(), static_cast<std::streamsize>(text_.size()));
    out.close();
    if (!out)
        throw std::runtime_error("cannot write " + path.string());
    return path.string();
}

void ProgramGenerator::Generate(int lineCount)
{
    text_.reserve(static_cast<std::size_t>(lineCount) * 28);
    lineBudget_ = lineCount - 2;

    Emit("(GENERATED MILLING PROGRAM FOR TIMING THE TRANSLATOR)", true);
    Emit("(UNITS MM - " + std::to_string(lineCount) + " LINES)", true);
    Emit("N5 G21 G17 G90", false);
    mode_ = 0;
    while (Room(1)) {
        if (summary_.Lines >= nextToolChange_ && summary_.ToolChanges < 9 && Room(4)) {
            ToolChange();
            nextToolChange_ += ToolChangeInterval;
        }
        Feature();
    }

    lineBudget_ = lineCount;
    z_ = ClearZ;
    Emit("G0 Z10.", false);
    Emit("M30", false);
}

void ProgramGenerator::Emit(std::string_view line, bool comment)
{
    while (!line.empty() && line.back() == ' ')
        line.remove_suffix(1);
    text_.append(line);
    text_.append("\r\n");
    ++summary_.Lines;
    if (comment) {
        ++summary_.CommentLines;
    } else {
        ++summary_.Records;
        summary_.EndX = static_cast<double>(x_) / 1000;
        summary_.EndY = static_cast<double>(y_) / 1000;
        summary_.EndZ = static_cast<double>(z_) / 1000;
    }
}

void ProgramGenerator::ToolChange()
{
    const int tool = summary_.ToolChanges + 1;
    compact_ = false;
    z_ = ClearZ;
    mode_ = 0;
    Emit(Prefix() + "G0 Z10.", false);
    Emit("(TOOL " + std::to_string(tool) + ")", true);
    Emit(Prefix() + "T" + std::to_string(tool) + " M6", false);
    Emit(Prefix() + "S" + std::to_string(4000 + 500 * tool) + " M3", false);
    ++summary_.ToolChanges;
}

void ProgramGenerator::Feature()
{
    const int number = summary_.Lines;
    if (Pick(8) == 0) {
        // A block-delete line: skipped whole, like a comment.
        std::string line = "/";
        line += Prefix();
        line += "G0 X0. Y0. (OPTIONAL STOP POSITION)";
        Emit(line, true);
    } else {
        std::string comment = "(FEATURE ";
        comment += std::to_string(number);
        comment += " - ";
        comment += FeatureNames[static_cast<std::size_t>(Pick(8))];
        comment += ')';
        Emit(comment, true);
    }
    if (!Room(1))
        return;

    // Retract, rapid to a point of the window on a 0.5 mm grid, plunge.
    compact_ = false;
    z_ = SafeZ;
    std::string block = Prefix();
    block += Motion(0);
    Emit(block + "Z2.", false);
    if (!Room(1))
        return;
    x_ = 20'000 + 500 * Pick(720);
    y_ = 20'000 + 500 * Pick(420);
    compact_ = Pick(4) == 0;
    block = Prefix();
    block += Motion(0);
    block += Word('X', x_);
    block += Word('Y', y_);
    Emit(block, false);
    if (!Room(1))
        return;
    Plunge(-500 * (1 + Pick(6)));

    const int moves = 6 + Pick(11);
    for (int i = 0; i < moves && Room(1); ++i) {
        compact_ = Pick(6) == 0;
        const int kind = Pick(20);
        if (kind < 8)
            Straight();
        else if (kind < 13)
            Arc(false, false);
        else if (kind < 17)
            Arc(true, false);
        else if (kind == 17)
            FullCircle();
        else if (kind == 18)
            Arc(false, true);
        else
            Plunge(z_ - 250);
    }
}

void ProgramGenerator::Plunge(std::int64_t depth)
{
    z_ = depth;
    ++summary_.Straights;
    std::string block = Prefix();
    block += Motion(1);
    block += Word('Z', z_);
    block += FeedWord();
    Emit(block, false);
}

void ProgramGenerator::Straight()
{
    std::int64_t dx = 0;
    std::int64_t dy = 0;
    while (dx == 0 && dy == 0) {
        dx = 500 * (Pick(81) - 40);
        dy = 500 * (Pick(81) - 40);
        if (Pick(4) == 0)
            dx = 0; // now and then a move along one axis
        else if (Pick(4) == 0)
            dy = 0;
    }
    if (x_ + dx < 0 || x_ + dx > WindowWidth)
        dx = -dx;
    if (y_ + dy < 0 || y_ + dy > WindowHeight)
        dy = -dy;
    x_ += dx;
    y_ += dy;
    ++summary_.Straights;
    std::string block = Prefix();
    block += Motion(1);
    if (dx != 0)
        block += Word('X', x_);
    if (dy != 0)
        block += Word('Y', y_);
    block += FeedWord();
    Emit(block, false);
}

void ProgramGenerator::Arc(bool radiusForm, bool helical)
{
    const Circle& circle = Circles[static_cast<std::size_t>(Pick(static_cast<int>(Circles.size())))];
    const std::int64_t scale = Scales[static_cast<std::size_t>(Pick(static_cast<int>(Scales.size())))];
    const bool clockwise = Pick(2) == 0;

    // Start and end as points of the circle: distinct, and never opposite in R form,
    // where half a turn leaves the side of the centre undecided.
    Offset from{};
    Offset to{};
    std::int64_t endX = 0;
    std::int64_t endY = 0;
    for (int attempt = 0; attempt < 8; ++attempt) {
        from = circle.Points[Pick(circle.Count)];
        do
            to = circle.Points[Pick(circle.Count)];
        while ((to.X == from.X && to.Y == from.Y) || (radiusForm && to.X == -from.X && to.Y == -from.Y));
        endX = x_ + scale * (to.X - from.X);
        endY = y_ + scale * (to.Y - from.Y);
        if (Inside(endX, endY))
            break;
    }
    const std::int64_t offsetI = -scale * from.X;
    const std::int64_t offsetJ = -scale * from.Y;
    x_ = endX;
    y_ = endY;

    std::string block = Prefix();
    block += Motion(clockwise ? 2 : 3);
    block += Word('X', x_);
    block += Word('Y', y_);
    if (helical) {
        z_ -= 250;
        block += Word('Z', z_);
    }
    if (radiusForm) {
        const double ccw = SweepCcw(from, to);
        const double sweep = clockwise ? 360 - ccw : ccw;
        // Up to half a turn the radius is positive, beyond it negative.
        const std::int64_t r = scale * circle.Radius;
        block += Word('R', sweep > 180 ? -r : r);
    } else {
        // A zero offset is left out now and then, as hand-written programs do.
        if (offsetI != 0 || Pick(2) == 0)
            block += Word('I', offsetI);
        if (offsetJ != 0 || Pick(2) == 0)
            block += Word('J', offsetJ);
    }
    ++summary_.Arcs;
    block += FeedWord();
    Emit(block, false);
}

void ProgramGenerator::FullCircle()
{
    const Circle& circle = Circles[static_cast<std::size_t>(Pick(static_cast<int>(Circles.size())))];
    const std::int64_t scale = Scales[static_cast<std::size_t>(Pick(static_cast<int>(Scales.size())))];
    const Offset from = circle.Points[Pick(circle.Count)];
    const int mode = Pick(2) == 0 ? 2 : 3;
    std::string block = Prefix();
    block += Motion(mode);
    if (Pick(2) == 0) { // the end written out: the start itself
        block += Word('X', x_);
        block += Word('Y', y_);
    }
    if (from.X != 0)
        block += Word('I', -scale * from.X);
    if (from.Y != 0)
        block += Word('J', -scale * from.Y);
    ++summary_.Circles;
    Emit(block, false);
}

std::string ProgramGenerator::Prefix()
{
    sequence_ += 10;
    if (Pick(4) == 0)
        return {};
    std::string word = "N";
    word += std::to_string(sequence_);
    if (!compact_)
        word += ' ';
    return word;
}

std::string ProgramGenerator::Motion(int mode)
{
    if (mode == mode_ && Pick(3) != 0)
        return {};
    mode_ = mode;
    std::string word = (Pick(2) == 0 ? "G0" : "G") + std::to_string(mode);
    return word + (compact_ ? "" : " ");
}

std::string ProgramGenerator::Word(char letter, std::int64_t micrometres)
{
    const std::uint64_t magnitude = static_cast<std::uint64_t>(micrometres < 0 ? -micrometres : micrometres);
    std::string text(1, letter);
    if (micrometres < 0)
        text += '-';
    const std::uint64_t whole = magnitude / 1000;
    const std::uint64_t fraction = magnitude % 1000;
    if (whole != 0 || fraction == 0 || Pick(3) != 0) // "-.25" as well as "-0.25"
        text += std::to_string(whole);
    text += '.';
    if (fraction != 0) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%03u", static_cast<unsigned>(fraction));
        std::string f(digits);
        while (f.back() == '0')
            f.pop_back();
        text += f;
    }
    if (!compact_)
        text += ' ';
    return text;
}

std::string ProgramGenerator::FeedWord()
{
    if (Pick(5) != 0)
        return {};
    std::string word = "F";
    word += std::to_string(100 * (2 + Pick(12)));
    word += '.';
    return word;
}

} // namespace backplot::bench
