#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/output.h"
#include "fobrob/words.h"

#include <cstdint>

namespace
{

struct
{
    bool vchannel1Given = false;
    const char* vchannel1Value = noArgument();
    bool vchannel2Given = false;
    const char* vchannel2Value = noArgument();
    bool vchannel3Given = false;
    const char* vchannel3Value = noArgument();
    bool vchannel4Given = false;
    const char* vchannel4Value = noArgument();
    bool canGiven = false;
    const char* canValue = noArgument();
    bool extfanGiven = false;
    const char* extfanValue = noArgument();
} powerArgs;

const CategoryOption powerOptions[] = {
    {OPT_VCHANNEL1, &powerArgs.vchannel1Given, &powerArgs.vchannel1Value},
    {OPT_VCHANNEL2, &powerArgs.vchannel2Given, &powerArgs.vchannel2Value},
    {OPT_VCHANNEL3, &powerArgs.vchannel3Given, &powerArgs.vchannel3Value},
    {OPT_VCHANNEL4, &powerArgs.vchannel4Given, &powerArgs.vchannel4Value},
    {OPT_CAN, &powerArgs.canGiven, &powerArgs.canValue},
    {OPT_EXTFAN, &powerArgs.extfanGiven, &powerArgs.extfanValue},
};

// Intentional: the help has "start up", but the results have "Start-up". The output is fixed.
void printPowerHelp()
{
    printLine(
        "Category - Power\n"
        "Get and set current or start-up power status for video channels 1-4, CAN power \n"
        "and External Fan power.\n"
        "\n"
        "Usage\n"
        "This category must be passed an argument. It is possible to combine several \n"
        "arguments to get more information with one call.  See the table below for \n"
        "available arguments and examples how options could be combined.\n"
        "\n"
        "Two examples how options can be combined:\n"
        "Ex1: ./Fobrob --power=current --can=Enable --vchannel1=Disable --extfan\n"
        "Ex2: ./Fobrob --power=startup --vchannel1 --vchannel2 --can\n"
        "\n"
        "CATEGORY\tARG\tOPTION\t\tARG\t\tNOTE\n"
        "--power=\tcurrent\t\t\t\t\tShow current power status for all members.\n"
        "--power=\tcurrent\t--vchannel1\t\t\tGet current power status for video channel 1.\n"
        "--power=\tcurrent\t--vchannel2\t\t\tGet current power status for video channel 2.\n"
        "--power=\tcurrent\t--vchannel3\t\t\tGet current power status for video channel 3.\n"
        "--power=\tcurrent\t--vchannel4\t\t\tGet current power status for video channel 4.\n"
        "--power=\tcurrent\t--can\t\t\t\tGet current power status for CAN.\n"
        "--power=\tcurrent\t--extfan\t\t\tGet current power status for external fan.\n"
        "\n"
        "--power=\tcurrent\t--vchannel1=\tEnable/Disable\tSet current power status for video channel 1.\n"
        "--power=\tcurrent\t--vchannel2=\tEnable/Disable\tSet current power status for video channel 2.\n"
        "--power=\tcurrent\t--vchannel3=\tEnable/Disable\tSet current power status for video channel 3.\n"
        "--power=\tcurrent\t--vchannel4=\tEnable/Disable\tSet current power status for video channel 4.\n"
        "--power=\tcurrent\t--can=\t\tEnable/Disable\tSet current power status for CAN.\n"
        "--power=\tcurrent\t--extfan=\tEnable/Disable\tSet current power status for external fan.\n"
        "\n"
        "--power=\tstartup\t\t\t\t\tShow start up power status for all members.\n"
        "--power=\tstartup\t--vchannel1\t\t\tGet start up power status for video channel 1.\n"
        "--power=\tstartup\t--vchannel2\t\t\tGet start up power status for video channel 2.\n"
        "--power=\tstartup\t--vchannel3\t\t\tGet start up power status for video channel 3.\n"
        "--power=\tstartup\t--vchannel4\t\t\tGet start up power status for video channel 4.\n"
        "--power=\tstartup\t--can\t\t\t\tGet start up power status for CAN.\n"
        "--power=\tstartup\t--extfan\t\t\tGet start up power status for external fan.\n"
        "\n"
        "--power=\tstartup\t--vchannel1=\tEnable/Disable\tSet start up power status for video channel 1.\n"
        "--power=\tstartup\t--vchannel2=\tEnable/Disable\tSet start up power status for video channel 2.\n"
        "--power=\tstartup\t--vchannel3=\tEnable/Disable\tSet start up power status for video channel 3.\n"
        "--power=\tstartup\t--vchannel4=\tEnable/Disable\tSet start up power status for video channel 4.\n"
        "--power=\tstartup\t--can=\t\tEnable/Disable\tSet start up power status for CAN.\n"
        "--power=\tstartup\t--extfan=\tEnable/Disable\tSet start up power status for external fan.");
}

struct Modules
{
    PowerHandle power;
    ConfigHandle config;
};

enum class Mode
{
    none,
    current,
    startup,
};

Mode parseMode(const char* argument)
{
    if (equalsIgnoringCase(argument, "Current"))
        return Mode::current;
    if (equalsIgnoringCase(argument, "Startup"))
        return Mode::startup;
    return Mode::none;
}

const char* modeName(Mode mode)
{
    return mode == Mode::current ? "Current" : "Start-up";
}

// Getters and setters. Each calls the operation for `mode`.

ApiError getVideo(const Modules& modules, Mode mode, std::uint8_t* mask)
{
    return mode == Mode::current ? Power_getVideoPowerStatus(modules.power, mask)
                                 : Config_getVideoStartupPowerConfig(modules.config, mask);
}

ApiError setVideo(const Modules& modules, Mode mode, std::uint8_t mask)
{
    return mode == Mode::current ? Power_setVideoPowerStatus(modules.power, mask)
                                 : Config_setVideoStartupPowerConfig(modules.config, mask);
}

ApiError getCan(const Modules& modules, Mode mode, std::int32_t* state)
{
    return mode == Mode::current ? Power_getCanPowerStatus(modules.power, state)
                                 : Config_getCanStartupPowerConfig(modules.config, state);
}

ApiError setCan(const Modules& modules, Mode mode, std::int32_t state)
{
    return mode == Mode::current ? Power_setCanPowerStatus(modules.power, state)
                                 : Config_setCanStartupPowerConfig(modules.config, state);
}

ApiError getExtFan(const Modules& modules, Mode mode, std::int32_t* state)
{
    return mode == Mode::current ? Power_getExtFanPowerStatus(modules.power, state)
                                 : Config_getExtFanStartupPowerConfig(modules.config, state);
}

ApiError setExtFan(const Modules& modules, Mode mode, std::int32_t state)
{
    return mode == Mode::current ? Power_setExtFanPowerStatus(modules.power, state)
                                 : Config_setExtFanStartupPowerConfig(modules.config, state);
}

const char* stateText(bool enabled)
{
    return enabled ? "Enabled." : "Disabled.";
}

const char* setText(std::int32_t state)
{
    return state ? "Enable." : "Disable.";
}

// All channels share one mask on the device. It is read again for each channel, and the bits of the other
// channels are written back unchanged.
void readOrSetVideo(const Modules& modules, Mode mode, int channel, const char* value)
{
    std::uint8_t mask = 0;
    if (!succeeded("getVideoPowerStatus", getVideo(modules, mode, &mask)))
        return;

    const int bit = 1 << (channel - 1);
    if (isReadRequest(value))
    {
        printLine(modeName(mode), " - Video channel ", channel, " power status: ", stateText(mask & bit));
        return;
    }

    const std::int32_t state = valueOf(enableDisable, value, noSuchState);
    const auto changed = static_cast<std::uint8_t>(state ? mask | bit : mask & ~bit);
    if (state == noSuchState)
        printLine("Invalid argument");
    else if (succeeded("setVideoPowerStatus", setVideo(modules, mode, changed)))
        printLine(modeName(mode), " - Video channel ", channel, " power status set to ", setText(state));
}

void readOrSetCan(const Modules& modules, Mode mode, std::int32_t& readState)
{
    if (isReadRequest(powerArgs.canValue))
    {
        if (succeeded("getCanPowerStatus", getCan(modules, mode, &readState)))
            printLine(modeName(mode), " - CAN power status: ", stateText(readState == QV_ENABLED));
        return;
    }

    const std::int32_t state = valueOf(enableDisable, powerArgs.canValue, noSuchState);
    if (state == noSuchState)
        printLine("Invalid argument");
    else if (succeeded("setCanPowerStatus", setCan(modules, mode, state)))
        printLine(modeName(mode), " - CAN power status set to ", setText(state));
}

// Intentional: the status line is printed even after a failed read. It then shows the state that was left in
// `readState`, which may be that of CAN. In startup mode, the fan is set to the value of --can. Scripts
// depend on both.
void readOrSetExtFan(const Modules& modules, Mode mode, std::int32_t& readState)
{
    if (isReadRequest(powerArgs.extfanValue))
    {
        reportFailure("getExtFanPowerStatus", getExtFan(modules, mode, &readState));
        printLine(modeName(mode), " - External fan power status: ", stateText(readState == QV_ENABLED));
        return;
    }

    const char* value = mode == Mode::startup ? powerArgs.canValue : powerArgs.extfanValue;
    const std::int32_t state = valueOf(enableDisable, value, noSuchState);
    if (state == noSuchState)
        printLine("Invalid argument");
    else if (succeeded("setExtFanPowerStatus", setExtFan(modules, mode, state)))
        printLine(modeName(mode), " - External fan power status set to ", setText(state));
}

void readOrSetMembers(const Modules& modules, Mode mode, bool showAll)
{
    if (powerArgs.vchannel1Given || showAll)
        readOrSetVideo(modules, mode, 1, powerArgs.vchannel1Value);
    if (powerArgs.vchannel2Given || showAll)
        readOrSetVideo(modules, mode, 2, powerArgs.vchannel2Value);
    if (powerArgs.vchannel3Given || showAll)
        readOrSetVideo(modules, mode, 3, powerArgs.vchannel3Value);
    if (powerArgs.vchannel4Given || showAll)
        readOrSetVideo(modules, mode, 4, powerArgs.vchannel4Value);

    std::int32_t readState = 0;
    if (powerArgs.canGiven || showAll)
        readOrSetCan(modules, mode, readState);
    if (powerArgs.extfanGiven || showAll)
        readOrSetExtFan(modules, mode, readState);
}

} // namespace

int handlePower(const char* argument, int argc, char** argv, const char*, const option*, int longIndex)
{
    const Modules modules = {GetPower(), GetConfig()};
    powerArgs = {};
    const ParsedOptions parsed = parseOptions(argc, argv, longIndex, powerOptions,
                                              RepeatWithoutValue::clearsValue, "Invalid argument");
    if (parsed.help)
    {
        printPowerHelp();
        return 0;
    }

    const Mode mode = parseMode(argument);
    if (mode == Mode::none)
        printLine("Invalid argument: Current or Startup must be selected.");
    else
        readOrSetMembers(modules, mode, parsed.showAll());

    Power_release(modules.power);
    return static_cast<int>(Config_release(modules.config));
}
