// Options of other categories and unknown options, after each category.

#include "fobrob/settings.h"
#include "support/category_calls.h"

#include <gmock/gmock.h>

namespace
{

// Command lines of a category with the same output. The diagnostic is that of getopt_long.
struct Group
{
    std::vector<const char*> commandLines;
    std::string output;
    std::string diagnostic = ""; // empty if there is none
};

struct Category
{
    const char* name;
    std::vector<Group> withoutWork; // nothing is read or changed
    std::vector<Group> withWork;    // the category's own options are still processed
};

const char* const unknown = "unrecognized option '--bogus'";
const std::string invalidArgument = "Invalid argument\n";
const std::string aboutError = "Error: Version should not take any more options.\n";
const std::string aboutNoReport =
    "Invalid argument: Category argument could not be found. Valid are: EEPROM, Diagnostic and ADC.\n";
const std::string canError = "Invalid option: Only --baudrate and --help are valid options.\n";
const std::string digitalIoError = "Error: Digital IO should not take any more options\n";
const std::string heaterError = "Invalid argument: Option is required (--temperature)\n";
const std::string temperatureError = "Error: Version should not take any more options\n";
const std::string versionError = "Error: Version does not take any more options.\n";

const std::string allInputs =
    "Digital input 1: 0\nDigital input 2: 0\nDigital input 3: 0\nDigital input 4: 0\n";
const std::string allTemperatures = "SS temp=31\nPCB temp=34\nCPU temp=48\nCPU BOARD temp=39\n";
const std::string allVersions = "fobrob 2.9.0.0\nFPGAVersion: 1.4.0.2\nFrontVersion: 1.2.0.0\n"
                                "SSVersion: 2.7.1.0\nQVAuxVersion: 2.11.0.0\nQVAuxDrvVersion: 2.3.0.1\n"
                                "OSVersion: 3.1.4.0\n";

const Category categories[] = {
    {"About", {{{"--about --frequency", "--about=xyz --about=ADC"}, aboutError + aboutNoReport}}, {}},
    {"Backlight",
     {{{"--backlight --frequency", "--backlight --backlight", "--backlight --led", "--backlight -h",
        "--backlight -v", "--backlight --frequency --volume -v"},
       invalidArgument},
      {{"--backlight --bogus"}, invalidArgument, unknown},
      {{"--backlight --help=now"}, invalidArgument, "option '--help' doesn't allow an argument"}},
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
       invalidArgument},
      {{"--buzzer --bogus"}, invalidArgument, unknown},
      {{"--buzzer --Frequency"}, invalidArgument, "unrecognized option '--Frequency'"},
      {{"--buzzer -x"}, invalidArgument, "invalid option -- 'x'"},
      {{"--buzzer --l"}, invalidArgument, "option '--l' is ambiguous"},
      {{"--buzzer --force=1"}, invalidArgument, "option '--force' doesn't allow an argument"},
      {{"--buzzer --setting"}, invalidArgument, "option '--setting' requires an argument"}},
     {{{"--buzzer --illuminance --volume"}, "Buzzer Volume: 1000\n"},
      {{"--buzzer --status -h"}, "Buzzer status:  Disabled.\n"},
      {{"--buzzer --volume=40 --bogus", "--buzzer --bogus --volume=40"},
       "Buzzer volume set to: 40\n",
       unknown}}},
    {"Can",
     {},
     {{{"--can=CAN1 --volume", "--can=CAN1 --can=CAN0", "--can=CAN1 --frequency=5", "--can=CAN1 -h",
        "--can=CAN1 -v"},
       canError + "CAN device 1 baud rate: 250\n"},
      {{"--can=CAN1 --volume -h"}, canError + canError + "CAN device 1 baud rate: 250\n"},
      {{"--can=CAN1 --volume --baudrate=500", "--can=CAN1 --baudrate=500 --volume"},
       canError + "CAN device 1 baud rate set to: 500\n"},
      {{"--can=CAN0 --bogus"}, canError + "CAN device 0 baud rate: 250\n", unknown},
      {{"--can=CAN0 --bogus --baudrate=500"}, canError + "CAN device 0 baud rate set to: 500\n", unknown}}},
    {"DigitalIo",
     {{{"--digitalio=DI5 --volume"}, digitalIoError + invalidArgument}},
     {{{"--digitalio --volume"}, digitalIoError + allInputs},
      {{"--digitalio --volume=3 -h -v"}, digitalIoError + digitalIoError + digitalIoError + allInputs},
      {{"--digitalio=DI2 --digitalio=DI3"}, digitalIoError + "Digital input 2: 0\n"},
      {{"--digitalio=DI1 --bogus"}, digitalIoError + "Digital input 1: 0\n", unknown}}},
    {"Heater",
     {{{"--heater --frequency", "--heater --heater", "--heater --power=Enable", "--heater -h", "--heater -v"},
       heaterError + heaterError},
      {{"--heater --frequency -h"}, heaterError + heaterError + heaterError},
      {{"--heater --bogus"}, heaterError + heaterError, unknown},
      {{"--heater -v --temperature=6"},
       heaterError + "Invalid argument: The temperature is not within allowed range (-25 C - 5 C)\n"}},
     {{{"--heater --frequency --temperature"}, heaterError + "Heating limit: -10 C.\n"},
      {{"--heater --temperature=3 --frequency"}, heaterError + "Heater temperature set to: 3 C.\n"},
      {{"--heater --bogus --temperature"}, heaterError + "Heating limit: -10 C.\n", unknown}}},
    {"Led",
     {{{"--led --volume", "--led --led", "--led --intensity=5", "--led -h", "--led -v",
        "--led --volume -h -v"},
       invalidArgument},
      {{"--led --bogus"}, invalidArgument, unknown},
      {{"--led --color=black --volume"}, "Invalid argument: The color argument is not valid.\n"}},
     {{{"--led --volume=9 --pulses"}, "LED pulses: 1\n"},
      {{"--led --pulses=2 -v"}, "LED pulses set to: 2\n"},
      {{"--led --bogus --pulses"}, "LED pulses: 1\n", unknown},
      {{"--led --color=blue --bogus"}, "LED color set to: BLUE\n", unknown}}},
    {"Lightsensor",
     {{{"--lightsensor --frequency", "--lightsensor -h", "--lightsensor -v",
        "--lightsensor --frequency --wlanpower --rescue_mode_next_boot -v"},
       invalidArgument},
      {{"--lightsensor --bogus"}, invalidArgument, unknown},
      {{"--lightsensor --illuminance=5"},
       invalidArgument,
       "option '--illuminance' doesn't allow an argument"}},
     {{{"--lightsensor --illuminance --frequency", "--lightsensor --frequency --illuminance",
        "--lightsensor --illuminance -h", "--lightsensor -v --illuminance"},
       "Illuminance: 320\n"},
      {{"--lightsensor --bogus --illuminance"}, "Illuminance: 320\n", unknown}}},
    {"OnOff",
     {{{"--onoff --frequency", "--onoff --startup=Enable", "--onoff -h", "--onoff -v",
        "--onoff --frequency --volume"},
       invalidArgument},
      {{"--onoff --shotpress=SUSPEND"}, invalidArgument, "unrecognized option '--shotpress=SUSPEND'"}},
     {{{"--onoff --bogus --shortpress"}, "ShortPressAction: SUSPEND\n", unknown}}},
    {"Power",
     {{{"--power=current --frequency --volume=3 -h -v", "--power=startup --frequency --volume=3 -h -v"},
       invalidArgument + invalidArgument + invalidArgument + invalidArgument},
      {{"--power=current --bogus", "--power=startup --bogus"}, invalidArgument, unknown},
      {{"--power --frequency"}, invalidArgument + "Invalid argument: Current or Startup must be selected.\n"},
      {{"--power=now --bogus --can"},
       invalidArgument + "Invalid argument: Current or Startup must be selected.\n",
       unknown}},
     {{{"--power=current --can --frequency", "--power=current --frequency --can"},
       invalidArgument + "Current - CAN power status: Enabled.\n"},
      {{"--power=startup --can --frequency", "--power=startup --frequency --can"},
       invalidArgument + "Start-up - CAN power status: Enabled.\n"},
      {{"--power=current --bogus --can=Disable"},
       invalidArgument + "Current - CAN power status set to Disable.\n",
       unknown},
      {{"--power=startup --bogus --can=Disable"},
       invalidArgument + "Start-up - CAN power status set to Disable.\n",
       unknown}}},
    {"Telematics",
     {{{"--telematics --frequency", "--telematics --power=current", "--telematics -h", "--telematics -v",
        "--telematics --frequency --volume"},
       invalidArgument},
      {{"--telematics --bogus"}, invalidArgument, unknown}},
     {{{"--telematics --bogus --gpspower=DISABLED"}, "GPS power set to: DISABLED\n", unknown}}},
    {"Temperature",
     {{{"--temperature=GPU --volume"},
       temperatureError + "Invalid argument: Could not find the specified argument.\n"}},
     {{{"--temperature --volume"}, temperatureError + allTemperatures},
      {{"--temperature -v --frequency=3 -h"},
       temperatureError + temperatureError + temperatureError + allTemperatures},
      {{"--temperature=PCB --temperature=SS"}, temperatureError + "PCB temp=34\n"},
      {{"--temperature=SS --bogus"}, temperatureError + "SS temp=31\n", unknown}}},
    {"Touch",
     {{{"--touch --frequency", "--touch -h", "--touch -v", "--touch --value=5 --frequency",
        "--touch --frequency --value"},
       invalidArgument},
      {{"--touch --bogus"}, invalidArgument, unknown}},
     {{{"--touch --frequency --mode -h"}, "TouchScreen Profile: TOUCH\n"},
      {{"--touch --setting=TS_LOW_LEVEL --frequency"}, "TS_LOW_LEVEL: 48\n"},
      {{"--touch --bogus --mode"}, "TouchScreen Profile: TOUCH\n", unknown}}},
    {"Version",
     {{{"--version=XYZ --volume"}, versionError + invalidArgument},
      {{"--version=QVSettings --volume"}, versionError}},
     {{{"--version --frequency"}, versionError + allVersions},
      {{"--version -h --volume=3 -v"}, versionError + versionError + versionError + allVersions},
      {{"--version=SS --version=FPGA"}, versionError + "SSVersion: 2.7.1.0\n"},
      {{"--version=FPGA --bogus"}, versionError + "FPGAVersion: 1.4.0.2\n", unknown}}},
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

TEST_P(OtherOptionsAfter, AreRejectedWithoutReadingOrChangingAnything)
{
    for (const Group& group : GetParam().withoutWork)
        for (const std::string commandLine : group.commandLines)
        {
            SCOPED_TRACE(commandLine);
            EXPECT_EQ(runExpecting(commandLine, group).calls, callsOf(commandLine));
        }
}

TEST_P(OtherOptionsAfter, DoNotPreventTheCategoryFromProcessingItsOwn)
{
    for (const Group& group : GetParam().withWork)
        for (const std::string commandLine : group.commandLines)
        {
            SCOPED_TRACE(commandLine);
            EXPECT_NE(runExpecting(commandLine, group).calls, callsOf(commandLine));
        }
}

class OtherOptionsWith : public testing::TestWithParam<SettingsCategory>
{
};

INSTANTIATE_TEST_SUITE_P(Category, OtherOptionsWith, testing::ValuesIn(settingsCategories()),
                         [](const auto& test) { return test.param.name; });

// Returns what the category prints for another option if one of its own is also given.
std::string errorFor(const std::string& category)
{
    return category.starts_with("--power") ? invalidArgument : category == "--heater" ? heaterError : "";
}

TEST_P(OtherOptionsWith, EachOptionAreIgnored)
{
    const auto& [name, category, keys, settings, repeated, reboot] = GetParam();
    const std::string error = errorFor(category);
    Unit unit(keys);
    for (const Setting& setting : settings)
    {
        SCOPED_TRACE(setting.option);
        EXPECT_EQ(unit.run(category + " --illuminance " + setting.option).output,
                  error + setting.read.output);
        EXPECT_EQ(unit.run(category + " " + setting.option + " --list -h").output,
                  error + error + setting.read.output);
    }
}

} // namespace
