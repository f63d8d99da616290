#include "Icons.h"

#include <QImage>
#include <gtest/gtest.h>

namespace backplot {
namespace {

QImage Picture(const char* key, int size)
{
    return Icons::ToolbarPixmap(QString::fromLatin1(key), size).toImage().convertToFormat(QImage::Format_ARGB32);
}

int PartlyTransparentPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = qAlpha(image.pixel(x, y));
            count += alpha != 0 && alpha != 255;
        }
    return count;
}

bool Transparent(const QImage& image, int x, int y) { return qAlpha(image.pixel(x, y)) == 0; }

TEST(Icons, EveryButtonHasItsOwnPictureAtBothSizes)
{
    const QStringList keys = Icons::ToolbarKeys();
    EXPECT_EQ(keys.size(), 20);
    std::vector<QImage> seen;
    for (const QString& key : keys) {
        SCOPED_TRACE(key.toStdString());
        const QIcon icon = Icons::ToolbarIcon(key);
        ASSERT_FALSE(icon.isNull());
        EXPECT_TRUE(icon.availableSizes().contains(QSize(16, 16)));
        EXPECT_TRUE(icon.availableSizes().contains(QSize(32, 32)));
        for (int size : {16, 32}) {
            const QImage image = Picture(key.toLatin1().constData(), size);
            EXPECT_EQ(image.size(), QSize(size, size));
            int opaque = 0;
            for (int y = 0; y < size; ++y)
                for (int x = 0; x < size; ++x)
                    opaque += qAlpha(image.pixel(x, y)) == 255;
            // Something a user can see: at least a tenth of the square.
            EXPECT_GE(opaque, size * size / 10);
        }
        const QImage small = Picture(key.toLatin1().constData(), 16);
        for (const QImage& other : seen)
            EXPECT_NE(small, other);
        seen.push_back(small);
    }
    EXPECT_TRUE(Icons::ToolbarIcon(QStringLiteral("NoSuchButton")).isNull());
}

TEST(Icons, StopIsARedSquareWithSharpEdges)
{
    const QColor red(0xd0, 0x20, 0x20);
    const QColor edge(0x80, 0x10, 0x10);
    const QImage small = Picture("Stop", 16);
    EXPECT_EQ(small.pixelColor(8, 8), red);
    EXPECT_EQ(small.pixelColor(3, 3), edge);
    EXPECT_EQ(small.pixelColor(12, 12), edge);
    EXPECT_TRUE(Transparent(small, 2, 2));
    EXPECT_TRUE(Transparent(small, 13, 13));
    EXPECT_EQ(PartlyTransparentPixels(small), 0);

    const QImage large = Picture("Stop", 32);
    EXPECT_EQ(large.pixelColor(16, 16), red);
    EXPECT_EQ(large.pixelColor(6, 6), edge);
    EXPECT_EQ(large.pixelColor(7, 7), edge);
    EXPECT_EQ(large.pixelColor(8, 8), red);
    EXPECT_TRUE(Transparent(large, 5, 5));
    EXPECT_EQ(PartlyTransparentPixels(large), 0);
}

TEST(Icons, PauseIsTwoBarsWithAGap)
{
    const QColor blue(0x1f, 0x4e, 0x9e);
    const QImage small = Picture("Pause", 16);
    for (int y : {3, 8, 12}) {
        EXPECT_EQ(small.pixelColor(4, y), blue);
        EXPECT_EQ(small.pixelColor(6, y), blue);
        EXPECT_TRUE(Transparent(small, 7, y));
        EXPECT_TRUE(Transparent(small, 8, y));
        EXPECT_EQ(small.pixelColor(9, y), blue);
        EXPECT_EQ(small.pixelColor(11, y), blue);
    }
    EXPECT_TRUE(Transparent(small, 5, 2));
    EXPECT_TRUE(Transparent(small, 5, 13));
    const QImage large = Picture("Pause", 32);
    EXPECT_TRUE(Transparent(large, 14, 16));
    EXPECT_TRUE(Transparent(large, 17, 16));
    EXPECT_EQ(large.pixelColor(13, 16), blue);
    EXPECT_EQ(large.pixelColor(18, 16), blue);
    EXPECT_EQ(PartlyTransparentPixels(small), 0);
    EXPECT_EQ(PartlyTransparentPixels(large), 0);
}

TEST(Icons, ZoomInHasAPlusZoomOutAMinus)
{
    const QColor blue(0x1f, 0x4e, 0x9e);
    const QImage in = Picture("ZIn", 16);
    const QImage out = Picture("ZOut", 16);
    // The bar across the lens, in both.
    for (int x = 4; x <= 8; ++x) {
        EXPECT_EQ(in.pixelColor(x, 6), blue) << x;
        EXPECT_EQ(out.pixelColor(x, 6), blue) << x;
    }
    // The upright stroke only in the plus.
    for (int y : {4, 5, 7, 8}) {
        EXPECT_EQ(in.pixelColor(6, y), blue) << y;
        EXPECT_NE(out.pixelColor(6, y), blue) << y;
    }
    // At twice the size each stroke is two pixels wide.
    const QImage in32 = Picture("ZIn", 32);
    EXPECT_EQ(in32.pixelColor(12, 8), blue);
    EXPECT_EQ(in32.pixelColor(13, 8), blue);
    EXPECT_NE(in32.pixelColor(14, 8), blue);
}

TEST(Icons, LogoFillsItsSquare)
{
    for (int size : {32, 64, 128}) {
        const QImage logo = Icons::Logo(size).toImage();
        EXPECT_EQ(logo.size(), QSize(size, size));
        // Opaque plate in the middle, clear rounded corners.
        EXPECT_EQ(qAlpha(logo.pixel(size / 2, size / 2)), 255);
        EXPECT_EQ(qAlpha(logo.pixel(0, 0)), 0);
    }
}

} // namespace
} // namespace backplot
