#include "device/qv_aux2.h"
#include "support/unit.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace
{

// Every module, with a command line that obtains its handle and an operation that it then performs.
struct Module
{
    const char* name;
    const char* arguments;
    const char* operation;
};

const Module modules[] = {
    {"About", "--about=EEPROM", "About_getUnitSerial"},
    {"Adc", "--about=ADC", "Adc_getVoltage"},
    {"AuxVersion", "--version", "AuxVersion_getFPGAVersion"},
    {"Backlight", "--backlight", "Backlight_getIntensity"},
    {"Buzzer", "--buzzer", "Buzzer_getFrequency"},
    {"CanSetting", "--can", "CanSetting_getBaudrate"},
    {"Config", "--heater --temperature", "Config_getHeatingTempLimit"},
    {"Diagnostic", "--temperature", "Diagnostic_getSSTemp"},
    {"DigIO", "--digitalio", "DigIO_getDigIO"},
    {"FirmwareUpgrade", "--advanced --shutdown", "FirmwareUpgrade_shutDown"},
    {"FrontLED", "--led", "FrontLED_getSignal"},
    {"Lightsensor", "--lightsensor", "Lightsensor_getIlluminance"},
    {"Power", "--power=current", "Power_getVideoPowerStatus"},
    {"QVAuxPrivate", "--advanced --system_mode", "QVAuxPrivate_getSystemMode"},
    {"Telematics", "--telematics", "Telematics_getWLANPowerStatus"},
    {"TouchScreen", "--touch", "TouchScreen_getMode"},
};

std::string obtaining(const Module& module)
{
    return std::string("Get") + module.name + "() = ";
}

std::string releasing(const Module& module)
{
    return std::string(module.name) + "_release() = ";
}

std::ptrdiff_t count(const Calls& calls, const std::string& beginning)
{
    return std::ranges::count_if(calls, [&](const std::string& call) { return call.starts_with(beginning); });
}

std::ptrdiff_t handlesObtained(const Calls& calls)
{
    return std::ranges::count_if(calls, [](const std::string& call) { return call.ends_with(" = handle"); });
}

TEST(DeviceInterface, GivesEveryHandleBackOnce)
{
    for (const Module& module : modules)
    {
        SCOPED_TRACE(module.arguments);
        Unit unit;
        const Calls calls = unit.run(module.arguments).calls;
        EXPECT_EQ(count(calls, obtaining(module) + "handle"), 1);
        EXPECT_EQ(count(calls, releasing(module) + "0"), 1);
        const auto isRelease = [](const std::string& call) { return call.ends_with("_release() = 0"); };
        EXPECT_EQ(std::ranges::count_if(calls, isRelease), handlesObtained(calls));
    }
}

TEST(DeviceInterface, UsesHandlesWithoutLookingAtThem)
{
    for (const Module& module : modules)
    {
        SCOPED_TRACE(module.arguments);
        Unit unit;
        unit.givesNull(std::string("Get") + module.name);
        const Calls calls = unit.run(module.arguments).calls;
        EXPECT_EQ(count(calls, obtaining(module) + "null"), 1);
        EXPECT_GE(count(calls, std::string(module.operation) + "("), 1);
        EXPECT_EQ(count(calls, releasing(module)), 1);
    }
}

TEST(DeviceInterface, ReportsAFailedOperationInOneLine)
{
    for (const Module& module : modules)
    {
        SCOPED_TRACE(module.operation);
        Unit unit(R"({"errorTexts": {"4000000000": "The bus is silent"}})");
        unit.failsOnce(module.operation, 4000000000);
        const Result result = unit.run(module.arguments);
        const std::size_t report = result.output.find(": The bus is silent\n");
        EXPECT_NE(report, std::string::npos) << result.output;
        EXPECT_EQ(result.output.find("bus", report + 10), std::string::npos) << result.output;
        EXPECT_EQ(count(result.calls, "GetErrorStringA(4000000000) = \"The bus is silent\""), 1);
    }
}

// Codes 2 and 18 mean more than a failure in the reports of --about alone.
TEST(DeviceInterface, ReportsEveryCodeButSuccess)
{
    for (const Module& module : modules)
        for (const unsigned code : {1u, 2u, 5u, 18u, 255u, 256u, 65536u})
        {
            if (std::string(module.arguments).starts_with("--about") && (code == 2 || code == 18))
                continue;
            SCOPED_TRACE(module.operation);
            Unit unit;
            unit.failsOnce(module.operation, code);
            unit.set("/errorTexts/" + std::to_string(code), "The bus is silent");
            EXPECT_NE(unit.run(module.arguments).output.find(": The bus is silent\n"), std::string::npos)
                << code;
        }
}

TEST(DeviceInterface, IsSilentBehindAnErrorWithoutText)
{
    for (const Module& module : modules)
    {
        SCOPED_TRACE(module.operation);
        Unit unit(R"({"errorTexts": {"77": null}})");
        unit.fails(module.operation, 77);
        const Result result = unit.run(module.arguments);
        EXPECT_TRUE(result.output.ends_with(": ")) << result.output;
        EXPECT_EQ(count(result.calls, releasing(module) + "0"), 1);
    }
}

TEST(DeviceInterface, KeepsWhatWasPrintedBeforeAnErrorWithoutText)
{
    Unit unit(R"({"errorTexts": {"77": null}})");
    unit.fails("Buzzer_getVolume", 77);
    const Result result = unit.run("--buzzer");
    EXPECT_EQ(result.output, "Buzzer Frequency: 2500\ngetVolume: ");
    EXPECT_EQ(count(result.calls, "Buzzer_getTrigger([0]) = 0"), 1);
}

TEST(DeviceInterface, StaysSilentThroughLaterReports)
{
    Unit unit(R"({"errorTexts": {"77": null}})");
    unit.fails("Buzzer_getFrequency", 77);
    unit.fails("Buzzer_getVolume", 77);
    unit.fails("Buzzer_getTrigger", 78);
    const Result result = unit.run("--buzzer");
    EXPECT_EQ(result.output, "getFrequency: ");
    EXPECT_EQ(count(result.calls, "GetErrorStringA("), 3);
}

TEST(DeviceInterface, PrintsAnEmptyErrorText)
{
    Unit unit(R"({"errorTexts": {"77": ""}})");
    unit.fails("Buzzer_getVolume", 77);
    EXPECT_EQ(unit.run("--buzzer --volume --status").output, "getVolume: \nBuzzer status:  Disabled.\n");
}

TEST(DeviceInterface, TakesNoNoticeOfAFailedRelease)
{
    for (const Module& module : modules)
    {
        SCOPED_TRACE(module.arguments);
        Unit healthy;
        Unit unit;
        unit.fails(std::string(module.name) + "_release", 77);
        const Result result = unit.run(module.arguments);
        EXPECT_EQ(result.output, healthy.run(module.arguments).output);
        EXPECT_EQ(count(result.calls, releasing(module) + "77"), 1);
        EXPECT_EQ(count(result.calls, "GetErrorStringA("), 0);
    }
}

TEST(DeviceInterface, ReleasesNothingWhereHelpIsAskedFor)
{
    const struct Case
    {
        const char* arguments;
        const char* call;
    } cases[] = {
        {"--lightsensor --help", "GetLightsensor() = handle"},
        {"--version --help", "GetAuxVersion() = handle"},
        {"--temperature --help", "GetDiagnostic() = handle"},
        {"--digitalio --help", "GetDigIO() = handle"},
    };
    Unit unit;
    for (const Case& c : cases)
        EXPECT_EQ(unit.run(c.arguments).calls, Calls{c.call}) << c.arguments;
}

// The program with a device library in front of the simulated one that has a light sensor and nothing else.
Outcome runOnOtherLibrary(const std::string& arguments)
{
    const Unit unit;
    Command command = programOn(unit.file(), arguments);
    command.environment["LD_LIBRARY_PATH"] = otherLibraryFolder() + ":" + simulatorFolder();
    return runCommand(command);
}

TEST(OtherLibrary, ServesTheCategoriesThatItHas)
{
    for (const char* arguments : {"--lightsensor", "--lightsensor --illuminance"})
    {
        const Outcome outcome = runOnOtherLibrary(arguments);
        EXPECT_EQ(outcome.output, "Illuminance: 4711\n");
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.status, 0);
    }
}

TEST(OtherLibrary, ServesWhateverNeedsNoOperationThatItLacks)
{
    for (const char* arguments : {"", "-h", "-v", "--help", "--list", "--frequency", "--lightsensor --help",
                                  "--lightsensor --frequency", "--about --help"})
    {
        SCOPED_TRACE(arguments);
        Unit unit;
        const Outcome outcome = runOnOtherLibrary(arguments);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.output, unit.run(arguments).output);
    }
}

// The program ends in the middle, at the first operation that the library lacks.
TEST(OtherLibrary, GetsEveryLineWrittenBeforeTheNextCall)
{
    const Outcome outcome = runOnOtherLibrary("--about --volume --status");
    EXPECT_EQ(outcome.output, "Error: Version should not take any more options.\n"
                              "Error: Version should not take any more options.\n");
    EXPECT_NE(outcome.errors.find("GetAdc"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.status, 0);
}

// What a library that was built long ago is handed.
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

TEST(DeviceInterface, PrintsAnErrorTextToTheByte)
{
    const std::string text = "100%d of %s, Gr\u00f6\u00dfe " + std::string(300, 'x');
    Unit unit;
    unit.set("/errorTexts/77", text);
    unit.fails("Lightsensor_getIlluminance", 77);
    EXPECT_EQ(unit.run("--lightsensor").output, "getIlluminance: " + text + "\n");
}

} // namespace
