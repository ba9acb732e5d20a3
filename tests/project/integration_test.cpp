// docs/integration.md and the examples. The example scripts run the program under test on a simulated unit.
// The commands of the document run in a copy of the sources.

#include "support/snippets.h"
#include "support/unit.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <sstream>

namespace
{

using testing::HasSubstr;

const char* const document = PROJECT_DIRECTORY "/docs/integration.md";
const char* const scriptingDocument = PROJECT_DIRECTORY "/docs/scripting.md";

std::string example(const std::string& name)
{
    return PROJECT_DIRECTORY "/examples/" + name;
}

// Returns the names of all files in examples/.
std::vector<std::string> exampleFiles()
{
    std::vector<std::string> contents;
    for (const auto& file : std::filesystem::directory_iterator(example("")))
        contents.push_back(readFile(file.path()));
    return contents;
}

// Returns the commands of the document as one script.
std::string commands()
{
    const std::vector<std::string> files = exampleFiles();
    std::string script;
    for (const std::string& snippet : snippets(document))
        if (std::ranges::find(files, snippet) == files.end())
            script += snippet;
    return script;
}

// Returns the part of `text` between the first `begin` and the next `end`.
std::string between(const std::string& begin, const std::string& end, const std::string& text)
{
    const std::size_t at = text.find(begin);
    EXPECT_NE(at, text.npos) << begin;
    return at == text.npos
               ? ""
               : text.substr(at + begin.size(), text.find(end, at + begin.size()) - at - begin.size());
}

Outcome runShell(const std::string& script)
{
    return runCommand({.words = {"sh", "-euc", script}, .environment = {{"PATH", std::getenv("PATH")}}});
}

TEST(Integration, ShowsEveryExample)
{
    std::vector<std::string> shown = snippets(document);
    for (const std::string& snippet : snippets(scriptingDocument))
        shown.push_back(snippet);
    EXPECT_THAT(shown, testing::IsSupersetOf(exampleFiles()));
}

// Returns the preset of the build under test. It selects the linker for the processor.
std::string preset()
{
    const std::string name = std::filesystem::path(buildDirectory()).filename();
    const std::string presets = readFile(PROJECT_DIRECTORY "/CMakePresets.json");
    const bool known = presets.find("\"name\": \"" + name + "\"") != presets.npos;
    return known ? name : "release";
}

// A unit's library that lacks an operation and has another SONAME. It is removed after the build: the program
// must not look for it there.
TEST(Integration, BuildsAndInstallsWithTheCommandsOfTheDocument)
{
    namespace fs = std::filesystem;
    const TemporaryDirectory work;
    const fs::path sources = work / "sources";
    fs::create_directory(sources);
    for (const char* part :
         {"CMakeLists.txt", "CMakePresets.json", "completions", "docs", "examples", "man", "src", "tools"})
        fs::copy(fs::path(PROJECT_DIRECTORY) / part, sources / part, fs::copy_options::recursive);
    const std::string library = readFile(simulatorDirectory() + "/libqv-aux2.so.2.11");
    writeFile(work / "libqv-aux2.so.2.11", replaced(replaced(library, "Buzzer_setVolume", "Buzzer_setvolume"),
                                                    "aux2.so.2.11", "aux2.so.2.12"));

    const std::string check = "tools/check-device-library /path/to/libqv-aux2.so.2.11";
    const std::string documented = replaced(commands(), check, check + " || test $? = 1");
    const std::string script = replaced(replaced(documented, "release", preset()), "/path/to", work.path);
    const Outcome outcome = runShell("cd " + sources.string() + "\n" + script);
    EXPECT_EQ(exitStatus(outcome), 0) << outcome.output << outcome.errors;
    for (const std::string& report : {outcome.output, outcome.errors}) // of the check, and of CMake
    {
        EXPECT_THAT(report, HasSubstr("SONAME is libqv-aux2.so.2.12, expected libqv-aux2.so.2.11\n"));
        EXPECT_THAT(report, HasSubstr("missing operation: Buzzer_setVolume, called by --buzzer\n"));
        EXPECT_THAT(report, HasSubstr("affected: --buzzer\n"));
    }
    EXPECT_FALSE(fileExists(sources / "build/unit/simulator"));
    EXPECT_FALSE(fileExists(sources / "build/unit/tests"));
    EXPECT_TRUE(fileExists(work / "image/usr/share/man/man1/fobrob.1"));
    EXPECT_TRUE(fileExists(work / "image/usr/share/zsh/site-functions/_fobrob"));
    EXPECT_TRUE(
        fileExists(work / "image/etc/systemd/system/multi-user.target.wants/fobrob-boot-completed.service"));

    const Unit unit;
    Command command = programOn(unit.file(), "--lightsensor");
    std::ranges::replace(command.words, programPath(), work / "image/usr/bin/fobrob");
    fs::remove(work / "libqv-aux2.so.2.11");
    EXPECT_EQ(runCommand(command).output, "Illuminance: 320\n");
}

// Integrators have neither GoogleTest nor the compiler whose warnings we know.
TEST(Integration, ExpectsTestsAndNoWarningsOnlyInThePresetsForDevelopment)
{
    const auto variables = [](const std::string& name)
    { return runShell("cd " PROJECT_DIRECTORY "; cmake -N --preset " + name).output; };
    for (const char* name : {"release", "armhf", "arm64"})
    {
        EXPECT_THAT(variables(name), HasSubstr("CMAKE_BUILD_TYPE=\"Release\""));
        EXPECT_THAT(variables(name), testing::Not(HasSubstr("BUILD_TESTING")));
        EXPECT_THAT(variables(name), testing::Not(HasSubstr("WARNING_AS_ERROR")));
    }
    for (const char* name : {"debug", "sanitizers", "coverage"})
    {
        EXPECT_THAT(variables(name), HasSubstr("BUILD_TESTING=\"ON\""));
        EXPECT_THAT(variables(name), HasSubstr("CMAKE_COMPILE_WARNING_AS_ERROR=\"ON\""));
    }
}

// Always the native program: the command does not use the emulator.
TEST(Scripting, RunsTheExampleOnTheSimulatedUnit)
{
    std::string script;
    for (const std::string& snippet : snippets(scriptingDocument))
        if (snippet == "./try examples/provision\n")
            script += replaced(snippet, "./try", BUILD_DIRECTORY "/simulator/fobrob-sim");
    const Unit unit;
    const Outcome outcome =
        runShell("cd " PROJECT_DIRECTORY "\nexport QVAUX_UNIT=" + unit.file() + "\n" + script);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output, "The unit has its settings.\n");
    EXPECT_EQ(unit["/config/heatingLimit"], -5);
}

// CMake warns about a variable that the project does not use.
TEST(Integration, GivesCMakeOnlyVariablesOfTheProjectInTheRecipe)
{
    const TemporaryDirectory work;
    const std::string recipe = readFile(example("fobrob_2.9.0.bb"));
    const std::string directory = BUILD_DIRECTORY "/simulator"; // CMake builds for this machine
    const std::string options =
        replaced(between("EXTRA_OECMAKE = \"", "\"", recipe), "${STAGING_LIBDIR}", directory);
    const Outcome outcome = runShell("cmake -S " PROJECT_DIRECTORY " -B " + work.path + " " + options);
    EXPECT_EQ(exitStatus(outcome), 0);
    EXPECT_EQ(outcome.errors, "");
    const std::string cache = readFile(work / "CMakeCache.txt");
    EXPECT_THAT(cache, HasSubstr("\nBUILD_TESTING:BOOL=OFF\n"));
    EXPECT_THAT(cache, HasSubstr("QV_AUX2_LIBRARY:FILEPATH=" + directory + "/libqv-aux2.so.2.11\n"));
}

// The program, its manual page, the documents and the service are packaged by default. FILES has to name the
// rest.
TEST(Integration, PackagesEveryInstalledFileInTheRecipe)
{
    const TemporaryDirectory image;
    const std::string recipe = readFile(example("fobrob_2.9.0.bb"));
    const std::string script = "D=" + image.path +
                               " S=" PROJECT_DIRECTORY " systemd_system_unitdir=/usr/lib/systemd/system\n" +
                               "DESTDIR=$D cmake --install " + buildDirectory() + " --prefix /usr\n" +
                               between("do_install:append() {\n", "\n}", recipe);
    EXPECT_EQ(exitStatus(runShell(script)), 0);
    std::istringstream named(
        replaced(between("FILES:${PN} += \"", "\"", recipe), "${datadir}", "/usr/share"));
    std::vector<std::string> directories = {"/usr/bin", "/usr/share/doc", "/usr/share/man",
                                            "/usr/lib/systemd/system"};
    directories.insert(directories.end(), std::istream_iterator<std::string>(named), {});
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(image.path))
    {
        const std::string path = entry.path().string().substr(image.path.size());
        if (entry.is_directory())
            continue;
        ++files;
        EXPECT_TRUE(std::ranges::any_of(directories, [&](const auto& directory)
                                        { return path.starts_with(directory + "/"); }))
            << path;
    }
    EXPECT_EQ(files, 8u + exampleFiles().size());
}

TEST(Integration, InstallsTheDocumentsThatTheManualPagesName)
{
    const TemporaryDirectory image;
    const std::string install =
        "DESTDIR=" + image.path + " cmake --install " + buildDirectory() + " --prefix /usr";
    EXPECT_EQ(exitStatus(runShell(install + "\n" + install + " --component simulator")), 0);
    std::size_t documents = 0;
    for (const std::string page : {"fobrob", "fobrob-sim"})
    {
        const std::string text = readFile(image / ("usr/share/man/man1/" + page + ".1"));
        const std::string seeAlso = text.substr(text.find("\n.Sh SEE ALSO\n"));
        EXPECT_EQ(matches("\n\\.Xr (.*)", seeAlso), page == "fobrob" ? Calls{} : Calls{"fobrob 1"});
        for (const std::string& path : matches("Pa (/.*)", seeAlso))
        {
            ++documents;
            EXPECT_TRUE(fileExists(image.path + path)) << path;
        }
    }
    EXPECT_EQ(documents, 3u);
    EXPECT_EQ(exitStatus(runShell("test -x " + image.path + "/usr/share/doc/fobrob/examples/provision")), 0);
}

TEST(Integration, NamesTheRecipeAfterTheVersion)
{
    EXPECT_THAT(readFile(PROJECT_DIRECTORY "/CMakeLists.txt"), HasSubstr("project(fobrob VERSION 2.9.0.0 "));
    EXPECT_TRUE(fileExists(example("fobrob_2.9.0.bb")));
}

// Returns the command of the service, parsed as systemd does.
std::vector<std::string> bootCompletedCommand()
{
    const std::string service = readFile(example("fobrob-boot-completed.service"));
    const std::string script = between("\nExecStart=/bin/sh -c '", "'\n", service);
    EXPECT_EQ(script.find_first_of("'\\%"), script.npos) << "systemd gives this character a special meaning";
    return {"/bin/sh", "-c", replaced(script, "$$", "$")};
}

TEST(BootCompletedService, IsWellFormed)
{
    const Outcome outcome = runCommand(
        {.words = {"systemd-analyze", "verify", "--man=no", example("fobrob-boot-completed.service")},
         .environment = {{"PATH", std::getenv("PATH")}}});
    EXPECT_EQ(exitStatus(outcome), 0);
    EXPECT_THAT(outcome.errors, Not(HasSubstr("fobrob-boot-completed")));
}

TEST(BootCompletedService, AcknowledgesTheBoot)
{
    const Unit unit(R"({"boot": {"completed": false}})");
    const Outcome outcome = runOn(unit, bootCompletedCommand());
    EXPECT_EQ(exitStatus(outcome), 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "Boot completed successfully.\n");
    EXPECT_EQ(unit["/boot/completed"], true);
}

TEST(BootCompletedService, FailsWithTheReasonIfTheUnitRejectsIt)
{
    Unit unit(R"({"boot": {"completed": false}})");
    unit.fails("QVAuxPrivate_writeSsRegister", 2);
    const Outcome outcome = runOn(unit, bootCompletedCommand());
    EXPECT_EQ(exitStatus(outcome), 1);
    EXPECT_EQ(outcome.output, "Failed to mark boot completed: Not supported by this unit\n");
    EXPECT_EQ(unit["/boot/completed"], false);
}

TEST(BootCompletedService, FailsWithoutTheProgram)
{
    const Outcome outcome = runOn(Unit(), bootCompletedCommand(), {{"PATH", "/does/not/exist"}});
    EXPECT_EQ(exitStatus(outcome), 1);
    EXPECT_THAT(outcome.errors, HasSubstr("fobrob: not found"));
}

Outcome provision(const Unit& unit, const std::vector<std::string>& options = {})
{
    std::vector<std::string> words = {example("provision")};
    words.insert(words.end(), options.begin(), options.end());
    return runOn(unit, words);
}

TEST(Provision, GivesAUnitItsSettings)
{
    const Unit unit(R"({"config": {"startupPower": {"can": false}}})");
    const Outcome outcome = provision(unit);
    EXPECT_EQ(exitStatus(outcome), 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output, "The unit has its settings.\n");
    EXPECT_EQ(unit["/config/powerOnStartup"], true);
    EXPECT_EQ(unit["/config/suspendMaxTime"], 240);
    EXPECT_EQ(unit["/config/heatingLimit"], -5);
    EXPECT_EQ(unit["/config/startupPower/can"], true);
    EXPECT_EQ(unit["/can/baudrates/0"], 500);
    EXPECT_EQ(unit["/backlight/automatic"], true);
}

TEST(Provision, FindsItsSettingsAfterABoot)
{
    Unit unit;
    EXPECT_EQ(exitStatus(provision(unit)), 0);
    unit.shutDown();
    EXPECT_EQ(exitStatus(provision(unit, {"--check"})), 0);
    EXPECT_EQ(exitStatus(provision(unit)), 0);
}

TEST(Provision, DetectsLostSettingsAndRestoresThem)
{
    Unit unit;
    EXPECT_EQ(exitStatus(provision(unit)), 0);
    unit.run("--advanced --factory");
    const Outcome outcome = provision(unit, {"--check"});
    EXPECT_EQ(exitStatus(outcome), 1);
    EXPECT_EQ(outcome.errors, "provision: fobrob --onoff --always_on: expected 'PowerOnStartup: Enabled', "
                              "got 'PowerOnStartup: Disabled'\n");
    EXPECT_EQ(exitStatus(provision(unit)), 0);
    EXPECT_EQ(exitStatus(provision(unit, {"--check"})), 0);
}

TEST(Provision, ReportsTheStepThatFails)
{
    const struct
    {
        const char* keys;
        const char* step;
        const char* output;
    } cases[] = {
        {R"({"faults": {"Config_setSuspendMaxTime": {"code": 77}}})", "--onoff --suspend_max_time=240",
         "'setSuspendMaxTime: Error 77'"},
        {R"({"faults": {"Config_setSuspendMaxTime": {"code": 77}}, "errorTexts": {"77": null}})",
         "--onoff --suspend_max_time=240", "'setSuspendMaxTime: '"},
        {R"({"faults": {"Config_setSuspendMaxTime": {"ignored": true}}})", "--onoff --suspend_max_time",
         "'SuspendMaxTime: 120min'"},
        {R"({"faults": {"Config_getSuspendMaxTime": {"code": 77}}})", "--onoff --suspend_max_time",
         "'getSuspendMax: Error 77'"},
        {R"({"faults": {"GetBacklight": {"null": true}}})", "--backlight --automatic=Enabled",
         "The module handle is not valid"},
        {R"({"about": {"display": false}})", "--backlight --automatic=Enabled", "Not supported by this unit"},
        {R"({"faults": {"About_getNrOfCANConnections": {"ignored": true}}})", "--can=CAN0 --baudrate=500",
         "No valid arguments could be found."},
        {R"({"buzzer": {"volum": 5}})", "--onoff --always_on=Enabled", "The unit file is not valid"},
    };
    for (const auto& [keys, step, output] : cases)
    {
        SCOPED_TRACE(keys);
        const Outcome outcome = provision(Unit(keys));
        EXPECT_EQ(exitStatus(outcome), 1);
        EXPECT_THAT(outcome.errors,
                    testing::StartsWith("provision: fobrob " + std::string(step) + ": expected "));
        EXPECT_THAT(outcome.errors, HasSubstr(output));
        EXPECT_EQ(outcome.output, "");
    }
}

TEST(Provision, StopsAtTheStepThatFailsAndCanBeRunAgain)
{
    Unit unit;
    unit.failsOnce("Config_setSuspendMaxTime", 77);
    EXPECT_EQ(exitStatus(provision(unit)), 1);
    EXPECT_EQ(unit["/config/powerOnStartup"], true);
    EXPECT_EQ(unit["/config/heatingLimit"], nullptr);
    EXPECT_EQ(exitStatus(provision(unit)), 0);
}

TEST(Provision, FailsWithoutTheProgram)
{
    const Outcome outcome = runOn(Unit(), {example("provision")}, {{"PATH", "/does/not/exist"}});
    EXPECT_EQ(exitStatus(outcome), 1);
    EXPECT_THAT(outcome.errors, HasSubstr("fobrob: not found"));
}

TEST(Provision, RejectsAnUnknownOption)
{
    EXPECT_EQ(exitStatus(provision(Unit(), {"--chek"})), 2);
}

const char* const firmware = ":12000000465756455253494F4E3D312E31332E302E3768\n" // FWVERSION=1.13.0.7
                             ":00000001FF\n";

struct RollOut
{
    Outcome outcome;
    std::string calls; // of the firmware operations and sleep
};

RollOut rollOut(const Unit& unit, const std::string& target, const std::string& file,
                const std::string& user = "0")
{
    const std::string trace = unit.directory / "trace";
    const Outcome outcome = runOn(unit, {example("upgrade-firmware"), target, file},
                                  {{"QVAUX_TRACE", trace}, {"FAKE_UID", user}});
    std::string calls;
    for (const std::string& line : splitLines(readFile(trace)))
        if (line.starts_with("FirmwareUpgrade_s") || line.starts_with("sleep"))
            calls += line.substr(0, line.find('(')) + " ";
    return {outcome, calls};
}

TEST(UpgradeFirmware, UpgradesVerifiesAndShutsTheUnitDown)
{
    const struct
    {
        const char* target;
        const char* file;
        const char* calls;
        const char* version;
    } cases[] = {
        {"SS", "ss.hex", "FirmwareUpgrade_startSSUpgrade sleep FirmwareUpgrade_startSSVerification sleep ",
         "SSVersion: 1.13.0.7\n"},
        {"FPGA", "fpga.mcs",
         "FirmwareUpgrade_startFpgaUpgrade sleep FirmwareUpgrade_startFpgaVerification sleep ",
         "FPGAVersion: 1.13.0.7\n"},
        {"Front", "front.hex",
         "FirmwareUpgrade_startFrontUpgrade sleep FirmwareUpgrade_startFrontVerification sleep ",
         "FrontVersion: 1.13.0.7\n"},
    };
    for (const auto& [target, file, calls, version] : cases)
    {
        SCOPED_TRACE(target);
        Unit unit(R"({"firmware": {"pace": 0}})");
        writeFile(unit.directory / file, firmware);
        const RollOut run = rollOut(unit, target, unit.directory / file);
        EXPECT_EQ(exitStatus(run.outcome), 0) << run.outcome.output;
        EXPECT_EQ(run.outcome.errors, "");
        EXPECT_EQ(run.calls, std::string(calls) + "FirmwareUpgrade_shutDown ");
        if (target == std::string("SS"))
            unit.cutPower();
        EXPECT_EQ(unit.run("--version=" + std::string(target)).output, version);
    }
}

TEST(UpgradeFirmware, ReportsTheStepThatFailsAndLeavesTheUnitOn)
{
    const struct
    {
        const char* keys;
        const char* target;
        const char* file;
        const char* failed;
        const char* output;
        const char* user = "0";
    } cases[] = {
        {"{}", "SS", "/good.hex", "upgrade SS", "This feature requires superuser privileges", "1000"},
        {"{}", "SS", "/missing.hex", "upgrade SS", "File does not exist."},
        {"{}", "FPGA", "/good.hex", "upgrade FPGA", "File format is incorrect."},
        {"{}", "SS", "/broken.hex", "upgrade SS", "Upgrade failed in state: "},
        {R"({"about": {"display": false}})", "Front", "/good.hex", "upgrade Front", "No FrontMCU present."},
        {R"({"faults": {"FirmwareUpgrade_startSSUpgrade": {"code": 77}}})", "SS", "/good.hex", "upgrade SS",
         "startSSUpgrade: Error 77"},
        {R"({"firmware": {"statuses": [{"state": 4}, {"state": 7, "error": 77}]}})", "SS", "/good.hex",
         "upgrade SS", "Upgrade failed in state: Complete with error.\nError: Error 77\n"},
        {R"({"faults": {"FirmwareUpgrade_startSSVerification": {"code": 77}}})", "SS", "/good.hex",
         "verify SS", "startSSVerification: Error 77"},
        {R"({"faults": {"FirmwareUpgrade_shutDown": {"code": 77}}})", "SS", "/good.hex", "shut the unit down",
         "shutDown: Error 77"},
    };
    for (const auto& [keys, target, file, failed, output, user] : cases)
    {
        SCOPED_TRACE(output);
        Unit unit(keys);
        unit.set("/firmware/pace", 0);
        writeFile(unit.directory / "good.hex", firmware);
        writeFile(unit.directory / "broken.hex", ":00000000FF\n");
        const RollOut run = rollOut(unit, target, unit.directory.path + file, user);
        EXPECT_EQ(exitStatus(run.outcome), 1);
        EXPECT_EQ(run.outcome.errors, "upgrade-firmware: failed to " + std::string(failed) + "\n");
        EXPECT_THAT(run.outcome.output, HasSubstr(output));
        EXPECT_THAT(unit["/boot/running"], testing::AnyOf(true, nullptr));
    }
}

// The error text contains everything that the program prints on success.
TEST(UpgradeFirmware, DoesNotTrustAnErrorText)
{
    const std::string success =
        "x\nFile format is correct.\nThis upgrade can take a few minutes to perform.\nDone\n"
        "SS successfully upgraded. \n"
        "Please shut down the computer and cut the power in order for the update to take effect.";
    for (const char* keys : {R"({"faults": {"FirmwareUpgrade_startSSUpgrade": {"code": 77}}})",
                             R"({"firmware": {"statuses": [{"state": 4}, {"state": 4, "error": 77}]}})"})
    {
        SCOPED_TRACE(keys);
        Unit unit(keys);
        unit.set("/firmware/pace", 0);
        unit.set("/errorTexts/77", success);
        writeFile(unit.directory / "ss.hex", firmware);
        const RollOut run = rollOut(unit, "SS", unit.directory / "ss.hex");
        EXPECT_THAT(run.outcome.output, HasSubstr("\nSS successfully upgraded. \n"));
        EXPECT_EQ(run.outcome.errors, "upgrade-firmware: failed to upgrade SS\n");
        EXPECT_EQ(exitStatus(run.outcome), 1);
        EXPECT_THAT(run.calls, testing::Not(HasSubstr("shutDown")));
    }
}

TEST(UpgradeFirmware, FailsIfThePathIsRelative)
{
    const RollOut run = rollOut(Unit(), "SS", "ss.hex");
    EXPECT_EQ(exitStatus(run.outcome), 1);
    EXPECT_THAT(run.outcome.output, testing::StartsWith("Please enter the full path"));
}

// fobrob is not called, because it would set rescue mode if it did not recognise an option.
TEST(UpgradeFirmware, RejectsAnUnknownTarget)
{
    const RollOut run = rollOut(Unit(), "ALL", "/ss.hex");
    EXPECT_EQ(exitStatus(run.outcome), 2);
    EXPECT_EQ(run.calls, "");
}

} // namespace
