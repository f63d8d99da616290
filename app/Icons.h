#pragma once

#include "ToolbarKey.h"

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace backplot {

// The program's own pictures, drawn as SVG files built into the program (Icons.qrc). The
// toolbar pictures are app/icons/<key's name>.svg on a 16 x 16 grid whose straight edges fall on
// whole units, so they are sharp at 16, 32 and 64 pixels. The logo is the application icon
// desktop/tarvo-backplot.svg.
class Icons {
public:
    // The picture of a toolbar button. Where the button does what a standard freedesktop
    // icon name says ("document-open", "zoom-in", ...), the desktop's icon theme has the
    // first word, dark themes included; our drawing stands wherever the theme has no such
    // icon or no theme is set.
    static QIcon ToolbarIcon(ToolbarKey key);

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
