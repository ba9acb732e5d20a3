// Words in any letter case. Those of --onoff, --telematics and --touch are tested in the files of their
// categories.

#include "support/category_calls.h"
#include "support/letter_case.h"
#include "support/text.h"

#include <set>

namespace
{

// In `commandLine` and `output`, @ is replaced by the word as typed.
struct Word
{
    std::string commandLine;
    std::string word;
    Calls work;
    std::string output;

    // If the word changes a setting: its path in the unit's file, and its value before and after.
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
             // Intentional: the line is the same for both words.
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
         // Intentional: accepted, but prints nothing.
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
                                         digitalIoWords(), ledWords(), powerWords(), temperatureWords(),
                                         versionWords()),
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
