#include "device/qv_aux2.h"
#include "support/called_unit.h"
#include "support/firmware_unit.h"

#include <chrono>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;

// Runs `work` in a process without handles and jobs. Returns its result, from 0 to 255.
int inNewProcess(const std::function<unsigned()>& work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(static_cast<int>(work()));
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(FirmwareJob, HasNoStatusBeforeItStarts)
{
    const Called<FirmwareUnit> unit;
    UpgradeStatus status{};
    EXPECT_EQ(
        inNewProcess([&] { return FirmwareUpgrade_getUpgradeStatus(GetFirmwareUpgrade(), &status, 1); }), 81);
}

TEST(FirmwareJob, IsTheOnlyOneInItsProcessUntilItEnds)
{
    const Called<FirmwareUnit> unit;
    const auto twoStarts = [&](bool untilDone)
    {
        const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
        UpgradeStatus status{};
        FirmwareUpgrade_startSSUpgrade(upgrade, unit.hex.c_str(), 0);
        while (untilDone && status.state < 6)
            FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1);
        return FirmwareUpgrade_startFpgaVerification(upgrade, unit.mcs.c_str(), 0);
    };
    EXPECT_EQ(inNewProcess([&] { return twoStarts(false); }), 80);
    EXPECT_EQ(inNewProcess([&] { return twoStarts(true); }), 0);
}

TEST(FirmwareJob, ReportsItsStatusWithoutWaitingIfFlagIs0)
{
    Called<FirmwareUnit> unit;
    unit.set("/firmware/pace", 60000); // milliseconds
    const auto begin = Clock::now();
    const auto readThreeTimes = [&]() -> unsigned
    {
        const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
        FirmwareUpgrade_startSSUpgrade(upgrade, unit.hex.c_str(), 0);
        UpgradeStatus status{-1, 0, 0};
        for (int i = 0; i < 3; ++i)
            FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 0);
        return status.state == 0 ? 0 : 1;
    };
    EXPECT_EQ(inNewProcess(readThreeTimes), 0);
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(30));
}

} // namespace
