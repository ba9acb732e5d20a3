#include "support/private_mount.h"

#include <csignal>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

bool mountApart(const char* type, const std::string& options, const std::string& folder)
{
    const char* const place = folder.c_str();
    if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return false;
    if (type)
        return mount("none", place, type, 0, options.c_str()) == 0;
    return mount(place, place, nullptr, MS_BIND, nullptr) == 0 &&
           mount(nullptr, place, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0;
}

} // namespace

PrivateMount PrivateMount::disk(const std::string& options)
{
    return {"tmpfs", options, "/mnt"};
}

PrivateMount PrivateMount::readOnly(const std::string& folder)
{
    return {nullptr, "", folder};
}

PrivateMount::PrivateMount(const char* type, const std::string& options, const std::string& folder)
    : where(folder)
{
    int told[2];
    if (pipe(told) != 0)
        return;
    keeper = fork();
    if (keeper == 0)
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (!mountApart(type, options, folder) || write(told[1], "", 1) != 1)
            _exit(1);
        close(told[1]);
        for (;;)
            pause();
    }
    close(told[1]);
    char none;
    if (read(told[0], &none, 1) != 1 && keeper > 0)
    {
        waitpid(keeper, nullptr, 0);
        keeper = -1;
    }
    close(told[0]);
}

PrivateMount::~PrivateMount()
{
    if (!isThere())
        return;
    kill(keeper, SIGKILL);
    waitpid(keeper, nullptr, 0);
}

std::string PrivateMount::path() const
{
    return "/proc/" + std::to_string(keeper) + "/root" + where;
}
