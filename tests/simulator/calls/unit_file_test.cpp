#include "device/qv_aux2.h"
#include "support/called_unit.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <unistd.h>

namespace
{

using nlohmann::json;
using nlohmann::ordered_json;

ApiError readVolume()
{
    std::uint16_t volume = 0;
    return Buzzer_getVolume(GetBuzzer(), &volume);
}

// Returns the message that the library prints for a unit file with this invalid content.
std::string diagnosticFor(const std::string& content)
{
    CalledUnit unit(content);
    testing::internal::CaptureStderr();
    EXPECT_EQ(readVolume(), 66u);
    const std::string errors = testing::internal::GetCapturedStderr();
    const std::string begin = "libqv-aux2: " + unit.file() + ": ";
    EXPECT_THAT(errors, testing::StartsWith(begin));
    EXPECT_EQ(readFile(unit.file()), content);
    return errors.substr(std::min(begin.size(), errors.size()));
}

bool isAccepted(const std::string& content)
{
    const CalledUnit unit(content);
    return readVolume() == 0;
}

// Returns nested objects with `value` at a path such as "/buzzer/volume".
std::string fileWith(const std::string& path, const json& value)
{
    const auto slash = path.find_last_of('/');
    const json object = {{path.substr(slash + 1), value}};
    return slash == 0 ? object.dump() : fileWith(path.substr(0, slash), object);
}

// Returns the file that the library creates if there is none.
ordered_json createdUnit()
{
    const CalledUnit unit;
    std::filesystem::remove(unit.file());
    EXPECT_EQ(readVolume(), 0u);
    return ordered_json::parse(readFile(unit.file()));
}

// Returns the paths of all values that are not objects.
std::vector<std::string> pathsOf(const json& file)
{
    std::vector<std::string> paths;
    const json flat = file.flatten();
    for (const auto& [path, value] : flat.items())
        paths.push_back(path);
    return paths;
}

TEST(UnitFile, RejectsUnknownKeysAtEveryLevel)
{
    for (const char* path : {"/buzer",
                             "/Buzzer",
                             "/about/name",
                             "/addOnBoard/name",
                             "/eeprom/front",
                             "/eeprom/main/txt",
                             "/versions/bios",
                             "/diagnostic/temperature",
                             "/adc/48V",
                             "/digitalInputs/outputs",
                             "/lightsensor/lux",
                             "/buzzer/volum",
                             "/backlight/brightness",
                             "/frontLed/colour",
                             "/can/channels",
                             "/config/startup",
                             "/config/startupPower/gps",
                             "/power/gps",
                             "/touch/mode",
                             "/telematics/gsm",
                             "/telematics/wlan/on",
                             "/firmware/cpu",
                             "/firmware/ss/version",
                             "/boot/mode",
                             "/faults/Buzzer_getVolume/count"})
        EXPECT_EQ(diagnosticFor(fileWith(path, 1)), std::string(path) + ": unknown key\n");
    EXPECT_EQ(diagnosticFor(R"({"firmware": {"statuses": [{}, {"status": 1}]}})"),
              "/firmware/statuses/1/status: unknown key\n");
}

TEST(UnitFile, RejectsUnknownKeysNextToKnownOnes)
{
    EXPECT_EQ(diagnosticFor(R"({"buzzer": {"volume": 5, "volumes": 6, "frequency": 800}})"),
              "/buzzer/volumes: unknown key\n");
}

TEST(UnitFile, RejectsDuplicateKeys)
{
    const struct
    {
        const char* content;
        const char* path;
    } cases[] = {
        {R"({"buzzer": {"volume": 1}, "buzzer": {"frequency": 900}})", "/buzzer"},
        {R"({"buzzer": {"volume": 1, "frequency": 900, "volume": 1}})", "/buzzer/volume"},
        {R"({"buzzer": {"volume": 1, "vol\u0075me": 2}})", "/buzzer/volume"},
        {R"({"adc": {"24V": 1, "24V": 2, "12V": 3, "12V": 4}})", "/adc/24V"},
        {R"({"faults": {"Buzzer_getVolume": {"code": 1}, "Buzzer_getVolume": {"code": 2}}})",
         "/faults/Buzzer_getVolume"},
        {R"({"errorTexts": {"77": "one", "78": null, "77": "two"}})", "/errorTexts/77"},
        {R"({"firmware": {"statuses": [{"state": 1}, {"state": 2, "state": 3}]}})",
         "/firmware/statuses/1/state"},
    };
    for (const auto& [content, path] : cases)
        EXPECT_EQ(diagnosticFor(content), std::string(path) + ": duplicate key\n");
}

TEST(UnitFile, RejectsFaultsOfUnknownOperations)
{
    for (const char* name : {"Buzzer_getVolum", "buzzer_getVolume", "GetBuzer", "getenv", "printf", ""})
        EXPECT_EQ(diagnosticFor(fileWith(std::string("/faults/") + name, {{"code", 77}})),
                  std::string("/faults/") + name + ": unknown operation\n");
    EXPECT_TRUE(isAccepted(fileWith("/faults/GetErrorStringA", {{"null", true}})));
}

TEST(UnitFile, RejectsFaultsThatTheOperationCannotHave)
{
    EXPECT_EQ(diagnosticFor(fileWith("/faults/GetBuzzer", {{"code", 77}})),
              "/faults/GetBuzzer: expected \"null\": true and no other fault\n");
    EXPECT_EQ(diagnosticFor(fileWith("/faults/GetErrorStringA", {{"ignored", true}})),
              "/faults/GetErrorStringA: expected \"null\": true and no other fault\n");
    EXPECT_EQ(diagnosticFor(fileWith("/faults/Buzzer_getVolume", {{"null", true}})),
              "/faults/Buzzer_getVolume: \"null\" is only for operations that return a handle or a text\n");
}

TEST(UnitFile, RejectsFaultsThatAreNotExactlyOne)
{
    for (const json& fault : {json::object(),
                              {{"code", 0}},
                              {{"ignored", false}},
                              {{"skip", 1}, {"times", 1}},
                              {{"code", 77}, {"ignored", true}}})
        EXPECT_EQ(diagnosticFor(fileWith("/faults/Buzzer_getVolume", fault)),
                  "/faults/Buzzer_getVolume: expected either a code other than 0 or \"ignored\": true\n");
    for (const json& fault : {json::object(), {{"null", false}}, {{"null", true}, {"ignored", true}}})
        EXPECT_EQ(diagnosticFor(fileWith("/faults/GetBuzzer", fault)),
                  "/faults/GetBuzzer: expected \"null\": true and no other fault\n");
}

TEST(UnitFile, RejectsErrorTextsOfInvalidCodes)
{
    for (const char* code : {"", "x", "-1", "+7", "077", " 7", "7 ", "0x7", "1.5", "4294967296"})
        EXPECT_EQ(diagnosticFor(fileWith(std::string("/errorTexts/") + code, "text")),
                  std::string("/errorTexts/") + code + ": expected an error code from 0 to 4294967295\n");
    for (const char* code : {"0", "7", "4294967295"})
        EXPECT_TRUE(isAccepted(fileWith(std::string("/errorTexts/") + code, "text"))) << code;
}

TEST(UnitFile, RejectsValuesOfTheWrongType)
{
    const std::string byte = "an integer from 0 to 255";
    const std::string uint16 = "an integer from 0 to 65535";
    const std::string uint32 = "an integer from 0 to 4294967295";
    const std::string orInteger = " or an integer from -2147483648 to 2147483647";
    const std::string color = "red, green, blue, cyan, magenta, yellow" + orInteger;
    const struct
    {
        const char* path;
        json value;
        std::string expected;
        const char* got;
    } cases[] = {
        {"/about", 1, "an object", "1"},
        {"/about", json::array(), "an object", "an array of length 0"},
        {"/faults", "none", "an object", R"("none")"},
        {"/faults/GetBuzzer", true, "an object", "true"},
        {"/faults/Buzzer_setVolume/code", -1, uint32, "-1"},
        {"/faults/Buzzer_setVolume/code", 4294967296, uint32, "4294967296"},
        {"/errorTexts", json::array(), "an object", "an array of length 0"},
        {"/errorTexts/77", 77, "a string", "77"},
        {"/about/unitSerial", 7, "a string", "7"},
        {"/about/unitSerial", nullptr, "a string", "null"},
        {"/eeprom/main/hex", 10, "a string", "10"},
        {"/addOnBoard/fitted", 1, "true or false", "1"},
        {"/addOnBoard/fitted", "true", "true or false", R"("true")"},
        {"/boot/running", nullptr, "true or false", "null"},
        {"/adc/24V", "24", "a number", R"("24")"},
        {"/adc/24V", true, "a number", "true"},
        {"/frontLed/frequency", nullptr, "a number", "null"},
        {"/buzzer/volume", "5", uint16, R"("5")"},
        {"/buzzer/volume", 5.5, uint16, "5.5"},
        {"/buzzer/volume", 5.0, uint16, "5.0"},
        {"/buzzer/volume", true, uint16, "true"},
        {"/buzzer/volume", nullptr, uint16, "null"},
        {"/buzzer/volume", json::array({5}), uint16, "an array of length 1"},
        {"/buzzer/volume", json::object(), uint16, "an object"},
        {"/buzzer/volume", 70000, uint16, "70000"},
        {"/buzzer/enabled", "true", "true, false or " + byte, R"("true")"},
        {"/buzzer/enabled", nullptr, "true, false or " + byte, "null"},
        {"/frontLed/color", "purple", color, R"("purple")"},
        {"/frontLed/color", "Red", color, R"("Red")"},
        {"/frontLed/color", "", color, R"("")"},
        {"/frontLed/color", false, color, "false"},
        {"/frontLed/color", 2147483648, color, "2147483648"},
        {"/config/longPressAction", "off", "none, suspend, shutdown" + orInteger, R"("off")"},
        {"/touch/profile", "pen", "mouse next boot, touch next boot, mouse, touch" + orInteger, R"("pen")"},
        {"/boot/nextMode", "fast", "normal, rescue, rescue with factory reset" + orInteger, R"("fast")"},
        {"/boot/systemMode", "fast", "normal, rescue" + orInteger, R"("fast")"},
        {"/can/baudrates", 250, "an array", "250"},
        {"/can/baudrates", nullptr, "an array", "null"},
        {"/backlight/filter", json::array({1, 1, 20}), "an array of length 4", "an array of length 3"},
        {"/backlight/filter", json::array({1, 1, 20, 1, 1}), "an array of length 4", "an array of length 5"},
        {"/firmware/statuses", json::object(), "an array", "an object"},
    };
    for (const auto& [path, value, expected, got] : cases)
        EXPECT_EQ(diagnosticFor(fileWith(path, value)),
                  std::string(path) + ": expected " + expected + ", got " + got + "\n");
}

TEST(UnitFile, ShortensLongValuesAndKeysInDiagnostics)
{
    const std::string longText(1000, 'x');
    EXPECT_EQ(diagnosticFor(fileWith("/buzzer/volume", longText)),
              "/buzzer/volume: expected an integer from 0 to 65535, got \"" + std::string(60, 'x') +
                  "...\"\n");
    EXPECT_EQ(diagnosticFor(fileWith("/" + longText, 1)), "/" + std::string(60, 'x') + "...: unknown key\n");
    // A character is not split.
    EXPECT_EQ(diagnosticFor(fileWith("/boot/running", std::string(59, 'x') + "\u00fc" + longText)),
              "/boot/running: expected true or false, got \"" + std::string(59, 'x') + "...\"\n");
    EXPECT_EQ(diagnosticFor(fileWith("/boot/running", "a\n\"b\"")),
              "/boot/running: expected true or false, got \"a\\n\\\"b\\\"\"\n");
}

TEST(UnitFile, ReportsThePathOfAnArrayElement)
{
    EXPECT_EQ(diagnosticFor(R"({"can": {"baudrates": [250, 250, "fast"]}})"),
              "/can/baudrates/2: expected an integer from 0 to 65535, got \"fast\"\n");
    EXPECT_EQ(diagnosticFor(R"({"backlight": {"filter": [1, 1, 20, null]}})"),
              "/backlight/filter/3: expected an integer from -2147483648 to 2147483647, got null\n");
    EXPECT_EQ(diagnosticFor(R"({"firmware": {"statuses": [{"state": 1}, 2]}})"),
              "/firmware/statuses/1: expected an object, got 2\n");
}

TEST(UnitFile, AcceptsExactlyTheNumbersThatFit)
{
    const struct
    {
        const char* path;
        std::int64_t lowest;
        std::int64_t highest;
    } cases[] = {
        {"/about/canConnections", 0, 255},
        {"/about/digitalIoConnections", 0, 255},
        {"/about/buttons", -2147483648, 2147483647},
        {"/about/display", 0, 255},
        {"/eeprom/addOn/fill", 0, 255},
        {"/diagnostic/startupReason", 0, 65535},
        {"/diagnostic/shutdownReason", 0, 65535},
        {"/diagnostic/totalRunTime", 0, 4294967295},
        {"/diagnostic/minimumTemperature", -32768, 32767},
        {"/diagnostic/cpuTemperature", -32768, 32767},
        {"/digitalInputs/inputs", 0, 255},
        {"/lightsensor/illuminance", 0, 65535},
        {"/buzzer/frequency", 0, 65535},
        {"/backlight/filter/0", -2147483648, 2147483647},
        {"/frontLed/color", -2147483648, 2147483647},
        {"/config/onOffSignalTime", 0, 4294967295},
        {"/config/heatingLimit", -32768, 32767},
        {"/config/startupTrigger", -2147483648, 2147483647},
        {"/power/video", 0, 255},
        {"/touch/lowLevel", 0, 65535},
        {"/telematics/gps/power", -2147483648, 2147483647},
        {"/firmware/pace", 0, 4294967295},
        {"/firmware/statuses/0/error", 0, 4294967295},
        {"/faults/Buzzer_setVolume/times", 0, 4294967295},
    };
    const auto fileHolding = [](std::string path, std::int64_t value)
    {
        json file = {{"backlight", {{"filter", {1, 1, 20, 1}}}},
                     {"firmware", {{"statuses", {json::object()}}}},
                     {"faults", {{"Buzzer_setVolume", {{"code", 77}}}}}};
        file[json::json_pointer(path)] = value;
        return file.dump();
    };
    for (const auto& [path, lowest, highest] : cases)
    {
        SCOPED_TRACE(path);
        EXPECT_TRUE(isAccepted(fileHolding(path, lowest)));
        EXPECT_TRUE(isAccepted(fileHolding(path, highest)));
        const std::string range =
            " an integer from " + std::to_string(lowest) + " to " + std::to_string(highest);
        for (const std::int64_t value : {lowest - 1, highest + 1})
            EXPECT_THAT(diagnosticFor(fileHolding(path, value)),
                        testing::AllOf(testing::StartsWith(std::string(path) + ": expected "),
                                       testing::EndsWith(range + ", got " + std::to_string(value) + "\n")));
    }
}

TEST(UnitFile, AcceptsTheLargest64BitCount)
{
    EXPECT_TRUE(isAccepted(R"({"firmware": {"ss": {"bytes": 18446744073709551615}}})"));
    EXPECT_EQ(diagnosticFor(R"({"firmware": {"ss": {"bytes": 18446744073709551616}}})"),
              "/firmware/ss/bytes: expected an integer from 0 to 18446744073709551615, got "
              "1.8446744073709552e+19\n");
    EXPECT_EQ(diagnosticFor(R"({"firmware": {"ss": {"bytes": -1}}})"),
              "/firmware/ss/bytes: expected an integer from 0 to 18446744073709551615, got -1\n");
}

TEST(UnitFile, AcceptsOnlyVersionsOfFourNumbers)
{
    const CalledUnit unit(R"({"versions": {"ss": "0.12.0.255"}})");
    std::uint8_t read[4] = {};
    EXPECT_EQ(AuxVersion_getSSVersion(GetAuxVersion(), &read[0], &read[1], &read[2], &read[3]), 0u);
    EXPECT_THAT(read, testing::ElementsAre(0, 12, 0, 255));
    for (const char* version : {"", "1", "1.2.3", "1.2.3.", "1.2.3.4.5", "1.2.3.4 ", " 1.2.3.4", "1..3.4",
                                "1.2.3.256", "1.2.3.-4", "1,2,3,4", "a.b.c.d"})
        EXPECT_EQ(diagnosticFor(fileWith("/versions/ss", version)),
                  "/versions/ss: expected a version such as 1.12.0.3, got \"" + std::string(version) +
                      "\"\n");
    EXPECT_EQ(diagnosticFor(fileWith("/versions/ss", 2.7)), "/versions/ss: expected a string, got 2.7\n");
    EXPECT_EQ(diagnosticFor(fileWith("/versions/ss", nullptr)),
              "/versions/ss: expected a string, got null\n");
    EXPECT_TRUE(isAccepted(fileWith("/firmware/ss/nextVersion", nullptr)));
    EXPECT_TRUE(isAccepted(fileWith("/firmware/ss/nextVersion", "1.2.3.4")));
}

TEST(UnitFile, AcceptsOnlyPairsOfHexadecimalDigits)
{
    for (const char* hex : {"", "00", "0aF9"})
        EXPECT_TRUE(isAccepted(fileWith("/eeprom/main/hex", hex))) << hex;
    for (const char* hex : {"0", "0aF", "0g", "00 11", "0x00"})
        EXPECT_EQ(diagnosticFor(fileWith("/eeprom/main/hex", hex)),
                  "/eeprom/main/hex: expected pairs of hexadecimal digits, got \"" + std::string(hex) +
                      "\"\n");
}

TEST(UnitFile, AcceptsNoMoreThanAnEepromHolds)
{
    const auto fileWithEeprom = [](const char* board, std::size_t text, std::size_t hex)
    {
        return fileWith(std::string("/eeprom/") + board,
                        {{"text", std::string(text, 'x')}, {"hex", std::string(2 * hex, '0')}});
    };
    for (const char* board : {"main", "addOn"})
    {
        const std::string place = std::string("/eeprom/") + board;
        for (const auto& [text, hex] : {std::pair{4096u, 0u}, {0u, 4096u}, {4000u, 96u}})
        {
            EXPECT_TRUE(isAccepted(fileWithEeprom(board, text, hex))) << text << ", " << hex;
            EXPECT_EQ(diagnosticFor(fileWithEeprom(board, text + 1, hex)),
                      place + ": expected at most 4096 bytes in \"text\" and \"hex\", got 4097\n");
        }
    }
}

TEST(UnitFile, AcceptsDigestsOf64HexadecimalDigits)
{
    for (const char* target : {"ss", "fpga", "front"})
    {
        const std::string place = std::string("/firmware/") + target + "/digest";
        for (const std::string& digest : {std::string(), std::string(64, '0'), std::string(64, 'f')})
            EXPECT_TRUE(isAccepted(fileWith(place, digest))) << digest;
        for (const std::string& digest : {std::string("12"), std::string(62, '0'), std::string(66, '0'),
                                          std::string(63, '0'), std::string(63, '0') + "g"})
            EXPECT_THAT(diagnosticFor(fileWith(place, digest)),
                        testing::StartsWith(place +
                                            ": expected 64 hexadecimal digits or an empty string, got \"" +
                                            digest.substr(0, 2)));
    }
}

TEST(UnitFile, ContainsNoNulByte)
{
    const std::string nul(1, '\0');
    EXPECT_EQ(diagnosticFor("{}" + nul), "line 1, column 3: unexpected NUL byte\n");
    EXPECT_EQ(diagnosticFor("{\n}\n \n" + nul + R"({"buzzer": {}})"),
              "line 4, column 1: unexpected NUL byte\n");
    EXPECT_EQ(diagnosticFor("{\n}\n" + nul + nul), "line 3, column 1: unexpected NUL byte\n");
    EXPECT_THAT(diagnosticFor(R"({"about": {"unitSerial": "a)" + nul + "\"}}"),
                testing::StartsWith("line 1, column 28: "));
    EXPECT_EQ(diagnosticFor(R"({"faults": {"Buzzer_getVolume\u0000x": {"code": 77}}})"),
              "/faults/Buzzer_getVolume\\u0000x: unknown operation\n");
}

TEST(UnitFile, HasAtMost16MiB)
{
    constexpr std::size_t limit = 16 << 20;
    EXPECT_TRUE(isAccepted("{}" + std::string(limit - 2, ' ')));
    EXPECT_EQ(diagnosticFor("{}" + std::string(limit - 1, ' ')), "larger than 16 MiB\n");
}

// The file is sparse and takes no space on the disk, but reading it would take too long.
TEST(UnitFile, IsNotReadIfItIsTooLarge)
{
    const CalledUnit unit;
    if (truncate(unit.file().c_str(), off_t{1} << 40) != 0)
        GTEST_SKIP() << "the file system does not support files of 1 TiB";
    testing::internal::CaptureStderr();
    EXPECT_EQ(readVolume(), 66u);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "libqv-aux2: " + unit.file() + ": larger than 16 MiB\n");
}

// A changed file is written with line breaks and therefore grows.
TEST(UnitFile, DoesNotGrowTooLargeWhenChanged)
{
    std::string channels = "{\"can\": {\"baudrates\": [1";
    for (int i = 0; i < 1900000; ++i)
        channels += ",1";
    const CalledUnit unit(channels + "]}}");
    const std::string before = readFile(unit.file());
    testing::internal::CaptureStderr();
    EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 67u);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "libqv-aux2: " + unit.file() + ": would be larger than 16 MiB\n");
    EXPECT_TRUE(readFile(unit.file()) == before);
}

// With 100,000 texts, a linear search for each of them would take minutes.
TEST(UnitFile, AcceptsManyErrorTextsQuickly)
{
    std::string texts = "{\"errorTexts\": {\"1\": \"x\"";
    for (int code = 1000; code < 101000; ++code)
        texts += ",\"" + std::to_string(code) + "\":\"text\"";
    const CalledUnit unit(texts + "}}");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 0u);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
    EXPECT_EQ(unit["/buzzer/volume"], 40);
    EXPECT_EQ(unit["/errorTexts"].size(), 100001u);
}

TEST(UnitFile, AcceptsNullOnlyForWhatAUnitMayLack)
{
    const std::vector<std::string> fitted = {
        "/about/digitalIoConnections", "/about/configurableInputs",
        "/about/pwmOutputs",           "/about/buttons",
        "/diagnostic/shutdownReason",  "/diagnostic/hwErrorStatus",
        "/diagnostic/ssTemperature",   "/diagnostic/pcbTemperature",
        "/diagnostic/cpuTemperature",  "/diagnostic/boardTemperature",
        "/digitalInputs/inputs",       "/lightsensor/illuminance",
        "/firmware/ss/nextVersion",    "/firmware/fpga/nextVersion",
        "/firmware/front/nextVersion",
    };
    const json created = createdUnit();
    for (const std::string& path : pathsOf(created))
    {
        json file = created;
        file[json::json_pointer(path)] = nullptr;
        if (path.starts_with("/adc/") || std::ranges::find(fitted, path) != fitted.end())
            EXPECT_TRUE(isAccepted(file.dump())) << path;
        else
            EXPECT_THAT(diagnosticFor(file.dump()), testing::StartsWith(path + ": "));
    }
}

TEST(UnitFile, AcceptsFlagsAsBooleansAndNumbers)
{
    const struct
    {
        const char* value;
        std::int32_t read;
    } cases[] = {{"false", 0}, {"true", 1}, {"0", 0}, {"1", 1}, {"2", 2}, {"-1", -1}};
    for (const auto& [value, read] : cases)
    {
        CalledUnit unit(std::string(R"({"backlight": {"ledDimming": )") + value + "}}");
        std::int32_t enabled = 4711;
        EXPECT_EQ(Backlight_getLedDimming(GetBacklight(), &enabled), 0u);
        EXPECT_EQ(enabled, read) << value;
    }
}

TEST(UnitFile, AcceptsNamedValuesAsNamesAndNumbers)
{
    const json colors[] = {"red", "green", "blue", "cyan", "magenta", "yellow"};
    for (std::int32_t color = 0; color < 6; ++color)
        for (const json& value : {colors[color], json(color)})
        {
            CalledUnit unit(fileWith("/frontLed/color", value));
            std::int32_t read = 4711;
            EXPECT_EQ(FrontLED_getStandardColor(GetFrontLED(), &read), 0u);
            EXPECT_EQ(read, color);
        }
    CalledUnit unit(fileWith("/frontLed/color", -7));
    std::int32_t read = 4711;
    EXPECT_EQ(FrontLED_getStandardColor(GetFrontLED(), &read), 0u);
    EXPECT_EQ(read, -7);
}

TEST(UnitFile, WritesNamesAndBooleans)
{
    CalledUnit unit;
    EXPECT_EQ(FrontLED_setStandardColor(GetFrontLED(), 4), 0u);
    EXPECT_EQ(Config_setShortButtonPressAction(GetConfig(), 2), 0u);
    EXPECT_EQ(Config_setNextBootMode(GetConfig(), 4), 0u);
    EXPECT_EQ(TouchScreen_setMode(GetTouchScreen(), 0), 0u);
    EXPECT_EQ(Buzzer_setTrigger(GetBuzzer(), 1), 0u);
    EXPECT_EQ(Power_setCanPowerStatus(GetPower(), 0), 0u);
    EXPECT_EQ(unit.content(), (json{{"frontLed", {{"color", "magenta"}}},
                                    {"config", {{"shortPressAction", "shutdown"}}},
                                    {"boot", {{"nextMode", "rescue with factory reset"}}},
                                    {"touch", {{"profile", "mouse next boot"}}},
                                    {"buzzer", {{"enabled", true}}},
                                    {"power", {{"can", false}}}}));
}

TEST(UnitFile, WritesTheShortestNumbersThatRoundTrip)
{
    CalledUnit unit;
    EXPECT_EQ(FrontLED_setSignal(GetFrontLED(), 0.7, 30), 0u);
    EXPECT_EQ(Config_setHeatingTempLimit(GetConfig(), -25), 0u);
    EXPECT_THAT(readFile(unit.file()), testing::HasSubstr("\"frequency\": 0.7,"));
    EXPECT_EQ(unit["/config/heatingLimit"], -25);
}

TEST(UnitFile, AcceptsAByteOrderMark)
{
    EXPECT_TRUE(isAccepted("\xEF\xBB\xBF{}"));
}

TEST(UnitFile, ContainsEveryKeyInOrderWhenCreated)
{
    const ordered_json created = createdUnit();
    std::vector<std::string> keys;
    for (const auto& [key, value] : created.items())
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"about",      "addOnBoard", "eeprom",        "versions",
                                              "diagnostic", "adc",        "digitalInputs", "lightsensor",
                                              "buzzer",     "backlight",  "frontLed",      "can",
                                              "config",     "power",      "touch",         "telematics",
                                              "firmware",   "boot",       "faults",        "errorTexts"}));
    EXPECT_EQ(created["frontLed"].dump(), R"({"frequency":1.0,"dutyCycle":50,"color":"green","pulses":1,)"
                                          R"("idleTime":0,"startup":true})");
    EXPECT_EQ(created["versions"]["api"], "2.11.0.0");
    EXPECT_EQ(created["adc"].size(), 24u);
    EXPECT_EQ(created["adc"]["1V1"], 1.102);
    EXPECT_EQ(created["can"].dump(), R"({"baudrates":[250,250,500,500]})");
    EXPECT_EQ(created["firmware"]["ss"]["nextVersion"], nullptr);
    EXPECT_EQ(created["faults"], ordered_json::object());
}

} // namespace
