// Who may read and write the unit's file.

#pragma once

#include "simulator/store/file.h"

#include <string>

namespace simulator
{

// Gives the new file the owner, the group, the permissions and the POSIX access control list of the old one.
// Only root can keep the owner, and only members can keep the group. If the group cannot be kept, the new
// group gets the permissions of others. A list is only kept along with owner and group.
//
// Throws StoreError, which names `path`.
void copyAccess(const File& old, const File& file, const std::string& path);

// Makes the file readable for all users, and for nobody more than that. Returns false, with errno set, if
// that fails.
bool allowAllToRead(const File& file);

} // namespace simulator
