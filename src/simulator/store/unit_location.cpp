#include "simulator/store/unit_location.h"

#include "simulator/store/store_error.h"

#include <climits>
#include <cstdlib>
#include <sys/file.h>
#include <sys/stat.h>

namespace
{

constexpr int mostLinks = 40; // as many as the kernel follows

const char* environment(const char* name)
{
    const char* value = std::getenv(name);
    return value && *value ? value : nullptr;
}

std::string namedPath()
{
    if (const char* file = environment("QVAUX_UNIT"))
        return file;
    if (const char* state = environment("XDG_STATE_HOME"))
        return std::string(state) + "/qv-aux2/unit.json";
    if (const char* home = environment("HOME"))
        return std::string(home) + "/.local/state/qv-aux2/unit.json";
    throw StoreError(unitFileUnplaced,
                     "neither QVAUX_UNIT, XDG_STATE_HOME nor HOME names a place for the unit file");
}

// With the slash at its end; empty for the working folder.
std::string folderOf(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
}

// The place that `path` names, seen from the folder `base`; its folder is not open when it cannot be opened.
Place placeFrom(int base, const std::string& path)
{
    const std::string folder = folderOf(path);
    const std::string name = path.substr(folder.size());
    return {openFile(base, folder.empty() ? "." : folder, O_PATH | O_DIRECTORY), name.empty() ? "." : name,
            path};
}

// Follows links one by one, each from the folder that it is in, so that the file behind them is replaced and
// not a link, whether or not it is there yet.
Place behindLinks(Place place)
{
    for (int links = 0; place.folder.isOpen(); ++links)
    {
        char target[PATH_MAX];
        const ssize_t length = ::readlinkat(place.folder.get(), place.name.c_str(), target, sizeof target);
        if (length <= 0)
            return place;
        if (links == mostLinks)
        {
            errno = ELOOP;
            failWithErrno(unitFileUnreadable, place.path);
        }
        const std::string next(target, static_cast<std::size_t>(length));
        const std::string before = next.front() == '/' ? "" : folderOf(place.path);
        place = placeFrom(place.folder.get(), next);
        place.path = before + next;
    }
    return place;
}

void makeFolders(const std::string& path)
{
    for (auto slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1))
    {
        const std::string folder = path.substr(0, slash);
        if (::mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST && errno != EISDIR)
            failWithErrno(unitFileUnwritable, folder);
    }
}

// Whoever can open it can lock it: that is every user of the unit, whatever the umask of the one who made it.
// Nobody writes into it.
File openLock(const Place& place, const std::string& ending)
{
    const int folder = place.folder.get();
    const std::string name = place.name + ending;
    File file = openFile(folder, name, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen() && errno == ENOENT)
    {
        // At once with its permissions, so that no process can be killed in between. Only where there is
        // none: in a folder like /tmp the kernel refuses O_CREAT with the file of another user.
        const mode_t mask = ::umask(0);
        file = openFile(folder, name, O_RDONLY | O_CREAT | O_EXCL, 0444);
        ::umask(mask);
        if (!file.isOpen() && errno == EEXIST)
            file = openFile(folder, name, O_RDONLY | O_NONBLOCK);
    }
    if (!file.isOpen())
        failWithErrno(unitFileUnwritable, place.path + ending);
    return file;
}

// False when another process has the lock and `how` does not wait.
bool lock(const File& file, int how, const std::string& path)
{
    while (::flock(file.get(), how) != 0)
    {
        if (errno == EWOULDBLOCK)
            return false;
        if (errno != EINTR)
            failWithErrno(unitFileUnwritable, path);
    }
    return true;
}

} // namespace

Place unitPlace()
{
    const std::string path = namedPath();
    Place place = behindLinks(placeFrom(AT_FDCWD, path));
    if (!place.folder.isOpen() && errno == ENOENT && !environment("QVAUX_UNIT"))
    {
        makeFolders(path);
        place = behindLinks(placeFrom(AT_FDCWD, path));
    }
    if (!place.folder.isOpen())
    {
        if (errno == ENOENT)
            fail(unitFileUnplaced, place.path, "its folder is not there");
        failWithErrno(unitFileUnreadable, place.path);
    }
    return place;
}

File takeLock(const Place& place, const char* ending)
{
    File file = openLock(place, ending);
    lock(file, LOCK_EX, place.path + ending);
    return file;
}

File tryLock(const Place& place, const char* ending)
{
    File file = openLock(place, ending);
    return lock(file, LOCK_EX | LOCK_NB, place.path + ending) ? std::move(file) : File();
}
