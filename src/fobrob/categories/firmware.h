// Firmware upgrades and verifications, for the advanced category.

#pragma once

#include "device/qv_aux2.h"

struct FirmwareRequest
{
    bool upgrade;       // false: verification
    const char* target; // name of the target, as typed
    const char* path;   // of the firmware file, null if none was given
    bool force;         // do not ask for confirmation
};

// Performs `request` and prints its progress, its result and all errors. Asks for confirmation first, unless
// `force` is set. Returns when the job has ended.
void runFirmwareOperation(FirmwareUpgradeHandle upgrade, AboutHandle about, const FirmwareRequest& request);
