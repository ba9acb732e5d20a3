// Long-lived processes, which keep their handles while the unit or the process changes.

#include "device/qv_aux2.h"
#include "support/children.h"
#include "support/firmware_unit.h"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <malloc.h>
#include <unistd.h>

namespace
{

using nlohmann::json;

std::uint16_t volumeOf(BuzzerHandle buzzer)
{
    std::uint16_t volume = 0;
    EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
    return volume;
}

TEST(Session, SeesChangesOfOtherProcessesThroughEveryHandle)
{
    Unit unit;
    runInChild(unit.file(),
               [&]
               {
                   const BuzzerHandle first = GetBuzzer();
                   const BuzzerHandle second = GetBuzzer();
                   const BacklightHandle backlight = GetBacklight();
                   for (int round = 1; round <= 5; ++round)
                   {
                       unit.run("--buzzer --volume=" + std::to_string(10 * round));
                       EXPECT_EQ(volumeOf(first), 10 * round);
                       EXPECT_EQ(Backlight_setIntensity(backlight, static_cast<std::uint8_t>(round)), 0u);
                       EXPECT_EQ(Buzzer_setVolume(second, static_cast<std::uint16_t>(10 * round + 1)), 0u);
                       EXPECT_EQ(unit.run("--buzzer --volume").output,
                                 "Buzzer Volume: " + std::to_string(10 * round + 1) + "\n");
                       EXPECT_EQ(unit["/backlight/intensity"], round);
                       EXPECT_EQ(volumeOf(first), 10 * round + 1);
                   }
                   EXPECT_EQ(Buzzer_release(first), 0u);
                   EXPECT_EQ(Buzzer_release(first), 3u);
                   EXPECT_EQ(volumeOf(second), 51);
               });
}

TEST(Session, SeesFaultsBeginAndEnd)
{
    Unit unit;
    runInChild(unit.file(),
               [&]
               {
                   const BuzzerHandle buzzer = GetBuzzer();
                   std::uint16_t volume = 0;
                   for (int round = 0; round < 3; ++round)
                   {
                       EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
                       unit.fails("Buzzer_getVolume", 77);
                       EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 77u);
                       unit.set("/faults", json::object());
                       EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
                       // The calls of all processes are counted together.
                       unit.failsOnce("Buzzer_getVolume", 78, 2);
                       EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
                       unit.run("--buzzer --volume");
                       EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 78u);
                       EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
                       unit.returnsNull("GetBuzzer");
                       EXPECT_EQ(GetBuzzer(), nullptr);
                       EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 0u);
                       unit.set("/faults", json::object());
                   }
               });
}

TEST(Session, ContinuesAfterTheFileWasBrokenMissingOrReplaced)
{
    Unit unit(R"({"buzzer": {"volume": 5}})");
    runInChild(unit.file(),
               [&]
               {
                   const BuzzerHandle buzzer = GetBuzzer();
                   EXPECT_EQ(volumeOf(buzzer), 5);
                   std::uint16_t volume = 4711;
                   writeFile(unit.file(), "{");
                   EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 66u);
                   EXPECT_EQ(Buzzer_setVolume(buzzer, 40), 66u);
                   EXPECT_EQ(readFile(unit.file()), "{");
                   EXPECT_EQ(volume, 4711);
                   // Some editors replace the file.
                   writeFile(unit.file() + "~", R"({"buzzer": {"volume": 6}})");
                   std::filesystem::rename(unit.file() + "~", unit.file());
                   EXPECT_EQ(volumeOf(buzzer), 6);
                   std::filesystem::remove(unit.file());
                   EXPECT_EQ(volumeOf(buzzer), 1000);
                   std::filesystem::remove(unit.file());
                   std::filesystem::create_directory(unit.file());
                   EXPECT_EQ(Buzzer_getVolume(buzzer, &volume), 65u);
                   std::filesystem::remove(unit.file());
                   EXPECT_EQ(Buzzer_setVolume(buzzer, 40), 0u);
                   EXPECT_EQ(unit["/buzzer/volume"], 40);
               });
}

TEST(Session, CanSwitchToAnotherUnitAndTrace)
{
    const Unit first(R"({"buzzer": {"volume": 5}})");
    const Unit second(R"({"buzzer": {"volume": 6}})");
    runInChild(first.file(),
               [&]
               {
                   const BuzzerHandle buzzer = GetBuzzer();
                   for (int round = 0; round < 3; ++round)
                       for (const Unit* unit : {&first, &second})
                       {
                           setenv("QVAUX_UNIT", unit->file().c_str(), 1);
                           setenv("QVAUX_TRACE", (unit->directory / "trace").c_str(), 1);
                           EXPECT_EQ(volumeOf(buzzer), (unit == &first ? 5 : 6) + 2 * round);
                           EXPECT_EQ(Buzzer_setVolume(buzzer, static_cast<std::uint16_t>(
                                                                  (unit == &first ? 7 : 8) + 2 * round)),
                                     0u);
                       }
               });
    EXPECT_EQ(splitLines(readFile(first.directory / "trace")).size(), 6u);
    EXPECT_EQ(splitLines(readFile(second.directory / "trace")).size(), 6u);
}

TEST(Session, KeepsItsHandlesInAChildProcess)
{
    const Unit unit(R"({"buzzer": {"volume": 5}})");
    runInChild(unit.file(),
               [&]
               {
                   const BuzzerHandle buzzer = GetBuzzer();
                   EXPECT_EQ(volumeOf(buzzer), 5);
                   runInChild(unit.file(),
                              [&]
                              {
                                  EXPECT_EQ(volumeOf(buzzer), 5);
                                  EXPECT_EQ(Buzzer_setVolume(buzzer, 40), 0u);
                                  EXPECT_EQ(Buzzer_release(buzzer), 0u);
                              });
                   EXPECT_EQ(volumeOf(buzzer), 40);
               });
}

// A program may load the library as a plugin. The test is already linked to the library, so it loads the copy
// without a SONAME.
class LoadedLibrary
{
public:
    LoadedLibrary()
        : handle(dlopen((noSonameLibraryDirectory() + "/libqv-aux2.so.2.11").c_str(), RTLD_NOW | RTLD_LOCAL))
    {
        EXPECT_NE(handle, nullptr) << dlerror();
    }

    ~LoadedLibrary()
    {
        EXPECT_EQ(dlclose(handle), 0);
    }

    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    template <typename Function>
    Function* find(const char* name) const
    {
        return reinterpret_cast<Function*>(dlsym(handle, name));
    }

private:
    void* const handle;
};

// Upgrades the firmware and returns the error of the job.
ApiError upgradeThrough(const LoadedLibrary& library, const std::string& file)
{
    const FirmwareUpgradeHandle upgrade = library.find<decltype(GetFirmwareUpgrade)>("GetFirmwareUpgrade")();
    const auto start =
        library.find<decltype(FirmwareUpgrade_startSSUpgrade)>("FirmwareUpgrade_startSSUpgrade");
    const auto getStatus =
        library.find<decltype(FirmwareUpgrade_getUpgradeStatus)>("FirmwareUpgrade_getUpgradeStatus");
    UpgradeStatus status{};
    ApiError code = start(upgrade, file.c_str(), 0);
    for (int i = 0; i < 40 && code == 0 && status.error == 0 && status.state < QV_UPGRADE_DONE; ++i)
        code = getStatus(upgrade, &status, 1);
    library.find<decltype(FirmwareUpgrade_release)>("FirmwareUpgrade_release")(upgrade);
    return code != 0 ? code : status.error;
}

struct Consumption
{
    std::ptrdiff_t files;
    std::ptrdiff_t mappings;
    std::size_t memory; // bytes
};

Consumption measureConsumption()
{
    const std::filesystem::directory_iterator files("/proc/self/fd");
    std::ifstream maps("/proc/self/maps");
    const struct mallinfo2 heap = mallinfo2();
    return {std::distance(begin(files), end(files)),
            std::count(std::istreambuf_iterator<char>(maps), {}, '\n'), heap.uordblks + heap.hblkhd};
}

// The library stays loaded, so what it returned stays valid.
TEST(Session, CanLoadTheLibraryAgainAndAgain)
{
    const FirmwareUnit unit;
    runInChild(unit.file(),
               [&]
               {
                   BuzzerHandle buzzer = nullptr;
                   const char* text = nullptr;
                   Consumption early{};
                   for (std::uint16_t round = 0; round < 60; ++round)
                   {
                       const LoadedLibrary library;
                       if (round == 0)
                       {
                           buzzer = library.find<decltype(GetBuzzer)>("GetBuzzer")();
                           text = library.find<decltype(GetErrorStringA)>("GetErrorStringA")(5);
                       }
                       const auto setVolume = library.find<decltype(Buzzer_setVolume)>("Buzzer_setVolume");
                       ASSERT_EQ(setVolume(buzzer, round), 0u);
                       ASSERT_STREQ(text, "The value is out of range");
                       ASSERT_EQ(upgradeThrough(library, unit.hex), 0u);
                       if (round == 10)
                           early = measureConsumption();
                   }
                   const Consumption late = measureConsumption();
                   EXPECT_EQ(late.files, early.files);
                   EXPECT_LE(late.mappings, early.mappings + 2);
                   EXPECT_LE(late.memory, early.memory + 5000) << "more than 100 bytes for each round";
               });
    EXPECT_EQ(unit["/buzzer/volume"], 59);
}

} // namespace
