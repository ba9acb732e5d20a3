#include "operations.h"

#include <cmath>
#include <limits>
#include <map>

namespace
{

using nlohmann::json;

TEST(Arguments, MustNotBeNull)
{
    const CalledUnit unit;
    for (const Operation& checked : everyOperation())
    {
        EXPECT_TRUE(!checked.callsWithNull.empty() || checked.name.find("_get") == std::string::npos);
        for (const auto& callWithNull : checked.callsWithNull)
            EXPECT_EQ(callWithNull(checked.acquire()), invalidArgument) << checked.name;
    }
    EXPECT_EQ(unit.content(), unchanged);
}

TEST(Arguments, AreNotWrittenOnFailure)
{
    const CalledUnit unit(R"({"diagnostic": {"cpuTemperature": null}, "adc": {"24V": null}})");
    std::int16_t temperature = 4711;
    std::int32_t status = 4711;
    EXPECT_EQ(Diagnostic_getPMTemp(GetDiagnostic(), 0, &temperature, &status), notSupported);
    EXPECT_EQ(Diagnostic_getPMTemp(GetDiagnostic(), 2, &temperature, &status), outOfRange);
    EXPECT_EQ(Diagnostic_getPMTemp(nullptr, 1, &temperature, &status), invalidHandle);
    EXPECT_EQ(Diagnostic_getPMTemp(GetDiagnostic(), 1, nullptr, &status), invalidArgument);
    EXPECT_EQ(temperature, 4711);
    EXPECT_EQ(status, 4711);

    double volts = 47.11;
    EXPECT_EQ(Adc_getVoltage(GetAdc(), 1, &volts), notSupported);
    EXPECT_EQ(volts, 47.11);
}

TEST(Arguments, HaveNoTerminatorIfTheTextFillsTheBuffer)
{
    const CalledUnit unit(R"({"about": {"unitSerial": "ABCD"}})");
    for (const auto& [length, expected] : std::map<std::uint32_t, std::string>{
             {1, "A......"}, {3, "ABC...."}, {4, "ABCD..."}, {5, std::string("ABCD\0..", 7)}})
    {
        std::string buffer = ".......";
        EXPECT_EQ(About_getUnitSerial(GetAbout(), buffer.data(), length), 0u);
        EXPECT_EQ(buffer, expected);
    }
    std::string buffer = ".......";
    EXPECT_EQ(About_getUnitSerial(GetAbout(), buffer.data(), 0), invalidArgument);
    EXPECT_EQ(buffer, ".......");
}

TEST(Arguments, ReceiveAsManyEepromBytesAsFit)
{
    const CalledUnit unit(R"({"eeprom": {"main": {"text": "AB", "hex": "0a00Ff", "fill": 46}}})");
    const QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();
    std::vector<std::uint8_t> buffer(5000, '-');
    EXPECT_EQ(QVAuxPrivate_getEepromData(privateAccess, 0, buffer.data(), 0), 0u);
    EXPECT_EQ(buffer[0], '-');
    EXPECT_EQ(QVAuxPrivate_getEepromData(privateAccess, 0, buffer.data(), 4), 0u);
    EXPECT_EQ(std::string(buffer.begin(), buffer.begin() + 6), std::string("AB\n\0--", 6));
    EXPECT_EQ(QVAuxPrivate_getEepromData(privateAccess, 0, buffer.data(), 5000), 0u);
    EXPECT_EQ(std::string(buffer.begin(), buffer.begin() + 6), std::string("AB\n\0\xFF.", 6));
    EXPECT_EQ(buffer[4095], '.');
    EXPECT_EQ(buffer[4096], '-');
}

TEST(Arguments, ReceiveNoMoreThanAnEepromHolds)
{
    const CalledUnit unit(json{{"eeprom", {{"addOn", {{"text", std::string(4096, 'x')}}}}}}.dump());
    std::vector<std::uint8_t> buffer(5000, '-');
    EXPECT_EQ(QVAuxPrivate_getEepromData(GetQVAuxPrivate(), 1, buffer.data(), 5000), 0u);
    EXPECT_EQ(buffer[4095], 'x');
    EXPECT_EQ(buffer[4096], '-');
}

TEST(Arguments, OutOfRangeAreRejected)
{
    const CalledUnit unit;
    constexpr auto lowest = std::numeric_limits<std::int32_t>::min();
    constexpr auto highest = std::numeric_limits<std::int32_t>::max();
    std::vector<Operation> rejected = {
        operation(GetAdc, Adc_getVoltage, -1, anyBuffer),
        operation(GetAdc, Adc_getVoltage, 24, anyBuffer),
        operation(GetAdc, Adc_getVoltage, lowest, anyBuffer),
        operation(GetBuzzer, Buzzer_setFrequency, 0),
        operation(GetBuzzer, Buzzer_setFrequency, 699),
        operation(GetBuzzer, Buzzer_setFrequency, 10001),
        operation(GetBuzzer, Buzzer_setFrequency, 65535),
        operation(GetBuzzer, Buzzer_setVolume, 2001),
        operation(GetBuzzer, Buzzer_setVolume, 65535),
        operation(GetBuzzer, Buzzer_setTrigger, 2),
        operation(GetBuzzer, Buzzer_setTrigger, 255),
        operation(GetCanSetting, CanSetting_setBaudrate, 1, 0),
        operation(GetConfig, Config_setStartupTriggerConfig, 0),
        operation(GetConfig, Config_setStartupTriggerConfig, 4),
        operation(GetConfig, Config_setStartupTriggerConfig, 8),
        operation(GetConfig, Config_setStartupTriggerConfig, 12),
        operation(GetConfig, Config_setStartupTriggerConfig, 17),
        operation(GetConfig, Config_setStartupTriggerConfig, 255),
        operation(GetConfig, Config_setStartupTriggerConfig, -1),
        operation(GetConfig, Config_setHeatingTempLimit, -26),
        operation(GetConfig, Config_setHeatingTempLimit, 6),
        operation(GetConfig, Config_setVideoStartupPowerConfig, 16),
        operation(GetConfig, Config_setNextBootMode, -1),
        operation(GetConfig, Config_setNextBootMode, 1),
        operation(GetConfig, Config_setNextBootMode, 2),
        operation(GetConfig, Config_setNextBootMode, 5),
        operation(GetDiagnostic, Diagnostic_getPMTemp, -1, anyBuffer, anyBuffer),
        operation(GetDiagnostic, Diagnostic_getPMTemp, 2, anyBuffer, anyBuffer),
        operation(GetFrontLED, FrontLED_setSignal, 0.1999, 50),
        operation(GetFrontLED, FrontLED_setSignal, 50.0001, 50),
        operation(GetFrontLED, FrontLED_setSignal, -1.0, 50),
        operation(GetFrontLED, FrontLED_setSignal, std::nan(""), 50),
        operation(GetFrontLED, FrontLED_setSignal, HUGE_VAL, 50),
        operation(GetFrontLED, FrontLED_setSignal, 1.0, 101),
        operation(GetPower, Power_setVideoPowerStatus, 16),
        operation(GetQVAuxPrivate, QVAuxPrivate_getEepromData, -1, anyBuffer, 16),
        operation(GetQVAuxPrivate, QVAuxPrivate_getEepromData, 2, anyBuffer, 16),
        operation(GetTouchScreen, TouchScreen_setMode, -1),
        operation(GetTouchScreen, TouchScreen_setMode, 4),
        operation(GetTouchScreen, TouchScreen_getAdvancedSetting, -1, anyBuffer),
        operation(GetTouchScreen, TouchScreen_getAdvancedSetting, 12, anyBuffer),
        operation(GetTouchScreen, TouchScreen_setAdvancedSetting, -1, 0),
        operation(GetTouchScreen, TouchScreen_setAdvancedSetting, 12, 0),
        operation(GetTouchScreen, TouchScreen_setAdvancedSetting, 8, 2),
    };
    for (const std::int32_t value : {lowest, -1, 2, 255, highest})
        rejected.insert(rejected.end(),
                        {
                            operation(GetBacklight, Backlight_setLedDimming, value),
                            operation(GetConfig, Config_setPowerOnStartup, value),
                            operation(GetConfig, Config_setCanStartupPowerConfig, value),
                            operation(GetConfig, Config_setExtFanStartupPowerConfig, value),
                            operation(GetFrontLED, FrontLED_setEnabledDuringStartup, value),
                            operation(GetPower, Power_setCanPowerStatus, value),
                            operation(GetPower, Power_setExtFanPowerStatus, value),
                            operation(GetTelematics, Telematics_setWLANPowerStatus, value),
                            operation(GetTelematics, Telematics_setWLANStartUpPowerStatus, value),
                            operation(GetTelematics, Telematics_setGPRSPowerStatus, value),
                            operation(GetTelematics, Telematics_setGPRSStartUpPowerStatus, value),
                            operation(GetTelematics, Telematics_setGPSPowerStatus, value),
                            operation(GetTelematics, Telematics_setGPSStartUpPowerStatus, value),
                            operation(GetTelematics, Telematics_setBTPowerStatus, value),
                            operation(GetTelematics, Telematics_setBTStartUpPowerStatus, value),
                        });
    for (const std::int32_t value : {lowest, -1, 3, 255, highest})
        rejected.insert(rejected.end(), {
                                            operation(GetConfig, Config_setShortButtonPressAction, value),
                                            operation(GetConfig, Config_setLongButtonPressAction, value),
                                            operation(GetConfig, Config_setOnOffSigAction, value),
                                        });
    for (const std::int32_t value : {lowest, -1, 6, 255, highest})
        rejected.push_back(operation(GetFrontLED, FrontLED_setStandardColor, value));
    expectAll(rejected, outOfRange);
    EXPECT_EQ(unit.content(), unchanged);
}

TEST(Arguments, AtTheLimitsAreAccepted)
{
    const CalledUnit unit;
    expectAll(
        {
            operation(GetBacklight, Backlight_setIntensity, 0),
            operation(GetBuzzer, Buzzer_setFrequency, 700),
            operation(GetBuzzer, Buzzer_setFrequency, 10000),
            operation(GetBuzzer, Buzzer_setVolume, 0),
            operation(GetBuzzer, Buzzer_setVolume, 2000),
            operation(GetCanSetting, CanSetting_setBaudrate, 4, 1),
            operation(GetCanSetting, CanSetting_setBaudrate, 4, 65535),
            operation(GetConfig, Config_setHeatingTempLimit, -25),
            operation(GetConfig, Config_setHeatingTempLimit, 5),
            operation(GetConfig, Config_setVideoStartupPowerConfig, 15),
            operation(GetConfig, Config_setNextBootMode, 0),
            operation(GetConfig, Config_setNextBootMode, 3),
            operation(GetConfig, Config_setNextBootMode, 4),
            operation(GetFrontLED, FrontLED_setSignal, 0.2, 0),
            operation(GetFrontLED, FrontLED_setSignal, 50.0, 100),
            operation(GetFrontLED, FrontLED_setStandardColor, 0),
            operation(GetFrontLED, FrontLED_setStandardColor, 5),
            operation(GetPower, Power_setVideoPowerStatus, 15),
            operation(GetTouchScreen, TouchScreen_setMode, 0),
            operation(GetTouchScreen, TouchScreen_setMode, 3),
            operation(GetTouchScreen, TouchScreen_setAdvancedSetting, 0, 65535),
            operation(GetTouchScreen, TouchScreen_setAdvancedSetting, 8, 0),
            operation(GetTouchScreen, TouchScreen_setAdvancedSetting, 10, 65535),
        },
        0);
    for (const std::int32_t triggers : {1, 2, 3, 5, 6, 7, 9, 10, 11, 13, 14, 15})
        EXPECT_EQ(Config_setStartupTriggerConfig(GetConfig(), triggers), 0u) << triggers;
}

TEST(Arguments, MustBeARegisterCommand)
{
    const CalledUnit unit;
    expectAll(
        {
            operation(GetQVAuxPrivate, QVAuxPrivate_writeSsRegister, 3, 0x65, 0),
            operation(GetQVAuxPrivate, QVAuxPrivate_writeSsRegister, 3, 0x64, 1),
            operation(GetQVAuxPrivate, QVAuxPrivate_writeSsRegister, 4, 0x65, 1),
            operation(GetQVAuxPrivate, QVAuxPrivate_writeSsRegister, 4, 6, 0xC2),
            operation(GetQVAuxPrivate, QVAuxPrivate_writeSsRegister, 0, 0, 0),
        },
        notSupported);
    EXPECT_EQ(unit.content(), unchanged);
}

} // namespace
