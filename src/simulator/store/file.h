// An open file that closes itself.

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

// Returns the file with a descriptor other than 0, 1 and 2: if the program was started with one of them
// closed, it would otherwise print into the file or read its input from it.
File keepClearOfStandardStreams(File file);

// Opens a file relative to `directory`, a descriptor or AT_FDCWD. The file is not open, and errno says why,
// if that fails. The descriptor is never 0, 1 or 2.
File openFile(int directory, const std::string& path, int flags, mode_t mode = 0);

// Appends the rest of the file to `text`, or as much of it as `text` has at most `limit` bytes. Returns
// false, with errno set, if it cannot be read.
bool readAll(const File& file, std::string& text, std::size_t limit = std::string::npos);

// Returns whether the file consists of `text`. Returns false, too, if it cannot be read.
bool contentEquals(const File& file, std::string_view text);

// Returns false, with errno set, if `text` cannot be written completely. Raises no signal.
bool writeAll(const File& file, const std::string& text);

} // namespace simulator
