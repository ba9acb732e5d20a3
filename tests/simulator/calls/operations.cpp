#include "operations.h"

#include <algorithm>
#include <dlfcn.h>
#include <fnmatch.h>
#include <iterator>

std::string nameOf(void* function)
{
    Dl_info info{};
    return dladdr(function, &info) && info.dli_sname ? info.dli_sname : "";
}

const std::vector<Operation>& everyOperation()
{
    static const std::vector<Operation> operations = {
        operation(GetAbout, About_getUnitSerial, buffer, 16),
        operation(GetAbout, About_getMainPCBSerial, buffer, 16),
        operation(GetAbout, About_getMainPCBArt, buffer, 16),
        operation(GetAbout, About_getMainManufacturingDate, buffer, 16),
        operation(GetAbout, About_getMainHWversion, buffer, 16),
        operation(GetAbout, About_getMainProdRev, buffer, 16),
        operation(GetAbout, About_getMainProdArtNr, buffer, 16),
        operation(GetAbout, About_getNrOfCANConnections, buffer),
        operation(GetAbout, About_getNrOfETHConnections, buffer),
        operation(GetAbout, About_getNrOfSerialConnections, buffer),
        operation(GetAbout, About_getNrOfUSBConnections, buffer),
        operation(GetAbout, About_getNrOfVideoConnections, buffer),
        operation(GetAbout, About_getNrOfDigIOConnections, buffer),
        operation(GetAbout, About_getNrOfCfgInConnections, buffer),
        operation(GetAbout, About_getNrOfPWMOutConnections, buffer),
        operation(GetAbout, About_getNrOfButtons, buffer),
        operation(GetAbout, About_getIsDisplayAvailable, buffer),
        operation(GetAbout, About_getIsTouchScreenAvailable, buffer),
        operation(GetAbout, About_getAddOnPCBSerial, buffer, 16),
        operation(GetAbout, About_getAddOnPCBArt, buffer, 16),
        operation(GetAbout, About_getAddOnManufacturingDate, buffer, 16),
        operation(GetAbout, About_getAddOnHWversion, buffer, 16),
        operation(GetAbout, About_getIsBTMounted, buffer),
        operation(GetAbout, About_getIsGPRSMounted, buffer),
        operation(GetAbout, About_getIsGPSMounted, buffer),
        operation(GetAbout, About_getIsWLANMounted, buffer),
        operation(GetAdc, Adc_getVoltage, 23, buffer),
        operation(GetAuxVersion, AuxVersion_getFPGAVersion, buffer, buffer, buffer, buffer),
        operation(GetAuxVersion, AuxVersion_getFrontVersion, buffer, buffer, buffer, buffer),
        operation(GetAuxVersion, AuxVersion_getSSVersion, buffer, buffer, buffer, buffer),
        operation(GetAuxVersion, AuxVersion_getQVAuxVersion, buffer, buffer, buffer, buffer),
        operation(GetAuxVersion, AuxVersion_getQVAuxDrvVersion, buffer, buffer, buffer, buffer),
        operation(GetAuxVersion, AuxVersion_getOSVersion, buffer, buffer, buffer, buffer),
        operation(GetBacklight, Backlight_getIntensity, buffer),
        operation(GetBacklight, Backlight_setIntensity, 255),
        operation(GetBacklight, Backlight_getAutomaticBLStatus, buffer),
        operation(GetBacklight, Backlight_setAutomaticBLFilter, 4, 2, 40, 2),
        operation(GetBacklight, Backlight_startAutomaticBL),
        operation(GetBacklight, Backlight_stopAutomaticBL),
        operation(GetBacklight, Backlight_getLedDimming, buffer),
        operation(GetBacklight, Backlight_setLedDimming, 1),
        operation(GetBuzzer, Buzzer_getFrequency, buffer),
        operation(GetBuzzer, Buzzer_setFrequency, 700),
        operation(GetBuzzer, Buzzer_getVolume, buffer),
        operation(GetBuzzer, Buzzer_setVolume, 2000),
        operation(GetBuzzer, Buzzer_getTrigger, buffer),
        operation(GetBuzzer, Buzzer_setTrigger, 1),
        operation(GetCanSetting, CanSetting_getBaudrate, 4, buffer),
        operation(GetCanSetting, CanSetting_setBaudrate, 1, 1000),
        operation(GetConfig, Config_getShortButtonPressAction, buffer),
        operation(GetConfig, Config_setShortButtonPressAction, 2),
        operation(GetConfig, Config_getLongButtonPressAction, buffer),
        operation(GetConfig, Config_setLongButtonPressAction, 0),
        operation(GetConfig, Config_getFrontBtnTrigTime, buffer),
        operation(GetConfig, Config_setFrontBtnTrigTime, 65535),
        operation(GetConfig, Config_getOnOffSigAction, buffer),
        operation(GetConfig, Config_setOnOffSigAction, 1),
        operation(GetConfig, Config_getExtOnOffSigTrigTime, buffer),
        operation(GetConfig, Config_setExtOnOffSigTrigTime, 4294967295u),
        operation(GetConfig, Config_getPowerOnStartup, buffer),
        operation(GetConfig, Config_setPowerOnStartup, 1),
        operation(GetConfig, Config_getStartupTriggerConfig, buffer),
        operation(GetConfig, Config_setStartupTriggerConfig, 15),
        operation(GetConfig, Config_getSuspendMaxTime, buffer),
        operation(GetConfig, Config_setSuspendMaxTime, 0),
        operation(GetConfig, Config_getHeatingTempLimit, buffer),
        operation(GetConfig, Config_setHeatingTempLimit, -25),
        operation(GetConfig, Config_getVideoStartupPowerConfig, buffer),
        operation(GetConfig, Config_setVideoStartupPowerConfig, 0),
        operation(GetConfig, Config_getCanStartupPowerConfig, buffer),
        operation(GetConfig, Config_setCanStartupPowerConfig, 0),
        operation(GetConfig, Config_getExtFanStartupPowerConfig, buffer),
        operation(GetConfig, Config_setExtFanStartupPowerConfig, 1),
        operation(GetConfig, Config_setNextBootMode, 3),
        operation(GetDiagnostic, Diagnostic_getStartupReason, buffer),
        operation(GetDiagnostic, Diagnostic_getShutDownReason, buffer),
        operation(GetDiagnostic, Diagnostic_getHwErrorStatus, buffer),
        operation(GetDiagnostic, Diagnostic_getTimer, buffer),
        operation(GetDiagnostic, Diagnostic_getMinMaxTemp, buffer, buffer),
        operation(GetDiagnostic, Diagnostic_getPowerCycles, buffer),
        operation(GetDiagnostic, Diagnostic_getSSTemp, buffer),
        operation(GetDiagnostic, Diagnostic_getPCBTemp, buffer),
        operation(GetDiagnostic, Diagnostic_getPMTemp, 1, buffer, buffer),
        operation(GetDigIO, DigIO_getDigIO, buffer),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startSSUpgrade, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startSSVerification, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFpgaUpgrade, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFpgaVerification, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFrontUpgrade, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFrontVerification, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_getUpgradeStatus, buffer, 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_shutDown),
        operation(GetFrontLED, FrontLED_getSignal, buffer, buffer),
        operation(GetFrontLED, FrontLED_setSignal, 0.2, 100),
        operation(GetFrontLED, FrontLED_getStandardColor, buffer),
        operation(GetFrontLED, FrontLED_setStandardColor, 5),
        operation(GetFrontLED, FrontLED_getNrOfPulses, buffer),
        operation(GetFrontLED, FrontLED_setNrOfPulses, 255),
        operation(GetFrontLED, FrontLED_getIdleTime, buffer),
        operation(GetFrontLED, FrontLED_setIdleTime, 255),
        operation(GetFrontLED, FrontLED_getEnabledDuringStartup, buffer),
        operation(GetFrontLED, FrontLED_setEnabledDuringStartup, 0),
        operation(GetLightsensor, Lightsensor_getIlluminance, buffer),
        operation(GetPower, Power_getVideoPowerStatus, buffer),
        operation(GetPower, Power_setVideoPowerStatus, 7),
        operation(GetPower, Power_getCanPowerStatus, buffer),
        operation(GetPower, Power_setCanPowerStatus, 0),
        operation(GetPower, Power_getExtFanPowerStatus, buffer),
        operation(GetPower, Power_setExtFanPowerStatus, 1),
        operation(GetQVAuxPrivate, QVAuxPrivate_getEepromData, 1, buffer, 4096),
        operation(GetQVAuxPrivate, QVAuxPrivate_writeSsRegister, 3, 0x65, 1),
        operation(GetQVAuxPrivate, QVAuxPrivate_getSystemMode, buffer),
        operation(GetTelematics, Telematics_getWLANPowerStatus, buffer),
        operation(GetTelematics, Telematics_setWLANPowerStatus, 0),
        operation(GetTelematics, Telematics_getWLANStartUpPowerStatus, buffer),
        operation(GetTelematics, Telematics_setWLANStartUpPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPRSPowerStatus, buffer),
        operation(GetTelematics, Telematics_setGPRSPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPRSStartUpPowerStatus, buffer),
        operation(GetTelematics, Telematics_setGPRSStartUpPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPSPowerStatus, buffer),
        operation(GetTelematics, Telematics_setGPSPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPSStartUpPowerStatus, buffer),
        operation(GetTelematics, Telematics_setGPSStartUpPowerStatus, 0),
        operation(GetTelematics, Telematics_getBTPowerStatus, buffer),
        operation(GetTelematics, Telematics_setBTPowerStatus, 0),
        operation(GetTelematics, Telematics_getBTStartUpPowerStatus, buffer),
        operation(GetTelematics, Telematics_setBTStartUpPowerStatus, 0),
        operation(GetTouchScreen, TouchScreen_getMode, buffer),
        operation(GetTouchScreen, TouchScreen_setMode, 1),
        operation(GetTouchScreen, TouchScreen_getAdvancedSetting, 11, buffer),
        operation(GetTouchScreen, TouchScreen_setAdvancedSetting, 11, 1),
    };
    return operations;
}

const std::vector<Operation>& everyRelease()
{
    static const std::vector<Operation> releases = {
        operation(GetAbout, About_release),           operation(GetAdc, Adc_release),
        operation(GetAuxVersion, AuxVersion_release), operation(GetBacklight, Backlight_release),
        operation(GetBuzzer, Buzzer_release),         operation(GetCanSetting, CanSetting_release),
        operation(GetConfig, Config_release),         operation(GetDiagnostic, Diagnostic_release),
        operation(GetDigIO, DigIO_release),           operation(GetFirmwareUpgrade, FirmwareUpgrade_release),
        operation(GetFrontLED, FrontLED_release),     operation(GetLightsensor, Lightsensor_release),
        operation(GetPower, Power_release),           operation(GetQVAuxPrivate, QVAuxPrivate_release),
        operation(GetTelematics, Telematics_release), operation(GetTouchScreen, TouchScreen_release),
    };
    return releases;
}

void expectAll(const std::vector<Operation>& operations, ApiError code)
{
    for (const Operation& checked : operations)
        EXPECT_EQ(checked.call(checked.acquire()), code) << checked.name;
}

std::string moduleOf(const std::string& operation)
{
    return operation.substr(0, operation.find('_'));
}

std::vector<Operation> operationsLike(std::initializer_list<const char*> patterns)
{
    std::vector<Operation> found;
    for (const char* pattern : patterns)
    {
        const auto before = found.size();
        std::ranges::copy_if(everyOperation(), std::back_inserter(found),
                             [&](const Operation& checked)
                             { return fnmatch(pattern, checked.name.c_str(), 0) == 0; });
        EXPECT_GT(found.size(), before) << pattern;
    }
    return found;
}
