#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

BuzzerHandle GetBuzzer()
{
    return acquire<BuzzerHandle>(__func__);
}

ApiError Buzzer_release(BuzzerHandle buzzer)
{
    return release({__func__, buzzer});
}

ApiError Buzzer_getFrequency(BuzzerHandle buzzer, std::uint16_t* frequency)
{
    return getField({__func__, buzzer}, at<&Unit::buzzer, &Buzzer::frequency>, frequency);
}

ApiError Buzzer_setFrequency(BuzzerHandle buzzer, std::uint16_t frequency)
{
    return setField({__func__, buzzer}, at<&Unit::buzzer, &Buzzer::frequency>, frequency,
                    within(BUZZER_FREQUENCY_MIN_HZ, BUZZER_FREQUENCY_MAX_HZ));
}

ApiError Buzzer_getVolume(BuzzerHandle buzzer, std::uint16_t* volume)
{
    return getField({__func__, buzzer}, at<&Unit::buzzer, &Buzzer::volume>, volume);
}

ApiError Buzzer_setVolume(BuzzerHandle buzzer, std::uint16_t volume)
{
    return setField({__func__, buzzer}, at<&Unit::buzzer, &Buzzer::volume>, volume,
                    within(0, BUZZER_VOLUME_MAX));
}

ApiError Buzzer_getTrigger(BuzzerHandle buzzer, std::uint8_t* enabled)
{
    return getField({__func__, buzzer}, at<&Unit::buzzer, &Buzzer::enabled>, enabled);
}

ApiError Buzzer_setTrigger(BuzzerHandle buzzer, std::uint8_t enabled)
{
    return setField({__func__, buzzer}, at<&Unit::buzzer, &Buzzer::enabled>, enabled, onOrOff);
}
