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
    ToolbarKey key;
    const char* themeName; // the freedesktop icon name, or empty where none says what the button does
};
constexpr ToolbarPicture ToolbarPictures[] = {
    {ToolbarKey::Exit, "application-exit"},
    {ToolbarKey::Open, "document-open"},
    {ToolbarKey::Clear, ""},
    {ToolbarKey::Print, "document-print"},
    {ToolbarKey::Preview, "document-print-preview"},
    {ToolbarKey::Pan, ""},
    {ToolbarKey::ZoomExtends, "zoom-fit-best"},
    {ToolbarKey::ZWindow, ""},
    {ToolbarKey::ZIn, "zoom-in"},
    {ToolbarKey::ZOut, "zoom-out"},
    {ToolbarKey::Refresh, "view-refresh"},
    {ToolbarKey::Step, ""},
    {ToolbarKey::Slow, ""},
    {ToolbarKey::Pause, "media-playback-pause"},
    {ToolbarKey::Stop, "media-playback-stop"},
    {ToolbarKey::GCode, ""},
    {ToolbarKey::Rapid, ""},
    {ToolbarKey::Axis, ""},
    {ToolbarKey::Properties, ""},
    {ToolbarKey::ToolColors, ""},
};
static_assert(EveryToolbarKeyInOrder(ToolbarPictures), "one picture per toolbar key, in toolbar order");

} // namespace

QIcon Icons::ToolbarIcon(ToolbarKey key)
{
    RegisterPictures();
    // An SVG icon renders afresh at every size and density asked for.
    const QIcon ours(QStringLiteral(":/toolbar/%1.svg").arg(QString::fromLatin1(NameOf(key))));
    const QString themeName = QString::fromLatin1(ToolbarPictures[IndexOf(key)].themeName);
    return themeName.isEmpty() ? ours : QIcon::fromTheme(themeName, ours);
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
