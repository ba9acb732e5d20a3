// Atomic and durable replacement of the unit's file.

#pragma once

#include "simulator/store/unit_location.h"

#include <string>

namespace simulator
{

// Replaces the file with one that has the content, or creates it. A process that is killed, and a system that
// crashes, leave either the old file or the new one. The new file has the access rights of the old one, see
// copyAccess().
//
// The caller holds the unit's lock. Throws StoreError. The file is then unchanged, unless the synchronization
// of the directory failed: then the new file is in place, but may not survive a power loss.
void replaceFile(const UnitLocation& location, const std::string& content);

} // namespace simulator
