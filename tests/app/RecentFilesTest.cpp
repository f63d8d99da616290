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

TEST(RecentFiles, FiveOpensKeepTheLastFourNewestFirstAndUnusedEntriesStay)
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

    // An entry is unused when its first eight characters are "Not Used", in that case:
    // unused entries are not moved.
    raw.setValue("RecentFiles/RecentFile1", "not used");
    raw.setValue("RecentFiles/RecentFile2", "Not Usedx");
    raw.setValue("RecentFiles/RecentFile3", " Not Used");
    raw.sync();
    RecentFiles recent;
    recent.AddRecentFile("/p/new.nc");
    // 3 is copied to 4; 2 is unused, so nothing is copied into 3, which keeps its text.
    EXPECT_EQ(EntriesOf(recent), (Entries{"/p/new.nc", "not used", " Not Used", " Not Used"}));
}

} // namespace
} // namespace backplot
