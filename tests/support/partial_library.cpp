// A device library with only the operations of the light sensor.

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
    return "unexpected error";
}
