#include "fobrob/option_table.h"

#include "fobrob/output.h"

#include <cstdlib>
#include <strings.h>

const char* const shortOptions = "hv";

// In this order getopt_long lists what an abbreviation could stand for.
const option longOptions[] = {
    {"wlanpower", optional_argument, nullptr, OPT_WLANPOWER},
    {"wlanstartuppower", optional_argument, nullptr, OPT_WLANSTARTUPPOWER},
    {"gsmpower", optional_argument, nullptr, OPT_GSMPOWER},
    {"gsmstartuppower", optional_argument, nullptr, OPT_GSMSTARTUPPOWER},
    {"gpspower", optional_argument, nullptr, OPT_GPSPOWER},
    {"gpsstartuppower", optional_argument, nullptr, OPT_GPSSTARTUPPOWER},
    {"bluetoothpower", optional_argument, nullptr, OPT_BLUETOOTHPOWER},
    {"bluetoothstartuppower", optional_argument, nullptr, OPT_BLUETOOTHSTARTUPPOWER},
    {"buzzer", no_argument, nullptr, OPT_BUZZER},
    {"version", optional_argument, nullptr, OPT_VERSION},
    {"temperature", optional_argument, nullptr, OPT_TEMPERATURE},
    {"power", optional_argument, nullptr, OPT_POWER},
    {"heater", no_argument, nullptr, OPT_HEATER},
    {"about", optional_argument, nullptr, OPT_ABOUT},
    {"led", no_argument, nullptr, OPT_LED},
    {"can", optional_argument, nullptr, OPT_CAN},
    {"digitalio", optional_argument, nullptr, OPT_DIGITALIO},
    {"onoff", no_argument, nullptr, OPT_ONOFF},
    {"touch", no_argument, nullptr, OPT_TOUCH},
    {"telematics", no_argument, nullptr, OPT_TELEMATICS},
    {"advanced", no_argument, nullptr, OPT_ADVANCED},
    {"help", no_argument, nullptr, OPT_HELP},
    {"list", no_argument, nullptr, OPT_LIST},
    {"frequency", optional_argument, nullptr, OPT_FREQUENCY},
    {"volume", optional_argument, nullptr, OPT_VOLUME},
    {"status", optional_argument, nullptr, OPT_STATUS},
    {"dutycycle", optional_argument, nullptr, OPT_DUTYCYCLE},
    {"color", optional_argument, nullptr, OPT_COLOR},
    {"pulses", optional_argument, nullptr, OPT_PULSES},
    {"idletime", optional_argument, nullptr, OPT_IDLETIME},
    {"startup", optional_argument, nullptr, OPT_STARTUP},
    {"baudrate", optional_argument, nullptr, OPT_BAUDRATE},
    {"vchannel1", optional_argument, nullptr, OPT_VCHANNEL1},
    {"vchannel2", optional_argument, nullptr, OPT_VCHANNEL2},
    {"vchannel3", optional_argument, nullptr, OPT_VCHANNEL3},
    {"vchannel4", optional_argument, nullptr, OPT_VCHANNEL4},
    {"extfan", optional_argument, nullptr, OPT_EXTFAN},
    {"update", required_argument, nullptr, OPT_UPDATE},
    {"verify", required_argument, nullptr, OPT_VERIFY},
    {"shutdown", no_argument, nullptr, OPT_SHUTDOWN},
    {"factory", no_argument, nullptr, OPT_FACTORY},
    {"filepath", required_argument, nullptr, OPT_FILEPATH},
    {"force", no_argument, nullptr, OPT_FORCE},
    {"rescue_mode_next_boot", no_argument, nullptr, OPT_RESCUE_MODE_NEXT_BOOT},
    {"factory_reset", no_argument, nullptr, OPT_FACTORY_RESET},
    {"system_mode", no_argument, nullptr, OPT_SYSTEM_MODE},
    {"boot_completed", no_argument, nullptr, OPT_BOOT_COMPLETED},
    {"shortpress", optional_argument, nullptr, OPT_SHORTPRESS},
    {"longpress_time", optional_argument, nullptr, OPT_LONGPRESS_TIME},
    {"longpress", optional_argument, nullptr, OPT_LONGPRESS},
    {"onoff_signal_time", optional_argument, nullptr, OPT_ONOFF_SIGNAL_TIME},
    {"onoff_signal", optional_argument, nullptr, OPT_ONOFF_SIGNAL},
    {"always_on", optional_argument, nullptr, OPT_ALWAYS_ON},
    {"unit_startup", optional_argument, nullptr, OPT_UNIT_STARTUP},
    {"suspend_max_time", optional_argument, nullptr, OPT_SUSPEND_MAX_TIME},
    {"mode", optional_argument, nullptr, OPT_MODE},
    {"setting", required_argument, nullptr, OPT_SETTING},
    {"value", optional_argument, nullptr, OPT_VALUE},
    {"eeprom", required_argument, nullptr, OPT_EEPROM},
    {"backlight", no_argument, nullptr, OPT_BACKLIGHT},
    {"intensity", optional_argument, nullptr, OPT_INTENSITY},
    {"automatic", optional_argument, nullptr, OPT_AUTOMATIC},
    {"led_dimming", optional_argument, nullptr, OPT_LED_DIMMING},
    {"lightsensor", no_argument, nullptr, OPT_LIGHTSENSOR},
    {"illuminance", no_argument, nullptr, OPT_ILLUMINANCE},
    {},
};

int nextOption(int argc, char** argv, int& longIndex)
{
    return getopt_long(argc, argv, shortOptions, longOptions, &longIndex);
}

bool hasValue()
{
    return optarg && *optarg;
}

const char* givenValue()
{
    return hasValue() ? optarg : noArgument();
}

bool isWord(const char* text, const char* word)
{
    return strcasecmp(text, word) == 0;
}

bool asksToRead(const char* value)
{
    return isWord(value, noArgument());
}

bool isChosen(const char* argument, const char* part)
{
    return asksToRead(argument) || isWord(argument, part);
}

long parseNumber(const char* text)
{
    return std::strtol(text, nullptr, 10);
}

bool noteOption(std::span<const InnerOption> options, int code, BareOption bare)
{
    for (const InnerOption& option : options)
    {
        if (option.code != code)
            continue;
        *option.given = true;
        if (option.value && (hasValue() || bare == BareOption::clearsValue))
            *option.value = givenValue();
        return true;
    }
    return false;
}

Scan scanOptions(int argc, char** argv, int longIndex, std::span<const InnerOption> options, BareOption bare,
                 const char* refusal)
{
    Scan scan;
    for (int code; (code = nextOption(argc, argv, longIndex)) != endOfOptions;)
    {
        if (code == OPT_HELP)
        {
            scan.help = true;
            return scan;
        }
        if (noteOption(options, code, bare))
        {
            scan.anyGiven = true;
            continue;
        }
        scan.invalidOption = true;
        if (refusal)
            printLine(refusal);
    }
    return scan;
}
