#pragma once

#include "TestPaths.h"

#include <QSettings>
#include <QString>

namespace backplot::test {

// Points the per-user settings stores at a fresh folder for the life of the object, then
// back at RunFolder, the whole run's own scratch folder (set up by main), never at the user's.
class ScratchSettings {
public:
    ScratchSettings() { UseFolder(dir_.Path()); }
    ~ScratchSettings() { UseFolder(RunFolder); }
    ScratchSettings(const ScratchSettings&) = delete;
    ScratchSettings& operator=(const ScratchSettings&) = delete;

    // The .ini files of the program's two stores.
    QString SettingsFile() const { return File("TKZBackplot.ini"); }
    QString RecentFilesFile() const { return File("TKZBackPlot.ini"); }

    static void UseFolder(const std::filesystem::path& folder)
    {
        const QString path = QString::fromStdString(folder.string());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, path);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, path);
    }
    static inline std::filesystem::path RunFolder;

private:
    QString File(const char* name) const
    {
        return QString::fromStdString(dir_.Path().string()) + "/Corvane Software Development Inc./" + name;
    }

    ScratchDir dir_;
};

} // namespace backplot::test
