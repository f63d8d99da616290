#include "frmPreview.h"

#include "CanvasWidget.h"
#include "OutputTexts.h"

#include <QAction>
#include <QEvent>
#include <QFrame>
#include <QIcon>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPixmap>
#include <QPolygonF>
#include <QToolButton>
#include <algorithm>
#include <functional>

namespace backplot {

namespace {

// The two button pictures, drawn on a 16 x 16 grid and rendered at 16 and 32 pixels.
QIcon Picture(const std::function<void(QPainter&)>& draw)
{
    QIcon icon;
    for (int size : {16, 32}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter p(&pixmap);
        p.setRenderHint(QPainter::Antialiasing, true);
        p.scale(size / 16.0, size / 16.0);
        draw(p);
        p.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

// A printer: the sheet going in at the back, the grey body, the printed sheet coming out.
void DrawPrinter(QPainter& p)
{
    const QColor ink(0x30, 0x30, 0x30);
    p.setPen(QPen(ink, 1));
    p.setBrush(Qt::white);
    p.drawRect(QRectF(4.5, 1.5, 7, 5));
    p.setBrush(QColor(0x9a, 0xa4, 0xb0));
    p.drawRect(QRectF(1.5, 6.5, 13, 6));
    p.fillRect(QRectF(11, 8, 2, 1), QColor(0x1e, 0x9e, 0x3a)); // the ready lamp
    p.setBrush(Qt::white);
    p.drawRect(QRectF(4.5, 10.5, 7, 4));
    p.setPen(QPen(QColor(0x1f, 0x4e, 0x9e), 1));
    p.drawLine(QPointF(6, 12.5), QPointF(10, 12.5));
}

// Leaving: a door frame with a red arrow pointing out of it.
void DrawExit(QPainter& p)
{
    p.setPen(QPen(QColor(0x5a, 0x34, 0x12), 1));
    p.setBrush(QColor(0xe8, 0xd8, 0xc0));
    p.drawRect(QRectF(1.5, 1.5, 8, 13));
    const QColor red(0xd0, 0x20, 0x20);
    p.setPen(QPen(red, 2, Qt::SolidLine, Qt::FlatCap));
    p.drawLine(QPointF(5, 8), QPointF(11, 8));
    p.setPen(Qt::NoPen);
    p.setBrush(red);
    p.drawPolygon(QPolygonF({QPointF(15, 8), QPointF(10.5, 4), QPointF(10.5, 12)}));
}

QToolButton* StripButton(QWidget* parent, const char* name, const QString& tip, const QIcon& icon)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setIcon(icon);
    button->setIconSize(QSize(16, 16));
    button->setAutoRaise(true);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    return button;
}

} // namespace

frmPreview::frmPreview(QWidget* parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("frmPreview"));
    setWindowTitle(texts::PreviewCaption);
    setAttribute(Qt::WA_DeleteOnClose);

    // The client area places its children itself, on every resize.
    area_ = new QWidget(this);
    area_->setObjectName(QStringLiteral("previewArea"));
    setCentralWidget(area_);
    area_->installEventFilter(this);

    picTBar_ = new QFrame(area_);
    picTBar_->setObjectName(QStringLiteral("picTBar"));
    picTBar_->setAccessibleName(QStringLiteral("Preview toolbar"));
    picTBar_->setFrameShape(QFrame::StyledPanel);
    cmdExit_ = StripButton(picTBar_, "cmdExit", texts::PreviewExitTip, Picture(DrawExit));
    cmdPrint_ = StripButton(picTBar_, "cmdPrint", texts::PreviewPrintTip, Picture(DrawPrinter));
    cmdExit_->setGeometry(3, 3, 24, 24);
    cmdPrint_->setGeometry(30, 3, 24, 24);

    picView_ = new CanvasWidget(area_);
    picView_->setObjectName(QStringLiteral("picView"));
    picView_->setAccessibleName(QStringLiteral("Print preview picture"));

    mnuFilemain_ = menuBar()->addMenu(texts::PreviewFileMenu);
    mnuFilemain_->setObjectName(QStringLiteral("mnuFilemain"));
    mnuPrint_ = mnuFilemain_->addAction(texts::PreviewPrintItem);
    mnuPrint_->setObjectName(QStringLiteral("mnuPrint"));
    mnuFBar1_ = mnuFilemain_->addSeparator();
    mnuFBar1_->setObjectName(QStringLiteral("mnuFBar1"));
    mnuExit_ = mnuFilemain_->addAction(texts::PreviewExitItem);
    mnuExit_->setObjectName(QStringLiteral("mnuExit"));

    connect(cmdExit_, &QToolButton::clicked, this, &QWidget::close);
    connect(mnuExit_, &QAction::triggered, this, &QWidget::close);
    connect(cmdPrint_, &QToolButton::clicked, this, &frmPreview::PrintRequested);
    connect(mnuPrint_, &QAction::triggered, this, &frmPreview::PrintRequested);

    resize(640, 480);
    PlaceControls();
}

bool frmPreview::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == area_ && event->type() == QEvent::Resize)
        PlaceControls();
    return QMainWindow::eventFilter(watched, event);
}

void frmPreview::PlaceControls()
{
    const int width = area_->width();
    picTBar_->setGeometry(0, 0, width, StripHeight);
    // A window lower than the strip leaves the picture no height at all.
    picView_->setGeometry(0, StripHeight, width, std::max(0, area_->height() - StripHeight));
}

} // namespace backplot
