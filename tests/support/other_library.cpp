// A device library that has a light sensor and nothing else.

#include "device/qv_aux2.h"

#include <cstdint>

LightsensorHandle GetLightsensor()
{
    return nullptr;
}

ApiError Lightsensor_getIlluminance(LightsensorHandle, std::uint16_t* illuminance)
{
    *illuminance = 4711;
    return 0;
}

ApiError Lightsensor_release(LightsensorHandle)
{
    return 0;
}

const char* GetErrorStringA(ApiError)
{
    return "no error of this library";
}
