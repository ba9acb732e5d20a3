#include "simulator/unit/codes.h"

#include <span>

namespace simulator
{

namespace
{

struct Text
{
    std::uint32_t code;
    const char* text;
};

constexpr Text codes[] = {
    {success, "No error"},
    {failure, "The unit did not carry out the request"},
    {notSupported, "Not supported by this unit"},
    {invalidHandle, "The module handle is not valid"},
    {invalidArgument, "An argument is missing"},
    {outOfRange, "The value is out of range"},
    {boardNotFitted, "The board is not fitted"},
    {unitFileNotLocated, "The unit file cannot be located"},
    {unitFileUnreadable, "The unit file cannot be read"},
    {unitFileInvalid, "The unit file is not valid"},
    {unitFileUnwritable, "The unit file cannot be written"},
    {jobRunning, "Another firmware job is running"},
    {noJob, "No firmware job has been started"},
    {firmwareUnreadable, "The firmware file cannot be read"},
    {firmwareNotHex, "The firmware file contains a line that is not an Intel HEX record"},
    {firmwareBadLength, "The firmware file contains a record with a wrong length"},
    {firmwareBadChecksum, "The firmware file contains a record with a wrong checksum"},
    {firmwareUnknownRecord, "The firmware file contains a record of an unknown type"},
    {firmwareNoEnd, "The firmware file has no end record"},
    {firmwareOverlap, "The firmware file defines an address twice"},
    {firmwareEmpty, "The firmware file contains no data"},
    {firmwareTooLarge, "The firmware does not fit into the target"},
    {firmwareDiffers, "The firmware in the target differs from the file"},
    {firmwareIncomplete, "The firmware is incomplete: its upgrade was interrupted"},
    {firmwareContinues, "The firmware file continues after its end record"},
};

constexpr Text startupReasons[] = {
    {QV_STARTUP_POWER_APPLIED, "Power was applied"},
    {QV_STARTUP_FRONT_BUTTON, "Front button"},
    {QV_STARTUP_ON_OFF_SIGNAL, "On/off signal"},
    {QV_STARTUP_SUSPEND_ENDED, "Wake up from suspend"},
    {QV_STARTUP_WATCHDOG, "Watchdog"},
};

constexpr Text hwErrorStatuses[] = {
    {QV_HW_NO_ERROR, "No error"},
    {QV_HW_SUPPLY_LOW, "Supply voltage was low"},
    {QV_HW_SUPPLY_HIGH, "Supply voltage was high"},
    {QV_HW_TEMPERATURE_HIGH, "Temperature was high"},
    {QV_HW_CLOCK_LOST_TIME, "Real-time clock lost its time"},
    {QV_HW_MAIN_SUPPLY_FAILED, "Main supply failed"},
    {QV_HW_EEPROM_FAILED, "EEPROM failed"},
};

const char* textOf(std::span<const Text> texts, std::uint32_t code)
{
    for (const Text& text : texts)
        if (text.code == code)
            return text.text;
    return nullptr;
}

} // namespace

const char* textOfCode(ApiError code)
{
    return textOf(codes, code);
}

const char* textOfStartupReason(std::uint16_t reason)
{
    const char* text = textOf(startupReasons, reason);
    return text ? text : "Unknown start-up reason";
}

const char* textOfHwErrorStatus(std::uint16_t status)
{
    const char* text = textOf(hwErrorStatuses, status);
    return text ? text : "Unknown hardware status";
}

} // namespace simulator
