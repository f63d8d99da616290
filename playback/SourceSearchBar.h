#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

namespace backplot {

class SourceView;

// The bar under the source view for finding text (Ctrl+F) and going to a line (Ctrl+G).
// Hidden until asked for. In find mode Enter finds the next match, Shift+Enter the one
// before, and the bar stays; in line mode Enter goes to the line and closes the bar.
// Esc closes it and gives the keyboard back to the text.
//
// While its field has the keyboard, the keys are typed there: the main window's keys
// (letters, Enter, Esc, arrows) wait until the focus is elsewhere again.
class SourceSearchBar : public QWidget {
    Q_OBJECT
public:
    enum class Mode { Find, GoToLine };

    explicit SourceSearchBar(SourceView& view);

    // Shows the bar in `mode` with the keyboard in its field; a find starts from the
    // text selected in the view, if any.
    void Open(Mode mode);
    void Close();
    // Finds the last text looked for in the given direction (F3 and Shift+F3 come here
    // too, bar open or not).
    void FindAgain(bool forward);

    Mode CurrentMode() const { return mode_; }
    QLineEdit* Field() const { return field_; }
    // "Not found", "No line 40: the program has 12", or nothing.
    QString Note() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Accept(bool forward);

    SourceView& view_;
    Mode mode_ = Mode::Find;
    QString findText_; // what the find field held last; the line field does not change it
    QLabel* prompt_ = nullptr;
    QLineEdit* field_ = nullptr;
    QToolButton* previous_ = nullptr;
    QToolButton* next_ = nullptr;
    QLabel* note_ = nullptr;
};

} // namespace backplot
