#include "ScratchSettings.h"
#include "ScriptedDialogs.h"
#include "SettingsStore.h"

#include <QSettings>
#include <gtest/gtest.h>
#include <map>

namespace backplot {
namespace {

using test::ScratchSettings;
using Texts = std::map<std::string, std::string>; // value name -> text in the store

Texts StoredTexts(const ScratchSettings& scope)
{
    QSettings store(scope.SettingsFile(), QSettings::IniFormat);
    store.beginGroup("Settings");
    Texts texts;
    for (const QString& key : store.allKeys())
        texts[key.toStdString()] = store.value(key).toString().toStdString();
    return texts;
}

void Store(const ScratchSettings& scope, const Texts& texts)
{
    QSettings store(scope.SettingsFile(), QSettings::IniFormat);
    for (const auto& [name, text] : texts)
        store.setValue(QString::fromStdString("Settings/" + name), QString::fromStdString(text));
}

struct Loaded {
    Settings settings;
    ToolColorTable colors;
    TranslationState state;
    test::ScriptedDialogs dialogs;
};

// Loads into state unlike every default, so that each value has to be set by the load.
std::unique_ptr<Loaded> Load()
{
    auto loaded = std::make_unique<Loaded>();
    loaded->settings = {77, 1, 4, false, false, true, 9, "x", "y", 5, 6, true, false, 1, true, true, 7, 8};
    for (int n = 0; n < ToolColorTable::Size; ++n)
        loaded->colors[n] = {n + 1, 0x123456, 7};
    loaded->state.Mill = false;
    loaded->state.AbsCenter = 1;
    SettingsStore().LoadSettings(loaded->settings, loaded->colors, loaded->state, loaded->dialogs, "/opt/tarvo");
    return loaded;
}

TEST(SettingsStore, FirstStartSavesEveryDefaultAsText)
{
    ScratchSettings scope;
    const auto loaded = Load();
    EXPECT_TRUE(loaded->dialogs.Messages.empty());
    EXPECT_TRUE(loaded->state.Mill);
    EXPECT_EQ(loaded->state.AbsCenter, 0);
    SettingsStore().SaveSettings(loaded->settings, loaded->colors);
    EXPECT_EQ(StoredTexts(scope), (Texts{
        {"Axis Color", "0"},        {"Axis SelectedColor", "15"}, {"Axis Line", "1"},
        {"Show Axis", "-1"},        {"Show Rapid", "-1"},         {"Show Blips", "0"},
        {"Slow Time", "0.1"},       {"File Ext", "*.*"},          {"Work Dir", "/opt/tarvo"},
        {"Backcolor", "16777215"},  {"BackcolorSelected", "15"},  {"Cross Hairs", "0"},
        {"Mill", "-1"},             {"AbsCenter", "0"},           {"AutoDraw", "0"},
        {"ToolColor", "0"},         {"DefaultColor", "16711680"}, {"DefaultSeletedColor", "9"},
        {"ToolColor0", "0"},        {"ToolColorIndex0", "0"},     {"ToolColor1", "16711680"},
        {"ToolColorIndex1", "9"},   {"ToolColor2", "65280"},      {"ToolColorIndex2", "10"},
        {"ToolColor3", "16776960"}, {"ToolColorIndex3", "11"},    {"ToolColor4", "255"},
        {"ToolColorIndex4", "12"},  {"ToolColor5", "0"},          {"ToolColorIndex5", "0"},
        {"ToolColor6", "0"},        {"ToolColorIndex6", "0"},     {"ToolColor7", "0"},
        {"ToolColorIndex7", "0"},   {"ToolColor8", "0"},          {"ToolColorIndex8", "0"},
        {"ToolColor9", "0"},        {"ToolColorIndex9", "0"},
    }));
}

TEST(SettingsStore, ChangedValuesSurviveARestartExceptToolColorsFiveToNine)
{
    ScratchSettings scope;
    const Settings changed = {0x808080, 8,  3,    false, false, true,     0.35f, "*.nc", "/home/cnc/parts, old",
                              0,        0,  true, false, 1,     true,     true,  0x00FFFF, 14};
    ToolColorTable colors;
    for (int n = 0; n < ToolColorTable::Size; ++n)
        colors[n] = {0, static_cast<std::uint32_t>(0x010101 * (n + 1)), n + 2};
    SettingsStore().SaveSettings(changed, colors);
    Texts saved = StoredTexts(scope);
    for (const auto& [name, text] : Texts{{"Slow Time", "0.35"}, {"Cross Hairs", "-1"}, {"Mill", "0"},
                                          {"Work Dir", "/home/cnc/parts, old"}, {"DefaultColor", "65535"},
                                          {"ToolColor7", "526344"}, {"ToolColorIndex7", "9"}})
        EXPECT_EQ(saved[name], text) << name;

    // Everything reads back as saved, but entries 5-9 of the colour table read back as 0.
    const auto loaded = Load();
    EXPECT_FALSE(loaded->state.Mill);
    EXPECT_EQ(loaded->state.AbsCenter, 1);
    EXPECT_EQ(loaded->colors[7].Color, 0u);
    SettingsStore().SaveSettings(loaded->settings, loaded->colors);
    for (int n = 5; n < ToolColorTable::Size; ++n)
        saved["ToolColor" + std::to_string(n)] = saved["ToolColorIndex" + std::to_string(n)] = "0";
    EXPECT_EQ(StoredTexts(scope), saved);
}

TEST(SettingsStore, FlagTextsAbsCenterNumberAndUnreadableTextsDefaults)
{
    const std::pair<const char*, bool> flags[] = {
        {"-1", true},    {"0", false}, {"True", true}, {"False", false}, {"TRUE", true}, {"fAlSe", false},
        {"1", true},     {"2", true},  {"0.0", false}, {" -1 ", true},   {"0.5", true},  {"-0", false},
    };
    for (const auto& [text, value] : flags) {
        SCOPED_TRACE(text);
        ScratchSettings scope;
        // One flag that defaults on and one that defaults off, so both directions show.
        Store(scope, {{"Show Axis", text}, {"Show Blips", text}, {"Mill", text}});
        const auto loaded = Load();
        EXPECT_EQ(loaded->settings.ShowAxis, value);
        EXPECT_EQ(loaded->settings.ShowBlips, value);
        EXPECT_EQ(loaded->state.Mill, value);
        EXPECT_TRUE(loaded->dialogs.Messages.empty());
    }
    // AbsCenter is a number, not a flag: "-1" stays -1, which is not on.
    const std::pair<const char*, int> centres[] = {{"1", 1}, {"-1", -1}, {"0", 0}, {"2", 2}};
    for (const auto& [text, value] : centres) {
        SCOPED_TRACE(text);
        ScratchSettings scope;
        Store(scope, {{"AbsCenter", text}});
        const auto loaded = Load();
        EXPECT_EQ(loaded->settings.AbsCenter, value);
        EXPECT_EQ(loaded->state.AbsCenter, value);
    }

    // Unreadable text is reported and its default used.
    ScratchSettings scope;
    Store(scope, {{"Slow Time", "abc"}, {"Show Axis", "maybe"}, {"Axis SelectedColor", "40000"}, {"Backcolor", ""},
                  {"ToolColor2", "green"}, {"ToolColorIndex7", "x"} /* never read */, {"Axis Line", "2"}});
    const auto loaded = Load();
    std::vector<test::ScriptedDialogs::ShownMessage> expected;
    for (const char* text : {
             "The setting \"Axis SelectedColor\" holds \"40000\", which is out of range. Its default 15 is used.",
             "The setting \"Show Axis\" holds \"maybe\", which is neither True nor False. Its default True is used.",
             "The setting \"Slow Time\" holds \"abc\", which is not a number. Its default 0.1 is used.",
             "The setting \"Backcolor\" holds \"\", which is not a number. Its default 16777215 is used.",
             "The setting \"ToolColor2\" holds \"green\", which is not a number. Its default 65280 is used."})
        expected.push_back({text, "Corvane Backplot", MsgIcon::Exclamation, MsgButtons::Ok});
    EXPECT_EQ(loaded->dialogs.Messages, expected);
    EXPECT_FLOAT_EQ(loaded->settings.SlowTime, 0.1f);
    EXPECT_TRUE(loaded->settings.ShowAxis);
    EXPECT_EQ(loaded->settings.AxisSelectedColor, 15);
    EXPECT_EQ(loaded->settings.Backcolor, 0xFFFFFF);
    EXPECT_EQ(loaded->colors[2].Color, 0x00FF00u);
    EXPECT_EQ(loaded->settings.AxisLine, 2); // the good value among them is still read

    // A slow time the properties dialog could not have written (its list runs from .05 to
    // 1) would hold the window in its wait for good: a bad value like any other.
    const char* const range = "which is out of range";
    const char* const number = "which is not a number";
    const std::tuple<const char*, float, const char*> slowTimes[] = {
        {"1000", 0.1f, range},  {"1e30", 0.1f, range},   {"1.01", 0.1f, range},   {"0", 0.1f, range},
        {"-0.5", 0.1f, range},  {"1e-50", 0.1f, range},  {"inf", 0.1f, number},   {"nan", 0.1f, number},
        {"1e999", 0.1f, number}, {"1", 1, nullptr},      {"0.05", 0.05f, nullptr}, {"0.001", 0.001f, nullptr}};
    for (const auto& [text, value, why] : slowTimes) {
        ScratchSettings slow;
        Store(slow, {{"Slow Time", text}});
        const auto read = Load();
        EXPECT_EQ(read->settings.SlowTime, value) << text;
        std::vector<std::string> said;
        for (const auto& box : read->dialogs.Messages)
            said.push_back(box.Text);
        EXPECT_EQ(said, why ? std::vector<std::string>{"The setting \"Slow Time\" holds \"" + std::string(text) +
                                                       "\", " + why + ". Its default 0.1 is used."}
                            : std::vector<std::string>{});
    }
}

} // namespace
} // namespace backplot
