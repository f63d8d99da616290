#include "Keyboard.h"

#include "CommandSurface.h"
#include "PlaybackHost.h"
#include "PlaybackTexts.h"
#include "ViewCommands.h"
#include "frmBackplot.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>

namespace backplot {

namespace {

constexpr int KeyEnter = 13;
constexpr int KeyEscape = 27;

// The character a key press gives, as the classic key-press handler receives it.
int CharacterOf(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return KeyEnter;
    case Qt::Key_Escape:
        return KeyEscape;
    default:
        break;
    }
    const QString text = event.text();
    return text.size() == 1 && text.at(0).unicode() < 128 ? text.at(0).unicode() : 0;
}

} // namespace

Keyboard::Keyboard(frmBackplot& window) : QObject(&window), window_(window) { qApp->installEventFilter(this); }

Keyboard::~Keyboard() { qApp->removeEventFilter(this); }

bool Keyboard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    auto* key = static_cast<QKeyEvent*>(event);
    // Keys of a dialog, a menu or the menu bar's own navigation are theirs; shortcuts
    // with Ctrl or Alt belong to the menus. A key acted on is consumed here, so it never
    // travels on up the widget tree to be seen again.
    if (!widget || widget->window() != &window_ || qobject_cast<QMenuBar*>(widget) ||
        (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
        return false;
    // An open in progress: the keys wait with everything else. A text field of the
    // window (the source view's find bar) takes what is typed into it, and a key it
    // passes on (Enter, an arrow) must not reach the window's commands on its way up.
    if (window_.fileOperation() || qobject_cast<QLineEdit*>(QApplication::focusWidget()))
        return false;
    bool acted = Form_KeyDown(key->key());
    int character = CharacterOf(*key);
    if (character != 0)
        acted = Form_KeyPress(character) || acted;
    return acted;
}

bool Keyboard::Form_KeyDown(int keyCode)
{
    window_.view().ExtentsKeyFlag = false;
    switch (keyCode) {
    case Qt::Key_Left:
        window_.mnuPanLeft_Click();
        return true;
    case Qt::Key_Right:
        window_.mnuPanRight_Click();
        return true;
    case Qt::Key_Down:
        window_.mnuPanDown_Click();
        return true;
    case Qt::Key_Up:
        window_.mnuPanUp_Click();
        return true;
    default:
        return false;
    }
}

bool Keyboard::Form_KeyPress(int& keyAscii)
{
    const PlaybackState& playback = window_.playback();
    const int letter = keyAscii >= 'a' && keyAscii <= 'z' ? keyAscii - 'a' + 'A' : keyAscii;
    // The letters, tried in this order; the first that matches runs.
    switch (letter) {
    case 'C':
        if (!playback.SlowMode)
            window_.mnuClear_Click();
        return true;
    case 'E':
        window_.view().ExtentsKeyFlag = true;
        window_.mnuZExtents_Click();
        return true;
    case 'M':
        if (!playback.StepMode && !playback.SlowPaused)
            window_.mnuSlowMotion_Click();
        return true;
    case 'R':
        if (!playback.SlowMode && !playback.SlowPaused)
            window_.mnuRedraw_Click();
        return true;
    case 'S':
        if (playback.SlowMode)
            return true;
        if (playback.StepMode)
            window_.commands().mnuDetails->setEnabled(true);
        window_.mnuStep_Click();
        window_.lblCode()->setText(texts::EndSingleStep);
        return true;
    case 'P':
        window_.tbPause_Click();
        return true;
    default:
        break;
    }
    // Then the character itself.
    switch (keyAscii) {
    case KeyEnter:
        EnterKey(keyAscii);
        return true;
    case KeyEscape:
        EscapeKey();
        return true;
    case '+':
    case '=':
        window_.mnuZIn_Click();
        return true;
    case '-':
    case '_':
        window_.mnuZOut_Click();
        return true;
    default:
        return false;
    }
}

void Keyboard::EnterKey(int& keyAscii)
{
    if (window_.playback().StepMode) {
        // On the last element Enter ends stepping with the whole program; before it, steps.
        if (window_.plotter().PlotLast == window_.plotter().RecordTotal) {
            window_.mnuZExtents_Click();
            window_.playbackHost().RestoreToolbar();
        } else {
            window_.mnuStep_Click();
            keyAscii = 0;
        }
    }
    window_.commands().mnuDetails->setEnabled(true);
}

void Keyboard::EscapeKey()
{
    CommandSurface& commands = window_.commands();
    PlaybackState& playback = window_.playback();
    window_.playbackHost().RestoreToolbar();
    playback.SourceLine = 1;
    if (playback.SlowMode && playback.StepMode) {
        playback.SlowPaused = false;
        playback.SlowMode = false;
        commands.mnuSlowMotion->setChecked(false);
        commands.mnuStep->setChecked(false);
        window_.mnuZExtents_Click();
    } else if (playback.SlowMode && !playback.SlowPaused) {
        playback.SlowPaused = false;
        playback.SlowMode = false;
        commands.mnuSlowMotion->setChecked(false);
        window_.lblCode()->setText(QString::fromStdString(window_.FileName()) + QStringLiteral("  "));
        window_.mnuRedraw_Click();
    } else if (playback.StepMode) {
        window_.mnuZExtents_Click();
    }
    // A paused slow motion stays paused: only the toolbar and the source line go back.
}

} // namespace backplot
