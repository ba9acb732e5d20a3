// The words that a category or an option takes, in any letter case.

#include "support/category_calls.h"
#include "support/letter_case.h"
#include "support/text.h"

#include <set>

namespace
{

// `commandLine` and `output` have an @ for the word as it is typed.
struct Word
{
    std::string commandLine;
    std::string word;
    Calls work;
    std::string output;

    // Of a word that changes a setting: the key in the unit's file, and its value before and after.
    std::string key = "";
    nlohmann::json before = {};
    nlohmann::json after = {};
};

struct Category
{
    std::string name;
    std::vector<Word> words;
};

void PrintTo(const Category& category, std::ostream* stream)
{
    *stream << category.name;
}

Category backlightWords()
{
    return {"Backlight",
            {{"--backlight --automatic=@",
              "Enabled",
              {"Backlight_setAutomaticBLFilter(4, 2, 40, 2) = 0", "Backlight_startAutomaticBL() = 0"},
              "Automatic BL started.\n",
              "/backlight/automatic",
              false,
              true},
             {"--backlight --automatic=@",
              "Disabled",
              {"Backlight_stopAutomaticBL() = 0"},
              "Automatic BL stopped.\n",
              "/backlight/automatic",
              true,
              false},
             // Intentional: the same line for both.
             {"--backlight --led_dimming=@",
              "Enabled",
              {"Backlight_setLedDimming(1) = 0"},
              "LedDimming enabled.\n",
              "/backlight/ledDimming",
              false,
              true},
             {"--backlight --led_dimming=@",
              "Disabled",
              {"Backlight_setLedDimming(0) = 0"},
              "LedDimming enabled.\n",
              "/backlight/ledDimming",
              true,
              false}}};
}

Category buzzerWords()
{
    return {"Buzzer",
            {{"--buzzer --status=@",
              "Enable",
              {"Buzzer_setTrigger(1) = 0"},
              "Buzzer status set to enable.\n",
              "/buzzer/enabled",
              false,
              true},
             {"--buzzer --status=@",
              "Disable",
              {"Buzzer_setTrigger(0) = 0"},
              "Buzzer status set to disable.\n",
              "/buzzer/enabled",
              true,
              false}}};
}

Category canWords()
{
    return {"Can",
            {{"--can=@", "CAN0", {"CanSetting_getBaudrate(1, [250]) = 0"}, "CAN device 0 baud rate: 250\n"},
             {"--can=@", "CAN1", {"CanSetting_getBaudrate(2, [250]) = 0"}, "CAN device 1 baud rate: 250\n"},
             {"--can=@ --baudrate=800",
              "CAN3",
              {"CanSetting_setBaudrate(4, 800) = 0"},
              "CAN device 3 baud rate set to: 800\n"}}};
}

Category digitalIoWords()
{
    Category category = {"DigitalIo", {}};
    for (const char number : {'1', '2', '3', '4'})
        category.words.push_back({"--digitalio=@",
                                  std::string("DI") + number,
                                  {"DigIO_getDigIO([0]) = 0"},
                                  std::string("Digital input ") + number + ": 0\n"});
    return category;
}

Category ledWords()
{
    Category category = {"Led", {}};
    const char* const colors[] = {"RED", "GREEN", "BLUE", "CYAN", "MAGENTA", "YELLOW"};
    for (const char* color : colors)
        category.words.push_back(
            {"--led --color=@",
             color,
             {"FrontLED_setStandardColor(" + std::to_string(category.words.size()) + ") = 0"},
             std::string("LED color set to: ") + color + "\n",
             "/frontLed/color",
             6,
             inLowercase(color)});
    category.words.push_back({"--led --startup=@",
                              "Enable",
                              {"FrontLED_setEnabledDuringStartup(1) = 0"},
                              "LED startup set to Enable.\n",
                              "/frontLed/startup",
                              false,
                              true});
    category.words.push_back({"--led --startup=@",
                              "Disable",
                              {"FrontLED_setEnabledDuringStartup(0) = 0"},
                              "LED startup set to Disable.\n",
                              "/frontLed/startup",
                              true,
                              false});
    return category;
}

void addActions(Category& category, const std::string& option, const std::string& operation,
                const std::string& label, const std::string& key)
{
    const std::pair<const char*, const char*> actions[] = {
        {"NOACTION", "none"}, {"SUSPEND", "suspend"}, {"SHUTDOWN", "shutdown"}};
    for (int number = 0; const auto& [action, stored] : actions)
        category.words.push_back({"--onoff " + option + "=@",
                                  action,
                                  {"Config_set" + operation + "(" + std::to_string(number++) + ") = 0"},
                                  label + " set to: " + action + "\n",
                                  key,
                                  7,
                                  stored});
}

void addTriggers(Category& category)
{
    const struct
    {
        int value;
        const char* word;
        const char* description;
    } triggers[] = {
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
    for (const auto& [value, word, description] : triggers)
        category.words.push_back({"--onoff --unit_startup=@",
                                  word,
                                  {"Config_setStartupTriggerConfig(" + std::to_string(value) + ") = 0"},
                                  std::string("Startup Trigger set to: ") + description + "\n",
                                  "/config/startupTrigger",
                                  4,
                                  value});
}

Category onOffWords()
{
    Category category = {"OnOff", {}};
    addActions(category, "--shortpress", "ShortButtonPressAction", "Short press", "/config/shortPressAction");
    addActions(category, "--longpress", "LongButtonPressAction", "Long press", "/config/longPressAction");
    addActions(category, "--onoff_signal", "OnOffSigAction", "OnOff Signal", "/config/onOffSignalAction");
    addTriggers(category);
    // Intentional: the word is printed as it is typed.
    category.words.push_back({"--onoff --always_on=@",
                              "Enabled",
                              {"Config_setPowerOnStartup(1) = 0"},
                              "PowerOnStartup set to: @.\n",
                              "/config/powerOnStartup",
                              false,
                              true});
    category.words.push_back({"--onoff --always_on=@",
                              "Disabled",
                              {"Config_setPowerOnStartup(0) = 0"},
                              "PowerOnStartup set to: @.\n",
                              "/config/powerOnStartup",
                              true,
                              false});
    return category;
}

Category powerWords()
{
    Category category = {"Power",
                         {{"--power=@ --can",
                           "Current",
                           {"Power_getCanPowerStatus([1]) = 0"},
                           "Current - CAN power status: Enabled.\n"},
                          {"--power=@ --can",
                           "Startup",
                           {"Config_getCanStartupPowerConfig([1]) = 0"},
                           "Start-up - CAN power status: Enabled.\n"}}};
    const struct
    {
        std::string argument;
        std::string heading;
        std::string module;
        std::string suffix;
        std::string key;
    } modes[] = {{"current", "Current - ", "Power_", "PowerStatus", "/power/"},
                 {"startup", "Start-up - ", "Config_", "StartupPowerConfig", "/config/startupPower/"}};
    for (const auto& [argument, heading, module, suffix, key] : modes)
        for (const bool enable : {true, false})
        {
            const std::string word = enable ? "Enable" : "Disable";
            const std::string output = " power status set to " + word + ".\n";
            const std::string get = module + "getVideo" + suffix;
            const std::string set = module + "setVideo" + suffix;
            category.words.push_back(
                {"--power=" + argument + " --vchannel4=@",
                 word,
                 {get + (enable ? "([7]) = 0" : "([15]) = 0"), set + (enable ? "(15) = 0" : "(7) = 0")},
                 heading + "Video channel 4" + output,
                 key + "video",
                 enable ? 7 : 15,
                 enable ? 15 : 7});
            category.words.push_back({"--power=" + argument + " --can=@",
                                      word,
                                      {module + "setCan" + suffix + (enable ? "(1) = 0" : "(0) = 0")},
                                      heading + "CAN" + output,
                                      key + "can",
                                      !enable,
                                      enable});
        }
    category.words.push_back({"--power=current --extfan=@",
                              "Enable",
                              {"Power_setExtFanPowerStatus(1) = 0"},
                              "Current - External fan power status set to Enable.\n",
                              "/power/externalFan",
                              false,
                              true});
    category.words.push_back({"--power=current --extfan=@",
                              "Disable",
                              {"Power_setExtFanPowerStatus(0) = 0"},
                              "Current - External fan power status set to Disable.\n",
                              "/power/externalFan",
                              true,
                              false});
    return category;
}

Category telematicsWords()
{
    const struct
    {
        std::string option;
        std::string operation;
        std::string label;
        std::string key;
    } settings[] = {
        {"--wlanpower", "WLANPowerStatus", "WLAN power", "/telematics/wlan/power"},
        {"--wlanstartuppower", "WLANStartUpPowerStatus", "WLAN startup power",
         "/telematics/wlan/startupPower"},
        {"--gsmpower", "GPRSPowerStatus", "GSM power", "/telematics/gprs/power"},
        {"--gsmstartuppower", "GPRSStartUpPowerStatus", "GSM startup power", "/telematics/gprs/startupPower"},
        {"--gpspower", "GPSPowerStatus", "GPS power", "/telematics/gps/power"},
        {"--gpsstartuppower", "GPSStartUpPowerStatus", "GPS startup power", "/telematics/gps/startupPower"},
        {"--bluetoothpower", "BTPowerStatus", "Bluetooth power", "/telematics/bluetooth/power"},
        {"--bluetoothstartuppower", "BTStartUpPowerStatus", "Bluetooth startup power",
         "/telematics/bluetooth/startupPower"},
    };
    Category category = {"Telematics", {}};
    for (const auto& [option, operation, label, key] : settings)
        for (const bool enable : {true, false})
        {
            const std::string word = enable ? "ENABLED" : "DISABLED";
            category.words.push_back({"--telematics " + option + "=@",
                                      word,
                                      {"Telematics_set" + operation + (enable ? "(1) = 0" : "(0) = 0")},
                                      label + " set to: " + word + "\n",
                                      key,
                                      !enable,
                                      enable});
        }
    return category;
}

Category touchWords()
{
    Category category = {"Touch",
                         {{"--touch --mode=@",
                           "MOUSE",
                           {"TouchScreen_setMode(2) = 0"},
                           "TouchScreen profile set to: MOUSE\n",
                           "/touch/profile",
                           4,
                           "mouse"},
                          {"--touch --mode=@",
                           "TOUCH",
                           {"TouchScreen_setMode(3) = 0"},
                           "TouchScreen profile set to: TOUCH\n",
                           "/touch/profile",
                           4,
                           "touch"}}};
    const struct
    {
        std::string number;
        std::string word;
        std::string value;
        std::string key;
    } settings[] = {
        {"0", "TS_RIGHT_CLICK_TIME", "1000", "rightClickTime"},
        {"1", "TS_LOW_LEVEL", "48", "lowLevel"},
        {"2", "TS_UNTOUCHLEVEL", "32", "untouchLevel"},
        {"3", "TS_DEBOUNCE_TIME", "20", "debounceTime"},
        {"4", "TS_DEBOUNCE_TIMEOUT_TIME", "60", "debounceTimeoutTime"},
        {"5", "TS_DOUBLECLICK_MAX_CLICK_TIME", "250", "doubleClickMaxTime"},
        {"6", "TS_DOUBLE_CLICK_TIME", "500", "doubleClickTime"},
        {"7", "TS_MAX_RIGHTCLICK_DISTANCE", "24", "maxRightClickDistance"},
        {"8", "TS_USE_DEJITTER", "1", "useDejitter"},
        {"9", "TS_CALIBTATION_WIDTH", "40", "calibrationWidth"},
        {"9", "TS_CALIBRATION_WIDTH", "40", "calibrationWidth"},
        {"10", "TS_CALIBRATION_MEASUREMENTS", "8", "calibrationMeasurements"},
    };
    // Intentional: the word is printed as it is typed.
    for (const auto& [number, word, value, key] : settings)
    {
        category.words.push_back({"--touch --setting=@",
                                  word,
                                  {"TouchScreen_getAdvancedSetting(" + number + ", [" + value + "]) = 0"},
                                  "@: " + value + "\n"});
        category.words.push_back({"--touch --setting=@ --value=0",
                                  word,
                                  {"TouchScreen_setAdvancedSetting(" + number + ", 0) = 0"},
                                  "@ set to: 0\n",
                                  "/touch/" + key,
                                  1,
                                  0});
    }
    category.words.push_back({"--touch --setting=@",
                              "TS_RESTORE_DEFAULT_SETTINGS",
                              {"TouchScreen_getAdvancedSetting(11, [0]) = 0"},
                              "@: 0\n"});
    return category;
}

Category temperatureWords()
{
    return {"Temperature",
            {{"--temperature=@", "SS", {"Diagnostic_getSSTemp([31]) = 0"}, "SS temp=31\n"},
             {"--temperature=@", "PCB", {"Diagnostic_getPCBTemp([34]) = 0"}, "PCB temp=34\n"},
             {"--temperature=@", "Board", {"Diagnostic_getPMTemp(1, [39], [0]) = 0"}, "CPU BOARD temp=39\n"},
             {"--temperature=@", "CPU", {"Diagnostic_getPMTemp(0, [48], [0]) = 0"}, "CPU temp=48\n"}}};
}

Category versionWords()
{
    return {
        "Version",
        {{"--version=@",
          "FPGA",
          {"AuxVersion_getFPGAVersion([1], [4], [0], [2]) = 0"},
          "FPGAVersion: 1.4.0.2\n"},
         {"--version=@",
          "Front",
          {"AuxVersion_getFrontVersion([1], [2], [0], [0]) = 0"},
          "FrontVersion: 1.2.0.0\n"},
         {"--version=@", "SS", {"AuxVersion_getSSVersion([2], [7], [1], [0]) = 0"}, "SSVersion: 2.7.1.0\n"},
         {"--version=@",
          "QVAuxAPI",
          {"AuxVersion_getQVAuxVersion([2], [11], [0], [0]) = 0"},
          "QVAuxVersion: 2.11.0.0\n"},
         {"--version=@",
          "QVAuxDrv",
          {"AuxVersion_getQVAuxDrvVersion([2], [3], [0], [1]) = 0"},
          "QVAuxDrvVersion: 2.3.0.1\n"},
         {"--version=@",
          "OSVersion",
          {"AuxVersion_getOSVersion([3], [1], [4], [0]) = 0"},
          "OSVersion: 3.1.4.0\n"},
         // Accepted, and prints nothing.
         {"--version=@", "QVSettings", {}, ""}}};
}

Category aboutWords()
{
    const std::string addOn = "SN=T0031290;ART=20-10611-01;DATE=2025-02-04;HW=B1\n";
    const std::string main = "SN=QX2500417;PCB=P0148832;ART=90-20017-11;DATE=2025-03-18;HW=C2;REV=R4\n";
    const Calls readMain = {"QVAuxPrivate_getEepromData(0, [...], 4095) = 0"};
    const Calls readAddOn = {"QVAuxPrivate_getEepromData(1, [...], 4095) = 0"};
    return {"About",
            {{"--about=@", "RawEEPROM", readMain, main},
             {"--about=RawEEPROM --eeprom=@", "ICM", readMain, main},
             {"--about=RawEEPROM --eeprom=@", "ADDON", readAddOn, addOn}}};
}

class WordsOf : public testing::TestWithParam<Category>
{
};

INSTANTIATE_TEST_SUITE_P(Category, WordsOf,
                         testing::Values(aboutWords(), backlightWords(), buzzerWords(), canWords(),
                                         digitalIoWords(), ledWords(), onOffWords(), powerWords(),
                                         telematicsWords(), temperatureWords(), touchWords(), versionWords()),
                         [](const auto& test) { return test.param.name; });

TEST_P(WordsOf, AreAcceptedInAnyCase)
{
    for (const auto& [commandLine, word, work, output, key, before, after] : GetParam().words)
    {
        const std::set<std::string> forms = {word, inLowercase(word), inUppercase(word),
                                             withCaseSwapped(word)};
        for (const std::string& form : forms)
        {
            const std::string arguments = replaced(commandLine, "@", form);
            SCOPED_TRACE(arguments);
            Unit unit;
            if (!key.empty())
                unit.set(key, before);
            const Result result = unit.run(arguments);
            EXPECT_EQ(result.output, replaced(output, "@", form));
            EXPECT_EQ(result.calls, callsOf(arguments, work));
            EXPECT_EQ(key.empty() ? nlohmann::json() : unit[key], after);
        }
    }
}

} // namespace
