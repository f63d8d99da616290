#include "Icons.h"

#include <QPainter>
#include <QSvgRenderer>

// The pictures live in this static library; a library's resources are linked in only when
// something names them.
static void InitIconResources() { Q_INIT_RESOURCE(Icons); }

namespace backplot {

namespace {

void RegisterPictures()
{
    static const bool registered = (InitIconResources(), true);
    (void)registered;
}

struct ToolbarPicture {
    const char* key;
    const char* themeName; // the freedesktop icon name, or empty where none says what the button does
};
constexpr ToolbarPicture ToolbarPictures[] = {
    {"Exit", "application-exit"},
    {"Open", "document-open"},
    {"Clear", ""},
    {"Print", "document-print"},
    {"Preview", "document-print-preview"},
    {"Pan", ""},
    {"ZoomExtends", "zoom-fit-best"},
    {"ZWindow", ""},
    {"ZIn", "zoom-in"},
    {"ZOut", "zoom-out"},
    {"Refresh", "view-refresh"},
    {"Step", ""},
    {"Slow", ""},
    {"Pause", "media-playback-pause"},
    {"Stop", "media-playback-stop"},
    {"GCode", ""},
    {"Rapid", ""},
    {"Axis", ""},
    {"Properties", ""},
    {"ToolColors", ""},
};

} // namespace

QStringList Icons::ToolbarKeys()
{
    QStringList keys;
    for (const ToolbarPicture& picture : ToolbarPictures)
        keys << QString::fromLatin1(picture.key);
    return keys;
}

QIcon Icons::ToolbarIcon(const QString& key)
{
    for (const ToolbarPicture& picture : ToolbarPictures) {
        if (key != QLatin1String(picture.key))
            continue;
        RegisterPictures();
        // An SVG icon renders afresh at every size and density asked for.
        const QIcon ours(QStringLiteral(":/toolbar/%1.svg").arg(key));
        const QString themeName = QString::fromLatin1(picture.themeName);
        return themeName.isEmpty() ? ours : QIcon::fromTheme(themeName, ours);
    }
    return {};
}

QString Icons::AppIconSvg()
{
    RegisterPictures();
    return QStringLiteral(":/icons/tarvo-backplot.svg");
}

QPixmap Icons::Logo(int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QSvgRenderer svg(AppIconSvg());
    if (svg.isValid()) {
        QPainter p(&pixmap);
        svg.render(&p, QRectF(0, 0, size, size));
    }
    return pixmap;
}

QIcon Icons::AppIcon()
{
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64, 128}) {
        icon.addPixmap(Logo(size));
        QPixmap dense = Logo(2 * size);
        dense.setDevicePixelRatio(2);
        icon.addPixmap(dense);
    }
    // The largest size only once: at twice the density it would cost more than all the
    // others together, for a picture no window frame shows.
    icon.addPixmap(Logo(256));
    return icon;
}

} // namespace backplot
