#include "TKZColorSelector.h"
#include "WindowFixture.h"
#include "frmProperties.h"

#include <QPushButton>
#include <QRadioButton>

namespace backplot {
namespace {

using PropertiesCommand = test::WindowFixture;

TEST_F(PropertiesCommand, NewBackColourRedrawsThePlotAndLatheReachesTheTranslator)
{
    StartShown();
    OpenCommand(programs.Write("part.nc", "G1 X10 Y0\r\nX10 Y5\r\n"));
    const QColor blue(0, 0, 255), red(255, 0, 0);
    const int cutPixels = test::CountOf(Picture(), blue);
    ASSERT_GT(cutPixels, 0);
    ASSERT_TRUE(window->translator().State().Mill);

    bool shown = false;
    test::OnNextModal([&](QWidget* modal) {
        auto* open = qobject_cast<frmProperties*>(modal);
        if (!open)
            return void(modal->close());
        shown = true;
        const auto apply = [open] {
            open->Timer1_Timer();
            open->findChild<QPushButton*>("cmdProperties2")->click();
        };
        open->findChild<TKZColorSelector*>("clrBack")->SetIndex(12);
        apply();
        open->findChild<QRadioButton*>("chkOpen1")->click();
        apply();
        open->findChild<QPushButton*>("cmdProperties0")->click();
    });
    Button("Properties")->trigger();
    EXPECT_TRUE(shown);

    EXPECT_EQ(window->settings().Backcolor, 0x0000FF);
    EXPECT_EQ(Picture().pixelColor(0, 0), red);
    EXPECT_EQ(test::CountOf(Picture(), blue), cutPixels); // the same cuts, drawn again on red
    EXPECT_FALSE(window->settings().Mill);
    EXPECT_FALSE(window->translator().State().Mill);
}

} // namespace
} // namespace backplot
