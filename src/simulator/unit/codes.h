// The error codes of the simulated unit and their texts.

#pragma once

#include "device/qv_aux2.h"

#include <cstdint>

enum Code : ApiError
{
    success = 0,
    failure = 1,
    notSupported = 2,
    invalidHandle = 3,
    invalidArgument = 4,
    outOfRange = 5,
    boardNotFitted = 18,

    unitFileUnplaced = 64,
    unitFileUnreadable = 65,
    unitFileInvalid = 66,
    unitFileUnwritable = 67,

    jobRunning = 80,
    noJob = 81,
    firmwareUnreadable = 82,
    firmwareNotHex = 83,
    firmwareBadLength = 84,
    firmwareBadChecksum = 85,
    firmwareBadRecord = 86,
    firmwareNoEnd = 87,
    firmwareOverlap = 88,
    firmwareEmpty = 89,
    firmwareTooLarge = 90,
    firmwareDiffers = 91,
    firmwareIncomplete = 92,
    firmwareGoesOn = 93,
};

// Null for a code that the unit does not know.
const char* textOfCode(ApiError code);

const char* textOfStartupReason(std::uint16_t reason);
const char* textOfHwErrorStatus(std::uint16_t status);
