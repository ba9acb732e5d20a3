#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

namespace
{

bool isFitted(const Unit& unit, std::uint8_t channel)
{
    return channel >= 1 && channel <= unit.about.canConnections;
}

// In kbit/s, for channels that the document does not list.
constexpr std::uint16_t defaultBaudrate = 125;

} // namespace

CanSettingHandle GetCanSetting()
{
    return acquire<CanSettingHandle>(__func__);
}

ApiError CanSetting_release(CanSettingHandle can)
{
    return release({__func__, can});
}

ApiError CanSetting_getBaudrate(CanSettingHandle can, std::uint8_t channel, std::uint16_t* baudrate)
{
    const auto work = [&](const Unit& unit) -> ApiError
    {
        if (!isFitted(unit, channel))
            return notSupported;
        const auto& baudrates = unit.can.baudrates;
        *baudrate = channel <= baudrates.size() ? baudrates[channel - 1u] : defaultBaudrate;
        return success;
    };
    return readUnit({__func__, can}, work, channel, out(baudrate));
}

ApiError CanSetting_setBaudrate(CanSettingHandle can, std::uint8_t channel, std::uint16_t baudrate)
{
    const auto work = [&](Unit& unit) -> ApiError
    {
        if (!isFitted(unit, channel))
            return notSupported;
        if (baudrate == 0)
            return outOfRange;
        auto& baudrates = unit.can.baudrates;
        if (baudrates.size() < channel)
            baudrates.resize(channel, defaultBaudrate);
        baudrates[channel - 1u] = baudrate;
        return success;
    };
    return changeUnit({__func__, can}, work, channel, baudrate);
}
