// The dispatcher: the first option selects the category or the general option of a run.

#include "fobrob/category.h"
#include "fobrob/general.h"
#include "fobrob/handlers.h"
#include "fobrob/option_table.h"
#include "fobrob/output.h"

namespace
{

struct Category
{
    OptionCode code;
    CategoryHandler* handle;
};

const Category categories[] = {
    {OPT_VERSION, handleVersion},
    {OPT_TEMPERATURE, handleTemperature},
    {OPT_POWER, handlePower},
    {OPT_HEATER, handleHeater},
    {OPT_ABOUT, handleAbout},
    {OPT_LED, handleLed},
    {OPT_CAN, handleCan},
    {OPT_DIGITALIO, handleDigitalIo},
    {OPT_ONOFF, handleOnOff},
    {OPT_ADVANCED, handleAdvanced},
    {OPT_BUZZER, handleBuzzer},
    {OPT_TELEMATICS, handleTelematics},
    {OPT_TOUCH, handleTouch},
    {OPT_BACKLIGHT, handleBacklight},
    {OPT_LIGHTSENSOR, handleLightsensor},
};

const Category* findCategory(int code)
{
    for (const Category& category : categories)
        if (category.code == code)
            return &category;
    return nullptr;
}

} // namespace

// Intentional: the exit status is always 0. Scripts depend on it and detect errors from the output.
int main(int argc, char** argv)
{
    setProgramName("fobrob");
    prepareOutput();

    int longIndex = 0;
    const int code = nextOption(argc, argv, longIndex);

    if (const Category* category = findCategory(code))
    {
        category->handle(givenValue(), argc, argv, shortOptions, longOptions, longIndex);
        return 0;
    }

    switch (code)
    {
    case OPT_LIST:
        printList();
        break;
    case OPT_HELP:
    case OPT_SHORT_HELP:
        printUsage();
        break;
    case OPT_SHORT_VERSION:
        printVersion(); // does not return
    default:
        printLine("To get help how to use Fobrob, add --help or -h as options.");
    }
    return 0;
}
