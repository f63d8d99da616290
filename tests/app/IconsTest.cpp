#include "Icons.h"

#include <QDir>
#include <QImage>
#include <QMap>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace backplot {
namespace {

QImage Pixels(const QIcon& icon, int size) { return icon.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32); }

// Drawn, not blank or missing: the asked size, at least a tenth of it fully opaque.
void ExpectDrawn(const QImage& image, int size)
{
    EXPECT_EQ(image.size(), QSize(size, size));
    int opaque = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            opaque += qAlpha(image.pixel(x, y)) == 255;
    EXPECT_GE(opaque, size * size / 10) << "at " << size;
}

TEST(Icons, EveryPictureIsDrawnAt16And32PixelsAndADesktopThemeReplacesTheStandardOnes)
{
    QMap<QByteArray, QString> seen; // each button its own picture, not a neighbour's file
    QMap<ToolbarKey, QImage> ours;
    for (ToolbarKey key : AllToolbarKeys()) {
        const QString name = QString::fromLatin1(NameOf(key));
        SCOPED_TRACE(name.toStdString());
        for (int size : {16, 32}) {
            const QImage image = Pixels(Icons::ToolbarIcon(key), size);
            ExpectDrawn(image, size);
            const QByteArray bytes(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
            EXPECT_FALSE(seen.contains(bytes)) << "same as " << seen.value(bytes).toStdString();
            seen.insert(bytes, name);
            if (size == 16)
                ours.insert(key, image);
        }
    }
    for (int size : {16, 32, 256}) {
        SCOPED_TRACE("logo");
        ExpectDrawn(Pixels(Icons::AppIcon(), size), size);
    }

    // A desktop theme that has a standard icon shows it on the button that does that; where
    // the theme lacks one, or the button has no standard name, our own picture stays.

    // "application-exit" left out: the Exit button keeps ours.
    const QStringList names{"document-open", "document-print", "document-print-preview", "zoom-fit-best", "zoom-in",
                            "zoom-out", "view-refresh", "media-playback-pause", "media-playback-stop"};
    QTemporaryDir home;
    ASSERT_TRUE(QDir(home.path()).mkpath(QStringLiteral("plain/16x16/actions")));
    QFile index(home.filePath(QStringLiteral("plain/index.theme")));
    ASSERT_TRUE(index.open(QIODevice::WriteOnly) &&
                index.write("[Icon Theme]\nDirectories=16x16/actions\n[16x16/actions]\nSize=16\nType=Fixed\n") > 0);
    index.close();
    QMap<QRgb, QString> byColour;
    for (int i = 0; i < names.size(); ++i) {
        QImage solid(16, 16, QImage::Format_ARGB32);
        solid.fill(qRgb(20 * i, 255 - 20 * i, 128));
        byColour.insert(solid.pixel(0, 0), names[i]);
        ASSERT_TRUE(solid.save(home.filePath(QStringLiteral("plain/16x16/actions/%1.png").arg(names[i]))));
    }
    const QStringList searchPaths = QIcon::themeSearchPaths();
    const QString themeName = QIcon::themeName();
    QIcon::setThemeSearchPaths({home.path()});
    QIcon::setThemeName(QStringLiteral("plain"));

    QStringList shown;
    for (ToolbarKey key : AllToolbarKeys()) {
        const QImage image = Pixels(Icons::ToolbarIcon(key), 16);
        if (image == ours.value(key))
            continue;
        shown << QString::fromLatin1(NameOf(key)) + QLatin1Char(':') +
                     byColour.value(image.pixel(8, 8), QStringLiteral("?"));
    }
    QIcon::setThemeName(themeName);
    QIcon::setThemeSearchPaths(searchPaths);
    EXPECT_EQ(shown.join(QLatin1Char(' ')),
              "Open:document-open Print:document-print Preview:document-print-preview ZoomExtends:zoom-fit-best "
              "ZIn:zoom-in ZOut:zoom-out Refresh:view-refresh Pause:media-playback-pause Stop:media-playback-stop");
}

} // namespace
} // namespace backplot
