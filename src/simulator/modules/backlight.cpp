#include "simulator/call/call.h"

#include "simulator/call/requirements.h"

namespace
{

ApiError setAutomatic(const char* operation, const void* handle, bool running)
{
    const Change work = needing(displayNeeded,
                                [=](Unit& unit)
                                {
                                    unit.backlight.automatic = running;
                                    return success;
                                });
    return changing(operation, handle, work);
}

} // namespace

BacklightHandle GetBacklight()
{
    return obtain<BacklightHandle>(__func__);
}

ApiError Backlight_release(BacklightHandle backlight)
{
    return releaseHandle(__func__, backlight);
}

ApiError Backlight_getIntensity(BacklightHandle backlight, std::uint8_t* intensity)
{
    return getField(__func__, backlight, at<&Unit::backlight, &Backlight::intensity>, intensity,
                    displayNeeded);
}

ApiError Backlight_setIntensity(BacklightHandle backlight, std::uint8_t intensity)
{
    return setField(__func__, backlight, at<&Unit::backlight, &Backlight::intensity>, intensity, anyValue,
                    displayNeeded);
}

ApiError Backlight_getAutomaticBLStatus(BacklightHandle backlight, std::uint8_t* running)
{
    return getField(__func__, backlight, at<&Unit::backlight, &Backlight::automatic>, running, displayNeeded);
}

ApiError Backlight_setAutomaticBLFilter(BacklightHandle backlight, std::int32_t first, std::int32_t second,
                                        std::int32_t third, std::int32_t fourth)
{
    const Change work = needing(displayNeeded,
                                [&](Unit& unit)
                                {
                                    unit.backlight.filter = {first, second, third, fourth};
                                    return success;
                                });
    return changing(__func__, backlight, work, first, second, third, fourth);
}

ApiError Backlight_startAutomaticBL(BacklightHandle backlight)
{
    return setAutomatic(__func__, backlight, true);
}

ApiError Backlight_stopAutomaticBL(BacklightHandle backlight)
{
    return setAutomatic(__func__, backlight, false);
}

ApiError Backlight_getLedDimming(BacklightHandle backlight, std::int32_t* enabled)
{
    return getField(__func__, backlight, at<&Unit::backlight, &Backlight::ledDimming>, enabled,
                    displayNeeded);
}

ApiError Backlight_setLedDimming(BacklightHandle backlight, std::int32_t enabled)
{
    return setField(__func__, backlight, at<&Unit::backlight, &Backlight::ledDimming>, enabled, onOrOff,
                    displayNeeded);
}
