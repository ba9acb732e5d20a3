#include "support/disk_image.h"

#include <fcntl.h>
#include <unistd.h>

namespace
{

// Runs a shell command. Returns its errors if it fails.
std::string problemOf(const std::string& command, const std::string& source, const std::string& image)
{
    const Outcome outcome = runCommand(
        {.words = {"sh", "-c", command},
         .environment = {{"PATH", "/usr/sbin:/usr/bin:/sbin:/bin"}, {"SOURCE", source}, {"IMAGE", image}}});
    return outcome.status == 0 ? "" : command + ": " + outcome.errors;
}

} // namespace

DiskImage::DiskImage(const std::string& command, const std::string& source, const std::string& mountOptions)
    : options(mountOptions), creationProblem(problemOf(command, source, image)),
      mount(PrivateMount::image(image, options))
{
}

DiskImage::DiskImage(const std::string& mkfs, const std::string& mountOptions)
    : DiskImage("truncate -s 16M \"$IMAGE\" && " + mkfs + " \"$IMAGE\"", "", mountOptions)
{
}

DiskImage DiskImage::afterPowerLoss() const
{
    // The kernel has not yet written everything to the image file.
    return DiskImage("cp --sparse=always \"$SOURCE\" \"$IMAGE\"", image, options);
}

void DiskImage::sync() const
{
    const int root = open((*this / ".").c_str(), O_RDONLY | O_CLOEXEC);
    syncfs(root);
    close(root);
}

const char* DiskImage::problem() const
{
    if (!creationProblem.empty())
        return creationProblem.c_str();
    return mount.isMounted() ? nullptr : mount.problem().c_str();
}
