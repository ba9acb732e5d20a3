#include "support/unit.h"

namespace
{

const char* const help = "Category - Heater\n"
                         "Enable internal heater and delay start-up when internal temperature is below the \n"
                         "specified temperature.\n"
                         "\n"
                         "Usage\n"
                         "The category should not be passed an argument. It is optional to pass the\n"
                         "--temperature option an argument. If no argument is passed to the option, the \n"
                         "current heater temperature will be printed. In order to set the heater \n"
                         "temperature simply pass the desired temperature as an argument to the \n"
                         "--temperature option (-25 to 5 C).\n"
                         "\n"
                         "CATEGORY\tARG\tOPTION\t\tARG\t\tNOTE\n"
                         "--heater\t\t--temperature\t\t\tGet heater temperature.\n"
                         "--heater\t\t--temperature=\t[-25 to 5]\tSet heater temperature.\n";

const std::string optionRequired = "Invalid argument: Option is required (--temperature)\n";
const std::string outOfRange =
    "Invalid argument: The temperature is not within allowed range (-25 C - 5 C)\n";

Calls heaterCalls(const Calls& calls = {})
{
    return callsOn("Config", calls);
}

TEST(Heater, ReadsTheLimit)
{
    Unit unit(R"({"config": {"heatingLimit": -20}})");
    const Result result = unit.run("--heater --temperature");
    EXPECT_EQ(result.output, "Heating limit: -20 C.\n");
    EXPECT_EQ(result.calls, heaterCalls({"Config_getHeatingTempLimit([-20]) = 0"}));
}

TEST(Heater, ReadsTheLimitForAnEmptyValueOrTheWordForNone)
{
    Unit unit;
    for (const std::string value : {"=", "=noArgument", "=noargument", "=NOARGUMENT", " 3"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--heater --temperature" + value);
        EXPECT_EQ(result.output, "Heating limit: -10 C.\n");
        EXPECT_EQ(result.calls, heaterCalls({"Config_getHeatingTempLimit([-10]) = 0"}));
    }
}

TEST(Heater, ReadsEveryLimitThatTheUnitHas)
{
    for (const int limit : {-32768, -26, -1, 0, 5, 6, 32767})
    {
        Unit unit;
        unit.set("/config/heatingLimit", limit);
        EXPECT_EQ(unit.run("--heater --temperature").output,
                  "Heating limit: " + std::to_string(limit) + " C.\n");
    }
}

TEST(Heater, SetsTheLimit)
{
    const struct
    {
        const char* value;
        int limit;
    } cases[] = {{"-25", -25}, {"-24", -24}, {"-1", -1},   {"0", 0},    {"1", 1},  {"4", 4},
                 {"5", 5},     {"3.9", 3},   {"-3.9", -3}, {"2C", 2},   {"+2", 2}, {"abc", 0},
                 {"-", 0},     {"005", 5},   {" 4", 4},    {"\t-3", -3}};
    for (const auto& [value, limit] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        const std::string number = std::to_string(limit);
        const Result result = unit.run({"--heater", std::string("--temperature=") + value});
        EXPECT_EQ(result.output, "Heater temperature set to: " + number + " C.\n");
        EXPECT_EQ(result.calls, heaterCalls({"Config_setHeatingTempLimit(" + number + ") = 0"}));
        EXPECT_EQ(unit["/config/heatingLimit"], limit);
    }
}

TEST(Heater, JudgesAndSendsTheLowSixteenBits)
{
    const struct
    {
        const char* value;
        int limit;
    } cases[] = {{"65511", -25},
                 {"65535", -1},
                 {"65536", 0},
                 {"65541", 5},
                 {"131047", -25},
                 {"-65536", 0},
                 {"-65531", 5},
                 {"-65561", -25},
                 {"2147483647", -1},
                 {"-2147483648", 0},
                 {"99999999999999999999", -1},
                 {"-99999999999999999999", 0}};
    for (const auto& [value, limit] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        const std::string number = std::to_string(limit);
        const Result result = unit.run(std::string("--heater --temperature=") + value);
        EXPECT_EQ(result.output, "Heater temperature set to: " + number + " C.\n");
        EXPECT_EQ(result.calls, heaterCalls({"Config_setHeatingTempLimit(" + number + ") = 0"}));
    }
}

TEST(Heater, RefusesALimitOutsideItsRange)
{
    Unit unit;
    for (const std::string value : {"-26", "6", "7", "-27", "100", "-100", "32767", "-32768", "32768",
                                    "65510", "65542", "-65530", "-65562"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--heater --temperature=" + value);
        EXPECT_EQ(result.output, outOfRange);
        EXPECT_EQ(result.calls, heaterCalls());
    }
}

TEST(Heater, TakesTheLastOfRepeatedTemperatures)
{
    Unit unit;
    EXPECT_EQ(unit.run("--heater --temperature=1 --temperature=2").output,
              "Heater temperature set to: 2 C.\n");
    EXPECT_EQ(unit.run("--heater --temperature=3 --temperature").output, "Heating limit: 2 C.\n");
    EXPECT_EQ(unit.run("--heater --temperature --temperature=4").output, "Heater temperature set to: 4 C.\n");
    EXPECT_EQ(unit.run("--heater --temperature=9 --temperature=5").output,
              "Heater temperature set to: 5 C.\n");
}

TEST(Heater, RequiresItsOption)
{
    Unit unit;
    const Result result = unit.run("--heater");
    EXPECT_EQ(result.output, optionRequired);
    EXPECT_EQ(result.calls, heaterCalls());
}

TEST(Heater, RequiresItsOptionOnceMoreForEveryForeignOne)
{
    Unit unit;
    for (const std::string option : {"--frequency", "--heater", "--power=Enable", "-h", "-v"})
    {
        SCOPED_TRACE(option);
        const Result result = unit.run("--heater " + option);
        EXPECT_EQ(result.output, optionRequired + optionRequired);
        EXPECT_EQ(result.calls, heaterCalls());
    }
    EXPECT_EQ(unit.run("--heater --frequency -h").output, optionRequired + optionRequired + optionRequired);
}

TEST(Heater, RequiresItsOptionForAForeignOneBesideItToo)
{
    Unit unit;
    EXPECT_EQ(unit.run("--heater --frequency --temperature").output,
              optionRequired + "Heating limit: -10 C.\n");
    EXPECT_EQ(unit.run("--heater --temperature=3 --frequency").output,
              optionRequired + "Heater temperature set to: 3 C.\n");
    EXPECT_EQ(unit.run("--heater -v --temperature=6").output, optionRequired + outOfRange);
}

TEST(Heater, RequiresItsOptionAfterTheDiagnosticOfAnUnknownOne)
{
    Unit unit;
    const Result result = unit.runComplaining("--heater --bogus");
    EXPECT_EQ(result.output, optionRequired + optionRequired);
    EXPECT_NE(result.errors.find("unrecognized option '--bogus'"), std::string::npos);
    EXPECT_EQ(unit.runComplaining("--heater --bogus --temperature").output,
              optionRequired + "Heating limit: -10 C.\n");
}

TEST(Heater, ShowsItsHelpAndReleasesNothing)
{
    Unit unit;
    const Result result = unit.run("--heater --help");
    EXPECT_EQ(result.output, help);
    EXPECT_EQ(result.calls, (Calls{"GetConfig() = handle"}));
}

TEST(Heater, ShowsItsHelpAmongOtherOptionsAndChangesNothing)
{
    Unit unit;
    for (const std::string options :
         {"--temperature=3 --help", "--help --temperature=3", "--help --frequency"})
    {
        SCOPED_TRACE(options);
        const Result result = unit.run("--heater " + options);
        EXPECT_EQ(result.output, help);
        EXPECT_EQ(result.calls, (Calls{"GetConfig() = handle"}));
    }
    EXPECT_EQ(unit.run("--heater --frequency --help").output, optionRequired + help);
}

TEST(Heater, ReportsAFailedReadingAndReleases)
{
    Unit unit;
    unit.fails("Config_getHeatingTempLimit", 77);
    const Result result = unit.run("--heater --temperature");
    EXPECT_EQ(result.output, "getHeatingTempLimit: Error 77\n");
    EXPECT_EQ(result.calls,
              heaterCalls({"Config_getHeatingTempLimit([]) = 77", "GetErrorStringA(77) = \"Error 77\""}));
}

TEST(Heater, ReportsAFailedChangeAndReleases)
{
    Unit unit;
    unit.fails("Config_setHeatingTempLimit", 77);
    const Result result = unit.run("--heater --temperature=-7");
    EXPECT_EQ(result.output, "setHeatingTempLimit: Error 77\n");
    EXPECT_EQ(result.calls,
              heaterCalls({"Config_setHeatingTempLimit(-7) = 77", "GetErrorStringA(77) = \"Error 77\""}));
    EXPECT_EQ(unit["/config/heatingLimit"], nullptr);
}

TEST(Heater, FallsSilentWhereTheErrorHasNoText)
{
    Unit unit(R"({"errorTexts": {"77": null}})");
    unit.fails("Config_getHeatingTempLimit", 77);
    unit.fails("Config_setHeatingTempLimit", 77);
    for (const auto& [value, output] :
         {std::pair("", "getHeatingTempLimit: "), std::pair("=3", "setHeatingTempLimit: ")})
    {
        const Result result = unit.run(std::string("--heater --temperature") + value);
        EXPECT_EQ(result.output, output);
        EXPECT_EQ(result.calls.back(), "Config_release() = 0");
    }
}

TEST(Heater, PrintsZeroWhereNothingWasWritten)
{
    Unit unit;
    unit.ignores("Config_getHeatingTempLimit");
    EXPECT_EQ(unit.run("--heater --temperature").output, "Heating limit: 0 C.\n");
}

TEST(Heater, UsesAHandleThatIsNull)
{
    Unit unit;
    unit.givesNull("GetConfig");
    const Result result = unit.run("--heater --temperature=3");
    EXPECT_EQ(result.output, "setHeatingTempLimit: The module handle is not valid\n");
    EXPECT_EQ(result.calls.back(), "Config_release() = 3");
}

TEST(Heater, SaysNothingOfAFailedRelease)
{
    Unit unit;
    unit.fails("Config_release", 77);
    const Result result = unit.run("--heater --temperature");
    EXPECT_EQ(result.output, "Heating limit: -10 C.\n");
    EXPECT_EQ(result.calls.back(), "Config_release() = 77");
}

TEST(Heater, TheLimitOutlastsAReboot)
{
    Unit unit;
    unit.run("--heater --temperature=-3");
    unit.shutDown();
    EXPECT_EQ(unit.run("--heater --temperature").output, "Heating limit: -3 C.\n");
}

} // namespace
