// What comes before what: the lines of the program among its calls of the device.

#include "support/unit.h"

namespace
{

// The output of a run with the call trace in it.
std::string callsAndLines(const std::string& arguments)
{
    const Unit unit;
    Command command = programOn(unit.file(), arguments);
    command.environment["QVAUX_TRACE"] = "/dev/stdout";
    return runCommand(command).output;
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
    const Unit unit;
    const Outcome outcome =
        runCommand(throughShell("exec \"$@\" 2>&1", programOn(unit.file(), "--about --bogus --volume")));
    EXPECT_EQ(outcome.output,
              lines({programPath() + ": unrecognized option '--bogus'",
                     "Error: Version should not take any more options.",
                     "Error: Version should not take any more options.",
                     "Invalid argument: Category argument could not be found. Valid are: EEPROM, Diagnostic "
                     "and ADC."}));
}

} // namespace
