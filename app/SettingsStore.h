#pragma once

#include "Settings.h"
#include "TranslationState.h"
#include "UserDialogs.h"

#include <QSettings>
#include <QString>
#include <memory>
#include <string>

namespace backplot {

inline constexpr const char* SettingsOrganization = "Corvane Software Development Inc.";
inline constexpr const char* SettingsApplication = "TKZBackplot";
inline constexpr const char* SettingsGroup = "Settings";

// The user's preferences between runs: every value is a text under
// "Corvane Software Development Inc." / "TKZBackplot", group "Settings" (an .ini file on
// Linux and macOS, the registry on Windows). Reading converts each text to its type;
// writing stores each value as text ("-1"/"0" for flags).
class SettingsStore {
public:
    // The registry on Windows; elsewhere an .ini file (not a property list on macOS).
    static constexpr QSettings::Format UserFormat =
#ifdef Q_OS_WIN
        QSettings::NativeFormat;
#else
        QSettings::IniFormat;
#endif

    // The per-user store of this program (UserFormat, UserScope). Tests move it with
    // QSettings::setPath.
    SettingsStore();
    // The store in one .ini file, for tools and tests.
    explicit SettingsStore(const QString& iniPath);
    ~SettingsStore();
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;

    // Reads every value, falling back to its default when it is missing. A text that does
    // not convert to its type is reported through `dialogs` (one message naming the value
    // and its default) and the default is used. Tool colours: entries 0-4 are read, 5-9 are
    // set to zero whatever is stored. `programFolder` is the default of "Work Dir". Also
    // copies "Mill" and "AbsCenter" into `state`, so the translator works in the stored
    // machine type from the first file on.
    void LoadSettings(Settings& settings, ToolColorTable& toolColors, TranslationState& state,
                      UserDialogs& dialogs, const std::string& programFolder);

    // Writes every value in the order they are read, then "ToolColor"+n and
    // "ToolColorIndex"+n for n = 0..9; flushes the store.
    void SaveSettings(const Settings& settings, const ToolColorTable& toolColors);

    // Where the values are kept (the .ini file on Linux).
    QString FileName() const;
    // The store itself, for the groups of the window's own (where it was left, ...).
    QSettings& Store() { return *store_; }

private:
    std::unique_ptr<QSettings> store_;
};

} // namespace backplot
