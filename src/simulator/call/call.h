// Calls of the device API. Every operation of every module is made of these functions. They check the
// arguments and the handle, inject faults, boot the unit if that is due, run the work, and write the trace.
//
// Results are written on success only, and after the unit was saved. No exception leaves a call.

#pragma once

#include "document/unit.h"
#include "simulator/call/arguments.h"
#include "simulator/call/function_ref.h"
#include "simulator/call/trace.h"
#include "simulator/store/unit_file.h"
#include "simulator/unit/codes.h"

#include <string>

namespace simulator
{

struct Call
{
    const char* operation; // its name, valid for as long as the library is loaded
    const void* handle = nullptr;
};

struct Outcome
{
    ApiError code;
    bool delivered; // whether results were written
};

// The work of an operation. Returns its error code.
using Reading = FunctionRef<ApiError(const document::Unit&)>;
using Change = FunctionRef<ApiError(document::Unit&)>;

// Returns the code of the exception that `action` throws, if any: the caller may be written in C.
ApiError guarded(FunctionRef<void()> action);

// Whether the handle is one of the operation's module.
bool hasValidHandle(const Call& call);

// Runs the work on the unit unless a fault replaces it or the handle is not valid. Throws StoreError.
Outcome executeReading(const Call& call, const UnitFile& file, Reading work);

// The unit is saved after the work, so the work must not write results.
Outcome executeChange(const Call& call, const UnitFile& file, Change work);

// Locates the unit's file and passes it to `execute`. An exception becomes an error code.
Outcome withUnitFile(FunctionRef<Outcome(const UnitFile&)> execute);

// Runs `execute` if all arguments can be used, and traces the call. `arguments` are those after the handle;
// those that receive results are Out, TextOut or BytesOut.
template <typename... Arguments>
ApiError tracedCall(const Call& call, FunctionRef<Outcome()> execute, Arguments... arguments)
{
    const bool usable = (isUsable(arguments) && ...);
    const Outcome outcome = usable ? execute() : Outcome{invalidArgument, false};
    guarded([&] { trace(call.operation, std::to_string(outcome.code), outcome.delivered, arguments...); });
    return outcome.code;
}

template <typename... Arguments>
ApiError readUnit(const Call& call, Reading work, Arguments... arguments)
{
    const auto execute = [&](const UnitFile& file) { return executeReading(call, file, work); };
    const auto locateAndExecute = [&] { return withUnitFile(execute); };
    return tracedCall(call, locateAndExecute, arguments...);
}

template <typename... Arguments>
ApiError changeUnit(const Call& call, Change work, Arguments... arguments)
{
    const auto execute = [&](const UnitFile& file) { return executeChange(call, file, work); };
    const auto locateAndExecute = [&] { return withUnitFile(execute); };
    return tracedCall(call, locateAndExecute, arguments...);
}

// Get<Module>(): returns a new handle, or null if the unit has that fault.
void* acquireHandle(const char* operation);

template <typename Handle>
Handle acquire(const char* operation)
{
    return static_cast<Handle>(acquireHandle(operation));
}

// <Module>_release().
ApiError release(const Call& call);

// Get<...>StringA(): returns the text that `lookup` finds, or null if the unit has that fault. If the unit
// cannot be loaded, a unit with the defaults is searched. Without memory for that, returns `fallback`.
using TextLookup = FunctionRef<const char*(const document::Unit&)>;
const char* textCall(const char* operation, std::uint32_t code, TextLookup lookup, const char* fallback);

} // namespace simulator
