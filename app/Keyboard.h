#pragma once

#include <QObject>

namespace backplot {

class frmBackplot;

// The main window's keys: arrows pan, letters start commands, Enter steps, Esc stops,
// plus and minus zoom. Installed on the application, so the keys reach the window
// whichever of its widgets has the focus (the canvas, the source view, the step
// listing), except a text field; keys meant for a dialog or a menu are left alone.
class Keyboard : public QObject {
    Q_OBJECT
public:
    explicit Keyboard(frmBackplot& window);
    ~Keyboard() override;

    // Key down (virtual key codes): every key clears the extents-key flag; the arrows pan.
    // True when the key was acted on.
    bool Form_KeyDown(int keyCode);
    // Key press (character codes, letters in either case); setting keyAscii to 0
    // swallows the key. True when the key was acted on.
    bool Form_KeyPress(int& keyAscii);
    // The Esc key's action, also the toolbar's "Stop".
    void EscapeKey();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void EnterKey(int& keyAscii);

    frmBackplot& window_;
};

} // namespace backplot
