// The boot of the unit. A unit that was shut down boots at the next call that touches it.

#pragma once

#include "document/unit.h"

namespace simulator
{

bool isBootDue(const document::Unit& unit);

// Applies everything that takes effect at the next boot.
void bootIfDue(document::Unit& unit);

} // namespace simulator
