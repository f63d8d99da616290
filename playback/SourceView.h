#pragma once

#include <QFile>
#include <QStringDecoder>
#include <QTimer>
#include <QWidget>

class QsciScintilla;

namespace backplot {

class GCodeLexer;

// The source view: the pane `picEditor` holding the code editor `Editor`, which shows
// the program file as it is on disk in a fixed-pitch font ("Courier New" where it is
// installed), with line numbers and G-code colouring (GCodeLexer). It is for reading
// only: typing changes nothing, and keys the main window filters at the application
// level still reach the window first.
//
// Lines are numbered from 1. At most one line is marked (a line background) at a time.
//
// The text reaches the editor only when it is needed, a piece at a time: a long program
// opened while the pane is hidden costs no memory for its text, and one shown is loaded
// in pieces between which the window keeps answering. Whatever asks for lines (MarkLine,
// LineCount, Editor) gets them loaded first; the editor holds the only copy of the text.
class SourceView : public QWidget {
    Q_OBJECT
public:
    explicit SourceView(QWidget* parent = nullptr);

    // Shows the file's text (UTF-8, or Latin-1 when it is not valid UTF-8; up to a NUL
    // byte, if there is one) at its first line, without a mark. A file that cannot be read
    // leaves the view empty and gives false. The text is read when it is first shown or
    // asked for.
    bool LoadFile(const QString& path);

    // Moves to `line`, scrolls it into view and marks it, removing any other mark. A line
    // outside 1..LineCount() only removes the mark and gives false.
    bool MarkLine(int line);
    // The marked line, 0 when none is.
    int MarkedLine() const;
    // Back to the first line, scrolled to the top; the mark stays where it is.
    void GoToFirstLine();

    int LineCount() const;
    // The editor, with the whole text loaded.
    QsciScintilla* Editor() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    // An empty document in place of the old one.
    void FreshDocument();
    // Reads and appends the next piece; false when the whole text is in.
    bool LoadPiece();
    // Pieces until line `line` (from 1) is in, or all of them.
    void LoadUpTo(int line);
    // Starts (or goes on with) loading a piece at a time from the event loop.
    void LoadInBackground();

    QsciScintilla* editor_ = nullptr;
    GCodeLexer* lexer_ = nullptr;
    QFile file_;            // open while its text is being loaded
    bool latin1_ = false;   // the file proved not to be UTF-8: read again as Latin-1
    QStringDecoder utf8_;
    QTimer pieces_;         // loads the next piece when the event loop is free
};

} // namespace backplot
