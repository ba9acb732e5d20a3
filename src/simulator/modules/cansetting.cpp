#include "simulator/call/call.h"

namespace
{

bool isFitted(const Unit& unit, std::uint8_t channel)
{
    return channel >= 1 && channel <= unit.about.canConnections;
}

// A channel that the file does not mention runs at the lowest rate.
constexpr std::uint16_t lowestBaudrate = 125;

} // namespace

CanSettingHandle GetCanSetting()
{
    return obtain<CanSettingHandle>(__func__);
}

ApiError CanSetting_release(CanSettingHandle can)
{
    return releaseHandle(__func__, can);
}

ApiError CanSetting_getBaudrate(CanSettingHandle can, std::uint8_t channel, std::uint16_t* baudrate)
{
    const Reading work = [&](const Unit& unit) -> ApiError
    {
        if (!isFitted(unit, channel))
            return notSupported;
        const auto& baudrates = unit.can.baudrates;
        *baudrate = channel <= baudrates.size() ? baudrates[channel - 1u] : lowestBaudrate;
        return success;
    };
    return reading(__func__, can, work, channel, out(baudrate));
}

ApiError CanSetting_setBaudrate(CanSettingHandle can, std::uint8_t channel, std::uint16_t baudrate)
{
    const Change work = [&](Unit& unit) -> ApiError
    {
        if (!isFitted(unit, channel))
            return notSupported;
        if (baudrate == 0)
            return outOfRange;
        auto& baudrates = unit.can.baudrates;
        if (baudrates.size() < channel)
            baudrates.resize(channel, lowestBaudrate);
        baudrates[channel - 1u] = baudrate;
        return success;
    };
    return changing(__func__, can, work, channel, baudrate);
}
