#include "support/unit.h"

namespace
{

// Returns the help on a unit with `channels` channels. It numbers them from 1 and repeats the rows of CAN1
// for each.
std::string help(int channels)
{
    std::string text;
    for (const std::string& line : splitLines(helpScreen("can")))
        if (!line.starts_with("--can=\t"))
            text += line + "\n";
        else if (line.find("CAN1") != line.npos)
            for (int n = 1; n <= channels; ++n)
                text += replaced(line, "1", std::to_string(n)) + "\n";
    return text;
}

const std::string optionError = "Invalid option: Only --baudrate and --help are valid options.\n";
const std::string noBaudrate = "Invalid argument: No baud rate value passed to the option.\n";
const std::string noChannels = "Invalid argument: No valid arguments could be found.\n";

// Returns the calls before the options are parsed. They obtain the number of channels: "[4]".
Calls counting(const std::string& count, unsigned code = 0)
{
    return {"GetCanSetting() = handle", "GetAbout() = handle",
            "About_getNrOfCANConnections(" + count + ") = " + std::to_string(code), "About_release() = 0"};
}

// Returns all calls of a run on a unit with `channels` channels. `calls` follow the count.
Calls canCalls(int channels, const Calls& calls = {})
{
    Calls all = counting("[" + std::to_string(channels) + "]");
    all.insert(all.end(), calls.begin(), calls.end());
    all.push_back("CanSetting_release() = 0");
    return all;
}

Unit unitWithTwoChannels()
{
    return Unit(R"({"about": {"canConnections": 2}, "can": {"baudrates": [125, 1000]}})");
}

TEST(Can, ReadsAllChannelsIfNoneIsNamed)
{
    Unit unit = unitWithTwoChannels();
    const std::string all = lines({"CAN device 0 baud rate: 125", "CAN device 1 baud rate: 1000"});
    for (const std::string value : {"", "=", "=noArgument", "=noargument", "=NOARGUMENT", " CAN1"})
    {
        SCOPED_TRACE(value);
        EXPECT_EQ(unit.run("--can" + value).output, all);
    }
}

TEST(Can, IgnoresAnUnknownChannelSilently)
{
    Unit unit = unitWithTwoChannels();
    for (const std::string name :
         {"CAN2", "CAN3", "CAN", "CAN-1", "CAN00", "CAN01", "CAN1x", "CAN256", "1", "xCAN1"})
        for (const std::string option : {"", " --baudrate", " --baudrate=250"})
        {
            SCOPED_TRACE(name + option);
            const Result result = unit.run("--can=" + name + option);
            EXPECT_EQ(result.output, "");
            EXPECT_EQ(result.calls, canCalls(2));
        }
}

TEST(Can, IgnoresTheLastChannelInItsHelp)
{
    Unit unit;
    EXPECT_NE(unit.run("--can --help").output.find("CAN4"), std::string::npos);
    EXPECT_EQ(unit.run("--can=CAN4").output, "");
}

TEST(Can, PrintsBaudratesAsUnsigned16BitNumbers)
{
    Unit unit(R"({"about": {"canConnections": 2}, "can": {"baudrates": [65535, 0]}})");
    EXPECT_EQ(unit.run("--can").output,
              lines({"CAN device 0 baud rate: 65535", "CAN device 1 baud rate: 0"}));
}

TEST(Can, SetsTheBaudrateOfANamedChannel)
{
    Unit unit = unitWithTwoChannels();
    const Result result = unit.run("--can=CAN1 --baudrate=800");
    EXPECT_EQ(result.output, "CAN device 1 baud rate set to: 800\n");
    EXPECT_EQ(result.calls, canCalls(2, {"CanSetting_setBaudrate(2, 800) = 0"}));
    EXPECT_EQ(unit["/can/baudrates"], (nlohmann::json{125, 800}));
}

TEST(Can, SendsTheLow16BitsOfABaudrate)
{
    const struct
    {
        const char* value;
        int sent;
    } cases[] = {{"1", 1},         {"65534", 65534}, {"65535", 65535},
                 {"65537", 1},     {"70000", 4464},  {"2147483647", 65535},
                 {"-1", 65535},    {"-65000", 536},  {"99999999999999999999", 65535},
                 {"250kbit", 250}, {"12.9", 12},     {"0800", 800}};
    for (const auto& [value, sent] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit = unitWithTwoChannels();
        const std::string number = std::to_string(sent);
        const Result result = unit.run(std::string("--can=CAN0 --baudrate=") + value);
        EXPECT_EQ(result.output, "CAN device 0 baud rate set to: " + number + "\n");
        EXPECT_EQ(result.calls, canCalls(2, {"CanSetting_setBaudrate(1, " + number + ") = 0"}));
        EXPECT_EQ(unit["/can/baudrates/0"], sent);
    }
}

TEST(Can, SendsTextAndMultiplesOf65536AsZero)
{
    Unit unit = unitWithTwoChannels();
    for (const std::string value : {"abc", "0", "65536", "-65536", "0x1F4", "-99999999999999999999"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--can=CAN0 --baudrate=" + value);
        EXPECT_EQ(result.output, "setBaudrate: The value is out of range\n");
        EXPECT_EQ(result.calls, canCalls(2, {"CanSetting_setBaudrate(1, 0) = 5",
                                             "GetErrorStringA(5) = \"The value is out of range\""}));
        EXPECT_EQ(unit["/can/baudrates"], (nlohmann::json{125, 1000}));
    }
}

TEST(Can, PrintsABaudrateOfZeroThatTheUnitAccepts)
{
    Unit unit;
    unit.ignores("CanSetting_setBaudrate");
    EXPECT_EQ(unit.run("--can=CAN0 --baudrate=abc").output, "CAN device 0 baud rate set to: 0\n");
}

TEST(Can, RequiresAValueForTheBaudrate)
{
    Unit unit = unitWithTwoChannels();
    for (const std::string value : {"", "=", "=noArgument", "=noargument", "=NOARGUMENT", " 250"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--can=CAN1 --baudrate" + value);
        EXPECT_EQ(result.output, noBaudrate);
        EXPECT_EQ(result.calls, canCalls(2));
    }
}

TEST(Can, ChangesNothingWithoutAChannel)
{
    Unit unit = unitWithTwoChannels();
    for (const std::string arguments : {"--can --baudrate=250", "--can= --baudrate=250", "--can --baudrate",
                                        "--can=noargument --baudrate=250"})
    {
        SCOPED_TRACE(arguments);
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.calls, canCalls(2));
    }
}

TEST(Can, UsesTheLastOfRepeatedBaudrates)
{
    Unit unit = unitWithTwoChannels();
    EXPECT_EQ(unit.run("--can=CAN1 --baudrate=250 --baudrate=500").output,
              "CAN device 1 baud rate set to: 500\n");
    EXPECT_EQ(unit.run("--can=CAN1 --baudrate=250 --baudrate").output, noBaudrate);
    EXPECT_EQ(unit.run("--can=CAN1 --baudrate --baudrate=800").output,
              "CAN device 1 baud rate set to: 800\n");
}

TEST(Can, RejectsEverythingOnAUnitWithoutChannels)
{
    Unit unit(R"({"about": {"canConnections": 0}})");
    for (const std::string arguments :
         {"--can", "--can=CAN0", "--can=CAN0 --baudrate=250", "--can --baudrate"})
    {
        SCOPED_TRACE(arguments);
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, noChannels);
        EXPECT_EQ(result.calls, canCalls(0));
    }
}

TEST(Can, RejectsAnOptionOfAnotherCategoryBeforeItFindsNoChannels)
{
    Unit unit(R"({"about": {"canConnections": 0}})");
    EXPECT_EQ(unit.run("--can --volume").output, optionError + noChannels);
}

TEST(Can, ReadsAndSetsTheLastOf255Channels)
{
    Unit unit(R"({"about": {"canConnections": 255}, "can": {"baudrates": []}})");
    std::string all;
    for (int channel = 0; channel < 255; ++channel)
        all += "CAN device " + std::to_string(channel) + " baud rate: 125\n";
    EXPECT_EQ(unit.run("--can").output, all);
    EXPECT_EQ(unit.run("--can=can254 --baudrate=800").calls,
              canCalls(255, {"CanSetting_setBaudrate(255, 800) = 0"}));
    EXPECT_EQ(unit.run("--can=CAN254").output, "CAN device 254 baud rate: 800\n");
    EXPECT_EQ(unit.run("--can=CAN255").output, "");
}

TEST(Can, AssumesFourChannelsIfTheCountFails)
{
    for (const unsigned code : {1u, 2u, 18u, 4294967295u})
    {
        Unit unit;
        unit.fails("About_getNrOfCANConnections", code);
        EXPECT_EQ(unit.run("--can=CAN3").output, "CAN device 3 baud rate: 500\n") << code;
    }
}

TEST(Can, ReadsFourChannelsIfTheCountFails)
{
    Unit unit = unitWithTwoChannels();
    unit.fails("About_getNrOfCANConnections", 77);
    const Result result = unit.run("--can");
    EXPECT_EQ(result.output,
              lines({"CAN device 0 baud rate: 125", "CAN device 1 baud rate: 1000",
                     "getBaudrate: Not supported by this unit", "getBaudrate: Not supported by this unit"}));
    Calls calls = counting("[]", 77);
    calls.insert(calls.end(),
                 {"CanSetting_getBaudrate(1, [125]) = 0", "CanSetting_getBaudrate(2, [1000]) = 0",
                  "CanSetting_getBaudrate(3, []) = 2", "GetErrorStringA(2) = \"Not supported by this unit\"",
                  "CanSetting_getBaudrate(4, []) = 2", "GetErrorStringA(2) = \"Not supported by this unit\"",
                  "CanSetting_release() = 0"});
    EXPECT_EQ(result.calls, calls);
}

TEST(Can, ChangesOneOfFourChannelsIfTheCountFails)
{
    Unit unit;
    unit.set("/about/canConnections", 6);
    unit.fails("About_getNrOfCANConnections", 77);
    EXPECT_EQ(unit.run("--can=CAN3 --baudrate=800").output, "CAN device 3 baud rate set to: 800\n");
    EXPECT_EQ(unit.run("--can=CAN4 --baudrate=800").output, "");
    EXPECT_EQ(unit.run("--can --help").output, help(4));
}

TEST(Can, FindsNoChannelsIfNoCountIsWritten)
{
    Unit unit;
    unit.ignores("About_getNrOfCANConnections");
    EXPECT_EQ(unit.run("--can").output, noChannels);
}

TEST(Can, ListsAsManyChannelsInItsHelpAsTheUnitHas)
{
    for (const int channels : {0, 1, 2, 10, 255})
    {
        Unit unit;
        unit.set("/about/canConnections", channels);
        const Result result = unit.run("--can --help");
        EXPECT_EQ(result.output, help(channels));
        EXPECT_EQ(result.calls, counting("[" + std::to_string(channels) + "]"));
    }
}

TEST(Can, AssumesFourChannelsIfTheAboutHandleIsNull)
{
    Unit unit;
    unit.set("/about/canConnections", 1);
    unit.returnsNull("GetAbout");
    EXPECT_EQ(unit.run("--can --help").output, help(4));
}

TEST(Can, KeepsBaudratesAcrossAReboot)
{
    Unit unit;
    unit.run("--can=CAN0 --baudrate=125");
    unit.run("--can=CAN3 --baudrate=1000");
    unit.shutDown();
    EXPECT_EQ(unit.run("--can").output,
              lines({"CAN device 0 baud rate: 125", "CAN device 1 baud rate: 250",
                     "CAN device 2 baud rate: 500", "CAN device 3 baud rate: 1000"}));
}

} // namespace
