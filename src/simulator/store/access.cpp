#include "simulator/store/access.h"

#include "simulator/store/store_error.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace simulator
{

namespace
{

constexpr const char* listName = "system.posix_acl_access";
constexpr auto keepId = static_cast<uid_t>(-1); // for fchown

bool hasNoList(int error)
{
    return error == ENODATA || error == EOPNOTSUPP;
}

// Returns the access control list in the kernel's format, and "" if the file has none.
std::string listOf(const File& file, const std::string& path)
{
    std::string list;
    ssize_t size = ::fgetxattr(file.get(), listName, nullptr, 0);
    if (size > 0)
    {
        list.resize(static_cast<std::size_t>(size));
        size = ::fgetxattr(file.get(), listName, list.data(), list.size());
    }
    if (size < 0 && !hasNoList(errno))
        failWithErrno(unitFileUnwritable, path);
    list.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return list;
}

// Removes the list that a new file inherits from its directory. Returns false, with errno set, if that fails.
bool removeList(const File& file)
{
    return ::fremovexattr(file.get(), listName) == 0 || hasNoList(errno);
}

// Returns false if the process may not do this.
bool changeOwner(const File& file, uid_t owner, gid_t group, const std::string& path)
{
    if (::fchown(file.get(), owner, group) == 0)
        return true;
    if (errno != EPERM)
        failWithErrno(unitFileUnwritable, path);
    return false;
}

} // namespace

void copyAccess(const File& old, const File& file, const std::string& path)
{
    struct stat status = {};
    if (::fstat(old.get(), &status) != 0)
        failWithErrno(unitFileUnwritable, path);
    const std::string list = listOf(old, path);

    if (!removeList(file))
        failWithErrno(unitFileUnwritable, path);
    const bool keepsGroup = changeOwner(file, keepId, status.st_gid, path);
    const bool keepsOwner = changeOwner(file, status.st_uid, keepId, path);
    if (!list.empty())
    {
        if (!keepsGroup || !keepsOwner)
            fail(unitFileUnwritable, path, "only its owner and root can keep its access control list");
        if (::fsetxattr(file.get(), listName, list.data(), list.size(), 0) != 0)
            failWithErrno(unitFileUnwritable, path);
        return;
    }
    mode_t mode = status.st_mode & 0777;
    if (!keepsGroup)
        mode = (mode & ~static_cast<mode_t>(S_IRWXG)) | (mode & S_IRWXO) << 3;
    if (::fchmod(file.get(), mode) != 0)
        failWithErrno(unitFileUnwritable, path);
}

bool allowAllToRead(const File& file)
{
    return removeList(file) && ::fchmod(file.get(), 0444) == 0;
}

} // namespace simulator
