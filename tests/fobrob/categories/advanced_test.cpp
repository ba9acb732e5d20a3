#include "support/category_calls.h"

#include <algorithm>
#include <iterator>

namespace
{

const char* const noAction =
    "Invalid argument: Use --help option to get information about the available arguments.\n";
const char* const rescueModeSet =
    "BootMode set to rescue mode. Shutdown (power off) the device and restart it\n";
const char* const relativePath = "Please enter the full path to the file and not a relative path\n";
const char* const superuserNeeded = "This feature requires superuser privileges\n";

// Returns all calls of a run that makes the calls `calls`. `waits` is set if a firmware job is requested.
Calls wholeRun(const Calls& calls, bool waits = false)
{
    Calls work = calls;
    if (waits)
        work.push_back("sleep(100)");
    return callsOf("--advanced", work);
}

Calls rescueCalls(int mode)
{
    return {"GetConfig() = handle", "Config_setNextBootMode(" + std::to_string(mode) + ") = 0",
            "Config_release() = 0"};
}

struct Action
{
    const char* option;
    const char* output;
    Calls calls;
    bool isFirmware = false;
};

// In order of precedence: of several actions, the first one is performed.
const Action actions[] = {
    {"--system_mode",
     "System mode: 0\n",
     {"GetQVAuxPrivate() = handle", "QVAuxPrivate_getSystemMode([0]) = 0", "QVAuxPrivate_release() = 0"}},
    {"--boot_completed",
     "Boot completed successfully.\n",
     {"GetQVAuxPrivate() = handle", "QVAuxPrivate_writeSsRegister(4, 6, 195) = 0",
      "QVAuxPrivate_release() = 0"}},
    {"--rescue_mode_next_boot", rescueModeSet, rescueCalls(3)},
    {"--update=SS", "Invalid argument: No file path added\n", {}, true},
    {"--shutdown", "Shutdown the unit\n", {"FirmwareUpgrade_shutDown() = 0"}},
    {"--factory",
     "Factory reset completed.\n",
     {"GetQVAuxPrivate() = handle", "QVAuxPrivate_writeSsRegister(3, 101, 1) = 0",
      "QVAuxPrivate_release() = 0"}},
};

TEST(Advanced, PerformsEachAction)
{
    for (const Action& action : actions)
    {
        SCOPED_TRACE(action.option);
        Unit unit;
        const Result result = unit.run("--advanced " + std::string(action.option));
        EXPECT_EQ(result.output, action.output);
        EXPECT_EQ(result.calls, wholeRun(action.calls, action.isFirmware));
    }
}

TEST(Advanced, PerformsOneActionAndWaitsIfAFirmwareJobIsRequested)
{
    for (auto first = std::begin(actions); first != std::end(actions); ++first)
        for (auto other = first + 1; other != std::end(actions); ++other)
            for (const auto& [one, two] : {std::pair(first, other), std::pair(other, first)})
            {
                const std::string options = std::string(one->option) + " " + two->option;
                SCOPED_TRACE(options);
                Unit unit;
                const Result result = unit.run("--advanced " + options);
                EXPECT_EQ(result.output, first->output);
                EXPECT_EQ(result.calls, wholeRun(first->calls, first->isFirmware || other->isFirmware));
            }
}

TEST(Advanced, PrefersTheSystemModeToEveryOtherAction)
{
    Unit unit;
    const Result result =
        unit.run("--advanced --factory --shutdown --force --verify=SS --factory_reset "
                 "--rescue_mode_next_boot --boot_completed --filepath=/x.hex --system_mode");
    EXPECT_EQ(result.output, actions[0].output);
    EXPECT_EQ(result.calls, wholeRun(actions[0].calls, true));
}

TEST(Advanced, WaitsIfAVerificationIsRequested)
{
    Unit unit;
    EXPECT_EQ(unit.run("--advanced --verify=SS").calls, wholeRun({}, true));
    EXPECT_EQ(unit.run("--advanced --verify=SS --system_mode").calls, wholeRun(actions[0].calls, true));
}

TEST(Advanced, PerformsARepeatedActionOnce)
{
    for (const Action& action : actions)
    {
        SCOPED_TRACE(action.option);
        Unit unit;
        const std::string option = action.option;
        EXPECT_EQ(unit.run("--advanced " + option + " " + option).calls,
                  wholeRun(action.calls, action.isFirmware));
    }
}

TEST(Advanced, PointsToTheHelpWithoutAnAction)
{
    for (const char* options : {"", "--factory_reset", "--force", "--filepath=/x.hex",
                                "--factory_reset --force --filepath=/x.hex", "word"})
    {
        SCOPED_TRACE(options);
        Unit unit;
        const Result result = unit.run("--advanced " + std::string(options));
        EXPECT_EQ(result.output, noAction);
        EXPECT_EQ(result.calls, wholeRun({}));
    }
}

TEST(Advanced, IgnoresOptionsOfOtherCategories)
{
    for (const char* options : {"-h", "-v", "-hv", "--list", "--buzzer", "--advanced", "--frequency=800",
                                "--setting=3", "--eeprom=main", "--version", "--mode"})
    {
        SCOPED_TRACE(options);
        Unit unit;
        EXPECT_EQ(unit.run("--advanced " + std::string(options)).output, noAction);
        const Result result = unit.run("--advanced " + std::string(options) + " --shutdown");
        EXPECT_EQ(result.output, "Shutdown the unit\n");
        EXPECT_EQ(unit["/buzzer/frequency"], nullptr);
    }
}

TEST(Advanced, IgnoresWordsThatAreNotOptions)
{
    Unit unit;
    EXPECT_EQ(unit.run("--advanced word --system_mode word").output, "System mode: 0\n");
}

TEST(Advanced, AcceptsAnUnambiguousAbbreviation)
{
    Unit unit;
    EXPECT_EQ(unit.run("--advanced --sys").output, "System mode: 0\n");
}

TEST(Advanced, StopsReadingOptionsAtTwoHyphens)
{
    Unit unit;
    EXPECT_EQ(unit.run("--advanced -- --shutdown").output, noAction);
}

struct Mistake
{
    const char* options;
    const char* diagnostic;
};

TEST(Advanced, TreatsAMistypedOptionAsRescueMode)
{
    const Mistake mistakes[] = {
        {"--bogus", "unrecognized option '--bogus'"},
        {"--Shutdown", "unrecognized option '--Shutdown'"},
        {"-x", "invalid option -- 'x'"},
        {"--update", "option '--update' requires an argument"},
        {"--verify", "option '--verify' requires an argument"},
        {"--filepath", "option '--filepath' requires an argument"},
        {"--setting", "option '--setting' requires an argument"},
        {"--shutdown=now", "option '--shutdown' doesn't allow an argument"},
        {"--help=me", "option '--help' doesn't allow an argument"},
        {"--fact", "option '--fact' is ambiguous"},
        {"--shutdown --bogus", "unrecognized option '--bogus'"},
        {"--bogus --factory", "unrecognized option '--bogus'"},
    };
    for (const Mistake& mistake : mistakes)
    {
        SCOPED_TRACE(mistake.options);
        Unit unit;
        const Result result = unit.runExpectingErrors("--advanced " + std::string(mistake.options));
        EXPECT_EQ(result.output, rescueModeSet);
        EXPECT_NE(result.errors.find(mistake.diagnostic), std::string::npos) << result.errors;
        EXPECT_EQ(result.calls, wholeRun(rescueCalls(3)));
        EXPECT_EQ(unit["/boot/nextMode"], "rescue");
    }
}

TEST(Advanced, TreatsAMistypedOptionWithFactoryResetAsBoth)
{
    Unit unit;
    EXPECT_EQ(unit.runExpectingErrors("--advanced --bogus --factory_reset").calls, wholeRun(rescueCalls(4)));
}

TEST(Advanced, PrefersAMistypedOptionToAFirmwareJob)
{
    for (const unsigned user : {0u, 1000u})
    {
        Unit unit;
        unit.userId = user;
        const Result result = unit.runExpectingErrors("--advanced --update=SS --filepath=/x.hex --frce");
        EXPECT_EQ(result.output, rescueModeSet);
        EXPECT_EQ(result.calls, wholeRun(rescueCalls(3), true));
    }
}

TEST(Advanced, PerformsActionsThatPrecedeFirmwareJobsForAnyUser)
{
    const struct
    {
        const char* options;
        std::string output;
    } cases[] = {
        {"--rescue_mode_next_boot --update=SS", rescueModeSet},
        {"--boot_completed --verify=SS", "Boot completed successfully.\n"},
    };
    for (const auto& [options, output] : cases)
    {
        SCOPED_TRACE(options);
        Unit unit;
        unit.userId = 1000;
        const Result result = unit.run("--advanced " + std::string(options));
        EXPECT_EQ(result.output, output);
        EXPECT_EQ(std::count(result.calls.begin(), result.calls.end(), "sleep(100)"), 1);
    }
}

TEST(Advanced, PrefersActionsThatPrecedeRescueModeToAMistypedOption)
{
    Unit unit;
    EXPECT_EQ(unit.runExpectingErrors("--advanced --bogus --boot_completed").output,
              "Boot completed successfully.\n");
    EXPECT_EQ(unit.runExpectingErrors("--advanced --bogus --system_mode").output, "System mode: 0\n");
}

TEST(Advanced, BootsIntoRescueModeWithAFactoryReset)
{
    for (const char* options :
         {"--rescue_mode_next_boot --factory_reset", "--factory_reset --rescue_mode_next_boot"})
    {
        SCOPED_TRACE(options);
        Unit unit;
        const Result result = unit.run("--advanced " + std::string(options));
        EXPECT_EQ(result.output, rescueModeSet);
        EXPECT_EQ(result.calls, wholeRun(rescueCalls(4)));
        EXPECT_EQ(unit["/boot/nextMode"], "rescue with factory reset");
    }
}

TEST(Advanced, PrintsASignedSystemMode)
{
    const struct
    {
        const char* mode;
        const char* output;
    } cases[] = {
        {"\"normal\"", "System mode: 0\n"},
        {"\"rescue\"", "System mode: 1\n"},
        {"7", "System mode: 7\n"},
        {"-1", "System mode: -1\n"},
        {"2147483647", "System mode: 2147483647\n"},
        {"-2147483648", "System mode: -2147483648\n"},
    };
    for (const auto& [mode, output] : cases)
    {
        SCOPED_TRACE(mode);
        Unit unit(R"({"boot": {"systemMode": )" + std::string(mode) + "}}");
        EXPECT_EQ(unit.run("--advanced --system_mode").output, output);
    }
}

TEST(Advanced, PrintsSystemModeZeroIfNothingIsWritten)
{
    Unit unit;
    unit.ignores("QVAuxPrivate_getSystemMode");
    EXPECT_EQ(unit.run("--advanced --system_mode").output, "System mode: 0\n");
}

TEST(Advanced, ChangesTheStateOfTheUnit)
{
    Unit unit(R"({"boot": {"completed": false}, "config": {"suspendMaxTime": 7}})");
    unit.run("--advanced --boot_completed");
    EXPECT_EQ(unit["/boot/completed"], true);
    unit.run("--advanced --factory");
    EXPECT_EQ(unit["/config/suspendMaxTime"], 120);
    unit.run("--advanced --shutdown");
    EXPECT_EQ(unit["/boot/running"], false);
}

TEST(Advanced, RejectsARelativePathBeforeAnythingElse)
{
    for (const char* options :
         {"--filepath=fw.hex", "--filepath=", "--filepath=./fw.hex", "--filepath fw.hex",
          "--filepath=~/fw.hex", "--filepath=noArgument", "--filepath=fw.hex --update=SS",
          "--update=SS --filepath=fw.hex", "--filepath=fw.hex --help", "--system_mode --filepath=fw.hex",
          "--shutdown --filepath=fw.hex", "--filepath=/fw.hex --filepath=fw.hex",
          "--filepath=fw.hex --filepath=/fw.hex", "--filepath=fw.hex --bogus"})
        for (const unsigned userId : {0u, 1000u})
        {
            SCOPED_TRACE(options);
            Unit unit;
            unit.userId = userId;
            const Result result = unit.run("--advanced " + std::string(options));
            EXPECT_EQ(result.output, relativePath);
            EXPECT_EQ(result.calls, callsBeforeOptions("--advanced"));
        }
}

TEST(Advanced, RejectsAPathThatBeginsWithASpaceOrIsEmpty)
{
    Unit unit;
    EXPECT_EQ(unit.run({"--advanced", "--filepath", " /fw.hex"}).output, relativePath);
    EXPECT_EQ(unit.run({"--advanced", "--filepath", ""}).output, relativePath);
}

TEST(Advanced, RequiresTheSuperuserForFirmwareJobs)
{
    for (const char* options :
         {"--update=SS", "--verify=SS", "--update=SS --filepath=/x.hex", "--verify=FPGA --filepath=/x.mcs",
          "--update=Front --force", "--update=bogus", "--update=SS --shutdown", "--factory --verify=SS"})
        for (const unsigned userId : {1u, 1000u, 65534u})
        {
            SCOPED_TRACE(options);
            Unit unit;
            unit.userId = userId;
            const Result result = unit.run("--advanced " + std::string(options));
            EXPECT_EQ(result.output, superuserNeeded);
            EXPECT_EQ(result.calls, callsBeforeOptions("--advanced"));
        }
}

TEST(Advanced, PerformsEveryOtherActionForAnyUser)
{
    for (const Action& action : actions)
    {
        if (action.isFirmware)
            continue;
        SCOPED_TRACE(action.option);
        Unit unit;
        unit.userId = 1000;
        const Result result = unit.run("--advanced " + std::string(action.option));
        EXPECT_EQ(result.output, action.output);
        EXPECT_EQ(result.calls, wholeRun(action.calls));
    }
}

TEST(Advanced, WaitsForAnyUserIfAFirmwareJobIsAlsoRequested)
{
    Unit unit;
    unit.userId = 1000;
    const Result result = unit.run("--advanced --system_mode --update=SS");
    EXPECT_EQ(result.output, "System mode: 0\n");
    EXPECT_EQ(result.calls, wholeRun(actions[0].calls, true));
}

TEST(Advanced, AsksNoQuestionWithoutAFirmwareJob)
{
    Unit unit;
    unit.input = "no\n";
    EXPECT_EQ(unit.run("--advanced --factory").output, "Factory reset completed.\n");
    EXPECT_EQ(unit.run("--advanced --shutdown").output, "Shutdown the unit\n");
}

} // namespace
