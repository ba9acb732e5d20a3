// Full disks and read-only file systems.

#include "support/private_mount.h"
#include "support/unit.h"

#include <filesystem>
#include <sys/statvfs.h>
#include <unistd.h>

namespace
{

constexpr const char* cannotBeWritten = "setVolume: The unit file cannot be written\n";
constexpr const char* cannotMount =
    "Mounting requires root and, in a container, CAP_SYS_ADMIN. Store.KeepsTheFileOnAFullDisk and "
    "Store.ReadsInAReadOnlyDirectory test the same with a resource limit and with permissions.";

Outcome runOn(const std::string& unit, const std::string& arguments)
{
    return runCommand(programOn(unit, arguments));
}

std::string diagnostic(const std::string& file, const std::string& what)
{
    return "libqv-aux2: " + file + ": " + what + "\n";
}

// Fills the disk until only this number of pages and inodes is free.
void fill(const PrivateMount& disk, unsigned long pages, unsigned long inodes)
{
    struct statvfs state
    {
    };
    ASSERT_EQ(statvfs(disk.path().c_str(), &state), 0);
    writeFile(disk / "ballast", std::string((state.f_bavail - pages) * state.f_bsize, 'x'));
    for (unsigned long i = 1; i < state.f_ffree - inodes; ++i) // one is used by "ballast"
        writeFile(disk / ("ballast" + std::to_string(i)), "");
}

// A change needs an inode for the lock, and one inode and two pages for the new file.
// Store.KeepsTheFileOnAFullDisk does not require root.
TEST(Disk, KeepsTheUnitWhenFull)
{
    const struct
    {
        unsigned long pages;
        unsigned long inodes;
        const char* unwritable; // suffix of the file that cannot be written; null if there is none
    } cases[] = {
        {0, 0, ".lock"}, {0, 1, ".new"}, {0, 9, ".new"},  {1, 9, ".new"},
        {9, 0, ".lock"}, {9, 1, ".new"}, {9, 2, nullptr}, {2, 9, nullptr},
    };
    for (const auto& [pages, inodes, unwritable] : cases)
    {
        SCOPED_TRACE(std::to_string(pages) + " pages, " + std::to_string(inodes) + " inodes");
        const PrivateMount disk = PrivateMount::disk("size=256k,nr_inodes=16");
        if (!disk.isMounted())
            GTEST_SKIP() << cannotMount;
        const std::string file = disk / "unit.json";
        runOn(file, "--buzzer --volume=5");
        ASSERT_EQ((std::filesystem::file_size(file) - 1) / static_cast<unsigned long>(getpagesize()), 1);
        std::filesystem::remove(file + ".lock");
        fill(disk, pages, inodes);
        const std::string before = readFile(file);

        const Outcome outcome = runOn(file, "--buzzer --volume=40");
        EXPECT_EQ(outcome.output, unwritable ? cannotBeWritten : "Buzzer volume set to: 40\n");
        EXPECT_EQ(outcome.errors, unwritable ? diagnostic(file + unwritable, "No space left on device") : "");
        EXPECT_EQ(readFile(file) == before, unwritable != nullptr);
        EXPECT_FALSE(fileExists(file + ".new"));
        EXPECT_EQ(runOn(file, "--buzzer --volume").output,
                  unwritable ? "Buzzer Volume: 5\n" : "Buzzer Volume: 40\n");

        std::filesystem::remove(disk / "ballast");
        std::filesystem::remove(disk / "ballast1");
        std::filesystem::remove(disk / "ballast2");
        EXPECT_EQ(runOn(file, "--buzzer --volume=50").output, "Buzzer volume set to: 50\n");
    }
}

TEST(Disk, CreatesNoUnitWhenFull)
{
    const PrivateMount disk = PrivateMount::disk("size=64k,nr_inodes=16");
    if (!disk.isMounted())
        GTEST_SKIP() << cannotMount;
    fill(disk, 1, 9);
    const std::string file = disk / "unit.json";
    EXPECT_EQ(runOn(file, "--buzzer --volume").output, "getVolume: The unit file cannot be written\n");
    EXPECT_FALSE(fileExists(file));
    EXPECT_FALSE(fileExists(file + ".new"));
    std::filesystem::remove(disk / "ballast");
    EXPECT_EQ(runOn(file, "--buzzer --volume").output, "Buzzer Volume: 1000\n");
}

TEST(Disk, IsNotWrittenWhenReadOnly)
{
    const Unit unit(R"({"buzzer": {"volume": 5}})");
    const PrivateMount disk = PrivateMount::readOnly(unit.directory.path);
    if (!disk.isMounted())
        GTEST_SKIP() << cannotMount;
    const std::string file = disk / "unit.json";
    const auto expectWriteError = [&](const std::string& unwritable)
    {
        const Outcome outcome = runOn(file, "--buzzer --volume=40");
        EXPECT_EQ(outcome.output, cannotBeWritten);
        EXPECT_EQ(outcome.errors, diagnostic(unwritable, "Read-only file system"));
    };
    EXPECT_EQ(runOn(file, "--buzzer --volume").output, "Buzzer Volume: 5\n");
    expectWriteError(file + ".lock");
    writeFile(unit.file() + ".lock", "");
    expectWriteError(file);
    EXPECT_EQ(readFile(unit.file()), R"({"buzzer": {"volume": 5}})");
}

TEST(Disk, RejectsFirmwareWhenReadOnly)
{
    const Unit unit;
    writeFile(unit.directory / "firmware.hex", "");
    const PrivateMount disk = PrivateMount::readOnly(unit.directory.path);
    if (!disk.isMounted())
        GTEST_SKIP() << cannotMount;
    const Outcome outcome =
        runOn(disk / "unit.json", "--advanced --update=SS --force --filepath=" + (disk / "firmware.hex"));
    EXPECT_EQ(outcome.output,
              lines({"File format is correct.", "This upgrade can take a few minutes to perform.",
                     "startSSUpgrade: The unit file cannot be written"}));
    EXPECT_EQ(outcome.errors, diagnostic(disk / "unit.json.job", "Read-only file system"));
}

} // namespace
