#include "simulator/call/call.h"

LightsensorHandle GetLightsensor()
{
    return obtain<LightsensorHandle>(__func__);
}

ApiError Lightsensor_release(LightsensorHandle sensor)
{
    return releaseHandle(__func__, sensor);
}

ApiError Lightsensor_getIlluminance(LightsensorHandle sensor, std::uint16_t* illuminance)
{
    return getField(__func__, sensor, at<&Unit::lightsensor, &Lightsensor::illuminance>, illuminance);
}
