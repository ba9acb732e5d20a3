#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/late_bound.h"
#include "fobrob/output.h"
#include "fobrob/words.h"

#include <cstdint>

namespace
{

struct
{
    bool shortpressGiven = false;
    const char* shortpressValue = noArgument();
    bool longpressGiven = false;
    const char* longpressValue = noArgument();
    bool longpressTimeGiven = false;
    const char* longpressTimeValue = noArgument();
    bool onoffSignalGiven = false;
    const char* onoffSignalValue = noArgument();
    bool onoffSignalTimeGiven = false;
    const char* onoffSignalTimeValue = noArgument();
    bool unitStartupGiven = false;
    const char* unitStartupValue = noArgument();
    bool suspendMaxTimeGiven = false;
    const char* suspendMaxTimeValue = noArgument();
    bool alwaysOnGiven = false;
    const char* alwaysOnValue = noArgument();
} onoffArgs;

const CategoryOption onoffOptions[] = {
    {OPT_SHORTPRESS, &onoffArgs.shortpressGiven, &onoffArgs.shortpressValue},
    {OPT_LONGPRESS, &onoffArgs.longpressGiven, &onoffArgs.longpressValue},
    {OPT_LONGPRESS_TIME, &onoffArgs.longpressTimeGiven, &onoffArgs.longpressTimeValue},
    {OPT_ONOFF_SIGNAL, &onoffArgs.onoffSignalGiven, &onoffArgs.onoffSignalValue},
    {OPT_ONOFF_SIGNAL_TIME, &onoffArgs.onoffSignalTimeGiven, &onoffArgs.onoffSignalTimeValue},
    {OPT_UNIT_STARTUP, &onoffArgs.unitStartupGiven, &onoffArgs.unitStartupValue},
    {OPT_SUSPEND_MAX_TIME, &onoffArgs.suspendMaxTimeGiven, &onoffArgs.suspendMaxTimeValue},
    {OPT_ALWAYS_ON, &onoffArgs.alwaysOnGiven, &onoffArgs.alwaysOnValue},
};

void printOnOffHelp()
{
    printLine(
        "Category - ONOFF\n"
        "Use this category to adjust the settings of the OnOff functionality, such as: startup and suspend triggers etc. \n"
        "\n"
        "Usage\n"
        "The category should not be passed an argument. If no option is used, all available\n"
        "information about the OnOff functionality will be printed. It is possible to combine \n"
        "several options to get more information with one call. See the table below for \n"
        "available arguments and examples.\n"
        "\n"
        "Two examples how options can be combined:\n"
        "Ex1: ./Fobrob --onoff --longpress=SHUTDOWN --longpress_time=2000 --shotpress=SUSPEND\n"
        "Ex2: ./Fobrob --onoff --onoff_signal=SUSPEND --suspend_max_time=120\n"
        "\n"
        "Category\tArg\tOption\t\tArg\t\tNote\n"
        "--onoff\t\t\t\t\t\t\tShow information about OnOff configuration.\n"
        "--onoff\t\t\t--shortpress\t\t\tGet Short button press action.\n"
        "--onoff\t\t\t--longpress\t\t\tGet Long button press action.\n"
        "--onoff\t\t\t--longpress_time\t\tGet Long button press trigger time.\n"
        "--onoff\t\t\t--onoff_signal\t\t\tGet OnOff signal action.\n"
        "--onoff\t\t\t--onoff_signal_time\t\tGet OnOff signal trigger time.\n"
        "--onoff\t\t\t--unit_startup\t\t\tGet unit startup trigger.\n"
        "--onoff\t\t\t--suspend_max_time\t\tGet maximum suspend time.\n"
        "\n"
        "--onoff\t\t\t--shortpress=\tNOACTION/SUSPEND/SHUTDOWN\tSet short press action.\n"
        "--onoff\t\t\t--longpress=\tNOACTION/SUSPEND/SHUTDOWN\tSet long press action.\n"
        "--onoff\t\t\t--longpress_time=\t[Length]\tSet long press trigger length in ms.\n"
        "--onoff\t\t\t--onoff_signal=\tNOACTION/SUSPEND/SHUTDOWN\tSet onoff - signal action.\n"
        "--onoff\t\t\t--onoff_signal_time=\t[Length]\tSet onoff-signal trigger length in s.\n"
        "--onoff\t\t\t--always_on=\tEnable/Disable\tSet unit to start always when power turned on.\n"
        "--onoff\t\t\t--unit_startup=\tFRONT/ONOFF/BOTH\tSet unit startup trigger.\n"
        "--onoff\t\t\t--suspend_max_time=\t[Length]\tSet maximum time in suspend in minutes.(0 = disable)");
}

using ButtonAction = std::int32_t;

const NamedValue actions[] = {
    {QV_ACTION_NONE, "NOACTION"},
    {QV_ACTION_SUSPEND, "SUSPEND"},
    {QV_ACTION_SHUTDOWN, "SHUTDOWN"},
};

constexpr ButtonAction noSuchAction = 10;

const char* actionToString(ButtonAction action)
{
    return nameOf(actions, action, "UNDEFINED ACTION");
}

ButtonAction stringToAction(const char* text)
{
    return valueOf(actions, text, noSuchAction);
}

using StartupTrigger = std::int32_t;

constexpr StartupTrigger button = QV_TRIGGER_FRONT_BUTTON;
constexpr StartupTrigger onOff = QV_TRIGGER_ON_OFF_SIGNAL;
constexpr StartupTrigger can = QV_TRIGGER_CAN;
constexpr StartupTrigger inputs = QV_TRIGGER_CONFIGURABLE_INPUTS;

const NamedValue triggerWords[] = {
    {button, "FRONT"},
    {onOff, "ONOFF"},
    {button | onOff, "BOTH"},
    {button, "Front_Button_Enabled"},
    {onOff, "OnOff_Signal_Enabled"},
    {button | onOff, "Both_Button_And_Signal_Enabled"},
    {can | button, "CAN_Button_Activity"},
    {can | onOff, "CAN_OnOff_Activity"},
    {can | button | onOff, "CAN_Button_OnOff_Activity"},
    {inputs | button, "CI_Button_Activity"},
    {inputs | onOff, "CI_OnOff_Activity"},
    {inputs | button | onOff, "CI_Button_OnOff_Activity"},
    {inputs | can | button, "CI_CAN_Button_Activity"},
    {inputs | can | onOff, "CI_CAN_OnOff_Activity"},
    {inputs | can | button | onOff, "All_Events"},
};

const NamedValue triggerDescriptions[] = {
    {button, "FRONT button"},
    {onOff, "ONOFF signal"},
    {button | onOff, "FRONT button and ONOFF signal"},
    {can | button, "Wake up on CAN and Buttons"},
    {can | onOff, "Wake up on CAN and On/Off/Ignition signal"},
    {can | button | onOff, "Wake up on CAN, Buttons and On/Off/Ignition signal"},
    {inputs | button, "Wake up on CI and Button State Change"},
    {inputs | onOff, "Wake up on CI and OnOff Signal State Change"},
    {inputs | button | onOff, "Wake up on CI, Button and OnOff Signal State Change"},
    {inputs | can | button, "Wake up on CI, CAN and Button State Change"},
    {inputs | can | onOff, "Wake up on CI, CAN and OnOff Signal State Change"},
    {inputs | can | button | onOff, "Wake up on all events"},
};

constexpr StartupTrigger noSuchTrigger = 255;

const char* startupTriggerToString(StartupTrigger trigger)
{
    return nameOf(triggerDescriptions, trigger, "UNDEFINED CONFIG");
}

StartupTrigger stringToStartupTrigger(const char* text)
{
    return valueOf(triggerWords, text, noSuchTrigger);
}

// A setting whose value is an action.
struct ActionSetting
{
    const char* readLabel;
    const char* setLabel;
    const char* getOperation;
    const char* setOperation;
    ApiError (*get)(ConfigHandle config, ButtonAction* action);
    ApiError (*set)(ConfigHandle config, ButtonAction action);
};

const ActionSetting shortPress = {"ShortPressAction: ",
                                  "Short press set to: ",
                                  "getShortPressAction",
                                  "setShortPressAction",
                                  lateBound<Config_getShortButtonPressAction>,
                                  lateBound<Config_setShortButtonPressAction>};

const ActionSetting longPress = {"LongPressAction: ",
                                 "Long press set to: ",
                                 "getLongPressAction",
                                 "setLongPressAction",
                                 lateBound<Config_getLongButtonPressAction>,
                                 lateBound<Config_setLongButtonPressAction>};

const ActionSetting onOffSignal = {"OnOffSignalAction: ",
                                   "OnOff Signal set to: ",
                                   "getOnOffSignalAction",
                                   "setOnOffSignalAction",
                                   lateBound<Config_getOnOffSigAction>,
                                   lateBound<Config_setOnOffSigAction>};

void readAction(ConfigHandle config, const ActionSetting& setting)
{
    ButtonAction action = 0;
    if (succeeded(setting.getOperation, setting.get(config, &action)))
        printLine(setting.readLabel, actionToString(action));
}

void setAction(ConfigHandle config, const ActionSetting& setting, const char* value)
{
    const ButtonAction action = stringToAction(value);
    if (action == noSuchAction)
        printLine("Invalid argument: The action argument is not valid.");
    else if (succeeded(setting.setOperation, setting.set(config, action)))
        printLine(setting.setLabel, actionToString(action));
}

// A setting whose value is a 16-bit time. Intentional: the number is truncated to 16 bits for the device, but
// the message shows all of it. The output is fixed.
struct TimeSetting
{
    const char* readLabel;
    const char* setLabel;
    const char* unit;
    const char* getOperation;
    const char* setOperation;
    ApiError (*get)(ConfigHandle config, std::uint16_t* time);
    ApiError (*set)(ConfigHandle config, std::uint16_t time);
};

const TimeSetting longPressTime = {"LongPressTime: ",
                                   "Long press time set to: ",
                                   "ms",
                                   "getLongPressTime",
                                   "setLongPressTime",
                                   lateBound<Config_getFrontBtnTrigTime>,
                                   lateBound<Config_setFrontBtnTrigTime>};

const TimeSetting suspendMaxTime = {"SuspendMaxTime: ",
                                    "Suspend Max time set to: ",
                                    "min",
                                    "getSuspendMax",
                                    "setSuspendMaxTime",
                                    lateBound<Config_getSuspendMaxTime>,
                                    lateBound<Config_setSuspendMaxTime>};

void readTime(ConfigHandle config, const TimeSetting& setting)
{
    std::uint16_t time = 0;
    if (succeeded(setting.getOperation, setting.get(config, &time)))
        printLine(setting.readLabel, time, setting.unit);
}

void setTime(ConfigHandle config, const TimeSetting& setting, const char* value)
{
    const long time = parseNumber(value);
    if (time < 0)
        printLine("Invalid argument: The time argument is not valid.");
    else if (succeeded(setting.setOperation, setting.set(config, static_cast<std::uint16_t>(time))))
        printLine(setting.setLabel, time, setting.unit);
}

void readOnOffSignalTime(ConfigHandle config)
{
    std::uint32_t seconds = 0;
    if (succeeded("getOnOffSignalTime", Config_getExtOnOffSigTrigTime(config, &seconds)))
        printLine("OnOffSignalTime: ", seconds, "s");
}

// Intentional: unlike the other times, this one is not range-checked.
void setOnOffSignalTime(ConfigHandle config, const char* value)
{
    const auto seconds = static_cast<std::uint32_t>(parseNumber(value));
    if (succeeded("setOnOffSignalTrigTime", Config_setExtOnOffSigTrigTime(config, seconds)))
        printLine("OnOff Signal time set to: ", seconds, "s");
}

void readAlwaysOn(ConfigHandle config)
{
    std::int32_t enabled = 0;
    if (succeeded("getPowerOnStartup", Config_getPowerOnStartup(config, &enabled)))
        printLine("PowerOnStartup: ", enabled == QV_ENABLED ? "Enabled" : "Disabled");
}

// Intentional: the help offers Enable and Disable, which are rejected. Scripts depend on the accepted words.
void setAlwaysOn(ConfigHandle config, const char* value)
{
    const std::int32_t state = valueOf(enabledDisabled, value, noSuchState);
    if (state == noSuchState)
        printLine("Invalid argument to always_on. Should be Enabled/Disabled");
    else if (succeeded("setPowerOnStartup", Config_setPowerOnStartup(config, state)))
        printLine("PowerOnStartup set to: ", value, ".");
}

void readUnitStartup(ConfigHandle config)
{
    StartupTrigger trigger = 0;
    if (succeeded("getUnitStartupConfig", Config_getStartupTriggerConfig(config, &trigger)))
        printLine("UnitStartup: ", startupTriggerToString(trigger));
}

void setUnitStartup(ConfigHandle config, const char* value)
{
    const StartupTrigger trigger = stringToStartupTrigger(value);
    if (trigger == noSuchTrigger)
        printLine("Invalid argument: The trigger argument is not valid.");
    else if (succeeded("setUnitStartupTrigger", Config_setStartupTriggerConfig(config, trigger)))
        printLine("Startup Trigger set to: ", startupTriggerToString(trigger));
}

} // namespace

int handleOnOff(const char*, int argc, char** argv, const char*, const option*, int longIndex)
{
    const ConfigHandle config = GetConfig();
    onoffArgs = {};
    const ParsedOptions parsed =
        parseOptions(argc, argv, longIndex, onoffOptions, RepeatWithoutValue::keepsValue);
    if (parsed.help)
    {
        printOnOffHelp();
        return 0;
    }

    if (parsed.onlyInvalidOptions())
        printLine("Invalid argument");
    if (onoffArgs.shortpressGiven || parsed.showAll())
        readOrSet(config, shortPress, onoffArgs.shortpressValue, readAction, setAction);
    if (onoffArgs.longpressGiven || parsed.showAll())
        readOrSet(config, longPress, onoffArgs.longpressValue, readAction, setAction);
    if (onoffArgs.longpressTimeGiven || parsed.showAll())
        readOrSet(config, longPressTime, onoffArgs.longpressTimeValue, readTime, setTime);
    if (onoffArgs.onoffSignalGiven || parsed.showAll())
        readOrSet(config, onOffSignal, onoffArgs.onoffSignalValue, readAction, setAction);
    if (onoffArgs.onoffSignalTimeGiven || parsed.showAll())
        readOrSet(config, onoffArgs.onoffSignalTimeValue, readOnOffSignalTime, setOnOffSignalTime);
    if (onoffArgs.alwaysOnGiven || parsed.showAll())
        readOrSet(config, onoffArgs.alwaysOnValue, readAlwaysOn, setAlwaysOn);
    if (onoffArgs.unitStartupGiven || parsed.showAll())
        readOrSet(config, onoffArgs.unitStartupValue, readUnitStartup, setUnitStartup);
    if (onoffArgs.suspendMaxTimeGiven || parsed.showAll())
        readOrSet(config, suspendMaxTime, onoffArgs.suspendMaxTimeValue, readTime, setTime);

    return static_cast<int>(Config_release(config));
}
