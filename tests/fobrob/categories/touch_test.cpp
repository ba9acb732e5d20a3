#include "support/letter_case.h"
#include "support/unit.h"

#include <gmock/gmock.h>

namespace
{

// A setting with its value on a healthy unit.
struct Setting
{
    std::string number;
    std::string word;
    std::string key;
    std::string value;
};

const Setting settings[] = {
    {"0", "TS_RIGHT_CLICK_TIME", "rightClickTime", "1000"},
    {"1", "TS_LOW_LEVEL", "lowLevel", "48"},
    {"2", "TS_UNTOUCHLEVEL", "untouchLevel", "32"},
    {"3", "TS_DEBOUNCE_TIME", "debounceTime", "20"},
    {"4", "TS_DEBOUNCE_TIMEOUT_TIME", "debounceTimeoutTime", "60"},
    {"5", "TS_DOUBLECLICK_MAX_CLICK_TIME", "doubleClickMaxTime", "250"},
    {"6", "TS_DOUBLE_CLICK_TIME", "doubleClickTime", "500"},
    {"7", "TS_MAX_RIGHTCLICK_DISTANCE", "maxRightClickDistance", "24"},
    {"8", "TS_USE_DEJITTER", "useDejitter", "1"},
    {"9", "TS_CALIBTATION_WIDTH", "calibrationWidth", "40"},
    {"9", "TS_CALIBRATION_WIDTH", "calibrationWidth", "40"},
    {"10", "TS_CALIBRATION_MEASUREMENTS", "calibrationMeasurements", "8"},
};

TEST(Touch, ReadsEverythingIfOnlyAValueIsGiven)
{
    Unit unit;
    const std::string everything = unit.run("--touch").output;
    EXPECT_EQ(unit.run("--touch --value=5").output, everything);
    EXPECT_EQ(unit.run("--touch --value").output, everything);
    EXPECT_EQ(unit.content(), nlohmann::json::object());
}

TEST(Touch, ReadsTheProfile)
{
    Unit unit;
    for (const char* option : {"--mode", "--mode=", "--mode=noArgument", "--mode=NOARGUMENT"})
    {
        SCOPED_TRACE(option);
        const Result result = unit.run(std::string("--touch ") + option);
        EXPECT_EQ(result.output, "TouchScreen Profile: TOUCH\n");
        EXPECT_EQ(result.calls, callsOn("TouchScreen", {"TouchScreen_getMode([3]) = 0"}));
    }
}

TEST(Touch, PrintsEveryProfile)
{
    const struct
    {
        int profile;
        std::string name;
    } cases[] = {{0, "MOUSE_NEXT_BOOT"}, {1, "TOUCH_NEXT_BOOT"}, {2, "MOUSE"},
                 {3, "TOUCH"},           {4, "ERROR"},           {-1, "ERROR"}};
    Unit unit;
    for (const auto& [profile, name] : cases)
    {
        SCOPED_TRACE(profile);
        unit.set("/touch", {{"profile", profile}});
        EXPECT_EQ(unit.run("--touch --mode").output, "TouchScreen Profile: " + name + "\n");
    }
}

TEST(Touch, AcceptsAProfileInAnyCase)
{
    const struct
    {
        std::string word;
        std::string sent;
        std::string name;
        const char* kept;
    } cases[] = {{"MOUSE", "2", "MOUSE", "mouse"},
                 {"TOUCH", "3", "TOUCH", "touch"},
                 {"mouse", "2", "MOUSE", "mouse"},
                 {"tOUCH", "3", "TOUCH", "touch"}};
    Unit unit;
    for (const auto& [word, sent, name, kept] : cases)
    {
        SCOPED_TRACE(word);
        const Result result = unit.run("--touch --mode=" + word);
        EXPECT_EQ(result.output, "TouchScreen profile set to: " + name + "\n");
        EXPECT_EQ(result.calls, callsOn("TouchScreen", {"TouchScreen_setMode(" + sent + ") = 0"}));
        EXPECT_EQ(unit["/touch/profile"], kept);
    }
}

TEST(Touch, SendsMinusOneForAWordThatIsNotAProfile)
{
    Unit unit;
    for (const char* word : {"tablet", "MOUSE_NEXT_BOOT", "TOUCH_NEXT_BOOT", "3"})
    {
        SCOPED_TRACE(word);
        const Result result = unit.run(std::string("--touch --mode=") + word);
        EXPECT_EQ(result.output, "setMode: The value is out of range\n");
        EXPECT_EQ(result.calls,
                  callsOn("TouchScreen", {"TouchScreen_setMode(-1) = 5",
                                          "GetErrorStringA(5) = \"The value is out of range\""}));
    }
}

TEST(Touch, PrintsErrorForAnUnknownProfileThatTheUnitAccepts)
{
    Unit unit;
    unit.ignores("TouchScreen_setMode");
    EXPECT_EQ(unit.run("--touch --mode=tablet").output, "TouchScreen profile set to: ERROR\n");
}

TEST(Touch, KeepsAProfileIfTheOptionIsRepeatedWithoutAValue)
{
    Unit unit;
    EXPECT_EQ(unit.run("--touch --mode=MOUSE --mode").output, "TouchScreen profile set to: MOUSE\n");
    EXPECT_EQ(unit.run("--touch --mode=TOUCH --mode=").output, "TouchScreen profile set to: TOUCH\n");
    EXPECT_EQ(unit.run("--touch --mode=TOUCH --mode=mouse").output, "TouchScreen profile set to: MOUSE\n");
}

TEST(Touch, ReadsEverySettingAndPrintsItsNameAsTyped)
{
    Unit unit;
    for (const Setting& each : settings)
        for (const std::string& word : {each.word, withCaseSwapped(each.word)})
        {
            SCOPED_TRACE(word);
            const Result result = unit.run("--touch --setting=" + word);
            EXPECT_EQ(result.output, word + ": " + each.value + "\n");
            EXPECT_EQ(result.calls, callsOn("TouchScreen", {"TouchScreen_getAdvancedSetting(" + each.number +
                                                            ", [" + each.value + "]) = 0"}));
        }
}

TEST(Touch, ChangesEverySettingAndPrintsItsNameAsTyped)
{
    for (const Setting& each : settings)
        for (const std::string& word : {each.word, withCaseSwapped(each.word)})
        {
            SCOPED_TRACE(word);
            Unit unit;
            const Result result = unit.run("--touch --setting=" + word + " --value=0");
            EXPECT_EQ(result.output, word + " set to: 0\n");
            EXPECT_EQ(result.calls,
                      callsOn("TouchScreen", {"TouchScreen_setAdvancedSetting(" + each.number + ", 0) = 0"}));
            EXPECT_EQ(unit["/touch/" + each.key], 0);
        }
}

TEST(Touch, AcceptsTheCorrectSpellingOfTheWidth)
{
    Unit unit;
    const Result result = unit.run("--touch --setting=TS_CALIBRATION_WIDTH --value=300");
    EXPECT_EQ(result.output, "TS_CALIBRATION_WIDTH set to: 300\n");
    EXPECT_EQ(result.calls, callsOn("TouchScreen", {"TouchScreen_setAdvancedSetting(9, 300) = 0"}));
    EXPECT_EQ(unit["/touch/calibrationWidth"], 300);
}

TEST(Touch, AcceptsTheSettingAndItsValueInEitherOrder)
{
    Unit unit;
    EXPECT_EQ(unit.run("--touch --value=7 --setting=TS_LOW_LEVEL").output, "TS_LOW_LEVEL set to: 7\n");
    EXPECT_EQ(unit["/touch/lowLevel"], 7);
}

TEST(Touch, AcceptsTheSettingAsTheNextWord)
{
    Unit unit;
    EXPECT_EQ(unit.run("--touch --setting TS_LOW_LEVEL").output, "TS_LOW_LEVEL: 48\n");
}

TEST(Touch, SendsTheLow16BitsOfAValue)
{
    const struct
    {
        std::string text;
        std::string sent;
    } cases[] = {{"0", "0"},      {"1", "1"},        {"65535", "65535"},
                 {"65536", "0"},  {"70000", "4464"}, {"2147483647", "65535"},
                 {"-1", "65535"}, {"-65536", "0"},   {"-2147483648", "0"},
                 {"abc", "0"},    {"12abc", "12"},   {"0x10", "0"},
                 {"010", "10"}};
    Unit unit;
    for (const auto& [text, sent] : cases)
    {
        SCOPED_TRACE(text);
        const Result result = unit.run("--touch --setting=TS_LOW_LEVEL --value=" + text);
        EXPECT_EQ(result.output, "TS_LOW_LEVEL set to: " + sent + "\n");
        EXPECT_EQ(result.calls,
                  callsOn("TouchScreen", {"TouchScreen_setAdvancedSetting(1, " + sent + ") = 0"}));
        EXPECT_EQ(unit.run("--touch --setting=TS_LOW_LEVEL").output, "TS_LOW_LEVEL: " + sent + "\n");
    }
}

TEST(Touch, ReadsTheSettingForAnEmptyValue)
{
    Unit unit;
    for (const char* option : {"--value", "--value=", "--value=noArgument", "--value=NOARGUMENT"})
    {
        SCOPED_TRACE(option);
        EXPECT_EQ(unit.run(std::string("--touch --setting=ts_low_level ") + option).output,
                  "ts_low_level: 48\n");
    }
}

TEST(Touch, KeepsAValueIfTheOptionIsRepeatedWithoutOne)
{
    Unit unit;
    EXPECT_EQ(unit.run("--touch --setting=TS_LOW_LEVEL --value=5 --value").output,
              "TS_LOW_LEVEL set to: 5\n");
    EXPECT_EQ(unit.run("--touch --setting=TS_LOW_LEVEL --value=5 --value=6").output,
              "TS_LOW_LEVEL set to: 6\n");
}

TEST(Touch, UsesTheLastSetting)
{
    Unit unit;
    EXPECT_EQ(unit.run("--touch --setting=TS_LOW_LEVEL --setting=TS_DEBOUNCE_TIME").output,
              "TS_DEBOUNCE_TIME: 20\n");
    EXPECT_EQ(unit.run("--touch --setting=TS_LOW_LEVEL --setting=").output, "TS_LOW_LEVEL: 48\n");
}

TEST(Touch, ProcessesTheProfileBeforeTheSetting)
{
    Unit unit(R"({"touch": {"profile": "mouse"}})");
    for (const char* options :
         {"--mode=touch --setting=TS_DEBOUNCE_TIME", "--setting=TS_DEBOUNCE_TIME --mode=touch"})
    {
        SCOPED_TRACE(options);
        const Result result = unit.run(std::string("--touch ") + options);
        EXPECT_EQ(result.output, lines({"TouchScreen profile set to: TOUCH", "TS_DEBOUNCE_TIME: 20"}));
        EXPECT_EQ(result.calls, callsOn("TouchScreen", {"TouchScreen_setMode(3) = 0",
                                                        "TouchScreen_getAdvancedSetting(3, [20]) = 0"}));
    }
}

TEST(Touch, IgnoresAValueWithoutASetting)
{
    Unit unit;
    EXPECT_EQ(unit.run("--touch --mode --value=5").calls,
              callsOn("TouchScreen", {"TouchScreen_getMode([3]) = 0"}));
    EXPECT_EQ(unit.run("--touch --mode=mouse --value=5").calls,
              callsOn("TouchScreen", {"TouchScreen_setMode(2) = 0"}));
}

TEST(Touch, ReadsTheProfileAndChangesASetting)
{
    Unit unit;
    EXPECT_EQ(unit.run("--touch --value=21 --mode --setting=TS_DEBOUNCE_TIME").output,
              lines({"TouchScreen Profile: TOUCH", "TS_DEBOUNCE_TIME set to: 21"}));
}

TEST(Touch, ReadsTheSettingThatRestoresDefaultsAsZero)
{
    Unit unit;
    const Result result = unit.run("--touch --setting=ts_restore_default_settings");
    EXPECT_EQ(result.output, "ts_restore_default_settings: 0\n");
    EXPECT_EQ(result.calls, callsOn("TouchScreen", {"TouchScreen_getAdvancedSetting(11, [0]) = 0"}));
}

TEST(Touch, RestoresTheDefaults)
{
    Unit unit(R"({"touch": {"profile": "mouse", "lowLevel": 9, "calibrationMeasurements": 3}})");
    const Result result = unit.run("--touch --setting=TS_RESTORE_DEFAULT_SETTINGS --value=1");
    EXPECT_EQ(result.output, "TS_RESTORE_DEFAULT_SETTINGS set to: 1\n");
    EXPECT_EQ(result.calls, callsOn("TouchScreen", {"TouchScreen_setAdvancedSetting(11, 1) = 0"}));
    EXPECT_EQ(unit["/touch/lowLevel"], 48);
    EXPECT_EQ(unit["/touch/calibrationMeasurements"], 8);
    EXPECT_EQ(unit["/touch/profile"], "mouse");
}

TEST(Touch, RejectsUnknownSettingsAndPrintsThemAsTyped)
{
    Unit unit;
    for (const std::string word : {"bogus", "Ts_Low", "LOW_LEVEL", "1", "ERROR", "noArgument",
                                   " TS_LOW_LEVEL", "TS_LOW_LEVEL\xE4", "\x80\xFF"})
        for (const char* value : {"", "=5"})
        {
            SCOPED_TRACE(word);
            const Result result = unit.run(
                std::vector<std::string>{"--touch", "--setting=" + word, std::string("--value") + value});
            EXPECT_EQ(result.output, "Invalid setting: " + word + "\n");
            EXPECT_EQ(result.calls, callsOn("TouchScreen", {}));
        }
}

TEST(Touch, RejectsAnEmptySetting)
{
    Unit unit;
    EXPECT_EQ(unit.run("--touch --setting=").output, "Invalid setting: noArgument\n");
}

TEST(Touch, RejectsASettingAfterTheProfile)
{
    Unit unit;
    EXPECT_EQ(unit.run("--touch --setting=bogus --mode=mouse").output,
              lines({"TouchScreen profile set to: MOUSE", "Invalid setting: bogus"}));
}

TEST(Touch, RequiresTheNameOfASetting)
{
    Unit unit;
    const Result alone = unit.runExpectingErrors("--touch --setting");
    EXPECT_EQ(alone.output, "Invalid argument\n");
    EXPECT_THAT(alone.errors, testing::HasSubstr("option '--setting' requires an argument"));
    EXPECT_EQ(unit.runExpectingErrors("--touch --mode --setting").output, "TouchScreen Profile: TOUCH\n");
}

TEST(Touch, ReportsASettingThatTheUnitRejects)
{
    Unit unit;
    EXPECT_EQ(unit.run("--touch --setting=TS_USE_DEJITTER --value=2").output,
              "setAdvancedSetting: The value is out of range\n");
    EXPECT_EQ(unit["/touch/useDejitter"], nullptr);
}

TEST(Touch, ReportsAnErrorForEveryReadWithoutATouchScreen)
{
    Unit unit(R"({"about": {"touchScreen": false}})");
    std::string output = "TouchScreen Profile: Not supported by this unit\n";
    for (int setting = 0; setting <= 10; ++setting)
        output += "getAdvancedSetting: Not supported by this unit\n";
    EXPECT_EQ(unit.run("--touch").output, output);
}

TEST(Touch, KeepsItsSettingsAcrossAReboot)
{
    Unit unit;
    std::string output = "TouchScreen Profile: MOUSE\n";
    unit.run("--touch --mode=MOUSE");
    for (const Setting& each : settings)
    {
        if (each.word == "TS_CALIBRATION_WIDTH")
            continue;
        const std::string value = each.word == "TS_USE_DEJITTER" ? "0" : "60" + each.number;
        unit.run("--touch --setting=" + each.word + " --value=" + value);
        output += each.word + ": " + value + "\n";
    }
    unit.shutDown();
    EXPECT_EQ(unit.run("--touch").output, output);
}

TEST(Touch, AppliesANextBootProfileAtTheNextBoot)
{
    const struct
    {
        const char* profile;
        const char* before;
        const char* after;
    } cases[] = {
        {"mouse next boot", "TouchScreen Profile: MOUSE_NEXT_BOOT\n", "TouchScreen Profile: MOUSE\n"},
        {"touch next boot", "TouchScreen Profile: TOUCH_NEXT_BOOT\n", "TouchScreen Profile: TOUCH\n"},
    };
    for (const auto& [profile, before, after] : cases)
    {
        SCOPED_TRACE(profile);
        Unit unit;
        unit.set("/touch", {{"profile", profile}});
        EXPECT_EQ(unit.run("--touch --mode").output, before);
        unit.shutDown();
        EXPECT_EQ(unit.run("--touch --mode").output, after);
    }
}

} // namespace
