#include "CanvasWidget.h"
#include "TKZColorSelector.h"
#include "WindowFixture.h"
#include "frmProperties.h"

#include <QApplication>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

namespace backplot {
namespace {

using test::ScratchDir;

class PropertiesCommand : public test::WindowFixture {
protected:
    // Opens the dialog from the toolbar and lets `work` use it before OK closes it.
    void RunDialog(const std::function<void(frmProperties&)>& work)
    {
        bool shown = false;
        QTimer::singleShot(0, [&] {
            auto* open = qobject_cast<frmProperties*>(QApplication::activeModalWidget());
            if (!open)
                return;
            shown = true;
            work(*open);
            open->findChild<QPushButton*>("cmdProperties0")->click();
        });
        Button("Properties")->trigger();
        EXPECT_TRUE(shown);
    }
    static void Apply(frmProperties& open)
    {
        open.Timer1_Timer();
        open.findChild<QPushButton*>("cmdProperties2")->click();
    }
    int Count(const QColor& colour) const
    {
        const QImage picture = window->canvas().Picture();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixelColor(x, y) == colour;
        return count;
    }
};

TEST_F(PropertiesCommand, NewBackColourRedrawsThePlotAndLatheReachesTheTranslator)
{
    const ScratchDir programs;
    Start().show();
    QApplication::processEvents();
    dialogs.OpenAnswers.push_back(programs.Write("part.nc", "G1 X10 Y0\r\nX10 Y5\r\n"));
    Button("Open")->trigger();
    const QColor blue(0, 0, 255), red(255, 0, 0);
    const int cutPixels = Count(blue);
    ASSERT_GT(cutPixels, 0);
    ASSERT_TRUE(window->translator().State().Mill);

    RunDialog([](frmProperties& open) {
        open.findChild<TKZColorSelector*>("clrBack")->SetIndex(12);
        Apply(open);
        open.findChild<QRadioButton*>("chkOpen1")->click();
        Apply(open);
    });

    EXPECT_EQ(window->settings().Backcolor, 0x0000FF);
    EXPECT_EQ(window->canvas().Picture().pixelColor(0, 0), red);
    EXPECT_EQ(Count(blue), cutPixels); // the same cuts, drawn again on red
    EXPECT_FALSE(window->settings().Mill);
    EXPECT_FALSE(window->translator().State().Mill);
}

} // namespace
} // namespace backplot
