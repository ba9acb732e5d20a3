// Kills processes at each of their system calls.

#include "support/killer.h"
#include "support/unit.h"

#include <filesystem>
#include <sys/stat.h>

namespace
{

constexpr auto readableByAll = std::filesystem::perms(0444);

// The lock file of a killed process must be usable by other users, regardless of the umask.
bool isLockUsableForAll(const Unit& unit)
{
    const std::string lock = unit.file() + ".lock";
    return !fileExists(lock) ||
           (std::filesystem::status(lock).permissions() & readableByAll) == readableByAll;
}

TEST(Killed, ChangeLeavesTheOldUnitOrTheNewOne)
{
    const auto before = R"({"buzzer": {"volume": 1}})"_json;
    const auto after = R"({"buzzer": {"volume": 2}})"_json;
    const mode_t mask = umask(077);
    bool killed = true;
    for (unsigned stop = 1; killed; ++stop)
    {
        SCOPED_TRACE(stop);
        Unit unit(before.dump());
        killed = killAtSystemCall(programOn(unit.file(), "--buzzer --volume=2"), stop);
        const nlohmann::json content = unit.content();
        EXPECT_TRUE(content == after || (killed && content == before)) << content;
        EXPECT_TRUE(isLockUsableForAll(unit));
        EXPECT_EQ(unit.run("--buzzer --volume=3").output, "Buzzer volume set to: 3\n");
        EXPECT_FALSE(fileExists(unit.file() + ".new"));
    }
    umask(mask);
}

TEST(Killed, CreationLeavesNoUnitOrACompleteOne)
{
    const mode_t mask = umask(077);
    bool killed = true;
    for (unsigned stop = 1; killed; ++stop)
    {
        SCOPED_TRACE(stop);
        Unit unit;
        std::filesystem::remove(unit.file());
        killed = killAtSystemCall(programOn(unit.file(), "--buzzer --volume"), stop);
        EXPECT_TRUE(killed || fileExists(unit.file()));
        EXPECT_TRUE(isLockUsableForAll(unit));
        EXPECT_EQ(unit.run("--buzzer --volume").output, "Buzzer Volume: 1000\n");
    }
    umask(mask);
}

} // namespace
