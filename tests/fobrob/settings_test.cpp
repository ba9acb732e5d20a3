#include "fobrob/settings.h"

#include "support/category_calls.h"

namespace
{

class SettingsOf : public testing::TestWithParam<SettingsCategory>
{
protected:
    const SettingsCategory& category = GetParam();
    const std::vector<Setting>& settings = category.settings;
    Unit unit = Unit(category.keys);

    Result run(const std::string& options)
    {
        return unit.run(category.category + " " + options);
    }

    // Returns the calls of a run that performs the steps.
    Calls callsOfSteps(const std::vector<Step>& steps) const
    {
        Calls work;
        for (const Step& step : steps)
            work.push_back(step.call + " = 0");
        return callsOf(category.category, work);
    }
};

INSTANTIATE_TEST_SUITE_P(Category, SettingsOf, testing::ValuesIn(settingsCategories()),
                         [](const auto& test) { return test.param.name; });

std::string changing(const Setting& setting)
{
    return setting.option + "=" + setting.value;
}

const std::string& changeOutput(const Setting& setting)
{
    return setting.change.back().output;
}

// A value requires an equals sign. A word after a space is ignored.
TEST_P(SettingsOf, AreReadByAnOptionWithoutAValue)
{
    for (const Setting& setting : settings)
        for (const std::string& noValue :
             {std::string(), std::string("="), std::string("=noArgument"), std::string("=noargument"),
              std::string("=NOARGUMENT"), " " + setting.value})
        {
            SCOPED_TRACE(setting.option + noValue);
            const Result result = run(setting.option + noValue);
            EXPECT_EQ(result.output, setting.read.output);
            EXPECT_EQ(result.calls, callsOfSteps({setting.read}));
        }
}

TEST_P(SettingsOf, AreReadInAFixedOrder)
{
    std::string options;
    std::string output;
    for (const Setting& setting : settings)
    {
        options = setting.option + " " + options;
        output += setting.read.output;
    }
    EXPECT_EQ(run(options).output, output);
}

TEST_P(SettingsOf, AreChangedByAnOptionWithAValue)
{
    for (const Setting& setting : settings)
    {
        if (setting.value.empty())
            continue;
        SCOPED_TRACE(changing(setting));
        Unit changed(category.keys);
        const Result result = changed.run(category.category + " " + changing(setting));
        EXPECT_EQ(result.output, changeOutput(setting));
        EXPECT_EQ(result.calls, callsOfSteps(setting.change));
        EXPECT_EQ(changed.run(category.category + " " + setting.option).output, setting.newOutput);
    }
}

TEST_P(SettingsOf, AreReadAndChangedInOneRun)
{
    for (const std::size_t remainder : {0u, 1u})
    {
        std::string options;
        std::string output;
        for (std::size_t index = 0; index < settings.size(); ++index)
        {
            const Setting& setting = settings[index];
            const bool change = index % 2 == remainder && !setting.value.empty();
            options = (change ? changing(setting) : setting.option) + " " + options;
            output += change ? changeOutput(setting) : setting.read.output;
        }
        SCOPED_TRACE(options);
        Unit changed(category.keys);
        EXPECT_EQ(changed.run(category.category + " " + options).output, output);
    }
}

TEST_P(SettingsOf, UseTheLastValueOfARepeatedOption)
{
    for (const Setting& setting : settings)
    {
        if (setting.value.empty())
            continue;
        const std::string& option = setting.option;
        const std::string& bareOutput =
            category.repeated == RepeatedOption::clearsValue ? setting.read.output : changeOutput(setting);
        const std::pair<std::string, std::string> cases[] = {
            {option + "=nonsense " + changing(setting), changeOutput(setting)},
            {option + " " + changing(setting), changeOutput(setting)},
            {changing(setting) + " " + option + "=noargument", setting.read.output},
            {changing(setting) + " " + option, bareOutput},
            {changing(setting) + " " + option + "=", bareOutput},
        };
        for (const auto& [options, output] : cases)
        {
            SCOPED_TRACE(options);
            Unit changed(category.keys);
            EXPECT_EQ(changed.run(category.category + " " + options).output, output);
        }
    }
}

TEST_P(SettingsOf, AreKeptAfterAFailedChange)
{
    for (const Setting& setting : settings)
    {
        if (setting.value.empty())
            continue;
        SCOPED_TRACE(changing(setting));
        Unit failing(category.keys);
        for (const Step& step : setting.change)
            failing.fails(step.operation(), 77);
        const nlohmann::json before = failing.content();
        failing.run(category.category + " " + changing(setting));
        EXPECT_EQ(failing.content(), before);
    }
}

TEST_P(SettingsOf, AreKeptAcrossAReboot)
{
    if (category.changesLastUntilReboot)
        return;
    std::string output;
    for (const Setting& setting : settings)
    {
        const bool change = !setting.value.empty();
        if (change)
            run(changing(setting));
        output += change ? setting.newOutput : setting.read.output;
    }
    unit.shutDown();
    std::string options;
    for (const Setting& setting : settings)
        options += setting.option + " ";
    EXPECT_EQ(run(options).output, output);
}

} // namespace
