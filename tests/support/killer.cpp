#include "support/killer.h"

#include <csignal>
#include <stdexcept>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

// The kernel stops the child when it executes the command.
int startTraced(const Command& command)
{
    const pid_t child = fork();
    if (child == 0)
    {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(126);
        executeCommand(command);
    }
    if (child < 0)
        throw std::runtime_error("cannot fork for " + command.words.front());
    return child;
}

} // namespace

bool killAtSystemCall(const Command& command, unsigned stop)
{
    Command traced = command;
    traced.environment["ASAN_OPTIONS"] = "detect_leaks=0"; // The leak detector does not work under ptrace.
    const pid_t child = startTraced(traced);
    int status = 0;
    waitpid(child, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL);
    for (unsigned i = 0; WIFSTOPPED(status) && i < stop; ++i)
    {
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
    }
    if (!WIFSTOPPED(status))
        return false;
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return true;
}
