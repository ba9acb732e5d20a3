#include "support/private_mount.h"

#include <csignal>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

bool mountInNamespace(const char* type, const std::string& options, const std::string& directory)
{
    const char* const target = directory.c_str();
    if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return false;
    if (type)
        return mount("none", target, type, 0, options.c_str()) == 0;
    return mount(target, target, nullptr, MS_BIND, nullptr) == 0 &&
           mount(nullptr, target, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0;
}

} // namespace

PrivateMount PrivateMount::disk(const std::string& options)
{
    return {"tmpfs", options, "/mnt"};
}

PrivateMount PrivateMount::readOnly(const std::string& directory)
{
    return {nullptr, "", directory};
}

PrivateMount::PrivateMount(const char* type, const std::string& options, const std::string& directory)
    : mountPoint(directory)
{
    int ready[2];
    if (pipe(ready) != 0)
        return;
    keeper = fork();
    if (keeper == 0)
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (!mountInNamespace(type, options, directory) || write(ready[1], "", 1) != 1)
            _exit(1);
        close(ready[1]);
        for (;;)
            pause();
    }
    close(ready[1]);
    char none;
    if (read(ready[0], &none, 1) != 1 && keeper > 0)
    {
        waitpid(keeper, nullptr, 0);
        keeper = -1;
    }
    close(ready[0]);
}

PrivateMount::~PrivateMount()
{
    if (!isMounted())
        return;
    kill(keeper, SIGKILL);
    waitpid(keeper, nullptr, 0);
}

std::string PrivateMount::path() const
{
    return "/proc/" + std::to_string(keeper) + "/root" + mountPoint;
}
