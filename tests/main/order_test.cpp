// What comes before what: the lines of the program among its calls of the device.

#include "support/firmware_unit.h"

namespace
{

// The program with its call trace on standard output.
Command tracedAmongItsLines(const Unit& unit, const std::string& arguments)
{
    Command command = programOn(unit.file(), arguments);
    command.environment["QVAUX_TRACE"] = "/dev/stdout";
    return command;
}

std::string callsAndLines(const std::string& arguments, const Unit& unit = Unit())
{
    return runCommand(tracedAmongItsLines(unit, arguments)).output;
}

// The same with standard error in it.
std::string callsLinesAndDiagnostics(const std::string& arguments)
{
    const Unit unit;
    return runCommand(throughShell("exec \"$@\" 2>&1", tracedAmongItsLines(unit, arguments))).output;
}

TEST(Order, TheLightSensorIsHeldUntilTheRefusalIsPrinted)
{
    EXPECT_EQ(callsAndLines("--lightsensor --volume"),
              lines({"GetLightsensor() = handle", "Invalid argument", "Lightsensor_release() = 0"}));
}

TEST(Order, TheVersionsAreHeldBeforeTheOptionsAreRead)
{
    EXPECT_EQ(callsAndLines("--version=FPGA --volume"),
              lines({"GetAuxVersion() = handle", "Error: Version does not take any more options.",
                     "AuxVersion_getFPGAVersion([1], [4], [0], [2]) = 0", "FPGAVersion: 1.4.0.2",
                     "AuxVersion_release() = 0"}));
}

TEST(Order, EveryTemperatureIsPrintedBeforeTheNextIsRead)
{
    EXPECT_EQ(
        callsAndLines("--temperature --volume"),
        lines({"GetDiagnostic() = handle", "Error: Version should not take any more options",
               "Diagnostic_getSSTemp([31]) = 0", "SS temp=31", "Diagnostic_getPCBTemp([34]) = 0",
               "PCB temp=34", "Diagnostic_getPMTemp(0, [48], [0]) = 0", "CPU temp=48",
               "Diagnostic_getPMTemp(1, [39], [0]) = 0", "CPU BOARD temp=39", "Diagnostic_release() = 0"}));
}

TEST(Order, EveryInputIsPrintedBeforeTheNextIsRead)
{
    EXPECT_EQ(callsAndLines("--digitalio --volume"),
              lines({"GetDigIO() = handle", "Error: Digital IO should not take any more options",
                     "DigIO_getDigIO([0]) = 0", "Digital input 1: 0", "DigIO_getDigIO([0]) = 0",
                     "Digital input 2: 0", "DigIO_getDigIO([0]) = 0", "Digital input 3: 0",
                     "DigIO_getDigIO([0]) = 0", "Digital input 4: 0", "DigIO_release() = 0"}));
}

TEST(Order, TheReportsTakeTheirHandlesWhenTheOptionsAreRead)
{
    const std::string refusal = "Invalid argument: Category argument could not be found. Valid are: EEPROM, "
                                "Diagnostic and ADC.";
    EXPECT_EQ(callsAndLines("--about --volume"),
              lines({"Error: Version should not take any more options.", "GetAdc() = handle",
                     "GetAbout() = handle", "GetDiagnostic() = handle", "GetQVAuxPrivate() = handle", refusal,
                     "QVAuxPrivate_release() = 0", "Adc_release() = 0", "Diagnostic_release() = 0",
                     "About_release() = 0"}));
}

TEST(Order, TheShutdownIsAnnouncedBeforeItIsDone)
{
    EXPECT_EQ(
        callsAndLines("--advanced --shutdown"),
        lines({"GetFirmwareUpgrade() = handle", "GetAbout() = handle", "Shutdown the unit",
               "FirmwareUpgrade_shutDown() = 0", "About_release() = 0", "FirmwareUpgrade_release() = 0"}));
}

TEST(Order, AFactoryResetReleasesBeforeItTells)
{
    EXPECT_EQ(callsAndLines("--advanced --factory"),
              lines({"GetFirmwareUpgrade() = handle", "GetAbout() = handle", "GetQVAuxPrivate() = handle",
                     "QVAuxPrivate_writeSsRegister(3, 101, 1) = 0", "QVAuxPrivate_release() = 0",
                     "Factory reset completed.", "About_release() = 0", "FirmwareUpgrade_release() = 0"}));
}

TEST(Order, TheDiagnosticOfAnOptionComesBeforeItsRefusal)
{
    EXPECT_TRUE(
        callsLinesAndDiagnostics("--about --bogus --volume")
            .starts_with(lines({programPath() + ": unrecognized option '--bogus'",
                                "Error: Version should not take any more options.",
                                "Error: Version should not take any more options.", "GetAdc() = handle"})));
}

TEST(Order, TheModulesAreObtainedBeforeTheOptionsAreRead)
{
    const struct
    {
        std::string category;
        std::string calls;
    } cases[] = {
        {"--version", "GetAuxVersion() = handle\n"},
        {"--temperature", "GetDiagnostic() = handle\n"},
        {"--power=current", "GetPower() = handle\nGetConfig() = handle\n"},
        {"--heater", "GetConfig() = handle\n"},
        {"--led", "GetFrontLED() = handle\n"},
        {"--can=CAN0", "GetCanSetting() = handle\nGetAbout() = handle\n"
                       "About_getNrOfCANConnections([4]) = 0\nAbout_release() = 0\n"},
        {"--digitalio", "GetDigIO() = handle\n"},
        {"--onoff", "GetConfig() = handle\n"},
        {"--advanced", "GetFirmwareUpgrade() = handle\nGetAbout() = handle\n"},
        {"--buzzer", "GetBuzzer() = handle\n"},
        {"--telematics", "GetTelematics() = handle\n"},
        {"--touch", "GetTouchScreen() = handle\n"},
        {"--backlight", "GetBacklight() = handle\n"},
        {"--lightsensor", "GetLightsensor() = handle\n"},
    };
    const std::string diagnostic = programPath() + ": unrecognized option '--bogus'\n";
    for (const auto& [category, calls] : cases)
    {
        const std::string all = callsLinesAndDiagnostics(category + " --bogus");
        EXPECT_TRUE(all.starts_with(calls + diagnostic)) << all;
    }
}

TEST(Order, TheCanChannelsAreCountedBeforeAnOptionIsRefused)
{
    EXPECT_EQ(
        callsAndLines("--can=CAN0 --volume"),
        lines({"GetCanSetting() = handle", "GetAbout() = handle", "About_getNrOfCANConnections([4]) = 0",
               "About_release() = 0", "Invalid option: Only --baudrate and --help are valid options.",
               "CanSetting_getBaudrate(1, [250]) = 0", "CAN device 0 baud rate: 250",
               "CanSetting_release() = 0"}));
}

TEST(Order, TheHeaterIsHeldUntilItsOptionIsRequired)
{
    EXPECT_EQ(callsAndLines("--heater --frequency"),
              lines({"GetConfig() = handle", "Invalid argument: Option is required (--temperature)",
                     "Invalid argument: Option is required (--temperature)", "Config_release() = 0"}));
}

TEST(Order, NegativePulsesAreSentBeforeTheyAreRefused)
{
    EXPECT_EQ(callsAndLines("--led --pulses=-3"),
              lines({"GetFrontLED() = handle", "FrontLED_setNrOfPulses(253) = 0",
                     "Invalid argument: Argument must be >0.", "FrontLED_release() = 0"}));
}

TEST(Order, FirmwareWorkIsAnnouncedBeforeItIsStarted)
{
    FirmwareUnit unit(R"({"firmware": {"statuses": [{"state": 6}]}})");
    const struct
    {
        const char* option;
        const char* announced;
        const char* started;
    } cases[] = {
        {"--update", "This upgrade can take a few minutes to perform.", "FirmwareUpgrade_startSSUpgrade"},
        {"--verify", "This verification can take a few minutes to perform.",
         "FirmwareUpgrade_startSSVerification"},
    };
    for (const auto& [option, announced, started] : cases)
    {
        const std::string all =
            callsAndLines(std::string("--advanced --force ") + option + "=SS --filepath=" + unit.hex, unit);
        EXPECT_TRUE(all.starts_with(
            lines({"GetFirmwareUpgrade() = handle", "GetAbout() = handle", "File format is correct.",
                   announced, std::string(started) + "(\"" + unit.hex + "\", 0) = 0",
                   "FirmwareUpgrade_getUpgradeStatus([6, 0, 0], 1) = 0", "Done"})))
            << all;
    }
}

} // namespace
