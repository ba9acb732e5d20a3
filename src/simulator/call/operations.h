// The operations of the device API, by name.

#pragma once

#include <string>
#include <string_view>

namespace simulator
{

// Returns whether this library exports an operation with the name. Throws std::bad_alloc.
bool isOperation(const std::string& name);

// Returns the module of an operation: "Buzzer" for "GetBuzzer" and for "Buzzer_getVolume".
std::string_view moduleOf(std::string_view operation);

} // namespace simulator
