// The handles that this process has acquired. A handle is a number that is never reused, not an address, so a
// released handle is always detected.

#pragma once

#include <string_view>

namespace simulator
{

// Keeps a reference to the name of the module. Returns null if all numbers have been used.
void* newHandle(std::string_view module);

bool isHandleOf(std::string_view module, const void* handle);

// Ends a handle for which isHandleOf() is true.
void endHandle(const void* handle);

} // namespace simulator
