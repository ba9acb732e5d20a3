// Memory allocation that fails on request. It replaces that of the C library in the whole process: it is
// linked into a test that calls the simulated unit, or preloaded into the program.
//
// In the environment of a process, FAIL_ALLOCATION=N makes the N-th allocation fail, FAIL_ALLOCATION=N+ the
// N-th and all later ones. COUNT_ALLOCATIONS=FILE writes the number of allocations to a file when the process
// exits.

#pragma once

struct AllocationFailures
{
    unsigned long first; // number of the allocation that fails, from 1; 0 for none
    bool persistent;     // all later allocations fail too
    bool enabled;        // allocations are counted, and fail, only while this is set
    unsigned long calls; // number of allocations so far
};

extern "C" AllocationFailures allocationFailures;
