#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/late_bound.h"
#include "fobrob/output.h"
#include "fobrob/words.h"

#include <cstdint>
#include <iterator>

namespace
{

struct TelematicsArgument
{
    bool given = false;
    const char* value = noArgument();
};

// One entry per row of telematicsSettings.
TelematicsArgument telematicsArgs[8];

struct TelematicsSetting
{
    OptionCode option;
    const char* readLabel;
    const char* setLabel;
    const char* getOperation; // in error messages
    const char* setOperation;
    ApiError (*get)(TelematicsHandle telematics, std::int32_t* status);
    ApiError (*set)(TelematicsHandle telematics, std::int32_t status);
};

// In the order in which they are processed. Intentional: some error messages spell the operation differently
// from the device API. The output is fixed.
const TelematicsSetting telematicsSettings[] = {
    {OPT_WLANPOWER, "WLAN Power status: ", "WLAN power set to: ", "getWLANPowerStatus", "setWLANPowerStatus",
     lateBound<Telematics_getWLANPowerStatus>, lateBound<Telematics_setWLANPowerStatus>},
    {OPT_WLANSTARTUPPOWER, "WLAN Startup Power status: ", "WLAN startup power set to: ",
     "getWLANStartI[PowerStatus", "setWLANStartupPowerStatus",
     lateBound<Telematics_getWLANStartUpPowerStatus>, lateBound<Telematics_setWLANStartUpPowerStatus>},
    {OPT_GSMPOWER, "GSM Power status: ", "GSM power set to: ", "getGPRSPowerStatus", "setGPRSPowerStatus",
     lateBound<Telematics_getGPRSPowerStatus>, lateBound<Telematics_setGPRSPowerStatus>},
    {OPT_GSMSTARTUPPOWER, "GSM Startup Power status: ", "GSM startup power set to: ",
     "getGPRSStartUpPowerStatus", "setGPRSStartupPowerStatus",
     lateBound<Telematics_getGPRSStartUpPowerStatus>, lateBound<Telematics_setGPRSStartUpPowerStatus>},
    {OPT_GPSPOWER, "GPS Power status: ", "GPS power set to: ", "getGPSPowerStatus", "setGPSPowerStatus",
     lateBound<Telematics_getGPSPowerStatus>, lateBound<Telematics_setGPSPowerStatus>},
    {OPT_GPSSTARTUPPOWER, "GPS Startup Power status: ", "GPS startup power set to: ",
     "getGPSStartUpPowerStatus", "setGPSStartUpPowerStatus", lateBound<Telematics_getGPSStartUpPowerStatus>,
     lateBound<Telematics_setGPSStartUpPowerStatus>},
    {OPT_BLUETOOTHPOWER, "Bluetooth Power status: ", "Bluetooth power set to: ", "getBTPowerStatus",
     "setBTPowerStatus", lateBound<Telematics_getBTPowerStatus>, lateBound<Telematics_setBTPowerStatus>},
    {OPT_BLUETOOTHSTARTUPPOWER, "Bluetooth Startup Power status: ", "Bluetooth startup power set to: ",
     "getBTStartUpPowerStatus", "setBTStartUpPowerStatus", lateBound<Telematics_getBTStartUpPowerStatus>,
     lateBound<Telematics_setBTStartUpPowerStatus>},
};

static_assert(std::size(telematicsSettings) == std::size(telematicsArgs));

TelematicsArgument& argumentOf(const TelematicsSetting& setting)
{
    return telematicsArgs[&setting - telematicsSettings];
}

// Intentional: the text mentions the OnOff functionality and lists Bluetooth before GPS. The output is fixed.
void printTelematicsHelp()
{
    printLine(
        "Category - Telematics\n"
        "Use this category to adjust the settings of the Telematics board functionality, such as: wlan power, gsm/gprs startup power etc. \n"
        "\n"
        "Usage\n"
        "The category should not be passed an argument. If no option is used, all available\n"
        "information about the OnOff functionality will be printed. It is possible to combine \n"
        "several options to get more information with one call. See the table below for \n"
        "available arguments and examples.\n"
        "\n"
        "An examples how options can be combined:\n"
        "Ex1: ./Fobrob --telematics --wlanpower=ENABLED --wlanstartuppower=ENABLED\n"
        "\n"
        "Category\tArg\tOption\t\tArg\t\tNote\n"
        "--telematics\t\t\t\t\t\t\tShow information about Telematics configuration.\n"
        "--telematics\t\t\t--wlanpower\t\t\tGet current wlan power status.\n"
        "--telematics\t\t\t--wlanstartuppower\t\t\tGet current wlan startup power status.\n"
        "--telematics\t\t\t--gsmpower\t\t\tGet current GSM/GPRS power status\n"
        "--telematics\t\t\t--gsmstartuppower\t\t\tGet current GSM/GPRS startup power status\n"
        "--telematics\t\t\t--bluetoothpower\t\t\tGet current bluetooth power status.\n"
        "--telematics\t\t\t--bluetoothstartuppower\t\t\tGet current bluetooth startup power status.\n"
        "--telematics\t\t\t--gpspower\t\t\tGet current GPS power status\n"
        "--telematics\t\t\t--gpsstartuppower\t\t\tGet current GPS startup power status\n"
        "\n"
        "--telematics\t\t\t--wlanpower=\tENABLED/DISABLED\tSet wlan power state.\n"
        "--telematics\t\t\t--wlanstartuppower=\tENABLED/DISABLED\tSet wlan startup power state.\n"
        "--telematics\t\t\t--gsmpower=\tENABLED/DISABLED\tSet GSM/GPRS power state.\n"
        "--telematics\t\t\t--gsmstartuppower=\tENABLED/DISABLED\tSet GSM/GPRS startup power state.\n"
        "--telematics\t\t\t--bluetoothpower=\tENABLED/DISABLED\tSet bluetooth power state.\n"
        "--telematics\t\t\t--bluetoothstartuppower=\tENABLED/DISABLED\tSet bluetooth startup power state.\n"
        "--telematics\t\t\t--gpspower=\tENABLED/DISABLED\tSet GPS power state.\n"
        "--telematics\t\t\t--gpsstartuppower=\tENABLED/DISABLED\tSet GPS startup power state.");
}

using PowerStatus = std::int32_t;

const NamedValue powerStatuses[] = {{QV_DISABLED, "DISABLED"}, {QV_ENABLED, "ENABLED"}};

constexpr PowerStatus noSuchStatus = 10;

const char* powerStatusToText(PowerStatus status)
{
    return nameOf(powerStatuses, status, "UNDEFINED STATUS");
}

PowerStatus textToPowerStatus(const char* text)
{
    return valueOf(powerStatuses, text, noSuchStatus);
}

void readStatus(TelematicsHandle telematics, const TelematicsSetting& setting)
{
    PowerStatus status = 0;
    if (succeeded(setting.getOperation, setting.get(telematics, &status)))
        printLine(setting.readLabel, powerStatusToText(status));
}

void setStatus(TelematicsHandle telematics, const TelematicsSetting& setting, const char* value)
{
    const PowerStatus status = textToPowerStatus(value);
    if (status == noSuchStatus)
        printLine("Invalid argument: The state argument is not valid.");
    else if (succeeded(setting.setOperation, setting.set(telematics, status)))
        printLine(setting.setLabel, powerStatusToText(status));
}

ParsedOptions parseTelematicsOptions(int argc, char** argv, int longIndex)
{
    CategoryOption options[std::size(telematicsSettings)];
    CategoryOption* next = options;
    for (const TelematicsSetting& setting : telematicsSettings)
    {
        TelematicsArgument& argument = argumentOf(setting);
        argument = {};
        *next++ = {setting.option, &argument.given, &argument.value};
    }
    return parseOptions(argc, argv, longIndex, options, RepeatWithoutValue::keepsValue);
}

} // namespace

int handleTelematics(const char*, int argc, char** argv, const char*, const option*, int longIndex)
{
    const TelematicsHandle telematics = GetTelematics();
    const ParsedOptions parsed = parseTelematicsOptions(argc, argv, longIndex);
    if (parsed.help)
    {
        printTelematicsHelp();
        return 0;
    }

    if (parsed.onlyInvalidOptions())
        printLine("Invalid argument");
    for (const TelematicsSetting& setting : telematicsSettings)
        if (argumentOf(setting).given || parsed.showAll())
            readOrSet(telematics, setting, argumentOf(setting).value, readStatus, setStatus);

    return static_cast<int>(Telematics_release(telematics));
}
