#pragma once

#include "ScratchSettings.h"
#include "ScriptedDialogs.h"
#include "frmBackplot.h"

#include <QAction>
#include <QSettings>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

// Readable failure messages for Qt strings.
inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }

namespace backplot::test {

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
        window = std::make_unique<frmBackplot>(&dialogs);
        return *window;
    }
    QAction* Action(const char* name) const
    {
        auto* action = window->findChild<QAction*>(QString::fromLatin1(name));
        EXPECT_NE(action, nullptr) << name;
        return action;
    }
    QAction* Button(const QString& key) const { return window->button(key); }

    ScratchSettings scope;
    ScriptedDialogs dialogs;
    std::unique_ptr<frmBackplot> window;
};

} // namespace backplot::test
