#include "fobrob/option_table.h"
#include "support/letter_case.h"
#include "support/terminal.h"
#include "support/unit.h"
#include "support/vocabulary.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <regex>

namespace
{

std::vector<std::string> linesOf(const std::vector<std::string>& words, const std::string& input = "")
{
    const TemporaryDirectory home;
    const Outcome outcome = runCommand({.words = words,
                                        .environment = {{"COMPLETIONS", BUILD_DIRECTORY "/completions"},
                                                        {"HOME", home.path},
                                                        {"PATH", std::getenv("PATH")},
                                                        {"TERM", "dumb"}},
                                        .input = input});
    EXPECT_EQ(outcome.status, 0) << words.front() << ": " << outcome.errors;
    return splitLines(outcome.output);
}

// Returns the arguments of the command that is run when `keys` are typed into an interactive shell.
std::vector<std::string> typed(const std::string& shell, const std::string& keys)
{
    const std::string driver = std::string(PROJECT_DIRECTORY "/tests/support/typed.") + shell;
    if (shell == "bash")
        return linesOf({"bash", "--noprofile", "--rcfile", driver, "-i"}, keys + "\n");
    return linesOf({"zsh", "-f", driver, keys});
}

// Returns the offers of fish, each with a tab and its description.
std::vector<std::string> describedOffers(const std::string& line)
{
    return linesOf(
        {"fish", "--no-config", "-c", "source $COMPLETIONS/fobrob.fish; complete -C $argv[1]", line});
}

std::vector<std::string> answers(const std::string& shell, const std::string& line)
{
    if (shell == "fish")
    {
        std::vector<std::string> words;
        for (const std::string& offer : describedOffers(line))
            words.push_back(offer.substr(0, offer.find('\t')));
        return words;
    }
    // The words before the completed one are also arguments.
    std::vector<std::string> words = typed(shell, line + "\x1b*");
    const long before = std::count(line.begin(), line.end(), ' ') - 1;
    words.erase(words.begin(), words.begin() + before);
    return words;
}

// Returns what the shell offers at the end of `line`, or only the values if the last word has an "=". The
// last word must match an offer: otherwise the shell returns it unchanged.
Words offered(const std::string& shell, const std::string& line)
{
    const std::string word = line.substr(line.rfind(' ') + 1);
    const std::string option = word.substr(0, word.find('=') + 1);
    Words words;
    for (const std::string& answer : answers(shell, line))
        words.insert(answer.starts_with(option) ? answer.substr(option.size()) : answer);
    words.erase("");
    return words;
}

// Adds the offers at the end of `line`. `prefix` is "" for categories, or a category and a space.
void addOffers(Vocabulary& vocabulary, const std::string& line, const std::string& prefix)
{
    const std::string shell = "fish";
    Words offers = offered(shell, line);
    for (const char* general : {"--help", "--list", "-h", "-v"})
        offers.erase(general);
    for (const std::string& offer : offers)
    {
        const std::size_t end = offer.find('=');
        Words& words = vocabulary[prefix + offer.substr(0, end)];
        words.insert(end == offer.npos ? "" : "=");
        if (end != offer.npos)
            for (const std::string& word : offered(shell, line + offer))
                words.insert(inLowercase(word));
        words.erase("/"); // the start of a path
    }
}

Vocabulary vocabularyOfTheOffers()
{
    Vocabulary categories;
    addOffers(categories, "fobrob ", "");
    Vocabulary all = categories;
    for (const auto& [category, words] : categories)
        addOffers(all, "fobrob " + category + " ", category + " ");
    return all;
}

// The line editor of zsh requires a terminal.
class ShellTest : public testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        if (std::string(GetParam()) == "zsh")
            SKIP_WITHOUT_TERMINAL();
    }
};

class Completions : public ShellTest
{
protected:
    static Words offers(const std::string& line)
    {
        return offered(GetParam(), line);
    }
};

// Shells whose line editor the tests can drive.
class TypedCompletions : public ShellTest
{
};

std::string nameOfShell(const testing::TestParamInfo<const char*>& shell)
{
    return shell.param;
}

INSTANTIATE_TEST_SUITE_P(Shells, Completions, testing::Values("bash", "zsh", "fish"), nameOfShell);
INSTANTIATE_TEST_SUITE_P(Shells, TypedCompletions, testing::Values("bash", "zsh"), nameOfShell);

TEST_P(Completions, BeginWithTheCategoriesAndTheGeneralOptions)
{
    Words first = {
        "--about=",       "--advanced",   "--backlight", "--buzzer", "--can",        "--can=",
        "--digitalio",    "--digitalio=", "--heater",    "--help",   "--led",        "--lightsensor",
        "--list",         "--onoff",      "--power=",    "--touch",  "--telematics", "--temperature",
        "--temperature=", "--version",    "--version=",  "-h",       "-v",
    };
    EXPECT_EQ(offers("fobrob "), first);
    first.insert("--no-wait");
    EXPECT_EQ(offers("fobrob-sim "), first);
}

TEST_P(Completions, ContinueAfterTheOptionOfTheSimulatedUnit)
{
    EXPECT_EQ(offers("fobrob-sim --no-wait --l"), (Words{"--led", "--lightsensor", "--list"}));
    EXPECT_EQ(offers("fobrob-sim --no-wait --lightsensor --i"), Words{"--illuminance"});
}

TEST_P(Completions, OfferACategoryItsOwnOptions)
{
    const struct Case
    {
        std::string category;
        Words options;
    } cases[] = {
        {"--about=EEPROM", {"--eeprom=", "--help"}},
        {"--can=CAN1", {"--baudrate=", "--help"}},
        {"--digitalio", {"--help"}},
        {"--heater", {"--help", "--temperature", "--temperature="}},
        {"--lightsensor", {"--help", "--illuminance"}},
        {"--touch", {"--help", "--mode", "--mode=", "--setting=", "--value", "--value="}},
        {"--version=SS", {"--help"}},
    };
    for (const auto& [category, options] : cases)
        EXPECT_EQ(offers("fobrob " + category + " "), options) << category;
}

TEST_P(Completions, OfferNoOptionTwice)
{
    EXPECT_EQ(offers("fobrob --buzzer --volume=5 --help --frequency "), (Words{"--status", "--status="}));
    EXPECT_EQ(offers("fobrob --power=current --vchannel1 --vchannel2 --vchannel3=Enable --vchannel4 "),
              (Words{"--can", "--can=", "--extfan", "--extfan=", "--help"}));
    EXPECT_EQ(offers("fobrob --onoff --onoff_signal_time=4 --o"),
              (Words{"--onoff_signal", "--onoff_signal="}));
}

TEST_P(Completions, OfferNothingAfterAnUnknownCategory)
{
    for (const std::string first : {"--help", "--list", "-h", "-v", "--frequency", "buzzer"})
        EXPECT_EQ(offers("fobrob " + first + " "), Words{}) << first;
}

TEST_P(Completions, OfferTheWordsOfAValue)
{
    const struct Case
    {
        std::string line;
        Words words;
    } cases[] = {
        {"--about=", {"ADC", "Diagnostic", "EEPROM", "RawEEPROM"}},
        {"--buzzer --volume=", {}},
        {"--can=", {"CAN0", "CAN1", "CAN2", "CAN3"}},
        {"--led --status=", {}},
        {"--lightsensor --illuminance=", {}},
        {"--onoff --unit_startup=CAN_B", {"CAN_Button_Activity", "CAN_Button_OnOff_Activity"}},
        {"--power=startup --can=", {"Disable", "Enable"}},
        {"--touch --mode=TOUCH --setting=TS_C", {"TS_CALIBRATION_MEASUREMENTS", "TS_CALIBRATION_WIDTH"}},
    };
    for (const auto& [line, words] : cases)
        EXPECT_EQ(offers("fobrob " + line), words) << line;
}

TEST_P(Completions, OfferARequiredValueAsTheNextWord)
{
    const Words targets = {"FPGA", "Front", "SS"};
    EXPECT_EQ(offers("fobrob --about=RawEEPROM --eeprom "), (Words{"ADDON", "ICM"}));
    EXPECT_EQ(offers("fobrob --touch --setting TS_U"), (Words{"TS_UNTOUCHLEVEL", "TS_USE_DEJITTER"}));
    EXPECT_EQ(offers("fobrob --advanced --update "), targets);
    EXPECT_EQ(offers("fobrob --advanced --verify "), targets);
    EXPECT_EQ(offers("fobrob --advanced --filepath "), Words{"/"});
    EXPECT_EQ(offers("fobrob --advanced --update SS --f"),
              (Words{"--factory", "--factory_reset", "--filepath=", "--force"}));
    EXPECT_EQ(offers("fobrob --advanced --update --force --fo"), Words{"--force"});
}

TEST_P(Completions, MatchWordsInAnyCase)
{
    EXPECT_EQ(offers("fobrob --buzzer --status=en"), Words{"Enable"});
    EXPECT_EQ(offers("fobrob --touch --setting=ts_use"), Words{"TS_USE_DEJITTER"});
}

TEST_P(Completions, OfferFirmwareFilesForTheTarget)
{
    const TemporaryDirectory directory;
    for (const std::string name : {"a.hex", "a b.hex", "a.mcs", "a.txt", "hex", "upper.HEX"})
        writeFile(directory / name, "");
    for (const std::string name : {"older", "directory.hex"})
        std::filesystem::create_directory(directory / name);

    const struct Case
    {
        std::string options;
        std::vector<std::string> names;
    } cases[] = {
        {"--update=SS", {"a.hex", "a b.hex", "directory.hex/", "older/"}},
        {"--verify=front", {"a.hex", "a b.hex", "directory.hex/", "older/"}},
        {"--update=FPGA", {"a.mcs", "directory.hex/", "older/"}},
        {"--update=SS --verify=fpga", {"a.mcs", "directory.hex/", "older/"}},
        {"--update FPGA", {"a.mcs", "directory.hex/", "older/"}},
        {"--force", {"a.hex", "a b.hex", "a.mcs", "directory.hex/", "older/"}},
    };
    for (const auto& [options, names] : cases)
    {
        Words paths;
        for (const std::string& name : names)
            paths.insert(directory / name);
        for (const std::string option : {" --filepath=", " --filepath "})
            EXPECT_EQ(offers("fobrob --advanced " + options + option + directory / ""), paths) << options;
    }
}

TEST_P(Completions, OfferAbsolutePathsOnly)
{
    EXPECT_EQ(offers("fobrob --advanced --filepath="), Words{"/"});
    EXPECT_EQ(offers("fobrob --advanced --filepath=/us"), Words{"/usr/"});
}

TEST_P(TypedCompletions, ContinueAfterTheEqualsSign)
{
    EXPECT_EQ(typed(GetParam(), "fobrob --ab\tR\t--ee\tA\t"),
              (std::vector<std::string>{"--about=RawEEPROM", "--eeprom=ADDON"}));
}

TEST_P(TypedCompletions, EnterDirectoriesAndQuoteSpaces)
{
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory / "new files");
    writeFile(directory / "new files/the front.hex", "");
    EXPECT_EQ(typed(GetParam(), "fobrob --ad\t--fi\t" + directory / "n\tt\t--force"),
              (std::vector<std::string>{"--advanced", "--filepath=" + directory / "new files/the front.hex",
                                        "--force"}));
}

TEST_P(TypedCompletions, CompleteAWordInQuotes)
{
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory / "new  files");
    writeFile(directory / "new  files/the \"front.hex", "");
    const std::vector<std::string> words = {
        "--advanced", "--filepath=" + directory / "new  files/the \"front.hex", "--force"};
    for (const std::string beginning : {"--filepath=\"", "--filepath='", "\"--filepath=", "'--filepath="})
        EXPECT_EQ(typed(GetParam(), "fobrob --advanced " + beginning + directory / "new  f\tt\t --fo\t"),
                  words);
    EXPECT_EQ(typed(GetParam(), "fobrob \"--led\" \"--color=y\t"),
              (std::vector<std::string>{"--led", "--color=YELLOW"}));
}

TEST_P(TypedCompletions, WorkInTheMiddleOfALine)
{
    const std::string rest = " --pulses";
    EXPECT_EQ(typed(GetParam(), "fobrob --led --color=Y" + rest + std::string(rest.size(), '\x02') + "\t"),
              (std::vector<std::string>{"--led", "--color=YELLOW", "--pulses"}));
}

TEST(CompletionsOfBash, WorkIfTheEqualsSignIsNotAWordBreak)
{
    EXPECT_EQ(typed("bash", "COMP_WORDBREAKS=${COMP_WORDBREAKS//=}\nfobrob --about=D\t--eep\tI\t"),
              (std::vector<std::string>{"--about=Diagnostic", "--eeprom=ICM"}));
}

// Returns what zsh lists when Ctrl-D is typed after `line`.
std::vector<std::string> listed(const std::string& line)
{
    const std::string driver = PROJECT_DIRECTORY "/tests/support/typed.zsh";
    std::vector<std::string> shown;
    for (std::string text : linesOf({"zsh", "-f", driver, line + "\x04", "list"}))
    {
        text.erase(text.find_last_not_of(" \r") + 1);
        shown.push_back(text);
    }
    return shown;
}

TEST(CompletionsOfFish, DescribeTheOptionsAndShowTheirRanges)
{
    EXPECT_THAT(describedOffers("fobrob --buzzer --"),
                testing::IsSupersetOf({"--frequency\tfrequency", "--frequency=\tfrequency, 700 to 10000 Hz",
                                       "--volume=\tvolume, 0 to 2000", "--status=\ton or off"}));
    EXPECT_THAT(describedOffers("fobrob --heater --te"),
                testing::Contains("--temperature=\ttemperature limit, -25 to 5 °C"));
    EXPECT_THAT(describedOffers("fobrob --led --f"),
                testing::Contains("--frequency=\tblink frequency, 0.2 to 50 Hz"));
    EXPECT_EQ(
        describedOffers("fobrob-sim --no"),
        std::vector<std::string>{"--no-wait\tskip the wait of firmware commands, for development only"});
}

TEST(CompletionsOfFish, DescribeEveryOption)
{
    int descriptions = 0;
    const auto expectDescriptions = [&](const std::vector<std::string>& offers)
    {
        for (const std::string& offer : offers)
        {
            EXPECT_TRUE(std::regex_match(offer, std::regex("--?[\\w-]+=?\t[^@<>#]+"))) << offer;
            ++descriptions;
        }
    };
    const std::vector<std::string> categories = describedOffers("fobrob --");
    expectDescriptions(categories);
    for (const std::string& category : categories)
        if (category.find('=') == category.npos)
            expectDescriptions(describedOffers("fobrob " + category.substr(0, category.find('\t')) + " --"));
    EXPECT_GT(descriptions, 100);
}

TEST(CompletionsOfZsh, DescribeTheOptionsAndShowTheirRanges)
{
    SKIP_WITHOUT_TERMINAL();
    EXPECT_THAT(
        listed("fobrob --buzzer --"),
        testing::IsSupersetOf({"--frequency   -- frequency", "--frequency=  -- frequency, 700 to 10000 Hz",
                               "--volume=     -- volume, 0 to 2000"}));
    EXPECT_THAT(listed("fobrob --buzzer --status="),
                testing::Contains(testing::ContainsRegex("^Disable +Enable$")));
}

TEST(CompletionsOfAllShells, AreTheSame)
{
    SKIP_WITHOUT_TERMINAL();
    for (const char* line :
         {"fobrob ", "fobrob --t", "fobrob --advanced ", "fobrob --onoff --s",
          "fobrob --onoff --unit_startup=", "fobrob --touch --setting=", "fobrob --advanced --filepath=/"})
    {
        const Words words = offered("bash", line);
        EXPECT_FALSE(words.empty()) << line;
        EXPECT_EQ(offered("zsh", line), words) << line;
        EXPECT_EQ(offered("fish", line), words) << line;
    }
}

TEST(CompletionsOfAllShells, OfferEachCategoryItsOptionsAndEachOptionItsWords)
{
    EXPECT_THAT(vocabularyOfTheOffers(), testing::ContainerEq(vocabularyOfTheProgram()));
}

} // namespace
