#include "device/limits.h"
#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/output.h"

#include <cstdint>

namespace
{

struct
{
    bool temperatureGiven = false;
    const char* temperatureValue = nullptr;
} heaterArgs;

const CategoryOption heaterOptions[] = {
    {OPT_TEMPERATURE, &heaterArgs.temperatureGiven, &heaterArgs.temperatureValue},
};

const char* const optionRequired = "Invalid argument: Option is required (--temperature)";

void printHeaterHelp()
{
    printLine("Category - Heater\n"
              "Enable internal heater and delay start-up when internal temperature is below the \n"
              "specified temperature.\n"
              "\n"
              "Usage\n"
              "The category should not be passed an argument. It is optional to pass the\n"
              "--temperature option an argument. If no argument is passed to the option, the \n"
              "current heater temperature will be printed. In order to set the heater \n"
              "temperature simply pass the desired temperature as an argument to the \n"
              "--temperature option (-25 to 5 C).\n"
              "\n"
              "CATEGORY\tARG\tOPTION\t\tARG\t\tNOTE\n"
              "--heater\t\t--temperature\t\t\tGet heater temperature.\n"
              "--heater\t\t--temperature=\t[-25 to 5]\tSet heater temperature.");
}

void readLimit(ConfigHandle config)
{
    std::int16_t limit = 0;
    if (succeeded("getHeatingTempLimit", Config_getHeatingTempLimit(config, &limit)))
        printLine("Heating limit: ", limit, " C.");
}

// Intentional: the number is truncated to 16 bits before it is checked.
void setLimit(ConfigHandle config, const char* value)
{
    const auto limit = static_cast<std::int16_t>(parseNumber(value));
    if (limit < HEATER_LIMIT_MIN_CELSIUS || limit > HEATER_LIMIT_MAX_CELSIUS)
        printLine("Invalid argument: The temperature is not within allowed range (-25 C - 5 C)");
    else if (succeeded("setHeatingTempLimit", Config_setHeatingTempLimit(config, limit)))
        printLine("Heater temperature set to: ", limit, " C.");
}

} // namespace

int handleHeater(const char*, int argc, char** argv, const char*, const option*, int longIndex)
{
    const ConfigHandle config = GetConfig();
    heaterArgs = {};
    const ParsedOptions parsed =
        parseOptions(argc, argv, longIndex, heaterOptions, RepeatWithoutValue::clearsValue, optionRequired);
    if (parsed.help)
    {
        printHeaterHelp();
        return 0;
    }

    if (heaterArgs.temperatureGiven)
        readOrSet(config, heaterArgs.temperatureValue, readLimit, setLimit);
    else
        printLine(optionRequired);

    return static_cast<int>(Config_release(config));
}
