#include "device/qv_aux2.h"
#include "support/called_unit.h"
#include "support/firmware_unit.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;

// Runs `work` in a child process. Returns its result, which must be from 0 to 255.
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

// Damages the unit file in each state of the job, and before its first status.
TEST(FirmwareJob, EndsIfTheUnitFileIsDamaged)
{
    struct Breakage
    {
        std::function<void(const std::string& file)> apply;
        unsigned code;
    };
    const Breakage breakages[] = {
        {[](const std::string& file) { writeFile(file, "{"); }, 66},
        {[](const std::string& file)
         {
             std::filesystem::remove(file);
             std::filesystem::create_directory(file);
         },
         65},
        {[](const std::string& file)
         {
             std::filesystem::remove(file);
             std::filesystem::create_symlink("unit.json", file);
         },
         65},
        {[](const std::string& file)
         {
             std::filesystem::remove(file);
             mkfifo(file.c_str(), 0666);
         },
         65},
        {[](const std::string& file)
         { std::filesystem::remove_all(std::filesystem::path(file).parent_path()); },
         64},
    };
    for (const Breakage& breakage : breakages)
        for (int state = -1; state < 6; ++state)
        {
            SCOPED_TRACE(testing::Message() << "code " << breakage.code << " in state " << state);
            const Called<FirmwareUnit> unit;
            const auto breakInState = [&]() -> unsigned
            {
                const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
                FirmwareUpgrade_startSSUpgrade(upgrade, unit.hex.c_str(), 0);
                UpgradeStatus status{-1, 0, 0};
                while (status.state < state)
                    FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1);
                breakage.apply(unit.file());
                const UpgradeStatus before = status;
                if (FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1) != breakage.code ||
                    status.state != before.state || status.error != 0)
                    return 1;
                for (int call = 0; call < 2; ++call)
                    if (FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1) != 0 ||
                        status.state != std::max(state, 0) || status.error != breakage.code)
                        return 2;
                FirmwareUpgrade_release(upgrade);
                status = {-1, 0, 0};
                return FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1) == breakage.code ? 0 : 3;
            };
            testing::internal::CaptureStderr();
            EXPECT_EQ(inNewProcess(breakInState), 0);
            EXPECT_NE(testing::internal::GetCapturedStderr(), "");
        }
}

TEST(FirmwareJob, CanBeStartedAgainAfterARepair)
{
    const Called<FirmwareUnit> unit;
    const auto repair = [&]() -> unsigned
    {
        const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
        UpgradeStatus status{};
        FirmwareUpgrade_startSSUpgrade(upgrade, unit.hex.c_str(), 0);
        FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1);
        const std::string content = readFile(unit.file());
        writeFile(unit.file(), "{");
        if (FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1) != 66)
            return 1;
        writeFile(unit.file(), content);
        if (FirmwareUpgrade_startSSUpgrade(upgrade, unit.hex.c_str(), 0) != 0)
            return 2;
        do
            FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1);
        while (status.state < 6 && status.error == 0);
        return status.error == 0 ? 0 : 3;
    };
    testing::internal::CaptureStderr();
    EXPECT_EQ(inNewProcess(repair), 0);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(unit["/firmware/ss/bytes"], 1000);
}

TEST(FirmwareJob, DoesNotBelongToAChildProcess)
{
    const Called<FirmwareUnit> unit;
    const auto work = [&]() -> unsigned
    {
        const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
        FirmwareUpgrade_startSSUpgrade(upgrade, unit.hex.c_str(), 0);
        UpgradeStatus status{};
        const auto next = [&] { return FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1); };
        const auto start = [&] { return FirmwareUpgrade_startSSUpgrade(upgrade, unit.hex.c_str(), 0); };
        for (int state = 0; state < 6; ++state)
            if (next() != 0 || status.state != state || inNewProcess(next) != 81 || inNewProcess(start) != 80)
                return 1;
        return next() == 0 && status.state == 6 && inNewProcess(start) == 0 ? 0 : 2;
    };
    EXPECT_EQ(inNewProcess(work), 0);
    EXPECT_EQ(unit["/firmware/ss/bytes"], 1000);
    EXPECT_EQ(unit["/firmware/ss/incomplete"], false);
}

TEST(FirmwareJob, DoesNotKeepItsLockInAChildProcess)
{
    const Called<FirmwareUnit> unit;
    int started[2];
    int stays[2];
    ASSERT_TRUE(pipe(started) == 0 && pipe(stays) == 0);
    const auto start = [&]
    { return FirmwareUpgrade_startSSUpgrade(GetFirmwareUpgrade(), unit.hex.c_str(), 0); };
    // The child outlives the process that started the job: it waits until the test closes the pipe. Until
    // fork() returns in the child, it has the lock, too.
    const auto startAndLeaveAChild = [&]
    {
        const unsigned code = start();
        char none = 0;
        if (fork() != 0)
            return read(started[0], &none, 1) == 1 ? code : 1;
        close(stays[1]);
        if (write(started[1], &none, 1) == 1)
            while (read(stays[0], &none, 1) > 0)
                ;
        _exit(0);
    };
    EXPECT_EQ(inNewProcess(startAndLeaveAChild), 0);
    EXPECT_EQ(inNewProcess(start), 0);
    for (const int end : {started[0], started[1], stays[0], stays[1]})
        close(end);
}

} // namespace
