#include "GuiDialogs.h"
#include "InstanceLock.h"
#include "WindowFixture.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QRegularExpression>
#include <tuple>

namespace backplot {
namespace {

using test::OnNextModal;

TEST(GuiDialogs, MessageBoxHasTheIconButtonsAndTitleAsked)
{
    using Box = QMessageBox;
    const std::tuple<MsgIcon, MsgButtons, Box::Icon, Box::StandardButtons, Box::StandardButton, MsgAnswer> rows[] = {
        {MsgIcon::Critical, MsgButtons::Ok, Box::Critical, Box::Ok, Box::Ok, MsgAnswer::Ok},
        {MsgIcon::Exclamation, MsgButtons::OkCancel, Box::Warning, Box::Ok | Box::Cancel, Box::Cancel, MsgAnswer::Cancel},
        {MsgIcon::Question, MsgButtons::YesNo, Box::Question, Box::Yes | Box::No, Box::No, MsgAnswer::No},
        {MsgIcon::Information, MsgButtons::YesNoCancel, Box::Information, Box::Yes | Box::No | Box::Cancel, Box::Yes,
         MsgAnswer::Yes},
        {MsgIcon::None, MsgButtons::Ok, Box::NoIcon, Box::Ok, Box::Ok, MsgAnswer::Ok},
    };
    for (const auto& [icon, buttons, boxIcon, boxButtons, press, answer] : rows) {
        SCOPED_TRACE(static_cast<int>(icon));
        QString shown;
        // Named copies: a lambda may capture structured bindings only from C++20 compilers
        // newer than Debian's Clang 14.
        OnNextModal([&, boxIcon = boxIcon, boxButtons = boxButtons, press = press](QWidget* modal) {
            auto* box = qobject_cast<Box*>(modal);
            if (!box)
                return void(modal->close());
            shown = box->windowTitle() + '|' + box->text();
            EXPECT_EQ(box->icon(), boxIcon);
            EXPECT_EQ(box->standardButtons(), boxButtons);
            box->button(press)->click();
        });
        EXPECT_EQ(GuiDialogs().Message("first line\r\nsecond line", "Corvane Backplot", icon, buttons), answer);
        EXPECT_EQ(shown, QStringLiteral("Corvane Backplot|first line\nsecond line"));
    }
}

TEST(GuiDialogs, OpenFilterShowsEveryFileForTheAllFilesPatternSaveFiltersTheirDescriptions)
{
    // How the file dialog's model matches a name on this platform: case-sensitively.
    const auto shows = [](const QString& patternText, const QString& name) {
        for (const QString& pattern : FilterPatterns(patternText))
            if (QRegularExpression::fromWildcard(pattern, Qt::CaseSensitive).match(name).hasMatch())
                return true;
        return false;
    };
    EXPECT_TRUE(shows("*.*", "part"));        // no extension at all
    EXPECT_TRUE(shows("*.*", "part.nc"));
    EXPECT_TRUE(shows(" *.* ", ".hidden"));
    EXPECT_TRUE(shows("*.nc", "PART.NC"));    // either case of the pattern
    EXPECT_FALSE(shows("*.nc", "part"));
    EXPECT_FALSE(shows("*.nc", "part.ngc"));
    EXPECT_TRUE(shows("*.nc;*.ngc", "part.ngc")); // several patterns, each filtering
    EXPECT_TRUE(shows("*.nc; *.tap", "part.tap"));
    EXPECT_FALSE(shows("*.nc;*.ngc", "part.tap"));
    EXPECT_EQ(FilterPatterns("*.*"), QStringList{"*"});
    EXPECT_EQ(FilterPatterns("*.nc;*.ngc"), (QStringList{"*.nc", "*.NC", "*.ngc", "*.NGC"}));

    // The two export dialogs' lists, one more description that names no pattern; the
    // dialog shows each as it is given, and matches by the pattern all the same.
    const std::vector<FileFilter> filters{
        {"DXF files (*.dxf)", "*.dxf"}, {"Windows bmps (*.bmp)", "*.bmp"}, {"Drawings", "*.dwg"}};
    QStringList shown;
    QString chosen;
    OnNextModal([&](QWidget* modal) {
        if (auto* combo = modal->findChild<QComboBox*>(QStringLiteral("fileTypeCombo")))
            for (int i = 0; i < combo->count(); ++i)
                shown << combo->itemText(i);
        if (auto* dialog = qobject_cast<QFileDialog*>(modal))
            chosen = dialog->selectedNameFilter();
        modal->close();
    });
    EXPECT_EQ(GuiDialogs().SaveFileName("Save As DXF File", QDir::tempPath().toStdString(), filters, true),
              std::nullopt);
    EXPECT_EQ(shown, QStringList({"DXF files (*.dxf)", "Windows bmps (*.bmp)", "Drawings (*.dwg)"}));
    EXPECT_EQ(chosen, QStringLiteral("DXF files (*.dxf)"));
}

TEST(InstanceLock, SecondCopyIsTurnedAway)
{
    test::ScratchDir dir;
    const QString path = QString::fromStdString(dir.Path().string()) + "/app.lock";
    {
        InstanceLock first(path);
        ASSERT_TRUE(first.TryAcquire());
        EXPECT_FALSE(InstanceLock(path).TryAcquire());
    }
    EXPECT_TRUE(InstanceLock(path).TryAcquire());
}

} // namespace
} // namespace backplot
