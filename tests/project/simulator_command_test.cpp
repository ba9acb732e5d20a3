// fobrob-sim of the native build. It does not depend on the build under test.

#include "support/hex_file.h"
#include "support/unit.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/wait.h>

namespace
{

using testing::HasSubstr;

const std::string directory = BUILD_DIRECTORY "/simulator";
const char* const hint = "To get help how to use Fobrob, add --help or -h as options.\n";

Outcome runSim(const Unit& unit, std::vector<std::string> words,
               std::map<std::string, std::string> environment = {})
{
    words.insert(words.begin(), directory + "/fobrob-sim");
    environment.insert({{"PATH", "/usr/bin:/bin"}, {"QVAUX_UNIT", unit.file()}});
    return runCommand({.words = words, .environment = environment});
}

// An executable script in the directory of the unit.
std::string script(const Unit& unit, const std::string& name, const std::string& text)
{
    const std::string path = unit.directory / name;
    writeFile(path, "#!/bin/sh\n" + text);
    std::filesystem::permissions(path, std::filesystem::perms::all);
    return path;
}

std::string upgradeOption(const Unit& unit)
{
    writeFile(unit.directory / "ss.hex", hexFile("new"));
    return "--filepath=" + unit.directory / "ss.hex";
}

TEST(SimulatorCommand, RunsFobrobUnlessACommandIsGiven)
{
    const Unit unit;
    EXPECT_EQ(runSim(unit, {"--buzzer", "--volume=40"}).output, "Buzzer volume set to: 40\n");
    EXPECT_EQ(unit["/buzzer/volume"], 40);
    EXPECT_EQ(runSim(unit, {}).output, hint);
    EXPECT_EQ(runSim(unit, {""}).output, hint);
    EXPECT_EQ(runSim(unit, {"--help"}).output, helpScreen("general"));
}

TEST(SimulatorCommand, RunsAnyCommandOnTheSimulatedUnit)
{
    const Unit unit(R"({"buzzer": {"volume": 7}})");
    const std::string volume = "Buzzer Volume: 7\n";
    EXPECT_EQ(runSim(unit, {"fobrob", "--buzzer", "--volume"}).output, volume);
    EXPECT_EQ(runSim(unit, {"sh", "-c", "fobrob --buzzer --volume"}).output, volume);
    EXPECT_EQ(runSim(unit, {script(unit, "read-volume", "fobrob --buzzer --volume\n")}).output, volume);
    EXPECT_EQ(runSim(unit, {"sh", "-c",
                            "cd " + unit.directory.path + " && " + directory + "/fobrob-sim ./read-volume"})
                  .output,
              volume);
    EXPECT_EQ(runSim(unit, {"printf", "%s|", "a b", "", "*", "--led"}).output, "a b||*|--led|");
}

TEST(SimulatorCommand, PutsTheSimulatedUnitBeforeOtherLibraries)
{
    const Unit unit;
    const std::map<std::string, std::string> other = {{"LD_LIBRARY_PATH", BUILD_DIRECTORY "/tests/partial"}};
    EXPECT_EQ(runSim(unit, {"--buzzer", "--volume"}, other).output, "Buzzer Volume: 1000\n");
    EXPECT_EQ(runSim(unit, {"printenv", "LD_LIBRARY_PATH"}, other).output,
              directory + ":" + other.at("LD_LIBRARY_PATH") + "\n");
    EXPECT_EQ(runSim(unit, {"printenv", "LD_LIBRARY_PATH"}).output, directory + "\n");
}

TEST(SimulatorCommand, FindsTheProgramOfTheBuildTreeFirst)
{
    const Unit unit;
    script(unit, "fobrob", "echo another program\n");
    EXPECT_EQ(
        runSim(unit, {"fobrob", "--buzzer", "--volume"}, {{"PATH", unit.directory.path + ":/usr/bin:/bin"}})
            .output,
        "Buzzer Volume: 1000\n");
}

TEST(SimulatorCommand, FindsTheProgramOfTheUserFirstIfItIsInstalled)
{
    const TemporaryDirectory prefix;
    const Outcome installed = runCommand({.words = {"cmake", "--install", BUILD_DIRECTORY, "--component",
                                                    "simulator", "--prefix", prefix.path},
                                          .environment = {{"PATH", std::getenv("PATH")}}});
    ASSERT_EQ(installed.status, 0) << installed.errors;
    EXPECT_THAT(installed.output, HasSubstr("fobrob-simulator/no-wait.so\n"));
    const Unit unit;
    script(unit, "fobrob", "echo another program: \"$@\"\n");
    const std::map<std::string, std::string> path = {{"PATH", unit.directory.path + ":/usr/bin:/bin"}};
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--led"}, {"fobrob", "--led"}, {"sh", "-c", "fobrob --led"}})
    {
        std::vector<std::string> words = arguments;
        words.insert(words.begin(), prefix / "bin/fobrob-sim");
        EXPECT_EQ(runCommand({.words = words, .environment = path}).output, "another program: --led\n");
    }
}

TEST(SimulatorCommand, PassesOnTheExitStatusAndSignals)
{
    const Unit unit;
    EXPECT_EQ(exitStatus(runSim(unit, {"sh", "-c", "exit 3"})), 3);
    EXPECT_EQ(exitStatus(runSim(unit, {"--nonsense"})), 0);
    const Outcome killed = runSim(unit, {"sh", "-c", "kill -TERM $$"});
    EXPECT_TRUE(WIFSIGNALED(killed.status));
    EXPECT_EQ(WTERMSIG(killed.status), SIGTERM);
}

TEST(SimulatorCommand, ReportsACommandThatCannotBeRun)
{
    const Unit unit;
    const Outcome missing = runSim(unit, {"no-such-command"});
    EXPECT_EQ(exitStatus(missing), 127);
    EXPECT_THAT(missing.errors, HasSubstr("no-such-command"));
    const Outcome notExecutable = runSim(unit, {unit.file()});
    EXPECT_EQ(exitStatus(notExecutable), 126);
    EXPECT_THAT(notExecutable.errors, HasSubstr(unit.file()));
}

// A wait is ended after a second, so that the test does not last as long as the wait.
TEST(SimulatorCommand, WaitsAfterAFirmwareCommand)
{
    const Unit unit(R"({"firmware": {"pace": 0}})");
    EXPECT_EQ(
        exitStatus(runSim(
            unit, {"timeout", "1", "fobrob", "--advanced", "--update=SS", "--force", upgradeOption(unit)},
            {{"LD_PRELOAD", BUILD_DIRECTORY "/tests/libc-interposer.so"}})),
        124);
}

TEST(SimulatorCommand, DoesNotWaitOnRequest)
{
    const auto start = std::chrono::steady_clock::now();
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{}, {"fobrob"}, {"sh", "-c", "fobrob \"$@\"", "sh"}})
    {
        const Unit unit(R"({"firmware": {"pace": 0}})");
        std::vector<std::string> words = {"--no-wait"};
        words.insert(words.end(), command.begin(), command.end());
        for (const std::string word : {"--advanced", "--update=SS", "--force"})
            words.push_back(word);
        words.push_back(upgradeOption(unit));
        const Outcome outcome =
            runSim(unit, words, {{"LD_PRELOAD", BUILD_DIRECTORY "/tests/libc-interposer.so"}});
        EXPECT_EQ(exitStatus(outcome), 0);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_THAT(outcome.output, HasSubstr("\nSS successfully upgraded. \n"));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

TEST(SimulatorCommand, PreloadsNothingUnlessRequested)
{
    const Unit unit;
    const std::vector<std::string> print = {"sh", "-c", "echo \"${LD_PRELOAD-unset}\""};
    EXPECT_EQ(runSim(unit, print).output, "unset\n");
    EXPECT_EQ(runSim(unit, {"--no-wait", "sh", "-c", print.back()}).output, directory + "/no-wait.so\n");
    const std::string other = BUILD_DIRECTORY "/tests/libc-interposer.so";
    EXPECT_EQ(runSim(unit, {"--no-wait", "sh", "-c", print.back()}, {{"LD_PRELOAD", other}}).output,
              directory + "/no-wait.so:" + other + "\n");
}

TEST(SimulatorCommand, TakesNoWaitOnlyAsTheFirstArgument)
{
    const Unit unit;
    EXPECT_EQ(runSim(unit, {"--no-wait"}).output, hint);
    EXPECT_EQ(runSim(unit, {"--no-wait", "--buzzer", "--volume"}).output, "Buzzer Volume: 1000\n");
    EXPECT_EQ(runSim(unit, {"echo", "--no-wait"}).output, "--no-wait\n");
    EXPECT_THAT(runSim(unit, {"--buzzer", "--volume", "--no-wait"}).errors, HasSubstr("'--no-wait'"));
}

} // namespace
