#include "simulator/store/lock.h"

#include "simulator/store/store_error.h"

#include <sys/file.h>
#include <sys/stat.h>
#include <utility>

namespace simulator
{

namespace
{

// Every user who can open the file can lock it, so it is readable for all, whatever the umask. It is never
// written.
File openLock(const UnitLocation& location, const char* suffix)
{
    const int directory = location.directory.get();
    const std::string name = location.name + suffix;
    File file = openFile(directory, name, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen() && errno == ENOENT)
    {
        // The umask is cleared so that the file never exists with fewer permissions, not even if this process
        // is killed. O_CREAT is used only if the file is missing: in a sticky directory such as /tmp the
        // kernel refuses it for the file of another user.
        const mode_t mask = ::umask(0);
        file = openFile(directory, name, O_RDONLY | O_CREAT | O_EXCL, 0444);
        ::umask(mask);
        if (!file.isOpen() && errno == EEXIST)
            file = openFile(directory, name, O_RDONLY | O_NONBLOCK);
    }
    if (!file.isOpen())
        failWithErrno(unitFileUnwritable, location.path + suffix);
    return file;
}

// Returns false if another process has the lock and `operation` does not wait.
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
