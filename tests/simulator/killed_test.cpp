// A change that is killed at any of its system calls.

#include "support/killer.h"
#include "support/unit.h"

#include <filesystem>

namespace
{

TEST(Killed, AChangeLeavesTheOldUnitOrTheNewOneAtEverySystemCall)
{
    bool killed = true;
    for (unsigned stop = 1; killed; ++stop)
    {
        SCOPED_TRACE(stop);
        Unit unit(R"({"buzzer": {"volume": 1}})");
        killed = killAtSystemCall(programOn(unit.file(), "--buzzer --volume=2"), stop);
        const nlohmann::json volume = unit["/buzzer/volume"];
        EXPECT_TRUE(volume == 2 || (killed && volume == 1)) << volume;
        EXPECT_EQ(unit.run("--buzzer --volume=3").output, "Buzzer volume set to: 3\n");
    }
}

TEST(Killed, MakingAUnitLeavesNoneOrAWholeOneAtEverySystemCall)
{
    bool killed = true;
    for (unsigned stop = 1; killed; ++stop)
    {
        SCOPED_TRACE(stop);
        Unit unit;
        std::filesystem::remove(unit.file());
        killed = killAtSystemCall(programOn(unit.file(), "--buzzer --volume"), stop);
        EXPECT_TRUE(killed || fileExists(unit.file()));
        EXPECT_EQ(unit.run("--buzzer --volume").output, "Buzzer Volume: 1000\n");
    }
}

} // namespace
