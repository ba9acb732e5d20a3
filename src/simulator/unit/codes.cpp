#include "simulator/unit/codes.h"

#include <span>

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
    {unitFileUnplaced, "There is no place for the unit file"},
    {unitFileUnreadable, "The unit file cannot be read"},
    {unitFileInvalid, "The unit file is not valid"},
    {unitFileUnwritable, "The unit file cannot be written"},
    {jobRunning, "Another firmware job is running"},
    {noJob, "No firmware job has been started"},
    {firmwareUnreadable, "The firmware file cannot be read"},
    {firmwareNotHex, "The firmware file holds a line that is not an Intel HEX record"},
    {firmwareBadLength, "The firmware file holds a record whose length is wrong"},
    {firmwareBadChecksum, "The firmware file holds a record whose checksum is wrong"},
    {firmwareBadRecord, "The firmware file holds a record of an unknown type"},
    {firmwareNoEnd, "The firmware file has no end record"},
    {firmwareOverlap, "The firmware file fills an address twice"},
    {firmwareEmpty, "The firmware file holds no data"},
    {firmwareTooLarge, "The firmware does not fit into the target"},
    {firmwareDiffers, "The firmware in the target differs from the file"},
    {firmwareIncomplete, "The firmware is incomplete, its upgrade was interrupted"},
    {firmwareGoesOn, "The firmware file goes on behind its end record"},
};

constexpr Text startupReasons[] = {
    {0x00, "Power was applied"},    {0x55, "Front button"}, {0xAA, "On/off signal"},
    {0xF0, "Wake up from suspend"}, {0x0F, "Watchdog"},
};

constexpr Text hwErrorStatuses[] = {
    {0, "No error"},
    {16, "Supply voltage was low"},
    {32, "Supply voltage was high"},
    {64, "Temperature was high"},
    {130, "Real-time clock lost its time"},
    {131, "Main supply failed"},
    {132, "EEPROM failed"},
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
