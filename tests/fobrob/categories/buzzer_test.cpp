#include "support/unit.h"

namespace
{

const char* const help =
    "Category - Buzzer\n"
    "Get information about the current state of the Buzzer. Set the frequency, the \n"
    "volume and/or enable/disable the Buzzer.\n"
    "\n"
    "Usage\n"
    "If no argument is passed to the category option, information from all the options \n"
    "will be printed. It is possible to combine several options to get more\n"
    "information with one call.  See the table below for available arguments and \n"
    "examples how options could be combined.\n"
    "\n"
    "Two examples how options can be combined:\n"
    "Ex1: ./Fobrob --buzzer --frequency=800 --status=Enable --volume=40\n"
    "Ex2: ./Fobrob --buzzer --frequency --status --volume=40\n"
    "\n"
    " Category\tArg\tOption\t\tArg\t\tNote\n"
    "--buzzer\t\t\t\t\t\tGet current buzzer settings.\n"
    "--buzzer\t\t--frequency\t\t\tGet buzzer frequency.\n"
    "--buzzer\t\t--volume\t\t\tGet buzzer volume.\n"
    "--buzzer\t\t--status\t\t\tGet buzzer status.\n"
    "--buzzer\t\t--frequency=\t[700-10000]\tSet buzzer frequency.\n"
    "--buzzer\t\t--volume=\t[0-2000]\t\tSet buzzer volume.\n"
    "--buzzer\t\t--status=\tEnable/Disable\tSet buzzer status.\n";

const char* const frequencyRefusal =
    "Invalid argument: The Frequency is not within allowed range (700 Hz - 10 000 Hz)\n";
const char* const volumeRefusal = "Invalid argument: Volume is not within allowed range (0 - 2000)\n";

TEST(Buzzer, ShowsAllSettingsByDefault)
{
    Unit unit(R"({"buzzer": {"frequency": 1234, "volume": 56, "enabled": true}})");
    const Result result = unit.run("--buzzer");
    EXPECT_EQ(result.output, "Buzzer Frequency: 1234\n"
                             "Buzzer Volume: 56\n"
                             "Buzzer status:  Enabled.\n");
    EXPECT_EQ(result.calls, callsOn("Buzzer", {"Buzzer_getFrequency([1234]) = 0",
                                               "Buzzer_getVolume([56]) = 0", "Buzzer_getTrigger([1]) = 0"}));
}

TEST(Buzzer, ReadsEachSettingOnRequest)
{
    const struct Case
    {
        const char* option;
        const char* output;
        const char* call;
    } cases[] = {
        {"--frequency", "Buzzer Frequency: 2500\n", "Buzzer_getFrequency([2500]) = 0"},
        {"--volume", "Buzzer Volume: 1000\n", "Buzzer_getVolume([1000]) = 0"},
        {"--status", "Buzzer status:  Disabled.\n", "Buzzer_getTrigger([0]) = 0"},
    };
    for (const Case& c : cases)
        for (const char* value : {"", "=", "=noArgument", "=noargument", "=NOARGUMENT"})
        {
            SCOPED_TRACE(std::string(c.option) + value);
            Unit unit;
            const Result result = unit.run(std::string("--buzzer ") + c.option + value);
            EXPECT_EQ(result.output, c.output);
            EXPECT_EQ(result.calls, callsOn("Buzzer", {c.call}));
        }
}

TEST(Buzzer, SetsTheFrequency)
{
    Unit unit;
    const Result result = unit.run("--buzzer --frequency=800");
    EXPECT_EQ(result.output, "Buzzer frequency set to: 800 Hz.\n");
    EXPECT_EQ(result.calls, callsOn("Buzzer", {"Buzzer_setFrequency(800) = 0"}));
    EXPECT_EQ(unit["/buzzer/frequency"], 800);
}

TEST(Buzzer, SetsTheVolume)
{
    Unit unit;
    const Result result = unit.run("--buzzer --volume=40");
    EXPECT_EQ(result.output, "Buzzer volume set to: 40\n");
    EXPECT_EQ(result.calls, callsOn("Buzzer", {"Buzzer_setVolume(40) = 0"}));
    EXPECT_EQ(unit["/buzzer/volume"], 40);
}

TEST(Buzzer, SetsTheStatusByAWordInAnyCase)
{
    for (const char* word : {"Enable", "enable", "ENABLE", "eNaBlE"})
    {
        SCOPED_TRACE(word);
        Unit unit;
        const Result result = unit.run(std::string("--buzzer --status=") + word);
        EXPECT_EQ(result.output, "Buzzer status set to enable.\n");
        EXPECT_EQ(result.calls, callsOn("Buzzer", {"Buzzer_setTrigger(1) = 0"}));
        EXPECT_EQ(unit["/buzzer/enabled"], true);
    }
    for (const char* word : {"Disable", "disable", "DISABLE", "dIsAbLe"})
    {
        SCOPED_TRACE(word);
        Unit unit(R"({"buzzer": {"enabled": true}})");
        const Result result = unit.run(std::string("--buzzer --status=") + word);
        EXPECT_EQ(result.output, "Buzzer status set to disable.\n");
        EXPECT_EQ(result.calls, callsOn("Buzzer", {"Buzzer_setTrigger(0) = 0"}));
        EXPECT_EQ(unit["/buzzer/enabled"], false);
    }
}

TEST(Buzzer, RefusesAnyOtherStatusWord)
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

// The device takes sixteen bits: what is left of a number there is judged, sent and shown.
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

TEST(Buzzer, RefusesFrequenciesOutsideTheirRange)
{
    for (const char* text : {"699", "10001", "0", "-800", "abc", "Hz800", "0x800", "65535", "65536", "66235",
                             "75537", "99999999999999999999"})
    {
        SCOPED_TRACE(text);
        Unit unit;
        const Result result = unit.run(std::string("--buzzer --frequency=") + text);
        EXPECT_EQ(result.output, frequencyRefusal);
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

TEST(Buzzer, RefusesVolumesOutsideTheirRange)
{
    for (const char* text : {"2001", "-1", "65535", "67537", "-63535", "99999999999999999999"})
    {
        SCOPED_TRACE(text);
        Unit unit;
        const Result result = unit.run(std::string("--buzzer --volume=") + text);
        EXPECT_EQ(result.output, volumeRefusal);
        EXPECT_EQ(result.calls, callsOn("Buzzer", {}));
    }
}

TEST(Buzzer, WorksInItsOwnOrder)
{
    Unit unit;
    const Result result = unit.run("--buzzer --status=disable --volume=3 --frequency=800");
    EXPECT_EQ(result.output, "Buzzer frequency set to: 800 Hz.\n"
                             "Buzzer volume set to: 3\n"
                             "Buzzer status set to disable.\n");
    EXPECT_EQ(result.calls, callsOn("Buzzer", {"Buzzer_setFrequency(800) = 0", "Buzzer_setVolume(3) = 0",
                                               "Buzzer_setTrigger(0) = 0"}));
}

TEST(Buzzer, SetsTheFrequencyBeforeTheStatus)
{
    Unit unit;
    EXPECT_EQ(unit.run("--buzzer --status=disable --frequency=800").calls,
              callsOn("Buzzer", {"Buzzer_setFrequency(800) = 0", "Buzzer_setTrigger(0) = 0"}));
}

TEST(Buzzer, ReadsAndSetsInOneRun)
{
    Unit unit;
    const Result result = unit.run("--buzzer --status --volume=40 --frequency");
    EXPECT_EQ(result.output, "Buzzer Frequency: 2500\n"
                             "Buzzer volume set to: 40\n"
                             "Buzzer status:  Disabled.\n");
}

TEST(Buzzer, TakesTheLastOfAnOptionGivenTwice)
{
    Unit unit;
    EXPECT_EQ(unit.run("--buzzer --volume=10 --volume").output, "Buzzer Volume: 1000\n");
    EXPECT_EQ(unit.run("--buzzer --volume=10 --volume=").output, "Buzzer Volume: 1000\n");
    EXPECT_EQ(unit.run("--buzzer --volume --volume=10").output, "Buzzer volume set to: 10\n");
    EXPECT_EQ(unit.run("--buzzer --frequency=900 --frequency=950").output,
              "Buzzer frequency set to: 950 Hz.\n");
    EXPECT_EQ(unit.run("--buzzer --frequency=900 --frequency").output, "Buzzer Frequency: 950\n");
    EXPECT_EQ(unit.run("--buzzer --status=Enable --status=Disable").output,
              "Buzzer status set to disable.\n");
    EXPECT_EQ(unit.run("--buzzer --status=Enable --status").output, "Buzzer status:  Disabled.\n");
}

TEST(Buzzer, GoesOnBehindARefusedValue)
{
    Unit unit;
    const Result result = unit.run("--buzzer --frequency=1 --volume=2001 --status=Enable");
    EXPECT_EQ(result.output,
              std::string(frequencyRefusal) + volumeRefusal + "Buzzer status set to enable.\n");
    EXPECT_EQ(result.calls, callsOn("Buzzer", {"Buzzer_setTrigger(1) = 0"}));
}

TEST(Buzzer, RefusesForeignOptionsWithoutReading)
{
    for (const char* option : {"--illuminance", "--led", "--baudrate=5", "--buzzer", "-h", "-v"})
    {
        SCOPED_TRACE(option);
        Unit unit;
        const Result result = unit.run(std::string("--buzzer ") + option);
        EXPECT_EQ(result.output, "Invalid argument\n");
        EXPECT_EQ(result.calls, callsOn("Buzzer", {}));
    }
}

TEST(Buzzer, SaysOnceThatOptionsAreForeign)
{
    Unit unit;
    EXPECT_EQ(unit.run("--buzzer --illuminance --led -v").output, "Invalid argument\n");
}

TEST(Buzzer, RefusesAnUnknownOptionAfterItsDiagnostic)
{
    Unit unit;
    const Result result = unit.runComplaining("--buzzer --bogus");
    EXPECT_EQ(result.output, "Invalid argument\n");
    EXPECT_NE(result.errors.find("unrecognized option '--bogus'"), std::string::npos);
    EXPECT_EQ(result.calls, callsOn("Buzzer", {}));
}

TEST(Buzzer, LetsAnUnknownOptionThroughBesideItsOwn)
{
    for (const char* arguments : {"--buzzer --volume=40 --bogus", "--buzzer --bogus --volume=40"})
    {
        SCOPED_TRACE(arguments);
        Unit unit;
        const Result result = unit.runComplaining(arguments);
        EXPECT_EQ(result.output, "Buzzer volume set to: 40\n");
        EXPECT_EQ(unit["/buzzer/volume"], 40);
    }
}

TEST(Buzzer, LetsAForeignOptionThroughBesideItsOwn)
{
    Unit unit;
    EXPECT_EQ(unit.run("--buzzer --illuminance --volume").output, "Buzzer Volume: 1000\n");
    EXPECT_EQ(unit.run("--buzzer --status -h").output, "Buzzer status:  Disabled.\n");
}

// A value is written behind an equals sign.
TEST(Buzzer, TakesNoWordBehindAnOptionForItsValue)
{
    Unit unit;
    EXPECT_EQ(unit.run("--buzzer --volume 40").output, "Buzzer Volume: 1000\n");
}

TEST(Buzzer, ShowsItsHelpAndReleasesNothing)
{
    Unit unit;
    const Result result = unit.run("--buzzer --help");
    EXPECT_EQ(result.output, help);
    EXPECT_EQ(result.calls, (Calls{"GetBuzzer() = handle"}));
}

TEST(Buzzer, ChangesNothingWhereHelpIsAskedFor)
{
    Unit unit;
    for (const char* arguments : {"--buzzer --help --volume=10", "--buzzer --volume=10 --help",
                                  "--buzzer --illuminance --help", "--buzzer --help --bogus"})
    {
        SCOPED_TRACE(arguments);
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, help);
        EXPECT_EQ(result.calls, (Calls{"GetBuzzer() = handle"}));
    }
    EXPECT_EQ(unit["/buzzer/volume"], nullptr);
}

TEST(Buzzer, ReportsEachFailedOperationAndReleases)
{
    const struct Case
    {
        const char* option;
        const char* operation;
        const char* call;
        const char* output;
    } cases[] = {
        {"--frequency", "Buzzer_getFrequency", "([])", "getFrequency: Error 77\n"},
        {"--frequency=800", "Buzzer_setFrequency", "(800)", "setFrequency: Error 77\n"},
        {"--volume", "Buzzer_getVolume", "([])", "getVolume: Error 77\n"},
        {"--volume=40", "Buzzer_setVolume", "(40)", "setVolume: Error 77\n"},
        {"--status", "Buzzer_getTrigger", "([])", "getTrigger: Error 77\n"},
        {"--status=Enable", "Buzzer_setTrigger", "(1)", "setTrigger: Error 77\n"},
        {"--status=Disable", "Buzzer_setTrigger", "(0)", "setTrigger: Error 77\n"},
    };
    for (const Case& c : cases)
    {
        SCOPED_TRACE(c.option);
        Unit unit;
        unit.fails(c.operation, 77);
        const Result result = unit.run(std::string("--buzzer ") + c.option);
        EXPECT_EQ(result.output, c.output);
        EXPECT_EQ(result.calls, callsOn("Buzzer", {std::string(c.operation) + c.call + " = 77",
                                                   "GetErrorStringA(77) = \"Error 77\""}));
        EXPECT_EQ(unit["/buzzer"], nullptr);
    }
}

TEST(Buzzer, GoesOnBehindAFailedReading)
{
    Unit unit;
    unit.fails("Buzzer_getFrequency", 77);
    unit.fails("Buzzer_getVolume", 78);
    EXPECT_EQ(unit.run("--buzzer").output, "getFrequency: Error 77\n"
                                           "getVolume: Error 78\n"
                                           "Buzzer status:  Disabled.\n");
}

TEST(Buzzer, GoesOnBehindAFailedChange)
{
    Unit unit;
    unit.fails("Buzzer_setFrequency", 77);
    unit.fails("Buzzer_setVolume", 78);
    EXPECT_EQ(unit.run("--buzzer --frequency=800 --volume=40 --status=Enable").output,
              "setFrequency: Error 77\n"
              "setVolume: Error 78\n"
              "Buzzer status set to enable.\n");
}

TEST(Buzzer, FallsSilentWhereTheErrorHasNoText)
{
    Unit unit(R"({"errorTexts": {"77": null}})");
    unit.fails("Buzzer_setFrequency", 77);
    const Result result = unit.run("--buzzer --frequency=800 --volume=40 --status=Enable");
    EXPECT_EQ(result.output, "setFrequency: ");
    EXPECT_EQ(result.calls, callsOn("Buzzer", {"Buzzer_setFrequency(800) = 77", "GetErrorStringA(77) = null",
                                               "Buzzer_setVolume(40) = 0", "Buzzer_setTrigger(1) = 0"}));
}

TEST(Buzzer, PrintsUnsignedNumbersOfFullWidth)
{
    Unit unit(R"({"buzzer": {"frequency": 65535, "volume": 65534}})");
    EXPECT_EQ(unit.run("--buzzer --frequency --volume").output, "Buzzer Frequency: 65535\n"
                                                                "Buzzer Volume: 65534\n");
}

TEST(Buzzer, TakesEveryStatusButZeroForEnabled)
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

TEST(Buzzer, PrintsZeroesWhereNothingWasWritten)
{
    Unit unit(R"({"buzzer": {"enabled": true}})");
    unit.ignores("Buzzer_getFrequency");
    unit.ignores("Buzzer_getVolume");
    unit.ignores("Buzzer_getTrigger");
    EXPECT_EQ(unit.run("--buzzer").output, "Buzzer Frequency: 0\n"
                                           "Buzzer Volume: 0\n"
                                           "Buzzer status:  Disabled.\n");
}

TEST(Buzzer, UsesAHandleThatIsNull)
{
    Unit unit;
    unit.givesNull("GetBuzzer");
    const Result result = unit.run("--buzzer --frequency=800 --status");
    EXPECT_EQ(result.output, "setFrequency: The module handle is not valid\n"
                             "getTrigger: The module handle is not valid\n");
    EXPECT_TRUE(result.calls.back().starts_with("Buzzer_release() = "));
}

TEST(Buzzer, KeepsItsSettingsAcrossABoot)
{
    Unit unit;
    unit.run("--buzzer --frequency=800 --volume=40 --status=Enable");
    unit.shutDown();
    EXPECT_EQ(unit.run("--buzzer").output, "Buzzer Frequency: 800\n"
                                           "Buzzer Volume: 40\n"
                                           "Buzzer status:  Enabled.\n");
}

} // namespace
