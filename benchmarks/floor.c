/* The least that a program can do for one command line: the same device calls and the same bytes, one write
   per line. It is built once for each row of the benchmark; ROW names the row's function.

   Calls and lines are fixed at build time. They suit the benchmark's device library, which returns success,
   writes no results, and has four CAN channels. Only the values of settings come from the command line, as
   text, as they do for fobrob. */

#include "device/qv_aux2.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <strings.h>
#include <unistd.h>

/* For doubles and the program's version, which fobrob formats with the C library too. */
#define PUT_FORMATTED(format, ...)                                                                           \
    do                                                                                                       \
    {                                                                                                        \
        char line[64];                                                                                       \
        snprintf(line, sizeof line, format, __VA_ARGS__);                                                    \
        put(line);                                                                                           \
    } while (0)

static void put(const char* line)
{
    if (write(STDOUT_FILENO, line, strlen(line)) < 0)
        _exit(1);
}

static char** values;

static long number(int index)
{
    return strtol(values[index], NULL, 10);
}

static int equalsIgnoringCase(int index, const char* word)
{
    return strcasecmp(values[index], word) == 0;
}

static void lightsensor(void)
{
    LightsensorHandle sensor = GetLightsensor();
    uint16_t illuminance = 0;
    Lightsensor_getIlluminance(sensor, &illuminance);
    put("Illuminance: 0\n");
    Lightsensor_release(sensor);
}

static void buzzer(void)
{
    BuzzerHandle buzzer = GetBuzzer();
    uint16_t number = 0;
    uint8_t enabled = 0;
    Buzzer_getFrequency(buzzer, &number);
    put("Buzzer Frequency: 0\n");
    Buzzer_getVolume(buzzer, &number);
    put("Buzzer Volume: 0\n");
    Buzzer_getTrigger(buzzer, &enabled);
    put("Buzzer status:  Disabled.\n");
    Buzzer_release(buzzer);
}

static void buzzer_set(void)
{
    BuzzerHandle buzzer = GetBuzzer();
    Buzzer_setFrequency(buzzer, (uint16_t)number(0));
    put("Buzzer frequency set to: 800 Hz.\n");
    Buzzer_release(buzzer);
}

static void backlight(void)
{
    BacklightHandle backlight = GetBacklight();
    uint8_t small = 0;
    int32_t state = 0;
    Backlight_getIntensity(backlight, &small);
    put("Intensity: 0\n");
    Backlight_getAutomaticBLStatus(backlight, &small);
    put("Automatic BL: Disabled\n");
    Backlight_getLedDimming(backlight, &state);
    put("LedDimming: Disabled\n");
    Backlight_release(backlight);
}

static void backlight_set(void)
{
    BacklightHandle backlight = GetBacklight();
    Backlight_setIntensity(backlight, (uint8_t)number(0));
    put("Backlight intensity set to: 200\n");
    Backlight_release(backlight);
}

static void led(void)
{
    FrontLEDHandle led = GetFrontLED();
    double frequency = 0;
    uint8_t small = 0;
    int32_t state = 0;
    FrontLED_getSignal(led, &frequency, &small);
    PUT_FORMATTED("LED Frequency: %g\n", frequency);
    FrontLED_getSignal(led, &frequency, &small);
    put("LED Duty Cycle: 0 %.\n");
    FrontLED_getStandardColor(led, &state);
    put("LED color: RED\n");
    FrontLED_getNrOfPulses(led, &small);
    put("LED pulses: 0\n");
    FrontLED_getIdleTime(led, &small);
    put("LED idle time: 0\n");
    FrontLED_getEnabledDuringStartup(led, &state);
    put("LED startup: Disabled.\n");
    FrontLED_release(led);
}

static void led_set(void)
{
    FrontLEDHandle led = GetFrontLED();
    FrontLED_setStandardColor(led, equalsIgnoringCase(0, "BLUE") ? QV_COLOR_BLUE : QV_COLOR_RED);
    put("LED color set to: BLUE\n");
    FrontLED_release(led);
}

static void can(void)
{
    CanSettingHandle can = GetCanSetting();
    AboutHandle about = GetAbout();
    uint8_t count = 0;
    About_getNrOfCANConnections(about, &count);
    About_release(about);
    uint16_t baudrate = 0;
    CanSetting_getBaudrate(can, 1, &baudrate);
    put("CAN device 0 baud rate: 0\n");
    CanSetting_getBaudrate(can, 2, &baudrate);
    put("CAN device 1 baud rate: 0\n");
    CanSetting_getBaudrate(can, 3, &baudrate);
    put("CAN device 2 baud rate: 0\n");
    CanSetting_getBaudrate(can, 4, &baudrate);
    put("CAN device 3 baud rate: 0\n");
    CanSetting_release(can);
}

static void can_set(void)
{
    CanSettingHandle can = GetCanSetting();
    AboutHandle about = GetAbout();
    uint8_t count = 0;
    About_getNrOfCANConnections(about, &count);
    About_release(about);
    CanSetting_setBaudrate(can, equalsIgnoringCase(0, "CAN1") ? 2 : 1, (uint16_t)number(1));
    put("CAN device 1 baud rate set to: 250\n");
    CanSetting_release(can);
}

static void heater(void)
{
    ConfigHandle config = GetConfig();
    int16_t limit = 0;
    Config_getHeatingTempLimit(config, &limit);
    put("Heating limit: 0 C.\n");
    Config_release(config);
}

static void heater_set(void)
{
    ConfigHandle config = GetConfig();
    Config_setHeatingTempLimit(config, (int16_t)number(0));
    put("Heater temperature set to: 5 C.\n");
    Config_release(config);
}

static void power_current(void)
{
    PowerHandle power = GetPower();
    ConfigHandle config = GetConfig();
    uint8_t mask = 0;
    int32_t state = 0;
    Power_getVideoPowerStatus(power, &mask);
    put("Current - Video channel 1 power status: Disabled.\n");
    Power_getVideoPowerStatus(power, &mask);
    put("Current - Video channel 2 power status: Disabled.\n");
    Power_getVideoPowerStatus(power, &mask);
    put("Current - Video channel 3 power status: Disabled.\n");
    Power_getVideoPowerStatus(power, &mask);
    put("Current - Video channel 4 power status: Disabled.\n");
    Power_getCanPowerStatus(power, &state);
    put("Current - CAN power status: Disabled.\n");
    Power_getExtFanPowerStatus(power, &state);
    put("Current - External fan power status: Disabled.\n");
    Power_release(power);
    Config_release(config);
}

static void power_startup(void)
{
    PowerHandle power = GetPower();
    ConfigHandle config = GetConfig();
    uint8_t mask = 0;
    int32_t state = 0;
    Config_getVideoStartupPowerConfig(config, &mask);
    put("Start-up - Video channel 1 power status: Disabled.\n");
    Config_getVideoStartupPowerConfig(config, &mask);
    put("Start-up - Video channel 2 power status: Disabled.\n");
    Config_getVideoStartupPowerConfig(config, &mask);
    put("Start-up - Video channel 3 power status: Disabled.\n");
    Config_getVideoStartupPowerConfig(config, &mask);
    put("Start-up - Video channel 4 power status: Disabled.\n");
    Config_getCanStartupPowerConfig(config, &state);
    put("Start-up - CAN power status: Disabled.\n");
    Config_getExtFanStartupPowerConfig(config, &state);
    put("Start-up - External fan power status: Disabled.\n");
    Power_release(power);
    Config_release(config);
}

static void power_set(void)
{
    PowerHandle power = GetPower();
    ConfigHandle config = GetConfig();
    Power_setCanPowerStatus(power, equalsIgnoringCase(1, "Enable") ? QV_ENABLED : QV_DISABLED);
    put("Current - CAN power status set to Enable.\n");
    Power_release(power);
    Config_release(config);
}

static void onoff(void)
{
    ConfigHandle config = GetConfig();
    int32_t state = 0;
    uint16_t time = 0;
    uint32_t seconds = 0;
    Config_getShortButtonPressAction(config, &state);
    put("ShortPressAction: NOACTION\n");
    Config_getLongButtonPressAction(config, &state);
    put("LongPressAction: NOACTION\n");
    Config_getFrontBtnTrigTime(config, &time);
    put("LongPressTime: 0ms\n");
    Config_getOnOffSigAction(config, &state);
    put("OnOffSignalAction: NOACTION\n");
    Config_getExtOnOffSigTrigTime(config, &seconds);
    put("OnOffSignalTime: 0s\n");
    Config_getPowerOnStartup(config, &state);
    put("PowerOnStartup: Disabled\n");
    Config_getStartupTriggerConfig(config, &state);
    put("UnitStartup: UNDEFINED CONFIG\n");
    Config_getSuspendMaxTime(config, &time);
    put("SuspendMaxTime: 0min\n");
    Config_release(config);
}

static void onoff_set(void)
{
    ConfigHandle config = GetConfig();
    Config_setShortButtonPressAction(config,
                                     equalsIgnoringCase(0, "SUSPEND") ? QV_ACTION_SUSPEND : QV_ACTION_NONE);
    put("Short press set to: SUSPEND\n");
    Config_release(config);
}

static void touch(void)
{
    static const char* const lines[] = {
        "TS_RIGHT_CLICK_TIME: 0\n",
        "TS_LOW_LEVEL: 0\n",
        "TS_UNTOUCHLEVEL: 0\n",
        "TS_DEBOUNCE_TIME: 0\n",
        "TS_DEBOUNCE_TIMEOUT_TIME: 0\n",
        "TS_DOUBLECLICK_MAX_CLICK_TIME: 0\n",
        "TS_DOUBLE_CLICK_TIME: 0\n",
        "TS_MAX_RIGHTCLICK_DISTANCE: 0\n",
        "TS_USE_DEJITTER: 0\n",
        "TS_CALIBTATION_WIDTH: 0\n",
        "TS_CALIBRATION_MEASUREMENTS: 0\n",
    };
    TouchScreenHandle touch = GetTouchScreen();
    int32_t mode = 0;
    uint16_t value = 0;
    TouchScreen_getMode(touch, &mode);
    put("TouchScreen Profile: MOUSE_NEXT_BOOT\n");
    for (int32_t setting = 0; setting < QV_TOUCH_RESTORE_DEFAULTS; ++setting)
    {
        TouchScreen_getAdvancedSetting(touch, setting, &value);
        put(lines[setting]);
    }
    TouchScreen_release(touch);
}

static void touch_set(void)
{
    TouchScreenHandle touch = GetTouchScreen();
    TouchScreen_setMode(touch, equalsIgnoringCase(0, "TOUCH") ? QV_TOUCH_TOUCH : QV_TOUCH_MOUSE_NEXT_BOOT);
    put("TouchScreen profile set to: TOUCH\n");
    TouchScreen_release(touch);
}

static void telematics(void)
{
    TelematicsHandle telematics = GetTelematics();
    int32_t status = 0;
    Telematics_getWLANPowerStatus(telematics, &status);
    put("WLAN Power status: DISABLED\n");
    Telematics_getWLANStartUpPowerStatus(telematics, &status);
    put("WLAN Startup Power status: DISABLED\n");
    Telematics_getGPRSPowerStatus(telematics, &status);
    put("GSM Power status: DISABLED\n");
    Telematics_getGPRSStartUpPowerStatus(telematics, &status);
    put("GSM Startup Power status: DISABLED\n");
    Telematics_getGPSPowerStatus(telematics, &status);
    put("GPS Power status: DISABLED\n");
    Telematics_getGPSStartUpPowerStatus(telematics, &status);
    put("GPS Startup Power status: DISABLED\n");
    Telematics_getBTPowerStatus(telematics, &status);
    put("Bluetooth Power status: DISABLED\n");
    Telematics_getBTStartUpPowerStatus(telematics, &status);
    put("Bluetooth Startup Power status: DISABLED\n");
    Telematics_release(telematics);
}

static void telematics_set(void)
{
    TelematicsHandle telematics = GetTelematics();
    Telematics_setWLANPowerStatus(telematics, equalsIgnoringCase(0, "ENABLED") ? QV_ENABLED : QV_DISABLED);
    put("WLAN power set to: ENABLED\n");
    Telematics_release(telematics);
}

static void put_program_version(void)
{
    PUT_FORMATTED("%s %d.%d.%d.%d\n", "fobrob", 2, 9, 0, 0);
}

static void program_version(void)
{
    put_program_version();
    put("\nFobrob is the property of the Fobrob project.\n\nWritten by the Fobrob project.\n");
}

static void version(void)
{
    AuxVersionHandle version = GetAuxVersion();
    uint8_t major = 0, minor = 0, release = 0, build = 0;
    put_program_version();
    AuxVersion_getFPGAVersion(version, &major, &minor, &release, &build);
    put("FPGAVersion: 0.0.0.0\n");
    AuxVersion_getFrontVersion(version, &major, &minor, &release, &build);
    put("FrontVersion: 0.0.0.0\n");
    AuxVersion_getSSVersion(version, &major, &minor, &release, &build);
    put("SSVersion: 0.0.0.0\n");
    AuxVersion_getQVAuxVersion(version, &major, &minor, &release, &build);
    put("QVAuxVersion: 0.0.0.0\n");
    AuxVersion_getQVAuxDrvVersion(version, &major, &minor, &release, &build);
    put("QVAuxDrvVersion: 0.0.0.0\n");
    AuxVersion_getOSVersion(version, &major, &minor, &release, &build);
    put("OSVersion: 0.0.0.0\n");
    AuxVersion_release(version);
}

static void temperature(void)
{
    DiagnosticHandle diagnostic = GetDiagnostic();
    int16_t degrees = 0;
    int32_t status = 0;
    Diagnostic_getSSTemp(diagnostic, &degrees);
    put("SS temp=0\n");
    Diagnostic_getPCBTemp(diagnostic, &degrees);
    put("PCB temp=0\n");
    Diagnostic_getPMTemp(diagnostic, QV_PM_SENSOR_CPU, &degrees, &status);
    put("CPU temp=0\n");
    Diagnostic_getPMTemp(diagnostic, QV_PM_SENSOR_CPU_BOARD, &degrees, &status);
    put("CPU BOARD temp=0\n");
    Diagnostic_release(diagnostic);
}

static void digitalio(void)
{
    DigIOHandle digIO = GetDigIO();
    uint8_t inputs = 0;
    DigIO_getDigIO(digIO, &inputs);
    put("Digital input 1: 0\n");
    DigIO_getDigIO(digIO, &inputs);
    put("Digital input 2: 0\n");
    DigIO_getDigIO(digIO, &inputs);
    put("Digital input 3: 0\n");
    DigIO_getDigIO(digIO, &inputs);
    put("Digital input 4: 0\n");
    DigIO_release(digIO);
}

static void about_adc(void)
{
    static const char* const names[] = QV_ADC_CHANNEL_NAMES;
    AdcHandle adc = GetAdc();
    AboutHandle about = GetAbout();
    DiagnosticHandle diagnostic = GetDiagnostic();
    QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();
    double volts = 0;
    for (int32_t channel = 0; channel < QV_ADC_CHANNEL_COUNT; ++channel)
    {
        Adc_getVoltage(adc, channel, &volts);
        PUT_FORMATTED("VOLTAGE_%s: Voltage=%g\n", names[channel], volts);
    }
    QVAuxPrivate_release(privateAccess);
    Adc_release(adc);
    Diagnostic_release(diagnostic);
    About_release(about);
}

static void about_diagnostic(void)
{
    AdcHandle adc = GetAdc();
    AboutHandle about = GetAbout();
    DiagnosticHandle diagnostic = GetDiagnostic();
    QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();
    DiagnosticTimer timer = {0};
    uint16_t number = 0;
    int16_t degrees = 0;
    int16_t maximum = 0;
    int32_t status = 0;
    Diagnostic_getStartupReason(diagnostic, &number);
    GetStartupReasonStringA(number);
    put("StartupReason= OK\n");
    Diagnostic_getShutDownReason(diagnostic, &number);
    put("ShutdownReason=Serious error ERROR\n");
    Diagnostic_getHwErrorStatus(diagnostic, &number);
    GetHwErrorStatusStringA(number);
    put("Hw error status= OK\n");
    Diagnostic_getTimer(diagnostic, &timer);
    put("Run-time above 80C=0 min(s)\n");
    put("Run-time between 40C-60C=0 min(s)\n");
    put("Run-time between 60C-70C=0 min(s)\n");
    put("Run-time between 70C-80C=0 min(s)\n");
    put("Total heat time=0 min(s)\n");
    put("Total run-time=0 min(s)\n");
    put("Total suspend time=0 min(s)\n");
    Diagnostic_getMinMaxTemp(diagnostic, &degrees, &maximum);
    put("Min temp=0, max temp=0\n");
    Diagnostic_getPowerCycles(diagnostic, &number);
    put("Power cycles=0\n");
    Diagnostic_getSSTemp(diagnostic, &degrees);
    put("SS temp=0\n");
    Diagnostic_getPCBTemp(diagnostic, &degrees);
    put("PCB temp=0\n");
    Diagnostic_getPMTemp(diagnostic, QV_PM_SENSOR_CPU, &degrees, &status);
    put("CPU temp=0\n");
    Diagnostic_getPMTemp(diagnostic, QV_PM_SENSOR_CPU_BOARD, &degrees, &status);
    put("CPU BOARD temp=0\n");
    QVAuxPrivate_release(privateAccess);
    Adc_release(adc);
    Diagnostic_release(diagnostic);
    About_release(about);
}

static void about_eeprom(void)
{
    AdcHandle adc = GetAdc();
    AboutHandle about = GetAbout();
    DiagnosticHandle diagnostic = GetDiagnostic();
    QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();
    char text[256] = "";
    uint8_t small = 0;
    int32_t buttons = 0;
    About_getUnitSerial(about, text, sizeof text);
    put("Unit serial=\n");
    About_getMainPCBSerial(about, text, sizeof text);
    put("Main PCB serial=\n");
    About_getMainPCBArt(about, text, sizeof text);
    put("Main PCB article number=\n");
    About_getMainManufacturingDate(about, text, sizeof text);
    put("Main manufacturing date=\n");
    About_getMainHWversion(about, text, sizeof text);
    put("Main HW version=\n");
    About_getMainProdRev(about, text, sizeof text);
    put("Main prod rev=\n");
    About_getMainProdArtNr(about, text, sizeof text);
    put("Main prod art nr=\n");
    About_getNrOfCANConnections(about, &small);
    put("Number of CAN connections=4\n");
    About_getNrOfETHConnections(about, &small);
    put("Number of ethernet connections=255\n");
    About_getNrOfSerialConnections(about, &small);
    put("Number of serial connections=255\n");
    About_getNrOfUSBConnections(about, &small);
    put("Number of USB connections=255\n");
    About_getNrOfVideoConnections(about, &small);
    put("Number of video connections=255\n");
    About_getNrOfDigIOConnections(about, &small);
    put("Nr of digital I/O connections=255\n");
    About_getIsDisplayAvailable(about, &small);
    put("Display available: NO\n");
    About_getIsTouchScreenAvailable(about, &small);
    put("TouchScreen available: NO\n");
    About_getNrOfCfgInConnections(about, &small);
    put("Nr of Configurable inputs=255\n");
    About_getNrOfPWMOutConnections(about, &small);
    put("Nr of PWM outputs=255\n");
    About_getNrOfButtons(about, &buttons);
    put("Nr of configurable buttons=0\n");
    put("\n");
    put("Addon/Telematics board:\n");
    About_getAddOnPCBSerial(about, text, sizeof text);
    put("Addon PCB serial=\n");
    About_getAddOnPCBArt(about, text, sizeof text);
    put("Addon board article number=\n");
    About_getAddOnManufacturingDate(about, text, sizeof text);
    put("Addon manufacturing date=\n");
    About_getAddOnHWversion(about, text, sizeof text);
    put("Addon HW version=\n");
    About_getIsBTMounted(about, &small);
    put("BT is not mounted\n");
    About_getIsGPRSMounted(about, &small);
    put("GPRS is not mounted\n");
    About_getIsGPSMounted(about, &small);
    put("GPS is not mounted\n");
    About_getIsWLANMounted(about, &small);
    put("WLAN is not mounted\n");
    QVAuxPrivate_release(privateAccess);
    Adc_release(adc);
    Diagnostic_release(diagnostic);
    About_release(about);
}

static void about_raw_eeprom(void)
{
    static uint8_t contents[QV_EEPROM_SIZE];
    AdcHandle adc = GetAdc();
    AboutHandle about = GetAbout();
    DiagnosticHandle diagnostic = GetDiagnostic();
    QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();
    QVAuxPrivate_getEepromData(privateAccess, QV_EEPROM_MAIN_BOARD, contents, sizeof contents - 1);
    const uint8_t* erased = memchr(contents, QV_EEPROM_ERASED, sizeof contents);
    if (write(STDOUT_FILENO, contents, erased ? (size_t)(erased - contents) : sizeof contents) < 0)
        _exit(1);
    QVAuxPrivate_release(privateAccess);
    Adc_release(adc);
    Diagnostic_release(diagnostic);
    About_release(about);
}

static void system_mode(void)
{
    FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
    AboutHandle about = GetAbout();
    QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();
    int32_t mode = 0;
    QVAuxPrivate_getSystemMode(privateAccess, &mode);
    put("System mode: 0\n");
    QVAuxPrivate_release(privateAccess);
    About_release(about);
    FirmwareUpgrade_release(upgrade);
}

/* The long texts. The benchmark generates text.h from the output of fobrob. */

static void text(void)
{
    put(
#include "text.h"
    );
}

static void category_help(void)
{
    GetBuzzer();
    text();
}

int main(int count, char** arguments)
{
    (void)count;
    values = arguments + 1;
    ROW();
    return 0;
}
