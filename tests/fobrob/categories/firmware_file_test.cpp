// The firmware file of an upgrade or a verification.

#include "firmware_jobs.h"

#include <chrono>
#include <filesystem>

namespace
{

TEST(FirmwareFile, RejectsAFileThatDoesNotExist)
{
    FirmwareUnit unit;
    std::filesystem::create_symlink("nowhere", unit.directory / "dangling.hex");
    for (const std::string& path :
         {unit.directory / "missing.hex", unit.directory / "missing.txt", unit.hex + "/firmware.hex",
          unit.directory / "dangling.hex", "/" + std::string(5000, 'x') + ".hex"})
    {
        SCOPED_TRACE(path);
        const Result result = unit.run("--advanced --update=SS --force --filepath=" + path);
        EXPECT_EQ(result.output, "File does not exist.\n");
        EXPECT_EQ(result.calls, wholeRun({}));
    }
}

// As a time stamp, this date does not fit into 32 bits.
TEST(FirmwareFile, AcceptsFilesDated2040)
{
    using namespace std::chrono;
    const auto date = file_clock::from_sys(sys_seconds(sys_days(2040y / 1 / 1)));
    FirmwareUnit unit;
    for (const std::string& file : {unit.file(), unit.hex})
    {
        std::filesystem::last_write_time(file, date);
        ASSERT_EQ(std::filesystem::last_write_time(file), date)
            << "the file system does not support this date";
    }
    EXPECT_EQ(unit.run("--lightsensor").output, "Illuminance: 320\n");
    EXPECT_EQ(jobs[0].run(unit).output, jobs[0].beginning() + upgradeProgress + jobs[0].success);
}

struct Named
{
    const char* target;
    const char* file;
    const char* expected; // null if the extension is correct
};

TEST(FirmwareFile, UsesTheExtensionAfterTheLastDotOfThePath)
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
        const std::string path = unit.directory / file;
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

TEST(FirmwareFile, AsksNoQuestionIfTheFileIsRejected)
{
    FirmwareUnit unit;
    EXPECT_EQ(unit.run("--advanced --update=FPGA --filepath=" + unit.hex).calls, wholeRun({}));
    EXPECT_EQ(unit.run("--advanced --verify=SS --filepath=" + unit.mcs).output,
              "File format is incorrect. Expected: .hex\n");
}

TEST(FirmwareFile, PassesThePathUnchanged)
{
    FirmwareUnit unit;
    unit.set("/firmware/statuses", states({6}));
    const std::string path = unit.directory.path + "//./my firmware.hex";
    writeFile(path, "");
    const Result result = unit.run({"--advanced", "--force", "--update=SS", "--filepath", path});
    EXPECT_EQ(result.calls.at(2), "FirmwareUpgrade_startSSUpgrade(\"" + path + "\", 0) = 0");
}

TEST(FirmwareFile, PassesADirectoryWithTheExtensionToTheUnit)
{
    FirmwareUnit unit;
    std::filesystem::create_directory(unit.directory / "directory.hex");
    const Result result =
        unit.run("--advanced --update=SS --force --filepath=" + (unit.directory / "directory.hex"));
    EXPECT_EQ(result.output, fileCorrect + upgradeBegins +
                                 lines({"Initiating", "Preparing communication", "Reading File",
                                        "Update progress", "Upgrade failed in state: Reading File.",
                                        "Error: The firmware file cannot be read"}));
}

TEST(FirmwareFile, ChecksThatTheFileExistsButNotThatItIsReadable)
{
    const FirmwareUnit unit;
    std::filesystem::permissions(unit.hex, std::filesystem::perms::none);
    Command command = programOn(unit.file(), "--advanced --update=SS --filepath=" + unit.hex);
    command.input = "no\n";
    EXPECT_EQ(Nobody().run(command).output, fileCorrect + upgradeQuestion + "Upgrade aborted.\n");
}

TEST(FirmwareFile, UsesTheLastFilePath)
{
    FirmwareUnit unit;
    unit.set("/firmware/statuses", states({6}));
    const Result result = unit.run("--advanced --update=SS --filepath=/missing.hex --filepath=" + unit.hex);
    EXPECT_EQ(result.output, jobs[0].beginning() + "Done\n" + ssUpgraded);
}

} // namespace
