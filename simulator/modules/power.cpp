#include "call.h"

#include "requirements.h"

namespace
{

constexpr auto videoOf = [](auto& unit) -> auto&
{
    return unit.power.video;
};
constexpr auto canOf = [](auto& unit) -> auto&
{
    return unit.power.can;
};
constexpr auto externalFanOf = [](auto& unit) -> auto&
{
    return unit.power.externalFan;
};

} // namespace

PowerHandle GetPower()
{
    return obtain<PowerHandle>(__func__);
}

ApiError Power_release(PowerHandle power)
{
    return releaseHandle(__func__, power);
}

ApiError Power_getVideoPowerStatus(PowerHandle power, std::uint8_t* mask)
{
    return getField(__func__, power, videoOf, mask);
}

ApiError Power_setVideoPowerStatus(PowerHandle power, std::uint8_t mask)
{
    return setField(__func__, power, videoOf, mask, within(0, 15));
}

ApiError Power_getCanPowerStatus(PowerHandle power, std::int32_t* enabled)
{
    return getField(__func__, power, canOf, enabled, canNeeded);
}

ApiError Power_setCanPowerStatus(PowerHandle power, std::int32_t enabled)
{
    return setField(__func__, power, canOf, enabled, onOrOff, canNeeded);
}

ApiError Power_getExtFanPowerStatus(PowerHandle power, std::int32_t* enabled)
{
    return getField(__func__, power, externalFanOf, enabled);
}

ApiError Power_setExtFanPowerStatus(PowerHandle power, std::int32_t enabled)
{
    return setField(__func__, power, externalFanOf, enabled, onOrOff);
}
