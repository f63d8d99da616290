#pragma once

#include <QCursor>

namespace backplot {

// The canvas pointers of the armed tools, drawn by us: a magnifier over a dashed frame
// for the zoom window, a four-way arrow for the pan.
class Cursors {
public:
    static QCursor ZoomWindow();
    static QCursor Pan();
};

} // namespace backplot
