#include "OutputFile.h"
#include "OutputTestSupport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace backplot {
namespace {

namespace fs = std::filesystem;

// Names in the folder, hidden ones included, sorted.
std::vector<std::string> Listing(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

unsigned Mode(const fs::path& path)
{
    struct stat st {};
    stat(path.c_str(), &st);
    return st.st_mode & 07777;
}

TEST(OutputFile, TakesTheTargetsNameOnlyWhenWhole)
{
    test::ScratchDir dir;
    const fs::path target = dir.Path() / "part.dxf";
    const std::string old = dir.Write("part.dxf", "old drawing");
    fs::permissions(target, fs::perms(0640));

    // Written beside the target under a hidden name; the old file stands until the commit.
    {
        OutputFile out(old);
        ASSERT_TRUE(out.Open()) << out.Error();
        EXPECT_EQ(fs::path(out.WritePath()).parent_path(), dir.Path());
        EXPECT_EQ(fs::path(out.WritePath()).filename().string().rfind(".part.dxf-", 0), 0u);
        ASSERT_TRUE(out.Write("new", 3));
        EXPECT_EQ(test::ReadAll(target), "old drawing");
        ASSERT_TRUE(out.Commit()) << out.Error();
    }
    EXPECT_EQ(test::ReadAll(target), "new");
    EXPECT_EQ(Mode(target), 0640u) << "a replaced file keeps its permissions";
    EXPECT_EQ(Listing(dir.Path()), std::vector<std::string>{"part.dxf"});

    // Given up half-way: the old file and nothing else. (A full disk: the export tests.)
    {
        OutputFile out(old);
        ASSERT_TRUE(out.Open() && out.Write("half", 4));
    }
    EXPECT_EQ(test::ReadAll(target), "new");
    EXPECT_EQ(Listing(dir.Path()), std::vector<std::string>{"part.dxf"});

    // The target turned into a folder before the commit: the rename fails, the temporary goes.
    {
        OutputFile out(old);
        ASSERT_TRUE(out.Open());
        fs::remove(target);
        fs::create_directory(target);
        EXPECT_FALSE(out.Commit());
        EXPECT_EQ(out.Error(), "cannot write " + old + ": Is a directory");
        EXPECT_EQ(Listing(dir.Path()), std::vector<std::string>{"part.dxf"});
        fs::remove(target);
    }

    // A new file has the usual permissions; a link keeps pointing at the file it names.
    const mode_t mask = umask(022);
    const std::string real = dir.Write("real.png", "old picture");
    fs::create_symlink(real, dir.Path() / "link.png");
    for (const fs::path& path : {dir.Path() / "new.png", dir.Path() / "link.png"}) {
        OutputFile out(path.string());
        ASSERT_TRUE(out.Open() && out.Write("picture", 7) && out.Commit()) << out.Error();
    }
    umask(mask);
    EXPECT_EQ(Mode(dir.Path() / "new.png"), 0644u);
    EXPECT_TRUE(fs::is_symlink(dir.Path() / "link.png"));
    EXPECT_EQ(test::ReadAll(real), "picture");
    EXPECT_EQ(Listing(dir.Path()), (std::vector<std::string>{"link.png", "new.png", "real.png"}));
}

} // namespace
} // namespace backplot
