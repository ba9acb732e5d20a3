// An open file that closes itself.

#pragma once

#include <cerrno>
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

// Appends what is left of the file. False when it cannot be read to its end.
inline bool readAll(const File& file, std::string& text)
{
    char block[65536];
    for (;;)
    {
        const ssize_t count = ::read(file.get(), block, sizeof block);
        if (count == 0)
            return true;
        if (count > 0)
            text.append(block, static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return false;
    }
}

// Opens a file as seen from the folder `base`, or AT_FDCWD. Never as one of the three standard descriptors:
// where the program is started without one of them, it would print into the file or take its input from it.
inline File openFile(int base, const std::string& path, int flags, mode_t mode = 0)
{
    File file(::openat(base, path.c_str(), flags | O_CLOEXEC, mode));
    if (!file.isOpen() || file.get() > STDERR_FILENO)
        return file;
    return File(::fcntl(file.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}
