#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

PowerHandle GetPower()
{
    return acquire<PowerHandle>(__func__);
}

ApiError Power_release(PowerHandle power)
{
    return release({__func__, power});
}

ApiError Power_getVideoPowerStatus(PowerHandle power, std::uint8_t* mask)
{
    return getField({__func__, power}, at<&Unit::power, &Supplies::video>, mask);
}

ApiError Power_setVideoPowerStatus(PowerHandle power, std::uint8_t mask)
{
    return setField({__func__, power}, at<&Unit::power, &Supplies::video>, mask, videoMask);
}

ApiError Power_getCanPowerStatus(PowerHandle power, std::int32_t* enabled)
{
    return getField({__func__, power}, at<&Unit::power, &Supplies::can>, enabled, requireCan);
}

ApiError Power_setCanPowerStatus(PowerHandle power, std::int32_t enabled)
{
    return setField({__func__, power}, at<&Unit::power, &Supplies::can>, enabled, onOrOff, requireCan);
}

ApiError Power_getExtFanPowerStatus(PowerHandle power, std::int32_t* enabled)
{
    return getField({__func__, power}, at<&Unit::power, &Supplies::externalFan>, enabled);
}

ApiError Power_setExtFanPowerStatus(PowerHandle power, std::int32_t enabled)
{
    return setField({__func__, power}, at<&Unit::power, &Supplies::externalFan>, enabled, onOrOff);
}
