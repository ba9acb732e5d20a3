#include "fobrob/settings.h"

#include <algorithm>

namespace
{

SettingsCategory backlight()
{
    return {
        "Backlight",
        "--backlight",
        R"({"backlight": {"intensity": 90, "automatic": false, "ledDimming": true}})",
        {
            {"--intensity",
             {"Backlight_getIntensity([90])", "Intensity: 90\n", "getIntensity", "Intensity: 0\n"},
             "9",
             {{"Backlight_setIntensity(9)", "Backlight intensity set to: 9\n", "setIntensity"}},
             "Intensity: 9\n"},
            {"--automatic",
             {"Backlight_getAutomaticBLStatus([0])", "Automatic BL: Disabled\n", "getAutomaticBLStatus",
              "Automatic BL: Disabled\n"},
             "Enabled",
             {{"Backlight_setAutomaticBLFilter(4, 2, 40, 2)", "", "setAutomaticBLFilter"},
              {"Backlight_startAutomaticBL()", "Automatic BL started.\n", "startAutomaticBL"}},
             "Automatic BL: Enabled\n"},
            {"--led_dimming",
             {"Backlight_getLedDimming([1])", "LedDimming: Enabled\n", "getLedDimming",
              "LedDimming: Disabled\n"},
             "Disabled",
             {{"Backlight_setLedDimming(0)", "LedDimming enabled.\n", "setLedDimming"}},
             "LedDimming: Disabled\n"},
        },
    };
}

SettingsCategory buzzer()
{
    return {
        "Buzzer",
        "--buzzer",
        R"({"buzzer": {"frequency": 1234, "volume": 56, "enabled": true}})",
        {
            {"--frequency",
             {"Buzzer_getFrequency([1234])", "Buzzer Frequency: 1234\n", "getFrequency",
              "Buzzer Frequency: 0\n"},
             "800",
             {{"Buzzer_setFrequency(800)", "Buzzer frequency set to: 800 Hz.\n", "setFrequency"}},
             "Buzzer Frequency: 800\n"},
            {"--volume",
             {"Buzzer_getVolume([56])", "Buzzer Volume: 56\n", "getVolume", "Buzzer Volume: 0\n"},
             "40",
             {{"Buzzer_setVolume(40)", "Buzzer volume set to: 40\n", "setVolume"}},
             "Buzzer Volume: 40\n"},
            {"--status",
             {"Buzzer_getTrigger([1])", "Buzzer status:  Enabled.\n", "getTrigger",
              "Buzzer status:  Disabled.\n"},
             "Disable",
             {{"Buzzer_setTrigger(0)", "Buzzer status set to disable.\n", "setTrigger"}},
             "Buzzer status:  Disabled.\n"},
        },
    };
}

SettingsCategory heater()
{
    return {
        "Heater",
        "--heater",
        R"({"config": {"heatingLimit": -20}})",
        {
            {"--temperature",
             {"Config_getHeatingTempLimit([-20])", "Heating limit: -20 C.\n", "getHeatingTempLimit",
              "Heating limit: 0 C.\n"},
             "3",
             {{"Config_setHeatingTempLimit(3)", "Heater temperature set to: 3 C.\n", "setHeatingTempLimit"}},
             "Heating limit: 3 C.\n"},
        },
    };
}

// Frequency and duty cycle are set by one operation, so the other one must be read first.
Step signalBeforeChange()
{
    return {.call = "FrontLED_getSignal([7.25], [35])", .output = "", .report = "getSignal", .skips = 1};
}

SettingsCategory led()
{
    return {
        "Led",
        "--led",
        R"({"frontLed": {"frequency": 7.25, "dutyCycle": 35, "color": "blue", "pulses": 3, "idleTime": 12,
                     "startup": true}})",
        {
            {"--frequency",
             {"FrontLED_getSignal([7.25], [35])", "LED Frequency: 7.25\n", "getSignal", "LED Frequency: 0\n"},
             "10",
             {signalBeforeChange(),
              {"FrontLED_setSignal(10, 35)", "LED frequency set to: 10 Hz.\n", "setSignal"}},
             "LED Frequency: 10\n"},
            {"--dutycycle",
             {"FrontLED_getSignal([7.25], [35])", "LED Duty Cycle: 35 %.\n", "getSignal",
              "LED Duty Cycle: 0 %.\n"},
             "80",
             {signalBeforeChange(),
              {"FrontLED_setSignal(7.25, 80)", "LED duty cycle set to: 80 %.\n", "setSignal"}},
             "LED Duty Cycle: 80 %.\n"},
            {"--color",
             {"FrontLED_getStandardColor([2])", "LED color: BLUE\n", "getColor", "LED color: RED\n"},
             "cyan",
             {{"FrontLED_setStandardColor(3)", "LED color set to: CYAN\n", "setColor"}},
             "LED color: CYAN\n"},
            {"--pulses",
             {"FrontLED_getNrOfPulses([3])", "LED pulses: 3\n", "getNrOfPulses", "LED pulses: 0\n"},
             "4",
             {{"FrontLED_setNrOfPulses(4)", "LED pulses set to: 4\n", "setNrOfPulses"}},
             "LED pulses: 4\n"},
            {"--idletime",
             {"FrontLED_getIdleTime([12])", "LED idle time: 1200\n", "getIdleTime", "LED idle time: 0\n"},
             "500",
             {{"FrontLED_setIdleTime(5)", "LED idle time set to: 500\n", "setIdleTime"}},
             "LED idle time: 500\n"},
            {"--startup",
             {"FrontLED_getEnabledDuringStartup([1])", "LED startup: Enabled.\n", "getEnabledDuringStartup",
              "LED startup: Disabled.\n", "LED startup: Disabled.\n"},
             "Disable",
             {{"FrontLED_setEnabledDuringStartup(0)", "LED startup set to Disable.\n",
               "setEnabledDuringStartup"}},
             "LED startup: Disabled.\n"},
        },
    };
}

SettingsCategory onOff()
{
    return {
        "OnOff",
        "--onoff",
        "{}",
        {
            {"--shortpress",
             {"Config_getShortButtonPressAction([1])", "ShortPressAction: SUSPEND\n", "getShortPressAction",
              "ShortPressAction: NOACTION\n"},
             "NOACTION",
             {{"Config_setShortButtonPressAction(0)", "Short press set to: NOACTION\n",
               "setShortPressAction"}},
             "ShortPressAction: NOACTION\n"},
            {"--longpress",
             {"Config_getLongButtonPressAction([2])", "LongPressAction: SHUTDOWN\n", "getLongPressAction",
              "LongPressAction: NOACTION\n"},
             "SUSPEND",
             {{"Config_setLongButtonPressAction(1)", "Long press set to: SUSPEND\n", "setLongPressAction"}},
             "LongPressAction: SUSPEND\n"},
            {"--longpress_time",
             {"Config_getFrontBtnTrigTime([3000])", "LongPressTime: 3000ms\n", "getLongPressTime",
              "LongPressTime: 0ms\n"},
             "2500",
             {{"Config_setFrontBtnTrigTime(2500)", "Long press time set to: 2500ms\n", "setLongPressTime"}},
             "LongPressTime: 2500ms\n"},
            {"--onoff_signal",
             {"Config_getOnOffSigAction([2])", "OnOffSignalAction: SHUTDOWN\n", "getOnOffSignalAction",
              "OnOffSignalAction: NOACTION\n"},
             "SUSPEND",
             {{"Config_setOnOffSigAction(1)", "OnOff Signal set to: SUSPEND\n", "setOnOffSignalAction"}},
             "OnOffSignalAction: SUSPEND\n"},
            {"--onoff_signal_time",
             {"Config_getExtOnOffSigTrigTime([5])", "OnOffSignalTime: 5s\n", "getOnOffSignalTime",
              "OnOffSignalTime: 0s\n"},
             "90",
             {{"Config_setExtOnOffSigTrigTime(90)", "OnOff Signal time set to: 90s\n",
               "setOnOffSignalTrigTime"}},
             "OnOffSignalTime: 90s\n"},
            {"--always_on",
             {"Config_getPowerOnStartup([0])", "PowerOnStartup: Disabled\n", "getPowerOnStartup",
              "PowerOnStartup: Disabled\n"},
             "Enabled",
             {{"Config_setPowerOnStartup(1)", "PowerOnStartup set to: Enabled.\n", "setPowerOnStartup"}},
             "PowerOnStartup: Enabled\n"},
            {"--unit_startup",
             {"Config_getStartupTriggerConfig([3])", "UnitStartup: FRONT button and ONOFF signal\n",
              "getUnitStartupConfig", "UnitStartup: UNDEFINED CONFIG\n"},
             "ONOFF",
             {{"Config_setStartupTriggerConfig(2)", "Startup Trigger set to: ONOFF signal\n",
               "setUnitStartupTrigger"}},
             "UnitStartup: ONOFF signal\n"},
            {"--suspend_max_time",
             {"Config_getSuspendMaxTime([120])", "SuspendMaxTime: 120min\n", "getSuspendMax",
              "SuspendMaxTime: 0min\n"},
             "30",
             {{"Config_setSuspendMaxTime(30)", "Suspend Max time set to: 30min\n", "setSuspendMaxTime"}},
             "SuspendMaxTime: 30min\n"},
        },
        RepeatedOption::keepsValue,
    };
}

// The two values of --power: the beginning of their lines and the names of their operations.
struct PowerMode
{
    std::string heading;
    std::string module;
    std::string suffix;

    Step get(const std::string& member, const std::string& state, const std::string& text) const
    {
        const std::string line = heading + text + " power status: ";
        return {module + "get" + member + suffix + "([" + state + "])",
                line + (state == "0" ? "Disabled.\n" : "Enabled.\n"), "get" + member + "PowerStatus",
                line + "Disabled.\n"};
    }

    Step set(const std::string& member, const std::string& state, const std::string& text,
             const std::string& word) const
    {
        return {module + "set" + member + suffix + "(" + state + ")",
                heading + text + " power status set to " + word + ".\n", "set" + member + "PowerStatus"};
    }

    std::string output(const std::string& text, const std::string& state) const
    {
        return heading + text + " power status: " + state + "\n";
    }
};

// All channels are bits of one mask, which must be read before it is changed.
Setting videoSetting(const PowerMode& mode, int channel, const std::string& value, int changedMask)
{
    const bool enable = value == "Enable";
    const std::string text = "Video channel " + std::to_string(channel);
    Step read = mode.get("Video", "10", text);
    read.output = mode.output(text, enable ? "Disabled." : "Enabled.");
    Step before = {.call = read.call, .output = "", .report = read.report, .skips = 1};
    return {"--vchannel" + std::to_string(channel),
            read,
            value,
            {before, mode.set("Video", std::to_string(changedMask), text, value)},
            mode.output(text, enable ? "Enabled." : "Disabled.")};
}

std::vector<Setting> powerSettings(const PowerMode& mode)
{
    Step fan = mode.get("ExtFan", "1", "External fan");
    fan.afterReport = mode.output("External fan", "Disabled."); // the state of CAN, even if it was not read
    return {
        videoSetting(mode, 1, "Enable", 11),
        videoSetting(mode, 2, "Disable", 8),
        videoSetting(mode, 3, "Enable", 14),
        videoSetting(mode, 4, "Disable", 2),
        {"--can",
         mode.get("Can", "0", "CAN"),
         "Enable",
         {mode.set("Can", "1", "CAN", "Enable")},
         mode.output("CAN", "Enabled.")},
        {"--extfan",
         fan,
         "Disable",
         {mode.set("ExtFan", "0", "External fan", "Disable")},
         mode.output("External fan", "Disabled.")},
    };
}

SettingsCategory currentPower()
{
    return {
        "CurrentPower",
        "--power=current",
        R"({"power": {"video": 10, "can": false, "externalFan": true}})",
        powerSettings({"Current - ", "Power_", "PowerStatus"}),
        RepeatedOption::clearsValue,
        true,
    };
}

// The fan is set to the value of --can, so --extfan alone cannot change it.
std::vector<Setting> startupPowerSettings()
{
    std::vector<Setting> settings = powerSettings({"Start-up - ", "Config_", "StartupPowerConfig"});
    settings.back().value = "";
    return settings;
}

SettingsCategory startupPower()
{
    return {
        "StartupPower",
        "--power=startup",
        R"({"config": {"startupPower": {"video": 10, "can": false, "externalFan": true}}})",
        startupPowerSettings(),
    };
}

// One power state of a radio. `reports` are the names under which a failed read and a failed change are
// reported.
Setting radioSetting(const std::string& option, const std::string& operation, const std::string& readLabel,
                     const std::string& changeLabel, std::pair<std::string, std::string> reports,
                     bool isEnabled)
{
    const std::string state = isEnabled ? "ENABLED" : "DISABLED";
    const std::string value = isEnabled ? "DISABLED" : "ENABLED";
    return {option,
            {"Telematics_get" + operation + (isEnabled ? "([1])" : "([0])"), readLabel + state + "\n",
             reports.first, readLabel + "DISABLED\n"},
            value,
            {{"Telematics_set" + operation + (isEnabled ? "(0)" : "(1)"), changeLabel + value + "\n",
              reports.second}},
            readLabel + value + "\n"};
}

SettingsCategory telematics()
{
    return {
        "Telematics",
        "--telematics",
        R"({"telematics": {"wlan": {"power": true, "startupPower": false},
                       "gprs": {"power": false, "startupPower": true},
                       "gps": {"power": false, "startupPower": false},
                       "bluetooth": {"power": true, "startupPower": true}}})",
        {
            radioSetting("--wlanpower", "WLANPowerStatus", "WLAN Power status: ", "WLAN power set to: ",
                         {"getWLANPowerStatus", "setWLANPowerStatus"}, true),
            radioSetting("--wlanstartuppower", "WLANStartUpPowerStatus",
                         "WLAN Startup Power status: ", "WLAN startup power set to: ",
                         {"getWLANStartI[PowerStatus", "setWLANStartupPowerStatus"}, false),
            radioSetting("--gsmpower", "GPRSPowerStatus", "GSM Power status: ", "GSM power set to: ",
                         {"getGPRSPowerStatus", "setGPRSPowerStatus"}, false),
            radioSetting("--gsmstartuppower", "GPRSStartUpPowerStatus",
                         "GSM Startup Power status: ", "GSM startup power set to: ",
                         {"getGPRSStartUpPowerStatus", "setGPRSStartupPowerStatus"}, true),
            radioSetting("--gpspower", "GPSPowerStatus", "GPS Power status: ", "GPS power set to: ",
                         {"getGPSPowerStatus", "setGPSPowerStatus"}, false),
            radioSetting("--gpsstartuppower", "GPSStartUpPowerStatus",
                         "GPS Startup Power status: ", "GPS startup power set to: ",
                         {"getGPSStartUpPowerStatus", "setGPSStartUpPowerStatus"}, false),
            radioSetting("--bluetoothpower", "BTPowerStatus", "Bluetooth Power status: ",
                         "Bluetooth power set to: ", {"getBTPowerStatus", "setBTPowerStatus"}, true),
            radioSetting("--bluetoothstartuppower", "BTStartUpPowerStatus",
                         "Bluetooth Startup Power status: ", "Bluetooth startup power set to: ",
                         {"getBTStartUpPowerStatus", "setBTStartUpPowerStatus"}, true),
        },
        RepeatedOption::keepsValue,
        true,
    };
}

} // namespace

const std::vector<SettingsCategory>& settingsCategories()
{
    static const std::vector<SettingsCategory> categories = {
        backlight(), buzzer(), heater(), led(), onOff(), currentPower(), startupPower(), telematics()};
    return categories;
}

const std::vector<Setting>& settingsOf(const std::string& name)
{
    return std::ranges::find(settingsCategories(), name, &SettingsCategory::name)->settings;
}
