// The help screen of each category. The expected texts are in tests/data/help/.

#include "support/category_calls.h"

#include <gmock/gmock.h>

namespace
{

struct Category
{
    const char* name; // of the option and of the file
    std::vector<const char*> commandLines;

    // Command lines with options that are rejected before --help is parsed, and the line that is printed for
    // them.
    std::vector<const char*> rejectedFirst = {};
    const char* error = "";
};

const Category categories[] = {
    {"about",
     {"--about --help", "--about=EEPROM --help", "--about=xyz --help",
      "--about=RawEEPROM --eeprom=ADDON --help --frequency"},
     {"--about=ADC --volume --help --frequency"},
     "Error: Version should not take any more options.\n"},
    {"advanced",
     {"--advanced --help", "--advanced --shutdown --help", "--advanced --system_mode --help",
      "--advanced --update=SS --filepath=/x.hex --help", "--advanced --help --filepath=x.hex",
      "--advanced --frequency --help", "--advanced word --help", "--advanced --force --help --shutdown"}},
    {"backlight",
     {"--backlight --help", "--backlight --intensity=9 --help", "--backlight --help --intensity=9",
      "--backlight --frequency --help", "--backlight --automatic=abc --led_dimming=Enabled --help"}},
    {"buzzer",
     {"--buzzer --help", "--buzzer --help --volume=10", "--buzzer --volume=10 --help",
      "--buzzer --illuminance --help", "--buzzer --help --bogus"}},
    {"can",
     {"--can --help", "--can=CAN1 --baudrate=250 --help", "--can=CAN1 --help --baudrate=250",
      "--can=CAN9 --help --volume"},
     {"--can --volume --help"},
     "Invalid option: Only --baudrate and --help are valid options.\n"},
    {"digitalio",
     {"--digitalio --help", "--digitalio=DI1 --help", "--digitalio=DI5 --help"},
     {"--digitalio --volume --help --frequency"},
     "Error: Digital IO should not take any more options\n"},
    {"heater",
     {"--heater --help", "--heater --temperature=3 --help", "--heater --help --temperature=3",
      "--heater --help --frequency"},
     {"--heater --frequency --help"},
     "Invalid argument: Option is required (--temperature)\n"},
    {"led",
     {"--led --help", "--led --pulses=-3 --help", "--led --help --pulses=9", "--led --volume --help",
      "--led --frequency --color=red --help"}},
    {"lightsensor",
     {"--lightsensor --help", "--lightsensor --help --bogus", "--lightsensor --frequency --help",
      "--lightsensor --illuminance --help"}},
    {"onoff",
     {"--onoff --help", "--onoff --shortpress=SHUTDOWN --help", "--onoff --help --longpress_time=1",
      "--onoff --frequency --help"}},
    {"power",
     {"--power --help", "--power=now --help", "--power=current --help", "--power=startup --help",
      "--power=current --can=Disable --help --vchannel1=Disable",
      "--power=startup --can=Disable --help --vchannel1=Disable"},
     {"--power=current --frequency --help", "--power=startup --frequency --help"},
     "Invalid argument\n"},
    {"telematics",
     {"--telematics --help", "--telematics --wlanpower=DISABLED --help", "--telematics --help --gpspower",
      "--telematics --frequency --help"}},
    {"temperature",
     {"--temperature --help", "--temperature=SS --help", "--temperature=GPU --help"},
     {"--temperature --volume --help --frequency"},
     "Error: Version should not take any more options\n"},
    {"touch",
     {"--touch --help", "--touch --mode=mouse --help", "--touch --help --mode=mouse",
      "--touch --setting=bogus --help", "--touch --frequency --help"}},
    {"version",
     {"--version --help", "--version=FPGA --help", "--version=XYZ --help"},
     {"--version --volume --help --frequency"},
     "Error: Version does not take any more options.\n"},
};

void PrintTo(const Category& category, std::ostream* stream)
{
    *stream << category.name;
}

class HelpOf : public testing::TestWithParam<Category>
{
protected:
    const std::string help = helpScreen(GetParam().name);
};

INSTANTIATE_TEST_SUITE_P(Category, HelpOf, testing::ValuesIn(categories),
                         [](const auto& test) { return test.param.name; });

// Handles are not released: the process exits immediately.
void expectHelpInsteadOfWork(const std::string& commandLine, const std::string& output)
{
    SCOPED_TRACE(commandLine);
    Unit unit;
    const Result result = unit.run(commandLine);
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(result.calls, callsBeforeOptions(commandLine));
    EXPECT_EQ(unit.content(), nlohmann::json::object());
}

TEST_P(HelpOf, IsPrintedInsteadOfPerformingTheCommand)
{
    for (const char* commandLine : GetParam().commandLines)
        expectHelpInsteadOfWork(commandLine, help);
}

TEST_P(HelpOf, IsPrintedAfterTheErrorsOfOtherOptions)
{
    for (const char* commandLine : GetParam().rejectedFirst)
        expectHelpInsteadOfWork(commandLine, GetParam().error + help);
}

TEST_P(HelpOf, IsPrintedAfterTheDiagnosticOfAnUnknownOption)
{
    const std::string commandLine = std::string("--") + GetParam().name + " --bogus --help";
    Unit unit;
    const Result result = unit.runExpectingErrors(commandLine);
    EXPECT_EQ(result.output, GetParam().error + help);
    EXPECT_EQ(result.calls, callsBeforeOptions(commandLine));
    EXPECT_THAT(result.errors, testing::HasSubstr("unrecognized option '--bogus'"));
}

} // namespace
