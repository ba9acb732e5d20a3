#include "support/unit.h"

namespace
{

const std::string outOfRange =
    "Invalid argument: The temperature is not within allowed range (-25 C - 5 C)\n";

Calls heaterCalls(const Calls& calls = {})
{
    return callsOn("Config", calls);
}

TEST(Heater, PrintsLimitsAsSigned16BitNumbers)
{
    for (const int limit : {-32768, -26, -1, 0, 5, 6, 32767})
    {
        Unit unit;
        unit.set("/config/heatingLimit", limit);
        EXPECT_EQ(unit.run("--heater --temperature").output,
                  "Heating limit: " + std::to_string(limit) + " C.\n");
    }
}

TEST(Heater, AcceptsLimitsInTheirRange)
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

TEST(Heater, TruncatesANumberTo16BitsBeforeTheRangeCheck)
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

TEST(Heater, RejectsLimitsOutsideTheirRange)
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

TEST(Heater, RequiresItsOption)
{
    Unit unit;
    const Result result = unit.run("--heater");
    EXPECT_EQ(result.output, "Invalid argument: Option is required (--temperature)\n");
    EXPECT_EQ(result.calls, heaterCalls());
}

} // namespace
