#include "device.h"

#include "device/qv_aux2.h"
#include "promise.h"

#include <algorithm>
#include <climits>
#include <concepts>
#include <cstdlib>
#include <cstring>
#include <string_view>

Device device;

std::uint8_t scripted()
{
    if (device.script.empty())
        return 0;
    const std::uint8_t byte = device.script.front();
    device.script = device.script.subspan(1);
    return byte;
}

namespace
{

// Handles are numbers, not places in memory, so that a stale one is always found out.
constexpr std::uintptr_t handleStep = 16;

void* give(const char* module)
{
    checkPrinted();
    device.handles.push_back({module, scripted() == 1, false});
    return device.handles.back().null ? nullptr : reinterpret_cast<void*>(device.handles.size() * handleStep);
}

// The handle as it was given; null when the module never gave it or has it back.
GivenHandle* find(const char* module, const void* handle)
{
    for (std::size_t i = 0; i < device.handles.size(); ++i)
    {
        GivenHandle& given = device.handles[i];
        const std::uintptr_t number = given.null ? 0 : (i + 1) * handleStep;
        if (number == reinterpret_cast<std::uintptr_t>(handle) && !given.released &&
            std::string_view(given.module) == module)
            return &given;
    }
    return nullptr;
}

void use(const char* module, const void* handle)
{
    checkPrinted();
    promise(find(module, handle), "a module is used through its own handle, before it is given back");
}

template <typename Value>
void deliver(Value* place)
{
    promise(place, "there is a place for each result");
    unsigned char bytes[sizeof(Value)];
    std::ranges::generate(bytes, scripted);
    std::memcpy(place, bytes, sizeof bytes);
}

// A buffer for a text of up to 255 bytes, or for one that fills it and has no terminator. It is one line.
struct Text
{
    char* buffer;
    std::uint32_t length;
};

void deliver(Text text)
{
    promise(text.buffer, "there is a place for each text");
    const std::size_t size = scripted();
    std::memset(text.buffer, size == 255 ? 'U' : 0, text.length);
    for (std::size_t i = 0; i < std::min<std::size_t>(size, text.length) && !device.script.empty(); ++i)
    {
        const auto byte = static_cast<char>(scripted());
        text.buffer[i] = byte == '\n' ? ' ' : byte;
    }
}

// A buffer for an EEPROM, which has no end when the byte behind what is written in it is not 0xFF.
struct Eeprom
{
    std::uint8_t* buffer;
    std::uint32_t length;
};

void deliver(Eeprom eeprom)
{
    promise(eeprom.buffer, "there is a place for the EEPROM");
    std::memset(eeprom.buffer, scripted(), eeprom.length);
    for (std::size_t size = scripted(), i = 0; i < std::min<std::size_t>(size, eeprom.length); ++i)
        eeprom.buffer[i] = scripted();
}

ApiError scriptedCode()
{
    ApiError code = 0;
    deliver(&code);
    return code;
}

// An answer: success or not, with the results written or not.
template <typename... Place>
ApiError answer(Place... places)
{
    switch (scripted() % 8)
    {
    case 3: // says that it succeeded, and wrote nothing
        return 0;
    case 4: // not supported
        return 2;
    case 5: // not fitted
        return 18;
    case 6:
        return scripted();
    case 7: // any code, the results written all the same
        (deliver(places), ...);
        return scriptedCode();
    default:
        (deliver(places), ...);
        return 0;
    }
}

ApiError change(bool allowed)
{
    promise(allowed, "a setting is sent only what it may be");
    device.changed = true;
    return answer();
}

// Whether one of the command line's numbers is `allowed`.
template <typename Allowed>
bool isAnyNumber(Allowed allowed)
{
    return std::ranges::any_of(device.values,
                               [&](const char* value) { return allowed(std::strtol(value, nullptr, 10)); });
}

// Whether one from `least` to `most` is sent, or the low bits of one.
template <std::integral Value>
bool isNumber(Value sent, long least = LONG_MIN, long most = LONG_MAX)
{
    return isAnyNumber([&](long number)
                       { return number >= least && number <= most && static_cast<Value>(number) == sent; });
}

bool isIdleTime(std::uint8_t sent)
{
    return isAnyNumber([&](long number)
                       { return number % 100 == 0 && static_cast<std::uint8_t>(number / 100) == sent; });
}

bool isFlag(std::int32_t value)
{
    return value == 0 || value == 1;
}

bool isAction(std::int32_t value)
{
    return value >= 0 && value <= 2;
}

const char* answerConstant()
{
    checkPrinted();
    static const std::string longText(20000, 'L');
    switch (scripted() % 8)
    {
    case 1:
        device.gaveNullText = true;
        return nullptr;
    case 2:
        return "";
    case 3:
        return longText.c_str();
    default:
        return "Text";
    }
}

std::uint8_t canChannels = 0; // as the program was told
double ledFrequency = 0;
std::uint8_t ledDutyCycle = 0;
std::uint8_t videoMask = 0;

// Remembers what a call wrote to its result, or what the program had there before.
template <typename Value>
ApiError remember(ApiError code, const Value* place, Value& memory)
{
    memory = *place;
    return code;
}

bool sameBits(double one, double other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

bool isFrequency(double sent)
{
    return sent >= 0.2 && sent <= 50 &&
           std::ranges::any_of(device.values, [&](const char* value)
                               { return sameBits(std::strtod(value, nullptr), sent); });
}

// One of the four channels is switched, the rest of the mask goes back as it came.
bool isVideoChange(std::uint8_t mask)
{
    const int difference = mask ^ videoMask;
    return difference == 0 || difference == 1 || difference == 2 || difference == 4 || difference == 8;
}

ApiError startJob(const char* path, std::int32_t flag, std::string_view extension)
{
    promise(device.firmwareAllowed, "firmware work is for root, and asks first unless it is forced");
    promise(*path == '/' && std::string_view(path).ends_with(extension), "the firmware file is in place");
    return change(flag == 0);
}

ApiError answerVersion(std::uint8_t* major, std::uint8_t* minor, std::uint8_t* release, std::uint8_t* build)
{
    return answer(major, minor, release, build);
}

} // namespace

#define MODULE(module)                                                                                       \
    module##Handle Get##module()                                                                             \
    {                                                                                                        \
        return static_cast<module##Handle>(give(#module));                                                   \
    }                                                                                                        \
    ApiError module##_release(module##Handle handle)                                                         \
    {                                                                                                        \
        use(#module, handle);                                                                                \
        find(#module, handle)->released = true;                                                              \
        return answer();                                                                                     \
    }
#define READS_TEXT(module, operation)                                                                        \
    ApiError module##_##operation(module##Handle handle, char* buffer, std::uint32_t length)                 \
    {                                                                                                        \
        use(#module, handle);                                                                                \
        return answer(Text{buffer, length});                                                                 \
    }
#define READS(module, operation, type)                                                                       \
    ApiError module##_##operation(module##Handle handle, type* place)                                        \
    {                                                                                                        \
        use(#module, handle);                                                                                \
        return answer(place);                                                                                \
    }
#define SETS(module, operation, type, allowed)                                                               \
    ApiError module##_##operation(module##Handle handle, [[maybe_unused]] type value)                        \
    {                                                                                                        \
        use(#module, handle);                                                                                \
        return change(allowed);                                                                              \
    }
#define STARTS(module, operation)                                                                            \
    ApiError module##_##operation(module##Handle handle, const char* path, std::int32_t flag)                \
    {                                                                                                        \
        use(#module, handle);                                                                                \
        return startJob(path, flag, std::strstr(#operation, "Fpga") ? ".mcs" : ".hex");                      \
    }
#define OTHER(module, operation)

#include "operations.def"

const char* GetErrorStringA(ApiError)
{
    return answerConstant();
}

const char* GetStartupReasonStringA(std::uint16_t)
{
    return answerConstant();
}

const char* GetHwErrorStatusStringA(std::uint16_t)
{
    return answerConstant();
}

ApiError About_getNrOfCANConnections(AboutHandle about, std::uint8_t* count)
{
    use("About", about);
    const ApiError code = answer(count);
    canChannels = code == 0 ? *count : 4;
    return code;
}

ApiError Adc_getVoltage(AdcHandle adc, std::int32_t channel, double* volts)
{
    use("Adc", adc);
    promise(channel >= 0 && channel <= 23, "there is such a voltage");
    return answer(volts);
}

#define VERSION(operation)                                                                                   \
    ApiError AuxVersion_##operation(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,      \
                                    std::uint8_t* release, std::uint8_t* build)                              \
    {                                                                                                        \
        use("AuxVersion", version);                                                                          \
        return answerVersion(major, minor, release, build);                                                  \
    }

VERSION(getFPGAVersion)
VERSION(getFrontVersion)
VERSION(getSSVersion)
VERSION(getQVAuxVersion)
VERSION(getQVAuxDrvVersion)
VERSION(getOSVersion)

ApiError Backlight_setAutomaticBLFilter(BacklightHandle backlight, std::int32_t first, std::int32_t second,
                                        std::int32_t third, std::int32_t fourth)
{
    use("Backlight", backlight);
    return change(first == 4 && second == 2 && third == 40 && fourth == 2);
}

ApiError Backlight_startAutomaticBL(BacklightHandle backlight)
{
    use("Backlight", backlight);
    return change(true);
}

ApiError Backlight_stopAutomaticBL(BacklightHandle backlight)
{
    use("Backlight", backlight);
    return change(true);
}

ApiError CanSetting_getBaudrate(CanSettingHandle can, std::uint8_t channel, std::uint16_t* baudrate)
{
    use("CanSetting", can);
    promise(channel >= 1 && channel <= canChannels, "the unit has the CAN channel");
    return answer(baudrate);
}

ApiError CanSetting_setBaudrate(CanSettingHandle can, std::uint8_t channel, std::uint16_t baudrate)
{
    use("CanSetting", can);
    return change(channel >= 1 && channel <= canChannels && isNumber(baudrate));
}

ApiError Config_getVideoStartupPowerConfig(ConfigHandle config, std::uint8_t* mask)
{
    use("Config", config);
    return remember(answer(mask), mask, videoMask);
}

ApiError Config_setVideoStartupPowerConfig(ConfigHandle config, std::uint8_t mask)
{
    use("Config", config);
    return change(isVideoChange(mask));
}

ApiError Diagnostic_getMinMaxTemp(DiagnosticHandle diagnostic, std::int16_t* minimum, std::int16_t* maximum)
{
    use("Diagnostic", diagnostic);
    return answer(minimum, maximum);
}

ApiError Diagnostic_getPMTemp(DiagnosticHandle diagnostic, std::int32_t sensor, std::int16_t* temperature,
                              std::int32_t* status)
{
    use("Diagnostic", diagnostic);
    promise(sensor == 0 || sensor == 1, "there is such a sensor");
    return answer(temperature, status);
}

// A job that would go on for ever ends with the script.
ApiError FirmwareUpgrade_getUpgradeStatus(FirmwareUpgradeHandle upgrade, UpgradeStatus* status,
                                          std::int32_t flag)
{
    use("FirmwareUpgrade", upgrade);
    promise(flag == 1, "the status call waits for something new");
    if (device.script.empty())
        *status = {6, 100, 0};
    else
        switch (const std::uint8_t state = scripted(); state % 4)
        {
        case 0:
            return answer(status);
        case 1:
            return answer(&status->error);
        default:
            status->state = state / 4 % 10 - 1;
        }
    return 0;
}

ApiError FirmwareUpgrade_shutDown(FirmwareUpgradeHandle upgrade)
{
    use("FirmwareUpgrade", upgrade);
    return change(true);
}

ApiError FrontLED_getSignal(FrontLEDHandle led, double* frequency, std::uint8_t* dutyCycle)
{
    use("FrontLED", led);
    const ApiError code = answer(frequency, dutyCycle);
    return remember(remember(code, frequency, ledFrequency), dutyCycle, ledDutyCycle);
}

// One of the two is set, the other goes back as it came.
ApiError FrontLED_setSignal(FrontLEDHandle led, double frequency, std::uint8_t dutyCycle)
{
    use("FrontLED", led);
    const bool setsFrequency = isFrequency(frequency) && dutyCycle == ledDutyCycle;
    const bool setsDutyCycle = isNumber(dutyCycle, 0, 100) && sameBits(frequency, ledFrequency);
    return change(setsFrequency || setsDutyCycle);
}

ApiError Power_getVideoPowerStatus(PowerHandle power, std::uint8_t* mask)
{
    use("Power", power);
    return remember(answer(mask), mask, videoMask);
}

ApiError Power_setVideoPowerStatus(PowerHandle power, std::uint8_t mask)
{
    use("Power", power);
    return change(isVideoChange(mask));
}

ApiError QVAuxPrivate_getEepromData(QVAuxPrivateHandle privateAccess, std::int32_t eeprom,
                                    std::uint8_t* buffer, std::uint32_t length)
{
    use("QVAuxPrivate", privateAccess);
    promise(eeprom == 0 || eeprom == 1, "there is such an EEPROM");
    const ApiError code = answer(Eeprom{buffer, length});
    device.readRawEeprom = code == 0;
    return code;
}

ApiError QVAuxPrivate_writeSsRegister(QVAuxPrivateHandle privateAccess, std::int32_t group,
                                      std::int32_t number, std::int32_t value)
{
    use("QVAuxPrivate", privateAccess);
    const bool acknowledgesBoot = group == 4 && number == 6 && value == 0xC3;
    const bool restoresDefaults = group == 3 && number == 0x65 && value == 1;
    return change(acknowledgesBoot || restoresDefaults);
}

ApiError TouchScreen_getAdvancedSetting(TouchScreenHandle touch, std::int32_t setting, std::uint16_t* value)
{
    use("TouchScreen", touch);
    promise(setting >= 0 && setting <= 11, "there is such a setting");
    return answer(value);
}

ApiError TouchScreen_setAdvancedSetting(TouchScreenHandle touch, std::int32_t setting, std::uint16_t value)
{
    use("TouchScreen", touch);
    return change(setting >= 0 && setting <= 11 && isNumber(value));
}
