#pragma once

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>

namespace backplot::bench {

// Writes a deterministic milling program for timing translation: small features, each a
// comment (or a block-delete line), a rapid approach, a plunge and a mix of straight cuts,
// clockwise and counter-clockwise arcs given by I/J or by R (positive and negative), full
// circles and helical arcs, with N numbers, feed words, compact and spaced word styles and
// a tool change every few thousand lines. "M30" is the last block and appears nowhere else.
//
// Coordinates lie on a 0.001 mm grid and every arc's start, end and centre lie on one
// circle exactly (3-4-5 triangles), so a correct translator meets no error at all and
// every block that is not a comment writes exactly one record.
class ProgramGenerator {
public:
    static constexpr int MaxLines = 32767; // the translator counts lines in 16 bits

    // What a correct translation of the program yields, counted while writing it.
    struct Summary {
        int Lines = 0;       // non-empty lines (there are no empty ones)
        int Records = 0;     // one per block that is not a comment
        int ToolChanges = 0; // T words, at most 9
        double EndX = 0, EndY = 0, EndZ = 0; // position after the last block, mm
    };

    // lineCount: from 16 to MaxLines. The same arguments give the same text everywhere.
    explicit ProgramGenerator(int lineCount = MaxLines, std::uint32_t seed = 1987);

    // The program, CR LF line ends.
    const std::string& Text() const { return text_; }
    const Summary& Result() const { return summary_; }

    // Writes the text to folder / name and returns the full path; raises std::runtime_error
    // when the file cannot be written.
    std::string WriteTo(const std::filesystem::path& folder, const std::string& name) const;

private:
    void Comment(const std::string& text);
    // A block that writes one record; `words` follow the N number and the motion word.
    void Block(int mode, const std::string& words);
    void Straight();
    // form: 'C' centre by I/J, 'R' radius, 'H' helical with I/J, 'F' full circle.
    void Arc(char form);
    // A coordinate word from micrometres: "X12.5", "Y-.25", "Z0.".
    std::string Word(char letter, std::int64_t micrometres);
    int Pick(int n) { return static_cast<int>(random_() % static_cast<std::uint32_t>(n)); }

    std::mt19937 random_;
    std::string text_;
    Summary summary_;
    int mode_ = 0;         // motion mode in force
    bool compact_ = false; // the current block is written without blanks
    std::int32_t sequence_ = 0;
    std::int64_t x_ = 0, y_ = 0, z_ = 0; // position in micrometres
};

} // namespace backplot::bench
