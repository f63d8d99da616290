#pragma once

#include <QList>
#include <QRect>
#include <optional>

class QSettings;
class QWidget;

namespace backplot {

// Where the main window was left: its normal (not maximised) geometry, frame excluded, in
// screen coordinates; whether it was maximised; and the room the user gave the source view
// (its width) and the step listing (its height), 0 while they have the default share.
// Kept in the settings store under the group "Window", which no preference uses, read at
// start and written at exit with the preferences.
struct WindowPlacement {
    std::optional<QRect> Normal;
    bool Maximized = false;
    int SourceWidth = 0;
    int StepsHeight = 0;

    // Values that are missing or unreadable stay as above.
    static WindowPlacement Load(QSettings& store);
    void Save(QSettings& store) const;

    // The geometry to open at. `saved` is kept when one of `screens` (their available areas,
    // in logical pixels) holds it whole. Otherwise (a screen gone, a smaller resolution, a
    // larger scale factor) and on a first start, the saved size or else `preferred`, cut to
    // nine tenths of `opening` (the available area of the screen the window opens on) so
    // that the frame fits too, centred there.
    static QRect Fit(const std::optional<QRect>& saved, const QList<QRect>& screens, const QRect& opening,
                     QSize preferred);

    // Places `window`, not shown yet, as Fit says for this desktop's screens, and maximised
    // if it was left so (that takes effect when it is shown).
    void Restore(QWidget& window, QSize preferred) const;
    // Takes the window's normal geometry and maximised state, and the room of whichever
    // pane is shown now (a hidden pane keeps what it had).
    void Remember(const QWidget& window, const QWidget& sourceView, const QWidget& stepListing);
};

} // namespace backplot
