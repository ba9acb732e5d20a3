#include "device/qv_aux2.h"
#include "support/firmware_unit.h"
#include "support/terminal.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <filesystem>
#include <span>

using nlohmann::json;

namespace
{

const std::string upgradeQuestion =
    "This operation may cause harm to your device.\nDo you wish to continue [yes/no]?\n";
const std::string verificationQuestion = "Do you wish to continue [yes/no]?\n";
const std::string fileCorrect = "File format is correct.\n";
const std::string upgradeBegins = "This upgrade can take a few minutes to perform.\n";
const std::string verificationBegins = "This verification can take a few minutes to perform.\n";
const std::string ssUpgraded =
    "SS successfully upgraded. \n"
    "Please shut down the computer and cut the power in order for the update to take effect.\n";

// All calls of a run: `calls` between the first ones, and the wait and the releases that close all firmware
// work.
Calls wholeRun(const Calls& calls)
{
    Calls whole{"GetFirmwareUpgrade() = handle", "GetAbout() = handle"};
    whole.insert(whole.end(), calls.begin(), calls.end());
    whole.insert(whole.end(), {"sleep(100)", "About_release() = 0", "FirmwareUpgrade_release() = 0"});
    return whole;
}

// The statuses that a unit reports, the last for good.
json script(std::initializer_list<UpgradeStatus> list)
{
    json statuses = json::array();
    for (const auto& [state, second, error] : list)
        statuses.push_back({{"state", state}, {"second", second}, {"error", error}});
    return statuses;
}

// The same with these states and no error.
json states(std::initializer_list<int> list)
{
    json statuses = json::array();
    for (const int state : list)
        statuses.push_back({{"state", state}});
    return statuses;
}

struct Work
{
    const char* options;   // "--update=SS"
    const char* extension; // "hex"
    const char* operation; // "startSSUpgrade"
    const char* success;

    bool upgrades() const
    {
        return std::string(options).starts_with("--update");
    }

    bool isForFront() const
    {
        return std::string(options).ends_with("Front");
    }

    std::string file(const FirmwareUnit& unit) const
    {
        return std::string(extension) == "mcs" ? unit.mcs : unit.hex;
    }

    Result run(FirmwareUnit& unit) const
    {
        return unit.run("--advanced " + std::string(options) + " --filepath=" + file(unit));
    }

    // What is printed up to the start of the job.
    std::string beginning() const
    {
        return upgrades() ? fileCorrect + upgradeQuestion + upgradeBegins
                          : fileCorrect + verificationQuestion + verificationBegins;
    }

    // The calls up to the start of the job, which answers `code`.
    Calls start(const FirmwareUnit& unit, unsigned code) const
    {
        Calls calls;
        if (isForFront())
            calls.push_back("About_getIsDisplayAvailable([1]) = 0");
        calls.push_back("FirmwareUpgrade_" + std::string(operation) + "(\"" + file(unit) +
                        "\", 0) = " + std::to_string(code));
        return calls;
    }
};

const Work works[] = {
    {"--update=SS", "hex", "startSSUpgrade",
     "SS successfully upgraded. \n"
     "Please shut down the computer and cut the power in order for the update to take effect.\n"},
    {"--update=FPGA", "mcs", "startFpgaUpgrade",
     "FPGA successfully upgraded. \n"
     "Please shut down the computer in order for the update to take effect.\n"},
    {"--update=Front", "hex", "startFrontUpgrade",
     "Front successfully upgraded. \n"
     "Please shut down the computer in order for the update to take effect.\n"},
    {"--verify=SS", "hex", "startSSVerification",
     "SS successfully verified. \n"
     "Please shut down the computer and cut the power in order to restart the SS.\n"},
    {"--verify=FPGA", "mcs", "startFpgaVerification", "FPGA successfully verified. \n\n"},
    {"--verify=Front", "hex", "startFrontVerification",
     "Front successfully verified. \n"
     "Please shut down the computer in order for the front uC to restart itself.\n"},
};

TEST(Firmware, UpgradesAndVerifiesEachTarget)
{
    FirmwareUnit unit;
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        EXPECT_EQ(work.run(unit).output, work.beginning() +
                                             (work.upgrades() ? upgradeProgress : verificationProgress) +
                                             work.success);
    }
}

TEST(Firmware, CallsWhatEachTargetNeedsAndWaitsAndReleases)
{
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", script({{6, 42, 0}}));
        Calls calls = work.start(unit, 0);
        calls.push_back("FirmwareUpgrade_getUpgradeStatus([6, 42, 0], 1) = 0");
        EXPECT_EQ(work.run(unit).calls, wholeRun(calls));
    }
}

TEST(Firmware, ReportsAStartThatFails)
{
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        FirmwareUnit unit;
        unit.fails("FirmwareUpgrade_" + std::string(work.operation), 77);
        const Result result = work.run(unit);
        EXPECT_EQ(result.output, work.beginning() + work.operation + ": Error 77\n");
        Calls calls = work.start(unit, 77);
        calls.push_back("GetErrorStringA(77) = \"Error 77\"");
        EXPECT_EQ(result.calls, wholeRun(calls));
    }
}

TEST(Firmware, StartsOnAHandleThatIsNull)
{
    FirmwareUnit unit;
    unit.givesNull("GetFirmwareUpgrade");
    const Result result = unit.run("--advanced --update=SS --force --filepath=" + unit.hex);
    EXPECT_EQ(result.output,
              fileCorrect + upgradeBegins + "startSSUpgrade: The module handle is not valid\n");
    EXPECT_EQ(result.calls, (Calls{"GetFirmwareUpgrade() = null", "GetAbout() = handle",
                                   "FirmwareUpgrade_startSSUpgrade(\"" + unit.hex + "\", 0) = 3",
                                   "GetErrorStringA(3) = \"The module handle is not valid\"", "sleep(100)",
                                   "About_release() = 0", "FirmwareUpgrade_release() = 3"}));
}

TEST(Firmware, FallsSilentWhereTheErrorOfAStartHasNoText)
{
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        FirmwareUnit unit(R"({"errorTexts": {"77": null}})");
        unit.fails("FirmwareUpgrade_" + std::string(work.operation), 77);
        const Result result = work.run(unit);
        EXPECT_EQ(result.output, work.beginning() + work.operation + ": ");
        Calls calls = work.start(unit, 77);
        calls.push_back("GetErrorStringA(77) = null");
        EXPECT_EQ(result.calls, wholeRun(calls));
    }
}

TEST(Firmware, AbortsEachWorkThatIsRefused)
{
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        FirmwareUnit unit;
        unit.input = "no\n";
        const Result result = work.run(unit);
        EXPECT_EQ(result.output,
                  fileCorrect + (work.upgrades() ? upgradeQuestion + "Upgrade aborted.\n"
                                                 : verificationQuestion + "Verify aborted.\n"));
        Calls calls = work.start(unit, 0);
        calls.pop_back();
        EXPECT_EQ(result.calls, wholeRun(calls));
    }
}

TEST(Firmware, AsksNothingByForceWhateverTheInput)
{
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", states({6}));
        unit.input = "no\n";
        const Result result =
            unit.run("--advanced --force " + std::string(work.options) + " --filepath=" + work.file(unit));
        EXPECT_EQ(result.output, fileCorrect + (work.upgrades() ? upgradeBegins : verificationBegins) +
                                     "Done\n" + work.success);
    }
}

TEST(Firmware, TakesItsOptionsInAnyOrder)
{
    for (const char* options : {"--update=SS --force --filepath=", "--force --update=SS --filepath="})
    {
        FirmwareUnit unit;
        EXPECT_EQ(unit.run("--advanced " + (options + unit.hex)).output,
                  fileCorrect + upgradeBegins + upgradeProgress + ssUpgraded);
        EXPECT_EQ(unit.run("--advanced --filepath " + unit.hex + " --update SS --force").output,
                  fileCorrect + upgradeBegins + upgradeProgress + ssUpgraded);
    }
}

TEST(Firmware, NeedsAFilePathBeforeAnythingElse)
{
    for (const char* options :
         {"--update=SS", "--verify=SS", "--update=bogus", "--verify=", "--update=Front --force"})
    {
        SCOPED_TRACE(options);
        Unit unit;
        const Result result = unit.run("--advanced " + std::string(options));
        EXPECT_EQ(result.output, "Invalid argument: No file path added\n");
        EXPECT_EQ(result.calls, wholeRun({}));
    }
}

TEST(Firmware, TakesTheTargetInAnyCase)
{
    const struct
    {
        const char* word;
        const Work& work;
    } cases[] = {{"ss", works[0]},    {"Ss", works[0]},    {"sS", works[0]},
                 {"Fpga", works[1]},  {"fpga", works[1]},  {"fPGA", works[1]},
                 {"front", works[2]}, {"FRONT", works[2]}, {"fRoNt", works[2]}};
    for (const auto& [word, work] : cases)
    {
        SCOPED_TRACE(word);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", states({6}));
        const Result result =
            unit.run("--advanced --update=" + std::string(word) + " --filepath=" + work.file(unit));
        EXPECT_EQ(result.output, work.beginning() + "Done\n" + work.success);
    }
}

TEST(Firmware, RefusesAnyOtherTargetBeforeItLooksAtTheFile)
{
    for (const std::string option : {"--update=", "--verify="})
        for (const char* word :
             {"", "S", "SSS", "SS ", " SS", "SS,FPGA", "FPG", "Frontal", "FrontMCU", "noArgument", "0"})
        {
            SCOPED_TRACE(option + word);
            Unit unit;
            const Result result = unit.run({"--advanced", option + word, "--filepath=/missing.hex"});
            EXPECT_EQ(result.output, "Invalid argument: Update argument should be SS, FPGA or Front.\n");
            EXPECT_EQ(result.calls, wholeRun({}));
        }
}

TEST(Firmware, UpgradesWhereBothAreAskedForAndTakesTheLastTarget)
{
    const struct
    {
        const char* options;
        const Work& work;
    } cases[] = {
        {"--update=SS --verify=FPGA", works[1]},  {"--verify=FPGA --update=SS", works[0]},
        {"--verify=SS --update=Front", works[2]}, {"--update=SS --update=FPGA", works[1]},
        {"--verify=SS --verify=FPGA", works[4]},  {"--update= --verify=ss", works[0]},
    };
    for (const auto& [options, work] : cases)
    {
        SCOPED_TRACE(options);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", states({6}));
        const Result result =
            unit.run("--advanced " + std::string(options) + " --filepath=" + work.file(unit));
        EXPECT_EQ(result.output, work.beginning() + "Done\n" + work.success);
    }
}

TEST(Firmware, ForgetsATargetThatIsGivenAgainWithoutAWord)
{
    FirmwareUnit unit;
    EXPECT_EQ(unit.run("--advanced --update=SS --verify= --filepath=" + unit.hex).output,
              "Invalid argument: Update argument should be SS, FPGA or Front.\n");
}

TEST(Firmware, AbortsAnUpgradeWhereBothAreAskedFor)
{
    FirmwareUnit unit;
    unit.input = "";
    EXPECT_EQ(unit.run("--advanced --update=SS --verify=SS --filepath=" + unit.hex).output,
              fileCorrect + upgradeQuestion + "Upgrade aborted.\n");
}

TEST(Firmware, TakesTheLastOfSeveralFiles)
{
    FirmwareUnit unit;
    unit.set("/firmware/statuses", states({6}));
    const Result result = unit.run("--advanced --update=SS --filepath=/missing.hex --filepath=" + unit.hex);
    EXPECT_EQ(result.output, works[0].beginning() + "Done\n" + ssUpgraded);
}

TEST(Firmware, FindsNoFrontWithoutADisplay)
{
    for (const char* options : {"--update=Front", "--verify=front", "--update=FRONT --force"})
    {
        SCOPED_TRACE(options);
        Unit unit(R"({"about": {"display": false}})");
        const Result result = unit.run("--advanced " + std::string(options) + " --filepath=/missing.hex");
        EXPECT_EQ(result.output, "No FrontMCU present.\n");
        EXPECT_EQ(result.calls, wholeRun({"About_getIsDisplayAvailable([0]) = 0"}));
    }
}

TEST(Firmware, FindsNoFrontWhereTheDisplayIsNotTold)
{
    Unit failing;
    failing.fails("About_getIsDisplayAvailable", 77);
    const Result result = failing.run("--advanced --update=Front --filepath=/missing.hex");
    EXPECT_EQ(result.output, "No FrontMCU present.\n");
    EXPECT_EQ(result.calls, wholeRun({"About_getIsDisplayAvailable([]) = 77"}));

    Unit ignoring;
    ignoring.ignores("About_getIsDisplayAvailable");
    EXPECT_EQ(ignoring.run("--advanced --verify=Front --filepath=/missing.hex").output,
              "No FrontMCU present.\n");

    Unit withoutHandle;
    withoutHandle.givesNull("GetAbout");
    EXPECT_EQ(withoutHandle.run("--advanced --verify=Front --filepath=/missing.hex").output,
              "No FrontMCU present.\n");
}

TEST(Firmware, TakesAnyBitsForADisplay)
{
    FirmwareUnit unit(R"({"about": {"display": 128}})");
    unit.set("/firmware/statuses", states({6}));
    EXPECT_EQ(works[2].run(unit).output, works[2].beginning() + "Done\n" + works[2].success);
}

TEST(Firmware, NeedsNoDisplayForTheOtherTargets)
{
    FirmwareUnit unit(R"({"about": {"display": false}})");
    EXPECT_EQ(works[0].run(unit).output, works[0].beginning() + upgradeProgress + works[0].success);
    EXPECT_EQ(works[1].run(unit).output, works[1].beginning() + upgradeProgress + works[1].success);
}

TEST(Firmware, RefusesAFileThatDoesNotExist)
{
    FirmwareUnit unit;
    std::filesystem::create_symlink("nowhere", unit.folder / "dangling.hex");
    for (const std::string& path :
         {unit.folder / "missing.hex", unit.folder / "missing.txt", unit.hex + "/firmware.hex",
          unit.folder / "dangling.hex", "/" + std::string(5000, 'x') + ".hex"})
    {
        SCOPED_TRACE(path);
        const Result result = unit.run("--advanced --update=SS --force --filepath=" + path);
        EXPECT_EQ(result.output, "File does not exist.\n");
        EXPECT_EQ(result.calls, wholeRun({}));
    }
}

// Their seconds do not fit into 32 bits.
TEST(Firmware, TakesFilesOfTheYear2040)
{
    using namespace std::chrono;
    const auto date = file_clock::from_sys(sys_seconds(sys_days(2040y / 1 / 1)));
    FirmwareUnit unit;
    for (const std::string& file : {unit.file(), unit.hex})
    {
        std::filesystem::last_write_time(file, date);
        ASSERT_EQ(std::filesystem::last_write_time(file), date) << "not a date of this file system";
    }
    EXPECT_EQ(unit.run("--lightsensor").output, "Illuminance: 320\n");
    EXPECT_EQ(works[0].run(unit).output, works[0].beginning() + upgradeProgress + works[0].success);
}

struct Named
{
    const char* target;
    const char* file;
    const char* expected; // null where the name is right
};

TEST(Firmware, TakesTheExtensionBehindTheLastDotOfThePath)
{
    const Named cases[] = {
        {"SS", "firmware.hex", nullptr},     {"SS", ".hex", nullptr},
        {"SS", "firmware.mcs.hex", nullptr}, {"SS", "rel1.2/firmware.hex", nullptr},
        {"SS", "my firmware.hex", nullptr},  {"Front", "firmware.hex", nullptr},
        {"FPGA", "firmware.mcs", nullptr},   {"SS", "firmware.HEX", "hex"},
        {"SS", "firmware.Hex", "hex"},       {"SS", "firmware.hex ", "hex"},
        {"SS", "firmware.hexx", "hex"},      {"SS", "firmware.he", "hex"},
        {"SS", "firmware.", "hex"},          {"SS", "firmware", "hex"},
        {"SS", "firmware.hex.old", "hex"},   {"SS", "rel1.2/firmware", "hex"},
        {"SS", "rel.hex/firmware", "hex"},   {"SS", "firmware.mcs", "hex"},
        {"Front", "firmware.mcs", "hex"},    {"FPGA", "firmware.hex", "mcs"},
        {"FPGA", "firmware.MCS", "mcs"},
    };
    for (const auto& [target, file, expected] : cases)
    {
        SCOPED_TRACE(std::string(target) + " " + file);
        FirmwareUnit unit;
        unit.input = "no\n";
        const std::string path = unit.folder / file;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        writeFile(path, "");
        const Result result =
            unit.run({"--advanced", "--update=" + std::string(target), "--filepath=" + path});
        if (expected)
            EXPECT_EQ(result.output, "File format is incorrect. Expected: ." + std::string(expected) + "\n");
        else
            EXPECT_EQ(result.output, fileCorrect + upgradeQuestion + "Upgrade aborted.\n");
        EXPECT_EQ(result.calls.at(result.calls.size() - 3), "sleep(100)");
    }
}

TEST(Firmware, AsksNothingAboutAFileThatIsRefused)
{
    FirmwareUnit unit;
    EXPECT_EQ(unit.run("--advanced --update=FPGA --filepath=" + unit.hex).calls, wholeRun({}));
    EXPECT_EQ(unit.run("--advanced --verify=SS --filepath=" + unit.mcs).output,
              "File format is incorrect. Expected: .hex\n");
}

TEST(Firmware, HandsThePathOnAsItWasGiven)
{
    FirmwareUnit unit;
    unit.set("/firmware/statuses", states({6}));
    const std::string path = unit.folder.path + "//./my firmware.hex";
    writeFile(path, "");
    const Result result = unit.run({"--advanced", "--force", "--update=SS", "--filepath", path});
    EXPECT_EQ(result.calls.at(2), "FirmwareUpgrade_startSSUpgrade(\"" + path + "\", 0) = 0");
}

TEST(Firmware, HandsAFolderWithTheRightNameToTheUnit)
{
    FirmwareUnit unit;
    std::filesystem::create_directory(unit.folder / "folder.hex");
    const Result result =
        unit.run("--advanced --update=SS --force --filepath=" + (unit.folder / "folder.hex"));
    EXPECT_EQ(result.output, fileCorrect + upgradeBegins +
                                 lines({"Initiating", "Preparing communication", "Reading File",
                                        "Update progress", "Upgrade failed in state: Reading File.",
                                        "Error: The firmware file cannot be read"}));
}

TEST(Firmware, LooksWhetherTheFileIsThereAndNotWhetherItCanBeRead)
{
    const FirmwareUnit unit;
    std::filesystem::permissions(unit.hex, std::filesystem::perms::none);
    Command command = programOn(unit.file(), "--advanced --update=SS --filepath=" + unit.hex);
    command.input = "no\n";
    EXPECT_EQ(Nobody().run(command).output, fileCorrect + upgradeQuestion + "Upgrade aborted.\n");
}

TEST(Firmware, GoesAheadAtYesAlone)
{
    using namespace std::string_literals;
    const std::string accepted[] = {"yes\n", "yes", "yes\nno\n", "yes\n" + std::string(100000, 'x')};
    for (const std::string& answer : accepted)
    {
        SCOPED_TRACE(answer.substr(0, 20));
        FirmwareUnit unit;
        unit.input = answer;
        EXPECT_EQ(works[0].run(unit).output, works[0].beginning() + upgradeProgress + ssUpgraded);
    }

    const std::string refused[] = {"",
                                   "\n",
                                   "no\n",
                                   "no",
                                   "Yes\n",
                                   "YES\n",
                                   "yES\n",
                                   "y\n",
                                   "ye\n",
                                   "yess\n",
                                   "yes \n",
                                   " yes\n",
                                   "\tyes\n",
                                   "yes\r\n",
                                   "\"yes\"\n",
                                   "\nyes\n",
                                   "no\nyes\n",
                                   "y\nyes\n",
                                   "yes\0\n"s,
                                   "yes\0"s,
                                   "\0yes\n"s,
                                   "ye\0s\n"s,
                                   "yes" + std::string(100000, ' ') + "\n",
                                   std::string(100000, 'y') + "\n",
                                   std::string(100000, 'y')};
    for (const std::string& answer : refused)
    {
        SCOPED_TRACE(answer.substr(0, 20));
        FirmwareUnit unit;
        unit.input = answer;
        EXPECT_EQ(works[0].run(unit).output, fileCorrect + upgradeQuestion + "Upgrade aborted.\n");
        EXPECT_EQ(works[3].run(unit).output, fileCorrect + verificationQuestion + "Verify aborted.\n");
    }
}

TEST(Firmware, IsTheSuperusersWorkAlone)
{
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        FirmwareUnit unit;
        unit.userId = 1000;
        const Result result = work.run(unit);
        EXPECT_EQ(result.output, "This feature requires superuser privileges\n");
        EXPECT_EQ(result.calls, (Calls{"GetFirmwareUpgrade() = handle", "GetAbout() = handle"}));
    }
}

// A unit that reports the statuses.
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

// What an upgrade prints while and after the unit reports the statuses.
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

TEST(Firmware, PrintsEachStateOnceWhenItIsEntered)
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

TEST(Firmware, PrintsAStateAgainWhenTheJobComesBackToIt)
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

TEST(Firmware, GoesOnInAWorkingStateWithoutAnError)
{
    for (const auto& [value, name, reportName] : workingStates)
    {
        SCOPED_TRACE(value);
        EXPECT_EQ(progress(states({value, value, 6})), lines({name, "Done"}) + ssUpgraded);
    }
}

TEST(Firmware, EndsWellBehindTheWorkingStatesWithoutAnError)
{
    for (const auto& [value, name, reportName] : lastStates)
    {
        SCOPED_TRACE(value);
        EXPECT_EQ(progress(states({value})), lines({name}) + ssUpgraded);
    }
}

TEST(Firmware, EndsInAReportInAnyStateWithAnError)
{
    for (const auto& list : {std::span<const State>(workingStates), std::span<const State>(lastStates)})
        for (const auto& [value, name, reportName] : list)
        {
            SCOPED_TRACE(value);
            EXPECT_EQ(progress(script({{value, 0, 77}})), lines({name}) + failureReport(reportName, 77));
        }
}

TEST(Firmware, NamesTheStateOfTheFailureWhereItWasEnteredBefore)
{
    EXPECT_EQ(progress(script({{4, 0, 0}, {4, 0, 77}})), lines({"Flashing"}) + failureReport("Flashing", 77));
}

TEST(Firmware, PrintsNoFirstStateOfMinusOne)
{
    EXPECT_EQ(progress(states({-1, -1, 6})), lines({"Done"}) + ssUpgraded);
    EXPECT_EQ(progress(script({{-1, 0, 77}})), failureReport("Unknown state", 77));
    EXPECT_EQ(progress(states({0, -1, 6})), lines({"Initiating", "Unknown state", "Done"}) + ssUpgraded);
}

TEST(Firmware, PrintsTheUnknownStateOncePerState)
{
    EXPECT_EQ(progress(states({-2, -3, -3, 6})),
              lines({"Unknown state", "Unknown state", "Done"}) + ssUpgraded);
}

TEST(Firmware, TakesErrorCodesWhole)
{
    for (const unsigned code : {1000u, 0x80000000u, 0xFFFFFFFFu, 0x10000u})
        EXPECT_EQ(progress(script({{6, 0, code}})), "Done\n" + failureReport("Done", code));
}

TEST(Firmware, MakesNothingOfTheSecondWord)
{
    for (const int second : {-1, 1, INT_MIN, INT_MAX})
        EXPECT_EQ(progress(script({{4, second, 0}, {6, second, 0}})),
                  lines({"Flashing", "Done"}) + ssUpgraded);
}

TEST(Firmware, ReportsAFailedVerificationInTheSameWords)
{
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", script({{5, 0, 77}}));
        const Result result = work.run(unit);
        EXPECT_EQ(result.output, work.beginning() + "Verifying\n" + failureReport("Verifying", 77));
        Calls calls = work.start(unit, 0);
        calls.push_back("FirmwareUpgrade_getUpgradeStatus([5, 0, 77], 1) = 0");
        calls.push_back("GetErrorStringA(77) = \"Error 77\"");
        EXPECT_EQ(result.calls, wholeRun(calls));
    }
}

TEST(Firmware, FallsSilentWhereTheErrorOfTheJobHasNoText)
{
    ScriptedUnit unit(script({{3, 0, 77}}));
    unit.set("/errorTexts", {{"77", nullptr}});
    const Result result = unit.follow();
    EXPECT_EQ(result.output, fileCorrect + upgradeBegins +
                                 "Converting file\nUpdate progress\n"
                                 "Upgrade failed in state: Converting file.\nError: ");
    EXPECT_EQ(result.calls.at(result.calls.size() - 3), "sleep(100)");
}

TEST(Firmware, TakesNoNoticeOfStatusCallsThatFail)
{
    ScriptedUnit unit(states({1, 4, 6}));
    unit.set("/faults/FirmwareUpgrade_getUpgradeStatus", {{"code", 77}, {"skip", 2}, {"times", 3}});
    const Result result = unit.follow();
    EXPECT_EQ(result.output, fileCorrect + upgradeBegins +
                                 lines({"Preparing communication", "Flashing", "Done"}) + ssUpgraded);
    EXPECT_EQ(std::ranges::count(result.calls, "FirmwareUpgrade_getUpgradeStatus([], 1) = 77"), 3);
    EXPECT_EQ(std::ranges::count(result.calls, "GetErrorStringA(77) = \"Error 77\""), 0);
}

TEST(Firmware, IsInitiatingUntilAStatusCallSucceeds)
{
    ScriptedUnit unit(states({4, 6}));
    unit.set("/faults/FirmwareUpgrade_getUpgradeStatus", {{"code", 77}, {"times", 2}});
    EXPECT_EQ(unit.follow().output,
              fileCorrect + upgradeBegins + lines({"Initiating", "Flashing", "Done"}) + ssUpgraded);
}

TEST(Firmware, FollowsAJobWhoseStatusCallsWriteNothingForAWhile)
{
    ScriptedUnit unit(states({4, 6}));
    unit.set("/faults/FirmwareUpgrade_getUpgradeStatus", {{"ignored", true}, {"skip", 1}, {"times", 2}});
    EXPECT_EQ(unit.follow().output, fileCorrect + upgradeBegins + lines({"Flashing", "Done"}) + ssUpgraded);
}

TEST(Firmware, AsksForTheStatusWithoutALimitAndWithoutADelay)
{
    const FirmwareUnit unit;
    Command command = programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex);
    command.environment["LD_PRELOAD"] = standIns() + ":" + buildFolder() + "/tests/long-job.so";
    const auto start = std::chrono::steady_clock::now();
    const Outcome outcome = runCommand(command);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(outcome.output, fileCorrect + upgradeBegins + lines({"Initiating", "Done"}) + ssUpgraded);
}

TEST(Firmware, ServesAPersonAtATerminalLineByLine)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 300); // ms
    Terminal terminal(programOn(unit.file(), "--advanced --update=SS --filepath=" + unit.hex));
    ASSERT_TRUE(terminal.sees("Do you wish to continue [yes/no]?"));
    EXPECT_EQ(terminal.screen(), fileCorrect + upgradeQuestion);
    terminal.type("yes\n");

    using Clock = std::chrono::steady_clock;
    ASSERT_TRUE(terminal.sees("Initiating"));
    Clock::time_point last = Clock::now();
    for (const char* line :
         {"Preparing communication", "Reading File", "Converting file", "Flashing", "Verifying", "Done"})
    {
        ASSERT_TRUE(terminal.sees(line)) << terminal.screen();
        const Clock::time_point now = Clock::now();
        EXPECT_GT(now - last, std::chrono::milliseconds(50)) << line;
        last = now;
    }
    EXPECT_EQ(terminal.end(), 0);
    EXPECT_EQ(terminal.screen(),
              fileCorrect + upgradeQuestion + "yes\n" + upgradeBegins + upgradeProgress + ssUpgraded);
}

TEST(Firmware, NeedsNobodyAtTheTerminalByForce)
{
    FirmwareUnit unit;
    Terminal terminal(programOn(unit.file(), "--advanced --verify=SS --force --filepath=" + unit.hex));
    EXPECT_EQ(terminal.end(), 0);
    EXPECT_TRUE(terminal.screen().starts_with(fileCorrect + verificationBegins)) << terminal.screen();
}

TEST(Firmware, TakesAPersonWhoSignsOffForARefusal)
{
    FirmwareUnit unit;
    Terminal terminal(programOn(unit.file(), "--advanced --verify=SS --filepath=" + unit.hex));
    ASSERT_TRUE(terminal.sees("Do you wish to continue [yes/no]?"));
    terminal.type("\x04"); // the end of input
    EXPECT_EQ(terminal.end(), 0);
    EXPECT_NE(terminal.screen().find("Verify aborted.\n"), std::string::npos) << terminal.screen();
}

} // namespace
