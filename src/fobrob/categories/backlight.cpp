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
    bool intensityGiven = false;
    const char* intensityValue = noArgument();
    bool automaticGiven = false;
    const char* automaticValue = noArgument();
    bool ledDimmingGiven = false;
    const char* ledDimmingValue = noArgument();
} backlightArgs;

const CategoryOption backlightOptions[] = {
    {OPT_INTENSITY, &backlightArgs.intensityGiven, &backlightArgs.intensityValue},
    {OPT_AUTOMATIC, &backlightArgs.automaticGiven, &backlightArgs.automaticValue},
    {OPT_LED_DIMMING, &backlightArgs.ledDimmingGiven, &backlightArgs.ledDimmingValue},
};

void printBacklightHelp()
{
    printLine("Category - Backlight\n"
              "This category is used to perform backlight settings, such as: setting backlight intensity \n"
              "automatic backlight.\n"
              "\n"
              "Usage\n"
              "The category should not be passed an argument. There are two options available:\n"
              "--intensity, --automatic.\n"
              "See the table below for available arguments.\n"
              "\n"
              "\n"
              " CATEGORY\tARG\tOPTION\t\tARG\tOPTION\t\tARG\n"
              "--backlight\t\t--intensity=\t[1-255]\n"
              "Set backligh intensity.\n"
              "--backlight\t\t--automatic=\tEnabled/Disabled\n"
              "Set automatic backlight status.\n"
              "--backlight\t\t--led_dimming=\tEnabled/Disabled\n"
              "Set led dimming status.");
}

void rejectIntensity()
{
    printLine("Invalid argument: The intensity is not within allowed range (1 - 255).");
}

void readIntensity(BacklightHandle backlight)
{
    std::uint8_t intensity = 0;
    if (succeeded("getIntensity", Backlight_getIntensity(backlight, &intensity)))
        printLine("Intensity: ", intensity);
}

// Intentional: there is no upper limit. The number is truncated to 8 bits for the device, but the message
// shows all of it. The output is fixed.
void setIntensity(BacklightHandle backlight, const char* value)
{
    const long intensity = parseNumber(value);
    if (intensity < BACKLIGHT_INTENSITY_MIN)
        rejectIntensity();
    else if (succeeded("setIntensity",
                       Backlight_setIntensity(backlight, static_cast<std::uint8_t>(intensity))))
        printLine("Backlight intensity set to: ", intensity);
}

void readAutomatic(BacklightHandle backlight)
{
    std::uint8_t running = 0;
    if (succeeded("getAutomaticBLStatus", Backlight_getAutomaticBLStatus(backlight, &running)))
        printLine("Automatic BL: ", running ? "Enabled" : "Disabled");
}

void startAutomatic(BacklightHandle backlight)
{
    // The meaning of these numbers is unknown. Intentional: automatic control is started even if the device
    // rejects them.
    reportFailure("setAutomaticBLFilter", Backlight_setAutomaticBLFilter(backlight, 4, 2, 40, 2));
    if (succeeded("startAutomaticBL", Backlight_startAutomaticBL(backlight)))
        printLine("Automatic BL started.");
}

void stopAutomatic(BacklightHandle backlight)
{
    if (succeeded("stoptAutomaticBL", Backlight_stopAutomaticBL(backlight)))
        printLine("Automatic BL stopped.");
}

void setAutomatic(BacklightHandle backlight, const char* value)
{
    const std::int32_t state = valueOf(enabledDisabled, value, noSuchState);
    if (state == noSuchState)
        rejectIntensity(); // Intentional: the message names the intensity. The output is fixed.
    else if (state)
        startAutomatic(backlight);
    else
        stopAutomatic(backlight);
}

void readLedDimming(BacklightHandle backlight)
{
    std::int32_t enabled = 0;
    if (succeeded("getLedDimming", Backlight_getLedDimming(backlight, &enabled)))
        printLine("LedDimming: ", enabled ? "Enabled" : "Disabled");
}

void setLedDimming(BacklightHandle backlight, const char* value)
{
    const std::int32_t state = valueOf(enabledDisabled, value, noSuchState);
    if (state == noSuchState)
        printLine("setLedDimming: Invalid argument");
    else if (succeeded("setLedDimming", Backlight_setLedDimming(backlight, state)))
        printLine("LedDimming enabled."); // Intentional: printed after disabling, too. The output is fixed.
}

} // namespace

int handleBacklight(const char*, int argc, char** argv, const char*, const option*, int longIndex)
{
    const BacklightHandle backlight = GetBacklight();
    backlightArgs = {};
    const ParsedOptions parsed = parseOptions(argc, argv, longIndex, backlightOptions);
    if (parsed.help)
    {
        printBacklightHelp();
        return 0;
    }

    if (parsed.onlyInvalidOptions())
        printLine("Invalid argument");
    if (backlightArgs.intensityGiven || parsed.showAll())
        readOrSet(backlight, backlightArgs.intensityValue, readIntensity, setIntensity);
    if (backlightArgs.automaticGiven || parsed.showAll())
        readOrSet(backlight, backlightArgs.automaticValue, readAutomatic, setAutomatic);
    if (backlightArgs.ledDimmingGiven || parsed.showAll())
        readOrSet(backlight, backlightArgs.ledDimmingValue, readLedDimming, setLedDimming);

    return static_cast<int>(Backlight_release(backlight));
}
