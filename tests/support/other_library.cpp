// A device library that provides only the light sensor.

#include "device/qv_aux2.h"

#include <cstdint>

LightsensorHandle GetLightsensor()
{
    return nullptr;
}

ApiError Lightsensor_getIlluminance(LightsensorHandle, std::uint16_t* illuminance)
{
    *illuminance = 4711;
    return QV_SUCCESS;
}

ApiError Lightsensor_release(LightsensorHandle)
{
    return QV_SUCCESS;
}

const char* GetErrorStringA(ApiError)
{
    return "no error of this library";
}
