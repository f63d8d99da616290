#include "Delay.h"
#include "PlotRig.h"
#include "SlowMotion.h"
#include "Stepper.h"
#include "ViewCommands.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <optional>

namespace backplot {
namespace {

using namespace test;

// What playback asked of the window.
struct HostLog : PlaybackHost {
    std::map<std::string, bool> buttons;
    std::string code = "(untouched)";
    bool details = true, stepChecked = false, slowChecked = false;
    int listingStarts = 0, redraws = 0;
    std::vector<std::string> listing;
    std::vector<int> marks;
    std::function<void()> redraw;

    void SetButtons(std::initializer_list<ToolbarKey> keys, bool enabled) override
    {
        for (ToolbarKey key : keys)
            buttons[std::string(NameOf(key))] = enabled;
    }
    void SetCodeText(const std::string& text) override { code = text; }
    std::string FileName() const override { return "/parts/plate.nc"; }
    void SetDetailsEnabled(bool enabled) override { details = enabled; }
    void SetStepChecked(bool checked) override { stepChecked = checked; }
    bool SlowMotionChecked() const override { return slowChecked; }
    void SetSlowMotionChecked(bool checked) override { slowChecked = checked; }
    void StartStepListing() override { ++listingStarts, listing.clear(); }
    void WriteStepListing(const std::string& block) override { listing.push_back(block); }
    void MarkSourceLine(int line) override { marks.push_back(line); }
    void Redraw() override { ++redraws, redraw(); }
};

// The rig with a window's playback objects on its canvas: the host's Redraw is the
// view commands' redraw, as in the window.
struct PlaybackWindow : PlotRig {
    HostLog host;
    ViewHost viewHost;
    ViewCommands view{plotter, canvas, settings, playback, dialogs, viewHost};
    Stepper stepper{plotter, canvas, translator, playback, dialogs, host};
    SlowMotion slow{plotter, canvas, settings, playback, host};
    PlaybackWindow()
    {
        settings.SlowTime = 0;
        host.redraw = [this] { view.Redraw(); };
    }
    bool Cleared() const
    {
        return std::ranges::any_of(canvas.Primitives(), [](const auto& p) { return p.Type == Kind::Clear; });
    }
};

TEST(Stepper, ThreeRecordsOneAtATimeThenTheSilentEnd)
{
    PlaybackWindow w;
    // The first record's block as the translator stores it: with its blanks.
    std::vector<EntityRecord> cuts = NumberedCuts(3);
    cuts[0].SetBlockText("  G01 X1. Y-1.");
    w.Load(cuts, true);

    w.stepper.Step();
    EXPECT_TRUE(w.playback.StepMode);
    EXPECT_EQ(w.plotter.PlotLast, 1);
    EXPECT_TRUE(w.Cleared());
    EXPECT_EQ(w.XsDrawn(), std::vector<double>{1});
    const std::string block = "  G01 X1. Y-1." + std::string(46, ' ');
    EXPECT_EQ(w.host.code, block + "  "); // all 60 characters, then two blanks
    EXPECT_EQ(w.host.listing, std::vector<std::string>{"G01 X1. Y-1."});
    EXPECT_EQ(w.translator.Record().BlockTextView(), "G01 X1. Y-1." + std::string(48, ' '));
    EXPECT_FALSE(w.host.details);
    EXPECT_TRUE(w.host.stepChecked);
    const std::map<std::string, bool> stepping = {
        {"Step", false}, {"Slow", false}, {"Pause", false}, {"Stop", true},   {"Rapid", false},
        {"Axis", false}, {"Properties", false}, {"ToolColors", false}, {"Exit", false},  {"Open", false},
        {"Clear", false}, {"Print", false}, {"Preview", false}};
    EXPECT_EQ(w.host.buttons, stepping); // the view buttons keep their state

    w.canvas.ForgetPrimitives();
    w.stepper.Step();
    EXPECT_EQ(w.XsDrawn(), std::vector<double>{2}); // over the picture, nothing cleared
    EXPECT_FALSE(w.Cleared());
    EXPECT_EQ(w.host.listingStarts, 1);

    // A redraw while stepping shows exactly the elements stepped so far.
    w.canvas.ForgetPrimitives();
    w.plotter.GetRecords(w.canvas);
    EXPECT_EQ(w.XsDrawn(), (std::vector<double>{1, 2}));
    EXPECT_TRUE(w.playback.StepMode);

    w.stepper.Step();
    w.canvas.ForgetPrimitives();
    w.host.buttons.clear();
    w.stepper.Step(); // past the end: silently over
    EXPECT_FALSE(w.playback.StepMode);
    EXPECT_EQ(w.plotter.PlotLast, 1);
    EXPECT_TRUE(w.XsDrawn().empty());
    EXPECT_TRUE(w.host.buttons.empty()); // the toolbar stays as stepping left it
    EXPECT_TRUE(w.dialogs.Messages.empty());
    EXPECT_EQ(w.translator.Record().EndX, 0);
    // Until extents or an open, a redraw shows record 1 alone.
    w.plotter.GetRecords(w.canvas);
    EXPECT_EQ(w.XsDrawn(), std::vector<double>{1});
}

TEST(Stepper, WithoutRecordsItEndsAtOnceButAMissingOrTruncatedRecordIsReported)
{
    {   // No program loaded: no records and no record file. Each step ends stepping again.
        PlaybackWindow none;
        none.stepper.Step();
        none.stepper.Step();
        EXPECT_FALSE(none.playback.StepMode);
        EXPECT_EQ(none.plotter.PlotLast, 1);
        EXPECT_TRUE(none.dialogs.Messages.empty());
        EXPECT_FALSE(none.host.details);
    }
    const ScriptedDialogs::ShownMessage error{"Error opening file!", "Corvane Backplot", MsgIcon::None,
                                               MsgButtons::Ok};
    PlaybackWindow w;
    w.Load(NumberedCuts(3), true);
    std::filesystem::resize_file(w.translator.RecordFilePath(), 128 + 64);
    w.stepper.Step();
    EXPECT_EQ(w.plotter.PlotLast, 1);
    w.stepper.Step(); // record 2 is not whole
    EXPECT_EQ(w.plotter.PlotLast, 1);
    std::filesystem::remove(w.translator.RecordFilePath());
    w.stepper.Step();
    EXPECT_EQ(w.plotter.PlotLast, 1);
    EXPECT_EQ(w.dialogs.Messages, (std::vector<ScriptedDialogs::ShownMessage>{error, error}));
}

TEST(SlowMotion, PausedAtARecordResumesThereWithoutClearing)
{
    PlaybackWindow w;
    w.Load(NumberedCuts(6), true);
    std::optional<bool> ended; // whether the pass that ended the program ended slow motion
    w.plotter.SetPassEndedHook([&](bool slow) { ended = slow; });
    // P is pressed while the third record waits to be drawn.
    w.events.onCall = [&](int call) {
        if (call == 3)
            w.slow.PauseOrResume();
    };
    w.slow.Toggle();
    EXPECT_TRUE(w.host.slowChecked);
    EXPECT_EQ(w.host.code, "  Paused - Press the P key to continue");
    EXPECT_EQ(w.XsDrawn(), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(w.playback.SlowResume, 4);
    EXPECT_EQ(w.host.marks, (std::vector<int>{1, 2, 3})); // one source line per record drawn
    EXPECT_TRUE(w.playback.SlowMode);
    EXPECT_EQ(w.host.buttons["Pause"], true);
    EXPECT_EQ(w.host.buttons["Step"], false);
    EXPECT_FALSE(ended);
    // Resumed at a real pace: each of the three records waits its 0.04 s before it is drawn.
    w.canvas.ForgetPrimitives();
    w.events.onCall = nullptr;
    w.settings.SlowTime = 0.04f;
    const auto start = std::chrono::steady_clock::now();
    w.slow.PauseOrResume();
    const double took = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    EXPECT_GE(took, 0.12);
    EXPECT_LT(took, 0.6);
    EXPECT_EQ(w.XsDrawn(), (std::vector<double>{4, 5, 6}));
    EXPECT_FALSE(w.Cleared());
    EXPECT_EQ(w.host.marks, (std::vector<int>{1, 2, 3, 4, 5, 6}));
    // The end of the program ends slow motion.
    EXPECT_EQ(ended, std::optional<bool>(true));
    EXPECT_FALSE(w.playback.SlowMode);
    EXPECT_EQ(w.playback.SlowResume, 1);
    EXPECT_EQ(w.playback.SourceLine, 1);
    EXPECT_EQ(w.host.code, "  Press Esc key to end slow motion.");
}

TEST(SlowMotion, TurnedOffFromTheMenuItRunsOutAtFullSpeedAndKeepsItsToolbar)
{
    PlaybackWindow w;
    w.Load(NumberedCuts(4), true);
    w.events.onCall = [&](int call) {
        if (call == 2)
            w.slow.Toggle();
    };
    w.slow.Toggle();
    EXPECT_FALSE(w.playback.SlowMode);
    EXPECT_FALSE(w.host.slowChecked);
    EXPECT_EQ(w.host.code, "/parts/plate.nc  ");
    EXPECT_EQ(w.host.redraws, 2);
    EXPECT_EQ(w.events.calls, 2); // no events once it runs at full speed
    // Only the end of a slow pass restores the toolbar; this one ended at full speed.
    EXPECT_EQ(w.host.buttons["Step"], false);
    EXPECT_EQ(w.host.buttons["Pause"], true);
    EXPECT_EQ(w.host.buttons["Stop"], true);
}

// A real wait: the slow-motion pace above.
TEST(Delay, NothingForNonsense)
{
    const auto start = std::chrono::steady_clock::now();
    for (const double seconds : {0.0, -3.0, std::numeric_limits<double>::quiet_NaN()})
        Delay(seconds);
    EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 0.01);
}

} // namespace
} // namespace backplot
