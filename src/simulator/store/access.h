// The access rights of the unit's file.

#pragma once

#include "simulator/store/file.h"

#include <string>

namespace simulator
{

// Gives the new file the owner, the group, the permissions and the POSIX access control list of the old one.
// If the process may not set the owner, the new file belongs to the user of the process. If it may not set
// the group, the new group gets the permissions of others.
//
// Throws StoreError, which names `path`, if this fails, or if the old file has an access control list and the
// process may not set the owner or the group.
void copyAccess(const File& old, const File& file, const std::string& path);

// Makes the file readable by all users and writable by none. Returns false, with errno set, on failure.
bool allowAllToRead(const File& file);

} // namespace simulator
