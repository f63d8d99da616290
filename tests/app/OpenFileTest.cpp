#include "WindowFixture.h"

#include <QLabel>

namespace backplot {
namespace {

using test::CountOf;
using test::Part;

const QColor Blue(0, 0, 255); // the default drawing colour, 0xFF0000 as 0xBBGGRR
const QColor Black(0, 0, 0);  // the default axis colour
const QColor White(255, 255, 255);

constexpr const char* OtherPart = "G01 X40. Y-20.\r\nX0. Y0.\r\nM30\r\n";

// Rapids are dotted 3 on, 3 off from their first pixel, every line leaves out its last
// pixel, and the dashed axis (18 on, 6 off) is drawn last, over everything.
//   cut 481; first rapid: on steps among 1..59 (step 0 lies under the axes) 29; second
//   rapid: diagonal steps 1..59 (step 0 is the cut's end) 29, straight leg 30.
constexpr int CutPixels = 481;
constexpr int RapidPixels = 29 + 29 + 30;
//   axis column 30 over rows 0..389: 16 * 18 + 6; row 105 over columns 0..779:
//   32 * 18 + 12; the crossing counted once.
constexpr int AxisPixels = 294 + 588 - 1;

class OpenFile : public test::WindowFixture {
protected:
    std::string Recent(int index) const
    {
        return Action(("mnuRecentFile" + std::to_string(index)).c_str())->data().toString().toStdString();
    }
    static std::vector<test::ScriptedDialogs::ShownMessage> Error(const std::string& text)
    {
        return {{text, "Corvane Backplot", MsgIcon::Critical, MsgButtons::Ok}};
    }
};

TEST_F(OpenFile, ProgramFromTheDialogIsDrawnWithTheOpenMargin)
{
    Store("File Ext", "*.nc");
    Store("Work Dir", QString::fromStdString(programs.Folder()));
    const std::string path = programs.Write("part.nc", Part);
    StartShown();
    // The code line at each pointer change: the phases in the order the user sees them.
    QStringList codes{window->lblCode()->text()};
    dialogs.OnPointer = [&](MousePointer) {
        if (codes.back() != window->lblCode()->text())
            codes << window->lblCode()->text();
    };

    EXPECT_EQ(window->windowTitle(), "Tarvo Backplot");
    OpenCommand(path);

    EXPECT_EQ(window->windowTitle(), "part.nc — Tarvo Backplot");
    EXPECT_EQ(dialogs.OpenRequests, (std::vector<test::ScriptedDialogs::OpenRequest>{
                                        {"Open File", programs.Folder(), "*.nc ", " *.nc"}}));
    EXPECT_TRUE(dialogs.Messages.empty());
    EXPECT_EQ(window->FileName(), path);
    EXPECT_EQ(window->DialogFileTitle(), "part.nc");
    EXPECT_EQ(codes.mid(1), QStringList({" Translating file.", " Drawing file.", " part.nc"}));
    EXPECT_EQ(window->lblComment()->text(), " Opening file " + QString::fromStdString(path));
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{path, "Not Used", "Not Used", "Not Used"}));
    EXPECT_EQ(Recent(1), path);

    const QImage picture = Picture();
    struct Spot { const char* what; int x, y; QColor colour; };
    const Spot spots[] = {
        {"cut, first pixel", 90, 165, Blue},          {"cut, last pixel", 570, 165, Blue},
        {"left of the cut", 89, 165, White},          {"right of the cut", 571, 165, White},
        {"first rapid, dot on", 31, 106, Blue},       {"first rapid, dot off", 34, 109, White},
        {"first rapid, last dot", 86, 161, Blue},     {"second rapid, diagonal", 576, 171, Blue},
        {"second rapid, diagonal gap", 573, 168, White}, {"second rapid, corner", 630, 225, Blue},
        {"second rapid, leg gap", 633, 225, White},   {"second rapid, last dot", 686, 225, Blue},
        {"second rapid, end left out", 690, 225, White}, {"vertical axis, dash", 30, 5, Black},
        {"vertical axis, gap", 30, 20, White},        {"vertical axis, bottom", 30, 389, Black},
        {"horizontal axis, gap", 20, 105, White},     {"horizontal axis, right end", 779, 105, Black},
        {"origin, both axes", 30, 105, Black},        {"empty corner", 700, 350, White},
    };
    for (const Spot& spot : spots)
        EXPECT_EQ(picture.pixelColor(spot.x, spot.y), spot.colour) << spot.what;
    EXPECT_EQ(CountOf(picture, Blue), CutPixels + RapidPixels);
    EXPECT_EQ(CountOf(picture, Black), AxisPixels);

    // Rapid and Axis each redraw the whole program without their lines, and back.
    Button(ToolbarKey::Rapid)->trigger();
    EXPECT_FALSE(window->settings().ShowRapid);
    EXPECT_EQ(CountOf(Picture(), Blue), CutPixels);
    EXPECT_EQ(CountOf(Picture(), Black), AxisPixels);
    Button(ToolbarKey::Rapid)->trigger();
    EXPECT_EQ(Picture(), picture);
    Button(ToolbarKey::Axis)->trigger();
    EXPECT_FALSE(window->settings().ShowAxis);
    EXPECT_EQ(CountOf(Picture(), Black), 0);
    EXPECT_EQ(Picture().pixelColor(30, 105), Blue); // the first rapid's first dot
    EXPECT_EQ(CountOf(Picture(), Blue), CutPixels + RapidPixels + 1);
    Button(ToolbarKey::Axis)->trigger();
    EXPECT_EQ(Picture(), picture);
    EXPECT_TRUE(dialogs.Messages.empty());
}

TEST_F(OpenFile, ReopeningFromTheRecentListKeepsItsPlace)
{
    const std::string first = programs.Write("part.nc", Part);
    const std::string second = programs.Write("other.nc", OtherPart);
    StartShown();
    OpenCommand(first);
    const QImage firstPicture = Picture();
    OpenCommand(second);
    ASSERT_NE(Picture(), firstPicture);
    ASSERT_EQ(Recent(2), first);

    Action("mnuRecentFile2")->trigger();
    EXPECT_EQ(dialogs.OpenRequests.size(), 2u); // no dialog
    EXPECT_TRUE(dialogs.Messages.empty());
    EXPECT_EQ(window->FileName(), first);
    EXPECT_EQ(Picture(), firstPicture);
    EXPECT_EQ(window->lblCode()->text(), "  " + QString::fromStdString(first));
    EXPECT_EQ(window->windowTitle(), "part.nc — Tarvo Backplot"); // the dialog's last name was other.nc
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{second, first, "Not Used", "Not Used"}));
    EXPECT_FALSE(Action("mnuRecentFile3")->isVisible());

    OpenCommand(first); // through the dialog it goes to the top again
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{first, second, first, "Not Used"}));
}

TEST_F(OpenFile, CancelledEmptyOrMissingFileKeepsTheProgramAndItsPicture)
{
    const std::string missing = programs.Folder() + "gone.nc";
    StoreRecent(1, QString::fromStdString(missing));
    const std::string path = programs.Write("part.nc", Part);
    const std::string empty = programs.Write("empty.nc", "");
    StartShown();
    // Opened directly with the menus on: only Step Details is switched off.
    window->SetMenus(true);
    dialogs.OpenAnswers.push_back(path);
    EXPECT_EQ(window->OpenFile(), OpenOutcome::Opened);
    EXPECT_FALSE(Action("mnuDetails")->isEnabled());
    EXPECT_TRUE(Action("mnuStep")->isEnabled() && Action("mnuRedraw")->isEnabled());
    const QImage picture = Picture();
    ASSERT_EQ(CountOf(picture, Blue), CutPixels + RapidPixels);
    const std::vector<std::string> recent{path, missing, "Not Used", "Not Used"};
    ASSERT_EQ(StoredRecent(), recent);

    // OpenFile on its own leaves the abort flag up, empties the file name and comment
    // before asking, and draws the picture again as it was.
    dialogs.OpenAnswers.push_back(std::nullopt);
    EXPECT_EQ(window->OpenFile(), OpenOutcome::Cancelled);
    EXPECT_TRUE(window->translator().State().AbortTranslation);
    EXPECT_EQ(Picture(), picture);
    EXPECT_TRUE(window->FileName().empty());
    EXPECT_EQ(window->lblComment()->text(), "");
    EXPECT_EQ(window->lblCode()->text(), " part.nc");

    // The command lowers the flag; menus, controls and the recent list stay.
    OpenCommand(std::nullopt);
    EXPECT_EQ(dialogs.OpenRequests.size(), 3u);
    EXPECT_FALSE(window->translator().State().AbortTranslation);
    EXPECT_TRUE(window->programLoaded() && Button(ToolbarKey::Refresh)->isEnabled() && Action("mnuRedraw")->isEnabled());
    EXPECT_EQ(StoredRecent(), recent);
    Button(ToolbarKey::Refresh)->trigger(); // the records drawn are still the program's
    EXPECT_EQ(Picture(), picture);
    EXPECT_TRUE(dialogs.Messages.empty());

    OpenCommand(empty);
    EXPECT_EQ(dialogs.Messages, Error(empty + " is an empty file"));
    EXPECT_EQ(window->FileName(), empty);
    EXPECT_EQ(window->windowTitle(), "part.nc — Tarvo Backplot"); // still the program shown
    EXPECT_EQ(window->lblCode()->text(), " part.nc");
    EXPECT_EQ(StoredRecent(), recent);
    ASSERT_TRUE(Button(ToolbarKey::Refresh)->isEnabled());
    Button(ToolbarKey::Refresh)->trigger(); // the old program's records are still there
    EXPECT_EQ(Picture(), picture);

    dialogs.Messages.clear();
    Action("mnuRecentFile2")->trigger();
    EXPECT_EQ(dialogs.Messages, Error("An error as occurred while prossessing the file "));
    EXPECT_EQ(Picture(), picture);
    EXPECT_EQ(StoredRecent(), recent);
    EXPECT_EQ(window->lblCode()->text(), "  " + QString::fromStdString(missing));
    EXPECT_TRUE(Button(ToolbarKey::Refresh)->isEnabled() && Action("mnuRedraw")->isEnabled());
    EXPECT_EQ(dialogs.Pointers.back(), MousePointer::Default);
}

// A path handed to the window opens as from the dialog and says what came of it; the
// menus follow a drawn program only.
TEST_F(OpenFile, PathSaysWhatCameOfIt)
{
    const std::string missing = programs.Folder() + "gone.nc";
    // On a lathe the Y word of the third block stops the translation after two records.
    const std::string mill = programs.Write("mill.nc", "G0 X20. Z2.\r\nG1 Z-5.\r\nG1 Y5.\r\nG1 X30.\r\n");
    const std::string part = programs.Write("part.nc", Part);
    Store("Mill", "0");
    StartShown();

    EXPECT_EQ(window->OpenPath(missing), OpenOutcome::Failed);
    EXPECT_EQ(dialogs.Messages, Error("An error as occurred while prossessing the file "));
    EXPECT_FALSE(window->programLoaded() || Action("mnuStep")->isEnabled() || Button(ToolbarKey::Step)->isEnabled());
    EXPECT_EQ(StoredRecent()[0], "Not Used");

    dialogs.Messages.clear();
    window->playback().SlowResume = 7;
    EXPECT_EQ(window->OpenPath(mill), OpenOutcome::Aborted);
    ASSERT_EQ(dialogs.Messages.size(), 1u);
    EXPECT_EQ(dialogs.Messages[0].Title, "Backplot Error");
    EXPECT_EQ(window->plotter().RecordTotal, 2);
    EXPECT_TRUE(window->programLoaded() && Action("mnuStep")->isEnabled() && Button(ToolbarKey::Step)->isEnabled());
    EXPECT_EQ(window->playback().SlowResume, 1);
    EXPECT_EQ(window->DialogFileTitle(), "mill.nc");
    EXPECT_EQ(window->lblCode()->text(), " mill.nc");
    EXPECT_EQ(StoredRecent()[0], mill);

    // While one open runs, another is turned away untouched.
    window->translator().State().Mill = true;
    std::vector<OpenOutcome> during;
    dialogs.OnPointer = [&](MousePointer pointer) {
        if (pointer == MousePointer::Hourglass && during.empty())
            during.push_back(window->OpenPath(missing));
    };
    EXPECT_EQ(window->OpenPath(part), OpenOutcome::Opened);
    EXPECT_EQ(during, std::vector{OpenOutcome::Busy});
    EXPECT_EQ(window->FileName(), part);
    EXPECT_EQ(window->plotter().RecordTotal, 4);
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{part, mill, "Not Used", "Not Used"}));
}

} // namespace
} // namespace backplot
