#include "simulator/call/call.h"

#include "document/hex_digits.h"
#include "simulator/call/requirements.h"

#include <algorithm>

namespace
{

enum Eeprom : std::int32_t
{
    mainBoard = 0,
    addOn = 1,
};

std::vector<std::uint8_t> contentsOf(const EepromImage& image)
{
    std::vector<std::uint8_t> bytes(image.text.begin(), image.text.end());
    appendBytes(bytes, image.hex);
    bytes.resize(EepromImage::size, image.fill);
    return bytes;
}

// The registers of the System Supervisor that take a command.
struct Register
{
    std::int32_t group;
    std::int32_t number;
    std::int32_t value;

    bool operator==(const Register&) const = default;
};

constexpr Register restoreDefaults{3, 0x65, 1};
constexpr Register bootCompleted{4, 6, 0xC3};

} // namespace

QVAuxPrivateHandle GetQVAuxPrivate()
{
    return obtain<QVAuxPrivateHandle>(__func__);
}

ApiError QVAuxPrivate_release(QVAuxPrivateHandle privateAccess)
{
    return releaseHandle(__func__, privateAccess);
}

ApiError QVAuxPrivate_getEepromData(QVAuxPrivateHandle privateAccess, std::int32_t eeprom,
                                    std::uint8_t* buffer, std::uint32_t length)
{
    const Reading work = [&](const Unit& unit) -> ApiError
    {
        if (eeprom != mainBoard && eeprom != addOn)
            return outOfRange;
        if (eeprom == addOn && addOnBoardNeeded(unit) != success)
            return boardNotFitted;
        const auto bytes = contentsOf(eeprom == addOn ? unit.eeprom.addOn : unit.eeprom.main);
        std::copy_n(bytes.begin(), std::min<std::size_t>(length, bytes.size()), buffer);
        return success;
    };
    return reading(__func__, privateAccess, work, eeprom, BytesOut{buffer, length});
}

ApiError QVAuxPrivate_writeSsRegister(QVAuxPrivateHandle privateAccess, std::int32_t group,
                                      std::int32_t number, std::int32_t value)
{
    const Change work = [&](Unit& unit) -> ApiError
    {
        const Register written{group, number, value};
        if (written == restoreDefaults)
            unit.config = {}; // the System Supervisor's settings
        else if (written == bootCompleted)
            unit.boot.completed = true;
        else
            return notSupported;
        return success;
    };
    return changing(__func__, privateAccess, work, group, number, value);
}

ApiError QVAuxPrivate_getSystemMode(QVAuxPrivateHandle privateAccess, std::int32_t* mode)
{
    return getField(__func__, privateAccess, at<&Unit::boot, &Boot::systemMode>, mode);
}
