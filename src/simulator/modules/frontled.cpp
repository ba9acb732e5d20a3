#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

FrontLEDHandle GetFrontLED()
{
    return acquire<FrontLEDHandle>(__func__);
}

ApiError FrontLED_release(FrontLEDHandle led)
{
    return release({__func__, led});
}

ApiError FrontLED_getSignal(FrontLEDHandle led, double* frequency, std::uint8_t* dutyCycle)
{
    const auto work = [&](const Unit& unit) -> ApiError
    {
        *frequency = unit.frontLed.frequency;
        *dutyCycle = unit.frontLed.dutyCycle;
        return success;
    };
    return readUnit({__func__, led}, work, out(frequency), out(dutyCycle));
}

ApiError FrontLED_setSignal(FrontLEDHandle led, double frequency, std::uint8_t dutyCycle)
{
    const auto work = [&](Unit& unit) -> ApiError
    {
        if (!within(LED_FREQUENCY_MIN_HZ, LED_FREQUENCY_MAX_HZ)(frequency) ||
            dutyCycle > LED_DUTY_CYCLE_MAX_PERCENT)
            return outOfRange;
        unit.frontLed.frequency = frequency;
        unit.frontLed.dutyCycle = dutyCycle;
        return success;
    };
    return changeUnit({__func__, led}, work, frequency, dutyCycle);
}

ApiError FrontLED_getStandardColor(FrontLEDHandle led, std::int32_t* color)
{
    return getField({__func__, led}, at<&Unit::frontLed, &FrontLed::color>, color);
}

ApiError FrontLED_setStandardColor(FrontLEDHandle led, std::int32_t color)
{
    return setField({__func__, led}, at<&Unit::frontLed, &FrontLed::color>, color, oneOf(colorNames));
}

ApiError FrontLED_getNrOfPulses(FrontLEDHandle led, std::uint8_t* pulses)
{
    return getField({__func__, led}, at<&Unit::frontLed, &FrontLed::pulses>, pulses);
}

ApiError FrontLED_setNrOfPulses(FrontLEDHandle led, std::uint8_t pulses)
{
    return setField({__func__, led}, at<&Unit::frontLed, &FrontLed::pulses>, pulses, anyValue);
}

ApiError FrontLED_getIdleTime(FrontLEDHandle led, std::uint8_t* idleTime)
{
    return getField({__func__, led}, at<&Unit::frontLed, &FrontLed::idleTime>, idleTime);
}

ApiError FrontLED_setIdleTime(FrontLEDHandle led, std::uint8_t idleTime)
{
    return setField({__func__, led}, at<&Unit::frontLed, &FrontLed::idleTime>, idleTime, anyValue);
}

ApiError FrontLED_getEnabledDuringStartup(FrontLEDHandle led, std::int32_t* enabled)
{
    return getField({__func__, led}, at<&Unit::frontLed, &FrontLed::startup>, enabled);
}

ApiError FrontLED_setEnabledDuringStartup(FrontLEDHandle led, std::int32_t enabled)
{
    return setField({__func__, led}, at<&Unit::frontLed, &FrontLed::startup>, enabled, onOrOff);
}
