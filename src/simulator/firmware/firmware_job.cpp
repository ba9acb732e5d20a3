#include "simulator/firmware/firmware_job.h"

#include "simulator/store/file.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <optional>
#include <pthread.h>
#include <sha2.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace simulator
{

using document::Firmware;
using document::ScriptedStatus;
using document::Unit;
using document::Version;

namespace
{

using Clock = std::chrono::steady_clock;

struct Job
{
    FirmwareTarget target;
    FirmwareTask task;
    std::string path;
    File lock;                                      // held while the job runs
    pid_t owner;                                    // the process that started the job
    std::chrono::milliseconds pace;                 // duration of each state
    Clock::time_point due{};                        // end of the current state
    bool reported = false;                          // whether a status has been reported
    std::size_t scripted = 0;                       // number of scripted statuses reported
    FirmwareStep progress{};                        // the last step that was committed
    std::int32_t attempted = QV_UPGRADE_INITIATING; // state of the last step that was begun
    bool aborted = false;                           // ended because a status call failed
};

std::optional<Job> lastJob;

// Returns null if this process has not started a job. After a fork, lastJob may be the job of the parent.
Job* ownJob()
{
    return lastJob && lastJob->owner == ::getpid() ? &*lastJob : nullptr;
}

constexpr std::size_t capacity = std::size_t{32} << 20; // of each target, in bytes

// The shortest data record has one byte of data and takes 15 characters: a colon, 12 digits, a carriage
// return and a newline. The 16th leaves room for address records and empty lines.
constexpr std::size_t maxFileSize = capacity * 16;

bool isOver(const FirmwareStep& step)
{
    return step.state == QV_UPGRADE_DONE || step.error.code != success;
}

Firmware& firmwareIn(Unit& unit, FirmwareTarget target)
{
    switch (target)
    {
    case FirmwareTarget::ss:
        return unit.firmware.ss;
    case FirmwareTarget::fpga:
        return unit.firmware.fpga;
    case FirmwareTarget::front:
        break;
    }
    return unit.firmware.front;
}

// Appends the content of the file. Pipes and devices are rejected, because reading one may block or never
// end.
HexError readFile(const std::string& path, std::string& text)
{
    const File file = openFile(AT_FDCWD, path, O_RDONLY | O_NONBLOCK);
    struct stat status = {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {firmwareUnreadable, 0};
    if (static_cast<std::uint64_t>(status.st_size) > maxFileSize)
        return {firmwareTooLarge, 0};
    return {readAll(file, text) ? success : firmwareUnreadable, 0};
}

HexError readFirmware(const std::string& path, std::vector<HexRecord>& records)
{
    std::string text;
    const HexError error = readFile(path, text);
    return error.code == success ? readHex(text, records) : error;
}

// Returns a digest of addresses and bytes. It does not depend on how the file divides them into records.
std::string digestOf(const std::vector<HexBlock>& blocks)
{
    SHA2_CTX context;
    SHA256Init(&context);
    for (const HexBlock& block : blocks)
    {
        std::uint8_t prefix[8];
        const std::uint64_t value = std::uint64_t{block.address} << 32 | block.data.size();
        for (int i = 0; i < 8; ++i)
            prefix[i] = static_cast<std::uint8_t>(value >> (8 * i));
        SHA256Update(&context, prefix, sizeof prefix);
        SHA256Update(&context, block.data.data(), block.data.size());
    }
    char text[SHA256_DIGEST_STRING_LENGTH];
    SHA256End(&context, text);
    return text;
}

// Returns the version that the firmware contains as the text "FWVERSION=1.12.0.3".
std::optional<Version> versionIn(const HexBlock& block)
{
    constexpr std::string_view mark = "FWVERSION=";
    std::string_view text(reinterpret_cast<const char*>(block.data.data()), block.data.size());
    for (auto found = text.find(mark); found != std::string_view::npos; found = text.find(mark))
    {
        text.remove_prefix(found + mark.size());
        if (const auto version = document::consumeVersion(text))
            return version;
    }
    return std::nullopt;
}

std::optional<Version> versionIn(const std::vector<HexBlock>& blocks)
{
    for (const HexBlock& block : blocks)
        if (const auto version = versionIn(block))
            return version;
    return std::nullopt;
}

std::size_t sizeOf(const std::vector<HexBlock>& blocks)
{
    std::size_t size = 0;
    for (const HexBlock& block : blocks)
        size += block.data.size();
    return size;
}

HexError convertFirmware(const std::vector<HexRecord>& records, Firmware& image)
{
    std::vector<HexBlock> blocks;
    if (const HexError error = convertHex(records, blocks); error.code != success)
        return error;
    if (sizeOf(blocks) > capacity)
        return {firmwareTooLarge, 0};
    image.digest = digestOf(blocks);
    image.bytes = sizeOf(blocks);
    image.nextVersion = versionIn(blocks);
    return {};
}

HexError verifyFirmware(const Firmware& target, const Firmware& image)
{
    const bool same = !target.incomplete && target.digest == image.digest;
    return {same ? success : firmwareDiffers, 0};
}

std::int32_t nextState(const Job& job)
{
    if (job.progress.state == QV_UPGRADE_CONVERTING_FILE && job.task == FirmwareTask::verification)
        return QV_UPGRADE_VERIFYING;
    return job.progress.state + 1;
}

// Enters the next state and does its work.
void advance(Job& job, Unit& unit, FirmwareStep& step)
{
    Firmware& target = firmwareIn(unit, job.target);
    const FirmwareStep& before = job.progress;
    job.attempted = nextState(job);
    step.image = before.image;
    if (before.state == QV_UPGRADE_FLASHING)
        target = before.image;
    switch (job.attempted)
    {
    case QV_UPGRADE_READING_FILE:
        step.error = readFirmware(job.path, step.records);
        break;
    case QV_UPGRADE_CONVERTING_FILE:
        step.error = convertFirmware(before.records, step.image);
        break;
    case QV_UPGRADE_FLASHING:
        target = {};
        target.incomplete = true;
        break;
    case QV_UPGRADE_VERIFYING:
        step.error = verifyFirmware(target, before.image);
        break;
    default:
        break;
    }
    step.state = job.attempted;
}

// The second member of the status is the progress of the job in percent.
UpgradeStatus statusOf(const FirmwareStep& step)
{
    return {step.state, step.state * 100 / QV_UPGRADE_DONE, step.error.code};
}

UpgradeStatus scriptedStatus(const std::vector<ScriptedStatus>& statuses, std::size_t index)
{
    const ScriptedStatus& status = statuses[std::min(index, statuses.size() - 1)];
    return {status.state, status.second, status.error};
}

// Otherwise the lock would be held until every child process has ended. Closing the child's descriptor does
// not release the lock of the parent.
void closeLockInChild()
{
    if (lastJob)
        lastJob->lock = File();
}

bool registerForkHandler()
{
    static bool registered = false;
    registered = registered || ::pthread_atfork(nullptr, nullptr, closeLockInChild) == 0;
    return registered;
}

} // namespace

ApiError startFirmwareJob(const Unit& unit, const UnitFile& file, FirmwareTarget target, FirmwareTask task,
                          const char* path)
{
    if (const Job* job = ownJob(); job && !isOver(job->progress))
        return jobRunning;
    if (!registerForkHandler())
        return failure;
    File lock = file.tryLock(jobSuffix);
    if (!lock.isOpen())
        return jobRunning;
    const std::chrono::milliseconds pace(unit.firmware.pace);
    lastJob.emplace(Job{target, task, path, std::move(lock), ::getpid(), pace});
    return success;
}

void waitForFirmwareJob()
{
    if (const Job* job = ownJob(); job && job->reported && !isOver(job->progress))
        std::this_thread::sleep_until(job->due);
}

void waitAfterFailedStatusCall()
{
    if (const Job* job = ownJob())
        std::this_thread::sleep_for(job->pace);
}

ApiError prepareFirmwareStep(Unit& unit, FirmwareStep& step, UpgradeStatus& status)
{
    Job* const job = ownJob();
    if (!job)
        return noJob;
    const FirmwareStep* reached = &job->progress;
    if (job->reported && !isOver(job->progress) && Clock::now() >= job->due)
    {
        advance(*job, unit, step);
        reached = &step;
    }
    const auto& script = unit.firmware.statuses;
    status = script.empty() ? statusOf(*reached) : scriptedStatus(script, job->scripted);
    return success;
}

void commitFirmwareStep(FirmwareStep&& step)
{
    Job* const job = ownJob();
    const bool advanced = job->attempted != job->progress.state;
    if (advanced)
        job->progress = std::move(step);
    if (advanced || !job->reported)
        job->due = Clock::now() + job->pace;
    job->reported = true;
    ++job->scripted;
    if (isOver(job->progress))
        job->lock = File();
}

void endFirmwareJob(ApiError code)
{
    Job* const job = ownJob();
    if (!job || isOver(job->progress))
        return;
    job->progress.state = job->attempted;
    job->progress.error = {static_cast<Code>(code), 0};
    job->aborted = true;
    job->lock = File();
}

bool abortedStatus(UpgradeStatus& status)
{
    const Job* const job = ownJob();
    if (!job || !job->aborted)
        return false;
    status = statusOf(job->progress);
    return true;
}

std::string firmwareErrorLine(ApiError code)
{
    const Job* const job = ownJob();
    if (!job || job->progress.error.code != code || job->progress.error.line == 0)
        return "";
    return " (line " + std::to_string(job->progress.error.line) + ")";
}

} // namespace simulator
