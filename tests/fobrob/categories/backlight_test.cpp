#include "support/unit.h"

#include <gmock/gmock.h>

using testing::Contains;

namespace
{

const char* const help =
    "Category - Backlight\n"
    "This category is used to perform backlight settings, such as: setting backlight intensity \n"
    "automatic backlight.\n"
    "\n"
    "Usage\n"
    "The category should not be passed an argument. There are two options available:\n"
    "--intensity, --automatic.\n"
    "See the table below for available arguments.\n"
    "\n"
    "\n"
    " CATEGORY\tARG\tOPTION\t\tARG\tOPTION\t\tARG\n"
    "--backlight\t\t--intensity=\t[1-255]\n"
    "Set backligh intensity.\n"
    "--backlight\t\t--automatic=\tEnabled/Disabled\n"
    "Set automatic backlight status.\n"
    "--backlight\t\t--led_dimming=\tEnabled/Disabled\n"
    "Set led dimming status.\n";

const std::string intensityRefused =
    "Invalid argument: The intensity is not within allowed range (1 - 255).\n";

Calls backlightCalls(const Calls& calls = {})
{
    return callsOn("Backlight", calls);
}

TEST(Backlight, ReadsAllSettingsByDefault)
{
    Unit unit(R"({"backlight": {"intensity": 90, "automatic": true, "ledDimming": false}})");
    const Result result = unit.run("--backlight");
    EXPECT_EQ(result.output, lines({"Intensity: 90", "Automatic BL: Enabled", "LedDimming: Disabled"}));
    EXPECT_EQ(result.calls,
              backlightCalls({"Backlight_getIntensity([90]) = 0", "Backlight_getAutomaticBLStatus([1]) = 0",
                              "Backlight_getLedDimming([0]) = 0"}));
}

TEST(Backlight, ReadsOneSettingOnRequest)
{
    const struct
    {
        const char* option;
        const char* output;
        const char* call;
    } cases[] = {
        {"--intensity", "Intensity: 90\n", "Backlight_getIntensity([90]) = 0"},
        {"--automatic", "Automatic BL: Disabled\n", "Backlight_getAutomaticBLStatus([0]) = 0"},
        {"--led_dimming", "LedDimming: Enabled\n", "Backlight_getLedDimming([1]) = 0"},
    };
    Unit unit(R"({"backlight": {"intensity": 90, "automatic": false, "ledDimming": true}})");
    for (const auto& [option, output, call] : cases)
        for (const std::string value : {"", "=", "=noArgument", "=noargument", "=NOARGUMENT"})
        {
            SCOPED_TRACE(option + value);
            const Result result = unit.run("--backlight " + (option + value));
            EXPECT_EQ(result.output, output);
            EXPECT_EQ(result.calls, backlightCalls({call}));
        }
}

TEST(Backlight, ReadsInAnOrderOfItsOwn)
{
    Unit unit;
    EXPECT_EQ(unit.run("--backlight --led_dimming --intensity").output,
              lines({"Intensity: 200", "LedDimming: Disabled"}));
    EXPECT_EQ(unit.run("--backlight --led_dimming --automatic").output,
              lines({"Automatic BL: Disabled", "LedDimming: Disabled"}));
    EXPECT_EQ(unit.run("--backlight --automatic --intensity").output,
              lines({"Intensity: 200", "Automatic BL: Disabled"}));
    EXPECT_EQ(unit.run("--backlight --led_dimming --automatic --intensity").output,
              lines({"Intensity: 200", "Automatic BL: Disabled", "LedDimming: Disabled"}));
}

TEST(Backlight, ReadsEveryIntensityThatTheUnitHas)
{
    for (const int intensity : {0, 1, 128, 255})
    {
        Unit unit;
        unit.set("/backlight/intensity", intensity);
        EXPECT_EQ(unit.run("--backlight --intensity").output,
                  "Intensity: " + std::to_string(intensity) + "\n");
    }
}

TEST(Backlight, CallsEveryStatusButZeroEnabled)
{
    Unit unit(R"({"backlight": {"automatic": 128, "ledDimming": 256}})");
    EXPECT_EQ(unit.run("--backlight --automatic --led_dimming").output,
              lines({"Automatic BL: Enabled", "LedDimming: Enabled"}));
    unit.set("/backlight/ledDimming", -1);
    EXPECT_EQ(unit.run("--backlight --led_dimming").output, "LedDimming: Enabled\n");
}

TEST(Backlight, SetsTheIntensity)
{
    const struct
    {
        const char* value;
        const char* printed;
        int sent;
    } cases[] = {
        {"1", "1", 1},     {"2", "2", 2},  {"254", "254", 254}, {"255", "255", 255}, {"12abc", "12", 12},
        {"010", "10", 10}, {"+9", "9", 9}, {" 33", "33", 33},   {"2.9", "2", 2},
    };
    for (const auto& [value, printed, sent] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        const Result result = unit.run({"--backlight", std::string("--intensity=") + value});
        EXPECT_EQ(result.output, std::string("Backlight intensity set to: ") + printed + "\n");
        EXPECT_EQ(result.calls, backlightCalls({"Backlight_setIntensity(" + std::to_string(sent) + ") = 0"}));
        EXPECT_EQ(unit["/backlight/intensity"], sent);
    }
}

TEST(Backlight, SendsTheLowEightBitsOfAnIntensityAndPrintsAllOfIt)
{
    const struct
    {
        int value;
        int sent;
    } cases[] = {{256, 0}, {257, 1}, {300, 44}, {511, 255}, {65536, 0}, {65791, 255}, {2147483647, 255}};
    for (const auto& [value, sent] : cases)
    {
        Unit unit;
        const std::string number = std::to_string(value);
        const Result result = unit.run("--backlight --intensity=" + number);
        EXPECT_EQ(result.output, "Backlight intensity set to: " + number + "\n");
        EXPECT_EQ(result.calls, backlightCalls({"Backlight_setIntensity(" + std::to_string(sent) + ") = 0"}));
        EXPECT_EQ(unit["/backlight/intensity"], sent);
    }
}

TEST(Backlight, TakesAnIntensityBeyondThirtyTwoBitsAsFarAsALongHoldsIt)
{
    const struct
    {
        std::string value;
        const char* printed;
        int sent;
        const char* printedOn32Bits;
        int sentOn32Bits;
    } cases[] = {{"4294967296", "4294967296", 0, "2147483647", 255},
                 {"4294967297", "4294967297", 1, "2147483647", 255},
                 {"99999999999999999999", "9223372036854775807", 255, "2147483647", 255}};
    const bool wide = isProgram64Bit();
    for (const auto& [value, printed, sent, printedOn32Bits, sentOn32Bits] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        EXPECT_EQ(unit.run("--backlight --intensity=" + value).output,
                  std::string("Backlight intensity set to: ") + (wide ? printed : printedOn32Bits) + "\n");
        EXPECT_EQ(unit["/backlight/intensity"], wide ? sent : sentOn32Bits);
    }
}

TEST(Backlight, RefusesAnIntensityBelowOne)
{
    Unit unit;
    for (const std::string value : {"0", "-1", "-255", "-65535", "abc", "x9", "0x10", "0.9", "-"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--backlight --intensity=" + value);
        EXPECT_EQ(result.output, intensityRefused);
        EXPECT_EQ(result.calls, backlightCalls());
    }
}

TEST(Backlight, StartsTheAutomaticWithItsFilter)
{
    for (const std::string value : {"Enabled", "enabled", "ENABLED", "eNaBlEd"})
    {
        Unit unit;
        const Result result = unit.run("--backlight --automatic=" + value);
        EXPECT_EQ(result.output, "Automatic BL started.\n");
        EXPECT_EQ(result.calls, backlightCalls({"Backlight_setAutomaticBLFilter(4, 2, 40, 2) = 0",
                                                "Backlight_startAutomaticBL() = 0"}));
        EXPECT_EQ(unit["/backlight/automatic"], true);
        EXPECT_EQ(unit["/backlight/filter"], (nlohmann::json{4, 2, 40, 2}));
    }
}

TEST(Backlight, StopsTheAutomaticAndLeavesTheFilter)
{
    for (const std::string value : {"Disabled", "disabled", "DISABLED", "dIsAbLeD"})
    {
        Unit unit(R"({"backlight": {"automatic": true}})");
        const Result result = unit.run("--backlight --automatic=" + value);
        EXPECT_EQ(result.output, "Automatic BL stopped.\n");
        EXPECT_EQ(result.calls, backlightCalls({"Backlight_stopAutomaticBL() = 0"}));
        EXPECT_EQ(unit["/backlight/automatic"], false);
        EXPECT_EQ(unit["/backlight/filter"], nullptr);
    }
}

TEST(Backlight, RefusesAnotherAutomaticWithTheMessageOfTheIntensity)
{
    Unit unit;
    for (const std::string value : {"Enable", "Disable", "on", "1", "0", "Enabledx"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--backlight --automatic=" + value);
        EXPECT_EQ(result.output, intensityRefused);
        EXPECT_EQ(result.calls, backlightCalls());
    }
}

TEST(Backlight, SetsTheLedDimmingAndSaysEnabledOfBoth)
{
    const struct
    {
        std::string value;
        bool enabled;
    } cases[] = {{"Enabled", true},   {"enabled", true},   {"ENABLED", true},
                 {"Disabled", false}, {"disabled", false}, {"DISABLED", false}};
    for (const auto& [value, enabled] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        unit.set("/backlight/ledDimming", !enabled);
        const Result result = unit.run("--backlight --led_dimming=" + value);
        EXPECT_EQ(result.output, "LedDimming enabled.\n");
        EXPECT_EQ(result.calls, backlightCalls({std::string("Backlight_setLedDimming(") +
                                                (enabled ? "1" : "0") + ") = 0"}));
        EXPECT_EQ(unit["/backlight/ledDimming"], enabled);
    }
}

TEST(Backlight, RefusesAnotherLedDimming)
{
    Unit unit;
    for (const std::string value : {"Enable", "Disable", "off", "1", "0", "abc"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--backlight --led_dimming=" + value);
        EXPECT_EQ(result.output, "setLedDimming: Invalid argument\n");
        EXPECT_EQ(result.calls, backlightCalls());
    }
}

TEST(Backlight, SetsInAnOrderOfItsOwn)
{
    Unit unit;
    const Result result = unit.run("--backlight --led_dimming=Enabled --automatic=Enabled --intensity=7");
    EXPECT_EQ(result.output,
              lines({"Backlight intensity set to: 7", "Automatic BL started.", "LedDimming enabled."}));
    EXPECT_EQ(
        result.calls,
        backlightCalls({"Backlight_setIntensity(7) = 0", "Backlight_setAutomaticBLFilter(4, 2, 40, 2) = 0",
                        "Backlight_startAutomaticBL() = 0", "Backlight_setLedDimming(1) = 0"}));
}

TEST(Backlight, ReadsAndSetsInOneCall)
{
    Unit unit;
    EXPECT_EQ(unit.run("--backlight --led_dimming --automatic=Disabled --intensity").output,
              lines({"Intensity: 200", "Automatic BL stopped.", "LedDimming: Disabled"}));
    EXPECT_EQ(unit.run("--backlight --led_dimming=Enabled --intensity=20").output,
              lines({"Backlight intensity set to: 20", "LedDimming enabled."}));
    EXPECT_EQ(unit.run("--backlight --led_dimming --automatic --intensity").output,
              lines({"Intensity: 20", "Automatic BL: Disabled", "LedDimming: Enabled"}));
}

TEST(Backlight, TakesTheLastOfRepeatedOptions)
{
    Unit unit;
    EXPECT_EQ(unit.run("--backlight --intensity=10 --intensity=11").output,
              "Backlight intensity set to: 11\n");
    EXPECT_EQ(unit.run("--backlight --intensity=12 --intensity").output, "Intensity: 11\n");
    EXPECT_EQ(unit.run("--backlight --automatic=Enabled --automatic=").output, "Automatic BL: Disabled\n");
    EXPECT_EQ(unit.run("--backlight --led_dimming=Enabled --led_dimming").output, "LedDimming: Disabled\n");
    EXPECT_EQ(unit.run("--backlight --led_dimming --led_dimming=Enabled").output, "LedDimming enabled.\n");
}

TEST(Backlight, TakesNoWordBehindABlankForAValue)
{
    Unit unit;
    const Result result = unit.run("--backlight --intensity 10 --automatic Enabled");
    EXPECT_EQ(result.output, lines({"Intensity: 200", "Automatic BL: Disabled"}));
}

TEST(Backlight, GoesOnBehindARefusedValue)
{
    Unit unit;
    const Result result = unit.run("--backlight --intensity=0 --automatic=abc --led_dimming=Enabled");
    EXPECT_EQ(result.output, intensityRefused + intensityRefused + "LedDimming enabled.\n");
    EXPECT_EQ(result.calls, backlightCalls({"Backlight_setLedDimming(1) = 0"}));
}

TEST(Backlight, RefusesAForeignOptionWithoutReading)
{
    Unit unit;
    for (const std::string option : {"--frequency", "--backlight", "--led", "-h", "-v"})
    {
        SCOPED_TRACE(option);
        const Result result = unit.run("--backlight " + option);
        EXPECT_EQ(result.output, "Invalid argument\n");
        EXPECT_EQ(result.calls, backlightCalls());
    }
}

TEST(Backlight, SaysOnceThatForeignOptionsAreInvalid)
{
    Unit unit;
    EXPECT_EQ(unit.run("--backlight --frequency --volume -v").output, "Invalid argument\n");
}

TEST(Backlight, LetsAForeignOptionThroughBesideItsOwn)
{
    Unit unit;
    EXPECT_EQ(unit.run("--backlight --frequency --automatic").output, "Automatic BL: Disabled\n");
    EXPECT_EQ(unit.run("--backlight --intensity --frequency=5").output, "Intensity: 200\n");
    EXPECT_EQ(unit.run("--backlight -h --led_dimming -v").output, "LedDimming: Disabled\n");
}

TEST(Backlight, RefusesAnUnknownOptionAfterItsDiagnostic)
{
    Unit unit;
    const Result result = unit.runComplaining("--backlight --bogus");
    EXPECT_EQ(result.output, "Invalid argument\n");
    EXPECT_NE(result.errors.find("unrecognized option '--bogus'"), std::string::npos);
    EXPECT_EQ(result.calls, backlightCalls());
}

TEST(Backlight, TakesHelpWithAValueForAnUnknownOption)
{
    Unit unit;
    EXPECT_EQ(unit.runComplaining("--backlight --help=now").output, "Invalid argument\n");
    EXPECT_EQ(unit.runComplaining("--backlight --help=now --intensity").output, "Intensity: 200\n");
}

TEST(Backlight, LetsAnUnknownOptionThroughBesideItsOwn)
{
    Unit unit;
    EXPECT_EQ(unit.runComplaining("--backlight --bogus --intensity=9").output,
              "Backlight intensity set to: 9\n");
    EXPECT_EQ(unit.runComplaining("--backlight --led_dimming --bogus").output, "LedDimming: Disabled\n");
}

TEST(Backlight, ShowsItsHelpAndReleasesNothing)
{
    Unit unit;
    const Result result = unit.run("--backlight --help");
    EXPECT_EQ(result.output, help);
    EXPECT_EQ(result.calls, (Calls{"GetBacklight() = handle"}));
}

TEST(Backlight, ShowsItsHelpAmongOtherOptionsAndChangesNothing)
{
    Unit unit;
    for (const std::string options : {"--intensity=9 --help", "--help --intensity=9", "--frequency --help",
                                      "--automatic=abc --led_dimming=Enabled --help"})
    {
        SCOPED_TRACE(options);
        const Result result = unit.run("--backlight " + options);
        EXPECT_EQ(result.output, help);
        EXPECT_EQ(result.calls, (Calls{"GetBacklight() = handle"}));
    }
}

TEST(Backlight, ReportsAFailedOperationAndReleases)
{
    const struct
    {
        std::string option;
        std::string operation;
        std::string arguments;
        std::string label;
    } cases[] = {
        {"--intensity", "Backlight_getIntensity", "[]", "getIntensity"},
        {"--intensity=9", "Backlight_setIntensity", "9", "setIntensity"},
        {"--automatic", "Backlight_getAutomaticBLStatus", "[]", "getAutomaticBLStatus"},
        {"--automatic=Disabled", "Backlight_stopAutomaticBL", "", "stoptAutomaticBL"},
        {"--led_dimming", "Backlight_getLedDimming", "[]", "getLedDimming"},
        {"--led_dimming=Enabled", "Backlight_setLedDimming", "1", "setLedDimming"},
        {"--led_dimming=Disabled", "Backlight_setLedDimming", "0", "setLedDimming"},
    };
    for (const auto& [option, operation, arguments, label] : cases)
    {
        SCOPED_TRACE(option);
        Unit unit;
        unit.fails(operation, 77);
        const Result result = unit.run("--backlight " + option);
        EXPECT_EQ(result.output, label + ": Error 77\n");
        EXPECT_EQ(result.calls, backlightCalls({operation + "(" + arguments + ") = 77",
                                                "GetErrorStringA(77) = \"Error 77\""}));
    }
}

TEST(Backlight, StartsTheAutomaticThoughItsFilterFails)
{
    Unit unit;
    unit.fails("Backlight_setAutomaticBLFilter", 77);
    const Result result = unit.run("--backlight --automatic=Enabled");
    EXPECT_EQ(result.output, lines({"setAutomaticBLFilter: Error 77", "Automatic BL started."}));
    EXPECT_EQ(result.calls,
              backlightCalls({"Backlight_setAutomaticBLFilter(4, 2, 40, 2) = 77",
                              "GetErrorStringA(77) = \"Error 77\"", "Backlight_startAutomaticBL() = 0"}));
    EXPECT_EQ(unit["/backlight/automatic"], true);
    EXPECT_EQ(unit["/backlight/filter"], nullptr);
}

TEST(Backlight, ReportsAFailedStartOfTheAutomatic)
{
    Unit unit;
    unit.fails("Backlight_startAutomaticBL", 77);
    const Result result = unit.run("--backlight --automatic=Enabled");
    EXPECT_EQ(result.output, "startAutomaticBL: Error 77\n");
    EXPECT_EQ(unit["/backlight/filter"], (nlohmann::json{4, 2, 40, 2}));
    unit.fails("Backlight_setAutomaticBLFilter", 78);
    EXPECT_EQ(unit.run("--backlight --automatic=Enabled").output,
              lines({"setAutomaticBLFilter: Error 78", "startAutomaticBL: Error 77"}));
}

TEST(Backlight, GoesOnBehindEveryFailedReading)
{
    Unit unit;
    unit.fails("Backlight_getIntensity", 77);
    unit.fails("Backlight_getAutomaticBLStatus", 78);
    unit.fails("Backlight_getLedDimming", 79);
    EXPECT_EQ(unit.run("--backlight").output,
              lines({"getIntensity: Error 77", "getAutomaticBLStatus: Error 78", "getLedDimming: Error 79"}));
}

TEST(Backlight, GoesOnBehindEveryFailedChange)
{
    Unit unit;
    unit.fails("Backlight_setIntensity", 77);
    unit.fails("Backlight_stopAutomaticBL", 78);
    const Result result = unit.run("--backlight --intensity=9 --automatic=Disabled --led_dimming=Enabled");
    EXPECT_EQ(result.output,
              lines({"setIntensity: Error 77", "stoptAutomaticBL: Error 78", "LedDimming enabled."}));
    EXPECT_EQ(unit["/backlight/intensity"], nullptr);
    EXPECT_EQ(unit["/backlight/ledDimming"], true);
}

TEST(Backlight, WorksOnInSilenceWhereTheErrorHasNoText)
{
    Unit unit(R"({"errorTexts": {"77": null}})");
    unit.fails("Backlight_setAutomaticBLFilter", 77);
    const Result result = unit.run("--backlight --intensity=9 --automatic=Enabled --led_dimming=Enabled");
    EXPECT_EQ(result.output, "Backlight intensity set to: 9\nsetAutomaticBLFilter: ");
    EXPECT_EQ(result.calls.back(), "Backlight_release() = 0");
    EXPECT_EQ(unit["/backlight/automatic"], true);
    EXPECT_EQ(unit["/backlight/ledDimming"], true);
}

TEST(Backlight, PrintsZeroAndDisabledWhereNothingWasWritten)
{
    Unit unit(R"({"backlight": {"intensity": 90, "automatic": true, "ledDimming": true}})");
    unit.ignores("Backlight_getIntensity");
    unit.ignores("Backlight_getAutomaticBLStatus");
    unit.ignores("Backlight_getLedDimming");
    EXPECT_EQ(unit.run("--backlight").output,
              lines({"Intensity: 0", "Automatic BL: Disabled", "LedDimming: Disabled"}));
}

TEST(Backlight, UsesAHandleThatIsNull)
{
    Unit unit;
    unit.givesNull("GetBacklight");
    const Result result = unit.run("--backlight --intensity --led_dimming=Enabled");
    EXPECT_EQ(result.output, lines({"getIntensity: The module handle is not valid",
                                    "setLedDimming: The module handle is not valid"}));
    EXPECT_THAT(result.calls, Contains("Backlight_release() = 3"));
}

TEST(Backlight, SaysNothingOfAFailedRelease)
{
    Unit unit;
    unit.fails("Backlight_release", 77);
    const Result result = unit.run("--backlight --intensity");
    EXPECT_EQ(result.output, "Intensity: 200\n");
    EXPECT_EQ(result.calls.back(), "Backlight_release() = 77");
}

TEST(Backlight, HasNoneOfItsSettingsOnAUnitWithoutADisplay)
{
    Unit unit(R"({"about": {"display": false}})");
    EXPECT_EQ(unit.run("--backlight").output, lines({"getIntensity: Not supported by this unit",
                                                     "getAutomaticBLStatus: Not supported by this unit",
                                                     "getLedDimming: Not supported by this unit"}));
    const Result result = unit.run("--backlight --intensity=9 --automatic=Enabled --led_dimming=Enabled");
    EXPECT_EQ(
        result.output,
        lines({"setIntensity: Not supported by this unit", "setAutomaticBLFilter: Not supported by this unit",
               "startAutomaticBL: Not supported by this unit", "setLedDimming: Not supported by this unit"}));
    EXPECT_THAT(result.calls, Contains("Backlight_startAutomaticBL() = 2"));
    EXPECT_EQ(unit.run("--backlight --automatic=Disabled").output,
              "stoptAutomaticBL: Not supported by this unit\n");
    EXPECT_EQ(unit["/backlight"], nullptr);
}

TEST(Backlight, SettingsOutlastAReboot)
{
    Unit unit;
    unit.run("--backlight --intensity=33 --automatic=Enabled --led_dimming=Enabled");
    unit.shutDown();
    EXPECT_EQ(unit.run("--backlight").output,
              lines({"Intensity: 33", "Automatic BL: Enabled", "LedDimming: Enabled"}));
    EXPECT_EQ(unit["/backlight/filter"], (nlohmann::json{4, 2, 40, 2}));
}

} // namespace
