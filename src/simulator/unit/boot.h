// From one boot of the unit to the next.

#pragma once

#include "document/unit.h"

// A unit that was shut down starts with the next call of the device API.
bool isStartUpDue(const Unit& unit);
void startUpIfDue(Unit& unit);
