#include "Cursors.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace backplot {

namespace {

constexpr int Size = 32;

// A picture of 32 x 32 drawn twice, a white halo under a black line, so it shows on
// every background.
QPixmap Picture(void (*draw)(QPainter&))
{
    QPixmap pixmap(Size, Size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 3.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw(painter);
    painter.setPen(QPen(Qt::black, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw(painter);
    return pixmap;
}

void DrawMagnifier(QPainter& p)
{
    // The hot spot is the centre of the cross at the top left.
    p.drawLine(QPointF(1, 5), QPointF(9, 5));
    p.drawLine(QPointF(5, 1), QPointF(5, 9));
    p.drawEllipse(QPointF(17, 17), 7, 7);
    p.drawLine(QPointF(22, 22), QPointF(29, 29));
    p.drawLine(QPointF(14, 17), QPointF(20, 17));
    p.drawLine(QPointF(17, 14), QPointF(17, 20));
}

void DrawFourWays(QPainter& p)
{
    const QPointF c(15.5, 15.5);
    p.drawLine(QPointF(c.x(), 3), QPointF(c.x(), 28));
    p.drawLine(QPointF(3, c.y()), QPointF(28, c.y()));
    for (const auto& [tip, a, b] : {std::tuple{QPointF(c.x(), 3), QPointF(-4, 5), QPointF(4, 5)},
                                    std::tuple{QPointF(c.x(), 28), QPointF(-4, -5), QPointF(4, -5)},
                                    std::tuple{QPointF(3, c.y()), QPointF(5, -4), QPointF(5, 4)},
                                    std::tuple{QPointF(28, c.y()), QPointF(-5, -4), QPointF(-5, 4)}}) {
        QPainterPath head;
        head.moveTo(tip + a);
        head.lineTo(tip);
        head.lineTo(tip + b);
        p.drawPath(head);
    }
}

} // namespace

QCursor Cursors::ZoomWindow() { return QCursor(Picture(DrawMagnifier), 5, 5); }

QCursor Cursors::Pan() { return QCursor(Picture(DrawFourWays), 15, 15); }

} // namespace backplot
