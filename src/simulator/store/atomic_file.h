// Atomic and durable replacement of the unit's file.

#pragma once

#include "simulator/store/unit_location.h"

#include <string>

namespace simulator
{

// Replaces the file with one that has the content, or creates it. A process that is killed, and a system that
// crashes, leave either the old file or the new one. The permissions are kept, and owner and group as far as
// the process may set them. The caller holds the unit's lock. Throws StoreError; the file is then unchanged.
void replaceFile(const UnitLocation& location, const std::string& content);

} // namespace simulator
