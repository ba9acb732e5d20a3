#include "call.h"

#include "requirements.h"

namespace
{

constexpr auto shortPressActionOf = [](auto& unit) -> auto&
{
    return unit.config.shortPressAction;
};
constexpr auto longPressActionOf = [](auto& unit) -> auto&
{
    return unit.config.longPressAction;
};
constexpr auto longPressTimeOf = [](auto& unit) -> auto&
{
    return unit.config.longPressTime;
};
constexpr auto onOffSignalActionOf = [](auto& unit) -> auto&
{
    return unit.config.onOffSignalAction;
};
constexpr auto onOffSignalTimeOf = [](auto& unit) -> auto&
{
    return unit.config.onOffSignalTime;
};
constexpr auto powerOnStartupOf = [](auto& unit) -> auto&
{
    return unit.config.powerOnStartup;
};
constexpr auto startupTriggerOf = [](auto& unit) -> auto&
{
    return unit.config.startupTrigger;
};
constexpr auto suspendMaxTimeOf = [](auto& unit) -> auto&
{
    return unit.config.suspendMaxTime;
};
constexpr auto heatingLimitOf = [](auto& unit) -> auto&
{
    return unit.config.heatingLimit;
};
constexpr auto videoOf = [](auto& unit) -> auto&
{
    return unit.config.startupPower.video;
};
constexpr auto canOf = [](auto& unit) -> auto&
{
    return unit.config.startupPower.can;
};
constexpr auto externalFanOf = [](auto& unit) -> auto&
{
    return unit.config.startupPower.externalFan;
};

// CAN and the configurable inputs wake the unit only beside the button or the signal.
constexpr auto hasButtonOrSignal = [](std::int32_t triggers)
{ return within(0, 15)(triggers) && (triggers & 3) != 0; };

constexpr auto isBootMode = [](std::int32_t mode) { return mode == 0 || mode == 3 || mode == 4; };

} // namespace

ConfigHandle GetConfig()
{
    return obtain<ConfigHandle>(__func__);
}

ApiError Config_release(ConfigHandle config)
{
    return releaseHandle(__func__, config);
}

ApiError Config_getShortButtonPressAction(ConfigHandle config, std::int32_t* action)
{
    return getField(__func__, config, shortPressActionOf, action);
}

ApiError Config_setShortButtonPressAction(ConfigHandle config, std::int32_t action)
{
    return setField(__func__, config, shortPressActionOf, action, within(0, 2));
}

ApiError Config_getLongButtonPressAction(ConfigHandle config, std::int32_t* action)
{
    return getField(__func__, config, longPressActionOf, action);
}

ApiError Config_setLongButtonPressAction(ConfigHandle config, std::int32_t action)
{
    return setField(__func__, config, longPressActionOf, action, within(0, 2));
}

ApiError Config_getFrontBtnTrigTime(ConfigHandle config, std::uint16_t* milliseconds)
{
    return getField(__func__, config, longPressTimeOf, milliseconds);
}

ApiError Config_setFrontBtnTrigTime(ConfigHandle config, std::uint16_t milliseconds)
{
    return setField(__func__, config, longPressTimeOf, milliseconds, anyValue);
}

ApiError Config_getOnOffSigAction(ConfigHandle config, std::int32_t* action)
{
    return getField(__func__, config, onOffSignalActionOf, action);
}

ApiError Config_setOnOffSigAction(ConfigHandle config, std::int32_t action)
{
    return setField(__func__, config, onOffSignalActionOf, action, within(0, 2));
}

ApiError Config_getExtOnOffSigTrigTime(ConfigHandle config, std::uint32_t* seconds)
{
    return getField(__func__, config, onOffSignalTimeOf, seconds);
}

ApiError Config_setExtOnOffSigTrigTime(ConfigHandle config, std::uint32_t seconds)
{
    return setField(__func__, config, onOffSignalTimeOf, seconds, anyValue);
}

ApiError Config_getPowerOnStartup(ConfigHandle config, std::int32_t* enabled)
{
    return getField(__func__, config, powerOnStartupOf, enabled);
}

ApiError Config_setPowerOnStartup(ConfigHandle config, std::int32_t enabled)
{
    return setField(__func__, config, powerOnStartupOf, enabled, onOrOff);
}

ApiError Config_getStartupTriggerConfig(ConfigHandle config, std::int32_t* triggers)
{
    return getField(__func__, config, startupTriggerOf, triggers);
}

ApiError Config_setStartupTriggerConfig(ConfigHandle config, std::int32_t triggers)
{
    return setField(__func__, config, startupTriggerOf, triggers, hasButtonOrSignal);
}

ApiError Config_getSuspendMaxTime(ConfigHandle config, std::uint16_t* minutes)
{
    return getField(__func__, config, suspendMaxTimeOf, minutes);
}

ApiError Config_setSuspendMaxTime(ConfigHandle config, std::uint16_t minutes)
{
    return setField(__func__, config, suspendMaxTimeOf, minutes, anyValue);
}

ApiError Config_getHeatingTempLimit(ConfigHandle config, std::int16_t* celsius)
{
    return getField(__func__, config, heatingLimitOf, celsius);
}

ApiError Config_setHeatingTempLimit(ConfigHandle config, std::int16_t celsius)
{
    return setField(__func__, config, heatingLimitOf, celsius, within(-25, 5));
}

ApiError Config_getVideoStartupPowerConfig(ConfigHandle config, std::uint8_t* mask)
{
    return getField(__func__, config, videoOf, mask);
}

ApiError Config_setVideoStartupPowerConfig(ConfigHandle config, std::uint8_t mask)
{
    return setField(__func__, config, videoOf, mask, within(0, 15));
}

ApiError Config_getCanStartupPowerConfig(ConfigHandle config, std::int32_t* enabled)
{
    return getField(__func__, config, canOf, enabled, canNeeded);
}

ApiError Config_setCanStartupPowerConfig(ConfigHandle config, std::int32_t enabled)
{
    return setField(__func__, config, canOf, enabled, onOrOff, canNeeded);
}

ApiError Config_getExtFanStartupPowerConfig(ConfigHandle config, std::int32_t* enabled)
{
    return getField(__func__, config, externalFanOf, enabled);
}

ApiError Config_setExtFanStartupPowerConfig(ConfigHandle config, std::int32_t enabled)
{
    return setField(__func__, config, externalFanOf, enabled, onOrOff);
}

ApiError Config_setNextBootMode(ConfigHandle config, std::int32_t mode)
{
    return setField(
        __func__, config, [](Unit & unit) -> auto& { return unit.boot.nextMode; }, mode, isBootMode);
}
