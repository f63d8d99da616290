#pragma once

#include <QString>
#include <memory>
#include <string>

class QSettings;

namespace backplot {

inline constexpr const char* RecentFilesApplication = "TKZBackPlot"; // capital P, unlike the settings
inline constexpr const char* RecentFilesGroup = "RecentFiles";
inline constexpr const char* RecentFileUnused = "Not Used";

// The last four program files opened through the open dialog, newest first, kept as
// "RecentFile1".."RecentFile4" in the group "RecentFiles" of the per-user store
// "Corvane Software Development Inc." / "TKZBackPlot". A missing value reads "Not Used".
class RecentFiles {
public:
    static constexpr int Count = 4;

    // The per-user store (SettingsStore::UserFormat, UserScope); tests move it with
    // QSettings::setPath.
    RecentFiles();
    // The list in one .ini file.
    explicit RecentFiles(const QString& iniPath);
    ~RecentFiles();
    RecentFiles(const RecentFiles&) = delete;
    RecentFiles& operator=(const RecentFiles&) = delete;

    // Entry `index` (1 = newest .. 4), "Not Used" when the store has none.
    std::string Entry(int index) const;

    // An entry is used unless its first 8 characters are "Not Used" (compared exactly,
    // case included).
    static bool IsUsed(const std::string& entry);

    // Moves the used entries 1-3 one place down (the old 4th is lost) and, unless `path`
    // is empty, stores it as entry 1. No duplicate check: a file opened twice is listed twice.
    void AddRecentFile(const std::string& path);

    QString FileName() const;

private:
    std::unique_ptr<QSettings> store_;
};

} // namespace backplot
