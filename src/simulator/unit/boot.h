// The boot of the unit. If the unit was shut down or its power was cut, it boots at the next call that
// touches it.

#pragma once

#include "document/unit.h"

namespace simulator
{

bool isBootDue(const document::Unit& unit);

// Applies everything that takes effect at a boot, or only at one after a power cut.
void bootIfDue(document::Unit& unit);

} // namespace simulator
