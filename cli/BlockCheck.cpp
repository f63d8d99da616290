#include "BlockCheck.h"

#include "BlockScanner.h"
#include "RunTimeError.h"
#include "TranslationState.h"

#include <algorithm>
#include <cstdio>
#include <optional>

namespace backplot {

namespace {

constexpr std::string_view NumberChars = "1234567890-+. ";
// The order in which the interpreter reads its letters; a failing read ends the block.
constexpr std::string_view ReadOrder = "XYZIJRSFBTNPLK";

bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool IsLower(char c) { return c >= 'a' && c <= 'z'; }
bool IsLetter(char c) { return IsUpper(c) || IsLower(c); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool HasDigit(std::string_view text) { return std::any_of(text.begin(), text.end(), IsDigit); }

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

// The characters after `position` that the scanner takes as the number of its letter.
std::string_view NumberAfter(std::string_view block, std::size_t position)
{
    std::size_t end = position + 1;
    while (end < block.size() && NumberChars.find(block[end]) != std::string_view::npos)
        ++end;
    return block.substr(position + 1, end - position - 1);
}

// A letter right after "=", "[", "#", "*" or "/" is part of an expression (X=R1, [#2*R3]).
bool AfterOperator(std::string_view text, std::size_t p)
{
    return p > 0 && std::string_view("=[#*/").find(text[p - 1]) != std::string_view::npos;
}

// Upper-case letters that start a word: not inside a name or an expression, followed by
// a number.
std::vector<std::size_t> AddressWords(std::string_view text)
{
    std::vector<std::size_t> words;
    for (std::size_t p = 0; p < text.size(); ++p)
        if (IsUpper(text[p]) && (p == 0 || !IsLetter(text[p - 1])) && !AfterOperator(text, p) &&
            HasDigit(NumberAfter(text, p)))
            words.push_back(p);
    return words;
}

// A word whose loss changes the picture: a coordinate, an arc value, a tool, a G word the
// interpreter acts on (G0-G3, G90, G91) or the end of the program. F, S, N, M and the
// like are read but draw nothing.
bool Matters(std::string_view word)
{
    if (word.empty())
        return false;
    if (std::string_view("XYZIJKRT").find(word[0]) != std::string_view::npos)
        return true;
    std::string_view number = word.substr(1);
    number.remove_prefix(std::min(number.find_first_not_of(" +0"), number.size()));
    if (word[0] == 'M')
        return number == "30" || number.starts_with("30.");
    if (word[0] != 'G')
        return false;
    const std::string_view whole = number.substr(0, number.find('.'));
    return whole.empty() || whole == "1" || whole == "2" || whole == "3" || whole == "90" || whole == "91";
}

// `text` without its parenthesised parts; an unclosed "(" runs to the end.
std::string WithoutComments(std::string_view text)
{
    std::string kept;
    bool inside = false;
    for (const char c : text) {
        if (c == '(')
            inside = true;
        else if (c == ')' && inside)
            inside = false;
        else if (!inside)
            kept.push_back(c);
    }
    return kept;
}

std::string JoinQuoted(std::string_view text, const std::vector<std::size_t>& words, std::size_t most = 4)
{
    std::string joined;
    for (std::size_t i = 0; i < words.size() && i < most; ++i)
        joined += (i ? ", " : "") + Quoted(WordAt(text, words[i]));
    if (words.size() > most)
        joined += ", ...";
    return joined;
}

// A G word as the scanner's spaced copy sees it: "G" and digits, ended by anything else;
// a point and digits after them are a decimal part, which the scanner does not read.
struct GWord {
    std::size_t Position = 0;
    int Whole = 0;
    bool Decimal = false;
    std::string Text; // as written, decimal part included
};

std::vector<GWord> GWords(std::string_view block, std::size_t limit)
{
    std::vector<GWord> words;
    for (std::size_t p = 0; p < block.size() && p < limit; ++p) {
        if (block[p] != 'G')
            continue;
        std::size_t end = p + 1;
        while (end < block.size() && IsDigit(block[end]))
            ++end;
        if (end == p + 1 || end - p > 5)
            continue;
        GWord word;
        word.Position = p;
        word.Whole = std::stoi(std::string(block.substr(p + 1, end - p - 1)));
        if (end + 1 < block.size() && block[end] == '.' && IsDigit(block[end + 1])) {
            word.Decimal = true;
            for (++end; end < block.size() && IsDigit(block[end]);)
                ++end;
        }
        word.Text = block.substr(p, end - p);
        words.push_back(word);
    }
    return words;
}

// Canned cycles: drilling on a mill; on a lathe also the turning cycles G70-G79. On a mill
// G70 and G71 are the inch and millimetre words of some controls.
bool IsCycle(int g, bool mill)
{
    return (g >= 81 && g <= 89) || g == 73 || g == 74 || g == 76 || (!mill && g >= 70 && g <= 79);
}

// The blank-delimited token of `block` around `p`.
std::string_view TokenAt(std::string_view block, std::size_t p)
{
    std::size_t start = p;
    while (start > 0 && block[start - 1] != ' ')
        --start;
    std::size_t end = p;
    while (end < block.size() && block[end] != ' ')
        ++end;
    return block.substr(start, end - start);
}

// The value the scanner reads for `letter` of the effective block; nothing when reading
// it raises the error box.
std::optional<double> Reading(std::string_view effective, char letter)
{
    const BlockScanner scanner(effective);
    try {
        return letter == 'T' ? scanner.ScanLong('T') : scanner.ScanValue(letter);
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

void Add(std::vector<Finding>& out, int line, CheckCode code, std::string message)
{
    if (!message.empty())
        out.push_back({line, code, std::move(message)});
}

// implied-decimal and expression: the number words that set the target, the arc or the tool.
void CheckNumbers(const BlockFacts& f, std::size_t limit, std::vector<Finding>& out)
{
    std::string implied, hint, expression;
    // Letters after the one that raised the error box are not read.
    const auto reached = [&](char letter) { return !f.Failed || ReadOrder.find(letter) <= ReadOrder.find(f.Failed); };
    bool failureTold = false;
    for (const char letter : std::string_view("XYZIJKRT")) {
        const bool arcWord = std::string_view("IJKR").find(letter) != std::string_view::npos;
        const std::size_t p = f.Effective.find(letter);
        if (p == std::string_view::npos || p >= limit || (arcWord && !f.ArcMode) || !reached(letter))
            continue;
        const std::optional<double> value = Reading(f.Effective, letter);
        if (InExpression(f.Block, p)) {
            failureTold = failureTold || letter == f.Failed;
            std::string what;
            if (letter == 'T' && f.Failed == 'T')
                continue; // the tool change check's
            if (letter == 'T')
                what = "its T gives a tool change to T" + Number(value.value_or(0), 0);
            else if (!value)
                what = std::string(1, WriterLetter(letter, f.Mill)) + " raises the error box";
            else
                what = std::string(1, WriterLetter(letter, f.Mill)) + " is read as " + Number(*value, 8);
            expression += (expression.empty() ? "" : "; ") + Quoted(TokenAt(f.Block, p)) + ": " + what;
            continue;
        }
        const std::string_view number = NumberAfter(f.Effective, p);
        if (letter == 'T' || !value || *value == 0 || number.find('.') != std::string_view::npos)
            continue;
        const std::string word = WordAt(f.Block, p);
        if (implied.empty()) {
            implied = Quoted(word) + " is read as " + Number(*value, 8);
            hint = Quoted(word + ".") + " is " + Number(*value * 10000, 4);
        } else {
            implied += ", " + Quoted(word) + " as " + Number(*value, 8);
        }
    }
    if (f.Failed && f.Failed != 'T' && !failureTold) {
        const std::size_t p = f.Effective.find(f.Failed);
        if (p < limit && InExpression(f.Block, p))
            expression += (expression.empty() ? "" : "; ") + Quoted(TokenAt(f.Block, p)) + ": its " +
                          WriterLetter(f.Failed, f.Mill) + " raises the error box";
    }
    if (!implied.empty())
        Add(out, f.Line, CheckCode::ImpliedDecimal,
            implied + ": a number without a point counts in ten-thousandths (" + hint + ")");
    if (!expression.empty())
        Add(out, f.Line, CheckCode::Expression,
            expression + " (brackets, # parameters, assignments and names are not evaluated)");
}

void CheckLowerCase(const BlockFacts& f, std::size_t limit, std::vector<Finding>& out)
{
    std::vector<std::size_t> words;
    for (std::size_t p = 0; p < f.Block.size() && p < limit; ++p) {
        if (!IsLower(f.Block[p]) || (p > 0 && IsLetter(f.Block[p - 1])))
            continue;
        const std::string_view number = NumberAfter(f.Block, p);
        const std::string_view start = number.substr(std::min(number.find_first_not_of(' '), number.size()));
        if (start.empty() || !(IsDigit(start[0]) || (start.size() > 1 && IsDigit(start[1]))))
            continue;
        std::string upper = WordAt(f.Block, p);
        upper[0] = static_cast<char>(upper[0] - 'a' + 'A');
        if (Matters(upper))
            words.push_back(p);
    }
    if (words.empty())
        return;
    std::string upper = WordAt(f.Block, words[0]);
    upper[0] = static_cast<char>(upper[0] - 'a' + 'A');
    Add(out, f.Line, CheckCode::LowerCase,
        JoinQuoted(f.Block, words) + (words.size() == 1 ? " is" : " are") + " lower case and not read (write " +
            Quoted(upper) + ")");
}

void CheckRepeated(const BlockFacts& f, std::size_t limit, std::vector<Finding>& out)
{
    std::vector<std::size_t> words = AddressWords(f.Block.substr(0, std::min(limit, f.Block.size())));
    std::string message;
    for (const char letter : std::string_view("XYZIJKRT")) {
        if (std::string_view("IJKR").find(letter) != std::string_view::npos && !f.ArcMode)
            continue;
        std::vector<std::size_t> same;
        for (const std::size_t p : words)
            if (f.Block[p] == letter)
                same.push_back(p);
        if (same.size() < 2)
            continue;
        std::string parts;
        bool swapped = false;
        for (const std::size_t p : same) {
            const char effective = f.Effective[p];
            const bool read = f.Effective.find(effective) == p;
            const char role = WriterLetter(effective, f.Mill);
            std::string what = !read ? "is not" : role == letter ? "is read" : std::string("is read as ") + role;
            swapped = swapped || (read && role != letter);
            parts += (parts.empty() ? "" : ", ") + Quoted(WordAt(f.Block, p)) + " " + what;
        }
        message += (message.empty() ? "" : "; ") + Quoted(std::string(1, letter)) + " stands " +
                   std::to_string(same.size()) + " times: " + parts +
                   (swapped ? " (lathe letters are swapped at their first place only)" : "");
    }
    if (!message.empty())
        Add(out, f.Line, CheckCode::RepeatedAddress, message + " (only a letter's first word is read)");
}

void CheckGWords(const BlockFacts& f, std::size_t limit, WordHistory& history, std::vector<Finding>& out)
{
    const std::vector<GWord> gs = GWords(f.Block, limit);
    const std::vector<std::size_t> words = AddressWords(f.Block.substr(0, std::min(limit, f.Block.size())));
    const bool hasXYZ = std::any_of(words.begin(), words.end(), [&](std::size_t p) {
        return std::string_view("XYZ").find(f.Block[p]) != std::string_view::npos;
    });
    const std::string move = "a move to " + f.Target + " in " + f.ModeName;
    std::string plane, ignored, decimal;
    const auto add = [](std::string& to, const std::string& text) { to += (to.empty() ? "" : "; ") + text; };
    for (const GWord& g : gs) {
        const std::string q = Quoted(g.Text);
        const int w = g.Whole;
        if (g.Decimal && (w <= 3 || w == 90 || w == 91)) {
            if (w == 91)
                add(decimal, q + " is read as G91: the coordinates after it are incremental");
            else if (w == 90 && !f.AbsCenter)
                add(decimal, q + " is read as G90: I and J stay distances from the arc start (--abs-center "
                                 "reads them as absolute centres)");
            else if (w <= 3)
                add(decimal, q + " is read as G" + std::to_string(w));
            continue;
        }
        if ((w == 18 && f.Mill) || w == 19)
            add(plane, q + (w == 18 ? " selects the Z-X plane" : " selects the Y-Z plane") +
                           (f.Mill ? ", but arcs are drawn in the X-Y plane from I and J"
                                   : ", but lathe arcs are drawn in the Z-X plane from K and I"));
        const int inches = w == 20 || (f.Mill && w == 70) ? 1 : w == 21 || (f.Mill && w == 71) ? 2 : 0;
        if (inches) {
            if (history.Units && history.Units != inches)
                add(ignored, q + " changes the units after \"" + history.UnitsWord + "\" on line " +
                                 std::to_string(history.UnitsLine) +
                                 ": the plot does not convert, so the parts are drawn at different scales");
            history.Units = inches;
            history.UnitsWord = g.Text;
            history.UnitsLine = f.Line;
        } else if ((w == 28 || w == 30 || w == 53) && f.Moves) {
            add(ignored, q + " moves the machine in its own coordinates; the plot draws " + move);
        } else if (w == 33 && f.Moves) {
            add(ignored, q + " (thread cutting) is drawn as " + move);
        } else if (w == 41 || w == 42) {
            add(ignored, q + " (cutter compensation) is not applied: the plot shows the programmed path, "
                             "not the tool's");
        } else if ((w == 52 || w == 92) && hasXYZ) {
            add(ignored, q + " shifts the coordinates on the machine; the plot " +
                             (f.Moves ? "draws " + move + " and " : std::string()) + "does not shift what follows");
        } else if (w >= 54 && w <= 59) {
            if (history.Offset && history.Offset != w)
                add(ignored, q + " selects another work offset than \"G" + std::to_string(history.Offset) +
                                 "\" on line " + std::to_string(history.OffsetLine) +
                                 ": the plot draws both in one coordinate system");
            history.Offset = w;
            history.OffsetLine = f.Line;
        } else if (w == 68) {
            add(ignored, q + " (rotation) is not applied: what follows is drawn unrotated");
        } else if (IsCycle(w, f.Mill)) {
            add(ignored, q + " (a canned cycle) is not run: " +
                             (f.Moves ? "its words are drawn as " + move + ", no holes or passes" : "nothing of it is drawn"));
        } else if ((w == 4 || w == 10 || w == 65) && f.Moves) {
            add(ignored, q + (w == 4 ? " is a dwell" : " sets data on the machine") + "; the plot draws its words as " +
                             move);
        }
    }
    Add(out, f.Line, CheckCode::Plane, plane);
    Add(out, f.Line, CheckCode::IgnoredGCode, ignored);
    Add(out, f.Line, CheckCode::DecimalGCode, decimal);

    // Two motion words: the interpreter's own order decides. A word after ";" that changes
    // the mode is the semicolon check's.
    const BlockScanner scanner(f.Effective.substr(0, std::min(limit, f.Effective.size())));
    const bool found[4] = {scanner.GWordPos("G00", "G0") != 0, scanner.GWordPos("G01", "G1") != 0,
                           scanner.GWordPos("G02", "G2") != 0, scanner.GWordPos("G03", "G3") != 0};
    if (std::count(std::begin(found), std::end(found), true) >= 2) {
        std::string named;
        for (int m = 0; m < 4; ++m)
            if (found[m])
                named += (named.empty() ? "" : " and ") + Quoted("G" + std::to_string(m));
        const int wins = found[1] ? 1 : found[2] ? 2 : found[3] ? 3 : 0;
        Add(out, f.Line, CheckCode::MotionWords,
            named + " stand in one block: G" + std::to_string(wins) +
                " wins (G1 over G2 over G3, each over G0)");
    }
}

void CheckSemicolon(const BlockFacts& f, std::size_t q, std::vector<Finding>& out)
{
    std::string effects;
    const auto add = [&](const std::string& text) { effects += (effects.empty() ? "" : ", ") + text; };
    for (const GWord& g : GWords(f.Block, std::string_view::npos)) {
        if (g.Position < q || (g.Whole > 3 && g.Whole != 90 && g.Whole != 91))
            continue;
        const std::vector<GWord> before = GWords(f.Block, q);
        if (std::any_of(before.begin(), before.end(), [&](const GWord& b) { return b.Whole == g.Whole; }))
            continue;
        if (g.Whole <= 3 && f.ModeName != "G" + std::to_string(g.Whole))
            continue; // another motion word of the block wins
        static const char* const meaning[] = {"rapid mode", "linear mode", "clockwise arcs", "counter-clockwise arcs"};
        add(Quoted(g.Text) + ": " +
            (g.Whole <= 3 ? meaning[g.Whole] : g.Whole == 90 ? "absolute coordinates" : "incremental coordinates"));
    }
    for (const char letter : std::string_view("XYZIJKRT")) {
        const std::size_t p = f.Effective.find(letter);
        if (p == std::string_view::npos || p < q)
            continue;
        if (std::string_view("IJKR").find(letter) != std::string_view::npos && !f.ArcMode)
            continue;
        const std::optional<double> value = Reading(f.Effective, letter);
        const std::string writer(1, WriterLetter(letter, f.Mill));
        if (letter == 'T')
            add("T: a tool change to T" + Number(value.value_or(0), 0));
        else
            add(writer + (value ? " read as " + Number(*value, 8) : " raising the error box"));
    }
    if (f.Block.find("M30", q) != std::string_view::npos && f.Block.substr(0, q).find("M30") == std::string_view::npos)
        add("\"M30\": the end of the program");
    if (effects.empty())
        return;
    std::string_view text = f.Block.substr(q + 1);
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    std::string shown(text.substr(0, 40));
    if (text.size() > 40)
        shown += "...";
    Add(out, f.Line, CheckCode::SemicolonComment,
        "\";\" does not start a comment here: " + Quoted(shown) + " is read with the block (" + effects + ")");
}

void CheckAxes(const BlockFacts& f, std::size_t limit, std::vector<Finding>& out)
{
    for (const GWord& g : GWords(f.Block, limit))
        if (IsCycle(g.Whole, f.Mill) || g.Whole == 4 || g.Whole == 10 || g.Whole == 65)
            return; // their letters are parameters, not axes
    const std::string_view block = f.Block.substr(0, std::min(limit, f.Block.size()));
    std::vector<std::size_t> axes;
    for (const std::size_t p : AddressWords(block)) {
        // U0 and W0 move no axis, whatever they mean.
        const bool zero = (block[p] == 'U' || block[p] == 'W') &&
                          NumberAfter(block, p).find_first_of("123456789") == std::string_view::npos;
        if (std::string_view("ACUVW").find(block[p]) != std::string_view::npos && !zero)
            axes.push_back(p);
    }
    if (axes.empty())
        return;
    const bool latheUW = !f.Mill && std::all_of(axes.begin(), axes.end(), [&](std::size_t p) {
        return block[p] == 'U' || block[p] == 'W';
    });
    Add(out, f.Line, CheckCode::IgnoredAxis,
        JoinQuoted(block, axes) + (axes.size() == 1 ? " is" : " are") + " not drawn: " +
            (latheUW ? "U and W, a lathe's incremental X and Z, are not read"
                     : "rotary and secondary axes (A, C, U, V, W) are not read"));
}

} // namespace

// A letter whose number is an expression or a name instead: "X[#1*2]", "X#3", "X=FLAN",
// "R1=10", or the letter inside a name such as "GOTO".
bool InExpression(std::string_view block, std::size_t p)
{
    const std::string_view number = NumberAfter(block, p);
    const std::size_t after = p + 1 + number.size();
    const char next = after < block.size() ? block[after] : '\0';
    if (next == '[' || next == '#' || next == '=')
        return true;
    if (!HasDigit(number) && IsLetter(next))
        return true;
    return (p > 0 && IsUpper(block[p - 1])) || AfterOperator(block, p);
}

char FirstFailure(std::string_view effective, std::int16_t toolChanges)
{
    const BlockScanner scanner(effective);
    const auto fails = [&](char letter) {
        if (!scanner.Contains(letter))
            return false;
        try {
            scanner.ScanValue(letter);
            return false;
        } catch (const RunTimeError&) {
            return true;
        }
    };
    for (const char letter : std::string_view("XYZIJRFB"))
        if (fails(letter))
            return letter;
    if (scanner.Contains('T') && toolChanges >= ToolColorTable::Size)
        return 'T';
    return fails('K') ? 'K' : 0;
}

int SelectedPlane(std::string_view block, int current)
{
    for (const GWord& g : GWords(block, block.find(';')))
        if (!g.Decimal && g.Whole >= 17 && g.Whole <= 19)
            current = g.Whole;
    return current;
}

char WriterLetter(char effective, bool mill)
{
    if (mill)
        return effective;
    switch (effective) {
    case 'Y':
        return 'X';
    case 'X':
        return 'Z';
    case 'J':
        return 'I';
    case 'I':
        return 'K';
    default:
        return effective;
    }
}

std::string WordAt(std::string_view block, std::size_t position)
{
    std::string_view number = NumberAfter(block, position);
    while (!number.empty() && number.back() == ' ')
        number.remove_suffix(1);
    return std::string(1, block[position]) + std::string(number);
}

std::string Number(double value, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    std::string s = text;
    if (s.find('.') != std::string::npos) {
        while (s.back() == '0')
            s.pop_back();
        if (s.back() == '.')
            s.pop_back();
    }
    return s == "-0" ? "0" : s;
}

void CheckCut(int line, std::string_view raw, std::vector<Finding>& out)
{
    const std::size_t cut = raw.find_first_of("(/',");
    if (cut == std::string_view::npos || raw.find(';') < cut)
        return; // nothing cut, or the writer's own comment began before the cut
    const std::string lost = WithoutComments(raw.substr(raw[cut] == '(' ? cut : cut + 1));
    std::vector<std::size_t> words = AddressWords(lost);
    std::erase_if(words, [&](std::size_t p) { return !Matters(WordAt(lost, p)); });
    if (words.empty())
        return;
    const bool plural = words.size() > 1;
    if (raw[cut] == '/' && raw.find_first_not_of(' ') == cut) {
        std::string_view block = lost;
        block.remove_prefix(std::min(block.find_first_not_of(' '), block.size()));
        while (!block.empty() && block.back() == ' ')
            block.remove_suffix(1);
        Add(out, line, CheckCode::BlockDelete,
            "the line starts with \"/\", so its block " + Quoted(block) + " is skipped whole (block delete is always on)");
    } else {
        Add(out, line, CheckCode::CommentCut,
            "the block ends at " + Quoted(raw.substr(cut, 1)) + ": " + JoinQuoted(lost, words) + " after it" +
                (plural ? " are" : " is") + " not read");
    }
}

void CheckWords(const BlockFacts& f, WordHistory& history, std::vector<Finding>& out)
{
    // Words after ";" are the semicolon check's; the others leave them alone.
    const std::size_t semicolon = f.Block.find(';');
    CheckNumbers(f, semicolon, out);
    CheckLowerCase(f, semicolon, out);
    CheckRepeated(f, semicolon, out);
    CheckGWords(f, semicolon, history, out);
    if (semicolon != std::string_view::npos)
        CheckSemicolon(f, semicolon, out);
    CheckAxes(f, semicolon, out);
}

} // namespace backplot
