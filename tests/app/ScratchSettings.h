#pragma once

#include "TestPaths.h"

#include <QString>

namespace backplot::test {

// Points the per-user settings store at a fresh folder for the life of the object, so a
// test starts from an empty store and never touches the user's own. Outside such a scope
// the whole test run uses one scratch folder of its own.
class ScratchSettings {
public:
    ScratchSettings();
    ~ScratchSettings();
    ScratchSettings(const ScratchSettings&) = delete;
    ScratchSettings& operator=(const ScratchSettings&) = delete;

    // The .ini files the program's two stores use inside the scratch folder.
    QString SettingsFile() const;
    QString RecentFilesFile() const;

private:
    ScratchDir dir_;
};

} // namespace backplot::test
