#include "SettingsStore.h"

#include "NumberFormat.h"
#include "NumberText.h"
#include "RunTimeError.h"
#include "TranslationTexts.h"

#include <QSettings>
#include <QStringList>
#include <optional>
#include <string_view>

namespace backplot {

namespace {

constexpr float LongestSlowTime = 1; // the last choice of the properties dialog's list

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

std::string FlagText(bool value) { return value ? "-1" : "0"; }

// Reads the values of one group, reporting texts that do not convert.
class ValueReader {
public:
    ValueReader(QSettings& store, UserDialogs& dialogs) : store_(store), dialogs_(dialogs) {}

    void Text(const char* name, std::string& field, const std::string& defaultValue)
    {
        const auto stored = Stored(name);
        field = stored ? *stored : defaultValue;
    }

    void Flag(const char* name, bool& field, bool defaultValue)
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

    void Int16(const char* name, std::int16_t& field, std::int16_t defaultValue)
    {
        Number(name, field, defaultValue, [](double v) { return RoundToInt16(v); }, std::to_string(defaultValue));
    }

    void Int32(const char* name, std::int32_t& field, std::int32_t defaultValue)
    {
        Number(name, field, defaultValue, [](double v) { return RoundToInt32(v); }, std::to_string(defaultValue));
    }

    // A float that must lie in (0, most]: a value outside counts as out of range.
    void PositiveSingle(const char* name, float& field, float defaultValue, float most)
    {
        Number(
            name, field, defaultValue,
            [most](double v) {
                const float value = ToSingle(v);
                if (!(value > 0 && value <= most))
                    throw RunTimeError("Overflow");
                return value;
            },
            FloatText(defaultValue));
    }

private:
    template <typename T, typename Narrow>
    void Number(const char* name, T& field, T defaultValue, Narrow narrow, const std::string& defaultText)
    {
        field = defaultValue;
        const auto stored = Stored(name);
        if (!stored)
            return;
        const auto number = ConvertedValue(*stored);
        if (!number) {
            Complain(name, *stored, "which is not a number", defaultText);
            return;
        }
        try {
            field = narrow(*number);
        } catch (const RunTimeError&) {
            Complain(name, *stored, "which is out of range", defaultText);
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

QString Key(const char* name) { return QString::fromLatin1(name); }
QString Key(const std::string& name) { return QString::fromStdString(name); }

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
    const Settings defaults;
    const ToolColorTable defaultColors;
    store_->sync();
    store_->beginGroup(SettingsGroup);
    ValueReader read(*store_, dialogs);

    read.Int32("Axis Color", settings.AxisColor, defaults.AxisColor);
    read.Int16("Axis SelectedColor", settings.AxisSelectedColor, defaults.AxisSelectedColor);
    read.Int16("Axis Line", settings.AxisLine, defaults.AxisLine);
    read.Flag("Show Axis", settings.ShowAxis, defaults.ShowAxis);
    read.Flag("Show Rapid", settings.ShowRapid, defaults.ShowRapid);
    read.Flag("Show Blips", settings.ShowBlips, defaults.ShowBlips);
    // Slow motion waits without letting events through, so a delay the properties
    // dialog does not offer (its longest is 1 s) could hold the window for good.
    read.PositiveSingle("Slow Time", settings.SlowTime, defaults.SlowTime, LongestSlowTime);
    read.Text("File Ext", settings.FileExt, defaults.FileExt);
    read.Text("Work Dir", settings.WorkDir, programFolder);
    read.Int32("Backcolor", settings.Backcolor, defaults.Backcolor);
    read.Int16("BackcolorSelected", settings.BackcolorSelected, defaults.BackcolorSelected);
    read.Flag("Cross Hairs", settings.CrossHairs, defaults.CrossHairs);
    read.Flag("Mill", settings.Mill, defaults.Mill);
    read.Int16("AbsCenter", settings.AbsCenter, defaults.AbsCenter);
    read.Flag("AutoDraw", settings.AutoDraw, defaults.AutoDraw);
    read.Flag("ToolColor", settings.ToolColor, defaults.ToolColor);
    read.Int32("DefaultColor", settings.DefaultColor, defaults.DefaultColor);
    read.Int16("DefaultSeletedColor", settings.DefaultSeletedColor, defaults.DefaultSeletedColor);

    // Only the first five tool colours come back; the rest always start from zero.
    for (int n = 0; n < ToolColorTable::Size; ++n) {
        ToolColor& entry = toolColors[n];
        if (n >= 5) {
            entry = ToolColor{};
            continue;
        }
        const std::string digit = std::to_string(n);
        read.Int32(("ToolColorIndex" + digit).c_str(), entry.ColorIndex, defaultColors[n].ColorIndex);
        std::int32_t color = 0;
        read.Int32(("ToolColor" + digit).c_str(), color, static_cast<std::int32_t>(defaultColors[n].Color));
        entry.Color = static_cast<std::uint32_t>(color);
    }
    store_->endGroup();

    state.Mill = settings.Mill;
    state.AbsCenter = settings.AbsCenter;
}

void SettingsStore::SaveSettings(const Settings& settings, const ToolColorTable& toolColors)
{
    QSettings& store = *store_;
    const auto text = [&store](const auto& name, const std::string& value) {
        store.setValue(Key(name), QString::fromStdString(value));
    };
    const auto number = [&text](const char* name, std::int32_t value) { text(name, std::to_string(value)); };
    const auto flag = [&text](const char* name, bool value) { text(name, FlagText(value)); };

    store.beginGroup(SettingsGroup);
    number("Axis Color", settings.AxisColor);
    number("Axis SelectedColor", settings.AxisSelectedColor);
    number("Axis Line", settings.AxisLine);
    flag("Show Axis", settings.ShowAxis);
    flag("Show Rapid", settings.ShowRapid);
    flag("Show Blips", settings.ShowBlips);
    text("Slow Time", FloatText(settings.SlowTime));
    text("File Ext", settings.FileExt);
    text("Work Dir", settings.WorkDir);
    number("Backcolor", settings.Backcolor);
    number("BackcolorSelected", settings.BackcolorSelected);
    flag("Cross Hairs", settings.CrossHairs);
    flag("Mill", settings.Mill);
    number("AbsCenter", settings.AbsCenter);
    flag("AutoDraw", settings.AutoDraw);
    flag("ToolColor", settings.ToolColor);
    number("DefaultColor", settings.DefaultColor);
    number("DefaultSeletedColor", settings.DefaultSeletedColor);
    for (int n = 0; n < ToolColorTable::Size; ++n) {
        const std::string digit = std::to_string(n);
        text("ToolColor" + digit, std::to_string(static_cast<std::int32_t>(toolColors[n].Color)));
        text("ToolColorIndex" + digit, std::to_string(toolColors[n].ColorIndex));
    }
    store.endGroup();
    store.sync();
}

} // namespace backplot
