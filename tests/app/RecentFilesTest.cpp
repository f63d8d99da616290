#include "RecentFiles.h"
#include "ScratchSettings.h"

#include <QSettings>
#include <gtest/gtest.h>

namespace backplot {
namespace {

using test::ScratchSettings;
using Entries = std::vector<std::string>;

Entries EntriesOf(const RecentFiles& recent)
{
    Entries entries;
    for (int i = 1; i <= RecentFiles::Count; ++i)
        entries.push_back(recent.Entry(i));
    return entries;
}

TEST(RecentFiles, FiveOpensKeepTheLastFourNewestFirst)
{
    ScratchSettings scope;
    {
        RecentFiles recent;
        EXPECT_EQ(EntriesOf(recent), Entries(4, "Not Used"));
        for (const char* path : {"/p/a.nc", "/p/b.nc", "/p/c.nc", "/p/d.nc", "/p/e.nc"})
            recent.AddRecentFile(path);
    }
    QSettings raw(scope.RecentFilesFile(), QSettings::IniFormat);
    EXPECT_EQ(raw.value("RecentFiles/RecentFile1").toString(), QStringLiteral("/p/e.nc"));
    EXPECT_FALSE(raw.contains("RecentFiles/RecentFile5"));
    EXPECT_EQ(EntriesOf(RecentFiles()), (Entries{"/p/e.nc", "/p/d.nc", "/p/c.nc", "/p/b.nc"}));
}

TEST(RecentFiles, UnusedEntriesAreNotMoved)
{
    ScratchSettings scope;
    {
        QSettings raw(scope.RecentFilesFile(), QSettings::IniFormat);
        raw.setValue("RecentFiles/RecentFile1", "/p/one.nc");
        raw.setValue("RecentFiles/RecentFile2", "Not Used (cleared)");
        raw.setValue("RecentFiles/RecentFile3", "/p/three.nc");
    }
    RecentFiles recent;
    recent.AddRecentFile("/p/new.nc");
    // 3 is copied to 4; 2 is unused, so nothing is copied into 3, which keeps its text.
    EXPECT_EQ(EntriesOf(recent), (Entries{"/p/new.nc", "/p/one.nc", "/p/three.nc", "/p/three.nc"}));
}

TEST(RecentFiles, UsedMeansFirstEightCharactersAreNotNotUsed)
{
    const std::pair<const char*, bool> rows[] = {
        {"Not Used", false}, {"Not Used yet", false}, {"Not Usedx", false}, {"not used", true},
        {"Not Use", true},   {" Not Used", true},     {"/p/a.nc", true},
    };
    for (const auto& [entry, used] : rows)
        EXPECT_EQ(RecentFiles::IsUsed(entry), used) << entry;
}

} // namespace
} // namespace backplot
