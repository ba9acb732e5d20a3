// A file descriptor that is closed automatically.

#pragma once

#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace simulator
{

class File
{
public:
    File() = default;
    explicit File(int opened);
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;
    ~File();

    bool isOpen() const
    {
        return descriptor >= 0;
    }

    int get() const
    {
        return descriptor;
    }

private:
    int descriptor = -1;
};

// Moves the file to a descriptor above 2. If the program was started with a standard stream closed, it would
// otherwise print to the file or read its input from it.
File keepClearOfStandardStreams(File file);

// Opens a file relative to `directory`, which is a descriptor or AT_FDCWD. On failure, the result is not open
// and errno is set. The descriptor is never 0, 1 or 2.
File openFile(int directory, const std::string& path, int flags, mode_t mode = 0);

// Appends the rest of the file to `text`, but stops when `text` has `limit` bytes. Returns false, with errno
// set, if the file cannot be read.
bool readAll(const File& file, std::string& text, std::size_t limit = std::string::npos);

// Returns whether the file contains exactly `text`. Returns false if the file cannot be read.
bool contentEquals(const File& file, std::string_view text);

// Returns false, with errno set, if `text` cannot be written completely. Raises no signal.
bool writeAll(const File& file, const std::string& text);

} // namespace simulator
