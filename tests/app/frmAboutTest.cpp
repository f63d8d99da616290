#include "Widgets.h"
#include "frmAbout.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTimer>
#include <gtest/gtest.h>

namespace backplot {
namespace {

TEST(frmAbout, ShowsTitleVersionWithTheCommitOnlyWhenKnownQtAndLicenceLines)
{
    frmAbout about;
    const auto LabelText = [&about](const char* name) { return test::Child<QLabel>(about, name)->text(); };
    EXPECT_EQ(about.windowTitle(), QStringLiteral("About Tarvo Backplot"));
    EXPECT_EQ(LabelText("lblTitle"), QStringLiteral("Tarvo Backplot V5.0"));
    // This build's version, and its commit when it was configured from a git checkout.
    const QString version = LabelText("lblVersion");
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^Version 5\\.0( \\(commit [0-9a-f]{7,}\\))?$"))
                    .match(version)
                    .hasMatch())
        << version.toStdString();
    // The Qt library the program runs on, not the one it was compiled against.
    EXPECT_EQ(LabelText("lblQtVersion"), QStringLiteral("Qt ") + QString::fromLatin1(qVersion()));
    EXPECT_EQ(LabelText("lblLicence"), QStringLiteral("GNU General Public License, version 3 or later"));

    auto* ok = test::Child<QPushButton>(about, "cmdOK");
    EXPECT_EQ(ok->text(), QStringLiteral("&OK"));
    QTimer::singleShot(0, ok, &QPushButton::click);
    EXPECT_EQ(about.exec(), QDialog::Accepted);

    EXPECT_EQ(frmAbout::VersionLine("5.0", ""), "Version 5.0"); // outside a git checkout
    EXPECT_EQ(frmAbout::VersionLine("5.1.2", "0a1b2c3d4e"), "Version 5.1.2 (commit 0a1b2c3d4e)");
}

} // namespace
} // namespace backplot
