// Checks of a unit document that go beyond those of document::unitFromJson().

#pragma once

#include "document/unit.h"

namespace simulator
{

// Throws document::InvalidDocument if the content of an EEPROM is too long, a digest is not a SHA-256 digest,
// a fault names an unknown operation or one that cannot have it, or the key of an error text is not a code.
void validate(const document::Unit& unit);

} // namespace simulator
