#include "simulator/call/call.h"

#include "simulator/unit/boot.h"
#include "simulator/unit/faults.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

namespace
{

// The modules of the handles given out, by number. Empty once released.
std::vector<std::string> handles;

// Far apart, like addresses.
constexpr std::uintptr_t handleStep = 16;

std::string moduleOf(const char* operation)
{
    const std::string_view name = operation;
    return std::string(name.substr(0, name.find('_')));
}

std::string* moduleOfHandle(const void* handle)
{
    const auto number = reinterpret_cast<std::uintptr_t>(handle);
    if (number % handleStep != 0 || number / handleStep - 1 >= handles.size())
        return nullptr;
    return &handles[number / handleStep - 1];
}

bool isHandleFor(const char* operation, const void* handle)
{
    const std::string* module = moduleOfHandle(handle);
    return module && *module == moduleOf(operation);
}

// Says once what is wrong with the unit's file: every further call would say the same.
void complain(const StoreError& error)
{
    static std::string said;
    if (said == error.what())
        return;
    said = error.what();
    std::fprintf(stderr, "libqv-aux2: %s\n", error.what());
}

Outcome failed(ApiError code)
{
    return {code, false};
}

// The unit's answer to a call that reached it.
template <typename AnyUnit, typename Work>
Outcome answer(const char* operation, const void* handle, const std::optional<Fault>& fault, AnyUnit& unit,
               const Work& work)
{
    if (fault)
        return failed(fault->code);
    if (!isHandleFor(operation, handle))
        return failed(invalidHandle);
    const ApiError code = work(unit);
    return {code, code == success};
}

// Counts the call in the unit, and makes the start-up that may be due first where the call reaches the unit
// itself. Gives the fault that it shows.
std::optional<Fault> enter(const char* operation, bool reachesUnit)
{
    const Unit& unit = currentUnit();
    if (!faultCounts(unit, operation) && !(reachesUnit && isStartUpDue(unit)))
        return standingFault(unit, operation);
    std::optional<Fault> fault;
    changeUnit(
        [&](Unit& changed)
        {
            if (reachesUnit)
                startUpIfDue(changed);
            fault = countFault(changed, operation);
            return success;
        });
    return fault;
}

// Nothing is thrown at the caller, who may be written in C: a call that cannot be made comes to
// `otherwise(code)`.
template <typename Call, typename Otherwise>
auto guarded(const Call& call, const Otherwise& otherwise)
{
    try
    {
        return call();
    }
    catch (const StoreError& error)
    {
        complain(error);
        return otherwise(error.code);
    }
    catch (const std::exception&)
    {
        return otherwise(failure);
    }
}

// The fault of a call that does not reach the unit. Where there is no unit, the first call that does will
// fail by it.
std::optional<Fault> faultOf(const char* operation)
{
    return guarded([&] { return enter(operation, false); }, [](ApiError) { return std::optional<Fault>(); });
}

} // namespace

Outcome performReading(const char* operation, const void* handle, const Reading& work)
{
    return guarded(
        [&]
        {
            // Before the results are written, so that none is when the unit cannot be changed.
            const std::optional<Fault> fault = enter(operation, true);
            return answer(operation, handle, fault, currentUnit(), work);
        },
        failed);
}

Outcome performChange(const char* operation, const void* handle, const Change& work)
{
    return guarded(
        [&]
        {
            Outcome outcome{};
            changeUnit(
                [&](Unit& unit)
                {
                    startUpIfDue(unit);
                    outcome = answer(operation, handle, countFault(unit, operation), unit, work);
                    return outcome.code;
                });
            return outcome;
        },
        failed);
}

void* obtainHandle(const char* operation)
{
    const std::optional<Fault> fault = faultOf(operation);
    void* handle = nullptr;
    if (!fault || !fault->null)
    {
        handles.emplace_back(std::string_view(operation).substr(std::strlen("Get")));
        // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is a number, no place in memory
        handle = reinterpret_cast<void*>(handles.size() * handleStep);
    }
    trace(operation, handle ? "handle" : "null", false);
    return handle;
}

ApiError releaseHandle(const char* operation, const void* handle)
{
    const std::optional<Fault> fault = faultOf(operation);
    ApiError code = success;
    if (fault)
        code = fault->code;
    else if (!isHandleFor(operation, handle))
        code = invalidHandle;
    else
        moduleOfHandle(handle)->clear();
    return finish(operation, {code, false});
}

const char* answerText(const char* operation, std::uint32_t code, const char* text)
{
    const std::optional<Fault> fault = faultOf(operation);
    if (fault && fault->null)
        text = nullptr;
    trace(operation, traced(text), false, code);
    return text;
}
