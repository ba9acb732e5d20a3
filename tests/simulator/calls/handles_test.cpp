#include "operations.h"

#include <cstdlib>
#include <limits>
#include <malloc.h>
#include <set>

namespace
{

TEST(Handles, MustNotBeNull)
{
    const CalledUnit unit;
    for (const auto& operations : {everyOperation(), everyRelease()})
        for (const Operation& checked : operations)
            EXPECT_EQ(checked.call(nullptr), invalidHandle) << checked.name;
    EXPECT_EQ(unit.content(), unchanged);
}

TEST(Handles, MustBelongToTheModule)
{
    const CalledUnit unit;
    const BuzzerHandle buzzer = GetBuzzer();
    const LightsensorHandle sensor = GetLightsensor();
    for (const auto& operations : {everyOperation(), everyRelease()})
        for (const Operation& checked : operations)
        {
            const bool isBuzzer = moduleOf(checked.name) == "Buzzer";
            const void* const handle = isBuzzer ? static_cast<const void*>(sensor) : buzzer;
            EXPECT_EQ(checked.call(handle), invalidHandle) << checked.name;
        }
    EXPECT_EQ(unit.content(), unchanged);
}

TEST(Handles, AreInvalidOnceReleased)
{
    const CalledUnit unit;
    for (const Operation& release : everyRelease())
    {
        const void* const handle = release.acquire();
        EXPECT_EQ(release.call(handle), 0u) << release.name;
        EXPECT_EQ(release.call(handle), invalidHandle) << release.name;
        for (const Operation& checked : operationsLike({(moduleOf(release.name) + "_*").c_str()}))
            EXPECT_EQ(checked.call(handle), invalidHandle) << checked.name;
    }
    EXPECT_EQ(unit.content(), unchanged);
}

TEST(Handles, MustHaveBeenAcquired)
{
    const CalledUnit unit;
    const auto buzzer = reinterpret_cast<std::uintptr_t>(GetBuzzer());
    for (const std::uintptr_t number :
         {std::uintptr_t{1}, buzzer - 1, buzzer + 1, buzzer + 16, std::numeric_limits<std::uintptr_t>::max(),
          std::numeric_limits<std::uintptr_t>::max() - 15, reinterpret_cast<std::uintptr_t>(&unit)})
    {
        std::uint16_t volume = 4711;
        EXPECT_EQ(Buzzer_getVolume(reinterpret_cast<BuzzerHandle>(number), &volume), invalidHandle) << number;
        EXPECT_EQ(Buzzer_release(reinterpret_cast<BuzzerHandle>(number)), invalidHandle) << number;
        EXPECT_EQ(volume, 4711);
    }
}

TEST(Handles, AreNeverReused)
{
    const CalledUnit unit;
    std::set<const void*> handles;
    for (int i = 0; i < 1000; ++i)
    {
        const BuzzerHandle buzzer = GetBuzzer();
        EXPECT_TRUE(handles.insert(buzzer).second);
        EXPECT_EQ(i % 2 ? Buzzer_release(buzzer) : 0, 0u);
    }
    EXPECT_EQ(handles.count(nullptr), 0u);
}

TEST(Handles, OfOneModuleAreIndependent)
{
    const CalledUnit unit;
    const BuzzerHandle one = GetBuzzer();
    const BuzzerHandle other = GetBuzzer();
    EXPECT_EQ(Buzzer_release(one), 0u);
    EXPECT_EQ(Buzzer_setVolume(other, 40), 0u);
    EXPECT_EQ(unit["/buzzer/volume"], 40);
}

TEST(Handles, UseNoMemoryOnceReleased)
{
    const CalledUnit unit;
    unsetenv("QVAUX_TRACE");
    Buzzer_release(GetBuzzer());
    const std::size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 2000; ++i)
        Buzzer_release(GetBuzzer());
    EXPECT_EQ(mallinfo2().uordblks, before);
}

} // namespace
