// The device API of the display computer: the operations and constants of libqv-aux2.so.2.11, and the
// contract between the library and its callers. The ranges of settings are in limits.h.
//
// Handles. Get<Module>() returns a new handle of a module, or null if the library cannot provide one. The
// module's operations take the handle as their first argument. The caller owns the handle and releases it
// with <Module>_release(). An operation that is called with a null handle, a handle of another module or a
// released handle returns an error code and does nothing else.
//
// Errors. An ApiError is QV_SUCCESS or an error code. GetErrorStringA() returns the text of an error code. An
// operation that fails leaves its out-parameters unchanged. A null out-parameter, buffer or path is an error.
// A value out of range is rejected, and the setting keeps its value.
//
// Results. Out-parameters are declared by width, never as bool or enum, because the library may write any
// bit pattern to them. Callers must expect values that have no named constant.
//
// Texts. A text is copied into `buffer`, whose size is `length` bytes. A text shorter than `length` bytes is
// terminated with a null byte. A longer text is truncated to `length` bytes. A text that fills the buffer
// has no terminator.
//
// Threads. Only one thread of a process may use the API at a time. Any number of processes may use it at the
// same time.
//
// The header is valid C and C++.

#ifndef QV_AUX2_H
#define QV_AUX2_H

#include <stdint.h>

// In C++, enumerators have the width and the signedness of the values that they are compared with.
#ifdef __cplusplus
#define QV_INT32 : int32_t
#define QV_UINT16 : uint16_t
#define QV_UINT32 : uint32_t
#define QV_AUX2_BEGIN                                                                                        \
    extern "C"                                                                                               \
    {
#define QV_AUX2_END }
#else
#define QV_INT32
#define QV_UINT16
#define QV_UINT32
#define QV_AUX2_BEGIN
#define QV_AUX2_END
#endif

#pragma GCC visibility push(default)

QV_AUX2_BEGIN

typedef uint32_t ApiError;

// The codes that callers may interpret. Any other code is a failure that only its text explains.
enum QvError QV_UINT32
{
    QV_SUCCESS = 0,
    QV_NOT_SUPPORTED = 2,     // the unit lacks the function or the equipment
    QV_BOARD_NOT_FITTED = 18, // the unit lacks the add-on board
};

// States of settings that are on or off.
enum QvState QV_INT32
{
    QV_DISABLED = 0,
    QV_ENABLED = 1,
};

typedef struct AboutModule* AboutHandle;
typedef struct AdcModule* AdcHandle;
typedef struct AuxVersionModule* AuxVersionHandle;
typedef struct BacklightModule* BacklightHandle;
typedef struct BuzzerModule* BuzzerHandle;
typedef struct CanSettingModule* CanSettingHandle;
typedef struct ConfigModule* ConfigHandle;
typedef struct DiagnosticModule* DiagnosticHandle;
typedef struct DigIOModule* DigIOHandle;
typedef struct FirmwareUpgradeModule* FirmwareUpgradeHandle;
typedef struct FrontLEDModule* FrontLEDHandle;
typedef struct LightsensorModule* LightsensorHandle;
typedef struct PowerModule* PowerHandle;
typedef struct QVAuxPrivateModule* QVAuxPrivateHandle;
typedef struct TelematicsModule* TelematicsHandle;
typedef struct TouchScreenModule* TouchScreenHandle;

// Each function returns the text of a code, or null if the code has none. The library owns the text, which is
// valid until the library is unloaded.

const char* GetErrorStringA(ApiError code);
const char* GetStartupReasonStringA(uint16_t reason);
const char* GetHwErrorStatusStringA(uint16_t status);

// About: the identity and the equipment of the unit, which are read-only. Dates and versions are free text.

AboutHandle GetAbout(void);
ApiError About_release(AboutHandle about);
ApiError About_getUnitSerial(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainPCBSerial(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainPCBArt(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainManufacturingDate(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainHWversion(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainProdRev(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainProdArtNr(AboutHandle about, char* buffer, uint32_t length);

// These return QV_NOT_SUPPORTED if the unit does not report the count.
ApiError About_getNrOfCANConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfETHConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfSerialConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfUSBConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfVideoConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfDigIOConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfCfgInConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfPWMOutConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfButtons(AboutHandle about, int32_t* count);

// `available` receives a nonzero value if the unit has the equipment, and 0 if it does not.
ApiError About_getIsDisplayAvailable(AboutHandle about, uint8_t* available);
ApiError About_getIsTouchScreenAvailable(AboutHandle about, uint8_t* available);

// The add-on board. These return QV_BOARD_NOT_FITTED if the unit has none. `mounted` receives a nonzero value
// if the board has the radio, and 0 if it does not.
ApiError About_getAddOnPCBSerial(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getAddOnPCBArt(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getAddOnManufacturingDate(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getAddOnHWversion(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getIsBTMounted(AboutHandle about, uint8_t* mounted);
ApiError About_getIsGPRSMounted(AboutHandle about, uint8_t* mounted);
ApiError About_getIsGPSMounted(AboutHandle about, uint8_t* mounted);
ApiError About_getIsWLANMounted(AboutHandle about, uint8_t* mounted);

// Adc: supply voltages. Channels are numbered from 0, in the order of their names.

#define QV_ADC_CHANNEL_COUNT 24
#define QV_ADC_CHANNEL_NAMES                                                                                 \
    {                                                                                                        \
        "24VIN", "24V", "12V", "12VID", "5V", "3V3", "VTFT", "5VSTB", "1V9", "1V8", "1V5", "1V2", "1V05",    \
            "1V0", "0V9", "VREF_INT", "24V_BACKUP", "2V5", "1V1", "1V3_PER", "1V3_VDDA", "3V3STBY", "VPMIC", \
            "VMAIN"                                                                                          \
    }

AdcHandle GetAdc(void);
ApiError Adc_release(AdcHandle adc);
// Returns QV_NOT_SUPPORTED if the unit does not measure the channel.
ApiError Adc_getVoltage(AdcHandle adc, int32_t channel, double* volts);

// AuxVersion: the versions of the installed software and firmware. Each number is 0 to 255.

AuxVersionHandle GetAuxVersion(void);
ApiError AuxVersion_release(AuxVersionHandle version);
ApiError AuxVersion_getFPGAVersion(AuxVersionHandle version, uint8_t* major, uint8_t* minor, uint8_t* release,
                                   uint8_t* build);
ApiError AuxVersion_getFrontVersion(AuxVersionHandle version, uint8_t* major, uint8_t* minor,
                                    uint8_t* release, uint8_t* build);
ApiError AuxVersion_getSSVersion(AuxVersionHandle version, uint8_t* major, uint8_t* minor, uint8_t* release,
                                 uint8_t* build);
ApiError AuxVersion_getQVAuxVersion(AuxVersionHandle version, uint8_t* major, uint8_t* minor,
                                    uint8_t* release, uint8_t* build);
ApiError AuxVersion_getQVAuxDrvVersion(AuxVersionHandle version, uint8_t* major, uint8_t* minor,
                                       uint8_t* release, uint8_t* build);
ApiError AuxVersion_getOSVersion(AuxVersionHandle version, uint8_t* major, uint8_t* minor, uint8_t* release,
                                 uint8_t* build);

// Backlight: the backlight of the display. The operations return QV_NOT_SUPPORTED on a unit without a
// display.

BacklightHandle GetBacklight(void);
ApiError Backlight_release(BacklightHandle backlight);

// Intensity: 0 to 255. Automatic control changes it while it runs.
ApiError Backlight_getIntensity(BacklightHandle backlight, uint8_t* intensity);
ApiError Backlight_setIntensity(BacklightHandle backlight, uint8_t intensity);

// Automatic control by ambient light. `running` receives a nonzero value while it runs, and 0 otherwise. The
// meaning of the four filter parameters is unknown; they cannot be read.
ApiError Backlight_getAutomaticBLStatus(BacklightHandle backlight, uint8_t* running);
ApiError Backlight_setAutomaticBLFilter(BacklightHandle backlight, int32_t first, int32_t second,
                                        int32_t third, int32_t fourth);
ApiError Backlight_startAutomaticBL(BacklightHandle backlight);
ApiError Backlight_stopAutomaticBL(BacklightHandle backlight);

// Whether the front LED is dimmed together with the display: QvState.
ApiError Backlight_getLedDimming(BacklightHandle backlight, int32_t* enabled);
ApiError Backlight_setLedDimming(BacklightHandle backlight, int32_t enabled);

// Buzzer. The frequency is in hertz, the volume is dimensionless; their ranges are in limits.h. The trigger
// is a QvState: the buzzer sounds while it is enabled.

BuzzerHandle GetBuzzer(void);
ApiError Buzzer_release(BuzzerHandle buzzer);
ApiError Buzzer_getFrequency(BuzzerHandle buzzer, uint16_t* frequency);
ApiError Buzzer_setFrequency(BuzzerHandle buzzer, uint16_t frequency);
ApiError Buzzer_getVolume(BuzzerHandle buzzer, uint16_t* volume);
ApiError Buzzer_setVolume(BuzzerHandle buzzer, uint16_t volume);
ApiError Buzzer_getTrigger(BuzzerHandle buzzer, uint8_t* enabled);
ApiError Buzzer_setTrigger(BuzzerHandle buzzer, uint8_t enabled);

// CanSetting: baud rates of the CAN channels, in kbit/s, 1 to 65535. Channels are numbered from 1 to the
// count of About_getNrOfCANConnections(); the operations return QV_NOT_SUPPORTED for any other channel.

CanSettingHandle GetCanSetting(void);
ApiError CanSetting_release(CanSettingHandle can);
ApiError CanSetting_getBaudrate(CanSettingHandle can, uint8_t channel, uint16_t* baudrate);
ApiError CanSetting_setBaudrate(CanSettingHandle can, uint8_t channel, uint16_t baudrate);

// Config: the settings of the System Supervisor for the front button, the on/off signal, start-up and power.

enum QvAction QV_INT32
{
    QV_ACTION_NONE = 0,
    QV_ACTION_SUSPEND = 1,
    QV_ACTION_SHUTDOWN = 2,
};

// The start-up triggers are a bit set. The unit rejects a set that contains neither the front button nor the
// on/off signal.
enum QvStartupTrigger QV_INT32
{
    QV_TRIGGER_FRONT_BUTTON = 1,
    QV_TRIGGER_ON_OFF_SIGNAL = 2,
    QV_TRIGGER_CAN = 4,
    QV_TRIGGER_CONFIGURABLE_INPUTS = 8,
};

// The mode of the next boot. It applies to one boot only.
enum QvBootMode QV_INT32
{
    QV_BOOT_NORMAL = 0,
    QV_BOOT_RESCUE = 3,
    QV_BOOT_RESCUE_WITH_FACTORY_RESET = 4,
};

ConfigHandle GetConfig(void);
ApiError Config_release(ConfigHandle config);

// Actions: QvAction.
ApiError Config_getShortButtonPressAction(ConfigHandle config, int32_t* action);
ApiError Config_setShortButtonPressAction(ConfigHandle config, int32_t action);
ApiError Config_getLongButtonPressAction(ConfigHandle config, int32_t* action);
ApiError Config_setLongButtonPressAction(ConfigHandle config, int32_t action);

// The minimum duration of a long press of the front button, in milliseconds: 0 to 65535.
ApiError Config_getFrontBtnTrigTime(ConfigHandle config, uint16_t* milliseconds);
ApiError Config_setFrontBtnTrigTime(ConfigHandle config, uint16_t milliseconds);

// The action on the on/off signal (QvAction), and the trigger time of the signal, in seconds.
ApiError Config_getOnOffSigAction(ConfigHandle config, int32_t* action);
ApiError Config_setOnOffSigAction(ConfigHandle config, int32_t action);
ApiError Config_getExtOnOffSigTrigTime(ConfigHandle config, uint32_t* seconds);
ApiError Config_setExtOnOffSigTrigTime(ConfigHandle config, uint32_t seconds);

// Whether the unit starts as soon as power is applied: QvState.
ApiError Config_getPowerOnStartup(ConfigHandle config, int32_t* enabled);
ApiError Config_setPowerOnStartup(ConfigHandle config, int32_t enabled);

// The other events that start the unit: bits of QvStartupTrigger.
ApiError Config_getStartupTriggerConfig(ConfigHandle config, int32_t* triggers);
ApiError Config_setStartupTriggerConfig(ConfigHandle config, int32_t triggers);

// How long the unit stays suspended before it shuts down, in minutes: 0 to 65535. 0 means no limit.
ApiError Config_getSuspendMaxTime(ConfigHandle config, uint16_t* minutes);
ApiError Config_setSuspendMaxTime(ConfigHandle config, uint16_t minutes);

// The temperature below which the unit heats before it starts, in degrees Celsius. Its range is in limits.h.
ApiError Config_getHeatingTempLimit(ConfigHandle config, int16_t* celsius);
ApiError Config_setHeatingTempLimit(ConfigHandle config, int16_t celsius);

// Power from the next boot on. `mask` has a bit for each video channel; bit 0 is channel 1. `enabled` is a
// QvState. The CAN operations return QV_NOT_SUPPORTED on a unit without CAN channels.
ApiError Config_getVideoStartupPowerConfig(ConfigHandle config, uint8_t* mask);
ApiError Config_setVideoStartupPowerConfig(ConfigHandle config, uint8_t mask);
ApiError Config_getCanStartupPowerConfig(ConfigHandle config, int32_t* enabled);
ApiError Config_setCanStartupPowerConfig(ConfigHandle config, int32_t enabled);
ApiError Config_getExtFanStartupPowerConfig(ConfigHandle config, int32_t* enabled);
ApiError Config_setExtFanStartupPowerConfig(ConfigHandle config, int32_t enabled);

// `mode`: QvBootMode. It cannot be read.
ApiError Config_setNextBootMode(ConfigHandle config, int32_t mode);

// Diagnostic: reasons for start-up and shutdown, counters and temperatures. The operations return
// QV_NOT_SUPPORTED for values that the unit does not report.

// Why the unit started. A watchdog reset and reasons without a constant are errors.
enum QvStartupReason QV_UINT16
{
    QV_STARTUP_POWER_APPLIED = 0x00,
    QV_STARTUP_WATCHDOG = 0x0F,
    QV_STARTUP_FRONT_BUTTON = 0x55,
    QV_STARTUP_ON_OFF_SIGNAL = 0xAA,
    QV_STARTUP_SUSPEND_ENDED = 0xF0,
};

// Why the unit shut down. Every other reason is a serious error.
enum QvShutdownReason QV_UINT16
{
    QV_SHUTDOWN_NO_ERROR = 0x1F,
};

// The status of the hardware. Values above QV_HW_LAST_HARMLESS are errors.
enum QvHwStatus QV_UINT16
{
    QV_HW_NO_ERROR = 0,
    QV_HW_SUPPLY_LOW = 16,
    QV_HW_SUPPLY_HIGH = 32,
    QV_HW_TEMPERATURE_HIGH = 64,
    QV_HW_CLOCK_LOST_TIME = 130,
    QV_HW_LAST_HARMLESS = 130,
    QV_HW_MAIN_SUPPLY_FAILED = 131,
    QV_HW_EEPROM_FAILED = 132,
};

// The temperature sensors of the power management.
enum QvPmSensor QV_INT32
{
    QV_PM_SENSOR_CPU = 0,
    QV_PM_SENSOR_CPU_BOARD = 1,
};

// Accumulated times since the unit was manufactured, in minutes.
typedef struct DiagnosticTimer
{
    uint32_t totalRunTime;
    uint32_t totalSuspendTime;
    uint32_t totalHeatTime;
    uint32_t runTime40To60; // at 40 to 60 degrees Celsius
    uint32_t runTime60To70;
    uint32_t runTime70To80;
    uint32_t runTimeAbove80;
} DiagnosticTimer;

DiagnosticHandle GetDiagnostic(void);
ApiError Diagnostic_release(DiagnosticHandle diagnostic);
ApiError Diagnostic_getStartupReason(DiagnosticHandle diagnostic, uint16_t* reason);
ApiError Diagnostic_getShutDownReason(DiagnosticHandle diagnostic, uint16_t* reason);
ApiError Diagnostic_getHwErrorStatus(DiagnosticHandle diagnostic, uint16_t* status);
ApiError Diagnostic_getTimer(DiagnosticHandle diagnostic, DiagnosticTimer* timer);
ApiError Diagnostic_getPowerCycles(DiagnosticHandle diagnostic, uint16_t* cycles);

// Temperatures in degrees Celsius: the lowest and highest ever measured, and the current ones.
ApiError Diagnostic_getMinMaxTemp(DiagnosticHandle diagnostic, int16_t* minimum, int16_t* maximum);
ApiError Diagnostic_getSSTemp(DiagnosticHandle diagnostic, int16_t* temperature);
ApiError Diagnostic_getPCBTemp(DiagnosticHandle diagnostic, int16_t* temperature);
// `sensor`: QvPmSensor. `status` receives a status word of the sensor. Its meaning is unknown.
ApiError Diagnostic_getPMTemp(DiagnosticHandle diagnostic, int32_t sensor, int16_t* temperature,
                              int32_t* status);

// DigIO: the digital inputs. `inputs` receives a bit for each input; bit 0 is input 1.

DigIOHandle GetDigIO(void);
ApiError DigIO_release(DigIOHandle digIO);
ApiError DigIO_getDigIO(DigIOHandle digIO, uint8_t* inputs);

// FirmwareUpgrade: firmware jobs and shutdown. A start operation begins a job, and
// FirmwareUpgrade_getUpgradeStatus() reports its progress. Only one job can run on a unit at a time; starting
// a second one fails.

// The states of a job, in order. A verification skips flashing.
enum QvUpgradeState QV_INT32
{
    QV_UPGRADE_INITIATING = 0,
    QV_UPGRADE_PREPARING = 1, // preparing the communication with the target
    QV_UPGRADE_READING_FILE = 2,
    QV_UPGRADE_CONVERTING_FILE = 3,
    QV_UPGRADE_FLASHING = 4,
    QV_UPGRADE_VERIFYING = 5,
    QV_UPGRADE_DONE = 6,
    QV_UPGRADE_DONE_WITH_ERROR = 7,
};

typedef struct UpgradeStatus
{
    int32_t state;  // QvUpgradeState
    int32_t second; // meaning unknown
    ApiError error; // QV_SUCCESS until the job fails
} UpgradeStatus;

FirmwareUpgradeHandle GetFirmwareUpgrade(void);
ApiError FirmwareUpgrade_release(FirmwareUpgradeHandle upgrade);

// `path` names an Intel HEX file and need not outlive the call. The meaning of `flag` is unknown; pass 0.
// The operations of the front microcontroller return QV_NOT_SUPPORTED on a unit without a display.
ApiError FirmwareUpgrade_startSSUpgrade(FirmwareUpgradeHandle upgrade, const char* path, int32_t flag);
ApiError FirmwareUpgrade_startSSVerification(FirmwareUpgradeHandle upgrade, const char* path, int32_t flag);
ApiError FirmwareUpgrade_startFpgaUpgrade(FirmwareUpgradeHandle upgrade, const char* path, int32_t flag);
ApiError FirmwareUpgrade_startFpgaVerification(FirmwareUpgradeHandle upgrade, const char* path, int32_t flag);
ApiError FirmwareUpgrade_startFrontUpgrade(FirmwareUpgradeHandle upgrade, const char* path, int32_t flag);
ApiError FirmwareUpgrade_startFrontVerification(FirmwareUpgradeHandle upgrade, const char* path,
                                                int32_t flag);

// If `flag` is 1, the call blocks until the job has a new status. A failed job is reported in
// `status->error`, not by the return value, which is QV_SUCCESS whenever `status` has been written.
ApiError FirmwareUpgrade_getUpgradeStatus(FirmwareUpgradeHandle upgrade, UpgradeStatus* status, int32_t flag);

// Shuts down the unit.
ApiError FirmwareUpgrade_shutDown(FirmwareUpgradeHandle upgrade);

// FrontLED: the LED on the front of the unit.

enum QvColor QV_INT32
{
    QV_COLOR_RED = 0,
    QV_COLOR_GREEN = 1,
    QV_COLOR_BLUE = 2,
    QV_COLOR_CYAN = 3,
    QV_COLOR_MAGENTA = 4,
    QV_COLOR_YELLOW = 5,
};

FrontLEDHandle GetFrontLED(void);
ApiError FrontLED_release(FrontLEDHandle led);

// Blink frequency in hertz and duty cycle in percent. Their ranges are in limits.h.
ApiError FrontLED_getSignal(FrontLEDHandle led, double* frequency, uint8_t* dutyCycle);
ApiError FrontLED_setSignal(FrontLEDHandle led, double frequency, uint8_t dutyCycle);

// `color`: QvColor.
ApiError FrontLED_getStandardColor(FrontLEDHandle led, int32_t* color);
ApiError FrontLED_setStandardColor(FrontLEDHandle led, int32_t color);

// The number of pulses in a group, 0 to 255, and the idle time between groups, 0 to 255 in units of
// LED_IDLE_TIME_STEP_MS.
ApiError FrontLED_getNrOfPulses(FrontLEDHandle led, uint8_t* pulses);
ApiError FrontLED_setNrOfPulses(FrontLEDHandle led, uint8_t pulses);
ApiError FrontLED_getIdleTime(FrontLEDHandle led, uint8_t* idleTime);
ApiError FrontLED_setIdleTime(FrontLEDHandle led, uint8_t idleTime);

// Whether the LED is lit while the unit starts: QvState.
ApiError FrontLED_getEnabledDuringStartup(FrontLEDHandle led, int32_t* enabled);
ApiError FrontLED_setEnabledDuringStartup(FrontLEDHandle led, int32_t enabled);

// Lightsensor: illuminance of the ambient light, in lux.

LightsensorHandle GetLightsensor(void);
ApiError Lightsensor_release(LightsensorHandle sensor);
ApiError Lightsensor_getIlluminance(LightsensorHandle sensor, uint16_t* illuminance);

// Power: the current power. Arguments and errors are those of the start-up power operations of Config.

PowerHandle GetPower(void);
ApiError Power_release(PowerHandle power);
ApiError Power_getVideoPowerStatus(PowerHandle power, uint8_t* mask);
ApiError Power_setVideoPowerStatus(PowerHandle power, uint8_t mask);
ApiError Power_getCanPowerStatus(PowerHandle power, int32_t* enabled);
ApiError Power_setCanPowerStatus(PowerHandle power, int32_t enabled);
ApiError Power_getExtFanPowerStatus(PowerHandle power, int32_t* enabled);
ApiError Power_setExtFanPowerStatus(PowerHandle power, int32_t enabled);

// QVAuxPrivate: direct access to the EEPROMs and to the registers of the System Supervisor.

enum QvEeprom QV_INT32
{
    QV_EEPROM_MAIN_BOARD = 0,
    QV_EEPROM_ADD_ON_BOARD = 1,
};

#define QV_EEPROM_SIZE 4096    // size of each EEPROM in bytes
#define QV_EEPROM_ERASED 0xFFu // value of an erased byte

// Commands: the group and the number of a register, and the value to write to it.
#define QV_SS_RESTORE_DEFAULTS 3, 0x65, 1
#define QV_SS_BOOT_COMPLETED 4, 6, 0xC3

enum QvSystemMode QV_INT32
{
    QV_SYSTEM_NORMAL = 0,
    QV_SYSTEM_RESCUE = 1,
};

QVAuxPrivateHandle GetQVAuxPrivate(void);
ApiError QVAuxPrivate_release(QVAuxPrivateHandle privateAccess);

// `eeprom`: QvEeprom. Copies its first `length` bytes, at most QV_EEPROM_SIZE, without a terminator. Returns
// QV_BOARD_NOT_FITTED for the EEPROM of the add-on board if the unit has no such board.
ApiError QVAuxPrivate_getEepromData(QVAuxPrivateHandle privateAccess, int32_t eeprom, uint8_t* buffer,
                                    uint32_t length);

// Sends one of the commands above. Returns QV_NOT_SUPPORTED for any other register or value.
ApiError QVAuxPrivate_writeSsRegister(QVAuxPrivateHandle privateAccess, int32_t group, int32_t number,
                                      int32_t value);

// `mode` receives the QvSystemMode of the current boot.
ApiError QVAuxPrivate_getSystemMode(QVAuxPrivateHandle privateAccess, int32_t* mode);

// Telematics: power of the radios, now and from the next boot on. `status`: QvState. The operations return
// QV_BOARD_NOT_FITTED if the unit has no add-on board, and QV_NOT_SUPPORTED if the board lacks the radio.

TelematicsHandle GetTelematics(void);
ApiError Telematics_release(TelematicsHandle telematics);
ApiError Telematics_getWLANPowerStatus(TelematicsHandle telematics, int32_t* status);
ApiError Telematics_setWLANPowerStatus(TelematicsHandle telematics, int32_t status);
ApiError Telematics_getWLANStartUpPowerStatus(TelematicsHandle telematics, int32_t* status);
ApiError Telematics_setWLANStartUpPowerStatus(TelematicsHandle telematics, int32_t status);
ApiError Telematics_getGPRSPowerStatus(TelematicsHandle telematics, int32_t* status);
ApiError Telematics_setGPRSPowerStatus(TelematicsHandle telematics, int32_t status);
ApiError Telematics_getGPRSStartUpPowerStatus(TelematicsHandle telematics, int32_t* status);
ApiError Telematics_setGPRSStartUpPowerStatus(TelematicsHandle telematics, int32_t status);
ApiError Telematics_getGPSPowerStatus(TelematicsHandle telematics, int32_t* status);
ApiError Telematics_setGPSPowerStatus(TelematicsHandle telematics, int32_t status);
ApiError Telematics_getGPSStartUpPowerStatus(TelematicsHandle telematics, int32_t* status);
ApiError Telematics_setGPSStartUpPowerStatus(TelematicsHandle telematics, int32_t status);
ApiError Telematics_getBTPowerStatus(TelematicsHandle telematics, int32_t* status);
ApiError Telematics_setBTPowerStatus(TelematicsHandle telematics, int32_t status);
ApiError Telematics_getBTStartUpPowerStatus(TelematicsHandle telematics, int32_t* status);
ApiError Telematics_setBTStartUpPowerStatus(TelematicsHandle telematics, int32_t status);

// TouchScreen: the profile and the settings of the touch screen. The operations return QV_NOT_SUPPORTED on a
// unit without a touch screen.

// Profiles. A NEXT_BOOT profile is replaced at the next boot by the profile that it names.
enum QvTouchProfile QV_INT32
{
    QV_TOUCH_MOUSE_NEXT_BOOT = 0,
    QV_TOUCH_TOUCH_NEXT_BOOT = 1,
    QV_TOUCH_MOUSE = 2,
    QV_TOUCH_TOUCH = 3,
};

// Settings of the touch screen controller, 16 bits each. Units of measurement and ranges are unknown, except
// for QV_TOUCH_USE_DEJITTER, which is 0 or 1. Writing any value to QV_TOUCH_RESTORE_DEFAULTS resets all other
// settings to their defaults; reading it returns 0.
enum QvTouchSetting QV_INT32
{
    QV_TOUCH_RIGHT_CLICK_TIME = 0,
    QV_TOUCH_LOW_LEVEL = 1,
    QV_TOUCH_UNTOUCH_LEVEL = 2,
    QV_TOUCH_DEBOUNCE_TIME = 3,
    QV_TOUCH_DEBOUNCE_TIMEOUT_TIME = 4,
    QV_TOUCH_DOUBLE_CLICK_MAX_CLICK_TIME = 5,
    QV_TOUCH_DOUBLE_CLICK_TIME = 6,
    QV_TOUCH_MAX_RIGHT_CLICK_DISTANCE = 7,
    QV_TOUCH_USE_DEJITTER = 8,
    QV_TOUCH_CALIBRATION_WIDTH = 9,
    QV_TOUCH_CALIBRATION_MEASUREMENTS = 10,
    QV_TOUCH_RESTORE_DEFAULTS = 11,
};

TouchScreenHandle GetTouchScreen(void);
ApiError TouchScreen_release(TouchScreenHandle touch);
ApiError TouchScreen_getMode(TouchScreenHandle touch, int32_t* mode);
ApiError TouchScreen_setMode(TouchScreenHandle touch, int32_t mode);
ApiError TouchScreen_getAdvancedSetting(TouchScreenHandle touch, int32_t setting, uint16_t* value);
ApiError TouchScreen_setAdvancedSetting(TouchScreenHandle touch, int32_t setting, uint16_t value);

QV_AUX2_END

#pragma GCC visibility pop

#endif
