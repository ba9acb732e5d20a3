#include "device/limits.h"
#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/output.h"

#include <cstdint>

namespace
{

struct DigitalInput
{
    const char* argument;
    int number;
};

const DigitalInput inputs[DIGITAL_INPUT_COUNT] = {{"DI1", 1}, {"DI2", 2}, {"DI3", 3}, {"DI4", 4}};

void printDigitalIoHelp()
{
    printLine("Category - Digital IO\n"
              "This category is used to get current values from the digital IO. The values are \n"
              "updated every 250 ms. \n"
              "\n"
              "Usage\n"
              "It is not possible to combine several arguments to get more information with one \n"
              "call. If no argument is passed to category, current status from all four channels \n"
              "will be printed. See the table below for available arguments.\n"
              "\n"
              "CATEGORY\tARG\t\tNOTE\n"
              "--digitalio\t\t\tGet current values from all digital inputs\n"
              "--digitalio=\tDI1\t\tGet current value for digital input 1.\n"
              "--digitalio=\tDI2\t\tGet current value for digital input 2.\n"
              "--digitalio=\tDI3\t\tGet current value for digital input 3.\n"
              "--digitalio=\tDI4\t\tGet current value for digital input 4.");
}

// Reads the inputs again for each line, so that every line shows the current state.
void showInput(DigIOHandle digIO, const DigitalInput& input)
{
    std::uint8_t states = 0;
    if (succeeded("getDigIO", DigIO_getDigIO(digIO, &states)))
        printLine("Digital input ", input.number, ": ", states >> (input.number - 1) & 1);
}

} // namespace

int handleDigitalIo(const char* argument, int argc, char** argv, const char*, const option*, int longIndex)
{
    const DigIOHandle digIO = GetDigIO();
    const ParsedOptions parsed = parseOptions(argc, argv, longIndex, {}, RepeatWithoutValue::clearsValue,
                                              "Error: Digital IO should not take any more options");
    if (parsed.help)
    {
        printDigitalIoHelp();
        return 0;
    }

    if (!showSelected(digIO, argument, inputs, showInput))
        printLine("Invalid argument");
    return static_cast<int>(DigIO_release(digIO));
}
