#include "support/letter_case.h"
#include "support/unit.h"

#include <gmock/gmock.h>

namespace
{

// The settings whose values are actions.
struct ActionSetting
{
    std::string option;
    std::string operation;
    std::string path;
    std::string readLabel;
    std::string setLabel;
};

const ActionSetting actionSettings[] = {
    {"--shortpress", "ShortButtonPressAction", "/config/shortPressAction",
     "ShortPressAction: ", "Short press set to: "},
    {"--longpress", "LongButtonPressAction", "/config/longPressAction",
     "LongPressAction: ", "Long press set to: "},
    {"--onoff_signal", "OnOffSigAction", "/config/onOffSignalAction",
     "OnOffSignalAction: ", "OnOff Signal set to: "},
};

struct Action
{
    std::string number;
    std::string word;
    const char* stored; // in the unit's file
};

const Action actions[] = {
    {"0", "NOACTION", "none"}, {"1", "SUSPEND", "suspend"}, {"2", "SHUTDOWN", "shutdown"}};

TEST(OnOff, AcceptsEveryActionInAnyCase)
{
    Unit unit;
    for (const ActionSetting& each : actionSettings)
        for (const Action& action : actions)
            for (const std::string& word : {action.word, withCaseSwapped(action.word)})
            {
                SCOPED_TRACE(each.option + "=" + word);
                const Result result = unit.run("--onoff " + each.option + "=" + word);
                EXPECT_EQ(result.output, each.setLabel + action.word + "\n");
                EXPECT_EQ(result.calls,
                          callsOn("Config", {"Config_set" + each.operation + "(" + action.number + ") = 0"}));
                EXPECT_EQ(unit[each.path], action.stored);
            }
}

TEST(OnOff, PrintsEveryAction)
{
    Unit unit;
    for (const ActionSetting& each : actionSettings)
        for (const Action& action : actions)
        {
            unit.set(each.path, action.stored);
            EXPECT_EQ(unit.run("--onoff " + each.option).output, each.readLabel + action.word + "\n");
        }
}

TEST(OnOff, PrintsOtherActionsAsUndefined)
{
    Unit unit;
    for (const ActionSetting& each : actionSettings)
        for (const int action : {-1, 3, 7, 10})
        {
            SCOPED_TRACE(action);
            unit.set(each.path, action);
            EXPECT_EQ(unit.run("--onoff " + each.option).output, each.readLabel + "UNDEFINED ACTION\n");
        }
}

TEST(OnOff, ContinuesAfterARejectedAction)
{
    Unit unit;
    for (const ActionSetting& each : actionSettings)
        for (const std::string word : {"SLEEP", "SUSPENDED", "SUS", "1", "10", "UNDEFINED", " SUSPEND"})
        {
            SCOPED_TRACE(each.option + "=" + word);
            const Result result =
                unit.run(std::vector<std::string>{"--onoff", "--suspend_max_time", each.option + "=" + word});
            EXPECT_EQ(result.output, lines({"Invalid argument: The action argument is not valid.",
                                            "SuspendMaxTime: 120min"}));
            EXPECT_EQ(result.calls, callsOn("Config", {"Config_getSuspendMaxTime([120]) = 0"}));
        }
}

// The settings whose values are 16-bit times.
struct TimeSetting
{
    std::string option;
    std::string operation;
    std::string readLabel;
    std::string setLabel;
    std::string unit;
};

const TimeSetting timeSettings[] = {
    {"--longpress_time", "FrontBtnTrigTime", "LongPressTime: ", "Long press time set to: ", "ms"},
    {"--suspend_max_time", "SuspendMaxTime", "SuspendMaxTime: ", "Suspend Max time set to: ", "min"},
};

TEST(OnOff, SendsTheLow16BitsOfATimeAndPrintsTheWholeNumber)
{
    const struct
    {
        std::string text;
        std::string sent;
        std::string shown;
    } cases[] = {
        {"0", "0", "0"},
        {"1", "1", "1"},
        {"32768", "32768", "32768"},
        {"65535", "65535", "65535"},
        {"65536", "0", "65536"},
        {"65537", "1", "65537"},
        {"70000", "4464", "70000"},
        {"2147483647", "65535", "2147483647"},
        {"abc", "0", "0"},
        {"12abc", "12", "12"},
        {"12.9", "12", "12"},
        {"0x10", "0", "0"},
        {"010", "10", "10"},
        {"+7", "7", "7"},
        {"-0", "0", "0"},
        {"-", "0", "0"},
    };
    Unit unit;
    for (const TimeSetting& each : timeSettings)
        for (const auto& [text, sent, shown] : cases)
        {
            SCOPED_TRACE(each.option + "=" + text);
            const Result result = unit.run("--onoff " + each.option + "=" + text);
            EXPECT_EQ(result.output, each.setLabel + shown + each.unit + "\n");
            EXPECT_EQ(result.calls,
                      callsOn("Config", {"Config_set" + each.operation + "(" + sent + ") = 0"}));
            EXPECT_EQ(unit.run("--onoff " + each.option).output, each.readLabel + sent + each.unit + "\n");
        }
}

TEST(OnOff, RejectsNegativeTimes)
{
    Unit unit;
    for (const TimeSetting& each : timeSettings)
        for (const char* text : {"-1", "-5", "-65531", "-2147483648", "-99999999999999999999"})
        {
            SCOPED_TRACE(each.option + "=" + text);
            const Result result = unit.run("--onoff " + each.option + "=" + text);
            EXPECT_EQ(result.output, "Invalid argument: The time argument is not valid.\n");
            EXPECT_EQ(result.calls, callsOn("Config", {}));
        }
}

TEST(OnOff, ContinuesAfterARejectedTime)
{
    Unit unit;
    EXPECT_EQ(unit.run("--onoff --suspend_max_time=1 --longpress_time=-1").output,
              lines({"Invalid argument: The time argument is not valid.", "Suspend Max time set to: 1min"}));
}

TEST(OnOff, SendsTheSignalTimeWithoutARangeCheck)
{
    const struct
    {
        std::string text;
        std::string sent;
    } cases[] = {
        {"0", "0"},           {"65536", "65536"},   {"2147483647", "2147483647"},
        {"-1", "4294967295"}, {"-5", "4294967291"}, {"-2147483648", "2147483648"},
        {"abc", "0"},         {"12abc", "12"},
    };
    Unit unit;
    for (const auto& [text, sent] : cases)
    {
        SCOPED_TRACE(text);
        const Result result = unit.run("--onoff --onoff_signal_time=" + text);
        EXPECT_EQ(result.output, "OnOff Signal time set to: " + sent + "s\n");
        EXPECT_EQ(result.calls, callsOn("Config", {"Config_setExtOnOffSigTrigTime(" + sent + ") = 0"}));
        EXPECT_EQ(unit.run("--onoff --onoff_signal_time").output, "OnOffSignalTime: " + sent + "s\n");
    }
}

TEST(OnOff, ClampsATimeToTheRangeOfLong)
{
    const bool wide = isProgram64Bit();
    Unit unit;
    const Result signal = unit.run("--onoff --onoff_signal_time=4294967301");
    EXPECT_EQ(signal.output,
              wide ? "OnOff Signal time set to: 5s\n" : "OnOff Signal time set to: 2147483647s\n");
    const Result press = unit.run("--onoff --longpress_time=4294967301");
    EXPECT_EQ(press.output,
              wide ? "Long press time set to: 4294967301ms\n" : "Long press time set to: 2147483647ms\n");
    EXPECT_EQ(unit["/config/longPressTime"], wide ? 5 : 65535);
}

TEST(OnOff, PrintsPowerOnStartupAsEnabledOnlyFor1)
{
    Unit unit;
    for (const int value : {0, 2, -1, 256})
    {
        unit.set("/config/powerOnStartup", value);
        EXPECT_EQ(unit.run("--onoff --always_on").output, "PowerOnStartup: Disabled\n");
    }
    unit.set("/config/powerOnStartup", 1);
    EXPECT_EQ(unit.run("--onoff --always_on").output, "PowerOnStartup: Enabled\n");
}

TEST(OnOff, PrintsTheWordForAlwaysOnAsTyped)
{
    const struct
    {
        std::string word;
        std::string sent;
        bool kept;
    } cases[] = {
        {"Enabled", "1", true}, {"Disabled", "0", false}, {"enabled", "1", true}, {"dISABLED", "0", false}};
    Unit unit;
    for (const auto& [word, sent, kept] : cases)
    {
        SCOPED_TRACE(word);
        const Result result = unit.run("--onoff --always_on=" + word);
        EXPECT_EQ(result.output, "PowerOnStartup set to: " + word + ".\n");
        EXPECT_EQ(result.calls, callsOn("Config", {"Config_setPowerOnStartup(" + sent + ") = 0"}));
        EXPECT_EQ(unit["/config/powerOnStartup"], kept);
    }
}

TEST(OnOff, RejectsTheWordsForAlwaysOnThatItsHelpLists)
{
    Unit unit;
    for (const char* word : {"Enable", "Disable", "enable", "1", "0", "on", "Enabled."})
    {
        SCOPED_TRACE(word);
        const Result result = unit.run(std::string("--onoff --unit_startup --always_on=") + word);
        EXPECT_EQ(result.output, lines({"Invalid argument to always_on. Should be Enabled/Disabled",
                                        "UnitStartup: FRONT button and ONOFF signal"}));
        EXPECT_EQ(result.calls, callsOn("Config", {"Config_getStartupTriggerConfig([3]) = 0"}));
    }
}

struct Trigger
{
    int value;
    std::string word;
    std::string description;
};

const Trigger triggers[] = {
    {1, "FRONT", "FRONT button"},
    {2, "ONOFF", "ONOFF signal"},
    {3, "BOTH", "FRONT button and ONOFF signal"},
    {1, "Front_Button_Enabled", "FRONT button"},
    {2, "OnOff_Signal_Enabled", "ONOFF signal"},
    {3, "Both_Button_And_Signal_Enabled", "FRONT button and ONOFF signal"},
    {5, "CAN_Button_Activity", "Wake up on CAN and Buttons"},
    {6, "CAN_OnOff_Activity", "Wake up on CAN and On/Off/Ignition signal"},
    {7, "CAN_Button_OnOff_Activity", "Wake up on CAN, Buttons and On/Off/Ignition signal"},
    {9, "CI_Button_Activity", "Wake up on CI and Button State Change"},
    {10, "CI_OnOff_Activity", "Wake up on CI and OnOff Signal State Change"},
    {11, "CI_Button_OnOff_Activity", "Wake up on CI, Button and OnOff Signal State Change"},
    {13, "CI_CAN_Button_Activity", "Wake up on CI, CAN and Button State Change"},
    {14, "CI_CAN_OnOff_Activity", "Wake up on CI, CAN and OnOff Signal State Change"},
    {15, "All_Events", "Wake up on all events"},
};

TEST(OnOff, AcceptsEveryTriggerInAnyCase)
{
    Unit unit;
    for (const Trigger& trigger : triggers)
        for (const std::string& word : {trigger.word, withCaseSwapped(trigger.word)})
        {
            SCOPED_TRACE(word);
            const Result result = unit.run("--onoff --unit_startup=" + word);
            EXPECT_EQ(result.output, "Startup Trigger set to: " + trigger.description + "\n");
            const std::string sent = std::to_string(trigger.value);
            EXPECT_EQ(result.calls, callsOn("Config", {"Config_setStartupTriggerConfig(" + sent + ") = 0"}));
            EXPECT_EQ(unit["/config/startupTrigger"], trigger.value);
            EXPECT_EQ(unit.run("--onoff --unit_startup").output,
                      "UnitStartup: " + trigger.description + "\n");
        }
}

TEST(OnOff, PrintsOtherTriggersAsUndefined)
{
    Unit unit;
    for (const int trigger : {0, 4, 8, 12, 16, 255, -1})
    {
        SCOPED_TRACE(trigger);
        unit.set("/config/startupTrigger", trigger);
        EXPECT_EQ(unit.run("--onoff --unit_startup").output, "UnitStartup: UNDEFINED CONFIG\n");
    }
}

TEST(OnOff, ContinuesAfterARejectedTrigger)
{
    Unit unit;
    for (const char* word : {"4", "3", "255", "CAN", "CI", "CAN_Activity", "FRONT_button", "All"})
    {
        SCOPED_TRACE(word);
        const Result result = unit.run(std::string("--onoff --suspend_max_time --unit_startup=") + word);
        EXPECT_EQ(result.output,
                  lines({"Invalid argument: The trigger argument is not valid.", "SuspendMaxTime: 120min"}));
        EXPECT_EQ(result.calls, callsOn("Config", {"Config_getSuspendMaxTime([120]) = 0"}));
    }
}

TEST(OnOff, SkipsSpacesBeforeANumber)
{
    Unit unit;
    EXPECT_EQ(unit.run(std::vector<std::string>{"--onoff", "--longpress_time= \t12"}).output,
              "Long press time set to: 12ms\n");
}

} // namespace
