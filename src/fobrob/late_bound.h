// Device operations in tables.
//
// The address of an operation would be looked up when the program starts, and a library that lacks it would
// stop the program even when nobody asks for it. lateBound<operation> stands for the operation and looks it
// up at the first call.

#pragma once

#include "device/qv_aux2.h"

template <auto operation>
constexpr auto lateBound = [](auto... arguments) { return operation(arguments...); };
