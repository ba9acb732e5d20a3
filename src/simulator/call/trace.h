// The call trace. If QVAUX_TRACE names a file, each call appends one line to it. The line is one write,
// unless the file accepts only a part of it at a time.
//
// Arguments appear as they were passed, results in brackets. The brackets are empty if no result was written:
//
//     GetBuzzer() = handle
//     Buzzer_setFrequency(800) = 0
//     Buzzer_getFrequency([800]) = 0
//     Buzzer_release() = 0
//
// If QVAUX_TRACE names a file of the unit, this is reported on standard error and no trace is written. Any
// other failure to write the trace is silently ignored: tracing does not change what the caller sees.

#pragma once

#include "device/qv_aux2.h"
#include "simulator/call/arguments.h"

#include <concepts>
#include <exception>
#include <string>

namespace simulator
{

bool isTracing();
void appendToTrace(const std::string& line);

std::string traced(double value);
std::string traced(const char* text);
std::string traced(const DiagnosticTimer& timer);
std::string traced(const UpgradeStatus& status);

std::string traced(std::integral auto value)
{
    return std::to_string(value);
}

// `delivered`: whether the call wrote its results.
template <typename Value>
std::string tracedArgument(Value value, bool)
{
    return traced(value);
}

template <typename Value>
std::string tracedArgument(Out<Value> out, bool delivered)
{
    return delivered ? "[" + traced(*out.value) + "]" : "[]";
}

std::string tracedArgument(TextOut out, bool delivered);
std::string tracedArgument(BytesOut out, bool delivered); // without the bytes

template <typename... Arguments>
void trace(const char* operation, const std::string& result, [[maybe_unused]] bool delivered,
           Arguments... arguments)
{
    if (!isTracing())
        return;
    try
    {
        std::string list;
        ((list += (list.empty() ? "" : ", ") + tracedArgument(arguments, delivered)), ...);
        appendToTrace(std::string(operation) + "(" + list + ") = " + result + "\n");
    }
    catch (const std::exception&)
    {
        // Out of memory: the line is lost.
    }
}

} // namespace simulator
