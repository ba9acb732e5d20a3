#include "support/unit.h"

#include <gmock/gmock.h>

using testing::Contains;

namespace
{

const char* const help =
    "Category - LED\n"
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
    "--led\t\t\t--startup=\tEnable/Disable\tSet LED start-up status.\n";

const std::string frequencyRefused =
    "Invalid argument: The Frequency is not within allowed range (0.2 Hz - 50 Hz)\n";
const std::string dutyCycleRefused =
    "Invalid argument: The duty cycle is not within allowed range (0% - 100%)\n";
const std::string colorRefused = "Invalid argument: The color argument is not valid.\n";
const std::string pulsesRefused = "Invalid argument: Argument must be >0.\n";
const std::string idleTimeRefused =
    "Invalid argument: The idle time must be entered as increments of 100 ms (0,100,200,...).\n";
const std::string startupRefused = "Invalid argument: Start-up argument must be Enable or Disable.\n";

Calls ledCalls(const Calls& calls = {})
{
    return callsOn("FrontLED", calls);
}

// A unit whose LED has nothing at its default.
Unit litUnit()
{
    return Unit(R"({"frontLed": {"frequency": 7.25, "dutyCycle": 35, "color": "blue", "pulses": 3,
                                 "idleTime": 12, "startup": false}})");
}

TEST(Led, ReadsAllSettingsByDefault)
{
    Unit unit = litUnit();
    const Result result = unit.run("--led");
    EXPECT_EQ(result.output, lines({"LED Frequency: 7.25", "LED Duty Cycle: 35 %.", "LED color: BLUE",
                                    "LED pulses: 3", "LED idle time: 1200", "LED startup: Disabled."}));
    EXPECT_EQ(result.calls,
              ledCalls({"FrontLED_getSignal([7.25], [35]) = 0", "FrontLED_getSignal([7.25], [35]) = 0",
                        "FrontLED_getStandardColor([2]) = 0", "FrontLED_getNrOfPulses([3]) = 0",
                        "FrontLED_getIdleTime([12]) = 0", "FrontLED_getEnabledDuringStartup([0]) = 0"}));
}

TEST(Led, ReadsOneSettingOnRequest)
{
    const struct
    {
        std::string option;
        std::string output;
        std::string call;
    } cases[] = {
        {"--frequency", "LED Frequency: 7.25\n", "FrontLED_getSignal([7.25], [35]) = 0"},
        {"--dutycycle", "LED Duty Cycle: 35 %.\n", "FrontLED_getSignal([7.25], [35]) = 0"},
        {"--color", "LED color: BLUE\n", "FrontLED_getStandardColor([2]) = 0"},
        {"--pulses", "LED pulses: 3\n", "FrontLED_getNrOfPulses([3]) = 0"},
        {"--idletime", "LED idle time: 1200\n", "FrontLED_getIdleTime([12]) = 0"},
        {"--startup", "LED startup: Disabled.\n", "FrontLED_getEnabledDuringStartup([0]) = 0"},
    };
    Unit unit = litUnit();
    for (const auto& [option, output, call] : cases)
        for (const std::string value : {"", "=", "=noArgument", "=noargument", "=NOARGUMENT"})
        {
            SCOPED_TRACE(option + value);
            const Result result = unit.run("--led " + option + value);
            EXPECT_EQ(result.output, output);
            EXPECT_EQ(result.calls, ledCalls({call}));
        }
}

TEST(Led, ReadsInAnOrderOfItsOwn)
{
    Unit unit = litUnit();
    EXPECT_EQ(unit.run("--led --startup --idletime --pulses --color --dutycycle --frequency").output,
              unit.run("--led").output);
    EXPECT_EQ(unit.run("--led --idletime --frequency").output,
              lines({"LED Frequency: 7.25", "LED idle time: 1200"}));
}

TEST(Led, PrintsFrequenciesWithSixDigits)
{
    const struct
    {
        double frequency;
        const char* printed;
    } cases[] = {
        {0.2, "0.2"},           {50, "50"},     {0, "0"},           {33.3333333, "33.3333"}, {-1.5, "-1.5"},
        {123456.5, "123456"},   {1e6, "1e+06"}, {0.00001, "1e-05"}, {49.99999, "50"},        {1.10, "1.1"},
        {0.1234567, "0.123457"}};
    for (const auto& [frequency, printed] : cases)
    {
        Unit unit;
        unit.set("/frontLed/frequency", frequency);
        EXPECT_EQ(unit.run("--led --frequency").output, std::string("LED Frequency: ") + printed + "\n");
    }
}

TEST(Led, PrintsEveryEightBitNumberThatTheUnitHas)
{
    Unit low(R"({"frontLed": {"dutyCycle": 0, "pulses": 0, "idleTime": 0}})");
    EXPECT_EQ(low.run("--led --dutycycle --pulses --idletime").output,
              lines({"LED Duty Cycle: 0 %.", "LED pulses: 0", "LED idle time: 0"}));
    Unit high(R"({"frontLed": {"dutyCycle": 255, "pulses": 255, "idleTime": 255}})");
    EXPECT_EQ(high.run("--led --dutycycle --pulses --idletime").output,
              lines({"LED Duty Cycle: 255 %.", "LED pulses: 255", "LED idle time: 25500"}));
}

TEST(Led, NamesTheColors)
{
    const struct
    {
        int color;
        const char* name;
    } cases[] = {{0, "RED"},
                 {1, "GREEN"},
                 {2, "BLUE"},
                 {3, "CYAN"},
                 {4, "MAGENTA"},
                 {5, "YELLOW"},
                 {6, "UNDEFINED COLOR"},
                 {-1, "UNDEFINED COLOR"},
                 {256, "UNDEFINED COLOR"}};
    for (const auto& [color, name] : cases)
    {
        Unit unit;
        unit.set("/frontLed/color", color);
        EXPECT_EQ(unit.run("--led --color").output, std::string("LED color: ") + name + "\n");
    }
}

TEST(Led, ReadsWhetherItIsLitDuringStartup)
{
    Unit unit(R"({"frontLed": {"startup": 1}})");
    EXPECT_EQ(unit.run("--led --startup").output, "LED startup: Enabled.\n");
    unit.set("/frontLed/startup", 0);
    EXPECT_EQ(unit.run("--led --startup").output, "LED startup: Disabled.\n");
}

TEST(Led, FindsAnyOtherStartupStatusInvalid)
{
    for (const int status : {2, -1, 255, 256, 257})
    {
        Unit unit;
        unit.set("/frontLed/startup", status);
        EXPECT_EQ(unit.run("--led --startup").output,
                  "Invalid status returned from getEnabledDuringStartup.\n");
    }
}

TEST(Led, SetsTheFrequencyAndKeepsTheDutyCycle)
{
    Unit unit = litUnit();
    const Result result = unit.run("--led --frequency=10");
    EXPECT_EQ(result.output, "LED frequency set to: 10 Hz.\n");
    EXPECT_EQ(result.calls,
              ledCalls({"FrontLED_getSignal([7.25], [35]) = 0", "FrontLED_setSignal(10, 35) = 0"}));
    EXPECT_EQ(unit["/frontLed/frequency"], 10);
    EXPECT_EQ(unit["/frontLed/dutyCycle"], 35);
}

TEST(Led, TakesFrequenciesFromAFifthToFifty)
{
    const struct
    {
        const char* value;
        const char* printed;
        const char* sent;
    } cases[] = {{"0.2", "0.2", "0.2"},   {"0.21", "0.21", "0.21"}, {"49.99", "49.99", "49.99"},
                 {"50", "50", "50"},      {"50.0", "50", "50"},     {"2,5", "2", "2"},
                 {"2.5Hz", "2.5", "2.5"}, {"1e1", "10", "10"},      {"12.3456789", "12.3457", "12.3456789"},
                 {"0x10", "16", "16"}};
    for (const auto& [value, printed, sent] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        const Result result = unit.run(std::string("--led --frequency=") + value);
        EXPECT_EQ(result.output, std::string("LED frequency set to: ") + printed + " Hz.\n");
        EXPECT_THAT(result.calls, Contains(std::string("FrontLED_setSignal(") + sent + ", 50) = 0"));
    }
}

TEST(Led, RefusesFrequenciesOutsideItsRange)
{
    Unit unit;
    for (const std::string value : {"0.19", "0.1999999", "0", "-10", "50.01", "50.000001", "51", "abc", ",5",
                                    "nan", "-nan", "inf", "-inf", "1e99"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--led --frequency=" + value);
        EXPECT_EQ(result.output, frequencyRefused);
        EXPECT_EQ(result.calls, ledCalls());
    }
}

TEST(Led, SetsTheDutyCycleAndKeepsTheFrequency)
{
    Unit unit = litUnit();
    const Result result = unit.run("--led --dutycycle=80");
    EXPECT_EQ(result.output, "LED duty cycle set to: 80 %.\n");
    EXPECT_EQ(result.calls,
              ledCalls({"FrontLED_getSignal([7.25], [35]) = 0", "FrontLED_setSignal(7.25, 80) = 0"}));
    EXPECT_EQ(unit["/frontLed/frequency"], 7.25);
    EXPECT_EQ(unit["/frontLed/dutyCycle"], 80);
}

TEST(Led, WritesAFrequencyBackAsFineAsItWasRead)
{
    Unit unit;
    unit.set("/frontLed/frequency", 3.14159265358979);
    unit.run("--led --dutycycle=80");
    EXPECT_EQ(unit["/frontLed/frequency"], 3.14159265358979);
    EXPECT_EQ(unit["/frontLed/dutyCycle"], 80);
}

TEST(Led, TakesDutyCyclesFromNoneToHundred)
{
    const struct
    {
        const char* value;
        std::string sent;
    } cases[] = {{"0", "0"},    {"1", "1"},   {"99", "99"},   {"100", "100"},
                 {"50%", "50"}, {"abc", "0"}, {"33.9", "33"}, {"0x10", "0"}};
    for (const auto& [value, sent] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        const Result result = unit.run(std::string("--led --dutycycle=") + value);
        EXPECT_EQ(result.output, "LED duty cycle set to: " + sent + " %.\n");
        EXPECT_THAT(result.calls, Contains("FrontLED_setSignal(1, " + sent + ") = 0"));
    }
}

TEST(Led, RefusesDutyCyclesOutsideItsRange)
{
    Unit unit;
    // Whatever the width of a long: 4294967346 is 50 in its low half, and so is -4294967246.
    for (const std::string value :
         {"101", "-1", "-100", "200", "256", "356", "65536", "-256", "4294967296", "4294967346",
          "-4294967246", "18446744073709551666", "-99999999999999999999"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--led --dutycycle=" + value);
        EXPECT_EQ(result.output, dutyCycleRefused);
        EXPECT_EQ(result.calls, ledCalls());
    }
}

TEST(Led, SetsTheFrequencyAndThenTheDutyCycle)
{
    Unit unit = litUnit();
    const Result result = unit.run("--led --dutycycle=80 --frequency=10");
    EXPECT_EQ(result.output, lines({"LED frequency set to: 10 Hz.", "LED duty cycle set to: 80 %."}));
    EXPECT_EQ(result.calls,
              ledCalls({"FrontLED_getSignal([7.25], [35]) = 0", "FrontLED_setSignal(10, 35) = 0",
                        "FrontLED_getSignal([10], [35]) = 0", "FrontLED_setSignal(10, 80) = 0"}));
}

TEST(Led, WritesNoSignalThatItCouldNotRead)
{
    for (const std::string option : {"--frequency=10", "--dutycycle=80"})
    {
        Unit unit;
        unit.fails("FrontLED_getSignal", 77);
        const Result result = unit.run("--led " + option);
        EXPECT_EQ(result.output, "getSignal: Error 77\n");
        EXPECT_EQ(result.calls,
                  ledCalls({"FrontLED_getSignal([], []) = 77", "GetErrorStringA(77) = \"Error 77\""}));
    }
}

TEST(Led, ReportsASignalThatCouldNotBeWritten)
{
    const struct
    {
        std::string option;
        std::string written;
    } cases[] = {{"--frequency=10", "10, 35"}, {"--dutycycle=80", "7.25, 80"}};
    for (const auto& [option, written] : cases)
    {
        Unit unit = litUnit();
        unit.fails("FrontLED_setSignal", 77);
        const Result result = unit.run("--led " + option);
        EXPECT_EQ(result.output, "setSignal: Error 77\n");
        EXPECT_EQ(result.calls, ledCalls({"FrontLED_getSignal([7.25], [35]) = 0",
                                          "FrontLED_setSignal(" + written + ") = 77",
                                          "GetErrorStringA(77) = \"Error 77\""}));
        EXPECT_EQ(unit["/frontLed/frequency"], 7.25);
        EXPECT_EQ(unit["/frontLed/dutyCycle"], 35);
    }
}

TEST(Led, PassesOnThatTheUnitRefusesTheHalfItKept)
{
    Unit unit(R"({"frontLed": {"frequency": 0}})");
    EXPECT_EQ(unit.run("--led --dutycycle=80").output, "setSignal: The value is out of range\n");
    EXPECT_EQ(unit["/frontLed/dutyCycle"], nullptr);
}

TEST(Led, SetsTheColorInAnyCase)
{
    const struct
    {
        std::string value;
        std::string name;
        int sent;
        const char* kept;
    } cases[] = {
        {"red", "RED", 0, "red"},    {"Green", "GREEN", 1, "green"},       {"bLUE", "BLUE", 2, "blue"},
        {"CYAN", "CYAN", 3, "cyan"}, {"magenta", "MAGENTA", 4, "magenta"}, {"yeLLow", "YELLOW", 5, "yellow"},
    };
    for (const auto& [value, name, sent, kept] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        unit.set("/frontLed/color", 6);
        const Result result = unit.run("--led --color=" + value);
        EXPECT_EQ(result.output, "LED color set to: " + name + "\n");
        EXPECT_EQ(result.calls, ledCalls({"FrontLED_setStandardColor(" + std::to_string(sent) + ") = 0"}));
        EXPECT_EQ(unit["/frontLed/color"], kept);
    }
}

TEST(Led, RefusesAnUnknownColor)
{
    Unit unit;
    for (const std::string value : {"black", "re", "redd", "0", "4", "6", "UNDEFINED"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--led --color=" + value);
        EXPECT_EQ(result.output, colorRefused);
        EXPECT_EQ(result.calls, ledCalls());
    }
    EXPECT_EQ(unit.run(std::vector<std::string>{"--led", "--color=UNDEFINED COLOR"}).output, colorRefused);
}

TEST(Led, SetsTheLowEightBitsOfThePulses)
{
    const struct
    {
        const char* value;
        int sent;
    } cases[] = {{"0", 0},     {"1", 1},      {"5", 5},       {"254", 254},
                 {"255", 255}, {"256", 0},    {"257", 1},     {"300", 44},
                 {"abc", 0},   {"12abc", 12}, {"65535", 255}, {"99999999999999999999", 255},
                 {"010", 10},  {"0x10", 0}};
    for (const auto& [value, sent] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        unit.set("/frontLed/pulses", 77);
        const Result result = unit.run(std::string("--led --pulses=") + value);
        const std::string number = std::to_string(sent);
        EXPECT_EQ(result.output, "LED pulses set to: " + number + "\n");
        EXPECT_EQ(result.calls, ledCalls({"FrontLED_setNrOfPulses(" + number + ") = 0"}));
        EXPECT_EQ(unit["/frontLed/pulses"], sent);
    }
}

TEST(Led, SendsNegativePulsesBeforeItRefusesThem)
{
    const struct
    {
        const char* value;
        int sent;
    } cases[] = {{"-1", 255}, {"-3", 253}, {"-255", 1}, {"-256", 0}, {"-99999999999999999999", 0}};
    for (const auto& [value, sent] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        unit.set("/frontLed/pulses", 77);
        const Result result = unit.run(std::string("--led --pulses=") + value);
        EXPECT_EQ(result.output, pulsesRefused);
        EXPECT_EQ(result.calls, ledCalls({"FrontLED_setNrOfPulses(" + std::to_string(sent) + ") = 0"}));
        EXPECT_EQ(unit["/frontLed/pulses"], sent);
    }
}

TEST(Led, RefusesNegativePulsesWhateverTheUnitAnswered)
{
    Unit unit;
    unit.fails("FrontLED_setNrOfPulses", 77);
    const Result result = unit.run("--led --pulses=-3");
    EXPECT_EQ(result.output, pulsesRefused);
    EXPECT_EQ(result.calls, ledCalls({"FrontLED_setNrOfPulses(253) = 77"}));
}

TEST(Led, SetsTheIdleTimeInHundredsOfMilliseconds)
{
    const struct
    {
        const char* value;
        std::string printed;
        int sent;
    } cases[] = {{"0", "0", 0},          {"100", "100", 1},       {"2500", "2500", 25},
                 {"2500ms", "2500", 25}, {"25500", "25500", 255}, {"25600", "25600", 0},
                 {"25700", "25700", 1},  {"-100", "-100", 255},   {"-25600", "-25600", 0},
                 {"abc", "0", 0},        {"0100", "100", 1},      {"0x64", "0", 0}};
    for (const auto& [value, printed, sent] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        unit.set("/frontLed/idleTime", 77);
        const Result result = unit.run(std::string("--led --idletime=") + value);
        EXPECT_EQ(result.output, "LED idle time set to: " + printed + "\n");
        EXPECT_EQ(result.calls, ledCalls({"FrontLED_setIdleTime(" + std::to_string(sent) + ") = 0"}));
        EXPECT_EQ(unit["/frontLed/idleTime"], sent);
    }
}

TEST(Led, TakesAnIdleTimeBeyondThirtyTwoBitsAsFarAsALongHoldsIt)
{
    const bool wide = isProgram64Bit(); // else it is 2147483647, which is no multiple of 100
    Unit unit;
    const Result result = unit.run("--led --idletime=4294967300");
    EXPECT_EQ(result.output, wide ? "LED idle time set to: 4294967300\n" : idleTimeRefused);
    EXPECT_EQ(result.calls, wide ? ledCalls({"FrontLED_setIdleTime(41) = 0"}) : ledCalls());
}

TEST(Led, RefusesAnIdleTimeBetweenTheHundreds)
{
    Unit unit;
    for (const std::string value : {"150", "1", "99", "101", "2501", "-1", "-150", "99999999999999999999"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--led --idletime=" + value);
        EXPECT_EQ(result.output, idleTimeRefused);
        EXPECT_EQ(result.calls, ledCalls());
    }
}

TEST(Led, SetsWhetherItIsLitDuringStartup)
{
    const struct
    {
        std::string value;
        bool enabled;
    } cases[] = {{"Enable", true},   {"enable", true},   {"ENABLE", true},
                 {"Disable", false}, {"disable", false}, {"DISABLE", false}};
    for (const auto& [value, enabled] : cases)
    {
        SCOPED_TRACE(value);
        Unit unit;
        unit.set("/frontLed/startup", !enabled);
        const Result result = unit.run("--led --startup=" + value);
        EXPECT_EQ(result.output, enabled ? "LED startup set to Enable.\n" : "LED startup set to Disable.\n");
        EXPECT_EQ(result.calls, ledCalls({enabled ? "FrontLED_setEnabledDuringStartup(1) = 0"
                                                  : "FrontLED_setEnabledDuringStartup(0) = 0"}));
        EXPECT_EQ(unit["/frontLed/startup"], enabled);
    }
}

TEST(Led, RefusesAnotherStartup)
{
    Unit unit;
    for (const std::string value : {"Enabled", "Disabled", "1", "0", "on", "2"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--led --startup=" + value);
        EXPECT_EQ(result.output, startupRefused);
        EXPECT_EQ(result.calls, ledCalls());
    }
}

TEST(Led, SetsInAnOrderOfItsOwn)
{
    Unit unit;
    EXPECT_EQ(unit.run("--led --startup=enable --frequency=10").output,
              lines({"LED frequency set to: 10 Hz.", "LED startup set to Enable."}));
    const Result result = unit.run("--led --startup=Disable --idletime=200 --pulses=4 --color=Red "
                                   "--dutycycle=20 --frequency=5");
    EXPECT_EQ(result.output,
              lines({"LED frequency set to: 5 Hz.", "LED duty cycle set to: 20 %.", "LED color set to: RED",
                     "LED pulses set to: 4", "LED idle time set to: 200", "LED startup set to Disable."}));
    EXPECT_EQ(result.calls,
              ledCalls({"FrontLED_getSignal([10], [50]) = 0", "FrontLED_setSignal(5, 50) = 0",
                        "FrontLED_getSignal([5], [50]) = 0", "FrontLED_setSignal(5, 20) = 0",
                        "FrontLED_setStandardColor(0) = 0", "FrontLED_setNrOfPulses(4) = 0",
                        "FrontLED_setIdleTime(2) = 0", "FrontLED_setEnabledDuringStartup(0) = 0"}));
}

TEST(Led, ReadsAndSetsInOneCall)
{
    Unit unit;
    EXPECT_EQ(unit.run("--led --startup=Disable --color=Red --pulses=5 --frequency").output,
              lines({"LED Frequency: 1", "LED color set to: RED", "LED pulses set to: 5",
                     "LED startup set to Disable."}));
    EXPECT_EQ(unit.run("--led --dutycycle --idletime=300 --frequency=15").output,
              lines({"LED frequency set to: 15 Hz.", "LED Duty Cycle: 50 %.", "LED idle time set to: 300"}));
}

TEST(Led, TakesTheLastOfRepeatedOptions)
{
    const struct
    {
        std::string options;
        std::string output;
    } cases[] = {
        {"--frequency=10 --frequency=11", "LED frequency set to: 11 Hz.\n"},
        {"--frequency=10 --frequency", "LED Frequency: 7.25\n"},
        {"--dutycycle=10 --dutycycle", "LED Duty Cycle: 35 %.\n"},
        {"--color=red --color=", "LED color: BLUE\n"},
        {"--pulses=9 --pulses", "LED pulses: 3\n"},
        {"--idletime=100 --idletime", "LED idle time: 1200\n"},
        {"--startup=Enable --startup", "LED startup: Disabled.\n"},
        {"--startup --startup=Enable", "LED startup set to Enable.\n"},
    };
    for (const auto& [options, output] : cases)
    {
        SCOPED_TRACE(options);
        Unit unit = litUnit();
        EXPECT_EQ(unit.run("--led " + options).output, output);
    }
}

TEST(Led, TakesNoWordBehindABlankForAValue)
{
    Unit unit = litUnit();
    EXPECT_EQ(unit.run("--led --pulses 9 --color red").output, lines({"LED color: BLUE", "LED pulses: 3"}));
}

TEST(Led, GoesOnBehindARefusedValue)
{
    Unit unit;
    const Result result = unit.run("--led --frequency=0 --dutycycle=101 --color=black --pulses=-3 "
                                   "--idletime=150 --startup=on");
    EXPECT_EQ(result.output, frequencyRefused + dutyCycleRefused + colorRefused + pulsesRefused +
                                 idleTimeRefused + startupRefused);
    EXPECT_EQ(result.calls, ledCalls({"FrontLED_setNrOfPulses(253) = 0"}));
}

TEST(Led, RefusesForeignOptionsWithoutReading)
{
    Unit unit;
    for (const std::string options : {"--volume", "--led", "--intensity=5", "-h", "-v", "--volume -h -v"})
    {
        SCOPED_TRACE(options);
        const Result result = unit.run("--led " + options);
        EXPECT_EQ(result.output, "Invalid argument\n");
        EXPECT_EQ(result.calls, ledCalls());
    }
}

TEST(Led, LetsAForeignOptionThroughBesideItsOwn)
{
    Unit unit;
    EXPECT_EQ(unit.run("--led --volume=9 --pulses").output, "LED pulses: 1\n");
    EXPECT_EQ(unit.run("--led --pulses=2 -v").output, "LED pulses set to: 2\n");
    EXPECT_EQ(unit.run("--led --color=black --volume").output, colorRefused);
}

TEST(Led, RefusesAnUnknownOptionAfterItsDiagnostic)
{
    Unit unit;
    const Result result = unit.runComplaining("--led --bogus");
    EXPECT_EQ(result.output, "Invalid argument\n");
    EXPECT_NE(result.errors.find("unrecognized option '--bogus'"), std::string::npos);
    EXPECT_EQ(result.calls, ledCalls());
}

TEST(Led, LetsAnUnknownOptionThroughBesideItsOwn)
{
    Unit unit;
    EXPECT_EQ(unit.runComplaining("--led --bogus --pulses").output, "LED pulses: 1\n");
    EXPECT_EQ(unit.runComplaining("--led --color=blue --bogus").output, "LED color set to: BLUE\n");
}

TEST(Led, ShowsItsHelpAndReleasesNothing)
{
    Unit unit;
    const Result result = unit.run("--led --help");
    EXPECT_EQ(result.output, help);
    EXPECT_EQ(result.calls, (Calls{"GetFrontLED() = handle"}));
}

TEST(Led, ShowsItsHelpAmongOtherOptionsAndChangesNothing)
{
    Unit unit;
    for (const std::string options :
         {"--pulses=-3 --help", "--help --pulses=9", "--volume --help", "--frequency --color=red --help"})
    {
        SCOPED_TRACE(options);
        const Result result = unit.run("--led " + options);
        EXPECT_EQ(result.output, help);
        EXPECT_EQ(result.calls, (Calls{"GetFrontLED() = handle"}));
    }
}

TEST(Led, ReportsAFailedOperationAndReleases)
{
    const struct
    {
        std::string option;
        std::string operation;
        std::string arguments;
        std::string label;
    } cases[] = {
        {"--frequency", "FrontLED_getSignal", "[], []", "getSignal"},
        {"--dutycycle", "FrontLED_getSignal", "[], []", "getSignal"},
        {"--color", "FrontLED_getStandardColor", "[]", "getColor"},
        {"--color=cyan", "FrontLED_setStandardColor", "3", "setColor"},
        {"--pulses", "FrontLED_getNrOfPulses", "[]", "getNrOfPulses"},
        {"--pulses=0", "FrontLED_setNrOfPulses", "0", "setNrOfPulses"},
        {"--idletime", "FrontLED_getIdleTime", "[]", "getIdleTime"},
        {"--idletime=500", "FrontLED_setIdleTime", "5", "setIdleTime"},
        {"--startup=Enable", "FrontLED_setEnabledDuringStartup", "1", "setEnabledDuringStartup"},
        {"--startup=Disable", "FrontLED_setEnabledDuringStartup", "0", "setEnabledDuringStartup"},
    };
    for (const auto& [option, operation, arguments, label] : cases)
    {
        SCOPED_TRACE(option);
        Unit unit;
        unit.fails(operation, 77);
        const Result result = unit.run("--led " + option);
        EXPECT_EQ(result.output, label + ": Error 77\n");
        EXPECT_EQ(result.calls,
                  ledCalls({operation + "(" + arguments + ") = 77", "GetErrorStringA(77) = \"Error 77\""}));
    }
}

TEST(Led, TakesAFailedStartupReadingForDisabled)
{
    Unit unit(R"({"frontLed": {"startup": true}})");
    unit.fails("FrontLED_getEnabledDuringStartup", 77);
    const Result result = unit.run("--led --startup");
    EXPECT_EQ(result.output, lines({"getEnabledDuringStartup: Error 77", "LED startup: Disabled."}));
    EXPECT_EQ(result.calls,
              ledCalls({"FrontLED_getEnabledDuringStartup([]) = 77", "GetErrorStringA(77) = \"Error 77\""}));
}

TEST(Led, GoesOnBehindEveryFailedReading)
{
    Unit unit;
    unit.failsOnce("FrontLED_getSignal", 77, 1);
    unit.fails("FrontLED_getStandardColor", 78);
    unit.fails("FrontLED_getNrOfPulses", 79);
    unit.fails("FrontLED_getIdleTime", 76);
    EXPECT_EQ(unit.run("--led").output,
              lines({"LED Frequency: 1", "getSignal: Error 77", "getColor: Error 78",
                     "getNrOfPulses: Error 79", "getIdleTime: Error 76", "LED startup: Enabled."}));
}

TEST(Led, GoesOnBehindEveryFailedChange)
{
    Unit unit;
    unit.failsOnce("FrontLED_setSignal", 77);
    unit.fails("FrontLED_setStandardColor", 78);
    unit.fails("FrontLED_setNrOfPulses", 79);
    unit.fails("FrontLED_setIdleTime", 76);
    const Result result = unit.run(
        "--led --frequency=10 --dutycycle=80 --color=red --pulses=4 --idletime=100 --startup=Disable");
    EXPECT_EQ(result.output,
              lines({"setSignal: Error 77", "LED duty cycle set to: 80 %.", "setColor: Error 78",
                     "setNrOfPulses: Error 79", "setIdleTime: Error 76", "LED startup set to Disable."}));
    EXPECT_THAT(result.calls, Contains("FrontLED_setSignal(1, 80) = 0"));
}

TEST(Led, WorksOnInSilenceWhereTheErrorHasNoText)
{
    Unit unit(R"({"errorTexts": {"77": null}})");
    unit.fails("FrontLED_setStandardColor", 77);
    const Result result = unit.run("--led --dutycycle=80 --color=red --pulses=4 --startup");
    EXPECT_EQ(result.output, "LED duty cycle set to: 80 %.\nsetColor: ");
    EXPECT_EQ(result.calls.back(), "FrontLED_release() = 0");
    EXPECT_EQ(unit["/frontLed/pulses"], 4);
}

TEST(Led, PrintsZeroRedAndDisabledWhereNothingWasWritten)
{
    Unit unit = litUnit();
    for (const char* operation : {"FrontLED_getSignal", "FrontLED_getStandardColor", "FrontLED_getNrOfPulses",
                                  "FrontLED_getIdleTime", "FrontLED_getEnabledDuringStartup"})
        unit.ignores(operation);
    EXPECT_EQ(unit.run("--led").output,
              lines({"LED Frequency: 0", "LED Duty Cycle: 0 %.", "LED color: RED", "LED pulses: 0",
                     "LED idle time: 0", "LED startup: Disabled."}));
}

TEST(Led, UsesAHandleThatIsNull)
{
    Unit unit;
    unit.givesNull("GetFrontLED");
    const Result result = unit.run("--led --color --pulses=4");
    EXPECT_EQ(result.output, lines({"getColor: The module handle is not valid",
                                    "setNrOfPulses: The module handle is not valid"}));
    EXPECT_EQ(result.calls.back(), "FrontLED_release() = 3");
}

TEST(Led, SaysNothingOfAFailedRelease)
{
    Unit unit;
    unit.fails("FrontLED_release", 77);
    const Result result = unit.run("--led --pulses");
    EXPECT_EQ(result.output, "LED pulses: 1\n");
    EXPECT_EQ(result.calls.back(), "FrontLED_release() = 77");
}

TEST(Led, SettingsOutlastAReboot)
{
    Unit unit;
    unit.run("--led --frequency=2.5 --dutycycle=80 --color=cyan --pulses=4 --idletime=700 --startup=Disable");
    unit.shutDown();
    EXPECT_EQ(unit.run("--led").output,
              lines({"LED Frequency: 2.5", "LED Duty Cycle: 80 %.", "LED color: CYAN", "LED pulses: 4",
                     "LED idle time: 700", "LED startup: Disabled."}));
}

} // namespace
