#include "device/limits.h"
#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/output.h"

#include <charconv>
#include <cstdint>

namespace
{

struct
{
    bool baudrateGiven = false;
    const char* baudrateValue = nullptr;
    std::int32_t reservedField = 0; // part of the record, unused
} canArgs;

const CategoryOption canOptions[] = {
    {OPT_BAUDRATE, &canArgs.baudrateGiven, &canArgs.baudrateValue},
};

std::uint8_t canChannelCount = 0;

// Intentional: the help numbers the channels from 1, but the handler numbers them from 0. Scripts depend on
// the names that the handler accepts.
void printCanHelp()
{
    printLine("Category - CAN\n"
              "Get or set the CAN channels baud rate.\n"
              "\n"
              "Usage\n"
              "If no argument is passed to the category option, baud rate for all the channels\n"
              "will be printed. It is not possible to combine several options to get more \n"
              "information with one call.  See the table below for available arguments and \n"
              "examples.\n"
              "\n"
              "Two examples how CAN can be used:\n"
              "Ex1: ./Fobrob --can=CAN1 --baudrate=800\n"
              "Ex2: ./Fobrob --can=CAN2\n"
              "\n"
              "CATEGORY\tARG\tOPTION\t\tARG\t\tNOTE\n"
              "--can\t\t\t\t\t\t\tGet baud rate for all CAN channels.");
    for (int n = 1; n <= canChannelCount; ++n)
        printLine("--can=\t\tCAN", n, "\t\t\t\t\tGet baud rate for CAN channel ", n, ".");
    printLine("\t\t\t\t");
    for (int n = 1; n <= canChannelCount; ++n)
        printLine("--can=\t\tCAN", n, "\t--baudrate=\t[Baud rate]\tSet baud rate for CAN channel ", n, ".");
}

void countChannels()
{
    const AboutHandle about = GetAbout();
    if (About_getNrOfCANConnections(about, &canChannelCount) != QV_SUCCESS)
        canChannelCount = CAN_CHANNEL_COUNT_USUAL;
    About_release(about);
}

bool isChannel(const char* argument, std::uint8_t index)
{
    char name[10] = "CAN";
    std::to_chars(name + 3, name + sizeof name - 1, index);
    return equalsIgnoringCase(argument, name);
}

// The device numbers the channels from 1.
std::uint8_t deviceChannel(std::uint8_t index)
{
    return static_cast<std::uint8_t>(index + 1);
}

void readBaudrates(CanSettingHandle can, const char* argument)
{
    const bool all = isReadRequest(argument);
    for (std::uint8_t index = 0; index < canChannelCount; ++index)
    {
        if (!all && !isChannel(argument, index))
            continue;
        std::uint16_t baudrate = 0;
        if (succeeded("getBaudrate", CanSetting_getBaudrate(can, deviceChannel(index), &baudrate)))
            printLine("CAN device ", index, " baud rate: ", baudrate);
    }
}

void setBaudrate(CanSettingHandle can, std::uint8_t index)
{
    if (isReadRequest(canArgs.baudrateValue))
    {
        printLine("Invalid argument: No baud rate value passed to the option.");
        return;
    }
    const auto baudrate = static_cast<std::uint16_t>(parseNumber(canArgs.baudrateValue));
    if (succeeded("setBaudrate", CanSetting_setBaudrate(can, deviceChannel(index), baudrate)))
        printLine("CAN device ", index, " baud rate set to: ", baudrate);
}

// Intentional: a channel that the unit does not have is silently ignored.
void setNamedBaudrate(CanSettingHandle can, const char* argument)
{
    for (std::uint8_t index = 0; index < canChannelCount; ++index)
        if (isChannel(argument, index))
        {
            setBaudrate(can, index);
            return;
        }
}

} // namespace

int handleCan(const char* argument, int argc, char** argv, const char*, const option*, int longIndex)
{
    const CanSettingHandle can = GetCanSetting();
    countChannels();
    canArgs = {};
    const ParsedOptions parsed =
        parseOptions(argc, argv, longIndex, canOptions, RepeatWithoutValue::clearsValue,
                     "Invalid option: Only --baudrate and --help are valid options.");
    if (parsed.help)
    {
        printCanHelp();
        return 0;
    }

    if (canChannelCount == 0)
        printLine("Invalid argument: No valid arguments could be found.");
    else if (canArgs.baudrateGiven)
        setNamedBaudrate(can, argument);
    else
        readBaudrates(can, argument);

    return static_cast<int>(CanSetting_release(can));
}
