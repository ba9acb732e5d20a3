#include "simulator/call/call.h"

#include "simulator/call/requirements.h"

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
    return getField(__func__, telematics, at<&Unit::telematics, &Telematics::wlan, &Radio::power>, status,
                    wlanNeeded);
}

ApiError Telematics_setWLANPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, at<&Unit::telematics, &Telematics::wlan, &Radio::power>, status,
                    onOrOff, wlanNeeded);
}

ApiError Telematics_getWLANStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, at<&Unit::telematics, &Telematics::wlan, &Radio::startupPower>,
                    status, wlanNeeded);
}

ApiError Telematics_setWLANStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, at<&Unit::telematics, &Telematics::wlan, &Radio::startupPower>,
                    status, onOrOff, wlanNeeded);
}

ApiError Telematics_getGPRSPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, at<&Unit::telematics, &Telematics::gprs, &Radio::power>, status,
                    gprsNeeded);
}

ApiError Telematics_setGPRSPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, at<&Unit::telematics, &Telematics::gprs, &Radio::power>, status,
                    onOrOff, gprsNeeded);
}

ApiError Telematics_getGPRSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, at<&Unit::telematics, &Telematics::gprs, &Radio::startupPower>,
                    status, gprsNeeded);
}

ApiError Telematics_setGPRSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, at<&Unit::telematics, &Telematics::gprs, &Radio::startupPower>,
                    status, onOrOff, gprsNeeded);
}

ApiError Telematics_getGPSPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, at<&Unit::telematics, &Telematics::gps, &Radio::power>, status,
                    gpsNeeded);
}

ApiError Telematics_setGPSPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, at<&Unit::telematics, &Telematics::gps, &Radio::power>, status,
                    onOrOff, gpsNeeded);
}

ApiError Telematics_getGPSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, at<&Unit::telematics, &Telematics::gps, &Radio::startupPower>,
                    status, gpsNeeded);
}

ApiError Telematics_setGPSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, at<&Unit::telematics, &Telematics::gps, &Radio::startupPower>,
                    status, onOrOff, gpsNeeded);
}

ApiError Telematics_getBTPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, at<&Unit::telematics, &Telematics::bluetooth, &Radio::power>,
                    status, bluetoothNeeded);
}

ApiError Telematics_setBTPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, at<&Unit::telematics, &Telematics::bluetooth, &Radio::power>,
                    status, onOrOff, bluetoothNeeded);
}

ApiError Telematics_getBTStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField(__func__, telematics, at<&Unit::telematics, &Telematics::bluetooth, &Radio::startupPower>,
                    status, bluetoothNeeded);
}

ApiError Telematics_setBTStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField(__func__, telematics, at<&Unit::telematics, &Telematics::bluetooth, &Radio::startupPower>,
                    status, onOrOff, bluetoothNeeded);
}
