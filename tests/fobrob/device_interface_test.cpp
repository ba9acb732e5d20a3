#include "device/qv_aux2.h"
#include "support/unit.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace
{

// One operation of each module, with a command line that calls it.
const std::pair<const char*, const char*> operations[] = {
    {"About_getUnitSerial", "--about=EEPROM"},
    {"Adc_getVoltage", "--about=ADC"},
    {"AuxVersion_getFPGAVersion", "--version"},
    {"Backlight_getIntensity", "--backlight"},
    {"Buzzer_getFrequency", "--buzzer"},
    {"CanSetting_getBaudrate", "--can"},
    {"Config_getHeatingTempLimit", "--heater --temperature"},
    {"Diagnostic_getSSTemp", "--temperature"},
    {"DigIO_getDigIO", "--digitalio"},
    {"FirmwareUpgrade_shutDown", "--advanced --shutdown"},
    {"FrontLED_getSignal", "--led"},
    {"Lightsensor_getIlluminance", "--lightsensor"},
    {"Power_getVideoPowerStatus", "--power=current"},
    {"QVAuxPrivate_getSystemMode", "--advanced --system_mode"},
    {"Telematics_getWLANPowerStatus", "--telematics"},
    {"TouchScreen_getMode", "--touch"},
};

TEST(DeviceInterface, ReportsEveryErrorCodeOnOneLine)
{
    for (const auto& [operation, arguments] : operations)
        for (const unsigned code : {1u, 5u, 255u, 256u, 65536u, 4000000000u})
        {
            SCOPED_TRACE(std::string(operation) + " = " + std::to_string(code));
            Unit unit;
            unit.failsOnce(operation, code);
            unit.set("/errorTexts/" + std::to_string(code), "The bus is silent");
            const Result result = unit.run(arguments);
            const std::size_t report = result.output.find(": The bus is silent\n");
            EXPECT_NE(report, std::string::npos) << result.output;
            EXPECT_EQ(result.output.find("bus", report + 10), std::string::npos) << result.output;
            EXPECT_EQ(std::ranges::count(result.calls, "GetErrorStringA(" + std::to_string(code) +
                                                           ") = \"The bus is silent\""),
                      1);
        }
}

TEST(DeviceInterface, SuppressesLaterReportsAfterAnErrorWithoutText)
{
    Unit unit(R"({"errorTexts": {"77": null}})");
    unit.fails("Buzzer_getFrequency", 77);
    unit.fails("Buzzer_getVolume", 77);
    unit.fails("Buzzer_getTrigger", 78);
    const Result result = unit.run("--buzzer");
    EXPECT_EQ(result.output, "getFrequency: ");
    EXPECT_EQ(result.calls,
              callsOn("Buzzer", {"Buzzer_getFrequency([]) = 77", "GetErrorStringA(77) = null",
                                 "Buzzer_getVolume([]) = 77", "GetErrorStringA(77) = null",
                                 "Buzzer_getTrigger([]) = 78", "GetErrorStringA(78) = \"Error 78\""}));
}

TEST(DeviceInterface, PrintsAnEmptyErrorText)
{
    Unit unit(R"({"errorTexts": {"77": ""}})");
    unit.fails("Buzzer_getVolume", 77);
    EXPECT_EQ(unit.run("--buzzer --volume --status").output, "getVolume: \nBuzzer status:  Disabled.\n");
}

TEST(DeviceInterface, PrintsAnErrorTextUnchanged)
{
    const std::string text = "100%d of %s, Gr\u00f6\u00dfe " + std::string(300, 'x');
    Unit unit;
    unit.set("/errorTexts/77", text);
    unit.fails("Lightsensor_getIlluminance", 77);
    EXPECT_EQ(unit.run("--lightsensor").output, "getIlluminance: " + text + "\n");
}

// Runs the program with a device library that has only the operations of the light sensor. It precedes the
// simulated unit in the search path.
Outcome runOnPartialLibrary(const std::string& arguments)
{
    const Unit unit;
    Command command = programOn(unit.file(), arguments);
    command.environment["LD_LIBRARY_PATH"] = partialLibraryDirectory() + ":" + simulatorDirectory();
    return runCommand(command);
}

TEST(PartialLibrary, SufficesForTheCategoriesThatItSupports)
{
    for (const char* arguments : {"--lightsensor", "--lightsensor --illuminance"})
    {
        const Outcome outcome = runOnPartialLibrary(arguments);
        EXPECT_EQ(outcome.output, "Illuminance: 4711\n");
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.status, 0);
    }
}

TEST(PartialLibrary, SufficesForCommandsThatCallNoMissingOperation)
{
    for (const char* arguments : {"", "-h", "-v", "--help", "--list", "--frequency", "--lightsensor --help",
                                  "--lightsensor --frequency", "--about --help"})
    {
        SCOPED_TRACE(arguments);
        Unit unit;
        const Outcome outcome = runOnPartialLibrary(arguments);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.output, unit.run(arguments).output);
    }
}

// The lines before the missing operation are printed.
TEST(PartialLibrary, EndsTheProgramAtTheFirstMissingOperation)
{
    const Outcome outcome = runOnPartialLibrary("--about --volume --status");
    EXPECT_EQ(outcome.output, "Error: Version should not take any more options.\n"
                              "Error: Version should not take any more options.\n");
    EXPECT_NE(outcome.errors.find("GetAdc"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.status, 0);
}

// The binary interface of existing device libraries.
static_assert(std::is_same_v<ApiError, std::uint32_t>);
static_assert(sizeof(UpgradeStatus) == 12 && offsetof(UpgradeStatus, state) == 0 &&
              offsetof(UpgradeStatus, second) == 4 && offsetof(UpgradeStatus, error) == 8);
static_assert(std::is_same_v<decltype(UpgradeStatus::state), std::int32_t>);
static_assert(sizeof(DiagnosticTimer) == 28 && offsetof(DiagnosticTimer, runTimeAbove80) == 24);
static_assert(std::is_same_v<decltype(About_getNrOfCANConnections), ApiError(AboutHandle, std::uint8_t*)>);
static_assert(std::is_same_v<decltype(About_getNrOfButtons), ApiError(AboutHandle, std::int32_t*)>);
static_assert(std::is_same_v<decltype(About_getUnitSerial), ApiError(AboutHandle, char*, std::uint32_t)>);
static_assert(std::is_same_v<decltype(Adc_getVoltage), ApiError(AdcHandle, std::int32_t, double*)>);
static_assert(
    std::is_same_v<decltype(AuxVersion_getSSVersion),
                   ApiError(AuxVersionHandle, std::uint8_t*, std::uint8_t*, std::uint8_t*, std::uint8_t*)>);
static_assert(std::is_same_v<decltype(Diagnostic_getPMTemp),
                             ApiError(DiagnosticHandle, std::int32_t, std::int16_t*, std::int32_t*)>);
static_assert(std::is_same_v<decltype(QVAuxPrivate_getEepromData),
                             ApiError(QVAuxPrivateHandle, std::int32_t, std::uint8_t*, std::uint32_t)>);

} // namespace
