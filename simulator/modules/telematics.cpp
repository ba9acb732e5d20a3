#include "call.h"

#include "requirements.h"

namespace
{

constexpr auto wlanPowerOf = [](auto& unit) -> auto&
{
    return unit.telematics.wlan.power;
};
constexpr auto wlanStartupPowerOf = [](auto& unit) -> auto&
{
    return unit.telematics.wlan.startupPower;
};
constexpr auto gprsPowerOf = [](auto& unit) -> auto&
{
    return unit.telematics.gprs.power;
};
constexpr auto gprsStartupPowerOf = [](auto& unit) -> auto&
{
    return unit.telematics.gprs.startupPower;
};
constexpr auto gpsPowerOf = [](auto& unit) -> auto&
{
    return unit.telematics.gps.power;
};
constexpr auto gpsStartupPowerOf = [](auto& unit) -> auto&
{
    return unit.telematics.gps.startupPower;
};
constexpr auto bluetoothPowerOf = [](auto& unit) -> auto&
{
    return unit.telematics.bluetooth.power;
};
constexpr auto bluetoothStartupPowerOf = [](auto& unit) -> auto&
{
    return unit.telematics.bluetooth.startupPower;
};

} // namespace

TelematicsHandle GetTelematics()
{
    return obtain<TelematicsHandle>(__func__);
}

ApiError Telematics_release(TelematicsHandle telematics)
{
    return releaseHandle(__func__, telematics);
}

ApiError Telematics_getWLANPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, wlanPowerOf, status, wlanNeeded);
}

ApiError Telematics_setWLANPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, wlanPowerOf, status, onOrOff, wlanNeeded);
}

ApiError Telematics_getWLANStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, wlanStartupPowerOf, status, wlanNeeded);
}

ApiError Telematics_setWLANStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, wlanStartupPowerOf, status, onOrOff, wlanNeeded);
}

ApiError Telematics_getGPRSPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, gprsPowerOf, status, gprsNeeded);
}

ApiError Telematics_setGPRSPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, gprsPowerOf, status, onOrOff, gprsNeeded);
}

ApiError Telematics_getGPRSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, gprsStartupPowerOf, status, gprsNeeded);
}

ApiError Telematics_setGPRSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, gprsStartupPowerOf, status, onOrOff, gprsNeeded);
}

ApiError Telematics_getGPSPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, gpsPowerOf, status, gpsNeeded);
}

ApiError Telematics_setGPSPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, gpsPowerOf, status, onOrOff, gpsNeeded);
}

ApiError Telematics_getGPSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, gpsStartupPowerOf, status, gpsNeeded);
}

ApiError Telematics_setGPSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, gpsStartupPowerOf, status, onOrOff, gpsNeeded);
}

ApiError Telematics_getBTPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, bluetoothPowerOf, status, bluetoothNeeded);
}

ApiError Telematics_setBTPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, bluetoothPowerOf, status, onOrOff, bluetoothNeeded);
}

ApiError Telematics_getBTStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, bluetoothStartupPowerOf, status, bluetoothNeeded);
}

ApiError Telematics_setBTStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, bluetoothStartupPowerOf, status, onOrOff, bluetoothNeeded);
}
