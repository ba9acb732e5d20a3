// Makes the clock on the wall jump by days, at every look at it, for the calls of the test itself.

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
