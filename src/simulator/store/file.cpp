#include "simulator/store/file.h"

#include "simulator/store/blocked_signals.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>
#include <utility>

namespace simulator
{

File::File(int opened) : descriptor(opened)
{
}

File::File(File&& other) noexcept : descriptor(std::exchange(other.descriptor, -1))
{
}

File& File::operator=(File&& other) noexcept
{
    std::swap(descriptor, other.descriptor);
    return *this;
}

File::~File()
{
    if (isOpen())
        ::close(descriptor);
}

File keepClearOfStandardStreams(File file)
{
    if (!file.isOpen() || file.get() > STDERR_FILENO)
        return file;
    return File(::fcntl(file.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

File openFile(int directory, const std::string& path, int flags, mode_t mode)
{
    return keepClearOfStandardStreams(File(::openat(directory, path.c_str(), flags | O_CLOEXEC, mode)));
}

bool readAll(const File& file, std::string& text, std::size_t limit)
{
    char block[65536];
    while (text.size() < limit)
    {
        const ssize_t count = ::read(file.get(), block, std::min(sizeof block, limit - text.size()));
        if (count == 0)
            return true;
        if (count > 0)
            text.append(block, static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return false;
    }
    return true;
}

bool contentEquals(const File& file, std::string_view text)
{
    char block[65536];
    off_t position = 0;
    for (;;)
    {
        const ssize_t count = ::pread(file.get(), block, sizeof block, position);
        if (count == 0)
            return text.empty();
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || !text.starts_with(std::string_view(block, static_cast<std::size_t>(count))))
            return false;
        text.remove_prefix(static_cast<std::size_t>(count));
        position += count;
    }
}

bool writeAll(const File& file, const std::string& text)
{
    const BlockedSignals blocked;
    for (std::size_t done = 0; done < text.size();)
    {
        const ssize_t count = ::write(file.get(), text.data() + done, text.size() - done);
        if (count >= 0)
            done += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            return false;
    }
    return true;
}

} // namespace simulator
