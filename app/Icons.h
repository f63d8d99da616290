#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>
#include <QStringList>

namespace backplot {

// The program's own pictures, drawn in code. Toolbar pictures are laid out on a 16 x 16
// grid and painted pixel-aligned at 16 and 32 pixels, so both sizes are sharp; the 32
// pixel one serves screens at twice the density.
class Icons {
public:
    // The toolbar button keys that have a picture, in toolbar order.
    static QStringList ToolbarKeys();

    // The picture of a toolbar button key ("Exit", "Open", ... "ToolColors") with pixmaps
    // of 16 and 32 pixels; a null icon for an unknown key.
    static QIcon ToolbarIcon(const QString& key);

    // One size of that picture (device pixel ratio 1); transparent for an unknown key.
    static QPixmap ToolbarPixmap(const QString& key, int size);

    // The logo of the About box and the window icon, `size` pixels square.
    static QPixmap Logo(int size);
    static QIcon AppIcon();
};

} // namespace backplot
