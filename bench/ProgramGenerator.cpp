#include "ProgramGenerator.h"

#include <cmath>
#include <fstream>
#include <numbers>
#include <stdexcept>

namespace backplot::bench {

namespace {

// The sheet the features start on, micrometres.
constexpr std::int64_t Width = 400'000;
constexpr std::int64_t Height = 250'000;

// Integer points of the circle of radius 5, counter-clockwise; point i + 6 is opposite point i.
constexpr int Points[12][2] = {{5, 0},  {4, 3},   {3, 4},   {0, 5},  {-3, 4}, {-4, 3},
                               {-5, 0}, {-4, -3}, {-3, -4}, {0, -5}, {3, -4}, {4, -3}};
// Micrometres per unit of Points: radii from 1.25 mm to 20 mm.
constexpr std::int64_t Scales[] = {250, 1000, 2000, 4000};
// The cuts of a feature: Straight, Plunge, or an arc form (see Arc), drawn at random.
constexpr char Cuts[] = "SSSSSSSSCCCCCRRRRHFP";

bool Inside(std::int64_t x, std::int64_t y) { return x >= 0 && x <= Width && y >= 0 && y <= Height; }

double Degrees(int point) { return std::atan2(Points[point][1], Points[point][0]) * 180 / std::numbers::pi; }

} // namespace

ProgramGenerator::ProgramGenerator(int lineCount, std::uint32_t seed) : random_(seed)
{
    if (lineCount < 16 || lineCount > MaxLines)
        throw std::invalid_argument("line count out of range");
    text_.reserve(static_cast<std::size_t>(lineCount) * 28);
    Comment("(GENERATED MILLING PROGRAM FOR TIMING THE TRANSLATOR)");
    Block(-1, "G21 G17 G90");

    // A feature with its tool change takes at most 24 lines; straight cuts fill the rest.
    const int budget = lineCount - 2;
    while (summary_.Lines + 24 <= budget) {
        compact_ = false;
        if (summary_.Lines >= 4000 * summary_.ToolChanges && summary_.ToolChanges < 9) {
            const std::string tool = std::to_string(++summary_.ToolChanges);
            z_ = 10'000;
            Block(0, "Z10.");
            Comment(std::string("(TOOL ").append(tool).append(")"));
            Block(-1, std::string("T").append(tool).append(" M6"));
            Block(-1, std::string("S").append(tool).append("000 M3"));
        }
        if (Pick(8) == 0) // a block-delete line counts as a line but writes nothing
            Comment(std::string("/N").append(std::to_string(sequence_ += 10)).append(" G0 X0. Y0. (OPTIONAL STOP)"));
        else
            Comment(std::string("(FEATURE ").append(std::to_string(summary_.Lines)).append(")"));
        z_ = 2'000;
        Block(0, "Z2.");
        x_ = 20'000 + 500 * Pick(720);
        y_ = 20'000 + 500 * Pick(420);
        compact_ = Pick(4) == 0;
        std::string words = Word('X', x_);
        Block(0, words.append(Word('Y', y_)));
        z_ = -500 * (1 + Pick(6));
        Block(1, Word('Z', z_));
        for (int cuts = 6 + Pick(11); cuts > 0; --cuts) {
            compact_ = Pick(6) == 0;
            const char cut = Cuts[Pick(20)];
            if (cut == 'S')
                Straight();
            else if (cut == 'P')
                Block(1, Word('Z', z_ -= 250));
            else
                Arc(cut);
        }
    }
    while (summary_.Lines < budget)
        Straight();
    compact_ = false;
    z_ = 10'000;
    Block(0, "Z10.");
    Block(-1, "M30");
}

std::string ProgramGenerator::WriteTo(const std::filesystem::path& folder, const std::string& name) const
{
    const std::filesystem::path path = folder / name;
    if (!(std::ofstream(path, std::ios::binary) << text_))
        throw std::runtime_error("cannot write " + path.string());
    return path.string();
}

void ProgramGenerator::Comment(const std::string& text)
{
    text_.append(text).append("\r\n");
    ++summary_.Lines;
}

void ProgramGenerator::Block(int mode, const std::string& words)
{
    const char* blank = compact_ ? "" : " ";
    std::string line;
    sequence_ += 10;
    if (Pick(4) != 0)
        line.append("N").append(std::to_string(sequence_)).append(blank);
    // The motion word is modal: written when the mode changes, and now and then when it does not.
    if (mode >= 0 && (mode != mode_ || Pick(3) == 0)) {
        line.append(Pick(2) == 0 ? "G0" : "G").append(std::to_string(mode)).append(blank);
        mode_ = mode;
    }
    line.append(words);
    if (mode > 0 && Pick(5) == 0)
        line.append("F").append(std::to_string(100 * (2 + Pick(12)))).append(".");
    while (!line.empty() && line.back() == ' ')
        line.pop_back();
    Comment(line);
    ++summary_.Records;
    summary_.EndX = static_cast<double>(x_) / 1000;
    summary_.EndY = static_cast<double>(y_) / 1000;
    summary_.EndZ = static_cast<double>(z_) / 1000;
}

void ProgramGenerator::Straight()
{
    std::int64_t dx = Pick(4) == 0 ? 0 : 500 * (Pick(81) - 40);
    std::int64_t dy = dx != 0 && Pick(4) == 0 ? 0 : 500 * (Pick(81) - 40);
    if (dx == 0 && dy == 0)
        dx = 500;
    // Bounce off the edges of the sheet.
    x_ += Inside(x_ + dx, 0) ? dx : -dx;
    y_ += Inside(0, y_ + dy) ? dy : -dy;
    std::string words = dx != 0 ? Word('X', x_) : "";
    Block(1, words.append(dy != 0 ? Word('Y', y_) : ""));
}

void ProgramGenerator::Arc(char form)
{
    const std::int64_t scale = Scales[Pick(4)];
    const int mode = 2 + Pick(2);
    // Start and end are points of the circle, never opposite in R form, where half a turn would
    // leave the side of the centre undecided. A few tries keep the end on the sheet.
    int from = 0, to = 0;
    const auto move = [&](int axis) { return scale * (Points[to][axis] - Points[from][axis]); };
    for (int attempt = 0; attempt < 8; ++attempt) {
        from = Pick(12);
        const int step = form == 'F' ? 0 : 1 + Pick(11);
        to = (from + (form == 'R' && step == 6 ? 5 : step)) % 12;
        if (Inside(x_ + move(0), y_ + move(1)))
            break;
    }
    x_ += move(0);
    y_ += move(1);
    std::string words;
    if (form != 'F' || Pick(2) == 0) // a full circle ends where it starts: often left out
        words.append(Word('X', x_)).append(Word('Y', y_));
    if (form == 'H')
        words.append(Word('Z', z_ -= 250));
    if (form == 'R') {
        // Up to half a turn the radius is positive, beyond it negative.
        const double ccw = std::fmod(Degrees(to) - Degrees(from) + 360, 360);
        words.append(Word('R', (mode == 2 ? 360 - ccw : ccw) > 180 ? -5 * scale : 5 * scale));
    } else {
        // A zero offset is left out now and then, as hand-written programs do; always in a full circle.
        if (Points[from][0] != 0 || (form != 'F' && Pick(2) == 0))
            words.append(Word('I', -scale * Points[from][0]));
        if (Points[from][1] != 0 || (form != 'F' && Pick(2) == 0))
            words.append(Word('J', -scale * Points[from][1]));
    }
    Block(mode, words);
}

std::string ProgramGenerator::Word(char letter, std::int64_t micrometres)
{
    const std::int64_t magnitude = micrometres < 0 ? -micrometres : micrometres;
    std::string text = std::string(1, letter).append(micrometres < 0 ? "-" : "");
    if (magnitude >= 1000 || magnitude == 0 || Pick(3) != 0) // "-.25" as well as "-0.25"
        text.append(std::to_string(magnitude / 1000));
    text += '.';
    if (magnitude % 1000 != 0) {
        text.append(std::to_string(1000 + magnitude % 1000).substr(1));
        while (text.back() == '0')
            text.pop_back();
    }
    return compact_ ? text : text + ' ';
}

} // namespace backplot::bench
