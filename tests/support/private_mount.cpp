#include "support/private_mount.h"

#include "support/process.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr const char* success = "mounted";

std::string reasonOfErrno()
{
    return std::strerror(errno);
}

// Mounts a file system in a namespace of this process, and keeps it until the process is killed. Reports
// success or the reason to the pipe.
[[noreturn]] void keepMounted(const std::function<std::string()>& mountHere, const int (&pipeToTest)[2])
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::string result;
    if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        result = reasonOfErrno();
    else
        result = mountHere();
    if (result.empty())
        result = success;
    if (write(pipeToTest[1], result.data(), result.size()) < 0 || result != success)
        _exit(1);
    close(pipeToTest[0]);
    close(pipeToTest[1]);
    for (;;)
        pause();
}

std::string readToEnd(int descriptor)
{
    std::string text;
    char block[1024];
    for (ssize_t length; (length = read(descriptor, block, sizeof block)) > 0;)
        text.append(block, static_cast<std::size_t>(length));
    return text;
}

} // namespace

PrivateMount PrivateMount::disk(const std::string& options)
{
    const char* const target = "/mnt";
    const auto mountHere = [&]
    { return mount("none", target, "tmpfs", 0, options.c_str()) == 0 ? "" : reasonOfErrno(); };
    return {mountHere, target};
}

PrivateMount PrivateMount::readOnly(const std::string& directory)
{
    const char* const target = directory.c_str();
    const auto mountHere = [&]
    {
        const bool mounted = mount(target, target, nullptr, MS_BIND, nullptr) == 0 &&
                             mount(nullptr, target, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0;
        return mounted ? "" : reasonOfErrno();
    };
    return {mountHere, directory};
}

PrivateMount PrivateMount::image(const std::string& file, const std::string& options)
{
    const char* const target = "/mnt";
    const auto mountHere = [&]
    {
        const Outcome outcome = runCommand({.words = {"mount", "-o", "loop," + options, file, target},
                                            .environment = {{"PATH", "/usr/bin:/bin"}}});
        return outcome.status == 0 ? "" : outcome.errors;
    };
    return {mountHere, target};
}

PrivateMount::PrivateMount(const std::function<std::string()>& mountHere, const std::string& directory)
    : mountPoint(directory)
{
    int fromKeeper[2];
    if (pipe(fromKeeper) != 0)
        return;
    keeper = fork();
    if (keeper == 0)
        keepMounted(mountHere, fromKeeper);
    close(fromKeeper[1]);
    const std::string result = readToEnd(fromKeeper[0]);
    close(fromKeeper[0]);
    if (result == success)
        return;
    reason = result;
    if (keeper > 0)
        waitpid(keeper, nullptr, 0);
    keeper = -1;
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
