// What a unit document must not contain on the simulated unit, besides what is wrong in any document.

#pragma once

#include "document/unit.h"

namespace simulator
{

// Throws document::InvalidDocument if the content of an EEPROM is too long, a digest is not a SHA-256, a
// fault has no operation or one that cannot have it, or an error text has no code.
void validate(const document::Unit& unit);

} // namespace simulator
