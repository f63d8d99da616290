#pragma once

#include "CanvasWidget.h"
#include "ScratchSettings.h"
#include "ScriptedDialogs.h"
#include "Widgets.h"
#include "frmBackplot.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QSettings>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace backplot::test {

// Four records: a rapid from the origin to (10, -10), a cut to (90, -10), a dog-leg rapid
// to (110, -20), and the rapid of M30 that moves nothing.
//
// Stored (Y negated) the ends span X 10..110, Y 10..20. On a 780 x 390 canvas (aspect 2):
//   fit by width: FitSpan = 100 / 2 = 50, top = 15 - 25 = -10, view Y -10..40;
//   zoom out by 0.3 * 50 = 15: view X -5..125, Y -25..55;
//   fit by width again: FitSpan = 130 / 2 = 65, left = -5, top = 15 - 32.5 = -17.5.
// A plot unit is 6 pixels: px = 6 x + 30, py = 6 y + 105. The origin is pixel (30, 105),
// the cut runs along row 165 over columns 90..570, the last rapid goes diagonally from
// (570, 165) to (630, 225), then along row 225 to (690, 225).
inline constexpr const char* Part = "G00 X10. Y-10.\r\nG01 X90.\r\nG00 X110. Y-20.\r\nM30\r\n";

// A main window on a scratch settings store, with scripted dialogs.
class WindowFixture : public ::testing::Test {
protected:
    // Values put in the two stores before the window starts.
    void Store(const char* name, const QString& text)
    {
        QSettings(scope.SettingsFile(), QSettings::IniFormat).setValue(QStringLiteral("Settings/") + name, text);
    }
    void StoreRecent(int index, const QString& text)
    {
        QSettings(scope.RecentFilesFile(), QSettings::IniFormat)
            .setValue(QStringLiteral("RecentFiles/RecentFile%1").arg(index), text);
    }
    std::vector<std::string> StoredRecent() const
    {
        QSettings stored(scope.RecentFilesFile(), QSettings::IniFormat);
        std::vector<std::string> entries;
        for (int i = 1; i <= 4; ++i)
            entries.push_back(stored.value(QStringLiteral("RecentFiles/RecentFile%1").arg(i), "Not Used")
                                  .toString()
                                  .toStdString());
        return entries;
    }
    frmBackplot& Start()
    {
        window.reset(); // one window at a time
        window = std::make_unique<frmBackplot>(&dialogs);
        return *window;
    }
    // The window, shown, with a canvas of exactly 780 x 390.
    void StartShown()
    {
        Start().show();
        QApplication::processEvents();
        const QSize frame = window->size() - window->canvas().size();
        window->resize(780 + frame.width(), 390 + frame.height());
        QApplication::processEvents();
        ASSERT_EQ(Picture().size(), QSize(780, 390));
    }
    // The shown window with Part opened, and slow motion at a thousandth of a second a record.
    std::string StartWithPart()
    {
        StartShown();
        const std::string path = programs.Write("part.nc", Part);
        OpenCommand(path);
        EXPECT_EQ(window->plotter().RecordTotal, 4);
        window->settings().SlowTime = 0.001f;
        return path;
    }
    // The toolbar's Open, the dialog answered with `path` or cancelled.
    void OpenCommand(const std::optional<std::string>& path)
    {
        dialogs.OpenAnswers.push_back(path);
        Button(ToolbarKey::Open)->trigger();
    }
    QAction* Action(const char* name) const
    {
        auto* action = window->findChild<QAction*>(QString::fromLatin1(name));
        EXPECT_NE(action, nullptr) << name;
        return action;
    }
    QAction* Button(ToolbarKey key) const { return window->button(key); }
    QWidget* Canvas() const { return &window->canvas(); }
    QImage Picture() const { return window->canvas().Picture(); }
    // The view's window edges (stored coordinates), to `within`.
    void ExpectView(float x1, float y1, float x2, float y2, float within = 1e-4f) const
    {
        const ViewTransform& view = window->plotter().View;
        EXPECT_NEAR(view.ViewX1, x1, within);
        EXPECT_NEAR(view.ViewY1, y1, within);
        EXPECT_NEAR(view.ViewX2, x2, within);
        EXPECT_NEAR(view.ViewY2, y2, within);
    }
    void Type(char c) { QTest::keyClicks(Canvas(), QString(QChar(c))); }
    // A key the user presses while a pass lets events run.
    void PressDuringThePass(Qt::Key key, const QString& text)
    {
        QCoreApplication::postEvent(Canvas(), new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
    }

    ScratchSettings scope;
    ScriptedDialogs dialogs;
    ScratchDir programs;
    std::unique_ptr<frmBackplot> window;
};

} // namespace backplot::test
