#include "GCodeLexer.h"
#include "SourceView.h"
#include "StepListing.h"
#include "TestPaths.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <Qsci/qsciscintilla.h>
#include <gtest/gtest.h>

namespace backplot {
namespace {

// One letter per character: '.' default, G motion (G, M), X coordinate, F feed, speed
// and tool, N sequence number, C comment.
std::string Mask(const std::vector<GCodeStyle>& styles)
{
    std::string mask;
    for (const GCodeStyle s : styles)
        mask.push_back(".GXFNC"[static_cast<int>(s)]);
    return mask;
}

TEST(GCodeLexer, StylesWordsNumbersAndComments)
{
    struct Case { const char* name; const char* line; const char* mask; };
    const Case cases[] = {
        {"AllKindsOfWords",
         "N10 G01 X-1.5 Y 2. F120 T2 P5 g1 (cut X1)\r\n",
         "NNN.GGG.XXXXX.XXXX.FFFF.FF.......CCCCCCCC.."},
        {"CompactWords", "G1X2.Z-.5S900M3", "GGXXXXXXXFFFFGG"},
        {"BlanksAfterANumberAreNotPartOfIt", "M30   ", "GGG..."},
        {"ArcWords", "G02 I1. J-2. K0 R5", "GGG.XXX.XXXX.XX.XX"},
        {"BlockDeleteIsAComment", "/N20 G00 X1.", "CCCCCCCCCCCC"}, {"SemicolonComment", "G0 X1;rapid", "GG.XXCCCCCC"},
        {"QuoteAndCommaCommentsAsTheTranslatorCutsThere", "X1,Y2'Z3", "XXCCCCCC"},
        {"LowerCaseIsNotRead", "g01 x1.", "......."}, {"LetterAtTheEnd", "G01 X", "GGG.X"},
        {"OtherWordsStayPlain", "G04 P1.5 L2", "GGG........"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Mask(GCodeLexer::StyleLine(c.line)), c.mask);
    }
}

// A program of `lines` lines, "N1 G01 X1." to "N<lines> G01 X<lines>.", CR LF after each.
std::string NumberedProgram(int lines)
{
    std::string text;
    for (int i = 1; i <= lines; ++i) {
        const std::string n = std::to_string(i);
        text.append("N").append(n).append(" G01 X").append(n).append(".\r\n");
    }
    return text;
}

// The lines carrying the view's mark, from 1.
std::vector<int> MarkedLines(const SourceView& view)
{
    std::vector<int> marked;
    for (int line = 0; line < view.Editor()->lines(); ++line)
        if (view.Editor()->markersAtLine(line) != 0)
            marked.push_back(line + 1);
    return marked;
}

bool LineOnScreen(const SourceView& view, int line)
{
    const int first = view.Editor()->firstVisibleLine();
    const int onScreen = static_cast<int>(view.Editor()->SendScintilla(QsciScintilla::SCI_LINESONSCREEN));
    return line - 1 >= first && line - 1 < first + onScreen;
}

TEST(SourceView, ReadOnlyPaneLoadsTheFileAsItIsOnDiskAndMarksExactlyOneLine)
{
    test::ScratchDir dir;
    SourceView view;
    EXPECT_EQ(view.objectName(), QStringLiteral("picEditor"));
    auto* editor = view.findChild<QsciScintilla*>(QStringLiteral("Editor"));
    ASSERT_EQ(editor, view.Editor());
    EXPECT_TRUE(editor->isReadOnly());
    EXPECT_TRUE(editor->marginLineNumbers(0));
    EXPECT_GE(editor->marginWidth(0), QFontMetrics(editor->font()).horizontalAdvance(QStringLiteral("32767")));
    EXPECT_FALSE(editor->accessibleName().isEmpty());
    EXPECT_TRUE(QFontInfo(editor->font()).fixedPitch());

    const std::string program = "(PLATE)\r\nN10 G00 X1. Y2.\r\nN20 G01 Z-1. F80.\r\nM30";
    ASSERT_TRUE(view.LoadFile(QString::fromStdString(dir.Write("plate.nc", program))));
    EXPECT_EQ(view.Editor()->text(), QString::fromStdString(program));
    EXPECT_EQ(view.LineCount(), 4);
    EXPECT_EQ(view.Editor()->text(1), QStringLiteral("N10 G00 X1. Y2.\r\n"));

    // The editor shows the lexer's styles.
    ASSERT_TRUE(view.LoadFile(QString::fromStdString(dir.Write("styled.nc", "(A)\r\nN5 G1 X2. F9 ;end\r\n"))));
    view.Editor()->SendScintilla(QsciScintilla::SCI_COLOURISE, 0, -1); // Editor() reads the first piece
    std::string mask;
    for (int pos = 0; pos < editor->length(); ++pos)
        mask.push_back(".GXFNC"[editor->SendScintilla(QsciScintilla::SCI_GETSTYLEAT, pos)]);
    EXPECT_EQ(mask, "CCC..NN.GG.XXX.FF.CCCC..");

    // Bytes that are not UTF-8 read as Latin-1: 0xD8 is the diameter sign.
    ASSERT_TRUE(view.LoadFile(QString::fromStdString(dir.Write("latin.nc", "(\xD8 10)\r\nG00 X1."))));
    EXPECT_EQ(view.Editor()->text(0), QStringLiteral("(\u00D8 10)\r\n"));

    // Another file replaces the text; a missing one leaves the view empty.
    EXPECT_FALSE(view.LoadFile(QString::fromStdString((dir.Path() / "missing.nc").string())));
    EXPECT_EQ(view.Editor()->text(), QString());
    EXPECT_EQ(view.LineCount(), 0);
    EXPECT_FALSE(view.MarkLine(1));

    // Exactly one line is marked, and scrolled into view.
    view.resize(400, 200); // about ten lines on screen
    view.show();
    ASSERT_TRUE(view.LoadFile(QString::fromStdString(dir.Write("long.nc", NumberedProgram(200)))));
    QApplication::processEvents();
    ASSERT_LT(view.Editor()->SendScintilla(QsciScintilla::SCI_LINESONSCREEN), 50);

    struct Step { const char* name; int line; bool marked; std::vector<int> lines; };
    const Step steps[] = {
        {"FarDown", 150, true, {150}}, {"BackUp", 3, true, {3}},
        {"LastLine", 201, true, {201}}, // the empty line after the last CR LF
        {"PastTheEndRemovesTheMark", 202, false, {}}, {"ZeroRemovesTheMark", 0, false, {}},
        {"AgainAfterNone", 77, true, {77}},
    };
    for (const Step& s : steps) {
        SCOPED_TRACE(s.name);
        EXPECT_EQ(view.MarkLine(s.line), s.marked);
        QApplication::processEvents();
        EXPECT_EQ(MarkedLines(view), s.lines);
        EXPECT_EQ(view.MarkedLine(), s.marked ? s.line : 0);
        if (s.marked) {
            EXPECT_TRUE(LineOnScreen(view, s.line)) << "first visible " << view.Editor()->firstVisibleLine();
        }
    }

    // Back to the top; the mark stays where it was.
    view.GoToFirstLine();
    QApplication::processEvents();
    EXPECT_EQ(view.Editor()->firstVisibleLine(), 0);
    EXPECT_FALSE(LineOnScreen(view, 77));
    EXPECT_EQ(MarkedLines(view), std::vector<int>{77});

    // A new file starts without a mark.
    view.LoadFile(QString::fromStdString(dir.Write("short.nc", NumberedProgram(5))));
    EXPECT_EQ(MarkedLines(view), std::vector<int>{});
}

// A long program is read only when the pane is shown or its lines are asked for, a piece of
// 1 MiB at a time: a character cut by a piece's end, a byte that is not UTF-8 found late,
// and a NUL byte all come out as when the file is read whole.
TEST(SourceView, LongTextIsReadWhenNeededAPieceAtATime)
{
    test::ScratchDir dir;
    constexpr std::size_t Piece = 1 << 20;
    std::string program = NumberedProgram(60000); // 1.26 MiB
    program.insert(Piece - 1, "(\xC3\x98)");        // a two-byte character across the first cut
    const std::string latin = program + "(\xD8)\r\n";
    const std::string nul = program.substr(0, Piece + 100) + std::string(1, '\0') + "N9 G0 X9.\r\n";

    SourceView view;
    view.resize(400, 200);
    auto* editor = view.findChild<QsciScintilla*>(QStringLiteral("Editor")); // without loading
    const auto loaded = [&] { return static_cast<int>(editor->SendScintilla(QsciScintilla::SCI_GETLENGTH)); };
    ASSERT_TRUE(view.LoadFile(QString::fromStdString(dir.Write("long.nc", program))));
    QApplication::processEvents();
    EXPECT_EQ(loaded(), 0) << "nothing is read for a hidden pane";
    ASSERT_TRUE(view.MarkLine(10));
    EXPECT_EQ(loaded(), static_cast<int>(Piece)) << "the first piece holds line 10";
    EXPECT_EQ(view.MarkedLine(), 10);

    view.show(); // the rest comes while events run
    for (int turns = 0; turns < 100 && loaded() < static_cast<int>(program.size()); ++turns)
        QApplication::processEvents();
    EXPECT_EQ(editor->text().toStdString(), program);
    EXPECT_EQ(view.LineCount(), 60001);

    ASSERT_TRUE(view.LoadFile(QString::fromStdString(dir.Write("latin.nc", latin))));
    EXPECT_EQ(view.Editor()->text(), QString::fromLatin1(latin.data(), static_cast<qsizetype>(latin.size())));
    ASSERT_TRUE(view.LoadFile(QString::fromStdString(dir.Write("nul.nc", nul))));
    EXPECT_EQ(view.Editor()->text().toStdString(), nul.substr(0, Piece + 100));
}

TEST(StepListing, WritesLinesAtTheCurrentLine)
{
    StepListing listing;
    EXPECT_EQ(listing.objectName(), QStringLiteral("Editor1"));
    EXPECT_TRUE(listing.isReadOnly());
    EXPECT_TRUE(listing.isHidden());
    EXPECT_TRUE(QFontInfo(listing.font()).fixedPitch());
    EXPECT_FALSE(listing.accessibleName().isEmpty());
    EXPECT_EQ(listing.LineCount(), 0);
    EXPECT_EQ(listing.CurrentLine(), 1);

    struct Step {
        const char* name;
        int line; // 0: leave the current line
        const char* text;
        const char* all;
    };
    const Step steps[] = {
        {"FirstLine", 1, "G00 X1.", "G00 X1."}, {"Appends", 2, "G01 X2.", "G00 X1.\nG01 X2."},
        {"Replaces", 1, "N5", "N5\nG01 X2."}, {"SameLineAgain", 0, "N6", "N6\nG01 X2."},
        {"GapFilledWithEmptyLines", 5, "X9", "N6\nG01 X2.\n\n\nX9"},
        {"BelowOneCountsAsOne", -3, "N7", "N7\nG01 X2.\n\n\nX9"},
    };
    for (const Step& s : steps) {
        SCOPED_TRACE(s.name);
        if (s.line != 0)
            listing.SetCurrentLine(s.line);
        listing.WriteLine(QString::fromLatin1(s.text));
        EXPECT_EQ(listing.toPlainText(), QString::fromLatin1(s.all));
    }
    EXPECT_EQ(listing.CurrentLine(), 1);
    EXPECT_EQ(listing.LineCount(), 5);
    EXPECT_EQ(listing.LineText(2), QStringLiteral("G01 X2."));
    EXPECT_EQ(listing.LineText(6), QString());

    listing.Clear();
    EXPECT_EQ(listing.toPlainText(), QString());
    EXPECT_EQ(listing.LineCount(), 0);
    EXPECT_EQ(listing.CurrentLine(), 1);
    listing.WriteLine(QStringLiteral("G02"));
    EXPECT_EQ(listing.toPlainText(), QStringLiteral("G02"));
}

} // namespace
} // namespace backplot
