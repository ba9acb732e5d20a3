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
        operation(GetAbout, About_getUnitSerial, anyBuffer, 16),
        operation(GetAbout, About_getMainPCBSerial, anyBuffer, 16),
        operation(GetAbout, About_getMainPCBArt, anyBuffer, 16),
        operation(GetAbout, About_getMainManufacturingDate, anyBuffer, 16),
        operation(GetAbout, About_getMainHWversion, anyBuffer, 16),
        operation(GetAbout, About_getMainProdRev, anyBuffer, 16),
        operation(GetAbout, About_getMainProdArtNr, anyBuffer, 16),
        operation(GetAbout, About_getNrOfCANConnections, anyBuffer),
        operation(GetAbout, About_getNrOfETHConnections, anyBuffer),
        operation(GetAbout, About_getNrOfSerialConnections, anyBuffer),
        operation(GetAbout, About_getNrOfUSBConnections, anyBuffer),
        operation(GetAbout, About_getNrOfVideoConnections, anyBuffer),
        operation(GetAbout, About_getNrOfDigIOConnections, anyBuffer),
        operation(GetAbout, About_getNrOfCfgInConnections, anyBuffer),
        operation(GetAbout, About_getNrOfPWMOutConnections, anyBuffer),
        operation(GetAbout, About_getNrOfButtons, anyBuffer),
        operation(GetAbout, About_getIsDisplayAvailable, anyBuffer),
        operation(GetAbout, About_getIsTouchScreenAvailable, anyBuffer),
        operation(GetAbout, About_getAddOnPCBSerial, anyBuffer, 16),
        operation(GetAbout, About_getAddOnPCBArt, anyBuffer, 16),
        operation(GetAbout, About_getAddOnManufacturingDate, anyBuffer, 16),
        operation(GetAbout, About_getAddOnHWversion, anyBuffer, 16),
        operation(GetAbout, About_getIsBTMounted, anyBuffer),
        operation(GetAbout, About_getIsGPRSMounted, anyBuffer),
        operation(GetAbout, About_getIsGPSMounted, anyBuffer),
        operation(GetAbout, About_getIsWLANMounted, anyBuffer),
        operation(GetAdc, Adc_getVoltage, 23, anyBuffer),
        operation(GetAuxVersion, AuxVersion_getFPGAVersion, anyBuffer, anyBuffer, anyBuffer, anyBuffer),
        operation(GetAuxVersion, AuxVersion_getFrontVersion, anyBuffer, anyBuffer, anyBuffer, anyBuffer),
        operation(GetAuxVersion, AuxVersion_getSSVersion, anyBuffer, anyBuffer, anyBuffer, anyBuffer),
        operation(GetAuxVersion, AuxVersion_getQVAuxVersion, anyBuffer, anyBuffer, anyBuffer, anyBuffer),
        operation(GetAuxVersion, AuxVersion_getQVAuxDrvVersion, anyBuffer, anyBuffer, anyBuffer, anyBuffer),
        operation(GetAuxVersion, AuxVersion_getOSVersion, anyBuffer, anyBuffer, anyBuffer, anyBuffer),
        operation(GetBacklight, Backlight_getIntensity, anyBuffer),
        operation(GetBacklight, Backlight_setIntensity, 255),
        operation(GetBacklight, Backlight_getAutomaticBLStatus, anyBuffer),
        operation(GetBacklight, Backlight_setAutomaticBLFilter, 4, 2, 40, 2),
        operation(GetBacklight, Backlight_startAutomaticBL),
        operation(GetBacklight, Backlight_stopAutomaticBL),
        operation(GetBacklight, Backlight_getLedDimming, anyBuffer),
        operation(GetBacklight, Backlight_setLedDimming, 1),
        operation(GetBuzzer, Buzzer_getFrequency, anyBuffer),
        operation(GetBuzzer, Buzzer_setFrequency, 700),
        operation(GetBuzzer, Buzzer_getVolume, anyBuffer),
        operation(GetBuzzer, Buzzer_setVolume, 2000),
        operation(GetBuzzer, Buzzer_getTrigger, anyBuffer),
        operation(GetBuzzer, Buzzer_setTrigger, 1),
        operation(GetCanSetting, CanSetting_getBaudrate, 4, anyBuffer),
        operation(GetCanSetting, CanSetting_setBaudrate, 1, 1000),
        operation(GetConfig, Config_getShortButtonPressAction, anyBuffer),
        operation(GetConfig, Config_setShortButtonPressAction, 2),
        operation(GetConfig, Config_getLongButtonPressAction, anyBuffer),
        operation(GetConfig, Config_setLongButtonPressAction, 0),
        operation(GetConfig, Config_getFrontBtnTrigTime, anyBuffer),
        operation(GetConfig, Config_setFrontBtnTrigTime, 65535),
        operation(GetConfig, Config_getOnOffSigAction, anyBuffer),
        operation(GetConfig, Config_setOnOffSigAction, 1),
        operation(GetConfig, Config_getExtOnOffSigTrigTime, anyBuffer),
        operation(GetConfig, Config_setExtOnOffSigTrigTime, 4294967295u),
        operation(GetConfig, Config_getPowerOnStartup, anyBuffer),
        operation(GetConfig, Config_setPowerOnStartup, 1),
        operation(GetConfig, Config_getStartupTriggerConfig, anyBuffer),
        operation(GetConfig, Config_setStartupTriggerConfig, 15),
        operation(GetConfig, Config_getSuspendMaxTime, anyBuffer),
        operation(GetConfig, Config_setSuspendMaxTime, 0),
        operation(GetConfig, Config_getHeatingTempLimit, anyBuffer),
        operation(GetConfig, Config_setHeatingTempLimit, -25),
        operation(GetConfig, Config_getVideoStartupPowerConfig, anyBuffer),
        operation(GetConfig, Config_setVideoStartupPowerConfig, 0),
        operation(GetConfig, Config_getCanStartupPowerConfig, anyBuffer),
        operation(GetConfig, Config_setCanStartupPowerConfig, 0),
        operation(GetConfig, Config_getExtFanStartupPowerConfig, anyBuffer),
        operation(GetConfig, Config_setExtFanStartupPowerConfig, 1),
        operation(GetConfig, Config_setNextBootMode, 3),
        operation(GetDiagnostic, Diagnostic_getStartupReason, anyBuffer),
        operation(GetDiagnostic, Diagnostic_getShutDownReason, anyBuffer),
        operation(GetDiagnostic, Diagnostic_getHwErrorStatus, anyBuffer),
        operation(GetDiagnostic, Diagnostic_getTimer, anyBuffer),
        operation(GetDiagnostic, Diagnostic_getMinMaxTemp, anyBuffer, anyBuffer),
        operation(GetDiagnostic, Diagnostic_getPowerCycles, anyBuffer),
        operation(GetDiagnostic, Diagnostic_getSSTemp, anyBuffer),
        operation(GetDiagnostic, Diagnostic_getPCBTemp, anyBuffer),
        operation(GetDiagnostic, Diagnostic_getPMTemp, 1, anyBuffer, anyBuffer),
        operation(GetDigIO, DigIO_getDigIO, anyBuffer),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startSSUpgrade, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startSSVerification, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFpgaUpgrade, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFpgaVerification, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFrontUpgrade, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFrontVerification, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_getUpgradeStatus, anyBuffer, 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_shutDown),
        operation(GetFrontLED, FrontLED_getSignal, anyBuffer, anyBuffer),
        operation(GetFrontLED, FrontLED_setSignal, 0.2, 100),
        operation(GetFrontLED, FrontLED_getStandardColor, anyBuffer),
        operation(GetFrontLED, FrontLED_setStandardColor, 5),
        operation(GetFrontLED, FrontLED_getNrOfPulses, anyBuffer),
        operation(GetFrontLED, FrontLED_setNrOfPulses, 255),
        operation(GetFrontLED, FrontLED_getIdleTime, anyBuffer),
        operation(GetFrontLED, FrontLED_setIdleTime, 255),
        operation(GetFrontLED, FrontLED_getEnabledDuringStartup, anyBuffer),
        operation(GetFrontLED, FrontLED_setEnabledDuringStartup, 0),
        operation(GetLightsensor, Lightsensor_getIlluminance, anyBuffer),
        operation(GetPower, Power_getVideoPowerStatus, anyBuffer),
        operation(GetPower, Power_setVideoPowerStatus, 7),
        operation(GetPower, Power_getCanPowerStatus, anyBuffer),
        operation(GetPower, Power_setCanPowerStatus, 0),
        operation(GetPower, Power_getExtFanPowerStatus, anyBuffer),
        operation(GetPower, Power_setExtFanPowerStatus, 1),
        operation(GetQVAuxPrivate, QVAuxPrivate_getEepromData, 1, anyBuffer, 4096),
        operation(GetQVAuxPrivate, QVAuxPrivate_writeSsRegister, 3, 0x65, 1),
        operation(GetQVAuxPrivate, QVAuxPrivate_getSystemMode, anyBuffer),
        operation(GetTelematics, Telematics_getWLANPowerStatus, anyBuffer),
        operation(GetTelematics, Telematics_setWLANPowerStatus, 0),
        operation(GetTelematics, Telematics_getWLANStartUpPowerStatus, anyBuffer),
        operation(GetTelematics, Telematics_setWLANStartUpPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPRSPowerStatus, anyBuffer),
        operation(GetTelematics, Telematics_setGPRSPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPRSStartUpPowerStatus, anyBuffer),
        operation(GetTelematics, Telematics_setGPRSStartUpPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPSPowerStatus, anyBuffer),
        operation(GetTelematics, Telematics_setGPSPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPSStartUpPowerStatus, anyBuffer),
        operation(GetTelematics, Telematics_setGPSStartUpPowerStatus, 0),
        operation(GetTelematics, Telematics_getBTPowerStatus, anyBuffer),
        operation(GetTelematics, Telematics_setBTPowerStatus, 0),
        operation(GetTelematics, Telematics_getBTStartUpPowerStatus, anyBuffer),
        operation(GetTelematics, Telematics_setBTStartUpPowerStatus, 0),
        operation(GetTouchScreen, TouchScreen_getMode, anyBuffer),
        operation(GetTouchScreen, TouchScreen_setMode, 1),
        operation(GetTouchScreen, TouchScreen_getAdvancedSetting, 11, anyBuffer),
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
