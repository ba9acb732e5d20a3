#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

TelematicsHandle GetTelematics()
{
    return acquire<TelematicsHandle>(__func__);
}

ApiError Telematics_release(TelematicsHandle telematics)
{
    return release({__func__, telematics});
}

ApiError Telematics_getWLANPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField({__func__, telematics}, at<&Unit::telematics, &Telematics::wlan, &Radio::power>, status,
                    requireWlan);
}

ApiError Telematics_setWLANPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField({__func__, telematics}, at<&Unit::telematics, &Telematics::wlan, &Radio::power>, status,
                    onOrOff, requireWlan);
}

ApiError Telematics_getWLANStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField({__func__, telematics}, at<&Unit::telematics, &Telematics::wlan, &Radio::startupPower>,
                    status, requireWlan);
}

ApiError Telematics_setWLANStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField({__func__, telematics}, at<&Unit::telematics, &Telematics::wlan, &Radio::startupPower>,
                    status, onOrOff, requireWlan);
}

ApiError Telematics_getGPRSPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField({__func__, telematics}, at<&Unit::telematics, &Telematics::gprs, &Radio::power>, status,
                    requireGprs);
}

ApiError Telematics_setGPRSPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField({__func__, telematics}, at<&Unit::telematics, &Telematics::gprs, &Radio::power>, status,
                    onOrOff, requireGprs);
}

ApiError Telematics_getGPRSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField({__func__, telematics}, at<&Unit::telematics, &Telematics::gprs, &Radio::startupPower>,
                    status, requireGprs);
}

ApiError Telematics_setGPRSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField({__func__, telematics}, at<&Unit::telematics, &Telematics::gprs, &Radio::startupPower>,
                    status, onOrOff, requireGprs);
}

ApiError Telematics_getGPSPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField({__func__, telematics}, at<&Unit::telematics, &Telematics::gps, &Radio::power>, status,
                    requireGps);
}

ApiError Telematics_setGPSPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField({__func__, telematics}, at<&Unit::telematics, &Telematics::gps, &Radio::power>, status,
                    onOrOff, requireGps);
}

ApiError Telematics_getGPSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField({__func__, telematics}, at<&Unit::telematics, &Telematics::gps, &Radio::startupPower>,
                    status, requireGps);
}

ApiError Telematics_setGPSStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField({__func__, telematics}, at<&Unit::telematics, &Telematics::gps, &Radio::startupPower>,
                    status, onOrOff, requireGps);
}

ApiError Telematics_getBTPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField({__func__, telematics}, at<&Unit::telematics, &Telematics::bluetooth, &Radio::power>,
                    status, requireBluetooth);
}

ApiError Telematics_setBTPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField({__func__, telematics}, at<&Unit::telematics, &Telematics::bluetooth, &Radio::power>,
                    status, onOrOff, requireBluetooth);
}

ApiError Telematics_getBTStartUpPowerStatus(TelematicsHandle telematics, std::int32_t* status)
{
    return getField({__func__, telematics},
                    at<&Unit::telematics, &Telematics::bluetooth, &Radio::startupPower>, status,
                    requireBluetooth);
}

ApiError Telematics_setBTStartUpPowerStatus(TelematicsHandle telematics, std::int32_t status)
{
    return setField({__func__, telematics},
                    at<&Unit::telematics, &Telematics::bluetooth, &Radio::startupPower>, status, onOrOff,
                    requireBluetooth);
}
