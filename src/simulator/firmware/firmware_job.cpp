#include "simulator/firmware/firmware_job.h"

#include "simulator/firmware/intel_hex.h"
#include "simulator/store/file.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <optional>
#include <sha2.h>
#include <sys/stat.h>
#include <thread>

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
    File lock;                      // held while the job runs
    std::chrono::milliseconds pace; // duration of each state
    Clock::time_point due;          // end of the current state
    bool reported = false;          // whether the current state has been reported
    std::int32_t state = QV_UPGRADE_INITIATING;
    HexError error{};
    std::vector<HexRecord> records{};
    std::vector<HexBlock> blocks{};
    std::size_t scripted = 0; // number of scripted statuses reported
};

std::optional<Job> job;

constexpr std::size_t capacity = std::size_t{32} << 20; // of each target, in bytes

bool isOver(const Job& checked)
{
    return checked.state == QV_UPGRADE_DONE || checked.error.code != success;
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

bool isRegular(const File& file)
{
    struct stat status = {};
    return ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode);
}

// Returns false if the file cannot be read. Pipes and devices are refused, because reading one may block or
// never end.
bool readFile(const std::string& path, std::string& text)
{
    const File file = openFile(AT_FDCWD, path, O_RDONLY | O_NONBLOCK);
    return file.isOpen() && isRegular(file) && readAll(file, text);
}

HexError readFirmware()
{
    std::string text;
    if (!readFile(job->path, text))
        return {firmwareUnreadable, 0};
    return readHex(text, job->records);
}

std::size_t sizeOf(const std::vector<HexBlock>& blocks)
{
    std::size_t size = 0;
    for (const HexBlock& block : blocks)
        size += block.data.size();
    return size;
}

HexError convertFirmware()
{
    HexError error = convertHex(job->records, job->blocks);
    if (error.code == success && sizeOf(job->blocks) > capacity)
        error.code = firmwareTooLarge;
    job->records.clear();
    return error;
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

void beginFlashing(Unit& unit)
{
    Firmware& firmware = firmwareIn(unit, job->target);
    firmware = {};
    firmware.incomplete = true;
}

void endFlashing(Unit& unit)
{
    Firmware& firmware = firmwareIn(unit, job->target);
    firmware.digest = digestOf(job->blocks);
    firmware.bytes = sizeOf(job->blocks);
    firmware.nextVersion = versionIn(job->blocks);
    firmware.incomplete = false;
}

HexError verifyFirmware(Unit& unit)
{
    const Firmware& firmware = firmwareIn(unit, job->target);
    const bool same = !firmware.incomplete && firmware.digest == digestOf(job->blocks);
    return {same ? success : firmwareDiffers, 0};
}

std::int32_t nextState()
{
    if (job->state == QV_UPGRADE_CONVERTING_FILE && job->task == FirmwareTask::verification)
        return QV_UPGRADE_VERIFYING;
    return job->state + 1;
}

// Enters the next state and does its work.
void advance(Unit& unit)
{
    if (job->state == QV_UPGRADE_FLASHING)
        endFlashing(unit);
    job->state = nextState();
    switch (job->state)
    {
    case QV_UPGRADE_READING_FILE:
        job->error = readFirmware();
        break;
    case QV_UPGRADE_CONVERTING_FILE:
        job->error = convertFirmware();
        break;
    case QV_UPGRADE_FLASHING:
        beginFlashing(unit);
        break;
    case QV_UPGRADE_VERIFYING:
        job->error = verifyFirmware(unit);
        break;
    default:
        break;
    }
    job->due = Clock::now() + job->pace;
    if (isOver(*job))
        job->lock = File();
}

// The second word is the progress of the job in percent.
UpgradeStatus currentStatus()
{
    return {job->state, job->state * 100 / QV_UPGRADE_DONE, job->error.code};
}

UpgradeStatus scriptedStatus(const std::vector<ScriptedStatus>& statuses)
{
    const ScriptedStatus& status = statuses[std::min(job->scripted++, statuses.size() - 1)];
    return {status.state, status.second, status.error};
}

} // namespace

ApiError startFirmwareJob(const Unit& unit, const UnitFile& file, FirmwareTarget target, FirmwareTask task,
                          const char* path)
{
    if (job && !isOver(*job))
        return jobRunning;
    File lock = file.tryLock(".job");
    if (!lock.isOpen())
        return jobRunning;
    const std::chrono::milliseconds pace(unit.firmware.pace);
    job.emplace(Job{target, task, path, std::move(lock), pace, Clock::now()});
    return success;
}

void waitForFirmwareJob()
{
    if (job && job->reported && !isOver(*job))
        std::this_thread::sleep_until(job->due);
}

void handleFailedStatusCall(ApiError code)
{
    if (!job)
        return;
    const bool unsaved = code >= unitFileNotLocated && code <= unitFileUnwritable;
    if (unsaved && job->reported && job->error.code == success)
    {
        job->error = {static_cast<Code>(code), 0};
        job->lock = File();
    }
    std::this_thread::sleep_for(job->pace);
}

ApiError advanceFirmwareJob(Unit& unit, UpgradeStatus& status)
{
    if (!job)
        return noJob;
    if (!job->reported)
        job->due = Clock::now() + job->pace;
    else if (!isOver(*job) && Clock::now() >= job->due)
        advance(unit);
    job->reported = true;
    status = unit.firmware.statuses.empty() ? currentStatus() : scriptedStatus(unit.firmware.statuses);
    return success;
}

std::string firmwareErrorLine(ApiError code)
{
    if (!job || job->error.code != code || job->error.line == 0)
        return "";
    return " (line " + std::to_string(job->error.line) + ")";
}

} // namespace simulator
