#pragma once

#include <QComboBox>
#include <QIcon>
#include <QString>
#include <cstdint>

namespace backplot {

// A drop-down of the 16-colour palette: each item is a swatch and the colour's name,
// in palette order, so the item number is the palette index. Index is the value the
// dialogs read and write (the user property); Changed is raised whenever it changes,
// whether by the user or by SetIndex.
class TKZColorSelector : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(int Index READ Index WRITE SetIndex NOTIFY Changed USER true)
public:
    explicit TKZColorSelector(QWidget* parent = nullptr);

    // The selected palette index, 0..15.
    int Index() const;
    // Selects `index`; an index outside 0..15 selects 0 (black), as QBColor gives black
    // for it.
    void SetIndex(int index);

    // The name shown for palette index `index` ("Dark Blue" for 1); empty outside 0..15.
    static QString ColorName(int index);
    // A 0xBBGGRR value as a Qt colour.
    static QColor ToQColor(std::uint32_t bgr);
    // The swatch of one colour: a filled box with a dark outline, so white and the
    // light grey stand out on a white list.
    static QIcon Swatch(std::uint32_t bgr, QSize size);

signals:
    void Changed(int index);
};

} // namespace backplot
