#include "ScratchSettings.h"
#include "ScriptedDialogs.h"
#include "SettingsStore.h"

#include <QFileInfo>
#include <QSettings>
#include <gtest/gtest.h>
#include <map>

namespace backplot {
namespace {

using test::ScratchSettings;
using test::ScriptedDialogs;

// What the store holds, read straight from its file: value name -> text.
std::map<std::string, std::string> StoredTexts(const QString& file)
{
    QSettings store(file, QSettings::IniFormat);
    store.beginGroup(QStringLiteral("Settings"));
    std::map<std::string, std::string> texts;
    for (const QString& key : store.allKeys())
        texts[key.toStdString()] = store.value(key).toString().toStdString();
    return texts;
}

void Store(const QString& file, const std::map<std::string, std::string>& texts)
{
    QSettings store(file, QSettings::IniFormat);
    store.beginGroup(QStringLiteral("Settings"));
    for (const auto& [name, text] : texts)
        store.setValue(QString::fromStdString(name), QString::fromStdString(text));
    store.sync();
}

struct Loaded {
    Settings settings;
    ToolColorTable colors;
    TranslationState state;
    ScriptedDialogs dialogs;
};

// Loads through a fresh store object, starting from state unlike every default so that
// each value has to be set by the load.
std::unique_ptr<Loaded> Load()
{
    auto loaded = std::make_unique<Loaded>();
    loaded->settings.AxisColor = 77;
    loaded->settings.ShowAxis = false;
    loaded->settings.SlowTime = 9;
    loaded->settings.Mill = false;
    for (int n = 0; n < ToolColorTable::Size; ++n)
        loaded->colors[n] = {n + 1, 0x123456, 7};
    loaded->state.Mill = false;
    loaded->state.AbsCenter = 1;
    SettingsStore store;
    store.LoadSettings(loaded->settings, loaded->colors, loaded->state, loaded->dialogs, "/opt/tarvo");
    return loaded;
}

TEST(SettingsStore, FirstStartUsesEveryDefault)
{
    ScratchSettings scope;
    const auto loaded = Load();
    const Settings& s = loaded->settings;
    EXPECT_EQ(s.AxisColor, 0);
    EXPECT_EQ(s.AxisSelectedColor, 15);
    EXPECT_EQ(s.AxisLine, 1);
    EXPECT_TRUE(s.ShowAxis);
    EXPECT_TRUE(s.ShowRapid);
    EXPECT_FALSE(s.ShowBlips);
    EXPECT_FLOAT_EQ(s.SlowTime, 0.1f);
    EXPECT_EQ(s.FileExt, "*.*");
    EXPECT_EQ(s.WorkDir, "/opt/tarvo");
    EXPECT_EQ(s.Backcolor, 0xFFFFFF);
    EXPECT_EQ(s.BackcolorSelected, 15);
    EXPECT_FALSE(s.CrossHairs);
    EXPECT_TRUE(s.Mill);
    EXPECT_EQ(s.AbsCenter, 0);
    EXPECT_FALSE(s.AutoDraw);
    EXPECT_FALSE(s.ToolColor);
    EXPECT_EQ(s.DefaultColor, 0xFF0000);
    EXPECT_EQ(s.DefaultSeletedColor, 9);

    const std::uint32_t colors[] = {0, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0, 0, 0, 0, 0};
    const std::int32_t indexes[] = {0, 9, 10, 11, 12, 0, 0, 0, 0, 0};
    for (int n = 0; n < ToolColorTable::Size; ++n) {
        SCOPED_TRACE(n);
        EXPECT_EQ(loaded->colors[n].Color, colors[n]);
        EXPECT_EQ(loaded->colors[n].ColorIndex, indexes[n]);
    }
    // Milling, centres as offsets.
    EXPECT_TRUE(loaded->state.Mill);
    EXPECT_EQ(loaded->state.AbsCenter, 0);
    EXPECT_TRUE(loaded->dialogs.Messages.empty());
}

TEST(SettingsStore, SavesEveryValueAsTextUnderTheProgramsName)
{
    ScratchSettings scope;
    const auto loaded = Load();
    SettingsStore().SaveSettings(loaded->settings, loaded->colors);

    ASSERT_TRUE(QFileInfo::exists(scope.SettingsFile()));
    const std::map<std::string, std::string> expected = {
        {"Axis Color", "0"},          {"Axis SelectedColor", "15"},   {"Axis Line", "1"},
        {"Show Axis", "-1"},          {"Show Rapid", "-1"},           {"Show Blips", "0"},
        {"Slow Time", "0.1"},         {"File Ext", "*.*"},            {"Work Dir", "/opt/tarvo"},
        {"Backcolor", "16777215"},    {"BackcolorSelected", "15"},    {"Cross Hairs", "0"},
        {"Mill", "-1"},               {"AbsCenter", "0"},             {"AutoDraw", "0"},
        {"ToolColor", "0"},           {"DefaultColor", "16711680"},   {"DefaultSeletedColor", "9"},
        {"ToolColor0", "0"},          {"ToolColorIndex0", "0"},       {"ToolColor1", "16711680"},
        {"ToolColorIndex1", "9"},     {"ToolColor2", "65280"},        {"ToolColorIndex2", "10"},
        {"ToolColor3", "16776960"},   {"ToolColorIndex3", "11"},      {"ToolColor4", "255"},
        {"ToolColorIndex4", "12"},    {"ToolColor5", "0"},            {"ToolColorIndex5", "0"},
        {"ToolColor6", "0"},          {"ToolColorIndex6", "0"},       {"ToolColor7", "0"},
        {"ToolColorIndex7", "0"},     {"ToolColor8", "0"},            {"ToolColorIndex8", "0"},
        {"ToolColor9", "0"},          {"ToolColorIndex9", "0"},
    };
    EXPECT_EQ(StoredTexts(scope.SettingsFile()), expected);
}

TEST(SettingsStore, ChangedValuesSurviveARestartExceptToolColorsFiveToNine)
{
    ScratchSettings scope;
    Settings s;
    s.AxisColor = 0x808080;
    s.AxisSelectedColor = 8;
    s.AxisLine = 3;
    s.ShowAxis = false;
    s.ShowRapid = false;
    s.ShowBlips = true;
    s.SlowTime = 0.35f;
    s.FileExt = "*.nc";
    s.WorkDir = "/home/cnc/parts, old";
    s.Backcolor = 0;
    s.BackcolorSelected = 0;
    s.CrossHairs = true;
    s.Mill = false;
    s.AbsCenter = 1;
    s.AutoDraw = true;
    s.ToolColor = true;
    s.DefaultColor = 0x00FFFF;
    s.DefaultSeletedColor = 14;
    ToolColorTable colors;
    for (int n = 0; n < ToolColorTable::Size; ++n)
        colors[n] = {0, static_cast<std::uint32_t>(0x010101 * (n + 1)), n + 2};
    SettingsStore().SaveSettings(s, colors);

    // Entry 7 is in the store...
    const auto texts = StoredTexts(scope.SettingsFile());
    EXPECT_EQ(texts.at("ToolColor7"), "526344"); // 0x080808
    EXPECT_EQ(texts.at("ToolColorIndex7"), "9");
    EXPECT_EQ(texts.at("Slow Time"), "0.35");
    EXPECT_EQ(texts.at("Cross Hairs"), "-1");
    EXPECT_EQ(texts.at("Mill"), "0");
    EXPECT_EQ(texts.at("AbsCenter"), "1");

    // ...but reads back as zero.
    const auto loaded = Load();
    const Settings& r = loaded->settings;
    EXPECT_EQ(r.AxisColor, 0x808080);
    EXPECT_EQ(r.AxisSelectedColor, 8);
    EXPECT_EQ(r.AxisLine, 3);
    EXPECT_FALSE(r.ShowAxis);
    EXPECT_FALSE(r.ShowRapid);
    EXPECT_TRUE(r.ShowBlips);
    EXPECT_FLOAT_EQ(r.SlowTime, 0.35f);
    EXPECT_EQ(r.FileExt, "*.nc");
    EXPECT_EQ(r.WorkDir, "/home/cnc/parts, old");
    EXPECT_EQ(r.Backcolor, 0);
    EXPECT_EQ(r.BackcolorSelected, 0);
    EXPECT_TRUE(r.CrossHairs);
    EXPECT_FALSE(r.Mill);
    EXPECT_EQ(r.AbsCenter, 1);
    EXPECT_TRUE(r.AutoDraw);
    EXPECT_TRUE(r.ToolColor);
    EXPECT_EQ(r.DefaultColor, 0x00FFFF);
    EXPECT_EQ(r.DefaultSeletedColor, 14);
    for (int n = 0; n < ToolColorTable::Size; ++n) {
        SCOPED_TRACE(n);
        EXPECT_EQ(loaded->colors[n].Color, n < 5 ? 0x010101u * (n + 1) : 0u);
        EXPECT_EQ(loaded->colors[n].ColorIndex, n < 5 ? n + 2 : 0);
    }
    EXPECT_FALSE(loaded->state.Mill);
    EXPECT_EQ(loaded->state.AbsCenter, 1);
}

TEST(SettingsStore, FlagTexts)
{
    struct Row {
        const char* text;
        bool value;
    };
    const Row rows[] = {
        {"-1", true},   {"0", false},    {"True", true},   {"False", false}, {"TRUE", true},
        {"fAlSe", false}, {"1", true},   {"2", true},      {"0.0", false},   {" -1 ", true},
        {"0.5", true},  {"-0", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        ScratchSettings scope;
        // One flag that defaults on and one that defaults off, so both directions show.
        Store(scope.SettingsFile(), {{"Show Axis", row.text}, {"Show Blips", row.text}, {"Mill", row.text}});
        const auto loaded = Load();
        EXPECT_EQ(loaded->settings.ShowAxis, row.value);
        EXPECT_EQ(loaded->settings.ShowBlips, row.value);
        EXPECT_EQ(loaded->state.Mill, row.value);
        EXPECT_TRUE(loaded->dialogs.Messages.empty());
    }
}

TEST(SettingsStore, OnlyOneSwitchesAbsoluteCentresOn)
{
    struct Row {
        const char* text;
        std::int16_t value;
    };
    // "-1" is a flag's true text, but this value is a number and only 1 means on.
    for (const Row& row : {Row{"1", 1}, Row{"-1", -1}, Row{"0", 0}, Row{"2", 2}}) {
        SCOPED_TRACE(row.text);
        ScratchSettings scope;
        Store(scope.SettingsFile(), {{"AbsCenter", row.text}});
        const auto loaded = Load();
        EXPECT_EQ(loaded->settings.AbsCenter, row.value);
        EXPECT_EQ(loaded->state.AbsCenter, row.value);
        EXPECT_EQ(loaded->state.AbsCenter == 1, row.value == 1);
    }
}

TEST(SettingsStore, UnreadableTextIsReportedAndItsDefaultUsed)
{
    ScratchSettings scope;
    Store(scope.SettingsFile(), {
                                    {"Slow Time", "abc"},
                                    {"Show Axis", "maybe"},
                                    {"Axis SelectedColor", "40000"},
                                    {"Backcolor", ""},
                                    {"ToolColor2", "green"},
                                    {"ToolColorIndex7", "x"}, // never read
                                    {"Axis Line", "2"},
                                });
    const auto loaded = Load();
    const std::vector<std::string> expected = {
        "The setting \"Axis SelectedColor\" holds \"40000\", which is out of range. Its default 15 is used.",
        "The setting \"Show Axis\" holds \"maybe\", which is neither True nor False. Its default True is used.",
        "The setting \"Slow Time\" holds \"abc\", which is not a number. Its default 0.1 is used.",
        "The setting \"Backcolor\" holds \"\", which is not a number. Its default 16777215 is used.",
        "The setting \"ToolColor2\" holds \"green\", which is not a number. Its default 65280 is used.",
    };
    ASSERT_EQ(loaded->dialogs.Messages.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(loaded->dialogs.Messages[i].Text, expected[i]);
        EXPECT_EQ(loaded->dialogs.Messages[i].Title, "Corvane Backplot");
        EXPECT_EQ(loaded->dialogs.Messages[i].Icon, MsgIcon::Exclamation);
        EXPECT_EQ(loaded->dialogs.Messages[i].Buttons, MsgButtons::Ok);
    }
    EXPECT_FLOAT_EQ(loaded->settings.SlowTime, 0.1f);
    EXPECT_TRUE(loaded->settings.ShowAxis);
    EXPECT_EQ(loaded->settings.AxisSelectedColor, 15);
    EXPECT_EQ(loaded->settings.Backcolor, 0xFFFFFF);
    EXPECT_EQ(loaded->colors[2].Color, 0x00FF00u);
    EXPECT_EQ(loaded->colors[7].ColorIndex, 0);
    // The good value next to them is still read.
    EXPECT_EQ(loaded->settings.AxisLine, 2);
}

} // namespace
} // namespace backplot
