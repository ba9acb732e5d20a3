#include "support/firmware_unit.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

using namespace std::string_literals;
using Clock = std::chrono::steady_clock;

namespace
{

const char* const upgradeBegins =
    "File format is correct.\nThis upgrade can take a few minutes to perform.\n";
const char* const verificationBegins =
    "File format is correct.\nThis verification can take a few minutes to perform.\n";

const std::string upgraded =
    upgradeBegins + upgradeProgress +
    "SS successfully upgraded. \n"
    "Please shut down the computer and cut the power in order for the update to take effect.\n";
const std::string verified = verificationBegins + verificationProgress +
                             "SS successfully verified. \n"
                             "Please shut down the computer and cut the power in order to restart the SS.\n";

// What is printed when a job fails in the state: its progress up to there, and the report.
std::string failed(const std::string& begins, const std::string& progress, const std::string& state,
                   const std::string& error)
{
    return begins + progress.substr(0, progress.find(state + "\n")) +
           lines({state, "Update progress", "Upgrade failed in state: " + state + ".", "Error: " + error});
}

std::string upgradeFailed(const std::string& state, const std::string& error)
{
    return failed(upgradeBegins, upgradeProgress, state, error);
}

const std::string differs = failed(verificationBegins, verificationProgress, "Verifying",
                                   "The firmware in the target differs from the file");

// The System Supervisor's firmware, from a file that holds `text`.

std::string upgrade(FirmwareUnit& unit, const std::string& text)
{
    writeFile(unit.hex, text);
    return unit.run("--advanced --update=SS --force --filepath=" + unit.hex).output;
}

std::string verify(FirmwareUnit& unit, const std::string& text)
{
    writeFile(unit.hex, text);
    return unit.run("--advanced --verify=SS --force --filepath=" + unit.hex).output;
}

// A program that runs beside the test, and is killed at the latest with this object.
class Running
{
public:
    Running(const Command& command, const std::string& output) : process(startCommand(command, output))
    {
    }

    ~Running()
    {
        if (process > 0)
            kill();
    }

    void kill()
    {
        ::kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
        process = 0;
    }

private:
    int process;
};

bool comesTrue(const std::function<bool()>& condition)
{
    const auto deadline = Clock::now() + std::chrono::seconds(30);
    while (Clock::now() < deadline)
    {
        if (condition())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

TEST(FirmwareJob, RemembersWhatWasFlashed)
{
    const std::string content = randomBytes(400000);
    FirmwareUnit unit;
    EXPECT_EQ(upgrade(unit, hexFile(content)), upgraded);
    EXPECT_EQ(unit["/firmware/ss/bytes"], content.size());
    EXPECT_EQ(unit["/firmware/ss/digest"].get<std::string>().size(), 64);
    EXPECT_EQ(verify(unit, hexFile(content)), verified);
}

TEST(FirmwareJob, ComparesWhatIsFlashedHoweverTheFileIsWritten)
{
    const std::string content = randomBytes(1000);
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexFile(content, 0x12340)), upgraded);

    const std::string text = hexFile(content, 0x12340);
    std::string lower = text;
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return std::tolower(c); });
    std::string dosLines;
    std::string trailingBlanks;
    std::string emptyLines;
    for (const char c : text)
    {
        dosLines += c == '\n' ? "\r\n" : std::string(1, c);
        trailingBlanks += c == '\n' ? " \t\n" : std::string(1, c);
        emptyLines += c == '\n' ? "\n\n" : std::string(1, c);
    }
    const std::string linear = hexRecord(4, 0, "\0\1"s);
    const std::pair<const char*, std::string> writings[] = {
        {"short records", hexFile(content, 0x12340, 1)},
        {"long records", hexFile(content, 0x12340, 255)},
        {"small letters", lower},
        {"carriage returns", dosLines},
        {"trailing blanks", trailingBlanks},
        {"empty lines", emptyLines},
        {"no last newline", text.substr(0, text.size() - 1)},
        {"falling addresses",
         hexData(content.substr(500), 0x12340 + 500) + hexData(content.substr(0, 500), 0x12340) + hexEnd},
        {"start records", hexRecord(5, 0, "\1\2\3\4") + hexRecord(3, 0, "\1\2\3\4") + text},
        {"records without data", linear + hexRecord(0, 0x2340, "") + text},
        {"a segment", hexRecord(2, 0, "\x12\x34"s) + hexRecord(0, 0, content.substr(0, 200)) +
                          hexData(content.substr(200), 0x12340 + 200) + hexEnd},
    };
    for (const auto& [name, writing] : writings)
    {
        SCOPED_TRACE(name);
        EXPECT_EQ(verify(unit, writing), verified);
    }
}

TEST(FirmwareJob, FindsEveryDifferenceWhenItVerifies)
{
    const std::string content = randomBytes(1000);
    std::string changed = content;
    changed[999] = static_cast<char>(changed[999] ^ 1);
    const std::pair<const char*, std::string> others[] = {
        {"other firmware", hexFile(randomBytes(1000, 2))},
        {"one bit", hexFile(changed)},
        {"a byte less", hexFile(content.substr(0, 999))},
        {"a byte more", hexFile(content + "x")},
        {"another place", hexFile(content, 0x10000)},
        {"a gap", hexData(content.substr(0, 500)) + hexData(content.substr(500), 0x10000) + hexEnd},
    };
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexFile(content)), upgraded);
    for (const auto& [name, text] : others)
    {
        SCOPED_TRACE(name);
        EXPECT_EQ(verify(unit, text), differs);
    }
    EXPECT_EQ(verify(unit, hexFile(content)), verified);
}

TEST(FirmwareJob, DoesNotKnowTheFactorysOwnFirmware)
{
    FirmwareUnit unit;
    EXPECT_EQ(verify(unit, hexFile(randomBytes(1000))), differs);
}

TEST(FirmwareJob, KeepsTheFirmwareOfEachTargetApart)
{
    FirmwareUnit unit;
    writeFile(unit.mcs, hexFile(randomBytes(1000, 2)));
    const std::string force = "--advanced --force --filepath=";
    unit.run(force + unit.mcs + " --update=FPGA");
    EXPECT_EQ(unit["/firmware/ss"], nullptr);
    EXPECT_EQ(unit["/firmware/front"], nullptr);
    unit.run(force + unit.hex + " --update=Front");
    EXPECT_NE(unit["/firmware/front/digest"], unit["/firmware/fpga/digest"]);
    EXPECT_NE(unit.run(force + unit.mcs + " --verify=FPGA").output.find("\nDone\n"), std::string::npos);
    EXPECT_NE(unit.run(force + unit.hex + " --verify=Front").output.find("\nDone\n"), std::string::npos);
    EXPECT_EQ(unit.run(force + unit.hex + " --verify=SS").output, differs);
}

struct Broken
{
    std::string text;
    const char* state;
    const char* error;
};

const char* const notHex = "The firmware file contains a line that is not an Intel HEX record";
const char* const badLength = "The firmware file contains a record with a wrong length";
const char* const badChecksum = "The firmware file contains a record with a wrong checksum";
const char* const badRecord = "The firmware file contains a record of an unknown type";

TEST(FirmwareJob, FindsARecordThatIsWrongAndTellsItsLine)
{
    const Broken cases[] = {
        {"word\n", "Reading File", notHex},
        {"00000001FF\n", "Reading File", notHex},       // no colon
        {" :00000001FF\n", "Reading File", notHex},     // a blank before it
        {":00000001F\n", "Reading File", notHex},       // half a byte
        {":0000000GFF\n", "Reading File", notHex},      // no digit
        {":000000 1FF\n", "Reading File", notHex},      // a blank between digits
        {"::0000001FF\n", "Reading File", notHex},      // two colons
        {":0000\0001FF\n"s, "Reading File", notHex},    // a zero byte
        {":\n", "Reading File", badLength},             // nothing
        {":00000001\n", "Reading File", badLength},     // no checksum
        {":0200000000FE\n", "Reading File", badLength}, // a byte too few
        {":000000000000\n", "Reading File", badLength}, // a byte too many
        {":00000000FF\n", "Reading File", badChecksum},
        {":0100000001FF\n", "Reading File", badChecksum},
        {hexRecord(1, 0, "x"), "Reading File", badLength}, // an end with data
        {hexRecord(2, 0, "x"), "Reading File", badLength}, // no address of that size
        {hexRecord(3, 0, "xyz"), "Reading File", badLength},
        {hexRecord(4, 0, "xyz"), "Reading File", badLength},
        {hexRecord(5, 0, "xyzxy"), "Reading File", badLength},
        {hexRecord(6, 0, ""), "Converting file", badRecord},
        {hexRecord(255, 0, "xyz"), "Converting file", badRecord},
    };
    for (const auto& [record, state, error] : cases)
    {
        SCOPED_TRACE(record);
        FirmwareUnit unit;
        EXPECT_EQ(upgrade(unit, hexData(randomBytes(32)) + record + hexEnd),
                  upgradeFailed(state, error + " (line 4)"s));
        EXPECT_EQ(unit["/firmware/ss"], nullptr);
    }
}

TEST(FirmwareJob, CountsEmptyLinesWithTheOthers)
{
    FirmwareUnit unit;
    EXPECT_EQ(upgrade(unit, "\n\r\n" + hexData("x") + "\n:00000000FF\n" + hexEnd),
              upgradeFailed("Reading File", badChecksum + " (line 6)"s));
}

TEST(FirmwareJob, FindsWhatIsWrongWithTheWholeFile)
{
    const std::string data = hexData(randomBytes(32));
    const char* const noEnd = "The firmware file has no end record";
    const char* const twice = "The firmware file defines an address twice";
    const char* const empty = "The firmware file contains no data";
    const Broken cases[] = {
        {"", "Reading File", noEnd},
        {"\n", "Reading File", noEnd},
        {data, "Reading File", noEnd},
        {data + hexEnd + hexEnd, "Reading File", "The firmware file continues after its end record (line 5)"},
        {data + hexEnd + "\nword", "Reading File",
         "The firmware file continues after its end record (line 6)"},
        {data + data + hexEnd, "Converting file", twice},
        {data + hexData("x") + hexEnd, "Converting file", twice},
        {data + hexData("x", 31) + hexEnd, "Converting file", twice},
        {hexData("x", 31) + data + hexEnd, "Converting file", twice},
        {hexEnd, "Converting file", empty},
        {hexRecord(4, 0, "\0\0"s) + hexRecord(0, 0, "") + hexEnd, "Converting file", empty},
        {hexRecord(4, 0, "\xFF\xFF") + hexRecord(0, 0xFFFF, "ab") + hexEnd, "Converting file",
         "The firmware does not fit into the target"},
    };
    for (const auto& [text, state, error] : cases)
    {
        SCOPED_TRACE(text);
        FirmwareUnit unit;
        EXPECT_EQ(upgrade(unit, text), upgradeFailed(state, error));
        EXPECT_EQ(unit["/firmware/ss"], nullptr);
    }
}

TEST(FirmwareJob, ReadsFilesAlone)
{
    const FirmwareUnit made;
    std::filesystem::create_directory(made.folder / "folder.hex");
    std::filesystem::create_symlink("/dev/zero", made.folder / "device.hex");
    ASSERT_EQ(mkfifo((made.folder / "pipe.hex").c_str(), 0600), 0);
    for (const char* name : {"folder.hex", "device.hex", "pipe.hex"})
    {
        SCOPED_TRACE(name);
        FirmwareUnit unit;
        EXPECT_EQ(unit.run("--advanced --update=SS --force --filepath=" + (made.folder / name)).output,
                  upgradeFailed("Reading File", "The firmware file cannot be read"));
    }
}

TEST(FirmwareJob, FollowsALinkToAFile)
{
    FirmwareUnit unit;
    std::filesystem::create_symlink(unit.mcs, unit.folder / "link.hex");
    EXPECT_EQ(unit.run("--advanced --update=SS --force --filepath=" + (unit.folder / "link.hex")).output,
              upgraded);
}

TEST(FirmwareJob, CanNotReadAFileThatIsGone)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 300); // ms
    Running program(programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex),
                    unit.folder / "output");
    ASSERT_TRUE(comesTrue([&] { return readFile(unit.folder / "output").ends_with("Initiating\n"); }));
    std::filesystem::remove(unit.hex);
    const std::string failure = upgradeFailed("Reading File", "The firmware file cannot be read");
    EXPECT_TRUE(comesTrue([&] { return readFile(unit.folder / "output") == failure; }));
}

TEST(FirmwareJob, TakesFirmwareUpToTheLastAddress)
{
    FirmwareUnit unit;
    EXPECT_EQ(upgrade(unit, hexFile("ab", 0xFFFFFFFE)), upgraded);
}

TEST(FirmwareJob, FindsEveryDigitThatWentWrong)
{
    const std::string sound = hexFile(randomBytes(20));
    FirmwareUnit unit;
    for (std::size_t place = 0; place < sound.size(); ++place)
    {
        if (!std::isxdigit(static_cast<unsigned char>(sound[place])))
            continue;
        SCOPED_TRACE(place);
        std::string broken = sound;
        broken[place] = broken[place] == '7' ? '8' : '7';
        EXPECT_NE(upgrade(unit, broken).find("Upgrade failed in state: Reading File.\n"), std::string::npos);
    }
}

TEST(FirmwareJob, FindsAFileThatWasCutShortAnywhere)
{
    const std::string whole = hexFile(randomBytes(20));
    FirmwareUnit unit;
    for (std::size_t size = 0; size < whole.size() - 1; ++size)
    {
        SCOPED_TRACE(size);
        EXPECT_NE(upgrade(unit, whole.substr(0, size)).find("Upgrade failed in state: Reading File.\n"),
                  std::string::npos);
    }
}

TEST(FirmwareJob, LeavesTheFirmwareAloneUntilTheFileIsSound)
{
    const std::string content = randomBytes(1000);
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexFile(content)), upgraded);
    upgrade(unit, hexData("x"));
    upgrade(unit, hexEnd);
    EXPECT_EQ(verify(unit, hexFile(content)), verified);
}

TEST(FirmwareJob, FindsAFileTooLargeForTheTarget)
{
    constexpr std::size_t capacity = 32 << 20;
    FirmwareUnit unit;
    EXPECT_EQ(upgrade(unit, hexFile(std::string(capacity + 1, 'x'), 0, 255)),
              upgradeFailed("Converting file", "The firmware does not fit into the target"));
    EXPECT_EQ(upgrade(unit, hexFile(std::string(capacity, 'x'), 0, 255)), upgraded);
    EXPECT_EQ(unit["/firmware/ss/bytes"], capacity);
}

TEST(FirmwareJob, ReportsTheNewVersionFromTheNextBootOn)
{
    const std::string content = randomBytes(300) + "FWVERSION=1.2.3.4" + randomBytes(300, 2);
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexFile(content)), upgraded);
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 2.7.1.0\n");
    EXPECT_EQ(unit["/firmware/ss/nextVersion"], "1.2.3.4");
    unit.shutDown();
    EXPECT_EQ(unit["/versions/ss"], nullptr);
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 1.2.3.4\n");
    EXPECT_EQ(unit["/firmware/ss/nextVersion"], nullptr);
    EXPECT_EQ(verify(unit, hexFile(content)), verified);
}

TEST(FirmwareJob, ReportsTheNewVersionOfEachTarget)
{
    FirmwareUnit unit;
    writeFile(unit.hex, hexFile("FWVERSION=9.8.7.6"));
    writeFile(unit.mcs, hexFile("FWVERSION=255.0.0.255"));
    unit.run("--advanced --update=Front --force --filepath=" + unit.hex);
    unit.run("--advanced --update=FPGA --force --filepath=" + unit.mcs);
    unit.shutDown();
    EXPECT_EQ(unit.run("--version=Front").output, "FrontVersion: 9.8.7.6\n");
    EXPECT_EQ(unit.run("--version=FPGA").output, "FPGAVersion: 255.0.0.255\n");
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 2.7.1.0\n");
}

TEST(FirmwareJob, KeepsTheOldVersionWhereTheFileTellsNone)
{
    for (const char* text :
         {"no version", "FWVERSION=", "FWVERSION=1.2.3", "FWVERSION=1.2.3.", "FWVERSION=1.2.3.256",
          "FWVERSION=-1.2.3.4", "FWVERSION=1,2,3,4", "fwversion=1.2.3.4"})
    {
        SCOPED_TRACE(text);
        FirmwareUnit unit;
        ASSERT_EQ(upgrade(unit, hexFile(text)), upgraded);
        unit.shutDown();
        EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 2.7.1.0\n");
    }
}

TEST(FirmwareJob, FindsTheVersionAcrossRecordsAndInAnyBlock)
{
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexData("other block") + hexData("FWVERSION=11.22.33.44 ", 0xFFFA, 3) + hexEnd),
              upgraded);
    unit.shutDown();
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 11.22.33.44\n");
}

TEST(FirmwareJob, TakesTheFirstVersionThatIsOne)
{
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexFile("FWVERSION=%d FWVERSION=FWVERSION=1.2.3.4 FWVERSION=5.6.7.8")), upgraded);
    unit.shutDown();
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 1.2.3.4\n");
}

TEST(FirmwareJob, LeavesTheFirmwareIncompleteWhenItIsKilled)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 400); // ms
    const std::string output = unit.folder / "output";
    Running program(programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex), output);
    ASSERT_TRUE(comesTrue([&] { return readFile(output).ends_with("Flashing\n"); })) << readFile(output);
    program.kill();

    EXPECT_EQ(unit["/firmware/ss/incomplete"], true);
    const char* const incomplete = "getSSVersion: The firmware is incomplete: its upgrade was interrupted\n";
    EXPECT_EQ(unit.run("--version=SS").output, incomplete);
    EXPECT_EQ(unit.run("--version=FPGA").output, "FPGAVersion: 1.4.0.2\n");
    unit.shutDown();
    EXPECT_EQ(unit.run("--version=SS").output, incomplete);

    unit.set("/firmware/pace", 0);
    const std::string text = hexFile(randomBytes(1000));
    EXPECT_EQ(verify(unit, text), differs);
    EXPECT_EQ(upgrade(unit, text), upgraded);
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 2.7.1.0\n");
    EXPECT_EQ(verify(unit, text), verified);
}

TEST(FirmwareJob, LeavesTheFirmwareWholeWhenItIsKilledBeforeFlashing)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 60000); // ms
    const std::string output = unit.folder / "output";
    Running program(programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex), output);
    ASSERT_TRUE(comesTrue([&] { return readFile(output).ends_with("Initiating\n"); })) << readFile(output);
    program.kill();
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 2.7.1.0\n");
}

TEST(FirmwareJob, RunsAloneOnItsUnit)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 60000); // ms
    const std::string output = unit.folder / "output";
    const std::string text = hexFile(randomBytes(1000));
    Running program(programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex), output);
    ASSERT_TRUE(comesTrue([&] { return readFile(output).ends_with("Initiating\n"); })) << readFile(output);

    EXPECT_EQ(upgrade(unit, text), upgradeBegins + "startSSUpgrade: Another firmware job is running\n"s);
    EXPECT_EQ(unit.run("--advanced --verify=FPGA --force --filepath=" + unit.mcs).output,
              verificationBegins + "startFpgaVerification: Another firmware job is running\n"s);
    EXPECT_EQ(unit.run("--buzzer --volume=40").output, "Buzzer volume set to: 40\n");
    FirmwareUnit otherUnit;
    EXPECT_EQ(upgrade(otherUnit, text), upgraded);

    program.kill();
    unit.set("/firmware/pace", 0);
    EXPECT_EQ(upgrade(unit, text), upgraded);
}

TEST(FirmwareJob, TellsInTheSecondWordHowMuchIsDone)
{
    FirmwareUnit unit;
    const Result result = unit.run("--advanced --verify=SS --force --filepath=" + unit.hex);
    EXPECT_EQ(result.calls.at(3), "FirmwareUpgrade_getUpgradeStatus([0, 0, 0], 1) = 0");
    EXPECT_EQ(result.calls.at(6), "FirmwareUpgrade_getUpgradeStatus([3, 50, 0], 1) = 0");
    EXPECT_EQ(result.calls.at(7), "FirmwareUpgrade_getUpgradeStatus([5, 83, 91], 1) = 0");
}

TEST(FirmwareJob, KeepsItsPaceWithoutBurningTheProcessor)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 300); // ms
    const auto begin = Clock::now();
    const Outcome outcome =
        runCommand(programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex));
    const std::chrono::duration<double> time = Clock::now() - begin;
    EXPECT_TRUE(outcome.output.ends_with(upgraded.substr(upgraded.find("Done\n")))) << outcome.output;
    EXPECT_GE(time.count(), 6 * 0.3);
    EXPECT_LT(outcome.processorTime, time.count() / 4);
}

TEST(FirmwareJob, KeepsItsPaceWhileTheClockJumps)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 100); // ms
    Command command = programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex);
    command.environment["STAND_IN_CLOCK"] = "jumps";
    const auto begin = Clock::now();
    EXPECT_EQ(runCommand(command).output, upgraded);
    const std::chrono::duration<double> time = Clock::now() - begin;
    EXPECT_GE(time.count(), 6 * 0.1);
    EXPECT_LT(time.count(), 60);
}

TEST(FirmwareJob, ReadsALargeFileInShortTime)
{
    FirmwareUnit unit;
    const std::string text = hexFile(randomBytes(4 << 20));
    const auto begin = Clock::now();
    EXPECT_EQ(upgrade(unit, text), upgraded);
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(10));
}

// Has srec_cat, of the package srecord, convert a binary file.
std::string convert(const std::string& content, const std::string& name,
                    const std::vector<std::string>& options)
{
    const TemporaryFolder folder;
    writeFile(folder / "content", content);
    std::vector<std::string> words{"srec_cat", folder / "content", "-binary"};
    words.insert(words.end(), options.begin(), options.end());
    words.insert(words.end(), {"-o", folder / name, "-intel"});
    const Outcome outcome = runCommand({words});
    EXPECT_EQ(outcome.status, 0) << "srec_cat: " << outcome.errors;
    return readFile(folder / name);
}

TEST(FirmwareJob, TakesTheHexFilesOfOtherTools)
{
    const std::string content = randomBytes(200000);
    const std::string text = convert(content, "firmware.hex", {"-offset", "0x8000000"});
    FirmwareUnit unit;
    EXPECT_EQ(upgrade(unit, text), upgraded);
    EXPECT_EQ(unit["/firmware/ss/bytes"], content.size());
    EXPECT_EQ(verify(unit, hexFile(content, 0x8000000)), verified);
}

TEST(FirmwareJob, TakesTheMcsFilesOfOtherTools)
{
    const std::string content = randomBytes(200000);
    FirmwareUnit unit;
    writeFile(unit.mcs, convert(content, "firmware.mcs", {"-address-length=3"}));
    ASSERT_TRUE(readFile(unit.mcs).starts_with(":02000002")) << "not in segments";
    unit.run("--advanced --update=FPGA --force --filepath=" + unit.mcs);
    EXPECT_EQ(unit["/firmware/fpga/bytes"], content.size());
    writeFile(unit.mcs, hexFile(content));
    EXPECT_TRUE(unit.run("--advanced --verify=FPGA --force --filepath=" + unit.mcs)
                    .output.ends_with("FPGA successfully verified. \n\n"));
}

} // namespace
