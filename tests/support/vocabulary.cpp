#include "support/vocabulary.h"

#include "fobrob/option_table.h"
#include "support/letter_case.h"
#include "support/unit.h"

namespace
{

std::string source(const std::string& file)
{
    return readFile(PROJECT_FOLDER "/src/" + file);
}

std::string sourceOf(const std::string& category)
{
    const std::string own = source("fobrob/categories/" + category + ".cpp");
    return category == "advanced" ? own + source("fobrob/categories/firmware.cpp") : own;
}

std::vector<std::string> namesOf(const std::vector<std::string>& codes)
{
    std::vector<std::string> names;
    for (const std::string& code : codes)
        names.push_back(inLowercase(code));
    return names;
}

// Whether a value must, may or cannot follow the option.
int argumentOf(const std::string& option)
{
    for (const auto* row = longOptions; row->name; ++row)
        if (option == row->name)
            return row->has_arg;
    ADD_FAILURE() << "no option is named " << option;
    return no_argument;
}

// Every word in the source that the program might compare a value with.
Words candidates(const std::string& category)
{
    Words words;
    for (const std::string& word : matches(R"|("(\w+)")|", sourceOf(category) + source("fobrob/words.h")))
        if (word == "CAN")
            for (const char number : {'0', '1', '2', '3', '4'})
                words.insert(word + number);
        else
            words.insert(word);
    // Taken for the sake of those who write what they see, and shown to nobody.
    words.erase("TS_CALIBTATION_WIDTH");
    return words;
}

// The category as its options need it.
std::string opening(const std::string& category)
{
    if (category == "about")
        return "--about=RawEEPROM";
    if (category == "advanced")
        return "--advanced --filepath=/";
    if (category == "can")
        return "--can=CAN0";
    if (category == "power")
        return "--power=current";
    return "--" + category;
}

bool isTaken(Unit& unit, const std::string& line)
{
    const std::string output = unit.run(line).output;
    const auto says = [&](const char* text) { return output.find(text) != output.npos; };
    return !output.empty() && !says("Invalid") && !says("out of range") && !says("full path");
}

Words taken(Unit& unit, const std::string& line, int argument, const Words& candidates)
{
    if (argument == no_argument)
        return {""};
    Words words = {"="};
    if (argument == optional_argument && isTaken(unit, line))
        words.insert("");
    // What takes any word wants a number.
    if (isTaken(unit, line + "=nonsense"))
        return words;
    for (const std::string& word : candidates)
        if (isTaken(unit, line + "=" + word))
            words.insert(inLowercase(word));
    return words;
}

} // namespace

Vocabulary vocabularyOfTheProgram()
{
    Unit unit;
    Vocabulary vocabulary;
    for (const std::string& category : namesOf(matches(R"(\{OPT_(\w+), handle)", source("fobrob/main.cpp"))))
    {
        const Words words = candidates(category);
        vocabulary["--" + category] = taken(unit, "--" + category, argumentOf(category), words);
        for (const std::string& option : namesOf(matches(R"(\{OPT_(\w+), [&"])", sourceOf(category))))
            vocabulary["--" + category + " --" + option] =
                taken(unit, opening(category) + " --" + option, argumentOf(option), words);
    }
    return vocabulary;
}
