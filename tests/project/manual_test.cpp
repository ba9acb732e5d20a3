#include "fobrob/option_table.h"
#include "support/unit.h"
#include "support/vocabulary.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <gmock/gmock.h>
#include <optional>
#include <regex>
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
    std::string found;
    for (const std::string& line : splitLines(manual))
        if (line.starts_with('.') && (" " + line.substr(1)).find(" " + macro + " ") != std::string::npos)
            found += line + "\n";
    return found;
}

// What the manual says of each category and of each of its options, the line with the name first.
std::map<std::string, std::string> entries(const std::string& manual)
{
    std::map<std::string, std::string> texts;
    std::vector<std::string> places = {
        ""}; // of whom the section speaks, and the lists in it, the innermost last
    for (const std::string& line : splitLines(manual))
    {
        const std::vector<std::string> name = matches(R"(^\.(?:Ss|It) Fl (-\w+))", line);
        if (line.starts_with(".Sh ") || line.starts_with(".Ss "))
            places = {name.empty() ? "" : "-" + name.front()};
        else if (line.starts_with(".Bl"))
            places.push_back(places.back());
        else if (line.starts_with(".El"))
            places.pop_back();
        else if (!name.empty() && !places.front().empty())
            places.back() = places.front() + " -" + name.front();
        texts[places.back()] += line + "\n";
    }
    texts.erase("");
    return texts;
}

// The words that a macro line marks as such.
Words markedWords(const std::string& line)
{
    std::istringstream stream(line);
    Words words;
    bool marked = false;
    for (std::string part; stream >> part;)
        if (std::regex_match(part, std::regex("[A-Z][a-z]"))) // a macro
            marked = part == "Cm";
        else if (marked && std::isalnum(static_cast<unsigned char>(part.front())))
            words.insert(inSmallLetters(part));
    return words;
}

Words wordsOf(const std::string& entry)
{
    const std::string head = entry.substr(0, entry.find('\n'));
    Words words;
    if (head.find(" = ") != head.npos)
        words.insert("=");
    if (head.find(" = ") == head.npos || head.find(" Op = ") != head.npos)
        words.insert("");
    for (const std::string& line : matches(R"((?:^|\n)\.(.*))", entry))
    {
        Words marked = markedWords(line);
        words.merge(marked);
        EXPECT_TRUE(marked.empty()) << "A word that is marked twice can be lost unnoticed:\n" << entry;
    }
    return words;
}

Vocabulary vocabularyOf(const std::string& manual)
{
    Vocabulary vocabulary;
    for (const auto& [place, entry] : entries(manual))
        vocabulary[place] = wordsOf(entry);
    return vocabulary;
}

struct Range
{
    double lowest;
    double highest;
    double step; // to what lies outside
};

// The first range that an entry mentions.
std::optional<Range> rangeIn(std::string entry)
{
    entry = std::regex_replace(entry, std::regex(R"(\\-)"), "-");
    std::smatch match;
    if (!std::regex_search(entry, match,
                           std::regex(R"((-?\d+(\.\d)?) to (-?\d+)(?:\sin\ssteps\sof\s(\d+))?)")))
        return std::nullopt;
    const double step = match[4].matched ? std::stod(match[4]) : match[2].matched ? 0.1 : 1;
    return Range{std::stod(match[1]), std::stod(match[3]), step};
}

// Whether an option that is set to a number is read as that number then.
bool holds(const std::string& option, double number)
{
    Unit unit;
    unit.run(option + "=" + std::to_string(number));
    const std::string read = unit.run(option).output;
    return std::abs(std::stod(read.substr(read.find(": ") + 2)) - number) < 0.01;
}

Names tableOptions()
{
    Names names;
    for (const option* entry = longOptions; entry->name; ++entry)
        names.insert(entry->name);
    return names;
}

// What mandoc has to say of a page. Both pages are where it looks for those that a page refers to.
Outcome lint(const std::string& page)
{
    const TemporaryFolder folder;
    std::filesystem::copy(PROJECT_FOLDER "/man", folder / "man1");
    return runCommand({.words = {"mandoc", "-Tlint", "-Wstyle", folder / "man1/" + page},
                       .environment = {{"MANPATH", folder.path}}});
}

TEST(Manual, GivesEachCategoryItsOptionsAndEachOptionItsWords)
{
    EXPECT_THAT(vocabularyOf(projectFile("man/fobrob.1")), testing::ContainerEq(vocabularyOfTheProgram()));
}

TEST(Manual, BeginsWithTheCategoriesAndTheGeneralOptions)
{
    const std::string manual = projectFile("man/fobrob.1");
    const std::string beginning = manual.substr(0, manual.find("\n.Ss "));
    Names names = {"-help", "-list"};
    for (const auto& [place, entry] : entries(manual))
        if (place.find(' ') == place.npos)
            names.insert(place.substr(1));
    const std::vector<std::string> shown = matches(R"(\n\.It (?:Fl h , )?Fl (-\w+))", beginning);
    EXPECT_THAT(shown, testing::UnorderedElementsAreArray(names));
}

TEST(Manual, ShowsTheRangesThatTheUnitHolds)
{
    int ranges = 0;
    for (const auto& [option, entry] : entries(projectFile("man/fobrob.1")))
    {
        const std::optional<Range> range = rangeIn(entry);
        if (!range || wordsOf(entry) != Words{"", "="})
            continue;
        SCOPED_TRACE(option);
        ++ranges;
        EXPECT_TRUE(holds(option, range->lowest));
        EXPECT_TRUE(holds(option, range->highest));
        EXPECT_FALSE(holds(option, range->lowest - range->step));
        EXPECT_FALSE(holds(option, range->highest + range->step));
    }
    EXPECT_EQ(ranges, 10);
}

TEST(Manual, SpeaksOfNoOptionThatThereIsNot)
{
    const std::string pages = projectFile("man/fobrob.1") + projectFile("man/fobrob-sim.1");
    Names named = namesBehind(" -", macroLines("Fl", pages));
    named.merge(namesBehind(R"(\-\-)", pages));
    EXPECT_THAT(tableOptions(), testing::IsSupersetOf(named));
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
