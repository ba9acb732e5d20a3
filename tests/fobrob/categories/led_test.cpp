#include "support/unit.h"

#include <gmock/gmock.h>

using testing::Contains;

namespace
{

const std::string frequencyError =
    "Invalid argument: The Frequency is not within allowed range (0.2 Hz - 50 Hz)\n";
const std::string dutyCycleError =
    "Invalid argument: The duty cycle is not within allowed range (0% - 100%)\n";
const std::string colorError = "Invalid argument: The color argument is not valid.\n";
const std::string pulsesError = "Invalid argument: Argument must be >0.\n";
const std::string idleTimeError =
    "Invalid argument: The idle time must be entered as increments of 100 ms (0,100,200,...).\n";
const std::string startupError = "Invalid argument: Start-up argument must be Enable or Disable.\n";

Calls ledCalls(const Calls& calls = {})
{
    return callsOn("FrontLED", calls);
}

TEST(Led, PrintsFrequenciesWithSixSignificantDigits)
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

TEST(Led, PrintsUnsigned8BitNumbers)
{
    Unit low(R"({"frontLed": {"dutyCycle": 0, "pulses": 0, "idleTime": 0}})");
    EXPECT_EQ(low.run("--led --dutycycle --pulses --idletime").output,
              lines({"LED Duty Cycle: 0 %.", "LED pulses: 0", "LED idle time: 0"}));
    Unit high(R"({"frontLed": {"dutyCycle": 255, "pulses": 255, "idleTime": 255}})");
    EXPECT_EQ(high.run("--led --dutycycle --pulses --idletime").output,
              lines({"LED Duty Cycle: 255 %.", "LED pulses: 255", "LED idle time: 25500"}));
}

TEST(Led, PrintsTheNamesOfTheColors)
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

TEST(Led, ReadsTheStartupStatus)
{
    Unit unit(R"({"frontLed": {"startup": 1}})");
    EXPECT_EQ(unit.run("--led --startup").output, "LED startup: Enabled.\n");
    unit.set("/frontLed/startup", 0);
    EXPECT_EQ(unit.run("--led --startup").output, "LED startup: Disabled.\n");
}

TEST(Led, ReportsAnyOtherStartupStatusAsInvalid)
{
    for (const int status : {2, -1, 255, 256, 257})
    {
        Unit unit;
        unit.set("/frontLed/startup", status);
        EXPECT_EQ(unit.run("--led --startup").output,
                  "Invalid status returned from getEnabledDuringStartup.\n");
    }
}

TEST(Led, AcceptsFrequenciesInTheirRange)
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

TEST(Led, RejectsFrequenciesOutsideTheirRange)
{
    Unit unit;
    for (const std::string value : {"0.19", "0.1999999", "0", "-10", "50.01", "50.000001", "51", "abc", ",5",
                                    "nan", "-nan", "inf", "-inf", "1e99"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--led --frequency=" + value);
        EXPECT_EQ(result.output, frequencyError);
        EXPECT_EQ(result.calls, ledCalls());
    }
}

TEST(Led, WritesTheFrequencyBackWithFullPrecision)
{
    Unit unit;
    unit.set("/frontLed/frequency", 3.14159265358979);
    unit.run("--led --dutycycle=80");
    EXPECT_EQ(unit["/frontLed/frequency"], 3.14159265358979);
    EXPECT_EQ(unit["/frontLed/dutyCycle"], 80);
}

TEST(Led, AcceptsDutyCyclesInTheirRange)
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

TEST(Led, RejectsDutyCyclesOutsideTheirRange)
{
    Unit unit;
    // The low 32 bits of 4294967346 and of -4294967246 are 50, which is in range.
    for (const std::string value :
         {"101", "-1", "-100", "200", "256", "356", "65536", "-256", "4294967296", "4294967346",
          "-4294967246", "18446744073709551666", "-99999999999999999999"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--led --dutycycle=" + value);
        EXPECT_EQ(result.output, dutyCycleError);
        EXPECT_EQ(result.calls, ledCalls());
    }
}

TEST(Led, ReportsASignalThatTheUnitRejects)
{
    Unit unit(R"({"frontLed": {"frequency": 0}})");
    EXPECT_EQ(unit.run("--led --dutycycle=80").output, "setSignal: The value is out of range\n");
    EXPECT_EQ(unit["/frontLed/dutyCycle"], nullptr);
}

TEST(Led, RejectsOtherColors)
{
    Unit unit;
    for (const std::string value : {"black", "re", "redd", "0", "4", "6", "UNDEFINED"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--led --color=" + value);
        EXPECT_EQ(result.output, colorError);
        EXPECT_EQ(result.calls, ledCalls());
    }
    EXPECT_EQ(unit.run(std::vector<std::string>{"--led", "--color=UNDEFINED COLOR"}).output, colorError);
}

TEST(Led, SendsTheLow8BitsOfThePulses)
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

TEST(Led, SendsNegativePulsesBeforeItRejectsThem)
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
        EXPECT_EQ(result.output, pulsesError);
        EXPECT_EQ(result.calls, ledCalls({"FrontLED_setNrOfPulses(" + std::to_string(sent) + ") = 0"}));
        EXPECT_EQ(unit["/frontLed/pulses"], sent);
    }
}

TEST(Led, RejectsNegativePulsesEvenIfTheCallFails)
{
    Unit unit;
    unit.fails("FrontLED_setNrOfPulses", 77);
    const Result result = unit.run("--led --pulses=-3");
    EXPECT_EQ(result.output, pulsesError);
    EXPECT_EQ(result.calls, ledCalls({"FrontLED_setNrOfPulses(253) = 77"}));
}

TEST(Led, SendsTheIdleTimeInUnitsOf100Milliseconds)
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

TEST(Led, ClampsAnIdleTimeToTheRangeOfLong)
{
    const bool wide =
        isProgram64Bit(); // otherwise it is clamped to 2147483647, which is not a multiple of 100
    Unit unit;
    const Result result = unit.run("--led --idletime=4294967300");
    EXPECT_EQ(result.output, wide ? "LED idle time set to: 4294967300\n" : idleTimeError);
    EXPECT_EQ(result.calls, wide ? ledCalls({"FrontLED_setIdleTime(41) = 0"}) : ledCalls());
}

TEST(Led, RejectsAnIdleTimeThatIsNotAMultipleOf100)
{
    Unit unit;
    for (const std::string value : {"150", "1", "99", "101", "2501", "-1", "-150", "99999999999999999999"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--led --idletime=" + value);
        EXPECT_EQ(result.output, idleTimeError);
        EXPECT_EQ(result.calls, ledCalls());
    }
}

TEST(Led, RejectsOtherStartupWords)
{
    Unit unit;
    for (const std::string value : {"Enabled", "Disabled", "1", "0", "on", "2"})
    {
        SCOPED_TRACE(value);
        const Result result = unit.run("--led --startup=" + value);
        EXPECT_EQ(result.output, startupError);
        EXPECT_EQ(result.calls, ledCalls());
    }
}

TEST(Led, ContinuesAfterARejectedValue)
{
    Unit unit;
    const Result result = unit.run("--led --frequency=0 --dutycycle=101 --color=black --pulses=-3 "
                                   "--idletime=150 --startup=on");
    EXPECT_EQ(result.output,
              frequencyError + dutyCycleError + colorError + pulsesError + idleTimeError + startupError);
    EXPECT_EQ(result.calls, ledCalls({"FrontLED_setNrOfPulses(253) = 0"}));
}

TEST(Led, ReadsTheSignalAgainAfterAFailedChange)
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

} // namespace
