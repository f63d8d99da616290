#pragma once

#include <QPlainTextEdit>

namespace backplot {

// The step listing `Editor1`: a read-only pane that lists the stepped blocks, one per
// line, in a fixed-pitch font. Lines are numbered from 1. The current line is where the
// next WriteLine goes; the pane starts empty, hidden, with current line 1.
class StepListing : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit StepListing(QWidget* parent = nullptr);

    // Empties the pane; the current line goes back to 1.
    void Clear();
    int CurrentLine() const { return currentLine_; }
    // A line below 1 counts as 1.
    void SetCurrentLine(int line);
    // Puts `text` on the current line, replacing what is there, or appending it (after
    // empty lines when the current line lies further down), and scrolls to it. The
    // current line does not move.
    void WriteLine(const QString& text);

    // Lines that hold text or lie above one (an empty pane has none).
    int LineCount() const;
    // The text of a line, empty outside 1..LineCount().
    QString LineText(int line) const;

private:
    int currentLine_ = 1;
    bool empty_ = true; // the document's single block is not a written line yet
};

} // namespace backplot
