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

// Begins a job, which does nothing before the first status call. Returns jobRunning if this or another
// process runs one on the unit. Throws StoreError.
ApiError startFirmwareJob(const document::Unit& unit, const UnitFile& file, FirmwareTarget target,
                          FirmwareTask task, const char* path);

// What a status call makes of the job. The job is unchanged until the step is committed, so a call that fails
// has no half of a result.
struct FirmwareStep
{
    std::int32_t state = QV_UPGRADE_INITIATING;
    HexError error{};
    std::vector<HexRecord> records{}; // of the file, in the state Reading File
    document::Firmware image{};       // what flashing stores, from the state Converting file on
};

// Waits until the job can have a new status. Returns at once if there is no job.
void waitForFirmwareJob();

// Waits for the duration of a state, so that a caller who polls until the job ends does not keep the
// processor busy.
void waitAfterFailedStatusCall();

// Advances the unit and `step` if the job's state has lasted long enough, and returns the status to report.
ApiError prepareFirmwareStep(document::Unit& unit, FirmwareStep& step, UpgradeStatus& status);

// Makes the prepared step the progress of the job. To be called once the unit has been saved. Does not throw.
void commitFirmwareStep(FirmwareStep&& step);

// Ends the job with the error, because a step could not be prepared or saved.
void endFirmwareJob(ApiError code);

// Returns whether the job was ended by endFirmwareJob(), and its status.
bool abortedStatus(UpgradeStatus& status);

// Returns " (line 17)" if the last job failed with `code` at a line of its file, and "" otherwise.
std::string firmwareErrorLine(ApiError code);

} // namespace simulator
