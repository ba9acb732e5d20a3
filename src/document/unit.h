// Everything that one simulated unit is and remembers, with the defaults of a healthy, fully equipped one.
//
// Each record lists its keys in the unit file with describe(); the file is read, checked and written from
// these lists alone.

#pragma once

#include "document/version.h"

#include "device/qv_aux2.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

// How a value stands in the file where a plain number would not be read easily.

// true, false, or any other number.
template <typename Integer>
struct Flag
{
    Integer& value;
};

// These guides are for clang 14, which does not deduce the arguments of a record's template by itself.
template <typename Integer>
Flag(Integer&) -> Flag<Integer>;

struct Name
{
    std::int32_t value;
    const char* text;
};

// One of the names, or any other number.
template <typename Integer>
struct Named
{
    Integer& value;
    std::span<const Name> names;
};

template <typename Integer>
Named(Integer&, std::span<const Name>) -> Named<Integer>;

constexpr Name colorNames[] = {{0, "red"},  {1, "green"},   {2, "blue"},
                               {3, "cyan"}, {4, "magenta"}, {5, "yellow"}};
constexpr Name actionNames[] = {{0, "none"}, {1, "suspend"}, {2, "shutdown"}};
constexpr Name profileNames[] = {{0, "mouse next boot"}, {1, "touch next boot"}, {2, "mouse"}, {3, "touch"}};
constexpr Name bootModeNames[] = {{0, "normal"}, {3, "rescue"}, {4, "rescue with factory reset"}};
constexpr Name systemModeNames[] = {{0, "normal"}, {1, "rescue"}};

// Pairs of hexadecimal digits, a pair a byte.
template <typename Text>
struct HexDigits
{
    Text& text;
};

template <typename Text>
HexDigits(Text&) -> HexDigits<Text>;

// A count or reading that a unit may lack is null in the file; its operation then answers notSupported.
template <typename Value>
using Fitted = std::optional<Value>;

struct About
{
    std::string unitSerial = "QX2500417";
    std::string mainPcbSerial = "P0148832";
    std::string mainPcbArticle = "20-10452-03";
    std::string mainManufacturingDate = "2025-03-18";
    std::string mainHwVersion = "C2";
    std::string mainProductRevision = "R4";
    std::string mainProductArticle = "90-20017-11";
    std::uint8_t canConnections = 4;
    std::uint8_t ethernetConnections = 2;
    std::uint8_t serialConnections = 3;
    std::uint8_t usbConnections = 4;
    std::uint8_t videoConnections = 4;
    Fitted<std::uint8_t> digitalIoConnections = std::uint8_t{4};
    Fitted<std::uint8_t> configurableInputs = std::uint8_t{6};
    Fitted<std::uint8_t> pwmOutputs = std::uint8_t{2};
    Fitted<std::int32_t> buttons = 8;
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

// What one EEPROM holds: the text, then the bytes of `hex`, then `fill` to its end.
struct EepromImage
{
    static constexpr std::size_t size = 4096;

    std::string text;
    std::string hex;
    std::uint8_t fill = 0xFF; // an erased cell

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
    std::uint16_t startupReason = 0x55;
    Fitted<std::uint16_t> shutdownReason = std::uint16_t{31};
    Fitted<std::uint16_t> hwErrorStatus = std::uint16_t{0};
    std::uint32_t totalRunTime = 184213; // minutes
    std::uint32_t totalSuspendTime = 20144;
    std::uint32_t totalHeatTime = 312;
    std::uint32_t runTime40To60 = 96520;
    std::uint32_t runTime60To70 = 4211;
    std::uint32_t runTime70To80 = 87;
    std::uint32_t runTimeAbove80 = 0;
    std::int16_t minimumTemperature = -21; // degrees Celsius
    std::int16_t maximumTemperature = 76;
    std::uint16_t powerCycles = 1342;
    Fitted<std::int16_t> ssTemperature = std::int16_t{31};
    Fitted<std::int16_t> pcbTemperature = std::int16_t{34};
    Fitted<std::int16_t> cpuTemperature = std::int16_t{48};
    Fitted<std::int16_t> boardTemperature = std::int16_t{39};
    std::int32_t sensorStatus = 0; // the word beside the temperatures of CPU and CPU board

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

// Supply voltages in volts; each key is the name of its channel, in the order of the channel numbers.
struct Adc
{
    static constexpr std::array<const char*, 24> names = {
        "24VIN",      "24V", "12V", "12VID",   "5V",       "3V3",     "VTFT",  "5VSTB",
        "1V9",        "1V8", "1V5", "1V2",     "1V05",     "1V0",     "0V9",   "VREF_INT",
        "24V_BACKUP", "2V5", "1V1", "1V3_PER", "1V3_VDDA", "3V3STBY", "VPMIC", "VMAIN"};

    std::array<Fitted<double>, 24> volts = {24.12, 23.98, 12.04, 12.01, 5.02, 3.31, 3.29, 5.04,
                                            1.91,  1.8,   1.5,   1.2,   1.05, 1.0,  0.9,  1.21,
                                            23.7,  2.5,   1.102, 1.3,   1.31, 3.3,  4.21, 11.96};

    static void describe(auto& key, auto& self)
    {
        for (std::size_t channel = 0; channel < names.size(); ++channel)
            key(names[channel], self.volts[channel]);
    }
};

struct DigitalInputs
{
    Fitted<std::uint8_t> inputs = std::uint8_t{0};

    static void describe(auto& key, auto& self)
    {
        key("inputs", self.inputs);
    }
};

struct Lightsensor
{
    Fitted<std::uint16_t> illuminance = std::uint16_t{320}; // lux

    static void describe(auto& key, auto& self)
    {
        key("illuminance", self.illuminance);
    }
};

struct Buzzer
{
    std::uint16_t frequency = 2500; // Hz
    std::uint16_t volume = 1000;
    std::uint8_t enabled = 0;

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
    std::int32_t ledDimming = 0;

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
    double frequency = 1;        // Hz
    std::uint8_t dutyCycle = 50; // percent
    std::int32_t color = 1;
    std::uint8_t pulses = 1;
    std::uint8_t idleTime = 0; // in units of 100 ms
    std::int32_t startup = 1;

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

// Baud rates in kbit/s by channel. A unit has as many of them as it has CAN connections.
struct Can
{
    std::vector<std::uint16_t> baudrates = {250, 250, 500, 500};

    static void describe(auto& key, auto& self)
    {
        key("baudrates", self.baudrates);
    }
};

// Which supplies are on. Bit 0 of the video mask is channel 1.
struct Supplies
{
    std::uint8_t video = 15;
    std::int32_t can = 1;
    std::int32_t externalFan = 0;

    static void describe(auto& key, auto& self)
    {
        key("video", self.video);
        key("can", Flag{self.can});
        key("externalFan", Flag{self.externalFan});
    }
};

// What the System Supervisor keeps.
struct Config
{
    std::int32_t shortPressAction = 1;
    std::int32_t longPressAction = 2;
    std::uint16_t longPressTime = 3000; // ms
    std::int32_t onOffSignalAction = 2;
    std::uint32_t onOffSignalTime = 5; // s
    std::int32_t powerOnStartup = 0;
    std::int32_t startupTrigger = 3;
    std::uint16_t suspendMaxTime = 120; // minutes, 0 is no limit
    std::int16_t heatingLimit = -10;    // degrees Celsius
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
    static constexpr std::array<const char*, 11> settingKeys = {
        "rightClickTime",      "lowLevel",           "untouchLevel",           "debounceTime",
        "debounceTimeoutTime", "doubleClickMaxTime", "doubleClickTime",        "maxRightClickDistance",
        "useDejitter",         "calibrationWidth",   "calibrationMeasurements"};

    std::int32_t profile = 3;
    std::array<std::uint16_t, 11> settings = {1000, 48, 32, 20, 60, 250, 500, 24, 1, 40, 8};

    static void describe(auto& key, auto& self)
    {
        key("profile", Named{self.profile, profileNames});
        for (std::size_t setting = 0; setting < settingKeys.size(); ++setting)
            key(settingKeys[setting], self.settings[setting]);
    }
};

struct Radio
{
    std::int32_t power = 1;
    std::int32_t startupPower = 1;

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

// The firmware in one target.
struct Firmware
{
    std::string digest;                 // SHA-256 of the flashed bytes, empty for the factory's own
    std::uint64_t bytes = 0;            // how many were flashed
    bool incomplete = false;            // an upgrade was begun and not finished
    std::optional<Version> nextVersion; // reported from the next boot on

    static void describe(auto& key, auto& self)
    {
        key("digest", self.digest);
        key("bytes", self.bytes);
        key("incomplete", self.incomplete);
        key("nextVersion", self.nextVersion);
    }
};

// A status that the unit is made to report, whatever its job does.
struct ScriptedStatus
{
    std::int32_t state = 0;
    std::int32_t second = 0;
    ApiError error = 0;

    static void describe(auto& key, auto& self)
    {
        key("state", self.state);
        key("second", self.second);
        key("error", self.error);
    }
};

struct FirmwareWork
{
    std::uint32_t pace = 700; // ms that each state of a job lasts
    Firmware ss;
    Firmware fpga;
    Firmware front;
    std::vector<ScriptedStatus> statuses; // reported one a call instead of the job's own, the last for good

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
    bool running = true; // false between a shutdown and the next call
    bool completed = true;
    std::int32_t systemMode = 0;
    std::int32_t nextMode = 0;

    static void describe(auto& key, auto& self)
    {
        key("running", self.running);
        key("completed", self.completed);
        key("systemMode", Named{self.systemMode, systemModeNames});
        key("nextMode", Named{self.nextMode, bootModeNames});
    }
};

// What one operation does instead of its work. The first `skip` calls pass, then `times` calls show the
// fault, without `times` all of them.
struct Fault
{
    ApiError code = 0;    // answer this code
    bool ignored = false; // answer success, deliver and change nothing
    bool null = false;    // answer a null handle or text
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
    std::map<std::string, Fault> faults;                          // by operation
    std::map<std::string, std::optional<std::string>> errorTexts; // by decimal code, null for none

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
