#include "TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace backplot {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> All(const std::string& text, const std::regex& pattern)
{
    std::vector<std::string> found;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), pattern); it != std::sregex_iterator(); ++it)
        found.push_back((*it)[1].str());
    return found;
}

bool Contains(const std::vector<std::string>& list, const std::string& item)
{
    return std::find(list.begin(), list.end(), item) != list.end();
}

TEST(HelpGuide, PagesAreTitledLinkedAndReachableFromTheContents)
{
    const fs::path folder = test::SourceDir() / "docs" / "help";
    std::map<std::string, std::string> pages;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".html")
            pages[entry.path().filename().string()] = test::ReadAll(entry.path());
    ASSERT_GE(pages.size(), 14u);

    const std::regex href("href=\"([^\"]*)\""), id("id=\"([^\"]*)\"");
    std::vector<std::string> broken;
    std::map<std::string, std::set<std::string>> linked; // page -> the files it links to
    for (const auto& [name, text] : pages) {
        SCOPED_TRACE(name);
        // Its title as its one heading, the style sheet, and a way back to the contents.
        const auto titles = All(text, std::regex("<title>([^<]+)</title>"));
        EXPECT_EQ(titles.size(), 1u);
        EXPECT_EQ(All(text, std::regex("<h1>([^<]+)</h1>")), titles);
        EXPECT_NE(text.find("href=\"help.css\""), std::string::npos);
        EXPECT_TRUE(name == "index.html" || text.find("href=\"index.html\"") != std::string::npos);
        // Every link within the guide leads to a file, and to a section, that exist.
        for (const std::string& link : All(text, href)) {
            if (link.rfind("http", 0) == 0 || link.rfind("mailto:", 0) == 0)
                continue;
            const std::size_t hash = link.find('#');
            const std::string file = link.substr(0, hash);
            const fs::path target = folder / (file.empty() ? name : file);
            linked[name].insert(file);
            if (!fs::is_regular_file(target) ||
                (hash != std::string::npos && !Contains(All(test::ReadAll(target), id), link.substr(hash + 1))))
                broken.push_back(name + " -> " + link);
        }
    }
    EXPECT_EQ(broken, std::vector<std::string>{});

    std::set<std::string> reached = {"index.html"}, all;
    for (std::vector<std::string> open = {"index.html"}; !open.empty();) {
        const std::string page = open.back();
        open.pop_back();
        for (const std::string& file : linked[page])
            if (pages.count(file) && reached.insert(file).second)
                open.push_back(file);
    }
    for (const auto& page : pages)
        all.insert(page.first);
    EXPECT_EQ(reached, all);
}

} // namespace
} // namespace backplot
