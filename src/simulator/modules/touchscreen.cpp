#include "simulator/call/call.h"

#include "simulator/call/requirements.h"

namespace
{

constexpr std::int32_t useDejitter = 8;
constexpr std::int32_t restoreDefaults = 11;

bool isStored(std::int32_t setting)
{
    return setting >= 0 && setting < restoreDefaults;
}

} // namespace

TouchScreenHandle GetTouchScreen()
{
    return obtain<TouchScreenHandle>(__func__);
}

ApiError TouchScreen_release(TouchScreenHandle touch)
{
    return releaseHandle(__func__, touch);
}

ApiError TouchScreen_getMode(TouchScreenHandle touch, std::int32_t* mode)
{
    return getField(__func__, touch, at<&Unit::touch, &Touch::profile>, mode, touchScreenNeeded);
}

ApiError TouchScreen_setMode(TouchScreenHandle touch, std::int32_t mode)
{
    return setField(__func__, touch, at<&Unit::touch, &Touch::profile>, mode, oneOf(profileNames),
                    touchScreenNeeded);
}

// The setting that restores the defaults holds nothing and reads as 0.
ApiError TouchScreen_getAdvancedSetting(TouchScreenHandle touch, std::int32_t setting, std::uint16_t* value)
{
    const auto get = [&](const Unit& unit)
    {
        if (!isStored(setting) && setting != restoreDefaults)
            return outOfRange;
        *value =
            isStored(setting) ? unit.touch.settings[static_cast<std::size_t>(setting)] : std::uint16_t{0};
        return success;
    };
    return reading(__func__, touch, needing(touchScreenNeeded, get), setting, out(value));
}

ApiError TouchScreen_setAdvancedSetting(TouchScreenHandle touch, std::int32_t setting, std::uint16_t value)
{
    const auto set = [&](Unit& unit)
    {
        if (setting == restoreDefaults)
            unit.touch.settings = Touch{}.settings;
        else if (!isStored(setting) || (setting == useDejitter && value > 1))
            return outOfRange;
        else
            unit.touch.settings[static_cast<std::size_t>(setting)] = value;
        return success;
    };
    return changing(__func__, touch, needing(touchScreenNeeded, set), setting, value);
}
