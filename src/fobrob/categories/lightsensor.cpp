#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/output.h"

#include <cstdint>

namespace
{

struct
{
    bool illuminanceGiven = false;
} lightsensorArgs;

const CategoryOption lightsensorOptions[] = {
    {OPT_ILLUMINANCE, &lightsensorArgs.illuminanceGiven, nullptr},
};

void printLightsensorHelp()
{
    printLine(
        "Category - Lightsensor\n"
        "This category is used to perform lightsensor settings, such as: reading lightsensor illuminance. \n"
        "\n"
        "Usage\n"
        "\n"
        "\n"
        " CATEGORY\tARG\tOPTION\t\tARG\tOPTION\t\tARG\n"
        "--lightsensor\t\t--illuminance\t\n"
        "Get illuminance.");
}

void showIlluminance(LightsensorHandle sensor)
{
    std::uint16_t illuminance = 0;
    if (succeeded("getIlluminance", Lightsensor_getIlluminance(sensor, &illuminance)))
        printLine("Illuminance: ", illuminance);
}

} // namespace

int handleLightsensor(const char*, int argc, char** argv, const char*, const option*, int longIndex)
{
    const LightsensorHandle sensor = GetLightsensor();
    lightsensorArgs = {};
    const ParsedOptions parsed = parseOptions(argc, argv, longIndex, lightsensorOptions);
    if (parsed.help)
    {
        printLightsensorHelp();
        return 0;
    }

    // Intentional: an invalid option has no effect if --illuminance is also given.
    if (parsed.onlyInvalidOptions())
        printLine("Invalid argument");
    else
        showIlluminance(sensor);

    return static_cast<int>(Lightsensor_release(sensor));
}
