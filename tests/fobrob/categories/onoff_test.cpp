#include "support/letter_case.h"
#include "support/unit.h"

#include <gmock/gmock.h>

namespace
{

const char* const help =
    "Category - ONOFF\n"
    "Use this category to adjust the settings of the OnOff functionality, such as: startup and suspend triggers etc. \n"
    "\n"
    "Usage\n"
    "The category should not be passed an argument. If no option is used, all available\n"
    "information about the OnOff functionality will be printed. It is possible to combine \n"
    "several options to get more information with one call. See the table below for \n"
    "available arguments and examples.\n"
    "\n"
    "Two examples how options can be combined:\n"
    "Ex1: ./Fobrob --onoff --longpress=SHUTDOWN --longpress_time=2000 --shotpress=SUSPEND\n"
    "Ex2: ./Fobrob --onoff --onoff_signal=SUSPEND --suspend_max_time=120\n"
    "\n"
    "Category\tArg\tOption\t\tArg\t\tNote\n"
    "--onoff\t\t\t\t\t\t\tShow information about OnOff configuration.\n"
    "--onoff\t\t\t--shortpress\t\t\tGet Short button press action.\n"
    "--onoff\t\t\t--longpress\t\t\tGet Long button press action.\n"
    "--onoff\t\t\t--longpress_time\t\tGet Long button press trigger time.\n"
    "--onoff\t\t\t--onoff_signal\t\t\tGet OnOff signal action.\n"
    "--onoff\t\t\t--onoff_signal_time\t\tGet OnOff signal trigger time.\n"
    "--onoff\t\t\t--unit_startup\t\t\tGet unit startup trigger.\n"
    "--onoff\t\t\t--suspend_max_time\t\tGet maximum suspend time.\n"
    "\n"
    "--onoff\t\t\t--shortpress=\tNOACTION/SUSPEND/SHUTDOWN\tSet short press action.\n"
    "--onoff\t\t\t--longpress=\tNOACTION/SUSPEND/SHUTDOWN\tSet long press action.\n"
    "--onoff\t\t\t--longpress_time=\t[Length]\tSet long press trigger length in ms.\n"
    "--onoff\t\t\t--onoff_signal=\tNOACTION/SUSPEND/SHUTDOWN\tSet onoff - signal action.\n"
    "--onoff\t\t\t--onoff_signal_time=\t[Length]\tSet onoff-signal trigger length in s.\n"
    "--onoff\t\t\t--always_on=\tEnable/Disable\tSet unit to start always when power turned on.\n"
    "--onoff\t\t\t--unit_startup=\tFRONT/ONOFF/BOTH\tSet unit startup trigger.\n"
    "--onoff\t\t\t--suspend_max_time=\t[Length]\tSet maximum time in suspend in minutes.(0 = disable)\n";

// One setting, as a healthy unit has it and as a test changes it.
struct Setting
{
    std::string option;
    std::string operation; // behind "Config_get" and "Config_set"
    std::string getReport;
    std::string setReport;
    std::string readLine;
    std::string device; // what the unit delivers for it
    std::string value;  // another one for the command line
    std::string sent;   // what the unit gets for that
    std::string setLine;
    std::string newReadLine;
};

// In the order of the work.
const Setting settings[] = {
    {"--shortpress", "ShortButtonPressAction", "getShortPressAction", "setShortPressAction",
     "ShortPressAction: SUSPEND", "1", "NOACTION", "0", "Short press set to: NOACTION",
     "ShortPressAction: NOACTION"},
    {"--longpress", "LongButtonPressAction", "getLongPressAction", "setLongPressAction",
     "LongPressAction: SHUTDOWN", "2", "SUSPEND", "1", "Long press set to: SUSPEND",
     "LongPressAction: SUSPEND"},
    {"--longpress_time", "FrontBtnTrigTime", "getLongPressTime", "setLongPressTime", "LongPressTime: 3000ms",
     "3000", "2500", "2500", "Long press time set to: 2500ms", "LongPressTime: 2500ms"},
    {"--onoff_signal", "OnOffSigAction", "getOnOffSignalAction", "setOnOffSignalAction",
     "OnOffSignalAction: SHUTDOWN", "2", "SUSPEND", "1", "OnOff Signal set to: SUSPEND",
     "OnOffSignalAction: SUSPEND"},
    {"--onoff_signal_time", "ExtOnOffSigTrigTime", "getOnOffSignalTime", "setOnOffSignalTrigTime",
     "OnOffSignalTime: 5s", "5", "90", "90", "OnOff Signal time set to: 90s", "OnOffSignalTime: 90s"},
    {"--always_on", "PowerOnStartup", "getPowerOnStartup", "setPowerOnStartup", "PowerOnStartup: Disabled",
     "0", "Enabled", "1", "PowerOnStartup set to: Enabled.", "PowerOnStartup: Enabled"},
    {"--unit_startup", "StartupTriggerConfig", "getUnitStartupConfig", "setUnitStartupTrigger",
     "UnitStartup: FRONT button and ONOFF signal", "3", "ONOFF", "2", "Startup Trigger set to: ONOFF signal",
     "UnitStartup: ONOFF signal"},
    {"--suspend_max_time", "SuspendMaxTime", "getSuspendMax", "setSuspendMaxTime", "SuspendMaxTime: 120min",
     "120", "30", "30", "Suspend Max time set to: 30min", "SuspendMaxTime: 30min"},
};

std::string getting(const Setting& setting)
{
    return "Config_get" + setting.operation + "([" + setting.device + "]) = 0";
}

std::string changing(const Setting& setting)
{
    return "Config_set" + setting.operation + "(" + setting.sent + ") = 0";
}

TEST(OnOff, ReadsAllEightSettingsInOrder)
{
    Unit unit;
    std::string output;
    Calls work;
    for (const Setting& each : settings)
    {
        output += each.readLine + "\n";
        work.push_back(getting(each));
    }
    const Result result = unit.run("--onoff");
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(result.calls, callsOn("Config", work));
}

TEST(OnOff, ReadsOneSettingAlone)
{
    Unit unit;
    for (const Setting& each : settings)
        for (const char* noValue : {"", "=", "=noArgument", "=NOARGUMENT"})
        {
            SCOPED_TRACE(each.option + noValue);
            const Result result = unit.run("--onoff " + each.option + noValue);
            EXPECT_EQ(result.output, each.readLine + "\n");
            EXPECT_EQ(result.calls, callsOn("Config", {getting(each)}));
        }
}

TEST(OnOff, ChangesOneSettingAlone)
{
    for (const Setting& each : settings)
    {
        SCOPED_TRACE(each.option);
        Unit unit;
        const Result result = unit.run("--onoff " + each.option + "=" + each.value);
        EXPECT_EQ(result.output, each.setLine + "\n");
        EXPECT_EQ(result.calls, callsOn("Config", {changing(each)}));
        EXPECT_EQ(unit.run("--onoff " + each.option).output, each.newReadLine + "\n");
    }
}

TEST(OnOff, ChangesEverythingInItsOwnOrder)
{
    std::string options, output;
    Calls work;
    for (const Setting& each : settings)
    {
        options = " " + each.option + "=" + each.value + options;
        output += each.setLine + "\n";
        work.push_back(changing(each));
    }
    Unit unit;
    const Result result = unit.run("--onoff" + options);
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(result.calls, callsOn("Config", work));
}

TEST(OnOff, SetsTheShortPressBeforeTheSuspendTime)
{
    Unit unit;
    EXPECT_EQ(unit.run("--onoff --suspend_max_time=30 --shortpress=SUSPEND").output,
              lines({"Short press set to: SUSPEND", "Suspend Max time set to: 30min"}));
}

TEST(OnOff, ReadsAndChangesInOneRun)
{
    Unit unit;
    EXPECT_EQ(unit.run("--onoff --unit_startup --always_on=Enabled --longpress_time").output,
              lines({"LongPressTime: 3000ms", "PowerOnStartup set to: Enabled.",
                     "UnitStartup: FRONT button and ONOFF signal"}));
}

TEST(OnOff, KeepsAValueThroughABareRepetition)
{
    for (const Setting& each : settings)
        for (const char* noValue : {"", "="})
        {
            SCOPED_TRACE(each.option + noValue);
            Unit unit;
            const std::string again = " " + each.option + noValue;
            EXPECT_EQ(unit.run("--onoff " + each.option + "=" + each.value + again).output,
                      each.setLine + "\n");
        }
}

TEST(OnOff, TakesTheLastOfRepeatedValues)
{
    Unit unit;
    EXPECT_EQ(unit.run("--onoff --shortpress=SUSPEND --shortpress=SHUTDOWN").output,
              "Short press set to: SHUTDOWN\n");
    EXPECT_EQ(unit.run("--onoff --shortpress=SUSPEND --shortpress=noargument").output,
              "ShortPressAction: SHUTDOWN\n");
}

TEST(OnOff, KeepsAllSettingsThroughAReboot)
{
    Unit unit;
    std::string options, output;
    for (const Setting& each : settings)
    {
        options += " " + each.option + "=" + each.value;
        output += each.newReadLine + "\n";
    }
    unit.run("--onoff" + options);
    unit.shutDown();
    EXPECT_EQ(unit.run("--onoff").output, output);
}

TEST(OnOff, ReportsAFailedReadingAndGoesOn)
{
    for (const Setting& failing : settings)
    {
        SCOPED_TRACE(failing.operation);
        Unit unit;
        unit.fails("Config_get" + failing.operation, 77);
        std::string output;
        for (const Setting& each : settings)
            output += &each == &failing ? failing.getReport + ": Error 77\n" : each.readLine + "\n";
        EXPECT_EQ(unit.run("--onoff").output, output);
    }
}

TEST(OnOff, ReportsAFailedChangeAndGoesOn)
{
    for (const Setting& failing : settings)
    {
        SCOPED_TRACE(failing.operation);
        Unit unit;
        unit.fails("Config_set" + failing.operation, 77);
        std::string options, output;
        for (const Setting& each : settings)
        {
            options += " " + each.option + "=" + each.value;
            output += (&each == &failing ? failing.setReport + ": Error 77" : each.setLine) + "\n";
        }
        EXPECT_EQ(unit.run("--onoff" + options).output, output);
        EXPECT_EQ(unit.run("--onoff " + failing.option).output, failing.readLine + "\n");
    }
}

TEST(OnOff, TracesAFailedChange)
{
    Unit unit;
    unit.fails("Config_setSuspendMaxTime", 77);
    EXPECT_EQ(unit.run("--onoff --suspend_max_time=30").calls,
              callsOn("Config", {"Config_setSuspendMaxTime(30) = 77", "GetErrorStringA(77) = \"Error 77\""}));
}

TEST(OnOff, FallsSilentWhereTheErrorHasNoText)
{
    for (const Setting& each : settings)
    {
        SCOPED_TRACE(each.operation);
        Unit unit(R"({"errorTexts": {"77": null}})");
        unit.fails("Config_set" + each.operation, 77);
        const Result result =
            unit.run("--onoff --suspend_max_time --shortpress " + each.option + "=" + each.value);
        EXPECT_THAT(result.output, testing::EndsWith(each.setReport + ": "));
        EXPECT_EQ(result.calls.back(), "Config_release() = 0");
    }
}

// What the three settings with an action have of their own.
struct ActionSetting
{
    std::string option;
    std::string operation;
    std::string place;
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
    const char* kept; // as the unit keeps it
};

const Action actions[] = {
    {"0", "NOACTION", "none"}, {"1", "SUSPEND", "suspend"}, {"2", "SHUTDOWN", "shutdown"}};

TEST(OnOff, TakesEveryActionInAnyCase)
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
                EXPECT_EQ(unit[each.place], action.kept);
            }
}

TEST(OnOff, ShowsEveryAction)
{
    Unit unit;
    for (const ActionSetting& each : actionSettings)
        for (const Action& action : actions)
        {
            unit.set(each.place, action.kept);
            EXPECT_EQ(unit.run("--onoff " + each.option).output, each.readLabel + action.word + "\n");
        }
}

TEST(OnOff, ShowsOtherActionsAsUndefined)
{
    Unit unit;
    for (const ActionSetting& each : actionSettings)
        for (const int action : {-1, 3, 7, 10})
        {
            SCOPED_TRACE(action);
            unit.set(each.place, action);
            EXPECT_EQ(unit.run("--onoff " + each.option).output, each.readLabel + "UNDEFINED ACTION\n");
        }
}

TEST(OnOff, RefusesOtherActionWordsAndGoesOn)
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

// The two settings with a time of sixteen bits.
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

TEST(OnOff, SendsTheLowSixteenBitsOfATimeAndShowsAllOfIt)
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

TEST(OnOff, RefusesNegativeTimes)
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

TEST(OnOff, GoesOnBehindARefusedTime)
{
    Unit unit;
    EXPECT_EQ(unit.run("--onoff --suspend_max_time=1 --longpress_time=-1").output,
              lines({"Invalid argument: The time argument is not valid.", "Suspend Max time set to: 1min"}));
}

TEST(OnOff, SendsAllOfTheSignalTimeWhateverItIs)
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

TEST(OnOff, TakesANumberBeyondThirtyTwoBitsAsFarAsALongHoldsIt)
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

TEST(OnOff, ShowsAStartWithPowerForOneAlone)
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

TEST(OnOff, ShowsTheWordForAlwaysOnAsItWasTyped)
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

TEST(OnOff, RefusesOtherWordsForAlwaysOnEvenThoseOfTheHelp)
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

TEST(OnOff, TakesEveryTriggerInAnyCase)
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

TEST(OnOff, ShowsTriggersWithoutANameAsUndefined)
{
    Unit unit;
    for (const int trigger : {0, 4, 8, 12, 16, 255, -1})
    {
        SCOPED_TRACE(trigger);
        unit.set("/config/startupTrigger", trigger);
        EXPECT_EQ(unit.run("--onoff --unit_startup").output, "UnitStartup: UNDEFINED CONFIG\n");
    }
}

TEST(OnOff, RefusesOtherTriggerWordsAndGoesOn)
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

TEST(OnOff, RefusesAForeignOptionWithoutReading)
{
    Unit unit;
    for (const char* option : {"--frequency", "--startup=Enable", "-h", "-v", "--frequency --volume"})
    {
        SCOPED_TRACE(option);
        const Result result = unit.run(std::string("--onoff ") + option);
        EXPECT_EQ(result.output, "Invalid argument\n");
        EXPECT_EQ(result.calls, callsOn("Config", {}));
    }
}

TEST(OnOff, LetsAForeignOptionThroughBesideItsOwn)
{
    Unit unit;
    for (const Setting& each : settings)
    {
        EXPECT_EQ(unit.run("--onoff --frequency " + each.option).output, each.readLine + "\n");
        EXPECT_EQ(unit.run("--onoff " + each.option + " --frequency -h").output, each.readLine + "\n");
    }
}

TEST(OnOff, RefusesAnUnknownOptionAfterItsDiagnostic)
{
    Unit unit;
    const Result alone = unit.runComplaining("--onoff --shotpress=SUSPEND");
    EXPECT_EQ(alone.output, "Invalid argument\n");
    EXPECT_EQ(alone.calls, callsOn("Config", {}));
    EXPECT_THAT(alone.errors, testing::HasSubstr("unrecognized option '--shotpress=SUSPEND'"));
    EXPECT_EQ(unit.runComplaining("--onoff --bogus --shortpress").output, "ShortPressAction: SUSPEND\n");
}

TEST(OnOff, ShowsItsHelpAndReleasesNothing)
{
    Unit unit;
    const Result result = unit.run("--onoff --help");
    EXPECT_EQ(result.output, help);
    EXPECT_EQ(result.calls, (Calls{"GetConfig() = handle"}));
}

TEST(OnOff, ShowsItsHelpInsteadOfAnyWork)
{
    Unit unit;
    for (const char* options :
         {"--shortpress=SHUTDOWN --help", "--help --longpress_time=1", "--frequency --help"})
    {
        SCOPED_TRACE(options);
        const Result result = unit.run(std::string("--onoff ") + options);
        EXPECT_EQ(result.output, help);
        EXPECT_EQ(result.calls, (Calls{"GetConfig() = handle"}));
    }
}

TEST(OnOff, ShowsZeroesWhereNothingWasWritten)
{
    Unit unit;
    for (const Setting& each : settings)
        unit.ignores("Config_get" + each.operation);
    EXPECT_EQ(unit.run("--onoff").output,
              lines({"ShortPressAction: NOACTION", "LongPressAction: NOACTION", "LongPressTime: 0ms",
                     "OnOffSignalAction: NOACTION", "OnOffSignalTime: 0s", "PowerOnStartup: Disabled",
                     "UnitStartup: UNDEFINED CONFIG", "SuspendMaxTime: 0min"}));
}

TEST(OnOff, UsesAHandleThatIsNull)
{
    Unit unit;
    unit.givesNull("GetConfig");
    const Result result = unit.run("--onoff --shortpress --suspend_max_time=1");
    EXPECT_EQ(result.output, lines({"getShortPressAction: The module handle is not valid",
                                    "setSuspendMaxTime: The module handle is not valid"}));
    EXPECT_EQ(result.calls.back(), "Config_release() = 3");
}

TEST(OnOff, SaysNothingOfAReleaseThatFails)
{
    Unit unit;
    unit.fails("Config_release", 77);
    EXPECT_EQ(unit.run("--onoff --suspend_max_time").output, "SuspendMaxTime: 120min\n");
}

TEST(OnOff, PassesOverBlanksBeforeANumber)
{
    Unit unit;
    EXPECT_EQ(unit.run(std::vector<std::string>{"--onoff", "--longpress_time= \t12"}).output,
              "Long press time set to: 12ms\n");
}

} // namespace
