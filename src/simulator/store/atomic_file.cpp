#include "simulator/store/atomic_file.h"

#include "simulator/store/store_error.h"

#include <sys/stat.h>
#include <unistd.h>

namespace simulator
{

namespace
{

constexpr const char* suffix = ".new";
constexpr auto keepId = static_cast<uid_t>(-1); // for fchown

// Gives the new file the access rights of the old one. Only root can keep the owner, and only members can
// keep the group. If the group cannot be kept, the new group gets the rights of others.
bool keepAccess(const File& file, const struct stat& old)
{
    mode_t mode = old.st_mode & 0777;
    if (::fchown(file.get(), keepId, old.st_gid) != 0)
    {
        if (errno != EPERM)
            return false;
        mode = (mode & ~static_cast<mode_t>(S_IRWXG)) | (mode & S_IRWXO) << 3;
    }
    return (::fchown(file.get(), old.st_uid, keepId) == 0 || errno == EPERM) &&
           ::fchmod(file.get(), mode) == 0;
}

// Creates the new file next to the old one. It is private until it has the access rights of the old one.
File createNew(const UnitLocation& location, const struct stat* old)
{
    const int directory = location.directory.get();
    const std::string name = location.name + suffix;
    // A killed process may have left a file.
    if (::unlinkat(directory, name.c_str(), 0) != 0 && errno != ENOENT)
        failWithErrno(unitFileUnwritable, location.path + suffix);
    File file = openFile(directory, name, O_WRONLY | O_CREAT | O_EXCL, old ? 0600 : 0666);
    if (!file.isOpen())
        failWithErrno(unitFileUnwritable, location.path + suffix);
    return file;
}

void fillAndRename(const UnitLocation& location, const File& file, const std::string& content,
                   const struct stat* old)
{
    const int directory = location.directory.get();
    if ((old && !keepAccess(file, *old)) || !writeAll(file, content) || ::fsync(file.get()) != 0)
        failWithErrno(unitFileUnwritable, location.path + suffix);
    if (::renameat(directory, (location.name + suffix).c_str(), directory, location.name.c_str()) != 0)
        failWithErrno(unitFileUnwritable, location.path);
}

} // namespace

void replaceFile(const UnitLocation& location, const std::string& content)
{
    const int directory = location.directory.get();
    struct stat status = {};
    const struct stat* const old =
        ::fstatat(directory, location.name.c_str(), &status, 0) == 0 ? &status : nullptr;
    if (old && ::faccessat(directory, location.name.c_str(), W_OK, AT_EACCESS) != 0)
        failWithErrno(unitFileUnwritable, location.path);

    const File file = createNew(location, old);
    try
    {
        fillAndRename(location, file, content, old);
    }
    catch (...)
    {
        ::unlinkat(directory, (location.name + suffix).c_str(), 0);
        throw;
    }

    // The directory entry is durable only after this.
    const File opened = openFile(directory, ".", O_RDONLY | O_DIRECTORY);
    if (opened.isOpen())
        ::fsync(opened.get());
}

} // namespace simulator
