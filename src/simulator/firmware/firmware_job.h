// Firmware jobs. A start operation begins a job; each status call advances it by at most one state.

#pragma once

#include "document/unit.h"
#include "simulator/firmware/intel_hex.h"
#include "simulator/store/unit_file.h"
#include "simulator/unit/codes.h"

#include <string>
#include <vector>

namespace simulator
{

enum class FirmwareTarget
{
    ss,
    fpga,
    front,
};

enum class FirmwareTask
{
    upgrade,
    verification,
};

// Starts a job, which does nothing before the first status call. Returns jobRunning if this or another
// process is running one on the unit. Throws StoreError.
ApiError startFirmwareJob(const document::Unit& unit, const UnitFile& file, FirmwareTarget target,
                          FirmwareTask task, const char* path);

// The progress that a status call makes. The job is unchanged until the step is committed, so a call that
// fails leaves no partial result.
struct FirmwareStep
{
    std::int32_t state = QV_UPGRADE_INITIATING;
    HexError error{};
    std::vector<HexRecord> records{}; // of the file; only in the state QV_UPGRADE_READING_FILE
    document::Firmware image{};       // the firmware to flash; set from QV_UPGRADE_CONVERTING_FILE on
};

// Waits until the job can have a new status. Returns at once if there is no job.
void waitForFirmwareJob();

// Waits for the duration of one state, so that a caller that polls until the job ends does not keep the
// processor busy.
void waitAfterFailedStatusCall();

// If the current state has lasted long enough, does the work of the next state on `unit` and stores its
// results in `step`. Stores the status to report in `status`. Returns noJob if this process has not started a
// job.
ApiError prepareFirmwareStep(document::Unit& unit, FirmwareStep& step, UpgradeStatus& status);

// Makes the prepared step the progress of the job. Must be called after the unit has been saved. Does not
// throw.
void commitFirmwareStep(FirmwareStep&& step);

// Ends the job with the error `code`. Called if a step cannot be prepared or saved.
void endFirmwareJob(ApiError code);

// Returns whether endFirmwareJob() has ended the job. If so, stores the final status in `status`.
bool abortedStatus(UpgradeStatus& status);

// Returns " (line 17)" if the last job failed with `code` at a line of its file, and "" otherwise.
std::string firmwareErrorLine(ApiError code);

} // namespace simulator
