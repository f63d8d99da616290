#include "SourceView.h"
#include "StepListing.h"
#include "WindowFixture.h"
#include "WindowPlacement.h"

#include <QScreen>

namespace backplot {
namespace {

// Two screens side by side, each with a panel along its bottom.
const QRect Left(0, 0, 1920, 1050);
const QRect Right(1920, 0, 1280, 994);

TEST(WindowPlacement, ASavedGeometryOnAScreenIsKeptElseItFitsTheScreenItOpensOn)
{
    const QRect onRight(2000, 100, 1000, 700);
    EXPECT_EQ(WindowPlacement::Fit(onRight, {Left, Right}, Left, {1000, 720}), onRight);
    // The right screen is gone: the same size, centred on the left one.
    EXPECT_EQ(WindowPlacement::Fit(onRight, {Left}, Left, {1000, 720}), QRect(460, 175, 1000, 700));
    // Half off its screen: not held whole by any, so it comes back centred too.
    EXPECT_EQ(WindowPlacement::Fit(QRect(1500, 100, 1000, 700), {Left, Right}, Right, {1000, 720}),
              QRect(2060, 147, 1000, 700));
    // Left at 1800 x 1000 on a screen now 1280 x 1000: nine tenths of it, 1152 x 900.
    EXPECT_EQ(WindowPlacement::Fit(QRect(50, 20, 1800, 1000), {QRect(0, 0, 1280, 1000)}, QRect(0, 0, 1280, 1000),
                                   {1000, 720}),
              QRect(64, 50, 1152, 900));
    // First start on a 1280 x 1024 screen: 1000 x 720 fits; at a scale factor of 2 the
    // screen is 640 x 512 logical pixels, and the window 576 x 460 of them.
    EXPECT_EQ(WindowPlacement::Fit(std::nullopt, {QRect(0, 0, 1280, 1024)}, QRect(0, 0, 1280, 1024), {1000, 720}),
              QRect(140, 152, 1000, 720));
    EXPECT_EQ(WindowPlacement::Fit(std::nullopt, {QRect(0, 0, 640, 512)}, QRect(0, 0, 640, 512), {1000, 720}),
              QRect(32, 26, 576, 460));
}

class Placement : public test::WindowFixture {
protected:
    QSettings Stored() const { return QSettings(scope.SettingsFile(), QSettings::IniFormat); }
};

// The offscreen screen is 800 x 800: a window fits in 720 x 720, centred on (399, 399).
TEST_F(Placement, TheWindowComesBackAsItWasLeftOrFittedWhenThatIsOffEveryScreen)
{
    ASSERT_EQ(QGuiApplication::primaryScreen()->availableGeometry(), QRect(0, 0, 800, 800));
    Start();
    EXPECT_EQ(window->geometry(), QRect(40, 40, 720, 720)); // a first start
    window->show();
    window->setGeometry(30, 20, 700, 500);
    QApplication::processEvents();
    OpenCommand(programs.Write("part.nc", test::Part));
    Action("mnuSource")->trigger();
    const int sourceWidth = window->sourceView().width();
    ASSERT_GT(sourceWidth, 200); // two fifths of the room
    window->close();
    {
        QSettings stored = Stored();
        EXPECT_EQ(stored.value("Window/Geometry").toRect(), QRect(30, 20, 700, 500));
        EXPECT_EQ(stored.value("Window/SourceWidth").toInt(), sourceWidth);
        EXPECT_EQ(stored.value("Settings/Mill").toString(), "-1"); // the preferences beside it
    }

    // Restarted, the source view gets the room it had, not two fifths of a new layout.
    Stored().setValue("Window/SourceWidth", 150);
    StartWithPart();
    EXPECT_EQ(window->geometry().topLeft(), QPoint(30, 20));
    Action("mnuSource")->trigger();
    EXPECT_EQ(window->sourceView().width(), 150);
    window->sourceView().hide(); // hidden, it keeps what it had
    window->close();
    EXPECT_EQ(Stored().value("Window/SourceWidth").toInt(), 150);
    EXPECT_FALSE(Stored().contains("Window/StepsHeight")); // never shown, never stored

    // Off every screen, or larger than this one: fitted to it and centred.
    Stored().setValue("Window/Geometry", QRect(3000, 2000, 700, 500));
    Start();
    EXPECT_EQ(window->geometry(), QRect(50, 150, 700, 500));
    Stored().setValue("Window/Geometry", QRect(0, 0, 1200, 900));
    Stored().setValue("Window/Maximized", true);
    Start();
    EXPECT_EQ(window->geometry(), QRect(40, 40, 720, 720));
    EXPECT_TRUE(window->windowState() & Qt::WindowMaximized);
}

} // namespace
} // namespace backplot
