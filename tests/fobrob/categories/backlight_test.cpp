#include "support/unit.h"

#include <gmock/gmock.h>

using testing::Contains;

namespace
{

const std::string intensityError = "Invalid argument: The intensity is not within allowed range (1 - 255).\n";

Calls backlightCalls(const Calls& calls = {})
{
    return callsOn("Backlight", calls);
}

TEST(Backlight, PrintsIntensitiesAsUnsigned8BitNumbers)
{
    for (const int intensity : {0, 1, 128, 255})
    {
        Unit unit;
        unit.set("/backlight/intensity", intensity);
        EXPECT_EQ(unit.run("--backlight --intensity").output,
                  "Intensity: " + std::to_string(intensity) + "\n");
    }
}

TEST(Backlight, PrintsEveryNonzeroStatusAsEnabled)
{
    Unit unit(R"({"backlight": {"automatic": 128, "ledDimming": 256}})");
    EXPECT_EQ(unit.run("--backlight --automatic --led_dimming").output,
              lines({"Automatic BL: Enabled", "LedDimming: Enabled"}));
    unit.set("/backlight/ledDimming", -1);
    EXPECT_EQ(unit.run("--backlight --led_dimming").output, "LedDimming: Enabled\n");
}

TEST(Backlight, AcceptsIntensitiesInTheirRange)
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

TEST(Backlight, SendsTheLow8BitsOfAnIntensityAndPrintsTheWholeNumber)
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

TEST(Backlight, ClampsAnIntensityToTheRangeOfLong)
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

TEST(Backlight, RejectsIntensitiesBelow1)
{
    Unit unit;
    for (const std::string value : {"0", "-1", "-255", "-65535", "abc", "x9", "0x10", "0.9", "-"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--backlight --intensity=" + value);
        EXPECT_EQ(result.output, intensityError);
        EXPECT_EQ(result.calls, backlightCalls());
    }
}

TEST(Backlight, StartsAutomaticControlWithItsFilter)
{
    Unit unit;
    unit.run("--backlight --automatic=Enabled");
    EXPECT_EQ(unit["/backlight/automatic"], true);
    EXPECT_EQ(unit["/backlight/filter"], (nlohmann::json{4, 2, 40, 2}));
    unit.shutDown();
    unit.run("--backlight");
    EXPECT_EQ(unit["/backlight/filter"], (nlohmann::json{4, 2, 40, 2}));
}

TEST(Backlight, StopsAutomaticControlAndKeepsTheFilter)
{
    Unit unit(R"({"backlight": {"automatic": true}})");
    unit.run("--backlight --automatic=Disabled");
    EXPECT_EQ(unit["/backlight/automatic"], false);
    EXPECT_EQ(unit["/backlight/filter"], nullptr);
}

TEST(Backlight, RejectsOtherAutomaticWordsWithTheMessageForIntensity)
{
    Unit unit;
    for (const std::string value : {"Enable", "Disable", "on", "1", "0", "Enabledx"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--backlight --automatic=" + value);
        EXPECT_EQ(result.output, intensityError);
        EXPECT_EQ(result.calls, backlightCalls());
    }
}

TEST(Backlight, RejectsOtherLedDimmingWords)
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

TEST(Backlight, ContinuesAfterARejectedValue)
{
    Unit unit;
    const Result result = unit.run("--backlight --intensity=0 --automatic=abc --led_dimming=Enabled");
    EXPECT_EQ(result.output, intensityError + intensityError + "LedDimming enabled.\n");
    EXPECT_EQ(result.calls, backlightCalls({"Backlight_setLedDimming(1) = 0"}));
}

TEST(Backlight, StartsAutomaticControlEvenIfSettingItsFilterFails)
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

TEST(Backlight, ReportsThatAutomaticControlCannotBeStarted)
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

TEST(Backlight, ReportsAnErrorForEveryOperationWithoutADisplay)
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

} // namespace
