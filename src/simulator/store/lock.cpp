#include "simulator/store/lock.h"

#include "simulator/store/access.h"
#include "simulator/store/store_error.h"

#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace simulator
{

namespace
{

// O_NOFOLLOW: a symbolic link cannot make another user open a file elsewhere.
File openExisting(const UnitLocation& location, const std::string& name)
{
    return openFile(location.directory.get(), name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW);
}

// Creates the file without a name, makes it readable by all users, and then links it. If the process is
// killed, no lock file remains that other users cannot open. The result is not open on failure, for example
// if the file system does not support O_TMPFILE.
File createAtomically(const UnitLocation& location, const std::string& name)
{
    const int directory = location.directory.get();
    File file = openFile(directory, ".", O_TMPFILE | O_RDWR, 0600);
    if (!file.isOpen() || !allowAllToRead(file))
        return {};
    const std::string path = "/proc/self/fd/" + std::to_string(file.get());
    if (::linkat(AT_FDCWD, path.c_str(), directory, name.c_str(), AT_SYMLINK_FOLLOW) != 0)
        return {};
    return file;
}

// The result is not open if the file exists or cannot be created.
File createInSteps(const UnitLocation& location, const std::string& name)
{
    File file = openFile(location.directory.get(), name, O_RDONLY | O_CREAT | O_EXCL, 0444);
    if (!file.isOpen() || allowAllToRead(file))
        return file;
    const int error = errno;
    ::unlinkat(location.directory.get(), name.c_str(), 0);
    errno = error;
    return {};
}

// flock() only requires that the file can be opened, so the lock file is readable by all users, regardless of
// the umask. It is never written.
File openLock(const UnitLocation& location, const char* suffix)
{
    const std::string name = location.name + suffix;
    File file = openExisting(location, name);
    // Created only if missing: in a sticky directory such as /tmp, the kernel may reject O_CREAT for an
    // existing file of another user.
    if (!file.isOpen() && errno == ENOENT)
    {
        file = createAtomically(location, name);
        if (!file.isOpen())
            file = createInSteps(location, name);
        if (!file.isOpen() && errno == EEXIST)
            file = openExisting(location, name);
    }
    if (!file.isOpen())
        failWithErrno(unitFileUnwritable, location.path + suffix);
    return file;
}

// Returns false if another process holds the lock and `operation` does not wait for it.
bool lock(const File& file, int operation, const std::string& path)
{
    while (::flock(file.get(), operation) != 0)
    {
        if (errno == EWOULDBLOCK)
            return false;
        if (errno != EINTR)
            failWithErrno(unitFileUnwritable, path);
    }
    return true;
}

} // namespace

File waitForLock(const UnitLocation& location, const char* suffix)
{
    File file = openLock(location, suffix);
    lock(file, LOCK_EX, location.path + suffix);
    return file;
}

File tryLock(const UnitLocation& location, const char* suffix)
{
    File file = openLock(location, suffix);
    return lock(file, LOCK_EX | LOCK_NB, location.path + suffix) ? std::move(file) : File();
}

} // namespace simulator
