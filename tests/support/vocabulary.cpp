#include "support/vocabulary.h"

#include "fobrob/category.h"
#include "support/firmware_unit.h"
#include "support/letter_case.h"

namespace
{

// Returns the options of each category in completions/options.txt.
std::map<std::string, std::set<std::string>> listedOptions()
{
    std::map<std::string, std::set<std::string>> options;
    std::string category;
    for (const std::string& line : splitLines(readFile(PROJECT_DIRECTORY "/completions/options.txt")))
    {
        const std::size_t begin = line.find("--");
        if (begin == line.npos || line.starts_with('#'))
            continue;
        const std::string name = line.substr(begin, line.find_first_of("= ", begin) - begin);
        if (begin == 0)
            options[category = name];
        else
            options[category].insert(name);
    }
    return options;
}

// Returns required_argument, optional_argument or no_argument.
int argumentOf(const std::string& option)
{
    for (const auto* row = longOptions; row->name; ++row)
        if (option == std::string("--") + row->name)
            return row->has_arg;
    ADD_FAILURE() << "not an option: " << option;
    return no_argument;
}

// Returns the category with the value that its options require, if any.
std::string withArgument(const std::string& category)
{
    if (category == "--about")
        return "--about=RawEEPROM";
    if (category == "--can")
        return "--can=CAN0";
    if (category == "--power")
        return "--power=current";
    return category;
}

// Tries command lines on a unit.
class Trial
{
public:
    Trial()
    {
        unit.set("/firmware/statuses", {{{"state", 6}}});
        unit.input = "";
    }

    Result run(const std::string& commandLine)
    {
        return unit.run(commandLine);
    }

    bool isCategory(const std::string& option)
    {
        return run(option + " --help").output.starts_with("Category - ");
    }

    bool haveSameEffect(const std::string& oneLine, const std::string& other)
    {
        const Result one = run(oneLine);
        const Result two = run(other);
        return one.output == two.output && one.calls == two.calls;
    }

    bool accepts(const std::string& commandLine)
    {
        const std::string output = run(commandLine).output;
        const auto contains = [&](const char* text) { return output.find(text) != output.npos; };
        return !output.empty() && !contains("Invalid") && !contains("out of range") && !contains("full path");
    }

    // Returns the words that the program compares a value of the last option of `commandLine` with.
    Words comparedWords(const std::string& commandLine)
    {
        const std::string value = "anything";
        Command command = programOn(unit.file(), commandLine + "=" + value);
        const std::string record = unit.directory / "words";
        writeFile(record, "");
        command.environment["COMPARED_WORDS"] = record;
        command.environment["LD_PRELOAD"] += ":" + buildDirectory() + "/tests/strcasecmp-interposer.so";
        runCommand(command);
        Words words;
        for (const std::string& line : splitLines(readFile(record)))
            if (line.starts_with(value + " "))
                words.insert(line.substr(value.size() + 1));
        words.erase(noArgument());
        return words;
    }

    // Returns a command line on which the option has an effect.
    std::string contextOf(const std::string& category, const std::string& option) const
    {
        if (option == "--force")
            return "--advanced --update=SS --filepath=" + unit.hex;
        if (option == "--factory_reset")
            return "--advanced --rescue_mode_next_boot";
        if (category == "--advanced")
            return "--advanced --filepath=/";
        return withArgument(category);
    }

private:
    FirmwareUnit unit;
};

// Expects that the effect of the option differs from that of --list, which is not an option of any category.
void expectOwnOption(Trial& trial, const std::string& category, const std::string& option)
{
    const std::string context = trial.contextOf(category, option);
    const std::string value = argumentOf(option) == required_argument ? "=anything" : "";
    EXPECT_FALSE(trial.haveSameEffect(context + " " + option + value, context + " --list"))
        << "no effect: " << category << " " << option;
}

// Expects that all other options together have the same effect as --list given as many times.
void expectNoOtherOption(Trial& trial, const std::string& category, const std::set<std::string>& own)
{
    std::string others = withArgument(category);
    std::string lists = others;
    const auto add = [&](const std::string& option)
    {
        others += " " + option;
        lists += " --list";
    };
    for (const auto* row = longOptions; row->name; ++row)
    {
        const std::string option = std::string("--") + row->name;
        if (row->val == OPT_HELP || own.contains(option))
            continue;
        if (row->has_arg != required_argument)
            add(option);
        if (row->has_arg != no_argument)
            add(option + "=1");
    }
    EXPECT_TRUE(trial.haveSameEffect(others, lists))
        << category << " has an option that completions/options.txt does not list";
}

Words acceptedWords(Trial& trial, const std::string& commandLine, int argument)
{
    if (argument == no_argument)
        return {""};
    Words words = {"="};
    if (argument == optional_argument && trial.accepts(commandLine))
        words.insert("");
    for (const std::string& word : trial.comparedWords(commandLine))
        if (trial.accepts(commandLine + "=" + word))
            words.insert(inLowercase(word));
    words.erase("ts_calibtation_width"); // Intentional: accepted because it is printed, but not listed.
    return words;
}

} // namespace

Vocabulary vocabularyOfTheProgram()
{
    Trial trial;
    const auto options = listedOptions();
    for (const auto* row = longOptions; row->name; ++row)
    {
        const std::string option = std::string("--") + row->name;
        EXPECT_EQ(trial.isCategory(option), options.contains(option)) << option;
    }

    Vocabulary vocabulary;
    for (const auto& [category, own] : options)
    {
        vocabulary[category] = acceptedWords(trial, category, argumentOf(category));
        expectNoOtherOption(trial, category, own);
        for (const std::string& option : own)
        {
            expectOwnOption(trial, category, option);
            vocabulary[category + " " + option] =
                acceptedWords(trial, trial.contextOf(category, option) + " " + option, argumentOf(option));
        }
    }
    return vocabulary;
}
