// A disk with a file system of its own, in an image file. What is on it after a power loss can be examined.

#pragma once

#include "support/private_mount.h"
#include "support/process.h"

#include <string>

class DiskImage
{
public:
    // Creates a file system with a command such as "mkfs.ext4 -F", and mounts it with options of mount(8).
    DiskImage(const std::string& mkfs, const std::string& mountOptions);

    // Returns the disk as a restart after a power loss would find it: a copy of what has been written to it,
    // mounted.
    DiskImage afterPowerLoss() const;

    // Writes everything to the disk.
    void sync() const;

    // Returns why the disk is not mounted; null if it is. Mounting needs root, and in a container a
    // capability.
    const char* problem() const;

    // Returns the path of a file on the disk.
    std::string operator/(const std::string& name) const
    {
        return mount / name;
    }

private:
    // Runs a shell command that creates the image file $IMAGE.
    DiskImage(const std::string& command, const std::string& source, const std::string& mountOptions);

    TemporaryDirectory directory;
    std::string image = directory / "image";
    std::string options;
    std::string creationProblem;
    PrivateMount mount;
};
