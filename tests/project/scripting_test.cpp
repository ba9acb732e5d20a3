// The tables of docs/scripting.md, compared with the program row by row.

#include "support/letter_case.h"
#include "support/unit.h"
#include "support/vocabulary.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gmock/gmock.h>
#include <optional>
#include <regex>
#include <sstream>

namespace
{

using testing::StartsWith;
using Texts = std::vector<std::string>;

// Returns the rows, as cells, of the table with the header row `heading`.
std::vector<Texts> tableRows(const std::string& heading)
{
    std::vector<Texts> rows;
    bool inside = false;
    for (const std::string& line : splitLines(readFile(PROJECT_DIRECTORY "/docs/scripting.md")))
    {
        const bool begins = line.starts_with("| " + heading + " |");
        inside = begins || (inside && line.starts_with("|"));
        if (inside && !begins && !line.starts_with("|--"))
            rows.push_back(matches(R"(\| ?(.*?) ?(?=\|))", line));
    }
    EXPECT_FALSE(rows.empty()) << heading;
    return rows;
}

Texts codeSpans(const std::string& cell)
{
    return matches("`([^`]*)`", cell);
}

struct Value
{
    std::string given;     // on the command line
    std::string printed;   // in place of N, WORD or TEXT
    std::size_t index = 0; // among the accepted words
};

Value numberValue(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.10g", number);
    return {text, text};
}

// Returns the output that the code spans of a cell describe for one value.
std::string outputFor(const Texts& spans, const Value& value)
{
    static const std::regex placeholder(R"(\b(N(?=\b|min|ms|s)|WORD\b|TEXT\b))");
    std::string output;
    for (std::string line : spans)
    {
        for (const std::string& list : matches(R"(\{(.*?)\})", line))
            line = replaced(line, "{" + list + "}", matches("([^,]+)", list).at(value.index));
        output += std::regex_replace(line, placeholder, value.printed) + "\n";
    }
    return output;
}

struct Range
{
    double lowest;
    double highest;
    double step;
};

struct Setting
{
    std::string setCommand; // without the value
    std::string readCommand;
    std::vector<Value> words;
    std::optional<Range> range;
    std::string below; // what happens to numbers out of range
    std::string above;
    Texts setLines;
    Texts readLines;
};

std::vector<Value> startupTriggers()
{
    std::vector<Value> triggers;
    for (const Texts& row : tableRows("Word for `--onoff --unit_startup`"))
        triggers.push_back({codeSpans(row[0]).front(), codeSpans(row[1]).front()});
    return triggers;
}

std::vector<Value> wordsIn(const std::string& cell)
{
    if (cell.find("(#start-up-triggers)") != cell.npos)
        return startupTriggers();
    std::vector<Value> words;
    for (const std::string& word : codeSpans(cell))
        words.push_back({word, word, words.size()});
    return words;
}

std::optional<Range> rangeIn(const std::string& cell)
{
    std::smatch match;
    if (!std::regex_match(cell, match, std::regex(R"((-?\d+(\.\d)?) to (\d+)(?: in steps of (\d+))?)")))
        return std::nullopt;
    const double step = match[4].matched ? std::stod(match[4]) : match[2].matched ? 0.1 : 1;
    return Range{std::stod(match[1]), std::stod(match[3]), step};
}

std::vector<Setting> settings()
{
    std::vector<Setting> list;
    for (const Texts& row : tableRows("Option"))
    {
        const Texts commands = codeSpans(row.at(0));
        const Texts outOfRange = matches("([^;]+)(?:; )?", row.at(3));
        list.push_back({commands.front(), commands.back(), wordsIn(row[1]), rangeIn(row[1]),
                        outOfRange.empty() ? "" : outOfRange.front(),
                        outOfRange.empty() ? "" : outOfRange.back(), codeSpans(row.at(4)),
                        codeSpans(row.at(5))});
    }
    return list;
}

std::string set(Unit& unit, const Setting& setting, const Value& value)
{
    return unit.run(replaced(setting.setCommand, "=WORD", "=" + value.given) + "=" + value.given).output;
}

std::string read(Unit& unit, const Setting& setting)
{
    return unit.run(setting.readCommand).output;
}

void expectSet(Unit& unit, const Setting& setting, const Value& given, const Value& printed,
               const Value& stored)
{
    EXPECT_EQ(set(unit, setting, given), outputFor(setting.setLines, printed));
    EXPECT_EQ(read(unit, setting), outputFor(setting.readLines, stored));
}

void expectRejected(Unit& unit, const Setting& setting, const Value& given, const std::string& message)
{
    const std::string before = read(unit, setting);
    const std::string output = set(unit, setting, given);
    EXPECT_NE(output, outputFor(setting.setLines, given));
    EXPECT_THAT(output, StartsWith(message));
    EXPECT_EQ(read(unit, setting), before);
}

// Returns the number that is sent to the unit if the number is truncated. The modulus is the first number
// above the range.
Value truncatedValue(const Range& range, double number)
{
    const double modulus = range.highest + range.step;
    const double parsed = isProgram64Bit() ? number : std::clamp(number, -2147483648.0, 2147483647.0);
    return numberValue(parsed - modulus * std::floor(parsed / modulus));
}

void expectOutOfRange(Unit& unit, const Setting& setting, const std::string& effect, double number)
{
    const Value given = numberValue(number);
    const Value truncated = truncatedValue(*setting.range, number);
    if (effect == "rejected")
        expectRejected(unit, setting, given, "Invalid argument");
    else if (effect == "unit decides")
        expectRejected(unit, setting, given, "set");
    else if (effect == "truncated")
        expectSet(unit, setting, given, truncated, truncated);
    else if (effect == "misreported")
        expectSet(unit, setting, given, given, truncated);
    else
    {
        EXPECT_EQ(effect, "set, but rejected");
        EXPECT_THAT(set(unit, setting, given), StartsWith("Invalid argument"));
        EXPECT_EQ(read(unit, setting), outputFor(setting.readLines, truncated));
    }
}

TEST(ScriptingTable, ShowsTheLinesOfEveryWord)
{
    for (const Setting& setting : settings())
    {
        SCOPED_TRACE(setting.setCommand);
        EXPECT_EQ(setting.words.empty(), setting.range.has_value());
        Unit unit;
        for (const Value& word : setting.words)
            expectSet(unit, setting, word, word, word);
        if (!setting.words.empty())
            expectRejected(unit, setting, {"nonsense", "nonsense"}, "");
    }
}

TEST(ScriptingTable, ShowsTheLinesOfBothLimitsOfEveryRange)
{
    for (const Setting& setting : settings())
        if (setting.range)
        {
            SCOPED_TRACE(setting.setCommand);
            Unit unit;
            for (const double number : {setting.range->lowest, setting.range->highest})
            {
                const Value stored = setting.above == "truncated" ? truncatedValue(*setting.range, number)
                                                                  : numberValue(number);
                expectSet(unit, setting, numberValue(number), stored, stored);
            }
        }
}

TEST(ScriptingTable, ShowsWhatHappensToNumbersOutOfRange)
{
    for (const Setting& setting : settings())
        if (setting.range)
        {
            SCOPED_TRACE(setting.setCommand);
            const auto& [lowest, highest, step] = *setting.range;
            Unit unit;
            expectOutOfRange(unit, setting, setting.below, lowest - step);
            // Truncated numbers wrap around to 0, which is below some ranges.
            const bool truncates = setting.above == "truncated" || setting.above == "misreported";
            expectOutOfRange(unit, setting, setting.above, highest + step + (truncates ? lowest : 0));
            if (step > 1)
                expectRejected(unit, setting, numberValue(lowest + step / 2), "Invalid argument");
        }
}

// Returns whether a row shows the option of a category. If `word` is not empty, the row must show the word
// too.
bool isShown(const std::string& category, const std::string& option, const std::string& word)
{
    static const std::vector<Setting> rows = settings();
    return std::ranges::any_of(rows,
                               [&](const Setting& row)
                               {
                                   if (!row.setCommand.starts_with(category + " "))
                                       return false;
                                   if (row.setCommand.find(" " + option + "=" + word + " ") !=
                                       std::string::npos)
                                       return true;
                                   const auto accepts = [&](const Value& value)
                                   { return inLowercase(value.given) == inLowercase(word); };
                                   return row.setCommand.ends_with(" " + option) &&
                                          (word.empty() || std::ranges::any_of(row.words, accepts));
                               });
}

// The words of a value in a row of options.txt. A range has none.
Texts wordsOrNone(std::istringstream& row)
{
    Texts words;
    for (std::string word; row >> word && word != "#" && !word.starts_with('<');)
        words.push_back(word);
    return words.empty() ? Texts{""} : words;
}

TEST(ScriptingTable, HasTheWordsAndRangesOfTheCompletions)
{
    const Outcome outcome =
        runCommand({.words = {PROJECT_DIRECTORY "/tools/update-option-table", "--check", BUILD_DIRECTORY},
                    .environment = {{"PATH", std::getenv("PATH")}}});
    EXPECT_EQ(outcome.status, 0) << outcome.output << outcome.errors;
}

TEST(ScriptingTable, HasARowForEverySetting)
{
    Texts categories;
    int options = 0;
    for (const std::string& text : splitLines(readFile(PROJECT_DIRECTORY "/completions/options.txt")))
    {
        std::istringstream line(text);
        std::string name;
        if (text.starts_with('#') || !(line >> name))
            continue;
        const std::string option = name.substr(0, name.find('='));
        const Texts words = wordsOrNone(line);
        if (!text.starts_with(' '))
        {
            categories.clear();
            if (option != "--about" && option != "--advanced") // no settings
                for (const std::string& word : words)
                    categories.push_back(option + (word.empty() ? "" : "=" + word));
        }
        else if (option != name)
            for (const std::string& category : categories)
            {
                ++options;
                for (const std::string& word : words)
                    EXPECT_TRUE(isShown(category, option, word)) << category << " " << option << " " << word;
            }
    }
    EXPECT_GT(options, 40);
}

// Of several actions, the first one in the table is performed.
TEST(ScriptingTable, ShowsTheLinesOfTheActionsInTheirOrder)
{
    std::vector<Texts> rows = tableRows("Command");
    std::string options;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
    {
        const std::string action = replaced(codeSpans(row->at(0)).front(), "--advanced", "");
        const std::string output = outputFor(codeSpans(row->at(1)), numberValue(0));
        EXPECT_EQ(Unit().run("--advanced" + action).output, output);
        options += action;
        EXPECT_EQ(Unit().run("--advanced" + options).output, output) << options;
    }
}

} // namespace
