#include "CanvasWidget.h"
#include "ScratchSettings.h"
#include "ScriptedDialogs.h"
#include "frmBackplot.h"

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QSettings>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace backplot {
namespace {

using test::ScratchDir;
using test::ScratchSettings;
using test::ScriptedDialogs;

const QColor Blue(0, 0, 255); // the default drawing colour, 0xFF0000 as 0xBBGGRR
const QColor Black(0, 0, 0);  // the default axis colour
const QColor White(255, 255, 255);

// A rapid from the origin to (10, -10), one horizontal cut to (90, -10) and a dog-leg
// rapid to (110, -20); M30 adds a rapid that moves nothing.
//
// Stored (Y negated) the end points span X 10..110, Y 10..20. On a 780 x 390 canvas
// (aspect 2) the open view works out as:
//   first fit by width: FitSpan = 100 / 2 = 50, top = 15 - 25 = -10, view Y -10..40;
//   zoom out by 0.3 * 50 = 15: view X -5..125, Y -25..55;
//   second fit by width: dx = 130, FitSpan = 65, left = -5, top = (40 - 25) - 32.5 = -17.5.
// So a plot unit is 6 pixels: px = 6 x + 30, py = 6 y + 105 (stored y). The origin is
// pixel (30, 105), the cut runs along row 165 from column 90 to 570, the last rapid goes
// diagonally from (570, 165) to (630, 225) and then along row 225 to (690, 225).
constexpr const char* Part = "G00 X10. Y-10.\r\nG01 X90.\r\nG00 X110. Y-20.\r\nM30\r\n";
constexpr int CanvasWidth = 780;
constexpr int CanvasHeight = 390;

// Another program for the recent list: one cut from the origin to (40, -20) and back.
constexpr const char* OtherPart = "G01 X40. Y-20.\r\nX0. Y0.\r\nM30\r\n";

// Pixels of the first picture, worked out from the line rules of the canvas: dotted
// rapids are 3 on, 3 off from their first pixel, every line leaves out its last pixel,
// the cut is drawn toward its middle from both ends and covers all of 90..570; the dashed
// axis (18 on, 6 off) is drawn last, over everything.
//   cut: 481; first rapid: steps 1..59 of 60 that are on (step 0 lies under both axes):
//   29; second rapid: the diagonal's steps 1..59 that are on (step 0 is the cut's end):
//   29, the straight leg 30.
constexpr int CutPixels = 481;
constexpr int FirstRapidPixels = 29;
constexpr int SecondRapidPixels = 29 + 30;
//   vertical axis, column 30, rows 0..389: 16 periods of 24 and 6 more, 16 * 18 + 6;
//   horizontal axis, row 105, columns 0..779: 32 periods and 12 more, 32 * 18 + 12;
//   the crossing (both dashes on there) counted once.
constexpr int AxisPixels = 294 + 588 - 1;

int CountOf(const QImage& picture, const QColor& colour)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) == colour)
                ++count;
    return count;
}

// What the status line showed each time the mouse pointer changed. The open switches to
// the hourglass before its long phases and back after them, so these snapshots show the
// phase texts in the order the user saw them; the window offers no other way to watch
// its labels while a command runs.
struct StatusSnapshot {
    MousePointer Pointer;
    QString Comment, Code, X, Y;
};

class WatchingDialogs : public ScriptedDialogs {
public:
    void SetPointer(MousePointer pointer) override
    {
        ScriptedDialogs::SetPointer(pointer);
        if (window)
            Snapshots.push_back({pointer, window->lblComment()->text(), window->lblCode()->text(),
                                 window->lblXPos()->text(), window->lblYPos()->text()});
    }

    frmBackplot* window = nullptr;
    std::vector<StatusSnapshot> Snapshots;
};

class OpenFile : public ::testing::Test {
protected:
    void Store(const char* name, const QString& text)
    {
        QSettings(scope.SettingsFile(), QSettings::IniFormat)
            .setValue(QStringLiteral("Settings/") + QLatin1String(name), text);
    }
    void StoreRecent(int index, const std::string& path)
    {
        QSettings(scope.RecentFilesFile(), QSettings::IniFormat)
            .setValue(QStringLiteral("RecentFiles/RecentFile%1").arg(index), QString::fromStdString(path));
    }
    std::vector<std::string> StoredRecent() const
    {
        QSettings stored(scope.RecentFilesFile(), QSettings::IniFormat);
        std::vector<std::string> entries;
        for (int i = 1; i <= 4; ++i)
            entries.push_back(stored.value(QStringLiteral("RecentFiles/RecentFile%1").arg(i), QStringLiteral("Not Used"))
                                  .toString()
                                  .toStdString());
        return entries;
    }

    // The window, shown, with a canvas of exactly CanvasWidth x CanvasHeight.
    frmBackplot& Start()
    {
        window = std::make_unique<frmBackplot>(&dialogs);
        window->show();
        QApplication::processEvents();
        const QSize frame = window->size() - window->canvas().size();
        window->resize(CanvasWidth + frame.width(), CanvasHeight + frame.height());
        QApplication::processEvents();
        EXPECT_EQ(window->canvas().size(), QSize(CanvasWidth, CanvasHeight));
        EXPECT_EQ(window->canvas().Picture().size(), QSize(CanvasWidth, CanvasHeight));
        return *window;
    }
    QAction* Action(const char* name) const
    {
        auto* action = window->findChild<QAction*>(QString::fromLatin1(name));
        EXPECT_NE(action, nullptr) << name;
        return action;
    }
    // "&Open..." as the toolbar starts it, answering the dialog with `path` (or cancelling).
    void OpenCommand(const std::optional<std::string>& path)
    {
        dialogs.OpenAnswers.push_back(path);
        window->button(QStringLiteral("Open"))->trigger();
    }
    QImage Picture() const { return window->canvas().Picture(); }

    ScratchSettings scope;
    ScratchDir programs;
    WatchingDialogs dialogs;
    std::unique_ptr<frmBackplot> window;
};

TEST_F(OpenFile, ProgramFromTheDialogIsDrawnWithTheOpenMargin)
{
    const std::string workDir = programs.Folder();
    Store("File Ext", QStringLiteral("*.nc"));
    Store("Work Dir", QString::fromStdString(workDir));
    const std::string path = programs.Write("part.nc", Part);
    Start();
    const QString codeBefore = window->lblCode()->text();
    dialogs.window = window.get();

    OpenCommand(path);

    // The dialog: its title, the work folder and the one filter built from "File Ext".
    ASSERT_EQ(dialogs.OpenRequests.size(), 1u);
    EXPECT_EQ(dialogs.OpenRequests[0].Title, "Open File");
    EXPECT_EQ(dialogs.OpenRequests[0].InitialDir, workDir);
    EXPECT_EQ(dialogs.OpenRequests[0].FilterDescription, "*.nc ");
    EXPECT_EQ(dialogs.OpenRequests[0].FilterPattern, " *.nc");
    EXPECT_TRUE(dialogs.Messages.empty());
    EXPECT_EQ(window->FileName(), path);
    EXPECT_EQ(window->DialogFileTitle(), QStringLiteral("part.nc"));
    EXPECT_FALSE(window->translator().State().AbortTranslation);

    // The status line: the file being opened, then the phases, then the file title; the
    // position readout during translation shows where the (empty) record buffer is.
    ASSERT_FALSE(dialogs.Snapshots.empty());
    EXPECT_EQ(dialogs.Snapshots.front().Pointer, MousePointer::Hourglass);
    EXPECT_EQ(dialogs.Snapshots.front().Comment, QStringLiteral(" Opening file ") + QString::fromStdString(path));
    EXPECT_EQ(dialogs.Snapshots.back().Pointer, MousePointer::Default);
    QStringList codes;
    for (const StatusSnapshot& shot : dialogs.Snapshots) {
        if (codes.isEmpty() || codes.back() != shot.Code)
            codes << shot.Code;
        if (shot.Code == QStringLiteral(" Translating file.")) {
            EXPECT_EQ(shot.X, QStringLiteral(" X 0.0"));
            EXPECT_EQ(shot.Y, QStringLiteral(" Y 0.0"));
        }
    }
    EXPECT_EQ(codes, QStringList({codeBefore, QStringLiteral(" Translating file."), QStringLiteral(" Drawing file."),
                                  QStringLiteral(" part.nc")}));
    EXPECT_EQ(window->lblComment()->text(), QStringLiteral(" Opening file ") + QString::fromStdString(path));
    EXPECT_EQ(window->lblCode()->text(), QStringLiteral(" part.nc"));

    // The commands that need a program, except Pause and Stop.
    for (const char* key : {"Clear", "Print", "Preview", "Pan", "ZoomExtends", "ZWindow", "ZIn", "ZOut", "Refresh",
                            "Step", "Slow", "GCode", "Rapid", "Axis", "ToolColors"})
        EXPECT_TRUE(window->button(QString::fromLatin1(key))->isEnabled()) << key;
    EXPECT_FALSE(window->button(QStringLiteral("Pause"))->isEnabled());
    EXPECT_FALSE(window->button(QStringLiteral("Stop"))->isEnabled());
    EXPECT_TRUE(Action("mnuRedraw")->isEnabled());
    EXPECT_TRUE(Action("mnuZoomMain")->isEnabled());
    EXPECT_TRUE(window->programLoaded());

    // The recent list, in the store and in the File menu.
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{path, "Not Used", "Not Used", "Not Used"}));
    EXPECT_TRUE(Action("mnuRecentFile0")->isVisible());
    EXPECT_TRUE(Action("mnuRecentFile1")->isVisible());
    EXPECT_EQ(Action("mnuRecentFile1")->data().toString().toStdString(), path);
    EXPECT_FALSE(Action("mnuRecentFile2")->isVisible());

    // The picture.
    const QImage picture = Picture();
    struct Spot {
        const char* what;
        int x, y;
        QColor colour;
    };
    const Spot spots[] = {
        {"cut, first pixel", 90, 165, Blue},
        {"cut, middle", 330, 165, Blue},
        {"cut, last pixel", 570, 165, Blue},
        {"left of the cut", 89, 165, White},
        {"right of the cut", 571, 165, White},
        {"first rapid, dot on", 31, 106, Blue},
        {"first rapid, dot off", 34, 109, White},
        {"first rapid, last dot", 86, 161, Blue},
        {"second rapid, diagonal", 576, 171, Blue},
        {"second rapid, diagonal gap", 573, 168, White},
        {"second rapid, straight leg from its corner", 630, 225, Blue},
        {"second rapid, straight leg gap", 633, 225, White},
        {"second rapid, last dot", 686, 225, Blue},
        {"second rapid, end left out", 690, 225, White},
        {"vertical axis, dash", 30, 5, Black},
        {"vertical axis, gap", 30, 20, White},
        {"vertical axis, bottom", 30, 389, Black},
        {"horizontal axis, dash", 5, 105, Black},
        {"horizontal axis, gap", 20, 105, White},
        {"horizontal axis, right end", 779, 105, Black},
        {"origin, both axes", 30, 105, Black},
        {"empty corner", 700, 350, White},
    };
    for (const Spot& spot : spots)
        EXPECT_EQ(picture.pixelColor(spot.x, spot.y), spot.colour) << spot.what;
    EXPECT_EQ(CountOf(picture, Blue), CutPixels + FirstRapidPixels + SecondRapidPixels);
    EXPECT_EQ(CountOf(picture, Black), AxisPixels);

    // "Rapid" redraws the whole program without the rapids, and back.
    window->button(QStringLiteral("Rapid"))->trigger();
    EXPECT_FALSE(window->settings().ShowRapid);
    const QImage noRapids = Picture();
    EXPECT_EQ(CountOf(noRapids, Blue), CutPixels);
    EXPECT_EQ(noRapids.pixelColor(330, 165), Blue);
    EXPECT_EQ(noRapids.pixelColor(31, 106), White);
    EXPECT_EQ(noRapids.pixelColor(630, 225), White);
    EXPECT_EQ(CountOf(noRapids, Black), AxisPixels);
    window->button(QStringLiteral("Rapid"))->trigger();
    EXPECT_EQ(Picture(), picture);

    // "Axis" redraws without the axis; the first rapid's first dot shows at the origin.
    window->button(QStringLiteral("Axis"))->trigger();
    EXPECT_FALSE(window->settings().ShowAxis);
    const QImage noAxis = Picture();
    EXPECT_EQ(CountOf(noAxis, Black), 0);
    EXPECT_EQ(noAxis.pixelColor(30, 5), White);
    EXPECT_EQ(noAxis.pixelColor(5, 105), White);
    EXPECT_EQ(noAxis.pixelColor(30, 105), Blue);
    EXPECT_EQ(CountOf(noAxis, Blue), CutPixels + FirstRapidPixels + 1 + SecondRapidPixels);
    window->button(QStringLiteral("Axis"))->trigger();
    EXPECT_EQ(Picture(), picture);
    EXPECT_TRUE(dialogs.Messages.empty());
}

TEST_F(OpenFile, CancelKeepsProgramPictureAndMenus)
{
    const std::string path = programs.Write("part.nc", Part);
    Start();

    // Nothing loaded yet: the menus stay off and the command leaves no abort behind.
    OpenCommand(std::nullopt);
    EXPECT_EQ(dialogs.OpenRequests.size(), 1u);
    EXPECT_TRUE(dialogs.Messages.empty());
    EXPECT_FALSE(window->translator().State().AbortTranslation);
    EXPECT_FALSE(Action("mnuRedraw")->isEnabled());
    EXPECT_FALSE(window->button(QStringLiteral("Refresh"))->isEnabled());
    EXPECT_FALSE(window->programLoaded());
    EXPECT_TRUE(window->FileName().empty());

    OpenCommand(path);
    ASSERT_EQ(window->lblCode()->text(), QStringLiteral(" part.nc"));
    const QImage picture = Picture();
    ASSERT_EQ(CountOf(picture, Blue), CutPixels + FirstRapidPixels + SecondRapidPixels);

    // OpenFile on its own leaves the abort flag up; the picture is drawn again as it was.
    dialogs.OpenAnswers.push_back(std::nullopt);
    window->OpenFile();
    EXPECT_TRUE(window->translator().State().AbortTranslation);
    EXPECT_TRUE(dialogs.Messages.empty());
    EXPECT_EQ(Picture(), picture);
    // The dialog step empties the file name and the comment label before asking.
    EXPECT_TRUE(window->FileName().empty());
    EXPECT_TRUE(window->lblComment()->text().isEmpty());
    EXPECT_EQ(window->lblCode()->text(), QStringLiteral(" part.nc"));

    // Through the command: menus and controls keep their state, the flag is lowered.
    OpenCommand(std::nullopt);
    EXPECT_EQ(dialogs.OpenRequests.size(), 4u);
    EXPECT_FALSE(window->translator().State().AbortTranslation);
    EXPECT_TRUE(dialogs.Messages.empty());
    EXPECT_EQ(Picture(), picture);
    EXPECT_TRUE(Action("mnuRedraw")->isEnabled());
    EXPECT_TRUE(window->button(QStringLiteral("Refresh"))->isEnabled());
    EXPECT_TRUE(window->programLoaded());
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{path, "Not Used", "Not Used", "Not Used"}));

    // The program is still the one drawn: Refresh shows it again.
    window->button(QStringLiteral("Refresh"))->trigger();
    EXPECT_EQ(Picture(), picture);
}

TEST_F(OpenFile, EmptyFileIsRefusedAndChangesNothing)
{
    const std::string path = programs.Write("part.nc", Part);
    const std::string empty = programs.Write("empty.nc", "");
    Start();

    // Opened directly, with the menus already on: only Step Details is switched off.
    window->SetMenus(true);
    dialogs.OpenAnswers.push_back(path);
    window->OpenFile();
    EXPECT_FALSE(Action("mnuDetails")->isEnabled());
    EXPECT_TRUE(Action("mnuStep")->isEnabled());
    EXPECT_TRUE(Action("mnuRedraw")->isEnabled());
    const QImage picture = Picture();
    ASSERT_EQ(CountOf(picture, Blue), CutPixels + FirstRapidPixels + SecondRapidPixels);

    OpenCommand(empty);
    ASSERT_EQ(dialogs.Messages.size(), 1u);
    EXPECT_EQ(dialogs.Messages[0].Text, empty + " is an empty file");
    EXPECT_EQ(dialogs.Messages[0].Title, "Corvane Backplot");
    EXPECT_EQ(dialogs.Messages[0].Icon, MsgIcon::Critical);
    EXPECT_EQ(dialogs.Messages[0].Buttons, MsgButtons::Ok);
    // The old picture and status stay; the file name is the one the dialog returned.
    EXPECT_EQ(Picture(), picture);
    EXPECT_EQ(window->FileName(), empty);
    EXPECT_EQ(window->lblCode()->text(), QStringLiteral(" part.nc"));
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{path, "Not Used", "Not Used", "Not Used"}));
    EXPECT_FALSE(Action("mnuRecentFile2")->isVisible());
    EXPECT_TRUE(window->button(QStringLiteral("Refresh"))->isEnabled());

    // The records of the old program are still there to draw.
    window->button(QStringLiteral("Refresh"))->trigger();
    EXPECT_EQ(Picture(), picture);
}

TEST_F(OpenFile, ReopeningFromTheRecentListKeepsItsPlace)
{
    const std::string first = programs.Write("part.nc", Part);
    const std::string second = programs.Write("other.nc", OtherPart);
    Start();

    OpenCommand(first);
    const QImage firstPicture = Picture();
    OpenCommand(second);
    ASSERT_NE(Picture(), firstPicture);
    ASSERT_EQ(StoredRecent(), (std::vector<std::string>{second, first, "Not Used", "Not Used"}));
    ASSERT_TRUE(Action("mnuRecentFile2")->isVisible());
    ASSERT_EQ(Action("mnuRecentFile2")->data().toString().toStdString(), first);

    Action("mnuRecentFile2")->trigger();
    EXPECT_EQ(dialogs.OpenRequests.size(), 2u); // no dialog
    EXPECT_TRUE(dialogs.Messages.empty());
    EXPECT_EQ(window->FileName(), first);
    EXPECT_EQ(Picture(), firstPicture);
    EXPECT_EQ(window->lblComment()->text(), QStringLiteral(" Opening file ") + QString::fromStdString(first));
    EXPECT_EQ(window->lblCode()->text(), QStringLiteral("  ") + QString::fromStdString(first));
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{second, first, "Not Used", "Not Used"}));
    EXPECT_EQ(Action("mnuRecentFile1")->data().toString().toStdString(), second);
    EXPECT_EQ(Action("mnuRecentFile2")->data().toString().toStdString(), first);
    EXPECT_FALSE(Action("mnuRecentFile3")->isVisible());
    EXPECT_TRUE(Action("mnuRedraw")->isEnabled());

    // The next dialog open still goes to the top of the list.
    OpenCommand(first);
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{first, second, first, "Not Used"}));
}

TEST_F(OpenFile, MissingRecentFileIsReportedAndTheOldPictureStays)
{
    const std::string missing = programs.Folder() + "gone.nc";
    StoreRecent(1, missing);
    const std::string path = programs.Write("part.nc", Part);
    Start();
    ASSERT_EQ(Action("mnuRecentFile1")->data().toString().toStdString(), missing);

    OpenCommand(path);
    const QImage picture = Picture();
    ASSERT_EQ(Action("mnuRecentFile2")->data().toString().toStdString(), missing);

    Action("mnuRecentFile2")->trigger();
    ASSERT_EQ(dialogs.Messages.size(), 1u);
    EXPECT_EQ(dialogs.Messages[0].Text, "An error as occurred while prossessing the file ");
    EXPECT_EQ(dialogs.Messages[0].Title, "Corvane Backplot");
    EXPECT_EQ(dialogs.Messages[0].Icon, MsgIcon::Critical);
    EXPECT_EQ(Picture(), picture);
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{path, missing, "Not Used", "Not Used"}));
    EXPECT_EQ(window->lblCode()->text(), QStringLiteral("  ") + QString::fromStdString(missing));
    EXPECT_TRUE(window->button(QStringLiteral("Refresh"))->isEnabled());
    EXPECT_TRUE(Action("mnuRedraw")->isEnabled());
    EXPECT_EQ(dialogs.Pointers.back(), MousePointer::Default);
}

} // namespace
} // namespace backplot
