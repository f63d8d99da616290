#pragma once

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>

namespace backplot::bench {

// Writes a deterministic milling program for timing translation: a long run of small
// features, each a comment, a rapid approach, a plunge and a mix of straight cuts,
// clockwise and counter-clockwise arcs given by I/J or by R (positive and negative),
// full circles and helical arcs, with N numbers, feed words, compact and spaced word
// styles, block-delete lines and a tool change every few thousand lines; "M30" is the
// last block and appears nowhere else.
//
// Every coordinate has a decimal point and lies on a 0.001 mm grid; every arc's start,
// end and centre lie on one circle exactly (the centre offsets are Pythagorean triples),
// so a correct translator meets no error at all. Each block that is not a comment
// writes exactly one record, which the summary counts.
class ProgramGenerator {
public:
    // The translator counts lines and records in 16 bits.
    static constexpr int MaxLines = 32767;
    static constexpr int ToolChangeInterval = 4000; // lines between tool changes

    // What a correct translation of the program yields, counted while writing it.
    struct Summary {
        int Lines = 0;        // non-empty lines (the program has no empty ones)
        int CommentLines = 0; // lines left empty by comment removal: no block, no record
        int Records = 0;      // records written: one per remaining block
        int Straights = 0;    // of which straight cuts ("LINE")
        int Arcs = 0;         // arcs ("ARC", "ARC1")
        int Circles = 0;      // full circles ("CIRCLE")
        int ToolChanges = 0;  // T words, at most 9
        double EndX = 0, EndY = 0, EndZ = 0; // position after the last block, mm
    };

    // lineCount: the number of lines, from 16 to MaxLines. The same arguments give the
    // same text on every platform.
    explicit ProgramGenerator(int lineCount = MaxLines, std::uint32_t seed = 1987);

    // The program, CR LF line ends.
    const std::string& Text() const { return text_; }
    const Summary& Result() const { return summary_; }

    // Writes the text to folder / name and returns the full path.
    // Raises std::runtime_error when the file cannot be written.
    std::string WriteTo(const std::filesystem::path& folder, const std::string& name) const;

private:
    void Generate(int lineCount);
    bool Room(int lines) const { return summary_.Lines + lines <= lineBudget_; }
    void Emit(std::string_view line, bool comment);

    void ToolChange();
    void Feature();
    void Straight();
    void Plunge(std::int64_t depth);
    void Arc(bool radiusForm, bool helical);
    void FullCircle();

    // Word helpers: the N number (most blocks), the motion word when the mode changes
    // (and now and then when it does not), a coordinate word, a word separator.
    std::string Prefix();
    std::string Motion(int mode);
    std::string Word(char letter, std::int64_t micrometres);
    std::string FeedWord();
    int Pick(int n) { return static_cast<int>(random_() % static_cast<std::uint32_t>(n)); }

    std::mt19937 random_;
    std::string text_;
    Summary summary_;
    int lineBudget_ = 0;       // lines available before the closing two
    int nextToolChange_ = 0;   // line count at which the next tool change is due
    int mode_ = -1;            // motion mode the program has set, -1 before the first
    bool compact_ = false;     // words of the current block written without blanks
    std::int32_t sequence_ = 0;
    std::int64_t x_ = 0, y_ = 0, z_ = 0; // position in micrometres
};

} // namespace backplot::bench
