// The location of the unit's file.

#pragma once

#include "simulator/store/file.h"

#include <string>

namespace simulator
{

// A file name in an open directory. Renaming or replacing the directory has no effect, so the file that is
// locked is always the one that is read and replaced.
struct UnitLocation
{
    File directory;
    std::string name; // of the file in the directory
    std::string path; // for diagnostics
};

// Suffixes of its companions: files in the same directory that have the same name plus a suffix.
inline constexpr const char* lockSuffix = ".lock"; // held during a change
inline constexpr const char* jobSuffix = ".job";   // held while a firmware job runs
inline constexpr const char* newSuffix = ".new";   // the new file while it is written

// Locates the unit's file and follows its symbolic links. The file need not exist; the default directory is
// created. Throws StoreError.
UnitLocation locateUnit();

// Returns whether `path` refers to the unit's file or to one of its companions, which need not exist. Returns
// false if the unit cannot be located. Throws StoreError if the symbolic links of `path` cannot be followed.
bool isFileOfUnit(const std::string& path);

} // namespace simulator
