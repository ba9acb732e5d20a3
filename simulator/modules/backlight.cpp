#include "call.h"

#include "requirements.h"

namespace
{

constexpr auto intensityOf = [](auto& unit) -> auto&
{
    return unit.backlight.intensity;
};
constexpr auto automaticOf = [](auto& unit) -> auto&
{
    return unit.backlight.automatic;
};
constexpr auto ledDimmingOf = [](auto& unit) -> auto&
{
    return unit.backlight.ledDimming;
};

ApiError setAutomatic(const char* operation, const void* handle, bool running)
{
    const Change work = [=](Unit& unit)
    {
        const ApiError lack = displayNeeded(unit);
        if (lack == success)
            automaticOf(unit) = running;
        return lack;
    };
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
    return getField(__func__, backlight, intensityOf, intensity, displayNeeded);
}

ApiError Backlight_setIntensity(BacklightHandle backlight, std::uint8_t intensity)
{
    return setField(__func__, backlight, intensityOf, intensity, anyValue, displayNeeded);
}

ApiError Backlight_getAutomaticBLStatus(BacklightHandle backlight, std::uint8_t* running)
{
    return getField(__func__, backlight, automaticOf, running, displayNeeded);
}

ApiError Backlight_setAutomaticBLFilter(BacklightHandle backlight, std::int32_t first, std::int32_t second,
                                        std::int32_t third, std::int32_t fourth)
{
    const Change work = [&](Unit& unit)
    {
        const ApiError lack = displayNeeded(unit);
        if (lack == success)
            unit.backlight.filter = {first, second, third, fourth};
        return lack;
    };
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
    return getField(__func__, backlight, ledDimmingOf, enabled, displayNeeded);
}

ApiError Backlight_setLedDimming(BacklightHandle backlight, std::int32_t enabled)
{
    return setField(__func__, backlight, ledDimmingOf, enabled, onOrOff, displayNeeded);
}
