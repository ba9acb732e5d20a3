// The device API of the display computer, as libqv-aux2.so.2.11 offers it.
//
// Every module is reached through a handle: Get<Module>() hands one out, the module's operations take
// it first, <Module>_release gives it back. An operation returns 0 on success; the text of any other
// code comes from GetErrorStringA. Results are written only on success.
//
// Out-parameters are declared by width and never as bool or enum, because the library may put any bits
// there. A text that fills its buffer comes without a terminator.
//
// The header is plain C, so that programs in either language can use it.

#ifndef QV_AUX2_H
#define QV_AUX2_H

#include <stdint.h>

#ifdef __cplusplus
#define QV_AUX2_BEGIN                                                                                        \
    extern "C"                                                                                               \
    {
#define QV_AUX2_END }
#else
#define QV_AUX2_BEGIN
#define QV_AUX2_END
#endif

#pragma GCC visibility push(default)

QV_AUX2_BEGIN

// 0 is success, 2 "not supported by this unit", 18 "the board is not fitted".
typedef uint32_t ApiError;

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

// Texts of codes. Constant and never freed; null where a code has no text.

const char* GetErrorStringA(ApiError code);
const char* GetStartupReasonStringA(uint16_t reason);
const char* GetHwErrorStatusStringA(uint16_t status);

// About: identity and equipment. Texts are copied into `buffer` of `length` bytes.

AboutHandle GetAbout(void);
ApiError About_release(AboutHandle about);
ApiError About_getUnitSerial(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainPCBSerial(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainPCBArt(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainManufacturingDate(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainHWversion(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainProdRev(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getMainProdArtNr(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getNrOfCANConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfETHConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfSerialConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfUSBConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfVideoConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfDigIOConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfCfgInConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfPWMOutConnections(AboutHandle about, uint8_t* count);
ApiError About_getNrOfButtons(AboutHandle about, int32_t* count);
ApiError About_getIsDisplayAvailable(AboutHandle about, uint8_t* available);
ApiError About_getIsTouchScreenAvailable(AboutHandle about, uint8_t* available);
ApiError About_getAddOnPCBSerial(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getAddOnPCBArt(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getAddOnManufacturingDate(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getAddOnHWversion(AboutHandle about, char* buffer, uint32_t length);
ApiError About_getIsBTMounted(AboutHandle about, uint8_t* mounted);
ApiError About_getIsGPRSMounted(AboutHandle about, uint8_t* mounted);
ApiError About_getIsGPSMounted(AboutHandle about, uint8_t* mounted);
ApiError About_getIsWLANMounted(AboutHandle about, uint8_t* mounted);

// Adc: supply voltages in volts, channels 0 to 23.

AdcHandle GetAdc(void);
ApiError Adc_release(AdcHandle adc);
ApiError Adc_getVoltage(AdcHandle adc, int32_t channel, double* volts);

// AuxVersion: release numbers of the installed software and firmware.

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

// Backlight of the display: intensity 1 to 255. Four numbers describe the filter of the automatic
// regulation.

BacklightHandle GetBacklight(void);
ApiError Backlight_release(BacklightHandle backlight);
ApiError Backlight_getIntensity(BacklightHandle backlight, uint8_t* intensity);
ApiError Backlight_setIntensity(BacklightHandle backlight, uint8_t intensity);
ApiError Backlight_getAutomaticBLStatus(BacklightHandle backlight, uint8_t* running);
ApiError Backlight_setAutomaticBLFilter(BacklightHandle backlight, int32_t first, int32_t second,
                                        int32_t third, int32_t fourth);
ApiError Backlight_startAutomaticBL(BacklightHandle backlight);
ApiError Backlight_stopAutomaticBL(BacklightHandle backlight);
ApiError Backlight_getLedDimming(BacklightHandle backlight, int32_t* enabled);
ApiError Backlight_setLedDimming(BacklightHandle backlight, int32_t enabled);

// Buzzer: frequency in Hz; the trigger is 1 while the buzzer is enabled.

BuzzerHandle GetBuzzer(void);
ApiError Buzzer_release(BuzzerHandle buzzer);
ApiError Buzzer_getFrequency(BuzzerHandle buzzer, uint16_t* frequency);
ApiError Buzzer_setFrequency(BuzzerHandle buzzer, uint16_t frequency);
ApiError Buzzer_getVolume(BuzzerHandle buzzer, uint16_t* volume);
ApiError Buzzer_setVolume(BuzzerHandle buzzer, uint16_t volume);
ApiError Buzzer_getTrigger(BuzzerHandle buzzer, uint8_t* enabled);
ApiError Buzzer_setTrigger(BuzzerHandle buzzer, uint8_t enabled);

// CanSetting: baud rates in kbit/s; channels count from 1.

CanSettingHandle GetCanSetting(void);
ApiError CanSetting_release(CanSettingHandle can);
ApiError CanSetting_getBaudrate(CanSettingHandle can, uint8_t channel, uint16_t* baudrate);
ApiError CanSetting_setBaudrate(CanSettingHandle can, uint8_t channel, uint16_t baudrate);

// Config: what the System Supervisor does at start-up, on the buttons and on the on/off signal.
// Actions: 0 none, 1 suspend, 2 shutdown. Start-up triggers are a bit set: 1 front button, 2 on/off
// signal, 4 CAN, 8 configurable inputs. Video masks: bit 0 is channel 1. Boot modes: 3 rescue, 4 rescue
// with factory reset.

ConfigHandle GetConfig(void);
ApiError Config_release(ConfigHandle config);
ApiError Config_getShortButtonPressAction(ConfigHandle config, int32_t* action);
ApiError Config_setShortButtonPressAction(ConfigHandle config, int32_t action);
ApiError Config_getLongButtonPressAction(ConfigHandle config, int32_t* action);
ApiError Config_setLongButtonPressAction(ConfigHandle config, int32_t action);
ApiError Config_getFrontBtnTrigTime(ConfigHandle config, uint16_t* milliseconds);
ApiError Config_setFrontBtnTrigTime(ConfigHandle config, uint16_t milliseconds);
ApiError Config_getOnOffSigAction(ConfigHandle config, int32_t* action);
ApiError Config_setOnOffSigAction(ConfigHandle config, int32_t action);
ApiError Config_getExtOnOffSigTrigTime(ConfigHandle config, uint32_t* seconds);
ApiError Config_setExtOnOffSigTrigTime(ConfigHandle config, uint32_t seconds);
ApiError Config_getPowerOnStartup(ConfigHandle config, int32_t* enabled);
ApiError Config_setPowerOnStartup(ConfigHandle config, int32_t enabled);
ApiError Config_getStartupTriggerConfig(ConfigHandle config, int32_t* triggers);
ApiError Config_setStartupTriggerConfig(ConfigHandle config, int32_t triggers);
ApiError Config_getSuspendMaxTime(ConfigHandle config, uint16_t* minutes); // 0: no limit
ApiError Config_setSuspendMaxTime(ConfigHandle config, uint16_t minutes);
ApiError Config_getHeatingTempLimit(ConfigHandle config, int16_t* celsius);
ApiError Config_setHeatingTempLimit(ConfigHandle config, int16_t celsius);
ApiError Config_getVideoStartupPowerConfig(ConfigHandle config, uint8_t* mask);
ApiError Config_setVideoStartupPowerConfig(ConfigHandle config, uint8_t mask);
ApiError Config_getCanStartupPowerConfig(ConfigHandle config, int32_t* enabled);
ApiError Config_setCanStartupPowerConfig(ConfigHandle config, int32_t enabled);
ApiError Config_getExtFanStartupPowerConfig(ConfigHandle config, int32_t* enabled);
ApiError Config_setExtFanStartupPowerConfig(ConfigHandle config, int32_t enabled);
ApiError Config_setNextBootMode(ConfigHandle config, int32_t mode);

// Diagnostic: reasons, counters and temperatures in degrees Celsius.

// Minutes of operation since the unit was made.
typedef struct DiagnosticTimer
{
    uint32_t totalRunTime;
    uint32_t totalSuspendTime;
    uint32_t totalHeatTime;
    uint32_t runTime40To60;
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
ApiError Diagnostic_getMinMaxTemp(DiagnosticHandle diagnostic, int16_t* minimum, int16_t* maximum);
ApiError Diagnostic_getPowerCycles(DiagnosticHandle diagnostic, uint16_t* cycles);
ApiError Diagnostic_getSSTemp(DiagnosticHandle diagnostic, int16_t* temperature);
ApiError Diagnostic_getPCBTemp(DiagnosticHandle diagnostic, int16_t* temperature);
// The sensors of the power management.
enum
{
    pmSensorCpu = 0,
    pmSensorCpuBoard = 1,
};
// `status` receives the sensor's own status word.
ApiError Diagnostic_getPMTemp(DiagnosticHandle diagnostic, int32_t sensor, int16_t* temperature,
                              int32_t* status);

// DigIO: bit 0 is digital input 1.

DigIOHandle GetDigIO(void);
ApiError DigIO_release(DigIOHandle digIO);
ApiError DigIO_getDigIO(DigIOHandle digIO, uint8_t* inputs);

// FirmwareUpgrade: a start operation begins a job, getUpgradeStatus follows it. States: 0 initiating,
// 1 preparing communication, 2 reading, 3 converting, 4 flashing, 5 verifying, 6 done, 7 done with error.
// `path` is the firmware file; the `flag` of a start operation is reserved, 0.

typedef struct UpgradeStatus
{
    int32_t state;
    int32_t second; // the library's own
    ApiError error; // non-zero once the job has failed
} UpgradeStatus;

FirmwareUpgradeHandle GetFirmwareUpgrade(void);
ApiError FirmwareUpgrade_release(FirmwareUpgradeHandle upgrade);
ApiError FirmwareUpgrade_startSSUpgrade(FirmwareUpgradeHandle upgrade, const char* path, int32_t flag);
ApiError FirmwareUpgrade_startSSVerification(FirmwareUpgradeHandle upgrade, const char* path, int32_t flag);
ApiError FirmwareUpgrade_startFpgaUpgrade(FirmwareUpgradeHandle upgrade, const char* path, int32_t flag);
ApiError FirmwareUpgrade_startFpgaVerification(FirmwareUpgradeHandle upgrade, const char* path, int32_t flag);
ApiError FirmwareUpgrade_startFrontUpgrade(FirmwareUpgradeHandle upgrade, const char* path, int32_t flag);
ApiError FirmwareUpgrade_startFrontVerification(FirmwareUpgradeHandle upgrade, const char* path,
                                                int32_t flag);
// With flag 1 the call waits until the job has something new to tell.
ApiError FirmwareUpgrade_getUpgradeStatus(FirmwareUpgradeHandle upgrade, UpgradeStatus* status, int32_t flag);
ApiError FirmwareUpgrade_shutDown(FirmwareUpgradeHandle upgrade);

// FrontLED: frequency in Hz, duty cycle in percent, idle time in units of 100 ms. Colours: 0 red,
// 1 green, 2 blue, 3 cyan, 4 magenta, 5 yellow.

FrontLEDHandle GetFrontLED(void);
ApiError FrontLED_release(FrontLEDHandle led);
ApiError FrontLED_getSignal(FrontLEDHandle led, double* frequency, uint8_t* dutyCycle);
ApiError FrontLED_setSignal(FrontLEDHandle led, double frequency, uint8_t dutyCycle);
ApiError FrontLED_getStandardColor(FrontLEDHandle led, int32_t* color);
ApiError FrontLED_setStandardColor(FrontLEDHandle led, int32_t color);
ApiError FrontLED_getNrOfPulses(FrontLEDHandle led, uint8_t* pulses);
ApiError FrontLED_setNrOfPulses(FrontLEDHandle led, uint8_t pulses);
ApiError FrontLED_getIdleTime(FrontLEDHandle led, uint8_t* idleTime);
ApiError FrontLED_setIdleTime(FrontLEDHandle led, uint8_t idleTime);
ApiError FrontLED_getEnabledDuringStartup(FrontLEDHandle led, int32_t* enabled);
ApiError FrontLED_setEnabledDuringStartup(FrontLEDHandle led, int32_t enabled);

// Lightsensor: ambient light in lux.

LightsensorHandle GetLightsensor(void);
ApiError Lightsensor_release(LightsensorHandle sensor);
ApiError Lightsensor_getIlluminance(LightsensorHandle sensor, uint16_t* illuminance);

// Power: what is powered now. Video mask: bit 0 is channel 1.

PowerHandle GetPower(void);
ApiError Power_release(PowerHandle power);
ApiError Power_getVideoPowerStatus(PowerHandle power, uint8_t* mask);
ApiError Power_setVideoPowerStatus(PowerHandle power, uint8_t mask);
ApiError Power_getCanPowerStatus(PowerHandle power, int32_t* enabled);
ApiError Power_setCanPowerStatus(PowerHandle power, int32_t enabled);
ApiError Power_getExtFanPowerStatus(PowerHandle power, int32_t* enabled);
ApiError Power_setExtFanPowerStatus(PowerHandle power, int32_t enabled);

// QVAuxPrivate: raw access. EEPROM selectors: 0 main board, 1 add-on board.

QVAuxPrivateHandle GetQVAuxPrivate(void);
ApiError QVAuxPrivate_release(QVAuxPrivateHandle privateAccess);
ApiError QVAuxPrivate_getEepromData(QVAuxPrivateHandle privateAccess, int32_t eeprom, uint8_t* buffer,
                                    uint32_t length);
ApiError QVAuxPrivate_writeSsRegister(QVAuxPrivateHandle privateAccess, int32_t group, int32_t number,
                                      int32_t value);
ApiError QVAuxPrivate_getSystemMode(QVAuxPrivateHandle privateAccess, int32_t* mode);

// Telematics: power of the radios now and at start-up, 0 disabled, 1 enabled.

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

// TouchScreen. Profiles: 0 mouse and 1 touch from the next boot, 2 mouse and 3 touch now. Settings 0
// to 11.

TouchScreenHandle GetTouchScreen(void);
ApiError TouchScreen_release(TouchScreenHandle touch);
ApiError TouchScreen_getMode(TouchScreenHandle touch, int32_t* mode);
ApiError TouchScreen_setMode(TouchScreenHandle touch, int32_t mode);
ApiError TouchScreen_getAdvancedSetting(TouchScreenHandle touch, int32_t setting, uint16_t* value);
ApiError TouchScreen_setAdvancedSetting(TouchScreenHandle touch, int32_t setting, uint16_t value);

QV_AUX2_END

#pragma GCC visibility pop

#endif
