#pragma once

#include "ScratchFolder.h"

#include <QSettings>
#include <QStandardPaths>
#include <QString>

namespace backplot::bench {

// Points the per-user stores (settings, recent files, application data) at a fresh
// scratch folder, so a benchmark that runs the main window never touches the user's own.
// The paths are not put back: the folder is removed with the object, and nothing in the
// benchmark process uses the stores afterwards.
class ScratchSettings {
public:
    ScratchSettings()
    {
        QStandardPaths::setTestModeEnabled(true);
        const QString path = QString::fromStdString(folder_.Path().string());
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, path);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, path);
    }

private:
    ScratchFolder folder_;
};

} // namespace backplot::bench
