#include "fobrob/option_table.h"
#include "support/letter_case.h"
#include "support/manual_page.h"
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

// Returns the names that directly follow `mark` in `text`.
Names namesAfter(const std::string& mark, const std::string& text)
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

// Returns the lines of the manual that call `macro`.
std::string macroLines(const std::string& macro, const std::string& manual)
{
    std::string found;
    for (const std::string& line : splitLines(manual))
        if (line.starts_with('.') && (" " + line.substr(1)).find(" " + macro + " ") != std::string::npos)
            found += line + "\n";
    return found;
}

// Returns the text of each category and of each of its options, starting with the line that names it.
std::map<std::string, std::string> entries(const std::string& manual)
{
    std::map<std::string, std::string> texts;
    std::vector<std::string> openEntries = {
        ""}; // the entry names of the section and of its open lists, innermost last
    for (const std::string& line : splitLines(manual))
    {
        const std::vector<std::string> name = matches(R"(^\.(?:Ss|It) Fl (-\w+))", line);
        if (line.starts_with(".Sh ") || line.starts_with(".Ss "))
            openEntries = {name.empty() ? "" : "-" + name.front()};
        else if (line.starts_with(".Bl"))
            openEntries.push_back(openEntries.back());
        else if (line.starts_with(".El"))
            openEntries.pop_back();
        else if (!name.empty() && !openEntries.front().empty())
            openEntries.back() = openEntries.front() + " -" + name.front();
        texts[openEntries.back()] += line + "\n";
    }
    texts.erase("");
    return texts;
}

// Returns the words in a macro line that are arguments of the macro Cm.
Words markedWords(const std::string& line)
{
    std::istringstream stream(line);
    Words words;
    bool marked = false;
    for (std::string part; stream >> part;)
        if (std::regex_match(part, std::regex("[A-Z][a-z]"))) // a macro
            marked = part == "Cm";
        else if (marked && std::isalnum(static_cast<unsigned char>(part.front())))
            words.insert(inLowercase(part));
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
        EXPECT_TRUE(marked.empty())
            << "word is marked twice, so the test would not notice if one were removed:\n"
            << entry;
    }
    return words;
}

Vocabulary vocabularyOf(const std::string& manual)
{
    Vocabulary vocabulary;
    for (const auto& [option, entry] : entries(manual))
        vocabulary[option] = wordsOf(entry);
    return vocabulary;
}

struct Range
{
    double lowest;
    double highest;
    double step; // between two values
};

// Returns the first range in an entry.
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

// Sets a number and returns whether it is read back unchanged.
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

// Returns the operations that return an error code, except those that release a handle.
std::vector<std::string> operations()
{
    std::vector<std::string> names =
        matches(R"(ApiError (\w+)\()", readFile(PROJECT_DIRECTORY "/src/device/qv_aux2.h"));
    std::erase_if(names, [](const std::string& name) { return name.ends_with("_release"); });
    return names;
}

// Command lines that together call every operation.
const char* const everything[] = {
    "--about=EEPROM",
    "--about=RawEEPROM",
    "--about=Diagnostic",
    "--about=ADC",
    "--version",
    "--temperature",
    "--digitalio",
    "--lightsensor",
    "--buzzer",
    "--buzzer --frequency=800 --volume=1 --status=Enable",
    "--backlight",
    "--backlight --intensity=1 --automatic=Enabled --led_dimming=Enabled",
    "--backlight --automatic=Disabled",
    "--led",
    "--led --frequency=1 --dutycycle=1 --color=RED --pulses=1 --idletime=0 --startup=Enable",
    "--can",
    "--can=CAN0 --baudrate=250",
    "--heater --temperature",
    "--heater --temperature=0",
    "--power=current",
    "--power=current --vchannel1=Enable --can=Enable --extfan=Enable",
    "--power=startup",
    "--power=startup --vchannel1=Enable --can=Enable --extfan=Enable",
    "--onoff",
    "--onoff --shortpress=SUSPEND --longpress=SUSPEND --longpress_time=1 --onoff_signal=SUSPEND",
    "--onoff --onoff_signal_time=1 --always_on=Enabled --unit_startup=BOTH --suspend_max_time=1",
    "--touch",
    "--touch --mode=TOUCH --setting=TS_LOW_LEVEL --value=1",
    "--telematics",
    "--telematics --wlanpower=ENABLED --gsmpower=ENABLED --gpspower=ENABLED --bluetoothpower=ENABLED",
    "--telematics --wlanstartuppower=ENABLED --gsmstartuppower=ENABLED",
    "--telematics --gpsstartuppower=ENABLED --bluetoothstartuppower=ENABLED",
    "--advanced --system_mode",
    "--advanced --boot_completed",
    "--advanced --rescue_mode_next_boot",
    "--advanced --shutdown",
    "--advanced --factory",
    "--advanced --update=SS --force --filepath=/FIRMWARE.hex",
    "--advanced --verify=SS --force --filepath=/FIRMWARE.hex",
    "--advanced --update=FPGA --force --filepath=/FIRMWARE.mcs",
    "--advanced --verify=FPGA --force --filepath=/FIRMWARE.mcs",
    "--advanced --update=Front --force --filepath=/FIRMWARE.hex",
    "--advanced --verify=Front --force --filepath=/FIRMWARE.hex",
};

// The name under which a failure is printed, and the operation that failed.
using Label = std::pair<std::string, std::string>;

// Makes each operation in `failing` fail with its own name as the error text, and adds the printed labels.
void addLabels(const std::vector<std::string>& failing, std::set<Label>& labels)
{
    nlohmann::json keys;
    for (unsigned code = 1000; const std::string& operation : failing)
    {
        keys["faults"][operation]["code"] = ++code;
        keys["errorTexts"][std::to_string(code)] = operation;
    }
    for (const std::string arguments : everything)
    {
        Unit unit(keys.dump());
        for (const char* extension : {".hex", ".mcs"})
            writeFile(unit.directory / "firmware" + extension, "");
        const std::string output =
            unit.run(replaced(arguments, "/FIRMWARE", unit.directory / "firmware")).output;
        for (const std::string& line : splitLines(output))
            for (const std::string& operation : matches(R"(: (\w+)$)", line))
                if (std::ranges::find(failing, operation) != failing.end())
                    labels.emplace(line.substr(0, line.rfind(": ")), operation);
    }
}

std::string nameInModule(const std::string& operation)
{
    return operation.substr(operation.find('_') + 1);
}

// Returns the labels under which the program prints all failures.
std::set<Label> printedLabels()
{
    std::vector<std::string> failing = operations();
    std::set<Label> labels;
    addLabels(failing, labels);
    // Some settings are read before they are written, so the writes can only fail if the reads succeed.
    std::erase_if(failing, [](const std::string& name) { return nameInModule(name).starts_with("get"); });
    addLabels(failing, labels);
    return labels;
}

// Checks a page with mandoc. MANPATH contains both pages, so that mandoc can check their cross-references.
Outcome lint(const std::string& page)
{
    const TemporaryDirectory directory;
    std::filesystem::copy(PROJECT_DIRECTORY "/man", directory / "man1");
    return runCommand({.words = {"mandoc", "-Tlint", "-Wstyle", directory / "man1/" + page},
                       .environment = {{"MANPATH", directory.path}}});
}

TEST(Manual, ListsTheOptionsOfEachCategoryAndTheWordsOfEachOption)
{
    EXPECT_THAT(vocabularyOf(manualPage("fobrob.1")), testing::ContainerEq(vocabularyOfTheProgram()));
}

TEST(Manual, BeginsWithTheCategoriesAndTheGeneralOptions)
{
    const std::string manual = manualPage("fobrob.1");
    const std::string beginning = manual.substr(0, manual.find("\n.Ss "));
    Names names = {"-help", "-list"};
    for (const auto& [option, entry] : entries(manual))
        if (option.find(' ') == option.npos)
            names.insert(option.substr(1));
    const std::vector<std::string> shown = matches(R"(\n\.It (?:Fl h , )?Fl (-\w+))", beginning);
    EXPECT_THAT(shown, testing::UnorderedElementsAreArray(names));
}

TEST(Manual, HasTheRangesThatTheUnitStores)
{
    int ranges = 0;
    for (const auto& [option, entry] : entries(manualPage("fobrob.1")))
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

TEST(Manual, NamesNoUnknownOption)
{
    const std::string pages = manualPage("fobrob.1") + replaced(manualPage("fobrob-sim.1"), "-no-wait", "");
    Names named = namesAfter(" -", macroLines("Fl", pages));
    named.merge(namesAfter(R"(\-\-)", pages));
    EXPECT_THAT(tableOptions(), testing::IsSupersetOf(named));
}

TEST(Manual, ListsTheOperationsThatFailUnderAnotherName)
{
    std::set<Label> listed;
    const std::string manual = manualPage("fobrob.1");
    for (const std::string& line : splitLines(sectionOf(manual, ".Ss Names of failed operations")))
        if (const Cells cells = cellsOf(line); !cells.empty())
            listed.emplace(cells.at(0), cells.at(1));

    std::set<Label> otherNames;
    Names failed;
    for (const auto& [label, operation] : printedLabels())
    {
        failed.insert(operation);
        if (operation == "Adc_getVoltage")
            otherNames.emplace("VOLTAGE_channel", operation);
        else if (label != nameInModule(operation))
            otherNames.emplace(label, operation);
    }
    EXPECT_THAT(listed, testing::ContainerEq(otherNames));

    failed.insert("FirmwareUpgrade_getUpgradeStatus"); // its failure is never printed
    EXPECT_THAT(operations(), testing::UnorderedElementsAreArray(failed));
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

TEST(Manual, HasTheNameAndTheVersionOfTheProjectInItsFooter)
{
    const std::string version = splitLines(Unit().run("-v").output).front(); // "fobrob 2.9.0.0"
    for (const char* page : {"fobrob.1", "fobrob-sim.1"})
    {
        const Outcome outcome =
            runCommand({.words = {"mandoc", "-Tascii", PROJECT_DIRECTORY "/man/" + std::string(page)}});
        const std::string footer = splitLines(outcome.output).back();
        const std::vector<std::string> name = matches(R"(^(Fobrob \S+) .* \1$)", footer);
        ASSERT_THAT(name, testing::SizeIs(1)) << footer;
        EXPECT_EQ("f" + name.front().substr(1) + ".0", version);
    }
}

} // namespace
