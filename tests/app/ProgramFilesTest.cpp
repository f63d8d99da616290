#include "DataFolder.h"
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

// Makes `files` under `root` (a name ending in "/" is a folder).
void Make(const QString& root, const std::vector<const char*>& files)
{
    for (const char* file : files) {
        const QString path = root + QString::fromLatin1(file);
        if (path.endsWith(QLatin1Char('/'))) {
            ASSERT_TRUE(QDir().mkpath(path));
            continue;
        }
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
}

QString RootOf(const test::ScratchDir& scratch) { return QString::fromStdString(scratch.Path().string()) + '/'; }

TEST(ProgramFiles, FindsHelpAndSamplesInBuildAndInstalledLayoutsAndTheBuildPutsThemThere)
{
    for (const Layout& layout : Layouts) {
        SCOPED_TRACE(layout.name);
        test::ScratchDir scratch;
        const QString root = RootOf(scratch);
        Make(root, layout.files);
        const ProgramFiles files(root + QString::fromLatin1(layout.programFolder));
        EXPECT_EQ(files.HelpIndex(), root + QString::fromLatin1(layout.helpIndex));
        EXPECT_EQ(files.SamplesFolder(), root + QString::fromLatin1(layout.samplesFolder));
    }

    // The build copies the guide and the samples beside the program, as the install puts
    // them under share/.
    const ProgramFiles files(QStringLiteral(BACKPLOT_PROGRAM_DIR));
    const QString index = files.HelpIndex();
    EXPECT_EQ(index, QStringLiteral(BACKPLOT_PROGRAM_DIR "/help/index.html"));
    EXPECT_EQ(test::ReadAll(index.toStdString()), test::ReadAll(test::SourceDir() / "docs/help/index.html"));
    EXPECT_TRUE(QFileInfo(files.SamplesFolder() + QStringLiteral("/mill_pocket_plate.nc")).isFile());
}

// The working files: beside the program of a build or a portable folder it can write to,
// else per user; always per user for an installed copy, whose bin folder may well be
// writable (root, or a prefix in the user's home) but is no place for them.
TEST(DataFolder, BesideABuildOrPortableProgramPerUserWhenInstalled)
{
    struct Row { const char* name; std::vector<const char*> files; const char* programFolder; bool beside; };
    const Row rows[] = {
        {"build tree", {"build/app/help/index.html", "build/app/mill.nc"}, "build/app", true},
        {"portable folder", {"Backplot/"}, "Backplot", true},
        {"a folder that is gone cannot be written", {}, "gone/bin", false},
        {"install tree with a writable bin folder", {"usr/bin/", "usr/share/tarvo-backplot/examples/mill.nc"},
         "usr/bin", false},
        {"install tree under a home prefix", {".local/bin/", ".local/share/tarvo-backplot/help/index.html"},
         ".local/bin", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        test::ScratchDir scratch;
        const QString root = RootOf(scratch);
        Make(root, row.files);
        const QString program = root + QString::fromLatin1(row.programFolder);
        const QString perUser = root + QStringLiteral("home/data");
        const auto shipped = [&] { return QDir(program).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot); };
        const QStringList before = shipped();

        const DataFolder chosen = DataFolder::Choose(program, perUser);
        EXPECT_EQ(chosen.Folder, (row.beside ? program : perUser) + '/');
        EXPECT_EQ(chosen.Fallback, !row.beside);
        EXPECT_EQ(QDir(perUser).exists(), !row.beside);
        EXPECT_EQ(shipped(), before); // not even the write probe is left behind
    }
}

} // namespace
} // namespace backplot
