// Where the unit's file is.

#pragma once

#include "simulator/store/file.h"

#include <string>

namespace simulator
{

// A name in an open directory. It stays the same directory even if it is renamed or replaced meanwhile, so
// the file that is locked is the file that is read and replaced.
struct UnitLocation
{
    File directory;
    std::string name; // of the file in the directory
    std::string path; // for diagnostics
};

// Locates the unit's file and follows its symbolic links. The file need not exist; the default directory is
// created. Throws StoreError.
UnitLocation locateUnit();

} // namespace simulator
