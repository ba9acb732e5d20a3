// What is promised and found broken ends the fuzzer, which then keeps the input.

#pragma once

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

inline void promise(bool kept, const char* text)
{
    if (kept)
        return;
    // Standard error may be the program's at the moment.
    dprintf(STDERR_FILENO, "A promise was broken: %s\n", text);
    std::abort();
}
