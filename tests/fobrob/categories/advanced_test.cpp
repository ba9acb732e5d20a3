#include "support/unit.h"

#include <algorithm>
#include <iterator>

namespace
{

const char* const help =
    "Category - Advanced\n"
    "This category is used to perform advanced settings, such as: update the System \n"
    "Supervisor firmware, shutdown the unit or reset to factory settings.\n"
    "\n"
    "Usage\n"
    "The category should not be passed an argument. There are six options available:\n"
    "--update, --verify, --filepath, --shutdown, --factory and --force.\n"
    "The options that can and must be combined are: --update and --verify with --filepath. --force is optional.\n"
    "See the table below for available arguments.\n"
    "\n"
    "Update notes\n"
    "To update the System Supervisor, the FPGA or the Front, the filepath option must be used and the argument must point to the file which will be used. Once the \n"
    "filepath has been added, it is checked if it is valid and that the file extension is correct.\n"
    "The --force option disables the confirmation question - could be used when scripting.\n"
    "\n"
    " CATEGORY\tARG\tOPTION\t\tARG\tOPTION\t\tARG\n"
    "--advanced\t\t--update=\tSS\t--filepath=\t[File path]\t--force\n"
    "Update the system supervisor. Don't ask questions.\n"
    "--advanced\t\t--update=\tFPGA\t--filepath=\t[File path]\n"
    "Update the FPGA.\n"
    "--advanced\t\t--verify=\tSS\t--filepath=\t[File path]\n"
    "Verify the system supervisor.\n"
    "--advanced\t\t--verify=\tFPGA\t--filepath=\t[File path]\n"
    "Verify the FPGA.\n"
    "--advanced\t\t--verify=\tFront\t--filepath=\t[File path]\n"
    "Verify the front microcontroller.\n"
    "--advanced\t\t--rescue_mode_next_boot\t[--factory_reset]\t\tNext boot will be in rescue mode.\n"
    "--advanced\t\t--system_mode\t\t\tReturn current system mode.\n"
    "--advanced\t\t--boot_completed\t\t\tAcknowledge boot completed to System Supervisor.\n"
    "\t\t\t\t\t\t\n"
    "--advanced\t\t--shutdown\t\t\t\t\t\tShutdown the unit.\n"
    "--advanced\t\t--factory\t\t\t\t\t\tReset the System Supervisor settings to default values.\n";

const char* const noAction =
    "Invalid argument: Use --help option to get information about the available arguments.\n";
const char* const rescueModeSet =
    "BootMode set to rescue mode. Shutdown (power off) the device and restart it\n";
const char* const relativePath = "Please enter the full path to the file and not a relative path\n";
const char* const superuserNeeded = "This feature requires superuser privileges\n";

const Calls opening{"GetFirmwareUpgrade() = handle", "GetAbout() = handle"};

// All calls of a run that reaches its end: `calls` between the first and the last ones.
Calls wholeRun(const Calls& calls, bool waits = false)
{
    Calls whole = opening;
    whole.insert(whole.end(), calls.begin(), calls.end());
    if (waits)
        whole.push_back("sleep(100)");
    whole.insert(whole.end(), {"About_release() = 0", "FirmwareUpgrade_release() = 0"});
    return whole;
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

// Each comes before all that stand behind it.
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

TEST(Advanced, PerformsEachActionBetweenTheFirstAndTheLastCalls)
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

TEST(Advanced, PerformsOneActionAloneAndWaitsWhereverFirmwareWorkWasAskedFor)
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

TEST(Advanced, PrefersTheSystemModeToEverythingTogether)
{
    Unit unit;
    const Result result =
        unit.run("--advanced --factory --shutdown --force --verify=SS --factory_reset "
                 "--rescue_mode_next_boot --boot_completed --filepath=/x.hex --system_mode");
    EXPECT_EQ(result.output, actions[0].output);
    EXPECT_EQ(result.calls, wholeRun(actions[0].calls, true));
}

TEST(Advanced, WaitsForVerificationsAskedForAsForUpgrades)
{
    Unit unit;
    EXPECT_EQ(unit.run("--advanced --verify=SS").calls, wholeRun({}, true));
    EXPECT_EQ(unit.run("--advanced --verify=SS --system_mode").calls, wholeRun(actions[0].calls, true));
}

TEST(Advanced, PerformsAnActionGivenTwiceOnce)
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

TEST(Advanced, IgnoresTheOptionsOfOthers)
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

TEST(Advanced, ReadsOptionsBehindWordsThatAreNone)
{
    Unit unit;
    EXPECT_EQ(unit.run("--advanced word --system_mode word").output, "System mode: 0\n");
}

TEST(Advanced, TakesAnOptionAtItsUnambiguousBeginning)
{
    Unit unit;
    EXPECT_EQ(unit.run("--advanced --sys").output, "System mode: 0\n");
}

TEST(Advanced, TakesNoOptionBehindTheTwoDashes)
{
    Unit unit;
    EXPECT_EQ(unit.run("--advanced -- --shutdown").output, noAction);
}

struct Mistake
{
    const char* options;
    const char* diagnostic;
};

TEST(Advanced, TakesAMistakeForTheRescueMode)
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
        const Result result = unit.runComplaining("--advanced " + std::string(mistake.options));
        EXPECT_EQ(result.output, rescueModeSet);
        EXPECT_NE(result.errors.find(mistake.diagnostic), std::string::npos) << result.errors;
        EXPECT_EQ(result.calls, wholeRun(rescueCalls(3)));
        EXPECT_EQ(unit["/boot/nextMode"], "rescue");
    }
}

TEST(Advanced, TakesAMistakeBesideTheFactoryResetForBoth)
{
    Unit unit;
    EXPECT_EQ(unit.runComplaining("--advanced --bogus --factory_reset").calls, wholeRun(rescueCalls(4)));
}

TEST(Advanced, TakesAMistakeForTheRescueModeEvenBesideFirmwareWork)
{
    for (const unsigned user : {0u, 1000u})
    {
        Unit unit;
        unit.userId = user;
        const Result result = unit.runComplaining("--advanced --update=SS --filepath=/x.hex --frce");
        EXPECT_EQ(result.output, rescueModeSet);
        EXPECT_EQ(result.calls, wholeRun(rescueCalls(3), true));
    }
}

TEST(Advanced, DoesTheActionsBeforeFirmwareWorkForAnybody)
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

TEST(Advanced, PrefersTheActionsBeforeTheRescueModeToAMistake)
{
    Unit unit;
    EXPECT_EQ(unit.runComplaining("--advanced --bogus --boot_completed").output,
              "Boot completed successfully.\n");
    EXPECT_EQ(unit.runComplaining("--advanced --bogus --system_mode").output, "System mode: 0\n");
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

TEST(Advanced, PrintsTheSystemModeSigned)
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

TEST(Advanced, PrintsSystemModeZeroWhereNothingWasWritten)
{
    Unit unit;
    unit.ignores("QVAuxPrivate_getSystemMode");
    EXPECT_EQ(unit.run("--advanced --system_mode").output, "System mode: 0\n");
}

TEST(Advanced, ChangesTheUnit)
{
    Unit unit(R"({"boot": {"completed": false}, "config": {"suspendMaxTime": 7}})");
    unit.run("--advanced --boot_completed");
    EXPECT_EQ(unit["/boot/completed"], true);
    unit.run("--advanced --factory");
    EXPECT_EQ(unit["/config/suspendMaxTime"], 120);
    unit.run("--advanced --shutdown");
    EXPECT_EQ(unit["/boot/running"], false);
}

TEST(Advanced, ShowsItsHelpAndDoesNothingElse)
{
    for (const char* options :
         {"--help", "--shutdown --help", "--system_mode --help", "--update=SS --filepath=/x.hex --help",
          "--help --filepath=x.hex", "--frequency --help", "word --help", "--force --help --shutdown"})
    {
        SCOPED_TRACE(options);
        Unit unit;
        const Result result = unit.run("--advanced " + std::string(options));
        EXPECT_EQ(result.output, help);
        EXPECT_EQ(result.calls, opening);
    }
}

TEST(Advanced, ShowsItsHelpAfterAMistakeWithoutTheRescueMode)
{
    Unit unit;
    const Result result = unit.runComplaining("--advanced --bogus --help");
    EXPECT_EQ(result.output, help);
    EXPECT_EQ(result.calls, opening);
}

TEST(Advanced, StopsAtARelativePathBeforeAnythingElse)
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
            EXPECT_EQ(result.calls, opening);
        }
}

TEST(Advanced, StopsAtARelativePathThatBeginsWithABlank)
{
    Unit unit;
    EXPECT_EQ(unit.run({"--advanced", "--filepath", " /fw.hex"}).output, relativePath);
    EXPECT_EQ(unit.run({"--advanced", "--filepath", ""}).output, relativePath);
}

TEST(Advanced, LeavesFirmwareWorkToTheSuperuser)
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
            EXPECT_EQ(result.calls, opening);
        }
}

TEST(Advanced, PerformsEveryOtherActionForAnybody)
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

TEST(Advanced, WaitsForAnybodyWhoAskedForFirmwareWorkBehindAnotherAction)
{
    Unit unit;
    unit.userId = 1000;
    const Result result = unit.run("--advanced --system_mode --update=SS");
    EXPECT_EQ(result.output, "System mode: 0\n");
    EXPECT_EQ(result.calls, wholeRun(actions[0].calls, true));
}

TEST(Advanced, AsksNothingWithoutFirmwareWork)
{
    Unit unit;
    unit.input = "no\n";
    EXPECT_EQ(unit.run("--advanced --factory").output, "Factory reset completed.\n");
    EXPECT_EQ(unit.run("--advanced --shutdown").output, "Shutdown the unit\n");
}

struct Failure
{
    const char* option;
    const char* operation;
    const char* label; // with what stands before it
    Calls calls;
};

const Failure failures[] = {
    {"--system_mode",
     "QVAuxPrivate_getSystemMode",
     "Failed to get system mode: ",
     {"GetQVAuxPrivate() = handle", "QVAuxPrivate_getSystemMode([]) = 77",
      "GetErrorStringA(77) = \"Error 77\"", "QVAuxPrivate_release() = 0"}},
    {"--boot_completed",
     "QVAuxPrivate_writeSsRegister",
     "Failed to mark boot completed: ",
     {"GetQVAuxPrivate() = handle", "QVAuxPrivate_writeSsRegister(4, 6, 195) = 77",
      "GetErrorStringA(77) = \"Error 77\"", "QVAuxPrivate_release() = 0"}},
    {"--rescue_mode_next_boot",
     "Config_setNextBootMode",
     "setNextBootMode: ",
     {"GetConfig() = handle", "Config_setNextBootMode(3) = 77", "GetErrorStringA(77) = \"Error 77\"",
      "Config_release() = 0"}},
    {"--rescue_mode_next_boot --factory_reset",
     "Config_setNextBootMode",
     "setNextBootMode: ",
     {"GetConfig() = handle", "Config_setNextBootMode(4) = 77", "GetErrorStringA(77) = \"Error 77\"",
      "Config_release() = 0"}},
    {"--shutdown",
     "FirmwareUpgrade_shutDown",
     "Shutdown the unit\nshutDown: ",
     {"FirmwareUpgrade_shutDown() = 77", "GetErrorStringA(77) = \"Error 77\""}},
    {"--factory",
     "QVAuxPrivate_writeSsRegister",
     "Factory reset failed: ",
     {"GetQVAuxPrivate() = handle", "QVAuxPrivate_writeSsRegister(3, 101, 1) = 77",
      "QVAuxPrivate_release() = 0", "GetErrorStringA(77) = \"Error 77\""}},
};

TEST(Advanced, ReportsAFailedActionAndReleases)
{
    for (const Failure& failure : failures)
    {
        SCOPED_TRACE(failure.option);
        Unit unit;
        unit.fails(failure.operation, 77);
        const Result result = unit.run("--advanced " + std::string(failure.option));
        EXPECT_EQ(result.output, failure.label + std::string("Error 77\n"));
        EXPECT_EQ(result.calls, wholeRun(failure.calls));
    }
}

TEST(Advanced, WaitsBehindAnActionThatFailsToo)
{
    for (const Failure& failure : failures)
    {
        SCOPED_TRACE(failure.option);
        if (std::string(failure.option) == "--shutdown" || std::string(failure.option) == "--factory")
            continue; // behind firmware work in the order of the actions
        Unit unit;
        unit.fails(failure.operation, 77);
        const Result result = unit.run("--advanced --update=SS " + std::string(failure.option));
        EXPECT_EQ(result.output, failure.label + std::string("Error 77\n"));
        EXPECT_EQ(result.calls, wholeRun(failure.calls, true));
    }
}

TEST(Advanced, FallsSilentWhereTheErrorHasNoTextAndStillReleases)
{
    for (const Failure& failure : failures)
    {
        SCOPED_TRACE(failure.option);
        Unit unit(R"({"errorTexts": {"77": null}})");
        unit.fails(failure.operation, 77);
        const Result result = unit.run("--advanced " + std::string(failure.option));
        EXPECT_EQ(result.output, failure.label);
        EXPECT_EQ(result.calls.back(), "FirmwareUpgrade_release() = 0");
    }
}

TEST(Advanced, LeavesTheUnitAloneWhereAnActionFails)
{
    Unit unit(R"({"boot": {"completed": false}, "config": {"suspendMaxTime": 7}})");
    for (const Failure& failure : failures)
        unit.fails(failure.operation, 77);
    const nlohmann::json before = unit.content();
    for (const Failure& failure : failures)
        unit.run("--advanced " + std::string(failure.option));
    EXPECT_EQ(unit.content(), before);
}

TEST(Advanced, ResetsNothingWithoutPrivateAccess)
{
    Unit unit;
    unit.givesNull("GetQVAuxPrivate");
    const Result result = unit.run("--advanced --factory");
    EXPECT_EQ(result.output, "Initialization error. Settings are not reset.\n");
    EXPECT_EQ(result.calls, wholeRun({"GetQVAuxPrivate() = null"}));
}

TEST(Advanced, UsesEveryOtherHandleThatIsNull)
{
    const struct
    {
        const char* option;
        const char* obtained;
        const char* released;
        const char* output;
    } cases[] = {
        {"--system_mode", "GetQVAuxPrivate", "QVAuxPrivate_release() = 3", "Failed to get system mode: "},
        {"--boot_completed", "GetQVAuxPrivate", "QVAuxPrivate_release() = 3",
         "Failed to mark boot completed: "},
        {"--rescue_mode_next_boot", "GetConfig", "Config_release() = 3", "setNextBootMode: "},
        {"--shutdown", "GetFirmwareUpgrade", "FirmwareUpgrade_release() = 3",
         "Shutdown the unit\nshutDown: "},
    };
    for (const auto& [option, obtained, released, output] : cases)
    {
        SCOPED_TRACE(option);
        Unit unit;
        unit.givesNull(obtained);
        const Result result = unit.run("--advanced " + std::string(option));
        EXPECT_EQ(result.output, output + std::string("The module handle is not valid\n"));
        EXPECT_EQ(std::ranges::count(result.calls, released), 1);
    }
}

TEST(Advanced, ResetsToFactorySettingsWithoutTheDisplaysModule)
{
    Unit unit;
    unit.givesNull("GetAbout");
    const Result result = unit.run("--advanced --factory");
    EXPECT_EQ(result.output, "Factory reset completed.\n");
    EXPECT_EQ(result.calls,
              (Calls{"GetFirmwareUpgrade() = handle", "GetAbout() = null", "GetQVAuxPrivate() = handle",
                     "QVAuxPrivate_writeSsRegister(3, 101, 1) = 0", "QVAuxPrivate_release() = 0",
                     "About_release() = 3", "FirmwareUpgrade_release() = 0"}));
}

TEST(Advanced, TakesNoNoticeOfAFailedRelease)
{
    Unit unit;
    for (const char* release :
         {"About_release", "FirmwareUpgrade_release", "QVAuxPrivate_release", "Config_release"})
        unit.fails(release, 77);
    EXPECT_EQ(unit.run("--advanced --factory").output, "Factory reset completed.\n");
    const Result result = unit.run("--advanced --rescue_mode_next_boot");
    EXPECT_EQ(result.output, rescueModeSet);
    EXPECT_EQ(result.calls,
              (Calls{"GetFirmwareUpgrade() = handle", "GetAbout() = handle", "GetConfig() = handle",
                     "Config_setNextBootMode(3) = 0", "Config_release() = 77", "About_release() = 77",
                     "FirmwareUpgrade_release() = 77"}));
}

} // namespace
