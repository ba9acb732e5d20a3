// Makes the wall clock of this process jump by days each time it is read.

#pragma once

#include <cstdlib>

struct JumpingClock
{
    JumpingClock()
    {
        setenv("STAND_IN_CLOCK", "jumps", 1);
    }

    ~JumpingClock()
    {
        unsetenv("STAND_IN_CLOCK");
    }
};
