// The call trace: with QVAUX_TRACE=FILE every call is appended to FILE as one line, in one write.
//
// Arguments stand as they were passed; what a call delivered stands in brackets in its place:
//
//     GetBuzzer() = handle
//     Buzzer_setFrequency(800) = 0
//     Buzzer_getFrequency([800]) = 0
//     Buzzer_release() = 0

#pragma once

#include "device/qv_aux2.h"

#include <concepts>
#include <string>

bool tracing();
void appendToTrace(const std::string& line);

// Where a call delivers one value.
template <typename Value>
struct Out
{
    Value* place;
};

template <typename Value>
Out<Value> out(Value* place)
{
    return {place};
}

// Where a call delivers a text, perhaps without a terminator.
struct TextOut
{
    char* buffer;
    std::uint32_t length;
};

// Where a call delivers raw bytes; the trace only counts them.
struct BytesOut
{
    std::uint8_t* buffer;
    std::uint32_t length;
};

std::string traced(double value);
std::string traced(const char* text);
std::string traced(const DiagnosticTimer& timer);
std::string traced(const UpgradeStatus& status);

std::string traced(std::integral auto value)
{
    return std::to_string(value);
}

// `delivered` says whether the call wrote its results.
template <typename Value>
std::string tracedArgument(Value value, bool)
{
    return traced(value);
}

template <typename Value>
std::string tracedArgument(Out<Value> out, bool delivered)
{
    return delivered ? "[" + traced(*out.place) + "]" : "[]";
}

std::string tracedArgument(TextOut out, bool delivered);
std::string tracedArgument(BytesOut out, bool delivered);

template <typename... Arguments>
void trace(const char* operation, const std::string& result, [[maybe_unused]] bool delivered,
           Arguments... arguments)
{
    if (!tracing())
        return;
    std::string list;
    ((list += (list.empty() ? "" : ", ") + tracedArgument(arguments, delivered)), ...);
    appendToTrace(std::string(operation) + "(" + list + ") = " + result + "\n");
}
