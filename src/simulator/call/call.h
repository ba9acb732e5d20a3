// One call of the device API: the handle, the faults of the unit, the boot that may be due, the work itself,
// the trace. Every operation of every module is written in these terms.

#pragma once

#include "document/unit.h"
#include "simulator/call/trace.h"
#include "simulator/store/store.h"
#include "simulator/unit/codes.h"

#include <algorithm>
#include <functional>
#include <span>

// What a call comes to. `delivered` is false when nothing was written to its results.
struct Outcome
{
    ApiError code;
    bool delivered;
};

using Reading = std::function<ApiError(const Unit&)>;
using Change = std::function<ApiError(Unit&)>;

Outcome performReading(const char* operation, const void* handle, const Reading& work);
Outcome performChange(const char* operation, const void* handle, const Change& work);

// A new handle of the module that `operation`, "Get<Module>", names; null when the unit has it so. Handles
// are numbers that are never used twice, not places in memory, so a stale one is always found out.
void* obtainHandle(const char* operation);
ApiError releaseHandle(const char* operation, const void* handle);

// A text by code, null when the unit has it so.
const char* answerText(const char* operation, std::uint32_t code, const char* text);

inline bool isThere(const auto&)
{
    return true;
}

template <typename Value>
bool isThere(Out<Value> out)
{
    return out.place != nullptr;
}

inline bool isThere(TextOut out)
{
    return out.buffer != nullptr && out.length > 0;
}

inline bool isThere(BytesOut out)
{
    return out.buffer != nullptr;
}

inline bool isThere(const char* text)
{
    return text != nullptr;
}

template <typename... Arguments>
ApiError finish(const char* operation, Outcome outcome, Arguments... arguments)
{
    trace(operation, std::to_string(outcome.code), outcome.delivered, arguments...);
    return outcome.code;
}

// The module's part of a call that `perform` makes, if no argument is missing. `arguments` are those behind
// the handle, results as Out.
template <typename Perform, typename... Arguments>
ApiError performing(const char* operation, const Perform& perform, Arguments... arguments)
{
    const bool complete = (isThere(arguments) && ...);
    return finish(operation, complete ? perform() : Outcome{invalidArgument, false}, arguments...);
}

// One that only reads.
template <typename... Arguments>
ApiError reading(const char* operation, const void* handle, const Reading& work, Arguments... arguments)
{
    return performing(
        operation, [&] { return performReading(operation, handle, work); }, arguments...);
}

// One that changes the unit. `work` writes no results: the unit is yet to be saved.
template <typename... Arguments>
ApiError changing(const char* operation, const void* handle, const Change& work, Arguments... arguments)
{
    return performing(
        operation, [&] { return performChange(operation, handle, work); }, arguments...);
}

template <typename Handle>
Handle obtain(const char* operation)
{
    return static_cast<Handle>(obtainHandle(operation));
}

// Delivers a value that the unit has, or answers that it has none.
template <typename Value, typename Result>
ApiError deliver(const Value& value, Result* result)
{
    *result = value;
    return success;
}

template <typename Value, typename Result>
ApiError deliver(const Fitted<Value>& value, Result* result)
{
    return value ? deliver(*value, result) : notSupported;
}

// What a unit needs to have for an operation; success when it has it.
using Requirement = ApiError (*)(const Unit&);

inline ApiError nothingNeeded(const Unit&)
{
    return success;
}

// The work, or the answer that the unit lacks what it needs.
template <typename Work>
auto needing(Requirement requirement, Work work)
{
    return [=](auto& unit) -> ApiError
    {
        if (const ApiError lack = requirement(unit); lack != success)
            return lack;
        return work(unit);
    };
}

// The field of a unit at the end of a path of members: at<&Unit::buzzer, &Buzzer::volume>.
template <auto member, auto... further>
constexpr auto at = [](auto& record) -> auto&
{
    if constexpr (sizeof...(further) == 0)
        return record.*member;
    else
        return at<further...>(record.*member);
};

// An operation that reads one field. `field` gives the field of a unit.
template <typename Field, typename Result>
ApiError getField(const char* operation, const void* handle, Field field, Result* result,
                  Requirement requirement = nothingNeeded)
{
    const Reading work = needing(requirement, [&](const Unit& unit) { return deliver(field(unit), result); });
    return reading(operation, handle, work, out(result));
}

// An operation that sets one field to a value that `isValid`.
template <typename Field, typename Value, typename Valid>
ApiError setField(const char* operation, const void* handle, Field field, Value value, Valid isValid,
                  Requirement requirement = nothingNeeded)
{
    const Change work = needing(requirement,
                                [&](Unit& unit)
                                {
                                    if (!isValid(value))
                                        return outOfRange;
                                    field(unit) = value;
                                    return success;
                                });
    return changing(operation, handle, work, value);
}

constexpr auto within(auto minimum, auto maximum)
{
    return [=](auto value) { return minimum <= value && value <= maximum; };
}

constexpr auto oneOf(std::span<const Name> names)
{
    return [=](std::int32_t value)
    { return std::ranges::any_of(names, [=](const Name& name) { return name.value == value; }); };
}

constexpr auto anyValue = [](auto) { return true; };
constexpr auto onOrOff = within(0, 1);
constexpr auto videoMask = within(0, 15); // four channels, a bit each
