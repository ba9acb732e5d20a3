#include "categories/categories.h"
#include "device/api_error.h"
#include "main/output.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

static struct
{
    bool eepromGiven = false;
    const char* eepromArgument = nullptr;
} aboutArgs;

static const InnerOption aboutOptions[] = {
    {OPT_EEPROM, &aboutArgs.eepromGiven, &aboutArgs.eepromArgument},
};

// The modules that the reports read.
struct Sources
{
    AdcHandle adc;
    AboutHandle about;
    DiagnosticHandle diagnostic;
    QVAuxPrivateHandle privateAccess;
};

// Two of the device's codes that the reports do not treat as failures everywhere.
constexpr ApiError notSupported = 2;
constexpr ApiError boardNotFitted = 18;

// By channel number.
static const char* const voltageChannelNames[] = {
    "24VIN",      "24V", "12V", "12VID",   "5V",       "3V3",     "VTFT",  "5VSTB",
    "1V9",        "1V8", "1V5", "1V2",     "1V05",     "1V0",     "0V9",   "VREF_INT",
    "24V_BACKUP", "2V5", "1V1", "1V3_PER", "1V3_VDDA", "3V3STBY", "VPMIC", "VMAIN",
};

static void printAboutHelp()
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

// The EEPROM report reads every field into one of these. The text has one byte more than the device is told
// of, for it may come without a terminator.
constexpr std::uint32_t textLength = 256;
static char fieldText[textLength + 1];
static std::uint8_t fieldCount;
static std::uint8_t fieldFlag;

static char* clearedText()
{
    std::memset(fieldText, 0, sizeof fieldText);
    return fieldText;
}

static std::uint8_t* unwrittenCount()
{
    fieldCount = 0xFF;
    return &fieldCount;
}

static std::uint8_t* clearedFlag()
{
    fieldFlag = 0;
    return &fieldFlag;
}

static void showText(const char* label, const char* operation, ApiError result)
{
    if (succeeded(operation, result))
        printLine(label, static_cast<const char*>(fieldText));
}

static void showCount(const char* label, const char* operation, ApiError result)
{
    if (succeeded(operation, result))
        printLine(label, fieldCount);
}

static void showAvailable(const char* label, const char* operation, ApiError result)
{
    if (succeeded(operation, result))
        printLine(label, fieldFlag ? "YES" : "NO");
}

static void showAddOnText(const char* label, const char* operation, ApiError result)
{
    if (result == boardNotFitted)
        printLine(label, "N/A");
    else if (result != notSupported)
        showText(label, operation, result);
}

static void showMounted(const char* radio, const char* operation, ApiError result)
{
    if (result == boardNotFitted)
        printLine(radio, " is mounted: N/A");
    else if (result != notSupported && succeeded(operation, result))
        printLine(radio, " is ", fieldFlag ? "mounted" : "not mounted");
}

static void showMainBoard(AboutHandle about)
{
    showText("Unit serial=", "getUnitSerial", About_getUnitSerial(about, clearedText(), textLength));
    showText("Main PCB serial=", "getMainPCBSerial",
             About_getMainPCBSerial(about, clearedText(), textLength));
    showText("Main PCB article number=", "getMainPCBArt",
             About_getMainPCBArt(about, clearedText(), textLength));
    showText("Main manufacturing date=", "getMainManufacturingDate",
             About_getMainManufacturingDate(about, clearedText(), textLength));
    showText("Main HW version=", "getMainHWversion",
             About_getMainHWversion(about, clearedText(), textLength));
    showText("Main prod rev=", "getMainProdRev", About_getMainProdRev(about, clearedText(), textLength));
    showText("Main prod art nr=", "getMainProdArtNr",
             About_getMainProdArtNr(about, clearedText(), textLength));
}

static void showEquipment(AboutHandle about)
{
    showCount("Number of CAN connections=", "getNrOfCANConnections",
              About_getNrOfCANConnections(about, unwrittenCount()));
    showCount("Number of ethernet connections=", "getNrOfETHConnections",
              About_getNrOfETHConnections(about, unwrittenCount()));
    showCount("Number of serial connections=", "getNrOfSerialConnections",
              About_getNrOfSerialConnections(about, unwrittenCount()));
    showCount("Number of USB connections=", "getNrOfUSBConnections",
              About_getNrOfUSBConnections(about, unwrittenCount()));
    showCount("Number of video connections=", "getNrOfVideoConnections",
              About_getNrOfVideoConnections(about, unwrittenCount()));

    // From here on the count keeps what the row before left in it.
    if (const ApiError result = About_getNrOfDigIOConnections(about, &fieldCount); result != notSupported)
        showCount("Nr of digital I/O connections=", "getNrOfDigIOConnections", result);

    showAvailable("Display available: ", "getIsDisplayAvailable",
                  About_getIsDisplayAvailable(about, clearedFlag()));
    showAvailable("TouchScreen available: ", "getIsTouchScreenAvailable",
                  About_getIsTouchScreenAvailable(about, clearedFlag()));

    if (const ApiError result = About_getNrOfCfgInConnections(about, &fieldCount); result != notSupported)
        showCount("Nr of Configurable inputs=", "getNrOfCfgInConnections", result);

    // The two names of the failing call are meant.
    if (const ApiError result = About_getNrOfPWMOutConnections(about, &fieldCount); result != notSupported)
        showCount("Nr of PWM outputs=",
                  result == boardNotFitted ? "getNrOfPWMOutConnections" : "getNrOfPWMOutInConnections",
                  result);

    std::int32_t buttons = 0;
    const ApiError result = About_getNrOfButtons(about, &buttons);
    if (result != notSupported && succeeded("getNrOfButtons", result))
        printLine("Nr of configurable buttons=", buttons);
}

static void showAddOnBoard(AboutHandle about)
{
    printLine("");
    printLine("Addon/Telematics board:");
    showAddOnText("Addon PCB serial=", "getAddOnPCBSerial",
                  About_getAddOnPCBSerial(about, clearedText(), textLength));
    showAddOnText("Addon board article number=", "getAddOnPCBArt",
                  About_getAddOnPCBArt(about, clearedText(), textLength));
    showAddOnText("Addon manufacturing date=", "getAddOnManufacturingDate",
                  About_getAddOnManufacturingDate(about, clearedText(), textLength));
    showAddOnText("Addon HW version=", "getAddOnHWversion",
                  About_getAddOnHWversion(about, clearedText(), textLength));
    showMounted("BT", "getIsBTMounted", About_getIsBTMounted(about, clearedFlag()));
    showMounted("GPRS", "getIsGPRSMounted", About_getIsGPRSMounted(about, clearedFlag()));
    showMounted("GPS", "getIsGPSMounted", About_getIsGPSMounted(about, clearedFlag()));
    showMounted("WLAN", "getIsWLANMounted", About_getIsWLANMounted(about, clearedFlag()));
}

static void reportEeprom(const Sources& sources)
{
    showMainBoard(sources.about);
    showEquipment(sources.about);
    showAddOnBoard(sources.about);
}

static void reportRawEeprom(const Sources& sources)
{
    enum Eeprom : std::int32_t
    {
        icm = 0,
        addOn = 1,
    };
    static std::uint8_t rawEepromBuffer[4096];
    constexpr std::uint8_t erased = 0xFF;

    Eeprom eeprom = icm;
    if (aboutArgs.eepromGiven && isWord(aboutArgs.eepromArgument, "ADDON"))
        eeprom = addOn;
    else if (aboutArgs.eepromGiven && !isWord(aboutArgs.eepromArgument, "ICM"))
    {
        printLine("Invalid argument: EEPROM argument should be ICM, or ADDON.");
        return;
    }

    const ApiError result = QVAuxPrivate_getEepromData(sources.privateAccess, eeprom, rawEepromBuffer,
                                                       sizeof rawEepromBuffer - 1);
    if (!succeeded("getEepromData", result))
        return;
    const void* end = std::memchr(rawEepromBuffer, erased, sizeof rawEepromBuffer);
    const std::size_t length =
        end ? static_cast<std::size_t>(static_cast<const std::uint8_t*>(end) - rawEepromBuffer)
            : sizeof rawEepromBuffer;
    std::fwrite(rawEepromBuffer, 1, length, stdout);
}

static void showStartupReason(DiagnosticHandle diagnostic)
{
    std::uint16_t reason = 0;
    if (!succeeded("getStartupReason", Diagnostic_getStartupReason(diagnostic, &reason)))
        return;
    const bool expected = reason == 0x00 || reason == 0x55 || reason == 0xAA || reason == 0xF0;
    printLine("StartupReason=", GetStartupReasonStringA(reason), expected ? " OK" : " ERROR");
}

// From here on, what a unit does not support is left out of the report.
static bool supported(const char* operation, ApiError result)
{
    return result != notSupported && succeeded(operation, result);
}

static void showShutdownReason(DiagnosticHandle diagnostic)
{
    constexpr std::uint16_t noError = 0x1F;
    std::uint16_t reason = 0;
    if (supported("getShutdownReason", Diagnostic_getShutDownReason(diagnostic, &reason)))
        printLine("ShutdownReason=", reason == noError ? "No error OK" : "Serious error ERROR");
}

static void showHwErrorStatus(DiagnosticHandle diagnostic)
{
    constexpr std::uint16_t lastHarmless = 0x82;
    std::uint16_t status = 0;
    if (supported("getHwErrorStatus", Diagnostic_getHwErrorStatus(diagnostic, &status)))
        printLine("Hw error status=", GetHwErrorStatusStringA(status),
                  status <= lastHarmless ? " OK" : " ERROR");
}

static void showTimer(DiagnosticHandle diagnostic)
{
    DiagnosticTimer timer = {};
    if (!supported("getTimer", Diagnostic_getTimer(diagnostic, &timer)))
        return;
    printLine("Run-time above 80C=", timer.runTimeAbove80, " min(s)");
    printLine("Run-time between 40C-60C=", timer.runTime40To60, " min(s)");
    printLine("Run-time between 60C-70C=", timer.runTime60To70, " min(s)");
    printLine("Run-time between 70C-80C=", timer.runTime70To80, " min(s)");
    printLine("Total heat time=", timer.totalHeatTime, " min(s)");
    printLine("Total run-time=", timer.totalRunTime, " min(s)");
    printLine("Total suspend time=", timer.totalSuspendTime, " min(s)");
}

static void showTemperatures(DiagnosticHandle diagnostic)
{
    enum Sensor : std::int32_t
    {
        cpu = 0,
        cpuBoard = 1,
    };
    std::int16_t temperature = 0;
    std::int32_t status = 0;
    if (supported("getSSTemp", Diagnostic_getSSTemp(diagnostic, &temperature)))
        printLine("SS temp=", temperature);
    if (supported("getPCBTemp", Diagnostic_getPCBTemp(diagnostic, &temperature)))
        printLine("PCB temp=", temperature);
    if (supported("getPMTemp", Diagnostic_getPMTemp(diagnostic, cpu, &temperature, &status)))
        printLine("CPU temp=", temperature);
    if (supported("getPMTemp", Diagnostic_getPMTemp(diagnostic, cpuBoard, &temperature, &status)))
        printLine("CPU BOARD temp=", temperature);
}

static void reportDiagnostic(const Sources& sources)
{
    showStartupReason(sources.diagnostic);
    showShutdownReason(sources.diagnostic);
    showHwErrorStatus(sources.diagnostic);
    showTimer(sources.diagnostic);

    std::int16_t minimum = 0;
    std::int16_t maximum = 0;
    if (supported("getMinMaxTemp", Diagnostic_getMinMaxTemp(sources.diagnostic, &minimum, &maximum)))
        printLine("Min temp=", minimum, ", max temp=", maximum);

    std::uint16_t powerCycles = 0;
    if (supported("getPowerCycles", Diagnostic_getPowerCycles(sources.diagnostic, &powerCycles)))
        printLine("Power cycles=", powerCycles);

    showTemperatures(sources.diagnostic);
}

static void reportAdc(const Sources& sources)
{
    std::int32_t channel = 0;
    for (const char* name : voltageChannelNames)
    {
        double volts = 0;
        const ApiError result = Adc_getVoltage(sources.adc, channel++, &volts);
        if (result == apiSuccess)
            printLine("VOLTAGE_", name, ": Voltage=", volts);
        else if (result != notSupported)
            printLine("VOLTAGE_", name, ": ", GetErrorStringA(result));
    }
}

struct Report
{
    const char* argument;
    void (*print)(const Sources& sources);
};

static const Report reports[] = {
    {"EEPROM", reportEeprom},
    {"RawEEPROM", reportRawEeprom},
    {"DIAGNOSTIC", reportDiagnostic},
    {"ADC", reportAdc},
};

static const Report* findReport(const char* argument)
{
    for (const Report& report : reports)
        if (isWord(argument, report.argument))
            return &report;
    return nullptr;
}

int handleAbout(const char* argument, int argc, char** argv, const char*, const option*, int longIndex)
{
    // The refusal names the version category. It is meant to.
    const Scan scan = scanOptions(argc, argv, longIndex, aboutOptions, BareOption::clearsValue,
                                  "Error: Version should not take any more options.");
    if (scan.help)
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
