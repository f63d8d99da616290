#include "TKZColorSelector.h"

#include "Palette.h"

#include <QPainter>
#include <QPixmap>
#include <array>

namespace backplot {

namespace {

// Named by what 0xBBGGRR shows: the low byte is red, so 0x800000 is a dark blue.
constexpr std::array<const char*, 16> ColorNames{
    "Black",     "Dark Blue",    "Dark Green", "Dark Cyan", "Dark Red", "Dark Magenta", "Dark Yellow", "Light Gray",
    "Dark Gray", "Blue",         "Green",      "Cyan",      "Red",      "Magenta",      "Yellow",      "White",
};

constexpr QSize SwatchSize(28, 14);

} // namespace

TKZColorSelector::TKZColorSelector(QWidget* parent) : QComboBox(parent)
{
    setIconSize(SwatchSize);
    for (int i = 0; i < static_cast<int>(PaletteColors.size()); ++i)
        addItem(Swatch(QBColor(i), SwatchSize), ColorName(i));
    setCurrentIndex(0);
    setMaxVisibleItems(static_cast<int>(PaletteColors.size()));
    connect(this, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0)
            emit Changed(index);
    });
}

int TKZColorSelector::Index() const { return currentIndex() < 0 ? 0 : currentIndex(); }

void TKZColorSelector::SetIndex(int index)
{
    setCurrentIndex(index >= 0 && index < count() ? index : 0);
}

QString TKZColorSelector::ColorName(int index)
{
    if (index < 0 || index >= static_cast<int>(ColorNames.size()))
        return {};
    return QString::fromLatin1(ColorNames[static_cast<std::size_t>(index)]);
}

QColor TKZColorSelector::ToQColor(std::uint32_t bgr)
{
    return QColor(static_cast<int>(bgr & 0xFF), static_cast<int>((bgr >> 8) & 0xFF),
                  static_cast<int>((bgr >> 16) & 0xFF));
}

QIcon TKZColorSelector::Swatch(std::uint32_t bgr, QSize size)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(QColor(64, 64, 64));
    painter.setBrush(ToQColor(bgr));
    painter.drawRect(0, 0, size.width() - 1, size.height() - 1);
    painter.end();
    return QIcon(pixmap);
}

} // namespace backplot
