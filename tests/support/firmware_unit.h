// A unit for firmware jobs: the states take no time, the answer to the confirmation question is yes, and
// there is a valid file for each target.

#pragma once

#include "support/hex_file.h"
#include "support/unit.h"

struct FirmwareUnit : Unit
{
    explicit FirmwareUnit(const std::string& keys = "{}") : Unit(keys)
    {
        set("/firmware/pace", 0);
        input = "yes\n";
        writeFile(hex, hexFile(randomBytes(1000)));
        writeFile(mcs, hexFile(randomBytes(1000)));
    }

    const std::string hex = directory / "firmware.hex";
    const std::string mcs = directory / "firmware.mcs";
};

// The progress that a successful job prints.
inline const std::string upgradeProgress = lines({"Initiating", "Preparing communication", "Reading File",
                                                  "Converting file", "Flashing", "Verifying", "Done"});
inline const std::string verificationProgress =
    lines({"Initiating", "Preparing communication", "Reading File", "Converting file", "Verifying", "Done"});
