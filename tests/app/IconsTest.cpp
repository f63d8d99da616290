#include "Icons.h"

#include <QImage>
#include <vector>
#include <gtest/gtest.h>

namespace backplot {
namespace {

QImage Pixels(const QPixmap& pixmap) { return pixmap.toImage().convertToFormat(QImage::Format_ARGB32); }

// Within one step of rounding on each channel.
::testing::AssertionResult Near(const QColor& actual, const QColor& expected)
{
    const bool near = std::abs(actual.red() - expected.red()) <= 1 && std::abs(actual.green() - expected.green()) <= 1 &&
                      std::abs(actual.blue() - expected.blue()) <= 1 && std::abs(actual.alpha() - expected.alpha()) <= 1;
    if (near)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << actual.name(QColor::HexArgb).toStdString() << " instead of "
                                         << expected.name(QColor::HexArgb).toStdString();
}

// On a screen of twice the density every toolbar picture comes painted at twice the
// pixels, not a small one blown up.
TEST(Icons, ToolbarPicturesHaveSharpPixmapsAtTwiceTheDensity)
{
    ASSERT_EQ(Icons::ToolbarKeys().size(), 20);
    for (const QString& key : Icons::ToolbarKeys()) {
        SCOPED_TRACE(key.toStdString());
        const QIcon icon = Icons::ToolbarIcon(key);
        struct Row {
            int logical;
            qreal ratio;
            int painted;
        };
        for (const Row row : {Row{16, 1, 16}, Row{16, 2, 32}, Row{32, 1, 32}, Row{32, 2, 64}}) {
            const QPixmap shown = icon.pixmap(QSize(row.logical, row.logical), row.ratio);
            EXPECT_EQ(shown.size(), QSize(row.painted, row.painted)) << row.logical << "@" << row.ratio;
            EXPECT_EQ(shown.devicePixelRatio(), row.ratio);
            const QImage painted = Pixels(Icons::ToolbarPixmap(key, row.painted));
            EXPECT_EQ(Pixels(shown), painted) << row.logical << "@" << row.ratio;
            // Drawn, not blank: at least a tenth of it fully opaque.
            int opaque = 0;
            for (int y = 0; y < painted.height(); ++y)
                for (int x = 0; x < painted.width(); ++x)
                    opaque += qAlpha(painted.pixel(x, y)) == 255;
            EXPECT_GE(opaque, row.painted * row.painted / 10) << row.painted;
        }
    }
    EXPECT_TRUE(Icons::ToolbarIcon(QStringLiteral("NoSuchKey")).isNull());
}

TEST(Icons, ApplicationIconIsOurSvgAtEverySizeAndDensity)
{
    // Points of desktop/tarvo-backplot.svg on its 64-unit grid, read at 64 pixels.
    const QImage logo = Pixels(Icons::Logo(64));
    EXPECT_EQ(logo.pixelColor(1, 1).alpha(), 0);                      // the margin around the plate
    EXPECT_TRUE(Near(logo.pixelColor(17, 32), QColor(0x7c, 0xd8, 0xff))); // the contour's left side
    EXPECT_TRUE(Near(logo.pixelColor(54, 46), QColor(0xff, 0xd8, 0x4a))); // the cutter
    EXPECT_TRUE(Near(logo.pixelColor(50, 46), QColor(0x8a, 0x5f, 0x00))); // its centre
    EXPECT_TRUE(Near(logo.pixelColor(9, 54), QColor(0xff, 0x5a, 0x4f)));  // a dot of the rapid move
    const QColor plate = logo.pixelColor(32, 8);
    EXPECT_EQ(plate.alpha(), 255);
    EXPECT_GT(plate.blue(), 2 * plate.red());

    const QIcon icon = Icons::AppIcon();
    struct Row {
        int size;
        std::vector<qreal> ratios;
    };
    for (const Row& row : {Row{16, {1, 2}}, Row{32, {1, 2}}, Row{48, {1, 2}}, Row{128, {1, 2}}, Row{256, {1}}}) {
        const int size = row.size;
        for (qreal ratio : row.ratios) {
            const int painted = qRound(size * ratio);
            const QPixmap shown = icon.pixmap(QSize(size, size), ratio);
            EXPECT_EQ(shown.size(), QSize(painted, painted)) << size << "@" << ratio;
            EXPECT_EQ(Pixels(shown), Pixels(Icons::Logo(painted))) << size << "@" << ratio;
        }
    }
}

} // namespace
} // namespace backplot
