// The options of all categories, in one table for getopt_long.

#pragma once

#include <getopt.h>

// The code that getopt_long returns for each option.
enum OptionCode : int
{
    OPT_WLANPOWER = 0,
    OPT_WLANSTARTUPPOWER = 1,
    OPT_GSMPOWER = 2,
    OPT_GSMSTARTUPPOWER = 3,
    OPT_GPSPOWER = 4,
    OPT_GPSSTARTUPPOWER = 5,
    OPT_BLUETOOTHPOWER = 6,
    OPT_BLUETOOTHSTARTUPPOWER = 7,
    OPT_VERSION = 9,
    OPT_TEMPERATURE = 10,
    OPT_POWER = 11,
    OPT_HEATER = 12,
    OPT_ABOUT = 13,
    OPT_LED = 14,
    OPT_CAN = 15,
    OPT_DIGITALIO = 16,
    OPT_INTENSITY = 17,
    OPT_ONOFF = 18,
    OPT_ADVANCED = 19,
    OPT_BUZZER = 20,
    OPT_FREQUENCY = 21,
    OPT_VOLUME = 22,
    OPT_STATUS = 23,
    OPT_BAUDRATE = 24,
    OPT_VCHANNEL1 = 25,
    OPT_VCHANNEL2 = 26,
    OPT_VCHANNEL3 = 27,
    OPT_VCHANNEL4 = 28,
    OPT_EXTFAN = 29,
    OPT_UPDATE = 30,
    OPT_SHUTDOWN = 31,
    OPT_FACTORY = 32,
    OPT_FILEPATH = 33,
    OPT_LIST = 34,
    OPT_HELP = 35,
    OPT_DUTYCYCLE = 36,
    OPT_COLOR = 37,
    OPT_PULSES = 38,
    OPT_IDLETIME = 39,
    OPT_STARTUP = 40,
    OPT_SHORTPRESS = 41,
    OPT_LONGPRESS = 42,
    OPT_LONGPRESS_TIME = 43,
    OPT_ONOFF_SIGNAL = 44,
    OPT_ONOFF_SIGNAL_TIME = 45,
    OPT_ALWAYS_ON = 46,
    OPT_UNIT_STARTUP = 47,
    OPT_SUSPEND_MAX_TIME = 48,
    OPT_TELEMATICS = 49,
    OPT_TOUCH = 50,
    OPT_VERIFY = 52,
    OPT_FORCE = 53,
    OPT_MODE = 54,
    OPT_SETTING = 55,
    OPT_VALUE = 56,
    OPT_EEPROM = 57,
    OPT_BACKLIGHT = 58,
    OPT_AUTOMATIC = 59,
    OPT_LED_DIMMING = 60,
    OPT_LIGHTSENSOR = 61,
    OPT_ILLUMINANCE = 62,
    // Intentional: equal to '?', which getopt_long returns for an invalid option. A mistyped option of the
    // advanced category is therefore processed as this one.
    OPT_RESCUE_MODE_NEXT_BOOT = 63,
    OPT_FACTORY_RESET = 64,
    OPT_SYSTEM_MODE = 65,
    OPT_BOOT_COMPLETED = 66,
    OPT_SHORT_HELP = 'h',
    OPT_SHORT_VERSION = 'v',
};

extern const char* const shortOptions;
extern const option longOptions[]; // ends with an empty row

constexpr int endOfOptions = -1;

// Continues parsing the command line. Returns the code of the next option or endOfOptions. For an invalid
// option, getopt_long prints an error to standard error, and the function returns '?'. If the option is a
// long option, its row in longOptions is stored in `longIndex`.
int nextOption(int argc, char** argv, int& longIndex);
