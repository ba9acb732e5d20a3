#include "device/qv_aux2.h"
#include "support/called_unit.h"
#include "support/jumping_clock.h"

#include <gmock/gmock.h>

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>

namespace
{

using nlohmann::json;

TEST(Store, WritesNoResultIfTheCallCannotBeCounted)
{
    CalledUnit unit(R"({"boot": {"running": false}})");
    std::filesystem::create_directory(unit.file() + ".new");
    const BuzzerHandle buzzer = GetBuzzer();
    std::uint16_t volume = 4711;
    testing::internal::CaptureStderr();
    EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 67u);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "libqv-aux2: " + unit.file() + ".new: Is a directory\n");
    EXPECT_EQ(volume, 4711);
}

TEST(Store, DetectsEveryEdit)
{
    CalledUnit unit;
    const BuzzerHandle buzzer = GetBuzzer();
    for (unsigned wanted = 100; wanted < 400; ++wanted)
    {
        std::uint16_t volume = 0;
        writeFile(unit.file(), R"({"buzzer": {"volume": )" + std::to_string(wanted) + "}}");
        ASSERT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
        ASSERT_EQ(volume, wanted);
    }
}

// A second write to a mapped page does not change the time stamps of the file. The same happens if a file is
// changed twice within the resolution of the file system's time stamps.
TEST(Store, DetectsAnEditThatKeepsTheTimeStamps)
{
    CalledUnit unit(R"({"buzzer": {"volume": 100}})");
    const BuzzerHandle buzzer = GetBuzzer();
    const std::size_t size = readFile(unit.file()).size();
    const int file = open(unit.file().c_str(), O_RDWR | O_CLOEXEC);
    void* const mapped = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    ASSERT_NE(mapped, MAP_FAILED);
    char* const digit = static_cast<char*>(mapped) + readFile(unit.file()).find("100");
    for (const char changed : {'2', '3', '4'})
    {
        *digit = changed;
        std::uint16_t volume = 0;
        EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
        EXPECT_EQ(volume, (changed - '0') * 100);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
    }
    munmap(mapped, size);
}

// The edits are made in different clock ticks, so the time stamps of the file differ.
TEST(Store, DetectsEveryEditWhileTheClockJumps)
{
    const JumpingClock clock;
    const CalledUnit unit;
    const BuzzerHandle buzzer = GetBuzzer();
    for (unsigned wanted = 100; wanted < 130; ++wanted)
    {
        std::uint16_t volume = 0;
        writeFile(unit.file(), R"({"buzzer": {"volume": )" + std::to_string(wanted) + "}}");
        ASSERT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
        ASSERT_EQ(volume, wanted);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

TEST(Store, KeepsEditsMadeBetweenItsOwnChanges)
{
    CalledUnit unit;
    const BuzzerHandle buzzer = GetBuzzer();
    ASSERT_EQ(Buzzer_setVolume(buzzer, 40), 0u);
    unit.set("/buzzer/frequency", 800);
    ASSERT_EQ(Buzzer_setVolume(buzzer, 50), 0u);
    EXPECT_EQ(unit["/buzzer"], (json{{"volume", 50}, {"frequency", 800}}));
}

TEST(Store, CreatesANewUnitIfTheFileIsRemoved)
{
    CalledUnit unit(R"({"buzzer": {"volume": 5, "frequency": 800}})");
    const BuzzerHandle buzzer = GetBuzzer();
    ASSERT_EQ(Buzzer_setVolume(buzzer, 40), 0u);
    std::filesystem::remove(unit.file());
    ASSERT_EQ(Buzzer_setVolume(buzzer, 50), 0u);
    EXPECT_EQ(unit["/buzzer/volume"], 50);
    EXPECT_EQ(unit["/buzzer/frequency"], 2500);
}

TEST(Store, LeaksNoFileDescriptors)
{
    const auto openFiles = []
    {
        const std::filesystem::directory_iterator files("/proc/self/fd");
        return std::distance(begin(files), end(files));
    };
    CalledUnit unit(R"({"faults": {"Buzzer_setTrigger": {"code": 77, "skip": 1000}}})");
    const BuzzerHandle buzzer = GetBuzzer();
    Buzzer_setVolume(buzzer, 1);
    const auto before = openFiles();
    for (std::uint16_t volume = 0; volume < 50; ++volume)
    {
        EXPECT_EQ(Buzzer_setVolume(buzzer, volume), 0u);
        EXPECT_EQ(Buzzer_setTrigger(buzzer, 1), 0u);
        EXPECT_EQ(Buzzer_setVolume(buzzer, 2001), 5u);
    }
    writeFile(unit.file(), "{");
    testing::internal::CaptureStderr();
    for (std::uint16_t volume = 0; volume < 50; ++volume)
        EXPECT_EQ(Buzzer_setVolume(buzzer, volume), 66u);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(openFiles(), before);
}

} // namespace
