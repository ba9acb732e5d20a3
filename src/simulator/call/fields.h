// Operations that read or set one field of the unit.

#pragma once

#include "simulator/call/call.h"
#include "simulator/call/requirements.h"

#include <algorithm>
#include <span>

namespace simulator
{

// The field at the end of a path of members: at<&Unit::buzzer, &Buzzer::volume>.
template <auto member, auto... rest>
constexpr auto at = [](auto& record) -> auto&
{
    if constexpr (sizeof...(rest) == 0)
        return record.*member;
    else
        return at<rest...>(record.*member);
};

// Writes the value to `result`. Returns notSupported if the unit lacks the value.
template <typename Value, typename Result>
ApiError deliver(const Value& value, Result* result)
{
    *result = value;
    return success;
}

template <typename Value, typename Result>
ApiError deliver(const std::optional<Value>& value, Result* result)
{
    return value ? deliver(*value, result) : notSupported;
}

// Implements an operation that reads a field.
template <typename Field, typename Result>
ApiError getField(const Call& call, Field field, Result* result, Requirement requirement = requireNothing)
{
    const auto work = requiring(requirement, [&](const auto& unit) { return deliver(field(unit), result); });
    return readUnit(call, work, out(result));
}

// Implements an operation that sets a field. Returns outOfRange if `isValid(value)` is false.
template <typename Field, typename Value, typename Valid>
ApiError setField(const Call& call, Field field, Value value, Valid isValid,
                  Requirement requirement = requireNothing)
{
    const auto set = [&](auto& unit)
    {
        if (!isValid(value))
            return outOfRange;
        field(unit) = value;
        return success;
    };
    return changeUnit(call, requiring(requirement, set), value);
}

constexpr auto within(auto minimum, auto maximum)
{
    return [=](auto value) { return minimum <= value && value <= maximum; };
}

constexpr auto oneOf(std::span<const document::Name> names)
{
    return [=](std::int32_t value)
    { return std::ranges::any_of(names, [=](const document::Name& name) { return name.value == value; }); };
}

constexpr auto anyValue = [](auto) { return true; };
constexpr auto onOrOff = within(QV_DISABLED, QV_ENABLED);
constexpr auto videoMask = within(0, document::allVideoChannels);

} // namespace simulator
