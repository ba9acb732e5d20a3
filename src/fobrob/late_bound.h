// Lazily bound device operations, for use in tables.
//
// A table that contains the address of an operation makes the dynamic linker resolve the operation when the
// program starts. If the device library lacks the operation, the program does not start, even for a category
// that does not use it. lateBound<operation> has the same parameters as the operation, which is resolved when
// it is first called.

#pragma once

#include "device/qv_aux2.h"

template <auto operation>
constexpr auto lateBound = [](auto... arguments) { return operation(arguments...); };
