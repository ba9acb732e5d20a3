// The unit document: the equipment and the state of one unit. The defaults are those of a healthy, fully
// equipped unit.
//
// Each record lists its keys in describe(). Documents are read, checked and written from these lists alone.
//
// A value that a unit may lack is a std::optional, which is null in the document if the unit lacks the value.
// The operation that reads it then returns QV_NOT_SUPPORTED. All other fields have the width of the device
// API's values, and may hold any of them.

#pragma once

#include "device/limits.h"
#include "device/qv_aux2.h"
#include "document/value_formats.h"
#include "document/version.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace document
{

constexpr Name colorNames[] = {{QV_COLOR_RED, "red"},         {QV_COLOR_GREEN, "green"},
                               {QV_COLOR_BLUE, "blue"},       {QV_COLOR_CYAN, "cyan"},
                               {QV_COLOR_MAGENTA, "magenta"}, {QV_COLOR_YELLOW, "yellow"}};
constexpr Name actionNames[] = {
    {QV_ACTION_NONE, "none"}, {QV_ACTION_SUSPEND, "suspend"}, {QV_ACTION_SHUTDOWN, "shutdown"}};
constexpr Name profileNames[] = {{QV_TOUCH_MOUSE_NEXT_BOOT, "mouse next boot"},
                                 {QV_TOUCH_TOUCH_NEXT_BOOT, "touch next boot"},
                                 {QV_TOUCH_MOUSE, "mouse"},
                                 {QV_TOUCH_TOUCH, "touch"}};
constexpr Name bootModeNames[] = {{QV_BOOT_NORMAL, "normal"},
                                  {QV_BOOT_RESCUE, "rescue"},
                                  {QV_BOOT_RESCUE_WITH_FACTORY_RESET, "rescue with factory reset"}};
constexpr Name systemModeNames[] = {{QV_SYSTEM_NORMAL, "normal"}, {QV_SYSTEM_RESCUE, "rescue"}};

// A bit for each video channel. Bit 0 is channel 1.
constexpr std::uint8_t allVideoChannels = (1u << VIDEO_CHANNEL_COUNT) - 1;

struct About
{
    std::string unitSerial = "QX2500417";
    std::string mainPcbSerial = "P0148832";
    std::string mainPcbArticle = "20-10452-03";
    std::string mainManufacturingDate = "2025-03-18";
    std::string mainHwVersion = "C2";
    std::string mainProductRevision = "R4";
    std::string mainProductArticle = "90-20017-11";
    std::uint8_t canConnections = CAN_CHANNEL_COUNT_USUAL;
    std::uint8_t ethernetConnections = 2;
    std::uint8_t serialConnections = 3;
    std::uint8_t usbConnections = 4;
    std::uint8_t videoConnections = VIDEO_CHANNEL_COUNT;
    std::optional<std::uint8_t> digitalIoConnections = std::uint8_t{DIGITAL_INPUT_COUNT};
    std::optional<std::uint8_t> configurableInputs = std::uint8_t{6};
    std::optional<std::uint8_t> pwmOutputs = std::uint8_t{2};
    std::optional<std::int32_t> buttons = 8;
    std::uint8_t display = 1;
    std::uint8_t touchScreen = 1;

    static void describe(auto& key, auto& self)
    {
        key("unitSerial", self.unitSerial);
        key("mainPcbSerial", self.mainPcbSerial);
        key("mainPcbArticle", self.mainPcbArticle);
        key("mainManufacturingDate", self.mainManufacturingDate);
        key("mainHwVersion", self.mainHwVersion);
        key("mainProductRevision", self.mainProductRevision);
        key("mainProductArticle", self.mainProductArticle);
        key("canConnections", self.canConnections);
        key("ethernetConnections", self.ethernetConnections);
        key("serialConnections", self.serialConnections);
        key("usbConnections", self.usbConnections);
        key("videoConnections", self.videoConnections);
        key("digitalIoConnections", self.digitalIoConnections);
        key("configurableInputs", self.configurableInputs);
        key("pwmOutputs", self.pwmOutputs);
        key("buttons", self.buttons);
        key("display", Flag{self.display});
        key("touchScreen", Flag{self.touchScreen});
    }
};

// The telematics board.
struct AddOnBoard
{
    bool fitted = true;
    std::string pcbSerial = "T0031290";
    std::string pcbArticle = "20-10611-01";
    std::string manufacturingDate = "2025-02-04";
    std::string hwVersion = "B1";
    std::uint8_t bluetooth = 1;
    std::uint8_t gprs = 1;
    std::uint8_t gps = 1;
    std::uint8_t wlan = 1;

    static void describe(auto& key, auto& self)
    {
        key("fitted", self.fitted);
        key("pcbSerial", self.pcbSerial);
        key("pcbArticle", self.pcbArticle);
        key("manufacturingDate", self.manufacturingDate);
        key("hwVersion", self.hwVersion);
        key("bluetooth", Flag{self.bluetooth});
        key("gprs", Flag{self.gprs});
        key("gps", Flag{self.gps});
        key("wlan", Flag{self.wlan});
    }
};

// The content of one EEPROM: the text, then the bytes of `hex`, then `fill` up to QV_EEPROM_SIZE.
struct EepromImage
{
    std::string text;
    std::string hex;
    std::uint8_t fill = QV_EEPROM_ERASED;

    static void describe(auto& key, auto& self)
    {
        key("text", self.text);
        key("hex", HexDigits{self.hex});
        key("fill", self.fill);
    }
};

struct Eeproms
{
    EepromImage main{.text = "SN=QX2500417;PCB=P0148832;ART=90-20017-11;DATE=2025-03-18;HW=C2;REV=R4\n",
                     .hex = {}};
    EepromImage addOn{.text = "SN=T0031290;ART=20-10611-01;DATE=2025-02-04;HW=B1\n", .hex = {}};

    static void describe(auto& key, auto& self)
    {
        key("main", self.main);
        key("addOn", self.addOn);
    }
};

struct Versions
{
    Version fpga{{1, 4, 0, 2}};
    Version front{{1, 2, 0, 0}};
    Version ss{{2, 7, 1, 0}};
    Version api{{2, 11, 0, 0}};
    Version driver{{2, 3, 0, 1}};
    Version os{{3, 1, 4, 0}};

    static void describe(auto& key, auto& self)
    {
        key("fpga", self.fpga);
        key("front", self.front);
        key("ss", self.ss);
        key("api", self.api);
        key("driver", self.driver);
        key("os", self.os);
    }
};

struct Diagnostic
{
    std::uint16_t startupReason = QV_STARTUP_FRONT_BUTTON;
    std::optional<std::uint16_t> shutdownReason = std::uint16_t{QV_SHUTDOWN_NO_ERROR};
    std::optional<std::uint16_t> hwErrorStatus = std::uint16_t{QV_HW_NO_ERROR};
    std::uint32_t totalRunTime = 184213; // in minutes, like all times of this record
    std::uint32_t totalSuspendTime = 20144;
    std::uint32_t totalHeatTime = 312;
    std::uint32_t runTime40To60 = 96520;
    std::uint32_t runTime60To70 = 4211;
    std::uint32_t runTime70To80 = 87;
    std::uint32_t runTimeAbove80 = 0;
    std::int16_t minimumTemperature = -21; // in degrees Celsius, like all temperatures of this record
    std::int16_t maximumTemperature = 76;
    std::uint16_t powerCycles = 1342;
    std::optional<std::int16_t> ssTemperature = std::int16_t{31};
    std::optional<std::int16_t> pcbTemperature = std::int16_t{34};
    std::optional<std::int16_t> cpuTemperature = std::int16_t{48};
    std::optional<std::int16_t> boardTemperature = std::int16_t{39};
    std::int32_t sensorStatus = 0; // status word of the sensors of CPU and CPU board

    static void describe(auto& key, auto& self)
    {
        key("startupReason", self.startupReason);
        key("shutdownReason", self.shutdownReason);
        key("hwErrorStatus", self.hwErrorStatus);
        key("totalRunTime", self.totalRunTime);
        key("totalSuspendTime", self.totalSuspendTime);
        key("totalHeatTime", self.totalHeatTime);
        key("runTime40To60", self.runTime40To60);
        key("runTime60To70", self.runTime60To70);
        key("runTime70To80", self.runTime70To80);
        key("runTimeAbove80", self.runTimeAbove80);
        key("minimumTemperature", self.minimumTemperature);
        key("maximumTemperature", self.maximumTemperature);
        key("powerCycles", self.powerCycles);
        key("ssTemperature", self.ssTemperature);
        key("pcbTemperature", self.pcbTemperature);
        key("cpuTemperature", self.cpuTemperature);
        key("boardTemperature", self.boardTemperature);
        key("sensorStatus", self.sensorStatus);
    }
};

// Supply voltages in volts, by channel number. The keys are the names of the channels.
struct Adc
{
    static constexpr std::array<const char*, QV_ADC_CHANNEL_COUNT> names = QV_ADC_CHANNEL_NAMES;

    std::array<std::optional<double>, QV_ADC_CHANNEL_COUNT> volts = {
        24.12, 23.98, 12.04, 12.01, 5.02, 3.31, 3.29,  5.04, 1.91, 1.8, 1.5,  1.2,
        1.05,  1.0,   0.9,   1.21,  23.7, 2.5,  1.102, 1.3,  1.31, 3.3, 4.21, 11.96};

    static void describe(auto& key, auto& self)
    {
        for (std::size_t channel = 0; channel < names.size(); ++channel)
            key(names[channel], self.volts[channel]);
    }
};

struct DigitalInputs
{
    std::optional<std::uint8_t> inputs = std::uint8_t{0};

    static void describe(auto& key, auto& self)
    {
        key("inputs", self.inputs);
    }
};

struct Lightsensor
{
    std::optional<std::uint16_t> illuminance = std::uint16_t{320}; // lux

    static void describe(auto& key, auto& self)
    {
        key("illuminance", self.illuminance);
    }
};

struct Buzzer
{
    std::uint16_t frequency = 2500; // in hertz
    std::uint16_t volume = 1000;    // from 0 to BUZZER_VOLUME_MAX
    std::uint8_t enabled = QV_DISABLED;

    static void describe(auto& key, auto& self)
    {
        key("frequency", self.frequency);
        key("volume", self.volume);
        key("enabled", Flag{self.enabled});
    }
};

struct Backlight
{
    std::uint8_t intensity = 200;
    std::uint8_t automatic = 0;
    std::array<std::int32_t, 4> filter = {1, 1, 20, 1};
    std::int32_t ledDimming = QV_DISABLED;

    static void describe(auto& key, auto& self)
    {
        key("intensity", self.intensity);
        key("automatic", Flag{self.automatic});
        key("filter", self.filter);
        key("ledDimming", Flag{self.ledDimming});
    }
};

struct FrontLed
{
    double frequency = 1;        // in hertz
    std::uint8_t dutyCycle = 50; // in percent
    std::int32_t color = QV_COLOR_GREEN;
    std::uint8_t pulses = 1;
    std::uint8_t idleTime = 0; // in units of LED_IDLE_TIME_STEP_MS
    std::int32_t startup = QV_ENABLED;

    static void describe(auto& key, auto& self)
    {
        key("frequency", self.frequency);
        key("dutyCycle", self.dutyCycle);
        key("color", Named{self.color, colorNames});
        key("pulses", self.pulses);
        key("idleTime", self.idleTime);
        key("startup", Flag{self.startup});
    }
};

// Baud rates in kbit/s, channel 1 first.
struct Can
{
    std::vector<std::uint16_t> baudrates = {250, 250, 500, 500};

    static void describe(auto& key, auto& self)
    {
        key("baudrates", self.baudrates);
    }
};

// Which supplies are on.
struct Supplies
{
    std::uint8_t video = allVideoChannels;
    std::int32_t can = QV_ENABLED;
    std::int32_t externalFan = QV_DISABLED;

    static void describe(auto& key, auto& self)
    {
        key("video", self.video);
        key("can", Flag{self.can});
        key("externalFan", Flag{self.externalFan});
    }
};

// The settings of the System Supervisor.
struct Config
{
    std::int32_t shortPressAction = QV_ACTION_SUSPEND;
    std::int32_t longPressAction = QV_ACTION_SHUTDOWN;
    std::uint16_t longPressTime = 3000; // in milliseconds
    std::int32_t onOffSignalAction = QV_ACTION_SHUTDOWN;
    std::uint32_t onOffSignalTime = 5; // in seconds
    std::int32_t powerOnStartup = QV_DISABLED;
    std::int32_t startupTrigger = QV_TRIGGER_FRONT_BUTTON | QV_TRIGGER_ON_OFF_SIGNAL;
    std::uint16_t suspendMaxTime = 120; // in minutes, 0 for no limit
    std::int16_t heatingLimit = -10;    // in degrees Celsius
    Supplies startupPower;

    static void describe(auto& key, auto& self)
    {
        key("shortPressAction", Named{self.shortPressAction, actionNames});
        key("longPressAction", Named{self.longPressAction, actionNames});
        key("longPressTime", self.longPressTime);
        key("onOffSignalAction", Named{self.onOffSignalAction, actionNames});
        key("onOffSignalTime", self.onOffSignalTime);
        key("powerOnStartup", Flag{self.powerOnStartup});
        key("startupTrigger", self.startupTrigger);
        key("suspendMaxTime", self.suspendMaxTime);
        key("heatingLimit", self.heatingLimit);
        key("startupPower", self.startupPower);
    }
};

struct Touch
{
    // Indexed by QvTouchSetting. The last setting, QV_TOUCH_RESTORE_DEFAULTS, stores nothing.
    static constexpr std::array<const char*, QV_TOUCH_RESTORE_DEFAULTS> settingKeys = {
        "rightClickTime",      "lowLevel",           "untouchLevel",           "debounceTime",
        "debounceTimeoutTime", "doubleClickMaxTime", "doubleClickTime",        "maxRightClickDistance",
        "useDejitter",         "calibrationWidth",   "calibrationMeasurements"};

    std::int32_t profile = QV_TOUCH_TOUCH;
    std::array<std::uint16_t, QV_TOUCH_RESTORE_DEFAULTS> settings = {1000, 48, 32, 20, 60, 250,
                                                                     500,  24, 1,  40, 8};

    static void describe(auto& key, auto& self)
    {
        key("profile", Named{self.profile, profileNames});
        for (std::size_t setting = 0; setting < settingKeys.size(); ++setting)
            key(settingKeys[setting], self.settings[setting]);
    }
};

struct Radio
{
    std::int32_t power = QV_ENABLED;
    std::int32_t startupPower = QV_ENABLED;

    static void describe(auto& key, auto& self)
    {
        key("power", Flag{self.power});
        key("startupPower", Flag{self.startupPower});
    }
};

struct Telematics
{
    Radio wlan;
    Radio gprs;
    Radio gps;
    Radio bluetooth;

    static void describe(auto& key, auto& self)
    {
        key("wlan", self.wlan);
        key("gprs", self.gprs);
        key("gps", self.gps);
        key("bluetooth", self.bluetooth);
    }
};

// The firmware of one target.
struct Firmware
{
    std::string digest;                 // SHA-256 of the flashed blocks, empty if nothing was flashed yet
    std::uint64_t bytes = 0;            // number of flashed bytes
    bool incomplete = false;            // an upgrade has started and not finished
    std::optional<Version> nextVersion; // the version from the next boot on; of the System Supervisor, from
                                        // the next power cut on

    static void describe(auto& key, auto& self)
    {
        key("digest", self.digest);
        key("bytes", self.bytes);
        key("incomplete", self.incomplete);
        key("nextVersion", self.nextVersion);
    }
};

// A status that the unit reports instead of the one its job has reached.
struct ScriptedStatus
{
    std::int32_t state = QV_UPGRADE_INITIATING;
    std::int32_t second = 0;
    ApiError error = QV_SUCCESS;

    static void describe(auto& key, auto& self)
    {
        key("state", self.state);
        key("second", self.second);
        key("error", self.error);
    }
};

struct FirmwareWork
{
    std::uint32_t pace = 700; // duration of each state of a job, in milliseconds
    Firmware ss;
    Firmware fpga;
    Firmware front;
    std::vector<ScriptedStatus> statuses; // reported one per status call; the last one repeats

    static void describe(auto& key, auto& self)
    {
        key("pace", self.pace);
        key("ss", self.ss);
        key("fpga", self.fpga);
        key("front", self.front);
        key("statuses", self.statuses);
    }
};

struct Boot
{
    bool running = true;   // false from a shutdown to the next call
    bool powerCut = false; // set from outside: the next call is the first after a power cut
    bool completed = true;
    std::int32_t systemMode = QV_SYSTEM_NORMAL;
    std::int32_t nextMode = QV_BOOT_NORMAL;

    static void describe(auto& key, auto& self)
    {
        key("running", self.running);
        key("powerCut", self.powerCut);
        key("completed", self.completed);
        key("systemMode", Named{self.systemMode, systemModeNames});
        key("nextMode", Named{self.nextMode, bootModeNames});
    }
};

// A fault of one operation. The first `skip` calls are not affected. The next `times` calls are, or all
// further calls if `times` is null.
struct Fault
{
    ApiError code = QV_SUCCESS; // the call returns this code
    bool ignored = false;       // the call returns QV_SUCCESS, writes no results and changes nothing
    bool null = false;          // the call returns a null handle or text
    std::uint32_t skip = 0;
    std::optional<std::uint32_t> times;

    static void describe(auto& key, auto& self)
    {
        key("code", self.code);
        key("ignored", self.ignored);
        key("null", self.null);
        key("skip", self.skip);
        key("times", self.times);
    }
};

struct Unit
{
    About about;
    AddOnBoard addOnBoard;
    Eeproms eeprom;
    Versions versions;
    Diagnostic diagnostic;
    Adc adc;
    DigitalInputs digitalInputs;
    Lightsensor lightsensor;
    Buzzer buzzer;
    Backlight backlight;
    FrontLed frontLed;
    Can can;
    Config config;
    Supplies power;
    Touch touch;
    Telematics telematics;
    FirmwareWork firmware;
    Boot boot;
    std::map<std::string, Fault> faults;                          // by name of the operation
    std::map<std::string, std::optional<std::string>> errorTexts; // by code in decimal, null for no text

    static void describe(auto& key, auto& self)
    {
        key("about", self.about);
        key("addOnBoard", self.addOnBoard);
        key("eeprom", self.eeprom);
        key("versions", self.versions);
        key("diagnostic", self.diagnostic);
        key("adc", self.adc);
        key("digitalInputs", self.digitalInputs);
        key("lightsensor", self.lightsensor);
        key("buzzer", self.buzzer);
        key("backlight", self.backlight);
        key("frontLed", self.frontLed);
        key("can", self.can);
        key("config", self.config);
        key("power", self.power);
        key("touch", self.touch);
        key("telematics", self.telematics);
        key("firmware", self.firmware);
        key("boot", self.boot);
        key("faults", self.faults);
        key("errorTexts", self.errorTexts);
    }
};

} // namespace document
