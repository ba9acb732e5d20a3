#include "simulator/store/atomic_file.h"

#include "simulator/store/access.h"
#include "simulator/store/store_error.h"

#include <unistd.h>

namespace simulator
{

namespace
{

// Opens the directory so that it can be synchronized.
File openDirectory(const UnitLocation& location)
{
    File directory = openFile(location.directory.get(), ".", O_RDONLY | O_DIRECTORY);
    if (!directory.isOpen())
        fail(unitFileUnwritable, location.path,
             std::string("cannot open its directory for fsync: ") + std::strerror(errno));
    return directory;
}

// Returns a file that is not open if the unit has none yet.
File openOld(const UnitLocation& location)
{
    const int directory = location.directory.get();
    File old = openFile(directory, location.name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW);
    if (!old.isOpen() && errno == ENOENT)
        return old;
    if (!old.isOpen() || ::faccessat(directory, location.name.c_str(), W_OK, AT_EACCESS) != 0)
        failWithErrno(unitFileUnwritable, location.path);
    return old;
}

// Creates the new file next to the old one. It is private until it has the access rights of the old one.
File createNew(const UnitLocation& location, const File& old)
{
    const int directory = location.directory.get();
    const std::string name = location.name + newSuffix;
    // A process that was killed may have left one.
    if (::unlinkat(directory, name.c_str(), 0) != 0 && errno != ENOENT)
        failWithErrno(unitFileUnwritable, location.path + newSuffix);
    File file = openFile(directory, name, O_WRONLY | O_CREAT | O_EXCL, old.isOpen() ? 0600 : 0666);
    if (!file.isOpen())
        failWithErrno(unitFileUnwritable, location.path + newSuffix);
    return file;
}

void fillAndRename(const UnitLocation& location, const File& file, const std::string& content,
                   const File& old)
{
    const int directory = location.directory.get();
    if (old.isOpen())
        copyAccess(old, file, location.path);
    if (!writeAll(file, content) || ::fsync(file.get()) != 0)
        failWithErrno(unitFileUnwritable, location.path + newSuffix);
    if (::renameat(directory, (location.name + newSuffix).c_str(), directory, location.name.c_str()) != 0)
        failWithErrno(unitFileUnwritable, location.path);
}

} // namespace

void replaceFile(const UnitLocation& location, const std::string& content)
{
    // The directory and the old file are opened before anything changes.
    const File directory = openDirectory(location);
    const File old = openOld(location);
    const File file = createNew(location, old);
    try
    {
        fillAndRename(location, file, content, old);
    }
    catch (...)
    {
        ::unlinkat(location.directory.get(), (location.name + newSuffix).c_str(), 0);
        throw;
    }
    // The rename is durable only after this. If this fails, the old file is not restored: that would not be
    // durable either.
    if (::fsync(directory.get()) != 0)
        fail(unitFileUnwritable, location.path,
             std::string("changed, but may not survive a power loss: cannot synchronize its directory: ") +
                 std::strerror(errno));
}

} // namespace simulator
