#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

AdcHandle GetAdc()
{
    return acquire<AdcHandle>(__func__);
}

ApiError Adc_release(AdcHandle adc)
{
    return release({__func__, adc});
}

ApiError Adc_getVoltage(AdcHandle adc, std::int32_t channel, double* volts)
{
    const auto work = [&](const Unit& unit) -> ApiError
    {
        const auto& channels = unit.adc.volts;
        if (channel < 0 || static_cast<std::size_t>(channel) >= channels.size())
            return outOfRange;
        return deliver(channels[static_cast<std::size_t>(channel)], volts);
    };
    return readUnit({__func__, adc}, work, channel, out(volts));
}
