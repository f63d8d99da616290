#include "Palette.h"
#include "TKZColorSelector.h"

#include <QMetaProperty>
#include <gtest/gtest.h>
#include <vector>

namespace backplot {
namespace {

// Names follow 0xBBGGRR: the low byte is red, so index 1 (0x800000) is a dark blue.
TEST(TKZColorSelector, ItemsAreThePaletteWithNamesAndSwatchesAndTheIndexSaysWhenItChanges)
{
    const struct { const char* name; QColor shown; } expected[] = {
        {"Black", {0, 0, 0}},           {"Dark Blue", {0, 0, 128}},      {"Dark Green", {0, 128, 0}},
        {"Dark Cyan", {0, 128, 128}},   {"Dark Red", {128, 0, 0}},       {"Dark Magenta", {128, 0, 128}},
        {"Dark Yellow", {128, 128, 0}}, {"Light Gray", {192, 192, 192}}, {"Dark Gray", {128, 128, 128}},
        {"Blue", {0, 0, 255}},          {"Green", {0, 255, 0}},          {"Cyan", {0, 255, 255}},
        {"Red", {255, 0, 0}},           {"Magenta", {255, 0, 255}},      {"Yellow", {255, 255, 0}},
        {"White", {255, 255, 255}},
    };
    TKZColorSelector selector;
    ASSERT_EQ(selector.count(), 16);
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(selector.itemText(i), expected[i].name) << i;
        EXPECT_EQ(TKZColorSelector::ToQColor(QBColor(i)), expected[i].shown) << i;
        const QImage swatch = selector.itemIcon(i).pixmap(selector.iconSize()).toImage();
        EXPECT_EQ(swatch.pixelColor(swatch.width() / 2, swatch.height() / 2), expected[i].shown) << i;
        EXPECT_EQ(swatch.pixelColor(0, 0), QColor(64, 64, 64)) << i;
    }
    EXPECT_EQ(TKZColorSelector::ColorName(16), "");
    EXPECT_EQ(TKZColorSelector::ColorName(-1), "");

    // The index as the user property, and the signal of each change.
    EXPECT_EQ(selector.Index(), 0);
    EXPECT_STREQ(selector.metaObject()->userProperty().name(), "Index");

    std::vector<int> changed;
    QObject::connect(&selector, &TKZColorSelector::Changed, [&](int index) { changed.push_back(index); });
    for (int i : {5, 15, 1, 0}) {
        selector.SetIndex(i);
        EXPECT_EQ(selector.Index(), i);
    }
    EXPECT_EQ(changed, (std::vector<int>{5, 15, 1, 0}));

    selector.SetIndex(0); // the same value raises nothing
    EXPECT_EQ(changed.size(), 4u);
    selector.setProperty("Index", 11);
    EXPECT_EQ(selector.Index(), 11);
    EXPECT_EQ(changed.size(), 5u);

    // Outside the palette: black, as QBColor gives for it.
    for (int outside : {16, -1, 999}) {
        selector.SetIndex(7);
        selector.SetIndex(outside);
        EXPECT_EQ(selector.Index(), 0) << outside;
    }
}

} // namespace
} // namespace backplot
