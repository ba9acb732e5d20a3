#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

DigIOHandle GetDigIO()
{
    return acquire<DigIOHandle>(__func__);
}

ApiError DigIO_release(DigIOHandle digIO)
{
    return release({__func__, digIO});
}

ApiError DigIO_getDigIO(DigIOHandle digIO, std::uint8_t* inputs)
{
    return getField({__func__, digIO}, at<&Unit::digitalInputs, &DigitalInputs::inputs>, inputs);
}
