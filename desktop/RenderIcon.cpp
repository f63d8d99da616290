// Renders the application icon's SVG into the PNG sizes of the desktop's hicolor theme:
//   backplot-render-icon ICON.svg OUTDIR SIZE...
// writes OUTDIR/SIZExSIZE/apps/<name of ICON>.png for each size.
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char** argv)
{
    if (argc < 4) {
        std::fprintf(stderr, "usage: backplot-render-icon ICON.svg OUTDIR SIZE...\n");
        return 2;
    }
    // Drawing needs no screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);

    const QString svgPath = QString::fromLocal8Bit(argv[1]);
    QSvgRenderer svg(svgPath);
    if (!svg.isValid()) {
        std::fprintf(stderr, "backplot-render-icon: cannot read %s\n", argv[1]);
        return 1;
    }
    const QString name = QFileInfo(svgPath).completeBaseName();
    for (int i = 3; i < argc; ++i) {
        bool ok = false;
        const int size = QString::fromLocal8Bit(argv[i]).toInt(&ok);
        if (!ok || size <= 0) {
            std::fprintf(stderr, "backplot-render-icon: '%s' is not a size\n", argv[i]);
            return 2;
        }
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        svg.render(&painter, QRectF(0, 0, size, size));
        painter.end();
        const QString folder = QStringLiteral("%1/%2x%2/apps").arg(QString::fromLocal8Bit(argv[2])).arg(size);
        const QString file = folder + QLatin1Char('/') + name + QStringLiteral(".png");
        if (!QDir().mkpath(folder) || !image.save(file, "PNG")) {
            std::fprintf(stderr, "backplot-render-icon: cannot write %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
