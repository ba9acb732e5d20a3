// What a unit document must not contain on the simulated unit, besides what is wrong in any document.

#pragma once

#include "document/unit.h"

namespace simulator
{

// Throws document::InvalidDocument if a fault has no operation or one that cannot have it, or if an error
// text has no code.
void validate(const document::Unit& unit);

} // namespace simulator
