#include "simulator/call/call.h"

DigIOHandle GetDigIO()
{
    return obtain<DigIOHandle>(__func__);
}

ApiError DigIO_release(DigIOHandle digIO)
{
    return releaseHandle(__func__, digIO);
}

ApiError DigIO_getDigIO(DigIOHandle digIO, std::uint8_t* inputs)
{
    return getField(__func__, digIO, at<&Unit::digitalInputs, &DigitalInputs::inputs>, inputs);
}
