// The command line: one table of long options that every category parses with, and what the categories
// do alike with the values they are given.

#pragma once

#include <cstddef>
#include <getopt.h>
#include <span>

// What getopt_long returns for each long option.
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
    // The same number as '?', which getopt_long returns for whatever it cannot take. The advanced category
    // therefore reads a mistyped option as this one. It is meant to stay so.
    OPT_RESCUE_MODE_NEXT_BOOT = 63,
    OPT_FACTORY_RESET = 64,
    OPT_SYSTEM_MODE = 65,
    OPT_BOOT_COMPLETED = 66,
    OPT_SHORT_HELP = 'h',
    OPT_SHORT_VERSION = 'v',
};

extern const char* const shortOptions;
extern const option longOptions[];

// A category: does all the work of one command line and prints all of its output. `argument` is the value
// of the category option, or noArgument(). The rest of the command line is read by going on with the same
// getopt_long parse, which is never reset. The result is not looked at. Module handles are given back at
// the end of the work; where there is none, after help or a refusal to begin, the process ends with them.
using CategoryHandler = int(const char* argument, int argc, char** argv, const char* shortOptions,
                            const option* longOptions, int longIndex);

// The next option's code, or endOfOptions.
constexpr int endOfOptions = -1;
int nextOption(int argc, char** argv, int& longIndex);

// The value of an option that was given none.
constexpr const char* noArgument()
{
    return "noArgument";
}

// True when the option read last has a value that is not empty.
bool hasValue();

// The value of the option read last, or noArgument().
const char* givenValue();

// Words on the command line are compared without regard to case.
bool isWord(const char* text, const char* word);

// True for the value of an option that reads its setting instead of changing it.
bool asksToRead(const char* value);

// True for the part of a report that `argument` names, and for every part where it names none.
bool isChosen(const char* argument, const char* part);

// Shows those of `items`, each with an `argument` of its own, that are chosen. False when none is.
template <typename Handle, typename Item, std::size_t count>
bool showChosen(Handle module, const char* argument, const Item (&items)[count],
                void (*show)(Handle, const Item&))
{
    bool shown = false;
    for (const Item& item : items)
        if (isChosen(argument, item.argument))
        {
            show(module, item);
            shown = true;
        }
    return shown;
}

// Decimal number at the start of `text`; 0 where there is none.
long parseNumber(const char* text);

// An option of a category: where to note that it was given, and its value. `value` is null for one that
// takes none.
struct InnerOption
{
    OptionCode code;
    bool* given;
    const char** value;
};

// What an option given again without a value does to the value given before.
enum class BareOption
{
    clearsValue,
    keepsValue,
};

// Notes the option read last, whose code is `code`. False when it is none of `options`.
bool noteOption(std::span<const InnerOption> options, int code, BareOption bare);

// What the options after the category came to.
struct Scan
{
    bool help = false;          // --help was met, and nothing after it was read
    bool anyGiven = false;      // an option of the category
    bool invalidOption = false; // any other

    bool showAll() const
    {
        return !anyGiven && !invalidOption;
    }

    bool onlyForeign() const
    {
        return !anyGiven && invalidOption;
    }
};

// Reads the rest of the command line into `options`. Every option that is not among them prints the line
// `refusal`, if there is one.
Scan scanOptions(int argc, char** argv, int longIndex, std::span<const InnerOption> options,
                 BareOption bare = BareOption::clearsValue, const char* refusal = nullptr);

// A setting without a value is read, with one it is changed.
template <typename Handle>
void readOrSet(Handle module, const char* value, void (*read)(Handle), void (*set)(Handle, const char*))
{
    if (asksToRead(value))
        read(module);
    else
        set(module, value);
}

// The same for one of several settings of one kind.
template <typename Handle, typename Setting>
void readOrSet(Handle module, const Setting& setting, const char* value, void (*read)(Handle, const Setting&),
               void (*set)(Handle, const Setting&, const char*))
{
    if (asksToRead(value))
        read(module, setting);
    else
        set(module, setting, value);
}
