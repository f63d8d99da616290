#include "frmDetails.h"

#include "DetailsReport.h"

#include <QApplication>
#include <QFontInfo>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <gtest/gtest.h>

namespace backplot {
namespace {

EntityRecord MillLine()
{
    EntityRecord r;
    r.MoveType = 1;
    r.SetBlockText("G01 X1. Y1.");
    r.EndX = 1;
    r.EndY = -1;
    r.ToolNum = 4;
    return r;
}

struct MainWindow {
    QWidget widget;
    MainWindow()
    {
        widget.setGeometry(120, 90, 1000, 760);
        widget.show();
    }
};

TEST(frmDetails, ShowsTheReportOfTheBufferInAFixedPitchSelectableBox)
{
    MainWindow main;
    EntityRecord record = MillLine();
    frmDetails* window = frmDetails::ShowReport(&main.widget, record, true, [] {});
    ASSERT_NE(window, nullptr);
    QApplication::processEvents();

    EXPECT_EQ(window->windowTitle(), QStringLiteral("Details"));
    EXPECT_EQ(window->objectName(), QStringLiteral("frmDetails"));
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->isModal());
    // The report's own texts are pinned down in DetailsReportTest; here they must all show.
    QStringList lines;
    for (const std::string& line : DetailsReport(record, true))
        lines.append(QString::fromStdString(line));
    const QString expected = lines.join(QLatin1Char('\n'));
    ASSERT_TRUE(expected.endsWith(QStringLiteral("\n Angle        45.0")));
    EXPECT_EQ(window->ReportText(), expected);

    auto* box = window->findChild<QPlainTextEdit*>(QStringLiteral("txtReport"));
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isReadOnly());
    EXPECT_TRUE(box->textInteractionFlags() & Qt::TextSelectableByMouse);
    EXPECT_TRUE(QFontInfo(box->font()).fixedPitch());
    EXPECT_EQ(box->horizontalScrollBar()->maximum(), 0) << "the longest line fits";
    EXPECT_FALSE(box->accessibleName().isEmpty());

    // A snapshot: a later step does not change it; the command again reuses the window.
    record.ToolNum = 7;
    EXPECT_EQ(window->ReportText(), expected);
    EXPECT_EQ(frmDetails::ShowReport(&main.widget, record, true, [] {}), window);
    EXPECT_TRUE(window->ReportText().contains(QStringLiteral(" Last T#       7 \n")));
    window->close();
}

TEST(frmDetails, OpensCentredOverTheMainWindow)
{
    MainWindow main;
    frmDetails* window = frmDetails::ShowReport(&main.widget, MillLine(), true, [] {});
    QApplication::processEvents();
    const QPoint offset = window->frameGeometry().center() - main.widget.frameGeometry().center();
    EXPECT_LE(offset.manhattanLength(), 2);
    window->close();
}

TEST(frmDetails, OkClosesTheWindowThenRedraws)
{
    MainWindow main;
    int redraws = 0;
    bool visibleDuringRedraw = true;
    frmDetails* window = nullptr;
    window = frmDetails::ShowReport(&main.widget, MillLine(), false, [&] {
        ++redraws;
        visibleDuringRedraw = window->isVisible();
    });
    auto* ok = window->findChild<QPushButton*>(QStringLiteral("Command1"));
    ASSERT_NE(ok, nullptr);
    EXPECT_EQ(ok->text(), QStringLiteral("&OK"));
    ok->click();
    EXPECT_EQ(redraws, 1);
    EXPECT_FALSE(visibleDuringRedraw);

    // Closed any other way, the window does not redraw.
    window = frmDetails::ShowReport(&main.widget, MillLine(), false, [&] { ++redraws; });
    window->close();
    EXPECT_EQ(redraws, 1);
}

} // namespace
} // namespace backplot
