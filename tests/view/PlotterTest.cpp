#include "ExtentsPass.h"
#include "PlotRig.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <vector>

namespace backplot {
namespace {

using namespace test;

TEST(Plotter, ExtentsOfAQuarterArcAreItsWholeCircle)
{
    PlotRig rig;
    EntityRecord arc = Arc(3, 0, 0, 1, 0, 90); // machine (1,0) to (0,1), Y stored negated
    arc.EndY = -1;
    rig.plotter.CurTool = 5;
    rig.Load({arc});

    const ViewTransform& v = rig.plotter.View;
    EXPECT_EQ((std::vector<int>{rig.plotter.RecordTotal, rig.plotter.PlotLast, rig.plotter.CurTool}),
              (std::vector<int>{1, 1, 0}));
    EXPECT_EQ((std::vector<float>{v.MinX, v.MinY, v.MaxX, v.MaxY}), (std::vector<float>{-1, -1, 1, 1}));
    // 2 x 2 on 400 x 200, fitted by width: visible height 1 centred on 0.
    EXPECT_EQ((std::vector<float>{v.ViewX1, v.ViewY1, v.ViewX2, v.ViewY2}), (std::vector<float>{-1, -0.5f, 1, 0.5f}));
    EXPECT_EQ((std::vector<float>{v.FitSpan, v.TwoPixelSpan, rig.canvas.ScaleLeft(), rig.canvas.ScaleTop()}),
              (std::vector<float>{1, 0.01f, -1, -0.5f}));
    EXPECT_EQ(rig.translator.Record().MoveType, 3); // the shared buffer holds the last record read
}

TEST(Plotter, TruncatedRecordFileIsReadUpToItsLastWholeRecord)
{
    struct Case {
        const char* name;
        std::uintmax_t length;
        std::int16_t total;
        std::vector<float> box; // MinX, MinY, MaxX, MaxY
    };
    // Ends at (1,-1), (2,-2), (3,-3), then a circle of radius 5 about (10,10).
    const Case cases[] = {
        {"AllFour", 4 * 128, 4, {1, -3, 15, 15}}, {"HalfOfTheFourthRoundsToEven", 3 * 128 + 64, 4, {1, -3, 3, -1}},
        {"HalfOfTheThirdRoundsToEven", 2 * 128 + 64, 2, {1, -2, 2, -1}},
        {"JustOverHalfRoundsUp", 2 * 128 + 65, 3, {1, -2, 2, -1}}, {"OnlyPartOfTheFirst", 100, 1, {0, 0, 0, 0}},
        {"LessThanHalfOfTheFirst", 50, 0, {0, 0, 0, 0}}, {"Empty", 0, 0, {0, 0, 0, 0}},
    };
    EntityRecord circle = Arc(2, 10, 10, 5, 0, 0);
    circle.EndX = 3, circle.EndY = -3;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        PlotRig rig;
        rig.Load({Cut(0, 0, 1, -1), Cut(1, -1, 2, -2), Cut(2, -2, 3, -3), circle});
        std::filesystem::resize_file(rig.translator.RecordFilePath(), c.length);
        const Extents box = ExtentsPass(rig.translator.RecordFilePath(), rig.translator.Record());
        EXPECT_EQ(box.RecordTotal, c.total);
        EXPECT_EQ((std::vector<float>{box.MinX, box.MinY, box.MaxX, box.MaxY}), c.box);
    }

    // The plot pass draws the whole records and stops early: no axis, playback not ended.
    PlotRig rig;
    rig.Load(NumberedCuts(4));
    std::filesystem::resize_file(rig.translator.RecordFilePath(), 3 * 128 + 64);
    rig.playback.StepMode = true;
    rig.plotter.GetRecords(rig.canvas);
    EXPECT_EQ(rig.XsDrawn(), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(rig.canvas.Primitives().size(), 1u + 3 * 3); // clear and three cuts
    EXPECT_TRUE(rig.playback.StepMode);
    EXPECT_EQ(rig.dialogs.Pointers.back(), MousePointer::Default);
}

TEST(Plotter, FullPassClearsDrawsAxisAndEndsPlayback)
{
    PlotRig rig;
    rig.Load({Cut(0, 0, 4, -2, 7), Cut(4, -2, 4, 0, 7)});
    rig.playback.StepMode = true, rig.playback.SourceLine = 9;
    std::optional<bool> ended;
    rig.plotter.SetPassEndedHook([&](bool slow) { ended = slow; });
    rig.plotter.GetRecords(rig.canvas);
    const auto& log = rig.canvas.Primitives();
    ASSERT_EQ(log.size(), 1u + 2 * 3 + 2);
    EXPECT_EQ(log[0].Type, Kind::Clear);
    EXPECT_EQ(rig.XsDrawn(), (std::vector<double>{0, 4}));
    EXPECT_EQ(log[7].Style, DrawStyle::Dash); // the axis in "Axis Line" 1
    EXPECT_EQ(rig.canvas.GetDrawStyle(), DrawStyle::Solid);
    EXPECT_EQ((std::vector<int>{rig.plotter.PlotIndex, rig.plotter.CurTool, rig.playback.StepMode,
                                rig.playback.SlowResume, rig.playback.SourceLine}),
              (std::vector<int>{2, 0, false, 1, 1}));
    EXPECT_EQ(ended, std::optional<bool>(false));
    // The buffer keeps the last record with its start and end wiped.
    EXPECT_EQ(rig.translator.Record().ToolNum, 7);
    EXPECT_EQ((std::vector<float>{rig.translator.Record().StartX, rig.translator.Record().StartY, rig.translator.Record().EndX, rig.translator.Record().EndY}),
              (std::vector<float>{0, 0, 0, 0}));
    EXPECT_EQ(rig.dialogs.Pointers, (std::vector<MousePointer>{MousePointer::Hourglass, MousePointer::Default}));
    EXPECT_EQ(rig.events.calls, 0);
}

TEST(Plotter, ColourRuleCarriesTheColourOverForUnknownTools)
{
    PlotRig rig;
    rig.settings.ToolColor = true;
    rig.state().ToolChangeCount = 2;
    rig.translator.ToolColors()[0] = {1, 0x0000FF, 12};
    rig.translator.ToolColors()[1] = {3, 0x00FF00, 10};
    rig.translator.ToolColors()[2] = {5, 0xFF00FF, 13}; // beyond ToolChangeCount: never looked at
    rig.plotter.CurrentColor = 0x123456;   // left from an earlier pass
    std::vector<EntityRecord> records;
    for (std::int32_t tool : {9, 1, 5, 3, 7, 1})
        records.push_back(Cut(0, 0, 1, 1, tool));
    rig.Load(records);
    rig.plotter.GetRecords(rig.canvas);
    std::vector<std::uint32_t> colours;
    for (const auto& p : rig.canvas.Primitives())
        if (p.Type == Kind::PSet)
            colours.push_back(p.Color);
    EXPECT_EQ(colours, (std::vector<std::uint32_t>{0x123456, 0x0000FF, 0x0000FF, 0x00FF00, 0x00FF00, 0x0000FF}));

    rig.settings.ToolColor = false; // the default colour, whatever the tool
    rig.plotter.ChooseColor(3);
    EXPECT_EQ(rig.plotter.CurrentColor, 0xFF0000u);
    EXPECT_EQ(rig.plotter.CurTool, 3);

    // The first matching entry wins; no more than ten entries are ever looked at.
    rig.settings.ToolColor = true;
    rig.state().ToolChangeCount = 15;
    rig.translator.ToolColors()[2] = {3, 0xABCDEF, 0};
    rig.plotter.ChooseColor(3);
    EXPECT_EQ(rig.plotter.CurrentColor, 0x00FF00u);
    EXPECT_NO_THROW(rig.plotter.ChooseColor(42));
    EXPECT_EQ(rig.plotter.CurrentColor, 0x00FF00u);
}

} // namespace
} // namespace backplot
