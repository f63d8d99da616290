#include "PartialPlots.h"

#include "ImageSurface.h"
#include "PlotRig.h"
#include "Widgets.h"
#include "frmTool1.h"
#include "ToolChangePalette.h"

#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <optional>
#include <vector>

namespace backplot {
namespace {

using Message = test::ScriptedDialogs::ShownMessage;
using test::Drawn;
using test::Kind;

// The partial plots of a window on the rig; LoadTools writes cut n with tools[n - 1] and fits
// the view with its margin, so that the axis shows.
struct Rig : test::PlotRig {
    PartialPlots plots{plotter, translator, playback, settings, dialogs, events};
    void LoadTools(const std::vector<std::int32_t>& tools, DrawSurface* surface = nullptr)
    {
        Load(test::NumberedCuts(tools), true, surface);
    }
};

constexpr std::uint32_t Blue = 0xFF0000; // "DefaultColor"

std::uint32_t Palette(int change) { return ToolChangePalette[static_cast<std::size_t>(change - 1)]; }

Message OnlyChanges(int n, MsgIcon icon)
{
    return {"There is only " + std::to_string(n) + " tool change(s) in the program.", "Corvane Backplot", icon,
            MsgButtons::Ok};
}

TEST(PartialPlots, ToolToToolDrawsFromOneChangeUpToTheNextInTheColourOfItsOrder)
{
    struct Case { const char* name; std::int16_t first, second; std::vector<Drawn> cuts; std::int16_t seen;
        std::vector<Message> messages; };
    // Tools T1, T1, T2, T2, T1, T1: going back to T1 is the third tool change.
    const Case cases[] = {
        {"FirstChangeOnly", 1, 2, {{1, Palette(1)}, {2, Palette(1)}}, 2, {}},
        {"SecondChange", 2, 3, {{3, Palette(2)}, {4, Palette(2)}}, 3, {}},
        {"BackToTheFirstToolIsTheThirdChange", 3, 4, {{5, Palette(3)}, {6, Palette(3)}}, 3,
         {OnlyChanges(3, MsgIcon::None)}},
        {"SecondPastTheEndDrawsToTheEnd", 1, 9,
         {{1, Palette(1)}, {2, Palette(1)}, {3, Palette(2)}, {4, Palette(2)}, {5, Palette(3)}, {6, Palette(3)}}, 3,
         {OnlyChanges(3, MsgIcon::None)}},
        {"EqualNumbersStopWhereDrawingWouldStart", 2, 2, {}, 2, {}},
        {"SecondBeforeFirstDrawsNothing", 3, 1, {}, 1, {}},
        {"FirstPastTheEndDrawsNothing", 4, 5, {}, 3, {OnlyChanges(3, MsgIcon::None)}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Rig rig;
        rig.LoadTools({1, 1, 2, 2, 1, 1});
        rig.plots.PlotToolToTool(rig.canvas, c.first, c.second);

        EXPECT_EQ(rig.CutsDrawn(), c.cuts);
        EXPECT_EQ(rig.plotter.ToolChangesSeen, c.seen);
        EXPECT_EQ(rig.dialogs.Messages, c.messages);
        // A cleared canvas, then the axis (black, dashed), then the cuts.
        const auto& log = rig.canvas.Primitives();
        ASSERT_GE(log.size(), 3u);
        EXPECT_EQ(log[0].Type, Kind::Clear);
        for (int i : {1, 2})
            EXPECT_TRUE(log[i].Type == Kind::Line && log[i].Color == 0 && log[i].Style == DrawStyle::Dash) << i;
    }
}

TEST(PartialPlots, ChangeCountWrapsToTheDefaultColourAfterFifteen)
{
    // A first record on tool 0 is no tool change; then every record changes the tool.
    std::vector<std::int32_t> tools{0};
    for (int t = 1; t <= 17; ++t)
        tools.push_back(t);

    std::vector<Drawn> all, fifteen;
    for (int change = 1; change <= 15; ++change) {
        all.push_back({change + 1.0, Palette(change)});
        fifteen.push_back({change + 0.0, Palette(change)});
    }
    all.push_back({17, Blue});       // the 16th change counts 0
    all.push_back({18, Palette(1)}); // and the 17th starts again at 1
    const std::vector<Message> onlyOne{OnlyChanges(1, MsgIcon::None)};

    struct Case { const char* name; bool toolZeroFirst; std::int16_t first, second; std::vector<Drawn> cuts;
        std::int16_t seen; std::vector<Message> messages; };
    const Case cases[] = {
        {"FromTheFirstChange", true, 1, 30, all, 1, onlyOne},
        {"SixteenTurnsDrawingOnBeforeTheWrap", true, 16, 30, {{17, Blue}, {18, Palette(1)}}, 1, onlyOne},
        {"SixteenNeverStopsThePass", true, 1, 16, all, 1, onlyOne},
        // The count is 0 before the first change, and the stop test runs on every record.
        {"ZeroStopsAtAFirstRecordOnToolZero", true, 1, 0, {}, 0, {}},
        // Without the tool-0 record, 0 stops at the 16th change, where the count wraps.
        {"ZeroStopsWhereTheCountWraps", false, 1, 0, fifteen, 0, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Rig rig;
        rig.LoadTools(c.toolZeroFirst ? tools : std::vector<std::int32_t>(tools.begin() + 1, tools.end()));
        rig.plots.PlotToolToTool(rig.canvas, c.first, c.second);
        EXPECT_EQ(rig.CutsDrawn(), c.cuts);
        EXPECT_EQ(rig.plotter.ToolChangesSeen, c.seen);
        EXPECT_EQ(rig.dialogs.Messages, c.messages);
    }
}

TEST(PartialPlots, ToolToEofLeavesOnlyTheAxisCountsWhatToolToToolSawAndRunsSlowly)
{
    Rig rig;
    ImageSurface picture(240, 120);
    rig.LoadTools({1, 1, 2, 2, 1, 1}, &picture);
    int marks = 0;
    rig.plotter.SetSlowMotionHook([&] { ++marks; });

    // What the axis alone looks like in this view.
    ImageSurface axisOnly(240, 120);
    rig.plotter.SetCoords(axisOnly);
    rig.plotter.DrawAxis(axisOnly);

    rig.plots.PlotToolToTool(picture, 1, 3);
    ASSERT_NE(picture.Image(), axisOnly.Image()); // the cuts are there
    EXPECT_EQ(rig.plotter.ToolChangesSeen, 3);

    rig.plots.PlotFrom(picture, 3);
    EXPECT_EQ(picture.Image(), axisOnly.Image());
    EXPECT_TRUE(rig.dialogs.Messages.empty());

    // The count is the one tool to tool left, not a new one.
    rig.plots.PlotFrom(picture, 4);
    EXPECT_EQ(picture.Image(), axisOnly.Image());
    EXPECT_EQ(rig.dialogs.Messages, (std::vector<Message>{OnlyChanges(3, MsgIcon::Information)}));
    EXPECT_EQ(rig.events.calls, 0);
    EXPECT_EQ(marks, 0);

    // Slow motion lets events run after each record read and marks each record drawn.
    rig.playback.SlowMode = true;
    rig.plots.PlotToolToTool(picture, 2, 3); // reads records 1..5, draws 3 and 4
    EXPECT_EQ(rig.events.calls, 5);
    EXPECT_EQ(marks, 2);
    rig.plots.PlotFrom(picture, 1); // reads all six, draws none
    EXPECT_EQ(rig.events.calls, 11);
    EXPECT_EQ(marks, 2);
}

TEST(PartialPlots, PassEndResetsOnlyWhenTheWholeProgramWasRead)
{
    struct Case { const char* name; bool toolToTool; std::int16_t plotLast; std::int32_t curTool; std::uint32_t color;
        bool stepMode; float endX; };
    // Records 1..6 on tools 1, 1, 2, 2, 1, 1; before each pass CurrentColor is 0x123456 and
    // tool colours are on with an empty table, so reading a record keeps the colour.
    const Case cases[] = {
        {"ToolToEofWholeProgram", false, 6, 0, Blue, false, 0},
        {"ToolToEofWhileStepping", false, 3, 2, 0x123456, true, 3},
        {"ToolToToolWholeProgram", true, 6, 0, Palette(3), false, 0},
        {"ToolToToolWhileStepping", true, 3, 2, Palette(2), true, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Rig rig;
        rig.LoadTools({1, 1, 2, 2, 1, 1});
        rig.settings.ToolColor = true;
        rig.plotter.CurrentColor = 0x123456;
        rig.plotter.PlotLast = c.plotLast;
        rig.playback.StepMode = true;
        if (c.toolToTool)
            rig.plots.PlotToolToTool(rig.canvas, 1, 9);
        else
            rig.plots.PlotFrom(rig.canvas, 1);
        EXPECT_EQ(rig.plotter.CurTool, c.curTool);
        EXPECT_EQ(rig.plotter.CurrentColor, c.color);
        EXPECT_EQ(rig.playback.StepMode, c.stepMode);
        const EntityRecord& r = rig.translator.Record();
        EXPECT_EQ((std::vector<float>{r.StartX, r.StartY, r.StartZ, r.EndX, r.EndY, r.EndZ}),
                  (std::vector<float>{c.endX, 0, 0, c.endX, c.endX == 0 ? 0.f : -1.f, 0}));
    }
}

TEST(PartialPlots, ToolToEofPromptRemembersItsAnswer)
{
    Rig rig;
    rig.LoadTools({1, 1, 2, 2, 1, 1});
    rig.plots.PlotToolToTool(rig.canvas, 1, 2); // two tool changes seen
    rig.dialogs.Messages.clear();

    struct Step { const char* name; const char* answer; const char* defaultShown; bool plotted;
        std::vector<Message> messages; const char* defaultAfter; };
    const Message notANumber{"\"abc\" is not a number. Enter a tool change number such as 1, 2 or 3.",
                             "Corvane Backplot", MsgIcon::Exclamation, MsgButtons::Ok};
    const Step steps[] = {
        {"FirstDefaultIsOne", "2", "1", true, {}, "2"}, {"CancelMakesTheDefaultZero", "", "2", false, {}, "0"},
        {"NotANumberChangesNothing", "abc", "0", false, {notANumber}, "0"},
        {"HalfRoundsToEven", "2.5", "0", true, {}, "2.5"},
        {"PastTheCountShowsTheMessage", " 3.5", "2.5", true, {OnlyChanges(2, MsgIcon::Information)}, "3.5"},
    };
    for (const Step& s : steps) {
        SCOPED_TRACE(s.name);
        rig.dialogs.PromptAnswers = {s.answer};
        rig.dialogs.Prompts.clear();
        rig.dialogs.Messages.clear();
        rig.canvas.ForgetPrimitives();
        rig.plots.ToolToEofCommand(rig.canvas);

        using Prompt = test::ScriptedDialogs::PromptRequest;
        EXPECT_EQ(rig.dialogs.Prompts,
                  (std::vector<Prompt>{{"Enter a Tool number value between 1 and 15", "Plot from", s.defaultShown}}));
        EXPECT_EQ(!rig.canvas.Primitives().empty(), s.plotted);
        EXPECT_EQ(rig.dialogs.Messages, s.messages);
        EXPECT_EQ(rig.plots.ToolFromDefault, s.defaultAfter);
    }
}

TEST(PartialPlots, UnreadableRecordFileIsReportedAndLeavesTheAxis)
{
    for (const bool toolToTool : {false, true}) {
        SCOPED_TRACE(toolToTool ? "ToolToTool" : "ToolToEof");
        Rig rig;
        rig.plotter.PlotLast = rig.plotter.RecordTotal = 3; // no record file at all
        toolToTool ? rig.plots.PlotToolToTool(rig.canvas, 1, 9) : rig.plots.PlotFrom(rig.canvas, 9);
        EXPECT_EQ(rig.dialogs.Messages,
                  (std::vector<Message>{{"Error opening file!\r\n" + rig.translator.RecordFilePath(),
                                         "Corvane Backplot", MsgIcon::Critical, MsgButtons::Ok}}));
        const auto& log = rig.canvas.Primitives();
        EXPECT_TRUE(log.size() == 3 && log[0].Type == Kind::Clear && log[1].Type == Kind::Line &&
                    log[2].Type == Kind::Line);
        EXPECT_EQ(rig.dialogs.Pointers, (std::vector<MousePointer>{MousePointer::Hourglass, MousePointer::Default}));
    }

    // A file shorter than PlotLast: what was read is drawn, then the error, and no count.
    Rig rig;
    rig.LoadTools({1, 2});
    rig.plotter.PlotLast = 4;
    rig.plots.PlotToolToTool(rig.canvas, 1, 9);
    EXPECT_EQ(rig.CutsDrawn(), (std::vector<Drawn>{{1, Palette(1)}, {2, Palette(2)}}));
    EXPECT_EQ(rig.dialogs.Messages,
              (std::vector<Message>{{"Error reading file!\r\n" + rig.translator.RecordFilePath(), "Corvane Backplot",
                                     MsgIcon::Critical, MsgButtons::Ok}}));
}

TEST(PartialPlots, ToolChangeColoursAreDistinctAndShowOnWhite)
{
    // Contrast against white after the usual relative-luminance formula; 1 is white itself.
    const auto contrastWithWhite = [](std::uint32_t bgr) {
        double l = 0;
        for (const auto& [shift, weight] : {std::pair{0, 0.2126}, {8, 0.7152}, {16, 0.0722}}) {
            const double c = ((bgr >> shift) & 0xFF) / 255.0;
            l += weight * (c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4));
        }
        return 1.05 / (l + 0.05);
    };
    const auto rgbDistance = [](std::uint32_t a, std::uint32_t b) {
        double sum = 0;
        for (int shift : {0, 8, 16})
            sum += std::pow(double((a >> shift) & 0xFF) - double((b >> shift) & 0xFF), 2);
        return std::sqrt(sum);
    };
    for (std::size_t i = 0; i < ToolChangePalette.size(); ++i) {
        const std::uint32_t c = ToolChangePalette[i];
        EXPECT_GE(contrastWithWhite(c), 2.0) << "entry " << i;
        EXPECT_GE(rgbDistance(c, Blue), 60.0) << "entry " << i << " looks like the default colour";
        for (std::size_t j = i + 1; j < ToolChangePalette.size(); ++j)
            EXPECT_GE(rgbDistance(c, ToolChangePalette[j]), 60.0) << "entries " << i << " and " << j;
    }
}

TEST(frmTool1, ToolToToolCommandPlotsOrRedrawsAfterTheDialog)
{
    Rig rig;
    rig.LoadTools({1, 1, 2, 2, 1, 1});
    int redraws = 0;
    QString title;
    // The dialog answered with tool changes 2 and 3 typed and `button` pressed.
    const auto command = [&](const char* button) {
        title.clear();
        rig.canvas.ForgetPrimitives();
        test::OnNextModal([&title, button](QWidget* modal) {
            title = modal->windowTitle();
            test::Child<QLineEdit>(*modal, "txtTool1")->setText(QStringLiteral("2"));
            test::Child<QLineEdit>(*modal, "txtTool2")->setText(QStringLiteral("3"));
            test::Child<QPushButton>(*modal, button)->click();
        });
        rig.plots.ToolToToolCommand(rig.canvas, nullptr, [&] { ++redraws; });
        EXPECT_EQ(title, QStringLiteral("Plot Tool to Tool")) << button;
        EXPECT_FALSE(rig.translator.State().AbortTranslation) << button;
    };
    command("cmdOk"); // plots the range typed
    EXPECT_EQ(rig.CutsDrawn(), (std::vector<Drawn>{{3, ToolChangePalette[1]}, {4, ToolChangePalette[1]}}));
    EXPECT_EQ(redraws, 0);
    EXPECT_EQ((std::vector<int>{rig.plots.FirstTool, rig.plots.SecondTool}), (std::vector<int>{2, 3}));
    command("cmdCancel"); // redraws the whole program instead and keeps the numbers
    EXPECT_EQ(rig.CutsDrawn(), std::vector<Drawn>{});
    EXPECT_EQ(redraws, 1);
    EXPECT_EQ((std::vector<int>{rig.plots.FirstTool, rig.plots.SecondTool}), (std::vector<int>{2, 3}));
}

} // namespace
} // namespace backplot
