#include "simulator/call/call.h"

#include "simulator/call/handles.h"
#include "simulator/call/operations.h"
#include "simulator/call/problems.h"
#include "simulator/unit/boot.h"
#include "simulator/unit/faults.h"

#include <exception>
#include <optional>

namespace simulator
{

using document::Fault;
using document::Unit;

namespace
{

// What a call touches. Only a call that touches the unit boots a unit that was shut down.
enum class Scope
{
    unit,
    library,
};

ProblemReport problems;

Outcome failed(ApiError code)
{
    return {code, false};
}

// Runs the work unless a fault replaces it or the handle is invalid.
template <typename Work>
Outcome execute(const Call& call, const std::optional<Fault>& fault, const Work& work)
{
    if (fault)
        return {resultOf(*fault), false};
    if (!hasValidHandle(call))
        return failed(invalidHandle);
    const ApiError code = work();
    return {code, code == success};
}

// Boots the unit if a boot is due and counts the call, in one change. Returns the fault to inject, if any.
// The file is locked and written only if something changes.
std::optional<Fault> bootAndCount(const Call& call, const UnitFile& file, Scope scope)
{
    const Unit& unit = file.current();
    const bool boots = scope == Scope::unit && isBootDue(unit);
    if (!boots && !isCounted(unit, call.operation))
        return uncountedFault(unit, call.operation);
    std::optional<Fault> fault;
    file.change(
        [&](Unit& changed)
        {
            if (scope == Scope::unit)
                bootIfDue(changed);
            fault = countCall(changed, call.operation);
        });
    return fault;
}

// Returns the fault to inject into a call that does not touch the unit's state, if any. If the unit cannot be
// loaded, there is none: the first call that needs the unit fails instead.
std::optional<Fault> faultOfLibraryCall(const Call& call)
{
    std::optional<Fault> fault;
    guarded([&] { fault = bootAndCount(call, UnitFile(), Scope::library); });
    return fault;
}

} // namespace

ApiError guarded(FunctionRef<void()> action)
{
    try
    {
        action();
        return success;
    }
    catch (const StoreError& error)
    {
        problems.report(error.what());
        return error.code;
    }
    catch (const std::exception&)
    {
        return failure;
    }
}

bool hasValidHandle(const Call& call)
{
    return isHandleOf(moduleOf(call.operation), call.handle);
}

Outcome executeReading(const Call& call, const UnitFile& file, Reading work)
{
    // The call is counted first, so that no result is written if the unit cannot be saved.
    const std::optional<Fault> fault = bootAndCount(call, file, Scope::unit);
    return execute(call, fault, [&] { return work(file.current()); });
}

Outcome executeChange(const Call& call, const UnitFile& file, Change work)
{
    Outcome outcome{};
    file.change(
        [&](Unit& unit)
        {
            bootIfDue(unit);
            outcome = execute(call, countCall(unit, call.operation), [&] { return work(unit); });
        });
    return outcome;
}

Outcome withUnitFile(FunctionRef<Outcome(const UnitFile&)> execute)
{
    Outcome outcome{};
    const ApiError error = guarded([&] { outcome = execute(UnitFile()); });
    return error == success ? outcome : failed(error);
}

void* acquireHandle(const char* operation)
{
    const std::optional<Fault> fault = faultOfLibraryCall({operation});
    void* handle = nullptr;
    if (!fault || !fault->null)
        guarded([&] { handle = newHandle(moduleOf(operation)); });
    guarded([&] { trace(operation, handle ? "handle" : "null", false); });
    return handle;
}

ApiError release(const Call& call)
{
    const auto end = [&]
    {
        endHandle(call.handle);
        return success;
    };
    const ApiError code = execute(call, faultOfLibraryCall(call), end).code;
    guarded([&] { trace(call.operation, std::to_string(code), false); });
    return code;
}

const char* textCall(const char* operation, std::uint32_t code, TextLookup lookup, const char* fallback)
{
    const char* text = nullptr;
    const auto lookInUnit = [&]
    {
        const UnitFile file;
        text = lookup(file.current());
        const std::optional<Fault> fault = bootAndCount({operation}, file, Scope::library);
        if (fault && fault->null)
            text = nullptr;
    };
    const auto lookInDefaults = [&] { text = lookup(Unit()); };
    if (guarded(lookInUnit) != success && !text && guarded(lookInDefaults) != success)
        text = fallback;
    guarded([&] { trace(operation, traced(text), false, code); });
    return text;
}

} // namespace simulator
