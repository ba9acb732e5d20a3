// While the object exists, the wall clock of this process jumps each time it is read.

#pragma once

#include <cstdlib>

struct JumpingClock
{
    JumpingClock()
    {
        setenv("JUMPING_CLOCK", "1", 1);
    }

    ~JumpingClock()
    {
        unsetenv("JUMPING_CLOCK");
    }
};
