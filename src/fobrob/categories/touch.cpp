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
    bool modeGiven = false;
    const char* modeValue = noArgument();
    bool settingGiven = false;
    const char* settingValue = noArgument();
    bool valueGiven = false;
    const char* valueValue = noArgument();
} touchArgs;

const CategoryOption touchOptions[] = {
    {OPT_MODE, &touchArgs.modeGiven, &touchArgs.modeValue},
    {OPT_SETTING, &touchArgs.settingGiven, &touchArgs.settingValue},
    {OPT_VALUE, &touchArgs.valueGiven, &touchArgs.valueValue},
};

void printTouchHelp()
{
    printLine(
        "Category - Touch\n"
        "Use this category to adjust the settings of the touchscreen controller.\n"
        "\n"
        "Usage\n"
        "If no option is used, all available information about the Touch functionality will be printed.\n"
        "It is not possible to combine several settings, but mode and one setting can be combined.\n"
        "See the table below for available arguments.\n"
        "\n"
        "Examples how options can be used:\n"
        "Ex1: ./Fobrob --touch --setting=TS_RIGHT_CLICK_TIME --value=1000\n"
        "Ex2: ./Fobrob --touch --mode=TOUCH\n"
        "Ex3: ./Fobrob --touch --mode\n"
        "Ex3: ./Fobrob --touch --setting=TS_LOW_LEVEL\n"
        "\n"
        "Category\tArg\tOption\t\tArg\t\tNote\n"
        "--touch\t\t\t\t\t\t\tShow information about Touch configuration.\n"
        "\n"
        "--touch\t\t\t--mode\t\tGet the current profile.\n"
        "--touch\t\t\t--mode=MOUSE/TOUCH\t\tSet the mouse profile to mouse or touch profile.\n"
        "--touch\t\t\t--setting=SETTING\t\tGet the value of the setting.\n"
        "--touch\t\t\t--setting=SETTING\t--value=[value]\tSet the value of the setting.\n"
        "SETTING can be one of the following (see description in API: TouchScreen):\n"
        "TS_RIGHT_CLICK_TIME, TS_LOW_LEVEL, TS_UNTOUCHLEVEL, TS_DEBOUNCE_TIME, "
        "TS_DEBOUNCE_TIMEOUT_TIME, TS_DOUBLECLICK_MAX_CLICK_TIME, "
        "TS_DOUBLE_CLICK_TIME, TS_MAX_RIGHTCLICK_DISTANCE, TS_USE_DEJITTER, "
        "TS_CALIBRATION_WIDTH, TS_CALIBRATION_MEASUREMENTS"
        " and TS_RESTORE_DEFAULT_SETTINGS.");
}

using TouchMode = std::int32_t;

const NamedValue modes[] = {
    {QV_TOUCH_MOUSE_NEXT_BOOT, "MOUSE_NEXT_BOOT"},
    {QV_TOUCH_TOUCH_NEXT_BOOT, "TOUCH_NEXT_BOOT"},
    {QV_TOUCH_MOUSE, "MOUSE"},
    {QV_TOUCH_TOUCH, "TOUCH"},
};

// The profiles of the next boot can be read but not set.
const NamedValue modesToSet[] = {{QV_TOUCH_TOUCH, "TOUCH"}, {QV_TOUCH_MOUSE, "MOUSE"}};

constexpr TouchMode noSuchMode = -1;

const char* touchModeName(TouchMode mode)
{
    return nameOf(modes, mode, "ERROR");
}

TouchMode parseTouchMode(const char* text)
{
    return valueOf(modesToSet, text, noSuchMode);
}

using TouchSetting = std::int32_t;

// Intentional: both spellings of the calibration width are accepted. The misspelled one comes first because
// it is the one that is printed.
const NamedValue settings[] = {
    {QV_TOUCH_RIGHT_CLICK_TIME, "TS_RIGHT_CLICK_TIME"},
    {QV_TOUCH_LOW_LEVEL, "TS_LOW_LEVEL"},
    {QV_TOUCH_UNTOUCH_LEVEL, "TS_UNTOUCHLEVEL"},
    {QV_TOUCH_DEBOUNCE_TIME, "TS_DEBOUNCE_TIME"},
    {QV_TOUCH_DEBOUNCE_TIMEOUT_TIME, "TS_DEBOUNCE_TIMEOUT_TIME"},
    {QV_TOUCH_DOUBLE_CLICK_MAX_CLICK_TIME, "TS_DOUBLECLICK_MAX_CLICK_TIME"},
    {QV_TOUCH_DOUBLE_CLICK_TIME, "TS_DOUBLE_CLICK_TIME"},
    {QV_TOUCH_MAX_RIGHT_CLICK_DISTANCE, "TS_MAX_RIGHTCLICK_DISTANCE"},
    {QV_TOUCH_USE_DEJITTER, "TS_USE_DEJITTER"},
    {QV_TOUCH_CALIBRATION_WIDTH, "TS_CALIBTATION_WIDTH"},
    {QV_TOUCH_CALIBRATION_WIDTH, "TS_CALIBRATION_WIDTH"},
    {QV_TOUCH_CALIBRATION_MEASUREMENTS, "TS_CALIBRATION_MEASUREMENTS"},
    {QV_TOUCH_RESTORE_DEFAULTS, "TS_RESTORE_DEFAULT_SETTINGS"},
};

// The next setting is QV_TOUCH_RESTORE_DEFAULTS, which has no value to show.
constexpr TouchSetting lastSettingShown = QV_TOUCH_CALIBRATION_MEASUREMENTS;
constexpr TouchSetting noSuchSetting = -1;

const char* touchSettingName(TouchSetting setting)
{
    return nameOf(settings, setting, "ERROR");
}

TouchSetting parseTouchSetting(const char* text)
{
    return valueOf(settings, text, noSuchSetting);
}

// Intentional: a failed read is reported under the label of a successful one. The output is fixed.
void readMode(TouchScreenHandle touch)
{
    TouchMode mode = 0;
    if (succeeded("TouchScreen Profile", TouchScreen_getMode(touch, &mode)))
        printLine("TouchScreen Profile: ", touchModeName(mode));
}

// Intentional: an unknown word is sent to the device as noSuchMode. What is printed depends on whether the
// device accepts it.
void setMode(TouchScreenHandle touch, const char* value)
{
    const TouchMode mode = parseTouchMode(value);
    if (succeeded("setMode", TouchScreen_setMode(touch, mode)))
        printLine("TouchScreen profile set to: ", touchModeName(mode));
}

void readSetting(TouchScreenHandle touch, TouchSetting setting, const char* name)
{
    std::uint16_t value = 0;
    if (succeeded("getAdvancedSetting", TouchScreen_getAdvancedSetting(touch, setting, &value)))
        printLine(name, ": ", value);
}

void setSetting(TouchScreenHandle touch, TouchSetting setting, const char* name, std::uint16_t value)
{
    if (succeeded("setAdvancedSetting", TouchScreen_setAdvancedSetting(touch, setting, value)))
        printLine(name, " set to: ", value);
}

void showEverything(TouchScreenHandle touch)
{
    readMode(touch);
    for (TouchSetting setting = 0; setting <= lastSettingShown; ++setting)
        readSetting(touch, setting, touchSettingName(setting));
}

// The messages show the name of the setting as it was typed.
void readOrSetSetting(TouchScreenHandle touch)
{
    const char* name = touchArgs.settingValue;
    const TouchSetting setting = parseTouchSetting(name);
    if (setting == noSuchSetting)
        printLine("Invalid setting: ", name);
    else if (touchArgs.valueGiven && !isReadRequest(touchArgs.valueValue))
        setSetting(touch, setting, name, static_cast<std::uint16_t>(parseNumber(touchArgs.valueValue)));
    else
        readSetting(touch, setting, name);
}

} // namespace

int handleTouch(const char*, int argc, char** argv, const char*, const option*, int longIndex)
{
    const TouchScreenHandle touch = GetTouchScreen();
    touchArgs = {};
    const ParsedOptions parsed =
        parseOptions(argc, argv, longIndex, touchOptions, RepeatWithoutValue::keepsValue);
    if (parsed.help)
    {
        printTouchHelp();
        return 0;
    }

    // --value alone does not select a setting, so it does not count as an option.
    const bool noneSelected = !touchArgs.modeGiven && !touchArgs.settingGiven;
    if (noneSelected && parsed.invalidOption)
        printLine("Invalid argument");
    else if (noneSelected)
        showEverything(touch);
    if (touchArgs.modeGiven)
        readOrSet(touch, touchArgs.modeValue, readMode, setMode);
    if (touchArgs.settingGiven)
        readOrSetSetting(touch);

    return static_cast<int>(TouchScreen_release(touch));
}
