// The place in the code where a signal killed a process.

#pragma once

#include <string>
#include <vector>

// The stack of a crash, innermost call first. It is in memory that is shared with the process that crashes.
struct Crash
{
    void* frames[48];
    int count;
};

// From now on, a crash of this process (SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL) is recorded in `crash`.
// Recording allocates no memory.
void recordCrash(Crash& crash);

// Returns the names of the functions on the stack, innermost first, without parameters and template
// arguments; "?" for one without a name. This process must have the same libraries at the same addresses, as
// a parent does.
std::vector<std::string> functionsOf(const Crash& crash);
