#include "device/limits.h"
#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/output.h"
#include "fobrob/words.h"

#include <cstdint>

namespace
{

struct
{
    bool frequencyGiven = false;
    const char* frequencyValue = noArgument();
    bool volumeGiven = false;
    const char* volumeValue = noArgument();
    bool statusGiven = false;
    const char* statusValue = noArgument();
    bool reservedFlag = false; // part of the record, unused
} buzzerArgs;

const CategoryOption buzzerOptions[] = {
    {OPT_FREQUENCY, &buzzerArgs.frequencyGiven, &buzzerArgs.frequencyValue},
    {OPT_VOLUME, &buzzerArgs.volumeGiven, &buzzerArgs.volumeValue},
    {OPT_STATUS, &buzzerArgs.statusGiven, &buzzerArgs.statusValue},
};

void printBuzzerHelp()
{
    printLine("Category - Buzzer\n"
              "Get information about the current state of the Buzzer. Set the frequency, the \n"
              "volume and/or enable/disable the Buzzer.\n"
              "\n"
              "Usage\n"
              "If no argument is passed to the category option, information from all the options \n"
              "will be printed. It is possible to combine several options to get more\n"
              "information with one call.  See the table below for available arguments and \n"
              "examples how options could be combined.\n"
              "\n"
              "Two examples how options can be combined:\n"
              "Ex1: ./Fobrob --buzzer --frequency=800 --status=Enable --volume=40\n"
              "Ex2: ./Fobrob --buzzer --frequency --status --volume=40\n"
              "\n"
              " Category\tArg\tOption\t\tArg\t\tNote\n"
              "--buzzer\t\t\t\t\t\tGet current buzzer settings.\n"
              "--buzzer\t\t--frequency\t\t\tGet buzzer frequency.\n"
              "--buzzer\t\t--volume\t\t\tGet buzzer volume.\n"
              "--buzzer\t\t--status\t\t\tGet buzzer status.\n"
              "--buzzer\t\t--frequency=\t[700-10000]\tSet buzzer frequency.\n"
              "--buzzer\t\t--volume=\t[0-",
              BUZZER_VOLUME_MAX,
              "]\t\tSet buzzer volume.\n"
              "--buzzer\t\t--status=\tEnable/Disable\tSet buzzer status.");
}

void readFrequency(BuzzerHandle buzzer)
{
    std::uint16_t frequency = 0;
    if (succeeded("getFrequency", Buzzer_getFrequency(buzzer, &frequency)))
        printLine("Buzzer Frequency: ", frequency);
}

void setFrequency(BuzzerHandle buzzer, const char* value)
{
    const auto frequency = static_cast<std::uint16_t>(parseNumber(value));
    if (frequency < BUZZER_FREQUENCY_MIN_HZ || frequency > BUZZER_FREQUENCY_MAX_HZ)
        printLine("Invalid argument: The Frequency is not within allowed range (700 Hz - 10 000 Hz)");
    else if (succeeded("setFrequency", Buzzer_setFrequency(buzzer, frequency)))
        printLine("Buzzer frequency set to: ", frequency, " Hz.");
}

void readVolume(BuzzerHandle buzzer)
{
    std::uint16_t volume = 0;
    if (succeeded("getVolume", Buzzer_getVolume(buzzer, &volume)))
        printLine("Buzzer Volume: ", volume);
}

void setVolume(BuzzerHandle buzzer, const char* value)
{
    const auto volume = static_cast<std::uint16_t>(parseNumber(value));
    if (volume > BUZZER_VOLUME_MAX)
        printLine("Invalid argument: Volume is not within allowed range (0 - ", BUZZER_VOLUME_MAX, ")");
    else if (succeeded("setVolume", Buzzer_setVolume(buzzer, volume)))
        printLine("Buzzer volume set to: ", volume);
}

void readStatus(BuzzerHandle buzzer)
{
    std::uint8_t enabled = 0;
    if (succeeded("getTrigger", Buzzer_getTrigger(buzzer, &enabled)))
        printLine("Buzzer status: ", enabled ? " Enabled." : " Disabled.");
}

void setStatus(BuzzerHandle buzzer, const char* value)
{
    const std::int32_t state = valueOf(enableDisable, value, noSuchState);
    if (state == noSuchState)
        printLine("Invalid argument");
    else if (succeeded("setTrigger", Buzzer_setTrigger(buzzer, static_cast<std::uint8_t>(state))))
        printLine("Buzzer status set to ", state ? "enable." : "disable.");
}

} // namespace

int handleBuzzer(const char*, int argc, char** argv, const char*, const option*, int longIndex)
{
    const BuzzerHandle buzzer = GetBuzzer();
    buzzerArgs = {};
    const ParsedOptions parsed = parseOptions(argc, argv, longIndex, buzzerOptions);
    if (parsed.help)
    {
        printBuzzerHelp();
        return 0;
    }

    if (parsed.onlyInvalidOptions())
        printLine("Invalid argument");
    if (buzzerArgs.frequencyGiven || parsed.showAll())
        readOrSet(buzzer, buzzerArgs.frequencyValue, readFrequency, setFrequency);
    if (buzzerArgs.volumeGiven || parsed.showAll())
        readOrSet(buzzer, buzzerArgs.volumeValue, readVolume, setVolume);
    if (buzzerArgs.statusGiven || parsed.showAll())
        readOrSet(buzzer, buzzerArgs.statusValue, readStatus, setStatus);

    return static_cast<int>(Buzzer_release(buzzer));
}
