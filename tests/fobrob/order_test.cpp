// The order of printed lines and device calls.

#include "support/category_calls.h"
#include "support/firmware_unit.h"

namespace
{

// Returns the command that runs the program and writes the call trace to standard output too.
Command withTraceInOutput(const Unit& unit, const std::string& arguments)
{
    Command command = programOn(unit.file(), arguments);
    command.environment["QVAUX_TRACE"] = "/dev/stdout";
    return command;
}

// Returns the call trace and standard output in the order of their lines.
std::string callsAndLines(const std::string& arguments, const Unit& unit = Unit())
{
    return runCommand(withTraceInOutput(unit, arguments)).output;
}

// Returns standard error too.
std::string callsLinesAndDiagnostics(const std::string& arguments)
{
    const Unit unit;
    return runCommand(throughShell("exec \"$@\" 2>&1", withTraceInOutput(unit, arguments))).output;
}

TEST(Order, AnErrorIsPrintedBeforeTheRelease)
{
    EXPECT_EQ(callsAndLines("--lightsensor --volume"),
              lines({"GetLightsensor() = handle", "Invalid argument", "Lightsensor_release() = 0"}));
}

TEST(Order, EveryLineIsPrintedBetweenItsCallAndTheNext)
{
    const struct
    {
        const char* arguments;
        const char* module;
        Calls between;
        const char* keys = "{}";
    } cases[] = {
        {"--lightsensor", "Lightsensor", {"Lightsensor_getIlluminance([320]) = 0", "Illuminance: 320"}},
        {"--version=FPGA",
         "AuxVersion",
         {"AuxVersion_getFPGAVersion([], [], [], []) = 77", "GetErrorStringA(77) = \"Error 77\"",
          "getFPGAVersion: Error 77"},
         R"({"faults": {"AuxVersion_getFPGAVersion": {"code": 77}}})"},
        {"--temperature=GPU", "Diagnostic", {"Invalid argument: Could not find the specified argument."}},
        {"--temperature=SS",
         "Diagnostic",
         {"Diagnostic_getSSTemp([]) = 77", "GetErrorStringA(77) = \"Error 77\"", "getSSTemp: Error 77"},
         R"({"faults": {"Diagnostic_getSSTemp": {"code": 77}}})"},
        {"--digitalio=DI5", "DigIO", {"Invalid argument"}},
        {"--buzzer --illuminance", "Buzzer", {"Invalid argument"}},
        {"--buzzer",
         "Buzzer",
         {"Buzzer_getFrequency([2500]) = 0", "Buzzer Frequency: 2500", "Buzzer_getVolume([1000]) = 0",
          "Buzzer Volume: 1000", "Buzzer_getTrigger([0]) = 0", "Buzzer status:  Disabled."}},
        {"--buzzer --status=Enable --volume=40 --frequency=800",
         "Buzzer",
         {"Buzzer_setFrequency(800) = 0", "Buzzer frequency set to: 800 Hz.", "Buzzer_setVolume(40) = 0",
          "Buzzer volume set to: 40", "Buzzer_setTrigger(1) = 0", "Buzzer status set to enable."}},
        {"--backlight --frequency", "Backlight", {"Invalid argument"}},
        {"--backlight",
         "Backlight",
         {"Backlight_getIntensity([200]) = 0", "Intensity: 200", "Backlight_getAutomaticBLStatus([0]) = 0",
          "Automatic BL: Disabled", "Backlight_getLedDimming([0]) = 0", "LedDimming: Disabled"}},
        {"--backlight --led_dimming=Enabled --automatic=Enabled --intensity=7",
         "Backlight",
         {"Backlight_setIntensity(7) = 0", "Backlight intensity set to: 7",
          "Backlight_setAutomaticBLFilter(4, 2, 40, 2) = 77", "GetErrorStringA(77) = \"Error 77\"",
          "setAutomaticBLFilter: Error 77", "Backlight_startAutomaticBL() = 0", "Automatic BL started.",
          "Backlight_setLedDimming(1) = 0", "LedDimming enabled."},
         R"({"faults": {"Backlight_setAutomaticBLFilter": {"code": 77}}})"},
        {"--led --volume", "FrontLED", {"Invalid argument"}},
        {"--led",
         "FrontLED",
         {"FrontLED_getSignal([1], [50]) = 0", "LED Frequency: 1", "FrontLED_getSignal([1], [50]) = 0",
          "LED Duty Cycle: 50 %.", "FrontLED_getStandardColor([1]) = 0", "LED color: GREEN",
          "FrontLED_getNrOfPulses([1]) = 0", "LED pulses: 1", "FrontLED_getIdleTime([0]) = 0",
          "LED idle time: 0", "FrontLED_getEnabledDuringStartup([1]) = 0", "LED startup: Enabled."}},
        {"--led --dutycycle=80 --frequency=10",
         "FrontLED",
         {"FrontLED_getSignal([1], [50]) = 0", "FrontLED_setSignal(10, 50) = 0",
          "LED frequency set to: 10 Hz.", "FrontLED_getSignal([10], [50]) = 0",
          "FrontLED_setSignal(10, 80) = 0", "LED duty cycle set to: 80 %."}},
    };
    for (const auto& [arguments, module, between, keys] : cases)
        EXPECT_EQ(callsAndLines(arguments, Unit(keys)), lines(callsOn(module, between))) << arguments;
}

TEST(Order, TheVersionModuleIsObtainedBeforeTheOptionsAreRead)
{
    EXPECT_EQ(callsAndLines("--version=FPGA --volume"),
              lines({"GetAuxVersion() = handle", "Error: Version does not take any more options.",
                     "AuxVersion_getFPGAVersion([1], [4], [0], [2]) = 0", "FPGAVersion: 1.4.0.2",
                     "AuxVersion_release() = 0"}));
}

TEST(Order, TheProgramVersionIsPrintedBeforeTheUnitsVersionsAreRead)
{
    EXPECT_TRUE(callsAndLines("--version")
                    .starts_with(lines({"GetAuxVersion() = handle", "fobrob 2.9.0.0",
                                        "AuxVersion_getFPGAVersion([1], [4], [0], [2]) = 0",
                                        "FPGAVersion: 1.4.0.2"})));
}

TEST(Order, TheReportsPrintEachFieldBeforeTheNextCall)
{
    Unit unit;
    unit.fails("Adc_getVoltage", 77);
    unit.fails("About_getAddOnPCBSerial", 18);
    EXPECT_NE(callsAndLines("--about=ADC", unit).find("VOLTAGE_24VIN: Error 77\nAdc_getVoltage(1,"),
              std::string::npos);
    EXPECT_NE(callsAndLines("--about=EEPROM", unit).find("Addon PCB serial=N/A\nAbout_getAddOnPCBArt("),
              std::string::npos);
}

TEST(Order, EveryTemperatureIsPrintedBeforeTheNextOneIsRead)
{
    EXPECT_EQ(
        callsAndLines("--temperature --volume"),
        lines({"GetDiagnostic() = handle", "Error: Version should not take any more options",
               "Diagnostic_getSSTemp([31]) = 0", "SS temp=31", "Diagnostic_getPCBTemp([34]) = 0",
               "PCB temp=34", "Diagnostic_getPMTemp(0, [48], [0]) = 0", "CPU temp=48",
               "Diagnostic_getPMTemp(1, [39], [0]) = 0", "CPU BOARD temp=39", "Diagnostic_release() = 0"}));
}

TEST(Order, EveryInputIsPrintedBeforeTheNextOneIsRead)
{
    EXPECT_EQ(callsAndLines("--digitalio --volume"),
              lines({"GetDigIO() = handle", "Error: Digital IO should not take any more options",
                     "DigIO_getDigIO([0]) = 0", "Digital input 1: 0", "DigIO_getDigIO([0]) = 0",
                     "Digital input 2: 0", "DigIO_getDigIO([0]) = 0", "Digital input 3: 0",
                     "DigIO_getDigIO([0]) = 0", "Digital input 4: 0", "DigIO_release() = 0"}));
}

TEST(Order, TheReportsObtainTheirHandlesAfterTheOptionsAreRead)
{
    const std::string error = "Invalid argument: Category argument could not be found. Valid are: EEPROM, "
                              "Diagnostic and ADC.";
    EXPECT_EQ(
        callsAndLines("--about --volume"),
        lines({"Error: Version should not take any more options.", "GetAdc() = handle", "GetAbout() = handle",
               "GetDiagnostic() = handle", "GetQVAuxPrivate() = handle", error, "QVAuxPrivate_release() = 0",
               "Adc_release() = 0", "Diagnostic_release() = 0", "About_release() = 0"}));
}

TEST(Order, AShutdownIsAnnouncedBeforeItIsRequested)
{
    EXPECT_EQ(
        callsAndLines("--advanced --shutdown"),
        lines({"GetFirmwareUpgrade() = handle", "GetAbout() = handle", "Shutdown the unit",
               "FirmwareUpgrade_shutDown() = 0", "About_release() = 0", "FirmwareUpgrade_release() = 0"}));
}

TEST(Order, AFactoryResetIsPrintedAfterTheRelease)
{
    EXPECT_EQ(callsAndLines("--advanced --factory"),
              lines({"GetFirmwareUpgrade() = handle", "GetAbout() = handle", "GetQVAuxPrivate() = handle",
                     "QVAuxPrivate_writeSsRegister(3, 101, 1) = 0", "QVAuxPrivate_release() = 0",
                     "Factory reset completed.", "About_release() = 0", "FirmwareUpgrade_release() = 0"}));
}

TEST(Order, TheDiagnosticOfGetoptIsPrintedBeforeTheErrorOfTheCategory)
{
    EXPECT_TRUE(
        callsLinesAndDiagnostics("--about --bogus --volume")
            .starts_with(lines({programPath() + ": unrecognized option '--bogus'",
                                "Error: Version should not take any more options.",
                                "Error: Version should not take any more options.", "GetAdc() = handle"})));
}

TEST(Order, TheModulesAreObtainedBeforeTheOptionsAreRead)
{
    const std::string diagnostic = programPath() + ": unrecognized option '--bogus'\n";
    for (const char* category :
         {"--version", "--temperature", "--power=current", "--heater", "--led", "--can=CAN0", "--digitalio",
          "--onoff", "--advanced", "--buzzer", "--telematics", "--touch", "--backlight", "--lightsensor"})
    {
        const std::string all = callsLinesAndDiagnostics(std::string(category) + " --bogus");
        EXPECT_TRUE(all.starts_with(lines(callsBeforeOptions(category)) + diagnostic)) << all;
    }
}

TEST(Order, TheCanChannelsAreCountedBeforeAnOptionIsRejected)
{
    EXPECT_EQ(
        callsAndLines("--can=CAN0 --volume"),
        lines({"GetCanSetting() = handle", "GetAbout() = handle", "About_getNrOfCANConnections([4]) = 0",
               "About_release() = 0", "Invalid option: Only --baudrate and --help are valid options.",
               "CanSetting_getBaudrate(1, [250]) = 0", "CAN device 0 baud rate: 250",
               "CanSetting_release() = 0"}));
}

TEST(Order, TheCanLinesArePrintedBetweenTheirCallsAndTheRelease)
{
    const struct
    {
        const char* arguments;
        int channels;
        Calls between;
    } cases[] = {
        {"--can", 0, {"Invalid argument: No valid arguments could be found."}},
        {"--can",
         2,
         {"CanSetting_getBaudrate(1, [250]) = 0", "CAN device 0 baud rate: 250",
          "CanSetting_getBaudrate(2, [250]) = 0", "CAN device 1 baud rate: 250"}},
        {"--can=CAN1 --baudrate", 2, {"Invalid argument: No baud rate value passed to the option."}},
        {"--can=CAN1 --baudrate=500",
         2,
         {"CanSetting_setBaudrate(2, 500) = 0", "CAN device 1 baud rate set to: 500"}},
    };
    for (const auto& [arguments, channels, between] : cases)
    {
        const std::string count = std::to_string(channels);
        Calls all = {"GetAbout() = handle", "About_getNrOfCANConnections([" + count + "]) = 0",
                     "About_release() = 0"};
        all.insert(all.end(), between.begin(), between.end());
        EXPECT_EQ(callsAndLines(arguments, Unit(R"({"about": {"canConnections": )" + count + "}}")),
                  lines(callsOn("CanSetting", all)))
            << arguments;
    }
}

TEST(Order, TheHeaterIsReleasedAfterItsErrors)
{
    EXPECT_EQ(callsAndLines("--heater --frequency"),
              lines({"GetConfig() = handle", "Invalid argument: Option is required (--temperature)",
                     "Invalid argument: Option is required (--temperature)", "Config_release() = 0"}));
}

TEST(Order, NegativePulsesAreSentBeforeTheyAreRejected)
{
    EXPECT_EQ(callsAndLines("--led --pulses=-3"),
              lines({"GetFrontLED() = handle", "FrontLED_setNrOfPulses(253) = 0",
                     "Invalid argument: Argument must be >0.", "FrontLED_release() = 0"}));
}

TEST(Order, AFirmwareJobIsAnnouncedBeforeItIsStarted)
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
