// The error codes of the simulated unit, and the texts of codes.

#pragma once

#include "device/qv_aux2.h"

#include <cstdint>

namespace simulator
{

enum Code : ApiError
{
    success = QV_SUCCESS,
    failure = 1,
    notSupported = QV_NOT_SUPPORTED,
    invalidHandle = 3,
    invalidArgument = 4,
    outOfRange = 5,
    boardNotFitted = QV_BOARD_NOT_FITTED,

    unitFileNotLocated = 64,
    unitFileUnreadable = 65,
    unitFileInvalid = 66,
    unitFileUnwritable = 67,

    jobRunning = 80,
    noJob = 81,
    firmwareUnreadable = 82,
    firmwareNotHex = 83,
    firmwareBadLength = 84,
    firmwareBadChecksum = 85,
    firmwareUnknownRecord = 86,
    firmwareNoEnd = 87,
    firmwareOverlap = 88,
    firmwareEmpty = 89,
    firmwareTooLarge = 90,
    firmwareDiffers = 91,
    firmwareIncomplete = 92,
    firmwareContinues = 93,
};

// Returns null if the code is unknown.
const char* textOfCode(ApiError code);

// Unknown values have a text too.
const char* textOfStartupReason(std::uint16_t reason);
const char* textOfHwErrorStatus(std::uint16_t status);

} // namespace simulator
