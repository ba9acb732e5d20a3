// Power losses: when a change is reported, the disk is copied. The copy is mounted and must contain the
// change.

#include "simulator/robustness/sweep.h"
#include "support/disk_image.h"
#include "support/firmware_unit.h"
#include "support/system_calls.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <sys/syscall.h>

namespace
{

using nlohmann::json;

constexpr const char* changed = "Buzzer volume set to: 40\n";

struct FileSystem
{
    const char* name;
    const char* mkfs;
    const char* options;
};

// The kernel writes nothing by itself for five minutes.
constexpr FileSystem ext4{"ext4", "mkfs.ext4 -q -F", "commit=300,lazytime"};
// There is no journal that contains the directory together with its files.
constexpr FileSystem ext2{"ext2", "mkfs.ext2 -q -F", "lazytime"};

void PrintTo(const FileSystem& system, std::ostream* stream)
{
    *stream << system.name;
}

class PowerLossOn : public testing::TestWithParam<FileSystem>
{
protected:
    void SetUp() override
    {
        if (disk.problem())
            GTEST_SKIP() << "no " << GetParam().name << " can be mounted here: " << disk.problem();
    }

    const DiskImage disk{GetParam().mkfs, GetParam().options};
};

INSTANTIATE_TEST_SUITE_P(Each, PowerLossOn, testing::Values(ext4, ext2),
                         [](const auto& instance) { return std::string(instance.param.name); });

json contentOf(const std::string& file)
{
    return fileExists(file) ? json::parse(readFile(file), nullptr, false) : json();
}

json volumeIn(const std::string& file)
{
    return contentOf(file).value("/buzzer/volume"_json_pointer, json());
}

bool isOldOrNew(const json& volume)
{
    return volume == json(5) || volume == json(40);
}

void createUnit(const DiskImage& disk, const std::string& file = "unit.json",
                const std::string& content = R"({"buzzer": {"volume": 5}})")
{
    std::filesystem::create_directories(std::filesystem::path(disk / file).parent_path());
    writeFile(disk / file, content);
    disk.sync();
}

TEST_P(PowerLossOn, LosesNoReportedChange)
{
    createUnit(disk);
    const Outcome outcome = runCommand(programOn(disk / "unit.json", "--buzzer --volume=40"));
    const DiskImage copy = disk.afterPowerLoss();
    ASSERT_EQ(copy.problem(), nullptr);
    ASSERT_EQ(outcome.output, changed);
    EXPECT_EQ(volumeIn(copy / "unit.json"), 40);
}

TEST_P(PowerLossOn, LosesNoUnitInNewDirectories)
{
    disk.sync();
    Command command = programOn("", "--buzzer --volume=40");
    command.environment.erase("QVAUX_UNIT");
    command.environment["XDG_STATE_HOME"] = disk / "new/state";
    const Outcome outcome = runCommand(command);
    const DiskImage copy = disk.afterPowerLoss();
    ASSERT_EQ(copy.problem(), nullptr);
    ASSERT_EQ(outcome.output, changed);
    EXPECT_EQ(volumeIn(copy / "new/state/qv-aux2/unit.json"), 40);
}

TEST_P(PowerLossOn, LosesNoReportedUpgrade)
{
    const FirmwareUnit files;
    createUnit(disk, "unit.json", R"({"firmware": {"pace": 0}})");
    const Outcome outcome =
        runCommand(programOn(disk / "unit.json", "--advanced --update=SS --force --filepath=" + files.hex));
    const DiskImage copy = disk.afterPowerLoss();
    ASSERT_EQ(copy.problem(), nullptr);
    ASSERT_NE(outcome.output.find("successfully upgraded"), std::string::npos) << outcome.output;
    EXPECT_EQ(contentOf(copy / "unit.json").value("/firmware/ss/bytes"_json_pointer, 0), 1000);
}

// A reported change is on the disk. If failure is reported, the new file may be in place, or the old one.
void expectReportedIsOnDisk(const DiskImage& disk, const std::string& output)
{
    const DiskImage copy = disk.afterPowerLoss();
    ASSERT_EQ(copy.problem(), nullptr);
    const json volume = volumeIn(copy / "unit.json");
    if (output == changed)
        EXPECT_EQ(volume, 40);
    else
        EXPECT_TRUE(isOldOrNew(volume)) << contentOf(copy / "unit.json");
}

Command withPrefix(const std::vector<std::string>& prefix, Command command)
{
    command.words.insert(command.words.begin(), prefix.begin(), prefix.end());
    return command;
}

TEST_P(PowerLossOn, LosesNoReportedChangeInADirectoryThatCannotBeRead)
{
    createUnit(disk, "closed/unit.json");
    std::filesystem::permissions(disk / "closed", std::filesystem::perms(0300));
    disk.sync();
    // root without the capability to read every file
    const Outcome outcome =
        runCommand(withPrefix({"setpriv", "--bounding-set=-dac_override,-dac_read_search",
                               "--inh-caps=-dac_override,-dac_read_search"},
                              programOn(disk / "closed/unit.json", "--buzzer --volume=40")));
    const DiskImage copy = disk.afterPowerLoss();
    ASSERT_EQ(copy.problem(), nullptr);
    const json volume = volumeIn(copy / "closed/unit.json");
    EXPECT_TRUE(volume == 40 || (outcome.output != changed && volume == 5))
        << volume << " after " << outcome.output << outcome.errors;
}

TEST_P(PowerLossOn, LosesNoReportedChangeAtALimitOfDescriptors)
{
    for (int limit = 4; limit < 12; ++limit)
    {
        SCOPED_TRACE(limit);
        createUnit(disk);
        const Outcome outcome = runCommand(withPrefix({"prlimit", "--nofile=" + std::to_string(limit)},
                                                      programOn(disk / "unit.json", "--buzzer --volume=40")));
        expectReportedIsOnDisk(disk, outcome.output);
    }
}

TEST_P(PowerLossOn, LosesNoReportedChangeIfASyncFails)
{
    const TemporaryDirectory outputs;
    const auto change = [&](unsigned long failing)
    {
        createUnit(disk);
        SystemCallWatcher watcher;
        watcher.failure = {failing, EIO, false};
        return watcher.run(programOn(disk / "unit.json", "--buzzer --volume=40"),
                           outputs / std::to_string(failing));
    };
    const std::vector<SystemCall> calls = change(0).calls;
    unsigned syncs = 0;
    for (unsigned long i = 1; i <= calls.size(); ++i)
    {
        if (calls[i - 1].number != SYS_fsync)
            continue;
        SCOPED_TRACE(i);
        ++syncs;
        change(i);
        expectReportedIsOnDisk(disk, readFile(outputs / std::to_string(i)));
    }
    EXPECT_GE(syncs, 2u) << "of the file and of its directory";
}

TEST_P(PowerLossOn, LeavesTheOldUnitOrTheNewOneAtAnySystemCall)
{
    createUnit(disk);
    SystemCallWatcher counter;
    const auto calls = counter.run(programOn(disk / "unit.json", "--buzzer --volume=40")).calls;
    // The unit is not changed before it is locked.
    const auto isLock = [](const SystemCall& call) { return call.number == SYS_flock; };
    const auto first = static_cast<unsigned long>(std::ranges::find_if(calls, isLock) - calls.begin());

    Sweep sweep;
    createUnit(disk);
    std::set<unsigned long> points;
    for (const unsigned long point : pointsToTest(calls.size() - first, 8))
        points.insert(first + point);
    SystemCallWatcher watcher;
    watcher.beforeCall = [&](unsigned long call, const SystemCall&)
    {
        if (!points.contains(call))
            return;
        const DiskImage copy = disk.afterPowerLoss();
        const json volume = copy.problem() ? json(copy.problem()) : volumeIn(copy / "unit.json");
        const Verdict verdict{isOldOrNew(volume) ? Defect::none : Defect::loss, volume.dump()};
        sweep.add("system call " + std::to_string(call), verdict);
    };
    watcher.run(programOn(disk / "unit.json", "--buzzer --volume=40"));
}

// On some file systems, a directory is written together with its files. Elsewhere, this sync is needed.
TEST(PowerLoss, IsPrecededByASyncOfEveryChangedDirectory)
{
    const TemporaryDirectory directory;
    Command command = programOn("", "--buzzer --volume=40");
    command.environment.erase("QVAUX_UNIT");
    command.environment["XDG_STATE_HOME"] = directory / "new/state";
    SystemCallWatcher watcher;
    watcher.recordsFiles = true;
    std::set<std::filesystem::path> unsynced;
    for (const SystemCall& call : watcher.run(command).calls)
    {
        const bool isRename = call.number == SYS_renameat || call.number == SYS_renameat2;
        if ((call.number == SYS_mkdir || call.number == SYS_mkdirat || isRename) && call.result == 0)
            unsynced.insert(std::filesystem::path(call.file).parent_path());
        if (call.number == SYS_fsync && call.result == 0)
            unsynced.erase(call.file);
    }
    EXPECT_TRUE(unsynced.empty()) << "not synced: " << *unsynced.begin();
    EXPECT_EQ(volumeIn(directory / "new/state/qv-aux2/unit.json"), 40);
}

} // namespace
