#pragma once

#include <QFile>
#include <QStringDecoder>
#include <QTimer>
#include <QWidget>

class QAction;
class QMenu;
class QsciScintilla;

namespace backplot {

class GCodeLexer;
class SourceSearchBar;

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
// LineCount, Editor, Find) gets them loaded first; the editor holds the only copy of the text.
//
// Ctrl+F finds text and Ctrl+G goes to a line, through a bar under the text (also from the
// text's context menu); F3 and Shift+F3 find again. These keys work anywhere in the window
// while the view is shown, and none of them is one of the window's own keys.
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

    // Selects the next match of `text` (in any case) after the selection, or the one
    // before it, and scrolls it into view; past the end (or the start) the search goes
    // round. With `fromSelectionStart` a forward search starts where the selection
    // begins, so a match already selected stays (typing a longer text refines it).
    // False, and nothing moves, when the text is nowhere.
    bool Find(const QString& text, bool forward, bool fromSelectionStart = false);
    // Puts the cursor at the start of `line` and scrolls it into view; the mark stays.
    // False for a line outside 1..LineCount().
    bool GoToLine(int line);

    SourceSearchBar& SearchBar() const { return *searchBar_; }
    // The text's context menu: the editor's own items, then Find and Go to Line. The
    // caller owns it.
    QMenu* CreateContextMenu();

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

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
    SourceSearchBar* searchBar_ = nullptr;
    QAction* find_ = nullptr;
    QAction* goToLine_ = nullptr;
};

} // namespace backplot
