#include "device/limits.h"
#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/output.h"
#include "fobrob/words.h"

#include <cstdint>
#include <cstdlib>

namespace
{

struct
{
    bool frequencyGiven = false;
    const char* frequencyValue = noArgument();
    bool dutycycleGiven = false;
    const char* dutycycleValue = noArgument();
    bool colorGiven = false;
    const char* colorValue = noArgument();
    bool pulsesGiven = false;
    const char* pulsesValue = noArgument();
    bool idletimeGiven = false;
    const char* idletimeValue = noArgument();
    bool startupGiven = false;
    const char* startupValue = noArgument();
    bool reservedFlag = false; // part of the record, unused
} ledArgs;

const CategoryOption ledOptions[] = {
    {OPT_FREQUENCY, &ledArgs.frequencyGiven, &ledArgs.frequencyValue},
    {OPT_DUTYCYCLE, &ledArgs.dutycycleGiven, &ledArgs.dutycycleValue},
    {OPT_COLOR, &ledArgs.colorGiven, &ledArgs.colorValue},
    {OPT_PULSES, &ledArgs.pulsesGiven, &ledArgs.pulsesValue},
    {OPT_IDLETIME, &ledArgs.idletimeGiven, &ledArgs.idletimeValue},
    {OPT_STARTUP, &ledArgs.startupGiven, &ledArgs.startupValue},
};

void printLedHelp()
{
    printLine("Category - LED\n"
              "Use this category to adjust the settings of the front LED, such as: frequency, \n"
              "duty cycle etc.\n"
              "\n"
              "Usage\n"
              "The category should not be passed an argument. If no option is used, all available\n"
              "information about the front LED will be printed. It is possible to combine \n"
              "several options to get more information with one call. See the table below for \n"
              "available arguments and examples.\n"
              "\n"
              "Two examples how options can be combined:\n"
              "Ex1: ./Fobrob --led --frequency=15 --dutycycle=50 --color=Blue\n"
              "Ex2: ./Fobrob --led --frequency --pulses=5 --color=Red --startup=Enable\n"
              "\n"
              "Category\tArg\tOption\t\tArg\t\tNote\n"
              "--led\t\t\t\t\t\t\tShow information about the front LED.\n"
              "--led\t\t\t--frequency\t\t\tGet LED frequency.\n"
              "--led\t\t\t--dutycycle\t\t\tGet LED duty cycle.\n"
              "--led\t\t\t--color\t\t\t\tGet LED color.\n"
              "--led\t\t\t--pulses\t\t\tGet LED pulses.\n"
              "--led\t\t\t--idletime\t\t\tGet LED idle time.\n"
              "--led\t\t\t--startup\t\t\tGet LED star-tup status.\n"
              "\n"
              "--led\t\t\t--frequency=\t[Frequency]\tSet LED frequency.\n"
              "--led\t\t\t--dutycycle=\t[Duty cycle]\tSet LED duty cycle in percent.\n"
              "--led\t\t\t--color=\tRed/Green/Blue/\tSet LED color.\n"
              "     \t\t\t        \tYellow/Magenta/\n"
              "     \t\t\t        \tCyan\n"
              "--led\t\t\t--pulses=\t[Pulses]\tSet LED pulses.\n"
              "--led\t\t\t--idletime=\t[Idle time]\tSet LED idle time in ms.\n"
              "--led\t\t\t--startup=\tEnable/Disable\tSet LED start-up status.");
}

using LedColor = std::int32_t;

const NamedValue colors[] = {
    {QV_COLOR_RED, "RED"},   {QV_COLOR_GREEN, "GREEN"},     {QV_COLOR_BLUE, "BLUE"},
    {QV_COLOR_CYAN, "CYAN"}, {QV_COLOR_MAGENTA, "MAGENTA"}, {QV_COLOR_YELLOW, "YELLOW"},
};

constexpr LedColor noSuchColor = 6;

const char* colorToString(LedColor color)
{
    return nameOf(colors, color, "UNDEFINED COLOR");
}

LedColor stringToColor(const char* text)
{
    return valueOf(colors, text, noSuchColor);
}

// Frequency and duty cycle are one setting of the device. To change one of them, the other is read and
// written back.
struct Signal
{
    double frequency = 0;       // Hz
    std::uint8_t dutyCycle = 0; // percent
};

bool readSignal(FrontLEDHandle led, Signal& signal)
{
    return succeeded("getSignal", FrontLED_getSignal(led, &signal.frequency, &signal.dutyCycle));
}

bool writeSignal(FrontLEDHandle led, const Signal& signal)
{
    return succeeded("setSignal", FrontLED_setSignal(led, signal.frequency, signal.dutyCycle));
}

void readFrequency(FrontLEDHandle led)
{
    Signal signal;
    if (readSignal(led, signal))
        printLine("LED Frequency: ", signal.frequency);
}

void setFrequency(FrontLEDHandle led, const char* value)
{
    const double frequency = std::strtod(value, nullptr);
    if (!(frequency >= LED_FREQUENCY_MIN_HZ && frequency <= LED_FREQUENCY_MAX_HZ))
    {
        printLine("Invalid argument: The Frequency is not within allowed range (0.2 Hz - 50 Hz)");
        return;
    }
    Signal signal;
    if (!readSignal(led, signal))
        return;
    signal.frequency = frequency;
    if (writeSignal(led, signal))
        printLine("LED frequency set to: ", frequency, " Hz.");
}

void readDutyCycle(FrontLEDHandle led)
{
    Signal signal;
    if (readSignal(led, signal))
        printLine("LED Duty Cycle: ", signal.dutyCycle, " %.");
}

void setDutyCycle(FrontLEDHandle led, const char* value)
{
    const auto dutyCycle = static_cast<unsigned long>(parseNumber(value));
    if (dutyCycle > LED_DUTY_CYCLE_MAX_PERCENT)
    {
        printLine("Invalid argument: The duty cycle is not within allowed range (0% - 100%)");
        return;
    }
    Signal signal;
    if (!readSignal(led, signal))
        return;
    signal.dutyCycle = static_cast<std::uint8_t>(dutyCycle);
    if (writeSignal(led, signal))
        printLine("LED duty cycle set to: ", dutyCycle, " %.");
}

void readColor(FrontLEDHandle led)
{
    LedColor color = 0;
    if (succeeded("getColor", FrontLED_getStandardColor(led, &color)))
        printLine("LED color: ", colorToString(color));
}

void setColor(FrontLEDHandle led, const char* value)
{
    const LedColor color = stringToColor(value);
    if (color == noSuchColor)
        printLine("Invalid argument: The color argument is not valid.");
    else if (succeeded("setColor", FrontLED_setStandardColor(led, color)))
        printLine("LED color set to: ", colorToString(color));
}

void readPulses(FrontLEDHandle led)
{
    std::uint8_t pulses = 0;
    if (succeeded("getNrOfPulses", FrontLED_getNrOfPulses(led, &pulses)))
        printLine("LED pulses: ", pulses);
}

// Intentional: the count is checked only after it has been sent. A negative count is set, but reported as
// invalid.
void setPulses(FrontLEDHandle led, const char* value)
{
    const long number = parseNumber(value);
    const auto pulses = static_cast<std::uint8_t>(number);
    const ApiError result = FrontLED_setNrOfPulses(led, pulses);
    if (number < 0)
        printLine("Invalid argument: Argument must be >0.");
    else if (succeeded("setNrOfPulses", result))
        printLine("LED pulses set to: ", pulses);
}

void readIdleTime(FrontLEDHandle led)
{
    std::uint8_t idleTime = 0;
    if (succeeded("getIdleTime", FrontLED_getIdleTime(led, &idleTime)))
        printLine("LED idle time: ", idleTime * LED_IDLE_TIME_STEP_MS);
}

void setIdleTime(FrontLEDHandle led, const char* value)
{
    const long milliseconds = parseNumber(value);
    if (milliseconds % LED_IDLE_TIME_STEP_MS != 0)
    {
        printLine("Invalid argument: The idle time must be entered as increments of 100 ms (0,100,200,...).");
        return;
    }
    const auto idleTime = static_cast<std::uint8_t>(milliseconds / LED_IDLE_TIME_STEP_MS);
    if (succeeded("setIdleTime", FrontLED_setIdleTime(led, idleTime)))
        printLine("LED idle time set to: ", milliseconds);
}

// Intentional: a status line is printed even after a failed read. The output is fixed.
void readStartup(FrontLEDHandle led)
{
    std::int32_t enabled = 0;
    reportFailure("getEnabledDuringStartup", FrontLED_getEnabledDuringStartup(led, &enabled));
    if (enabled == QV_DISABLED || enabled == QV_ENABLED)
        printLine("LED startup: ", enabled ? "Enabled." : "Disabled.");
    else
        printLine("Invalid status returned from getEnabledDuringStartup.");
}

void setStartup(FrontLEDHandle led, const char* value)
{
    const std::int32_t state = valueOf(enableDisable, value, noSuchState);
    if (state == noSuchState)
        printLine("Invalid argument: Start-up argument must be Enable or Disable.");
    else if (succeeded("setEnabledDuringStartup", FrontLED_setEnabledDuringStartup(led, state)))
        printLine("LED startup set to ", state ? "Enable." : "Disable.");
}

} // namespace

int handleLed(const char*, int argc, char** argv, const char*, const option*, int longIndex)
{
    const FrontLEDHandle led = GetFrontLED();
    ledArgs = {};
    const ParsedOptions parsed = parseOptions(argc, argv, longIndex, ledOptions);
    if (parsed.help)
    {
        printLedHelp();
        return 0;
    }

    if (parsed.onlyInvalidOptions())
        printLine("Invalid argument");
    if (ledArgs.frequencyGiven || parsed.showAll())
        readOrSet(led, ledArgs.frequencyValue, readFrequency, setFrequency);
    if (ledArgs.dutycycleGiven || parsed.showAll())
        readOrSet(led, ledArgs.dutycycleValue, readDutyCycle, setDutyCycle);
    if (ledArgs.colorGiven || parsed.showAll())
        readOrSet(led, ledArgs.colorValue, readColor, setColor);
    if (ledArgs.pulsesGiven || parsed.showAll())
        readOrSet(led, ledArgs.pulsesValue, readPulses, setPulses);
    if (ledArgs.idletimeGiven || parsed.showAll())
        readOrSet(led, ledArgs.idletimeValue, readIdleTime, setIdleTime);
    if (ledArgs.startupGiven || parsed.showAll())
        readOrSet(led, ledArgs.startupValue, readStartup, setStartup);

    return static_cast<int>(FrontLED_release(led));
}
