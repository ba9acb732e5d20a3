// An open file that closes itself.

#pragma once

#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <utility>

class File
{
public:
    File() = default;

    explicit File(int opened) : descriptor(opened)
    {
    }

    File(File&& other) noexcept : descriptor(std::exchange(other.descriptor, -1))
    {
    }

    File& operator=(File&& other) noexcept
    {
        std::swap(descriptor, other.descriptor);
        return *this;
    }

    ~File()
    {
        if (isOpen())
            ::close(descriptor);
    }

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

// Opens a file as seen from the folder `base`, or AT_FDCWD. Never as one of the three standard descriptors:
// where the program is started without one of them, it would print into the file or take its input from it.
inline File openFile(int base, const std::string& path, int flags, mode_t mode = 0)
{
    File file(::openat(base, path.c_str(), flags | O_CLOEXEC, mode));
    if (!file.isOpen() || file.get() > STDERR_FILENO)
        return file;
    return File(::fcntl(file.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}
