#include "GCodeLexer.h"

#include "FixedPitchFont.h"

#include <Qsci/qsciscintilla.h>

namespace backplot {

namespace {

constexpr std::string_view CommentStarts = "(;/',";
constexpr std::string_view NumberChars = "0123456789+-. ";

GCodeStyle WordStyle(char letter)
{
    switch (letter) {
    case 'G':
    case 'M':
        return GCodeStyle::Motion;
    case 'X':
    case 'Y':
    case 'Z':
    case 'I':
    case 'J':
    case 'K':
    case 'R':
        return GCodeStyle::Coordinate;
    case 'F':
    case 'S':
    case 'T':
        return GCodeStyle::Feed;
    case 'N':
        return GCodeStyle::Sequence;
    default:
        return GCodeStyle::Default;
    }
}

} // namespace

GCodeLexer::GCodeLexer(QObject* parent) : QsciLexerCustom(parent) {}

QString GCodeLexer::description(int style) const
{
    switch (static_cast<GCodeStyle>(style)) {
    case GCodeStyle::Default:
        return QStringLiteral("Default");
    case GCodeStyle::Motion:
        return QStringLiteral("G and M words");
    case GCodeStyle::Coordinate:
        return QStringLiteral("Coordinates");
    case GCodeStyle::Feed:
        return QStringLiteral("Feed, speed and tool");
    case GCodeStyle::Sequence:
        return QStringLiteral("Sequence numbers");
    case GCodeStyle::Comment:
        return QStringLiteral("Comments");
    }
    return {}; // QScintilla asks for styles until it gets an empty description
}

QColor GCodeLexer::defaultColor(int style) const
{
    switch (static_cast<GCodeStyle>(style)) {
    case GCodeStyle::Motion:
        return QColor(0, 0, 192);
    case GCodeStyle::Coordinate:
        return QColor(160, 0, 0);
    case GCodeStyle::Feed:
        return QColor(0, 112, 112);
    case GCodeStyle::Sequence:
        return QColor(128, 128, 128);
    case GCodeStyle::Comment:
        return QColor(0, 128, 0);
    case GCodeStyle::Default:
        break;
    }
    return QColor(0, 0, 0);
}

QFont GCodeLexer::defaultFont(int style) const
{
    QFont font = FixedPitchFont();
    if (static_cast<GCodeStyle>(style) == GCodeStyle::Motion)
        font.setBold(true);
    if (static_cast<GCodeStyle>(style) == GCodeStyle::Comment)
        font.setItalic(true);
    return font;
}

QColor GCodeLexer::defaultPaper(int) const { return QColor(255, 255, 255); }

std::vector<GCodeStyle> GCodeLexer::StyleLine(std::string_view line)
{
    std::vector<GCodeStyle> styles(line.size(), GCodeStyle::Default);
    std::size_t end = line.find_first_of("\r\n");
    if (end == std::string_view::npos)
        end = line.size();
    const std::size_t comment = std::min(line.find_first_of(CommentStarts), end);
    for (std::size_t i = comment; i < end; ++i)
        styles[i] = GCodeStyle::Comment;

    for (std::size_t i = 0; i < comment;) {
        const char c = line[i];
        if (c < 'A' || c > 'Z') {
            ++i;
            continue;
        }
        std::size_t last = i; // the word's last character, blanks after the number left out
        std::size_t j = i + 1;
        for (; j < comment && NumberChars.find(line[j]) != std::string_view::npos; ++j)
            if (line[j] != ' ')
                last = j;
        const GCodeStyle style = WordStyle(c);
        for (std::size_t k = i; k <= last; ++k)
            styles[k] = style;
        i = j;
    }
    return styles;
}

void GCodeLexer::styleText(int start, int end)
{
    QsciScintilla* ed = editor();
    if (!ed || end <= start)
        return;
    // Whole lines are styled, so a change in the middle of a line restyles all of it.
    const int firstLine = static_cast<int>(ed->SendScintilla(QsciScintilla::SCI_LINEFROMPOSITION, start));
    const int lastLine = static_cast<int>(ed->SendScintilla(QsciScintilla::SCI_LINEFROMPOSITION, end - 1));
    const int from = static_cast<int>(ed->SendScintilla(QsciScintilla::SCI_POSITIONFROMLINE, firstLine));
    const int to = static_cast<int>(ed->SendScintilla(QsciScintilla::SCI_POSITIONFROMLINE, lastLine + 1));
    const int length = (to < 0 ? static_cast<int>(ed->SendScintilla(QsciScintilla::SCI_GETLENGTH)) : to) - from;
    if (length <= 0)
        return;
    const QByteArray bytes = ed->bytes(from, from + length).left(length);

    startStyling(from);
    std::size_t lineStart = 0;
    const std::string_view all(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    while (lineStart < all.size()) {
        std::size_t lineEnd = all.find('\n', lineStart);
        lineEnd = lineEnd == std::string_view::npos ? all.size() : lineEnd + 1;
        const std::vector<GCodeStyle> styles = StyleLine(all.substr(lineStart, lineEnd - lineStart));
        // One call per run of equal styles.
        for (std::size_t i = 0; i < styles.size();) {
            std::size_t j = i + 1;
            while (j < styles.size() && styles[j] == styles[i])
                ++j;
            setStyling(static_cast<int>(j - i), static_cast<int>(styles[i]));
            i = j;
        }
        lineStart = lineEnd;
    }
}

} // namespace backplot
