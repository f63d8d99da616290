#pragma once

// Helpers of the widget tests: modal dialogs answered, children found, pictures compared.

#include <QApplication>
#include <QImage>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <ostream>

// Readable failure messages for Qt strings.
inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }

namespace backplot::test {

// Runs `handle` on the next modal dialog once it is up; `handle` closes it.
inline void OnNextModal(std::function<void(QWidget*)> handle, int attempt = 0)
{
    QTimer::singleShot(attempt == 0 ? 0 : 10, [handle, attempt] {
        if (QWidget* modal = QApplication::activeModalWidget())
            handle(modal);
        else if (attempt < 200)
            OnNextModal(handle, attempt + 1);
    });
}

// The child of that name; a missing one fails the test.
template <class T = QWidget>
T* Child(const QObject& parent, const char* name)
{
    T* child = parent.findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(child, nullptr) << name;
    return child;
}

inline int CountOf(const QImage& picture, const QColor& colour)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, y) == colour;
    return count;
}

// The pixels in which two pictures differ; every pixel when their sizes differ.
inline int Differences(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return std::max(a.width() * a.height(), b.width() * b.height());
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            count += a.pixel(x, y) != b.pixel(x, y);
    return count;
}

} // namespace backplot::test
