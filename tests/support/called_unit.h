// A simulated unit for tests that call the device library directly: CalledUnit, or Called<FirmwareUnit>.

#pragma once

#include "support/unit.h"

#include <cstdlib>

template <typename AnyUnit>
class Called : public AnyUnit
{
public:
    explicit Called(const std::string& keys = "{}") : AnyUnit(keys)
    {
        setenv("QVAUX_UNIT", this->file().c_str(), 1);
        setenv("QVAUX_TRACE", traceFile().c_str(), 1);
    }

    ~Called()
    {
        unsetenv("QVAUX_UNIT");
        unsetenv("QVAUX_TRACE");
    }

    std::string traceFile() const
    {
        return this->directory / "calls";
    }

    // Returns the calls made so far.
    Calls calls() const
    {
        return splitLines(readFile(traceFile()));
    }
};

using CalledUnit = Called<Unit>;
