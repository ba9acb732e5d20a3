#include "store.h"

#include "file.h"
#include "json.h"
#include "unit_json.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>

namespace
{

// The file as it was read last. It stays open, so that no other file can take its inode number and be
// mistaken for it.
struct Snapshot
{
    File file;
    struct stat status
    {
    };
    bool settled; // nothing can have changed it since and left its times as they are
    Json json;
    Unit unit;
};

std::optional<Snapshot> snapshot;

constexpr auto unchanged = static_cast<uid_t>(-1); // to fchown

[[noreturn]] void fail(Code code, const std::string& path, const std::string& what)
{
    throw StoreError(code, path + ": " + what);
}

[[noreturn]] void failWithErrno(Code code, const std::string& path)
{
    fail(code, path, std::strerror(errno));
}

bool sameTime(const timespec& one, const timespec& other)
{
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

// Files are stamped by a clock with ticks: two changes within one can not be told apart by their times.
timespec fileClock()
{
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return now;
}

bool isBefore(const timespec& one, const timespec& other)
{
    return one.tv_sec != other.tv_sec ? one.tv_sec < other.tv_sec : one.tv_nsec < other.tv_nsec;
}

bool isSnapshot(const struct stat& status)
{
    return snapshot && snapshot->settled && status.st_dev == snapshot->status.st_dev &&
           status.st_ino == snapshot->status.st_ino && status.st_size == snapshot->status.st_size &&
           sameTime(status.st_ctim, snapshot->status.st_ctim);
}

// With the slash at its end; empty for the working folder.
std::string folderOf(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
}

std::string readAll(const File& file, const std::string& path)
{
    std::string text;
    char block[16384];
    ssize_t count;
    while ((count = ::read(file.get(), block, sizeof block)) != 0)
    {
        if (count > 0)
            text.append(block, static_cast<std::size_t>(count));
        else if (errno != EINTR)
            failWithErrno(unitFileUnreadable, path);
    }
    return text;
}

void writeAll(const File& file, const std::string& text, const std::string& path)
{
    for (std::size_t done = 0; done < text.size();)
    {
        const ssize_t count = ::write(file.get(), text.data() + done, text.size() - done);
        if (count >= 0)
            done += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            failWithErrno(unitFileUnwritable, path);
    }
}

// The parser's text without the mark of its library: "line 3, column 7: ...".
std::string placeOf(const Json::exception& error)
{
    const std::string text = error.what();
    const std::string_view mark = "parse error at ";
    const auto at = text.find(mark);
    return text.substr(at == std::string::npos ? text.find("] ") + 2 : at + mark.size());
}

Json parse(const std::string& text, const std::string& path)
{
    try
    {
        return Json::parse(text);
    }
    catch (const Json::exception& error)
    {
        fail(unitFileDamaged, path, placeOf(error));
    }
}

Unit toUnit(const Json& json, const std::string& path)
{
    try
    {
        return unitFromJson(json);
    }
    catch (const BadUnit& error)
    {
        fail(unitFileDamaged, path, error.what());
    }
}

// Brings the snapshot up to date. False when there is no file.
bool load(const std::string& path)
{
    struct stat status
    {
    };
    if (::stat(path.c_str(), &status) == 0 && isSnapshot(status))
        return true;

    // Not waiting for what stands at the other end of a pipe.
    File file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    const timespec now = fileClock();
    if (!file.isOpen() && errno == ENOENT)
        return false;
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0)
        failWithErrno(unitFileUnreadable, path);
    if (!S_ISREG(status.st_mode))
        fail(unitFileUnreadable, path, "not a regular file");

    Json json = parse(readAll(file, path), path);
    Unit unit = toUnit(json, path);
    const bool settled = isBefore(status.st_ctim, now);
    snapshot.emplace(Snapshot{std::move(file), status, settled, std::move(json), std::move(unit)});
    return true;
}

// Gives the new file the permissions of the old one. The owner can be kept by root alone, the group by its
// members.
void keepAccess(const File& file, const struct stat& old, const std::string& path)
{
    if (::fchmod(file.get(), old.st_mode & 0777) != 0 ||
        (::fchown(file.get(), unchanged, old.st_gid) != 0 && errno != EPERM) ||
        (::fchown(file.get(), old.st_uid, unchanged) != 0 && errno != EPERM))
        failWithErrno(unitFileUnwritable, path);
}

// Replaces the unit's file. A process that is killed here leaves the old file or the new one.
void save(const std::string& path, const Json& json)
{
    struct stat old
    {
    };
    const bool replaces = ::stat(path.c_str(), &old) == 0;
    if (replaces && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
        failWithErrno(unitFileUnwritable, path);

    const std::string beside = path + ".new";
    ::unlink(beside.c_str());
    const File file(::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!file.isOpen())
        failWithErrno(unitFileUnwritable, beside);
    try
    {
        if (replaces)
            keepAccess(file, old, beside);
        writeAll(file, json.dump(2) + "\n", beside);
        if (::fsync(file.get()) != 0)
            failWithErrno(unitFileUnwritable, beside);
        if (::rename(beside.c_str(), path.c_str()) != 0)
            failWithErrno(unitFileUnwritable, path);
    }
    catch (const StoreError&)
    {
        ::unlink(beside.c_str());
        throw;
    }

    const std::string folder = folderOf(path);
    const File directory(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.isOpen())
        ::fsync(directory.get());
}

File lock(const std::string& path)
{
    const std::string beside = path + ".lock";
    File file(::open(beside.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0666));
    if (!file.isOpen())
        failWithErrno(unitFileUnwritable, beside);
    while (::flock(file.get(), LOCK_EX) != 0)
        if (errno != EINTR)
            failWithErrno(unitFileUnwritable, beside);
    return file;
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

const char* environment(const char* name)
{
    const char* value = std::getenv(name);
    return value && *value ? value : nullptr;
}

void makeUnit(const std::string& path)
{
    if (!environment("QVAUX_UNIT"))
        makeFolders(path);
    const File locked = lock(path);
    if (!load(path))
        save(path, unitToJson(Unit{}));
}

void loadOrMake(const std::string& path)
{
    if (load(path))
        return;
    makeUnit(path);
    if (!load(path))
        failWithErrno(unitFileUnreadable, path);
}

// Links are followed, so that the file behind them is replaced and not a link, whether or not it is there
// yet.
std::string withoutLinks(const std::string& path)
{
    if (char* real = ::realpath(path.c_str(), nullptr))
    {
        std::string found = real;
        std::free(real);
        return found;
    }
    char target[PATH_MAX];
    const ssize_t length = errno == ENOENT ? ::readlink(path.c_str(), target, sizeof target) : -1;
    if (length <= 0)
        return path;
    const std::string next(target, static_cast<std::size_t>(length));
    return withoutLinks(next.front() == '/' ? next : folderOf(path) + next);
}

} // namespace

std::string unitPath()
{
    if (const char* file = environment("QVAUX_UNIT"))
        return withoutLinks(file);
    if (const char* state = environment("XDG_STATE_HOME"))
        return withoutLinks(std::string(state) + "/qv-aux2/unit.json");
    if (const char* home = environment("HOME"))
        return withoutLinks(std::string(home) + "/.local/state/qv-aux2/unit.json");
    throw StoreError(unitFileUnplaced,
                     "neither QVAUX_UNIT, XDG_STATE_HOME nor HOME names a place for the unit file");
}

const Unit& currentUnit()
{
    loadOrMake(unitPath());
    return snapshot->unit;
}

ApiError changeUnit(const std::function<ApiError(Unit&)>& action)
{
    const std::string path = unitPath();
    loadOrMake(path);
    const File locked = lock(path);
    if (!load(path))
        failWithErrno(unitFileUnreadable, path);

    Unit unit = snapshot->unit;
    const ApiError result = action(unit);

    const Json before = unitToJson(snapshot->unit);
    const Json after = unitToJson(unit);
    if (before != after)
    {
        Json file = snapshot->json;
        updateJson(file, before, after);
        save(path, file);
    }
    return result;
}
