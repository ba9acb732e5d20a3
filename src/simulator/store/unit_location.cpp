#include "simulator/store/unit_location.h"

#include "simulator/store/store_error.h"

#include <climits>
#include <cstdlib>
#include <linux/magic.h>
#include <linux/openat2.h>
#include <optional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <unistd.h>
#include <utility>

namespace simulator
{

namespace
{

constexpr int maxLinks = 40; // the kernel's limit

// Returns null if the variable is unset or empty.
const char* environment(const char* name)
{
    const char* value = ::secure_getenv(name); // ignored in a set-user-ID program
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

// Opens a directory whose path has no symbolic links. The file is not open if it has, and where the kernel,
// or an emulator, lacks this.
File openWithoutLinks(const std::string& path)
{
    open_how how = {};
    how.flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
    how.resolve = RESOLVE_NO_SYMLINKS;
    return keepClearOfStandardStreams(
        File(static_cast<int>(::syscall(SYS_openat2, AT_FDCWD, path.c_str(), &how, sizeof how))));
}

// In a directory where everyone can create files, such as /tmp, a link is followed only if it belongs to the
// caller or to the owner of the directory. The kernel has the same rule, but it may be switched off
// (fs.protected_symlinks), and it applies to the last link of a path only.
bool mayFollow(const struct stat& link, const File& directory)
{
    struct stat in = {};
    if (::fstat(directory.get(), &in) != 0)
        return false;
    constexpr mode_t shared = S_ISVTX | S_IWOTH;
    return (in.st_mode & shared) != shared || link.st_uid == ::geteuid() || link.st_uid == in.st_uid;
}

// Returns the target of an open link, or nothing if the entry is not a link. The link that is checked is the
// one that is read, even if its name is replaced meanwhile.
std::optional<std::string> targetOf(const File& entry, const File& directory, const std::string& path)
{
    struct stat status = {};
    if (!entry.isOpen() || ::fstat(entry.get(), &status) != 0 || !S_ISLNK(status.st_mode))
        return std::nullopt;
    if (!mayFollow(status, directory))
        fail(unitFileUnreadable, path, "link of another user in a sticky directory");
    char target[PATH_MAX];
    const ssize_t length = ::readlinkat(entry.get(), "", target, sizeof target);
    if (length <= 0)
        failWithErrno(unitFileUnreadable, path);
    return std::string(target, static_cast<std::size_t>(length));
}

// Removes the first name and the slashes before it from the path. A path that ends with a slash has the name
// "." at its end.
std::string takeName(std::string& path)
{
    path.erase(0, path.find_first_not_of('/'));
    const std::string name = path.substr(0, path.find('/'));
    path.erase(0, name.size());
    return name.empty() ? "." : name;
}

// Opens the directory where the path starts. Of an absolute path, it opens and removes the first name, too:
// an emulator can show another root directory. Nobody but root can create links there.
File openStart(std::string& path)
{
    if (!path.starts_with('/'))
        return openFile(AT_FDCWD, ".", O_PATH | O_DIRECTORY);
    std::string rest = path;
    const std::string name = takeName(rest);
    if (rest.empty())
        return openFile(AT_FDCWD, "/", O_PATH | O_DIRECTORY);
    path = rest;
    return openFile(AT_FDCWD, "/" + name, O_PATH | O_DIRECTORY);
}

// The kernel must follow the links in /proc: their text is not where they lead if that is in another mount
// namespace.
bool isInProcfs(const File& directory)
{
    struct statfs status = {};
    return ::fstatfs(directory.get(), &status) == 0 && status.f_type == PROC_SUPER_MAGIC;
}

bool isLink(const File& directory, const std::string& name)
{
    struct stat status = {};
    return ::fstatat(directory.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISLNK(status.st_mode);
}

// Follows symbolic links one at a time. A change then replaces the file and not the link. The file need not
// exist. The location's directory is not open, and errno says why, if it cannot be opened.
UnitLocation resolve(std::string path)
{
    std::string rest = path;
    const std::string parent = directoryOf(path);
    File directory = openWithoutLinks(parent.empty() ? "." : parent);
    if (directory.isOpen())
        rest.erase(0, parent.size());
    else
        directory = openStart(rest);

    for (int links = 0; directory.isOpen();)
    {
        const std::string name = takeName(rest);
        if (rest.empty() && !isLink(directory, name))
            return {std::move(directory), name, path};
        const bool isFollowed = !rest.empty() && isInProcfs(directory);
        File entry = openFile(directory.get(), name, O_PATH | (isFollowed ? 0 : O_NOFOLLOW));
        if (auto target = targetOf(entry, directory, path))
        {
            if (++links > maxLinks)
            {
                errno = ELOOP;
                failWithErrno(unitFileUnreadable, path);
            }
            const bool isAbsolute = target->starts_with('/');
            if (rest.empty())
                path = (isAbsolute ? "" : directoryOf(path)) + *target;
            if (isAbsolute)
                directory = openStart(*target); // removes what it opens
            rest.insert(0, *target);
        }
        else if (rest.empty()) // The link has just been replaced.
            return {std::move(directory), name, path};
        else
            directory = std::move(entry);
    }
    return {{}, ".", path};
}

// Creates the directory durably: its entry in the parent directory is on disk when this returns.
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

bool isSameFile(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool isSameName(const UnitLocation& one, const UnitLocation& other)
{
    struct stat directory = {};
    struct stat otherDirectory = {};
    return one.name == other.name && ::fstat(one.directory.get(), &directory) == 0 &&
           ::fstat(other.directory.get(), &otherDirectory) == 0 && isSameFile(directory, otherDirectory);
}

// The location's directory is not open if the unit cannot be located.
UnitLocation findUnit()
{
    try
    {
        return resolve(configuredPath());
    }
    catch (const StoreError&)
    {
        return {};
    }
}

} // namespace

UnitLocation locateUnit()
{
    const std::string path = configuredPath();
    UnitLocation location = resolve(path);
    if (!location.directory.isOpen() && errno == ENOENT && !environment("QVAUX_UNIT"))
    {
        makeDirectories(path);
        location = resolve(path);
    }
    if (!location.directory.isOpen())
    {
        if (errno == ENOENT)
            fail(unitFileNotLocated, location.path, "its directory does not exist");
        failWithErrno(unitFileUnreadable, location.path);
    }
    return location;
}

bool isFileOfUnit(const std::string& path)
{
    UnitLocation unit = findUnit();
    const UnitLocation other = resolve(path);
    if (!unit.directory.isOpen())
        return false;
    struct stat file = {};
    const bool exists = ::stat(path.c_str(), &file) == 0;
    const std::string name = unit.name;
    for (const char* suffix : {"", lockSuffix, jobSuffix, newSuffix})
    {
        unit.name = name + suffix;
        struct stat status = {};
        const bool isHardLink = exists &&
                                ::fstatat(unit.directory.get(), unit.name.c_str(), &status, 0) == 0 &&
                                isSameFile(status, file);
        if (isHardLink || isSameName(unit, other))
            return true;
    }
    return false;
}

} // namespace simulator
