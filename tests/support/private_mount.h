// A file system that is mounted in its own mount namespace. Any process can access it by its path in /proc.

#pragma once

#include <functional>
#include <string>
#include <sys/types.h>

class PrivateMount
{
public:
    // Mounts a file system in memory with options such as "size=64k,nr_inodes=8".
    static PrivateMount disk(const std::string& options);

    // Mounts the directory read-only.
    static PrivateMount readOnly(const std::string& directory);

    // Mounts the file system in the image file with options of mount(8).
    static PrivateMount image(const std::string& file, const std::string& options);

    ~PrivateMount();
    PrivateMount(const PrivateMount&) = delete;
    PrivateMount& operator=(const PrivateMount&) = delete;

    // Mounting requires root and, in a container, CAP_SYS_ADMIN.
    bool isMounted() const
    {
        return keeper > 0;
    }

    // The reason if it is not mounted.
    const std::string& problem() const
    {
        return reason;
    }

    std::string operator/(const std::string& name) const
    {
        return path() + "/" + name;
    }

    std::string path() const;

private:
    // `mountHere` returns the reason if it fails.
    PrivateMount(const std::function<std::string()>& mountHere, const std::string& directory);

    pid_t keeper = -1; // the process that keeps the mount namespace alive
    std::string mountPoint;
    std::string reason;
};
