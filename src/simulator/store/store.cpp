#include "simulator/store/store.h"

#include "document/json.h"
#include "document/unit_json.h"
#include "simulator/store/unit_location.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>

namespace
{

// The file as it was read last. It stays open, so that no other file can take its inode number and be
// mistaken for it.
struct Snapshot
{
    File file;
    struct stat status = {};
    bool settled; // nothing can have changed it since and left its times as they are
    Json json;
    Unit unit;
};

std::optional<Snapshot> snapshot;

constexpr auto unchanged = static_cast<uid_t>(-1); // to fchown

bool sameTime(const timespec& one, const timespec& other)
{
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

// Files are stamped by a clock with ticks: two changes within one cannot be told apart by their times.
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
        fail(unitFileInvalid, path, placeOf(error));
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
        fail(unitFileInvalid, path, error.what());
    }
}

// Brings the snapshot up to date. False when there is no file.
bool load(const Place& place)
{
    struct stat status = {};
    if (::fstatat(place.folder.get(), place.name.c_str(), &status, 0) == 0 && isSnapshot(status))
        return true;

    // Not waiting for what stands at the other end of a pipe.
    File file = openFile(place.folder.get(), place.name, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen() && errno == ENOENT)
        return false;
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0)
        failWithErrno(unitFileUnreadable, place.path);
    if (!S_ISREG(status.st_mode))
        fail(unitFileUnreadable, place.path, "not a regular file");

    const timespec now = fileClock();
    std::string text;
    if (!readAll(file, text))
        failWithErrno(unitFileUnreadable, place.path);
    Json json = parse(text, place.path);
    Unit unit = toUnit(json, place.path);
    const bool settled = isBefore(status.st_ctim, now);
    snapshot.emplace(Snapshot{std::move(file), status, settled, std::move(json), std::move(unit)});
    return true;
}

// Gives the new file the access that there was to the old one. The owner can be kept by root alone, the group
// by its members. A group that cannot be kept leaves nothing to the one in its place.
bool keepAccess(const File& file, const struct stat& old)
{
    mode_t mode = old.st_mode & 0777;
    if (::fchown(file.get(), unchanged, old.st_gid) != 0)
    {
        if (errno != EPERM)
            return false;
        mode = (mode & ~static_cast<mode_t>(S_IRWXG)) | (mode & S_IRWXO) << 3;
    }
    return (::fchown(file.get(), old.st_uid, unchanged) == 0 || errno == EPERM) &&
           ::fchmod(file.get(), mode) == 0;
}

// Replaces the unit's file. A process that is killed here leaves the old file or the new one.
void save(const Place& place, const Json& json)
{
    const int folder = place.folder.get();
    const std::string beside = place.name + ".new";
    const std::string besidePath = place.path + ".new";
    struct stat old = {};
    const bool replaces = ::fstatat(folder, place.name.c_str(), &old, 0) == 0;
    if (replaces && ::faccessat(folder, place.name.c_str(), W_OK, AT_EACCESS) != 0)
        failWithErrno(unitFileUnwritable, place.path);

    // What a killed process left.
    if (::unlinkat(folder, beside.c_str(), 0) != 0 && errno != ENOENT)
        failWithErrno(unitFileUnwritable, besidePath);
    // Nobody else looks into it before it has the access of the old one.
    const File file = openFile(folder, beside, O_WRONLY | O_CREAT | O_EXCL, replaces ? 0600 : 0666);
    if (!file.isOpen())
        failWithErrno(unitFileUnwritable, besidePath);
    try
    {
        if (replaces && !keepAccess(file, old))
            failWithErrno(unitFileUnwritable, besidePath);
        writeAll(file, json.dump(2) + "\n", besidePath);
        if (::fsync(file.get()) != 0)
            failWithErrno(unitFileUnwritable, besidePath);
        if (::renameat(folder, beside.c_str(), folder, place.name.c_str()) != 0)
            failWithErrno(unitFileUnwritable, place.path);
    }
    catch (...)
    {
        ::unlinkat(folder, beside.c_str(), 0);
        throw;
    }

    const File directory = openFile(folder, ".", O_RDONLY | O_DIRECTORY);
    if (directory.isOpen())
        ::fsync(directory.get());
}

File lock(const Place& place)
{
    return takeLock(place, ".lock");
}

void makeUnit(const Place& place)
{
    const File locked = lock(place);
    if (!load(place))
        save(place, unitToJson(Unit{}));
}

void loadOrMake(const Place& place)
{
    if (load(place))
        return;
    makeUnit(place);
    if (!load(place))
        failWithErrno(unitFileUnreadable, place.path);
}

} // namespace

const Unit& currentUnit()
{
    loadOrMake(unitPlace());
    return snapshot->unit;
}

ApiError changeUnit(const std::function<ApiError(Unit&)>& action)
{
    const Place place = unitPlace();
    loadOrMake(place);
    const File locked = lock(place);
    if (!load(place))
        failWithErrno(unitFileUnreadable, place.path);

    Unit unit = snapshot->unit;
    const ApiError result = action(unit);

    const Json before = unitToJson(snapshot->unit);
    const Json after = unitToJson(unit);
    if (before != after)
    {
        Json file = snapshot->json;
        updateJson(file, before, after);
        save(place, file);
    }
    return result;
}
