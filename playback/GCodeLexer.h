#pragma once

#include <Qsci/qscilexercustom.h>

#include <string_view>
#include <vector>

namespace backplot {

// The colouring of the source view. Only upper-case letters start words, as the
// translator reads only those.
enum class GCodeStyle : int {
    Default = 0,    // anything else: other words (P, L, ...), lower case, blanks, line ends
    Motion = 1,     // G and M words with their numbers ("G01", "M30")
    Coordinate = 2, // X Y Z I J K R words ("X-1.5", "R 2.")
    Feed = 3,       // F S T words ("F120", "T2")
    Sequence = 4,   // N numbers ("N10")
    Comment = 5,    // from the first "(", ";", "/", "'" or "," to the end of the line
};

// Colours G-code for the source view, a line at a time.
//
// A word is an upper-case letter followed by its number: the characters
// "0123456789+-. " after it, without the blanks that end them ("X 1.5" is one word,
// "G1 X2" two). A comment runs from the first comment character to the line end; "/"
// is the block-delete mark, whose block the translator skips like a comment.
class GCodeLexer : public QsciLexerCustom {
    Q_OBJECT
public:
    explicit GCodeLexer(QObject* parent = nullptr);

    const char* language() const override { return "G-code"; }
    QString description(int style) const override;
    QColor defaultColor(int style) const override;
    QFont defaultFont(int style) const override;
    QColor defaultPaper(int style) const override;

    void styleText(int start, int end) override;

    // The style of every byte of one line (line-end characters included, as Default).
    static std::vector<GCodeStyle> StyleLine(std::string_view line);
};

} // namespace backplot
