#include "DataFolder.h"
#include "GuiDialogs.h"
#include "InstanceLock.h"
#include "TestPaths.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

namespace backplot {
namespace {

// Runs `handle` on the next modal dialog once it is up, then leaves it to `handle` to close.
void OnNextModal(std::function<void(QWidget*)> handle)
{
    auto attempts = std::make_shared<int>(0);
    auto poll = std::make_shared<std::function<void()>>();
    *poll = [handle, attempts, poll] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            handle(modal);
            return;
        }
        if (++*attempts < 200)
            QTimer::singleShot(10, *poll);
    };
    QTimer::singleShot(0, *poll);
}

TEST(GuiDialogs, MessageBoxHasTheIconButtonsAndTitleAsked)
{
    struct Row {
        MsgIcon icon;
        MsgButtons buttons;
        QMessageBox::Icon boxIcon;
        QMessageBox::StandardButtons boxButtons;
        QMessageBox::StandardButton press;
        MsgAnswer answer;
    };
    const Row rows[] = {
        {MsgIcon::Critical, MsgButtons::Ok, QMessageBox::Critical, QMessageBox::Ok, QMessageBox::Ok, MsgAnswer::Ok},
        {MsgIcon::Exclamation, MsgButtons::OkCancel, QMessageBox::Warning, QMessageBox::Ok | QMessageBox::Cancel,
         QMessageBox::Cancel, MsgAnswer::Cancel},
        {MsgIcon::Question, MsgButtons::YesNo, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No,
         QMessageBox::No, MsgAnswer::No},
        {MsgIcon::Information, MsgButtons::YesNoCancel, QMessageBox::Information,
         QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes, MsgAnswer::Yes},
        {MsgIcon::None, MsgButtons::Ok, QMessageBox::NoIcon, QMessageBox::Ok, QMessageBox::Ok, MsgAnswer::Ok},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.icon));
        GuiDialogs dialogs;
        QString title, text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QMessageBox::StandardButtons buttons;
        OnNextModal([&](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            if (!box) {
                modal->close();
                return;
            }
            title = box->windowTitle();
            text = box->text();
            icon = box->icon();
            buttons = box->standardButtons();
            box->button(row.press)->click();
        });
        const MsgAnswer answer = dialogs.Message("first line\r\nsecond line", "Corvane Backplot", row.icon, row.buttons);
        EXPECT_EQ(answer, row.answer);
        EXPECT_EQ(title, QStringLiteral("Corvane Backplot"));
        EXPECT_EQ(text, QStringLiteral("first line\nsecond line"));
        EXPECT_EQ(icon, row.boxIcon);
        EXPECT_EQ(buttons, row.boxButtons);
    }
}

TEST(GuiDialogs, OpenDialogTitleFolderAndFilter)
{
    test::ScratchDir dir;
    GuiDialogs dialogs;
    QString title, folder;
    QStringList filters;
    OnNextModal([&](QWidget* modal) {
        if (auto* dialog = qobject_cast<QFileDialog*>(modal)) {
            title = dialog->windowTitle();
            folder = dialog->directory().absolutePath();
            filters = dialog->nameFilters();
        }
        modal->close();
    });
    const auto chosen = dialogs.OpenFileName("Open File", dir.Path().string(), "*.nc ", " *.nc");
    EXPECT_FALSE(chosen.has_value());
    EXPECT_EQ(title, QStringLiteral("Open File"));
    EXPECT_EQ(folder, QDir(QString::fromStdString(dir.Path().string())).absolutePath());
    EXPECT_EQ(filters, QStringList{QStringLiteral("*.nc (*.nc)")});
}

TEST(GuiDialogs, HourglassNeverPilesUp)
{
    ASSERT_EQ(QApplication::overrideCursor(), nullptr);
    {
        GuiDialogs dialogs;
        dialogs.SetPointer(MousePointer::Hourglass);
        dialogs.SetPointer(MousePointer::Hourglass);
        ASSERT_NE(QApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        dialogs.SetPointer(MousePointer::Default);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        dialogs.SetPointer(MousePointer::Default);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        // Left busy: the dialogs give the pointer back when they go.
        dialogs.SetPointer(MousePointer::Hourglass);
    }
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(DataFolder, ProgramFolderWhenWritableElseTheFallback)
{
    test::ScratchDir program;
    test::ScratchDir other;
    const QString programPath = QString::fromStdString(program.Path().string());
    const QString fallback = QString::fromStdString(other.Path().string()) + QStringLiteral("/data/here");

    const DataFolder usual = DataFolder::Choose(programPath, fallback);
    EXPECT_EQ(usual.Folder, programPath + QLatin1Char('/'));
    EXPECT_FALSE(usual.Fallback);
    EXPECT_TRUE(QDir(programPath).isEmpty()); // the write probe is gone
    EXPECT_FALSE(QDir(fallback).exists());
    EXPECT_EQ(DataFolder::Choose(programPath + QLatin1Char('/'), fallback).Folder, programPath + QLatin1Char('/'));

    const DataFolder moved = DataFolder::Choose(programPath + QStringLiteral("/missing"), fallback);
    EXPECT_EQ(moved.Folder, fallback + QLatin1Char('/'));
    EXPECT_TRUE(moved.Fallback);
    EXPECT_TRUE(QDir(fallback).exists());
}

TEST(InstanceLock, SecondCopyIsTurnedAway)
{
    test::ScratchDir dir;
    const QString path = QString::fromStdString(dir.Path().string()) + QStringLiteral("/app.lock");
    {
        InstanceLock first(path);
        ASSERT_TRUE(first.TryAcquire());
        EXPECT_TRUE(first.TryAcquire());
        InstanceLock second(path);
        EXPECT_FALSE(second.TryAcquire());
    }
    InstanceLock afterwards(path);
    EXPECT_TRUE(afterwards.TryAcquire());
}

} // namespace
} // namespace backplot
