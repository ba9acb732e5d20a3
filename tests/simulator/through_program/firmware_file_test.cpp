#include "upgrade.h"

#include <cctype>
#include <chrono>
#include <filesystem>
#include <sys/stat.h>

using namespace std::string_literals;
using Clock = std::chrono::steady_clock;

namespace
{

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

TEST(FirmwareFile, ReportsTheLineOfAnInvalidRecord)
{
    const Broken cases[] = {
        {"word\n", "Reading File", notHex},
        {"00000001FF\n", "Reading File", notHex},       // no colon
        {" :00000001FF\n", "Reading File", notHex},     // a leading space
        {":00000001F\n", "Reading File", notHex},       // half a byte
        {":0000000GFF\n", "Reading File", notHex},      // not a digit
        {":000000 1FF\n", "Reading File", notHex},      // a space between digits
        {"::0000001FF\n", "Reading File", notHex},      // two colons
        {":0000\0001FF\n"s, "Reading File", notHex},    // a null byte
        {":\n", "Reading File", badLength},             // empty
        {":00000001\n", "Reading File", badLength},     // no checksum
        {":0200000000FE\n", "Reading File", badLength}, // one byte too few
        {":000000000000\n", "Reading File", badLength}, // one byte too many
        {":00000000FF\n", "Reading File", badChecksum},
        {":0100000001FF\n", "Reading File", badChecksum},
        {hexRecord(1, 0, "x"), "Reading File", badLength}, // an end record with data
        {hexRecord(2, 0, "x"), "Reading File", badLength}, // an address of the wrong size
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

TEST(FirmwareFile, CountsEmptyLines)
{
    FirmwareUnit unit;
    EXPECT_EQ(upgrade(unit, "\n\r\n" + hexData("x") + "\n:00000000FF\n" + hexEnd),
              upgradeFailed("Reading File", badChecksum + " (line 6)"s));
}

TEST(FirmwareFile, IsCheckedAsAWhole)
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

TEST(FirmwareFile, MustBeARegularFile)
{
    const FirmwareUnit files;
    std::filesystem::create_directory(files.directory / "directory.hex");
    std::filesystem::create_symlink("/dev/zero", files.directory / "device.hex");
    ASSERT_EQ(mkfifo((files.directory / "pipe.hex").c_str(), 0600), 0);
    for (const char* name : {"directory.hex", "device.hex", "pipe.hex"})
    {
        SCOPED_TRACE(name);
        FirmwareUnit unit;
        EXPECT_EQ(unit.run("--advanced --update=SS --force --filepath=" + (files.directory / name)).output,
                  upgradeFailed("Reading File", "The firmware file cannot be read"));
    }
}

TEST(FirmwareFile, MayBeASymbolicLink)
{
    FirmwareUnit unit;
    std::filesystem::create_symlink(unit.mcs, unit.directory / "link.hex");
    EXPECT_EQ(unit.run("--advanced --update=SS --force --filepath=" + (unit.directory / "link.hex")).output,
              upgraded);
}

TEST(FirmwareFile, IsReportedIfItDisappears)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 300); // milliseconds
    Running program(programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex),
                    unit.directory / "output");
    ASSERT_TRUE(becomesTrue([&] { return readFile(unit.directory / "output").ends_with("Initiating\n"); }));
    std::filesystem::remove(unit.hex);
    const std::string failure = upgradeFailed("Reading File", "The firmware file cannot be read");
    EXPECT_TRUE(becomesTrue([&] { return readFile(unit.directory / "output") == failure; }));
}

TEST(FirmwareFile, MayEndAtTheLastAddress)
{
    FirmwareUnit unit;
    EXPECT_EQ(upgrade(unit, hexFile("ab", 0xFFFFFFFE)), upgraded);
}

// The file is sparse and takes no space.
TEST(FirmwareFile, MustNotBeLargerThanTheLargestImage)
{
    constexpr std::uintmax_t limit = std::uintmax_t{512} << 20;
    FirmwareUnit unit;
    std::filesystem::resize_file(unit.hex, limit + 1);
    EXPECT_EQ(unit.run("--advanced --update=SS --force --filepath=" + unit.hex).output,
              upgradeFailed("Reading File", "The firmware does not fit into the target"));
}

TEST(FirmwareFile, DetectsEveryCorruptDigit)
{
    const std::string valid = hexFile(randomBytes(20));
    FirmwareUnit unit;
    for (std::size_t position = 0; position < valid.size(); ++position)
    {
        if (!std::isxdigit(static_cast<unsigned char>(valid[position])))
            continue;
        SCOPED_TRACE(position);
        std::string broken = valid;
        broken[position] = broken[position] == '7' ? '8' : '7';
        EXPECT_NE(upgrade(unit, broken).find("Upgrade failed in state: Reading File.\n"), std::string::npos);
    }
}

TEST(FirmwareFile, DetectsTruncationAtEveryByte)
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

TEST(FirmwareFile, IsCheckedBeforeTheFirmwareChanges)
{
    const std::string content = randomBytes(1000);
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexFile(content)), upgraded);
    upgrade(unit, hexData("x"));
    upgrade(unit, hexEnd);
    EXPECT_EQ(verify(unit, hexFile(content)), verified);
}

TEST(FirmwareFile, MustFitIntoTheTarget)
{
    constexpr std::size_t capacity = 32 << 20;
    FirmwareUnit unit;
    EXPECT_EQ(upgrade(unit, hexFile(std::string(capacity + 1, 'x'), 0, 255)),
              upgradeFailed("Converting file", "The firmware does not fit into the target"));
    EXPECT_EQ(upgrade(unit, hexFile(std::string(capacity, 'x'), 0, 255)), upgraded);
    EXPECT_EQ(unit["/firmware/ss/bytes"], capacity);
}

TEST(FirmwareFile, IsReadQuickly)
{
    FirmwareUnit unit;
    const std::string text = hexFile(randomBytes(4 << 20));
    const auto begin = Clock::now();
    EXPECT_EQ(upgrade(unit, text), upgraded);
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(10));
}

// Converts a binary file with srec_cat, which is in the package srecord.
std::string convert(const std::string& content, const std::string& name,
                    const std::vector<std::string>& options)
{
    const TemporaryDirectory directory;
    writeFile(directory / "content", content);
    std::vector<std::string> words{"srec_cat", directory / "content", "-binary"};
    words.insert(words.end(), options.begin(), options.end());
    words.insert(words.end(), {"-o", directory / name, "-intel"});
    const Outcome outcome = runCommand({words});
    EXPECT_EQ(outcome.status, 0) << "srec_cat: " << outcome.errors;
    return readFile(directory / name);
}

TEST(FirmwareFile, MayBeAHexFileFromAnotherTool)
{
    const std::string content = randomBytes(200000);
    const std::string text = convert(content, "firmware.hex", {"-offset", "0x8000000"});
    FirmwareUnit unit;
    EXPECT_EQ(upgrade(unit, text), upgraded);
    EXPECT_EQ(unit["/firmware/ss/bytes"], content.size());
    EXPECT_EQ(verify(unit, hexFile(content, 0x8000000)), verified);
}

TEST(FirmwareFile, MayBeAnMcsFileFromAnotherTool)
{
    const std::string content = randomBytes(200000);
    FirmwareUnit unit;
    writeFile(unit.mcs, convert(content, "firmware.mcs", {"-address-length=3"}));
    ASSERT_TRUE(readFile(unit.mcs).starts_with(":02000002")) << "expected an extended segment address record";
    unit.run("--advanced --update=FPGA --force --filepath=" + unit.mcs);
    EXPECT_EQ(unit["/firmware/fpga/bytes"], content.size());
    writeFile(unit.mcs, hexFile(content));
    EXPECT_TRUE(unit.run("--advanced --verify=FPGA --force --filepath=" + unit.mcs)
                    .output.ends_with("FPGA successfully verified. \n\n"));
}

} // namespace
