#include "device.h"

#include "device/limits.h"
#include "device/qv_aux2.h"
#include "expect.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <concepts>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <tuple>

Device device;

std::uint8_t nextScriptByte()
{
    if (device.script.empty())
        return 0;
    const std::uint8_t byte = device.script.front();
    device.script = device.script.subspan(1);
    return byte;
}

namespace
{

// A handle is its position in device.handles, counted from 1 and scaled. It is not an address: an address
// could be reused after a release, and the use of a stale handle would not be detected.
constexpr std::uintptr_t handleStep = 16;

#define MODULE(module)                                                                                       \
    const char* moduleOf(module##Handle)                                                                     \
    {                                                                                                        \
        return #module;                                                                                      \
    }
#include "operations.def"

template <typename ModuleHandle>
ModuleHandle provideHandle()
{
    checkOutputSoFar();
    device.handles.push_back({moduleOf(ModuleHandle{}), nextScriptByte() == 1, false});
    return device.handles.back().null ? nullptr
                                      : reinterpret_cast<ModuleHandle>(device.handles.size() * handleStep);
}

// Returns null if the handle is unknown, belongs to another module or has been released.
template <typename ModuleHandle>
Handle* findHandle(ModuleHandle handle)
{
    for (std::size_t i = 0; i < device.handles.size(); ++i)
    {
        Handle& provided = device.handles[i];
        const std::uintptr_t number = provided.null ? 0 : (i + 1) * handleStep;
        if (number == reinterpret_cast<std::uintptr_t>(handle) && !provided.released &&
            std::string_view(provided.module) == moduleOf(handle))
            return &provided;
    }
    return nullptr;
}

// Every operation that takes a handle calls this first.
template <typename ModuleHandle>
void checkCall(ModuleHandle handle)
{
    checkOutputSoFar();
    expect(findHandle(handle), "an operation gets a handle of its module that has not been released");
}

template <typename Value>
void writeResult(Value* result)
{
    expect(result, "no out-parameter is null");
    unsigned char bytes[sizeof(Value)];
    std::ranges::generate(bytes, nextScriptByte);
    std::memcpy(result, bytes, sizeof bytes);
}

struct TextBuffer
{
    char* bytes;
    std::uint32_t length;
};

// Writes a text without newlines. It may fill the buffer and then has no terminator.
void writeResult(TextBuffer buffer)
{
    expect(buffer.bytes, "no text buffer is null");
    const std::size_t size = nextScriptByte();
    std::memset(buffer.bytes, size == 255 ? 'U' : 0, buffer.length);
    for (std::size_t i = 0; i < std::min<std::size_t>(size, buffer.length) && !device.script.empty(); ++i)
    {
        const auto byte = static_cast<char>(nextScriptByte());
        buffer.bytes[i] = byte == '\n' ? ' ' : byte;
    }
}

struct EepromBuffer
{
    std::uint8_t* bytes;
    std::uint32_t length;
};

// Writes up to 255 bytes and fills the rest with one value, which need not be QV_EEPROM_ERASED.
void writeResult(EepromBuffer buffer)
{
    expect(buffer.bytes, "no EEPROM buffer is null");
    std::memset(buffer.bytes, nextScriptByte(), buffer.length);
    for (std::size_t size = nextScriptByte(), i = 0; i < std::min<std::size_t>(size, buffer.length); ++i)
        buffer.bytes[i] = nextScriptByte();
}

ApiError scriptedCode()
{
    ApiError code = QV_SUCCESS;
    writeResult(&code);
    return code;
}

// Returns a scripted code, with or without writing the results.
template <typename... Result>
ApiError respond(Result... results)
{
    switch (nextScriptByte() % 8)
    {
    case 3: // success without a result
        return QV_SUCCESS;
    case 4:
        return QV_NOT_SUPPORTED;
    case 5:
        return QV_BOARD_NOT_FITTED;
    case 6:
        return nextScriptByte();
    case 7: // any code, with results
        (writeResult(results), ...);
        return scriptedCode();
    default:
        (writeResult(results), ...);
        return QV_SUCCESS;
    }
}

ApiError change(bool allowed)
{
    expect(allowed, "only allowed values are sent");
    device.changed = true;
    return respond();
}

// Returns whether a number on the command line meets the condition.
template <typename Condition>
bool isAnyNumber(Condition condition)
{
    return std::ranges::any_of(device.optionValues,
                               [&](const char* value) { return condition(std::strtol(value, nullptr, 10)); });
}

// Returns whether `sent` is a number on the command line, truncated to its width. Ignores numbers that are
// not within `minimum` and `maximum`.
template <std::integral Value>
bool isGivenNumber(Value sent, long minimum = LONG_MIN, long maximum = LONG_MAX)
{
    return isAnyNumber(
        [&](long number)
        { return number >= minimum && number <= maximum && static_cast<Value>(number) == sent; });
}

bool isInRange(std::int32_t value, std::int32_t minimum, std::int32_t maximum)
{
    return value >= minimum && value <= maximum;
}

bool isIdleTime(std::uint8_t sent)
{
    return isAnyNumber(
        [&](long number)
        {
            return number % LED_IDLE_TIME_STEP_MS == 0 &&
                   static_cast<std::uint8_t>(number / LED_IDLE_TIME_STEP_MS) == sent;
        });
}

bool isState(std::int32_t value)
{
    return value == QV_DISABLED || value == QV_ENABLED;
}

bool isAction(std::int32_t value)
{
    return isInRange(value, QV_ACTION_NONE, QV_ACTION_SHUTDOWN);
}

bool isStartupTriggerSet(std::int32_t value)
{
    constexpr std::int32_t buttonOrSignal = QV_TRIGGER_FRONT_BUTTON | QV_TRIGGER_ON_OFF_SIGNAL;
    constexpr std::int32_t others = QV_TRIGGER_CAN | QV_TRIGGER_CONFIGURABLE_INPUTS;
    return (value & ~(buttonOrSignal | others)) == 0 && (value & buttonOrSignal) != 0;
}

bool isSensor(std::int32_t value)
{
    return value == QV_PM_SENSOR_CPU || value == QV_PM_SENSOR_CPU_BOARD;
}

bool isEeprom(std::int32_t value)
{
    return value == QV_EEPROM_MAIN_BOARD || value == QV_EEPROM_ADD_ON_BOARD;
}

bool isTouchSetting(std::int32_t value)
{
    return isInRange(value, QV_TOUCH_RIGHT_CLICK_TIME, QV_TOUCH_RESTORE_DEFAULTS);
}

bool isCanChannel(std::uint8_t channel)
{
    return channel >= 1 && channel <= device.canChannels;
}

bool haveSameBits(double one, double other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

bool isLedFrequency(double sent)
{
    return sent >= LED_FREQUENCY_MIN_HZ && sent <= LED_FREQUENCY_MAX_HZ &&
           std::ranges::any_of(device.optionValues, [&](const char* value)
                               { return haveSameBits(std::strtod(value, nullptr), sent); });
}

ApiError readVideoMask(std::uint8_t* mask)
{
    const ApiError code = respond(mask);
    device.videoMask = *mask;
    return code;
}

// The program changes at most one channel of the mask that it read.
ApiError changeVideoMask(std::uint8_t mask)
{
    const unsigned difference = mask ^ device.videoMask;
    return change(difference == 0 ||
                  (std::has_single_bit(difference) && difference < 1u << VIDEO_CHANNEL_COUNT));
}

ApiError startJob(const char* path, std::int32_t flag, std::string_view extension)
{
    expect(device.firmwareAllowed, "a firmware job requires root, and confirmation or --force");
    expect(*path == '/', "the path of a firmware file is absolute");
    expect(std::string_view(path).ends_with(extension), "a firmware file has the extension of its target");
    return change(flag == 0);
}

const char* scriptedText()
{
    checkOutputSoFar();
    static const std::string longText(20000, 'L');
    switch (nextScriptByte() % 8)
    {
    case 1:
        device.returnedNullText = true;
        return nullptr;
    case 2:
        return "";
    case 3:
        return longText.c_str();
    default:
        return "Text";
    }
}

} // namespace

#define MODULE(module)                                                                                       \
    module##Handle Get##module()                                                                             \
    {                                                                                                        \
        return provideHandle<module##Handle>();                                                              \
    }                                                                                                        \
    ApiError module##_release(module##Handle handle)                                                         \
    {                                                                                                        \
        checkCall(handle);                                                                                   \
        findHandle(handle)->released = true;                                                                 \
        return respond();                                                                                    \
    }
#define READS_TEXT(module, operation)                                                                        \
    ApiError module##_##operation(module##Handle handle, char* buffer, std::uint32_t length)                 \
    {                                                                                                        \
        checkCall(handle);                                                                                   \
        return respond(TextBuffer{buffer, length});                                                          \
    }
#define READS(module, operation, type)                                                                       \
    ApiError module##_##operation(module##Handle handle, type* result)                                       \
    {                                                                                                        \
        checkCall(handle);                                                                                   \
        return respond(result);                                                                              \
    }
#define READS_VERSION(module, operation)                                                                     \
    ApiError module##_##operation(module##Handle handle, std::uint8_t* major, std::uint8_t* minor,           \
                                  std::uint8_t* release, std::uint8_t* build)                                \
    {                                                                                                        \
        checkCall(handle);                                                                                   \
        return respond(major, minor, release, build);                                                        \
    }
#define SETS(module, operation, type, allowed)                                                               \
    ApiError module##_##operation(module##Handle handle, type value)                                         \
    {                                                                                                        \
        checkCall(handle);                                                                                   \
        return change(allowed);                                                                              \
    }
#define ACTS(module, operation)                                                                              \
    ApiError module##_##operation(module##Handle handle)                                                     \
    {                                                                                                        \
        checkCall(handle);                                                                                   \
        return change(true);                                                                                 \
    }
#define STARTS_JOB(module, operation, extension)                                                             \
    ApiError module##_##operation(module##Handle handle, const char* path, std::int32_t flag)                \
    {                                                                                                        \
        checkCall(handle);                                                                                   \
        return startJob(path, flag, extension);                                                              \
    }
#include "operations.def"

const char* GetErrorStringA(ApiError)
{
    return scriptedText();
}

const char* GetStartupReasonStringA(std::uint16_t)
{
    return scriptedText();
}

const char* GetHwErrorStatusStringA(std::uint16_t)
{
    return scriptedText();
}

ApiError About_getNrOfCANConnections(AboutHandle about, std::uint8_t* count)
{
    checkCall(about);
    const ApiError code = respond(count);
    device.canChannels = code == QV_SUCCESS ? *count : CAN_CHANNEL_COUNT_USUAL;
    return code;
}

ApiError Adc_getVoltage(AdcHandle adc, std::int32_t channel, double* volts)
{
    checkCall(adc);
    expect(channel >= 0 && channel < QV_ADC_CHANNEL_COUNT, "the ADC channel exists");
    return respond(volts);
}

ApiError Backlight_setAutomaticBLFilter(BacklightHandle backlight, std::int32_t first, std::int32_t second,
                                        std::int32_t third, std::int32_t fourth)
{
    checkCall(backlight);
    return change(first == 4 && second == 2 && third == 40 && fourth == 2);
}

ApiError CanSetting_getBaudrate(CanSettingHandle can, std::uint8_t channel, std::uint16_t* baudrate)
{
    checkCall(can);
    expect(isCanChannel(channel), "the unit has the CAN channel");
    return respond(baudrate);
}

ApiError CanSetting_setBaudrate(CanSettingHandle can, std::uint8_t channel, std::uint16_t baudrate)
{
    checkCall(can);
    return change(isCanChannel(channel) && isGivenNumber(baudrate));
}

ApiError Config_getVideoStartupPowerConfig(ConfigHandle config, std::uint8_t* mask)
{
    checkCall(config);
    return readVideoMask(mask);
}

ApiError Config_setVideoStartupPowerConfig(ConfigHandle config, std::uint8_t mask)
{
    checkCall(config);
    return changeVideoMask(mask);
}

ApiError Diagnostic_getMinMaxTemp(DiagnosticHandle diagnostic, std::int16_t* minimum, std::int16_t* maximum)
{
    checkCall(diagnostic);
    return respond(minimum, maximum);
}

ApiError Diagnostic_getPMTemp(DiagnosticHandle diagnostic, std::int32_t sensor, std::int16_t* temperature,
                              std::int32_t* status)
{
    checkCall(diagnostic);
    expect(isSensor(sensor), "the temperature sensor exists");
    return respond(temperature, status);
}

// The job is done at the end of the script, so it always ends.
ApiError FirmwareUpgrade_getUpgradeStatus(FirmwareUpgradeHandle upgrade, UpgradeStatus* status,
                                          std::int32_t flag)
{
    checkCall(upgrade);
    expect(flag == 1, "the program waits for a new status");
    if (device.script.empty())
    {
        *status = {QV_UPGRADE_DONE, 100, QV_SUCCESS};
        return QV_SUCCESS;
    }
    const std::uint8_t byte = nextScriptByte();
    switch (byte % 4)
    {
    case 0:
        return respond(status);
    case 1:
        return respond(&status->error);
    default:
        // A state, or the number before the first state or after the last.
        constexpr int stateCount = QV_UPGRADE_DONE_WITH_ERROR + 1;
        status->state = byte / 4 % (stateCount + 2) - 1;
        return QV_SUCCESS;
    }
}

ApiError FrontLED_getSignal(FrontLEDHandle led, double* frequency, std::uint8_t* dutyCycle)
{
    checkCall(led);
    const ApiError code = respond(frequency, dutyCycle);
    device.ledFrequency = *frequency;
    device.ledDutyCycle = *dutyCycle;
    return code;
}

// The program changes one of the two values and sends the other one unchanged.
ApiError FrontLED_setSignal(FrontLEDHandle led, double frequency, std::uint8_t dutyCycle)
{
    checkCall(led);
    const bool setsFrequency = isLedFrequency(frequency) && dutyCycle == device.ledDutyCycle;
    const bool setsDutyCycle = isGivenNumber(dutyCycle, 0, LED_DUTY_CYCLE_MAX_PERCENT) &&
                               haveSameBits(frequency, device.ledFrequency);
    return change(setsFrequency || setsDutyCycle);
}

ApiError Power_getVideoPowerStatus(PowerHandle power, std::uint8_t* mask)
{
    checkCall(power);
    return readVideoMask(mask);
}

ApiError Power_setVideoPowerStatus(PowerHandle power, std::uint8_t mask)
{
    checkCall(power);
    return changeVideoMask(mask);
}

ApiError QVAuxPrivate_getEepromData(QVAuxPrivateHandle privateAccess, std::int32_t eeprom,
                                    std::uint8_t* buffer, std::uint32_t length)
{
    checkCall(privateAccess);
    expect(isEeprom(eeprom), "the EEPROM exists");
    const ApiError code = respond(EepromBuffer{buffer, length});
    device.readRawEeprom = code == QV_SUCCESS;
    return code;
}

ApiError QVAuxPrivate_writeSsRegister(QVAuxPrivateHandle privateAccess, std::int32_t group,
                                      std::int32_t number, std::int32_t value)
{
    checkCall(privateAccess);
    const std::tuple command(group, number, value);
    return change(command == std::tuple(QV_SS_RESTORE_DEFAULTS) ||
                  command == std::tuple(QV_SS_BOOT_COMPLETED));
}

ApiError TouchScreen_getAdvancedSetting(TouchScreenHandle touch, std::int32_t setting, std::uint16_t* value)
{
    checkCall(touch);
    expect(isTouchSetting(setting), "the touch setting exists");
    return respond(value);
}

ApiError TouchScreen_setAdvancedSetting(TouchScreenHandle touch, std::int32_t setting, std::uint16_t value)
{
    checkCall(touch);
    return change(isTouchSetting(setting) && isGivenNumber(value));
}
