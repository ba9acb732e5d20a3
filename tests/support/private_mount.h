// A file system that only the programs see that are told its path.

#pragma once

#include <string>
#include <sys/types.h>

class PrivateMount
{
public:
    // A disk in memory with options like "size=64k,nr_inodes=8".
    static PrivateMount disk(const std::string& options);

    // The folder, which cannot be written there.
    static PrivateMount readOnly(const std::string& folder);

    ~PrivateMount();
    PrivateMount(const PrivateMount&) = delete;
    PrivateMount& operator=(const PrivateMount&) = delete;

    // False where nothing may be mounted: that takes root, and a container that leaves root the right to.
    bool isThere() const
    {
        return keeper > 0;
    }

    std::string operator/(const std::string& name) const
    {
        return path() + "/" + name;
    }

    std::string path() const;

private:
    PrivateMount(const char* type, const std::string& options, const std::string& folder);

    pid_t keeper = -1; // a process that does nothing but live, for the mount lives as long
    std::string where;
};
