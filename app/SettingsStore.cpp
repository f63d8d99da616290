#include "SettingsStore.h"

#include "NumberFormat.h"
#include "NumberText.h"
#include "RunTimeError.h"
#include "TranslationTexts.h"

#include <QSettings>
#include <QStringList>
#include <optional>
#include <string_view>
#include <variant>

namespace backplot {

namespace {

constexpr float LongestSlowTime = 1; // the last choice of the properties dialog's list

// Every value of the group "Settings" but the tool colours, in the order they are read
// and written. Each is read and written as the type of its member; its default is the
// member's initialiser in Settings.h ("Work Dir": the program's folder).
using SettingMember = std::variant<std::string Settings::*, bool Settings::*, std::int16_t Settings::*,
                                   std::int32_t Settings::*, float Settings::*>;
struct SettingKey {
    const char* name;
    SettingMember member;
};
constexpr SettingKey SettingKeys[] = {
    {"Axis Color", &Settings::AxisColor},
    {"Axis SelectedColor", &Settings::AxisSelectedColor},
    {"Axis Line", &Settings::AxisLine},
    {"Show Axis", &Settings::ShowAxis},
    {"Show Rapid", &Settings::ShowRapid},
    {"Show Blips", &Settings::ShowBlips},
    {"Slow Time", &Settings::SlowTime},
    {"File Ext", &Settings::FileExt},
    {"Work Dir", &Settings::WorkDir},
    {"Backcolor", &Settings::Backcolor},
    {"BackcolorSelected", &Settings::BackcolorSelected},
    {"Cross Hairs", &Settings::CrossHairs},
    {"Mill", &Settings::Mill},
    {"AbsCenter", &Settings::AbsCenter},
    {"AutoDraw", &Settings::AutoDraw},
    {"ToolColor", &Settings::ToolColor},
    {"DefaultColor", &Settings::DefaultColor},
    {"DefaultSeletedColor", &Settings::DefaultSeletedColor},
};

// The tool colour table follows: for each entry n, these two names with n after them.
constexpr const char* ToolColorKey = "ToolColor";
constexpr const char* ToolColorIndexKey = "ToolColorIndex";
// Only the first five tool colours come back; all ten are written, and the rest always
// start from zero.
constexpr int LoadedToolColors = 5;

bool EqualsNoCase(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
        if (lower(a[i]) != lower(b[i]))
            return false;
    }
    return true;
}

// Each value as the text it is stored as: flags as "-1" and "0".
std::string StoredText(const std::string& value) { return value; }
std::string StoredText(bool value) { return value ? "-1" : "0"; }
std::string StoredText(std::int16_t value) { return std::to_string(value); }
std::string StoredText(std::int32_t value) { return std::to_string(value); }
std::string StoredText(float value) { return FloatText(value); }

// Reads the values of one group, reporting texts that do not convert.
class ValueReader {
public:
    ValueReader(QSettings& store, UserDialogs& dialogs) : store_(store), dialogs_(dialogs) {}

    void Read(const char* name, std::string& field, const std::string& defaultValue)
    {
        const auto stored = Stored(name);
        field = stored ? *stored : defaultValue;
    }

    void Read(const char* name, bool& field, bool defaultValue)
    {
        field = defaultValue;
        const auto stored = Stored(name);
        if (!stored)
            return;
        const std::string_view text = TrimmedBlanks(*stored);
        if (EqualsNoCase(text, "True"))
            field = true;
        else if (EqualsNoCase(text, "False"))
            field = false;
        else if (const auto number = ConvertedValue(text))
            field = *number != 0;
        else
            Complain(name, *stored, "which is neither True nor False", defaultValue ? "True" : "False");
    }

    void Read(const char* name, std::int16_t& field, std::int16_t defaultValue)
    {
        Number(name, field, defaultValue, [](double v) { return RoundToInt16(v); });
    }

    void Read(const char* name, std::int32_t& field, std::int32_t defaultValue)
    {
        Number(name, field, defaultValue, [](double v) { return RoundToInt32(v); });
    }

    // The one float, "Slow Time", must lie in (0, LongestSlowTime]: slow motion waits
    // without letting events through, so a delay the properties dialog does not offer
    // could hold the window for good. A value outside counts as out of range.
    void Read(const char* name, float& field, float defaultValue)
    {
        Number(name, field, defaultValue, [](double v) {
            const float value = ToSingle(v);
            if (!(value > 0 && value <= LongestSlowTime))
                throw RunTimeError("Overflow");
            return value;
        });
    }

private:
    template <typename T, typename Narrow>
    void Number(const char* name, T& field, T defaultValue, Narrow narrow)
    {
        field = defaultValue;
        const auto stored = Stored(name);
        if (!stored)
            return;
        const auto number = ConvertedValue(*stored);
        if (!number) {
            Complain(name, *stored, "which is not a number", StoredText(defaultValue));
            return;
        }
        try {
            field = narrow(*number);
        } catch (const RunTimeError&) {
            Complain(name, *stored, "which is out of range", StoredText(defaultValue));
        }
    }

    std::optional<std::string> Stored(const char* name) const
    {
        const QString key = QString::fromLatin1(name);
        if (!store_.contains(key))
            return std::nullopt;
        const QVariant value = store_.value(key);
        // An .ini text holding commas reads back as a list; it was one text when written.
        if (value.typeId() == QMetaType::QStringList)
            return value.toStringList().join(QLatin1Char(',')).toStdString();
        return value.toString().toStdString();
    }

    void Complain(const char* name, const std::string& stored, const char* why,
                  const std::string& defaultText)
    {
        dialogs_.Message("The setting \"" + std::string(name) + "\" holds \"" + stored + "\", " + why +
                             ". Its default " + defaultText + " is used.",
                         texts::MessageTitle, MsgIcon::Exclamation, MsgButtons::Ok);
    }

    QSettings& store_;
    UserDialogs& dialogs_;
};

} // namespace

SettingsStore::SettingsStore()
    : store_(std::make_unique<QSettings>(UserFormat, QSettings::UserScope,
                                         SettingsOrganization, SettingsApplication))
{
}

SettingsStore::SettingsStore(const QString& iniPath)
    : store_(std::make_unique<QSettings>(iniPath, QSettings::IniFormat))
{
}

SettingsStore::~SettingsStore() = default;

QString SettingsStore::FileName() const { return store_->fileName(); }

void SettingsStore::LoadSettings(Settings& settings, ToolColorTable& toolColors, TranslationState& state,
                                 UserDialogs& dialogs, const std::string& programFolder)
{
    Settings defaults;
    defaults.WorkDir = programFolder;
    const ToolColorTable defaultColors;
    store_->sync();
    store_->beginGroup(SettingsGroup);
    ValueReader read(*store_, dialogs);

    for (const SettingKey& key : SettingKeys)
        std::visit([&](auto member) { read.Read(key.name, settings.*member, defaults.*member); }, key.member);

    for (int n = 0; n < ToolColorTable::Size; ++n) {
        ToolColor& entry = toolColors[n];
        if (n >= LoadedToolColors) {
            entry = ToolColor{};
            continue;
        }
        const std::string digit = std::to_string(n);
        read.Read((ToolColorIndexKey + digit).c_str(), entry.ColorIndex, defaultColors[n].ColorIndex);
        std::int32_t color = 0;
        read.Read((ToolColorKey + digit).c_str(), color, static_cast<std::int32_t>(defaultColors[n].Color));
        entry.Color = static_cast<std::uint32_t>(color);
    }
    store_->endGroup();

    state.Mill = settings.Mill;
    state.AbsCenter = settings.AbsCenter;
}

void SettingsStore::SaveSettings(const Settings& settings, const ToolColorTable& toolColors)
{
    QSettings& store = *store_;
    const auto write = [&store](const std::string& name, const std::string& text) {
        store.setValue(QString::fromStdString(name), QString::fromStdString(text));
    };

    store.beginGroup(SettingsGroup);
    for (const SettingKey& key : SettingKeys)
        std::visit([&](auto member) { write(key.name, StoredText(settings.*member)); }, key.member);
    for (int n = 0; n < ToolColorTable::Size; ++n) {
        const std::string digit = std::to_string(n);
        write(ToolColorKey + digit, StoredText(static_cast<std::int32_t>(toolColors[n].Color)));
        write(ToolColorIndexKey + digit, StoredText(toolColors[n].ColorIndex));
    }
    store.endGroup();
    store.sync();
}

} // namespace backplot
