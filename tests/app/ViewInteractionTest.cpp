#include "ViewCommands.h"
#include "WindowFixture.h"
#include "frmDrawAids.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QToolBar>
#include <QWheelEvent>

namespace backplot {
namespace {

class ViewInteraction : public test::WindowFixture {
protected:
    void SetUp() override { StartWithPart(); }
    const ViewTransform& View() const { return window->plotter().View; }
    void Drag(QPoint from, std::initializer_list<QPoint> through)
    {
        QTest::mousePress(Canvas(), Qt::LeftButton, {}, from);
        for (const QPoint& p : through) {
            QMouseEvent move(QEvent::MouseMove, p, Canvas()->mapToGlobal(p), Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(Canvas(), &move);
        }
    }
    QColor At(int x, int y) const { return Picture().pixelColor(x, y); }
};

TEST_F(ViewInteraction, ZoomWindowAndPointPanDraggedWithTheMouse)
{
    Button(ToolbarKey::ZWindow)->trigger();
    EXPECT_TRUE(window->view().ZoomWindowMode);
    EXPECT_EQ(Canvas()->cursor().shape(), Qt::BitmapCursor); // our own zoom pointer

    // Pixel (120, 120) is plot (15, 2.5); the box is dragged past (480, 300) to (450, 270).
    Drag({120, 120}, {{480, 300}, {450, 270}});
    EXPECT_EQ(At(300, 120), QColor(Qt::black));  // top edge of the box, inverted white
    EXPECT_EQ(At(450, 200), QColor(Qt::black));  // its right edge now
    EXPECT_EQ(At(480, 200), QColor(Qt::white));  // the first box erased exactly
    EXPECT_EQ(At(300, 300), QColor(Qt::white));
    EXPECT_EQ(At(300, 165), QColor(Qt::blue));   // the cut, outside the box lines
    EXPECT_EQ(window->lblXPos()->text(), " X 70.0"); // (450, 270) is plot (70, 27.5)
    EXPECT_EQ(window->lblYPos()->text(), " Y -27.5");
    EXPECT_EQ(window->lblCode()->text(), QString::fromStdString(window->FileName()) + " ");

    QTest::mouseRelease(Canvas(), Qt::LeftButton, {}, {450, 270});
    // (15, 2.5)-(70, 27.5): 55 by 25, fitted by width: FitSpan 27.5, the height centred.
    ExpectView(15, 1.25f, 70, 28.75f);
    EXPECT_FALSE(window->view().ZoomWindowMode);
    EXPECT_EQ(Canvas()->cursor().shape(), Qt::ArrowCursor);
    // The new view: the cut along stored y 10 is row (10 - 1.25) * 780 / 55 = 124.
    EXPECT_EQ(At(400, 124), QColor(Qt::blue));
    EXPECT_EQ(At(300, 120), QColor(Qt::white)); // no box left behind

    // A click without a drag keeps the scale and draws the same picture again.
    const QImage zoomed = Picture();
    Button(ToolbarKey::ZWindow)->trigger();
    QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {200, 200});
    EXPECT_EQ(Picture(), zoomed);

    // Point pan, from the opened view again.
    Button(ToolbarKey::ZoomExtends)->trigger();
    Button(ToolbarKey::Pan)->trigger();
    EXPECT_TRUE(window->view().PanMode);
    Drag({300, 200}, {{330, 200}, {360, 212}}); // 10 units right, 2 down
    EXPECT_EQ(At(330, 206), QColor(Qt::black)); // the pan line, from (300, 200) down 1 in 5
    QTest::mouseRelease(Canvas(), Qt::LeftButton, {}, {360, 212});
    ExpectView(-15, -19.5f, 115, 45.5f);
    EXPECT_EQ(At(150, 177), QColor(Qt::blue)); // the cut moved with the mouse: row 165 + 12
}

TEST_F(ViewInteraction, ArrowsPlusAndMinusDriveTheViewFromTheKeyboard)
{
    Canvas()->setFocus();
    const float left = View().ViewX1, top = View().ViewY1;
    QTest::keyClick(Canvas(), Qt::Key_Right);
    EXPECT_NEAR(View().ViewX1, left - 0.5f, 1e-4);
    QTest::keyClick(Canvas(), Qt::Key_Up);
    EXPECT_NEAR(View().ViewY1, top + 0.5f, 1e-4);
    QTest::keyClick(Canvas(), Qt::Key_Left);
    QTest::keyClick(Canvas(), Qt::Key_Down);
    ExpectView(-5, -17.5f, 125, 47.5f);

    // The zoom keys, buttons and menu items step the view alike.
    const float span = View().FitSpan; // 65
    const auto key = [&](char c) { return [&, c] { QTest::keyClick(Canvas(), c); }; };
    const auto click = [&](QAction* action) { return [action] { action->trigger(); }; };
    const struct {
        const char* how;
        std::function<void()> press;
        float step;
    } zooms[] = {
        {"+", key('+'), 0.3f},   {"=", key('='), 0.3f},   {"Z In", click(Button(ToolbarKey::ZIn)), 0.3f},
        {"&In", click(Action("mnuZIn")), 0.3f},           {"-", key('-'), -0.3f},
        {"_", key('_'), -0.3f},  {"Z Out", click(Button(ToolbarKey::ZOut)), -0.3f},
        {"&Out", click(Action("mnuZOut")), -0.3f},
    };
    for (const auto& zoom : zooms) {
        window->view().ZoomExtents();
        zoom.press();
        EXPECT_NEAR(View().ViewX1, -5 + zoom.step * span, 1e-3) << zoom.how;
    }
    Button(ToolbarKey::ZIn)->trigger(); // two steps in: Previous would not give the extents
    Button(ToolbarKey::ZIn)->trigger();
    Button(ToolbarKey::ZoomExtends)->trigger();
    ExpectView(-5, -17.5f, 125, 47.5f);
    // The E key: Full Drawing Extents, and its flag, which the next key clears.
    QTest::keyClick(Canvas(), Qt::Key_E);
    ExpectView(-5, -17.5f, 125, 47.5f);
    EXPECT_TRUE(window->view().ExtentsKeyFlag);
    QTest::keyClick(Canvas(), Qt::Key_Left);
    EXPECT_FALSE(window->view().ExtentsKeyFlag);
}

// The wheel takes the zoom step of + and -, about the pointer. Pixel (90, 165) is the cut's
// start, plot (10, 10), 15/130 across and 27.5/65 down the opened view X -5..125, Y -17.5..47.5.
// Zoom in: X 14.5..105.5, Y 2..28, fitted by width: 91 wide (FitSpan 45.5), Y -7.75..37.75.
// There (10, 10)'s shares fall on (25, 11.5), so the view moves by (-15, -1.5): X -0.5..90.5,
// Y -9.25..36.25, and (10, 10) is pixel ((10 + 0.5) * 780 / 91, (10 + 9.25) * 780 / 91) =
// (90, 165) again.
TEST_F(ViewInteraction, WheelZoomsAboutThePointByTheKeysStep)
{
    const auto wheel = [&](QPoint at, int delta) {
        QWheelEvent turn(at, Canvas()->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(Canvas(), &turn);
    };
    wheel({90, 165}, 120);
    ExpectView(-0.5f, -9.25f, 90.5f, 36.25f);
    EXPECT_EQ(At(90, 165), QColor(Qt::blue)); // the cut still starts under the pointer
    EXPECT_EQ(At(90, 166), QColor(Qt::white));
    EXPECT_EQ(At(88, 165), QColor(Qt::white));

    // Out again at the same place, by the - key's step from here: edges 0.3 * 45.5 outward,
    // X -14.15..104.15, fitted by width: FitSpan 59.15, Y centred on 13.5 at -16.075..43.075.
    // (10, 10)'s shares fall on (-0.5, 8.95): the view moves by (10.5, 1.05).
    wheel({90, 165}, -60); // half a notch waits for the other half
    ExpectView(-0.5f, -9.25f, 90.5f, 36.25f);
    wheel({90, 165}, -60);
    ExpectView(-3.65f, -15.025f, 114.65f, 44.125f);
    EXPECT_NEAR(View().FitSpan, 59.15, 1e-3);
    EXPECT_EQ(At(90, 165), QColor(Qt::blue));
    EXPECT_EQ(At(88, 165), QColor(Qt::white));

    // Previous goes back to the view before the last turn.
    wheel({600, 300}, 120);
    Action("mnuZPrev")->trigger();
    ExpectView(-3.65f, -15.025f, 114.65f, 44.125f);
}

// A plate clear of both axes, 100 wide and 20 high: X 5..105 (the circle of the arc with
// the negative R reaches 105), Y 5..25. On the 780 x 390 canvas the opened view is X -10..120
// at 6 pixels a unit: px = 6 x + 60, py = 285 - 6 y. The arc "R-5." from (100, 15) to
// (95, 20) is the long one, three quarters round the centre (100, 20) = pixel (660, 165):
// it passes (105, 20) = (690, 165) and (100, 25) = (660, 135).
constexpr const char* Plate = "G0 X5. Y5.\r\nG1 X95.\r\nG3 X100. Y10. R5.\r\nG1 Y15.\r\nG3 X95. Y20. R-5.\r\n"
                              "G1 X5.\r\nY5.\r\nG0 X50. Y15.\r\nG2 I-5.\r\nM30\r\n";

// Stepping draws each element over what is there; that picture must be the one a redraw
// of the same records gives, however the step listing and the source view have moved the
// canvas's edges meanwhile. The rapids (which start on the axes) are off, so every pixel
// counts.
TEST_F(ViewInteraction, SteppedPictureIsTheRedrawnOneAfterAnOpenAClickAndThePanes)
{
    window->settings().ShowRapid = false;
    const std::string plate = programs.Write("plate.nc", Plate);
    OpenCommand(plate);
    EXPECT_EQ(At(690, 165), QColor(Qt::blue));
    EXPECT_EQ(At(660, 135), QColor(Qt::blue));
    EXPECT_EQ(At(60, 5), QColor(Qt::black)); // the vertical axis across the whole canvas
    const auto expectRedrawnAlike = [this](const char* after) {
        const QImage stepped = Picture();
        EXPECT_GT(test::CountOf(stepped, Qt::blue), 200) << after;
        Type('R');
        EXPECT_EQ(test::Differences(stepped, Picture()), 0) << after;
    };

    // Right after the open: the listing appears at the first step and takes its room.
    Canvas()->setFocus();
    for (int i = 0; i < 6; ++i) {
        Type('S');
        QApplication::processEvents(); // what the window does between two key presses
    }
    EXPECT_LT(Canvas()->height(), 390);
    expectRedrawnAlike("six steps");

    // A click steps, and its release draws the axis once more, on the same pixels.
    QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {400, 100});
    EXPECT_EQ(window->plotter().PlotLast, 7);
    expectRedrawnAlike("a click");

    // The source view narrows the canvas and fits the plot to it; stepping goes on.
    Button(ToolbarKey::GCode)->trigger();
    Type('S');
    expectRedrawnAlike("the source view shown");

    // Another open while stepping hides the listing; the next step shows it again.
    Button(ToolbarKey::Stop)->trigger();
    OpenCommand(plate);
    Type('S');
    Type('S');
    EXPECT_EQ(window->plotter().PlotLast, 2);
    expectRedrawnAlike("a second open");
}

TEST_F(ViewInteraction, DrawingAidsApplyOnOkAndCrossHairsAndAutoRedrawOffRefuseEachOther)
{
    Settings& s = window->settings();
    {
        // Cancel applies nothing.
        frmDrawAids aids(s, false, dialogs, {}, window.get());
        aids.chkModes(3)->setChecked(false);
        aids.chkModes(1)->setChecked(true);
        aids.reject();
        EXPECT_TRUE(s.ShowAxis);
        EXPECT_FALSE(s.ShowBlips);
    }
    {
        // Cross hairs need Auto Redraw; the other three still apply.
        frmDrawAids aids(s, false, dialogs, {}, window.get());
        EXPECT_EQ(aids.windowTitle(), "Drawing Aids");
        EXPECT_EQ(aids.chkModes(0)->text(), "Cross Hairs");
        aids.chkModes(0)->setChecked(true);
        aids.chkModes(1)->setChecked(true);
        aids.chkModes(2)->setChecked(false);
        aids.cmdOK_Click();
        EXPECT_FALSE(s.CrossHairs);
        EXPECT_TRUE(s.ShowBlips);
        EXPECT_FALSE(s.ShowRapid);
        EXPECT_EQ(dialogs.Messages, (std::vector<test::ScriptedDialogs::ShownMessage>{
                                        {"Please set AutoRedraw to on before using this option.", "Corvane Backplot",
                                         MsgIcon::None, MsgButtons::Ok}}));
    }
    {
        int hidden = 0;
        frmDrawAids aids(s, true, dialogs, [&] { ++hidden; }, window.get());
        aids.chkModes(0)->setChecked(true);
        aids.cmdOK_Click();
        EXPECT_TRUE(s.CrossHairs);
        aids.chkModes(0)->setChecked(false);
        aids.cmdOK_Click();
        EXPECT_FALSE(s.CrossHairs);
        EXPECT_EQ(hidden, 1);
    }

    // From the menu with Auto Redraw off: the plot is drawn again at once without the axis
    // and the rapid lines, with the rapid points; the toolbar's toggles follow.
    s.ShowRapid = true;
    s.ShowBlips = false;
    ASSERT_EQ(At(30, 5), QColor(Qt::black)); // a dash of the vertical axis
    ASSERT_TRUE(Button(ToolbarKey::Axis)->isChecked() && Button(ToolbarKey::Rapid)->isChecked());
    QTimer::singleShot(0, [] {
        auto* aids = qobject_cast<frmDrawAids*>(QApplication::activeModalWidget());
        ASSERT_NE(aids, nullptr);
        aids->chkModes(3)->setChecked(false);
        aids->chkModes(2)->setChecked(false);
        aids->chkModes(1)->setChecked(true);
        aids->findChild<QPushButton*>("cmdOK")->click();
    });
    Action("mnuDrawAids")->trigger();
    EXPECT_FALSE(s.ShowAxis);
    EXPECT_EQ(At(30, 5), QColor(Qt::white));
    // The first rapid's end, (10, 10) stored, is pixel (90, 165); its cross reaches
    // 0.65 units (4 pixels) up. Its dog-leg, through (85, 160), is gone.
    EXPECT_EQ(At(90, 162), QColor(Qt::blue));
    EXPECT_EQ(At(85, 160), QColor(Qt::white));
    EXPECT_FALSE(Button(ToolbarKey::Axis)->isChecked());
    EXPECT_FALSE(Button(ToolbarKey::Rapid)->isChecked());

    // A screen reader's Toggle on the Axis button runs its command, as a click does.
    QWidget* axis = window->findChild<QToolBar*>("cToolbar1")->widgetForAction(Button(ToolbarKey::Axis));
    QAccessible::queryAccessibleInterface(axis)->actionInterface()->doAction(
        QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(s.ShowAxis);
    EXPECT_TRUE(Button(ToolbarKey::Axis)->isChecked());
    EXPECT_TRUE(qobject_cast<QAbstractButton*>(axis)->isChecked());
    EXPECT_EQ(At(30, 5), QColor(Qt::black));

    // The other way round: Auto Redraw cannot be turned off while the cross hairs are on.
    dialogs.Messages.clear();
    QAction* on = Action("mnuAutoOn");
    QAction* off = Action("mnuAutoOff");
    on->trigger();
    on->trigger(); // the checked entry again stays checked
    EXPECT_TRUE(on->isChecked() && !off->isChecked() && s.AutoDraw);
    s.CrossHairs = true;
    off->trigger();
    EXPECT_EQ(dialogs.Messages, (std::vector<test::ScriptedDialogs::ShownMessage>{
                                    {"Please turn the cross hairs off\r\nbefore using this option.", "Corvane Backplot",
                                     MsgIcon::None, MsgButtons::Ok}}));
    EXPECT_TRUE(on->isChecked() && !off->isChecked() && s.AutoDraw);
    s.CrossHairs = false;
    off->trigger();
    EXPECT_EQ(dialogs.Messages.size(), 1u);
    EXPECT_TRUE(!on->isChecked() && off->isChecked() && !s.AutoDraw);
}

} // namespace
} // namespace backplot
