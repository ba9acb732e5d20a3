#include "device/qv_aux2.h"
#include "support/called_unit.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <dlfcn.h>
#include <fnmatch.h>
#include <functional>
#include <iterator>
#include <limits>
#include <set>
#include <tuple>
#include <type_traits>

namespace
{

using nlohmann::json;

constexpr ApiError notSupported = 2;
constexpr ApiError invalidHandle = 3;
constexpr ApiError invalidArgument = 4;
constexpr ApiError outOfRange = 5;
constexpr ApiError boardNotFitted = 18;

// Room for a result of any type.
struct Room
{
    template <typename Result>
    operator Result*() const
    {
        static Result place[4096];
        return place;
    }
};

constexpr Room room;

// One operation with arguments that a healthy unit takes.
struct Operation
{
    std::string name;
    std::function<const void*()> obtain;
    std::function<ApiError(const void*)> call;
    std::vector<std::function<ApiError(const void*)>> callsWithNull; // for one pointer each
};

std::string nameOf(void* function)
{
    Dl_info info{};
    return dladdr(function, &info) && info.dli_sname ? info.dli_sname : "";
}

template <typename Argument>
void makeNull(Argument& argument)
{
    if constexpr (std::is_pointer_v<Argument>)
        argument = nullptr;
}

template <typename Handle, typename... Arguments, typename... Values>
Operation operation(Handle (*obtain)(), ApiError (*operation)(Handle, Arguments...), Values... values)
{
    const auto call = [=](const void* handle, int null)
    {
        std::tuple<Arguments...> arguments{static_cast<Arguments>(values)...};
        const auto callWith = [&](auto&... each)
        {
            [[maybe_unused]] int position = 0;
            ((position++ == null ? makeNull(each) : void()), ...);
            return operation(static_cast<Handle>(const_cast<void*>(handle)), each...);
        };
        return std::apply(callWith, arguments);
    };
    Operation result{nameOf(reinterpret_cast<void*>(operation)),
                     obtain,
                     [=](const void* handle) { return call(handle, -1); },
                     {}};
    const std::vector<bool> isPointer{std::is_pointer_v<Arguments>...};
    for (std::size_t i = 0; i < isPointer.size(); ++i)
        if (isPointer[i])
            result.callsWithNull.push_back([=](const void* handle)
                                           { return call(handle, static_cast<int>(i)); });
    return result;
}

const std::vector<Operation>& everyOperation()
{
    static const std::vector<Operation> operations = {
        operation(GetAbout, About_getUnitSerial, room, 16),
        operation(GetAbout, About_getMainPCBSerial, room, 16),
        operation(GetAbout, About_getMainPCBArt, room, 16),
        operation(GetAbout, About_getMainManufacturingDate, room, 16),
        operation(GetAbout, About_getMainHWversion, room, 16),
        operation(GetAbout, About_getMainProdRev, room, 16),
        operation(GetAbout, About_getMainProdArtNr, room, 16),
        operation(GetAbout, About_getNrOfCANConnections, room),
        operation(GetAbout, About_getNrOfETHConnections, room),
        operation(GetAbout, About_getNrOfSerialConnections, room),
        operation(GetAbout, About_getNrOfUSBConnections, room),
        operation(GetAbout, About_getNrOfVideoConnections, room),
        operation(GetAbout, About_getNrOfDigIOConnections, room),
        operation(GetAbout, About_getNrOfCfgInConnections, room),
        operation(GetAbout, About_getNrOfPWMOutConnections, room),
        operation(GetAbout, About_getNrOfButtons, room),
        operation(GetAbout, About_getIsDisplayAvailable, room),
        operation(GetAbout, About_getIsTouchScreenAvailable, room),
        operation(GetAbout, About_getAddOnPCBSerial, room, 16),
        operation(GetAbout, About_getAddOnPCBArt, room, 16),
        operation(GetAbout, About_getAddOnManufacturingDate, room, 16),
        operation(GetAbout, About_getAddOnHWversion, room, 16),
        operation(GetAbout, About_getIsBTMounted, room),
        operation(GetAbout, About_getIsGPRSMounted, room),
        operation(GetAbout, About_getIsGPSMounted, room),
        operation(GetAbout, About_getIsWLANMounted, room),
        operation(GetAdc, Adc_getVoltage, 23, room),
        operation(GetAuxVersion, AuxVersion_getFPGAVersion, room, room, room, room),
        operation(GetAuxVersion, AuxVersion_getFrontVersion, room, room, room, room),
        operation(GetAuxVersion, AuxVersion_getSSVersion, room, room, room, room),
        operation(GetAuxVersion, AuxVersion_getQVAuxVersion, room, room, room, room),
        operation(GetAuxVersion, AuxVersion_getQVAuxDrvVersion, room, room, room, room),
        operation(GetAuxVersion, AuxVersion_getOSVersion, room, room, room, room),
        operation(GetBacklight, Backlight_getIntensity, room),
        operation(GetBacklight, Backlight_setIntensity, 255),
        operation(GetBacklight, Backlight_getAutomaticBLStatus, room),
        operation(GetBacklight, Backlight_setAutomaticBLFilter, 4, 2, 40, 2),
        operation(GetBacklight, Backlight_startAutomaticBL),
        operation(GetBacklight, Backlight_stopAutomaticBL),
        operation(GetBacklight, Backlight_getLedDimming, room),
        operation(GetBacklight, Backlight_setLedDimming, 1),
        operation(GetBuzzer, Buzzer_getFrequency, room),
        operation(GetBuzzer, Buzzer_setFrequency, 700),
        operation(GetBuzzer, Buzzer_getVolume, room),
        operation(GetBuzzer, Buzzer_setVolume, 2000),
        operation(GetBuzzer, Buzzer_getTrigger, room),
        operation(GetBuzzer, Buzzer_setTrigger, 1),
        operation(GetCanSetting, CanSetting_getBaudrate, 4, room),
        operation(GetCanSetting, CanSetting_setBaudrate, 1, 1000),
        operation(GetConfig, Config_getShortButtonPressAction, room),
        operation(GetConfig, Config_setShortButtonPressAction, 2),
        operation(GetConfig, Config_getLongButtonPressAction, room),
        operation(GetConfig, Config_setLongButtonPressAction, 0),
        operation(GetConfig, Config_getFrontBtnTrigTime, room),
        operation(GetConfig, Config_setFrontBtnTrigTime, 65535),
        operation(GetConfig, Config_getOnOffSigAction, room),
        operation(GetConfig, Config_setOnOffSigAction, 1),
        operation(GetConfig, Config_getExtOnOffSigTrigTime, room),
        operation(GetConfig, Config_setExtOnOffSigTrigTime, 4294967295u),
        operation(GetConfig, Config_getPowerOnStartup, room),
        operation(GetConfig, Config_setPowerOnStartup, 1),
        operation(GetConfig, Config_getStartupTriggerConfig, room),
        operation(GetConfig, Config_setStartupTriggerConfig, 15),
        operation(GetConfig, Config_getSuspendMaxTime, room),
        operation(GetConfig, Config_setSuspendMaxTime, 0),
        operation(GetConfig, Config_getHeatingTempLimit, room),
        operation(GetConfig, Config_setHeatingTempLimit, -25),
        operation(GetConfig, Config_getVideoStartupPowerConfig, room),
        operation(GetConfig, Config_setVideoStartupPowerConfig, 0),
        operation(GetConfig, Config_getCanStartupPowerConfig, room),
        operation(GetConfig, Config_setCanStartupPowerConfig, 0),
        operation(GetConfig, Config_getExtFanStartupPowerConfig, room),
        operation(GetConfig, Config_setExtFanStartupPowerConfig, 1),
        operation(GetConfig, Config_setNextBootMode, 3),
        operation(GetDiagnostic, Diagnostic_getStartupReason, room),
        operation(GetDiagnostic, Diagnostic_getShutDownReason, room),
        operation(GetDiagnostic, Diagnostic_getHwErrorStatus, room),
        operation(GetDiagnostic, Diagnostic_getTimer, room),
        operation(GetDiagnostic, Diagnostic_getMinMaxTemp, room, room),
        operation(GetDiagnostic, Diagnostic_getPowerCycles, room),
        operation(GetDiagnostic, Diagnostic_getSSTemp, room),
        operation(GetDiagnostic, Diagnostic_getPCBTemp, room),
        operation(GetDiagnostic, Diagnostic_getPMTemp, 1, room, room),
        operation(GetDigIO, DigIO_getDigIO, room),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startSSUpgrade, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startSSVerification, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFpgaUpgrade, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFpgaVerification, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFrontUpgrade, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_startFrontVerification, "none.hex", 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_getUpgradeStatus, room, 0),
        operation(GetFirmwareUpgrade, FirmwareUpgrade_shutDown),
        operation(GetFrontLED, FrontLED_getSignal, room, room),
        operation(GetFrontLED, FrontLED_setSignal, 0.2, 100),
        operation(GetFrontLED, FrontLED_getStandardColor, room),
        operation(GetFrontLED, FrontLED_setStandardColor, 5),
        operation(GetFrontLED, FrontLED_getNrOfPulses, room),
        operation(GetFrontLED, FrontLED_setNrOfPulses, 255),
        operation(GetFrontLED, FrontLED_getIdleTime, room),
        operation(GetFrontLED, FrontLED_setIdleTime, 255),
        operation(GetFrontLED, FrontLED_getEnabledDuringStartup, room),
        operation(GetFrontLED, FrontLED_setEnabledDuringStartup, 0),
        operation(GetLightsensor, Lightsensor_getIlluminance, room),
        operation(GetPower, Power_getVideoPowerStatus, room),
        operation(GetPower, Power_setVideoPowerStatus, 7),
        operation(GetPower, Power_getCanPowerStatus, room),
        operation(GetPower, Power_setCanPowerStatus, 0),
        operation(GetPower, Power_getExtFanPowerStatus, room),
        operation(GetPower, Power_setExtFanPowerStatus, 1),
        operation(GetQVAuxPrivate, QVAuxPrivate_getEepromData, 1, room, 4096),
        operation(GetQVAuxPrivate, QVAuxPrivate_writeSsRegister, 3, 0x65, 1),
        operation(GetQVAuxPrivate, QVAuxPrivate_getSystemMode, room),
        operation(GetTelematics, Telematics_getWLANPowerStatus, room),
        operation(GetTelematics, Telematics_setWLANPowerStatus, 0),
        operation(GetTelematics, Telematics_getWLANStartUpPowerStatus, room),
        operation(GetTelematics, Telematics_setWLANStartUpPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPRSPowerStatus, room),
        operation(GetTelematics, Telematics_setGPRSPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPRSStartUpPowerStatus, room),
        operation(GetTelematics, Telematics_setGPRSStartUpPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPSPowerStatus, room),
        operation(GetTelematics, Telematics_setGPSPowerStatus, 0),
        operation(GetTelematics, Telematics_getGPSStartUpPowerStatus, room),
        operation(GetTelematics, Telematics_setGPSStartUpPowerStatus, 0),
        operation(GetTelematics, Telematics_getBTPowerStatus, room),
        operation(GetTelematics, Telematics_setBTPowerStatus, 0),
        operation(GetTelematics, Telematics_getBTStartUpPowerStatus, room),
        operation(GetTelematics, Telematics_setBTStartUpPowerStatus, 0),
        operation(GetTouchScreen, TouchScreen_getMode, room),
        operation(GetTouchScreen, TouchScreen_setMode, 1),
        operation(GetTouchScreen, TouchScreen_getAdvancedSetting, 11, room),
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

// A firmware job that was begun is carried on until it has failed for want of its file.
void finishFirmwareJob()
{
    const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
    UpgradeStatus status{};
    while (status.error == 0 && FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 0) == 0)
        continue;
    FirmwareUpgrade_release(upgrade);
}

void expectAll(const std::vector<Operation>& operations, ApiError code)
{
    for (const Operation& checked : operations)
        EXPECT_EQ(checked.call(checked.obtain()), code) << checked.name;
}

std::string moduleOf(const std::string& operation)
{
    return operation.substr(0, operation.find('_'));
}

// The operations whose names match one of the shell patterns.
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

const json noSettings = json::object();

TEST(Calls, SucceedForEveryOperationOnAHealthyUnit)
{
    const CalledUnit unit(R"({"firmware": {"pace": 0}})");
    for (const auto& operations : {everyOperation(), everyRelease()})
        for (const Operation& checked : operations)
        {
            EXPECT_EQ(checked.call(checked.obtain()), 0u) << checked.name;
            if (checked.name.starts_with("FirmwareUpgrade_start"))
                finishFirmwareJob();
        }
}

TEST(Calls, AreTestedForEveryOperationOfTheHeader)
{
    std::set<std::string> tested = {"GetErrorStringA", "GetStartupReasonStringA", "GetHwErrorStatusStringA"};
    for (const auto& operations : {everyOperation(), everyRelease()})
        for (const Operation& checked : operations)
            tested.insert({checked.name, "Get" + moduleOf(checked.name)});

    std::set<std::string> declared;
    const std::string identifier = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
    const std::string header = readFile(PROJECT_FOLDER "/src/device/qv_aux2.h");
    for (auto bracket = header.find('('); bracket != std::string::npos;
         bracket = header.find('(', bracket + 1))
    {
        const auto begin = header.find_last_not_of(identifier, bracket - 1) + 1;
        const std::string name = header.substr(begin, bracket - begin);
        if (name.starts_with("Get") || name.find('_') != std::string::npos)
            declared.insert(name);
    }
    EXPECT_EQ(tested, declared);
}

// Handles.

TEST(Calls, RefuseANullHandle)
{
    const CalledUnit unit;
    for (const auto& operations : {everyOperation(), everyRelease()})
        for (const Operation& checked : operations)
            EXPECT_EQ(checked.call(nullptr), invalidHandle) << checked.name;
    EXPECT_EQ(unit.content(), noSettings);
}

TEST(Calls, RefuseTheHandleOfAnotherModule)
{
    const CalledUnit unit;
    const BuzzerHandle buzzer = GetBuzzer();
    const LightsensorHandle sensor = GetLightsensor();
    for (const auto& operations : {everyOperation(), everyRelease()})
        for (const Operation& checked : operations)
        {
            const bool isBuzzer = moduleOf(checked.name) == "Buzzer";
            const void* const foreign = isBuzzer ? static_cast<const void*>(sensor) : buzzer;
            EXPECT_EQ(checked.call(foreign), invalidHandle) << checked.name;
        }
    EXPECT_EQ(unit.content(), noSettings);
}

TEST(Calls, RefuseAReleasedHandle)
{
    const CalledUnit unit;
    for (const Operation& release : everyRelease())
    {
        const void* const handle = release.obtain();
        EXPECT_EQ(release.call(handle), 0u) << release.name;
        EXPECT_EQ(release.call(handle), invalidHandle) << release.name;
        for (const Operation& checked : operationsLike({(moduleOf(release.name) + "_*").c_str()}))
            EXPECT_EQ(checked.call(handle), invalidHandle) << checked.name;
    }
    EXPECT_EQ(unit.content(), noSettings);
}

TEST(Calls, RefuseWhatIsNoHandle)
{
    const CalledUnit unit;
    const auto buzzer = reinterpret_cast<std::uintptr_t>(GetBuzzer());
    for (const std::uintptr_t number :
         {std::uintptr_t{1}, buzzer - 1, buzzer + 1, buzzer + 16, std::numeric_limits<std::uintptr_t>::max(),
          std::numeric_limits<std::uintptr_t>::max() - 15, reinterpret_cast<std::uintptr_t>(&unit)})
    {
        std::uint16_t volume = 4711;
        EXPECT_EQ(Buzzer_getVolume(reinterpret_cast<BuzzerHandle>(number), &volume), invalidHandle) << number;
        EXPECT_EQ(Buzzer_release(reinterpret_cast<BuzzerHandle>(number)), invalidHandle) << number;
        EXPECT_EQ(volume, 4711);
    }
}

TEST(Calls, GiveANewHandleEveryTime)
{
    const CalledUnit unit;
    std::set<const void*> handles;
    for (int i = 0; i < 1000; ++i)
    {
        const BuzzerHandle buzzer = GetBuzzer();
        EXPECT_TRUE(handles.insert(buzzer).second);
        EXPECT_EQ(i % 2 ? Buzzer_release(buzzer) : 0, 0u);
    }
    EXPECT_EQ(handles.count(nullptr), 0u);
}

TEST(Calls, ServeTwoHandlesOfOneModule)
{
    const CalledUnit unit;
    const BuzzerHandle one = GetBuzzer();
    const BuzzerHandle other = GetBuzzer();
    EXPECT_EQ(Buzzer_release(one), 0u);
    EXPECT_EQ(Buzzer_setVolume(other, 40), 0u);
    EXPECT_EQ(unit["/buzzer/volume"], 40);
}

// Arguments.

TEST(Calls, RefuseANullPointerForEveryResultAndText)
{
    const CalledUnit unit;
    for (const Operation& checked : everyOperation())
    {
        EXPECT_TRUE(!checked.callsWithNull.empty() || checked.name.find("_get") == std::string::npos);
        for (const auto& callWithNull : checked.callsWithNull)
            EXPECT_EQ(callWithNull(checked.obtain()), invalidArgument) << checked.name;
    }
    EXPECT_EQ(unit.content(), noSettings);
}

TEST(Calls, WriteNoResultWithoutSuccess)
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

TEST(Calls, FillAShortBufferWithoutATerminator)
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

TEST(Calls, ReadAsMuchOfAnEepromAsThereIsRoomFor)
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

TEST(Calls, KeepAnEepromAtItsSizeHoweverMuchTheFileHolds)
{
    const CalledUnit unit(json{{"eeprom", {{"addOn", {{"text", std::string(6000, 'x')}}}}}}.dump());
    std::vector<std::uint8_t> buffer(5000, '-');
    EXPECT_EQ(QVAuxPrivate_getEepromData(GetQVAuxPrivate(), 1, buffer.data(), 5000), 0u);
    EXPECT_EQ(buffer[4095], 'x');
    EXPECT_EQ(buffer[4096], '-');
}

TEST(Calls, RefuseWhatIsOutOfRangeAndChangeNothing)
{
    const CalledUnit unit;
    constexpr auto lowest = std::numeric_limits<std::int32_t>::min();
    constexpr auto highest = std::numeric_limits<std::int32_t>::max();
    std::vector<Operation> refused = {
        operation(GetAdc, Adc_getVoltage, -1, room),
        operation(GetAdc, Adc_getVoltage, 24, room),
        operation(GetAdc, Adc_getVoltage, lowest, room),
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
        operation(GetDiagnostic, Diagnostic_getPMTemp, -1, room, room),
        operation(GetDiagnostic, Diagnostic_getPMTemp, 2, room, room),
        operation(GetFrontLED, FrontLED_setSignal, 0.1999, 50),
        operation(GetFrontLED, FrontLED_setSignal, 50.0001, 50),
        operation(GetFrontLED, FrontLED_setSignal, -1.0, 50),
        operation(GetFrontLED, FrontLED_setSignal, std::nan(""), 50),
        operation(GetFrontLED, FrontLED_setSignal, HUGE_VAL, 50),
        operation(GetFrontLED, FrontLED_setSignal, 1.0, 101),
        operation(GetPower, Power_setVideoPowerStatus, 16),
        operation(GetQVAuxPrivate, QVAuxPrivate_getEepromData, -1, room, 16),
        operation(GetQVAuxPrivate, QVAuxPrivate_getEepromData, 2, room, 16),
        operation(GetTouchScreen, TouchScreen_setMode, -1),
        operation(GetTouchScreen, TouchScreen_setMode, 4),
        operation(GetTouchScreen, TouchScreen_getAdvancedSetting, -1, room),
        operation(GetTouchScreen, TouchScreen_getAdvancedSetting, 12, room),
        operation(GetTouchScreen, TouchScreen_setAdvancedSetting, -1, 0),
        operation(GetTouchScreen, TouchScreen_setAdvancedSetting, 12, 0),
        operation(GetTouchScreen, TouchScreen_setAdvancedSetting, 8, 2),
    };
    for (const std::int32_t value : {lowest, -1, 2, 255, highest})
        refused.insert(refused.end(),
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
        refused.insert(refused.end(), {
                                          operation(GetConfig, Config_setShortButtonPressAction, value),
                                          operation(GetConfig, Config_setLongButtonPressAction, value),
                                          operation(GetConfig, Config_setOnOffSigAction, value),
                                      });
    for (const std::int32_t value : {lowest, -1, 6, 255, highest})
        refused.push_back(operation(GetFrontLED, FrontLED_setStandardColor, value));
    expectAll(refused, outOfRange);
    EXPECT_EQ(unit.content(), noSettings);
}

TEST(Calls, TakeWhatIsJustInRange)
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

TEST(Calls, RefuseRegistersThatTakeNoCommand)
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
    EXPECT_EQ(unit.content(), noSettings);
}

// Equipment.

TEST(Calls, RefuseWhatNeedsADisplayWithoutOne)
{
    const CalledUnit unit(R"({"about": {"display": false}})");
    expectAll(operationsLike({"Backlight_*", "*FrontVersion", "*_startFront*"}), notSupported);
}

TEST(Calls, RefuseWhatNeedsATouchScreenWithoutOne)
{
    const CalledUnit unit(R"({"about": {"touchScreen": false}})");
    expectAll(operationsLike({"TouchScreen_*"}), notSupported);
}

TEST(Calls, RefuseWhatNeedsCanWithoutIt)
{
    const CalledUnit unit(R"({"about": {"canConnections": 0}})");
    expectAll(operationsLike({"CanSetting_*", "*CanPower*", "*CanStartupPower*"}), notSupported);
}

TEST(Calls, RefuseCanChannelsThatTheUnitDoesNotHave)
{
    const CalledUnit unit(R"({"about": {"canConnections": 2}})");
    for (const int channel : {0, 3, 4, 255})
        expectAll({operation(GetCanSetting, CanSetting_getBaudrate, channel, room),
                   operation(GetCanSetting, CanSetting_setBaudrate, channel, 250)},
                  notSupported);
}

TEST(Calls, RunACanChannelThatTheFileDoesNotMentionAtTheLowestRate)
{
    const CalledUnit unit(R"({"about": {"canConnections": 255}, "can": {"baudrates": []}})");
    std::uint16_t baudrate = 0;
    EXPECT_EQ(CanSetting_getBaudrate(GetCanSetting(), 255, &baudrate), 0u);
    EXPECT_EQ(baudrate, 125);
    EXPECT_EQ(CanSetting_setBaudrate(GetCanSetting(), 3, 500), 0u);
    EXPECT_EQ(unit["/can/baudrates"], (json{125, 125, 500}));
}

TEST(Calls, RefuseWhatNeedsTheAddOnBoardWithoutIt)
{
    const CalledUnit unit(R"({"addOnBoard": {"fitted": false}})");
    expectAll(operationsLike({"About_getAddOn*", "About_getIs*Mounted", "Telematics_*", "*Eeprom*"}),
              boardNotFitted);
}

TEST(Calls, RefuseARadioThatIsNotMounted)
{
    const CalledUnit unit(
        R"({"addOnBoard": {"wlan": false, "gprs": false, "gps": false, "bluetooth": false}})");
    expectAll(operationsLike({"Telematics_*"}), notSupported);
    expectAll(operationsLike({"About_getAddOn*", "About_getIs*Mounted"}), 0);
}

TEST(Calls, RefuseOnlyTheRadioThatIsNotMounted)
{
    const CalledUnit unit(R"({"addOnBoard": {"gps": false}})");
    expectAll(operationsLike({"Telematics_?etGPS*"}), notSupported);
    expectAll(operationsLike({"Telematics_?etWLAN*", "Telematics_?etGPRS*", "Telematics_?etBT*"}), 0);
}

TEST(Calls, TellWhatTheUnitLacks)
{
    const CalledUnit unit(R"({"about": {"digitalIoConnections": null, "configurableInputs": null,
                                        "pwmOutputs": null, "buttons": null},
                              "diagnostic": {"shutdownReason": null, "hwErrorStatus": null,
                                             "ssTemperature": null, "pcbTemperature": null,
                                             "boardTemperature": null},
                              "adc": {"VMAIN": null},
                              "digitalInputs": {"inputs": null}, "lightsensor": {"illuminance": null}})");
    expectAll(operationsLike({"About_getNrOfDigIO*", "About_getNrOfCfgIn*", "About_getNrOfPWMOut*",
                              "About_getNrOfButtons"}),
              notSupported);
    expectAll(operationsLike({"Diagnostic_getShutDownReason", "Diagnostic_getHwErrorStatus",
                              "Diagnostic_get??Temp", "Diagnostic_getPCBTemp"}),
              notSupported);
    expectAll(operationsLike({"Adc_*", "DigIO_*", "Lightsensor_*"}), notSupported);
}

// Texts.

TEST(Calls, GiveATextForEveryCode)
{
    const CalledUnit unit;
    EXPECT_STREQ(GetErrorStringA(0), "No error");
    EXPECT_STREQ(GetErrorStringA(3), "The module handle is not valid");
    EXPECT_STREQ(GetErrorStringA(4294967295), "Error 4294967295");
    EXPECT_STREQ(GetStartupReasonStringA(0x55), "Front button");
    EXPECT_STREQ(GetStartupReasonStringA(0x56), "Unknown start-up reason");
    EXPECT_STREQ(GetHwErrorStatusStringA(131), "Main supply failed");
    EXPECT_STREQ(GetHwErrorStatusStringA(65535), "Unknown hardware status");
}

TEST(Calls, KeepTheTextsThatTheyGave)
{
    CalledUnit unit(R"({"errorTexts": {"77": "one text"}})");
    const char* const first = GetErrorStringA(77);
    unit.set("/errorTexts/77", "another text");
    const char* const second = GetErrorStringA(77);
    unit.set("/errorTexts/77", nullptr);
    EXPECT_EQ(GetErrorStringA(77), nullptr);
    EXPECT_STREQ(first, "one text");
    EXPECT_STREQ(second, "another text");
}

TEST(Calls, GiveTextsAndHandlesOfAUnitThatIsNotValidToo)
{
    const CalledUnit unit(R"({"adc": {"24V": 1e999}})");
    testing::internal::CaptureStderr();
    EXPECT_STREQ(GetErrorStringA(66), "The unit file is not valid");
    EXPECT_STREQ(GetStartupReasonStringA(0), "Power was applied");
    expectAll(everyRelease(), 0);
    for (const Operation& checked : everyOperation())
        EXPECT_EQ(checked.call(checked.obtain()), 66u) << checked.name;
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "libqv-aux2: " + unit.file() + ": number overflow parsing '1e999'\n");
}

} // namespace
