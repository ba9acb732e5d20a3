#include "upgrade.h"

#include <algorithm>
#include <cctype>

using namespace std::string_literals;

namespace
{

TEST(Firmware, IsStoredAsADigest)
{
    const std::string content = randomBytes(400000);
    FirmwareUnit unit;
    EXPECT_EQ(upgrade(unit, hexFile(content)), upgraded);
    EXPECT_EQ(unit["/firmware/ss/bytes"], content.size());
    EXPECT_EQ(unit["/firmware/ss/digest"].get<std::string>().size(), 64);
    EXPECT_EQ(verify(unit, hexFile(content)), verified);
}

TEST(Firmware, IsComparedRegardlessOfTheFormatOfTheFile)
{
    const std::string content = randomBytes(1000);
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexFile(content, 0x12340)), upgraded);

    const std::string text = hexFile(content, 0x12340);
    std::string lower = text;
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return std::tolower(c); });
    std::string dosLines;
    std::string trailingSpaces;
    std::string emptyLines;
    for (const char c : text)
    {
        dosLines += c == '\n' ? "\r\n" : std::string(1, c);
        trailingSpaces += c == '\n' ? " \t\n" : std::string(1, c);
        emptyLines += c == '\n' ? "\n\n" : std::string(1, c);
    }
    const std::string linear = hexRecord(4, 0, "\0\1"s);
    const std::pair<const char*, std::string> writings[] = {
        {"short records", hexFile(content, 0x12340, 1)},
        {"long records", hexFile(content, 0x12340, 255)},
        {"lowercase", lower},
        {"carriage returns", dosLines},
        {"trailing spaces", trailingSpaces},
        {"empty lines", emptyLines},
        {"no last newline", text.substr(0, text.size() - 1)},
        {"descending addresses",
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

TEST(Firmware, ContinuesLinearlyAtTheEndOfASegment)
{
    const std::string content = randomBytes(200);
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexRecord(2, 0, "\x12\x34"s) + hexRecord(0, 0xFFF0, content) + hexEnd), upgraded);
    EXPECT_EQ(verify(unit, hexFile(content, 0x12340 + 0xFFF0)), verified);
}

TEST(Firmware, IsVerifiedBitByBit)
{
    const std::string content = randomBytes(1000);
    std::string changed = content;
    changed[999] = static_cast<char>(changed[999] ^ 1);
    const std::pair<const char*, std::string> others[] = {
        {"other firmware", hexFile(randomBytes(1000, 2))},
        {"one bit", hexFile(changed)},
        {"one byte less", hexFile(content.substr(0, 999))},
        {"one byte more", hexFile(content + "x")},
        {"another address", hexFile(content, 0x10000)},
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

TEST(Firmware, CannotBeVerifiedBeforeTheFirstUpgrade)
{
    FirmwareUnit unit;
    EXPECT_EQ(verify(unit, hexFile(randomBytes(1000))), differs);
}

TEST(Firmware, IsSeparateForEachTarget)
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

TEST(Firmware, HasItsNewVersionAfterTheNextBoot)
{
    const std::string content = randomBytes(300) + "FWVERSION=1.2.3.4" + randomBytes(300, 2);
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexFile(content)), upgraded);
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 2.7.1.0\n");
    EXPECT_EQ(unit["/firmware/ss/nextVersion"], "1.2.3.4");
    unit.shutDown();
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 2.7.1.0\n");
    EXPECT_EQ(unit["/firmware/ss/nextVersion"], "1.2.3.4");
    unit.cutPower();
    EXPECT_EQ(unit["/versions/ss"], nullptr);
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 1.2.3.4\n");
    EXPECT_EQ(unit["/firmware/ss/nextVersion"], nullptr);
    EXPECT_EQ(verify(unit, hexFile(content)), verified);
}

TEST(Firmware, HasAVersionForEachTarget)
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

TEST(Firmware, KeepsItsVersionIfTheFileContainsNone)
{
    for (const char* text :
         {"no version", "FWVERSION=", "FWVERSION=1.2.3", "FWVERSION=1.2.3.", "FWVERSION=1.2.3.256",
          "FWVERSION=-1.2.3.4", "FWVERSION=1,2,3,4", "fwversion=1.2.3.4"})
    {
        SCOPED_TRACE(text);
        FirmwareUnit unit;
        ASSERT_EQ(upgrade(unit, hexFile(text)), upgraded);
        unit.cutPower();
        EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 2.7.1.0\n");
    }
}

TEST(Firmware, FindsItsVersionAcrossRecordsAndInAnyBlock)
{
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexData("other block") + hexData("FWVERSION=11.22.33.44 ", 0xFFFA, 3) + hexEnd),
              upgraded);
    unit.cutPower();
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 11.22.33.44\n");
}

TEST(Firmware, HasTheFirstValidVersionInTheFile)
{
    FirmwareUnit unit;
    ASSERT_EQ(upgrade(unit, hexFile("FWVERSION=%d FWVERSION=FWVERSION=1.2.3.4 FWVERSION=5.6.7.8")), upgraded);
    unit.cutPower();
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 1.2.3.4\n");
}

} // namespace
