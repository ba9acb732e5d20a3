// Firmware jobs. A start operation begins a job; each status call advances it by at most one state.

#pragma once

#include "document/unit.h"
#include "simulator/store/unit_file.h"
#include "simulator/unit/codes.h"

#include <string>

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

// Waits until the job can have a new status. Returns at once if there is no job.
void waitForFirmwareJob();

// Ends the job with the error if its progress could not be saved. Then waits for the duration of a state, so
// that a caller who polls until the job ends does not keep the processor busy.
void handleFailedStatusCall(ApiError code);

// Advances the job if its state has lasted long enough, and returns its status.
ApiError advanceFirmwareJob(document::Unit& unit, UpgradeStatus& status);

// Returns " (line 17)" if the last job failed with `code` at a line of its file, and "" otherwise.
std::string firmwareErrorLine(ApiError code);

} // namespace simulator
