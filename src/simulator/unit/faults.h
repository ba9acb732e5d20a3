// Fault injection. A fault replaces the work of a call.

#pragma once

#include "document/unit.h"

#include <optional>
#include <string>

namespace simulator
{

// Returns whether the next call of `operation` changes the counters of its fault.
bool isCounted(const document::Unit& unit, const std::string& operation);

// Returns the fault to inject into a call that is not counted, if any.
std::optional<document::Fault> uncountedFault(const document::Unit& unit, const std::string& operation);

// Counts a call. Returns the fault to inject into it, if any.
std::optional<document::Fault> countCall(document::Unit& unit, const std::string& operation);

// Returns the code that a call with the fault returns. An ignored call returns success.
ApiError resultOf(const document::Fault& fault);

} // namespace simulator
