// Locks between processes. A lock is a file next to the unit's file, with the same name plus a suffix.

#pragma once

#include "simulator/store/unit_location.h"

namespace simulator
{

// Waits for the lock. Closing the file releases it. Throws StoreError.
File waitForLock(const UnitLocation& location, const char* suffix);

// Does not wait. The result is not open if another process holds the lock. Throws StoreError.
File tryLock(const UnitLocation& location, const char* suffix);

} // namespace simulator
