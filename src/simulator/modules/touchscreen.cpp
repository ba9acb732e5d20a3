#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

namespace
{

bool isStored(std::int32_t setting)
{
    return setting >= 0 && setting < QV_TOUCH_RESTORE_DEFAULTS;
}

} // namespace

TouchScreenHandle GetTouchScreen()
{
    return acquire<TouchScreenHandle>(__func__);
}

ApiError TouchScreen_release(TouchScreenHandle touch)
{
    return release({__func__, touch});
}

ApiError TouchScreen_getMode(TouchScreenHandle touch, std::int32_t* mode)
{
    return getField({__func__, touch}, at<&Unit::touch, &Touch::profile>, mode, requireTouchScreen);
}

ApiError TouchScreen_setMode(TouchScreenHandle touch, std::int32_t mode)
{
    return setField({__func__, touch}, at<&Unit::touch, &Touch::profile>, mode, oneOf(profileNames),
                    requireTouchScreen);
}

ApiError TouchScreen_getAdvancedSetting(TouchScreenHandle touch, std::int32_t setting, std::uint16_t* value)
{
    const auto get = [&](const Unit& unit)
    {
        if (!isStored(setting) && setting != QV_TOUCH_RESTORE_DEFAULTS)
            return outOfRange;
        // QV_TOUCH_RESTORE_DEFAULTS stores nothing and reads as 0.
        *value =
            isStored(setting) ? unit.touch.settings[static_cast<std::size_t>(setting)] : std::uint16_t{0};
        return success;
    };
    return readUnit({__func__, touch}, requiring(requireTouchScreen, get), setting, out(value));
}

ApiError TouchScreen_setAdvancedSetting(TouchScreenHandle touch, std::int32_t setting, std::uint16_t value)
{
    const auto set = [&](Unit& unit)
    {
        if (setting == QV_TOUCH_RESTORE_DEFAULTS)
            unit.touch.settings = Touch{}.settings;
        else if (!isStored(setting) || (setting == QV_TOUCH_USE_DEJITTER && value > TOUCH_DEJITTER_MAX))
            return outOfRange;
        else
            unit.touch.settings[static_cast<std::size_t>(setting)] = value;
        return success;
    };
    return changeUnit({__func__, touch}, requiring(requireTouchScreen, set), setting, value);
}
