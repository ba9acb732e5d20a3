#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

LightsensorHandle GetLightsensor()
{
    return acquire<LightsensorHandle>(__func__);
}

ApiError Lightsensor_release(LightsensorHandle sensor)
{
    return release({__func__, sensor});
}

ApiError Lightsensor_getIlluminance(LightsensorHandle sensor, std::uint16_t* illuminance)
{
    return getField({__func__, sensor}, at<&Unit::lightsensor, &Lightsensor::illuminance>, illuminance);
}
