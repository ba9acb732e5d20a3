// Locks between processes: files next to the unit's file, named like it with a suffix.

#pragma once

#include "simulator/store/unit_location.h"

namespace simulator
{

// Waits for the lock. It is released when the file is closed. Throws StoreError.
File waitForLock(const UnitLocation& location, const char* suffix);

// Does not wait: the file is not open if another process has the lock. Throws StoreError.
File tryLock(const UnitLocation& location, const char* suffix);

} // namespace simulator
