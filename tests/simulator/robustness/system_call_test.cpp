// System calls of the simulated unit that fail, each with the errors that it can return.

#include "simulator/robustness/scenario.h"
#include "simulator/robustness/sweep.h"
#include "support/system_calls.h"
#include "support/unit.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sys/syscall.h>

namespace
{

// The errors to test with each system call. Those without errors cannot fail with valid arguments. ENOENT and
// EEXIST are missing: they depend on the files, and other tests create those.
const std::map<long, std::vector<int>>& errorsOfSystemCalls()
{
    static const std::map<long, std::vector<int>> errors = {
        // Files
        {SYS_openat, {EACCES, EIO, EMFILE, ENOSPC, EROFS, EINTR}},
        {SYS_openat2, {ENOSYS, EACCES, EIO, EMFILE, ENOSPC, EAGAIN}},
        {SYS_close, {EIO, EINTR}},
        {SYS_read, {EIO, EINTR, shortTransfer}},
        {SYS_pread64, {EIO, EINTR, shortTransfer}},
        {SYS_write, {EIO, ENOSPC, EDQUOT, EINTR, shortTransfer}},
        {SYS_fsync, {EIO, ENOSPC, EDQUOT}},
        // Names of files
        {SYS_renameat, {EACCES, EBUSY, EIO, ENOSPC, EROFS}},
        {SYS_linkat, {EACCES, EIO, ENOSPC, EMLINK}},
        {SYS_unlinkat, {EACCES, EBUSY, EIO, EROFS}},
        {SYS_mkdir, {EACCES, EIO, ENOSPC, EROFS}},
        {SYS_readlinkat, {EACCES, EIO, ENOMEM}},
        // Attributes of files
        {SYS_newfstatat, {EACCES, EIO, ENOMEM}},
        {SYS_fstatfs, {EIO, ENOSYS}},
        {SYS_faccessat2, {EACCES, EIO, EROFS, ENOSYS}},
        {SYS_fchmod, {EPERM, EIO, EROFS}},
        {SYS_fchown, {EPERM, EIO, EROFS}},
        {SYS_fgetxattr, {EIO, ENOTSUP, ERANGE}},
        {SYS_fremovexattr, {EIO, ENOTSUP, EPERM}},
        {SYS_fcntl, {EMFILE, EINVAL}},
        {SYS_flock, {EINTR, ENOLCK}},
        // Memory
        {SYS_brk, {ENOMEM}},
        {SYS_mmap, {ENOMEM}},
        {SYS_munmap, {ENOMEM}},
        {SYS_mprotect, {ENOMEM}},
        {SYS_mremap, {ENOMEM}},
        {SYS_madvise, {ENOMEM}},
        // Time and signals
        {SYS_rt_sigtimedwait, {EAGAIN, EINTR}},
        // Without errors
        {SYS_clock_gettime, {}},
        {SYS_rt_sigprocmask, {}},
        {SYS_rt_sigpending, {}},
        {SYS_getpid, {}},
        {SYS_prlimit64, {}},
    };
    return errors;
}

// The other errors are temporary. If they persisted, waiting for their end would be right.
bool canPersist(int error)
{
    return error != EINTR && error != EAGAIN && error != shortTransfer;
}

std::string describe(const SystemCallFailure& failure, long number)
{
    const std::string error =
        failure.error == shortTransfer ? "a short transfer" : std::strerror(failure.error);
    return "system call " + std::to_string(failure.first) + " (number " + std::to_string(number) +
           "): " + error + (failure.persistent ? ", also later" : "");
}

// Returns the numbers of the calls to test: all in a full sweep, otherwise the last one of each kind on each
// file.
std::vector<unsigned long> callsToTest(const std::vector<SystemCall>& calls)
{
    if (isFullSweep())
        return pointsToTest(calls.size(), calls.size());
    std::map<std::pair<long, std::string>, unsigned long> last;
    for (unsigned long point = 1; point <= calls.size(); ++point)
        last[{calls[point - 1].number, calls[point - 1].file}] = point;
    std::vector<unsigned long> points;
    for (const auto& [call, point] : last)
        points.push_back(point);
    return points;
}

// The failures to test at a point: each error, once and from then on.
std::vector<SystemCallFailure> failuresAt(unsigned long point, const std::vector<SystemCall>& calls)
{
    std::vector<SystemCallFailure> failures;
    for (const int error : errorsOfSystemCalls().at(calls[point - 1].number))
    {
        failures.push_back({point, error, false});
        if (canPersist(error))
            failures.push_back({point, error, true});
    }
    return failures;
}

void expectErrorsListedFor(const std::vector<SystemCall>& calls)
{
    for (const SystemCall& call : calls)
        ASSERT_TRUE(errorsOfSystemCalls().contains(call.number))
            << "errorsOfSystemCalls() lacks the system call with the number " << call.number;
}

struct JudgedRun
{
    Verdict verdict;
    std::vector<SystemCall> calls;
};

JudgedRun runFailing(const Scenario& scenario, const SystemCallFailure& failure)
{
    ScenarioRun run(scenario);
    SystemCallWatcher watcher(&run.results().enabled);
    watcher.failure = failure;
    watcher.recordsFiles = failure.first == 0;
    const WatchedRun watched = watcher.run([&] { run.execute(); });
    return {run.judge(watched.status, watched.replacedFile), watched.calls};
}

class FailedSystemCalls : public testing::TestWithParam<Scenario>
{
};

TEST_P(FailedSystemCalls, AreReported)
{
    const std::vector<SystemCall> calls = runFailing(GetParam(), {}).calls;
    ASSERT_NO_FATAL_FAILURE(expectErrorsListedFor(calls));
    Sweep sweep;
    for (const unsigned long point : callsToTest(calls))
        for (const SystemCallFailure& failure : failuresAt(point, calls))
            sweep.add(describe(failure, calls[point - 1].number), runFailing(GetParam(), failure).verdict);
}

INSTANTIATE_TEST_SUITE_P(In, FailedSystemCalls, testing::ValuesIn(scenarios()),
                         [](const auto& instance) { return std::string(instance.param.name); });

// The program on the simulated unit.

Verdict judgeProgram(const WatchedRun& run, const Unit& unit, const std::string& before,
                     const std::string& output)
{
    for (const auto& entry : std::filesystem::directory_iterator(unit.directory.path))
        if (const std::string name = entry.path().filename(); name != "unit.json" && name != "unit.json.lock")
            return {Defect::leftover, "leaves the file " + name};
    const std::string after = readFile(unit.file());
    const bool isNew = nlohmann::json::parse(after)["buzzer"]["volume"] == 40;
    if (!isNew && after != before)
        return {Defect::loss, "leaves the file " + after};
    if (run.status != 0)
        return {Defect::other, "ends with wait status " + std::to_string(run.status)};
    const bool isReported = output.find("Buzzer volume set to: 40\n") != std::string::npos;
    if (isReported && !isNew)
        return {Defect::falseSuccess, "prints " + output};
    if (!isReported && isNew && !run.replacedFile)
        return {Defect::loss, "changes the file and prints " + output};
    return {};
}

struct ProgramRun : JudgedRun
{
    unsigned long firstOnUnit; // number of the first call on a file of the unit, from 1
};

ProgramRun runProgram(const SystemCallFailure& failure)
{
    const std::string before = R"({"buzzer": {"volume": 5}})";
    const Unit unit(before);
    const TemporaryDirectory outputs;
    SystemCallWatcher watcher;
    watcher.failure = failure;
    watcher.recordsFiles = failure.first == 0;
    const WatchedRun run = watcher.run(programOn(unit.file(), "--buzzer --volume=40"), outputs / "output");
    const auto isOnUnit = [&](const SystemCall& call) { return call.file.starts_with(unit.directory.path); };
    const auto first = std::ranges::find_if(run.calls, isOnUnit) - run.calls.begin() + 1;
    return {{judgeProgram(run, unit, before, readFile(outputs / "output")), run.calls},
            static_cast<unsigned long>(first)};
}

TEST(FailedSystemCallsInTheProgram, AreReported)
{
    const ProgramRun undisturbed = runProgram({});
    Sweep sweep;
    sweep.add("no failure", undisturbed.verdict);
    // The calls before the first one on the unit start the program, and the last one ends it.
    const unsigned long skipped = undisturbed.firstOnUnit - 1;
    ASSERT_LT(undisturbed.firstOnUnit, undisturbed.calls.size());
    const std::vector<SystemCall> calls(undisturbed.calls.begin() + static_cast<long>(skipped),
                                        undisturbed.calls.end() - 1);
    ASSERT_NO_FATAL_FAILURE(expectErrorsListedFor(calls));
    for (const unsigned long point : callsToTest(calls))
        for (SystemCallFailure failure : failuresAt(point, calls))
        {
            failure.first += skipped;
            sweep.add(describe(failure, calls[point - 1].number), runProgram(failure).verdict);
        }
}

} // namespace
