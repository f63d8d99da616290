#include "RecentFiles.h"
#include "ScratchSettings.h"

#include <QFileInfo>
#include <QSettings>
#include <gtest/gtest.h>

namespace backplot {
namespace {

using test::ScratchSettings;

std::vector<std::string> Entries(const RecentFiles& recent)
{
    std::vector<std::string> entries;
    for (int i = 1; i <= RecentFiles::Count; ++i)
        entries.push_back(recent.Entry(i));
    return entries;
}

TEST(RecentFiles, FirstRunReadsNotUsedEverywhere)
{
    ScratchSettings scope;
    const RecentFiles recent;
    EXPECT_EQ(Entries(recent), std::vector<std::string>(4, "Not Used"));
    EXPECT_FALSE(RecentFiles::IsUsed(recent.Entry(1)));
}

TEST(RecentFiles, FiveOpensKeepTheLastFourNewestFirst)
{
    ScratchSettings scope;
    {
        RecentFiles recent;
        for (const char* path : {"/p/a.nc", "/p/b.nc", "/p/c.nc", "/p/d.nc", "/p/e.nc"})
            recent.AddRecentFile(path);
    }
    // A later run reads them back from the store of its own name (capital P).
    ASSERT_TRUE(QFileInfo::exists(scope.RecentFilesFile()));
    QSettings raw(scope.RecentFilesFile(), QSettings::IniFormat);
    EXPECT_EQ(raw.value(QStringLiteral("RecentFiles/RecentFile1")).toString(), QStringLiteral("/p/e.nc"));
    EXPECT_EQ(raw.value(QStringLiteral("RecentFiles/RecentFile4")).toString(), QStringLiteral("/p/b.nc"));
    EXPECT_FALSE(raw.contains(QStringLiteral("RecentFiles/RecentFile5")));

    const RecentFiles later;
    EXPECT_EQ(Entries(later), (std::vector<std::string>{"/p/e.nc", "/p/d.nc", "/p/c.nc", "/p/b.nc"}));
}

TEST(RecentFiles, SameFileTwiceIsListedTwice)
{
    ScratchSettings scope;
    RecentFiles recent;
    recent.AddRecentFile("/p/a.nc");
    recent.AddRecentFile("/p/a.nc");
    EXPECT_EQ(Entries(recent), (std::vector<std::string>{"/p/a.nc", "/p/a.nc", "Not Used", "Not Used"}));
}

TEST(RecentFiles, EmptyPathOnlyMovesTheListDown)
{
    ScratchSettings scope;
    RecentFiles recent;
    recent.AddRecentFile("/p/a.nc");
    recent.AddRecentFile("");
    // Entry 1 keeps its text: it was copied to 2, and nothing replaced it.
    EXPECT_EQ(Entries(recent), (std::vector<std::string>{"/p/a.nc", "/p/a.nc", "Not Used", "Not Used"}));
}

TEST(RecentFiles, UsedMeansFirstEightCharactersAreNotNotUsed)
{
    struct Row {
        const char* entry;
        bool used;
    };
    for (const Row& row : {Row{"Not Used", false}, Row{"Not Used yet", false}, Row{"Not Usedx", false},
                           Row{"not used", true}, Row{"Not Use", true}, Row{" Not Used", true},
                           Row{"/p/a.nc", true}}) {
        SCOPED_TRACE(row.entry);
        EXPECT_EQ(RecentFiles::IsUsed(row.entry), row.used);
    }
}

TEST(RecentFiles, UnusedEntriesAreNotMoved)
{
    ScratchSettings scope;
    {
        QSettings raw(scope.RecentFilesFile(), QSettings::IniFormat);
        raw.setValue(QStringLiteral("RecentFiles/RecentFile1"), QStringLiteral("/p/one.nc"));
        raw.setValue(QStringLiteral("RecentFiles/RecentFile2"), QStringLiteral("Not Used (cleared)"));
        raw.setValue(QStringLiteral("RecentFiles/RecentFile3"), QStringLiteral("/p/three.nc"));
    }
    RecentFiles recent;
    recent.AddRecentFile("/p/new.nc");
    // 3 is copied to 4; 2 is unused, so nothing is copied into 3, which keeps its text.
    EXPECT_EQ(Entries(recent),
              (std::vector<std::string>{"/p/new.nc", "/p/one.nc", "/p/three.nc", "/p/three.nc"}));
}

} // namespace
} // namespace backplot
