#include "TestPaths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace backplot {
namespace {

namespace fs = std::filesystem;

fs::path GuideFolder() { return test::SourceDir() / "docs" / "help"; }

std::map<std::string, std::string> GuidePages()
{
    std::map<std::string, std::string> pages;
    for (const auto& entry : fs::directory_iterator(GuideFolder()))
        if (entry.path().extension() == ".html")
            pages[entry.path().filename().string()] = test::ReadAll(entry.path());
    return pages;
}

std::vector<std::string> All(const std::string& text, const std::regex& pattern)
{
    std::vector<std::string> found;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), pattern); it != std::sregex_iterator(); ++it)
        found.push_back((*it)[1].str());
    return found;
}

const std::regex Href("href=\"([^\"]*)\"");
const std::regex Id("id=\"([^\"]*)\"");

bool External(const std::string& link) { return link.rfind("http", 0) == 0 || link.rfind("mailto:", 0) == 0; }

TEST(HelpGuide, EveryLinkLeadsToAFileAndSectionThatExist)
{
    const auto pages = GuidePages();
    ASSERT_GE(pages.size(), 14u);
    std::vector<std::string> broken;
    for (const auto& [name, text] : pages) {
        for (const std::string& link : All(text, Href)) {
            if (External(link))
                continue;
            const std::size_t hash = link.find('#');
            const std::string file = hash == std::string::npos ? link : link.substr(0, hash);
            const std::string target = file.empty() ? name : file;
            if (!fs::is_regular_file(GuideFolder() / target)) {
                broken.push_back(name + " -> " + link);
                continue;
            }
            if (hash == std::string::npos)
                continue;
            const auto ids = All(test::ReadAll(GuideFolder() / target), Id);
            if (std::find(ids.begin(), ids.end(), link.substr(hash + 1)) == ids.end())
                broken.push_back(name + " -> " + link);
        }
    }
    EXPECT_EQ(broken, std::vector<std::string>{});
}

TEST(HelpGuide, EveryPageIsReachableFromTheContents)
{
    const auto pages = GuidePages();
    std::set<std::string> reached = {"index.html"};
    std::vector<std::string> open = {"index.html"};
    while (!open.empty()) {
        const std::string page = open.back();
        open.pop_back();
        for (const std::string& link : All(pages.at(page), Href)) {
            const std::string file = link.substr(0, link.find('#'));
            if (pages.count(file) && reached.insert(file).second)
                open.push_back(file);
        }
    }
    std::set<std::string> all;
    for (const auto& page : pages)
        all.insert(page.first);
    EXPECT_EQ(reached, all);
}

TEST(HelpGuide, EveryPageHasItsTitleAsHeadingAndLeadsBackToTheContents)
{
    const std::regex title("<title>([^<]+)</title>");
    const std::regex heading("<h1>([^<]+)</h1>");
    for (const auto& [name, text] : GuidePages()) {
        SCOPED_TRACE(name);
        const auto titles = All(text, title);
        const auto headings = All(text, heading);
        ASSERT_EQ(titles.size(), 1u);
        ASSERT_EQ(headings.size(), 1u);
        EXPECT_EQ(titles[0], headings[0]);
        EXPECT_NE(text.find("href=\"help.css\""), std::string::npos);
        if (name != "index.html") {
            EXPECT_NE(text.find("href=\"index.html\""), std::string::npos);
        }
    }
}

} // namespace
} // namespace backplot
