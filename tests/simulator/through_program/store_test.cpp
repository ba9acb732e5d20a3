#include "support/children.h"
#include "support/unit.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using nlohmann::json;

constexpr const char* cannotBeWritten = "setVolume: The unit file cannot be written\n";
constexpr const char* cannotBeRead = "getVolume: The unit file cannot be read\n";
constexpr const char* isNotValid = "getVolume: The unit file is not valid\n";

// Runs the program with these environment variables and without QVAUX_UNIT.
Outcome runIn(const std::map<std::string, std::string>& environment, const std::string& arguments)
{
    Command command = programOn("", arguments);
    command.environment.erase("QVAUX_UNIT");
    command.environment.insert(environment.begin(), environment.end());
    return runCommand(command);
}

Outcome runOn(const std::string& unit, const std::string& arguments)
{
    return runCommand(programOn(unit, arguments));
}

Outcome runUnprivileged(const std::string& unit, const std::string& arguments)
{
    return Nobody().run(programOn(unit, arguments));
}

// Simulates a full disk by limiting the file size to 2048 bytes.
Outcome runOnFullDisk(const std::string& unit, const std::string& arguments)
{
    return runCommand(throughShell("trap '' XFSZ; ulimit -f 4; exec \"$@\"", programOn(unit, arguments)));
}

json parsed(const std::string& file)
{
    return json::parse(readFile(file));
}

std::string diagnostic(const std::string& file, const std::string& what)
{
    return "libqv-aux2: " + file + ": " + what + "\n";
}

struct stat statusOf(const std::string& file)
{
    struct stat status = {};
    EXPECT_EQ(stat(file.c_str(), &status), 0) << file;
    return status;
}

TEST(Store, KeepsChangesBetweenProcesses)
{
    Unit unit;
    EXPECT_EQ(unit.run("--buzzer --frequency=800").output, "Buzzer frequency set to: 800 Hz.\n");
    EXPECT_EQ(unit.run("--buzzer --frequency").output, "Buzzer Frequency: 800\n");
    EXPECT_EQ(unit["/buzzer/frequency"], 800);
}

TEST(Store, CreatesAHealthyUnitIfThereIsNone)
{
    const TemporaryDirectory directory;
    const Outcome outcome = runOn(directory / "unit.json", "--buzzer --volume");
    EXPECT_EQ(outcome.output, "Buzzer Volume: 1000\n");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(parsed(directory / "unit.json")["buzzer"],
              (json{{"frequency", 2500}, {"volume", 1000}, {"enabled", false}}));
}

TEST(Store, DoesNotWriteTheFileIfNothingChanges)
{
    const std::string byHand = "{ \"buzzer\" : {\"volume\":40} }";
    Unit unit(byHand);
    const auto before = statusOf(unit.file()).st_ino;
    unit.run("--buzzer --volume");
    unit.run("--buzzer --volume=40");
    EXPECT_EQ(readFile(unit.file()), byHand);
    EXPECT_EQ(statusOf(unit.file()).st_ino, before);
}

// Location of the unit file.

TEST(Store, PrefersQvauxUnitToOtherVariables)
{
    const TemporaryDirectory directory;
    const std::string file = directory / "mine.json";
    runIn({{"QVAUX_UNIT", file}, {"XDG_STATE_HOME", directory / "state"}, {"HOME", directory / "home"}},
          "--buzzer --volume");
    EXPECT_TRUE(fileExists(file));
    EXPECT_FALSE(fileExists(directory / "state"));
    EXPECT_FALSE(fileExists(directory / "home"));
}

TEST(Store, PrefersTheStateDirectoryToTheHomeDirectory)
{
    const TemporaryDirectory directory;
    const Outcome outcome = runIn({{"XDG_STATE_HOME", directory / "a/state"}, {"HOME", directory / "home"}},
                                  "--buzzer --volume=40");
    EXPECT_EQ(outcome.output, "Buzzer volume set to: 40\n");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(parsed(directory / "a/state/qv-aux2/unit.json")["buzzer"]["volume"], 40);
    EXPECT_FALSE(fileExists(directory / "home"));
}

TEST(Store, FallsBackToTheHomeDirectory)
{
    const TemporaryDirectory directory;
    const Outcome outcome =
        runIn({{"QVAUX_UNIT", ""}, {"XDG_STATE_HOME", ""}, {"HOME", directory.path}}, "--buzzer --volume=40");
    EXPECT_EQ(outcome.output, "Buzzer volume set to: 40\n");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(parsed(directory / ".local/state/qv-aux2/unit.json")["buzzer"]["volume"], 40);
}

TEST(Store, FailsIfNoVariableIsSet)
{
    for (const std::map<std::string, std::string>& environment :
         {std::map<std::string, std::string>{}, {{"HOME", ""}}})
    {
        const Outcome outcome = runIn(environment, "--buzzer --volume");
        EXPECT_EQ(outcome.output, "getVolume: The unit file cannot be located\n");
        EXPECT_EQ(outcome.errors,
                  "libqv-aux2: cannot locate the unit file: set QVAUX_UNIT, XDG_STATE_HOME or "
                  "HOME\n");
    }
}

TEST(Store, FailsIfTheDirectoryDoesNotExist)
{
    const TemporaryDirectory directory;
    const Outcome outcome = runOn(directory / "none/unit.json", "--buzzer --volume=40");
    EXPECT_EQ(outcome.output, "setVolume: The unit file cannot be located\n");
    EXPECT_EQ(outcome.errors, diagnostic(directory / "none/unit.json", "its directory does not exist"));
}

TEST(Store, FailsIfADirectoryCannotBeCreated)
{
    const TemporaryDirectory directory;
    writeFile(directory / "home", "");
    const Outcome outcome = runIn({{"HOME", directory / "home"}}, "--buzzer --volume");
    EXPECT_EQ(outcome.output, cannotBeRead);
    EXPECT_EQ(outcome.errors,
              diagnostic(directory / "home/.local/state/qv-aux2/unit.json", "Not a directory"));
}

TEST(Store, AcceptsAPathWithoutADirectory)
{
    const TemporaryDirectory directory;
    const Command command = throughShell("cd " + directory.path + "; exec \"$@\"",
                                         programOn("unit.json", "--buzzer --volume=40"));
    EXPECT_EQ(runCommand(command).output, "Buzzer volume set to: 40\n");
    EXPECT_EQ(parsed(directory / "unit.json")["buzzer"]["volume"], 40);
}

TEST(Store, ChangesTheTargetOfALink)
{
    Unit unit;
    const std::string link = unit.directory / "link";
    std::filesystem::create_symlink("unit.json", unit.directory / "inner");
    std::filesystem::create_symlink(unit.directory / "inner", link);
    EXPECT_EQ(runOn(link, "--buzzer --volume=40").output, "Buzzer volume set to: 40\n");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_TRUE(std::filesystem::is_symlink(unit.directory / "inner"));
    EXPECT_FALSE(std::filesystem::is_symlink(unit.file()));
    EXPECT_EQ(unit["/buzzer/volume"], 40);
}

TEST(Store, CreatesTheTargetOfALink)
{
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory / "kept");
    std::filesystem::create_symlink("kept/unit.json", directory / "link");
    EXPECT_EQ(runOn(directory / "link", "--buzzer --volume=40").output, "Buzzer volume set to: 40\n");
    EXPECT_TRUE(std::filesystem::is_symlink(directory / "link"));
    EXPECT_EQ(parsed(directory / "kept/unit.json")["buzzer"]["volume"], 40);
}

TEST(Store, LocksTheTargetOfALink)
{
    Unit unit(R"({"faults": {"Buzzer_getVolume": {"code": 77, "skip": 1000}}})");
    const std::string link = unit.directory / "link";
    std::filesystem::create_symlink(unit.file(), link);
    std::vector<int> children;
    for (int i = 0; i < 32; ++i)
        children.push_back(startCommand(programOn(i % 2 ? link : unit.file(), "--buzzer --volume")));
    waitForAll(children);
    EXPECT_EQ(unit["/faults/Buzzer_getVolume/skip"], 1000 - 32);
}

// Files that cannot be used.

TEST(Store, RejectsALinkToItself)
{
    const TemporaryDirectory directory;
    std::filesystem::create_symlink("link", directory / "link");
    const Outcome outcome = runOn(directory / "link", "--buzzer --volume");
    EXPECT_EQ(outcome.output, cannotBeRead);
    EXPECT_EQ(outcome.errors, diagnostic(directory / "link", "Too many levels of symbolic links"));
    EXPECT_TRUE(std::filesystem::is_symlink(directory / "link"));
}

TEST(Store, RejectsADirectoryAndAPipe)
{
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory / "directory");
    ASSERT_EQ(mkfifo((directory / "pipe").c_str(), 0666), 0);
    for (const std::string& file : {directory / "directory", directory / "pipe"})
    {
        const Outcome outcome = runOn(file, "--buzzer --volume");
        EXPECT_EQ(outcome.output, cannotBeRead);
        EXPECT_EQ(outcome.errors, diagnostic(file, "not a regular file"));
    }
    EXPECT_TRUE(std::filesystem::is_directory(directory / "directory"));
}

TEST(Store, RejectsAnUnreadableFile)
{
    Unit unit;
    chmod(unit.file().c_str(), 0);
    const Outcome outcome = runUnprivileged(unit.file(), "--buzzer --volume");
    EXPECT_EQ(outcome.output, cannotBeRead);
    EXPECT_EQ(outcome.errors, diagnostic(unit.file(), "Permission denied"));
}

TEST(Store, ReadsAReadOnlyFile)
{
    Unit unit(R"({"buzzer": {"volume": 5}})");
    chmod(unit.file().c_str(), 0444);
    EXPECT_EQ(runUnprivileged(unit.file(), "--buzzer --volume").output, "Buzzer Volume: 5\n");
    const Outcome outcome = runUnprivileged(unit.file(), "--buzzer --volume=40");
    EXPECT_EQ(outcome.output, cannotBeWritten);
    EXPECT_EQ(outcome.errors, diagnostic(unit.file(), "Permission denied"));
    EXPECT_EQ(readFile(unit.file()), R"({"buzzer": {"volume": 5}})");
    EXPECT_FALSE(fileExists(unit.file() + ".new"));
}

TEST(Store, ReadsInAReadOnlyDirectory)
{
    Unit unit(R"({"buzzer": {"volume": 5}})");
    chmod(unit.file().c_str(), 0666);
    chmod(unit.directory.path.c_str(), 0555);
    EXPECT_EQ(runUnprivileged(unit.file(), "--buzzer --volume").output, "Buzzer Volume: 5\n");
    const Outcome outcome = runUnprivileged(unit.file(), "--buzzer --volume=40");
    chmod(unit.directory.path.c_str(), 0777);
    EXPECT_EQ(outcome.output, cannotBeWritten);
    EXPECT_EQ(outcome.errors, diagnostic(unit.file() + ".lock", "Permission denied"));
    EXPECT_EQ(unit["/buzzer/volume"], 5);
}

TEST(Store, CannotCreateAUnitInAReadOnlyDirectory)
{
    const TemporaryDirectory directory;
    chmod(directory.path.c_str(), 0555);
    const Outcome outcome = runUnprivileged(directory / "unit.json", "--buzzer --volume");
    chmod(directory.path.c_str(), 0777);
    EXPECT_EQ(outcome.output, "getVolume: The unit file cannot be written\n");
    EXPECT_EQ(outcome.errors, diagnostic(directory / "unit.json.lock", "Permission denied"));
}

// A change would not be durable if the directory could not be synchronized.
TEST(Store, KeepsTheFileInAnUnreadableDirectory)
{
    Unit unit(R"({"buzzer": {"volume": 5}})");
    chmod(unit.file().c_str(), 0666);
    chmod(unit.directory.path.c_str(), 0333);
    EXPECT_EQ(runUnprivileged(unit.file(), "--buzzer --volume").output, "Buzzer Volume: 5\n");
    const Outcome outcome = runUnprivileged(unit.file(), "--buzzer --volume=40");
    chmod(unit.directory.path.c_str(), 0777);
    EXPECT_EQ(outcome.output, cannotBeWritten);
    EXPECT_EQ(outcome.errors,
              diagnostic(unit.file(), "cannot open its directory for fsync: Permission denied"));
    EXPECT_EQ(readFile(unit.file()), R"({"buzzer": {"volume": 5}})");
    EXPECT_FALSE(fileExists(unit.file() + ".new"));
}

TEST(Store, CreatesNoDirectoryInAnUnreadableDirectory)
{
    const TemporaryDirectory directory;
    chmod(directory.path.c_str(), 0333);
    Command command = programOn("", "--buzzer --volume");
    command.environment.erase("QVAUX_UNIT");
    command.environment["XDG_STATE_HOME"] = directory / "state";
    const Outcome outcome = Nobody().run(command);
    chmod(directory.path.c_str(), 0777);
    EXPECT_EQ(outcome.output, "getVolume: The unit file cannot be written\n");
    EXPECT_EQ(outcome.errors, diagnostic(directory / "state", "Permission denied"));
    EXPECT_FALSE(fileExists(directory / "state"));
}

// The lock file exists, so the new file is the first one that must be created.
TEST(Store, KeepsTheFileIfTheNewOneCannotBeCreated)
{
    Unit unit(R"({"buzzer": {"volume": 5}})");
    writeFile(unit.file() + ".lock", "");
    chmod(unit.file().c_str(), 0666);
    chmod(unit.directory.path.c_str(), 0555);
    const Outcome outcome = runUnprivileged(unit.file(), "--buzzer --volume=40");
    chmod(unit.directory.path.c_str(), 0777);
    EXPECT_EQ(outcome.output, cannotBeWritten);
    EXPECT_EQ(outcome.errors, diagnostic(unit.file() + ".new", "Permission denied"));
    EXPECT_EQ(unit["/buzzer/volume"], 5);
}

TEST(Store, KeepsTheFileOnAFullDisk)
{
    const TemporaryDirectory directory;
    const std::string file = directory / "unit.json";
    runOn(file, "--buzzer --volume=5");
    const std::string before = readFile(file);
    const Outcome outcome = runOnFullDisk(file, "--buzzer --volume=40");
    EXPECT_EQ(outcome.output, cannotBeWritten);
    EXPECT_EQ(outcome.errors, diagnostic(file + ".new", "File too large"));
    EXPECT_EQ(readFile(file), before);
    EXPECT_FALSE(fileExists(file + ".new"));
}

TEST(Store, RejectsAnInvalidFileAndKeepsIt)
{
    const struct
    {
        std::string content;
        std::string expected;
    } cases[] = {
        {"", "line 1, column 1: "},
        {" \n\n", "line 3, column 1: "},
        {"{\n  \"buzzer\": {\n    \"volume\": 40", "line 3, column 17: "},
        {"{\"buzzer\": {\"volume\": 40]}", "line 1, column 25: "},
        {"{\"buzzer\": {\"volume\": 40}}}", "line 1, column 27: "},
        {"{'buzzer': {}}", "line 1, column 2: "},
        {"{\"buzzer\": {},}", "line 1, column 15: "},
        {std::string("\x7f"
                     "ELF\0\0\0\1",
                     8),
         "line 1, column 1: "},
        {std::string(64, '\0'), "line 1, column 1: "},
        {"{\"about\": {\"unitSerial\": \"\xff\"}}", "line 1, column 27: "},
        {"{\"adc\": {\"24V\": 1e999}}", "number overflow parsing '1e999'"},
        {"[]", "/: expected an object, got an array of length 0"},
        {"null", "/: expected an object, got null"},
        {"{\"buzzer\": 40}", "/buzzer: expected an object, got 40"},
        {"{\"buzzer\": {\"volume\": \"40\"}}",
         "/buzzer/volume: expected an integer from 0 to 65535, got \"40\""},
        {"{\"buz\\nzer\": 40}", "/buz\\nzer: unknown key"},
        {std::string(100000, '['), "line 1, column 100001: "},
    };
    for (const auto& [content, expected] : cases)
    {
        SCOPED_TRACE(content.substr(0, 80));
        Unit unit;
        writeFile(unit.file(), content);
        const Result result = unit.runExpectingErrors("--buzzer --volume");
        EXPECT_EQ(result.output, isNotValid);
        EXPECT_THAT(result.errors, testing::StartsWith("libqv-aux2: " + unit.file() + ": " + expected));
        EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1);
        EXPECT_EQ(unit.runExpectingErrors("--buzzer --volume=40").output,
                  "setVolume: The unit file is not valid\n");
        EXPECT_EQ(readFile(unit.file()), content);
    }
}

TEST(Store, ReportsAnErrorOnce)
{
    Unit unit;
    writeFile(unit.file(), "{");
    const Result result = unit.runExpectingErrors("--buzzer --frequency --volume --status");
    EXPECT_EQ(result.output,
              lines({"getFrequency: The unit file is not valid", "getVolume: The unit file is not valid",
                     "getTrigger: The unit file is not valid"}));
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1);
}

// Changes.

TEST(Store, KeepsThePermissionsOfTheFile)
{
    Unit unit;
    for (const mode_t mode : {0600u, 0640u, 0664u, 0666u, 0755u})
    {
        chmod(unit.file().c_str(), mode);
        unit.run("--buzzer --volume=" + std::to_string(mode));
        EXPECT_EQ(statusOf(unit.file()).st_mode & 07777, mode);
        EXPECT_EQ(unit["/buzzer/volume"], mode);
    }
}

TEST(Store, KeepsTheOwnerOfTheFileForRoot)
{
    Unit unit;
    const bool isRoot = chown(unit.file().c_str(), 65534, 65534) == 0;
    unit.run("--buzzer --volume=40");
    EXPECT_EQ(statusOf(unit.file()).st_uid, isRoot ? 65534 : getuid());
    EXPECT_EQ(statusOf(unit.file()).st_gid, isRoot ? 65534 : getgid());
}

TEST(Store, LetsOtherUsersChangeAWorldWritableFile)
{
    Unit unit;
    chmod(unit.file().c_str(), 0666);
    EXPECT_EQ(runUnprivileged(unit.file(), "--buzzer --volume=40").output, "Buzzer volume set to: 40\n");
    EXPECT_EQ(unit["/buzzer/volume"], 40);
    EXPECT_EQ(statusOf(unit.file()).st_mode & 0777, 0666u);
}

TEST(Store, ReplacesTheNewFileOfAKilledProcess)
{
    Unit unit;
    writeFile(unit.file() + ".new", std::string(100000, '{'));
    unit.run("--buzzer --volume=40");
    EXPECT_EQ(unit["/buzzer/volume"], 40);
    EXPECT_FALSE(fileExists(unit.file() + ".new"));
}

// Concurrency.

TEST(Store, CountsCallsAcrossProcesses)
{
    Unit unit;
    unit.failsOnce("Buzzer_getVolume", 77, 1);
    EXPECT_EQ(unit.run("--buzzer --volume").output, "Buzzer Volume: 1000\n");
    EXPECT_EQ(unit.run("--buzzer --volume").output, "getVolume: Error 77\n");
    EXPECT_EQ(unit.run("--buzzer --volume").output, "Buzzer Volume: 1000\n");
}

// FOBROB_LOAD=100 makes each process run the program 100 times.
TEST(Store, CountsTheCallsOf64ConcurrentProcesses)
{
    const char* const load = std::getenv("FOBROB_LOAD");
    const std::string runs = load && *load ? load : "1";
    Unit unit(R"({"faults": {"Buzzer_getVolume": {"code": 77, "skip": 1000000}}})");
    const Command command = throughShell("for i in $(seq " + runs + "); do \"$@\" || exit; done",
                                         programOn(unit.file(), "--buzzer --volume"));
    std::vector<int> children;
    for (int i = 0; i < 64; ++i)
        children.push_back(startCommand(command));
    waitForAll(children);
    EXPECT_EQ(unit["/faults/Buzzer_getVolume/skip"], 1000000 - 64 * std::stoi(runs));
}

TEST(Store, KeepsTheSettingsOfConcurrentCreators)
{
    const struct
    {
        const char* arguments;
        const char* path;
        json value;
    } settings[] = {
        {"--buzzer --frequency=800", "/buzzer/frequency", 800},
        {"--buzzer --volume=40", "/buzzer/volume", 40},
        {"--buzzer --status=enable", "/buzzer/enabled", true},
        {"--backlight --intensity=7", "/backlight/intensity", 7},
        {"--led --color=blue", "/frontLed/color", "blue"},
        {"--led --frequency=2.5", "/frontLed/frequency", 2.5},
        {"--led --pulses=9", "/frontLed/pulses", 9},
        {"--heater --temperature=-3", "/config/heatingLimit", -3},
        {"--can=CAN0 --baudrate=125", "/can/baudrates/0", 125},
        {"--can=CAN1 --baudrate=1000", "/can/baudrates/1", 1000},
        {"--onoff --longpress_time=4000", "/config/longPressTime", 4000},
        {"--onoff --suspend_max_time=33", "/config/suspendMaxTime", 33},
    };
    const TemporaryDirectory directory;
    std::vector<int> children;
    for (int round = 0; round < 4; ++round)
        for (const auto& setting : settings)
            children.push_back(startCommand(programOn(directory / "unit.json", setting.arguments)));
    waitForAll(children);
    for (const auto& setting : settings)
        EXPECT_EQ(parsed(directory / "unit.json")[json::json_pointer(setting.path)], setting.value)
            << setting.arguments;
}

} // namespace
