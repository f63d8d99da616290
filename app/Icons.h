#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>
#include <QStringList>

namespace backplot {

// The program's own pictures. Toolbar pictures are drawn in code on a 16 x 16 grid and
// painted pixel-aligned at 16, 32 and 64 pixels, so every size is sharp. The logo is the
// application icon desktop/tarvo-backplot.svg, built into the program as a resource.
class Icons {
public:
    // The toolbar button keys that have a picture, in toolbar order.
    static QStringList ToolbarKeys();

    // The picture of a toolbar button key ("Exit", "Open", ... "ToolColors"): 16 and 32
    // pixels, each also at twice the density for high-density screens; a null icon for an
    // unknown key.
    static QIcon ToolbarIcon(const QString& key);

    // One size of that picture (device pixel ratio 1); transparent for an unknown key.
    static QPixmap ToolbarPixmap(const QString& key, int size);

    // The logo of the About box and the window icon, `size` pixels square (device pixel
    // ratio 1); transparent if the picture cannot be read.
    static QPixmap Logo(int size);
    // The logo at the sizes of the desktop's icon theme: 16 to 128, each also at twice the
    // density, and 256.
    static QIcon AppIcon();
    // The resource path of the application icon's SVG.
    static QString AppIconSvg();
};

} // namespace backplot
