#include "document/hex_digits.h"
#include "simulator/call/fields.h"

#include <algorithm>

using namespace document;
using namespace simulator;

namespace
{

std::vector<std::uint8_t> contentOf(const EepromImage& image)
{
    std::vector<std::uint8_t> bytes(image.text.begin(), image.text.end());
    appendBytes(bytes, image.hex);
    bytes.resize(QV_EEPROM_SIZE, image.fill);
    return bytes;
}

// A value written to a register of the System Supervisor.
struct Command
{
    std::int32_t group;
    std::int32_t number;
    std::int32_t value;

    bool operator==(const Command&) const = default;
};

constexpr Command restoreDefaults{QV_SS_RESTORE_DEFAULTS};
constexpr Command bootCompleted{QV_SS_BOOT_COMPLETED};

} // namespace

QVAuxPrivateHandle GetQVAuxPrivate()
{
    return acquire<QVAuxPrivateHandle>(__func__);
}

ApiError QVAuxPrivate_release(QVAuxPrivateHandle privateAccess)
{
    return release({__func__, privateAccess});
}

ApiError QVAuxPrivate_getEepromData(QVAuxPrivateHandle privateAccess, std::int32_t eeprom,
                                    std::uint8_t* buffer, std::uint32_t length)
{
    const auto work = [&](const Unit& unit) -> ApiError
    {
        if (eeprom != QV_EEPROM_MAIN_BOARD && eeprom != QV_EEPROM_ADD_ON_BOARD)
            return outOfRange;
        const bool isAddOn = eeprom == QV_EEPROM_ADD_ON_BOARD;
        if (const ApiError code = requireAddOnBoard(unit); isAddOn && code != success)
            return code;
        const auto bytes = contentOf(isAddOn ? unit.eeprom.addOn : unit.eeprom.main);
        std::copy_n(bytes.begin(), std::min<std::size_t>(length, bytes.size()), buffer);
        return success;
    };
    return readUnit({__func__, privateAccess}, work, eeprom, BytesOut{buffer, length});
}

ApiError QVAuxPrivate_writeSsRegister(QVAuxPrivateHandle privateAccess, std::int32_t group,
                                      std::int32_t number, std::int32_t value)
{
    const auto work = [&](Unit& unit) -> ApiError
    {
        const Command command{group, number, value};
        if (command == restoreDefaults)
            unit.config = {};
        else if (command == bootCompleted)
            unit.boot.completed = true;
        else
            return notSupported;
        return success;
    };
    return changeUnit({__func__, privateAccess}, work, group, number, value);
}

ApiError QVAuxPrivate_getSystemMode(QVAuxPrivateHandle privateAccess, std::int32_t* mode)
{
    return getField({__func__, privateAccess}, at<&Unit::boot, &Boot::systemMode>, mode);
}
