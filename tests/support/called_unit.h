// A simulated unit that the calls of the test itself reach.

#pragma once

#include "support/unit.h"

#include <cstdlib>

class CalledUnit : public Unit
{
public:
    explicit CalledUnit(const std::string& keys = "{}") : Unit(keys)
    {
        setenv("QVAUX_UNIT", file().c_str(), 1);
        setenv("QVAUX_TRACE", traceFile().c_str(), 1);
    }

    ~CalledUnit()
    {
        unsetenv("QVAUX_UNIT");
        unsetenv("QVAUX_TRACE");
    }

    std::string traceFile() const
    {
        return folder / "calls";
    }

    // The calls so far.
    Calls calls() const
    {
        return splitLines(readFile(traceFile()));
    }
};
