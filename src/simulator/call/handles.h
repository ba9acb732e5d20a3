// The handles that this process has acquired. A handle is a number that is never reused, not an address, so a
// released handle is always detected.

#pragma once

#include <string_view>

namespace simulator
{

// Returns null if all numbers have been used. `module` must stay valid until the handle is released.
void* newHandle(std::string_view module);

bool isHandleOf(std::string_view module, const void* handle);

// Releases a handle for which isHandleOf() returns true.
void endHandle(const void* handle);

} // namespace simulator
