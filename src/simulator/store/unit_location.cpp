#include "simulator/store/unit_location.h"

#include "simulator/store/store_error.h"

#include <climits>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace simulator
{

namespace
{

constexpr int mostLinks = 40; // the kernel's limit

// Returns null if the variable is unset or empty.
const char* environment(const char* name)
{
    const char* value = std::getenv(name);
    return value && *value ? value : nullptr;
}

std::string configuredPath()
{
    if (const char* file = environment("QVAUX_UNIT"))
        return file;
    if (const char* state = environment("XDG_STATE_HOME"))
        return std::string(state) + "/qv-aux2/unit.json";
    if (const char* home = environment("HOME"))
        return std::string(home) + "/.local/state/qv-aux2/unit.json";
    throw StoreError(unitFileNotLocated,
                     "cannot locate the unit file: set QVAUX_UNIT, XDG_STATE_HOME or HOME");
}

// Includes the slash at the end. Empty for the working directory.
std::string directoryOf(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
}

// `path` is relative to the directory `base`. The location's directory is not open if it cannot be opened.
UnitLocation locationFrom(int base, const std::string& path)
{
    const std::string directory = directoryOf(path);
    const std::string name = path.substr(directory.size());
    return {openFile(base, directory.empty() ? "." : directory, O_PATH | O_DIRECTORY),
            name.empty() ? "." : name, path};
}

// Follows symbolic links one at a time, each relative to its own directory. A change then replaces the file
// and not the link. The file need not exist.
UnitLocation resolveLinks(UnitLocation location)
{
    for (int links = 0; location.directory.isOpen(); ++links)
    {
        char target[PATH_MAX];
        const ssize_t length =
            ::readlinkat(location.directory.get(), location.name.c_str(), target, sizeof target);
        if (length <= 0)
            return location;
        if (links == mostLinks)
        {
            errno = ELOOP;
            failWithErrno(unitFileUnreadable, location.path);
        }
        const std::string next(target, static_cast<std::size_t>(length));
        const std::string prefix = next.front() == '/' ? "" : directoryOf(location.path);
        location = locationFrom(location.directory.get(), next);
        location.path = prefix + next;
    }
    return location;
}

// Its entry in the parent directory is durable when this returns, or it does not exist.
void makeDirectory(const std::string& path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) == 0)
        return;
    const std::string parent = directoryOf(path);
    const File opened = openFile(AT_FDCWD, parent.empty() ? "." : parent, O_RDONLY | O_DIRECTORY);
    if (!opened.isOpen() || (::mkdir(path.c_str(), 0777) != 0 && errno != EEXIST))
        failWithErrno(unitFileUnwritable, path);
    if (::fsync(opened.get()) == 0)
        return;
    const int error = errno;
    ::rmdir(path.c_str());
    fail(unitFileUnwritable, path, std::string("cannot synchronize its directory: ") + std::strerror(error));
}

void makeDirectories(const std::string& path)
{
    for (auto slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1))
        if (path[slash - 1] != '/')
            makeDirectory(path.substr(0, slash));
}

} // namespace

UnitLocation locateUnit()
{
    const std::string path = configuredPath();
    UnitLocation location = resolveLinks(locationFrom(AT_FDCWD, path));
    if (!location.directory.isOpen() && errno == ENOENT && !environment("QVAUX_UNIT"))
    {
        makeDirectories(path);
        location = resolveLinks(locationFrom(AT_FDCWD, path));
    }
    if (!location.directory.isOpen())
    {
        if (errno == ENOENT)
            fail(unitFileNotLocated, location.path, "its directory does not exist");
        failWithErrno(unitFileUnreadable, location.path);
    }
    return location;
}

} // namespace simulator
