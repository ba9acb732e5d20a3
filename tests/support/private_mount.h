// A file system in a mount namespace of its own. Programs reach it by its path.

#pragma once

#include <string>
#include <sys/types.h>

class PrivateMount
{
public:
    // A file system in memory, with options such as "size=64k,nr_inodes=8".
    static PrivateMount disk(const std::string& options);

    // A read-only view of the directory.
    static PrivateMount readOnly(const std::string& directory);

    ~PrivateMount();
    PrivateMount(const PrivateMount&) = delete;
    PrivateMount& operator=(const PrivateMount&) = delete;

    // Mounting needs root, and in a container a capability.
    bool isMounted() const
    {
        return keeper > 0;
    }

    std::string operator/(const std::string& name) const
    {
        return path() + "/" + name;
    }

    std::string path() const;

private:
    PrivateMount(const char* type, const std::string& options, const std::string& directory);

    pid_t keeper = -1; // the process that the mount namespace belongs to
    std::string where;
};
