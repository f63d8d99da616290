#include "Icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QSvgRenderer>
#include <QtMath>
#include <functional>

// The icon's resource lives in this static library; a library's resources are linked in
// only when something names them.
static void InitAppIconResource() { Q_INIT_RESOURCE(AppIcon); }

namespace backplot {

namespace {

// Everything below is drawn on a 16 x 16 grid. Outlines one unit wide run along
// half-unit coordinates and fills cover whole units, so at 16 and 32 pixels every
// straight edge falls on a pixel boundary.

const QColor Ink(0x30, 0x30, 0x30);
const QColor Blue(0x1f, 0x4e, 0x9e);
const QColor Green(0x1e, 0x9e, 0x3a);
const QColor Red(0xd0, 0x20, 0x20);
const QColor DarkRed(0x80, 0x10, 0x10);
const QColor Paper(Qt::white);

QPen Outline(const QColor& color, qreal width = 1.0)
{
    return QPen(color, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
}

void Triangle(QPainter& p, const QColor& color, QPointF a, QPointF b, QPointF c)
{
    p.setPen(Qt::NoPen);
    p.setBrush(color);
    p.drawPolygon(QPolygonF({a, b, c}));
}

// A filled arrow head whose tip lies `length` ahead of `base` along `direction`.
void ArrowHead(QPainter& p, const QColor& color, QPointF base, QPointF direction, qreal length, qreal halfWidth)
{
    const qreal norm = std::hypot(direction.x(), direction.y());
    const QPointF d = direction / norm;
    const QPointF n(-d.y(), d.x());
    Triangle(p, color, base + d * length, base + n * halfWidth, base - n * halfWidth);
}

// A box with a one-unit edge: `outline` runs along the middle of that edge, on half
// units. Filled rather than stroked, so the corners are as sharp as the sides.
void Rect(QPainter& p, const QRectF& outline, const QColor& fill, const QColor& edge)
{
    const QRectF outer = outline.adjusted(-0.5, -0.5, 0.5, 0.5);
    p.fillRect(outer, edge);
    p.fillRect(outer.adjusted(1, 1, -1, -1), fill);
}

// ---- File commands ----

void DrawExit(QPainter& p)
{
    // A door with a green arrow walking out of it.
    Rect(p, QRectF(2.5, 1.5, 7, 13), QColor(0xb8, 0x73, 0x33), QColor(0x5a, 0x34, 0x12));
    p.fillRect(QRectF(4, 3, 4, 4), QColor(0xa0, 0x5e, 0x24));
    p.fillRect(QRectF(4, 9, 4, 4), QColor(0xa0, 0x5e, 0x24));
    p.fillRect(QRectF(7, 8, 1, 1), QColor(0xff, 0xd7, 0x00));
    p.fillRect(QRectF(8, 7, 4, 2), Green);
    Triangle(p, Green, QPointF(11, 4), QPointF(15.5, 8), QPointF(11, 12));
}

void DrawOpen(QPainter& p)
{
    // An open yellow folder.
    const QColor edge(0x8a, 0x5a, 0x00);
    QPainterPath back;
    back.moveTo(1.5, 2.5);
    back.lineTo(5.5, 2.5);
    back.lineTo(6.5, 3.5);
    back.lineTo(13.5, 3.5);
    back.lineTo(13.5, 13.5);
    back.lineTo(1.5, 13.5);
    back.closeSubpath();
    p.setPen(Outline(edge));
    p.setBrush(QColor(0xe0, 0xa5, 0x26));
    p.drawPath(back);
    p.fillRect(QRectF(3, 5, 9, 2), Paper);
    QPainterPath front;
    front.moveTo(1.5, 13.5);
    front.lineTo(3.5, 7.5);
    front.lineTo(15.5, 7.5);
    front.lineTo(13.5, 13.5);
    front.closeSubpath();
    p.setBrush(QColor(0xff, 0xd2, 0x57));
    p.drawPath(front);
}

void DrawClear(QPainter& p)
{
    // An eraser lying across a wiped line.
    p.fillRect(QRectF(1, 14, 14, 1), QColor(0x90, 0x90, 0x90));
    p.save();
    p.translate(8, 7.5);
    p.rotate(-40);
    p.setPen(Outline(Ink));
    p.setBrush(QColor(0xf2, 0x8a, 0xa0));
    p.drawRect(QRectF(-6.5, -3, 7, 6));
    p.setBrush(QColor(0x7a, 0xa7, 0xe0));
    p.drawRect(QRectF(0.5, -3, 6, 6));
    p.restore();
}

void DrawPrint(QPainter& p)
{
    // A printer with a sheet going in and one coming out.
    Rect(p, QRectF(4.5, 1.5, 7, 5), Paper, Ink);
    Rect(p, QRectF(1.5, 6.5, 13, 6), QColor(0x9e, 0xa7, 0xb3), QColor(0x3a, 0x3f, 0x45));
    p.fillRect(QRectF(2, 7, 12, 1), QColor(0xd0, 0xd6, 0xdd));
    Rect(p, QRectF(4.5, 10.5, 7, 4), Paper, Ink);
    p.fillRect(QRectF(6, 12, 4, 1), QColor(0x90, 0x90, 0xa0));
    p.fillRect(QRectF(12, 8, 2, 1), Green);
}

void DrawPreview(QPainter& p)
{
    // A page under a magnifying glass.
    Rect(p, QRectF(1.5, 0.5, 9, 13), Paper, QColor(0x50, 0x50, 0x50));
    for (int y : {3, 5, 7, 9})
        p.fillRect(QRectF(3, y, 6, 1), QColor(0x90, 0x90, 0xa0));
    p.setPen(QPen(Ink, 1.5));
    p.setBrush(QColor(0xcf, 0xe6, 0xff, 0xd0));
    p.drawEllipse(QPointF(10, 10), 3.5, 3.5);
    p.setPen(QPen(Ink, 2.5, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(12.8, 12.8), QPointF(15, 15));
}

// ---- View commands ----

void DrawPan(QPainter& p)
{
    // Four arrows: the view moves every way.
    p.fillRect(QRectF(7, 3, 2, 10), Blue);
    p.fillRect(QRectF(3, 7, 10, 2), Blue);
    Triangle(p, Blue, QPointF(8, 0), QPointF(11.5, 3.5), QPointF(4.5, 3.5));
    Triangle(p, Blue, QPointF(8, 16), QPointF(11.5, 12.5), QPointF(4.5, 12.5));
    Triangle(p, Blue, QPointF(0, 8), QPointF(3.5, 4.5), QPointF(3.5, 11.5));
    Triangle(p, Blue, QPointF(16, 8), QPointF(12.5, 4.5), QPointF(12.5, 11.5));
}

// The magnifying glass shared by the zoom pictures; its lens is centred on (6.5, 6.5).
void Magnifier(QPainter& p)
{
    p.setPen(QPen(QColor(0x6b, 0x4a, 0x2b), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(10.5, 10.5), QPointF(14.5, 14.5));
    p.setPen(QPen(Ink, 1.5));
    p.setBrush(QColor(0xe8, 0xf2, 0xff));
    p.drawEllipse(QPointF(6.5, 6.5), 5.25, 5.25);
}

void DrawZoomExtends(QPainter& p)
{
    Magnifier(p);
    // The whole drawing: a small frame with its four corners marked.
    Rect(p, QRectF(4.5, 4.5, 4, 4), QColor(0xe8, 0xf2, 0xff), Red);
}

void DrawZWindow(QPainter& p)
{
    // A dashed rubber-band window with a small glass at its corner.
    QPen dashed = Outline(Ink);
    dashed.setDashPattern({2, 1});
    p.setPen(dashed);
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(0.5, 0.5, 11, 8));
    p.setPen(QPen(QColor(0x6b, 0x4a, 0x2b), 2.5, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(12.5, 12.5), QPointF(15, 15));
    p.setPen(QPen(Ink, 1.25));
    p.setBrush(QColor(0xe8, 0xf2, 0xff));
    p.drawEllipse(QPointF(10.5, 10.5), 3, 3);
}

void DrawZIn(QPainter& p)
{
    Magnifier(p);
    p.fillRect(QRectF(4, 6, 5, 1), Blue);
    p.fillRect(QRectF(6, 4, 1, 5), Blue);
}

void DrawZOut(QPainter& p)
{
    Magnifier(p);
    p.fillRect(QRectF(4, 6, 5, 1), Blue);
}

void DrawRefresh(QPainter& p)
{
    // A clockwise circular arrow.
    const QPointF centre(8, 8);
    const qreal radius = 5.5;
    const qreal startDegrees = 150;
    const qreal sweepDegrees = -285;
    p.setPen(QPen(Green, 2, Qt::SolidLine, Qt::FlatCap));
    p.setBrush(Qt::NoBrush);
    const QRectF box(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    p.drawArc(box, qRound(startDegrees * 16), qRound(sweepDegrees * 16));
    const qreal end = qDegreesToRadians(startDegrees + sweepDegrees);
    const QPointF tip(centre.x() + radius * std::cos(end), centre.y() - radius * std::sin(end));
    // Going clockwise on screen, the path at angle a heads along (sin a, cos a).
    ArrowHead(p, Green, tip, QPointF(std::sin(end), std::cos(end)), 3, 3);
}

// ---- Playback ----

void DrawStep(QPainter& p)
{
    // Play one element, then stop at the bar.
    Triangle(p, Blue, QPointF(3, 3), QPointF(10, 8), QPointF(3, 13));
    p.fillRect(QRectF(11, 3, 2, 10), Blue);
}

void DrawSlow(QPainter& p)
{
    // A stopwatch: playback with a wait between elements.
    p.fillRect(QRectF(7, 0, 2, 3), Ink);
    p.fillRect(QRectF(12, 3, 2, 2), Ink);
    p.setPen(QPen(Ink, 1.5));
    p.setBrush(Paper);
    p.drawEllipse(QPointF(8, 9), 5.75, 5.75);
    p.fillRect(QRectF(7, 5, 1, 4), Red);
    p.fillRect(QRectF(7, 8, 4, 1), Red);
}

void DrawPause(QPainter& p)
{
    p.fillRect(QRectF(4, 3, 3, 10), Blue);
    p.fillRect(QRectF(9, 3, 3, 10), Blue);
}

void DrawStop(QPainter& p) { Rect(p, QRectF(3.5, 3.5, 9, 9), Red, DarkRed); }

void DrawGCode(QPainter& p)
{
    // A program listing: a page of short lines, each starting with a blue address word.
    QPainterPath page;
    page.moveTo(2.5, 0.5);
    page.lineTo(10.5, 0.5);
    page.lineTo(13.5, 3.5);
    page.lineTo(13.5, 15.5);
    page.lineTo(2.5, 15.5);
    page.closeSubpath();
    p.setPen(Outline(QColor(0x50, 0x50, 0x50)));
    p.setBrush(Paper);
    p.drawPath(page);
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({QPointF(10.5, 0.5), QPointF(10.5, 3.5), QPointF(13.5, 3.5)}));
    const int lengths[] = {4, 3, 5, 2, 4};
    for (int i = 0; i < 5; ++i) {
        const int y = 5 + 2 * i;
        p.fillRect(QRectF(4, y, 2, 1), Blue);
        p.fillRect(QRectF(7, y, lengths[i], 1), Ink);
    }
}

// ---- Display toggles ----

void DrawRapid(QPainter& p)
{
    // A rapid move as the plot shows one: dotted, first at 45 degrees, then straight on,
    // here upward to an arrow head.
    for (int i = 0; i < 3; ++i)
        p.fillRect(QRectF(1 + 3 * i, 13 - 3 * i, 2, 2), Red);
    // The head in whole pixels, two wider on each row, so it stays sharp at any size.
    for (int row = 0; row < 4; ++row)
        p.fillRect(QRectF(7 - row, row, 2 + 2 * row, 1), Red);
}

void DrawAxis(QPainter& p)
{
    p.fillRect(QRectF(1, 10, 11, 1), Red);
    Triangle(p, Red, QPointF(11.5, 7.5), QPointF(16, 10.5), QPointF(11.5, 13.5));
    p.fillRect(QRectF(5, 4, 1, 11), Green);
    Triangle(p, Green, QPointF(2.5, 4.5), QPointF(5.5, 0), QPointF(8.5, 4.5));
}

void DrawProperties(QPainter& p)
{
    // A gear.
    const QPointF centre(8, 8);
    const int teeth = 8;
    QPolygonF outline;
    for (int i = 0; i < teeth; ++i) {
        const qreal a = 2 * M_PI * i / teeth;
        const qreal half = M_PI / teeth;
        const auto at = [&](qreal angle, qreal radius) {
            return centre + QPointF(radius * std::cos(angle), radius * std::sin(angle));
        };
        outline << at(a - half * 0.9, 5.2) << at(a - half * 0.45, 7.4) << at(a + half * 0.45, 7.4)
                << at(a + half * 0.9, 5.2);
    }
    p.setPen(Outline(QColor(0x3a, 0x3f, 0x45)));
    p.setBrush(QColor(0x8a, 0x94, 0xa0));
    p.drawPolygon(outline);
    p.setBrush(Paper);
    p.drawEllipse(centre, 2.25, 2.25);
}

void DrawToolColors(QPainter& p)
{
    // Swatches of the colours the tool changes are drawn in.
    Rect(p, QRectF(1.5, 1.5, 5, 5), QColor(0, 0, 255), Ink);
    Rect(p, QRectF(9.5, 1.5, 5, 5), QColor(0, 0xc0, 0), Ink);
    Rect(p, QRectF(1.5, 9.5, 5, 5), QColor(0, 0xd0, 0xd0), Ink);
    Rect(p, QRectF(9.5, 9.5, 5, 5), QColor(255, 0, 0), Ink);
}

using Painter = std::function<void(QPainter&)>;

const std::vector<std::pair<QString, Painter>>& Pictures()
{
    static const std::vector<std::pair<QString, Painter>> pictures = {
        {QStringLiteral("Exit"), DrawExit},
        {QStringLiteral("Open"), DrawOpen},
        {QStringLiteral("Clear"), DrawClear},
        {QStringLiteral("Print"), DrawPrint},
        {QStringLiteral("Preview"), DrawPreview},
        {QStringLiteral("Pan"), DrawPan},
        {QStringLiteral("ZoomExtends"), DrawZoomExtends},
        {QStringLiteral("ZWindow"), DrawZWindow},
        {QStringLiteral("ZIn"), DrawZIn},
        {QStringLiteral("ZOut"), DrawZOut},
        {QStringLiteral("Refresh"), DrawRefresh},
        {QStringLiteral("Step"), DrawStep},
        {QStringLiteral("Slow"), DrawSlow},
        {QStringLiteral("Pause"), DrawPause},
        {QStringLiteral("Stop"), DrawStop},
        {QStringLiteral("GCode"), DrawGCode},
        {QStringLiteral("Rapid"), DrawRapid},
        {QStringLiteral("Axis"), DrawAxis},
        {QStringLiteral("Properties"), DrawProperties},
        {QStringLiteral("ToolColors"), DrawToolColors},
    };
    return pictures;
}

const Painter* PictureOf(const QString& key)
{
    for (const auto& [name, painter] : Pictures())
        if (name == key)
            return &painter;
    return nullptr;
}

QPixmap Paint(int size, qreal gridSize, const std::function<void(QPainter&)>& draw)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / gridSize, size / gridSize);
    draw(p);
    return pixmap;
}

} // namespace

QStringList Icons::ToolbarKeys()
{
    QStringList keys;
    for (const auto& picture : Pictures())
        keys << picture.first;
    return keys;
}

QPixmap Icons::ToolbarPixmap(const QString& key, int size)
{
    const Painter* painter = PictureOf(key);
    if (!painter) {
        QPixmap empty(size, size);
        empty.fill(Qt::transparent);
        return empty;
    }
    return Paint(size, 16, *painter);
}

QIcon Icons::ToolbarIcon(const QString& key)
{
    if (!PictureOf(key))
        return {};
    QIcon icon;
    for (int size : {16, 32}) {
        icon.addPixmap(ToolbarPixmap(key, size));
        // Painted anew at twice the pixels, not scaled up, so a high-density screen gets
        // the same sharp edges.
        QPixmap dense = ToolbarPixmap(key, 2 * size);
        dense.setDevicePixelRatio(2);
        icon.addPixmap(dense);
    }
    return icon;
}

QString Icons::AppIconSvg()
{
    static const bool registered = (InitAppIconResource(), true);
    (void)registered;
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
