#include "WindowPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QWidget>
#include <algorithm>

namespace backplot {

namespace {

const QString Group = QStringLiteral("Window");
const QString GeometryKey = QStringLiteral("Geometry");
const QString MaximizedKey = QStringLiteral("Maximized");
const QString SourceWidthKey = QStringLiteral("SourceWidth");
const QString StepsHeightKey = QStringLiteral("StepsHeight");

int Positive(const QVariant& value)
{
    bool ok = false;
    const int number = value.toInt(&ok);
    return ok && number > 0 ? number : 0;
}

} // namespace

WindowPlacement WindowPlacement::Load(QSettings& store)
{
    WindowPlacement placement;
    store.beginGroup(Group);
    const QRect geometry = store.value(GeometryKey).toRect();
    if (geometry.isValid())
        placement.Normal = geometry;
    placement.Maximized = store.value(MaximizedKey).toBool();
    placement.SourceWidth = Positive(store.value(SourceWidthKey));
    placement.StepsHeight = Positive(store.value(StepsHeightKey));
    store.endGroup();
    return placement;
}

void WindowPlacement::Save(QSettings& store) const
{
    store.beginGroup(Group);
    if (Normal)
        store.setValue(GeometryKey, *Normal);
    store.setValue(MaximizedKey, Maximized);
    if (SourceWidth > 0)
        store.setValue(SourceWidthKey, SourceWidth);
    if (StepsHeight > 0)
        store.setValue(StepsHeightKey, StepsHeight);
    store.endGroup();
}

QRect WindowPlacement::Fit(const std::optional<QRect>& saved, const QList<QRect>& screens, const QRect& opening,
                           QSize preferred)
{
    if (saved && std::any_of(screens.begin(), screens.end(), [&](const QRect& s) { return s.contains(*saved); }))
        return *saved;
    const QSize room(opening.width() * 9 / 10, opening.height() * 9 / 10);
    const QSize size = (saved ? saved->size() : preferred).boundedTo(room);
    QRect placed(QPoint(0, 0), size);
    placed.moveCenter(opening.center());
    return placed;
}

void WindowPlacement::Restore(QWidget& window, QSize preferred) const
{
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens << screen->availableGeometry();
    const QScreen* opening = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
    if (!opening)
        return window.resize(preferred);
    window.setGeometry(Fit(Normal, screens, opening->availableGeometry(), preferred));
    if (Maximized)
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void WindowPlacement::Remember(const QWidget& window, const QWidget& sourceView, const QWidget& stepListing)
{
    const QRect normal = window.normalGeometry();
    if (normal.isValid())
        Normal = normal;
    Maximized = window.isMaximized();
    if (sourceView.isVisible())
        SourceWidth = sourceView.width();
    if (stepListing.isVisible())
        StepsHeight = stepListing.height();
}

} // namespace backplot
