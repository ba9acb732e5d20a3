#include "support/unit.h"

namespace
{

const char* const frequencyError =
    "Invalid argument: The Frequency is not within allowed range (700 Hz - 10 000 Hz)\n";
const char* const volumeError = "Invalid argument: Volume is not within allowed range (0 - 2000)\n";

TEST(Buzzer, RejectsAnyOtherStatusWord)
{
    for (const char* word : {"Enabled", "Disabled", "Enabl", "on", "1", "0"})
    {
        SCOPED_TRACE(word);
        Unit unit;
        const Result result = unit.run(std::string("--buzzer --status=") + word);
        EXPECT_EQ(result.output, "Invalid argument\n");
        EXPECT_EQ(result.calls, callsOn("Buzzer", {}));
    }
    Unit unit;
    EXPECT_EQ(unit.run(std::vector<std::string>{"--buzzer", "--status=Enable "}).output,
              "Invalid argument\n");
}

// Numbers are truncated to 16 bits before the range check.
TEST(Buzzer, AcceptsFrequenciesInTheirRange)
{
    const struct Case
    {
        const char* text;
        int frequency;
    } cases[] = {
        {"700", 700},     {"701", 701},     {"9999", 9999}, {"10000", 10000}, {"66536", 1000}, {"66236", 700},
        {"75536", 10000}, {"-64536", 1000}, {"+800", 800},  {"00800", 800},   {"800Hz", 800},
    };
    for (const Case& c : cases)
    {
        SCOPED_TRACE(c.text);
        Unit unit;
        const Result result = unit.run(std::string("--buzzer --frequency=") + c.text);
        const std::string frequency = std::to_string(c.frequency);
        EXPECT_EQ(result.output, "Buzzer frequency set to: " + frequency + " Hz.\n");
        EXPECT_EQ(result.calls, callsOn("Buzzer", {"Buzzer_setFrequency(" + frequency + ") = 0"}));
        EXPECT_EQ(unit["/buzzer/frequency"], c.frequency);
    }
}

TEST(Buzzer, RejectsFrequenciesOutsideTheirRange)
{
    for (const char* text : {"699", "10001", "0", "-800", "abc", "Hz800", "0x800", "65535", "65536", "66235",
                             "75537", "99999999999999999999"})
    {
        SCOPED_TRACE(text);
        Unit unit;
        const Result result = unit.run(std::string("--buzzer --frequency=") + text);
        EXPECT_EQ(result.output, frequencyError);
        EXPECT_EQ(result.calls, callsOn("Buzzer", {}));
    }
}

TEST(Buzzer, AcceptsVolumesInTheirRange)
{
    const struct Case
    {
        const char* text;
        int volume;
    } cases[] = {
        {"0", 0},        {"1", 1},        {"1999", 1999}, {"2000", 2000}, {"abc", 0},  {"65536", 0},
        {"67536", 2000}, {"-65000", 536}, {"-65536", 0},  {"40%", 40},    {"0x10", 0}, {"-63536", 2000},
    };
    for (const Case& c : cases)
    {
        SCOPED_TRACE(c.text);
        Unit unit;
        const Result result = unit.run(std::string("--buzzer --volume=") + c.text);
        const std::string volume = std::to_string(c.volume);
        EXPECT_EQ(result.output, "Buzzer volume set to: " + volume + "\n");
        EXPECT_EQ(result.calls, callsOn("Buzzer", {"Buzzer_setVolume(" + volume + ") = 0"}));
        EXPECT_EQ(unit["/buzzer/volume"], c.volume);
    }
}

TEST(Buzzer, RejectsVolumesOutsideTheirRange)
{
    for (const char* text : {"2001", "-1", "65535", "67537", "-63535", "99999999999999999999"})
    {
        SCOPED_TRACE(text);
        Unit unit;
        const Result result = unit.run(std::string("--buzzer --volume=") + text);
        EXPECT_EQ(result.output, volumeError);
        EXPECT_EQ(result.calls, callsOn("Buzzer", {}));
    }
}

TEST(Buzzer, ContinuesAfterARejectedValue)
{
    Unit unit;
    const Result result = unit.run("--buzzer --frequency=1 --volume=2001 --status=Enable");
    EXPECT_EQ(result.output, std::string(frequencyError) + volumeError + "Buzzer status set to enable.\n");
    EXPECT_EQ(result.calls, callsOn("Buzzer", {"Buzzer_setTrigger(1) = 0"}));
}

TEST(Buzzer, PrintsUnsigned16BitNumbers)
{
    Unit unit(R"({"buzzer": {"frequency": 65535, "volume": 65534}})");
    EXPECT_EQ(unit.run("--buzzer --frequency --volume").output, "Buzzer Frequency: 65535\n"
                                                                "Buzzer Volume: 65534\n");
}

TEST(Buzzer, PrintsEveryNonzeroStatusAsEnabled)
{
    for (const int status : {1, 2, 128, 255})
    {
        Unit unit;
        unit.set("/buzzer/enabled", status);
        EXPECT_EQ(unit.run("--buzzer --status").output, "Buzzer status:  Enabled.\n") << status;
    }
    Unit unit(R"({"buzzer": {"enabled": 0}})");
    EXPECT_EQ(unit.run("--buzzer --status").output, "Buzzer status:  Disabled.\n");
}

} // namespace
