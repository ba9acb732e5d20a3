// The fuzzers' assertion. If it fails, the fuzzer ends and keeps the input.

#pragma once

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

inline void expect(bool condition, const char* expectation)
{
    if (condition)
        return;
    // Not through stderr, which may be the stream of the program under test.
    dprintf(STDERR_FILENO, "Expectation failed: %s\n", expectation);
    std::abort();
}
