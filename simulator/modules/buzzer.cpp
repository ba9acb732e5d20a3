#include "call.h"

namespace
{

constexpr auto frequencyOf = [](auto& unit) -> auto&
{
    return unit.buzzer.frequency;
};
constexpr auto volumeOf = [](auto& unit) -> auto&
{
    return unit.buzzer.volume;
};
constexpr auto enabledOf = [](auto& unit) -> auto&
{
    return unit.buzzer.enabled;
};

} // namespace

BuzzerHandle GetBuzzer()
{
    return obtain<BuzzerHandle>(__func__);
}

ApiError Buzzer_release(BuzzerHandle buzzer)
{
    return releaseHandle(__func__, buzzer);
}

ApiError Buzzer_getFrequency(BuzzerHandle buzzer, std::uint16_t* frequency)
{
    return getField(__func__, buzzer, frequencyOf, frequency);
}

ApiError Buzzer_setFrequency(BuzzerHandle buzzer, std::uint16_t frequency)
{
    return setField(__func__, buzzer, frequencyOf, frequency, within(700, 10000));
}

ApiError Buzzer_getVolume(BuzzerHandle buzzer, std::uint16_t* volume)
{
    return getField(__func__, buzzer, volumeOf, volume);
}

ApiError Buzzer_setVolume(BuzzerHandle buzzer, std::uint16_t volume)
{
    return setField(__func__, buzzer, volumeOf, volume, within(0, 2000));
}

ApiError Buzzer_getTrigger(BuzzerHandle buzzer, std::uint8_t* enabled)
{
    return getField(__func__, buzzer, enabledOf, enabled);
}

ApiError Buzzer_setTrigger(BuzzerHandle buzzer, std::uint8_t enabled)
{
    return setField(__func__, buzzer, enabledOf, enabled, onOrOff);
}
