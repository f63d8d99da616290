#include "ExternalOpens.h"
#include "SourceView.h"
#include "StepListing.h"
#include "WindowFixture.h"

#include <QFile>
#include <QLabel>
#include <QMimeData>
#include <QUrl>
#include <QWindow>
#include <Qsci/qsciscintilla.h>

namespace backplot {
namespace {

constexpr const char* OtherPart = "G01 X40. Y-20.\r\nX0. Y0.\r\nM30\r\n";

class ExternalOpensTest : public test::WindowFixture {
protected:
    // Drags `urls` over the window at `at` (window coordinates) and lets go, as the
    // platform does: through the window, which finds the widget under the pointer.
    bool Drop(const QList<QUrl>& urls, QPoint at)
    {
        QMimeData data;
        data.setUrls(urls);
        QWindow* handle = window->windowHandle();
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(handle, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(handle, &drop);
        QApplication::processEvents();
        return drop.isAccepted();
    }
    QPoint Over(QWidget* widget) const { return widget->mapTo(window.get(), widget->rect().center()); }
    static void Rewrite(const std::string& path, const char* text)
    {
        QFile file(QString::fromStdString(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
    }
    QString Comment() const { return window->lblComment()->text(); }
};

TEST_F(ExternalOpensTest, DroppedFilesOpenTheFirstAsFileOpenDoesAndSaySoOfTheRest)
{
    const std::string part = programs.Write("part.nc", test::Part);
    const std::string other = programs.Write("other.nc", OtherPart);
    StartShown();
    EXPECT_FALSE(Drop({QUrl("https://example.com/part.nc")}, Over(Canvas())));
    EXPECT_FALSE(window->programLoaded());

    ASSERT_TRUE(Drop({QUrl::fromLocalFile(QString::fromStdString(part)),
                      QUrl::fromLocalFile(QString::fromStdString(other))},
                     Over(Canvas())));
    EXPECT_EQ(window->FileName(), part);
    EXPECT_EQ(Comment(), " Opening file " + QString::fromStdString(part) +
                             "   (1 other dropped file ignored: one program at a time)");
    EXPECT_EQ(window->windowTitle(), "part.nc — Tarvo Backplot");
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{part, "Not Used", "Not Used", "Not Used"}));
    EXPECT_TRUE(Action("mnuStep")->isEnabled() && Button(ToolbarKey::Step)->isEnabled());

    // Over the source view too, which would otherwise take it as text.
    Action("mnuSource")->trigger();
    ASSERT_TRUE(Drop({QUrl::fromLocalFile(QString::fromStdString(other))}, Over(&window->sourceView())));
    EXPECT_EQ(window->FileName(), other);
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{other, part, "Not Used", "Not Used"}));

    // While stepping the Open button is off, and a drop (on the step listing, here) is
    // turned away as politely.
    Type('S');
    ASSERT_TRUE(Drop({QUrl::fromLocalFile(QString::fromStdString(part))}, Over(&window->stepListing())));
    EXPECT_EQ(window->FileName(), other);
    EXPECT_EQ(Comment(), "  " + QString::fromStdString(part) +
                             " was not opened: single block step or slow motion is running (Esc ends it).");
    EXPECT_TRUE(window->playback().StepMode);
    EXPECT_TRUE(dialogs.Messages.empty());
}

// Part's view on opening is X -5..125, Y -17.5..47.5 (stored Y). Growing the program to X
// -50..250, Y -50..150 keeps it; shrinking it to a unit square shows the square whole:
// fitted by width, one zoom-out step of 0.3 * 0.5 and fitted again, X -0.15..1.15, Y
// 0.175..0.825.
TEST_F(ExternalOpensTest, AChangedProgramIsOpenedAgainKeepingAViewItsNewExtentsHold)
{
    const std::string part = StartWithPart();
    const std::string other = programs.Write("other.nc", OtherPart);
    OpenCommand(other);
    Action("mnuRecentFile2")->trigger(); // part again, in second place
    ASSERT_EQ(window->FileName(), part);
    const ViewTransform opened = window->plotter().View;
    const auto reloaded = [&](int records) {
        return QTest::qWaitFor([&] { return window->plotter().RecordTotal == records; }, 5000);
    };

    Rewrite(part, "G00 X-50. Y50.\r\nG01 X250. Y-150.\r\nM30\r\n");
    ASSERT_TRUE(reloaded(2));
    ExpectView(opened.ViewX1, opened.ViewY1, opened.ViewX2, opened.ViewY2, 0);
    EXPECT_EQ(Comment(), "  Opened again after a change on disk: " + QString::fromStdString(part));
    EXPECT_EQ(StoredRecent(), (std::vector<std::string>{other, part, "Not Used", "Not Used"}));
    EXPECT_EQ(window->sourceView().Editor()->text(), "G00 X-50. Y50.\r\nG01 X250. Y-150.\r\nM30\r\n");

    // Not while stepping; once it ends.
    Type('S');
    Rewrite(part, "G00 X0. Y0.\r\nG01 X1. Y-1.\r\nG01 X0.\r\nM30\r\n");
    QTest::qWait(4 * ExternalOpens::SettleMs);
    EXPECT_EQ(window->plotter().RecordTotal, 2);
    EXPECT_TRUE(window->playback().StepMode);
    QTest::keyClick(Canvas(), Qt::Key_Escape);
    ASSERT_TRUE(reloaded(3));
    ExpectView(-0.15f, 0.175f, 1.15f, 0.825f, 1e-5f);
    EXPECT_TRUE(dialogs.Messages.empty());
}

} // namespace
} // namespace backplot
