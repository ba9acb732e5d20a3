#include "main/options.h"
#include "support/unit.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <gmock/gmock.h>
#include <set>
#include <sstream>

namespace
{

using Names = std::set<std::string>;

std::string projectFile(const std::string& name)
{
    return readFile(PROJECT_FOLDER "/" + name);
}

// The names that stand right behind `mark`, wherever it occurs in `text`.
Names namesBehind(const std::string& mark, const std::string& text)
{
    const auto isPart = [](unsigned char c) { return std::isalnum(c) || c == '_'; };
    Names names;
    for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1))
    {
        const auto begin = text.begin() + static_cast<std::ptrdiff_t>(at + mark.size());
        const auto end = std::find_if_not(begin, text.end(), isPart);
        if (begin != end)
            names.emplace(begin, end);
    }
    return names;
}

// The lines of the manual that call `macro`.
std::string macroLines(const std::string& macro, const std::string& manual)
{
    std::istringstream stream(manual);
    std::string found;
    for (std::string line; std::getline(stream, line);)
        if (line.starts_with('.') && (" " + line.substr(1)).find(" " + macro + " ") != std::string::npos)
            found += line + "\n";
    return found;
}

Names tableOptions()
{
    Names names;
    for (const option* entry = longOptions; entry->name; ++entry)
        names.insert(entry->name);
    return names;
}

void addKeys(const nlohmann::json& json, Names& keys)
{
    if (!json.is_object())
        return;
    for (const auto& [key, value] : json.items())
    {
        keys.insert(key);
        addKeys(value, keys);
    }
}

// Every key of the unit file that is made where there is none.
Names unitFileKeys()
{
    Unit unit;
    std::filesystem::remove(unit.file());
    unit.run("--buzzer");
    Names keys;
    addKeys(unit.content(), keys);
    return keys;
}

// What mandoc has to say of a page. Both pages are where it looks for those that a page refers to.
Outcome lint(const std::string& page)
{
    const TemporaryFolder folder;
    std::filesystem::copy(PROJECT_FOLDER "/man", folder / "man1");
    return runCommand({.words = {"mandoc", "-Tlint", "-Wstyle", folder / "man1/" + page},
                       .environment = {{"MANPATH", folder.path}}});
}

TEST(Manual, NamesEveryOptionAndNoOther)
{
    const std::string manual = projectFile("man/fobrob.1");
    EXPECT_EQ(namesBehind(" -", macroLines("Fl", manual)), tableOptions());
}

TEST(Manual, ShowsNoOptionInItsExamplesThatThereIsNot)
{
    const std::string pages = projectFile("man/fobrob.1") + projectFile("man/fobrob-sim.1");
    const Names shown = namesBehind(R"(\-\-)", pages);
    EXPECT_FALSE(shown.empty());
    EXPECT_THAT(tableOptions(), testing::IsSupersetOf(shown));
}

TEST(Manual, OfTheSimulatedUnitNamesEveryKeyOfItsFile)
{
    const std::string manual = projectFile("man/fobrob-sim.1");
    EXPECT_THAT(namesBehind(" ", macroLines("Va", manual)), testing::IsSupersetOf(unitFileKeys()));
}

TEST(Manual, InMarkdownNamesEveryKeyOfTheUnitFile)
{
    const std::string manual = projectFile("docs/simulated-unit.md");
    EXPECT_THAT(namesBehind("`", manual), testing::IsSupersetOf(unitFileKeys()));
}

TEST(Manual, IsWellFormed)
{
    for (const char* page : {"fobrob.1", "fobrob-sim.1"})
    {
        const Outcome outcome = lint(page);
        EXPECT_EQ(outcome.status, 0) << page << "\n" << outcome.errors;
        EXPECT_EQ(outcome.output, "");
    }
}

} // namespace
