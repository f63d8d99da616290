#include "ProgramFiles.h"
#include "TestPaths.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace backplot {
namespace {

struct Layout {
    const char* name;
    std::vector<const char*> files;   // made under the scratch root; a name ending in "/" is a folder
    const char* programFolder;        // relative to the root
    const char* helpIndex;            // expected, relative to the root
    const char* samplesFolder;        // expected, relative to the root
};

const Layout Layouts[] = {
    {"build folder: help and samples beside the program",
     {"build/app/help/index.html", "build/app/mill.nc"}, "build/app", "build/app/help/index.html", "build/app"},
    {"installed tree: both under share/tarvo-backplot",
     {"usr/share/tarvo-backplot/help/index.html", "usr/share/tarvo-backplot/examples/mill.nc", "usr/bin/"},
     "usr/bin", "usr/share/tarvo-backplot/help/index.html", "usr/share/tarvo-backplot/examples"},
    {"help beside the program wins over an installed one",
     {"p/bin/help/index.html", "p/share/tarvo-backplot/help/index.html"}, "p/bin", "p/bin/help/index.html",
     "p/bin"},
    {"nothing shipped: the help is named where a build puts it", {"bin/"}, "bin", "bin/help/index.html", "bin"},
    {"a folder named with dot segments", {"opt/bin/", "opt/share/tarvo-backplot/help/index.html"},
     "opt/bin/../bin/", "opt/share/tarvo-backplot/help/index.html", "opt/bin"},
};

TEST(ProgramFiles, FindsHelpAndSamplesInBuildAndInstalledLayouts)
{
    for (const Layout& layout : Layouts) {
        SCOPED_TRACE(layout.name);
        test::ScratchDir scratch;
        const QString root = QString::fromStdString(scratch.Path().string()) + QLatin1Char('/');
        for (const char* file : layout.files) {
            const QString path = root + QString::fromLatin1(file);
            if (path.endsWith(QLatin1Char('/'))) {
                ASSERT_TRUE(QDir().mkpath(path));
                continue;
            }
            ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
            QFile f(path);
            ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        }
        const ProgramFiles files(root + QString::fromLatin1(layout.programFolder));
        EXPECT_EQ(files.HelpIndex(), root + QString::fromLatin1(layout.helpIndex));
        EXPECT_EQ(files.SamplesFolder(), root + QString::fromLatin1(layout.samplesFolder));
    }
}

// The build copies the guide and the samples beside the program, as the install puts them
// under share/.
TEST(ProgramFiles, TheBuildPutsTheGuideAndSamplesBesideTheProgram)
{
    const ProgramFiles files(QStringLiteral(BACKPLOT_PROGRAM_DIR));
    const QString index = files.HelpIndex();
    EXPECT_EQ(index, QStringLiteral(BACKPLOT_PROGRAM_DIR "/help/index.html"));
    EXPECT_EQ(test::ReadAll(index.toStdString()), test::ReadAll(test::SourceDir() / "docs/help/index.html"));
    EXPECT_TRUE(QFileInfo(files.SamplesFolder() + QStringLiteral("/mill_pocket_plate.nc")).isFile());
}

} // namespace
} // namespace backplot
