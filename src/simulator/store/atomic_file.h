// Atomic and durable replacement of the unit's file.

#pragma once

#include "simulator/store/unit_location.h"

#include <string>

namespace simulator
{

// Creates the file with the content, or replaces it. If the process is killed or the system crashes, either
// the old file or the new one remains. The new file has the access rights of the old one; see copyAccess().
//
// The caller must hold the unit's lock. Throws StoreError on failure. The file is then unchanged, unless only
// the synchronization of its directory failed: the new file is in place, but may not survive a power loss.
void replaceFile(const UnitLocation& location, const std::string& content);

} // namespace simulator
