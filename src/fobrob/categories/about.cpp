#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/output.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace
{

struct
{
    bool eepromGiven = false;
    const char* eepromArgument = nullptr;
} aboutArgs;

const CategoryOption aboutOptions[] = {
    {OPT_EEPROM, &aboutArgs.eepromGiven, &aboutArgs.eepromArgument},
};

void printAboutHelp()
{
    printLine("Category - About\n"
              "This category is used to get information which is stored in the EEPROM, such as\n"
              "Unit Serial, ADC values, power cycles etc. Based on the argument passed to the \n"
              "option, different information will be printed.\n"
              "\n"
              "Usage\n"
              "It is not possible to combine several arguments to get more information with one\n"
              "call. This category must be passed an argument. The table below contains the \n"
              "available arguments.\n"
              "\n"
              "CATEGORY\tARG\t\tNOTE\n"
              "--about=\tEEPROM\t\tGet information stored in EEPROM.\n"
              "--about=\tRawEEPROM\t\tGet RAW EEPROM data.\n"
              "--about=\tDiagnostic\tGet diagnostic information.\n"
              "--about=\tADC\t\tGet ADC information.");
}

// Like succeeded(), but does not report QV_NOT_SUPPORTED: items that the unit does not support are omitted.
bool succeededIfSupported(const char* operation, ApiError result)
{
    return result != QV_NOT_SUPPORTED && succeeded(operation, result);
}

// The length that is passed to the device. Buffers are one byte larger because a text may have no terminator.
constexpr std::uint32_t textLength = 256;

template <auto get>
void showText(AboutHandle about, const char* label, const char* operation)
{
    char text[textLength + 1] = {};
    if (succeeded(operation, get(about, text, textLength)))
        printLine(label, static_cast<const char*>(text));
}

template <auto get>
void showCount(AboutHandle about, const char* label, const char* operation, std::uint8_t& count)
{
    count = 0xFF;
    if (succeeded(operation, get(about, &count)))
        printLine(label, count);
}

template <auto get>
void showAvailable(AboutHandle about, const char* label, const char* operation)
{
    std::uint8_t available = 0;
    if (succeeded(operation, get(about, &available)))
        printLine(label, available ? "YES" : "NO");
}

template <auto get>
void showAddOnText(AboutHandle about, const char* label, const char* operation)
{
    char text[textLength + 1] = {};
    const ApiError result = get(about, text, textLength);
    if (result == QV_BOARD_NOT_FITTED)
        printLine(label, "N/A");
    else if (succeededIfSupported(operation, result))
        printLine(label, static_cast<const char*>(text));
}

template <auto get>
void showMounted(AboutHandle about, const char* radio, const char* operation)
{
    std::uint8_t mounted = 0;
    const ApiError result = get(about, &mounted);
    if (result == QV_BOARD_NOT_FITTED)
        printLine(radio, " is mounted: N/A");
    else if (succeededIfSupported(operation, result))
        printLine(radio, " is ", mounted ? "mounted" : "not mounted");
}

void showMainBoard(AboutHandle about)
{
    showText<About_getUnitSerial>(about, "Unit serial=", "getUnitSerial");
    showText<About_getMainPCBSerial>(about, "Main PCB serial=", "getMainPCBSerial");
    showText<About_getMainPCBArt>(about, "Main PCB article number=", "getMainPCBArt");
    showText<About_getMainManufacturingDate>(about, "Main manufacturing date=", "getMainManufacturingDate");
    showText<About_getMainHWversion>(about, "Main HW version=", "getMainHWversion");
    showText<About_getMainProdRev>(about, "Main prod rev=", "getMainProdRev");
    showText<About_getMainProdArtNr>(about, "Main prod art nr=", "getMainProdArtNr");
}

void showEquipment(AboutHandle about)
{
    std::uint8_t count;
    showCount<About_getNrOfCANConnections>(about, "Number of CAN connections=", "getNrOfCANConnections",
                                           count);
    showCount<About_getNrOfETHConnections>(about, "Number of ethernet connections=", "getNrOfETHConnections",
                                           count);
    showCount<About_getNrOfSerialConnections>(
        about, "Number of serial connections=", "getNrOfSerialConnections", count);
    showCount<About_getNrOfUSBConnections>(about, "Number of USB connections=", "getNrOfUSBConnections",
                                           count);
    showCount<About_getNrOfVideoConnections>(about, "Number of video connections=", "getNrOfVideoConnections",
                                             count);

    // Intentional: from here on, `count` is not reset. If an operation succeeds without writing its result,
    // the previous count is printed.
    if (succeededIfSupported("getNrOfDigIOConnections", About_getNrOfDigIOConnections(about, &count)))
        printLine("Nr of digital I/O connections=", count);

    showAvailable<About_getIsDisplayAvailable>(about, "Display available: ", "getIsDisplayAvailable");
    showAvailable<About_getIsTouchScreenAvailable>(about,
                                                   "TouchScreen available: ", "getIsTouchScreenAvailable");

    if (succeededIfSupported("getNrOfCfgInConnections", About_getNrOfCfgInConnections(about, &count)))
        printLine("Nr of Configurable inputs=", count);

    // Intentional: the name in the error message depends on the error. The output is fixed.
    const ApiError pwmResult = About_getNrOfPWMOutConnections(about, &count);
    if (succeededIfSupported(pwmResult == QV_BOARD_NOT_FITTED ? "getNrOfPWMOutConnections"
                                                              : "getNrOfPWMOutInConnections",
                             pwmResult))
        printLine("Nr of PWM outputs=", count);

    std::int32_t buttons = 0;
    if (succeededIfSupported("getNrOfButtons", About_getNrOfButtons(about, &buttons)))
        printLine("Nr of configurable buttons=", buttons);
}

void showAddOnBoard(AboutHandle about)
{
    printLine("");
    printLine("Addon/Telematics board:");
    showAddOnText<About_getAddOnPCBSerial>(about, "Addon PCB serial=", "getAddOnPCBSerial");
    showAddOnText<About_getAddOnPCBArt>(about, "Addon board article number=", "getAddOnPCBArt");
    showAddOnText<About_getAddOnManufacturingDate>(about,
                                                   "Addon manufacturing date=", "getAddOnManufacturingDate");
    showAddOnText<About_getAddOnHWversion>(about, "Addon HW version=", "getAddOnHWversion");
    showMounted<About_getIsBTMounted>(about, "BT", "getIsBTMounted");
    showMounted<About_getIsGPRSMounted>(about, "GPRS", "getIsGPRSMounted");
    showMounted<About_getIsGPSMounted>(about, "GPS", "getIsGPSMounted");
    showMounted<About_getIsWLANMounted>(about, "WLAN", "getIsWLANMounted");
}

// The modules that the reports use.
struct Modules
{
    AdcHandle adc;
    AboutHandle about;
    DiagnosticHandle diagnostic;
    QVAuxPrivateHandle privateAccess;
};

void reportEeprom(const Modules& modules)
{
    showMainBoard(modules.about);
    showEquipment(modules.about);
    showAddOnBoard(modules.about);
}

void reportRawEeprom(const Modules& modules)
{
    static std::uint8_t rawEepromBuffer[QV_EEPROM_SIZE];

    QvEeprom eeprom = QV_EEPROM_MAIN_BOARD;
    if (aboutArgs.eepromGiven && equalsIgnoringCase(aboutArgs.eepromArgument, "ADDON"))
        eeprom = QV_EEPROM_ADD_ON_BOARD;
    else if (aboutArgs.eepromGiven && !equalsIgnoringCase(aboutArgs.eepromArgument, "ICM"))
    {
        printLine("Invalid argument: EEPROM argument should be ICM, or ADDON.");
        return;
    }

    // Intentional: the last byte is not read. If no byte is erased, the output has a zero byte in its place.
    // The output is fixed.
    const ApiError result = QVAuxPrivate_getEepromData(modules.privateAccess, eeprom, rawEepromBuffer,
                                                       sizeof rawEepromBuffer - 1);
    if (!succeeded("getEepromData", result))
        return;
    const void* end = std::memchr(rawEepromBuffer, QV_EEPROM_ERASED, sizeof rawEepromBuffer);
    const std::size_t length =
        end ? static_cast<std::size_t>(static_cast<const std::uint8_t*>(end) - rawEepromBuffer)
            : sizeof rawEepromBuffer;
    std::fwrite(rawEepromBuffer, 1, length, stdout);
}

void showStartupReason(DiagnosticHandle diagnostic)
{
    std::uint16_t reason = 0;
    if (!succeeded("getStartupReason", Diagnostic_getStartupReason(diagnostic, &reason)))
        return;
    const bool expected = reason == QV_STARTUP_POWER_APPLIED || reason == QV_STARTUP_FRONT_BUTTON ||
                          reason == QV_STARTUP_ON_OFF_SIGNAL || reason == QV_STARTUP_SUSPEND_ENDED;
    printLine("StartupReason=", GetStartupReasonStringA(reason), expected ? " OK" : " ERROR");
}

void showShutdownReason(DiagnosticHandle diagnostic)
{
    std::uint16_t reason = 0;
    if (succeededIfSupported("getShutdownReason", Diagnostic_getShutDownReason(diagnostic, &reason)))
        printLine("ShutdownReason=", reason == QV_SHUTDOWN_NO_ERROR ? "No error OK" : "Serious error ERROR");
}

void showHwErrorStatus(DiagnosticHandle diagnostic)
{
    std::uint16_t status = 0;
    if (succeededIfSupported("getHwErrorStatus", Diagnostic_getHwErrorStatus(diagnostic, &status)))
        printLine("Hw error status=", GetHwErrorStatusStringA(status),
                  status <= QV_HW_LAST_HARMLESS ? " OK" : " ERROR");
}

void showTimer(DiagnosticHandle diagnostic)
{
    DiagnosticTimer timer = {};
    if (!succeededIfSupported("getTimer", Diagnostic_getTimer(diagnostic, &timer)))
        return;
    printLine("Run-time above 80C=", timer.runTimeAbove80, " min(s)");
    printLine("Run-time between 40C-60C=", timer.runTime40To60, " min(s)");
    printLine("Run-time between 60C-70C=", timer.runTime60To70, " min(s)");
    printLine("Run-time between 70C-80C=", timer.runTime70To80, " min(s)");
    printLine("Total heat time=", timer.totalHeatTime, " min(s)");
    printLine("Total run-time=", timer.totalRunTime, " min(s)");
    printLine("Total suspend time=", timer.totalSuspendTime, " min(s)");
}

void showTemperatures(DiagnosticHandle diagnostic)
{
    std::int16_t temperature = 0;
    std::int32_t status = 0;
    if (succeededIfSupported("getSSTemp", Diagnostic_getSSTemp(diagnostic, &temperature)))
        printLine("SS temp=", temperature);
    if (succeededIfSupported("getPCBTemp", Diagnostic_getPCBTemp(diagnostic, &temperature)))
        printLine("PCB temp=", temperature);
    if (succeededIfSupported("getPMTemp",
                             Diagnostic_getPMTemp(diagnostic, QV_PM_SENSOR_CPU, &temperature, &status)))
        printLine("CPU temp=", temperature);
    if (succeededIfSupported("getPMTemp",
                             Diagnostic_getPMTemp(diagnostic, QV_PM_SENSOR_CPU_BOARD, &temperature, &status)))
        printLine("CPU BOARD temp=", temperature);
}

void reportDiagnostic(const Modules& modules)
{
    showStartupReason(modules.diagnostic);
    showShutdownReason(modules.diagnostic);
    showHwErrorStatus(modules.diagnostic);
    showTimer(modules.diagnostic);

    std::int16_t minimum = 0;
    std::int16_t maximum = 0;
    if (succeededIfSupported("getMinMaxTemp",
                             Diagnostic_getMinMaxTemp(modules.diagnostic, &minimum, &maximum)))
        printLine("Min temp=", minimum, ", max temp=", maximum);

    std::uint16_t powerCycles = 0;
    if (succeededIfSupported("getPowerCycles", Diagnostic_getPowerCycles(modules.diagnostic, &powerCycles)))
        printLine("Power cycles=", powerCycles);

    showTemperatures(modules.diagnostic);
}

// Indexed by channel number.
const char voltageChannelNames[QV_ADC_CHANNEL_COUNT][11] = QV_ADC_CHANNEL_NAMES;

void reportAdc(const Modules& modules)
{
    for (std::int32_t channel = 0; channel < QV_ADC_CHANNEL_COUNT; ++channel)
    {
        const char* name = voltageChannelNames[channel];
        double volts = 0;
        const ApiError result = Adc_getVoltage(modules.adc, channel, &volts);
        if (result == QV_SUCCESS)
            printLine("VOLTAGE_", name, ": Voltage=", volts);
        else if (result != QV_NOT_SUPPORTED)
            printLine("VOLTAGE_", name, ": ", GetErrorStringA(result));
    }
}

struct Report
{
    const char* argument;
    void (*print)(const Modules& modules);
};

const Report reports[] = {
    {"EEPROM", reportEeprom},
    {"RawEEPROM", reportRawEeprom},
    {"DIAGNOSTIC", reportDiagnostic},
    {"ADC", reportAdc},
};

const Report* findReport(const char* argument)
{
    for (const Report& report : reports)
        if (equalsIgnoringCase(argument, report.argument))
            return &report;
    return nullptr;
}

} // namespace

int handleAbout(const char* argument, int argc, char** argv, const char*, const option*, int longIndex)
{
    // Intentional: the message names the version category. The output is fixed.
    // The handles are acquired after parsing, so that --help calls no device operation.
    const ParsedOptions parsed =
        parseOptions(argc, argv, longIndex, aboutOptions, RepeatWithoutValue::clearsValue,
                     "Error: Version should not take any more options.");
    if (parsed.help)
    {
        printAboutHelp();
        return 0;
    }

    const AdcHandle adc = GetAdc();
    const AboutHandle about = GetAbout();
    const DiagnosticHandle diagnostic = GetDiagnostic();
    const QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();

    if (const Report* report = findReport(argument))
        report->print({adc, about, diagnostic, privateAccess});
    else
        printLine(
            "Invalid argument: Category argument could not be found. Valid are: EEPROM, Diagnostic and ADC.");

    QVAuxPrivate_release(privateAccess);
    Adc_release(adc);
    Diagnostic_release(diagnostic);
    return static_cast<int>(About_release(about));
}
