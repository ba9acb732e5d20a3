// Options of another category and options that do not exist, after each category.

#include "fobrob/settings.h"
#include "support/category_calls.h"

#include <gmock/gmock.h>

namespace
{

// What some command lines of a category have in common. Those with a diagnostic draw it from getopt_long.
struct Group
{
    std::vector<const char*> commandLines;
    std::string output;
    std::string diagnostic = "";
};

struct Category
{
    const char* name;
    std::vector<Group> withoutWork; // nothing is read or changed
    std::vector<Group> withWork;    // the category's own options are processed all the same
};

const char* const unknown = "unrecognized option '--bogus'";
const std::string refused = "Invalid argument\n";
const std::string aboutRefusal = "Error: Version should not take any more options.\n";
const std::string aboutNoReport =
    "Invalid argument: Category argument could not be found. Valid are: EEPROM, Diagnostic and ADC.\n";
const std::string canRefusal = "Invalid option: Only --baudrate and --help are valid options.\n";
const std::string digitalIoRefusal = "Error: Digital IO should not take any more options\n";
const std::string heaterRefusal = "Invalid argument: Option is required (--temperature)\n";
const std::string temperatureRefusal = "Error: Version should not take any more options\n";
const std::string versionRefusal = "Error: Version does not take any more options.\n";

const std::string allInputs =
    "Digital input 1: 0\nDigital input 2: 0\nDigital input 3: 0\nDigital input 4: 0\n";
const std::string allTemperatures = "SS temp=31\nPCB temp=34\nCPU temp=48\nCPU BOARD temp=39\n";
const std::string allVersions = "fobrob 2.9.0.0\nFPGAVersion: 1.4.0.2\nFrontVersion: 1.2.0.0\n"
                                "SSVersion: 2.7.1.0\nQVAuxVersion: 2.11.0.0\nQVAuxDrvVersion: 2.3.0.1\n"
                                "OSVersion: 3.1.4.0\n";

const Category categories[] = {
    {"About", {{{"--about --frequency", "--about=xyz --about=ADC"}, aboutRefusal + aboutNoReport}}, {}},
    {"Backlight",
     {{{"--backlight --frequency", "--backlight --backlight", "--backlight --led", "--backlight -h",
        "--backlight -v", "--backlight --frequency --volume -v"},
       refused},
      {{"--backlight --bogus"}, refused, unknown},
      {{"--backlight --help=now"}, refused, "option '--help' doesn't allow an argument"}},
     {{{"--backlight --frequency --automatic"}, "Automatic BL: Disabled\n"},
      {{"--backlight --intensity --frequency=5"}, "Intensity: 200\n"},
      {{"--backlight -h --led_dimming -v"}, "LedDimming: Disabled\n"},
      {{"--backlight --bogus --intensity=9"}, "Backlight intensity set to: 9\n", unknown},
      {{"--backlight --led_dimming --bogus"}, "LedDimming: Disabled\n", unknown},
      {{"--backlight --help=now --intensity"},
       "Intensity: 200\n",
       "option '--help' doesn't allow an argument"}}},
    {"Buzzer",
     {{{"--buzzer --illuminance", "--buzzer --led", "--buzzer --baudrate=5", "--buzzer --buzzer",
        "--buzzer -h", "--buzzer -v", "--buzzer -hv", "--buzzer --illuminance --led -v"},
       refused},
      {{"--buzzer --bogus"}, refused, unknown},
      {{"--buzzer --Frequency"}, refused, "unrecognized option '--Frequency'"},
      {{"--buzzer -x"}, refused, "invalid option -- 'x'"},
      {{"--buzzer --l"}, refused, "option '--l' is ambiguous"},
      {{"--buzzer --force=1"}, refused, "option '--force' doesn't allow an argument"},
      {{"--buzzer --setting"}, refused, "option '--setting' requires an argument"}},
     {{{"--buzzer --illuminance --volume"}, "Buzzer Volume: 1000\n"},
      {{"--buzzer --status -h"}, "Buzzer status:  Disabled.\n"},
      {{"--buzzer --volume=40 --bogus", "--buzzer --bogus --volume=40"},
       "Buzzer volume set to: 40\n",
       unknown}}},
    {"Can",
     {},
     {{{"--can=CAN1 --volume", "--can=CAN1 --can=CAN0", "--can=CAN1 --frequency=5", "--can=CAN1 -h",
        "--can=CAN1 -v"},
       canRefusal + "CAN device 1 baud rate: 250\n"},
      {{"--can=CAN1 --volume -h"}, canRefusal + canRefusal + "CAN device 1 baud rate: 250\n"},
      {{"--can=CAN1 --volume --baudrate=500", "--can=CAN1 --baudrate=500 --volume"},
       canRefusal + "CAN device 1 baud rate set to: 500\n"},
      {{"--can=CAN0 --bogus"}, canRefusal + "CAN device 0 baud rate: 250\n", unknown},
      {{"--can=CAN0 --bogus --baudrate=500"}, canRefusal + "CAN device 0 baud rate set to: 500\n", unknown}}},
    {"DigitalIo",
     {{{"--digitalio=DI5 --volume"}, digitalIoRefusal + refused}},
     {{{"--digitalio --volume"}, digitalIoRefusal + allInputs},
      {{"--digitalio --volume=3 -h -v"}, digitalIoRefusal + digitalIoRefusal + digitalIoRefusal + allInputs},
      {{"--digitalio=DI2 --digitalio=DI3"}, digitalIoRefusal + "Digital input 2: 0\n"},
      {{"--digitalio=DI1 --bogus"}, digitalIoRefusal + "Digital input 1: 0\n", unknown}}},
    {"Heater",
     {{{"--heater --frequency", "--heater --heater", "--heater --power=Enable", "--heater -h", "--heater -v"},
       heaterRefusal + heaterRefusal},
      {{"--heater --frequency -h"}, heaterRefusal + heaterRefusal + heaterRefusal},
      {{"--heater --bogus"}, heaterRefusal + heaterRefusal, unknown},
      {{"--heater -v --temperature=6"},
       heaterRefusal + "Invalid argument: The temperature is not within allowed range (-25 C - 5 C)\n"}},
     {{{"--heater --frequency --temperature"}, heaterRefusal + "Heating limit: -10 C.\n"},
      {{"--heater --temperature=3 --frequency"}, heaterRefusal + "Heater temperature set to: 3 C.\n"},
      {{"--heater --bogus --temperature"}, heaterRefusal + "Heating limit: -10 C.\n", unknown}}},
    {"Led",
     {{{"--led --volume", "--led --led", "--led --intensity=5", "--led -h", "--led -v",
        "--led --volume -h -v"},
       refused},
      {{"--led --bogus"}, refused, unknown},
      {{"--led --color=black --volume"}, "Invalid argument: The color argument is not valid.\n"}},
     {{{"--led --volume=9 --pulses"}, "LED pulses: 1\n"},
      {{"--led --pulses=2 -v"}, "LED pulses set to: 2\n"},
      {{"--led --bogus --pulses"}, "LED pulses: 1\n", unknown},
      {{"--led --color=blue --bogus"}, "LED color set to: BLUE\n", unknown}}},
    {"Lightsensor",
     {{{"--lightsensor --frequency", "--lightsensor -h", "--lightsensor -v",
        "--lightsensor --frequency --wlanpower --rescue_mode_next_boot -v"},
       refused},
      {{"--lightsensor --bogus"}, refused, unknown},
      {{"--lightsensor --illuminance=5"}, refused, "option '--illuminance' doesn't allow an argument"}},
     {{{"--lightsensor --illuminance --frequency", "--lightsensor --frequency --illuminance",
        "--lightsensor --illuminance -h", "--lightsensor -v --illuminance"},
       "Illuminance: 320\n"},
      {{"--lightsensor --bogus --illuminance"}, "Illuminance: 320\n", unknown}}},
    {"OnOff",
     {{{"--onoff --frequency", "--onoff --startup=Enable", "--onoff -h", "--onoff -v",
        "--onoff --frequency --volume"},
       refused},
      {{"--onoff --shotpress=SUSPEND"}, refused, "unrecognized option '--shotpress=SUSPEND'"}},
     {{{"--onoff --bogus --shortpress"}, "ShortPressAction: SUSPEND\n", unknown}}},
    {"Power",
     {{{"--power=current --frequency --volume=3 -h -v", "--power=startup --frequency --volume=3 -h -v"},
       refused + refused + refused + refused},
      {{"--power=current --bogus", "--power=startup --bogus"}, refused, unknown},
      {{"--power --frequency"}, refused + "Invalid argument: Current or Startup must be selected.\n"},
      {{"--power=now --bogus --can"},
       refused + "Invalid argument: Current or Startup must be selected.\n",
       unknown}},
     {{{"--power=current --can --frequency", "--power=current --frequency --can"},
       refused + "Current - CAN power status: Enabled.\n"},
      {{"--power=startup --can --frequency", "--power=startup --frequency --can"},
       refused + "Start-up - CAN power status: Enabled.\n"},
      {{"--power=current --bogus --can=Disable"},
       refused + "Current - CAN power status set to Disable.\n",
       unknown},
      {{"--power=startup --bogus --can=Disable"},
       refused + "Start-up - CAN power status set to Disable.\n",
       unknown}}},
    {"Telematics",
     {{{"--telematics --frequency", "--telematics --power=current", "--telematics -h", "--telematics -v",
        "--telematics --frequency --volume"},
       refused},
      {{"--telematics --bogus"}, refused, unknown}},
     {{{"--telematics --bogus --gpspower=DISABLED"}, "GPS power set to: DISABLED\n", unknown}}},
    {"Temperature",
     {{{"--temperature=GPU --volume"},
       temperatureRefusal + "Invalid argument: Could not find the specified argument.\n"}},
     {{{"--temperature --volume"}, temperatureRefusal + allTemperatures},
      {{"--temperature -v --frequency=3 -h"},
       temperatureRefusal + temperatureRefusal + temperatureRefusal + allTemperatures},
      {{"--temperature=PCB --temperature=SS"}, temperatureRefusal + "PCB temp=34\n"},
      {{"--temperature=SS --bogus"}, temperatureRefusal + "SS temp=31\n", unknown}}},
    {"Touch",
     {{{"--touch --frequency", "--touch -h", "--touch -v", "--touch --value=5 --frequency",
        "--touch --frequency --value"},
       refused},
      {{"--touch --bogus"}, refused, unknown}},
     {{{"--touch --frequency --mode -h"}, "TouchScreen Profile: TOUCH\n"},
      {{"--touch --setting=TS_LOW_LEVEL --frequency"}, "TS_LOW_LEVEL: 48\n"},
      {{"--touch --bogus --mode"}, "TouchScreen Profile: TOUCH\n", unknown}}},
    {"Version",
     {{{"--version=XYZ --volume"}, versionRefusal + refused},
      {{"--version=QVSettings --volume"}, versionRefusal}},
     {{{"--version --frequency"}, versionRefusal + allVersions},
      {{"--version -h --volume=3 -v"}, versionRefusal + versionRefusal + versionRefusal + allVersions},
      {{"--version=SS --version=FPGA"}, versionRefusal + "SSVersion: 2.7.1.0\n"},
      {{"--version=FPGA --bogus"}, versionRefusal + "FPGAVersion: 1.4.0.2\n", unknown}}},
};

void PrintTo(const Category& category, std::ostream* stream)
{
    *stream << category.name;
}

class OtherOptionsAfter : public testing::TestWithParam<Category>
{
};

INSTANTIATE_TEST_SUITE_P(Category, OtherOptionsAfter, testing::ValuesIn(categories),
                         [](const auto& test) { return test.param.name; });

Result runExpecting(const std::string& commandLine, const Group& group)
{
    Unit unit;
    const Result result =
        group.diagnostic.empty() ? unit.run(commandLine) : unit.runExpectingErrors(commandLine);
    EXPECT_EQ(result.output, group.output);
    EXPECT_THAT(result.errors, testing::HasSubstr(group.diagnostic));
    return result;
}

TEST_P(OtherOptionsAfter, AreRefusedWithoutReadingOrChangingAnything)
{
    for (const Group& group : GetParam().withoutWork)
        for (const std::string commandLine : group.commandLines)
        {
            SCOPED_TRACE(commandLine);
            EXPECT_EQ(runExpecting(commandLine, group).calls, callsOf(commandLine));
        }
}

TEST_P(OtherOptionsAfter, DoNotKeepTheCategoryFromItsWork)
{
    for (const Group& group : GetParam().withWork)
        for (const std::string commandLine : group.commandLines)
        {
            SCOPED_TRACE(commandLine);
            EXPECT_NE(runExpecting(commandLine, group).calls, callsOf(commandLine));
        }
}

class OtherOptionsBeside : public testing::TestWithParam<SettingsCategory>
{
};

INSTANTIATE_TEST_SUITE_P(Category, OtherOptionsBeside, testing::ValuesIn(settingsCategories()),
                         [](const auto& test) { return test.param.name; });

// What a category prints for another option beside its own.
std::string refusalOf(const std::string& category)
{
    return category.starts_with("--power") ? refused : category == "--heater" ? heaterRefusal : "";
}

TEST_P(OtherOptionsBeside, EachOptionAreIgnored)
{
    const auto& [name, category, keys, settings, repeated, reboot] = GetParam();
    const std::string refusal = refusalOf(category);
    Unit unit(keys);
    for (const Setting& setting : settings)
    {
        SCOPED_TRACE(setting.option);
        EXPECT_EQ(unit.run(category + " --illuminance " + setting.option).output,
                  refusal + setting.read.output);
        EXPECT_EQ(unit.run(category + " " + setting.option + " --list -h").output,
                  refusal + refusal + setting.read.output);
    }
}

} // namespace
