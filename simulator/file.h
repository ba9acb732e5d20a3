// An open file that closes itself.

#pragma once

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
