// Processes with more privileges than the user who starts them, and the permissions of the files that they
// create.

#include "device/qv_aux2.h"
#include "support/children.h"
#include "support/system_calls.h"
#include "support/unit.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

using nlohmann::json;

constexpr const char* before = R"({"buzzer": {"volume": 5}})";

// Copies, for all users, of the simulated unit and of a program that sets the volume as root.
struct PrivilegedProgram
{
    PrivilegedProgram()
    {
        std::filesystem::copy(simulatorDirectory() + "/libqv-aux2.so.2.11", library);
        std::filesystem::copy(buildDirectory() + "/tests/set-volume", program);
        chmod(program.c_str(), 04755);
    }

    const TemporaryDirectory copies;
    const std::string library = copies / "library.so";
    const std::string program = copies / "set-volume";
};

// The environment of the user must not select the files that are written as root.
TEST(PrivilegedProcess, TakesNoPathFromItsEnvironment)
{
    if (getuid() != 0)
        GTEST_SKIP() << "needs root";
    const PrivilegedProgram privileged;
    const Unit unit(before);
    const TemporaryDirectory home;
    const std::map<std::string, std::string> environments[] = {
        {{"QVAUX_UNIT", unit.file()}, {"QVAUX_TRACE", unit.directory / "trace"}},
        {{"XDG_STATE_HOME", home / "state"}, {"QVAUX_TRACE", unit.directory / "trace"}},
        {{"HOME", home.path}, {"QVAUX_TRACE", unit.directory / "trace"}},
    };
    for (const auto& environment : environments)
    {
        const Outcome outcome = runCommand({.words = {privileged.program, privileged.library},
                                            .environment = environment,
                                            .unprivileged = true});
        if (exitStatus(outcome) == 3)
            GTEST_SKIP() << "the set-user-ID bit has no effect here";
        ASSERT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(outcome.output, "64\n");
        EXPECT_FALSE(fileExists(unit.directory / "trace"));
        EXPECT_TRUE(std::filesystem::is_empty(home.path));
    }
    EXPECT_EQ(readFile(unit.file()), before);
}

// Old kernels and emulators lack openat2, and containers may forbid it.
TEST(Links, AreFollowedWithoutOpenat2)
{
    for (const int error : {ENOSYS, EPERM})
    {
        const Unit unit(before);
        const std::string link = unit.directory / "link.json";
        std::filesystem::create_symlink("unit.json", link);
        SystemCallWatcher watcher;
        watcher.failure = {.error = error, .kind = SYS_openat2};
        const WatchedRun run = watcher.run(programOn(link, "--buzzer --volume=40"));
        EXPECT_TRUE(std::ranges::any_of(run.calls, [&](const SystemCall& call)
                                        { return call.number == SYS_openat2 && call.result == -error; }));
        EXPECT_EQ(unit["/buzzer/volume"], 40);
        EXPECT_TRUE(std::filesystem::is_symlink(link));
    }
}

// Even if it were changed for a moment only, another thread could create a file with other permissions.
TEST(Umask, IsNeverChanged)
{
    const Unit unit;
    std::filesystem::remove(unit.file());
    SystemCallWatcher watcher;
    const WatchedRun run = watcher.run(programOn(unit.file(), "--buzzer --volume=40"));
    for (const SystemCall& call : run.calls)
        EXPECT_NE(call.number, SYS_umask);
    EXPECT_EQ(unit["/buzzer/volume"], 40);
}

TEST(Umask, AppliesToTheUnitFileAndNotToItsLocks)
{
    for (const mode_t mask : {0u, 022u, 077u, 0777u})
    {
        SCOPED_TRACE(mask);
        const Unit unit;
        std::filesystem::remove(unit.file());
        runInChild(unit.file(),
                   [&]
                   {
                       umask(mask);
                       const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
                       FirmwareUpgrade_startSSUpgrade(upgrade, "none.hex", 0);
                       Buzzer_setVolume(GetBuzzer(), 40);
                       EXPECT_EQ(umask(mask), mask);
                   });
        struct stat status = {};
        for (const char* ending : {".lock", ".job"})
        {
            ASSERT_EQ(stat((unit.file() + ending).c_str(), &status), 0) << ending;
            EXPECT_EQ(status.st_mode & 0777, 0444u) << ending;
        }
        ASSERT_EQ(stat(unit.file().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0666u & ~mask);
    }
}

} // namespace
