#include "device/qv_aux2.h"
#include "support/called_unit.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

namespace
{

using nlohmann::json;
using nlohmann::ordered_json;

ApiError readVolume()
{
    std::uint16_t volume = 0;
    return Buzzer_getVolume(GetBuzzer(), &volume);
}

// What the library says of a unit file that holds `content`.
std::string complaintAbout(const std::string& content)
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

// Objects in one another that hold `value` at a place like "/buzzer/volume".
std::string fileWith(const std::string& place, const json& value)
{
    const auto slash = place.find_last_of('/');
    const json object = {{place.substr(slash + 1), value}};
    return slash == 0 ? object.dump() : fileWith(place.substr(0, slash), object);
}

// The file of a unit that was made where there was none.
ordered_json madeUnit()
{
    const CalledUnit unit;
    std::filesystem::remove(unit.file());
    EXPECT_EQ(readVolume(), 0u);
    return ordered_json::parse(readFile(unit.file()));
}

// Every place of the file that holds a value and not an object.
std::vector<std::string> placesOf(const json& file)
{
    std::vector<std::string> places;
    const json flat = file.flatten();
    for (const auto& [place, value] : flat.items())
        places.push_back(place);
    return places;
}

TEST(UnitFile, RefusesAKeyThatNoUnitHasAtEveryLevel)
{
    for (const char* place : {"/buzer",
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
        EXPECT_EQ(complaintAbout(fileWith(place, 1)), std::string(place) + ": no unit has this key\n");
    EXPECT_EQ(complaintAbout(R"({"firmware": {"statuses": [{}, {"status": 1}]}})"),
              "/firmware/statuses/1/status: no unit has this key\n");
}

TEST(UnitFile, RefusesAKeyThatNoUnitHasBesideOnesThatItHas)
{
    EXPECT_EQ(complaintAbout(R"({"buzzer": {"volume": 5, "volumes": 6, "frequency": 800}})"),
              "/buzzer/volumes: no unit has this key\n");
}

TEST(UnitFile, RefusesAKeyThatStandsTwice)
{
    const struct
    {
        const char* content;
        const char* place;
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
    for (const auto& [content, place] : cases)
        EXPECT_EQ(complaintAbout(content), std::string(place) + ": this key stands here twice\n");
}

TEST(UnitFile, RefusesTheFaultOfAnOperationThatIsNotThere)
{
    for (const char* name : {"Buzzer_getVolum", "buzzer_getVolume", "GetBuzer", "getenv", "printf", ""})
        EXPECT_EQ(complaintAbout(fileWith(std::string("/faults/") + name, {{"code", 77}})),
                  std::string("/faults/") + name + ": no operation has this name\n");
    EXPECT_TRUE(isAccepted(fileWith("/faults/GetErrorStringA", {{"null", true}})));
}

TEST(UnitFile, RefusesAFaultThatTheOperationCanNotShow)
{
    EXPECT_EQ(complaintAbout(fileWith("/faults/GetBuzzer", {{"code", 77}})),
              "/faults/GetBuzzer: its only fault is null\n");
    EXPECT_EQ(complaintAbout(fileWith("/faults/GetErrorStringA", {{"ignored", true}})),
              "/faults/GetErrorStringA: its only fault is null\n");
    EXPECT_EQ(complaintAbout(fileWith("/faults/Buzzer_getVolume", {{"null", true}})),
              "/faults/Buzzer_getVolume: gives no handle and no text that could be null\n");
}

TEST(UnitFile, RefusesAFaultThatIsNoneOrTwo)
{
    for (const json& fault : {json::object(),
                              {{"code", 0}},
                              {{"ignored", false}},
                              {{"skip", 1}, {"times", 1}},
                              {{"code", 77}, {"ignored", true}}})
        EXPECT_EQ(complaintAbout(fileWith("/faults/Buzzer_getVolume", fault)),
                  "/faults/Buzzer_getVolume: its fault is either a code other than 0 or ignored\n");
    for (const json& fault : {json::object(), {{"null", false}}, {{"null", true}, {"ignored", true}}})
        EXPECT_EQ(complaintAbout(fileWith("/faults/GetBuzzer", fault)),
                  "/faults/GetBuzzer: its only fault is null\n");
}

TEST(UnitFile, RefusesTheTextOfWhatIsNotACode)
{
    for (const char* code : {"", "x", "-1", "+7", "077", " 7", "7 ", "0x7", "1.5", "4294967296"})
        EXPECT_EQ(complaintAbout(fileWith(std::string("/errorTexts/") + code, "text")),
                  std::string("/errorTexts/") + code + ": not an error code\n");
    for (const char* code : {"0", "7", "4294967295"})
        EXPECT_TRUE(isAccepted(fileWith(std::string("/errorTexts/") + code, "text"))) << code;
}

TEST(UnitFile, RefusesValuesOfAnotherType)
{
    const std::string norNumber = " nor a whole number from -2147483648 to 2147483647";
    const std::string noColor = "neither red, green, blue, cyan, magenta, yellow" + norNumber;
    const struct
    {
        const char* place;
        json value;
        std::string complaint;
    } cases[] = {
        {"/about", 1, "not an object"},
        {"/about", json::array(), "not an object"},
        {"/faults", "none", "not an object"},
        {"/faults/GetBuzzer", true, "not an object"},
        {"/faults/Buzzer_setVolume/code", -1, "not a whole number from 0 to 4294967295"},
        {"/faults/Buzzer_setVolume/code", 4294967296, "not a whole number from 0 to 4294967295"},
        {"/errorTexts", json::array(), "not an object"},
        {"/errorTexts/77", 77, "not a text"},
        {"/about/unitSerial", 7, "not a text"},
        {"/about/unitSerial", nullptr, "not a text"},
        {"/eeprom/main/hex", 10, "not a text"},
        {"/addOnBoard/fitted", 1, "neither true nor false"},
        {"/addOnBoard/fitted", "true", "neither true nor false"},
        {"/boot/running", nullptr, "neither true nor false"},
        {"/adc/24V", "24", "not a number"},
        {"/adc/24V", true, "not a number"},
        {"/frontLed/frequency", nullptr, "not a number"},
        {"/buzzer/volume", "5", "not a whole number from 0 to 65535"},
        {"/buzzer/volume", 5.5, "not a whole number from 0 to 65535"},
        {"/buzzer/volume", 5.0, "not a whole number from 0 to 65535"},
        {"/buzzer/volume", true, "not a whole number from 0 to 65535"},
        {"/buzzer/volume", nullptr, "not a whole number from 0 to 65535"},
        {"/buzzer/volume", json::array({5}), "not a whole number from 0 to 65535"},
        {"/buzzer/enabled", "true", "neither true, false nor a whole number from 0 to 255"},
        {"/buzzer/enabled", nullptr, "neither true, false nor a whole number from 0 to 255"},
        {"/frontLed/color", "purple", noColor},
        {"/frontLed/color", "Red", noColor},
        {"/frontLed/color", "", noColor},
        {"/frontLed/color", false, noColor},
        {"/frontLed/color", 2147483648, noColor},
        {"/config/longPressAction", "off", "neither none, suspend, shutdown" + norNumber},
        {"/touch/profile", "pen", "neither mouse next boot, touch next boot, mouse, touch" + norNumber},
        {"/boot/nextMode", "fast", "neither normal, rescue, rescue with factory reset" + norNumber},
        {"/boot/systemMode", "fast", "neither normal, rescue" + norNumber},
        {"/can/baudrates", 250, "not a list"},
        {"/can/baudrates", nullptr, "not a list"},
        {"/backlight/filter", json::array({1, 1, 20}), "not a list of 4"},
        {"/backlight/filter", json::array({1, 1, 20, 1, 1}), "not a list of 4"},
        {"/firmware/statuses", json::object(), "not a list"},
    };
    for (const auto& [place, value, complaint] : cases)
        EXPECT_EQ(complaintAbout(fileWith(place, value)), std::string(place) + ": " + complaint + "\n");
}

TEST(UnitFile, NamesThePlaceInAList)
{
    EXPECT_EQ(complaintAbout(R"({"can": {"baudrates": [250, 250, "fast"]}})"),
              "/can/baudrates/2: not a whole number from 0 to 65535\n");
    EXPECT_EQ(complaintAbout(R"({"backlight": {"filter": [1, 1, 20, null]}})"),
              "/backlight/filter/3: not a whole number from -2147483648 to 2147483647\n");
    EXPECT_EQ(complaintAbout(R"({"firmware": {"statuses": [{"state": 1}, 2]}})"),
              "/firmware/statuses/1: not an object\n");
}

TEST(UnitFile, TakesEveryNumberThatFitsAndNoOther)
{
    const struct
    {
        const char* place;
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
    const auto fileHolding = [](std::string place, std::int64_t value)
    {
        json file = {{"backlight", {{"filter", {1, 1, 20, 1}}}},
                     {"firmware", {{"statuses", {json::object()}}}},
                     {"faults", {{"Buzzer_setVolume", {{"code", 77}}}}}};
        file[json::json_pointer(place)] = value;
        return file.dump();
    };
    for (const auto& [place, lowest, highest] : cases)
    {
        SCOPED_TRACE(place);
        EXPECT_TRUE(isAccepted(fileHolding(place, lowest)));
        EXPECT_TRUE(isAccepted(fileHolding(place, highest)));
        const auto isComplaint =
            testing::AllOf(testing::StartsWith(std::string(place) + ": "),
                           testing::EndsWith(" a whole number from " + std::to_string(lowest) + " to " +
                                             std::to_string(highest) + "\n"));
        EXPECT_THAT(complaintAbout(fileHolding(place, lowest - 1)), isComplaint);
        EXPECT_THAT(complaintAbout(fileHolding(place, highest + 1)), isComplaint);
    }
}

TEST(UnitFile, TakesTheLargestCountsAndRefusesLargerNumbers)
{
    EXPECT_TRUE(isAccepted(R"({"firmware": {"ss": {"bytes": 18446744073709551615}}})"));
    EXPECT_EQ(complaintAbout(R"({"firmware": {"ss": {"bytes": 18446744073709551616}}})"),
              "/firmware/ss/bytes: not a whole number from 0 to 18446744073709551615\n");
    EXPECT_EQ(complaintAbout(R"({"firmware": {"ss": {"bytes": -1}}})"),
              "/firmware/ss/bytes: not a whole number from 0 to 18446744073709551615\n");
}

TEST(UnitFile, TakesVersionsOfFourNumbersAndNothingElse)
{
    const CalledUnit unit(R"({"versions": {"ss": "0.12.0.255"}})");
    std::uint8_t read[4] = {};
    EXPECT_EQ(AuxVersion_getSSVersion(GetAuxVersion(), &read[0], &read[1], &read[2], &read[3]), 0u);
    EXPECT_THAT(read, testing::ElementsAre(0, 12, 0, 255));
    for (const char* version : {"", "1", "1.2.3", "1.2.3.", "1.2.3.4.5", "1.2.3.4 ", " 1.2.3.4", "1..3.4",
                                "1.2.3.256", "1.2.3.-4", "1,2,3,4", "a.b.c.d"})
        EXPECT_EQ(complaintAbout(fileWith("/versions/ss", version)),
                  "/versions/ss: not a version like 1.12.0.3\n");
    EXPECT_EQ(complaintAbout(fileWith("/versions/ss", 2.7)), "/versions/ss: not a text\n");
    EXPECT_EQ(complaintAbout(fileWith("/versions/ss", nullptr)), "/versions/ss: not a text\n");
    EXPECT_TRUE(isAccepted(fileWith("/firmware/ss/nextVersion", nullptr)));
    EXPECT_TRUE(isAccepted(fileWith("/firmware/ss/nextVersion", "1.2.3.4")));
}

TEST(UnitFile, TakesPairsOfHexadecimalDigitsAndNothingElse)
{
    for (const char* hex : {"", "00", "0aF9"})
        EXPECT_TRUE(isAccepted(fileWith("/eeprom/main/hex", hex))) << hex;
    for (const char* hex : {"0", "0aF", "0g", "00 11", "0x00"})
        EXPECT_EQ(complaintAbout(fileWith("/eeprom/main/hex", hex)),
                  "/eeprom/main/hex: not pairs of hexadecimal digits\n");
}

TEST(UnitFile, TakesNullWhereAUnitMayLackSomethingAndNowhereElse)
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
    const json made = madeUnit();
    for (const std::string& place : placesOf(made))
    {
        json file = made;
        file[json::json_pointer(place)] = nullptr;
        if (place.starts_with("/adc/") || std::ranges::find(fitted, place) != fitted.end())
            EXPECT_TRUE(isAccepted(file.dump())) << place;
        else
            EXPECT_THAT(complaintAbout(file.dump()), testing::StartsWith(place + ": "));
    }
}

TEST(UnitFile, TakesFlagsAsWordsAndAsNumbers)
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

TEST(UnitFile, TakesNamedValuesAsNamesAndAsNumbers)
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

TEST(UnitFile, WritesNamesAndFlagsAsWords)
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

TEST(UnitFile, WritesNumbersAsShortAsTheyCanBeReadBack)
{
    CalledUnit unit;
    EXPECT_EQ(FrontLED_setSignal(GetFrontLED(), 0.7, 30), 0u);
    EXPECT_EQ(Config_setHeatingTempLimit(GetConfig(), -25), 0u);
    EXPECT_THAT(readFile(unit.file()), testing::HasSubstr("\"frequency\": 0.7,"));
    EXPECT_EQ(unit["/config/heatingLimit"], -25);
}

TEST(UnitFile, TakesALeadingByteOrderMark)
{
    EXPECT_TRUE(isAccepted("\xEF\xBB\xBF{}"));
}

TEST(UnitFile, TellsEverythingOfANewUnitInOrder)
{
    const ordered_json made = madeUnit();
    std::vector<std::string> keys;
    for (const auto& [key, value] : made.items())
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"about",      "addOnBoard", "eeprom",        "versions",
                                              "diagnostic", "adc",        "digitalInputs", "lightsensor",
                                              "buzzer",     "backlight",  "frontLed",      "can",
                                              "config",     "power",      "touch",         "telematics",
                                              "firmware",   "boot",       "faults",        "errorTexts"}));
    EXPECT_EQ(made["frontLed"].dump(), R"({"frequency":1.0,"dutyCycle":50,"color":"green","pulses":1,)"
                                       R"("idleTime":0,"startup":true})");
    EXPECT_EQ(made["versions"]["api"], "2.11.0.0");
    EXPECT_EQ(made["adc"].size(), 24u);
    EXPECT_EQ(made["adc"]["1V1"], 1.102);
    EXPECT_EQ(made["can"].dump(), R"({"baudrates":[250,250,500,500]})");
    EXPECT_EQ(made["firmware"]["ss"]["nextVersion"], nullptr);
    EXPECT_EQ(made["faults"], ordered_json::object());
}

} // namespace
