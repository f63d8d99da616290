#include "ScratchSettings.h"

#include <QApplication>
#include <QStandardPaths>
#include <gtest/gtest.h>

// Widget tests need one application object for the whole run, no display unless the test
// names a platform, and never the user's own settings.
int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const backplot::test::ScratchDir settings;
    backplot::test::ScratchSettings::RunFolder = settings.Path();
    backplot::test::ScratchSettings::UseFolder(settings.Path());
    return RUN_ALL_TESTS();
}
