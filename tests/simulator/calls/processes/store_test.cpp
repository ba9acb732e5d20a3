#include "device/qv_aux2.h"
#include "support/called_unit.h"
#include "support/children.h"
#include "support/jumping_clock.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/stat.h>
#include <thread>

namespace
{

using nlohmann::json;
using testing::AnyOf;

// 64 processes make 100 changes each. Each process changes its own setting, and a counter in the file counts
// all calls. The file is in memory, because collisions would be less frequent on a slower disk.
void changeAUnitInManyProcesses()
{
    if (std::filesystem::is_directory("/dev/shm"))
        setenv("TMPDIR", "/dev/shm", 1);
    const CalledUnit unit(R"({"about": {"canConnections": 64},
                              "faults": {"CanSetting_setBaudrate": {"code": 77, "skip": 1000000}}})");
    unsetenv("TMPDIR");
    std::vector<int> children;
    for (std::uint8_t channel = 1; channel <= 64; ++channel)
        children.push_back(startChild(
            [channel]
            {
                const CanSettingHandle can = GetCanSetting();
                for (std::uint16_t baudrate = 1; baudrate <= 100; ++baudrate)
                {
                    std::uint16_t found = 0;
                    if (CanSetting_setBaudrate(can, channel, baudrate) != 0 ||
                        CanSetting_getBaudrate(can, channel, &found) != 0 || found != baudrate)
                        _exit(1);
                }
            }));
    waitForAll(children);
    for (std::size_t channel = 1; channel <= 64; ++channel)
        EXPECT_EQ(unit["/can/baudrates"][channel - 1], 100);
    EXPECT_EQ(unit["/faults/CanSetting_setBaudrate/skip"], 1000000 - 64 * 100);
}

TEST(Store, LosesNoChangeOf64ConcurrentProcesses)
{
    changeAUnitInManyProcesses();
}

TEST(Store, LosesNoChangeWhileTheClockJumps)
{
    const JumpingClock clock;
    changeAUnitInManyProcesses();
}

// Another thread may create a file while a call is being made.
TEST(Store, DoesNotChangeTheUmask)
{
    const mode_t mask = umask(027);
    std::atomic<bool> done = false;
    std::atomic<int> others = 0; // files with unexpected permissions
    const TemporaryDirectory directory;
    std::thread creator(
        [&]
        {
            while (!done)
            {
                const int file =
                    open((directory / "file").c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
                struct stat status = {};
                others += fstat(file, &status) != 0 || (status.st_mode & 0777) != 0640;
                close(file);
                std::filesystem::remove(directory / "file");
            }
        });
    const CalledUnit unit;
    for (std::uint16_t volume = 0; volume < 500; ++volume)
    {
        std::filesystem::remove(unit.file() + ".lock");
        Buzzer_setVolume(GetBuzzer(), volume);
    }
    done = true;
    creator.join();
    umask(mask);
    EXPECT_EQ(others, 0);
}

// The name of the directory alternates between two units. A change must not lock one and save the other.
TEST(Store, LosesNoChangeWhileItsDirectoryIsSwapped)
{
    const TemporaryDirectory directory;
    const std::string here = directory / "here";
    const std::string there = directory / "there";
    const std::string link = directory / "link";
    for (const std::string& unit : {here, there})
    {
        std::filesystem::create_directory(unit);
        writeFile(unit + "/unit.json", R"({"faults": {"Buzzer_setVolume": {"code": 77, "skip": 1000000}}})");
    }
    std::filesystem::create_symlink("there", link);
    const int swapper = startChild(
        [&]
        {
            while (renameat2(AT_FDCWD, here.c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE) == 0)
                std::this_thread::sleep_for(std::chrono::microseconds(50));
        });
    setenv("QVAUX_UNIT", (here + "/unit.json").c_str(), 1);
    std::vector<int> children;
    for (int i = 0; i < 16; ++i)
        children.push_back(startChild(
            []
            {
                const BuzzerHandle buzzer = GetBuzzer();
                for (std::uint16_t volume = 0; volume < 100; ++volume)
                    if (Buzzer_setVolume(buzzer, volume) != 0)
                        _exit(1);
            }));
    waitForAll(children);
    unsetenv("QVAUX_UNIT");
    kill(swapper, SIGKILL);
    int status = 0;
    waitpid(swapper, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "the directories could not be swapped";

    int calls = 0;
    for (const std::string& unit : {std::filesystem::is_symlink(here) ? link : here, there})
    {
        const json left =
            json::parse(readFile(unit + "/unit.json"))["/faults/Buzzer_setVolume/skip"_json_pointer];
        EXPECT_LT(left, 1000000) << unit;
        calls += 1000000 - left.get<int>();
    }
    EXPECT_EQ(calls, 16 * 100);
}

// The children start at the same time, before the file exists.
TEST(Store, CreatesAUnitOnceForConcurrentProcesses)
{
    const CalledUnit unit;
    for (int round = 0; round < 20; ++round)
    {
        std::filesystem::remove(unit.file());
        int start[2];
        ASSERT_EQ(pipe(start), 0);
        std::vector<int> children;
        for (std::int32_t setting = 0; setting < 8; ++setting)
            children.push_back(startChild(
                [=]
                {
                    char none;
                    close(start[1]);
                    if (read(start[0], &none, 1) == 0)
                        TouchScreen_setAdvancedSetting(GetTouchScreen(), setting, 4711);
                }));
        close(start[1]);
        close(start[0]);
        waitForAll(children);
        const json touch = unit["/touch"];
        EXPECT_EQ(std::count(touch.begin(), touch.end(), 4711), 8) << touch;
    }
}

// A child sets the volume to 1, 2, 3 and so on. It writes a byte before each change.
TEST(Store, IsCompleteAndUpToDateAfterAKill)
{
    const CalledUnit unit(R"({"buzzer": {"volume": 0}})");
    std::mt19937 random(4711);
    std::uniform_int_distribution<int> moment(0, 3000);
    for (int i = 0; i < 1000; ++i)
    {
        const json before = unit["/buzzer/volume"];
        int started[2];
        ASSERT_EQ(pipe(started), 0);
        const pid_t child = startChild(
            [&]
            {
                const BuzzerHandle buzzer = GetBuzzer();
                for (std::uint16_t volume = 1; write(started[1], "", 1) == 1; ++volume)
                    Buzzer_setVolume(buzzer, volume);
            });
        close(started[1]);
        char bytes[2000];
        ssize_t begun = read(started[0], bytes, 1);
        std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        begun += read(started[0], bytes, sizeof bytes);
        close(started[0]);
        const json last = begun > 1 ? json(begun - 1) : before;
        ASSERT_THAT(unit.content(),
                    AnyOf(json{{"buzzer", {{"volume", last}}}}, json{{"buzzer", {{"volume", begun}}}}));
    }
    EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 2000), 0u);
    EXPECT_EQ(unit["/buzzer/volume"], 2000);
    EXPECT_FALSE(fileExists(unit.file() + ".new"));
}

} // namespace
