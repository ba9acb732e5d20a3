// A unit for firmware work: its jobs take no time, whoever is asked says yes, and there is a sound file for
// each target.

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

    const std::string hex = folder / "firmware.hex";
    const std::string mcs = folder / "firmware.mcs";
};

// What a job that goes well prints of itself.
inline const std::string upgradeProgress = lines({"Initiating", "Preparing communication", "Reading File",
                                                  "Converting file", "Flashing", "Verifying", "Done"});
inline const std::string verificationProgress =
    lines({"Initiating", "Preparing communication", "Reading File", "Converting file", "Verifying", "Done"});
