#include "support/system_calls.h"

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int systemCallStop = SIGTRAP | 0x80;

unsigned long registerOf(pid_t child, std::size_t offset)
{
    return static_cast<unsigned long>(ptrace(PTRACE_PEEKUSER, child, offset, nullptr));
}

void setRegister(pid_t child, std::size_t offset, unsigned long value)
{
    ptrace(PTRACE_POKEUSER, child, offset, value);
}

constexpr std::size_t numberRegister = offsetof(user_regs_struct, orig_rax);
constexpr std::size_t resultRegister = offsetof(user_regs_struct, rax);
constexpr std::size_t argumentRegisters[] = {offsetof(user_regs_struct, rdi), offsetof(user_regs_struct, rsi),
                                             offsetof(user_regs_struct, rdx)};

std::string textAt(pid_t child, unsigned long address)
{
    std::string text;
    for (;; address += sizeof(long))
    {
        errno = 0;
        const long word = ptrace(PTRACE_PEEKDATA, child, address, nullptr);
        if (errno != 0)
            return text;
        for (std::size_t i = 0; i < sizeof word; ++i)
        {
            const char c = static_cast<char>(static_cast<unsigned long>(word) >> (8 * i) & 255);
            if (c == '\0')
                return text;
            text += c;
        }
    }
}

std::string fileOfDescriptor(pid_t child, int descriptor)
{
    std::error_code ignored;
    return std::filesystem::read_symlink(
        "/proc/" + std::to_string(child) +
            (descriptor == AT_FDCWD ? "/cwd" : "/fd/" + std::to_string(descriptor)),
        ignored);
}

std::string fileOf(pid_t child, long number)
{
    const unsigned long first = registerOf(child, argumentRegisters[0]);
    switch (number)
    {
    case SYS_mkdir:
    case SYS_open:
    case SYS_readlink:
    case SYS_unlink:
        return textAt(child, first);
    case SYS_openat:
    case SYS_mkdirat:
    case SYS_readlinkat:
    case SYS_unlinkat:
    case SYS_renameat:
    case SYS_renameat2:
    {
        const std::string path = textAt(child, registerOf(child, argumentRegisters[1]));
        return path.starts_with('/') ? path : fileOfDescriptor(child, static_cast<int>(first)) + "/" + path;
    }
    default:
        return fileOfDescriptor(child, static_cast<int>(first));
    }
}

// A system call that the child has entered. It is carried out unless fail() is called.
class Interception
{
public:
    Interception(pid_t process, long systemCall) : child(process), number(systemCall)
    {
    }

    void fail(int error)
    {
        if (error == shortTransfer)
        {
            const unsigned long size = registerOf(child, argumentRegisters[2]);
            setRegister(child, argumentRegisters[2], size > 1 ? size / 2 : size);
        }
        else if (number == SYS_brk)
            // It returns no error. If it fails, it leaves the memory unchanged.
            setRegister(child, argumentRegisters[0], 0);
        else
        {
            result = -error;
            // A close that fails nevertheless closes the file.
            if (number != SYS_close)
                setRegister(child, numberRegister, static_cast<unsigned long>(-1));
        }
    }

    // Returns the result that the child receives.
    long finish() const
    {
        if (result != 0)
            setRegister(child, resultRegister, static_cast<unsigned long>(result));
        return static_cast<long>(registerOf(child, resultRegister));
    }

private:
    pid_t child;
    long number;
    long result = 0;
};

bool isRename(long number)
{
    return number == SYS_rename || number == SYS_renameat || number == SYS_renameat2;
}

// Starts a child that runs `work`. It is stopped when this returns.
pid_t startTraced(const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child == 0)
    {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(126);
        kill(getpid(), SIGSTOP);
        work();
        _exit(0);
    }
    if (child < 0)
        throw std::runtime_error("no process to trace");
    waitpid(child, nullptr, WUNTRACED);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD);
    return child;
}

// Lets the child continue until it enters or leaves a system call. It receives its signals meanwhile. Returns
// false if it ends before.
bool continueToSystemCall(pid_t child, int& status)
{
    int signal = 0;
    for (;;)
    {
        ptrace(PTRACE_SYSCALL, child, nullptr, signal);
        waitpid(child, &status, 0);
        if (!WIFSTOPPED(status))
            return false;
        if (WSTOPSIG(status) == systemCallStop)
            return true;
        // The kernel also stops the child with SIGTRAP when it executes a command.
        signal = WSTOPSIG(status) == SIGTRAP ? 0 : WSTOPSIG(status);
    }
}

} // namespace

WatchedRun SystemCallWatcher::run(const std::function<void()>& work) const
{
    WatchedRun watched{};
    const pid_t child = startTraced(work);
    long failingKind = failure.kind;
    bool counts = false;
    Interception interception(child, -1);
    while (continueToSystemCall(child, watched.status))
    {
        __ptrace_syscall_info info{};
        ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info);
        if (info.op == PTRACE_SYSCALL_INFO_ENTRY)
        {
            counts = !enabled || *enabled;
            if (!counts && !watched.calls.empty())
            {
                ptrace(PTRACE_DETACH, child, nullptr, nullptr);
                waitpid(child, &watched.status, 0);
                break;
            }
            const auto number = static_cast<long>(info.entry.nr);
            interception = Interception(child, number);
            if (!counts)
                continue;
            watched.calls.push_back({number, recordsFiles ? fileOf(child, number) : "", 0});
            if (beforeCall)
                beforeCall(watched.calls.size(), watched.calls.back());
            if (watched.calls.size() == failure.first && failure.persistent)
                failingKind = number;
            if (watched.calls.size() == failure.first || number == failingKind)
                interception.fail(failure.error);
        }
        else if (info.op == PTRACE_SYSCALL_INFO_EXIT && counts)
        {
            SystemCall& call = watched.calls.back();
            call.result = interception.finish();
            watched.replacedFile |= isRename(call.number) && call.result == 0;
        }
    }
    return watched;
}

WatchedRun SystemCallWatcher::run(const Command& command, const std::string& output) const
{
    return run(
        [&]
        {
            const int input = open("/dev/null", O_RDONLY);
            const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
            if (dup2(input, STDIN_FILENO) < 0 || dup2(file, STDOUT_FILENO) < 0 ||
                dup2(file, STDERR_FILENO) < 0)
                _exit(126);
            close(input);
            close(file);
            executeCommand(command);
        });
}
