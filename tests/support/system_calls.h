// Records the system calls of a child process, and makes them fail. Works on 64-bit x86 only.

#pragma once

#include "support/process.h"

#include <functional>
#include <string>
#include <vector>

// In place of an error: a read or write transfers only half of the bytes.
constexpr int shortTransfer = 0;

struct SystemCallFailure
{
    unsigned long first = 0; // number of the call that fails, from 1; 0 for none
    int error = 0;           // an errno, or shortTransfer
    bool persistent = false; // all later calls of the same kind fail too
    long kind = -1;          // every call of this kind fails: SYS_flock and so on
};

struct SystemCall
{
    long number;      // SYS_openat and so on
    std::string file; // the file that it is called on, if recordsFiles is set
    long result;
};

struct WatchedRun
{
    int status; // as returned by waitpid
    std::vector<SystemCall> calls;
    bool replacedFile; // a rename succeeded
};

class SystemCallWatcher
{
public:
    // Calls are counted, and fail, only while `enabled` is set; if it is null, always. It must be in memory
    // that is shared with the child. Once it is cleared, the child is no longer traced.
    explicit SystemCallWatcher(const volatile bool* enabledWhile = nullptr) : enabled(enabledWhile)
    {
    }

    SystemCallFailure failure{};
    bool recordsFiles = false; // takes time

    // Called before each counted call with its number, from 1.
    std::function<void(unsigned long, const SystemCall&)> beforeCall{};

    // Runs `work` in a child process, which exits with status 0 after it.
    WatchedRun run(const std::function<void()>& work) const;

    // Runs the command, and appends its standard output and standard error to the file `output`.
    WatchedRun run(const Command& command, const std::string& output = "/dev/null") const;

private:
    const volatile bool* enabled;
};
