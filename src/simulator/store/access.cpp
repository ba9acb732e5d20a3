#include "simulator/store/access.h"

#include "simulator/store/store_error.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace simulator
{

namespace
{

constexpr const char* aclName = "system.posix_acl_access";
constexpr auto keepId = static_cast<uid_t>(-1); // for fchown

bool hasNoAcl(int error)
{
    return error == ENODATA || error == EOPNOTSUPP;
}

// Returns the access control list in the kernel's format, or "" if the file has none.
std::string aclOf(const File& file, const std::string& path)
{
    std::string acl;
    ssize_t size = ::fgetxattr(file.get(), aclName, nullptr, 0);
    if (size > 0)
    {
        acl.resize(static_cast<std::size_t>(size));
        size = ::fgetxattr(file.get(), aclName, acl.data(), acl.size());
    }
    if (size < 0 && !hasNoAcl(errno))
        failWithErrno(unitFileUnwritable, path);
    acl.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return acl;
}

// Removes the list that a new file inherits from its directory. Returns false, with errno set, on failure.
bool removeAcl(const File& file)
{
    return ::fremovexattr(file.get(), aclName) == 0 || hasNoAcl(errno);
}

// Returns false if the process lacks the permission.
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
    const std::string acl = aclOf(old, path);

    if (!removeAcl(file))
        failWithErrno(unitFileUnwritable, path);
    const bool keepsGroup = changeOwner(file, keepId, status.st_gid, path);
    const bool keepsOwner = changeOwner(file, status.st_uid, keepId, path);
    if (!acl.empty())
    {
        if (!keepsGroup || !keepsOwner)
            fail(unitFileUnwritable, path, "only its owner and root can keep its access control list");
        if (::fsetxattr(file.get(), aclName, acl.data(), acl.size(), 0) != 0)
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
    return removeAcl(file) && ::fchmod(file.get(), 0444) == 0;
}

} // namespace simulator
