#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

namespace
{

ApiError setAutomatic(const Call& call, bool running)
{
    const auto work = requiring(requireDisplay,
                                [=](Unit& unit)
                                {
                                    unit.backlight.automatic = running;
                                    return success;
                                });
    return changeUnit(call, work);
}

} // namespace

BacklightHandle GetBacklight()
{
    return acquire<BacklightHandle>(__func__);
}

ApiError Backlight_release(BacklightHandle backlight)
{
    return release({__func__, backlight});
}

ApiError Backlight_getIntensity(BacklightHandle backlight, std::uint8_t* intensity)
{
    return getField({__func__, backlight}, at<&Unit::backlight, &Backlight::intensity>, intensity,
                    requireDisplay);
}

ApiError Backlight_setIntensity(BacklightHandle backlight, std::uint8_t intensity)
{
    return setField({__func__, backlight}, at<&Unit::backlight, &Backlight::intensity>, intensity, anyValue,
                    requireDisplay);
}

ApiError Backlight_getAutomaticBLStatus(BacklightHandle backlight, std::uint8_t* running)
{
    return getField({__func__, backlight}, at<&Unit::backlight, &Backlight::automatic>, running,
                    requireDisplay);
}

ApiError Backlight_setAutomaticBLFilter(BacklightHandle backlight, std::int32_t first, std::int32_t second,
                                        std::int32_t third, std::int32_t fourth)
{
    const auto work = requiring(requireDisplay,
                                [&](Unit& unit)
                                {
                                    unit.backlight.filter = {first, second, third, fourth};
                                    return success;
                                });
    return changeUnit({__func__, backlight}, work, first, second, third, fourth);
}

ApiError Backlight_startAutomaticBL(BacklightHandle backlight)
{
    return setAutomatic({__func__, backlight}, true);
}

ApiError Backlight_stopAutomaticBL(BacklightHandle backlight)
{
    return setAutomatic({__func__, backlight}, false);
}

ApiError Backlight_getLedDimming(BacklightHandle backlight, std::int32_t* enabled)
{
    return getField({__func__, backlight}, at<&Unit::backlight, &Backlight::ledDimming>, enabled,
                    requireDisplay);
}

ApiError Backlight_setLedDimming(BacklightHandle backlight, std::int32_t enabled)
{
    return setField({__func__, backlight}, at<&Unit::backlight, &Backlight::ledDimming>, enabled, onOrOff,
                    requireDisplay);
}
