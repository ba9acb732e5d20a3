// File systems with coarse time stamps, without permissions or without locks; access control lists; files
// that cannot be replaced.

#include "device/qv_aux2.h"
#include "support/children.h"
#include "support/disk_image.h"
#include "support/system_calls.h"
#include "support/unit.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <time.h>
#include <unistd.h>

namespace
{

using nlohmann::json;

constexpr const char* changed = "Buzzer volume set to: 40\n";
constexpr const char* cannotBeWritten = "setVolume: The unit file cannot be written\n";

// Inodes of 128 bytes store the seconds of a time stamp only.
constexpr const char* ext2WithSmallInodes = "mkfs.ext2 -q -F -I 128";

std::string notMounted(const DiskImage& disk)
{
    return std::string("the file system cannot be mounted here: ") + disk.problem();
}

// Writes the file early in a second, so that an edit that follows has the same time stamp, but not in the
// same tick of the clock.
void writeEarlyInASecond(const std::string& file, const std::string& content)
{
    timespec now{};
    do
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        clock_gettime(CLOCK_REALTIME_COARSE, &now);
    } while (now.tv_nsec > 300'000'000);
    writeFile(file, content);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
}

TEST(CoarseTimeStamps, HideNoEditByHand)
{
    const DiskImage disk(ext2WithSmallInodes, "noatime");
    if (disk.problem())
        GTEST_SKIP() << notMounted(disk);
    const std::string file = disk / "unit.json";
    runInChild(file,
               [&]
               {
                   const BuzzerHandle buzzer = GetBuzzer();
                   std::uint16_t volume = 0;
                   writeEarlyInASecond(file, R"({"buzzer": {"volume": 5}})");
                   EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
                   EXPECT_EQ(volume, 5);
                   writeFile(file, R"({"buzzer": {"volume": 6}})");
                   EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
                   EXPECT_EQ(volume, 6);
               });
}

TEST(CoarseTimeStamps, LetNoChangeOverwriteAnEditByHand)
{
    const DiskImage disk(ext2WithSmallInodes, "noatime");
    if (disk.problem())
        GTEST_SKIP() << notMounted(disk);
    const std::string file = disk / "unit.json";
    runInChild(file,
               [&]
               {
                   const BuzzerHandle buzzer = GetBuzzer();
                   writeEarlyInASecond(file, R"({"buzzer": {"volume": 5}})");
                   EXPECT_EQ(Buzzer_setFrequency(buzzer, 2500), 0u) << "reads the file, but changes nothing";
                   writeFile(file, R"({"buzzer": {"volume": 6}})");
                   EXPECT_EQ(Buzzer_setFrequency(buzzer, 800), 0u);
               });
    EXPECT_EQ(json::parse(readFile(file)), (json{{"buzzer", {{"volume", 6}, {"frequency", 800}}}}));
}

TEST(Vfat, AcceptsAChange)
{
    const DiskImage disk("mkfs.vfat", "uid=0");
    if (disk.problem())
        GTEST_SKIP() << notMounted(disk);
    writeFile(disk / "unit.json", R"({"buzzer": {"volume": 5}})");
    EXPECT_EQ(runCommand(programOn(disk / "unit.json", "--buzzer --volume=40")).output, changed);
    EXPECT_EQ(json::parse(readFile(disk / "unit.json"))["buzzer"]["volume"], 40);
    EXPECT_FALSE(fileExists(disk / "unit.json.new"));
}

// The mount point of a file cannot be replaced.
TEST(BindMount, OfTheUnitFilePreventsAChange)
{
    const Unit unit(R"({"buzzer": {"volume": 5}})");
    writeFile(unit.directory / "target.json", "");
    Command command = programOn(unit.directory / "target.json", "--buzzer --volume=40");
    const std::string mount = "mount --bind " + unit.file() + " " + (unit.directory / "target.json");
    if (runCommand(
            {.words = {"unshare", "-m", "sh", "-c", mount}, .environment = {{"PATH", "/usr/bin:/bin"}}})
            .status != 0)
        GTEST_SKIP() << "a file cannot be mounted here";
    const std::vector<std::string> words{"unshare", "-m", "sh", "-c", mount + " && exec \"$@\"", "sh"};
    command.words.insert(command.words.begin(), words.begin(), words.end());
    const Outcome outcome = runCommand(command);
    EXPECT_EQ(outcome.output, cannotBeWritten);
    EXPECT_EQ(outcome.errors,
              "libqv-aux2: " + (unit.directory / "target.json") + ": Device or resource busy\n");
    EXPECT_EQ(readFile(unit.file()), R"({"buzzer": {"volume": 5}})");
    EXPECT_FALSE(fileExists(unit.directory / "target.json.new"));
}

// Some network file systems have no locks.
TEST(Locks, ThatFailPreventAChange)
{
    const Unit unit(R"({"buzzer": {"volume": 5}})");
    SystemCallWatcher watcher;
    watcher.failure = {.error = ENOLCK, .kind = SYS_flock};
    watcher.run(programOn(unit.file(), "--buzzer --volume=40"), unit.directory / "output");
    const std::string output = readFile(unit.directory / "output");
    EXPECT_NE(output.find(cannotBeWritten), std::string::npos) << output;
    EXPECT_NE(output.find("unit.json.lock: No locks available\n"), std::string::npos) << output;
    EXPECT_EQ(readFile(unit.file()), R"({"buzzer": {"volume": 5}})");
}

// Access control lists.

std::string output(const std::vector<std::string>& words)
{
    const Outcome outcome =
        runCommand({.words = words, .environment = {{"PATH", "/usr/bin:/bin"}, {"LC_ALL", "C"}}});
    return outcome.output + outcome.errors;
}

std::string accessTo(const std::string& file)
{
    return output({"getfacl", "-cEp", file});
}

bool setAccess(const std::string& entries, const std::string& file, const std::string& option = "-m")
{
    return output({"setfacl", option, entries, file}).empty();
}

// A change keeps the access to the file, or is refused with a reason.
void expectAccessKept(const Unit& unit)
{
    const std::string access = accessTo(unit.file());
    const std::string before = readFile(unit.file());
    const Outcome outcome = runCommand(programOn(unit.file(), "--buzzer --volume=40"));
    EXPECT_EQ(accessTo(unit.file()), access);
    if (outcome.output == changed)
        EXPECT_EQ(unit["/buzzer/volume"], 40);
    else
    {
        EXPECT_EQ(outcome.output, cannotBeWritten);
        EXPECT_NE(outcome.errors, "");
        EXPECT_EQ(readFile(unit.file()), before);
    }
    EXPECT_FALSE(fileExists(unit.file() + ".new"));
}

class AccessControlList : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!setAccess("u:nobody:r", unit.file()) || !setAccess("u:nobody", unit.file(), "-x"))
            GTEST_SKIP() << "no access control list can be set here";
    }

    const Unit unit{R"({"buzzer": {"volume": 5}})"};
};

TEST_F(AccessControlList, IsKept)
{
    for (const char* entries :
         {"u:nobody:rw", "u:nobody:rw,g::-", "g:nogroup:rw,g::-,o::-", "u:nobody:rw,m::r"})
    {
        SCOPED_TRACE(entries);
        writeFile(unit.file(), R"({"buzzer": {"volume": 5}})");
        output({"setfacl", "-b", unit.file()});
        ASSERT_TRUE(setAccess(entries, unit.file()));
        expectAccessKept(unit);
    }
}

TEST_F(AccessControlList, OfTheDirectoryGrantsNothing)
{
    for (const mode_t mode : {0600u, 0640u, 0644u, 0664u})
    {
        SCOPED_TRACE(mode);
        writeFile(unit.file(), R"({"buzzer": {"volume": 5}})");
        output({"setfacl", "-b", unit.file()});
        ASSERT_EQ(chmod(unit.file().c_str(), mode), 0);
        ASSERT_TRUE(setAccess("d:u:nobody:rw,d:g::rw,d:o::rw", unit.directory.path));
        expectAccessKept(unit);
    }
}

TEST_F(AccessControlList, ThatCannotBeSetPreventsAChange)
{
    ASSERT_TRUE(setAccess("u:nobody:rw,g::-", unit.file()));
    const std::string access = accessTo(unit.file());
    SystemCallWatcher watcher;
    watcher.failure = {.error = ENOSPC, .kind = SYS_fsetxattr};
    watcher.run(programOn(unit.file(), "--buzzer --volume=40"), unit.directory / "output");
    const std::string output = readFile(unit.directory / "output");
    EXPECT_NE(output.find(cannotBeWritten), std::string::npos) << output;
    EXPECT_NE(output.find("unit.json: No space left on device\n"), std::string::npos) << output;
    EXPECT_EQ(accessTo(unit.file()), access);
    EXPECT_EQ(readFile(unit.file()), R"({"buzzer": {"volume": 5}})");
    EXPECT_FALSE(fileExists(unit.file() + ".new"));
}

TEST_F(AccessControlList, IsKeptForOtherUsers)
{
    if (getuid() != 0)
        GTEST_SKIP() << "needs root";
    ASSERT_TRUE(setAccess("u:nobody:rw,g::-,o::-", unit.file()));
    const Nobody nobody;
    expectAccessKept(unit);
    EXPECT_EQ(nobody.run(programOn(unit.file(), "--buzzer --volume")).output,
              "Buzzer Volume: " + unit["/buzzer/volume"].dump() + "\n");
}

} // namespace
