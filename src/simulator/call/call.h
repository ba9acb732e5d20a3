// Calls of the device API. Every operation of every module is implemented with these functions. They check
// the arguments and the handle, inject faults, boot the unit if a boot is due, run the work, and write the
// trace.
//
// Results are written only on success, and only after the unit has been saved. No exception leaves a call.

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
    const char* operation; // name of the operation, valid as long as the library is loaded
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

// Runs `action`. Returns success, or the code of the exception that it throws: callers may be written in C.
ApiError guarded(FunctionRef<void()> action);

// Returns whether the handle is a valid handle of the operation's module.
bool hasValidHandle(const Call& call);

// Runs the work on the unit unless a fault replaces it or the handle is invalid. Throws StoreError.
Outcome executeReading(const Call& call, const UnitFile& file, Reading work);

// Does the same and then saves the unit. Saving may fail, so the work must not write results.
Outcome executeChange(const Call& call, const UnitFile& file, Change work);

// Locates the unit's file and passes it to `execute`. Converts an exception to an error code.
Outcome withUnitFile(FunctionRef<Outcome(const UnitFile&)> execute);

// Runs `execute` if all arguments can be used, and traces the call. `arguments` are the arguments after the
// handle. Arguments that receive results are passed as Out, TextOut or BytesOut.
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

// Implements Get<Module>(). Returns a new handle, or null if a fault requires it or no memory is left.
void* acquireHandle(const char* operation);

template <typename Handle>
Handle acquire(const char* operation)
{
    return static_cast<Handle>(acquireHandle(operation));
}

// Implements <Module>_release().
ApiError release(const Call& call);

// Implements Get<...>StringA(). Returns the text that `lookup` finds, or null if a fault requires it. If the
// unit cannot be loaded, looks the text up in a unit with the defaults. If memory runs out, returns
// `fallback`.
using TextLookup = FunctionRef<const char*(const document::Unit&)>;
const char* textCall(const char* operation, std::uint32_t code, TextLookup lookup, const char* fallback);

} // namespace simulator
