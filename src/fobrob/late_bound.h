// Device operations in tables.
//
// A table that contains the address of an operation makes the loader resolve it when the program starts. A
// device library that lacks the operation would then keep the program from starting, even for a category that
// does not use it. lateBound<operation> has the same parameters and resolves the operation at its first call.

#pragma once

#include "device/qv_aux2.h"

template <auto operation>
constexpr auto lateBound = [](auto... arguments) { return operation(arguments...); };
