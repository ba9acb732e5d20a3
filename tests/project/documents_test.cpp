// The links, paths and test names in the documents.

#include "support/process.h"
#include "support/text.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <regex>

namespace
{

namespace fs = std::filesystem;

std::vector<fs::path> documents()
{
    std::vector<fs::path> paths = {PROJECT_DIRECTORY "/README.md", PROJECT_DIRECTORY "/CONTRIBUTING.md"};
    for (const auto& file : fs::directory_iterator(PROJECT_DIRECTORY "/docs"))
        paths.push_back(file.path());
    return paths;
}

// Returns the anchor of a heading.
std::string anchorOf(std::string heading)
{
    std::ranges::transform(heading, heading.begin(), [](unsigned char c) { return std::tolower(c); });
    heading = std::regex_replace(heading, std::regex("[^a-z0-9 _-]"), "");
    return replaced(heading, " ", "-");
}

std::vector<std::string> anchorsIn(const fs::path& document)
{
    std::vector<std::string> anchors;
    for (const std::string& heading : matches("\n##* (.*)", "\n" + readFile(document)))
        anchors.push_back(anchorOf(heading));
    return anchors;
}

TEST(Documents, LinkToFilesAndHeadingsThatExist)
{
    int links = 0;
    for (const fs::path& document : documents())
        for (const std::string& link : matches(R"(\]\(([^)]+)\))", readFile(document)))
        {
            SCOPED_TRACE(document.filename().string() + ": " + link);
            ++links;
            const std::string file = link.substr(0, link.find('#'));
            const fs::path target = file.empty() ? document : document.parent_path() / file;
            EXPECT_TRUE(fs::exists(target));
            if (link.find('#') != link.npos)
            {
                EXPECT_THAT(anchorsIn(target), testing::Contains(link.substr(link.find('#') + 1)));
            }
        }
    EXPECT_GT(links, 10);
}

TEST(Documents, NamePathsThatExist)
{
    const std::string directories = "benchmarks|completions|docs|examples|fuzz|man|packaging|src|tests|tools";
    int paths = 0;
    for (const fs::path& document : documents())
        for (const std::string& path : matches("`((?:" + directories + ")/[^` ]*)[` ]", readFile(document)))
        {
            ++paths;
            EXPECT_TRUE(fs::exists(PROJECT_DIRECTORY "/" + replaced(path, ".*", ".h")))
                << document.filename() << ": " << path;
        }
    EXPECT_GT(paths, 40);
}

std::string sourcesOfTests()
{
    std::string text;
    for (const auto& file : fs::recursive_directory_iterator(PROJECT_DIRECTORY "/tests"))
        if (file.path().extension() == ".cpp")
            text += readFile(file.path());
    return text;
}

// The patterns that are passed to ctest.
TEST(Documents, NameTestSuitesThatExist)
{
    const std::string sources = sourcesOfTests();
    const std::string document = readFile(PROJECT_DIRECTORY "/docs/testing.md");
    for (const std::string& names : matches(R"(ctest .*'\^\((.*)\)\\\.')", document))
        for (const std::string& name : matches("(\\w+)", names))
            EXPECT_NE(sources.find("(" + name + ", "), std::string::npos) << name;
}

} // namespace
