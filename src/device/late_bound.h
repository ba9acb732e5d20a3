// Device operations in tables.
//
// The address of an operation would be looked up when the program starts, and a library that lacks it would
// stop the program even when nobody asks for it. lateBound<operation> stands for the operation and looks it
// up at the first call.

#pragma once

#include "device/qv_aux2.h"

template <auto operation>
struct LateBound;

template <typename... Arguments, ApiError (*operation)(Arguments...)>
struct LateBound<operation>
{
    static ApiError call(Arguments... arguments)
    {
        return operation(arguments...);
    }
};

template <auto operation>
constexpr auto lateBound = &LateBound<operation>::call;
