#include "simulator/store/unit_file.h"

#include "document/unit_json.h"
#include "simulator/store/atomic_file.h"
#include "simulator/store/c_locale.h"
#include "simulator/store/lock.h"
#include "simulator/unit/validation.h"

#include <algorithm>
#include <optional>
#include <sys/stat.h>
#include <utility>

namespace simulator
{

using document::Json;
using document::Unit;

namespace
{

constexpr int maxFileSize = 16 << 20; // bytes

// The file that was read last. It is kept open so that its inode number cannot be reused for another file.
struct CachedFile
{
    File file;
    struct stat status = {};
    std::string text;
    Json json;
    Unit unit;
};

std::optional<CachedFile> cachedFile;

bool isSameFile(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_size == other.st_size &&
           one.st_ctim.tv_sec == other.st_ctim.tv_sec && one.st_ctim.tv_nsec == other.st_ctim.tv_nsec;
}

// Time stamps are not enough: on some file systems, they have a resolution of one or two seconds. Comparing
// the text costs much less than parsing it again.
bool isCached(const struct stat& status)
{
    return cachedFile && isSameFile(status, cachedFile->status) &&
           contentEquals(cachedFile->file, cachedFile->text);
}

// Returns the parser's message without the prefix of the JSON library: "line 3, column 7: ...".
std::string problemOf(const Json::exception& error)
{
    const std::string text = error.what();
    const std::string_view mark = "parse error at ";
    const auto found = text.find(mark);
    return text.substr(found == std::string::npos ? text.find("] ") + 2 : found + mark.size());
}

// The parser treats a NUL byte as the end of the text.
void rejectNulByte(const std::string& text, const std::string& path)
{
    const auto found = text.find('\0');
    if (found == std::string::npos)
        return;
    const std::string_view before(text.data(), found);
    const auto line = 1 + std::ranges::count(before, '\n');
    const auto column = found - (before.rfind('\n') + 1) + 1; // npos + 1 is 0
    fail(unitFileInvalid, path,
         "line " + std::to_string(line) + ", column " + std::to_string(column) + ": unexpected NUL byte");
}

Json parse(const std::string& text, const std::string& path)
{
    const CLocale numbers;
    try
    {
        Json json = Json::parse(text);
        rejectNulByte(text, path);
        return json;
    }
    catch (const Json::exception& error)
    {
        fail(unitFileInvalid, path, problemOf(error));
    }
}

Unit toUnit(const Json& json, const std::string& path)
{
    try
    {
        Unit unit = document::unitFromJson(json);
        validate(unit);
        return unit;
    }
    catch (const document::InvalidDocument& error)
    {
        fail(unitFileInvalid, path, error.what());
    }
}

// Reads the file. Stops after the maximum size, because the file may be growing.
std::string readText(const File& file, const struct stat& status, const std::string& path)
{
    std::string text;
    const bool fits = status.st_size <= maxFileSize;
    if (fits && !readAll(file, text, maxFileSize + 1))
        failWithErrno(unitFileUnreadable, path);
    if (!fits || text.size() > maxFileSize)
        fail(unitFileInvalid, path, "larger than 16 MiB");
    return text;
}

// Updates the cached file. Returns false if the file does not exist.
bool load(const UnitLocation& location)
{
    struct stat status = {};
    if (::fstatat(location.directory.get(), location.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
        isCached(status))
        return true;

    // Without O_NONBLOCK, opening a named pipe would wait for a writer.
    File file = openFile(location.directory.get(), location.name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW);
    if (!file.isOpen() && errno == ENOENT)
        return false;
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0)
        failWithErrno(unitFileUnreadable, location.path);
    if (!S_ISREG(status.st_mode))
        fail(unitFileUnreadable, location.path, "not a regular file");

    std::string text = readText(file, status, location.path);
    Json json = parse(text, location.path);
    Unit unit = toUnit(json, location.path);
    cachedFile.emplace(
        CachedFile{std::move(file), status, std::move(text), std::move(json), std::move(unit)});
    return true;
}

void save(const UnitLocation& location, const Json& json)
{
    const std::string text = json.dump(2) + "\n";
    if (text.size() > maxFileSize)
        fail(unitFileUnwritable, location.path, "would be larger than 16 MiB");
    replaceFile(location, text);
}

File lock(const UnitLocation& location)
{
    return waitForLock(location, lockSuffix);
}

void create(const UnitLocation& location)
{
    const File locked = lock(location);
    if (!load(location))
        save(location, document::unitToJson(Unit()));
}

void loadOrCreate(const UnitLocation& location)
{
    if (load(location))
        return;
    create(location);
    if (!load(location))
        failWithErrno(unitFileUnreadable, location.path);
}

} // namespace

UnitFile::UnitFile() : location(locateUnit())
{
}

const Unit& UnitFile::current() const
{
    loadOrCreate(location);
    return cachedFile->unit;
}

void UnitFile::change(const std::function<void(Unit&)>& action) const
{
    loadOrCreate(location);
    const File locked = lock(location);
    if (!load(location))
        failWithErrno(unitFileUnreadable, location.path);

    Unit unit = cachedFile->unit;
    action(unit);

    const Json before = document::unitToJson(cachedFile->unit);
    const Json after = document::unitToJson(unit);
    if (before == after)
        return;
    Json json = cachedFile->json;
    document::updateJson(json, before, after);
    save(location, json);
}

File UnitFile::tryLock(const char* suffix) const
{
    return simulator::tryLock(location, suffix);
}

} // namespace simulator
