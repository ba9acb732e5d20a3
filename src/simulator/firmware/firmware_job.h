// The firmware job: what a start operation begins and the status call carries on, state by state.

#pragma once

#include "document/unit.h"
#include "simulator/unit/codes.h"

#include <string>

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

// Begins a job; it does nothing before the first status call. One job runs on a unit at a time, whatever the
// number of processes. Throws StoreError.
ApiError startFirmwareJob(const Unit& unit, FirmwareTarget target, FirmwareTask task, const char* path);

// Waits until the job has something new to tell. Does not wait without a job.
void waitForFirmwareJob();

// A status call failed. A job whose progress could not be saved fails with it; the next call comes a pace
// later, so that nobody who asks until the job is over burns the processor.
void noteFailedStatusCall(ApiError code);

// Carries the job on as far as its time allows and tells where it is.
ApiError carryOnFirmwareJob(Unit& unit, UpgradeStatus& status);

// Where in its file the last job failed: " (line 17)"; empty where no line is to blame or `code` is another.
std::string placeOfFirmwareFailure(ApiError code);
