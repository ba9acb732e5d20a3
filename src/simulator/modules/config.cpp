#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

namespace
{

// CAN and the configurable inputs can be triggers only in addition to the button or the signal.
constexpr auto isTriggerSet = [](std::int32_t triggers)
{
    constexpr std::int32_t required = QV_TRIGGER_FRONT_BUTTON | QV_TRIGGER_ON_OFF_SIGNAL;
    constexpr std::int32_t known = required | QV_TRIGGER_CAN | QV_TRIGGER_CONFIGURABLE_INPUTS;
    return (triggers & ~known) == 0 && (triggers & required) != 0;
};

} // namespace

ConfigHandle GetConfig()
{
    return acquire<ConfigHandle>(__func__);
}

ApiError Config_release(ConfigHandle config)
{
    return release({__func__, config});
}

ApiError Config_getShortButtonPressAction(ConfigHandle config, std::int32_t* action)
{
    return getField({__func__, config}, at<&Unit::config, &Config::shortPressAction>, action);
}

ApiError Config_setShortButtonPressAction(ConfigHandle config, std::int32_t action)
{
    return setField({__func__, config}, at<&Unit::config, &Config::shortPressAction>, action,
                    oneOf(actionNames));
}

ApiError Config_getLongButtonPressAction(ConfigHandle config, std::int32_t* action)
{
    return getField({__func__, config}, at<&Unit::config, &Config::longPressAction>, action);
}

ApiError Config_setLongButtonPressAction(ConfigHandle config, std::int32_t action)
{
    return setField({__func__, config}, at<&Unit::config, &Config::longPressAction>, action,
                    oneOf(actionNames));
}

ApiError Config_getFrontBtnTrigTime(ConfigHandle config, std::uint16_t* milliseconds)
{
    return getField({__func__, config}, at<&Unit::config, &Config::longPressTime>, milliseconds);
}

ApiError Config_setFrontBtnTrigTime(ConfigHandle config, std::uint16_t milliseconds)
{
    return setField({__func__, config}, at<&Unit::config, &Config::longPressTime>, milliseconds, anyValue);
}

ApiError Config_getOnOffSigAction(ConfigHandle config, std::int32_t* action)
{
    return getField({__func__, config}, at<&Unit::config, &Config::onOffSignalAction>, action);
}

ApiError Config_setOnOffSigAction(ConfigHandle config, std::int32_t action)
{
    return setField({__func__, config}, at<&Unit::config, &Config::onOffSignalAction>, action,
                    oneOf(actionNames));
}

ApiError Config_getExtOnOffSigTrigTime(ConfigHandle config, std::uint32_t* seconds)
{
    return getField({__func__, config}, at<&Unit::config, &Config::onOffSignalTime>, seconds);
}

ApiError Config_setExtOnOffSigTrigTime(ConfigHandle config, std::uint32_t seconds)
{
    return setField({__func__, config}, at<&Unit::config, &Config::onOffSignalTime>, seconds, anyValue);
}

ApiError Config_getPowerOnStartup(ConfigHandle config, std::int32_t* enabled)
{
    return getField({__func__, config}, at<&Unit::config, &Config::powerOnStartup>, enabled);
}

ApiError Config_setPowerOnStartup(ConfigHandle config, std::int32_t enabled)
{
    return setField({__func__, config}, at<&Unit::config, &Config::powerOnStartup>, enabled, onOrOff);
}

ApiError Config_getStartupTriggerConfig(ConfigHandle config, std::int32_t* triggers)
{
    return getField({__func__, config}, at<&Unit::config, &Config::startupTrigger>, triggers);
}

ApiError Config_setStartupTriggerConfig(ConfigHandle config, std::int32_t triggers)
{
    return setField({__func__, config}, at<&Unit::config, &Config::startupTrigger>, triggers, isTriggerSet);
}

ApiError Config_getSuspendMaxTime(ConfigHandle config, std::uint16_t* minutes)
{
    return getField({__func__, config}, at<&Unit::config, &Config::suspendMaxTime>, minutes);
}

ApiError Config_setSuspendMaxTime(ConfigHandle config, std::uint16_t minutes)
{
    return setField({__func__, config}, at<&Unit::config, &Config::suspendMaxTime>, minutes, anyValue);
}

ApiError Config_getHeatingTempLimit(ConfigHandle config, std::int16_t* celsius)
{
    return getField({__func__, config}, at<&Unit::config, &Config::heatingLimit>, celsius);
}

ApiError Config_setHeatingTempLimit(ConfigHandle config, std::int16_t celsius)
{
    return setField({__func__, config}, at<&Unit::config, &Config::heatingLimit>, celsius,
                    within(HEATER_LIMIT_MIN_CELSIUS, HEATER_LIMIT_MAX_CELSIUS));
}

ApiError Config_getVideoStartupPowerConfig(ConfigHandle config, std::uint8_t* mask)
{
    return getField({__func__, config}, at<&Unit::config, &Config::startupPower, &Supplies::video>, mask);
}

ApiError Config_setVideoStartupPowerConfig(ConfigHandle config, std::uint8_t mask)
{
    return setField({__func__, config}, at<&Unit::config, &Config::startupPower, &Supplies::video>, mask,
                    videoMask);
}

ApiError Config_getCanStartupPowerConfig(ConfigHandle config, std::int32_t* enabled)
{
    return getField({__func__, config}, at<&Unit::config, &Config::startupPower, &Supplies::can>, enabled,
                    requireCan);
}

ApiError Config_setCanStartupPowerConfig(ConfigHandle config, std::int32_t enabled)
{
    return setField({__func__, config}, at<&Unit::config, &Config::startupPower, &Supplies::can>, enabled,
                    onOrOff, requireCan);
}

ApiError Config_getExtFanStartupPowerConfig(ConfigHandle config, std::int32_t* enabled)
{
    return getField({__func__, config}, at<&Unit::config, &Config::startupPower, &Supplies::externalFan>,
                    enabled);
}

ApiError Config_setExtFanStartupPowerConfig(ConfigHandle config, std::int32_t enabled)
{
    return setField({__func__, config}, at<&Unit::config, &Config::startupPower, &Supplies::externalFan>,
                    enabled, onOrOff);
}

ApiError Config_setNextBootMode(ConfigHandle config, std::int32_t mode)
{
    return setField({__func__, config}, at<&Unit::boot, &Boot::nextMode>, mode, oneOf(bootModeNames));
}
