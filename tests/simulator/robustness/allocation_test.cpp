// Allocations that fail, at any point of the simulated unit.

#include "document/unit_json.h"
#include "simulator/robustness/scenario.h"
#include "simulator/robustness/sweep.h"
#include "support/children.h"
#include "support/failing_malloc.h"
#include "support/firmware_unit.h"

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <new>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

void enable()
{
    allocationFailures.calls = 0;
    allocationFailures.enabled = true;
}

void disable()
{
    allocationFailures.enabled = false;
}

unsigned long countAllocations(const Scenario& scenario)
{
    allocationFailures = {};
    ScenarioRun run(scenario);
    int ends[2];
    if (pipe(ends) != 0)
        return 0;
    const auto report = [&]
    {
        disable();
        if (write(ends[1], &allocationFailures.calls, sizeof allocationFailures.calls) < 0)
            _exit(1);
    };
    run.executeInChild(enable, report);
    unsigned long calls = 0;
    close(ends[1]);
    if (read(ends[0], &calls, sizeof calls) != sizeof calls)
        calls = 0;
    close(ends[0]);
    return calls;
}

void failAtEachAllocation(const Scenario& scenario, bool persistent)
{
    Sweep sweep;
    for (const unsigned long first : pointsToTest(countAllocations(scenario), 80))
    {
        allocationFailures = {first, persistent, false, 0};
        ScenarioRun run(scenario);
        const int status = run.executeInChild(enable, disable);
        sweep.add("allocation " + std::to_string(first), run.judge(status));
        if (run.wasAbortedByJsonLibrary())
            sweep.count("aborted by the JSON library");
    }
    allocationFailures = {};
}

class FailedAllocations : public testing::TestWithParam<Scenario>
{
};

TEST_P(FailedAllocations, AreReported)
{
    failAtEachAllocation(GetParam(), false);
}

TEST_P(FailedAllocations, AreReportedIfAllLaterOnesFailToo)
{
    failAtEachAllocation(GetParam(), true);
}

INSTANTIATE_TEST_SUITE_P(In, FailedAllocations, testing::ValuesIn(scenarios()),
                         [](const auto& instance) { return std::string(instance.param.name); });

// The change adds an object, which the JSON library can leave in an invalid state.
TEST(Update, LeavesValidJsonIfAnAllocationFails)
{
    using document::Json;
    const Json before = {{"buzzer", Json::object()}};
    const Json after = {{"buzzer", {{"volume", 40}}}};
    runInChild("",
               [&]
               {
                   bool failed = true;
                   for (unsigned long first = 1; failed; ++first)
                   {
                       Json json = Json::object();
                       allocationFailures = {first, false, true, 0};
                       try
                       {
                           document::updateJson(json, before, after);
                           failed = allocationFailures.calls >= first;
                       }
                       catch (const std::bad_alloc&)
                       {
                       }
                       disable();
                       EXPECT_TRUE(failed || json == after) << json.dump();
                       EXPECT_NO_THROW(json.dump());
                   }
               });
}

// The program on the simulated unit.

Outcome runWithFailingMalloc(Command command, std::map<std::string, std::string> variables)
{
    command.environment["LD_PRELOAD"] =
        libcInterposer() + ":" + buildDirectory() + "/tests/failing-malloc.so";
    command.environment.merge(variables);
    return runCommand(command);
}

unsigned long countAllocations(const std::string& arguments)
{
    const Unit unit;
    const std::string count = unit.directory / "count";
    runWithFailingMalloc(programOn(unit.file(), arguments), {{"COUNT_ALLOCATIONS", count}});
    return std::stoul(readFile(count));
}

Verdict judgeProgram(const Outcome& outcome, const std::string& before, const Unit& unit)
{
    const bool isOld = readFile(unit.file()) == before;
    const bool isNew = !isOld && unit["/buzzer/volume"] == 40;
    if (!isOld && !isNew)
        return {Defect::loss, "leaves the file " + readFile(unit.file())};
    if (WIFSIGNALED(outcome.status) && WTERMSIG(outcome.status) == SIGABRT)
        return {};
    if (outcome.status != 0)
        return {Defect::other, "ends with wait status " + std::to_string(outcome.status)};
    const bool isReported = outcome.output == "Buzzer volume set to: 40\n";
    if (isReported == isNew)
        return {};
    return {isReported ? Defect::falseSuccess : Defect::loss, "prints " + outcome.output};
}

// The standard library may abort the program. The unit file is then the old one or the new one.
TEST(FailedAllocationsInTheProgram, AreReportedOrAbortIt)
{
    const std::string arguments = "--buzzer --volume=40";
    Sweep sweep;
    for (const unsigned long first : pointsToTest(countAllocations(arguments), 20))
        for (const char* suffix : {"", "+"})
        {
            const std::string failing = std::to_string(first) + suffix;
            const std::string before = R"({"buzzer": {"volume": 5}})";
            const Unit unit(before);
            const Outcome outcome =
                runWithFailingMalloc(programOn(unit.file(), arguments), {{"FAIL_ALLOCATION", failing}});
            sweep.add("allocation " + failing, judgeProgram(outcome, before, unit));
            if (WIFSIGNALED(outcome.status))
                sweep.count("aborted");
        }
}

Command withAddressSpace(unsigned long bytes, Command command)
{
    command.words.insert(command.words.begin(),
                         {"timeout", "20", "prlimit", "--as=" + std::to_string(bytes)});
    return command;
}

// The limits go from less than the program needs to more than an upgrade with an image of 4 MiB needs.
TEST(AddressSpaceLimit, NeverMakesAnUpgradeReportSuccessForAPartOfTheImage)
{
    const std::string content = randomBytes(4 << 20);
    FirmwareUnit unit;
    writeFile(unit.hex, hexFile(content));
    Sweep sweep;
    for (const unsigned long point : pointsToTest(80, 8))
    {
        const unsigned long mebibytes = point + 10;
        writeFile(unit.file(), R"({"firmware": {"pace": 0}})");
        const Command command =
            programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex);
        const Outcome outcome = runCommand(withAddressSpace(mebibytes << 20, command));
        const bool isReported = outcome.output.find("successfully upgraded") != std::string::npos;
        Verdict verdict;
        if (isReported && unit["/firmware/ss/bytes"] != content.size())
            verdict = {Defect::falseSuccess, "upgrades to " + unit["/firmware/ss"].dump()};
        else if (exitStatus(outcome) == 124)
            verdict = {Defect::hang, "does not end"};
        sweep.add(std::to_string(mebibytes) + " MiB", verdict);
        sweep.count(isReported ? "successful" : "failed");
    }
}

TEST(AddressSpaceLimit, IsNotReachedByALongAnswer)
{
    const FirmwareUnit unit;
    Command command =
        withAddressSpace(40 << 20, programOn(unit.file(), "--advanced --update=SS --filepath=" + unit.hex));
    command.environment["PATH"] = "/usr/bin:/bin";
    const Outcome outcome =
        runCommand(throughShell("head -c 60000000 /dev/zero | tr '\\0' y | \"$@\"", command));
    EXPECT_TRUE(outcome.output.ends_with("Upgrade aborted.\n")) << outcome.output << outcome.errors;
}

} // namespace
