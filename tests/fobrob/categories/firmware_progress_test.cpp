// The output for each state of a job, and the end of the job.

#include "firmware_jobs.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <span>

using nlohmann::json;

namespace
{

// A unit whose jobs report the given statuses.
struct ScriptedUnit : FirmwareUnit
{
    explicit ScriptedUnit(const json& statuses)
    {
        set("/firmware/statuses", statuses);
    }

    // Upgrades the System Supervisor.
    Result follow()
    {
        return run("--advanced --update=SS --force --filepath=" + hex);
    }
};

// Returns the output of an upgrade that reports the statuses, from the first state on.
std::string progress(const json& statuses)
{
    ScriptedUnit unit(statuses);
    const std::string output = unit.follow().output;
    const std::string beginning = fileCorrect + upgradeBegins;
    EXPECT_TRUE(output.starts_with(beginning)) << output;
    return output.substr(std::min(beginning.size(), output.size()));
}

std::string failureReport(const std::string& state, unsigned code)
{
    return "Update progress\nUpgrade failed in state: " + state + ".\nError: Error " + std::to_string(code) +
           "\n";
}

TEST(FirmwareProgress, PrintsEachStateOnceWhenItIsEntered)
{
    ScriptedUnit unit(states({0, 0, 1, 4, 4, 6}));
    const Result result = unit.follow();
    EXPECT_EQ(result.output, fileCorrect + upgradeBegins +
                                 lines({"Initiating", "Preparing communication", "Flashing", "Done"}) +
                                 ssUpgraded);
    const auto isStatusCall = [](const std::string& call)
    { return call.starts_with("FirmwareUpgrade_getUpgradeStatus("); };
    EXPECT_EQ(std::ranges::count_if(result.calls, isStatusCall), 6);
}

TEST(FirmwareProgress, PrintsAStateAgainWhenTheJobReturnsToIt)
{
    EXPECT_EQ(progress(states({4, 5, 4, 5, 5, 0, 4, 6})),
              lines({"Flashing", "Verifying", "Flashing", "Verifying", "Initiating", "Flashing", "Done"}) +
                  ssUpgraded);
}

struct State
{
    int value;
    const char* name;
    const char* reportName;
};

const State workingStates[] = {
    {INT_MIN, "Unknown state", "Unknown state"},
    {-2, "Unknown state", "Unknown state"},
    {0, "Initiating", "Initiating"},
    {1, "Preparing communication", "Preparing communication"},
    {2, "Reading File", "Reading File"},
    {3, "Converting file", "Converting file"},
    {4, "Flashing", "Flashing"},
    {5, "Verifying", "Verifying"},
};

const State lastStates[] = {
    {6, "Done", "Done"},
    {7, "Done - ERROR", "Complete with error"},
    {8, "Unknown state", "Unknown state"},
    {9, "Unknown state", "Unknown state"},
    {INT_MAX, "Unknown state", "Unknown state"},
};

TEST(FirmwareProgress, ContinuesInAWorkingStateWithoutAnError)
{
    for (const auto& [value, name, reportName] : workingStates)
    {
        SCOPED_TRACE(value);
        EXPECT_EQ(progress(states({value, value, 6})), lines({name, "Done"}) + ssUpgraded);
    }
}

TEST(FirmwareProgress, SucceedsInAFinalStateWithoutAnError)
{
    for (const auto& [value, name, reportName] : lastStates)
    {
        SCOPED_TRACE(value);
        EXPECT_EQ(progress(states({value})), lines({name}) + ssUpgraded);
    }
}

TEST(FirmwareProgress, ReportsAnErrorInAnyState)
{
    for (const auto& list : {std::span<const State>(workingStates), std::span<const State>(lastStates)})
        for (const auto& [value, name, reportName] : list)
        {
            SCOPED_TRACE(value);
            EXPECT_EQ(progress(script({{value, 0, 77}})), lines({name}) + failureReport(reportName, 77));
        }
}

TEST(FirmwareProgress, ReportsAFailureInAStateThatWasAlreadyPrinted)
{
    EXPECT_EQ(progress(script({{4, 0, 0}, {4, 0, 77}})), lines({"Flashing"}) + failureReport("Flashing", 77));
}

TEST(FirmwareProgress, DoesNotPrintAFirstStateOfMinusOne)
{
    EXPECT_EQ(progress(states({-1, -1, 6})), lines({"Done"}) + ssUpgraded);
    EXPECT_EQ(progress(script({{-1, 0, 77}})), failureReport("Unknown state", 77));
    EXPECT_EQ(progress(states({0, -1, 6})), lines({"Initiating", "Unknown state", "Done"}) + ssUpgraded);
}

TEST(FirmwareProgress, PrintsUnknownStateOnceForEachUnknownState)
{
    EXPECT_EQ(progress(states({-2, -3, -3, 6})),
              lines({"Unknown state", "Unknown state", "Done"}) + ssUpgraded);
}

TEST(FirmwareProgress, Reports32BitErrorCodes)
{
    for (const unsigned code : {1000u, 0x80000000u, 0xFFFFFFFFu, 0x10000u})
        EXPECT_EQ(progress(script({{6, 0, code}})), "Done\n" + failureReport("Done", code));
}

TEST(FirmwareProgress, IgnoresTheSecondFieldOfTheStatus)
{
    for (const int second : {-1, 1, INT_MIN, INT_MAX})
        EXPECT_EQ(progress(script({{4, second, 0}, {6, second, 0}})),
                  lines({"Flashing", "Done"}) + ssUpgraded);
}

TEST(FirmwareProgress, ReportsAFailureIdenticallyForAllJobs)
{
    for (const Job& job : jobs)
    {
        SCOPED_TRACE(job.options);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", script({{5, 0, 77}}));
        const Result result = job.run(unit);
        EXPECT_EQ(result.output, job.beginning() + "Verifying\n" + failureReport("Verifying", 77));
        Calls calls = job.start(unit, 0);
        calls.push_back("FirmwareUpgrade_getUpgradeStatus([5, 0, 77], 1) = 0");
        calls.push_back("GetErrorStringA(77) = \"Error 77\"");
        EXPECT_EQ(result.calls, wholeRun(calls));
    }
}

TEST(FirmwareProgress, SuppressesOutputIfTheErrorOfAJobHasNoText)
{
    ScriptedUnit unit(script({{3, 0, 77}}));
    unit.set("/errorTexts", {{"77", nullptr}});
    const Result result = unit.follow();
    EXPECT_EQ(result.output, fileCorrect + upgradeBegins +
                                 "Converting file\nUpdate progress\n"
                                 "Upgrade failed in state: Converting file.\nError: ");
    EXPECT_EQ(result.calls.at(result.calls.size() - 3), "sleep(100)");
}

TEST(FirmwareProgress, IgnoresFailedStatusCalls)
{
    ScriptedUnit unit(states({1, 4, 6}));
    unit.set("/faults/FirmwareUpgrade_getUpgradeStatus", {{"code", 77}, {"skip", 2}, {"times", 3}});
    const Result result = unit.follow();
    EXPECT_EQ(result.output, fileCorrect + upgradeBegins +
                                 lines({"Preparing communication", "Flashing", "Done"}) + ssUpgraded);
    EXPECT_EQ(std::ranges::count(result.calls, "FirmwareUpgrade_getUpgradeStatus([], 1) = 77"), 3);
    EXPECT_EQ(std::ranges::count(result.calls, "GetErrorStringA(77) = \"Error 77\""), 0);
}

TEST(FirmwareProgress, PrintsInitiatingUntilAStatusCallSucceeds)
{
    ScriptedUnit unit(states({4, 6}));
    unit.set("/faults/FirmwareUpgrade_getUpgradeStatus", {{"code", 77}, {"times", 2}});
    EXPECT_EQ(unit.follow().output,
              fileCorrect + upgradeBegins + lines({"Initiating", "Flashing", "Done"}) + ssUpgraded);
}

TEST(FirmwareProgress, ContinuesIfSomeStatusCallsWriteNothing)
{
    ScriptedUnit unit(states({4, 6}));
    unit.set("/faults/FirmwareUpgrade_getUpgradeStatus", {{"ignored", true}, {"skip", 1}, {"times", 2}});
    EXPECT_EQ(unit.follow().output, fileCorrect + upgradeBegins + lines({"Flashing", "Done"}) + ssUpgraded);
}

TEST(FirmwareProgress, PollsTheStatusWithoutALimitOrADelay)
{
    const FirmwareUnit unit;
    Command command = programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex);
    command.environment["LD_PRELOAD"] += ":" + buildDirectory() + "/tests/upgrade-status-interposer.so";
    const auto start = std::chrono::steady_clock::now();
    const Outcome outcome = runCommand(command);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(outcome.output, fileCorrect + upgradeBegins + lines({"Initiating", "Done"}) + ssUpgraded);
}

} // namespace
