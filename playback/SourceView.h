#pragma once

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
class SourceView : public QWidget {
    Q_OBJECT
public:
    explicit SourceView(QWidget* parent = nullptr);

    // Shows the file's text (UTF-8, or Latin-1 when it is not valid UTF-8) at its first
    // line, without a mark. A file that cannot be read leaves the view empty and gives
    // false.
    bool LoadFile(const QString& path);

    // Moves to `line`, scrolls it into view and marks it, removing any other mark. A line
    // outside 1..LineCount() only removes the mark and gives false.
    bool MarkLine(int line);
    // The marked line, 0 when none is.
    int MarkedLine() const;
    // Back to the first line, scrolled to the top; the mark stays where it is.
    void GoToFirstLine();

    int LineCount() const;
    QsciScintilla* Editor() const { return editor_; }

private:
    QsciScintilla* editor_ = nullptr;
    GCodeLexer* lexer_ = nullptr;
};

} // namespace backplot
