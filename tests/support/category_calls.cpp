#include "support/category_calls.h"

#include <stdexcept>

namespace
{

struct CategoryCalls
{
    const char* category;
    Calls first;
    Calls last;
};

const CategoryCalls categories[] = {
    {"--about",
     {"GetAdc() = handle", "GetAbout() = handle", "GetDiagnostic() = handle", "GetQVAuxPrivate() = handle"},
     {"QVAuxPrivate_release() = 0", "Adc_release() = 0", "Diagnostic_release() = 0", "About_release() = 0"}},
    {"--advanced",
     {"GetFirmwareUpgrade() = handle", "GetAbout() = handle"},
     {"About_release() = 0", "FirmwareUpgrade_release() = 0"}},
    {"--backlight", {"GetBacklight() = handle"}, {"Backlight_release() = 0"}},
    {"--buzzer", {"GetBuzzer() = handle"}, {"Buzzer_release() = 0"}},
    {"--can",
     {"GetCanSetting() = handle", "GetAbout() = handle", "About_getNrOfCANConnections([4]) = 0",
      "About_release() = 0"},
     {"CanSetting_release() = 0"}},
    {"--digitalio", {"GetDigIO() = handle"}, {"DigIO_release() = 0"}},
    {"--heater", {"GetConfig() = handle"}, {"Config_release() = 0"}},
    {"--led", {"GetFrontLED() = handle"}, {"FrontLED_release() = 0"}},
    {"--lightsensor", {"GetLightsensor() = handle"}, {"Lightsensor_release() = 0"}},
    {"--onoff", {"GetConfig() = handle"}, {"Config_release() = 0"}},
    {"--power",
     {"GetPower() = handle", "GetConfig() = handle"},
     {"Power_release() = 0", "Config_release() = 0"}},
    {"--telematics", {"GetTelematics() = handle"}, {"Telematics_release() = 0"}},
    {"--temperature", {"GetDiagnostic() = handle"}, {"Diagnostic_release() = 0"}},
    {"--touch", {"GetTouchScreen() = handle"}, {"TouchScreen_release() = 0"}},
    {"--version", {"GetAuxVersion() = handle"}, {"AuxVersion_release() = 0"}},
};

const CategoryCalls& find(const std::string& commandLine)
{
    const std::string category = commandLine.substr(0, commandLine.find_first_of(" ="));
    for (const CategoryCalls& calls : categories)
        if (calls.category == category)
            return calls;
    throw std::invalid_argument("not a category: " + commandLine);
}

} // namespace

Calls callsOf(const std::string& commandLine, const Calls& work)
{
    const CategoryCalls& category = find(commandLine);
    Calls calls = category.first;
    calls.insert(calls.end(), work.begin(), work.end());
    calls.insert(calls.end(), category.last.begin(), category.last.end());
    return calls;
}

// --about obtains its handles after it has parsed its options.
Calls callsBeforeOptions(const std::string& commandLine)
{
    const CategoryCalls& category = find(commandLine);
    return category.category == std::string("--about") ? Calls{} : category.first;
}
