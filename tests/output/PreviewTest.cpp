#include "CanvasWidget.h"
#include "OutputCommands.h"
#include "OutputTestSupport.h"
#include "frmPreview.h"

#include <QAction>
#include <QApplication>
#include <QFrame>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>
#include <gtest/gtest.h>

#include <filesystem>

namespace backplot {
namespace {

constexpr const char* Rectangle = "G0 X0 Y0\nG1 X40.\nG1 Y10.\nG1 X0.\nG1 Y0.\n";

template <class T>
T* Child(QObject& parent, const char* name)
{
    auto* child = parent.findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(child, nullptr) << name;
    return child;
}

// Gives the preview window the size at which its canvas is `width` x `height`.
void SizeCanvas(frmPreview& window, int width, int height)
{
    window.resize(width, window.menuBar()->height() + frmPreview::StripHeight + height);
    QApplication::processEvents();
}

TEST(frmPreview, ControlsNamesAndCaptions)
{
    frmPreview window;
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Print Preview"));
    auto* exit = Child<QToolButton>(window, "cmdExit");
    auto* print = Child<QToolButton>(window, "cmdPrint");
    ASSERT_TRUE(exit && print);
    EXPECT_EQ(exit->toolTip(), QStringLiteral("Exit print preview"));
    EXPECT_EQ(print->toolTip(), QStringLiteral("Send to printer"));
    EXPECT_EQ(exit->accessibleName(), QStringLiteral("Exit print preview"));
    EXPECT_EQ(print->accessibleName(), QStringLiteral("Send to printer"));
    EXPECT_FALSE(exit->icon().isNull());
    EXPECT_FALSE(print->icon().isNull());
    EXPECT_NE(Child<QFrame>(window, "picTBar"), nullptr);
    EXPECT_EQ(Child<CanvasWidget>(window, "picView"), &window.picView());

    auto* file = Child<QMenu>(window, "mnuFilemain");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->title(), QStringLiteral("&File"));
    const QList<QAction*> items = file->actions();
    ASSERT_EQ(items.size(), 3);
    EXPECT_EQ(items[0]->objectName(), QStringLiteral("mnuPrint"));
    EXPECT_EQ(items[0]->text(), QStringLiteral("&Print"));
    EXPECT_EQ(items[1]->objectName(), QStringLiteral("mnuFBar1"));
    EXPECT_TRUE(items[1]->isSeparator());
    EXPECT_EQ(items[2]->objectName(), QStringLiteral("mnuExit"));
    EXPECT_EQ(items[2]->text(), QStringLiteral("E&xit"));
}

TEST(frmPreview, CanvasTakesWhatTheStripLeavesEvenBelowItsHeight)
{
    frmPreview window;
    window.show();
    SizeCanvas(window, 500, 120);
    auto* strip = Child<QFrame>(window, "picTBar");
    ASSERT_NE(strip, nullptr);
    EXPECT_EQ(strip->geometry(), QRect(0, 0, 500, frmPreview::StripHeight));
    EXPECT_EQ(window.picView().geometry(), QRect(0, frmPreview::StripHeight, 500, 120));
    EXPECT_EQ(window.picView().Surface().PixelHeight(), 120);

    // Lower than the strip: the canvas keeps its place with no height; nothing fails.
    window.resize(300, window.menuBar()->height() + 10);
    QApplication::processEvents();
    EXPECT_EQ(window.picView().geometry(), QRect(0, frmPreview::StripHeight, 300, 0));
    EXPECT_FALSE(window.grab().isNull());

    SizeCanvas(window, 400, 200);
    EXPECT_EQ(window.picView().geometry(), QRect(0, frmPreview::StripHeight, 400, 200));
}

class PreviewCommand : public ::testing::Test {
protected:
    PreviewCommand() { rig.Config.ShowAxis = false; }
    void Preview()
    {
        output.PrintPreview(rig.View, rig.T, rig.Config, rig.Dialogs, [this] { ++redraws; }, [this] { ++prints; });
    }
    QImage Picture() { return output.Preview()->picView().Picture(); }

    test::PlotRig rig;
    OutputCommands output;
    int redraws = 0;
    int prints = 0;
};

TEST_F(PreviewCommand, DrawsTheMainViewWithThePrintersRules)
{
    rig.Open(Rectangle);
    rig.SetView(-10, -25, 50, 15);
    Preview(); // makes the window
    ASSERT_NE(output.Preview(), nullptr);
    EXPECT_TRUE(output.Preview()->isVisible());
    SizeCanvas(*output.Preview(), 400, 200);
    rig.SetView(-10, -25, 50, 15);
    Preview();
    EXPECT_EQ(redraws, 2);
    EXPECT_TRUE(rig.Dialogs.Messages.empty());

    // 60 x 40 units on 400 x 200 pixels: fitted by the width, 6.67 pixels a unit, 30 units
    // high about y = -5 (SetCoords wrote that back into the shared view).
    EXPECT_FLOAT_EQ(rig.View.View.ViewY1, -20);
    EXPECT_FLOAT_EQ(rig.View.View.ViewY2, 10);
    const QImage picture = Picture();
    ASSERT_EQ(picture.size(), QSize(400, 200));
    const QRgb black = qRgb(0, 0, 0), white = qRgb(255, 255, 255);
    // The rectangle's edges: x 0 and 40 at pixels 67 and 333, stored y -10 and 0 at 67 and 133.
    EXPECT_EQ(picture.pixel(200, 67), black);
    EXPECT_EQ(picture.pixel(200, 133), black);
    EXPECT_EQ(picture.pixel(67, 100), black);
    EXPECT_EQ(picture.pixel(333, 100), black);
    EXPECT_EQ(picture.pixel(200, 100), white);
    EXPECT_EQ(picture.pixel(200, 66), white);
    EXPECT_EQ(picture.pixel(334, 100), white);
    EXPECT_EQ(rig.Dialogs.Pointers.back(), MousePointer::Default);
}

TEST_F(PreviewCommand, EmptyRecordFileShowsAnEmptyCanvas)
{
    rig.Config.ShowAxis = true;
    rig.Open("(nothing but a comment)\n");
    ASSERT_EQ(rig.View.RecordTotal, 0);
    Preview();
    const QImage picture = Picture();
    ASSERT_FALSE(picture.isNull());
    int drawn = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            drawn += picture.pixel(x, y) != qRgb(255, 255, 255);
    EXPECT_EQ(drawn, 0);
    EXPECT_EQ(redraws, 1);
    EXPECT_TRUE(rig.Dialogs.Messages.empty());
}

TEST_F(PreviewCommand, FailureShowsTheMessageAndDoesNotRedraw)
{
    rig.Open(Rectangle);
    rig.SetView(-10, -25, 50, 15);
    Preview();
    ASSERT_EQ(redraws, 1);
    // A window lower than its strip leaves a canvas of no height to fit the view to.
    output.Preview()->resize(300, output.Preview()->menuBar()->height() + 10);
    QApplication::processEvents();
    Preview();
    using Message = test::ScriptedDialogs::ShownMessage;
    EXPECT_EQ(rig.Dialogs.Messages,
              (std::vector<Message>{{"Print Preview Error!", "Corvane Backplot", MsgIcon::None, MsgButtons::Ok}}));
    EXPECT_EQ(redraws, 1);
    EXPECT_EQ(rig.Dialogs.Pointers.back(), MousePointer::Default);
}

TEST_F(PreviewCommand, PrintAsksTheMainWindowAndExitClosesTheWindow)
{
    rig.Open(Rectangle);
    rig.SetView(-10, -25, 50, 15);
    Preview();
    frmPreview* window = output.Preview();
    ASSERT_NE(window, nullptr);
    Child<QToolButton>(*window, "cmdPrint")->click();
    Child<QAction>(*window, "mnuPrint")->trigger();
    EXPECT_EQ(prints, 2);

    // The same window is used again.
    Preview();
    EXPECT_EQ(output.Preview(), window);

    Child<QToolButton>(*window, "cmdExit")->click();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(output.Preview(), nullptr);

    // A new one the next time; "E&xit" closes it as well.
    Preview();
    ASSERT_NE(output.Preview(), nullptr);
    Child<QAction>(*output.Preview(), "mnuExit")->trigger();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(output.Preview(), nullptr);
    EXPECT_EQ(prints, 2);
}

} // namespace
} // namespace backplot
