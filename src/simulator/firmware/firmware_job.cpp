#include "simulator/firmware/firmware_job.h"

#include "simulator/firmware/intel_hex.h"
#include "simulator/store/unit_location.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <optional>
#include <sha2.h>
#include <sys/stat.h>
#include <thread>

namespace
{

using Clock = std::chrono::steady_clock;

enum State : std::int32_t
{
    initiating = 0,
    preparing = 1,
    readingFile = 2,
    convertingFile = 3,
    flashing = 4,
    verifying = 5,
    done = 6,
};

struct Job
{
    FirmwareTarget target;
    FirmwareTask task;
    std::string path;
    File lock; // held while the job runs
    std::chrono::milliseconds pace;
    Clock::time_point due;
    bool told = false; // whether the present state has been reported
    State state = initiating;
    HexFault fault{};
    std::vector<HexRecord> records{};
    std::vector<HexBlock> blocks{};
    std::size_t scripted = 0; // scripted statuses reported
};

std::optional<Job> job;

constexpr std::size_t capacity = std::size_t{32} << 20; // bytes of every target

bool isOver(const Job& checked)
{
    return checked.state == done || checked.fault.code != success;
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

// False when the file cannot be read. A pipe or a device is none: it may never begin or never end.
bool readFile(const std::string& path, std::string& text)
{
    const File file = openFile(AT_FDCWD, path, O_RDONLY | O_NONBLOCK);
    return file.isOpen() && isRegular(file) && readAll(file, text);
}

HexFault readFirmware()
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

HexFault convertFirmware()
{
    HexFault fault = convertHex(job->records, job->blocks);
    if (fault.code == success && sizeOf(job->blocks) > capacity)
        fault.code = firmwareTooLarge;
    job->records.clear();
    return fault;
}

// Over addresses and bytes, so that it does not depend on how the file cuts them into records.
std::string digestOf(const std::vector<HexBlock>& blocks)
{
    SHA2_CTX context;
    SHA256Init(&context);
    for (const HexBlock& block : blocks)
    {
        std::uint8_t place[8];
        const std::uint64_t value = std::uint64_t{block.address} << 32 | block.data.size();
        for (int i = 0; i < 8; ++i)
            place[i] = static_cast<std::uint8_t>(value >> (8 * i));
        SHA256Update(&context, place, sizeof place);
        SHA256Update(&context, block.data.data(), block.data.size());
    }
    char text[SHA256_DIGEST_STRING_LENGTH];
    SHA256End(&context, text);
    return text;
}

// The version that the firmware carries in the text "FWVERSION=1.12.0.3".
std::optional<Version> versionIn(const HexBlock& block)
{
    constexpr std::string_view mark = "FWVERSION=";
    std::string_view text(reinterpret_cast<const char*>(block.data.data()), block.data.size());
    for (auto at = text.find(mark); at != std::string_view::npos; at = text.find(mark))
    {
        text.remove_prefix(at + mark.size());
        if (const auto version = takeVersion(text))
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

HexFault beginFlashing(Unit& unit)
{
    Firmware& firmware = firmwareIn(unit, job->target);
    firmware = {};
    firmware.incomplete = true;
    return {};
}

void endFlashing(Unit& unit)
{
    Firmware& firmware = firmwareIn(unit, job->target);
    firmware.digest = digestOf(job->blocks);
    firmware.bytes = sizeOf(job->blocks);
    firmware.nextVersion = versionIn(job->blocks);
    firmware.incomplete = false;
}

HexFault verifyFirmware(Unit& unit)
{
    const Firmware& firmware = firmwareIn(unit, job->target);
    const bool same = !firmware.incomplete && firmware.digest == digestOf(job->blocks);
    return {same ? success : firmwareDiffers, 0};
}

// Enters the next state and does its work.
void advance(Unit& unit)
{
    if (job->state == flashing)
        endFlashing(unit);
    const bool flashes = job->task == FirmwareTask::upgrade;
    job->state = job->state == convertingFile && !flashes ? verifying : static_cast<State>(job->state + 1);
    switch (job->state)
    {
    case readingFile:
        job->fault = readFirmware();
        break;
    case convertingFile:
        job->fault = convertFirmware();
        break;
    case flashing:
        job->fault = beginFlashing(unit);
        break;
    case verifying:
        job->fault = verifyFirmware(unit);
        break;
    case initiating:
    case preparing:
    case done:
        break;
    }
    job->due = Clock::now() + job->pace;
    if (isOver(*job))
        job->lock = File();
}

// The state, and in the second word how much of the job is done, in percent.
UpgradeStatus statusOf(const Job& told)
{
    return {told.state, told.state * 100 / done, told.fault.code};
}

UpgradeStatus scriptedStatus(const std::vector<ScriptedStatus>& statuses)
{
    const ScriptedStatus& status = statuses[std::min(job->scripted++, statuses.size() - 1)];
    return {status.state, status.second, status.error};
}

} // namespace

ApiError startFirmwareJob(const Unit& unit, FirmwareTarget target, FirmwareTask task, const char* path)
{
    if (job && !isOver(*job))
        return jobRunning;
    File lock = tryLock(unitPlace(), ".job");
    if (!lock.isOpen())
        return jobRunning;
    const std::chrono::milliseconds pace(unit.firmware.pace);
    job.emplace(Job{target, task, path, std::move(lock), pace, Clock::now()});
    return success;
}

void waitForFirmwareJob()
{
    if (job && job->told && !isOver(*job))
        std::this_thread::sleep_until(job->due);
}

void noteFailedStatusCall(ApiError code)
{
    if (!job)
        return;
    const bool unsaved = code >= unitFileUnplaced && code <= unitFileUnwritable;
    if (unsaved && job->told && job->fault.code == success)
    {
        job->fault = {static_cast<Code>(code), 0};
        job->lock = File();
    }
    std::this_thread::sleep_for(job->pace);
}

ApiError carryOnFirmwareJob(Unit& unit, UpgradeStatus& status)
{
    if (!job)
        return noJob;
    if (!job->told)
        job->due = Clock::now() + job->pace;
    else if (!isOver(*job) && Clock::now() >= job->due)
        advance(unit);
    job->told = true;
    status = unit.firmware.statuses.empty() ? statusOf(*job) : scriptedStatus(unit.firmware.statuses);
    return success;
}

std::string placeOfFirmwareFailure(ApiError code)
{
    if (!job || job->fault.code != code || job->fault.line == 0)
        return "";
    return " (line " + std::to_string(job->fault.line) + ")";
}
