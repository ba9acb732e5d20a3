// A simulated unit that the calls of the test itself reach.

#pragma once

#include "support/unit.h"

#include <cstdlib>
#include <sstream>

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
        std::istringstream trace(readFile(traceFile()));
        Calls list;
        for (std::string line; std::getline(trace, line);)
            list.push_back(line);
        return list;
    }
};
