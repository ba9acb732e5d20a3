// Firmware upgrades and verifications, for the advanced category.

#pragma once

#include "device/qv_aux2.h"

struct FirmwareRequest
{
    bool upgrade;       // false: verification
    const char* target; // word that names the target
    const char* path;   // of the firmware file, null if none was given
    bool force;         // without confirmation
};

// Carries out `request` and prints everything about it, errors included. Unless it is forced, it is confirmed
// on standard input first. Returns when the job has ended.
void runFirmwareOperation(FirmwareUpgradeHandle upgrade, AboutHandle about, const FirmwareRequest& request);
